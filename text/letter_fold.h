// The rule of all comparisons that disregard case.
#ifndef KORBASE_TEXT_LETTER_FOLD_H
#define KORBASE_TEXT_LETTER_FOLD_H

#include <cctype>

namespace korbase_detail {

// The difference of two characters: of their upper-case forms when both are letters, else of the
// bytes.
inline int FoldedDifference(char left, char right) {
    auto const a = static_cast<unsigned char>(left);
    auto const b = static_cast<unsigned char>(right);
    if (a == b) return 0;
    if (!std::isalpha(a) || !std::isalpha(b)) return a - b;
    return std::toupper(a) - std::toupper(b);
}

}  // namespace korbase_detail

#endif
