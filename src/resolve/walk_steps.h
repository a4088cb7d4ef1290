#ifndef PAD2IBIS_RESOLVE_WALK_STEPS_H
#define PAD2IBIS_RESOLVE_WALK_STEPS_H

// Steps of the design model walk that stand around the question whether a
// model exists: the bank impedance of the families that take it from the
// bank supply, the input fallback, and the bookkeeping of a key.

#include <string>
#include <vector>

#include "driver/basibsgen.h"

// One signal's turn of a design model walk, as it starts: the direction
// text as it stood on entry, a copy of the attributes (the record's own list
// is not changed) and the value of the first "IO_TYPE" attribute. The
// record gets a fresh copy of the key template as its model key.
struct WalkSignal {
    std::string dir;
    std::vector<IB_IOBUF_CONFIG> attrs;
    std::string ioType;
};
WalkSignal ibsStartSignal(IB_IOBUF* iobuf, char const* keyTemplate);

// Open drain: the record's direction text becomes "OD".
void ibsMarkOpenDrain(IB_IOBUF* iobuf);

// The impedance field from the supply voltage of the signal's bank.
void ibsBankImpedanceStep(IBIS_MODEL& generator, IB_IOBUF* iobuf);

// An input whose model is missing falls back on the bidirectional model:
// the input's key when it did, "" otherwise.
std::string ibsInputFallback(IBIS_MODEL& generator, IB_IOBUF* iobuf);

// The design uses model: it enters the design models, and the master pin of
// pinKey's differential model, if any, becomes the signal's master pin.
void ibsUseModel(IBIS_MODEL& generator, IB_IOBUF* iobuf, std::string const& model,
                 std::string const& pinKey);

// Accepts the signal's key, or its substitute, or reports it missing and
// empties it; inputKey is the key of an input that fell back on its
// bidirectional model, "" for any other signal.
void ibsAcceptKey(IBIS_MODEL& generator, IB_IOBUF* iobuf, std::string const& inputKey);

// A key the master lacks: reported as missing, counted, and emptied.
void ibsMissingKey(IBIS_MODEL& generator, IB_IOBUF* iobuf, std::string const& key);

// The signal's outcome settled: kept in its record and told to the host's
// observer, with the key the walk built.
void ibsSettle(IBIS_MODEL const& generator, IB_IOBUF* iobuf, std::string const& key, int outcome);

// The host's chooser's model in place of key, which the master lacks:
// reported as a substitute, used by the design. False, with nothing done,
// when no chooser is installed or it offers no model of the master.
bool ibsTakeChosenSubstitute(IBIS_MODEL& generator, IB_IOBUF* iobuf, std::string const& key);

// An attribute and the key field its code goes to.
struct IbsKeyField {
    char const* key;
    IBIS_KEY_ATTR field;
};

// The field of key in fields; false for a key that has none.
template <size_t N>
bool ibsFieldOf(IbsKeyField const (&fields)[N], std::string const& key, IBIS_KEY_ATTR& field)
{
    for (IbsKeyField const& entry : fields) {
        if (key == entry.key) {
            field = entry.field;
            return true;
        }
    }
    return false;
}

// The decimal value of a run of digits, saturated at the largest int.
int ibsDecimal(std::string const& digits);

// Flushes every output stream, so that a warning stands where it belongs
// among what the host prints.
void ibsFlushAll();

#endif
