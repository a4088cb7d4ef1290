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

// A line of the package section, behind the preamble's end, as the package
// writer takes it.
struct PackageSectionLine {
    int number = 0;
    bool empty = false;  // empty as read: passed over while the name is sought
    std::string text;    // trimmed and in upper case
    bool closes = false; // closes a package block
};

struct MasterScan {
    bool read = false; // false when the file could not be read
    std::vector<ibischeck::Finding> findings; // in line order
    // The package section up to the [Pin] line, when one follows it
    // (packageSectionEnded); its rules wait for the design's package.
    std::vector<PackageSectionLine> packageSection;
    bool packageSectionEnded = false;
};

// The findings of every rule but those of the design package's block, which
// packageFindings adds once the pad report has named the package. The scan
// reads nothing but the file at path, so it may run beside the generator.
MasterScan scanMaster(std::string const& path);

// What the package writer makes of the section for the design's package, as
// the pad report names it.
std::vector<ibischeck::Finding> packageFindings(MasterScan const& scan, std::string const& package);

} // namespace safety

#endif
