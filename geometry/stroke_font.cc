// The drawings of the font, and the table that the compiler makes of them.
//
// A drawing lists its strokes, ended by a semicolon but for the last, as points x,y. A character is
// drawn on a grid of fourteenths of its cell: 0 to 10 wide, capitals 14 and small letters 10 high,
// descenders down to -6. Corners are cut by 2, so that a bowl stays open at small sizes; dots are
// boxes, since a stroke of one point is not drawn in text. What reads alike differs in more than
// one place: 0 has a slash, 1 a foot, l a tail, I two bars, 5 and Z square corners where S and 2
// have cut ones.
#include "geometry/stroke_font.h"

namespace korbase_detail {
namespace {

struct Drawing {
    int name;  // the character, or the kind of a marker
    char const* strokes;
};

constexpr Drawing kDrawings[] = {
    {' ', ""},
    {'!', "5,14 5,5; 4,0 6,0 6,2 4,2 4,0"},
    {'"', "3,14 3,10; 7,14 7,10"},
    {'#', "3,0 3,14; 7,0 7,14; 0,10 10,10; 0,4 10,4"},
    {'$', "10,10 8,12 2,12 0,10 0,9 2,7 8,7 10,5 10,4 8,2 2,2 0,4; 5,14 5,12; 5,2 5,0"},
    {'%', "0,0 10,14; 0,10 0,12 2,14 4,12 4,10 2,8 0,10; 6,2 6,4 8,6 10,4 10,2 8,0 6,2"},
    {'&', "10,0 2,10 2,12 4,14 6,14 8,12 8,10 0,4 0,2 2,0 6,0 10,4 10,6"},
    {'\'', "5,14 5,10"},
    {'(', "7,14 5,12 4,9 4,1 5,-2 7,-4"},
    {')', "3,14 5,12 6,9 6,1 5,-2 3,-4"},
    {'*', "5,13 5,3; 0,8 10,8; 2,11 8,5; 2,5 8,11"},
    {'+', "0,6 10,6; 5,11 5,1"},
    {',', "6,0 4,0 4,2 6,2 6,-2 4,-4"},
    {'-', "1,6 9,6"},
    {'.', "4,0 6,0 6,2 4,2 4,0"},
    {'/', "0,-2 10,14"},
    {'0', "0,2 0,12 2,14 8,14 10,12 10,2 8,0 2,0 0,2; 2,4 8,10"},
    {'1', "2,11 5,14 5,0 2,0 8,0"},
    {'2', "0,12 2,14 8,14 10,12 10,10 0,0 10,0"},
    {'3', "0,12 2,14 8,14 10,12 10,10 8,8 4,8 8,8 10,6 10,2 8,0 2,0 0,2"},
    {'4', "8,0 8,14 6,14 0,6 0,4 10,4"},
    {'5', "10,14 0,14 0,6 2,8 8,8 10,6 10,2 8,0 2,0 0,2"},
    {'6', "10,12 8,14 2,14 0,12 0,2 2,0 8,0 10,2 10,6 8,8 2,8 0,6"},
    {'7', "0,14 10,14 10,12 4,4 4,0"},
    {'8', "2,8 0,10 0,12 2,14 8,14 10,12 10,10 8,8 2,8 0,6 0,2 2,0 8,0 10,2 10,6 8,8"},
    {'9', "0,2 2,0 8,0 10,2 10,12 8,14 2,14 0,12 0,8 2,6 8,6 10,8"},
    {':', "4,0 6,0 6,2 4,2 4,0; 4,8 6,8 6,10 4,10 4,8"},
    {';', "6,0 4,0 4,2 6,2 6,-2 4,-4; 4,8 6,8 6,10 4,10 4,8"},
    {'<', "9,11 1,6 9,1"},
    {'=', "1,8 9,8; 1,4 9,4"},
    {'>', "1,11 9,6 1,1"},
    {'?', "0,12 2,14 8,14 10,12 10,10 8,8 7,8 5,6 5,5; 4,0 6,0 6,2 4,2 4,0"},
    {'@', "7,4 7,10 5,10 3,8 3,6 5,4 8,4 10,6 10,12 8,14 2,14 0,12 0,2 2,0 8,0 10,2"},
    {'A', "0,0 0,12 2,14 8,14 10,12 10,6 0,6 10,6 10,0"},
    {'B', "0,0 0,14 8,14 10,12 10,10 8,8 0,8 8,8 10,6 10,2 8,0 0,0"},
    {'C', "10,12 8,14 2,14 0,12 0,2 2,0 8,0 10,2"},
    {'D', "0,0 0,14 6,14 10,10 10,4 6,0 0,0"},
    {'E', "10,14 0,14 0,8 7,8 0,8 0,0 10,0"},
    {'F', "10,14 0,14 0,8 7,8 0,8 0,0"},
    {'G', "10,12 8,14 2,14 0,12 0,2 2,0 8,0 10,2 10,6 6,6"},
    {'H', "0,0 0,14 0,8 10,8 10,14 10,0"},
    {'I', "2,14 8,14 5,14 5,0 2,0 8,0"},
    {'J', "4,14 10,14 10,2 8,0 2,0 0,2 0,4"},
    {'K', "0,0 0,14 0,4 10,14 4,8 10,0"},
    {'L', "0,14 0,0 10,0"},
    {'M', "0,0 0,14 5,6 10,14 10,0"},
    {'N', "0,0 0,14 10,0 10,14"},
    {'O', "0,2 0,12 2,14 8,14 10,12 10,2 8,0 2,0 0,2"},
    {'P', "0,0 0,14 8,14 10,12 10,8 8,6 0,6"},
    {'Q', "6,4 10,0 9,1 8,0 2,0 0,2 0,12 2,14 8,14 10,12 10,2 9,1"},
    {'R', "0,0 0,14 8,14 10,12 10,8 8,6 0,6 4,6 10,0"},
    {'S', "10,12 8,14 2,14 0,12 0,10 2,8 8,8 10,6 10,2 8,0 2,0 0,2"},
    {'T', "0,14 10,14 5,14 5,0"},
    {'U', "0,14 0,2 2,0 8,0 10,2 10,14"},
    {'V', "0,14 5,0 10,14"},
    {'W', "0,14 2,0 5,8 8,0 10,14"},
    {'X', "0,0 10,14; 0,14 10,0"},
    {'Y', "0,14 5,6 10,14 5,6 5,0"},
    {'Z', "0,14 10,14 0,0 10,0"},
    {'[', "7,14 4,14 4,-4 7,-4"},
    {'\\', "0,14 10,-2"},
    {']', "3,14 6,14 6,-4 3,-4"},
    {'^', "2,10 5,14 8,10"},
    {'_', "0,-4 10,-4"},
    {'`', "3,14 6,10"},
    {'a', "0,8 2,10 8,10 10,8 10,0 2,0 0,2 0,4 2,6 10,6"},
    {'b', "0,14 0,0 0,2 2,0 8,0 10,2 10,8 8,10 2,10 0,8"},
    {'c', "10,8 8,10 2,10 0,8 0,2 2,0 8,0 10,2"},
    {'d', "10,14 10,0 10,2 8,0 2,0 0,2 0,8 2,10 8,10 10,8"},
    {'e', "0,6 10,6 10,8 8,10 2,10 0,8 0,2 2,0 8,0 10,2"},
    {'f', "10,12 8,14 6,14 4,12 4,0; 0,10 8,10"},
    {'g', "10,2 8,0 2,0 0,2 0,8 2,10 8,10 10,8 10,10 10,-4 8,-6 2,-6 0,-4"},
    {'h', "0,14 0,0 0,8 2,10 8,10 10,8 10,0"},
    {'i', "2,10 5,10 5,0 2,0 8,0; 4,13 6,13 6,14 4,14 4,13"},
    {'j', "3,10 6,10 6,-4 4,-6 2,-6 0,-4; 5,13 7,13 7,14 5,14 5,13"},
    {'k', "0,14 0,0; 8,10 0,2 4,6 10,0"},
    {'l', "2,14 5,14 5,2 7,0 9,0"},
    {'m', "0,0 0,10 0,8 2,10 3,10 5,8 5,0 5,8 7,10 8,10 10,8 10,0"},
    {'n', "0,0 0,10 0,8 2,10 8,10 10,8 10,0"},
    {'o', "0,2 0,8 2,10 8,10 10,8 10,2 8,0 2,0 0,2"},
    {'p', "0,-6 0,10 0,8 2,10 8,10 10,8 10,2 8,0 2,0 0,2"},
    {'q', "10,-6 10,10 10,8 8,10 2,10 0,8 0,2 2,0 8,0 10,2"},
    {'r', "0,0 0,10 0,6 4,10 8,10 10,8"},
    {'s', "10,8 8,10 2,10 0,8 2,6 8,6 10,4 10,2 8,0 2,0 0,2"},
    {'t', "4,14 4,2 6,0 8,0 10,2; 0,10 8,10"},
    {'u', "0,10 0,2 2,0 8,0 10,2 10,10 10,0"},
    {'v', "0,10 5,0 10,10"},
    {'w', "0,10 2,0 5,7 8,0 10,10"},
    {'x', "0,0 10,10; 0,10 10,0"},
    {'y', "0,10 5,0 10,10 3,-4 1,-6 0,-6"},
    {'z', "0,10 10,10 0,0 10,0"},
    {'{', "8,14 7,14 5,12 5,7 3,5 5,3 5,-2 7,-4 8,-4"},
    {'|', "5,14 5,-4"},
    {'}', "2,14 3,14 5,12 5,7 7,5 5,3 5,-2 3,-4 2,-4"},
    {'~', "0,6 2,8 4,8 6,6 8,6 10,8"},
    {0, "0,0"},
    {1, "-2,0 2,0; 0,-2 0,2"},
    {2, "-3,0 3,0; 0,-3 0,3"},
    {3, "0,-3 0,3; -3,-2 3,2; -3,2 3,-2"},
    {4, "-2,-2 -2,2 -2,3 2,3 3,2 3,-2 2,-3 -2,-3 -2,-2"},
    {5, "-3,-3 3,3; -3,3 3,-3"},
    {6, "-3,-3 3,-3 3,3 -3,3 -3,-3"},
    {7, "-3,0 0,-3 3,0 0,3 -3,0"},
    {8, "-3,-3 3,-3 3,3 -3,3 -3,-3; 0,0"},
    {9, "-3,0 0,-3 3,0 0,3 -3,0; 0,0"},
    {10, "-3,-3 3,-3 3,3 -3,3 -3,-3; -3,0 0,-3 3,0 0,3 -3,0"},
    {11, "-3,-3 3,3; -3,3 3,-3; -3,-3 3,-3 3,3 -3,3 -3,-3; -3,0 0,-3 3,0 0,3 -3,0"},
    {12, "-3,0 3,0; 0,-3 0,3; -3,0 0,-3 3,0 0,3 -3,0"},
};

static_assert(sizeof kDrawings / sizeof kDrawings[0] == kFontGlyphs, "a drawing for each glyph");

constexpr bool InOrder() {
    for (int i = 0; i < kFontGlyphs; ++i)
        if (kDrawings[i].name != (i < kFontCharacters ? ' ' + i : i - kFontCharacters))
            return false;
    return true;
}
static_assert(InOrder(), "drawings stand in the order of the table");

constexpr int CountOf(char mark) {
    int count = 0;
    for (auto const& drawing : kDrawings)
        for (char const* p = drawing.strokes; *p != '\0'; ++p) count += *p == mark;
    return count;
}
static_assert(CountOf(',') == kFontPoints, "a comma in each point");
constexpr int kStrokes =
    CountOf(';') + kFontGlyphs;  // the last stroke of a drawing has no semicolon

// Fourteenths of a cell as a decimal fraction of three places.
constexpr float GridToCell(int value) {
    int const thousandths = (value * 1000 + (value < 0 ? -7 : 7)) / 14;
    return static_cast<float>(thousandths) / 1000.0F;
}

constexpr int ReadNumber(char const*& text) {
    bool const negative = *text == '-';
    if (negative) ++text;
    int value = 0;
    while (*text >= '0' && *text <= '9') value = value * 10 + (*text++ - '0');
    return negative ? -value : value;
}

// The points of all drawings in one row, and how they divide into strokes and glyphs.
struct Outlines {
    GlyphPoint points[kFontPoints];
    int stroke_points[kStrokes];
    int glyph_strokes[kFontGlyphs];
};

constexpr Outlines ReadDrawings() {
    Outlines outlines{};
    GlyphPoint* point = outlines.points;
    int* stroke = outlines.stroke_points;
    for (int i = 0; i < kFontGlyphs; ++i) {
        int* const first = stroke;
        for (char const* text = kDrawings[i].strokes; *text != '\0';) {
            if (*text == ' ' || *text == ';') {
                stroke += *text++ == ';';
                continue;
            }
            int const x = ReadNumber(text);
            ++text;  // the comma
            int const y = ReadNumber(text);
            *point++ = i < kFontCharacters
                           ? GlyphPoint{GridToCell(x), GridToCell(y)}
                           : GlyphPoint{static_cast<float>(x), static_cast<float>(y)};
            ++*stroke;
        }
        ++stroke;
        outlines.glyph_strokes[i] = static_cast<int>(stroke - first);
    }
    return outlines;
}
constexpr Outlines kOutlines = ReadDrawings();

constexpr bool FitsBuffer() {
    for (int const count : kOutlines.stroke_points)
        if (count > kMaxStrokePoints) return false;
    return true;
}
static_assert(FitsBuffer(), "no stroke is longer than the drawing buffer");

constexpr std::array<Stroke, kStrokes> MakeStrokes() {
    std::array<Stroke, kStrokes> strokes{};
    GlyphPoint const* point = kOutlines.points;
    for (int i = 0; i < kStrokes; ++i) {
        strokes[i] = {point, kOutlines.stroke_points[i]};
        point += kOutlines.stroke_points[i];
    }
    return strokes;
}
constexpr std::array<Stroke, kStrokes> kStrokeRecords = MakeStrokes();

constexpr std::array<Glyph, kFontGlyphs> MakeFont() {
    std::array<Glyph, kFontGlyphs> font{};
    Stroke const* stroke = kStrokeRecords.data();
    for (int i = 0; i < kFontGlyphs; ++i) {
        font[i] = {stroke, kOutlines.glyph_strokes[i]};
        stroke += kOutlines.glyph_strokes[i];
    }
    return font;
}

}  // namespace

constexpr std::array<Glyph, kFontGlyphs> kStrokeFont = MakeFont();

}  // namespace korbase_detail
