// Ring: the algorithms that all linked lists share; not for applications. A list is a ring
// addressed by its last link, so that both ends are one step away; the empty list is a null `last`.
//
// Link has a member `next`, and `prev` too where kTwoWay is set; it makes Ring a friend. Nothing
// here allocates, and only DeleteAll frees: a removed link belongs to whoever asked for it.
#ifndef KORBASE_CONTAINERS_RING_H
#define KORBASE_CONTAINERS_RING_H

#include <cstddef>
#include <iterator>
#include <type_traits>

namespace korbase_detail {

template <class Link, bool kTwoWay = false>
struct Ring {
    static Link* First(Link const* last) { return last ? last->next : nullptr; }

    // The link behind `link`, or null if that is the last one.
    static Link* After(Link const* link, Link const* last) {
        return link == last ? nullptr : link->next;
    }

    static void DeleteAll(Link* last) {
        Loop(last, [](Link* link) {
            delete link;
            return 0;
        });
    }

    static int Len(Link const* last) {
        int count = 0;
        for (Link const* link = First(last); link; link = After(link, last)) ++count;
        return count;
    }

    // Link `i`, counted from 0; null if there is none.
    static Link* At(Link const* last, int i) {
        Link* link = i < 0 ? nullptr : First(last);
        while (link && i-- > 0) link = After(link, last);
        return link;
    }

    // The predecessor of the first link that `match` accepts; null if it accepts none.
    template <class Match>
    static Link* FindBefore(Link* last, Match match) {
        Link* before = last;
        while (before) {
            Link* const link = before->next;
            if (match(link)) return before;
            before = link == last ? nullptr : link;
        }
        return nullptr;
    }

    template <class Match>
    static Link* Find(Link* last, Match match) {
        Link* const before = FindBefore(last, match);
        return before ? before->next : nullptr;
    }

    // Visits the links until `visit` gives a result other than 0, and returns that. The successor
    // is taken before each call, so that the visited link may be unlinked or deleted.
    template <class Visit>
    static int Loop(Link* last, Visit visit) {
        Link* link = First(last);
        while (link) {
            Link* const next = After(link, last);
            if (int const result = visit(link)) return result;
            link = next;
        }
        return 0;
    }

    // The predecessor of the last link, or null in an empty ring.
    static Link* BeforeLast(Link* last) {
        if constexpr (kTwoWay) {
            return last ? last->prev : nullptr;
        } else {
            return FindBefore(last, [last](Link const* link) { return link == last; });
        }
    }

    static void PutFirst(Link*& last, Link* link) {
        if (!last)
            last = link;  // the joins below make it a ring of one
        else
            Join(link, last->next);
        Join(last, link);
    }

    static void PutLast(Link*& last, Link* link) {
        PutFirst(last, link);
        last = link;
    }

    // Adds `link` before or behind `at`, both for rings with `prev`; a null `at` stands for the
    // end.
    static void PutBefore(Link*& last, Link* at, Link* link) {
        if (!at) return PutLast(last, link);
        if (at == last->next) return PutFirst(last, link);
        Join(at->prev, link);
        Join(link, at);
    }

    static void PutBehind(Link*& last, Link* at, Link* link) {
        if (!at || at == last) return PutLast(last, link);
        Join(link, at->next);
        Join(at, link);
    }

    // Unlinks and returns the link behind `before`; null if `before` is null.
    static Link* TakeAfter(Link*& last, Link* before) {
        if (!before) return nullptr;
        Link* const link = before->next;
        Join(before, link->next);
        if (link == last) last = link == before ? nullptr : before;
        link->next = nullptr;
        if constexpr (kTwoWay) link->prev = nullptr;
        return link;
    }

    // Unlinks every link that `match` accepts and hands it to `release`; returns how many.
    template <class Match, class Release>
    static int TakeAll(Link*& last, Match match, Release release) {
        int count = 0;
        Link const* const end = last;
        Link* before = last;
        for (bool more = last != nullptr; more;) {
            Link* const link = before->next;
            more = link != end;
            if (match(link)) {
                release(TakeAfter(last, before));
                ++count;
            } else {
                before = link;
            }
        }
        return count;
    }

    // Moves all links of `other` to the front or the end; a ring spliced into itself stays as it
    // is.
    static void SpliceFirst(Link*& last, Link*& other) {
        Link* const end = last ? last : other;
        Splice(last, other);
        last = end;
    }

    static void SpliceLast(Link*& last, Link*& other) {
        Link* const end = other ? other : last;
        Splice(last, other);
        last = end;
    }

    // Stable merge sort (Sedgewick's, with a sentinel): opens the ring, ends the chain at a link
    // that follows itself, and closes the ring again. `compare` gives more than 0 when its first
    // argument belongs behind its second; it must not throw.
    template <class Compare>
    static void Sort(Link*& last, Compare compare) {
        if (!last) return;
        Link z;
        z.next = &z;
        Link* const first = last->next;
        last->next = &z;
        Link* const sorted = MergeSort(first, &z, compare);
        for (last = sorted; last->next != &z;) last = last->next;
        last->next = sorted;
    }

    // Sorts the chain from `c` to the sentinel `z`, which follows itself; returns its first link.
    template <class Compare>
    static Link* MergeSort(Link* c, Link* z, Compare compare) {
        if (c->next == z) return c;
        Link* const a = c;
        for (Link* fast = c->next->next->next; fast != z; fast = fast->next->next) c = c->next;
        Link* const b = c->next;
        c->next = z;
        Link* const front = MergeSort(a, z, compare);
        return Merge(front, MergeSort(b, z, compare), z, compare);
    }

    // Merges two sorted chains that end at `z`; of equal links those of `a` come first.
    template <class Compare>
    static Link* Merge(Link* a, Link* b, Link* z, Compare compare) {
        Link* first = z;
        Link** end = &first;
        while (a != z || b != z) {
            bool const from_b = a == z || (b != z && compare(a, b) > 0);
            Link*& source = from_b ? b : a;
            *end = source;
            end = &source->next;
            source = source->next;
        }
        return first;
    }

private:
    static void Join(Link* before, Link* after) {
        before->next = after;
        if constexpr (kTwoWay) after->prev = before;
    }

    static void Splice(Link* last, Link*& other) {
        if (!other || other == last) return;
        if (last) {
            Link* const first = last->next;
            Join(last, other->next);
            Join(other, first);
        }
        other = nullptr;
    }
};

// Walks a ring for range-for; View::Get(link) is what `*it` gives.
template <class Link, class View>
class RingIterator {
public:
    using iterator_category = std::input_iterator_tag;
    using difference_type = std::ptrdiff_t;
    using reference = decltype(View::Get(static_cast<Link*>(nullptr)));
    using value_type = std::remove_cv_t<std::remove_reference_t<reference>>;
    using pointer = void;

    RingIterator() : cur(nullptr), last(nullptr) {}
    RingIterator(Link* start, Link const* end) : cur(start), last(end) {}

    reference operator*() const { return View::Get(cur); }
    RingIterator& operator++() {
        cur = cur == last ? nullptr : cur->Next();
        return *this;
    }
    RingIterator operator++(int) {
        RingIterator const before(*this);
        ++*this;
        return before;
    }
    friend bool operator==(RingIterator const& a, RingIterator const& b) { return a.cur == b.cur; }
    friend bool operator!=(RingIterator const& a, RingIterator const& b) { return a.cur != b.cur; }

private:
    Link* cur;
    Link const* last;
};

// What iterators of intrusive rings and of rings of pointers give.
template <class Link>
struct RingLinkView {
    static Link& Get(Link* link) { return *link; }
};
template <class Link>
struct RingDataView {
    static void* Get(Link const* link) { return link->Data(); }
};

}  // namespace korbase_detail

#endif
