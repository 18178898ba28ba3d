// What most tests need: the framework, texts, tables and random input.
#ifndef KORBASE_TESTS_SUPPORT_TEST_H
#define KORBASE_TESTS_SUPPORT_TEST_H

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <random>
#include <sstream>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

// A table to loop over with structured bindings, which name the columns.
template <class... Columns>
using Rows = std::vector<std::tuple<Columns...>>;

// At most `longest` characters, each of them from `alphabet`.
inline std::string RandomText(std::mt19937& random, unsigned longest, std::string const& alphabet) {
    std::string text(random() % (longest + 1), ' ');
    for (char& c : text) c = alphabet[random() % alphabet.size()];
    return text;
}

// The elements of a range as a stream shows them, with blanks between.
template <class Range>
std::string Joined(Range const& range) {
    std::ostringstream out;
    char const* gap = "";
    for (auto const& element : range) out << std::exchange(gap, " ") << element;
    return out.str();
}

#endif
