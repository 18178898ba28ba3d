#include "system/randname.h"

#include <pthread.h>
#include <sys/time.h>
#include <sys/times.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <new>
#include <string_view>

namespace {

constexpr char kAlphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789";
constexpr char kAlive[] = {'6', '5', '4', '3'};
constexpr unsigned kMostChars = 127;
constexpr unsigned kSafeChars = 12;

std::uint32_t Seed() {
    auto const pid = static_cast<std::uint32_t>(getpid());
    tms used;
    if (times(&used) == static_cast<clock_t>(-1)) return pid;
    timeval now;
    if (gettimeofday(&now, nullptr) != 0) return static_cast<std::uint32_t>(std::time(nullptr));
    return static_cast<std::uint32_t>(used.tms_utime ^ used.tms_stime ^ used.tms_cutime ^
                                      used.tms_cstime) ^
           static_cast<std::uint32_t>(now.tv_sec) ^ static_cast<std::uint32_t>(now.tv_usec) ^
           pid << 16;
}

// The generator of the process and its mutex. It is never destroyed: static destructors of the
// application may still ask for names.
class SharedNames {
public:
    static SharedNames& Instance() {
        static SharedNames* const instance = Make();
        return *instance;
    }

    String_t Get() {
        bool const locked = IsAlive() && pthread_mutex_lock(&mutex) == 0;
        char name[kSafeChars];
        for (char& c : name) c = names.NextChar();
        if (locked) pthread_mutex_unlock(&mutex);
        return String_t(std::string_view(name, kSafeChars));
    }

private:
    SharedNames() : mutex(), tag() {
        if (pthread_mutex_init(&mutex, nullptr) == 0) std::memcpy(tag, kAlive, sizeof tag);
    }

    static SharedNames* Make() {
        alignas(SharedNames) static unsigned char room[sizeof(SharedNames)];
        auto* const made = new (room) SharedNames;
        std::atexit([] { Instance().Close(); });
        return made;
    }

    bool IsAlive() const { return std::memcmp(tag, kAlive, sizeof tag) == 0; }

    void Close() {
        if (!IsAlive()) return;
        std::memset(tag, 0, sizeof tag);
        pthread_mutex_destroy(&mutex);
    }

    RandName names;
    pthread_mutex_t mutex;
    char tag[4];  // "6543" while there is a mutex
};

}  // namespace

RandName::RandName() : RandName(nullptr) {}

RandName::RandName(char const* chars)
    : alphabet(chars ? chars : kAlphabet),
      length(static_cast<std::uint32_t>(std::strlen(alphabet))),
      state(Seed()) {}

// A number from 0 to count - 1 from the high bits of the state: of such a generator the low ones
// repeat soon. The divisor is slightly above 2^31, which keeps the result below the count.
unsigned RandName::Next(unsigned count) {
    state = state * 1103515245U + 12345U;
    double const part = static_cast<std::int32_t>(state) / 2147836648.0;
    return static_cast<unsigned>(std::fabs(part) * count);
}

char RandName::NextChar() { return alphabet[Next(length)]; }

unsigned char RandName::NextByte() { return static_cast<unsigned char>(Next(256)); }

String_t RandName::operator()(unsigned int count) {
    char name[kMostChars];
    unsigned const chars = std::min(count, kMostChars);
    for (unsigned i = 0; i < chars; ++i) name[i] = NextChar();
    return String_t(std::string_view(name, chars));
}

String_t SafeRandName::Get() { return SharedNames::Instance().Get(); }
