// Member lists such as "1,3,5-9".
#include <climits>
#include <iostream>

#include "containers/set.h"

namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

struct Token {
    enum Kind { kEnd, kNumber, kSign };

    bool Is(char c) const { return kind == kSign && sign == c; }

    Kind kind;
    int number;
    char sign;  // any other character, a token by itself
};

class Scanner {
public:
    explicit Scanner(char const* list) : text(list) {}

    Token Next() {
        while (*text == ' ' || *text == '\t') ++text;
        if (*text == '\0') return {Token::kEnd, 0, 0};
        if (IsDigit(*text)) return {Token::kNumber, Number(), 0};
        return {Token::kSign, 0, *text++};
    }

private:
    int Number() {
        long long value = 0;
        for (; IsDigit(*text); ++text)
            if (value <= INT_MAX) value = 10 * value + (*text - '0');
        return value > INT_MAX ? INT_MAX : static_cast<int>(value);
    }

    char const* text;
};

// Reads the item that `first` begins into `set`; returns the token behind it.
Token ReadItem(Scanner& scanner, int first, Set& set) {
    Token const after = scanner.Next();
    if (after.kind == Token::kEnd || after.Is(',')) set.add(first);
    if (!after.Is('-')) return after;

    Token const last = scanner.Next();
    if (last.kind != Token::kNumber) return last;
    if (first <= last.number) set.bumpsize(static_cast<unsigned>(last.number));
    for (long long i = first; i <= last.number; ++i) set.add(i);
    return scanner.Next();
}

}  // namespace

void Set::add(char const* text) {
    Scanner scanner(text ? text : "");
    Token token = scanner.Next();
    bool const complement = token.Is('-');
    if (complement) token = scanner.Next();

    Set listed(0U);
    while (token.kind != Token::kEnd) {
        if (token.kind == Token::kNumber) {
            token = ReadItem(scanner, token.number, listed);
        } else if (token.Is(',')) {
            token = scanner.Next();
        } else {
            std::cerr << "Set::add(const char*): syntax error near \"" << token.sign << '"'
                      << std::endl;
            return;
        }
    }
    *this |= listed;
    if (complement) ~*this;
}
