#include "layout/output_file.h"

#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <string>

namespace layout {

OutputFile::OutputFile(String_t const& name) : name(name), part_name(name) {
    part_name += ("." + std::to_string(getpid()) + ".part").c_str();
    out.open(part_name.Get());
    if (!out.is_open()) open_error = errno;
}

OutputFile::~OutputFile() {
    if (!committed && out.is_open()) std::remove(part_name.Get());
}

bool OutputFile::Commit() {
    if (!out.is_open()) {
        errno = open_error;
        return false;
    }
    out.close();
    committed = out.good() && std::rename(part_name.Get(), name.Get()) == 0;
    if (committed) return true;
    int const reason = errno;
    std::remove(part_name.Get());
    errno = reason;
    return false;
}

}  // namespace layout
