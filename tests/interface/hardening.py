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

options = argparse.ArgumentParser()
options.add_argument("--readelf", default="readelf")
options.add_argument("--stripped", action="store_true")
options.add_argument("library")
given = options.parse_args()
elf = subprocess.run([given.readelf, "-W", "-h", "-l", "-d", "-S", "--dyn-syms", given.library], check=True,
                     stdout=subprocess.PIPE, text=True).stdout
needed = re.findall(r"\(NEEDED\).*\[(.*)\]", elf)
segments = dict(re.findall(r"^ +(GNU_\w+) .* ([R ][W ][E ]) 0x\w+$", elf, re.MULTILINE))
conditions = {
    "it is a shared object": "Type:                              DYN" in elf,
    "its name carries the interface version": re.search(r"\(SONAME\).*\[libkorbase\.so\.1\.4\]", elf),
    f"it needs the platform only ({', '.join(needed)})": needed and all(map(PLATFORM.fullmatch, needed)),
    "it searches no path of its own": not re.search(r"\((RPATH|RUNPATH)\)", elf),
    "its code is not relocated": not re.search(r"\(TEXTREL\)|\(FLAGS\).*TEXTREL", elf),
    "calls are resolved at the start": re.search(r"\(FLAGS_1\).*\bNOW\b", elf),
    "and read-only afterwards": "GNU_RELRO" in segments,
    "its stack is not executable": segments.get("GNU_STACK") == "RW ",
    "no segment is writable and executable": not re.search(r" RWE 0x\w+$", elf, re.MULTILINE),
    "stack arrays are guarded": " UND __stack_chk_fail" in elf,
    "buffer functions are checked": re.search(r" UND __\w+_chk\b", elf),
    "it is stripped": not given.stripped or not re.search(r"\] \.(symtab|debug_\w+) ", elf)}
missing = [what for what, holds in conditions.items() if not holds]
if missing:
    sys.exit(f"{given.library}: not true: " + "; ".join(missing))
