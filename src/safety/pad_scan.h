#ifndef PAD2IBIS_SAFETY_PAD_SCAN_H
#define PAD2IBIS_SAFETY_PAD_SCAN_H

// A pad report read ahead of the generator, for what its reader would lose
// or take for something else without a word: a line over the 254 characters
// that the reader takes (it stops there), a NUL (it ends the line there), a
// bank table without its closing rule (its reader takes the rest of the
// report as bank rows). Lines are measured without the CR of a CR LF line
// end: the host reads such a report as its twin with LF line ends.

#include <string>
#include <vector>

#include "check/ibis_check.h"

namespace safety {

struct PadScan {
    bool read = false;  // false when the file could not be read
    bool crlf = false;  // some line ends in CR LF
    std::vector<ibischeck::Finding> findings; // in line order
};

PadScan scanPadReport(std::string const& path);

} // namespace safety

#endif
