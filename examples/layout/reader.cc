#include "layout/reader.h"

#include <text/numeric.h>
#include <text/str.h>

#include <cctype>
#include <cmath>

namespace layout {
namespace {

int IsBlank(int c) { return std::isspace(c); }

bool IsLetter(char c) { return std::isalpha(static_cast<unsigned char>(c)) != 0; }

// "inf", "min" and a bare sign are no coordinates, although the conversion knows the words.
bool StartsNumber(char const* word) {
    if (*word == '+' || *word == '-') ++word;
    return *word == '.' || std::isdigit(static_cast<unsigned char>(*word)) != 0;
}

}  // namespace

Reader::Status Reader::Next(Record& record) {
    while (ReadLine()) {
        ++line_number;
        if (str_len(line.Get()) + 1 != line.Len()) {
            Fail("zero byte in the line", line.Get());
            return kBadLine;
        }
        words.Reset();
        next_word = 0;
        char* cursor = nullptr;
        str_Tok(&cursor, line.Get(), nullptr);
        while (char* const word = str_Tok(&cursor, line.Get(), IsBlank)) words.App(word);
        if (words.Len() == 0 || words[0][0] == '#') continue;
        return Parse(record) ? kRecord : kBadLine;
    }
    return kEnd;
}

// False at the end of the input. The last line may lack its line end.
bool Reader::ReadLine() {
    line.Reset();
    char c = 0;
    while (in.get(c) && c != '\n') line.App(c);
    if (in.bad() || (!in && line.Len() == 0)) return false;
    line.App('\0');
    return true;
}

bool Reader::Parse(Record& record) {
    char const* const kind = words[next_word++];
    if (str_cmp(kind, "polygon") == 0) {
        record.kind = Record::kPolygon;
        return ParseLayer(record) && ParsePoints(record, 3);
    }
    if (str_cmp(kind, "path") == 0) {
        record.kind = Record::kPath;
        return ParseLayer(record) && ParsePathStyle(record) && ParsePoints(record, 1);
    }
    return Fail("unknown record", kind);
}

bool Reader::ParseLayer(Record& record) {
    if (next_word == static_cast<int>(words.Len())) return Fail("no layer", words[0]);
    record.layer = words[next_word++];
    return true;
}

bool Reader::ParsePathStyle(Record& record) {
    int const missing = next_word + 2 - static_cast<int>(words.Len());
    if (missing > 0) return Fail(missing == 2 ? "no path width" : "no path end", words[0]);
    if (!ParseNumber(record.width)) return false;
    char const* const width = words[next_word - 1];
    if (record.width < 0) return Fail("negative path width", width);
    char const* const ends = words[next_word++];
    if (str_cmp(ends, "0") != 0 && str_cmp(ends, "1") != 0)
        return Fail("path end is neither 0 nor 1", ends);
    record.ends = ends[0] - '0';
    return true;
}

bool Reader::ParsePoints(Record& record, int least) {
    int const count = static_cast<int>(words.Len()) - next_word;
    record.points.Reset();
    for (int i = 0; i < count / 2; ++i) {
        gu_point_t point;
        if (i == kMaxPoints) return Fail("more than 65535 points", words[next_word]);
        if (!ParseNumber(point.x) || !ParseNumber(point.y)) return false;
        record.points.App(point);
    }
    gu_coord_t half = 0;
    if (count % 2 != 0) return ParseNumber(half) && Fail("x without y", words[next_word - 1]);
    if (count / 2 >= least) return true;
    return Fail(least == 1 ? "no points" : "fewer than 3 points", words[words.Len() - 1]);
}

bool Reader::ParseNumber(gu_coord_t& value) {
    char const* const word = words[next_word++];
    double number = 0;
    int const used = StartsNumber(word) ? str_ctodouble(word, &number) : 0;
    if (used == 0 || word[used] != '\0' || word[used - 1] == '%') return Fail("not a number", word);
    if (IsLetter(word[used - 1])) number /= unit;
    if (!(std::fabs(number) <= kMaxCoordinate)) return Fail("number out of range", word);
    value = mth_round(number);
    return true;
}

// Always false, so that a check can return it.
bool Reader::Fail(char const* what, char const* text) {
    constexpr unsigned kLongest = 40;
    char shown[kLongest + 4];
    str_lcpy(shown, text, kLongest + 1);
    for (char* c = shown; *c != '\0'; ++c)
        if (std::iscntrl(static_cast<unsigned char>(*c))) *c = '?';
    if (str_len(text) > kLongest) str_cat(shown, "...");
    problem = what;
    problem += ", '";
    problem += shown;
    problem += "'";
    return false;
}

}  // namespace layout
