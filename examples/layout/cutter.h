// Where the shapes of layouts are cut, and the way of the layouts there.
#ifndef KORBASE_EXAMPLES_LAYOUT_CUTTER_H
#define KORBASE_EXAMPLES_LAYOUT_CUTTER_H

#include "layout/command_line.h"
#include "layout/report.h"

namespace layout {

class Cutter {
public:
    virtual ~Cutter() = default;

    // Takes the next line of a file and adds it to the report, at once or later, but all lines in
    // the order in which they came.
    virtual void Take(Item&& item) = 0;
    // Adds what is still missing.
    virtual void Finish() = 0;
};

// Has all files, names up to a null pointer, cut and reported. Returns the exit status.
int CutFiles(char** files, CutOptions const& options, Cutter& cutter, Report& report);

}  // namespace layout

#endif
