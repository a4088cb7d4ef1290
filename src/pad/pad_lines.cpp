#include "pad/pad_lines.h"

#include <cstring>

#include "driver/line_reader.h"

namespace {

bool crLfAsLf = false;

} // namespace

void ibsSetPadReportCrLf(bool asLf)
{
    crLfAsLf = asLf;
}

std::istream& ibsReadPadLine(std::istream& pad, char* buf)
{
    if (!crLfAsLf)
        return ibsReadLine(pad, buf, IBS_LINE_SIZE);
    // Room for the CR behind a line of the longest length.
    char line[IBS_LINE_SIZE + 1];
    ibsReadLine(pad, line, IBS_LINE_SIZE + 1);
    std::size_t length = std::strlen(line);
    if (!pad.fail() && length > 0 && line[length - 1] == '\r')
        line[--length] = '\0';
    if (length > IBS_LINE_SIZE - 1) {
        // One character over without its CR: as long a line as the reader
        // refuses. Nothing is read behind a failed line, so what it took of
        // the line's end is never missed.
        line[IBS_LINE_SIZE - 1] = '\0';
        pad.setstate(std::ios_base::failbit);
    }
    std::memcpy(buf, line, IBS_LINE_SIZE);
    return pad;
}
