// The scan of the master file for its naming tables, and the rule of each
// family for when enough of them have been read.

#include <cstring>

#include "driver/basibsgen.h"
#include "driver/family_table.h"
#include "driver/line_reader.h"
#include "driver/load_time.h"
#include "host/ut_string.h"
#include "master/naming_headings.h"

bool IBIS_MODEL::loadDevIoMaps()
{
    _masterStream.open(_masterIbisFile.c_str());
    if (!isDeviceIbisFileOpen())
        return false;

    // The tables stand near the top of the file, so the scan starts at its
    // first line and stops at the table that completes the family's set.
    bool complete = false;
    char line[IBS_LINE_SIZE];
    while (!ibsStreamDone(_masterStream)) {
        ibsReadLine(_masterStream, line, IBS_LINE_SIZE);
        if (ibsNamingScanSkips(line))
            continue;
        if (loadDevIoMaps(line) && hasDoneLoadingIoMaps()) {
            complete = true;
            break;
        }
    }
    _masterStream.close();
    _masterStream.clear();
    return complete;
}

bool IBIS_MODEL::loadDevIoMaps(char* line)
{
    ut_strtrim(line);
    ut_strupr(line);
    IbsNamingTable const* table = ibsNamingTableOf(line);
    if (table == nullptr)
        return false;
    (this->*table->load)();
    return true;
}

namespace {

// A newer master states a table under the older heading only; an attribute
// of either name must find it.
void copyWhenMissing(std::map<std::string, std::map<std::string, std::string>>& maps,
                     char const* missing, char const* source)
{
    if (maps[missing].empty() && !maps[source].empty())
        maps[missing] = maps[source];
}

} // namespace

bool IBIS_MODEL::hasDoneLoadingIoMaps()
{
    IbsNamingNeeds const needs = ibsPartNamingNeeds(_partName);
    if (!needs.known)
        return false;
    auto flagged = [this](std::vector<int> const& positions) {
        for (int position : positions)
            if (!_keyFieldPresent[position])
                return false;
        return true;
    };
    // IO type, voltage, drive, slew and pull: every family's minimum.
    if (!flagged({0, 3, 7, 6, 10}))
        return false;
    auto copies = [&] {
        if (needs.copyDiffDrive)
            copyWhenMissing(_devIoMaps, "DIFFDRIVE", "DIFFCUR");
        if (needs.copyDiffResistor)
            copyWhenMissing(_devIoMaps, "DIFFRESISTOR", "DIFFRES");
    };
    if (needs.copyAhead)
        copies();
    if (!flagged(needs.positions))
        return false;
    if (!needs.copyAhead)
        copies();
    return true;
}
