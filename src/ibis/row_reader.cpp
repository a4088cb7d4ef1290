#include "ibis/row_reader.h"

#include <cstring>

#include "ibis/ibis_syntax.h"

namespace ibis {

namespace {

std::uint64_t const kHighBits = 0x8080808080808080ull;
std::uint64_t const kZeros = 0x3030303030303030ull; // "0" in every byte
std::uint64_t const kNines = 0x7676767676767676ull; // 0x7F - 9: carries into the high bit above 9

std::uint64_t word(char const* p)
{
    std::uint64_t w;
    std::memcpy(&w, p, sizeof w);
    return w;
}

} // namespace

void RowReader::keep(char const* text, std::size_t size, bool crlf, ModelReader::RowLayout const& layout)
{
    // The line with its line end, so that a line matches it only whole.
    std::size_t const bytes = size + (crlf ? 2 : 1);
    _pattern.valid = bytes <= kPatternWords * 8;
    if (!_pattern.valid)
        return;
    _pattern.size = size;
    _pattern.crlf = crlf;
    _pattern.words = (bytes + 7) / 8;
    _pattern.layout = layout;
    for (std::size_t w = 0; w < _pattern.words; ++w) {
        char eight[8] = {0, 0, 0, 0, 0, 0, 0, 0};
        std::size_t const have = bytes - w * 8 < 8 ? bytes - w * 8 : 8;
        std::memcpy(eight, text + w * 8, have);
        // Per byte: y = byte ^ "0" is at most 9 for a digit.
        std::uint64_t const y = word(eight) ^ kZeros;
        std::uint64_t const digits = ~(((y & ~kHighBits) + kNines) | y) & kHighBits;
        std::uint64_t const spread = (digits >> 7) * 0xFF;
        _pattern.text[w] = (word(eight) & ~spread) | (kZeros & spread);
        _pattern.limit[w] = kHighBits | (digits >> 7) * 9;
        _pattern.lastUsed = have == 8 ? kHighBits : kHighBits >> (8 * (8 - have));
    }
}

// The line at p has the pattern's bytes, but for a digit where the pattern
// has one; at least words * 8 bytes may be read at p.
bool RowReader::matches(char const* p) const
{
    // Per byte y = byte ^ pattern byte, which must not exceed 9 at a digit
    // and must be 0 elsewhere: (0x80 + limit) - y keeps its high bit
    // exactly when y is within the limit. The last word may hold bytes of
    // the next line.
    std::size_t const last = _pattern.words - 1;
    std::uint64_t bad = 0;
    for (std::size_t w = 0; w < last; ++w) {
        std::uint64_t const y = word(p + w * 8) ^ _pattern.text[w];
        bad |= ~(_pattern.limit[w] - (y & ~kHighBits)) | y;
    }
    std::uint64_t const y = word(p + last * 8) ^ _pattern.text[last];
    bad |= (~(_pattern.limit[last] - (y & ~kHighBits)) | y) & _pattern.lastUsed;
    return (bad & kHighBits) == 0;
}

char const* RowReader::readMatching(ModelReader& reader, char const* p, char const* end, int first, char comment,
                                    int& lines)
{
    // What stays the same from line to line, held apart from the rows, which
    // the compiler would have to reread behind every row written.
    std::vector<Row>& rows = *reader.openRows();
    Row const same = _pattern.row;
    ModelReader::RowLayout const layout = _pattern.layout;
    std::size_t const size = _pattern.size;
    std::size_t const step = size + (_pattern.crlf ? 2 : 1);
    int const fields = same.fields < 4 ? same.fields : 4;
    int const read = reader.keepsEveryValue() ? fields : (fields > 0 ? 1 : 0);
    std::size_t const room = _pattern.words * 8 + 16; // for the words of the line and of its numbers
    while (static_cast<std::size_t>(end - p) >= room && matches(p)) {
        rows.push_back(same);
        Row& row = rows.back();
        row.line = first + lines;
        for (int i = 0; i < read; ++i)
            if (layout.numbers[i].usable)
                row.cells[i].value = readLaidOut(p + layout.starts[i], layout.numbers[i]);
            else if (row.cells[i].kind == Number::Value)
                scanNumber(p + layout.starts[i], p + size, comment, row.cells[i]);
        p += step;
        ++lines;
    }
    return p;
}

std::size_t RowReader::take(ModelReader& reader, std::string_view text, int first, char comment, std::size_t longest,
                            int& lines)
{
    lines = 0;
    std::vector<Row>* const rows = reader.openRows();
    if (rows == nullptr)
        return 0;
    // A pattern read in another section stands for other rows.
    if (_pattern.section != reader.sectionSerial())
        _pattern.valid = false;
    char const* const begin = text.data();
    char const* const end = begin + text.size();
    char const* p = begin;
    if (_pattern.size + (_pattern.crlf ? 1 : 0) > longest)
        _pattern.valid = false;
    for (;;) {
        if (_pattern.valid)
            p = readMatching(reader, p, end, first, comment, lines);
        // A line of another pattern, read field by field: it gives the
        // pattern of the lines behind it. Lines of words, comment lines and
        // blank lines are told by their first byte that is no blank.
        char const* q = p;
        while (q < end && (*q == ' ' || *q == '\t'))
            ++q;
        if (q == end || *q == comment || *q == '\n' || *q == '[' ||
            (*q == '\r' && q + 1 < end && q[1] == '\n') ||
            isWordLine(std::string_view(q, static_cast<std::size_t>(end - q)), comment))
            break; // feed() reads it
        char const* const lf = static_cast<char const*>(std::memchr(q, '\n', static_cast<std::size_t>(end - q)));
        if (lf == nullptr)
            break;
        std::size_t const bytes = static_cast<std::size_t>(lf - p);
        if (bytes > longest || std::memchr(q, '[', static_cast<std::size_t>(lf - q)) != nullptr)
            break;
        bool const crlf = lf[-1] == '\r';
        char const* const textEnd = lf - (crlf ? 1 : 0);
        ModelReader::RowLayout layout;
        reader.readRow(q, textEnd, comment, first + lines, p, &layout);
        keep(p, static_cast<std::size_t>(textEnd - p), crlf, layout);
        _pattern.section = reader.sectionSerial();
        _pattern.row = rows->back();
        p = lf + 1;
        ++lines;
    }
    if (lines > 0)
        reader.rowsTaken(first + lines - 1);
    return static_cast<std::size_t>(p - begin);
}

} // namespace ibis
