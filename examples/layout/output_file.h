// A file that appears under its name only when all of it has been written.
#ifndef KORBASE_EXAMPLES_LAYOUT_OUTPUT_FILE_H
#define KORBASE_EXAMPLES_LAYOUT_OUTPUT_FILE_H

#include <text/string.h>

#include <fstream>

namespace layout {

class OutputFile {
public:
    // Opens a new file beside `name`: its name, the process id and ".part".
    explicit OutputFile(String_t const& name);
    OutputFile(OutputFile const&) = delete;
    OutputFile& operator=(OutputFile const&) = delete;
    // Removes what was not committed.
    ~OutputFile();

    std::ostream& Stream() { return out; }

    // Gives the file its name, in place of one that has it. False, with errno, when anything up to
    // here has failed: then whatever had the name is as it was.
    bool Commit();

private:
    String_t name, part_name;
    std::ofstream out;
    int open_error = 0;
    bool committed = false;
};

}  // namespace layout

#endif
