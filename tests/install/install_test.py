"""Installs a build into an empty folder, component by component, and builds programs against it.

    install_test.py ARCHITECTURE BUILD      a build of the shared library, and amd64 or armhf
    install_test.py --static                builds the static library first
"""
import pathlib
import sys
import tempfile

from outside import ROOT, build_and_run, expect, run


def files(prefix):
    return {str(path.relative_to(prefix)) for path in prefix.rglob("*") if not path.is_dir()}


def manual():
    """The pages of the plain functions: of all names in the list of symbols that are neither C++ nor data."""
    symbols = (ROOT / "cmake/symbols.txt").read_text(encoding="utf-8").split("\n")
    return {f"share/man/man3/{name}.3" for name in symbols if name.isidentifier() and name != "m2b"}


def main():
    static = sys.argv[1:] == ["--static"]
    architecture, build = ("amd64", ROOT / "build/static") if static else sys.argv[1:]
    if static:
        run("cmake", "-S", ROOT, "-B", build, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Release",
            "-DKORBASE_SHARED=OFF", "-DKORBASE_WERROR=ON", "-DKORBASE_TESTS=OFF", "-DKORBASE_EXAMPLES=OFF")
        run("cmake", "--build", build)
    with tempfile.TemporaryDirectory() as scratch:
        prefix = pathlib.Path(scratch) / "prefix"

        def install(component):
            before = files(prefix)
            run("cmake", "--install", build, "--prefix", prefix, "--component", component)
            return files(prefix) - before

        runtime, development = install("runtime"), install("development")
        lib = next(name for name in development if name.endswith("/korbase.pc")).rsplit("/", 2)[0]
        expect("runtime", set() if static else {f"{lib}/libkorbase.so.1.4"}, runtime)
        package = {f"{lib}/cmake/korbase/korbase-{name}.cmake"
                   for name in ("config", "config-version", "targets", "targets-release")}
        headers = {f"include/korbase/{name}" for name in files(ROOT / "include")}
        link = f"{lib}/libkorbase.a" if static else f"{lib}/libkorbase.so"
        printers = {name for name in development if name.endswith(f"/{lib}/libkorbase.so.1.4-gdb.py")}
        expect("files for gdb", 1, len(printers))
        expect("development", headers | manual() | package | printers | {link, f"{lib}/pkgconfig/korbase.pc"},
               development)
        expect("a component is missing", set(), install("Unspecified"))
        page = (prefix / "share/man/man3/str_todouble.3").read_text()  # of a comment about three functions
        for text in ".B #include <text/str_number.h>", "text, double* out);", "\\fIKept:\\fP the", ".BR str_toint (3)":
            expect(f"{text} is in the page of str_todouble", True, text in page)

        moved = prefix.rename(prefix.with_name("moved"))  # what was installed does not know where
        build_and_run(architecture, moved / lib, prefix.with_name("outside"), static)


main()
