#include "geometry/stroke.h"

#include <thread>

#include "tests/geometry/points.h"

namespace {

using Drawing = std::vector<std::vector<float>>;  // x and y of the points of each stroke

int Keep(int count, float const* xy, void* user) {
    static_cast<Drawing*>(user)->emplace_back(xy, xy + 2 * count);
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

// Drawn before main, when nothing has set an attribute.
Drawing const start_text = Plot("A 1"), start_marker = PlotMarker(0, 0);

// The attributes belong to the process. Of height 1, text is drawn as the font's table says.
void SetHeight(float height) { stroke_set_text_attributes(0, 0.0F, 1.0F, height, 1.0F, 0.0F); }

TEST(Stroke, StartAttributesDrawAHundredthHigh) {
    EXPECT_EQ(Drawing({{-0.2F, 0.0F, 0.2F, 0.0F}, {0.0F, -0.2F, 0.0F, 0.2F}}), start_marker);
    SetHeight(0.01F);
    EXPECT_EQ(Plot("A 1"), start_text);
}

TEST(Stroke, EachCoordinateIsFusedOnceAndThenMoved) {
    stroke_set_text_attributes(2, 3.0F, -5.0F, 0.37F, 1.3F, 0.25F);
    auto const at_origin = Plot("1")[0];
    EXPECT_EQ(0x1.7347e4p-4F, at_origin[0]);       // ...e6 with the other product fused
    EXPECT_EQ(0x1.61379ep-5F, at_origin[2]);       // ...a0 without fusing
    EXPECT_EQ(-0x1.405002p-2F, Plot("A")[0][11]);  // ...00 in both cases
    auto const moved = Plot("17", 10.1F, -3.7F)[1];
    EXPECT_TRUE(moved[0] == 0x1.50e7fcp+3F && moved[1] == -0x1.1a7cbap+2F);
}

TEST(Stroke, FollowsTheFormulaInDouble) {
    std::mt19937 random(55);
    auto const uniform = [&](int reach) { return RandomCoord(random, 1000 * reach) / 1000.0F; };
    std::string const text("fA \xc8m\0L", 7);
    std::vector<Drawing> glyphs;
    SetHeight(1.0F);
    for (char const c : text) glyphs.push_back(Plot(std::string(1, c)));
    for (int round = 0; round < 500; ++round) {
        int const path = round % 6 - 1;  // -1 and 4 count as 0
        float const ux = uniform(2), uy = uniform(2), h = uniform(3), e = uniform(2);
        float const s = uniform(2), x = uniform(9), y = uniform(9);
        stroke_set_text_attributes(path, ux, uy, h, e, s);
        auto got = Plot(text, x, y);
        got.emplace_back(8);  // the box, which ignores path and spacing
        stroke_inq_textstring_extent(nullptr, path + 1, got.back().data(), x, y);
        double const up_x = h * ux / std::hypot(ux, uy), up_y = h * uy / std::hypot(ux, uy);
        std::size_t k = 0;
        auto const expect = [&](std::vector<float> const& stroke, double right, double up) {
            ASSERT_EQ(stroke.size(), got.at(k).size());
            for (std::size_t i = 0; i < stroke.size(); i += 2) {
                double const gx = stroke[i] + right, gy = stroke[i + 1] + up;
                ASSERT_NEAR(e * up_y * gx + up_x * gy + x, got[k][i], 3e-5) << round;
                ASSERT_NEAR(-e * up_x * gx + up_y * gy + y, got[k][i + 1], 3e-5) << round;
            }
            ++k;
        };
        double at = 0;
        for (auto const& glyph : glyphs) {
            bool const vertical = path == 2 || path == 3;
            for (auto const& stroke : glyph) expect(stroke, vertical ? 0 : at, vertical ? at : 0);
            at += path == 1 || path == 3 ? -1 - double{s} : 1 + double{s};
        }
        auto const width = static_cast<float>(path + 1);
        expect({0, -0.421F, width, -0.421F, width, 1, 0, 1}, 0, 0);
        ASSERT_EQ(got.size(), k);
    }
}

TEST(Stroke, NothingToDrawOrNowhereToDrawItIsHarmless) {
    std::string codes;  // none of the font
    for (int code = 127; code < 256 + ' '; ++code) codes += static_cast<char>(code);
    Drawing drawing = Plot(codes);
    stroke_plot_string(nullptr, 3, Keep, &drawing, 0, 0);
    EXPECT_EQ(Drawing(), drawing);
    stroke_plot_string("A", 1, nullptr, nullptr, 0, 0);
}

TEST(Stroke, SixteenBitsOfAMarkerKindCount) {
    Drawing const none, cross = {{4, 14, 16, 26}, {4, 26, 16, 14}};
    for (int const kind : {5, 5 + 65536, 5 - 65536, 13, -1, -65536 + 13}) {
        EXPECT_EQ(kind, stroke_set_marker_attributes(kind, 14.0F));
        EXPECT_EQ((kind & 0xFFFF) == 5 ? cross : none, PlotMarker(10, 20)) << kind;
    }
}

TEST(StrokeThreads, DrawAtTheSameTime) {
    SetHeight(1.0F);
    std::string text;
    for (int i = 0; i < 400; ++i) text += static_cast<char>(' ' + i % 95);
    std::vector<Drawing> drawn(4);
    std::vector<std::thread> threads;
    for (auto& drawing : drawn) threads.emplace_back([&] { drawing = Plot(text, 1.0F, 2.0F); });
    for (auto& thread : threads) thread.join();
    for (auto const& drawing : drawn) EXPECT_EQ(Plot(text, 1.0F, 2.0F), drawing);
}

}  // namespace
