// Values of any type that a typed stream carries, by the letters of docs/wire-format.md.
#ifndef KORBASE_TESTS_NET_TYPED_VALUES_H
#define KORBASE_TESTS_NET_TYPED_VALUES_H

#include <net/sockstream.h>

#include <functional>
#include <map>

#include "tests/support/test.h"

// What a value looks like, and how to send it.
struct Value {
    std::string shown;
    std::function<void(OSockStream&)> send;
};

template <class T>
Value Take(ISockStream& in) {
    T value{};
    if constexpr (std::is_same_v<T, TOList<String_t>>) value.Append("old");
    in >> value;
    std::ostringstream shown;
    if constexpr (std::is_same_v<T, char>) {
        shown << int{static_cast<signed char>(value)};
    } else if constexpr (std::is_arithmetic_v<T>) {
        shown << +value;
    } else if constexpr (std::is_same_v<T, TOList<String_t>>) {
        shown << Joined(value);
    } else {
        shown << value.View();
    }
    return {shown.str(), [value](OSockStream& out) { out << value; }};
}

inline Value TakeChars(ISockStream& in) {
    std::vector<char> raw(1 << 17);
    in >> raw.data();
    return {raw.data(),
            [text = std::string(raw.data())](OSockStream& out) { out << text.c_str(); }};
}

inline std::map<char, Value (*)(ISockStream&)> const take = {
    {'c', Take<char>},       {'C', Take<unsigned char>},
    {'h', Take<short>},      {'H', Take<unsigned short>},
    {'i', Take<int>},        {'I', Take<unsigned>},
    {'l', Take<long>},       {'L', Take<unsigned long>},
    {'q', Take<long long>},  {'Q', Take<unsigned long long>},
    {'f', Take<float>},      {'d', Take<double>},
    {'z', TakeChars},        {'s', Take<String_t>},
    {'b', Take<ByteString>}, {'S', Take<TOList<String_t>>}};

#endif
