#include "system/process_arg.h"

#include <sstream>

ProcessArg::ProcessArg() : text("") {}

ProcessArg::ProcessArg(char c) : text(&c, 1) {}

ProcessArg::ProcessArg(int value, int base) {
    std::ostringstream out;
    switch (base) {
        case 0: out << std::oct; break;
        case 2: out << std::hex; break;
        default: out << std::dec;
    }
    out << value;
    text = out.str().c_str();
}

ProcessArg::ProcessArg(double value, int format, int precision) {
    std::ostringstream out;
    switch (format) {
        case 3: out << std::fixed; break;
        case 4: out << std::scientific; break;
        default: break;
    }
    out.precision(precision);
    out << value;
    text = out.str().c_str();
}

ProcessArg::ProcessArg(TOList<String_t> const& list) {
    std::ostringstream out;
    char const* separator = "";
    for (String_t const& item : list) {
        out << separator << item;
        separator = ", ";
    }
    text = out.str().c_str();
}
