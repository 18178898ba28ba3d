#!/usr/bin/env python3
"""Builds the Debian packages of both architectures, installs them side by side below an empty root with dpkg,
builds programs against them, and takes them away again. The static library, which no package has, is tried last."""
import os
import pathlib
import re
import sys
import tempfile

from outside import ROOT, TRIPLETS, build_and_run, expect, run

MAINTAINER = "libkorbase developers <korbase@localhost>"


def as_root(*command):
    """dpkg gives files to root: fakeroot lets it believe so."""
    return run(*([] if os.geteuid() == 0 else ["fakeroot"]), *command)


def version(text):
    return tuple(int(number) for number in re.findall(r"\d+", text))


# The first libstdc++6 package with a version of its symbols.
LIBSTDCXX = {(3, 4, 29): (11,), (3, 4, 30): (12,), (3, 4, 31): (13,)}


def check_depends(depends, library):
    """The stated packages are at least as new as the versions of the symbols that the library asks for."""
    stated = {name: version(least) for name, least in re.findall(r"([\w+-]+) \(>= ([\d.]+)\)", depends)}
    expect("packages depended on", {"libc6", "libgcc-s1", "libstdc++6"}, set(stated))
    asked = run("readelf", "-V", library)
    glibc = max(map(version, re.findall(r"Name: GLIBC_([\d.]+)", asked)))
    if stated["libc6"] < glibc:
        sys.exit(f"{library} needs libc6 {glibc}, the package says {depends}")
    for wanted in map(version, re.findall(r"Name: GLIBCXX_([\d.]+)", asked)):
        if wanted in LIBSTDCXX and stated["libstdc++6"] < LIBSTDCXX[wanted]:
            sys.exit(f"{library} needs GLIBCXX {wanted}, the package says {depends}")


def check_control(architecture, package):
    def field(name):
        return run("dpkg-deb", "--field", package, name).strip()

    runtime = "-dev" not in package.name
    for name, want in (("Package", "libkorbase1.4" if runtime else "libkorbase-dev"),
                       ("Version", "1.4"), ("Architecture", architecture), ("Multi-Arch", "same"),
                       ("Section", "libs" if runtime else "libdevel"), ("Maintainer", MAINTAINER)):
        expect(f"{package.name}: {name}", want, field(name))
    expect(f"{package.name}: lines of the description", 3, field("Description").count("\n") + 1)
    if runtime:
        expect("triggers", "activate-noawait ldconfig\n", run("dpkg-deb", "--info", package, "triggers"))
        expect("shlibs", "libkorbase 1.4 libkorbase1.4 (>= 1.4)\n", run("dpkg-deb", "--info", package, "shlibs"))
    else:
        expect(f"{package.name}: Depends", "libkorbase1.4 (= 1.4)", field("Depends"))


def main():
    if len(sys.argv) > 1:
        sys.exit("usage: packages_test.py")
    run(ROOT / "scripts" / "package")
    with tempfile.TemporaryDirectory() as scratch:
        scratch = pathlib.Path(scratch)
        root = scratch / "root"
        for name in ("info", "updates"):
            (root / "var/lib/dpkg" / name).mkdir(parents=True)
        (root / "var/lib/dpkg/status").touch()
        # The root has no libc for us to depend on, and no ldconfig.
        dpkg = ("dpkg", f"--root={root}", "--force-depends", "--force-bad-path", "--log=/dev/null")
        foreign = set(TRIPLETS) - {run("dpkg", "--print-architecture").strip()}
        for architecture in foreign:
            as_root(*dpkg, "--add-architecture", architecture)
        packages = {architecture: [ROOT / f"build/packages/{name}_1.4_{architecture}.deb"
                                   for name in ("libkorbase1.4", "libkorbase-dev")] for architecture in TRIPLETS}
        as_root(*dpkg, "--install", *(package for both in packages.values() for package in both))

        for architecture, triplet in TRIPLETS.items():
            for package in packages[architecture]:
                check_control(architecture, package)
            lib = root / "usr/lib" / triplet
            library = lib / "libkorbase.so.1.4"
            expect(f"files of libkorbase1.4:{architecture}", [f"/usr/lib/{triplet}/libkorbase.so.1.4"],
                   [name for name in run(*dpkg, "--listfiles", f"libkorbase1.4:{architecture}").split()
                    if (root / name[1:]).is_file()])
            expect("the link for linkers", "libkorbase.so.1.4", os.readlink(lib / "libkorbase.so"))
            printers = root / f"usr/share/gdb/auto-load/usr/lib/{triplet}/libkorbase.so.1.4-gdb.py"
            for mode, name in ((0o644, library), (0o644, printers), (0o755, lib),
                               (0o644, root / "usr/include/korbase/korbase.h")):
                expect(f"mode of {name}", mode, name.stat().st_mode & 0o7777)
            check_depends(run("dpkg-deb", "--field", packages[architecture][0], "Depends"), library)
            run("python3", ROOT / "tests/interface/hardening.py", "--stripped", library)
            run("python3", ROOT / "cmake/symbols.py", library)
            build_and_run(architecture, lib, scratch / architecture)

        names = [f"{package}:{architecture}" for architecture in TRIPLETS
                 for package in ("libkorbase1.4", "libkorbase-dev")]
        as_root(*dpkg, "--purge", *names)
        expect("left behind", [], [path for path in root.rglob("*korbase*")])
    run(sys.executable, ROOT / "tests/install/install_test.py", "--static")
    print(f"{len(names)} packages and the static library installed and used from outside")


main()
