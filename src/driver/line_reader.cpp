// The line reader: lines are cut straight out of the stream's buffer, which
// is refilled a block at a time, so a line costs one memchr and one copy.

#include "driver/line_reader.h"

#include <algorithm>
#include <cstring>
#include <streambuf>

namespace {

// The get area of a stream buffer: where its unread characters start and
// end, and how to step over some of them.
struct GetArea : std::streambuf {
    static char* next(std::streambuf* buffer) { return (buffer->*&GetArea::gptr)(); }
    static char* end(std::streambuf* buffer) { return (buffer->*&GetArea::egptr)(); }
    static void skip(std::streambuf* buffer, int count) { (buffer->*&GetArea::gbump)(count); }
};

} // namespace

std::streamsize ibsReadLineCounted(std::istream& in, char* buf, int size)
{
    typedef std::char_traits<char> traits;
    std::streamsize taken = 0;
    std::ios_base::iostate state = std::ios_base::goodbit;
    // A stream that is not good takes nothing, and so fails.
    if (in.good()) {
        std::streambuf* buffer = in.rdbuf();
        int c = buffer->sgetc();
        while (taken + 1 < size && c != traits::eof() && c != '\n') {
            // Take what the buffer holds of this line in one copy; a buffer
            // with a single character left is refilled behind it.
            std::streamsize room = GetArea::end(buffer) - GetArea::next(buffer);
            if (room > size - 1 - taken)
                room = size - 1 - taken;
            if (room > 1) {
                char const* from = GetArea::next(buffer);
                if (void const* lineEnd = std::memchr(from, '\n', static_cast<size_t>(room)))
                    room = static_cast<char const*>(lineEnd) - from;
                std::memcpy(buf, from, static_cast<size_t>(room));
                buf += room;
                taken += room;
                GetArea::skip(buffer, static_cast<int>(room));
                c = buffer->sgetc();
            } else {
                *buf++ = traits::to_char_type(c);
                ++taken;
                c = buffer->snextc();
            }
        }
        if (c == traits::eof()) {
            state |= std::ios_base::eofbit;
        } else if (c == '\n') {
            ++taken;
            buffer->sbumpc();
        } else {
            state |= std::ios_base::failbit;
        }
    }
    if (size > 0)
        *buf = '\0';
    if (taken == 0)
        state |= std::ios_base::failbit;
    if (state != std::ios_base::goodbit)
        in.setstate(state);
    return taken;
}

std::vector<char> ibsLineBuffer(std::string_view line)
{
    line = line.substr(0, line.find('\0'));
    std::vector<char> text(line.begin(), line.end());
    text.push_back('\0');
    return text;
}

std::streamsize ibsSkipPlainLines(std::istream& in, char mark, int size)
{
    if (!in.good())
        return 0;
    std::streambuf* buffer = in.rdbuf();
    if (buffer->sgetc() == std::char_traits<char>::eof())
        return 0;
    char const* const first = GetArea::next(buffer);
    char const* const end = GetArea::end(buffer);
    char const* at = first;
    while (at < end) {
        // A line of size - 1 characters and its line end: size bytes.
        size_t const room = std::min<size_t>(static_cast<size_t>(end - at), static_cast<size_t>(size));
        char const* lineEnd = static_cast<char const*>(std::memchr(at, '\n', room));
        if (lineEnd == nullptr)
            break;
        size_t const length = static_cast<size_t>(lineEnd - at);
        if (std::memchr(at, mark, length) != nullptr || std::memchr(at, '\0', length) != nullptr)
            break;
        at = lineEnd + 1;
    }
    GetArea::skip(buffer, static_cast<int>(at - first));
    return at - first;
}
