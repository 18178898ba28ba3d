"""How a built library is linked: its name, what it needs, and that the guards of cmake/options.cmake are in it.

    hardening.py [--readelf READELF] [--stripped] LIBRARY

Prints what is missing; exit status 1 when anything is.
"""
import argparse
import re
import subprocess
import sys

# The language's runtime and the platform, nothing else.
PLATFORM = re.compile(r"lib(stdc\+\+|m|gcc_s|c)\.so\.\d+|ld-linux.*\.so\.\d+")


def check(elf, stripped):
    dynamic = re.findall(r"\((\w+)\) +(.*)", elf)
    segments = dict(re.findall(r"^ +(GNU_\w+) .* ([R ][W ][E ]) 0x\w+$", elf, re.MULTILINE))
    undefined = set(re.findall(r" UND (\w+)", elf))
    needed = [text[text.index("[") + 1:-1] for tag, text in dynamic if tag == "NEEDED"]
    tags = {tag for tag, _ in dynamic}
    yield "it is a shared object", "Type:                              DYN" in elf
    yield "its name carries the interface version", ("SONAME", "Library soname: [libkorbase.so.1.4]") in dynamic
    yield f"it needs the platform only ({', '.join(needed)})", needed and all(map(PLATFORM.fullmatch, needed))
    yield "it searches no path of its own", not tags & {"RPATH", "RUNPATH"}
    yield "its code is not relocated", "TEXTREL" not in tags and not re.search(r"\(FLAGS\).*TEXTREL", elf)
    yield "calls are resolved at the start", bool(re.search(r"\(FLAGS_1\).*\bNOW\b", elf))
    yield "and read-only afterwards", "GNU_RELRO" in segments
    yield "its stack is not executable", segments.get("GNU_STACK") == "RW "
    yield "no segment is writable and executable", not re.search(r" RWE 0x\w+$", elf, re.MULTILINE)
    yield "stack arrays are guarded", "__stack_chk_fail" in undefined
    yield "buffer functions are checked", any(re.fullmatch(r"__\w+_chk", name) for name in undefined)
    if stripped:
        yield "it is stripped", not re.search(r"\] \.(symtab|debug_\w+) ", elf)


def main():
    options = argparse.ArgumentParser()
    options.add_argument("--readelf", default="readelf")
    options.add_argument("--stripped", action="store_true")
    options.add_argument("library", metavar="LIBRARY")
    given = options.parse_args()
    elf = subprocess.run([given.readelf, "-W", "-h", "-l", "-d", "-S", "--dyn-syms", given.library],
                         capture_output=True, text=True)
    if elf.returncode != 0:
        sys.exit(elf.stderr.strip())
    missing = [what for what, holds in check(elf.stdout, given.stripped) if not holds]
    if missing:
        sys.exit(f"{given.library}: not true: " + "; ".join(missing))


main()
