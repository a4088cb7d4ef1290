#ifndef PAD2IBIS_IBIS_IBIS_NUMBER_H
#define PAD2IBIS_IBIS_IBIS_NUMBER_H

// Numbers as IBIS writes them: plain or exponent form, then at most one
// scale letter (T G M k m u n p f), then unit text that is ignored
// ("1.23pF", "3.0V", "100mA", "-2.5E-03"). "NA" stands for a value that is
// not available.

#include <cstdint>
#include <string_view>

namespace ibis {

struct Number {
    enum Kind : unsigned char { Value, NotAvailable, Invalid };
    Kind kind = Invalid;
    double value = 0.0;

    bool isValue() const { return kind == Value; }
};

// Reads one field, which holds no blank. Anything that is neither a number
// in the form above nor "NA" (any case) is Invalid: a field without digits,
// a second point, an exponent without digits where no unit can stand ("1e+"),
// or a character after the number that is not a letter ("1.0,", "2/3").
Number parseNumber(std::string_view field);

// Where the digits of a number field stand, as scanNumber() found them, and
// what they stand for. A field that differs from that one in its digits
// only (every other byte alike) is a value too, and readLaidOut() gives the
// value that scanNumber() would, looking at its digits alone.
struct NumberLayout {
    bool usable = false; // a value of at most 8 mantissa and 4 exponent digits
    bool negative = false;
    bool negativeExponent = false;
    unsigned char integerAt = 0, integerDigits = 0; // ahead of the point
    unsigned char fractionAt = 0, fractionDigits = 0; // behind it
    unsigned char exponentAt = 0, exponentDigits = 0;
    int exponent = 0; // of the fraction's digits and the scale letter
    // The mantissa's digits gathered in one word, the first in its lowest
    // byte: the word at integerAt masked, the word at fractionAt masked and
    // shifted in behind it, and the whole shifted up to drop the bytes
    // behind the last digit.
    std::uint64_t integerMask = 0, fractionMask = 0;
    unsigned char fractionShift = 0, digitsShift = 0;
};

// Reads the field that starts at p, up to the first blank, tab or comment
// character or `end`, as parseNumber does, and tells where it stopped.
// With layout, also where its digits stand.
char const* scanNumber(char const* p, char const* end, char comment, Number& number,
                       NumberLayout* layout = nullptr);

// The value of the field at p, laid out as `layout` says (which is
// usable). Reads eight bytes from p + integerAt and from p + fractionAt,
// whatever stands behind the field.
double readLaidOut(char const* p, NumberLayout const& layout);

} // namespace ibis

#endif
