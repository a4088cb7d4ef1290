#ifndef PAD2IBIS_RESOLVE_MODEL_SUBSTITUTE_H
#define PAD2IBIS_RESOLVE_MODEL_SUBSTITUTE_H

// A host that wants a model for the signals whose key the master lacks
// installs a chooser before setDesignModels. The walks ask it where they
// would otherwise report the key as not available: the standard walk at
// acceptance, the table-driven walk after its own substitution found
// nothing. A chosen name that the master has takes the key's place: the
// signal's [Pin] row names it, its [Model] block is written, the walk
// reports message 1011 with it, and the signal does not count as missing.
// An empty name, or one the master does not have, leaves the key missing as
// before. Without a chooser (the default) the walks are untouched.

#include <string>

class IBIS_MODEL;
class IB_IOBUF;

using IbsSubstituteChooser = std::string (*)(IBIS_MODEL const& generator, IB_IOBUF const& signal,
                                             std::string const& key, void* context);
// Null removes the chooser.
void ibsSetSubstituteChooser(IbsSubstituteChooser chooser, void* context = nullptr);

#endif
