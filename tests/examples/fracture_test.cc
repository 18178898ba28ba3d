// Runs the program on files in a fresh folder and looks at what it prints, writes and leaves
// behind.
#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/wait.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <map>
#include <random>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;

struct Row {  // of the table
    long shapes = 0, ortho = 0, diagonal = 0, slanted = 0, points = 0, trapezoids = 0;
    double area_um2 = 0, perimeter_um = 0, time_ms = 0;
    long differ = 0;
};

class Fracture : public testing::Test {
protected:
    void SetUp() override {
        char name[] = "/tmp/fracture_test.XXXXXX";
        ASSERT_NE(nullptr, mkdtemp(name));
        folder = name;
    }
    void TearDown() override { fs::remove_all(folder); }

    void Write(char const* name, std::string const& text) {
        std::ofstream(folder / name, std::ios::binary) << text;
    }
    std::string Read(char const* name) {
        std::ifstream in(folder / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }
    std::set<std::string> Names() {
        std::set<std::string> names;
        for (auto const& entry : fs::directory_iterator(folder))
            names.insert(entry.path().filename().string());
        return names;
    }
    // The exit status; the outputs in `out` and `err`, the rows of the table in `table`.
    int Run(std::string const& arguments) {
        std::string const command =
            "cd " + folder.string() + " && " FRACTURE_COMMAND " >stdout 2>stderr " + arguments;
        int const status = std::system(command.c_str());
        out = Read("stdout");
        err = Read("stderr");
        fs::remove(folder / "stdout");
        fs::remove(folder / "stderr");
        table.clear();
        std::istringstream lines(out);
        for (std::string line; std::getline(lines, line);) {
            std::istringstream words(line);
            std::string layer;
            Row r;
            if (words >> layer >> r.shapes >> r.ortho >> r.diagonal >> r.slanted >> r.points >>
                r.trapezoids >> r.area_um2 >> r.perimeter_um >> r.time_ms >> r.differ)
                table[layer] = r;
        }
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    fs::path folder;
    std::string out, err;
    std::map<std::string, Row> table;
};

TEST_F(Fracture, CountsWhatIsOnEachLayer) {
    Write("a.lay",
          "# squares, one with points that say nothing\n"
          "polygon 1/0 0 0 100 0 100 100 0 100\n"
          "polygon 1/0 0 0 0 0 50 0 100 0 100 100 0 100 0 0\r\n\n"
          "\tpolygon  diag 0 0 1u 0 1u 1u \n"
          "path wire 20 1 0 0 100 0\n"
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
        {"wire", {0, 0, 0, 0, 0, 0, 0, 0, 0, 0}},
        {"flat", {1, 1, 0, 0, 3, 0, 0, 0, 0, 0}},
        {"slant", {1, 0, 0, 1, 3, 2, 0.5, 1 + std::sqrt(5.0), 0, 0}},
        {"knot", {1, 0, 1, 0, 4, 2, 0, 0.6 + std::sqrt(0.72), 0, 1}},  // 0.045 even-odd
        {"total", {7, 4, 2, 1, 35, 11, 1.0208, 9.0788, 0, 1}},
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
        EXPECT_EQ(want.trapezoids, got.trapezoids);
        EXPECT_NEAR(want.area_um2, got.area_um2, 1e-9);
        EXPECT_NEAR(want.perimeter_um, got.perimeter_um, 1e-3);
        EXPECT_EQ(want.differ, got.differ);
    }
    for (char const* note :
         {"box (0.000, 0.000) to (1.000, 1.000) um", "skipped: 1\n", "first at b.lay:2\n"})
        EXPECT_NE(std::string::npos, out.find(note)) << note << " in\n" << out;
}

TEST_F(Fracture, TakesNumbersInUnitsAndInMetres) {
    struct {
        char const *options, *side;
        double area_um2;
    } const rows[] = {
        {"", "460", 0.2116},       {"", "460n", 0.2116},   {"", "0.46u", 0.2116},
        {"", "+4.6e2", 0.2116},    {"", "1000m", 1e12},    {"-u 5n", "92", 0.2116},
        {"-u5n", "460n", -1},      {"-u 0.5u", "3", 2.25}, {"-u 1u", "1600n", 4},  // 2 units
        {"-u 5n", "460n", 0.2116}, {"-u 1u", ".4u", 0},    {"-u 1e-9", "1k", -1},  // 1 km
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
        {"circle m 0 0 5", "unknown record, 'circle'"},
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
    want += "a.lay:" + std::to_string(line + 1) + ": more than 65535 points, '65535'\n";
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
    Write("-c.lay", "polygon 2 0 0 10 5 0 10\n");
    ASSERT_EQ(0, Run("-o p.svg -- 'a&b.lay' -c.lay")) << err;
    EXPECT_EQ((std::set<std::string>{"-c.lay", "a&b.lay", "p.svg"}), Names());
    std::string const svg = Read("p.svg");
    for (char const* part :
         {">a&amp;b.lay: 0.11 x 0.06 um<", ">-c.lay: 0.01 x 0.01 um<", "<title>&lt;1&gt;</title>",
          "d=\"M0 50L0 60H10L10 50Z\"", "d=\"M0 0L0 5H10L0 0ZM0 5L0 10H0L10 5Z\"", "</svg>\n"})
        EXPECT_NE(std::string::npos, svg.find(part)) << part << " in\n" << svg;
    auto const count = [&svg](std::string const& what) {
        int n = 0;
        for (auto at = svg.find(what); at != std::string::npos; at = svg.find(what, at + 1)) ++n;
        return n;
    };
    EXPECT_EQ(count("<g"), count("</g>"));
    EXPECT_EQ(2, count("class=\"frame\""));
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

}  // namespace
