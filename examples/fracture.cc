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
#include <text/options.h>
#include <text/str.h>
#include <text/strfmt.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iostream>
#include <new>
#include <string>

#include "layout/output_file.h"
#include "layout/reader.h"
#include "layout/shape.h"
#include "layout/svg.h"
#include "layout/totals.h"

using Clock = std::chrono::steady_clock;

namespace {

double SecondsSince(Clock::time_point start) {
    return std::chrono::duration<double>(Clock::now() - start).count();
}

struct Options {
    double unit = 1e-9;
    gu_coord_t distance = 0;  // database units
    String_t picture;         // null for none
    char** files = nullptr;   // up to a null pointer, at least one
};

char const kUsage[] =
    "usage: fracture [-u UNIT] [-s DISTANCE] [-o OUT.svg] FILE...\n"
    "       UNIT in metres, such as 5n; 1n if not given\n"
    "       DISTANCE in units or in metres, below 0 to shrink\n";

int Complain(char const* what, char const* text) {
    StrFmt(std::cerr, "fracture: %s%s\n%s", what, text, kUsage);
    return 1;
}

// A length of at most a millimetre, so that a forgotten scale letter does not pass.
bool ParseUnit(char const* text, double& unit) {
    int const used = str_ctodouble(text, &unit);
    return used > 0 && text[used] == '\0' && unit >= 1e-15 && unit <= 1e-3;
}

bool ParseDistance(char const* text, double unit, gu_coord_t& distance) {
    return layout::ReadLength(text, unit, distance) == nullptr &&
           std::abs(distance) <= layout::kMaxDistance;
}

// 0, or 1 after a complaint.
int ParseOptions(int argc, char** argv, Options& options) {
    String_t unit("1n"), distance("0");
    for (; argc > 1 && argv[1][0] == '-' && argv[1][1] != '\0'; --argc, ++argv) {
        char* const option = argv[1];
        if (str_cmp(option, "--") == 0) {
            ++argv;
            break;
        }
        String_t value;
        String_t* const target = CheckOpt(argc, &argv, 'u', value)   ? &unit
                                 : CheckOpt(argc, &argv, 's', value) ? &distance
                                 : CheckOpt(argc, &argv, 'o', value) ? &options.picture
                                                                     : nullptr;
        if (target == nullptr) return Complain("unknown option ", option);
        if (value.IsNull()) return Complain("a value is missing after ", option);
        *target = value;
    }
    if (!ParseUnit(unit, options.unit)) return Complain("not a unit: ", unit);
    if (!ParseDistance(distance, options.unit, options.distance))
        return Complain("not a distance: ", distance);
    options.files = argv + 1;
    return *options.files != nullptr ? 0 : Complain("no file given", "");
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
        StrFmt(std::cerr, "\r\033[K%s: line %u, %u shapes", file, line, shapes);
        std::cerr.flush();
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

    // Takes the records of one file; false after complaints on standard error.
    bool TakeFile(char const* name);
    void PrintTable(std::ostream& out) const { layout::PrintTotals(out, layers, options.unit); }
    bool WritePicture() const;

private:
    void TakeLabel(layout::Record const& record);
    char const* TakeShape(layout::Record& record, char const* file, unsigned line);
    bool HasPicture() const { return !options.picture.IsNull(); }
    layout::Totals& TotalsOf(String_t const& layer);

    Options const& options;
    layout::LayerTable layers;
    layout::Shape shape;
    layout::SvgPicture picture;
    Progress progress;
    unsigned shapes = 0;
};

bool Fracture::TakeFile(char const* name) {
    if (HasPicture()) picture.StartPanel(Leaf(name));
    std::ifstream in(name);
    bool good = true;
    layout::Reader reader(in, options.unit);
    layout::Record record;
    for (auto status = reader.Next(record); status != layout::Reader::kEnd;
         status = reader.Next(record)) {
        progress.Show(name, reader.Line(), shapes);
        char const* problem = nullptr;
        if (status == layout::Reader::kBadLine)
            problem = reader.Problem();
        else if (record.kind == layout::Record::kLabel)
            TakeLabel(record);
        else
            problem = TakeShape(record, name, reader.Line());
        if (problem == nullptr) continue;
        progress.Clear();
        StrFmt(std::cerr, "%s:%u: %s\n", name, reader.Line(), problem);
        good = false;
    }
    int const reason = errno;
    progress.Clear();
    if (!in.is_open() || in.bad()) {
        StrFmt(std::cerr, "fracture: cannot read %s: %s\n", name, str_error(reason));
        good = false;
    }
    return good;
}

layout::Totals& Fracture::TotalsOf(String_t const& layer) {
    layout::LayerTotals* const known = layers.Find(layer);
    return (known != nullptr ? known : layers.Add({layer, {}}))->totals;
}

void Fracture::TakeLabel(layout::Record const& record) {
    ++TotalsOf(record.layer).labels;
    if (HasPicture()) picture.AddLabel(record.layer, record.text, record.points[0], record.size);
}

// Null, or what is wrong with the record.
char const* Fracture::TakeShape(layout::Record& record, char const* file, unsigned line) {
    auto const start = Clock::now();
    char const* const problem = shape.Make(record, options.distance);
    if (problem != nullptr) return problem;
    double const covered = layout::PiecesArea(shape.pieces);
    double const seconds = SecondsSince(start);

    layout::Totals& totals = TotalsOf(record.layer);
    totals.Add(shape, seconds);
    if (std::fabs(covered - shape.measures.area) > layout::CutTolerance(shape.outline)) {
        ++totals.differ;
        if (totals.first_differ.IsNull())
            totals.first_differ = String_t(file) + (":" + std::to_string(line)).c_str();
    }
    ++shapes;
    if (HasPicture()) picture.Add(record.layer, shape.outline, shape.pieces);
    return nullptr;
}

bool Fracture::WritePicture() const {
    layout::OutputFile file(options.picture);
    picture.Write(file.Stream());
    if (file.Commit()) return true;
    StrFmt(std::cerr, "fracture: cannot write %s: %s\n", options.picture.Get(), str_error(errno));
    return false;
}

int Run(int argc, char** argv) {
    Options options;
    if (ParseOptions(argc, argv, options) != 0) return 1;
    Fracture fracture(options);
    bool good = true;
    for (char** file = options.files; *file != nullptr; ++file)
        good = fracture.TakeFile(*file) && good;
    fracture.PrintTable(std::cout);
    if (!std::cout.flush()) {
        StrFmt(std::cerr, "fracture: cannot write the table\n");
        good = false;
    }
    if (options.picture.IsNull()) return good ? 0 : 1;
    if (!good) StrFmt(std::cerr, "fracture: %s not written\n", options.picture.Get());
    return good && fracture.WritePicture() ? 0 : 1;
}

}  // namespace

int main(int argc, char* argv[]) {
    try {
        return Run(argc, argv);
    } catch (std::bad_alloc const&) {
        std::fputs("fracture: out of memory\n", stderr);
        return 1;
    }
}
