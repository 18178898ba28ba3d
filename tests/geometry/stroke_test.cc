#include "geometry/stroke.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <set>
#include <string>
#include <thread>
#include <utility>
#include <vector>

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

// Drawn before main, when nothing has set an attribute.
Drawing const start_text = Plot("A 1");
Drawing const start_marker = PlotMarker(0.0F, 0.0F);

// The attributes belong to the process: each test starts with, and leaves, those of its start.
class StrokeTest : public testing::Test {
protected:
    StrokeTest() { Reset(); }
    ~StrokeTest() override { Reset(); }

    static void Reset() {
        stroke_set_text_attributes(0, 0.0F, 1.0F, 0.01F, 1.0F, 0.0F);
        stroke_set_marker_attributes(1, 0.7F);
    }
};

// Text in glyph units: what is drawn is the table itself.
class StrokeFontTest : public StrokeTest {
protected:
    StrokeFontTest() { stroke_set_text_attributes(0, 0.0F, 1.0F, 1.0F, 1.0F, 0.0F); }
};

// Fourteenths of a cell as the nearest float to the decimal fraction of three places.
float Grid(int fourteenths) {
    char text[16];
    std::snprintf(text, sizeof text, "%.3f", fourteenths / 14.0);
    return std::strtof(text, nullptr);
}

TEST_F(StrokeFontTest, EveryCharacterHasItsStrokesAndPointsInTheCell) {
    std::set<float> columns, rows;
    for (int k = 0; k <= 10; ++k) columns.insert(Grid(k));
    for (int k = -6; k <= 14; ++k) rows.insert(Grid(k));
    std::string const several = "!\"#$%*+0:;=?Xfijktx";
    std::string const strokes = "2243342222222222222";

    std::size_t points = 0;
    std::set<Drawing> shapes;
    for (char c = ' '; c <= '~'; ++c) {
        auto const glyph = Plot(std::string(1, c));
        auto const at = several.find(c);
        std::size_t const want = c == ' ' ? 0U
                                 : at == std::string::npos
                                     ? 1U
                                     : static_cast<unsigned>(strokes[at] - '0');
        EXPECT_EQ(want, glyph.size()) << c;
        EXPECT_TRUE(shapes.insert(glyph).second) << c << " looks like another one";
        for (auto const& stroke : glyph) {
            points += stroke.size();
            EXPECT_LE(2U, stroke.size()) << c;
            for (auto const& [x, y] : stroke)
                EXPECT_TRUE(columns.count(x) && rows.count(y)) << c << ": " << x << ',' << y;
        }
    }
    for (int kind = 0; kind <= 12; ++kind) {
        stroke_set_marker_attributes(kind, 1.0F);
        for (auto const& stroke : PlotMarker(0.0F, 0.0F)) points += stroke.size();
    }
    EXPECT_EQ(773U, points);
}

TEST_F(StrokeFontTest, LettersAndDigitsStandOnCommonLines) {
    struct {
        char const* characters;
        float bottom, top;
    } const rows[] = {
        {"0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZbdfhiklt", 0.0F, 1.0F},
        {"acemnorsuvwxz", 0.0F, 0.714F},
        {"gpqy", -0.429F, 0.714F},
        {"j", -0.429F, 1.0F},
    };
    for (auto const& row : rows)
        for (char const* c = row.characters; *c != '\0'; ++c) {
            float bottom = 9.0F, top = -9.0F;
            for (auto const& stroke : Plot(std::string(1, *c)))
                for (auto const& point : stroke) {
                    bottom = std::min(bottom, point.second);
                    top = std::max(top, point.second);
                }
            EXPECT_EQ(std::make_pair(row.bottom, row.top), std::make_pair(bottom, top)) << *c;
        }
}

TEST_F(StrokeFontTest, TheGivenGlyphsAreKept) {
    Drawing const a = {{{0.0F, 0.0F},
                        {0.0F, 0.857F},
                        {0.143F, 1.0F},
                        {0.571F, 1.0F},
                        {0.714F, 0.857F},
                        {0.714F, 0.429F},
                        {0.0F, 0.429F},
                        {0.714F, 0.429F},
                        {0.714F, 0.0F}}};
    Drawing const one = {
        {{0.143F, 0.786F}, {0.357F, 1.0F}, {0.357F, 0.0F}, {0.143F, 0.0F}, {0.571F, 0.0F}}};
    EXPECT_EQ(a, Plot("A"));
    EXPECT_EQ(one, Plot("1"));
}

TEST_F(StrokeTest, StartAttributesDrawAHundredthHigh) {
    ASSERT_EQ(2U, start_text.size());
    ASSERT_EQ(9U, start_text[0].size());
    EXPECT_EQ(std::make_pair(0.0F, 0.0F), start_text[0][0]);
    EXPECT_EQ(std::make_pair(0.0F, 0.01F * 0.857F), start_text[0][1]);
    // Two advances, added one by one, before the foot of the digit.
    EXPECT_EQ(std::make_pair(0.01F * 0.143F + (0.01F + 0.01F), 0.0F), start_text[1][3]);
    EXPECT_EQ((Drawing{{{-0.2F, 0.0F}, {0.2F, 0.0F}}, {{0.0F, -0.2F}, {0.0F, 0.2F}}}),
              start_marker);
}

TEST_F(StrokeTest, EachCoordinateIsFusedOnceAndThenMoved) {
    stroke_set_text_attributes(2, 3.0F, -5.0F, 0.37F, 1.3F, 0.25F);
    auto const at_origin = Plot("1");
    EXPECT_EQ(0x1.7347e4p-4F, at_origin[0][0].first);    // ...e6 with the other product fused
    EXPECT_EQ(0x1.61379ep-5F, at_origin[0][1].first);    // ...a0 without fusing
    EXPECT_EQ(-0x1.405002p-2F, Plot("A")[0][5].second);  // ...00 in both cases
    auto const moved = Plot("17", 10.1F, -3.7F);
    EXPECT_EQ(std::make_pair(0x1.44946cp+3F, -0x1.06c27ap+2F), moved[0][1]);
    EXPECT_EQ(std::make_pair(0x1.50e7fcp+3F, -0x1.1a7cbap+2F), moved[1][0]);
}

TEST_F(StrokeTest, FollowsTheFormulaInDouble) {
    std::mt19937 random(55);
    auto const uniform = [&random](double from, double to) {
        return static_cast<float>(from +
                                  (to - from) * static_cast<double>(random()) / 4294967295.0);
    };
    std::string const text = "fA \xc8m";
    std::vector<Drawing> glyphs;
    stroke_set_text_attributes(0, 0.0F, 1.0F, 1.0F, 1.0F, 0.0F);
    for (char const c : text) glyphs.push_back(Plot(std::string(1, c)));

    for (int round = 0; round < 500; ++round) {
        int const path = static_cast<int>(random() % 6) - 1;  // -1 and 4 count as 0
        float const ux = uniform(-2, 2), uy = uniform(-2, 2), h = uniform(-3, 3);
        float const e = uniform(-2, 2), s = uniform(-1.5, 1), x = uniform(-9, 9),
                    y = uniform(-9, 9);
        stroke_set_text_attributes(path, ux, uy, h, e, s);
        double const length = std::sqrt(double{ux} * ux + double{uy} * uy);
        double const right_x = double{e} * h * uy / length, right_y = -double{e} * h * ux / length;
        double const up_x = double{h} * ux / length, up_y = double{h} * uy / length;
        double const along = path == 1                ? -1 - double{s}
                             : path == 2 || path == 3 ? 0
                                                      : 1 + double{s};
        double const upward = path == 2 ? 1 + double{s} : path == 3 ? -1 - double{s} : 0;

        auto const drawn = Plot(text, x, y);
        auto stroke = drawn.begin();
        for (std::size_t i = 0; i < glyphs.size(); ++i)
            for (auto const& outline : glyphs[i]) {
                ASSERT_NE(drawn.end(), stroke);
                ASSERT_EQ(outline.size(), stroke->size());
                for (std::size_t k = 0; k < outline.size(); ++k) {
                    double const gx = outline[k].first + static_cast<double>(i) * along;
                    double const gy = outline[k].second + static_cast<double>(i) * upward;
                    ASSERT_NEAR(right_x * gx + up_x * gy + x, (*stroke)[k].first, 2e-5) << round;
                    ASSERT_NEAR(right_y * gx + up_y * gy + y, (*stroke)[k].second, 2e-5) << round;
                }
                ++stroke;
            }
        ASSERT_EQ(drawn.end(), stroke);
    }
}

TEST_F(StrokeTest, BytesOutsideTheFontOnlyAdvance) {
    stroke_set_text_attributes(0, 0.0F, 1.0F, 1.0F, 1.0F, 0.0F);
    for (int code = 0; code < 256; ++code) {
        if (code > ' ' && code < 127) continue;
        auto const drawn = Plot(std::string(1, static_cast<char>(code)) + "L");
        ASSERT_EQ(1U, drawn.size()) << code;
        EXPECT_EQ(std::make_pair(1.0F, 1.0F), drawn[0][0]) << code;
    }
}

TEST_F(StrokeTest, NothingToDrawOrNowhereToDrawItIsHarmless) {
    Drawing drawing;
    for (int const count : {0, -1, -2147483647})
        stroke_plot_string("A", count, Keep, &drawing, 0, 0);
    stroke_plot_string(nullptr, 3, Keep, &drawing, 0, 0);
    EXPECT_TRUE(drawing.empty());
    stroke_plot_string("A", 1, nullptr, nullptr, 0, 0);
    stroke_plot_marker(nullptr, nullptr, 0, 0);
    stroke_inq_textstring_extent("A", 1, nullptr, 0, 0);
}

TEST_F(StrokeTest, AZeroUpVectorHasNoDirection) {
    stroke_set_text_attributes(0, 0.0F, -0.0F, 1.0F, 1.0F, 0.0F);
    auto const drawn = Plot("I", 5.0F, 6.0F);
    ASSERT_EQ(1U, drawn.size());
    for (auto const& [x, y] : drawn[0]) EXPECT_TRUE(std::isnan(x) && std::isnan(y));
}

TEST_F(StrokeTest, ExtentIgnoresPathAndSpacing) {
    struct {
        int path;
        float up_x, up_y, spacing;
        int count;
        float x, y, want[8];
    } const rows[] = {
        {0, 0, 1, 0, 3, 0, 0, {0, -0.00421F, 0.03F, -0.00421F, 0.03F, 0.01F, 0, 0.01F}},
        {2, 0, 9, 5, 3, 0, 0, {0, -0.00421F, 0.03F, -0.00421F, 0.03F, 0.01F, 0, 0.01F}},
        {0, -1, 0, 0, 2, 1, 2, {1.00421F, 2, 1.00421F, 2.02F, 0.99F, 2.02F, 0.99F, 2}},  // upward
        {0, 0, 1, 0, 0, 7, 8, {7, 7.99579F, 7, 7.99579F, 7, 8.01F, 7, 8.01F}},
    };
    for (auto const& row : rows) {
        stroke_set_text_attributes(row.path, row.up_x, row.up_y, 0.01F, 1.0F, row.spacing);
        float box[8];
        stroke_inq_textstring_extent(nullptr, row.count, box, row.x, row.y);
        for (int i = 0; i < 8; ++i)
            EXPECT_FLOAT_EQ(row.want[i], box[i]) << "row " << &row - rows << ", value " << i;
    }
}

TEST_F(StrokeTest, MarkersAreDrawnPointByPoint) {
    Polyline const dot = {{0, 0}}, fall = {{-3, 3}, {3, -3}}, rise = {{-3, -3}, {3, 3}};
    Polyline const level = {{-3, 0}, {3, 0}}, upright = {{0, -3}, {0, 3}};
    Polyline const square = {{-3, -3}, {3, -3}, {3, 3}, {-3, 3}, {-3, -3}};
    Polyline const diamond = {{-3, 0}, {0, -3}, {3, 0}, {0, 3}, {-3, 0}};
    Drawing const kinds[] = {
        {dot},
        {{{-2, 0}, {2, 0}}, {{0, -2}, {0, 2}}},
        {level, upright},
        {upright, {{-3, -2}, {3, 2}}, {{-3, 2}, {3, -2}}},
        {{{-2, -2}, {-2, 2}, {-2, 3}, {2, 3}, {3, 2}, {3, -2}, {2, -3}, {-2, -3}, {-2, -2}}},
        {rise, fall},
        {square},
        {diamond},
        {square, dot},
        {diamond, dot},
        {square, diamond},
        {rise, fall, square, diamond},
        {level, upright, diamond},
    };
    for (int kind = 0; kind <= 12; ++kind) {
        Drawing want = kinds[kind];
        for (auto& stroke : want)
            for (auto& [x, y] : stroke) x = 10.0F + 2.0F * x, y = 20.0F + 2.0F * y;
        EXPECT_EQ(kind, stroke_set_marker_attributes(kind, 14.0F));
        EXPECT_EQ(want, PlotMarker(10.0F, 20.0F)) << kind;
    }
}

TEST_F(StrokeTest, OnlySixteenBitsOfTheMarkerKindCount) {
    for (int const kind : {13, -1, 65535, -65536 + 13, 2147483647}) {
        EXPECT_EQ(kind, stroke_set_marker_attributes(kind, 7.0F));
        EXPECT_TRUE(PlotMarker(0.0F, 0.0F).empty()) << kind;
    }
    for (int const kind : {65536 + 6, -65536 + 6}) {
        stroke_set_marker_attributes(kind, 7.0F);
        EXPECT_EQ((Drawing{{{7, 7}, {13, 7}, {13, 13}, {7, 13}, {7, 7}}}),
                  PlotMarker(10.0F, 10.0F));
    }
}

TEST_F(StrokeTest, AttributesSetWhileDrawingCountFromTheNextCall) {
    auto const before = Plot("LL");
    Drawing drawing;
    auto const grow = [](int count, float const* xy, void* user) {
        stroke_set_text_attributes(1, 1.0F, 1.0F, 3.0F, 2.0F, 1.0F);
        return Keep(count, xy, user);
    };
    stroke_plot_string("LL", 2, grow, &drawing, 0.0F, 0.0F);
    EXPECT_EQ(before, drawing);
    EXPECT_NE(before, Plot("LL"));
}

class StrokeThreadsTest : public StrokeTest {};

TEST_F(StrokeThreadsTest, DrawAtTheSameTime) {
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
