#include "exchange/messages.h"

#include <arpa/inet.h>

#include <algorithm>
#include <cctype>
#include <cstdint>

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

// Many numbers on their way into or out of a stream, a block at a time: the bytes are those of
// the operators for int, which take three times as long.
class NumberWriter {
public:
    explicit NumberWriter(OSockStream& out) : out(out) {}
    void Put(gu_coord_t number) {
        if (used == kBlock) Flush();
        numbers[used++] = htonl(static_cast<std::uint32_t>(number));
    }
    void Flush() {
        out.Write(reinterpret_cast<char const*>(numbers), static_cast<int>(4 * used));
        used = 0;
    }

private:
    static constexpr unsigned kBlock = 512;

    OSockStream& out;
    unsigned used = 0;
    std::uint32_t numbers[kBlock];
};

class NumberReader {
public:
    // There are `count` numbers.
    NumberReader(ISockStream& in, unsigned count) : in(in), left(count) {}
    gu_coord_t Get() {
        if (next == end) Fill();
        return static_cast<gu_coord_t>(ntohl(numbers[next++]));
    }
    // The next one, which must be a coordinate.
    gu_coord_t GetCoordinate() {
        gu_coord_t const number = Get();
        Require(in, IsCoordinate(number));
        return number;
    }

private:
    static constexpr unsigned kBlock = 512;

    void Fill() {
        next = 0;
        end = std::min(left, kBlock);
        left -= end;
        in.Read(reinterpret_cast<char*>(numbers), static_cast<int>(4 * end));
        Require(in, in.GCount() == static_cast<int>(4 * end));
    }

    ISockStream& in;
    unsigned left;  // in the stream
    unsigned next = 0, end = 0;
    std::uint32_t numbers[kBlock];
};

void WritePoints(OSockStream& out, layout::Outline const& points) {
    out << static_cast<int>(points.Len());
    NumberWriter numbers(out);
    for (gu_point_t const& point : points) {
        numbers.Put(point.x);
        numbers.Put(point.y);
    }
    numbers.Flush();
}

void ReadPoints(ISockStream& in, int least, int most, layout::Outline& points) {
    auto const count = static_cast<unsigned>(ReadCount(in, least, most));
    points.Reset();
    points.Extend(count);
    NumberReader numbers(in, 2 * count);
    for (unsigned i = 0; i < count; ++i) {
        gu_coord_t const x = numbers.GetCoordinate();
        points.Ass({x, numbers.GetCoordinate()});
    }
}

void WritePieces(OSockStream& out, bool rects, layout::Trapezoids const& pieces) {
    out << static_cast<unsigned char>(rects ? kRects : kTrapezoids)
        << static_cast<int>(pieces.Len());
    NumberWriter numbers(out);
    for (gu_trapezoid_t const& t : pieces) {
        gu_coord_t const rect[] = {t.x_bl, t.y_b, t.x_br, t.y_t};
        gu_coord_t const trapezoid[] = {t.x_bl, t.x_tl, t.x_tr, t.x_br, t.y_b, t.y_t};
        if (rects)
            for (gu_coord_t const number : rect) numbers.Put(number);
        else
            for (gu_coord_t const number : trapezoid) numbers.Put(number);
    }
    numbers.Flush();
}

// Pieces are kept as they come: a wrong count alone takes no memory.
void ReadPieces(ISockStream& in, layout::Trapezoids& pieces) {
    bool const rects = ReadByte(in, kTrapezoids) == kRects;
    auto const count = static_cast<unsigned>(ReadCount(in, 0, layout::kMaxPieces));
    pieces.Reset();
    NumberReader numbers(in, (rects ? 4 : 6) * count);
    for (unsigned i = 0; i < count; ++i) {
        gu_coord_t n[6];
        for (int k = 0; k < (rects ? 4 : 6); ++k) n[k] = numbers.GetCoordinate();
        pieces.App(rects ? gu_trapezoid_t{n[0], n[0], n[2], n[2], n[1], n[3]}
                         : gu_trapezoid_t{n[0], n[1], n[2], n[3], n[4], n[5]});
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
    shape.removed = static_cast<unsigned>(ReadCount(in, 0, static_cast<int>(shape.points)));
    unsigned char const remains = ReadByte(in, kVanished);
    shape.flat = remains == kFlat;
    shape.vanished = remains == kVanished;
    ReadPoints(in, 0, layout::kMaxPoints, shape.outline);
    ReadPieces(in, shape.pieces);
}

}  // namespace exchange
