#include "text/str_search.h"

#include <algorithm>
#include <cstring>
#include <string_view>

#include "text/letter_fold.h"

namespace {

using std::string_view;

bool SameLetters(char a, char b) { return korbase_detail::FoldedDifference(a, b) == 0; }

bool StartsWith(string_view s, string_view sub) {
    return s.size() >= sub.size() && s.compare(0, sub.size(), sub) == 0;
}

bool StartsWithFolded(string_view s, string_view sub) {
    return s.size() >= sub.size() && std::equal(sub.begin(), sub.end(), s.begin(), SameLetters);
}

int Position(string_view s, string_view sub) {
    return s.empty() ? 0 : static_cast<int>(s.find(sub) + 1);  // npos + 1 is 0
}

int PositionFolded(string_view s, string_view sub) {
    if (s.empty() || sub.empty()) return !s.empty();
    auto const found = std::search(s.begin(), s.end(), sub.begin(), sub.end(), SameLetters);
    return found == s.end() ? 0 : static_cast<int>(found - s.begin() + 1);
}

bool ValidCounts(char const* s, int slen, char const* sub, int sublen) {
    return s && slen >= 1 && sublen >= 0 && (sub || sublen == 0);
}

string_view View(char const* s, int length) { return {s, static_cast<std::size_t>(length)}; }

// The text from position `pos` on; the caller's position may be anything.
string_view From(int pos, string_view s) {
    return pos >= 1 ? s.substr(std::min(s.size(), static_cast<std::size_t>(pos - 1)))
                    : string_view();
}

}  // namespace

char* str_FindC(char const* text, str_pred_t pred) {
    if (!text) return nullptr;
    for (; *text; ++text)
        if (pred(static_cast<unsigned char>(*text))) return const_cast<char*>(text);
    return nullptr;
}

char* str_FindCN(char const* text, str_pred_t pred) { return str_FindC(text, pred); }

int str_index(char const* s, int slen, char const* sub, int sublen) {
    return ValidCounts(s, slen, sub, sublen) ? Position(View(s, slen), View(sub, sublen)) : 0;
}

int str_iindex(char const* s, int slen, char const* sub, int sublen) {
    return ValidCounts(s, slen, sub, sublen) ? PositionFolded(View(s, slen), View(sub, sublen)) : 0;
}

int str_indx(char const* s, char const* sub) { return s && sub ? Position(s, sub) : 0; }

int str_iindx(char const* s, char const* sub) { return s && sub ? PositionFolded(s, sub) : 0; }

int str_cont(int pos, char const* s, char const* sub) {
    return s && sub && StartsWith(From(pos, s), sub);
}

int str_icont(int pos, char const* s, char const* sub) {
    return s && sub && StartsWithFolded(From(pos, s), sub);
}

int str_ncont(int pos, char const* s, int slen, char const* sub, short sublen) {
    if (sublen < 1) return sublen == 0;
    return ValidCounts(s, slen, sub, sublen) &&
           StartsWith(From(pos, View(s, slen)), View(sub, sublen));
}

int str_nicont(int pos, char const* s, int slen, char const* sub, short sublen) {
    if (sublen < 1) return sublen == 0;
    return ValidCounts(s, slen, sub, sublen) &&
           StartsWithFolded(From(pos, View(s, slen)), View(sub, sublen));
}

char* str_Tok(char** cursor, char* text, str_pred_t issep) {
    if (!issep) {
        *cursor = text;
        return nullptr;
    }
    char* next = *cursor;
    if (!next) return nullptr;
    while (*next && issep(static_cast<unsigned char>(*next))) ++next;
    char* const token = next;
    while (*next && !issep(static_cast<unsigned char>(*next))) ++next;
    if (*next) *next++ = '\0';
    *cursor = next;
    return *token ? token : nullptr;
}

int str_split(char* text, str_pred_t issep, char** tokens) {
    char* cursor = nullptr;
    str_Tok(&cursor, text, nullptr);
    int count = 0;
    while ((tokens[count] = str_Tok(&cursor, nullptr, issep))) ++count;
    return count;
}
