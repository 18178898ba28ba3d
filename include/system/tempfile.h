// Temporary names, files and directories below /tmp that are removed with the object.
//
// The objects can be moved, not copied; one that was moved from removes nothing. A null prefix or
// suffix is an empty one. A process that forks has to see to it that only one side destroys them.
#ifndef KORBASE_SYSTEM_TEMPFILE_H
#define KORBASE_SYSTEM_TEMPFILE_H

#include <korbase_api.h>
#include <system/pathname.h>

#include <utility>

// A name for a file that the caller creates. Nothing keeps others from taking it first: prefer
// TempFile or a name in a TempDir.
class KORBASE_API TmpFile {
public:
    // "/tmp/kor", six letters or digits, and `suffix`; "" if there is no such name. No file had the
    // name without the suffix.
    explicit TmpFile(char const* suffix = nullptr);
    ~TmpFile();  // unlinks the name
    TmpFile(TmpFile&& other) noexcept = default;
    TmpFile& operator=(TmpFile&& other) noexcept {
        std::swap(name, other.name);
        return *this;
    }

    String_t const& Name() const { return name; }

private:
    String_t name;
};

// A file that is created empty, for reading and writing by this user alone.
class KORBASE_API TempFile {
public:
    // The file `prefix`, 12 letters or digits, `suffix` in the directory `dir` or in /tmp. When
    // 1000 names failed, the path is "", the descriptor -1 and errno that of the last one.
    TempFile(Pathname const& dir, char const* prefix, char const* suffix);
    TempFile(char const* prefix, char const* suffix);
    ~TempFile();  // unlinks the file and closes the descriptor
    TempFile(TempFile&& other) noexcept
        : path(std::move(other.path)), fd(std::exchange(other.fd, -1)) {}
    TempFile& operator=(TempFile&& other) noexcept {
        std::swap(path, other.path);
        std::swap(fd, other.fd);
        return *this;
    }

    Pathname const& Path() const { return path; }  // "" when there is no file
    int Fd() const { return fd; }                  // owned; -1 when there is none

    // Removes the name; the descriptor stays open. Returns 0, also when the path is empty already,
    // or -1 with errno and the path kept.
    int Unlink();

private:
    Pathname path;
    int fd;
};

// A directory for this user alone, removed with all that is in it.
class KORBASE_API TempDir {
public:
    // The directory `prefix`, 12 letters or digits, `suffix` in /tmp. When 1000 names failed, the
    // path is "" and errno that of the last one.
    explicit TempDir(char const* prefix = nullptr, char const* suffix = nullptr);
    // Removes what it can; failures are not told. Kept: symbolic links to directories are followed:
    // what is in the other directory is removed too, and the link, which is not, stays with the
    // directories above it. Links that lead nowhere stay as well.
    ~TempDir();
    TempDir(TempDir&& other) noexcept = default;
    TempDir& operator=(TempDir&& other) noexcept {
        std::swap(path, other.path);
        return *this;
    }

    Pathname const& Path() const { return path; }  // "" when there is no directory

private:
    Pathname path;
};

#endif
