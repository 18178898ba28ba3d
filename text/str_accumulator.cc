#include "text/str_accumulator.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <functional>

#include "text/memory.h"
#include "text/out_of_memory.h"

namespace {

constexpr std::size_t kStep = 128;  // bytes

void Resize(str_arr_t* acc, std::size_t capacity) {
    if (capacity > INT32_MAX) korbase_detail::OutOfMemory();
    auto const used = acc->buffer ? acc->end - acc->buffer : 0;
    acc->buffer = static_cast<char*>(SRealloc(acc->buffer, static_cast<unsigned>(capacity)));
    acc->end = acc->buffer + used;
    acc->capacity = static_cast<std::int32_t>(capacity);
}

bool IsInside(str_arr_t const* acc, char const* text) {
    std::less<char const*> const before;
    return !before(text, acc->buffer) && before(text, acc->buffer + acc->capacity);
}

// Puts `text` behind the first `used` characters; they and the text may be the same.
char* Append(str_arr_t* acc, std::size_t used, char const* text) {
    if (!acc->buffer) {
        Resize(acc, kStep);
        *acc->end = '\0';
    }
    std::size_t const length = text ? std::strlen(text) : 0;
    std::size_t const need = used + length;
    if (need >= static_cast<std::size_t>(acc->capacity)) {
        bool const inside = IsInside(acc, text);
        auto const offset = inside ? text - acc->buffer : 0;
        Resize(acc, (need / kStep + 1) * kStep);
        if (inside) text = acc->buffer + offset;
    }
    if (length) std::memmove(acc->buffer + used, text, length);
    acc->end = acc->buffer + need;
    *acc->end = '\0';
    return acc->buffer;
}

}  // namespace

void str_arr_init(str_arr_t* acc) { *acc = str_arr_t{nullptr, nullptr, 0}; }

char* str_arr_cat(str_arr_t* acc, char const* text) {
    return Append(acc, static_cast<std::size_t>(acc->end - acc->buffer), text);
}

char* str_arr_cpy(str_arr_t* acc, char const* text) { return Append(acc, 0, text); }

char* str_arr_str(str_arr_t const* acc) { return acc->buffer; }

void str_arr_delete(str_arr_t* acc) { std::free(acc->buffer); }
