#include "exchange/messages.h"

#include <arpa/inet.h>

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <cstring>

namespace exchange {
namespace {

using layout::kMaxCoordinate;
using layout::Record;

// The first byte of a request: the kind of a record, or this.
constexpr unsigned char kStop = Record::kCircle + 1;
// The first byte of an answer, and its third value.
enum Outcome : unsigned char { kCut, kRefused };
enum Remains : unsigned char { kSomething, kFlat, kVanished };
// What the pieces of an answer are.
enum Pieces : unsigned char { kRects, kTrapezoids };

// What records of a kind may have.
struct Limits {
    int max_size, least_detail, max_detail, least_points, max_points;
};

constexpr Limits kLimits[] = {
    {0, 0, 0, 3, layout::kMaxPoints},                   // polygon
    {kMaxCoordinate, 0, 1, 1, layout::kMaxPoints / 2},  // path: its ends
    {kMaxCoordinate, 3, 32767, 1, 1},                   // circle: its corners
};

void Require(ISockStream& in, bool good) {
    if (!good) in.SetFailed();
}

bool IsWithin(int value, int least, int most) { return value >= least && value <= most; }

unsigned ReadCount(ISockStream& in, int least, int most) {
    int count = 0;
    in >> count;
    Require(in, IsWithin(count, least, most));
    return static_cast<unsigned>(count);
}

unsigned char ReadByte(ISockStream& in, unsigned char most) {
    unsigned char byte = 0;
    in >> byte;
    Require(in, byte <= most);
    return byte;
}

// Arrays of points, rectangles and trapezoids go a block at a time, which takes a third of the time
// of the operators for int. The bytes are the same.
constexpr unsigned kBlock = 256;

// The numbers of an element, big end first or back from that. Whether all are coordinates then.
template <class Element>
bool Swap(Element& element) {
    std::uint32_t numbers[sizeof element / sizeof(std::uint32_t)];
    std::memcpy(numbers, &element, sizeof element);
    bool good = true;
    for (std::uint32_t& number : numbers) {
        number = htonl(number);
        good &= number + kMaxCoordinate <= 2u * kMaxCoordinate;
    }
    std::memcpy(&element, numbers, sizeof element);
    return good;
}

// Writes `elements` as what `make` makes of each.
template <class Element, class Make>
void WriteArray(OSockStream& out, TVarr<Element> const& elements, Make const& make) {
    decltype(make(elements[0])) block[kBlock];
    for (unsigned from = 0; from < elements.Len(); from += kBlock) {
        unsigned const count = std::min(elements.Len() - from, kBlock);
        for (unsigned i = 0; i < count; ++i) Swap(block[i] = make(elements[from + i]));
        out.Write(reinterpret_cast<char const*>(block), static_cast<int>(count * sizeof *block));
    }
}

// Memory is taken for what has come, and a block: a wrong count alone takes none.
template <class Element>
void ReadArray(ISockStream& in, unsigned left, TVarr<Element>& elements) {
    for (elements.Reset(); left > 0;) {
        unsigned const count = std::min(left, kBlock);
        left -= count;
        elements.Extend(count);
        Element* const block = elements.Get() + elements.Len();
        in.Read(reinterpret_cast<char*>(block), static_cast<int>(count * sizeof(Element)));
        bool good = true;
        for (unsigned i = 0; i < count; ++i) good &= Swap(block[i]);
        Require(in, good);
        elements.Adjust(elements.Len() + count);
    }
}

void WritePoints(OSockStream& out, layout::Outline const& points) {
    out << static_cast<int>(points.Len());
    WriteArray(out, points, [](gu_point_t const& point) { return point; });
}

void WritePieces(OSockStream& out, bool rects, layout::Trapezoids const& pieces) {
    out << static_cast<unsigned char>(rects ? kRects : kTrapezoids)
        << static_cast<int>(pieces.Len());
    if (rects)
        WriteArray(out, pieces, [](gu_trapezoid_t const& piece) {
            return gu_rect_t{piece.x_bl, piece.y_b, piece.x_br, piece.y_t};
        });
    else
        WriteArray(out, pieces, [](gu_trapezoid_t const& piece) { return piece; });
}

void ReadPieces(ISockStream& in, layout::Trapezoids& pieces) {
    bool const rects = ReadByte(in, kTrapezoids) == kRects;
    unsigned const count = ReadCount(in, 0, layout::kMaxPieces);
    if (!rects) return ReadArray(in, count, pieces);
    TVarr<gu_rect_t> read(16, VARR_DOUBLE);
    ReadArray(in, count, read);
    layout::TakeRects(read, pieces);
}

// A line that does nothing to a terminal.
bool IsPlainText(String_t const& text) {
    for (char const* c = text; *c != '\0'; ++c)
        if (std::iscntrl(static_cast<unsigned char>(*c)) != 0) return false;
    return !text.IsEmpty();
}

}  // namespace

void WriteRecord(OSockStream& out, Record const& record, gu_coord_t distance) {
    bool const is_path = record.kind == Record::kPath, is_circle = record.kind == Record::kCircle;
    out << static_cast<unsigned char>(record.kind) << (is_path || is_circle ? record.size : 0)
        << static_cast<short>(is_path     ? record.ends
                              : is_circle ? record.segments
                                          : 0)
        << distance;
    WritePoints(out, record.points);
}

unsigned RecordBytes(Record const& record) { return 1 + 4 + 2 + 4 + 4 + 8 * record.points.Len(); }

Request ReadRequest(ISockStream& in, Record& record, gu_coord_t& distance) {
    unsigned char kind = 0;
    try {
        kind = ReadByte(in, kStop);
    } catch (SockIO::EndOfInput const&) {
        return Request::kNothing;
    }
    if (kind == kStop) return Request::kStop;
    Limits const& limits = kLimits[kind];
    record.kind = static_cast<Record::Kind>(kind);
    short detail = 0;
    in >> record.size >> detail >> distance;
    Require(in, IsWithin(record.size, 0, limits.max_size) &&
                    IsWithin(detail, limits.least_detail, limits.max_detail) &&
                    IsWithin(distance, -layout::kMaxDistance, layout::kMaxDistance));
    record.ends = kind == Record::kPath ? detail : 0;
    record.segments = kind == Record::kCircle ? detail : 0;
    ReadArray(in, ReadCount(in, limits.least_points, limits.max_points), record.points);
    return Request::kCut;
}

void WriteAnswer(OSockStream& out, layout::Shape const& shape, char const* problem) {
    if (problem != nullptr) {
        out << static_cast<unsigned char>(kRefused) << String_t(problem);
        return;
    }
    out << static_cast<unsigned char>(kCut) << static_cast<int>(shape.removed)
        << static_cast<unsigned char>(shape.vanished ? kVanished
                                      : shape.flat   ? kFlat
                                                     : kSomething);
    WritePoints(out, shape.outline);
    bool const rects = shape.measures.angles == layout::Measures::kOrthogonal;
    WritePieces(out, rects, shape.pieces);
}

void ReadAnswer(ISockStream& in, Record const& record, layout::Shape& shape, String_t& problem) {
    if (ReadByte(in, kRefused) == kRefused) {
        in >> problem;
        Require(in, IsPlainText(problem));
        return;
    }
    shape.points = record.kind == Record::kCircle ? static_cast<unsigned>(record.segments)
                                                  : record.points.Len();
    shape.removed = ReadCount(in, 0, static_cast<int>(shape.points));
    unsigned char const remains = ReadByte(in, kVanished);
    shape.flat = remains == kFlat;
    shape.vanished = remains == kVanished;
    ReadArray(in, ReadCount(in, 0, layout::kMaxPoints), shape.outline);
    ReadPieces(in, shape.pieces);
}

void WriteStop(OSockStream& out) { out << kStop << endm; }

void ReadStop(ISockStream& in) { Require(in, ReadByte(in, kStop) == kStop); }

}  // namespace exchange
