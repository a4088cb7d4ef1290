#ifndef PAD2IBIS_CHECK_MODEL_RULES_H
#define PAD2IBIS_CHECK_MODEL_RULES_H

// What a simulator needs inside one [Model] block: its sub-parameters, the
// keywords its model type requires or forbids, and its tables, as read by
// the IBIS model reader. Design files and the model blocks of master files
// are held to the same rules, since a master's block is copied unchanged
// into every design file that uses it.

#include <string>
#include <string_view>
#include <vector>

#include "check/ibis_check.h"
#include "ibis/model_reader.h"

namespace ibischeck {

// The file around the block.
struct ModelContext {
    // The file's [IBIS Ver]: row limits and name widths depend on it.
    double version = 5.0;
    // Master file: an [Add Submodel] names a block that the generator does
    // not copy.
    bool master = false;
};

void checkModel(ibis::Model const& model, ModelContext const& context, std::vector<Finding>& findings);

// The tables whose every value the rules read: [Pullup] and [Pulldown],
// where an open model type allows only zero currents. Of the other tables
// they read the index column's values and the kind of every cell, so a
// model reader for checkModel() may keep only those
// (ibis::ModelReader::WholeRows).
bool readsEveryValue(std::string_view key);

// "typ min max" values: three, typ a number, min and max numbers or NA.
// False, with findings at line, when they are not.
bool checkTypMinMax(std::vector<std::string> const& values, int line, std::string const& what,
                    std::vector<Finding>& findings);

// The Model_type as IBIS spells it ("I/O", "3-state"), matched in any case;
// empty for a block without one or with a value that is no model type.
std::string modelTypeOf(ibis::Model const& model);

// Series and Series_switch models: a [Pin] row should not name them.
bool isSeriesType(std::string const& type);

// IBIS version of an [IBIS Ver] value ("5.0"), 0 for a value that is none.
double ibisVersion(std::string const& value);

} // namespace ibischeck

#endif
