// The model key: a 20-character positional name, written field by field.

#include <climits>
#include <cstring>

#include "driver/basibsgen.h"
#include "driver/load_time.h"
#include "host/ut_string.h"
#include "resolve/walk_steps.h"

namespace {

// Room of a model string. A code longer than its field runs on into the next
// field, or past the end of the key; the room behind the key keeps such a
// code inside the string's own storage. Codes come from lines of at most 254
// characters, so every code written at any field start fits.
const size_t modelRoom = 512;

} // namespace

int ibsDecimal(std::string const& digits)
{
    // A run too long for the result is no voltage; it saturates rather than
    // overflow.
    long long value = 0;
    for (char c : digits) {
        value = value * 10 + (c - '0');
        if (value > INT_MAX)
            return INT_MAX;
    }
    return static_cast<int>(value);
}

char* ibs_new_model_string(char const* text)
{
    size_t length = std::strlen(text);
    size_t room = length + 1 > modelRoom ? length + 1 : modelRoom;
    char* model = new char[room]();
    std::memcpy(model, text, length);
    return model;
}

void IB_IOBUF::setMode(IBIS_KEY_ATTR field, std::string code)
{
    for (size_t i = 0; i < code.size() && field + i < modelRoom - 1; ++i)
        model[field + i] = code[i];
}

void IB_IOBUF::getMode(IBIS_KEY_ATTR field, int length, std::string& out)
{
    out.clear();
    for (int i = 0; i < length && field + i < static_cast<int>(modelRoom) - 1; ++i)
        out += model[field + i];
}

int IBIS_MODEL::getVoltage(std::string& ioType)
{
    auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
    auto number = [&isDigit](std::string const& text, std::string::size_type from) {
        std::string digits;
        for (std::string::size_type i = from; i < text.size() && isDigit(text[i]); ++i)
            digits += text[i];
        return digits.empty() ? -1 : ibsDecimal(digits);
    };

    // The 3 of I3C names the standard, not a voltage.
    if (ioType.size() >= 3 && ut_strincmp(ioType.c_str(), "I3C", 3) == 0)
        return number(ioType, 3);

    std::string::size_type first = ioType.find_first_of("0123456789");
    if (first == std::string::npos)
        return -1;
    int voltage = number(ioType, first);
    // A type that the naming table lists whole keeps its digits.
    if (need_remove_vccio_field(ioType)) {
        std::string name;
        for (char c : ioType)
            if (!isDigit(c))
                name += c;
        ioType = name;
    }
    return voltage;
}

bool IBIS_MODEL::need_remove_vccio_field(std::string ioType)
{
    auto table = _devIoMaps.find("IO_TYPE");
    return table == _devIoMaps.end() || table->second.count(ioType) == 0;
}
