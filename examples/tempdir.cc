// Runs a shell command in a folder of its own and lists the files that it left there, before the
// folder and all that is in it goes:
//
//   tempdir COMMAND [PATTERN]
//
// PATTERN picks from the names, "*" when not given. What the command prints is put behind the list.
// The exit status is that of the command, 1 where there is none or what it left cannot be told.
#include <glob.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <system/fname.h>
#include <system/pathname.h>
#include <system/tempfile.h>
#include <unistd.h>
#include <generic/tolist>

#include <cstdlib>
#include <iostream>

namespace {

// Runs the command with `folder` as its directory and `fd` as its output; returns its exit status.
int Run(char const* command, Pathname const& folder, int fd) {
    pid_t const child = fork();
    if (child == 0) {
        if (chdir(folder) == 0 && dup2(fd, STDOUT_FILENO) != -1)
            execl("/bin/sh", "sh", "-c", command, static_cast<char*>(nullptr));
        _exit(127);
    }
    int status = 0;
    if (child < 0 || waitpid(child, &status, 0) != child) return 1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : 1;
}

void List(Pathname const& folder, char const* pattern) {
    TOList<String_t> paths;
    Pathname::Glob(Pathname(folder).Append("*"), 0, paths);
    for (String_t const& path : paths) {
        String_t const name = Pathname(path).Leaf();
        struct stat status;
        if (fname_match(pattern, name) == 0 && stat(path, &status) == 0)
            std::cout << name << ": " << status.st_size << " bytes\n";
    }
}

// Copies what was written to `fd` to the standard output.
void Print(int fd) {
    char text[4096];
    lseek(fd, 0, SEEK_SET);
    for (ssize_t n; (n = read(fd, text, sizeof text)) > 0;) std::cout.write(text, n);
}

}  // namespace

int main(int argc, char* argv[]) {
    if (argc < 2 || argc > 3) {
        std::cerr << "usage: tempdir COMMAND [PATTERN]\n";
        return 1;
    }
    TempDir const folder("tempdir.", ".d");
    TempFile output("tempdir.", ".out");
    if (folder.Path().IsEmpty() || output.Fd() < 0) {
        std::cerr << "tempdir: cannot write to /tmp\n";
        return 1;
    }
    output.Unlink();  // only its descriptor is needed
    int const status = Run(argv[1], folder.Path(), output.Fd());
    List(folder.Path(), argc > 2 ? argv[2] : "*");
    Print(output.Fd());
    if (std::cout.flush()) return status;
    std::cerr << "tempdir: cannot write standard output\n";
    return 1;
}
