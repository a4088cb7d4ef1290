#include "ibis/ibis_number.h"

#include <cmath>
#include <cstdint>
#include <cstring>

namespace ibis {

namespace {

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool isLetter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

// mantissa * 10^n, correctly rounded for the exponents that numbers of IBIS
// files reach (10^22 is the largest power of ten a double holds exactly).
double scaled(std::uint64_t mantissa, int n)
{
    static const double table[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                   1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                   1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
    double const m = static_cast<double>(mantissa);
    if (n >= 0 && n <= 22)
        return m * table[n];
    if (n < 0 && n >= -22)
        return m / table[-n];
    return m * std::pow(10.0, n);
}

// The ten's exponent of a scale letter.
inline bool scaleOf(char letter, int& exponent)
{
    switch (letter) {
    case 'T': exponent = 12; return true;
    case 'G': exponent = 9; return true;
    case 'M': exponent = 6; return true;
    case 'k': exponent = 3; return true;
    case 'm': exponent = -3; return true;
    case 'u': exponent = -6; return true;
    case 'n': exponent = -9; return true;
    case 'p': exponent = -12; return true;
    case 'f': exponent = -15; return true;
    default: exponent = 0; return false;
    }
}

bool endsField(char c, char comment)
{
    return c == ' ' || c == '\t' || c == comment;
}

// Steps over the rest of a field that is no number.
char const* rejected(char const* p, char const* end, char comment, Number& number)
{
    number.kind = Number::Invalid;
    number.value = 0.0;
    while (p < end && !endsField(*p, comment))
        ++p;
    return p;
}

} // namespace

namespace {

// The mantissa and exponent of digits with more than 19 of them: up to 19
// significant digits go into the mantissa, further ones only move the
// exponent.
void manyDigits(char const* p, char const* end, std::uint64_t& mantissa, int& exponent)
{
    mantissa = 0;
    exponent = 0;
    int significant = 0;
    bool fraction = false;
    for (; p < end; ++p) {
        if (*p == '.') {
            fraction = true;
            continue;
        }
        if (significant < 19) {
            mantissa = mantissa * 10 + static_cast<unsigned>(*p - '0');
            significant += mantissa != 0 ? 1 : 0;
            exponent -= fraction ? 1 : 0;
        } else if (!fraction) {
            ++exponent;
        }
    }
}

} // namespace

namespace {

// The masks and shifts that gather a layout's mantissa digits in one word.
void gatherDigits(NumberLayout& layout)
{
    int const integer = layout.integerDigits;
    layout.integerMask = integer == 8 ? ~0ull : (1ull << (8 * integer)) - 1;
    layout.fractionMask = integer == 8 ? 0 : ~0ull;
    layout.fractionShift = static_cast<unsigned char>(integer == 8 ? 0 : 8 * integer);
    layout.digitsShift = static_cast<unsigned char>(8 * (8 - integer - layout.fractionDigits));
}

} // namespace

char const* scanNumber(char const* p, char const* end, char comment, Number& number, NumberLayout* layout)
{
    char const* const start = p;
    if (layout != nullptr)
        layout->usable = false;
    bool negative = false;
    if (p < end && (*p == '+' || *p == '-'))
        negative = *p++ == '-';

    // Digits, a point, digits: one pass; a mantissa of more than 19 digits
    // (which may have wrapped) is read again with care.
    char const* const digitsStart = p;
    std::uint64_t mantissa = 0;
    int exponent = 0;
    while (p < end && isDigit(*p))
        mantissa = mantissa * 10 + static_cast<unsigned>(*p++ - '0');
    char const* const integerEnd = p;
    std::ptrdiff_t digits = p - digitsStart;
    char const* fraction = p;
    if (p < end && *p == '.') {
        fraction = ++p;
        while (p < end && isDigit(*p))
            mantissa = mantissa * 10 + static_cast<unsigned>(*p++ - '0');
        exponent = -static_cast<int>(p - fraction);
        digits += p - fraction;
    }
    int const fractionDigits = -exponent;
    if (digits == 0) {
        // "NA", in any case, is the one field without digits that counts.
        if (end - start >= 2 && (start[0] == 'N' || start[0] == 'n') &&
            (start[1] == 'A' || start[1] == 'a') &&
            (end - start == 2 || endsField(start[2], comment))) {
            number.kind = Number::NotAvailable;
            number.value = 0.0;
            return start + 2;
        }
        return rejected(p, end, comment, number);
    }
    if (digits > 19)
        manyDigits(digitsStart, p, mantissa, exponent);

    // An exponent: "e" or "E", a sign maybe, and digits. An "e" that is not
    // followed by digits is unit text ("1e" reads as 1).
    bool negativeExponent = false;
    char const* exponentDigits = p;
    char const* exponentEnd = p;
    if (p < end && (*p == 'e' || *p == 'E')) {
        char const* q = p + 1;
        if (q < end && (*q == '+' || *q == '-'))
            negativeExponent = *q++ == '-';
        if (q < end && isDigit(*q)) {
            exponentDigits = q;
            int value = 0;
            for (; q < end && isDigit(*q); ++q)
                value = value < 10000 ? value * 10 + (*q - '0') : value;
            exponent += negativeExponent ? -value : value;
            p = exponentEnd = q;
        } else if (q != p + 1) {
            return rejected(q, end, comment, number); // "1e+": a sign of nothing
        }
    }

    int scale = 0;
    if (p < end && scaleOf(*p, scale))
        ++p;
    for (; p < end && !endsField(*p, comment); ++p)
        if (!isLetter(*p))
            return rejected(p, end, comment, number);

    number.kind = Number::Value;
    double const magnitude = scaled(mantissa, exponent + scale);
    number.value = negative ? -magnitude : magnitude;
    if (layout != nullptr && digits <= 8 && exponentEnd - exponentDigits <= 4 && p - start <= 255) {
        layout->usable = true;
        layout->negative = negative;
        layout->negativeExponent = negativeExponent;
        layout->integerAt = static_cast<unsigned char>(digitsStart - start);
        layout->integerDigits = static_cast<unsigned char>(integerEnd - digitsStart);
        layout->fractionAt = static_cast<unsigned char>(fraction - start);
        layout->fractionDigits = static_cast<unsigned char>(fractionDigits);
        layout->exponentAt = static_cast<unsigned char>(exponentDigits - start);
        layout->exponentDigits = static_cast<unsigned char>(exponentEnd - exponentDigits);
        layout->exponent = scale - fractionDigits;
        gatherDigits(*layout);
    }
    return p;
}

namespace {

// The value of eight ASCII digits in the bytes of v, the first digit in
// the lowest byte; zero bytes ahead of the digits read as leading zeros.
std::uint64_t eightDigits(std::uint64_t v)
{
    v = (v & 0x0F0F0F0F0F0F0F0Full) * 2561 >> 8;
    v = (v & 0x00FF00FF00FF00FFull) * 6553601 >> 16;
    return (v & 0x0000FFFF0000FFFFull) * 42949672960001ull >> 32;
}

std::uint64_t loadWord(char const* p)
{
    std::uint64_t w;
    std::memcpy(&w, p, sizeof w);
    return w;
}

} // namespace

double readLaidOut(char const* p, NumberLayout const& layout)
{
    std::uint64_t mantissa;
#if defined(__BYTE_ORDER__) && __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__
    std::uint64_t const digits = (loadWord(p + layout.integerAt) & layout.integerMask) |
                                 (loadWord(p + layout.fractionAt) & layout.fractionMask) << layout.fractionShift;
    mantissa = eightDigits(digits << layout.digitsShift);
#else
    mantissa = 0;
    for (char const *d = p + layout.integerAt, *e = d + layout.integerDigits; d < e; ++d)
        mantissa = mantissa * 10 + static_cast<unsigned>(*d - '0');
    for (char const *d = p + layout.fractionAt, *e = d + layout.fractionDigits; d < e; ++d)
        mantissa = mantissa * 10 + static_cast<unsigned>(*d - '0');
#endif
    int exponent = 0;
    for (char const *d = p + layout.exponentAt, *e = d + layout.exponentDigits; d < e; ++d)
        exponent = exponent * 10 + (*d - '0');
    double const magnitude =
        scaled(mantissa, layout.exponent + (layout.negativeExponent ? -exponent : exponent));
    return layout.negative ? -magnitude : magnitude;
}

Number parseNumber(std::string_view field)
{
    Number number;
    char const* const end = field.data() + field.size();
    if (scanNumber(field.data(), end, '\0', number) != end)
        number.kind = Number::Invalid; // a blank inside the field
    return number;
}

} // namespace ibis
