// The design model walk: each signal's attributes, turned through the naming
// tables into the fields of its model key.

#include <cstring>

#include "driver/basibsgen.h"
#include "driver/load_time.h"
#include "driver/messages.h"
#include "host/ut_string.h"
#include "pad/family_rules.h"
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

// The voltage field of an IO type without a number in its name: a few
// standards have a fixed supply on a family; every other pairing keeps the
// template's 2.5 volts.
char const* fixedVoltage(std::string const& ioType, IbsFamilyRules const& rules)
{
    for (auto const& [standard, voltage] : rules.fixedVoltages)
        if (ioType == standard)
            return voltage;
    return nullptr;
}

// The slew character of a fast LVDS or PCI signal, by family; the table's
// own code elsewhere.
std::string fastSlew(IbsFamilyRules const& rules, std::string const& ioType, std::string const& dir,
                     std::string const& code)
{
    switch (rules.fastSlew) {
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

} // namespace

void IBIS_MODEL::setDesignModels()
{
    IbsFamilyRules const& rules = ibsFamilyRules(_family);
    bool const bankImpedance = rules.bankImpedance;

    for (IB_IOBUF* iobuf : _iobufs) {
        WalkSignal signal = ibsStartSignal(iobuf, _modelKeyTemplate);
        std::string const& dir = signal.dir;
        std::vector<IB_IOBUF_CONFIG> const& attrs = signal.attrs;
        std::string& ioType = signal.ioType;
        std::string pullValue;
        std::vector<IB_IOBUF_CONFIG> workList;

        if (!attrs.empty()) {
            // The io types that take a pull mode; which one fits does not
            // change the key.
            for (std::string const& pullmodeType : _pullmodeIotypes)
                if (ioType.find(pullmodeType) != std::string::npos)
                    break;

            // First pass: pull, clamp and Schmitt settings join into one
            // pull value, in the order of the pad report; open drain
            // changes the signal's direction; everything else waits for the
            // second pass.
            for (IB_IOBUF_CONFIG const& attr : attrs) {
                std::string const& key = attr.key;
                std::string const& value = attr.value;
                if (key == "PULL" || key == "PULLMODE") {
                    pullValue += value;
                } else if (key == "PCICLAMP" && value == "ON") {
                    pullValue += "_" + key;
                } else if (key == "CLAMP" && value == "ON" && rules.clampIsPciClamp &&
                           (dir == "IN" || dir == "BIDI")) {
                    pullValue += "_PCICLAMP";
                } else if (key == "CLAMP" && value == "ON") {
                    pullValue += "_" + key;
                } else if (key == "SCHMITT_TRIGGER" && value == "ON") {
                    pullValue += "_SCHMITT";
                } else if (key == "OPENDRAIN" && (value == "ON" || value == "PLUS")) {
                    ibsMarkOpenDrain(iobuf);
                } else if (key == "VCMT" && value == "DDR_II") {
                    workList.emplace_back("VCMT", "DDR-2");
                } else {
                    workList.emplace_back(key, value);
                }
            }

            if (!pullValue.empty()) {
                strip_off_leading_underscores(pullValue);
                workList.emplace_back(_is_ncd_flow ? "PULLMODE" : "PULL", pullValue);
            }

            // Second pass: each attribute with a naming table writes its
            // code into its field; unknown attributes and values leave the
            // field at its default.
            for (IB_IOBUF_CONFIG const& attr : workList) {
                auto map = _devIoMaps.find(attr.key);
                if (map == _devIoMaps.end())
                    continue;
                std::map<std::string, std::string> const& table = map->second;
                if (attr.key == "IO_TYPE") {
                    ioType = attr.value;
                    int voltage = getVoltage(ioType);
                    auto code = table.find(ioType);
                    if (code != table.end())
                        iobuf->setMode(IBIS_KEY_IO_TYPE, code->second);
                    if (voltage != -1) {
                        iobuf->setMode(IBIS_KEY_VOLTAGE, std::to_string(voltage) + "0");
                    } else if (char const* fixed = fixedVoltage(ioType, rules)) {
                        iobuf->setMode(IBIS_KEY_VOLTAGE, fixed);
                    }
                    continue;
                }
                auto code = table.find(attr.value);
                if (code == table.end())
                    continue;
                IBIS_KEY_ATTR field;
                if (!ibsFieldOf(keyFields, attr.key, field))
                    continue;
                if (field == IBIS_KEY_SLEW && attr.value == "FAST" &&
                    (ioType == "LVDS" || ioType == "PCI"))
                    iobuf->setMode(field, fastSlew(rules, ioType, dir, code->second));
                else
                    iobuf->setMode(field, code->second);
            }
        }

        // Direction. The record's text is read afresh for open drain, so an
        // input with open drain keeps "in" while its record says "OD".
        if (dir == "IN") {
            iobuf->setMode(IBIS_KEY_DIRECTION, "in");
            if (bankImpedance)
                ibsBankImpedanceStep(*this, iobuf);
            ibsInputFallback(*this, iobuf);
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

        ibsAcceptKey(*this, iobuf);
    }

    if (!_designModels.empty())
        ibsReport(IBS_MSG_1017);
}
