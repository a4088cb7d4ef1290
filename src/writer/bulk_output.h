#ifndef PAD2IBIS_WRITER_BULK_OUTPUT_H
#define PAD2IBIS_WRITER_BULK_OUTPUT_H

// The design file's model blocks, written in large pieces. A write per block
// leaves the file system a few kilobytes at a time at odd offsets; pieces
// of hundreds of kilobytes that end on 64 KB boundaries of the file are taken
// several times faster. The bytes and their order do not change.

#include <ostream>
#include <streambuf>
#include <vector>

// Gathers output and hands it on to `file` in pieces that end on a 64 KB
// boundary of the file, counted from where `file` stood when this began.
// What is left goes on at sync().
class BulkOutputBuffer : public std::streambuf {
public:
    BulkOutputBuffer(std::streambuf& file, long long at);

protected:
    int_type overflow(int_type c) override;
    std::streamsize xsputn(char const* text, std::streamsize count) override;
    int sync() override;

private:
    // Hands on the pieces up to the last boundary within the buffer, or
    // everything; false when the file takes less than it is given.
    bool drain(bool everything);

    std::streambuf& _file;
    std::vector<char> _buffer;
    long long _at; // offset in the file of the buffer's first byte
};

// For as long as it lives, what `out` is given goes through a
// BulkOutputBuffer; then `out` writes straight to its file again, with the
// state it had plus any failure on the way.
// Precondition: `out` has a stream buffer.
class BulkOutputScope {
public:
    explicit BulkOutputScope(std::ostream& out);
    ~BulkOutputScope();
    BulkOutputScope(BulkOutputScope const&) = delete;
    BulkOutputScope& operator=(BulkOutputScope const&) = delete;

private:
    std::ostream& _out;
    std::streambuf* _file;
    BulkOutputBuffer _bulk;
};

#endif
