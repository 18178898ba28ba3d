"""Programs outside of the tree, built against an installed library and run: by CMake and by pkg-config, in C++,
C11 and Fortran, and from Python without any building."""
import ctypes
import os
import pathlib
import subprocess
import sys

HERE = pathlib.Path(__file__).resolve().parent
ROOT = HERE.parents[1]
FOREIGN = HERE.parent / "foreign"
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


def first_program(folder):
    """The first program of README.md in a file, and what the text below it says that it prints."""
    text = (ROOT / "README.md").read_text()
    code, behind = text.split("```cpp\n", 1)[1].split("```\n", 1)
    source = folder / "first.cc"
    source.write_text(code)
    return source, behind.split("It prints `", 1)[1].split("`", 1)[0] + "\n"


def build_and_run(architecture, library_folder, scratch, static=False):
    """Builds all programs in the new folder `scratch` against the library installed in a folder, and runs them."""
    cross = architecture == "armhf"
    tool = f"{TRIPLETS[architecture]}-" if cross else ""
    emulator = ("qemu-arm", "-L", "/usr/" + TRIPLETS[architecture]) if cross else ()
    scratch.mkdir(parents=True)
    source, output = first_program(scratch)

    def check(folder):
        for program, want in (("first", output), ("c11_caller", ""), ("fortran_caller", "")):
            expect(program, want, run(*emulator, folder / program, LD_LIBRARY_PATH=library_folder))

    toolchain = [f"-DCMAKE_TOOLCHAIN_FILE={ROOT}/cmake/{TRIPLETS[architecture]}.cmake"] if cross else []
    run("cmake", "-S", HERE / "outside", "-B", scratch / "cmake", "-G", "Ninja", *toolchain,
        f"-Dkorbase_DIR={library_folder}/cmake/korbase", f"-DFOREIGN={FOREIGN}", f"-DFIRST_PROGRAM={source}")
    run("cmake", "--build", scratch / "cmake")
    check(scratch / "cmake")

    folder = scratch / "pkg-config"
    folder.mkdir()
    flags = run("pkg-config", "--cflags", "--libs", *(["--static"] if static else []), "korbase",
                PKG_CONFIG_LIBDIR=library_folder / "pkgconfig").split()
    for compiler, program in (("g++", source), ("gcc", FOREIGN / "c11_caller.c"),
                              ("gfortran", FOREIGN / "fortran_caller.f90")):
        standard = ["-std=c11"] if compiler == "gcc" else []
        run(tool + compiler, *standard, program, "-o", folder / program.stem, *flags)
    check(folder)

    if not cross and not static:
        library = ctypes.CDLL(str(library_folder / "libkorbase.so.1.4"))
        value = ctypes.c_double()
        expect("characters of 4.7k", 4, library.str_ctodouble(b"4.7k", ctypes.byref(value)))
        expect("4.7k", 4700.0, value.value)
