// Cuts the shapes of layouts into rectangles and trapezoids and tells what there is on each layer:
//
//   fracture [-u UNIT] [-s DISTANCE] [-o OUT.svg] FILE...
//
// UNIT is the database unit in metres (5n; 1n when not given). DISTANCE, a length as in the files,
// is what all shapes grow by at every edge, or shrink by when it is negative. Shapes that it leaves
// nothing of are counted apart. OUT.svg gets a picture with a panel for each file, unless a file
// had a bad line or could not be read: then the table counts what was good, the exit status is 1
// and OUT.svg stays as it was. The format of the files is told in layout/reader.h; paths must be
// axis-parallel and not turn back on themselves.
#include <cstdio>
#include <new>

#include "layout/command_line.h"
#include "layout/cutter.h"
#include "layout/report.h"
#include "layout/shape.h"

namespace {

char const kUsage[] =
    "usage: fracture [-u UNIT] [-s DISTANCE] [-o OUT.svg] FILE...\n"
    "       UNIT in metres, such as 5n; 1n if not given\n"
    "       DISTANCE in units or in metres, below 0 to shrink\n";

// Cuts here and now.
class OwnCutter : public layout::Cutter {
public:
    OwnCutter(gu_coord_t distance, layout::Report& report) : distance(distance), report(report) {}

    void Take(layout::Item&& item) override {
        auto const start = layout::Clock::now();
        if (item.IsShape()) item.problem = shape.Make(item.record, distance);
        report.Add(item, shape, layout::SecondsSince(start));
    }
    void Finish() override {}

private:
    gu_coord_t distance;
    layout::Report& report;
    layout::Shape shape;
};

int Run(char** argv) {
    layout::CommandLine const line("fracture", kUsage);
    layout::CutOptions options;
    char** const files = line.Take(
        argv, {{'u', &options.unit_text}, {'s', &options.distance_text}, {'o', &options.picture}});
    if (files == nullptr || !options.Parse(line)) return 1;
    if (*files == nullptr) return line.Complain("no file given", "");
    layout::Report report(line.Program(), options);
    OwnCutter cutter(options.distance, report);
    return layout::CutFiles(files, options, cutter, report);
}

}  // namespace

int main(int argc, char* argv[]) {
    try {
        return argc > 0 ? Run(argv) : 1;
    } catch (std::bad_alloc const&) {
        std::fputs("fracture: out of memory\n", stderr);
        return 1;
    }
}
