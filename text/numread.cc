#include "text/numread.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>

#include "text/scale_letters.h"

namespace {

constexpr int kEnd = std::istream::traits_type::eof();
constexpr int kMaxText = 128;           // characters of a number that count
constexpr int kMaxExponent = 31;        // characters of an exponent, the sign included
constexpr int kInfiniteExponent = 400;  // 10^400 and beyond are the same

int Peek(std::istream& is) { return is.good() ? is.peek() : kEnd; }

int PeekUpper(std::istream& is) {
    int const c = Peek(is);
    return c == kEnd ? kEnd : std::toupper(c);
}

bool IsDigit(int c) { return c >= '0' && c <= '9'; }

bool TakeSign(std::istream& is) {
    int const c = Peek(is);
    if (c == '+' || c == '-') is.get();
    return c == '-';
}

// The text of the number as strtod takes it.
class NumberText {
public:
    // Takes a run of digits; true when there was one.
    bool TakeDigits(std::istream& is) {
        bool const found = IsDigit(Peek(is));
        while (IsDigit(Peek(is))) Add(static_cast<char>(is.get()));
        return found;
    }
    void Add(char c) {
        if (count < kMaxText) buffer[count++] = c;
    }
    double Value() {
        buffer[count] = '\0';
        return std::strtod(buffer, nullptr);
    }

private:
    char buffer[kMaxText + 1];
    int count = 0;  // of characters
};

// Kept: a word is cut to two characters before it is looked up among the names of numbers, "inf"
// and "min", so it is consumed and never found.
void SkipWord(std::istream& is) {
    char word[3];
    is.get(word, sizeof word);
}

bool TakeNumber(std::istream& is, double& value) {
    int const c = Peek(is);
    if (c == kEnd) return false;
    if (!IsDigit(c) && c != '.') {
        SkipWord(is);
        return false;
    }
    NumberText text;
    bool const whole = text.TakeDigits(is);
    if (!whole) text.Add('0');
    bool fraction = false;
    if (Peek(is) == '.') {
        text.Add(static_cast<char>(is.get()));
        fraction = text.TakeDigits(is);
    }
    value = text.Value();
    return whole || fraction;
}

bool TakeExponent(std::istream& is, double& factor) {
    if (is.good()) is >> std::ws;
    bool const has_sign = Peek(is) == '+' || Peek(is) == '-';
    if (!has_sign && !IsDigit(Peek(is))) return false;
    bool const negative = TakeSign(is);
    int exponent = 0;
    for (int i = has_sign; i < kMaxExponent && IsDigit(Peek(is)); ++i)
        exponent = std::min(exponent * 10 + (is.get() - '0'), kInfiniteExponent);
    double power = 1;
    for (int i = 0; i < exponent; ++i) power *= 10;
    factor = negative ? 1 / power : power;
    return true;
}

// Converts the next character to upper case where it stands.
void MakeUpper(std::istream& is) {
    int const upper = PeekUpper(is);
    if (upper == Peek(is)) return;
    is.get();
    is.putback(static_cast<char>(upper));
}

// What follows an "M": 1e6 for "MEG", 2.54e-5 for "MIL", false for "MEL" and "MIG", else 1e-3.
bool TakeMilliMegaMil(std::istream& is, double& factor) {
    factor = 1e-3;
    int const second = PeekUpper(is);
    if (second != 'E' && second != 'I') {
        MakeUpper(is);
        return true;
    }
    is.get();
    int const third = PeekUpper(is);
    if (third != 'G' && third != 'L') {
        MakeUpper(is);
        return true;
    }
    is.get();
    factor = second == 'E' ? 1e6 : 2.54e-5;
    return (second == 'E') == (third == 'G');
}

bool TakeAnyCaseFactor(std::istream& is, double& factor) {
    int const c = Peek(is);
    if (c == kEnd) return true;
    char const letter = korbase_detail::UpperLetter(static_cast<char>(c));
    double const found = korbase_detail::AnyCaseFactor(letter, 1e-6);
    bool const exponent = letter == 'D' || letter == 'E';
    if (found == 0 && !exponent && letter != 'M') return true;
    is.get();
    if (exponent) return TakeExponent(is, factor);
    if (letter == 'M') return TakeMilliMegaMil(is, factor);
    factor = found;
    return true;
}

bool TakeExactCaseFactor(std::istream& is, double& factor) {
    int const c = Peek(is);
    if (c == kEnd) return true;
    double const found = korbase_detail::ExactCaseFactor(static_cast<char>(c), 1e-6);
    bool const exponent = c == 'D' || c == 'd' || c == 'E' || c == 'e';
    if (found == 0 && !exponent) return true;
    is.get();
    if (exponent) return TakeExponent(is, factor);
    factor = found;
    return true;
}

template <class Real>
std::istream& Read(std::istream& is, Real& out, bool (*take_factor)(std::istream&, double&)) {
    is >> std::ws;
    bool const negative = TakeSign(is);
    double value = 0;
    double factor = 1;
    if (TakeNumber(is, value) && take_factor(is, factor))
        out = static_cast<Real>((negative ? -value : value) * factor);
    else
        is.setstate(std::ios_base::failbit);
    return is;
}

}  // namespace

std::istream& GetDouble(std::istream& is, double& out) { return Read(is, out, TakeAnyCaseFactor); }

std::istream& GetFloat(std::istream& is, float& out) { return Read(is, out, TakeAnyCaseFactor); }

std::istream& GetCDouble(std::istream& is, double& out) {
    return Read(is, out, TakeExactCaseFactor);
}

std::istream& GetCFloat(std::istream& is, float& out) { return Read(is, out, TakeExactCaseFactor); }
