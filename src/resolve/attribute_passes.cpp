#include "resolve/attribute_passes.h"

#include "driver/load_time.h"

void ibsCodeAttributes(IBIS_MODEL& generator, IB_IOBUF* iobuf, WalkSignal& signal, AttributeRules const& rules)
{
    std::string const& dir = signal.dir;
    std::string& ioType = signal.ioType;

    // First pass: pull, clamp and Schmitt settings join into one pull value,
    // in the order of the pad report; an open drain changes the signal's
    // direction; everything else waits for the second pass.
    std::string pull;
    std::vector<IB_IOBUF_CONFIG> workList;
    for (IB_IOBUF_CONFIG const& attr : signal.attrs) {
        if (rules.firstPass(iobuf, attr, dir, pull))
            continue;
        if (attr.key == "VCMT" && attr.value == "DDR_II")
            workList.emplace_back("VCMT", "DDR-2");
        else
            workList.emplace_back(attr.key, attr.value);
    }
    if (!pull.empty()) {
        generator.strip_off_leading_underscores(pull);
        workList.emplace_back(rules.pullKey(), pull);
    }

    // Second pass: each attribute with a naming table writes its code into
    // its field; unknown attributes and values leave the field at its
    // default.
    for (IB_IOBUF_CONFIG const& attr : workList) {
        auto map = generator._devIoMaps.find(attr.key);
        if (map == generator._devIoMaps.end())
            continue;
        std::map<std::string, std::string> const& table = map->second;
        if (attr.key == "IO_TYPE") {
            ioType = attr.value;
            if (!rules.takesModel(ioType, dir)) {
                iobuf->model[0] = '\0';
                break;
            }
            int const voltage = generator.getVoltage(ioType);
            auto code = table.find(ioType);
            if (code != table.end())
                iobuf->setMode(IBIS_KEY_IO_TYPE, code->second);
            if (voltage != -1)
                iobuf->setMode(IBIS_KEY_VOLTAGE, std::to_string(voltage) + "0");
            else if (char const* fixed = rules.fixedVoltage(ioType))
                iobuf->setMode(IBIS_KEY_VOLTAGE, fixed);
            continue;
        }
        auto code = table.find(attr.value);
        if (code == table.end())
            continue;
        IBIS_KEY_ATTR field;
        if (!rules.fieldOf(attr.key, field))
            continue;
        if (field == IBIS_KEY_SLEW && attr.value == "FAST")
            iobuf->setMode(field, rules.fastSlew(ioType, dir, code->second));
        else
            iobuf->setMode(field, code->second);
    }
}
