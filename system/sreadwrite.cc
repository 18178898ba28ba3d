#include "system/sreadwrite.h"

#include <unistd.h>

int sread(int fd, void* buf, unsigned int n) {
    unsigned done = 0;
    while (done < n) {
        auto const count = read(fd, static_cast<char*>(buf) + done, n - done);
        if (count < 0) return static_cast<int>(count);
        if (count == 0) break;
        done += static_cast<unsigned>(count);
    }
    return static_cast<int>(done);
}

int swrite(int fd, void const* buf, unsigned int n) {
    unsigned done = 0;
    while (done < n) {
        auto const count = write(fd, static_cast<char const*>(buf) + done, n - done);
        if (count < 0) return static_cast<int>(count);
        done += static_cast<unsigned>(count);
    }
    return static_cast<int>(n);
}
