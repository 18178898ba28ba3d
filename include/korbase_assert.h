/* Fatal assertions: a broken precondition prints condition, file, line and function, and aborts.
 *
 * They stay in every build, whatever NDEBUG says. The condition is printed exactly as it is
 * written, blanks included. C11 and C++17. */
#ifndef KORBASE_ASSERT_H
#define KORBASE_ASSERT_H

#include <assert.h> /* on this platform: declares __assert_fail unless NDEBUG is set */

#ifdef NDEBUG
#ifdef __cplusplus
extern "C" {
#endif
extern void __assert_fail(char const* condition, char const* file, unsigned line,
                          char const* function)
#ifdef __cplusplus
    noexcept(true)
#endif
        __attribute__((noreturn));
#ifdef __cplusplus
}
#endif
#endif

/* In a source file: names the file as the build sees it. */
#define KORBASE_ASSERT(condition) KORBASE_ASSERT_TEXT(__FILE__, condition, #condition)

/* In a public header, which applications compile under a path of their own: `file` is the name in
 * our tree. */
#define KORBASE_ASSERT_IN(file, condition) KORBASE_ASSERT_TEXT(file, condition, #condition)

/* Where the checked expression needs a cast that the printed `text` does not show. */
#define KORBASE_ASSERT_TEXT(file, condition, text) \
    ((condition) ? (void)0 : __assert_fail(text, file, __LINE__, __extension__ __PRETTY_FUNCTION__))

#endif
