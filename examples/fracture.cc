// Cuts the polygons of layouts into trapezoids and tells what there is on each layer:
//
//   fracture [-u UNIT] [-o OUT.svg] FILE...
//
// UNIT is the database unit in metres (5n; 1n when not given). OUT.svg gets a picture with a panel
// for each file, unless a file had a bad line or could not be read: then the table counts what was
// good, the exit status is 1 and OUT.svg stays as it was. The format of the files is told in
// layout/reader.h.
#include <text/str.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iostream>
#include <new>
#include <string>

#include "layout/outline.h"
#include "layout/output_file.h"
#include "layout/reader.h"
#include "layout/svg.h"
#include "layout/totals.h"

using Clock = std::chrono::steady_clock;

namespace {

double SecondsSince(Clock::time_point start) {
    return std::chrono::duration<double>(Clock::now() - start).count();
}

struct Options {
    double unit = 1e-9;
    char const* picture = nullptr;
    char** files = nullptr;  // up to a null pointer, at least one
};

int Complain(char const* what, char const* text) {
    std::cerr << "fracture: " << what << (text != nullptr ? text : "") << '\n'
              << "usage: fracture [-u UNIT] [-o OUT.svg] FILE...\n"
              << "       UNIT in metres, such as 5n; 1n if not given\n";
    return 1;
}

// A length of at most a millimetre, so that a forgotten scale letter does not pass.
bool ParseUnit(char const* text, double& unit) {
    int const used = str_ctodouble(text, &unit);
    return used > 0 && text[used] == '\0' && unit >= 1e-15 && unit <= 1e-3;
}

// 0, or 1 after a complaint.
int ParseOptions(char** argv, Options& options) {
    char** arg = argv + 1;
    for (; *arg != nullptr && (*arg)[0] == '-' && (*arg)[1] != '\0'; ++arg) {
        char const* const option = *arg;
        if (str_cmp(option, "--") == 0) {
            ++arg;
            break;
        }
        bool const known = str_cmp(option, "-u") == 0 || str_cmp(option, "-o") == 0;
        if (!known) return Complain("unknown option ", option);
        char const* const value = *++arg;
        if (value == nullptr) return Complain("a value is missing after ", option);
        if (option[1] == 'o')
            options.picture = value;
        else if (!ParseUnit(value, options.unit))
            return Complain("not a unit: ", value);
    }
    options.files = arg;
    return *arg != nullptr ? 0 : Complain("no file given", nullptr);
}

// The part of a path behind its last slash.
char const* Leaf(char const* path) {
    char const* const slash = std::strrchr(path, '/');
    return slash != nullptr ? slash + 1 : path;
}

// What the run is at, on a terminal only: from the second second on, five times a second.
class Progress {
public:
    void Show(char const* file, unsigned line, unsigned shapes) {
        double const now = SecondsSince(start);
        if (!on_terminal || now < next_seconds) return;
        std::cerr << "\r\033[K" << file << ": line " << line << ", " << shapes << " shapes"
                  << std::flush;
        shown = true;
        next_seconds = now + 0.2;
    }
    // Leaves an empty line for other output.
    void Clear() {
        if (shown) std::cerr << "\r\033[K" << std::flush;
        shown = false;
    }

private:
    Clock::time_point const start = Clock::now();
    bool const on_terminal = isatty(STDERR_FILENO) != 0;
    double next_seconds = 1;
    bool shown = false;
};

class Fracture {
public:
    explicit Fracture(Options const& options) : options(options), picture(options.unit) {}

    // Takes the shapes of one file; false after complaints on standard error.
    bool TakeFile(char const* name);
    void PrintTable(std::ostream& out) const { layout::PrintTotals(out, layers, options.unit); }
    bool WritePicture() const;

private:
    void TakePolygon(layout::Record& record, char const* file, unsigned line);

    Options const& options;
    layout::LayerTotals layers;
    layout::Trapezoids trapezoids{256, VARR_DOUBLE};
    layout::SvgPicture picture;
    Progress progress;
    unsigned shapes = 0;
};

bool Fracture::TakeFile(char const* name) {
    if (options.picture != nullptr) picture.StartPanel(Leaf(name));
    std::ifstream in(name);
    bool good = true;
    layout::Reader reader(in, options.unit);
    layout::Record record;
    for (auto status = reader.Next(record); status != layout::Reader::kEnd;
         status = reader.Next(record)) {
        progress.Show(name, reader.Line(), shapes);
        if (status == layout::Reader::kBadLine) {
            progress.Clear();
            std::cerr << name << ':' << reader.Line() << ": " << reader.Problem() << '\n';
            good = false;
        } else if (record.kind == layout::Record::kPath) {
            ++layers[record.layer].paths;
        } else {
            TakePolygon(record, name, reader.Line());
        }
    }
    int const reason = errno;
    progress.Clear();
    if (!in.is_open() || in.bad()) {
        std::cerr << "fracture: cannot read " << name << ": " << str_error(reason) << '\n';
        good = false;
    }
    return good;
}

void Fracture::TakePolygon(layout::Record& record, char const* file, unsigned line) {
    layout::Totals shape;
    shape.shapes = 1;
    shape.points = record.points.Len();

    auto const start = Clock::now();
    layout::CleanOutline(record.points);
    layout::Measures const measures = layout::MeasureOutline(record.points);
    double const covered = layout::CutOutline(record.points, trapezoids);
    shape.seconds = SecondsSince(start);

    shape.removed = shape.points - record.points.Len();
    shape.flat = record.points.Len() < 3;
    shape.angles[measures.angles] = 1;
    shape.trapezoids = trapezoids.Len();
    shape.area = measures.area;
    shape.perimeter = measures.perimeter;
    shape.box = measures.box;
    if (std::fabs(covered - measures.area) > layout::CutTolerance(record.points)) {
        shape.differ = 1;
        shape.first_differ = file;
        shape.first_differ += (":" + std::to_string(line)).c_str();
    }
    layers[record.layer].Add(shape);
    ++shapes;
    if (options.picture != nullptr) picture.Add(record.layer, record.points, trapezoids);
}

bool Fracture::WritePicture() const {
    layout::OutputFile file(options.picture);
    picture.Write(file.Stream());
    if (file.Commit()) return true;
    std::cerr << "fracture: cannot write " << options.picture << ": " << str_error(errno) << '\n';
    return false;
}

int Run(char** argv) {
    Options options;
    if (ParseOptions(argv, options) != 0) return 1;
    Fracture fracture(options);
    bool good = true;
    for (char** file = options.files; *file != nullptr; ++file)
        good = fracture.TakeFile(*file) && good;
    fracture.PrintTable(std::cout);
    if (!std::cout.flush()) {
        std::cerr << "fracture: cannot write the table\n";
        good = false;
    }
    if (options.picture == nullptr) return good ? 0 : 1;
    if (!good) std::cerr << "fracture: " << options.picture << " not written\n";
    return good && fracture.WritePicture() ? 0 : 1;
}

}  // namespace

int main(int, char* argv[]) {
    try {
        return Run(argv);
    } catch (std::bad_alloc const&) {
        std::fputs("fracture: out of memory\n", stderr);
        return 1;
    }
}
