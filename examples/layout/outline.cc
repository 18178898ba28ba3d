#include "layout/outline.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>

namespace layout {
namespace {

struct Ascending {
    int operator()(gu_coord_t const& a, gu_coord_t const& b) const { return (a > b) - (a < b); }
};

int CompareHeights(gu_coord_t const* a, gu_coord_t const* b) { return Ascending()(*a, *b); }

// Position of `height`, which is one of them, among the distinct ascending heights.
int Level(TVarr<gu_coord_t>& heights, gu_coord_t height) {
    return static_cast<int>(ArrBFindCore(heights.Get(), heights.Len(), height, Ascending()).ptr -
                            heights.Get());
}

// The distinct heights of the points, ascending.
TVarr<gu_coord_t> HeightsOf(Outline const& outline) {
    TVarr<gu_coord_t> heights(outline.Len() + 1, VARR_DOUBLE);
    for (gu_point_t const& point : outline) heights.App(point.y);
    heights.Sort(CompareHeights);
    heights.Uniq(CompareHeights);
    return heights;
}

struct Edge {
    Edge(gu_point_t const& from, gu_point_t const& to)
        : x(double(to.x) - from.x), y(double(to.y) - from.y) {}

    double x, y;
};

}  // namespace

void CleanOutline(Outline& outline) {
    unsigned before = 0;
    do {  // a spike that goes may leave a repeated point, and so on
        before = outline.Len();
        int count = static_cast<int>(before);
        count = gu_delete_multiple_pointsi(count, outline.Get(), outline.Get());
        count = gu_delete_redundant_pointsi(count, outline.Get(), 1);
        outline.Adjust(static_cast<unsigned>(count));
    } while (outline.Len() != before && outline.Len() >= 3);
}

// Sizing keeps the directions of the edges. A narrow shape that is inside out winds the other way
// round; one that is inside out along and across has its edges reversed.
bool SizeOutline(Outline& outline, gu_coord_t distance) {
    Outline const before(outline);
    int const count = static_cast<int>(outline.Len());
    if (gu_size_polygon(count, outline.Get(), distance) != count) return false;
    if (gu_polygon_orientationi(count, outline.Get()) !=
        gu_polygon_orientationi(count, before.Get()))
        return false;
    double forward = 0;  // the length of all edges, those that are reversed counted negative
    for (int i = 0, last = count - 1; i < count; last = i++) {
        Edge const old_edge(before[last], before[i]), edge(outline[last], outline[i]);
        forward += (edge.x * old_edge.x + edge.y * old_edge.y) / std::hypot(old_edge.x, old_edge.y);
    }
    return forward > 0;
}

Measures MeasureOutline(Outline const& outline) {
    auto const count = static_cast<unsigned short>(outline.Len());
    Measures measures;
    measures.box = gu_bounding_box(count, outline.Get());
    if (count < 3) return measures;
    measures.angles = static_cast<Measures::Angles>(gu_check_orthoi(count, outline.Get(), 1));
    measures.area = gu_polygon_area(count, outline.Get());
    measures.perimeter = gu_polygon_periphery(count, outline.Get());
    return measures;
}

void CutOutline(Outline const& outline, Measures::Angles angles, Trapezoids& pieces) {
    pieces.Reset();
    if (outline.Len() < 3) return;
    if (angles == Measures::kOrthogonal) {
        TVarr<gu_rect_t> rects(16, VARR_DOUBLE);
        gu_polygon_to_rects(sizeof(gu_point_t), outline.Len(), outline.Get(), rects);
        TakeRects(rects, pieces);
    } else {
        gu_polygon_to_trapezoids(sizeof(gu_point_t), outline.Len(), outline.Get(), pieces);
    }
}

// Each slab between two heights has a piece for every two edges that cross it.
double CountPieces(Outline const& outline) {
    TVarr<gu_coord_t> heights = HeightsOf(outline);
    int const count = static_cast<int>(outline.Len());
    double crossings = 0;
    for (int i = 0, last = count - 1, level = 0; i < count; last = i++) {
        int const before = i == 0 ? Level(heights, outline[last].y) : level;
        level = Level(heights, outline[i].y);
        crossings += std::abs(level - before);
    }
    return crossings / 2;
}

void TakeRects(TVarr<gu_rect_t> const& rects, Trapezoids& pieces) {
    pieces.Reset();
    for (gu_rect_t const& rect : rects) {
        gu_trapezoid_t piece;
        piece.x_bl = piece.x_tl = rect.x1;
        piece.x_br = piece.x_tr = rect.x2;
        piece.y_b = rect.y1;
        piece.y_t = rect.y2;
        pieces.App(piece);
    }
}

double PiecesArea(Trapezoids const& pieces) {
    double twice = 0;
    for (gu_trapezoid_t const& t : pieces) {
        double const widths = (double(t.x_br) - t.x_bl) + (double(t.x_tr) - t.x_tl);
        twice += widths * (double(t.y_t) - t.y_b);
    }
    return twice / 2;
}

// An edge is cut at every height of the outline that lies inside its span. Each cut moves the edge
// there by less than one unit, which adds or takes a triangle of less than half the edge's height.
// Edges that are vertical or at 45 degrees meet every height on the grid and are cut exactly. The
// rest of the allowance is for the rounding of the sums themselves.
double CutTolerance(Outline const& outline) {
    int const count = static_cast<int>(outline.Len());
    TVarr<gu_coord_t> heights = HeightsOf(outline);
    double reach = 0;
    for (gu_point_t const& p : outline)
        reach = std::max({reach, std::fabs(double(p.x)), std::fabs(double(p.y))});

    double tolerance = 4 * reach * reach * count * std::numeric_limits<double>::epsilon();
    for (int i = 0; i < count; ++i) {
        gu_point_t const& from = outline[i == 0 ? count - 1 : i - 1];
        gu_point_t const& to = outline[i];
        int const width = std::abs(to.x - from.x), height = std::abs(to.y - from.y);
        if (width == 0 || height == 0 || width == height) continue;
        int const cuts = std::abs(Level(heights, to.y) - Level(heights, from.y)) - 1;
        tolerance += 0.5 * cuts * height;
    }
    return tolerance;
}

void GrowBox(gu_rect_t& box, gu_rect_t const& other) {
    box.x1 = std::min(box.x1, other.x1);
    box.y1 = std::min(box.y1, other.y1);
    box.x2 = std::max(box.x2, other.x2);
    box.y2 = std::max(box.y2, other.y2);
}

}  // namespace layout
