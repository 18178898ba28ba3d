#include "layout/shape.h"

#include <geometry/gu_arc.h>

#include <algorithm>

namespace layout {
namespace {

struct Step {
    int x, y;
};

int Sign(int n) { return (n > 0) - (n < 0); }

// The direction of the segment of a path that ends at point `i`.
Step StepTo(Outline const& path, int i) {
    return {Sign(path[i].x - path[i - 1].x), Sign(path[i].y - path[i - 1].y)};
}

// Null, or why a path without repeated points cannot be cut into rectangles.
char const* PathProblem(Outline const& path) {
    for (int i = 1; i < static_cast<int>(path.Len()); ++i) {
        Step const step = StepTo(path, i);
        if (step.x != 0 && step.y != 0) return "slanted path";
        if (i == 1) continue;
        Step const before = StepTo(path, i - 1);
        if (step.x == -before.x && step.y == -before.y) return "path turns back on itself";
    }
    return nullptr;
}

// The corner of the outline beside point `i`, at `left` from the centre line, which is longer by
// `beyond` at both ends.
gu_point_t PathCorner(Outline const& path, int i, int left, int beyond) {
    int const last = static_cast<int>(path.Len()) - 1;
    Step const in = StepTo(path, std::max(i, 1)), out = StepTo(path, std::min(i + 1, last));
    Step side = {-in.y, in.x};
    if (in.x != out.x || in.y != out.y) side = {side.x - out.y, side.y + out.x};
    int const along = i == 0 ? -beyond : i == last ? beyond : 0;
    return {path[i].x + left * side.x + along * in.x, path[i].y + left * side.y + along * in.y};
}

void AppendPathOutline(Outline const& path, int half, int ends, Outline& outline) {
    int const count = static_cast<int>(path.Len());
    if (count == 1) {
        gu_point_t const p = path[0];
        gu_point_t const square[] = {{p.x - half, p.y - half},
                                     {p.x + half, p.y - half},
                                     {p.x + half, p.y + half},
                                     {p.x - half, p.y + half}};
        outline.Cat(4, square);
        return;
    }
    int const beyond = ends == 1 ? half : 0;
    for (int i = 0; i < count; ++i) outline.App(PathCorner(path, i, -half, beyond));
    for (int i = count; i-- > 0;) outline.App(PathCorner(path, i, half, beyond));
}

void AppendCircle(Record const& record, Outline& outline) {
    outline.Extend(static_cast<unsigned>(record.segments));
    unsigned short count = 0;
    gu_circle2polygon(&count, outline.Get(), record.points.Get(), record.size, record.size,
                      static_cast<short>(record.segments));
    outline.Adjust(count);
}

bool InRange(Outline const& outline) {
    auto const box = gu_bounding_box(static_cast<unsigned short>(outline.Len()), outline.Get());
    return box.x1 >= -kMaxCoordinate && box.y1 >= -kMaxCoordinate && box.x2 <= kMaxCoordinate &&
           box.y2 <= kMaxCoordinate;
}

}  // namespace

char const* Shape::Make(Record& record, gu_coord_t distance) {
    outline.Reset();
    pieces.Reset();
    char const* const problem = Draw(record);
    if (problem != nullptr) return problem;
    if (!InRange(outline)) return "shape out of range";
    CleanOutline(outline);
    if (record.kind != Record::kPath) removed = points - outline.Len();
    flat = outline.Len() < 3;
    bool const sized = !flat && distance != 0;
    vanished = sized && !SizeOutline(outline, distance);
    if (sized && !vanished) {
        if (!InRange(outline)) return "sized shape out of range";
        CleanOutline(outline);
        vanished = outline.Len() < 3;
    }
    if (vanished) outline.Reset();
    measures = MeasureOutline(outline);
    if (flat)
        pieces.Reset();
    else if (sized || record.kind != Record::kPath)
        return Cut();
    return nullptr;
}

char const* Shape::Cut() {
    double const points_left = outline.Len();
    if (points_left * points_left / 4 > kMaxPieces && CountPieces(outline) > kMaxPieces)
        return "too many pieces";
    CutOutline(outline, measures.angles, pieces);
    return nullptr;
}

// Makes the outline as the record has it, of a path the pieces as well.
char const* Shape::Draw(Record& record) {
    points = record.points.Len();
    removed = 0;
    if (record.kind == Record::kPath) return DrawPath(record);
    if (record.kind == Record::kCircle) {
        AppendCircle(record, outline);
        points = outline.Len();
    } else {
        outline.Cat(points, record.points.Get());
    }
    return nullptr;
}

char const* Shape::DrawPath(Record& record) {
    // Each point that is left is a bend: otherwise the rectangles would overlap.
    Outline& path = record.points;
    int count = gu_delete_multiple_pointsi(static_cast<int>(points), path.Get(), path.Get());
    path.Adjust(static_cast<unsigned>(count));
    char const* const problem = PathProblem(path);
    if (problem != nullptr) return problem;
    count = gu_delete_redundant_pointsi(count, path.Get(), 0);
    path.Adjust(static_cast<unsigned>(count));
    removed = points - path.Len();

    AppendPathOutline(path, record.size / 2, record.ends, outline);
    TVarr<gu_rect_t> rects(16, VARR_DOUBLE);
    gu_path_to_rects(sizeof(gu_point_t), path.Len(), path.Get(), record.size,
                     static_cast<gu_PathType_t>(record.ends), rects);
    TakeRects(rects, pieces);
    return nullptr;
}

}  // namespace layout
