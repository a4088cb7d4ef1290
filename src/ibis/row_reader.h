#ifndef PAD2IBIS_IBIS_ROW_READER_H
#define PAD2IBIS_IBIS_ROW_READER_H

// The rows of a table taken in bulk, beside the model reader that reads a
// file line by line. Nearly all lines of a large IBIS file are rows of
// tables written alike: a row is read field by field once, as the model
// reader reads it, and each row behind it that differs from it only in its
// digits (checked eight bytes at a time) reuses its fields and kinds, so
// that only its values are read, from the digits alone. The rows come out
// as the model reader's feed() would give them.

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "ibis/model_reader.h"

namespace ibis {

class RowReader {
public:
    // Takes in one go the lines at the front of text, the first of them line
    // number `first`, that the reader's feed() would read as rows of its
    // open section, with the same rows: each whole (ended by its LF),
    // holding no "[" and at most `longest` bytes with its CR. Stops ahead of
    // the first other line. Returns the bytes taken, and in lines how many
    // lines. The comment character is the one that feed() got; it changes
    // only at a [Comment Char] line, which no block holds.
    std::size_t take(ModelReader& reader, std::string_view text, int first, char comment, std::size_t longest,
                     int& lines);

private:
    bool matches(char const* p) const;
    // Reads the lines at p that match the pattern, up to end; tells where
    // it stopped and counts the lines, the first numbered first + lines.
    char const* readMatching(ModelReader& reader, char const* p, char const* end, int first, char comment,
                             int& lines);
    void keep(char const* text, std::size_t size, bool crlf, ModelReader::RowLayout const& layout);

    // The last row read field by field, as a pattern of its bytes with every
    // digit read as "0". A line of the same pattern has its fields at the
    // same places and of the same kinds (its numbers differ in digits only),
    // so only the values that rows keep are read.
    static constexpr std::size_t kPatternWords = 32; // lines of up to 256 bytes with their end
    struct Pattern {
        bool valid = false;
        unsigned section = 0; // the reader's section it was read in
        std::size_t size = 0; // of the text, without the line end
        bool crlf = false;
        std::size_t words = 0;
        std::uint64_t text[kPatternWords];  // 8 bytes a word, digits as "0", the line end included
        std::uint64_t limit[kPatternWords]; // per byte 0x89 at a digit, 0x80 elsewhere
        std::uint64_t lastUsed = 0;         // per byte of the last word 0x80 within the line
        ModelReader::RowLayout layout;
        Row row; // the row read: fields and kinds
    } _pattern;
};

} // namespace ibis

#endif
