#!/usr/bin/env python3
"""Keeps the code in the pages of docs/ true.

    pages.py extract PAGE PROGRAM OUTPUT      writes the page's program and the output that it has to have
    pages.py run OUTPUT COMMAND...            runs a program and compares

A page has either one ```cpp block with a main function, followed by a ```text block with its whole output, or
blocks of examples: statements, and expressions whose value follows as a comment, `gcd(12, 18);  // -> 6`.
"""
import difflib
import re
import subprocess
import sys

EXAMPLE = re.compile(r"^(\s*)(.*);\s*// -> (.*)$")

PRELUDE = """\
#include <korbase.h>

#include <fcntl.h>
#include <pthread.h>
#include <signal.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <sstream>
#include <string>

namespace {

// How the pages write a value: texts in quotes, "null" for none.
inline void Show(char const* text) {
    if (text)
        std::cout << '"' << text << '"';
    else
        std::cout << "null";
}
inline void Show(char* text) { Show(const_cast<char const*>(text)); }
inline void Show(std::string const& text) { Show(text.c_str()); }
inline void Show(String_t const& text) { Show(text.Get()); }
inline void Show(Pathname const& path) { Show(path.Get()); }
inline void Show(char c) { std::cout << '\\'' << c << '\\''; }
inline void Show(gu_point_t p) { std::cout << '(' << p.x << ", " << p.y << ')'; }
template <class Value>
inline void Show(Value const& value) {
    if constexpr (std::is_pointer_v<Value>)
        std::cout << (value ? "not null" : "null");
    else
        std::cout << std::boolalpha << value;
}

template <class Value>
void Example(int line, Value const& value) {
    std::cout << line << ": ";
    Show(value);
    std::cout << std::endl;
}

"""


def blocks(page):
    """The fenced blocks of a page: language, number of the first line, lines."""
    with open(page, encoding="utf-8") as file:
        lines = file.read().split("\n")
    language, first, found = None, 0, []
    for number, line in enumerate(lines, 1):
        if line.startswith("```"):
            if language is None:
                language, first = line[3:].strip(), number + 1
            else:
                found.append((language, first, lines[first - 1:number - 1]))
                language = None
    if language is not None:
        sys.exit(f"{page}: the last fence is open")
    return found


def program(page, found):
    """The text of a page's program, and its output."""
    mains = [i for i, (language, _, lines) in enumerate(found)
             if language == "cpp" and any(line.startswith("int main(") for line in lines)]
    if len(mains) != 1 or mains[0] + 1 == len(found) or found[mains[0] + 1][0] != "text":
        sys.exit(f"{page}: one program with its output behind it is expected")
    _, first, lines = found[mains[0]]
    return [f'#line {first} "{page}"', *lines], found[mains[0] + 1][2]


def examples(page, found):
    """A program of all examples, and what it prints: the line of each and its value."""
    out, values, functions = [PRELUDE], [], 0
    for language, first, lines in found:
        if language != "cpp":
            continue
        functions += 1
        out += [f"void Block{functions}() {{", f'#line {first} "{page}"']
        for number, line in enumerate(lines, first):
            match = EXAMPLE.match(line)
            if match:
                out.append(f"{match.group(1)}Example({number}, ({match.group(2)}));")
                values.append(f"{number}: {match.group(3).strip()}")
            else:
                out.append(line)
        out.append("}")
    if not values:
        sys.exit(f"{page}: no examples")
    calls = [f"    Block{i + 1}();" for i in range(functions)]
    return out + ["}  // namespace", "int main() {", *calls, "}"], values


def extract(page, program_file, output_file):
    found = blocks(page)
    has_main = any(line.startswith("int main(") for _, _, lines in found for line in lines)
    code, output = (program if has_main else examples)(page, found)
    for name, lines in ((program_file, code), (output_file, output)):
        with open(name, "w", encoding="utf-8") as file:
            file.write("\n".join(lines) + "\n")


def run(output_file, command):
    with open(output_file, encoding="utf-8") as file:
        want = file.read()
    done = subprocess.run(command, stdout=subprocess.PIPE, check=False, encoding="utf-8",
                          errors="backslashreplace")
    difference = difflib.unified_diff(want.splitlines(), done.stdout.splitlines(), "page", "program", "", "", 1, "")
    if want != done.stdout or done.returncode:
        print("\n".join(difference))
        sys.exit(f"exit status {done.returncode}")


if __name__ == "__main__":
    arguments = sys.argv[1:]
    if len(arguments) == 4 and arguments[0] == "extract":
        extract(*arguments[1:])
    elif len(arguments) > 2 and arguments[0] == "run":
        run(arguments[1], arguments[2:])
    else:
        sys.exit(__doc__.strip())
