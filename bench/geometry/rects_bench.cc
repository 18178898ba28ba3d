// Decomposition into rectangles beside Boost.Polygon's; items are the rectangles written.
#include <geometry/gu_rects.h>

#include "decomposition.h"

namespace {

using shapes::Points;
using Korbase = decomposition::Korbase<gu_rect_t, gu_polygon_to_rects>;

class Boost {
    using Outline = boost::polygon::polygon_90_data<int>;

public:
    explicit Boost(Points const& points) : outline(decomposition::BoostOutline<Outline>(points)) {}
    unsigned Decompose() {
        out.clear();
        boost::polygon::get_rectangles(out, outline, boost::polygon::HORIZONTAL);
        return static_cast<unsigned>(out.size());
    }

private:
    Outline outline;
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
