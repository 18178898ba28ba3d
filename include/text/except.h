// Except: the root of the library's exceptions; a kind, a message, and where it was thrown.
//
// A value: thrown by value, caught by reference. Copies share their texts, so an exception and its
// copies belong to one thread at a time.
#ifndef KORBASE_TEXT_EXCEPT_H
#define KORBASE_TEXT_EXCEPT_H

#include <korbase_api.h>
#include <text/string.h>

class KORBASE_API Except {
public:
    // `kind` is not copied: a literal, or a text that outlives every copy of the exception. What is
    // not given is the null string, or line -1; Except() has the kind "unknown".
    Except();
    explicit Except(char const* kind);
    Except(char const* kind, String_t const& message);
    Except(char const* kind, char const* file, int line);
    Except(char const* kind, String_t const& message, char const* file, int line);
    Except(Except const&);
    Except& operator=(Except const&);
    // Leaves the source without message and file.
    Except(Except&&) noexcept;
    Except& operator=(Except&&) noexcept;

    // "KIND, MESSAGE, thrown in FILE:LINE", without the message when it is null or "", without the
    // place when the file is null or "" or the line negative. The null string when the kind is null
    // or nothing is left.
    virtual String_t ToString() const;
    virtual ~Except();

    char const* Kind() const { return kind; }
    String_t const& Message() const { return message; }
    String_t const& File() const { return file; }
    int Line() const { return line; }

private:
    char const* kind;
    String_t message;
    String_t file;
    int line;
};

#endif
