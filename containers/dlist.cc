#include "containers/dlist.h"

#include <utility>

namespace {

auto Matches(int (*cmp)(DLink const*, void const*), void const* key) {
    return [cmp, key](DLink const* link) { return cmp(link, key) == 0; };
}

}  // namespace

DLink::~DLink() = default;

DList::~DList() { Clear(); }

DList::DList(DList&& other) noexcept : last(std::exchange(other.last, nullptr)) {}

DList& DList::operator=(DList&& other) noexcept {
    DList moved(std::move(other));
    std::swap(last, moved.last);
    return *this;
}

void DList::Append(DLink* link) { Ring::PutLast(last, link); }
void DList::Insert(DLink* link) { Ring::PutFirst(last, link); }

DLink* DList::RemoveFirst() { return Ring::TakeAfter(last, last); }
DLink* DList::RemoveLast() { return std::exchange(last, nullptr); }

DLink* DList::Remove(int (*cmp)(DLink const*, void const*), void const* key) {
    return Ring::TakeAfter(last, Ring::FindBefore(last, Matches(cmp, key)));
}

int DList::RemoveLoop(int (*cmp)(DLink const*, void const*), void const* key,
                      int (*fn)(DLink*, void*), void* arg) {
    DList doomed;  // until all are found, since `key` may be one of them
    return Ring::TakeAll(last, Matches(cmp, key), [fn, arg, &doomed](DLink* link) {
        if (fn) fn(link, arg);
        doomed.Append(link);
    });
}

void DList::Clear() { Ring::DeleteAll(std::exchange(last, nullptr)); }

int DList::Loop(int (*fn)(DLink*, void*), void* arg) {
    return Ring::Loop(last, [fn, arg](DLink* link) { return fn(link, arg); });
}

DLink* DList::Find(int (*cmp)(DLink const*, void const*), void const* key) const {
    return Ring::Find(last, Matches(cmp, key));
}

DLink* DList::operator[](int i) const { return Ring::At(last, i); }

int DList::Len() const { return Ring::Len(last); }

void DListIterator::Reset() { cur = DList::Ring::First(list->last); }

DLink* DListIterator::operator()() {
    DLink* const link = cur;
    ++*this;
    return link;
}

DListIterator& DListIterator::operator++() {
    if (cur) cur = DList::Ring::After(cur, list->last);
    return *this;
}

DListIterator DListIterator::operator++(int) {
    DListIterator const before(*this);
    ++*this;
    return before;
}

void DListIterator::Insert(DLink* link) { DList::Ring::PutBefore(list->last, cur, link); }
void DListIterator::Append(DLink* link) { DList::Ring::PutBehind(list->last, cur, link); }

DLink* DListIterator::Remove() {
    DLink* const link = (*this)();
    return link ? DList::Ring::TakeAfter(list->last, link->Prev()) : nullptr;
}
