#ifndef PAD2IBIS_MASTER_DESIGN_VALUE_H
#define PAD2IBIS_MASTER_DESIGN_VALUE_H

#include <map>
#include <string>

// A model key's code read back through a naming table (design value -> key
// code) into the design's words: the design value of the first row in the
// table's order that has the code; the code itself where no row has it, or
// where table is null.
std::string ibsDesignValue(std::map<std::string, std::string> const* table, std::string const& code);

#endif
