// DList: an intrusive doubly linked ring; the caller derives records from DLink.
//
// Adding and removing are one step where the place is known. The list never allocates and never
// copies a link. It owns its links only where it says "deletes", which includes its destructor. A
// list belongs to one thread at a time.
#ifndef KORBASE_CONTAINERS_DLIST_H
#define KORBASE_CONTAINERS_DLIST_H

#include <containers/ring.h>
#include <korbase_api.h>

// The base of the records in a DList; a link is in one list at a time. Copying a record copies
// nothing of its place in a list.
class KORBASE_API DLink {
public:
    DLink() : next(nullptr), prev(nullptr) {}
    DLink(DLink const&) : next(nullptr), prev(nullptr) {}
    // NOLINTNEXTLINE(bugprone-unhandled-self-assignment): nothing is assigned
    DLink& operator=(DLink const&) { return *this; }
    virtual ~DLink();

    // The neighbours in the ring, where the first link follows the last; null outside a list.
    DLink* Next() const { return next; }
    DLink* Prev() const { return prev; }

private:
    friend struct korbase_detail::Ring<DLink, true>;
    DLink* next;
    DLink* prev;
};

class KORBASE_API DList {
public:
    using Iterator = korbase_detail::RingIterator<DLink, korbase_detail::RingLinkView<DLink>>;

    DList() : last(nullptr) {}
    ~DList();  // deletes every link
    DList(DList&& other) noexcept;
    DList& operator=(DList&& other) noexcept;  // deletes every link it had

    // Adds `link`, which is in no list, at the end or at the front.
    void Append(DLink* link);
    void Insert(DLink* link);

    // Unlinks and returns the first link; null if the list is empty.
    DLink* RemoveFirst();

    // Returns the last link, or null if the list is empty. Kept: the list is empty afterwards; the
    // other links are dropped from it, still joined with the returned one in a ring and not
    // deleted.
    DLink* RemoveLast();

    // Unlinks and returns the first link for which `cmp(link, key)` is 0; null if there is none.
    DLink* Remove(int (*cmp)(DLink const*, void const*), void const* key);

    // Unlinks every link for which `cmp(link, key)` is 0, calls `fn(link, arg)`, if it is not null,
    // on each, deletes them, and returns how many there were. `key` may be, or lie in, one of them.
    int RemoveLoop(int (*cmp)(DLink const*, void const*), void const* key, int (*fn)(DLink*, void*),
                   void* arg);

    // Deletes every link.
    void Clear();

    // Visits the links in order until `fn` returns other than 0; returns that, or 0 at the end. The
    // visited link may be unlinked or deleted. Links that are appended meanwhile are not visited.
    int Loop(int (*fn)(DLink*, void*), void* arg);

    // The first link for which `cmp(link, key)` is 0, or null.
    DLink* Find(int (*cmp)(DLink const*, void const*), void const* key) const;

    // Link `i`, counted from 0; null if there is none.
    DLink* operator[](int i) const;

    int Len() const;  // walks the list

    Iterator begin() const { return Iterator(Ring::First(last), last); }
    Iterator end() const { return Iterator(); }

private:
    friend class DListIterator;
    using Ring = korbase_detail::Ring<DLink, true>;

    DLink* last;  // null when empty
};

// A place in a DList, where links can be added and removed. It starts at the first link; behind the
// last one it stands at the end. Void once the link it stands on leaves the list by another way.
class KORBASE_API DListIterator {
public:
    explicit DListIterator(DList& dlist) : list(&dlist), cur(nullptr) { Reset(); }

    void Reset();  // back to the first link

    // The current link, null at the end; the call form also steps to the next one.
    DLink* Succ() const { return cur; }
    DLink* operator()();
    DListIterator& operator++();
    DListIterator operator++(int);

    // Not null while there is a current link.
    operator void const*() const { return cur; }

    // Adds `link` before or behind the current link, which stays current; at the end, both add it
    // as the last link and stay at the end.
    void Insert(DLink* link);
    void Append(DLink* link);

    // Unlinks and returns the current link and stands on the next; null at the end.
    DLink* Remove();

private:
    DList* list;
    DLink* cur;
};

#endif
