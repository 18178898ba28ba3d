#include "text/strlist.h"

#include <cstring>
#include <string>
#include <string_view>

#include "text/str_text.h"

int Split(char const* text, TOList<String_t>& list, char const* separators) {
    if (!text) return 0;
    if (!separators) separators = "";
    TOList<String_t> pieces;
    for (int count = 1;; ++count) {
        std::size_t const length = std::strcspn(text, separators);
        pieces.Append(String_t(std::string_view(text, length)));
        text += length;
        if (*text == '\0') {
            list.append(pieces);
            return count;
        }
        ++text;
    }
}

int StrListCmp(TOLink<String_t> const* link, String_t const* key) {
    return str_cmp(link->Contents(), *key);
}

int StrListCaseCmp(TOLink<String_t> const* link, String_t const* key) {
    return str_icmp(link->Contents(), *key);
}

String_t Concat(String_t const& a, String_t const& b, char const* separator) {
    if (a.IsNull() && b.IsNull() && !separator) return String_t();
    std::string text(a.View());
    if (separator) text += separator;
    return String_t(text += b.View());
}

String_t Concat(TOList<String_t> const& list, char separator) {
    if (!list.First()) return String_t();
    std::string text;
    for (String_t const& value : list) {
        text += value.View();
        text += separator;
    }
    text.pop_back();
    return String_t(std::string_view(text));
}
