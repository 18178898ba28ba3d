// The factors of the engineering scale letters, as texts and streams of numbers share them.
//
// What follows an exponent letter, and an "M" in the table that disregards case, is the reader's
// business.
#ifndef KORBASE_TEXT_SCALE_LETTERS_H
#define KORBASE_TEXT_SCALE_LETTERS_H

namespace korbase_detail {

// `c` with an unaccented lower-case letter converted to upper case.
constexpr char UpperLetter(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c; }

// The factor of an upper-case letter of the table that disregards case; 0 for any other character.
// `micro` differs between the readers.
template <class Real>
constexpr Real AnyCaseFactor(char letter, Real micro) {
    switch (letter) {
        case 'A': return static_cast<Real>(1e-18);
        case 'F': return static_cast<Real>(1e-15);
        case 'P': return static_cast<Real>(1e-12);
        case 'N': return static_cast<Real>(1e-9);
        case 'U': return micro;
        case 'K': return static_cast<Real>(1e3);
        case 'G': return static_cast<Real>(1e9);
        case 'T': return static_cast<Real>(1e12);
        default: return 0;
    }
}

// The factor of a character of the table where case counts; 0 for any other character.
constexpr double ExactCaseFactor(char c, double micro) {
    switch (c) {
        case 'y': return 1e-24;
        case 'z': return 1e-21;
        case 'a': return 1e-18;
        case 'f': return 1e-15;
        case 'p': return 1e-12;
        case 'n': return 1e-9;
        case 'u': return micro;
        case 'm': return 1e-3;
        case '%': return 0.01;
        case 'k':
        case 'K': return 1e3;
        case 'M': return 1e6;
        case 'G': return 1e9;
        case 'T': return 1e12;
        case 'P': return 1e15;
        case 'Z': return 1e21;
        case 'Y': return 1e24;
        default: return 0;
    }
}

}  // namespace korbase_detail

#endif
