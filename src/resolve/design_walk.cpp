// The design model walk: each signal's attributes, turned through the naming
// tables into the fields of its model key.

#include <cstring>

#include "driver/basibsgen.h"
#include "driver/family_table.h"
#include "driver/load_time.h"
#include "driver/messages.h"
#include "host/ut_string.h"
#include "resolve/attribute_passes.h"
#include "resolve/walk_steps.h"

namespace {

// The key field of each attribute that has one; an attribute with a table
// and no field writes nothing.
IbsKeyField const keyFields[] = {
    {"DRIVE", IBIS_KEY_DRIVE},          {"PULL", IBIS_KEY_PULL},
    {"PULLMODE", IBIS_KEY_PULL},        {"SLEW", IBIS_KEY_SLEW},
    {"SLEWRATE", IBIS_KEY_SLEW},        {"IMP", IBIS_KEY_IMPEDANCE},
    {"MIPI", IBIS_KEY_TERMVCC},         {"TERMVCC", IBIS_KEY_TERMVCC},
    {"TERMINATION", IBIS_KEY_TERMVCC},  {"TERMGND", IBIS_KEY_TERMGND},
    {"TERMVTT", IBIS_KEY_TERMVTT},      {"VCMT", IBIS_KEY_VCMT},
    {"MULTDRIVE", IBIS_KEY_VCMT},       {"DIFFRES", IBIS_KEY_DIFFRES},
    {"DIFFRESISTOR", IBIS_KEY_DIFFRES}, {"DIFFCUR", IBIS_KEY_DIFFCUR},
    {"DIFFDRIVE", IBIS_KEY_DIFFCUR},
};

// The standard walk's rules of the attribute passes, for a family.
class StandardRules : public AttributeRules {
public:
    StandardRules(IbsFamilyRules const& family, bool ncd) : _family(family), _ncd(ncd) {}

    bool firstPass(IB_IOBUF* iobuf, IB_IOBUF_CONFIG const& attr, std::string const& dir,
                   std::string& pull) const override
    {
        std::string const& key = attr.key;
        std::string const& value = attr.value;
        if (key == "PULL" || key == "PULLMODE")
            pull += value;
        else if (key == "PCICLAMP" && value == "ON")
            pull += "_" + key;
        else if (key == "CLAMP" && value == "ON" && _family.clampIsPciClamp && (dir == "IN" || dir == "BIDI"))
            pull += "_PCICLAMP";
        else if (key == "CLAMP" && value == "ON")
            pull += "_" + key;
        else if (key == "SCHMITT_TRIGGER" && value == "ON")
            pull += "_SCHMITT";
        else if (key == "OPENDRAIN" && (value == "ON" || value == "PLUS"))
            ibsMarkOpenDrain(iobuf);
        else
            return false;
        return true;
    }

    char const* pullKey() const override { return _ncd ? "PULLMODE" : "PULL"; }

    bool fieldOf(std::string const& key, IBIS_KEY_ATTR& field) const override
    {
        return ibsFieldOf(keyFields, key, field);
    }

    // A few standards without a number in their name have a fixed supply on
    // a family; every other pairing keeps the template's 2.5 volts.
    char const* fixedVoltage(std::string const& ioType) const override
    {
        for (auto const& [standard, voltage] : _family.fixedVoltages)
            if (ioType == standard)
                return voltage;
        return nullptr;
    }

    // A fast LVDS or PCI signal: the family's slew character; elsewhere the
    // table's own code.
    std::string fastSlew(std::string const& ioType, std::string const& dir, std::string const& code) const override
    {
        if (ioType != "LVDS" && ioType != "PCI")
            return code;
        switch (_family.fastSlew) {
        case IbsFastSlew::Fast:
            return "f";
        case IbsFastSlew::FastPciOutput:
            return ioType == "PCI" && dir == "OUT" ? "f" : "a";
        case IbsFastSlew::TablePci:
            return ioType == "PCI" ? code : "a";
        case IbsFastSlew::Neutral:
            break;
        }
        return "a";
    }

private:
    IbsFamilyRules const& _family;
    bool _ncd;
};

} // namespace

void IBIS_MODEL::setDesignModels()
{
    IbsFamilyRules const& family = ibsFamilyRules(_family);
    StandardRules const rules(family, _is_ncd_flow);
    bool const bankImpedance = family.bankImpedance;

    for (IB_IOBUF* iobuf : _iobufs) {
        WalkSignal signal = ibsStartSignal(iobuf, _modelKeyTemplate);
        std::string const& dir = signal.dir;
        if (!signal.attrs.empty()) {
            // The io types that take a pull mode; which one fits does not
            // change the key.
            for (std::string const& pullmodeType : _pullmodeIotypes)
                if (signal.ioType.find(pullmodeType) != std::string::npos)
                    break;
            ibsCodeAttributes(*this, iobuf, signal, rules);
        }

        // Direction. The record's text is read afresh for open drain, so an
        // input with open drain keeps "in" while its record says "OD".
        std::string inputKey;
        if (dir == "IN") {
            iobuf->setMode(IBIS_KEY_DIRECTION, "in");
            if (bankImpedance)
                ibsBankImpedanceStep(*this, iobuf);
            inputKey = ibsInputFallback(*this, iobuf);
        } else if (iobuf->type && std::strcmp(iobuf->type, "OD") == 0) {
            iobuf->setMode(IBIS_KEY_DIRECTION, "od");
            if (bankImpedance)
                ibsBankImpedanceStep(*this, iobuf);
        } else if (keepOutAsOu() && dir == "OUT") {
            iobuf->setMode(IBIS_KEY_DIRECTION, "ou");
        } else {
            if (bankImpedance)
                ibsBankImpedanceStep(*this, iobuf);
            iobuf->setMode(IBIS_KEY_DIRECTION, "io");
        }

        // These two families carry an impedance code on "in" and "od" keys
        // only.
        std::string direction;
        iobuf->getMode(IBIS_KEY_DIRECTION, 2, direction);
        if (bankImpedance && (direction == "io" || direction == "ou"))
            iobuf->setMode(IBIS_KEY_IMPEDANCE, "a");

        ibsAcceptKey(*this, iobuf, inputKey);
    }

    if (!_designModels.empty())
        ibsReport(IBS_MSG_1017);
}
