// ArgumentVector: an argument count and vector that owns its texts.
#ifndef KORBASE_TEXT_ARGUMENTVECTOR_H
#define KORBASE_TEXT_ARGUMENTVECTOR_H

#include <korbase_api.h>

#include <utility>

// Vector and texts are blocks from new[]. One thread at a time.
class KORBASE_API ArgumentVector {
public:
    // No arguments: a vector of one null pointer.
    ArgumentVector();
    // Copies of argv[0] to argv[argc - 1], which may be null, and a final null pointer. A negative
    // count is 0; one above 536870909 throws std::bad_array_new_length.
    ArgumentVector(int argc, char** argv);
    ArgumentVector(ArgumentVector const& other);
    ArgumentVector& operator=(ArgumentVector const& other);
    // A moved-from vector has no arguments, and a null Argv().
    ArgumentVector(ArgumentVector&& other) noexcept
        : argc(std::exchange(other.argc, 0)), argv(std::exchange(other.argv, nullptr)) {}
    ArgumentVector& operator=(ArgumentVector&& other) noexcept {
        std::swap(argc, other.argc);
        std::swap(argv, other.argv);
        return *this;
    }
    ~ArgumentVector() { Reset(0, nullptr); }

    // Frees what it has and takes over `argv` as it is: the vector and its first `argc` texts, all
    // from new[], are deleted by this object. It must not be the vector that this object has.
    void Reset(int argc, char** argv);

    int Argc() const { return argc; }
    // Valid until the next change; entries may be exchanged for other texts from new[].
    char** Argv() const { return argv; }

private:
    int argc;  // never below 0
    char** argv;
};

#endif
