"""Programs outside of the tree, built against an installed library and run: by CMake and by pkg-config, in C++,
C11 and Fortran, and from Python without any building."""
import ctypes
import os
import pathlib
import subprocess
import sys

HERE = pathlib.Path(__file__).resolve().parent
ROOT = HERE.parents[1]
TRIPLETS = {"amd64": "x86_64-linux-gnu", "armhf": "arm-linux-gnueabihf"}


def run(*command, **environment):
    """The standard output of a command; the end of the test, with all it said, when the command fails."""
    done = subprocess.run([str(word) for word in command], capture_output=True, text=True,
                          env={**os.environ, **{name: str(value) for name, value in environment.items()}})
    if done.returncode != 0:
        sys.exit(f"failed with {done.returncode}: {' '.join(map(str, command))}\n{done.stdout}{done.stderr}")
    return done.stdout


def expect(what, want, got):
    if want != got:
        sys.exit(f"{what}: expected {want!r}, found {got!r}")


def build_and_run(architecture, library_folder, scratch, static=False):
    """Builds programs in the new folder `scratch` against the library installed in a folder, and runs them: the
    callers in other languages, and the first program of README.md, which says what it prints."""
    cross = architecture == "armhf"
    emulator = ("qemu-arm", "-L", "/usr/" + TRIPLETS[architecture]) if cross else ()
    scratch.mkdir(parents=True)
    code, behind = (ROOT / "README.md").read_text().split("```cpp\n", 1)[1].split("```\n", 1)
    first = scratch / "first.cc"
    first.write_text(code)
    sources = {"g++": first, "gcc": HERE.parent / "foreign/c11_caller.c",
               "gfortran": HERE.parent / "foreign/fortran_caller.f90"}

    def check(folder):
        for source in sources.values():
            want = behind.split("It prints `", 1)[1].split("`", 1)[0] + "\n" if source == first else ""
            expect(source.name, want, run(*emulator, folder / source.stem, LD_LIBRARY_PATH=library_folder))

    toolchain = [f"-DCMAKE_TOOLCHAIN_FILE={ROOT}/cmake/{TRIPLETS[architecture]}.cmake"] if cross else []
    run("cmake", "-S", HERE / "outside", "-B", scratch / "cmake", "-G", "Ninja", *toolchain,
        f"-Dkorbase_DIR={library_folder}/cmake/korbase", f"-DSOURCES={';'.join(map(str, sources.values()))}")
    run("cmake", "--build", scratch / "cmake")
    check(scratch / "cmake")

    flags = run("pkg-config", "--cflags", "--libs", *(["--static"] if static else []), "korbase",
                PKG_CONFIG_LIBDIR=library_folder / "pkgconfig").split()
    for compiler, source in sources.items():
        run((f"{TRIPLETS[architecture]}-" if cross else "") + compiler, *(["-std=c11"] if compiler == "gcc" else []),
            source, "-o", scratch / source.stem, *flags)
    check(scratch)

    if not cross and not static:
        library = ctypes.CDLL(str(library_folder / "libkorbase.so.1.4"))
        value = ctypes.c_double()
        expect("characters of 4.7k", 4, library.str_ctodouble(b"4.7k", ctypes.byref(value)))
        expect("4.7k", 4700.0, value.value)
