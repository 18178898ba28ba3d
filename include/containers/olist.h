// olist_t: an intrusive singly linked ring; the caller derives records from olink_t.
//
// Adding at either end, taking the first link and splicing are one step. The list never allocates
// and never copies a link. It owns its links only where it says "deletes", which includes its
// destructor. A list belongs to one thread at a time.
#ifndef KORBASE_CONTAINERS_OLIST_H
#define KORBASE_CONTAINERS_OLIST_H

#include <containers/ring.h>
#include <korbase_api.h>

// The base of the records in an olist_t; a link is in one list at a time. Copying a record copies
// nothing of its place in a list.
class KORBASE_API olink_t {
public:
    olink_t() : next(nullptr) {}
    olink_t(olink_t const&) : next(nullptr) {}
    // NOLINTNEXTLINE(bugprone-unhandled-self-assignment): nothing is assigned
    olink_t& operator=(olink_t const&) { return *this; }
    virtual ~olink_t();

    // The following link, which is the first one behind the last; null outside a list.
    olink_t* Next() const { return next; }

private:
    friend struct korbase_detail::Ring<olink_t>;
    olink_t* next;
};

// A criterion that links are compared with.
class KORBASE_API olist_cmpo_t {
public:
    virtual int operator()(olink_t const* link) const = 0;  // 0: the link matches
    virtual ~olist_cmpo_t();
    static void Del(olink_t* link) { delete link; }
};

// An action on the links of a list, which may unlink or delete (see Del) the link it is given.
class KORBASE_API olist_actiono_t {
public:
    virtual int operator()(olink_t* link) = 0;  // other than 0: stop here
    virtual ~olist_actiono_t();
    static void Del(olink_t* link) { delete link; }
};

class KORBASE_API olist_t {
public:
    using Iterator = korbase_detail::RingIterator<olink_t, korbase_detail::RingLinkView<olink_t>>;

    olist_t() : last(nullptr) {}
    ~olist_t();  // deletes every link
    olist_t(olist_t&& other) noexcept;
    olist_t& operator=(olist_t&& other) noexcept;  // deletes every link it had

    // Adds `link`, which is in no list, at the end or at the front.
    void append(olink_t* link);
    void insert(olink_t* link);

    // Moves all links of `other` to the end or to the front. A list spliced into itself stays as it
    // is.
    void append(olist_t& other);
    void insert(olist_t& other);

    // Unlinks and returns the first or the last link; null if the list is empty. Taking the last
    // one walks the whole list.
    olink_t* removeTop();
    olink_t* removeBottom();

    // Unlinks and returns the first link for which `cmp(link, key)` is 0; null if there is none.
    olink_t* remove(int (*cmp)(olink_t const*, void const*), void const* key);
    olink_t* remove(olist_cmpo_t const& cmp);

    // Deletes every link for which `cmp(link, key)` is 0 and returns how many there were. `key` may
    // be, or lie in, one of the links.
    int removeLoop(int (*cmp)(olink_t const*, void const*), void const* key);
    int removeLoop(olist_cmpo_t& cmp);

    // Deletes every link.
    void clear();

    // Visits the links in order until `fn` returns other than 0; returns that, or 0 at the end. The
    // visited link may be unlinked or deleted. Links that are appended meanwhile are not visited.
    int loop(int (*fn)(olink_t*, void*), void* arg);
    int loop(olist_actiono_t& action);

    // The first link for which `cmp(link, key)` is 0, or null.
    olink_t* find(int (*cmp)(olink_t const*, void const*), void const* key) const;
    olink_t* find(olist_cmpo_t const& cmp) const;

    // Link `i`, counted from 0; null if there is none.
    olink_t* operator[](int i) const;

    int Len() const;  // walks the list

    // Stable merge sort, ascending: `cmp(a, b)` is above 0 when `a` belongs behind the link `b`,
    // and does not throw.
    void Sort(int (*cmp)(olink_t const*, void const*));

    // The steps of Sort, on chains that end at the sentinel `z`, which follows itself: sorts the
    // chain from `c`, and merges the sorted chains `a` and `b`. Both return the first link of the
    // result.
    static olink_t* mergesort(olink_t* c, olink_t* z, int (*cmp)(olink_t const*, void const*));
    static olink_t* merge(olink_t* a, olink_t* b, olink_t* z,
                          int (*cmp)(olink_t const*, void const*));

    Iterator begin() const { return Iterator(Ring::First(last), last); }
    Iterator end() const { return Iterator(); }

protected:
    using Ring = korbase_detail::Ring<olink_t>;

    // Deletes every link that `match` accepts and returns how many there were; not before the last
    // comparison, since what they are compared with may lie in one of them.
    template <class Match>  // bool Match(olink_t const* link)
    int Discard(Match match) {
        olist_t doomed;
        return Ring::TakeAll(last, match, [&doomed](olink_t* link) { doomed.append(link); });
    }

    olink_t* last;  // null when empty
};

#endif
