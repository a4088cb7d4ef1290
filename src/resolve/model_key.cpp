// The model key: a 20-character positional name, written field by field.

#include <cstring>

#include "driver/basibsgen.h"
#include "driver/load_time.h"

namespace {

// Room of a model string. A code longer than its field runs on into the next
// field, or past the end of the key; the room behind the key keeps such a
// code inside the string's own storage. Codes come from lines of at most 254
// characters, so every code written at any field start fits.
const size_t modelRoom = 512;

} // namespace

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
