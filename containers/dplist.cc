#include "containers/dplist.h"

#include <utility>

#include "containers/pool_cache.h"

using korbase_detail::PoolAccess;

namespace {

Pool node_pool;

auto Matches(int (*cmp)(void const*, void const*), void const* key) {
    return [cmp, key](DPLink const* node) { return cmp(node->Data(), key) == 0; };
}

// Frees a node that is out of its list and returns its data; null gives null.
void* Drop(DPLink* node) {
    void* const data = node ? node->Data() : nullptr;
    delete node;
    return data;
}

}  // namespace

void* DPLink::operator new(std::size_t size) { return PoolAccess::New<DPLink>(node_pool, size); }

void DPLink::operator delete(void* node, std::size_t size) {
    PoolAccess::Delete<DPLink>(node_pool, node, size);
}

DPList::~DPList() { Clear(); }

DPList::DPList(DPList const& other) : DPList() {
    for (void* const data : other) Append(data);
}

DPList& DPList::operator=(DPList const& other) {
    if (this != &other) *this = DPList(other);
    return *this;
}

DPList::DPList(DPList&& other) noexcept : last(std::exchange(other.last, nullptr)) {}

DPList& DPList::operator=(DPList&& other) noexcept {
    DPList moved(std::move(other));
    std::swap(last, moved.last);
    return *this;
}

void DPList::Append(void* data) { Ring::PutLast(last, new DPLink(data)); }
void DPList::Insert(void* data) { Ring::PutFirst(last, new DPLink(data)); }

void* DPList::RemoveFirst() { return Drop(Ring::TakeAfter(last, last)); }
void* DPList::RemoveLast() { return Drop(Ring::TakeAfter(last, Ring::BeforeLast(last))); }

void* DPList::Remove(int (*cmp)(void const*, void const*), void const* key) {
    return Drop(Ring::TakeAfter(last, Ring::FindBefore(last, Matches(cmp, key))));
}

int DPList::RemoveLoop(int (*cmp)(void const*, void const*), void const* key,
                       int (*fn)(void*, void*), void* arg) {
    return Ring::TakeAll(last, Matches(cmp, key), [fn, arg](DPLink* node) {
        void* const data = Drop(node);
        if (fn) fn(data, arg);
    });
}

void DPList::Clear() { Ring::DeleteAll(std::exchange(last, nullptr)); }

int DPList::Loop(int (*fn)(void*, void*), void* arg) {
    return Ring::Loop(last, [fn, arg](DPLink* node) { return fn(node->data, arg); });
}

DPLink* DPList::FindL(int (*cmp)(void const*, void const*), void const* key) const {
    return Ring::Find(last, Matches(cmp, key));
}

void* DPList::Replace(int (*cmp)(void const*, void const*), void const* key, void* data) {
    DPLink* const node = FindL(cmp, key);
    return node ? std::exchange(node->data, data) : nullptr;
}

void* DPList::operator[](int i) const {
    DPLink const* const node = Ring::At(last, i);
    return node ? node->data : nullptr;
}

int DPList::Len() const { return Ring::Len(last); }

void DPListIterator::Reset() { cur = DPList::Ring::First(list->last); }

void* DPListIterator::operator()() {
    void* const data = Succ();
    ++*this;
    return data;
}

DPListIterator& DPListIterator::operator++() {
    if (cur) cur = DPList::Ring::After(cur, list->last);
    return *this;
}

DPListIterator DPListIterator::operator++(int) {
    DPListIterator const before(*this);
    ++*this;
    return before;
}

void DPListIterator::Insert(void* data) {
    DPList::Ring::PutBefore(list->last, cur, new DPLink(data));
}

void DPListIterator::Append(void* data) {
    DPList::Ring::PutBehind(list->last, cur, new DPLink(data));
}

void* DPListIterator::Remove() {
    DPLink* const node = cur;
    ++*this;
    return node ? Drop(DPList::Ring::TakeAfter(list->last, node->Prev())) : nullptr;
}
