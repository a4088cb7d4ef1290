#include "ibis/ibis_number.h"

#include <cmath>
#include <cstdint>

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

} // namespace

bool scaleExponent(char letter, int& exponent)
{
    return scaleOf(letter, exponent);
}

namespace {

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

char const* scanNumber(char const* p, char const* end, char comment, Number& number)
{
    char const* const start = p;
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
    std::ptrdiff_t digits = p - digitsStart;
    if (p < end && *p == '.') {
        char const* const fraction = ++p;
        while (p < end && isDigit(*p))
            mantissa = mantissa * 10 + static_cast<unsigned>(*p++ - '0');
        exponent = -static_cast<int>(p - fraction);
        digits += p - fraction;
    }
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
    if (p < end && (*p == 'e' || *p == 'E')) {
        char const* q = p + 1;
        bool negativeExponent = false;
        if (q < end && (*q == '+' || *q == '-'))
            negativeExponent = *q++ == '-';
        if (q < end && isDigit(*q)) {
            int value = 0;
            for (; q < end && isDigit(*q); ++q)
                value = value < 10000 ? value * 10 + (*q - '0') : value;
            exponent += negativeExponent ? -value : value;
            p = q;
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
    return p;
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
