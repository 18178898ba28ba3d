// Runs the program on files in a fresh folder and looks at what it prints, writes and leaves
// behind.
#include <cmath>
#include <cstdint>
#include <map>
#include <random>
#include <sstream>
#include <vector>

#include "program.h"

namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;

struct Row {  // of the table
    long shapes = 0, ortho = 0, diagonal = 0, slanted = 0, points = 0, pieces = 0;
    double area_um2 = 0, perimeter_um = 0, time_ms = 0;
    long differ = 0;
};

class Fracture : public Program {
protected:
    // The exit status; the rows of the table in `table`.
    int Run(std::string const& arguments) {
        int const status = RunProgram(FRACTURE_COMMAND, arguments);
        table.clear();
        std::istringstream lines(out);
        for (std::string line; std::getline(lines, line);) {
            std::istringstream words(line);
            std::string layer;
            Row r;
            if (words >> layer >> r.shapes >> r.ortho >> r.diagonal >> r.slanted >> r.points >>
                r.pieces >> r.area_um2 >> r.perimeter_um >> r.time_ms >> r.differ)
                table[layer] = r;
        }
        return status;
    }

    std::map<std::string, Row> table;
};

TEST_F(Fracture, CountsWhatIsOnEachLayer) {
    Write("a.lay",
          "# squares, one with points that say nothing\n"
          "polygon 1/0 0 0 100 0 100 100 0 100\n"
          "polygon 1/0 0 0 0 0 50 0 100 0 100 100 0 100 0 0\r\n\n"
          "\tpolygon  diag 0 0 1u 0 1u 1u \n"
          "path wire 20 1 0 0 100 0\nlabel wire 5 0 0 # 1\ncircle dot 4 0 0 10\n"
          "polygon slit 0 0 30 0 30 30 0 30 0 10 10 10 10 20 20 20 20 10 10 10 0 10\n"
          "polygon flat 0 0 5 5 9 9\n");
    Write("b.lay", "polygon slant 0 0 1000 500 0 1000\npolygon knot 0 0 300 300 300 0 0 300");
    ASSERT_EQ(0, Run("a.lay b.lay")) << err;
    EXPECT_EQ("", err);
    struct {
        char const* layer;
        Row want;
    } const rows[] = {
        {"1/0", {2, 2, 0, 0, 11, 2, 0.02, 0.8, 0, 0}},
        {"diag", {1, 0, 1, 0, 3, 1, 0.5, 2 + std::sqrt(2.0), 0, 0}},
        {"slit", {1, 1, 0, 0, 11, 4, 0.0008, 0.18, 0, 0}},
        {"wire", {1, 1, 0, 0, 2, 1, 0.0024, 0.28, 0, 0}},
        {"dot", {1, 1, 0, 0, 4, 1, 0.0001, 0.04, 0, 0}},
        {"flat", {1, 1, 0, 0, 3, 0, 0, 0, 0, 0}},
        {"slant", {1, 0, 0, 1, 3, 2, 0.5, 1 + std::sqrt(5.0), 0, 0}},
        {"knot", {1, 0, 1, 0, 4, 2, 0, 0.6 + std::sqrt(0.72), 0, 1}},  // 0.045 even-odd
        {"total", {9, 6, 2, 1, 41, 13, 1.0233, 9.3988, 0, 1}},
    };
    EXPECT_EQ(std::size(rows), table.size());
    for (auto const& row : rows) {
        SCOPED_TRACE(row.layer);
        Row const &want = row.want, &got = table[row.layer];
        EXPECT_EQ(want.shapes, got.shapes);
        EXPECT_EQ(want.ortho, got.ortho);
        EXPECT_EQ(want.diagonal, got.diagonal);
        EXPECT_EQ(want.slanted, got.slanted);
        EXPECT_EQ(want.points, got.points);
        EXPECT_EQ(want.pieces, got.pieces);
        EXPECT_NEAR(want.area_um2, got.area_um2, 1e-9);
        EXPECT_NEAR(want.perimeter_um, got.perimeter_um, 1e-3);
        EXPECT_EQ(want.differ, got.differ);
    }
    for (char const* note :
         {"box (-0.010, -0.010) to (1.000, 1.000) um", "labels: 1\n", "first at b.lay:2\n"})
        EXPECT_NE(std::string::npos, out.find(note)) << note << " in\n" << out;
}

TEST_F(Fracture, TakesNumbersInUnitsAndInMetres) {
    struct {
        char const *options, *side;
        double area_um2;
    } const rows[] = {
        {"", "460", 0.2116},      {"", "460n", 0.2116},   {"", "0.46u", 0.2116},
        {"", "+4.6e2", 0.2116},   {"", "1000m", 1e12},    {"-u 5n", "92", 0.2116},
        {"-u5n", "460n", 0.2116}, {"-u 0.5u", "3", 2.25}, {"-u 1u", "1600n", 4},  // 2 units
        {"-u 1u", ".4u", 0},      {"-u 1e-9", "1k", -1},                          // 1 km
    };
    for (auto const& row : rows) {
        std::string const s = row.side;
        std::string line = "polygon m";
        for (std::string const& number : {"0"s, "0"s, s, "0"s, s, s, "0"s, s}) line += " " + number;
        Write("a.lay", line);
        EXPECT_EQ(row.area_um2 < 0, Run(row.options + std::string(" a.lay"))) << s;
        EXPECT_DOUBLE_EQ(std::max(0.0, row.area_um2), table["total"].area_um2) << s;
    }
}

TEST_F(Fracture, NamesBadLinesAndReadsTheOthers) {
    struct {
        std::string line;
        char const* problem;  // null: a good polygon
    } const rows[] = {
        {"square m 0 0 5", "unknown record, 'square'"},
        {"circle m 8 0 0", "not LAYER SEGMENTS x y DIAMETER, 'circle'"},
        {"circle m 2 0 0 5", "segments are not a number from 3 to 32767, '2'"},
        {"circle m 4294967300 0 0 5", "segments are not a number from 3 to 32767, '4294967300'"},
        {"circle m 8u 0 0 5", "segments are not a number from 3 to 32767, '8u'"},
        {"circle m 8 0 0 -5", "negative diameter, '-5'"},
        {"circle m 3 1073741823 0 5", "shape out of range"},
        {"label m 5 0 0 ", "no text, 'label'"},
        {"label m 5 0", "not LAYER HEIGHT x y TEXT, 'label'"},
        {"label m -5 0 0 a b", "negative height, '-5'"},
        {"path m 5 0 0 0 10 10", "slanted path"},
        {"path m 5 0 0 0 10 0 10 0 5 0", "path turns back on itself"},
        {"path m 10 0 0 1073741823 9 1073741823", "shape out of range"},
        {"polygon", "no layer, 'polygon'"},
        {"polygon m 0 0 10 0 10 10", nullptr},
        {"polygon m 0 0 10 0", "fewer than 3 points, '0'"},
        {"polygon m", "fewer than 3 points, 'm'"},
        {"polygon m 0 0 10 0 10 10 7", "x without y, '7'"},
        {"polygon m 0 0 10 0 10 1O", "not a number, '1O'"},
        {"polygon m 0 0 10 0 10 10n5", "not a number, '10n5'"},
        {"polygon m 0 0 10 0 10 5% # cut", "not a number, '5%'"},
        {"polygon m 0 0 10 0 10 inf", "not a number, 'inf'"},
        {"polygon m 0 0 10 0 10 1E", "not a number, '1E'"},
        {"polygon m 0 0 10 0 10 -", "not a number, '-'"},
        {"polygon m 0 0 10 0 10 1073741824", "number out of range, '1073741824'"},
        {"polygon m 0 0 10 0 10 -2M", "number out of range, '-2M'"},
        {"polygon m 0 0 10 0 10 0e999", "number out of range, '0e999'"},
        {"path m", "no path width, 'path'"},
        {"path m 5", "no path end, 'path'"},
        {"path m 5 2 0 0", "path end is neither 0 nor 1, '2'"},
        {"path m -5 0 0 0", "negative path width, '-5'"},
        {"path m 5 0", "no points, '0'"},
        {std::string("polygon m\0 0", 12), "zero byte in the line, 'polygon m'"},
        {"\x1b[31m" + std::string(60, 'x'),
         "unknown record, '?[31mxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx...'"},
        {"polygon m 0 0 10 0 10 10", nullptr},
    };
    std::string text, want, many = "polygon m";
    int line = 0, good = 0;
    for (auto const& row : rows) {
        text += row.line + '\n';
        ++line;
        if (row.problem == nullptr)
            ++good;
        else
            want += "a.lay:" + std::to_string(line) + ": " + row.problem + '\n';
    }
    for (int i = 0; i <= 65535; ++i) many += " " + std::to_string(i) + " 0";
    text += many;
    want += "a.lay:" + std::to_string(line + 1) + ": too many points, '65535'\n";
    text += "\npolygon m";
    for (int i = 0; i < 10000; ++i)  // half of the edges cross a slab: 25 million pieces
        text += " " + std::to_string(i) + " " + std::to_string(i % 2 * 20000 + i * 7 % 10000);
    want += "a.lay:" + std::to_string(line + 2) + ": too many pieces\n";
    Write("a.lay", text);
    EXPECT_EQ(1, Run("a.lay"));
    EXPECT_EQ(want, err);
    EXPECT_EQ(good, table["total"].shapes);
}

TEST_F(Fracture, FailsWithoutTouchingThePicture) {
    Write("good.lay", "polygon m 0 0 10 0 10 10\n");
    Write("bad.lay", "polygon m 0 0 10 0 10\n");
    Write("p.svg", "old");
    fs::create_directory(folder / "dir");
    struct {
        char const *arguments, *message;
    } const rows[] = {
        {"-o p.svg good.lay bad.lay",
         "bad.lay:1: x without y, '10'\nfracture: p.svg not written\n"},
        {"-o p.svg none.lay good.lay",
         "fracture: cannot read none.lay: No such file or directory\n"},
        {"-o p.svg dir", "fracture: cannot read dir: Is a directory\n"},
        {"-o none/p.svg good.lay",
         "fracture: cannot write none/p.svg: No such file or directory\n"},
        {"-o dir good.lay", "fracture: cannot write dir: Is a directory\n"},
        {"-x good.lay", "fracture: unknown option -x\nusage: fracture [-u UNIT]"},
        {"-o p.svg", "fracture: no file given\nusage: "},
        {"-o", "fracture: a value is missing after -o\nusage: "},
        {"-u 0 -o p.svg good.lay", "fracture: not a unit: 0\nusage: "},
        {"-u 1nm good.lay", "fracture: not a unit: 1nm\nusage: "},
        {"-s 1e9 good.lay", "fracture: not a distance: 1e9\nusage: "},
        {"-s 5x good.lay", "fracture: not a distance: 5x\nusage: "},
        {"-u 5 good.lay", "fracture: not a unit: 5\nusage: "},
        {"good.lay > /dev/full", "fracture: cannot write the table\n"},
    };
    auto const before = Names();
    for (auto const& row : rows) {
        EXPECT_EQ(1, Run(row.arguments)) << row.arguments;
        EXPECT_EQ(0u, err.find(row.message)) << row.arguments << ": " << err;
        EXPECT_EQ("old", Read("p.svg")) << row.arguments;
        EXPECT_EQ(before, Names()) << row.arguments;
    }
}

TEST_F(Fracture, DrawsAPanelForEachFile) {
    Write("a&b.lay", "polygon <1> -100 50 -90 50 -90 60 -100 60\npolygon 2 0 0 10 0 10 5\n");
    Write("-c.lay", "polygon 2 0 0 10 5 0 10\nlabel 2 14 -100 200  <T  L>\n");
    ASSERT_EQ(0, Run("-o p.svg -- 'a&b.lay' -c.lay")) << err;
    EXPECT_EQ((std::set<std::string>{"-c.lay", "a&b.lay", "p.svg"}), Names());
    std::string const svg = Read("p.svg");
    for (char const* part :
         {">a&amp;b.lay: 0.11 x 0.06 um<", ">-c.lay: 0.01 x 0.01 um<", "<title>&lt;1&gt;</title>",
          "d=\"M0 50L0 60H10L10 50Z\"", "d=\"M100 0L100 5H110L100 0ZM100 5L100 10H100L110 5Z\"",
          "<title>&lt;T  L&gt;</title>", "M56 214L56 200L65.996 200M", "</svg>\n"})
        EXPECT_NE(std::string::npos, svg.find(part)) << part << " in\n" << svg;
    auto const count = [&svg](std::string const& what) {
        int n = 0;
        for (auto at = svg.find(what); at != std::string::npos; at = svg.find(what, at + 1)) ++n;
        return n;
    };
    EXPECT_EQ(count("<g"), count("</g>"));
    EXPECT_EQ(2, count("class=\"frame\""));
    EXPECT_EQ(1, count("class=\"label c1\""));
    EXPECT_EQ(2 + 1, count("class=\"c1\""));  // layer 2: both panels and the legend
}

TEST_F(Fracture, FindsNothingWrongWithTheSamples) {
    std::string files;
    for (auto const& entry : fs::directory_iterator(EXAMPLE_DATA))
        files += " '" + entry.path().string() + "'";
    ASSERT_EQ(0, Run("-o p.svg" + files)) << err;
    EXPECT_EQ("", err);
    EXPECT_EQ(0, table["total"].differ);
    ASSERT_EQ(0, Run("'" EXAMPLE_DATA "/inverter.lay'"));
    EXPECT_NEAR(15 * 0.22 * 0.22, table["contact"].area_um2, 1e-9);
    ASSERT_EQ(0, Run("'" EXAMPLE_DATA "/ring.lay'"));
    EXPECT_NEAR(30 * 30 - 20.8 * 20.8, table["nwell"].area_um2, 1e-9);
}

TEST_F(Fracture, SizesShapesAndCountsWhatVanishes) {
    struct {
        char const *distance, *record;
        double area;  // 0: vanished; below 0: overlaps itself
        int pieces, differ;
    } const rows[] = {
        {"10", "polygon m 0 0 100 0 100 50 0 50", 120 * 70, 1, 0},
        {"-20", "polygon m 0 50 100 50 100 0 0 0", 60 * 10, 1, 0},  // clockwise
        {"-30", "polygon m 0 0 100 0 100 50 0 50", 0, 0, 0},        // winds the other way
        {"-60", "polygon m 0 0 100 0 100 50 0 50", 0, 0, 0},        // both ways inside out
        {"-25", "polygon m 0 0 100 0 100 50 0 50", 0, 0, 0},
        {"-40", "polygon m 0 0 100 0 0 100", 0, 0, 0},
        {"-20", "polygon m 0 0 200 0 200 10 100 10 100 100 0 100", -1, -1, 1},  // only its arm is
        {"20", "polygon m 0 0 90 0 90 90 60 90 60 30 30 30 30 90 0 90", -1, -1, 1},  // the notch
        {"5", "path m 20 1 0 0 100 0 100 50", 150 * 30 + 30 * 30, 2, 0},
        {"5", "path m 20 0 0 0 100 0 100 50", (150 + 10) * 30, 2, 0},
        {"-10", "path m 20 0 0 0 100 0 100 50", 0, 0, 0},
        {"0", "path m 21 0 0 0 100 0 100 50", 150 * 20, 2, 0},  // half a width is 10
        {"0", "path m 20 0 0 0 100 0 100 5", -1, 2, 1},         // shorter than half its width
        {"0", "path m 20 0 7 7 7 7", 20 * 20, 1, 0},
        {"0", "path m 20 0 0 0 0 0 50 0 90 0 90 90", 180 * 20, 2, 0},
        {"-5", "circle m 4 0 0 20", 10 * 10, 1, 0},
        {"9", "polygon m 0 0 5 5 9 9", 0, 0, 0},
    };
    for (auto const& row : rows) {
        SCOPED_TRACE(row.record + " by "s + row.distance);
        Write("a.lay", row.record);
        ASSERT_EQ(0, Run("-u 1u -s "s + row.distance + " -o p.svg a.lay")) << err;
        if (row.area >= 0) {  // of one that overlaps itself, the count will do
            EXPECT_EQ(row.area, table["m"].area_um2);
            EXPECT_EQ(row.pieces, table["m"].pieces);
        }
        EXPECT_EQ(row.differ, table["m"].differ);
        bool const flat = row.distance == "9"s;
        EXPECT_EQ(row.area == 0 && !flat, out.find("leaves nothing of: 1\n") != std::string::npos);
    }
    Write("a.lay", "polygon m 0 0 1000000000 0 0 10");  // its sharp corner moves too far
    EXPECT_EQ(1, Run("-s 100 a.lay"));
    EXPECT_EQ("a.lay:1: sized shape out of range\n", err);
}

// Simple outlines with any slants: what the cuts lose stays within the allowance, and the allowance
// is too small to hide an outline that overlaps itself.
TEST_F(Fracture, TellsTruncationFromOverlap) {
    std::mt19937 random(20);
    std::uniform_int_distribution<int> corners(3, 60), radius(200, 20000), shift(-50000, 50000);
    std::ostringstream text;
    for (int shape = 0; shape < 400; ++shape) {
        int const n = corners(random), dx = shift(random), dy = shift(random);
        text << "polygon star";
        for (int i = 0; i < n; ++i) {
            int const r = radius(random);
            double const turn = 2 * M_PI * i / n;
            text << ' ' << dx + std::lround(r * std::cos(turn)) << ' '
                 << dy + std::lround(r * std::sin(turn));
        }
        // two turns of a spiral with slanted edges: the inner one is wound twice
        text << "\npolygon twice";
        for (int i = 0; i < 14; ++i) {
            int const r = 1000 + 100 * i;
            text << ' ' << dx + std::lround(r * std::cos(0.9 * i)) << ' '
                 << dy + std::lround(r * std::sin(0.9 * i));
        }
        text << '\n';
    }
    Write("a.lay", text.str());
    ASSERT_EQ(0, Run("a.lay")) << err;
    EXPECT_EQ(400, table["star"].shapes);
    EXPECT_EQ(0, table["star"].differ);
    EXPECT_EQ(400, table["twice"].differ);
}

struct Expected {
    double area, slack;  // square units
};

// What moving all edges of an outline makes of its area: every corner that turns by t adds
// distance * distance * tan(t / 2). The slack is for corners that are rounded to the grid, those
// before and those after the sizing.
Expected SizedArea(std::vector<std::pair<double, double>> const& p, double distance) {
    double twice = 0, length = 0, corners = 0;
    std::size_t const n = p.size();
    for (std::size_t i = 0; i < n; ++i) {
        auto const &a = p[i], &b = p[(i + 1) % n], &c = p[(i + 2) % n];
        double const ux = b.first - a.first, uy = b.second - a.second;
        double const vx = c.first - b.first, vy = c.second - b.second;
        twice += a.first * b.second - b.first * a.second;
        length += std::hypot(ux, uy);
        corners += std::tan(std::atan2(ux * vy - uy * vx, ux * vx + uy * vy) / 2);
    }
    double const area = twice / 2 + distance * length + distance * distance * corners;
    return {area, 0.75 * (length + 20 * std::fabs(distance))};
}

// Generated layouts: the areas per layer are those of formulas that know nothing of outlines of
// paths, of cutting and of moving corners.
TEST_F(Fracture, AgreesWithAreasComputedAnotherWay) {
    std::mt19937 random(7);
    auto const any = [&random](int from, int to) {
        return std::uniform_int_distribution<int>(from, to)(random);
    };
    for (int const distance : {0, 45, -45}) {
        std::ostringstream text;
        std::map<std::string, Expected> want;
        auto const add = [&want](char const* layer, Expected const& more) {
            want[layer].area += more.area;
            want[layer].slack += more.slack;
        };
        for (int round = 0; round < 200; ++round) {
            // stairs: bends of both kinds, legs longer than the width
            int const width = 2 * any(50, 200), ends = any(0, 1), legs = any(1, 12);
            int x = any(-90000, 90000), y = any(-90000, 90000), length = 0;
            int const up = any(0, 1) * 2 - 1, right = any(0, 1) * 2 - 1, first = any(0, 1);
            text << "path stairs " << width << ' ' << ends << ' ' << x << ' ' << y;
            for (int leg = first; leg < first + legs; ++leg) {
                int const step = any(width, 3000);
                (leg % 2 != 0 ? x : y) += step * (leg % 2 != 0 ? right : up);
                length += step;
                text << ' ' << x << ' ' << y;
            }
            add("stairs", {(length + ends * width + 2.0 * distance) * (width + 2.0 * distance), 0});

            // columns of any height on a common base, clockwise
            int base = 0, height = 0, walls = 0;
            double sum = 0;
            text << "\npolygon columns " << x << ' ' << y;
            for (int columns = any(1, 20); columns > 0; --columns) {
                int const next =
                    height + (height > 2000 && any(0, 1) != 0 ? -1 : 1) * any(100, 900);
                int const column = any(100, 900);
                text << ' ' << x + base << ' ' << y + next << ' ' << x + base + column << ' '
                     << y + next;
                walls += std::abs(next - height);
                height = next;
                base += column;
                sum += double(column) * height;
            }
            text << ' ' << x + base << ' ' << y;
            double const round_it = 2 * base + walls + height;
            add("columns", {sum + distance * round_it + 4.0 * distance * distance, 0});

            // corners on a circle at angles of their own: convex, any slant
            int const n = any(3, 9), radius = any(2000, 50000);
            std::vector<std::pair<double, double>> corners;
            text << "\npolygon convex";
            for (int i = 0; i < n; ++i) {
                double const turn = 2 * M_PI * (i + any(0, 40) / 100.0) / n;
                corners.emplace_back(std::lround(radius * std::cos(turn)),
                                     std::lround(radius * std::sin(turn)));
                text << ' ' << x + corners.back().first << ' ' << y + corners.back().second;
            }
            add("convex", SizedArea(corners, distance));

            int const segments = any(3, 64), diameter = any(1000, 90000);
            double const inner = diameter / 2.0 + distance;
            text << "\ncircle rounds " << segments << ' ' << x << ' ' << y << ' ' << diameter
                 << '\n';
            double const tangent = segments * std::tan(M_PI / segments);
            add("rounds", {inner * inner * tangent, 1.5 * 2 * inner * tangent});
        }
        Write("a.lay", text.str());
        ASSERT_EQ(0, Run("-u 1u -s " + std::to_string(distance) + " a.lay")) << err;
        for (auto const& layer : want) {
            SCOPED_TRACE(layer.first + " by " + std::to_string(distance));
            EXPECT_EQ(200, table[layer.first].shapes);
            EXPECT_EQ(0, table[layer.first].differ);
            EXPECT_NEAR(layer.second.area, table[layer.first].area_um2, layer.second.slack);
        }
    }
}

}  // namespace
