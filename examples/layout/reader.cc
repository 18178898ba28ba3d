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

// The words of a label that stand before its text.
constexpr unsigned kLabelWords = 5;

}  // namespace

char const* ReadLength(char const* word, double unit, gu_coord_t& value) {
    double number = 0;
    int const used = StartsNumber(word) ? str_ctodouble(word, &number) : 0;
    if (used == 0 || word[used] != '\0' || word[used - 1] == '%') return "not a number";
    if (IsLetter(word[used - 1])) number /= unit;
    if (!(std::fabs(number) <= kMaxCoordinate)) return "number out of range";
    value = mth_round(number);
    return nullptr;
}

Reader::Status Reader::Next(Record& record) {
    while (ReadLine()) {
        ++line_number;
        if (str_len(line.Get()) + 1 != line.Len()) {
            Fail("zero byte in the line", line.Get());
            return kBadLine;
        }
        CutIntoWords();
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

void Reader::CutIntoWords() {
    words.Reset();
    next_word = 0;
    str_Tok(&rest, line.Get(), nullptr);
    while (char* const word = str_Tok(&rest, line.Get(), IsBlank)) {
        words.App(word);
        if (words.Len() == kLabelWords && str_cmp(words[0], "label") == 0) break;
    }
}

bool Reader::Parse(Record& record) {
    static struct {
        char const* name;
        Record::Kind kind;
    } const kinds[] = {{"polygon", Record::kPolygon},
                       {"path", Record::kPath},
                       {"circle", Record::kCircle},
                       {"label", Record::kLabel}};
    char const* const name = words[next_word++];
    record.points.Reset();
    for (auto const& known : kinds) {
        if (str_cmp(name, known.name) != 0) continue;
        record.kind = known.kind;
        if (!ParseLayer(record)) return false;
        switch (record.kind) {
            case Record::kPolygon: return ParsePoints(record, 3, kMaxPoints);
            case Record::kPath: return ParsePath(record);
            case Record::kCircle: return ParseCircle(record);
            case Record::kLabel: return ParseLabel(record);
        }
    }
    return Fail("unknown record", name);
}

bool Reader::ParseLayer(Record& record) {
    if (next_word == static_cast<int>(words.Len())) return Fail("no layer", words[0]);
    record.layer = words[next_word++];
    return true;
}

bool Reader::ParsePath(Record& record) {
    if (WordsLeft() < 2) return Fail(WordsLeft() == 0 ? "no path width" : "no path end", words[0]);
    if (!ParseSize("negative path width", record.size)) return false;
    char const* const ends = words[next_word++];
    if (str_cmp(ends, "0") != 0 && str_cmp(ends, "1") != 0)
        return Fail("path end is neither 0 nor 1", ends);
    record.ends = ends[0] - '0';
    return ParsePoints(record, 1, kMaxPoints / 2);
}

bool Reader::ParseCircle(Record& record) {
    if (WordsLeft() != 4) return Fail("not LAYER SEGMENTS x y DIAMETER", words[0]);
    char const* const segments = words[next_word++];
    int const used = str_toint(segments, &record.segments);
    if (used == 0 || used > 5 || segments[used] != '\0' || record.segments < 3 ||
        record.segments > 32767)
        return Fail("segments are not a number from 3 to 32767", segments);
    return ParsePoint(record) && ParseSize("negative diameter", record.size);
}

bool Reader::ParseLabel(Record& record) {
    if (WordsLeft() != 3) return Fail("not LAYER HEIGHT x y TEXT", words[0]);
    if (!ParseSize("negative height", record.size) || !ParsePoint(record)) return false;
    record.text = String_t(rest).Trim();
    return !record.text.IsEmpty() || Fail("no text", words[0]);
}

bool Reader::ParsePoint(Record& record) {
    gu_point_t point;
    if (!ParseNumber(point.x) || !ParseNumber(point.y)) return false;
    record.points.App(point);
    return true;
}

bool Reader::ParsePoints(Record& record, int least, int most) {
    int const count = WordsLeft();
    for (int i = 0; i < count / 2; ++i) {
        if (i == most) return Fail("too many points", words[next_word]);
        if (!ParsePoint(record)) return false;
    }
    gu_coord_t half = 0;
    if (count % 2 != 0) return ParseNumber(half) && Fail("x without y", words[next_word - 1]);
    if (count / 2 >= least) return true;
    return Fail(least == 1 ? "no points" : "fewer than 3 points", words[words.Len() - 1]);
}

bool Reader::ParseNumber(gu_coord_t& value) {
    char const* const word = words[next_word++];
    char const* const wrong = ReadLength(word, unit, value);
    return wrong == nullptr || Fail(wrong, word);
}

bool Reader::ParseSize(char const* negative, gu_coord_t& value) {
    return ParseNumber(value) && (value >= 0 || Fail(negative, words[next_word - 1]));
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
