// Runs the program on small layouts and looks at the table and the picture that it makes of them.
#include "program.h"

using namespace std::string_literals;

struct Fracture : Program {
    // The row of a layer, without the time.
    std::string Row(std::string const& layer) const {
        std::istringstream words(out.substr(out.find('\n' + layer + ' ')));
        std::vector<std::string> row(11);
        for (std::string& word : row) words >> word;
        row.erase(row.begin() + 9);
        return Joined(row);
    }
};

TEST_F(Fracture, CountsAndSizesShapes) {
    std::string const rect = "polygon m 0 0 100 0 100 50 0 50", size = "-u 1u -s ";
    // Shapes: all, axis-parallel, diagonal, slanted. Points, pieces, area, perimeter; shapes whose
    // pieces cover another area than their outline.
    Rows<std::string, std::string, std::string> const rows = {
        {"",
         "# squares, one with points that say nothing\npolygon m 0 0 100 0 100 100 0 100\n"
         "polygon m 0 0 0 0 50 0 100 0 100 100 0 100 0 0\r\n\n",
         "2 2 0 0 11 2 0.0200 0.800 0"},
        {"", "\tpolygon  m 0 0 1u 0 1u 1u \n", "1 0 1 0 3 1 0.5000 3.414 0"},
        {"", "polygon m 0 0 30 0 30 30 0 30 0 10 10 10 10 20 20 20 20 10 10 10 0 10",
         "1 1 0 0 11 4 0.0008 0.180 0"},
        {size + "-20", "polygon m 0 50 100 50 100 0 0 0", "1 1 0 0 4 1 600.0000 140.000 0"},
        {size + "-30", rect, "1 1 0 0 4 0 0.0000 0.000 0"},  // winds the other way
        {size + "9", "circle m 4 0 0 20\npolygon m 0 0 5 5 9 9",
         "2 2 0 0 7 1 1444.0000 152.000 0"}};
    for (auto const& [options, record, want] : rows) {
        WriteFile("a.lay", record);
        EXPECT_EQ(0, Run(FRACTURE_COMMAND " " + options + " -o p.svg a.lay")) << err;
        EXPECT_EQ("m " + want, Row("m")) << options << record;
        bool const vanished = out.find("leaves nothing of: 1\n") != std::string::npos;
        EXPECT_EQ(options == size + "-30", vanished) << record;
    }
    WriteFile("b.lay",
              "polygon m 0 0 1000 500 0 1000\nlabel m 9 0 0 a\npolygon n 0 0 300 300 300 0 0 300");
    EXPECT_EQ(0, Run(FRACTURE_COMMAND " a.lay b.lay"));
    EXPECT_EQ("total 4 2 1 1 14 5 0.5004 4.765 1", Row("total"));
    EXPECT_NE(std::string::npos, out.find("first at b.lay:3\n")) << out;
    EXPECT_EQ(0, Run(FRACTURE_COMMAND " '" EXAMPLE_DATA "'/*.lay"));
    EXPECT_EQ('0', Row("total").back());
}

TEST_F(Fracture, NamesBadLinesAndReadsTheOthers) {
    std::string const good = "polygon m 0 0 10 0 10 10";
    Rows<std::string, std::string> const rows = {
        {"path m 10 0 0 1073741823 9 1073741823", "shape out of range"},
        {"polygon m 0 0 10 0", "fewer than 3 points, '0'"},
        {good + " 1073741824 0", "number out of range, '1073741824'"},
        {"polygon m\0 0"s, "zero byte in the line, 'polygon m'"},
        {"\x1b[31m" + std::string(60, 'x'),
         "unknown record, '?[31m" + std::string(35, 'x') + "...'"},
        {good + " 10n5 0 # cut", "not a number, '10n5'"},
        {"circle m 2 0 0 5", "segments are not a number from 3 to 32767, '2'"}};
    std::string text = good + '\n', want;
    int line = 1;
    for (auto const& [record, problem] : rows) {
        text += record + '\n';
        want += "a.lay:" + std::to_string(++line) + ": " + problem + '\n';
    }
    WriteFile("a.lay", text + good);
    EXPECT_EQ(1, Run(FRACTURE_COMMAND " a.lay"));
    EXPECT_EQ(want, err);
    EXPECT_EQ("total 2 ", Row("total").substr(0, 8));
}

TEST_F(Fracture, FailsWithoutTouchingThePicture) {
    WriteFile("good.lay", "polygon m 0 0 10 0 10 10\n");
    WriteFile("bad.lay", "polygon m 0 0 10 0 10\n");
    WriteFile("p.svg", "old");
    Answers(FRACTURE_COMMAND " -o p.svg",
            {{"good.lay bad.lay >/dev/null",
              "bad.lay:1: x without y, '10'\nfracture: p.svg not written\n1"},
             {"", "fracture: no file given\n1"},
             {"-s 1e9 good.lay", "fracture: not a distance: 1e9\n1"}});
    EXPECT_EQ("old", ReadFile("p.svg"));
    Answers(FRACTURE_COMMAND, {{"good.lay >/dev/full", "fracture: cannot write the table\n1"}});
    EXPECT_EQ(3, std::distance(fs::directory_iterator("."), {}));
}

TEST_F(Fracture, DrawsAPanelForEachFile) {
    WriteFile("a&b.lay", "polygon <1> -100 50 -90 50 -90 60 -100 60\npolygon 2 0 0 10 0 10 5\n");
    WriteFile("-c.lay", "polygon 2 0 0 10 5 0 10\nlabel 2 14 -100 200  <T  L>\n");
    EXPECT_EQ(0, Run(FRACTURE_COMMAND " -o p.svg -- 'a&b.lay' -c.lay"));
    std::string const svg = ReadFile("p.svg");
    for (std::string const part :
         {">a&amp;b.lay: 0.11 x 0.06 um<", "<title>&lt;1&gt;</title>", "d=\"M0 50L0 60H10L10 50Z\"",
          "<title>&lt;T  L&gt;</title>", "d=\"M100 0L100 5H110L100 0ZM100 5L100 10H100L110 5Z\"",
          "M56 214L56 200L65.996 200M"})
        EXPECT_NE(std::string::npos, svg.find(part)) << part << " in\n" << svg;
}
