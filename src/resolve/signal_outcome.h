#ifndef PAD2IBIS_RESOLVE_SIGNAL_OUTCOME_H
#define PAD2IBIS_RESOLVE_SIGNAL_OUTCOME_H

// What the design model walks made of each signal. The walk keeps it in the
// signal record's status (a record starts at 1, which it keeps when no key
// is built for it); a host reads it there once setDesignModels has run. A
// host that wants each signal's key as well, the key the walk built before
// any fallback or substitute took its place, installs an observer: the
// walks call it once per signal that gets a key, when its outcome is
// settled. Without an observer (the default) the walks are untouched.

#include <string>

class IBIS_MODEL;
class IB_IOBUF;

enum IbsSignalOutcome {
    IBS_OUTCOME_NONE = 1,    // no key was built (the reference entries of the table-driven family)
    IBS_OUTCOME_RESOLVED,    // the key's own model
    IBS_OUTCOME_FALLBACK,    // an input's bidirectional model in place of its missing input model
    IBS_OUTCOME_SUBSTITUTED, // another model in place of the key's, by the family's rules or the host's chooser
    IBS_OUTCOME_MISSING      // no model: the signal has no [Pin] row
};

using IbsOutcomeObserver = void (*)(IBIS_MODEL const& generator, IB_IOBUF const& signal, std::string const& key,
                                    IbsSignalOutcome outcome, void* context);
// Null removes the observer.
void ibsSetOutcomeObserver(IbsOutcomeObserver observer, void* context = nullptr);

#endif
