// Output gathered into large pieces on 64 KB boundaries of the file.

#include "writer/bulk_output.h"

#include <algorithm>
#include <cstring>
#include <ios>

namespace {

constexpr long long kBoundary = 64 * 1024;
constexpr size_t kCapacity = 4 * kBoundary;

// Where `file` stands, what it holds unwritten included. A file that
// cannot tell counts from 0, which only costs speed.
long long offsetOf(std::streambuf& file)
{
    std::streamoff const at = file.pubseekoff(0, std::ios::cur, std::ios::out);
    return at < 0 ? 0 : static_cast<long long>(at);
}

} // namespace

BulkOutputBuffer::BulkOutputBuffer(std::streambuf& file, long long at) : _file(file), _buffer(kCapacity), _at(at)
{
    setp(_buffer.data(), _buffer.data() + _buffer.size());
}

bool BulkOutputBuffer::drain(bool everything)
{
    std::streamsize const held = pptr() - pbase();
    std::streamsize count = held;
    if (!everything)
        count -= static_cast<std::streamsize>((_at + held) % kBoundary);
    if (count <= 0)
        return true;
    bool const whole = _file.sputn(pbase(), count) == count;
    std::memmove(pbase(), pbase() + count, static_cast<size_t>(held - count));
    setp(_buffer.data(), _buffer.data() + _buffer.size());
    pbump(static_cast<int>(held - count));
    _at += count;
    return whole;
}

BulkOutputBuffer::int_type BulkOutputBuffer::overflow(int_type c)
{
    if (!drain(false))
        return traits_type::eof();
    if (traits_type::eq_int_type(c, traits_type::eof()))
        return traits_type::not_eof(c);
    *pptr() = traits_type::to_char_type(c);
    pbump(1);
    return c;
}

std::streamsize BulkOutputBuffer::xsputn(char const* text, std::streamsize count)
{
    std::streamsize done = 0;
    while (done < count) {
        if (pptr() == epptr() && !drain(false))
            break;
        std::streamsize const room = std::min<std::streamsize>(epptr() - pptr(), count - done);
        std::memcpy(pptr(), text + done, static_cast<size_t>(room));
        pbump(static_cast<int>(room));
        done += room;
    }
    return done;
}

int BulkOutputBuffer::sync()
{
    return drain(true) && _file.pubsync() == 0 ? 0 : -1;
}

BulkOutputScope::BulkOutputScope(std::ostream& out)
    : _out(out), _file(out.rdbuf()), _bulk(*_file, offsetOf(*_file))
{
    std::ios::iostate const state = _out.rdstate();
    _out.rdbuf(&_bulk);
    _out.clear(state);
}

BulkOutputScope::~BulkOutputScope()
{
    std::ios::iostate state = _out.rdstate();
    if (_bulk.pubsync() != 0)
        state |= std::ios::badbit;
    _out.rdbuf(_file);
    _out.clear(state);
}
