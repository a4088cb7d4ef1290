#ifndef PAD2IBIS_IBIS_LINE_SOURCE_H
#define PAD2IBIS_IBIS_LINE_SOURCE_H

// Lines of an IBIS file, read through one fixed buffer, so that memory stays
// the same for a file of any size. A line ends at LF; a CR right ahead of the
// LF belongs to the line end (files written on Windows), a CR anywhere else
// is part of the text.

#include <cstddef>
#include <istream>
#include <string_view>
#include <vector>

namespace ibis {

struct Line {
    int number = 0;        // 1 is the first line of the file
    std::string_view text; // without its line end; cut short for a line longer
                           // than LineSource::kKept (see length)
    std::size_t length = 0; // the whole length of the line, without its end
    bool crlf = false;      // ended with CR LF
    bool ended = false;     // ended with LF (false for a last line without one)
};

class LineSource {
public:
    static constexpr std::size_t kBufferSize = 256 * 1024;
    // A longer line keeps this many bytes in `text`; `length` tells the rest.
    static constexpr std::size_t kKept = 64 * 1024;

    // The stream's next line gets the number firstNumber: a reading that
    // starts inside a file counts on from the lines ahead of it.
    explicit LineSource(std::istream& in, int firstNumber = 1);

    // The next line. The text stays valid until the next call. False at the
    // end of the file or when the stream fails.
    bool next(Line& line);

    // True when reading stopped on a stream failure rather than at the end
    // of the file.
    bool failed() const { return _failed; }

    // For a reader that takes many lines in one go: the bytes read ahead of
    // the next line (whole lines, then maybe the start of one; empty when
    // next() has to read on), and the number of the last line handed out.
    std::string_view ahead() const { return std::string_view(_buffer.data() + _begin, _end - _begin); }
    int lastNumber() const { return _number; }
    // Steps over the first `bytes` bytes of ahead(), which hold `lines`
    // whole lines, each with its LF.
    void skip(std::size_t bytes, int lines)
    {
        _begin += bytes;
        _number += lines;
    }

private:
    // Moves what is left of the buffer to its front and reads more behind it.
    void refill();
    // Reads into the buffer from `at` to its end; tells how much came.
    std::size_t read(std::size_t at);
    // Hands out the line of `size` bytes at the buffer's front.
    bool take(Line& line, std::size_t size, bool ended);
    // Hands out a line longer than the buffer, cut to kKept bytes.
    bool takeLong(Line& line);

    std::istream& _in;
    std::vector<char> _buffer;
    std::size_t _begin = 0, _end = 0;
    bool _atEnd = false, _failed = false;
    int _number = 0;
};

} // namespace ibis

#endif
