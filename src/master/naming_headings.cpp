#include "master/naming_headings.h"

#include <cstring>

#include "driver/line_reader.h"
#include "driver/load_time.h"
#include "host/ut_string.h"

std::vector<IbsNamingTable> const& ibsNamingTables()
{
    static std::vector<IbsNamingTable> const tables = {
        {"STANDARD", nullptr, {0, 3}, &IBIS_MODEL::loadIotypeMap, false},
        {"SLEW", nullptr, {6, -1}, &IBIS_MODEL::loadSlewMap, false},
        {"PULLMODE", nullptr, {10, -1}, &IBIS_MODEL::loadPullmodeMap, false},
        // The misspelt heading is part of the format.
        {"IMPEDANCE", "IMPEDENCE", {11, -1}, &IBIS_MODEL::loadImpedanceMap, false},
        {"MIPI HARD DPHY MODE", nullptr, {12, -1}, &IBIS_MODEL::loadMipiDphyIoMap, false},
        {"TERMVCC", nullptr, {12, -1}, &IBIS_MODEL::loadTermVccMap, false},
        {"TERMGND", nullptr, {13, -1}, &IBIS_MODEL::loadTermGndMap, false},
        {"TERMVTT", nullptr, {14, -1}, &IBIS_MODEL::loadTermVttMap, false},
        {"VCMT", nullptr, {15, -1}, &IBIS_MODEL::loadVcmtMap, false},
        {"DIFFERENTIAL RESISTOR", nullptr, {16, -1}, &IBIS_MODEL::loadDiffResistorMap, false},
        // "DIFFERENTIAL DRIVE CURRENT" reaches the current table before
        // "DIFF DRIVE" is tried.
        {"DIFFERENTIAL CURRENT", "DIFFERENTIAL DRIVE CURRENT", {17, -1}, &IBIS_MODEL::loadDiffCurrentMap, false},
        {"TERMINATION", nullptr, {12, -1}, &IBIS_MODEL::loadTerminationMap, true},
        {"MULTI DRIVE", nullptr, {15, -1}, &IBIS_MODEL::loadMultiDriveMap, false},
        {"DIFF DRIVE", nullptr, {17, -1}, &IBIS_MODEL::loadDiffDriveMap, false},
    };
    return tables;
}

IbsNamingTable const* ibsNamingTableOf(char const* line)
{
    std::vector<char> text(line, line + std::strlen(line) + 1);
    ut_strtrim(text.data());
    ut_strupr(text.data());
    std::vector<IbsNamingTable> const& tables = ibsNamingTables();
    if (std::strstr(text.data(), "STANDARD") != nullptr) {
        // Only a line that starts with the word is a heading.
        std::vector<char> copy = text;
        std::vector<char> word(text.size());
        ut_strgettoken(copy.data(), word.data(), " (", 0);
        bool const heading = std::strcmp(text.data(), "STANDARD") == 0 || std::strcmp(word.data(), "STANDARD") == 0;
        return heading ? &tables.front() : nullptr;
    }
    for (IbsNamingTable const& table : tables) {
        if (std::strstr(text.data(), table.heading) != nullptr ||
            (table.alias != nullptr && std::strstr(text.data(), table.alias) != nullptr))
            return &table;
    }
    return nullptr;
}

void ibsFlagNamingTable(IBIS_MODEL& model, void (IBIS_MODEL::*load)())
{
    for (IbsNamingTable const& table : ibsNamingTables())
        if (table.load == load)
            for (int position : table.positions)
                if (position >= 0)
                    model._keyFieldPresent[position] = true;
}

bool ibsNamingScanSkips(char const* line)
{
    return std::strchr(line, '=') != nullptr;
}
