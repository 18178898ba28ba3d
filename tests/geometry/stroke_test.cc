#include "geometry/stroke.h"

#include <thread>

#include "tests/geometry/points.h"

namespace {

using Polyline = std::vector<std::pair<float, float>>;
using Drawing = std::vector<Polyline>;

int Keep(int count, float const* xy, void* user) {
    Polyline line;
    for (int i = 0; i < count; ++i) line.emplace_back(xy[2 * i], xy[2 * i + 1]);
    static_cast<Drawing*>(user)->push_back(line);
    return 1;  // ignored
}

Drawing Plot(std::string const& text, float x = 0.0F, float y = 0.0F) {
    Drawing drawing;
    stroke_plot_string(text.data(), static_cast<int>(text.size()), Keep, &drawing, x, y);
    return drawing;
}

Drawing PlotMarker(float x, float y) {
    Drawing drawing;
    stroke_plot_marker(Keep, &drawing, x, y);
    return drawing;
}

Polyline Flat(Drawing const& drawing) {
    Polyline points;
    for (auto const& stroke : drawing) points.insert(points.end(), stroke.begin(), stroke.end());
    return points;
}

// Drawn before main, when nothing has set an attribute.
Drawing const start_text = Plot("A 1");
Drawing const start_marker = PlotMarker(0, 0);

// The attributes belong to the process. Of height 1, text is drawn as the font's table says.
void SetHeight(float height) {
    stroke_set_text_attributes(0, 0.0F, 1.0F, height, 1.0F, 0.0F);
    stroke_set_marker_attributes(1, 0.7F);
}

TEST(Stroke, StartAttributesDrawAHundredthHigh) {
    EXPECT_EQ((Drawing{{{-0.2F, 0.0F}, {0.2F, 0.0F}}, {{0.0F, -0.2F}, {0.0F, 0.2F}}}),
              start_marker);
    SetHeight(0.01F);
    EXPECT_EQ(Plot("A 1"), start_text);
}

TEST(Stroke, EachCoordinateIsFusedOnceAndThenMoved) {
    stroke_set_text_attributes(2, 3.0F, -5.0F, 0.37F, 1.3F, 0.25F);
    auto const at_origin = Plot("1");
    EXPECT_EQ(0x1.7347e4p-4F, at_origin[0][0].first);    // ...e6 with the other product fused
    EXPECT_EQ(0x1.61379ep-5F, at_origin[0][1].first);    // ...a0 without fusing
    EXPECT_EQ(-0x1.405002p-2F, Plot("A")[0][5].second);  // ...00 in both cases
    EXPECT_EQ(std::make_pair(0x1.50e7fcp+3F, -0x1.1a7cbap+2F), Plot("17", 10.1F, -3.7F)[1][0]);
}

TEST(Stroke, FollowsTheFormulaInDouble) {
    std::mt19937 random(55);
    auto const uniform = [&random](double reach) {
        return static_cast<float>(reach * (static_cast<double>(random()) / 2147483648.0 - 1));
    };
    std::string const text("fA \xc8m\0L", 7);
    std::vector<Polyline> glyphs;
    SetHeight(1.0F);
    for (char const c : text) glyphs.push_back(Flat(Plot(std::string(1, c))));
    for (int round = 0; round < 500; ++round) {
        int const path = round % 6 - 1;  // -1 and 4 count as 0
        float const ux = uniform(2), uy = uniform(2), h = uniform(3), e = uniform(2);
        float const s = uniform(1.5), x = uniform(9), y = uniform(9);
        stroke_set_text_attributes(path, ux, uy, h, e, s);
        bool const vertical = path == 2 || path == 3;
        std::vector<std::pair<double, double>> cells;
        double at = 0;
        for (auto const& glyph : glyphs) {
            for (auto const& [gx, gy] : glyph)
                cells.emplace_back(gx + (vertical ? 0 : at), gy + (vertical ? at : 0));
            at += path == 1 || path == 3 ? -1 - double{s} : 1 + double{s};
        }
        auto got = Flat(Plot(text, x, y));
        float box[8];  // ignores path and spacing
        stroke_inq_textstring_extent(nullptr, path + 1, box, x, y);
        for (int i = 0; i < 4; ++i) {
            cells.emplace_back(i % 3 ? path + 1 : 0, i < 2 ? -0.421 : 1);
            got.emplace_back(box[2 * i], box[2 * i + 1]);
        }
        ASSERT_EQ(cells.size(), got.size());
        double const up_x = h * ux / std::hypot(ux, uy), up_y = h * uy / std::hypot(ux, uy);
        for (std::size_t i = 0; i < cells.size(); ++i) {
            auto const [gx, gy] = cells[i];
            ASSERT_NEAR(e * up_y * gx + up_x * gy + x, got[i].first, 3e-5) << round;
            ASSERT_NEAR(-e * up_x * gx + up_y * gy + y, got[i].second, 3e-5) << round;
        }
    }
}

TEST(Stroke, NothingToDrawOrNowhereToDrawItIsHarmless) {
    for (int code = 127; code < 256 + ' '; ++code)
        EXPECT_TRUE(Plot(std::string(1, static_cast<char>(code))).empty()) << code;
    Drawing drawing;
    stroke_plot_string("A", -2147483647, Keep, &drawing, 0, 0);
    stroke_plot_string(nullptr, 3, Keep, &drawing, 0, 0);
    EXPECT_TRUE(drawing.empty());
    stroke_plot_string("A", 1, nullptr, nullptr, 0, 0);
    stroke_inq_textstring_extent("A", 1, nullptr, 0, 0);

    stroke_set_text_attributes(0, 0.0F, -0.0F, 1.0F, 1.0F, 0.0F);  // no direction
    drawing = Plot("L", 5.0F, 6.0F);
    for (auto const& [x, y] : drawing.at(0)) EXPECT_TRUE(std::isnan(x) && std::isnan(y));
}

TEST(Stroke, SixteenBitsOfAMarkerKindCount) {
    for (int const kind : {5, 5 + 65536, 5 - 65536}) {
        EXPECT_EQ(kind, stroke_set_marker_attributes(kind, 14.0F));
        EXPECT_EQ((Drawing{{{4, 14}, {16, 26}}, {{4, 26}, {16, 14}}}), PlotMarker(10, 20)) << kind;
    }
    for (int const none : {13, -1, -65536 + 13}) {
        stroke_set_marker_attributes(none, 7.0F);
        EXPECT_TRUE(PlotMarker(0, 0).empty()) << none;
    }
}

TEST(StrokeThreads, DrawAtTheSameTime) {
    SetHeight(1.0F);
    std::string text;
    for (int i = 0; i < 400; ++i) text += static_cast<char>(' ' + i % 95);
    auto const want = Plot(text, 1.0F, 2.0F);
    std::vector<Drawing> drawn(4);
    std::vector<std::thread> threads;
    for (auto& drawing : drawn) threads.emplace_back([&] { drawing = Plot(text, 1.0F, 2.0F); });
    for (auto& thread : threads) thread.join();
    for (auto const& drawing : drawn) EXPECT_EQ(want, drawing);
}

}  // namespace
