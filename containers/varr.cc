#include "containers/varr.h"

#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <functional>

#include "text/memory.h"
#include "text/out_of_memory.h"

namespace {

// A block for `count` elements, at least 1 byte: realloc may answer a size of 0 with null.
char* Buffer(char* old, std::int64_t count, int size) {
    if (count > INT32_MAX) korbase_detail::OutOfMemory();
    return static_cast<char*>(SArealloc(old, std::max(static_cast<unsigned>(count), 1U),
                                        std::max(static_cast<unsigned>(size), 1U)));
}

std::size_t Bytes(varr_t const* v, int elements) {
    return static_cast<std::size_t>(elements) * static_cast<std::size_t>(v->elemSize);
}

void* Last(varr_t const* v) { return v->wp == v->base ? nullptr : v->wp - v->elemSize; }

void Extend(varr_t* v, int n) {
    int const length = varr_len(v);
    std::int64_t const need = std::int64_t{length} + n;
    std::int64_t capacity = v->capacity;
    while (capacity < need) {
        std::int64_t const step = v->type == 0 ? v->incr : v->type == 1 ? capacity : 0;
        if (step <= 0)
            for (;;) pause();
        capacity += step;
    }
    if (capacity == v->capacity) return;
    v->base = Buffer(v->base, capacity, v->elemSize);
    v->wp = v->base + Bytes(v, length);
    v->capacity = static_cast<std::int32_t>(capacity);
}

}  // namespace

varr_t* varr_create(int elemSize, int initial, int type) {
    auto* const v = static_cast<varr_t*>(SMalloc(sizeof(varr_t)));
    v->type = type;
    v->elemSize = std::max(elemSize, 0);
    v->capacity = v->incr = std::max(initial, 0);
    v->wp = v->base = Buffer(nullptr, v->capacity, v->elemSize);
    return v;
}

void varr_delete(varr_t* v) {
    if (!v) return;
    std::free(v->base);
    std::free(v);
}

void varr_reset(varr_t* v) { v->wp = v->base; }

void* varr_app(varr_t* v, void const* elem) { return varr_cat(v, 1, elem); }

void* varr_cat(varr_t* v, int n, void const* elems) {
    if (n <= 0) return Last(v);

    auto const* source = static_cast<char const*>(elems);
    std::less<char const*> const before;
    bool const own = !before(source, v->base) && before(source, v->base + Bytes(v, v->capacity));
    std::ptrdiff_t const offset = own ? source - v->base : 0;
    Extend(v, n);
    std::memmove(v->wp, own ? v->base + offset : source, Bytes(v, n));
    v->wp += Bytes(v, n);
    return Last(v);
}

void* varr_ass(varr_t* v, void const* elem) { return varr_cpy(v, 1, elem); }

// The elements of a part of this array are still there when they are appended.
void* varr_cpy(varr_t* v, int n, void const* elems) {
    varr_reset(v);
    return varr_cat(v, n, elems);
}

void* varr_override(varr_t* v, int n, void* mem) {
    v->capacity = std::max(n, 0);
    v->base = static_cast<char*>(mem);
    v->wp = v->base + Bytes(v, v->capacity);
    return Last(v);
}

void* varr_retrieve(varr_t* v) {
    char* const fresh = Buffer(nullptr, v->incr, v->elemSize);
    void* const buffer = v->base;
    v->wp = v->base = fresh;
    v->capacity = v->incr;
    return buffer;
}

void* varr_save(varr_t* v) {
    int const length = varr_len(v);
    char* const copy = Buffer(nullptr, length, v->elemSize);
    if (length > 0) std::memcpy(copy, v->base, Bytes(v, length));
    varr_reset(v);
    return copy;
}

void* varr_get(varr_t const* v) { return v->base; }

void* varr_get_by_index(varr_t const* v, int i) {
    return v->base + static_cast<std::ptrdiff_t>(i) * v->elemSize;
}

int varr_len(varr_t const* v) {
    return v->elemSize == 0 ? 0 : static_cast<int>((v->wp - v->base) / v->elemSize);
}

void* varr_find(varr_t const* v, int (*cmp)(void const* elem, void const* key), void const* key) {
    if (v->elemSize == 0) return nullptr;
    for (char* p = v->base; p != v->wp; p += v->elemSize)
        if (cmp(p, key) == 0) return p;
    return nullptr;
}

void* varr_pop(varr_t* v) { return v->wp == v->base ? nullptr : v->wp -= v->elemSize; }

void varr_sort(varr_t* v, int (*cmp)(void const* a, void const* b)) {
    auto const length = static_cast<std::size_t>(varr_len(v));
    if (length > 1) std::qsort(v->base, length, static_cast<std::size_t>(v->elemSize), cmp);
}

void varr_uniq(varr_t* v, int (*cmp)(void const* elem, void const* left)) {
    if (varr_len(v) == 0) return;
    std::size_t const size = Bytes(v, 1);
    char* to = v->base + size;
    for (char* from = to; from != v->wp; from += size) {
        if (cmp(from, from - size) == 0) continue;
        if (to != from) std::memcpy(to, from, size);
        to += size;
    }
    v->wp = to;
}
