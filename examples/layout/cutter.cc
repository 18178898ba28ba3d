#include "layout/cutter.h"

#include <cerrno>
#include <fstream>

namespace layout {
namespace {

void CutFile(char const* name, CutOptions const& options, Cutter& cutter, Report& report) {
    report.StartFile(name);
    errno = 0;
    std::ifstream in(name);
    int error = in.is_open() ? 0 : errno;
    Reader reader(in, options.unit);
    while (error == 0) {
        Item item;
        errno = 0;
        auto const status = reader.Next(item.record);
        if (in.bad()) error = errno;
        if (status == Reader::kEnd) break;
        item.line = reader.Line();
        if (status == Reader::kBadLine) item.problem = reader.Problem();
        cutter.Take(std::move(item));
    }
    cutter.Finish();
    report.EndFile(error);
}

}  // namespace

int CutFiles(char** files, CutOptions const& options, Cutter& cutter, Report& report) {
    for (; *files != nullptr; ++files) CutFile(*files, options, cutter, report);
    return report.Finish();
}

}  // namespace layout
