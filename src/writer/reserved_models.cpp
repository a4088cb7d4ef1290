#include "writer/reserved_models.h"

namespace {

// name equals word (upper case) in any letter case.
bool sameLetters(std::string_view name, std::string_view word)
{
    if (name.size() != word.size())
        return false;
    for (std::size_t i = 0; i < name.size(); ++i) {
        char const c = name[i] >= 'a' && name[i] <= 'z' ? static_cast<char>(name[i] - 'a' + 'A') : name[i];
        if (c != word[i])
            return false;
    }
    return true;
}

} // namespace

bool ibsReservedModelName(std::string_view name)
{
    for (std::string_view word : {"POWER", "GND", "NC", "CIRCUITCALL"})
        if (sameLetters(name, word))
            return true;
    return false;
}
