#include "system/fname.h"

// When a piece between two "*" fits at several places, the first one leaves the most for the rest,
// so only the last "*" is ever tried again: the time is at most the product of the lengths.
int fname_match(char const* pattern, char const* name) {
    if (!pattern) pattern = "";
    if (!name) name = "";
    char const* piece = nullptr;  // of the pattern, behind the last "*"
    char const* place = nullptr;  // where in the name it is tried
    for (;;) {
        if (*pattern == '*') {
            if (*++pattern == '\0') return 0;
            if (*name == '\0') return -1;
            piece = pattern;
            place = name;
        } else if (*name == '\0') {
            return *pattern == '\0' ? 0 : -1;
        } else if (*pattern == '?' || *pattern == *name) {
            ++pattern;
            ++name;
        } else if (piece) {
            pattern = piece;
            name = ++place;
        } else {
            return -1;
        }
    }
}
