#ifndef PAD2IBIS_NEAREST_NEAREST_MODEL_H
#define PAD2IBIS_NEAREST_NEAREST_MODEL_H

// The nearest model of a model key that the master lacks: the master's model
// of the same IO standard and supply, of a direction the signal can use, with
// the fewest other settings changed. Each difference is named in the
// design's words, read back through the master's naming tables. Used by the
// program's --substitute nearest and by the resolution report; not part of
// the generator library.

#include <map>
#include <set>
#include <string>
#include <vector>

class IBIS_MODEL;
class IB_IOBUF;

namespace ibsnearest {

// The master's naming tables: attribute key, design value, key code.
using NamingTables = std::map<std::string, std::map<std::string, std::string>>;

// One setting in which a model differs from the key: its name and the two
// values, each the design value that a naming table gives the code, or the
// code itself where no table names it.
struct Difference {
    std::string setting;
    std::string from, to;
};

struct Nearest {
    std::string model; // empty when no model of the master qualifies
    std::vector<Difference> differences; // in the order of the key's fields
};

// The nearest of models to the 20-character key.
Nearest nearestModel(std::string const& key, std::set<std::string> const& models,
                     NamingTables const& tables);

// The differences as one text: "DRIVE 10mA -> 12mA; direction out -> io".
std::string describe(std::vector<Difference> const& differences);

// The nearest model among the generator's models, in the form of the
// library's substitute chooser (ibsSetSubstituteChooser).
std::string nearestSubstitute(IBIS_MODEL const& generator, IB_IOBUF const& signal,
                              std::string const& key, void* context);

} // namespace ibsnearest

#endif
