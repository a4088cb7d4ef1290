#ifndef PAD2IBIS_SAFETY_MASTER_SCAN_H
#define PAD2IBIS_SAFETY_MASTER_SCAN_H

// A master IBIS file read ahead of the generator, for what its readers and
// the design file writer would lose or take for something else without a
// word: a line over the 254 characters that the component and naming table
// readers take, ahead of the component line, or over the 255 that the
// writer's passes copy, ahead of the last line that holds "[Model]"; a NUL;
// a line of blanks ahead of the design package's block, on which the package
// writer fails; the design package's block or the [Pin] list without its
// closing line; a last model block that no line holding "[Model]" follows.
// Lines are measured as the readers take them, with the CR of a CR LF line
// end.

#include <string>
#include <vector>

#include "check/ibis_check.h"

namespace safety {

struct MasterScan {
    bool read = false; // false when the file could not be read
    std::vector<ibischeck::Finding> findings; // in line order
};

// packageName: the design's package, as the pad report gave it.
MasterScan scanMaster(std::string const& path, std::string const& packageName);

} // namespace safety

#endif
