#ifndef PAD2IBIS_TESTS_IBIS_STRUCTURE_H
#define PAD2IBIS_TESTS_IBIS_STRUCTURE_H

#include <string>
#include <vector>

namespace ts {

// Structural check of a design IBIS file. Returns one readable line per
// problem found, nothing when the file is sound:
// - "[IBIS Ver]" is the first keyword and "[End]" the last;
// - "[File Name]" names fileName, the file itself;
// - every model named in the "[Pin]" section has its "[Model]" block, or is
//   one of the reserved POWER, GND and NC;
// - both pins of every "[Diff pin]" row are pins of the "[Pin]" section;
// - with masterKeptTo120 set, no line is longer than 120 characters.
std::vector<std::string> ibisStructureProblems(std::string const& designText,
                                               std::string const& fileName, bool masterKeptTo120);

// True when no line of text is longer than width characters; what a master
// file has to show for its design files to be held to the 120 limit.
bool linesKeepTo(std::string const& text, std::size_t width = 120);

} // namespace ts

#endif
