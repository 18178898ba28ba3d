// Layouts as text, one record a line, taken record by record:
//
//   polygon LAYER x y x y x y ...        an outline; its last point is joined to the first
//   path LAYER WIDTH END x y ...         a centre line; END 0: flush ends, 1: longer by half the
//                                        width
//   circle LAYER SEGMENTS x y DIAMETER   a polygon of SEGMENTS corners around the circle
//   label LAYER HEIGHT x y TEXT          the rest of the line, its baseline starting at (x, y)
//   # comment                            skipped, like blank lines
//
// LAYER is any word, SEGMENTS a whole number. Other numbers are in database units, with a scale
// letter in metres (460n, 0.46u), and rounded to the unit. Memory is that of the longest line. One
// reader belongs to one thread.
#ifndef KORBASE_EXAMPLES_LAYOUT_READER_H
#define KORBASE_EXAMPLES_LAYOUT_READER_H

#include <geometry/gu_types.h>
#include <text/string.h>

#include <generic/tvarr>
#include <istream>

namespace layout {

// Largest coordinate and size, either sign: the difference of any two fits the 32 bits of
// gu_coord_t.
constexpr gu_coord_t kMaxCoordinate = 1073741823;

// Most points of a polygon: area and perimeter take 16-bit counts. A path may have half as many,
// since its outline has twice the points.
constexpr int kMaxPoints = 65535;

// Reads a length, the whole of `word`, as records have them; `unit` is the database unit in metres.
// Null, or what is wrong: then `value` is untouched.
char const* ReadLength(char const* word, double unit, gu_coord_t& value);

struct Record {
    enum Kind { kPolygon, kPath, kCircle, kLabel };

    Kind kind = kPolygon;
    String_t layer;
    gu_coord_t size = 0;  // width of a path, diameter of a circle, height of a label; not negative
    int ends = 0;         // of a path, 0 flush or 1 extended
    int segments = 0;     // of a circle, 3 to 32767
    String_t text;        // of a label, not empty
    // A polygon has at least 3, a path at least 1; the centre of a circle, the start of a label.
    TVarr<gu_point_t> points{64, VARR_DOUBLE};
};

class Reader {
public:
    enum Status { kRecord, kBadLine, kEnd };

    // Reads `in`, which must outlive the reader; `unit` is the database unit in metres.
    Reader(std::istream& in, double unit) : in(in), unit(unit) {}

    // Takes the next record. After kBadLine, Problem() tells what is wrong, `record` is not to be
    // used, and the next call goes on with the line behind. kEnd also stands for a stream that
    // cannot be read further: in.bad() tells.
    Status Next(Record& record);

    // The line that Next() took last, counted from 1.
    unsigned Line() const { return line_number; }

    // "what is wrong, 'the offending text'"; long text is cut, control characters become '?'.
    String_t const& Problem() const { return problem; }

private:
    bool ReadLine();
    void CutIntoWords();
    bool Parse(Record& record);
    bool ParseLayer(Record& record);
    bool ParsePath(Record& record);
    bool ParseCircle(Record& record);
    bool ParseLabel(Record& record);
    bool ParsePoint(Record& record);
    bool ParsePoints(Record& record, int least, int most);
    bool ParseNumber(gu_coord_t& value);
    bool ParseSize(char const* negative, gu_coord_t& value);
    int WordsLeft() const { return static_cast<int>(words.Len()) - next_word; }
    bool Fail(char const* what, char const* text);

    std::istream& in;
    double unit;
    unsigned line_number = 0;
    TVarr<char> line{1024, VARR_DOUBLE};  // with its terminator; the words lie in it
    TVarr<char*> words{128, VARR_DOUBLE};
    char* rest = nullptr;  // what follows the words, only for labels
    int next_word = 0;
    String_t problem;
};

}  // namespace layout

#endif
