/* Wildcards in file names. The function keeps no state: any thread may call it. */
#ifndef KORBASE_SYSTEM_FNAME_H
#define KORBASE_SYSTEM_FNAME_H

#include <korbase_api.h>

#ifdef __cplusplus
extern "C" {
#endif

/* 0 when `name` matches `pattern`, else -1; null counts as "". "?" stands for one character, "*"
 * for any number of them; nothing escapes them, and "/" and "." are characters like others.
 * Kept: a "*" with more pattern behind it needs something left to match: "a**" does not match "a".
 */
KORBASE_API int fname_match(char const* pattern, char const* name);

#ifdef __cplusplus
}
#endif

#endif
