// DPList: a doubly linked ring of untyped pointers. It owns its nodes, never the data.
//
// Adding and removing are one step where the place is known. Nodes come from a pool that all
// threads share; a list belongs to one thread at a time.
#ifndef KORBASE_CONTAINERS_DPLIST_H
#define KORBASE_CONTAINERS_DPLIST_H

#include <containers/ring.h>
#include <korbase_api.h>

#include <cstddef>

// A node of DPList.
class KORBASE_API DPLink {
public:
    explicit DPLink(void* contents = nullptr) : next(nullptr), prev(nullptr), data(contents) {}

    // The neighbours in the ring, where the first node follows the last.
    DPLink* Next() const { return next; }
    DPLink* Prev() const { return prev; }
    void* Data() const { return data; }

    // Nodes of exactly this size come from the pool, others (of derived classes) from the general
    // heap.
    static void* operator new(std::size_t size);
    static void operator delete(void* node, std::size_t size);

private:
    friend class DPList;
    friend struct korbase_detail::Ring<DPLink, true>;
    DPLink* next;
    DPLink* prev;
    void* data;
};

class KORBASE_API DPList {
public:
    using Iterator = korbase_detail::RingIterator<DPLink, korbase_detail::RingDataView<DPLink>>;

    DPList() : last(nullptr) {}
    ~DPList();
    DPList(DPList const& other);  // nodes of its own, the same data
    DPList& operator=(DPList const& other);
    DPList(DPList&& other) noexcept;
    DPList& operator=(DPList&& other) noexcept;

    // Adds `data` at the end or at the front. Throws std::bad_alloc with the list unchanged.
    void Append(void* data);
    void Insert(void* data);

    // Takes out the first or the last pointer; null if the list is empty.
    void* RemoveFirst();
    void* RemoveLast();

    // Takes out the first pointer for which `cmp(data, key)` is 0; null if there is none.
    void* Remove(int (*cmp)(void const*, void const*), void const* key);

    // Takes out every pointer for which `cmp(data, key)` is 0, calls `fn(data, arg)`, if it is not
    // null, on each, and returns how many there were.
    int RemoveLoop(int (*cmp)(void const*, void const*), void const* key, int (*fn)(void*, void*),
                   void* arg);

    void Clear();

    // Calls `fn(data, arg)` in order until it returns other than 0; returns that, or 0 at the end.
    // The call may take out its own pointer. Pointers that are appended meanwhile are not visited.
    int Loop(int (*fn)(void*, void*), void* arg);

    // The first node for which `cmp(data, key)` is 0; null if there is none.
    DPLink* FindL(int (*cmp)(void const*, void const*), void const* key) const;

    // Puts `data` into the first node for which `cmp(its data, key)` is 0 and returns the pointer
    // it held; null if there is none.
    void* Replace(int (*cmp)(void const*, void const*), void const* key, void* data);

    // Pointer `i`, counted from 0; null if there is none.
    void* operator[](int i) const;

    int Len() const;  // walks the list

    Iterator begin() const { return Iterator(Ring::First(last), last); }
    Iterator end() const { return Iterator(); }

private:
    friend class DPListIterator;
    using Ring = korbase_detail::Ring<DPLink, true>;

    DPLink* last;  // null when empty
};

// A place in a DPList, where pointers can be added and removed. It starts at the first one; behind
// the last one it stands at the end. Void once the node it stands on leaves the list by another
// way.
class KORBASE_API DPListIterator {
public:
    explicit DPListIterator(DPList& dplist) : list(&dplist), cur(nullptr) { Reset(); }

    void Reset();  // back to the first pointer

    // The current pointer, null at the end; the call form also steps to the next one.
    void* Succ() const { return cur ? cur->Data() : nullptr; }
    void* operator()();
    DPListIterator& operator++();
    DPListIterator operator++(int);

    // Not null while there is a current pointer, which itself may be null.
    operator void const*() const { return cur; }

    // Adds `data` before or behind the current pointer, which stays current; at the end, both add
    // it as the last one and stay at the end. Throws std::bad_alloc with the list unchanged.
    void Insert(void* data);
    void Append(void* data);

    // Takes out and returns the current pointer and stands on the next; null at the end.
    void* Remove();

private:
    DPList* list;
    DPLink* cur;
};

#endif
