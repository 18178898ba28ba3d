// UniqueFd: owns one descriptor and closes it.
#ifndef KORBASE_BASE_UNIQUE_FD_H
#define KORBASE_BASE_UNIQUE_FD_H

#include <unistd.h>

#include <cerrno>
#include <utility>

namespace korbase_detail {

// Closing keeps errno, so that a failure can be returned past it.
class UniqueFd {
public:
    explicit UniqueFd(int fd = -1) noexcept : fd(fd) {}
    UniqueFd(UniqueFd&& other) noexcept : fd(other.Release()) {}
    UniqueFd& operator=(UniqueFd&& other) noexcept {
        Reset(other.Release());
        return *this;
    }
    ~UniqueFd() { Reset(); }

    explicit operator bool() const { return fd >= 0; }
    int Get() const { return fd; }
    // The descriptor, which is the caller's from here on; -1 if there is none.
    int Release() noexcept { return std::exchange(fd, -1); }
    // Closes what it owns and owns `next`.
    void Reset(int next = -1) noexcept {
        int const old = std::exchange(fd, next);
        if (old < 0) return;
        int const error = errno;
        close(old);
        errno = error;
    }

private:
    int fd;
};

}  // namespace korbase_detail

#endif
