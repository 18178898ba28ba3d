"""What the shared library exports, against the list in symbols.txt.

    symbols.py [--nm NM] LIBRARY            prints the difference, exit status 1 when there is one
    symbols.py --update LIBRARY64 LIBRARY32   writes the list anew from both targets

A line of the list is a demangled name; "64: " or "32: " in front of it where the targets differ (size_t,
the words of bit sets). A virtual table has its number of words behind it: a new slot is a new interface.
"""
import argparse
import pathlib
import re
import subprocess
import sys

LIST = pathlib.Path(__file__).with_name("symbols.txt")
SYMBOL = re.compile(r"(?P<address>[0-9a-f]+) (?:(?P<size>[0-9a-f]+) )?(?P<kind>\S) (?P<name>.*)")


def exported(nm, library):
    """The word size of a library in bits, and the set of what it exports."""
    listing = subprocess.run([nm, "-D", "-C", "-S", "--defined-only", "--without-symbol-versions", library],
                             capture_output=True, text=True)
    if listing.returncode != 0:
        sys.exit(listing.stderr.strip())
    names, bits = set(), 0
    for line in listing.stdout.splitlines():
        symbol = SYMBOL.fullmatch(line)
        if symbol is None:
            sys.exit(f"{library}: cannot read the line of nm: {line}")
        bits = 4 * len(symbol["address"])
        if symbol["kind"] == "A":  # the name of the version itself
            continue
        name = symbol["name"]
        if name.startswith(("vtable for ", "VTT for ")):
            name += f" [{int(symbol['size'], 16) * 8 // bits}]"
        names.add(name)
    if not names:
        sys.exit(f"{library} exports nothing")
    return bits, names


def listed(bits):
    """The lines of the list that hold for a word size."""
    names = set()
    for line in LIST.read_text().splitlines():
        target = re.match(r"(64|32): ", line)
        if target is None:
            names.add(line)
        elif int(target[1]) == bits:
            names.add(line[4:])
    return names


def update(nm, libraries):
    found = dict(exported(nm, library) for library in libraries)
    if sorted(found) != [32, 64]:
        sys.exit("--update needs one 64-bit and one 32-bit library")
    lines = [(name, "") for name in found[64] & found[32]]
    for bits in found:
        lines += [(name, f"{bits}: ") for name in found[bits] - found[96 - bits]]
    LIST.write_text("".join(f"{target}{name}\n" for name, target in sorted(lines)))
    print(f"{len(found[64])} names")


def main():
    options = argparse.ArgumentParser()
    options.add_argument("--nm", default="nm")
    options.add_argument("--update", action="store_true")
    options.add_argument("libraries", nargs="+", metavar="LIBRARY")
    given = options.parse_args()
    if given.update:
        update(given.nm, given.libraries)
        return
    differences = 0
    for library in given.libraries:
        bits, names = exported(given.nm, library)
        want = listed(bits)
        for sign, missing in (("-", want - names), ("+", names - want)):
            for name in sorted(missing):
                print(f"{sign} {name}")
                differences += 1
    if differences:
        sys.exit(f"{differences} names differ from the list; if the interface is meant to change:"
                 " scripts/symbols --update")


main()
