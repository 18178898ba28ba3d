// The value of a run of digits d[n-1] ... d[1] d[0] is defined by a chain of fused multiply-adds
// from the last digit backwards:  v = d[0];  v = fma(d[k], 10^k, v)  for k = 1, 2, ...  with 10^k
// as a running product. As long as v and 10^k are exact the chain is plain integer arithmetic, so
// the low digits of a run (all of them, nearly always) are collected in an integer and only what
// lies in front of them takes the chain.
#include "text/str_number.h"

#include <array>
#include <cctype>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>

#include "text/scale_letters.h"

namespace {

constexpr int kMaxDigits = 32;         // of one part of a number
constexpr int kMaxIntegerDigits = 16;  // of str_toint

// base^0 to base^32, each made from the one before.
template <class Real>
constexpr std::array<Real, kMaxDigits + 1> RunningProducts(Real base) {
    std::array<Real, kMaxDigits + 1> products{};
    products[0] = 1;
    for (int i = 1; i <= kMaxDigits; ++i) products[i] = products[i - 1] * base;
    return products;
}

template <class Real>
constexpr auto kPowers = RunningProducts<Real>(10);
template <class Real>
constexpr auto kTenths = RunningProducts<Real>(static_cast<Real>(0.1));

// Digits whose value, partial sums and powers of ten are all exact in the type.
template <class Real>
constexpr int kExactDigits = std::numeric_limits<Real>::digits10;

template <class Real>
constexpr Real kMicro = static_cast<Real>(1e-6);
template <>
constexpr double kMicro<double> = 1.000000000000001e-06;

bool IsSpace(char c) {
    auto const byte = static_cast<unsigned char>(c);
    return byte < 0x80 ? byte == ' ' || (byte >= '\t' && byte <= '\r') : std::isspace(byte) != 0;
}

unsigned DigitValue(char c) { return static_cast<unsigned char>(c) - unsigned{'0'}; }

bool IsDigit(char c) { return DigitValue(c) < 10; }

char const* SkipSpace(char const* p) {
    while (IsSpace(*p)) ++p;
    return p;
}

// Steps over a sign; true when it is a minus.
bool TakeSign(char const*& p) {
    bool const negative = *p == '-';
    if (negative || *p == '+') ++p;
    return negative;
}

std::uint64_t IntegerOf(char const* digits, char const* end) {
    std::uint64_t value = 0;
    for (; digits < end; ++digits) value = value * 10 + DigitValue(*digits);
    return value;
}

// One part of a number, before or behind the point.
struct Digits {
    char const* first;
    char const* end;
    std::uint64_t integer;  // the value, when it fits

    bool IsPresent() const { return end != first && end - first <= kMaxDigits; }
    int Count() const { return static_cast<int>(end - first); }
};

Digits TakeDigits(char const*& p) {
    Digits digits{p, p, 0};
    for (; IsDigit(*p); ++p) digits.integer = digits.integer * 10 + DigitValue(*p);
    digits.end = p;
    return digits;
}

template <class Real>
Real ValueOf(Digits const& digits) {
    constexpr int exact = kExactDigits<Real>;
    if (digits.Count() <= exact)
        return static_cast<Real>(static_cast<std::int64_t>(digits.integer));
    char const* p = digits.end - exact;
    auto value = static_cast<Real>(static_cast<std::int64_t>(IntegerOf(p, digits.end)));
    for (int k = exact; p != digits.first; ++k)
        value = std::fma(static_cast<Real>(DigitValue(*--p)), kPowers<Real>[k], value);
    return value;
}

// 10^exponent as a running product of 10 or 0.1.
template <class Real>
Real PowerOfTen(int exponent) {
    auto const& products = exponent < 0 ? kTenths<Real> : kPowers<Real>;
    unsigned const bits = static_cast<unsigned>(exponent);
    unsigned const count = exponent < 0 ? 0 - bits : bits;
    if (count <= kMaxDigits) return products[count];
    Real power = products[kMaxDigits];
    for (unsigned i = kMaxDigits; i < count && power != 0 && std::isfinite(power); ++i)
        power *= products[1];
    return power;
}

// Reads the exponent behind the letter at `p`; false when there is none.
template <class Real>
bool TakeExponent(char const*& p, Real& factor) {
    int exponent = 0;
    int const count = str_toint(p + 1, &exponent);
    if (count == 0) return false;
    p += 1 + count;
    factor = PowerOfTen<Real>(exponent);
    return true;
}

// Each table steps over the letter at `p`, if it has it, and sets the factor; false for a broken
// exponent.
struct AnyCase {
    template <class Real>
    static bool TakeFactor(char const*& p, Real& factor) {
        using korbase_detail::UpperLetter;
        char const letter = UpperLetter(*p);
        if (letter == 'D' || letter == 'E') return TakeExponent(p, factor);
        if (letter == 'M') {
            bool const mega = UpperLetter(p[1]) == 'E' && UpperLetter(p[2]) == 'G';
            factor = static_cast<Real>(mega ? 1e6 : 1e-3);
            p += mega ? 3 : 1;
        } else if (Real const found = korbase_detail::AnyCaseFactor(letter, kMicro<Real>);
                   found != 0) {
            factor = found;
            ++p;
        }
        return true;
    }
};

struct ExactCase {
    static bool TakeFactor(char const*& p, double& factor) {
        if (korbase_detail::UpperLetter(*p) == 'D' || korbase_detail::UpperLetter(*p) == 'E')
            return TakeExponent(p, factor);
        double const found = korbase_detail::ExactCaseFactor(*p, kMicro<double>);
        if (found != 0) {
            factor = found;
            ++p;
        }
        return true;
    }
};

// Takes "inf" or "min" when nothing follows.
template <class Real>
bool TakeName(char const*& p, Real& value) {
    if (*p != 'i' && *p != 'm') return false;
    if (std::strcmp(p, "inf") == 0)
        value = std::numeric_limits<Real>::max();
    else if (std::strcmp(p, "min") == 0)
        value = std::numeric_limits<Real>::min();
    else
        return false;
    p += 3;
    return true;
}

template <class Real>
bool TakeParts(char const*& p, Real& value) {
    Digits const whole = TakeDigits(p);
    value = whole.IsPresent() ? ValueOf<Real>(whole) : 0;
    if (*p != '.') return whole.IsPresent();
    ++p;
    Digits const fraction = TakeDigits(p);
    if (!fraction.IsPresent()) return whole.IsPresent();
    value += ValueOf<Real>(fraction) / kPowers<Real>[fraction.Count()];
    return true;
}

template <class Table, class Real>
int ToNumber(char const* text, Real* out) {
    if (!text) return 0;
    char const* p = SkipSpace(text);
    bool const negative = TakeSign(p);
    Real value = 0;
    Real factor = 1;
    if (!TakeName(p, value) && !(TakeParts(p, value) && Table::TakeFactor(p, factor))) return 0;
    *out = (negative ? -value : value) * factor;
    return static_cast<int>(p - text);
}

}  // namespace

int str_toint(char const* text, int* out) {
    if (!text) return 0;
    char const* p = SkipSpace(text);
    bool const negative = TakeSign(p);
    Digits const digits = TakeDigits(p);
    if (digits.end == digits.first || digits.end - digits.first > kMaxIntegerDigits) return 0;
    auto const value = static_cast<std::uint32_t>(digits.integer);
    *out = static_cast<int>(negative ? 0 - value : value);
    return static_cast<int>(p - text);
}

int str_tofloat(char const* text, float* out) { return ToNumber<AnyCase>(text, out); }

int str_tofloat_(char const* text, float* out) { return str_tofloat(text, out); }

int str_todouble(char const* text, double* out) { return ToNumber<AnyCase>(text, out); }

int str_ctodouble(char const* text, double* out) { return ToNumber<ExactCase>(text, out); }

long str_tolong(char const* text) { return std::strtol(text, nullptr, 10); }
