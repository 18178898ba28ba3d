// slist_t: a singly linked ring of untyped pointers. It owns its nodes, never the data.
//
// Adding at either end, taking the first pointer and splicing are one step and, but for adding,
// allocate nothing. Nodes come from a pool that all threads share; a list belongs to one thread at
// a time.
#ifndef KORBASE_CONTAINERS_SLIST_H
#define KORBASE_CONTAINERS_SLIST_H

#include <containers/ring.h>
#include <korbase_api.h>

#include <cstddef>

// A node of slist_t.
class KORBASE_API slink_t {
public:
    explicit slink_t(void* contents = nullptr) : next(nullptr), data(contents) {}

    slink_t* Next() const { return next; }  // behind the last node comes the first
    void* Data() const { return data; }

    // Nodes of exactly this size come from the pool, others (of derived classes) from the general
    // heap.
    static void* operator new(std::size_t size);
    static void operator delete(void* node, std::size_t size);

private:
    friend class slist_t;
    friend struct korbase_detail::Ring<slink_t>;
    slink_t* next;
    void* data;
};

class KORBASE_API slist_t {
public:
    using Iterator = korbase_detail::RingIterator<slink_t, korbase_detail::RingDataView<slink_t>>;

    slist_t() : last(nullptr) {}
    ~slist_t();
    slist_t(slist_t const& other);  // nodes of its own, the same data
    slist_t& operator=(slist_t const& other);
    slist_t(slist_t&& other) noexcept;
    slist_t& operator=(slist_t&& other) noexcept;

    // Adds `data` at the end or at the front. Throws std::bad_alloc with the list unchanged.
    void append(void* data);
    void insert(void* data);

    // Moves all nodes of `other` to the end or to the front. A list spliced into itself stays as it
    // is.
    void append(slist_t& other);
    void insert(slist_t& other);

    // Takes out the first or the last pointer; null if the list is empty. Taking the last one walks
    // the whole list.
    void* removeTop();
    void* removeBottom();

    // Takes out the first pointer for which `cmp(data, key)` is 0; null if there is none.
    void* remove(int (*cmp)(void*, void const*), void const* key);

    // Takes out every pointer for which `cmp(data, key)` is 0, calls `release(data, arg)`, if it is
    // not null, on each, and returns how many there were.
    int removeLoop(int (*cmp)(void*, void const*), void const* key, int (*release)(void*, void*),
                   void* arg);

    void clear();

    // Calls `fn(data, arg)` in order until it returns other than 0; returns that, or 0 at the end.
    // The call may take out its own pointer. Pointers that are appended meanwhile are not visited.
    int loop(int (*fn)(void*, void*), void* arg);

    // The first node for which `cmp(data, key)` is 0, and its data; null if there is none.
    slink_t* Findl(int (*cmp)(void*, void const*), void const* key) const;
    void* find(int (*cmp)(void*, void const*), void const* key) const;

    // Puts `data` into the first node for which `cmp(its data, key)` is 0 and returns the pointer
    // it held; null if there is none.
    void* Replace(int (*cmp)(void*, void const*), void const* key, void* data);

    // Drops every pointer for which `cmp(data, data before it)` is 0, where "before it" is meant as
    // the list stood at first.
    void Uniq(int (*cmp)(void*, void const*));

    // Stable merge sort, ascending: `cmp(a, b)` is above 0 when `a` belongs behind `b`, and does
    // not throw.
    void Sort(int (*cmp)(void*, void const*));

    // The steps of Sort, on chains that end at the sentinel `z`, which follows itself: sorts the
    // chain from `c`, and merges the sorted chains `a` and `b`. Both return the first node of the
    // result.
    static slink_t* mergesort(slink_t* c, slink_t* z, int (*cmp)(void*, void const*));
    static slink_t* merge(slink_t* a, slink_t* b, slink_t* z, int (*cmp)(void*, void const*));

    // Pointer `i`, counted from 0; null if there is none.
    void* operator[](int i) const;

    int Len() const;  // walks the list

    Iterator begin() const { return Iterator(Ring::First(last), last); }
    Iterator end() const { return Iterator(); }

private:
    using Ring = korbase_detail::Ring<slink_t>;

    slink_t* last;  // null when empty
};

#endif
