// Runs the program on small layouts and looks at the table and the picture that it makes of them.
#include <map>

#include "program.h"

namespace {

using namespace std::string_literals;

// The numbers of each row but the time, in the order of the columns.
using Table = std::map<std::string, std::vector<double>>;
enum Column { kShapes, kPieces = 5, kArea, kDiffer = 8 };

Table TableOf(std::string const& text) {
    Table table;
    std::istringstream lines(text);
    for (std::string line, layer; std::getline(lines, line);) {
        std::istringstream words(line);
        words >> layer;
        std::vector<double> numbers(std::istream_iterator<double>(words), {});
        if (numbers.size() != 10) continue;
        numbers.erase(numbers.begin() + 8);
        table[layer] = numbers;
    }
    return table;
}

struct Fracture : Program {
    Fracture() : Program(FRACTURE_COMMAND) {}

    Table Good(std::string const& arguments) {
        EXPECT_EQ(0, Run(arguments));
        EXPECT_EQ("", err) << arguments;
        return TableOf(out);
    }
};

TEST_F(Fracture, CountsWhatIsOnEachLayer) {
    WriteFile("a.lay",
              "# squares, one with points that say nothing\n"
              "polygon 1/0 0 0 100 0 100 100 0 100\n"
              "polygon 1/0 0 0 0 0 50 0 100 0 100 100 0 100 0 0\r\n\n"
              "\tpolygon  diag 0 0 1u 0 1u 1u \n"
              "path wire 20 1 0 0 100 0\nlabel wire 5 0 0 # 1\ncircle dot 4 0 0 10\n"
              "polygon slit 0 0 30 0 30 30 0 30 0 10 10 10 10 20 20 20 20 10 10 10 0 10\n"
              "polygon flat 0 0 5 5 9 9\n");
    WriteFile("b.lay", "polygon slant 0 0 1000 500 0 1000\npolygon knot 0 0 300 300 300 0 0 300");
    // Shapes: all, axis-parallel, diagonal, slanted. Points, pieces, area, perimeter, time; shapes
    // whose pieces cover another area than their outline: 0.045 of the knot.
    EXPECT_EQ(TableOf("1/0    2 2 0 0  11  2 0.02   0.8    0 0\n"
                      "diag   1 0 1 0   3  1 0.5    3.414  0 0\n"
                      "slit   1 1 0 0  11  4 0.0008 0.18   0 0\n"
                      "wire   1 1 0 0   2  1 0.0024 0.28   0 0\n"
                      "dot    1 1 0 0   4  1 0.0001 0.04   0 0\n"
                      "flat   1 1 0 0   3  0 0      0      0 0\n"
                      "slant  1 0 0 1   3  2 0.5    3.236  0 0\n"
                      "knot   1 0 1 0   4  2 0      1.449  0 1\n"
                      "total  9 6 2 1  41 13 1.0233 9.399  0 1\n"),
              Good("a.lay b.lay"));
    for (char const* note :
         {"box (-0.010, -0.010) to (1.000, 1.000) um", "labels: 1\n", "first at b.lay:2\n"})
        EXPECT_NE(std::string::npos, out.find(note)) << note << " in\n" << out;
}

TEST_F(Fracture, TakesNumbersInUnitsAndInMetres) {
    Rows<char const*, std::string, double> const rows = {
        {"", "460", 0.2116},   {"", "0.46u", 0.2116},   {"", "+4.6e2", 0.2116},
        {"", "1000m", 1e12},   {"-u 5n", "92", 0.2116}, {"-u5n", "460n", 0.2116},
        {"-u 1u", "1600n", 4}, {"-u 1u", ".4u", 0}};
    for (auto const& [options, side, area] : rows) {
        WriteFile("a.lay", "path m " + side + " 0 0 0");  // the square at a point
        EXPECT_EQ(area, Good(options + " a.lay"s)["m"].at(kArea)) << side;
    }
}

TEST_F(Fracture, NamesBadLinesAndReadsTheOthers) {
    std::string const good = "polygon m 0 0 10 0 10 10";
    std::string many = "polygon m", crossed = "polygon m";  // half of the edges cross a slab
    for (int i = 0; i < 2 * 65536; ++i) many += " 1";
    for (int i = 0; i < 10000; ++i)
        crossed += ' ' + std::to_string(i) + ' ' + std::to_string(i % 2 * 20000 + i * 7 % 10000);
    Rows<std::string, std::string> rows = {
        {"label m 5 0 0 ", "no text, 'label'"},
        {"path m 5 0 0 0 10 10", "slanted path"},
        {"path m 5 0 0 0 10 0 10 0 5 0", "path turns back on itself"},
        {"path m 10 0 0 1073741823 9 1073741823", "shape out of range"},
        {"polygon m 0 0 10 0", "fewer than 3 points, '0'"},
        {good + " 7", "x without y, '7'"},
        {"polygon m\0 0"s, "zero byte in the line, 'polygon m'"},
        {"\x1b[31m" + std::string(60, 'x'),
         "unknown record, '?[31m" + std::string(35, 'x') + "...'"},
        {many, "too many points, '1'"},
        {crossed, "too many pieces"},
        {"circle m 2 0 0 5", "segments are not a number from 3 to 32767, '2'"}};
    for (std::string const word : {"1O", "10n5", "inf", "1E", "-"})
        rows.emplace_back(good + ' ' + word + " 0 # cut", "not a number, '" + word + "'");
    for (std::string const word : {"1073741824", "-2M", "0e999"})
        rows.emplace_back(good + ' ' + word, "number out of range, '" + word + "'");
    std::string text = good + '\n', want;
    int line = 1;
    for (auto const& [record, problem] : rows) {
        text += record + '\n';
        want += "a.lay:" + std::to_string(++line) + ": " + problem + '\n';
    }
    WriteFile("a.lay", text + good);
    EXPECT_EQ(1, Run("a.lay"));
    EXPECT_EQ(want, err);
    EXPECT_EQ(2, TableOf(out)["total"].at(kShapes));
}

TEST_F(Fracture, FailsWithoutTouchingThePicture) {
    WriteFile("good.lay", "polygon m 0 0 10 0 10 10\n");
    WriteFile("bad.lay", "polygon m 0 0 10 0 10\n");
    WriteFile("p.svg", "old");
    char const* const rows[][2] = {
        {"-o p.svg good.lay bad.lay",
         "bad.lay:1: x without y, '10'\nfracture: p.svg not written\n"},
        {"none good.lay", "fracture: cannot read none: No such file or directory\n"},
        {"-o p.svg", "fracture: no file given\n"},
        {"-u 0 -o p.svg good.lay", "fracture: not a unit: 0\n"},
        {"-s 1e9 good.lay", "fracture: not a distance: 1e9\n"},
        {"good.lay > /dev/full", "fracture: cannot write the table\n"}};
    for (auto const& [arguments, want] : rows) {
        EXPECT_EQ(1, Run(arguments)) << arguments;
        EXPECT_EQ(want, err.substr(0, err.find("usage: fracture [-u UNIT]")));
        EXPECT_EQ("old", ReadFile("p.svg"));
        EXPECT_EQ(3, std::distance(fs::directory_iterator("."), {}));
    }
}

TEST_F(Fracture, DrawsAPanelForEachFile) {
    WriteFile("a&b.lay", "polygon <1> -100 50 -90 50 -90 60 -100 60\npolygon 2 0 0 10 0 10 5\n");
    WriteFile("-c.lay", "polygon 2 0 0 10 5 0 10\nlabel 2 14 -100 200  <T  L>\n");
    Good("-o p.svg -- 'a&b.lay' -c.lay");
    EXPECT_EQ(3, std::distance(fs::directory_iterator("."), {}));
    std::string const svg = ReadFile("p.svg");
    Rows<std::string, int> const rows = {
        {">a&amp;b.lay: 0.11 x 0.06 um<", 1},
        {"<title>&lt;1&gt;</title>", 1},
        {"d=\"M0 50L0 60H10L10 50Z\"", 1},
        {"<title>&lt;T  L&gt;</title>", 1},
        {"d=\"M100 0L100 5H110L100 0ZM100 5L100 10H100L110 5Z\"", 1},
        {"M56 214L56 200L65.996 200M", 2},
        {"class=\"label c1\"", 1},
        {"class=\"c1\"", 3}};  // layer 2: both panels and the legend
    for (auto const& [part, count] : rows) {
        int found = 0;
        for (auto at = svg.find(part); at != std::string::npos; at = svg.find(part, at + 1))
            ++found;
        EXPECT_EQ(count, found) << part << " in\n" << svg;
    }
}

TEST_F(Fracture, FindsNothingWrongWithTheSamples) {
    EXPECT_EQ(0, Good("-o p.svg '" EXAMPLE_DATA "'/*.lay")["total"].at(kDiffer));
}

TEST_F(Fracture, SizesShapesAndCountsWhatVanishes) {
    std::string const rect = "polygon m 0 0 100 0 100 50 0 50";
    // Distance, record: area, 0 if it vanishes, pieces, differing shapes.
    Rows<int, std::string, double, int, int> const rows = {
        {10, rect, 120 * 70, 1, 0},
        {-20, "polygon m 0 50 100 50 100 0 0 0", 60 * 10, 1, 0},              // clockwise
        {-30, rect, 0, 0, 0},                                                 // winds the other way
        {-20, "polygon m 0 0 200 0 200 10 100 10 100 100 0 100", 600, 2, 1},  // only its arm is
        {20, "polygon m 0 0 90 0 90 90 60 90 60 30 30 30 30 90 0 90", 17500, 3, 1},  // the notch
        {5, "path m 20 1 0 0 100 0 100 50", 150 * 30 + 30 * 30, 2, 0},
        {0, "path m 21 0 0 0 0 0 50 0 90 0 90 90", 180 * 20, 2, 0},  // half a width is 10
        {0, "path m 20 0 0 0 100 0 100 5", 2100, 2, 1},              // shorter than half its width
        {-5, "circle m 4 0 0 20", 10 * 10, 1, 0},
        {9, "circle m 4 0 0 20\npolygon m 0 0 5 5 9 9", 38 * 38, 1, 0}};  // flat is not vanished
    for (auto const& [distance, record, area, pieces, differ] : rows) {
        WriteFile("a.lay", record);
        auto const got = Good("-u 1u -s " + std::to_string(distance) + " -o p.svg a.lay")["m"];
        EXPECT_TRUE(area == got.at(kArea) && pieces == got.at(kPieces) && differ == got.at(kDiffer))
            << record << " by " << distance << out;
        EXPECT_EQ(area == 0, out.find("leaves nothing of: 1\n") != std::string::npos);
    }
    WriteFile("a.lay", "polygon m 0 0 1000000000 0 0 10");  // its sharp corner moves too far
    EXPECT_EQ(1, Run("-s 100 a.lay"));
    EXPECT_EQ("a.lay:1: sized shape out of range\n", err);
}

}  // namespace
