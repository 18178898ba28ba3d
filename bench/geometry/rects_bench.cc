// Decomposition into rectangles beside Boost.Polygon's; items are the rectangles written.
#include <geometry/gu_rects.h>

#include "decomposition.h"

namespace {

using shapes::Points;
using Korbase = decomposition::Korbase<gu_rect_t, gu_polygon_to_rects>;

class Boost {
public:
    explicit Boost(Points const& points) {
        auto const corners = decomposition::BoostPoints(points);
        outline.set(corners.begin(), corners.end());
    }
    unsigned Decompose() {
        out.clear();
        boost::polygon::get_rectangles(out, outline, boost::polygon::HORIZONTAL);
        return static_cast<unsigned>(out.size());
    }

private:
    boost::polygon::polygon_90_data<int> outline;
    std::vector<boost::polygon::rectangle_data<int>> out;
};

int const registered = [] {
    auto const pair = decomposition::Pair<Korbase, Boost>;
    pair("rectangles plate", shapes::Plate, {3, 100});
    pair("rectangles staircase", shapes::Staircase, {10, 10000});
    pair("rectangles comb", shapes::Comb, {10, 300, 3000});
    return 0;
}();

}  // namespace
