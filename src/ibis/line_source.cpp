#include "ibis/line_source.h"

#include <cstring>

namespace ibis {

LineSource::LineSource(std::istream& in, int firstNumber)
    : _in(in), _buffer(kBufferSize), _number(firstNumber - 1)
{
}

void LineSource::refill()
{
    if (_begin > 0) {
        std::memmove(_buffer.data(), _buffer.data() + _begin, _end - _begin);
        _end -= _begin;
        _begin = 0;
    }
    _end += read(_end);
}

std::size_t LineSource::read(std::size_t at)
{
    if (_atEnd)
        return 0;
    _in.read(_buffer.data() + at, static_cast<std::streamsize>(_buffer.size() - at));
    std::size_t const got = static_cast<std::size_t>(_in.gcount());
    if (!_in) {
        _atEnd = true;
        _failed = _in.bad();
    }
    return got;
}

bool LineSource::take(Line& line, std::size_t size, bool ended)
{
    char const* const from = _buffer.data() + _begin;
    line.number = ++_number;
    line.ended = ended;
    line.crlf = ended && size > 0 && from[size - 1] == '\r';
    line.text = std::string_view(from, size - (line.crlf ? 1 : 0));
    line.length = line.text.size();
    _begin += size + (ended ? 1 : 0);
    return true;
}

bool LineSource::takeLong(Line& line)
{
    // The buffer holds the line's first bytes and no LF. Its first kKept
    // bytes stay as the text; the rest of the line is read over behind them.
    std::size_t skipped = _end - kKept;
    char last = _buffer[_end - 1];
    _begin = _end = kKept;
    line.number = ++_number;
    line.ended = false;
    line.crlf = false;
    for (;;) {
        std::size_t const got = read(kKept);
        if (got == 0)
            break;
        char const* const from = _buffer.data() + kKept;
        char const* const lf = static_cast<char const*>(std::memchr(from, '\n', got));
        if (lf == nullptr) {
            skipped += got;
            last = from[got - 1];
            continue;
        }
        std::size_t const ahead = static_cast<std::size_t>(lf - from);
        skipped += ahead;
        last = ahead > 0 ? lf[-1] : last;
        line.ended = true;
        line.crlf = last == '\r';
        _begin = kKept + ahead + 1;
        _end = kKept + got;
        break;
    }
    line.text = std::string_view(_buffer.data(), kKept - (line.crlf && skipped == 0 ? 1 : 0));
    line.length = kKept + skipped - (line.crlf ? 1 : 0);
    return true;
}

bool LineSource::next(Line& line)
{
    for (;;) {
        char const* const from = _buffer.data() + _begin;
        std::size_t const have = _end - _begin;
        char const* const lf =
            have == 0 ? nullptr : static_cast<char const*>(std::memchr(from, '\n', have));
        if (lf != nullptr)
            return take(line, static_cast<std::size_t>(lf - from), true);
        if (_atEnd)
            return have > 0 && take(line, have, false);
        if (have == _buffer.size())
            return takeLong(line);
        refill();
    }
}

} // namespace ibis
