// Substitutes variables in a text:  expand [-k] [-D NAME=VALUE]... [FILE]
//
// Reads FILE, or standard input without one, and writes standard output, line by line. $NAME and
// ${NAME} become VALUE, the last one given for the name; other references vanish, or stay with -k.
// A brace that is not closed takes the rest of its line with it. A line with a zero byte is left
// out; a complaint about it, or about a file that cannot be read, makes the exit status 1.
#include <text/options.h>
#include <text/str.h>
#include <text/strfmt.h>
#include <text/vars.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iostream>
#include <new>
#include <string>

namespace {

struct Options {
    Vars vars;
    int keep_unknown = 0;
    char const* file = nullptr;  // null: standard input
};

int Complain(char const* what, char const* text) {
    StrFmt(std::cerr, "expand: %s%s\nusage: expand [-k] [-D NAME=VALUE]... [FILE]\n", what, text);
    return 1;
}

// False unless `setting` is NAME=VALUE; only VALUE may be empty.
bool AddVariable(Vars& vars, char const* setting) {
    char const* const equals = std::strchr(setting, '=');
    if (equals == nullptr || equals == setting) return false;
    vars.Add(String_t(setting, static_cast<unsigned>(equals - setting)), equals + 1);
    return true;
}

// 0, or 1 after a complaint.
int ParseOptions(int argc, char** argv, Options& options) {
    for (; argc > 1 && argv[1][0] == '-' && argv[1][1] != '\0'; --argc, ++argv) {
        char const* const option = argv[1];
        String_t setting;
        if (str_cmp(option, "--") == 0) {
            --argc, ++argv;
            break;
        }
        if (CheckOpt(argc, &argv, "-k", options.keep_unknown, 0)) continue;
        if (!CheckOpt(argc, &argv, 'D', setting)) return Complain("unknown option ", option);
        if (setting.IsNull()) return Complain("a value is missing after ", option);
        if (!AddVariable(options.vars, setting)) return Complain("not NAME=VALUE: ", setting);
    }
    if (argc > 2) return Complain("more than one file: ", argv[2]);
    if (argc > 1) options.file = argv[1];
    return 0;
}

// True unless a line was bad.
bool Expand(std::istream& in, char const* name, Options const& options) {
    bool good = true;
    unsigned number = 0;
    TVarr<char> expanded(1024, VARR_DOUBLE);
    for (std::string line; std::getline(in, line);) {
        ++number;
        if (line.size() != std::strlen(line.c_str())) {
            StrFmt(std::cerr, "%s:%u: zero byte in the line\n", name, number);
            good = false;
            continue;
        }
        if (!line.empty())
            std::cout << options.vars.Substitute(expanded, line.c_str(), options.keep_unknown);
        if (!in.eof()) std::cout << '\n';
    }
    return good;
}

int Run(int argc, char** argv) {
    Options options;
    if (ParseOptions(argc, argv, options) != 0) return 1;
    std::ifstream file;
    if (options.file != nullptr) file.open(options.file);
    std::istream& in = options.file != nullptr ? file : std::cin;
    char const* const name = options.file != nullptr ? options.file : "standard input";

    bool good = Expand(in, name, options);
    int const reason = errno;
    if (in.bad() || (options.file != nullptr && !file.is_open())) {
        StrFmt(std::cerr, "expand: cannot read %s: %s\n", name, str_error(reason));
        good = false;
    }
    if (!std::cout.flush()) {
        StrFmt(std::cerr, "expand: cannot write standard output\n");
        good = false;
    }
    return good ? 0 : 1;
}

}  // namespace

int main(int argc, char* argv[]) {
    try {
        return Run(argc, argv);
    } catch (std::bad_alloc const&) {
        std::fputs("expand: out of memory\n", stderr);
        return 1;
    }
}
