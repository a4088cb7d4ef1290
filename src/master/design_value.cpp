#include "master/design_value.h"

std::string ibsDesignValue(std::map<std::string, std::string> const* table, std::string const& code)
{
    if (table != nullptr)
        for (auto const& row : *table)
            if (row.second == code)
                return row.first;
    return code;
}
