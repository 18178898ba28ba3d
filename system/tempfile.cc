#include "system/tempfile.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <memory>
#include <new>
#include <set>
#include <utility>

#include "system/randname.h"

namespace {

constexpr int kAttempts = 1000;
constexpr unsigned kTmpChars = 6;

Pathname Tmp() { return Pathname("/").Append("tmp"); }

// The first path `dir`/`prefix`NAME`suffix` that `create` accepts; "" when all attempts failed.
template <class Create>
Pathname FirstOf(Pathname const& dir, char const* prefix, char const* suffix, Create create) {
    for (int i = 0; i < kAttempts; ++i) {
        Pathname path(dir);
        path.Append(String_t(prefix) + SafeRandName::Get() + suffix);
        if (create(path)) return path;
    }
    return Pathname("");
}

struct CloseDir {
    void operator()(DIR* directory) const { closedir(directory); }
};

// Removes a tree. Through symbolic links a directory can come up again, even inside itself: it is
// then only removed, as what is in it has been seen.
class TreeRemover {
public:
    void Remove(Pathname const& path, struct stat const& status) {
        if (!seen.insert({status.st_dev, status.st_ino}).second) {
            rmdir(path);
            return;
        }
        std::unique_ptr<DIR, CloseDir> const directory(opendir(path));
        if (!directory) return;
        // Only this stream is read here, so no other thread interferes.
        // NOLINTNEXTLINE(concurrency-mt-unsafe)
        while (dirent const* const entry = readdir(directory.get()))
            if (std::strcmp(entry->d_name, ".") != 0 && std::strcmp(entry->d_name, "..") != 0)
                RemoveEntry(Pathname(path).Append(entry->d_name));
        rmdir(path);
    }

private:
    void RemoveEntry(Pathname const& path) {
        struct stat status;
        if (stat(path, &status) != 0) return;
        if (S_ISDIR(status.st_mode))
            Remove(path, status);
        else
            unlink(path);
    }

    std::set<std::pair<dev_t, ino_t>> seen;
};

}  // namespace

// As mktemp does it, whose use linkers warn about.
TmpFile::TmpFile(char const* suffix) : name("") {
    int const before = errno;
    for (int i = 0; i < kAttempts; ++i) {
        String_t const tried = "/tmp/kor" + SafeRandName::Get().SubStr(0, kTmpChars - 1);
        struct stat status;
        if (lstat(tried, &status) == 0 || errno == EOVERFLOW) continue;
        if (errno != ENOENT) return;
        name = tried + suffix;
        errno = before;
        return;
    }
}

TmpFile::~TmpFile() {
    if (!name.IsEmpty()) unlink(name);
}

TempFile::TempFile(Pathname const& dir, char const* prefix, char const* suffix) : fd(-1) {
    path = FirstOf(dir, prefix, suffix, [this](char const* name) {
        fd = open(name, O_RDWR | O_CREAT | O_EXCL | O_TRUNC, 0600);
        return fd != -1;
    });
}

TempFile::TempFile(char const* prefix, char const* suffix) : TempFile(Tmp(), prefix, suffix) {}

TempFile::~TempFile() {
    Unlink();
    if (fd != -1) close(fd);
}

int TempFile::Unlink() {
    if (path.IsEmpty()) return 0;
    int const result = unlink(path);
    if (result == 0) path = "";
    return result;
}

TempDir::TempDir(char const* prefix, char const* suffix)
    : path(FirstOf(Tmp(), prefix, suffix,
                   [](char const* name) { return mkdir(name, 0700) == 0; })) {}

TempDir::~TempDir() {
    struct stat status;
    if (path.IsEmpty() || stat(path, &status) != 0) return;
    try {
        TreeRemover().Remove(path, status);
    } catch (std::bad_alloc const&) {
        // What could not be named stays.
    }
}
