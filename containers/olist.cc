#include "containers/olist.h"

#include <utility>

namespace {

auto Matches(int (*cmp)(olink_t const*, void const*), void const* key) {
    return [cmp, key](olink_t const* link) { return cmp(link, key) == 0; };
}

auto Matches(olist_cmpo_t const& cmp) {
    return [&cmp](olink_t const* link) { return cmp(link) == 0; };
}

}  // namespace

olink_t::~olink_t() = default;
olist_cmpo_t::~olist_cmpo_t() = default;
olist_actiono_t::~olist_actiono_t() = default;

olist_t::~olist_t() { clear(); }

olist_t::olist_t(olist_t&& other) noexcept : last(std::exchange(other.last, nullptr)) {}

olist_t& olist_t::operator=(olist_t&& other) noexcept {
    olist_t moved(std::move(other));
    std::swap(last, moved.last);
    return *this;
}

void olist_t::append(olink_t* link) { Ring::PutLast(last, link); }
void olist_t::insert(olink_t* link) { Ring::PutFirst(last, link); }
void olist_t::append(olist_t& other) { Ring::SpliceLast(last, other.last); }
void olist_t::insert(olist_t& other) { Ring::SpliceFirst(last, other.last); }

olink_t* olist_t::removeTop() { return Ring::TakeAfter(last, last); }
olink_t* olist_t::removeBottom() { return Ring::TakeAfter(last, Ring::BeforeLast(last)); }

olink_t* olist_t::remove(int (*cmp)(olink_t const*, void const*), void const* key) {
    return Ring::TakeAfter(last, Ring::FindBefore(last, Matches(cmp, key)));
}

olink_t* olist_t::remove(olist_cmpo_t const& cmp) {
    return Ring::TakeAfter(last, Ring::FindBefore(last, Matches(cmp)));
}

int olist_t::removeLoop(int (*cmp)(olink_t const*, void const*), void const* key) {
    return Discard(Matches(cmp, key));
}

int olist_t::removeLoop(olist_cmpo_t& cmp) { return Discard(Matches(cmp)); }

void olist_t::clear() { Ring::DeleteAll(std::exchange(last, nullptr)); }

int olist_t::loop(int (*fn)(olink_t*, void*), void* arg) {
    return Ring::Loop(last, [fn, arg](olink_t* link) { return fn(link, arg); });
}

int olist_t::loop(olist_actiono_t& action) {
    return Ring::Loop(last, [&action](olink_t* link) { return action(link); });
}

olink_t* olist_t::find(int (*cmp)(olink_t const*, void const*), void const* key) const {
    return Ring::Find(last, Matches(cmp, key));
}

olink_t* olist_t::find(olist_cmpo_t const& cmp) const { return Ring::Find(last, Matches(cmp)); }

olink_t* olist_t::operator[](int i) const { return Ring::At(last, i); }

int olist_t::Len() const { return Ring::Len(last); }

void olist_t::Sort(int (*cmp)(olink_t const*, void const*)) { Ring::Sort(last, cmp); }

olink_t* olist_t::mergesort(olink_t* c, olink_t* z, int (*cmp)(olink_t const*, void const*)) {
    return Ring::MergeSort(c, z, cmp);
}

olink_t* olist_t::merge(olink_t* a, olink_t* b, olink_t* z,
                        int (*cmp)(olink_t const*, void const*)) {
    return Ring::Merge(a, b, z, cmp);
}
