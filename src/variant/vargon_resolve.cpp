// The table-driven family's generator: construction, its naming table rule,
// its voltage rule and its design model walk.

#include <cstring>

#include "driver/load_time.h"
#include "driver/messages.h"
#include "host/ut_string.h"
#include "resolve/attribute_passes.h"
#include "resolve/signal_outcome.h"
#include "resolve/walk_steps.h"
#include "variant/basib_vargon.h"

IBIS_MODEL_VARGON::IBIS_MODEL_VARGON(char const* family, char const* padFile,
                                     char const* masterIbisFile)
    : IBIS_MODEL(family, padFile, masterIbisFile)
{
    if (_keyFieldPresent[7])
        _devIoMaps["DRIVE"]["24mA"] = "240";
}

IBIS_MODEL_VARGON::~IBIS_MODEL_VARGON()
{
    _iobufs.clear();
    for (BASIB_ALT_MODEL_MAP* forest : {&_outputAltModels, &_inputAltModels, &_bidirAltModels}) {
        for (auto& entry : *forest) {
            if (entry.second == nullptr)
                continue;
            for (BASIB_ALT_MODEL_INFO* root : *entry.second)
                delete root;
            delete entry.second;
        }
        forest->clear();
    }
}

bool vargonNamingComplete(bool const* keyFieldPresent)
{
    // Every field but the direction's second character has its table.
    for (int position : {0, 3, 7, 6, 10, 11, 12, 13, 14, 15, 16, 17, 18})
        if (!keyFieldPresent[position])
            return false;
    return true;
}

bool IBIS_MODEL_VARGON::hasDoneLoadingIoMaps()
{
    return vargonNamingComplete(_keyFieldPresent);
}

int IBIS_MODEL_VARGON::getVoltage(std::string& ioType)
{
    auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
    std::string digits;
    if (!ioType.empty() && isDigit(ioType.back())) {
        // The digit of a reference entry is no voltage.
        if (ioType == "VREF1" || ioType == "VREF2")
            return -1;
        std::string::size_type start = ioType.size();
        while (start > 0 && isDigit(ioType[start - 1]))
            --start;
        digits = ioType.substr(start);
        ioType.erase(start);
    } else {
        std::string name;
        for (char c : ioType) {
            if (isDigit(c))
                digits += c;
            else
                name += c;
        }
        ioType = name;
    }
    if (digits.empty())
        return -1;
    return ibsDecimal(digits);
}

namespace {

// The key field of each attribute of this family: the short names only.
IbsKeyField const keyFields[] = {
    {"DRIVE", IBIS_KEY_DRIVE},     {"PULL", IBIS_KEY_PULL},       {"SLEW", IBIS_KEY_SLEW},
    {"IMP", IBIS_KEY_IMPEDANCE},   {"TERMVCC", IBIS_KEY_TERMVCC}, {"TERMGND", IBIS_KEY_TERMGND},
    {"TERMVTT", IBIS_KEY_TERMVTT}, {"VCMT", IBIS_KEY_VCMT},       {"DIFFRES", IBIS_KEY_DIFFRES},
    {"DIFFCUR", IBIS_KEY_DIFFCUR},
};

// The table-driven walk's rules of the attribute passes.
class VargonRules : public AttributeRules {
public:
    // The vocabulary of the forests' pull level: UP_PCICLAMP, DOWN_PCICLAMP,
    // or PCICLAMP for a clamp without pull.
    bool firstPass(IB_IOBUF* iobuf, IB_IOBUF_CONFIG const& attr, std::string const&, std::string& pull) const override
    {
        if (attr.key == "PULL")
            pull += attr.value;
        else if (attr.key == "PCICLAMP" && attr.value == "ON")
            pull += "_" + attr.key;
        else if (attr.key == "OPENDRAIN" && attr.value == "ON")
            ibsMarkOpenDrain(iobuf);
        else
            return false;
        return true;
    }

    char const* pullKey() const override { return "PULL"; }

    bool fieldOf(std::string const& key, IBIS_KEY_ATTR& field) const override
    {
        return ibsFieldOf(keyFields, key, field);
    }

    // The reference entries have no model.
    bool takesModel(std::string const& ioType, std::string const& dir) const override
    {
        return !(ioType == "REF" && dir == "RESISTOR") && !(ioType.compare(0, 4, "VREF") == 0 && dir == "DRIVER");
    }

    // A fast differential output is coded as the neutral slew.
    std::string fastSlew(std::string const& ioType, std::string const&, std::string const& code) const override
    {
        return ioType == "LVDS" || ioType == "HYPT" || ioType == "RSDS" ? "a" : code;
    }
};

} // namespace

void IBIS_MODEL_VARGON::setDesignModels()
{
    VargonRules const rules;
    for (IB_IOBUF* iobuf : _iobufs) {
        WalkSignal signal = ibsStartSignal(iobuf, _modelKeyTemplate);
        std::string const& dir = signal.dir;
        if (!signal.attrs.empty())
            ibsCodeAttributes(*this, iobuf, signal, rules);

        // The direction comes from the pad report's port type alone: open
        // drain changes the record's text, not the key.
        if (dir == "IN")
            iobuf->setMode(IBIS_KEY_DIRECTION, "in");
        else if (dir == "OUT")
            iobuf->setMode(IBIS_KEY_DIRECTION, "ou");
        else if (dir == "OD")
            iobuf->setMode(IBIS_KEY_DIRECTION, "od");
        else if (dir != "DRIVER" && dir != "RESISTOR")
            iobuf->setMode(IBIS_KEY_DIRECTION, "io");

        std::string const key = iobuf->model;
        if (key.empty())
            continue;
        if (_availableModels.count(key) != 0) {
            ibsUseModel(*this, iobuf, key, key);
            ibsSettle(*this, iobuf, key, IBS_OUTCOME_RESOLVED);
            continue;
        }
        // A substitute counts as missing too; the master pin is the
        // rejected key's.
        std::string substitute = getAvailableAltModelName(dir, key);
        if (!substitute.empty()) {
            ibsReport(IBS_MSG_1011, {key.c_str(), iobuf->name, substitute.c_str()});
            ibsFlushAll();
            ++_missingModelCount;
            iobuf->model = ibs_new_model_string(substitute.c_str());
            ibsUseModel(*this, iobuf, substitute, key);
            ibsSettle(*this, iobuf, key, IBS_OUTCOME_SUBSTITUTED);
        } else if (!ibsTakeChosenSubstitute(*this, iobuf, key)) {
            ibsMissingKey(*this, iobuf, key);
        }
    }
}
