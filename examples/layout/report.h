// What a program tells of the layouts that it has had cut: complaints, a table, a picture.
#ifndef KORBASE_EXAMPLES_LAYOUT_REPORT_H
#define KORBASE_EXAMPLES_LAYOUT_REPORT_H

#include <text/string.h>

#include <chrono>

#include "layout/command_line.h"
#include "layout/reader.h"
#include "layout/shape.h"
#include "layout/svg.h"
#include "layout/totals.h"

namespace layout {

using Clock = std::chrono::steady_clock;

inline double SecondsSince(Clock::time_point start) {
    return std::chrono::duration<double>(Clock::now() - start).count();
}

// A line of a layout: the record in it, or what is wrong with it.
struct Item {
    Record record;
    unsigned line = 0;
    String_t problem;  // null for none

    bool IsShape() const { return problem.IsNull() && record.kind != Record::kLabel; }
};

// What the run is at, on a terminal only: from the second second on, five times a second.
class Progress {
public:
    Progress();
    ~Progress() { Clear(); }
    void Show(char const* file, unsigned line, unsigned shapes);
    // Leaves an empty line for other output.
    void Clear();

private:
    Clock::time_point start = Clock::now();
    bool on_terminal;
    double next_seconds = 1;
    bool shown = false;
};

class Report {
public:
    // `program` begins complaints. The options must outlive the report.
    Report(char const* program, CutOptions const& options);

    // What is added from here on belongs to this file; the name must outlive the report.
    void StartFile(char const* name);
    // Takes the next line of the file; `shape` is what a shape became, in `seconds`.
    void Add(Item const& item, Shape const& shape, double seconds);
    // Ends the file, which could not be read to its end if `error`, an errno value, is not 0.
    void EndFile(int error);

    // Prints the table and writes the picture, if they are wanted. The exit status: 1 if there was
    // any complaint; then the file of the picture stays as it was.
    int Finish();

private:
    void AddShape(Item const& item, Shape const& shape, double seconds);
    bool HasPicture() const { return !options.picture.IsNull(); }
    bool WritePicture() const;
    Totals& TotalsOf(String_t const& layer);

    char const* program;
    CutOptions const& options;
    char const* file = nullptr;
    LayerTable layers;
    SvgPicture picture;
    Progress progress;
    unsigned shapes = 0;
    bool good = true;
};

}  // namespace layout

#endif
