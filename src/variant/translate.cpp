// A legal table's vocabulary carried over into that of the model key.

#include "driver/load_time.h"
#include "variant/basib_vargon.h"

std::string IBIS_MODEL_VARGON::translateColHeader(char const* column)
{
    // The name under which the master's naming table of the attribute is
    // kept; RESERVED is the key's last field, the direction.
    static struct {
        char const* column;
        char const* header;
    } const headers[] = {
        {"IMPEDANCE", "IMP"},         {"PULLMODE", "PULL"},     {"TERMINATEVCCIO", "TERMVCC"},
        {"TERMINATEGND", "TERMGND"},  {"TERMINATEVTT", "TERMVTT"}, {"DIFFRESISTOR", "DIFFRES"},
        {"DIFFCURRENT", "DIFFCUR"},   {"OPENDRAIN", "RESERVED"}, {"SLEWRATE", "SLEW"},
    };
    std::string name = column;
    for (auto const& entry : headers)
        if (name == entry.column)
            return entry.header;
    return name;
}

std::string IBIS_MODEL_VARGON::translateCellValue(std::string header, char const* value,
                                                  char const* direction)
{
    std::string result = value;
    if (header == "IO_TYPE") {
        // The reference entries have short names in the naming table.
        if (result == "VREF1_DRIVER")
            result = "VREF1";
        else if (result == "VREF2_DRIVER")
            result = "VREF2";
        else if (result == "REF_RESISTOR")
            result = "REF_RES";
        int voltage = getVoltage(result);
        if (result == "GTLPLUS")
            result = "GTLP";
        auto map = _devIoMaps.find("IO_TYPE");
        if (map == _devIoMaps.end())
            return result;
        auto code = map->second.find(result);
        if (code == map->second.end())
            return result;
        // IO type code and voltage field: the first six characters of a key,
        // 2.5 volts for the standards without a voltage.
        return code->second + (voltage == -1 ? std::string("250") : std::to_string(voltage) + "0");
    }

    auto map = _devIoMaps.find(header);
    if (map == _devIoMaps.end()) {
        if (header == "RESERVED") {
            if (result == "OFF")
                return direction;
            if (result == "ON")
                return "od";
        }
        return result;
    }
    if (header == "PULL" && result == "NONE")
        result = "OFF";
    if (header == "VCMT" && result == "DDR_II")
        result = "DDR-2";
    if (header == "DRIVE" && result != "NA")
        result += "mA";
    auto code = map->second.find(result);
    return code == map->second.end() ? result : code->second;
}
