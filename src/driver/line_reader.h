#ifndef PAD2IBIS_DRIVER_LINE_READER_H
#define PAD2IBIS_DRIVER_LINE_READER_H

// The one line-reading primitive of every reader of the pad report, the
// master IBIS file and the AMI templates.

#include <cstdio>
#include <istream>
#include <string_view>
#include <vector>

// Line buffers: the pad report and the naming section of the master file,
// the writers' passes over the master file, AMI parameter templates.
const int IBS_LINE_SIZE = 255;
const int IBS_COPY_LINE_SIZE = 256;
const int IBS_AMI_LINE_SIZE = 4096;

// Reads one line into buf, which has room for size bytes, the NUL included,
// so a line holds at most size - 1 characters. A longer line sets the
// stream's fail state (buf then holds its first size - 1 characters and the
// rest stays unread); a last line without line end sets the end-of-file
// state; a read that takes nothing sets the fail state. Every byte is stored
// as it is read, NUL and CR included. Tells how many characters it took
// from the stream, the line end included.
std::streamsize ibsReadLineCounted(std::istream& in, char* buf, int size);

// The same, for reading loops that test the stream.
inline std::istream& ibsReadLine(std::istream& in, char* buf, int size)
{
    ibsReadLineCounted(in, buf, size);
    return in;
}

// Steps over the lines that the stream's buffer holds whole, as far as each
// would be read by ibsReadLine with this size without failing, ends in a line
// end and holds neither mark nor NUL. Stops before any other line and where
// the buffer ends, and never refills it but when it is empty. Tells how many
// characters it stepped over.
std::streamsize ibsSkipPlainLines(std::istream& in, char mark, int size);

// A line as a reader's buffer holds it: its text up to its first NUL, with
// a NUL behind it, for the string operations that the readers apply.
std::vector<char> ibsLineBuffer(std::string_view line);

// True once a reading loop has to end: at the end of the file, or when the
// stream failed (an over-long line or an unreadable file).
inline bool ibsStreamDone(std::istream const& in)
{
    return in.eof() || in.fail();
}

// Reads one line of a template that is copied as it stands: at most size - 1
// characters with the line end kept, so a last line without one stays
// without one. False at the end of the file.
inline bool ibsReadRawLine(std::FILE* in, char* buf, int size)
{
    return std::fgets(buf, size, in) != nullptr;
}

#endif
