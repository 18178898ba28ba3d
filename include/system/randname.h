// RandName: pseudo-random names from an alphabet, for files that must not collide by accident.
//
// A linear congruential generator with 32 bits of state, seeded from the clocks and the process id:
// names are different, not secret. One thread at a time may use a RandName.
#ifndef KORBASE_SYSTEM_RANDNAME_H
#define KORBASE_SYSTEM_RANDNAME_H

#include <korbase_api.h>
#include <text/string.h>

#include <cstdint>

class KORBASE_API RandName {
public:
    // The letters and digits of ASCII.
    RandName();
    // The characters of `alphabet`, which is not copied and stays the caller's; null as above.
    explicit RandName(char const* alphabet);

    // A character of the alphabet; NUL if that is empty.
    char NextChar();
    // A number from 0 to 255.
    unsigned char NextByte();
    // A name of `length` characters, at most 127; "" for 0.
    String_t operator()(unsigned int length);

private:
    unsigned Next(unsigned count);

    char const* alphabet;
    std::uint32_t length;  // of the alphabet
    std::uint32_t state;
};

// One generator for the whole process, on letters and digits.
class KORBASE_API SafeRandName {
public:
    // A name of 12 characters. Any thread may call it.
    static String_t Get();
};

#endif
