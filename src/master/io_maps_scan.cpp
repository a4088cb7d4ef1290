// The scan of the master file for its naming tables, and the rule of each
// family for when enough of them have been read.

#include <cstring>

#include "driver/basibsgen.h"
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
    std::string::size_type const none = std::string::npos;
    auto inPart = [this, none](char const* fragment) { return _partName.find(fragment) != none; };
    bool an = inPart("AN");
    bool zr = inPart("ZR");
    bool hzu = inPart("HZU") || inPart("KRD");
    bool hzu2 = inPart("HZU2");
    bool hzu3 = inPart("HZU3");
    bool tn = inPart("TN");
    bool a3 = inPart("A3");
    bool morvalle = inPart("MORVALLE");
    bool kj = inPart("KJ");
    bool a = inPart("A");
    bool krdh2 = inPart("KRDH2");

    if (!(an || zr || hzu || tn || a3 || morvalle || a || krdh2 || kj))
        return false;
    auto flagged = [this](std::initializer_list<int> positions) {
        for (int position : positions)
            if (!_keyFieldPresent[position])
                return false;
        return true;
    };
    // IO type, voltage, drive, slew and pull: every family's minimum.
    if (!flagged({0, 3, 7, 6, 10}))
        return false;

    if (a3) {
        if (!flagged({15, 17}))
            return false;
        copyWhenMissing(_devIoMaps, "DIFFRESISTOR", "DIFFRES");
        return true;
    }
    if (morvalle || kj) {
        if (!flagged({16, 17, 12, 11}))
            return false;
        copyWhenMissing(_devIoMaps, "DIFFDRIVE", "DIFFCUR");
        copyWhenMissing(_devIoMaps, "DIFFRESISTOR", "DIFFRES");
        return true;
    }
    if (hzu2 || krdh2 || hzu3) {
        copyWhenMissing(_devIoMaps, "DIFFRESISTOR", "DIFFRES");
        return flagged({11, 17});
    }
    return true;
}
