#include "exchange/messages.h"

#include <cctype>
#include <cstdlib>

namespace exchange {
namespace {

using layout::kMaxCoordinate;
using layout::Record;

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

bool IsCoordinate(int value) { return IsWithin(value, -kMaxCoordinate, kMaxCoordinate); }

int ReadCount(ISockStream& in, int least, int most) {
    int count = 0;
    in >> count;
    Require(in, IsWithin(count, least, most));
    return count;
}

unsigned char ReadByte(ISockStream& in, unsigned char most) {
    unsigned char byte = 0;
    in >> byte;
    Require(in, byte <= most);
    return byte;
}

void WritePoints(OSockStream& out, layout::Outline const& points) {
    out << static_cast<int>(points.Len());
    for (gu_point_t const& point : points) out << point.x << point.y;
}

void ReadPoints(ISockStream& in, int least, int most, layout::Outline& points) {
    int const count = ReadCount(in, least, most);
    points.Reset();
    points.Extend(static_cast<unsigned>(count));
    for (int i = 0; i < count; ++i) {
        gu_point_t point = {};
        in >> point.x >> point.y;
        Require(in, IsCoordinate(point.x) && IsCoordinate(point.y));
        points.Ass(point);
    }
}

gu_trapezoid_t ReadRect(ISockStream& in) {
    gu_rect_t r = {};
    in >> r.x1 >> r.y1 >> r.x2 >> r.y2;
    return {r.x1, r.x1, r.x2, r.x2, r.y1, r.y2};
}

gu_trapezoid_t ReadTrapezoid(ISockStream& in) {
    gu_trapezoid_t t = {};
    in >> t.x_bl >> t.x_tl >> t.x_tr >> t.x_br >> t.y_b >> t.y_t;
    return t;
}

bool IsInRange(gu_trapezoid_t const& t) {
    return IsCoordinate(t.x_bl) && IsCoordinate(t.x_tl) && IsCoordinate(t.x_tr) &&
           IsCoordinate(t.x_br) && IsCoordinate(t.y_b) && IsCoordinate(t.y_t);
}

// Pieces come as long as there are any: a wrong count alone takes no memory.
void ReadPieces(ISockStream& in, layout::Trapezoids& pieces) {
    auto const read = ReadByte(in, kTrapezoids) == kRects ? ReadRect : ReadTrapezoid;
    int const count = ReadCount(in, 0, layout::kMaxPieces);
    pieces.Reset();
    for (int i = 0; i < count; ++i) {
        gu_trapezoid_t const piece = read(in);
        Require(in, IsInRange(piece));
        pieces.App(piece);
    }
}

// A line that does nothing to a terminal.
bool IsPlainText(String_t const& text) {
    for (char const* c = text; *c != '\0'; ++c)
        if (std::iscntrl(static_cast<unsigned char>(*c)) != 0) return false;
    return !text.IsEmpty();
}

}  // namespace

int ReadRequest(ISockStream& in) { return ReadCount(in, kStop, kMaxRecords); }

void WriteRecord(OSockStream& out, Record const& record, gu_coord_t distance) {
    bool const is_path = record.kind == Record::kPath, is_circle = record.kind == Record::kCircle;
    out << static_cast<unsigned char>(record.kind) << (is_path || is_circle ? record.size : 0)
        << static_cast<short>(is_path     ? record.ends
                              : is_circle ? record.segments
                                          : 0)
        << distance;
    WritePoints(out, record.points);
}

gu_coord_t ReadRecord(ISockStream& in, Record& record) {
    unsigned char const kind = ReadByte(in, Record::kCircle);
    Limits const& limits = kLimits[kind];
    record.kind = static_cast<Record::Kind>(kind);
    short detail = 0;
    gu_coord_t distance = 0;
    in >> record.size >> detail >> distance;
    Require(in, IsWithin(record.size, 0, limits.max_size) &&
                    IsWithin(detail, limits.least_detail, limits.max_detail) &&
                    IsWithin(distance, -layout::kMaxDistance, layout::kMaxDistance));
    record.ends = kind == Record::kPath ? detail : 0;
    record.segments = kind == Record::kCircle ? detail : 0;
    ReadPoints(in, limits.least_points, limits.max_points, record.points);
    return distance;
}

unsigned RecordBytes(Record const& record) { return 1 + 4 + 2 + 4 + 4 + 8 * record.points.Len(); }

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
    out << static_cast<unsigned char>(rects ? kRects : kTrapezoids)
        << static_cast<int>(shape.pieces.Len());
    for (gu_trapezoid_t const& t : shape.pieces) {
        if (rects)
            out << t.x_bl << t.y_b << t.x_br << t.y_t;
        else
            out << t.x_bl << t.x_tl << t.x_tr << t.x_br << t.y_b << t.y_t;
    }
}

void ReadAnswer(ISockStream& in, Record const& record, layout::Shape& shape, String_t& problem) {
    if (ReadByte(in, kRefused) == kRefused) {
        in >> problem;
        Require(in, IsPlainText(problem));
        return;
    }
    shape.points = record.kind == Record::kCircle ? static_cast<unsigned>(record.segments)
                                                  : record.points.Len();
    shape.removed = static_cast<unsigned>(ReadCount(in, 0, static_cast<int>(shape.points)));
    unsigned char const remains = ReadByte(in, kVanished);
    shape.flat = remains == kFlat;
    shape.vanished = remains == kVanished;
    ReadPoints(in, 0, layout::kMaxPoints, shape.outline);
    ReadPieces(in, shape.pieces);
}

}  // namespace exchange
