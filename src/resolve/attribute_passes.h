#ifndef PAD2IBIS_RESOLVE_ATTRIBUTE_PASSES_H
#define PAD2IBIS_RESOLVE_ATTRIBUTE_PASSES_H

// The two passes over a signal's attributes that both design model walks
// make: the first joins the pull, clamp and Schmitt settings into one pull
// value and marks an open drain, the second writes each attribute's code
// into its field of the model key. What differs between the walks is asked
// of their rules.

#include <string>
#include <vector>

#include "driver/basibsgen.h"
#include "resolve/walk_steps.h"

class AttributeRules {
public:
    virtual ~AttributeRules() = default;

    // First pass: an attribute that joins the pull value (appended to pull)
    // or marks the open drain is taken here; false leaves it to the second
    // pass.
    virtual bool firstPass(IB_IOBUF* iobuf, IB_IOBUF_CONFIG const& attr, std::string const& dir,
                           std::string& pull) const = 0;
    // The attribute key of the joined pull value.
    virtual char const* pullKey() const = 0;
    // The field an attribute's code goes to; false for one that has none.
    virtual bool fieldOf(std::string const& key, IBIS_KEY_ATTR& field) const = 0;
    // Second pass, the IO type: false for a signal that gets no model (its
    // key is emptied), which ends its passes.
    virtual bool takesModel(std::string const& ioType, std::string const& dir) const
    {
        (void)ioType;
        (void)dir;
        return true;
    }
    // The voltage field of an IO type without a number in its name, or null
    // to keep the template's.
    virtual char const* fixedVoltage(std::string const& ioType) const
    {
        (void)ioType;
        return nullptr;
    }
    // The slew code of a FAST setting where the walk has a rule of its own
    // for the IO type; otherwise the table's code.
    virtual std::string fastSlew(std::string const& ioType, std::string const& dir, std::string const& code) const
    {
        (void)ioType;
        (void)dir;
        return code;
    }
};

// The two passes over the signal's attributes, writing its key.
void ibsCodeAttributes(IBIS_MODEL& generator, IB_IOBUF* iobuf, WalkSignal& signal, AttributeRules const& rules);

#endif
