#!/usr/bin/env python3
"""Builds the Debian packages of both architectures, installs them side by side below an empty root with dpkg,
builds programs against them, and takes them away again. The static library, which no package has, is tried last."""
import os
import pathlib
import re
import sys
import tempfile

from outside import ROOT, TRIPLETS, build_and_run, expect, run

# The root has no libc for us to depend on, and no ldconfig. dpkg gives files to root: fakeroot lets it believe so.
DPKG = (*([] if os.geteuid() == 0 else ["fakeroot"]), "dpkg", "--force-depends", "--force-bad-path", "--log=/dev/null")


def version(text):
    return tuple(int(number) for number in re.findall(r"\d+", text))


# The first libstdc++6 package with a version of its symbols.
LIBSTDCXX = {(3, 4, 29): (11,), (3, 4, 30): (12,), (3, 4, 31): (13,)}


def check_depends(depends, library):
    """The stated packages are at least as new as the versions of the symbols that the library asks for."""
    stated = {name: version(least) for name, least in re.findall(r"([\w+-]+) \(>= ([\d.]+)\)", depends)}
    expect("packages depended on", {"libc6", "libgcc-s1", "libstdc++6"}, set(stated))
    for kind, wanted in re.findall(r"Name: (GLIBC|GLIBCXX)_([\d.]+)", run("readelf", "-V", library)):
        package, least = (("libc6", version(wanted)) if kind == "GLIBC" else
                          ("libstdc++6", LIBSTDCXX.get(version(wanted), ())))
        if stated[package] < least or (kind == "GLIBCXX" and version(wanted) > max(LIBSTDCXX)):
            sys.exit(f"{library} needs {package} {least}, the package says {depends}")


def check_control(architecture, runtime, development):
    for package, name, section in (runtime, "libkorbase1.4", "libs"), (development, "libkorbase-dev", "libdevel"):
        form = "${Package} ${Version} ${Architecture} ${Multi-Arch} ${Section} ${Maintainer}"
        expect(package, f"{name} 1.4 {architecture} same {section} libkorbase developers <korbase@localhost>",
               run("dpkg-deb", "--show", f"--showformat={form}", package))
        expect(f"{package}: lines of the description", 3,
               run("dpkg-deb", "--field", package, "Description").count("\n"))
    expect("triggers", "activate-noawait ldconfig\n", run("dpkg-deb", "--info", runtime, "triggers"))
    expect("shlibs", "libkorbase 1.4 libkorbase1.4 (>= 1.4)\n", run("dpkg-deb", "--info", runtime, "shlibs"))
    expect("Depends", "libkorbase1.4 (= 1.4)\n", run("dpkg-deb", "--field", development, "Depends"))


def check_installed(root, architecture, runtime, scratch):
    triplet = TRIPLETS[architecture]
    lib = root / "usr/lib" / triplet
    library = lib / "libkorbase.so.1.4"
    listed = run(*DPKG, f"--root={root}", "--listfiles", f"libkorbase1.4:{architecture}").split()
    expect("files", [library], [path for path in (root / name[1:] for name in listed) if path.is_file()])
    expect("the link for linkers", "libkorbase.so.1.4", os.readlink(lib / "libkorbase.so"))
    printers = root / f"usr/share/gdb/auto-load/usr/lib/{triplet}/libkorbase.so.1.4-gdb.py"
    for path in library, printers, lib, root / "usr/include/korbase/korbase.h":
        expect(f"mode of {path}", 0o755 if path == lib else 0o644, path.stat().st_mode & 0o7777)
    check_depends(run("dpkg-deb", "--field", runtime, "Depends"), library)
    run("python3", ROOT / "tests/interface/hardening.py", "--stripped", library)
    run("python3", ROOT / "cmake/symbols.py", library)
    build_and_run(architecture, lib, scratch / architecture)


def main():
    run(ROOT / "scripts/package")
    names = ("libkorbase1.4", "libkorbase-dev")
    packages = {architecture: [ROOT / f"build/packages/{name}_1.4_{architecture}.deb" for name in names]
                for architecture in TRIPLETS}
    with tempfile.TemporaryDirectory() as scratch:
        scratch = pathlib.Path(scratch)
        root = scratch / "root"
        dpkg = (*DPKG, f"--root={root}")
        for name in "info", "updates":
            (root / "var/lib/dpkg" / name).mkdir(parents=True)
        (root / "var/lib/dpkg/status").touch()
        for foreign in set(TRIPLETS) - {run("dpkg", "--print-architecture").strip()}:
            run(*dpkg, "--add-architecture", foreign)
        run(*dpkg, "--install", *(package for both in packages.values() for package in both))
        for architecture, both in packages.items():
            check_control(architecture, *both)
            check_installed(root, architecture, both[0], scratch)
        run(*dpkg, "--purge", *(f"{name}:{architecture}" for architecture in TRIPLETS for name in names))
        expect("left behind", [], list(root.rglob("*korbase*")))
    run(sys.executable, ROOT / "tests/install/install_test.py", "--static")
    print("the packages and the static library installed and used from outside")


main()
