/* Searching texts and cutting them into tokens.
 *
 * Positions count from 1; 0 means not found. Forms with a length take characters that need no
 * terminator and never read past it; the others take terminated texts. Names with an `i` disregard
 * case as str_icmp does. Null texts contain nothing and are contained in nothing. The functions
 * keep no state: any thread may call them. */
#ifndef KORBASE_TEXT_STR_SEARCH_H
#define KORBASE_TEXT_STR_SEARCH_H

#include <korbase_api.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Whether the character `c`, given as an unsigned byte, is meant: isspace and its like fit. */
typedef int (*str_pred_t)(int c);

/* The first character for which `pred` is true; null when there is none. The two names are the
 * same. */
KORBASE_API char* str_FindC(char const* text, str_pred_t pred);
KORBASE_API char* str_FindCN(char const* text, str_pred_t pred);

/* The first position of the `sublen` characters of `sub` within the `slen` characters of `s`;
 * 0 when there is none or slen < 1. With sublen = 0 it is 1. */
KORBASE_API int str_index(char const* s, int slen, char const* sub, int sublen);
KORBASE_API int str_iindex(char const* s, int slen, char const* sub, int sublen);

/* The first position of `sub` in `s`; 0 when there is none or `s` is empty, 1 for an empty `sub`.
 */
KORBASE_API int str_indx(char const* s, char const* sub);
KORBASE_API int str_iindx(char const* s, char const* sub);

/* 1 when `s` continues with `sub` at position `pos`, else 0. An empty `sub` gives 1 at any
 * position, otherwise a position outside the text gives 0. */
KORBASE_API int str_cont(int pos, char const* s, char const* sub);
KORBASE_API int str_icont(int pos, char const* s, char const* sub);
/* The same for the `slen` characters of `s` and the `sublen` of `sub`; 0 when sublen < 0. */
KORBASE_API int str_ncont(int pos, char const* s, int slen, char const* sub, short sublen);
KORBASE_API int str_nicont(int pos, char const* s, int slen, char const* sub, short sublen);

/* The next token of a text, or null when there are no more; `*cursor` is the place to go on from.
 * To begin, call it with a null `issep`: it stores `text` in the cursor and returns null. Later
 * calls do not look at `text`; they skip separators and put a terminator over the one behind the
 * token. */
KORBASE_API char* str_Tok(char** cursor, char* text, str_pred_t issep);

/* Cuts `text` in place into tokens and stores them and a final null in `tokens`, which has room
 * for one more than there are tokens. Returns their number. */
KORBASE_API int str_split(char* text, str_pred_t issep, char** tokens);

#ifdef __cplusplus
}
#endif

#endif
