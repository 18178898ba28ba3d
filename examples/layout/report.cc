#include "layout/report.h"

#include <text/str.h>
#include <text/strfmt.h>
#include <unistd.h>

#include <cerrno>
#include <cmath>
#include <cstring>
#include <iostream>
#include <string>

#include "layout/output_file.h"

namespace layout {
namespace {

// The part of a path behind its last slash.
char const* Leaf(char const* path) {
    char const* const slash = std::strrchr(path, '/');
    return slash != nullptr ? slash + 1 : path;
}

}  // namespace

Progress::Progress() : on_terminal(isatty(STDERR_FILENO) != 0) {}

void Progress::Show(char const* file, unsigned line, unsigned shapes) {
    if (!on_terminal) return;
    double const now = SecondsSince(start);
    if (now < next_seconds) return;
    StrFmt(std::cerr, "\r\033[K%s: line %u, %u shapes", file, line, shapes);
    std::cerr.flush();
    shown = true;
    next_seconds = now + 0.2;
}

void Progress::Clear() {
    if (shown) std::cerr << "\r\033[K" << std::flush;
    shown = false;
}

Report::Report(char const* program, CutOptions const& options)
    : program(program), options(options), picture(options.unit) {}

void Report::StartFile(char const* name) {
    file = name;
    if (HasPicture()) picture.StartPanel(Leaf(name));
}

void Report::Add(Item const& item, Shape const& shape, double seconds) {
    Record const& record = item.record;
    progress.Show(file, item.line, shapes);
    if (!item.problem.IsNull()) {
        progress.Clear();
        StrFmt(std::cerr, "%s:%u: %s\n", file, item.line, item.problem.Get());
        good = false;
    } else if (record.kind == Record::kLabel) {
        ++TotalsOf(record.layer).labels;
        if (HasPicture())
            picture.AddLabel(record.layer, record.text, record.points[0], record.size);
    } else {
        AddShape(item, shape, seconds);
    }
}

void Report::AddShape(Item const& item, Shape const& shape, double seconds) {
    Totals& totals = TotalsOf(item.record.layer);
    totals.Add(shape, seconds);
    double const covered = PiecesArea(shape.pieces);
    if (std::fabs(covered - shape.measures.area) > CutTolerance(shape.outline)) {
        ++totals.differ;
        if (totals.first_differ.IsNull())
            totals.first_differ = String_t(file) + (":" + std::to_string(item.line)).c_str();
    }
    ++shapes;
    if (HasPicture()) picture.Add(item.record.layer, shape.outline, shape.pieces);
}

Totals& Report::TotalsOf(String_t const& layer) {
    LayerTotals* const known = layers.Find(layer);
    return (known != nullptr ? known : layers.Add({layer, {}}))->totals;
}

void Report::EndFile(int error) {
    progress.Clear();
    if (error == 0) return;
    StrFmt(std::cerr, "%s: cannot read %s: %s\n", program, file, str_error(error));
    good = false;
}

int Report::Finish() {
    if (options.table) PrintTotals(std::cout, layers, options.unit);
    if (!std::cout.flush()) {
        StrFmt(std::cerr, "%s: cannot write the table\n", program);
        good = false;
    }
    if (!HasPicture()) return good ? 0 : 1;
    if (!good) StrFmt(std::cerr, "%s: %s not written\n", program, options.picture.Get());
    return good && WritePicture() ? 0 : 1;
}

bool Report::WritePicture() const {
    OutputFile output(options.picture);
    picture.Write(output.Stream());
    if (output.Commit()) return true;
    StrFmt(std::cerr, "%s: cannot write %s: %s\n", program, options.picture.Get(),
           str_error(errno));
    return false;
}

}  // namespace layout
