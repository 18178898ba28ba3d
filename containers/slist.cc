#include "containers/slist.h"

#include <utility>

#include "containers/pool_cache.h"

using korbase_detail::PoolAccess;

namespace {

Pool node_pool;

auto Matches(int (*cmp)(void*, void const*), void const* key) {
    return [cmp, key](slink_t const* node) { return cmp(node->Data(), key) == 0; };
}

auto OnData(int (*cmp)(void*, void const*)) {
    return [cmp](slink_t const* a, slink_t const* b) { return cmp(a->Data(), b->Data()); };
}

// Frees a node that is out of its list and returns its data; null gives null.
void* Drop(slink_t* node) {
    void* const data = node ? node->Data() : nullptr;
    delete node;
    return data;
}

}  // namespace

void* slink_t::operator new(std::size_t size) { return PoolAccess::New<slink_t>(node_pool, size); }

void slink_t::operator delete(void* node, std::size_t size) {
    PoolAccess::Delete<slink_t>(node_pool, node, size);
}

slist_t::~slist_t() { clear(); }

slist_t::slist_t(slist_t const& other) : slist_t() {
    for (void* const data : other) append(data);
}

slist_t& slist_t::operator=(slist_t const& other) {
    if (this != &other) *this = slist_t(other);
    return *this;
}

slist_t::slist_t(slist_t&& other) noexcept : last(std::exchange(other.last, nullptr)) {}

slist_t& slist_t::operator=(slist_t&& other) noexcept {
    slist_t moved(std::move(other));
    std::swap(last, moved.last);
    return *this;
}

void slist_t::append(void* data) { Ring::PutLast(last, new slink_t(data)); }
void slist_t::insert(void* data) { Ring::PutFirst(last, new slink_t(data)); }
void slist_t::append(slist_t& other) { Ring::SpliceLast(last, other.last); }
void slist_t::insert(slist_t& other) { Ring::SpliceFirst(last, other.last); }

void* slist_t::removeTop() { return Drop(Ring::TakeAfter(last, last)); }
void* slist_t::removeBottom() { return Drop(Ring::TakeAfter(last, Ring::BeforeLast(last))); }

void* slist_t::remove(int (*cmp)(void*, void const*), void const* key) {
    return Drop(Ring::TakeAfter(last, Ring::FindBefore(last, Matches(cmp, key))));
}

int slist_t::removeLoop(int (*cmp)(void*, void const*), void const* key,
                        int (*release)(void*, void*), void* arg) {
    return Ring::TakeAll(last, Matches(cmp, key), [release, arg](slink_t* node) {
        void* const data = Drop(node);
        if (release) release(data, arg);
    });
}

void slist_t::clear() { Ring::DeleteAll(std::exchange(last, nullptr)); }

int slist_t::loop(int (*fn)(void*, void*), void* arg) {
    return Ring::Loop(last, [fn, arg](slink_t* node) { return fn(node->data, arg); });
}

slink_t* slist_t::Findl(int (*cmp)(void*, void const*), void const* key) const {
    return Ring::Find(last, Matches(cmp, key));
}

void* slist_t::find(int (*cmp)(void*, void const*), void const* key) const {
    slink_t const* const node = Findl(cmp, key);
    return node ? node->data : nullptr;
}

void* slist_t::Replace(int (*cmp)(void*, void const*), void const* key, void* data) {
    slink_t* const node = Findl(cmp, key);
    return node ? std::exchange(node->data, data) : nullptr;
}

void slist_t::Uniq(int (*cmp)(void*, void const*)) {
    if (!last) return;
    slink_t* kept = last->next;
    void const* before = kept->data;
    for (slink_t* node = kept; node != last;) {
        node = node->next;
        void* const data = node->data;
        if (cmp(data, before) != 0) {
            kept = kept->next;
            kept->data = data;
        }
        before = data;
    }
    slink_t* const surplus = kept->next;
    slink_t* const end = std::exchange(last, kept);
    if (kept == end) return;
    kept->next = end->next;
    end->next = surplus;
    Ring::DeleteAll(end);
}

void slist_t::Sort(int (*cmp)(void*, void const*)) { Ring::Sort(last, OnData(cmp)); }

slink_t* slist_t::mergesort(slink_t* c, slink_t* z, int (*cmp)(void*, void const*)) {
    return Ring::MergeSort(c, z, OnData(cmp));
}

slink_t* slist_t::merge(slink_t* a, slink_t* b, slink_t* z, int (*cmp)(void*, void const*)) {
    return Ring::Merge(a, b, z, OnData(cmp));
}

void* slist_t::operator[](int i) const {
    slink_t const* const node = Ring::At(last, i);
    return node ? node->data : nullptr;
}

int slist_t::Len() const { return Ring::Len(last); }
