// The naming tables of the master file: for each attribute, what each design
// value is called inside a model key.

#include <cstring>

#include "driver/basibsgen.h"
#include "driver/family_table.h"
#include "driver/line_reader.h"
#include "driver/load_time.h"
#include "driver/messages.h"
#include "host/ut_string.h"
#include "master/naming_headings.h"

std::map<std::string, std::string> IBIS_MODEL::readNamingTable(NamingTableRule rule)
{
    // Rules and column captions are comment lines ("|"); the body rows are
    // design value and code; the first comment line behind the body ends
    // the table and is consumed with it. A master cut short ends it too.
    bool bodyStarted = rule == NAMING_NO_LEAD_SKIP;
    if (rule != NAMING_NO_LEAD_SKIP)
        _ioMapFound = false;
    std::map<std::string, std::string> table;
    char line[IBS_LINE_SIZE];
    char value[IBS_LINE_SIZE];
    char code[IBS_LINE_SIZE];
    while (ibsReadLine(_masterStream, line, IBS_LINE_SIZE)) {
        ut_strgettoken(line, value, " ", 0);
        ut_strgettoken(line, code, " ", 0);
        if (!bodyStarted) {
            if (value[0] == '|')
                continue;
            bodyStarted = true;
            _ioMapFound = true;
        } else if (value[0] == '|') {
            break;
        }
        if (rule != NAMING_PLAIN && rule != NAMING_NO_LEAD_SKIP)
            ut_strtrim(value);
        ut_strupr(value);
        ut_strtrim(code);
        std::string designValue = value;
        if (rule == NAMING_PULL) {
            // The family's own names of the pull modes.
            if (designValue == "PULLUP")
                designValue = "UP";
            else if (designValue == "PULLDOWN")
                designValue = "DOWN";
            else if (designValue == "BUSHOLD" && ibsFamilyRules(_family).busholdIsKeeper)
                designValue = "KEEPER";
        }
        table[designValue] = code;
    }
    return table;
}

namespace {

// A table that must have rows: without any the run ends, naming it.
std::map<std::string, std::string> withRows(std::map<std::string, std::string> table, char const* name)
{
    if (table.empty())
        ibsFatal(IBS_MSG_1024, {name});
    return table;
}

} // namespace

void IBIS_MODEL::loadIotypeMap()
{
    _devIoMaps["IO_TYPE"] = withRows(readNamingTable(NAMING_PLAIN), "Io standard");
    ibsFlagNamingTable(*this, &IBIS_MODEL::loadIotypeMap);
}

void IBIS_MODEL::loadSlewMap()
{
    _devIoMaps[_is_ncd_flow ? "SLEWRATE" : "SLEW"] = withRows(readNamingTable(NAMING_TRIMMED), "Slew");
    ibsFlagNamingTable(*this, &IBIS_MODEL::loadSlewMap);
}

void IBIS_MODEL::loadPullmodeMap()
{
    _devIoMaps[_is_ncd_flow ? "PULLMODE" : "PULL"] = withRows(readNamingTable(NAMING_PULL), "pullmode");
    ibsFlagNamingTable(*this, &IBIS_MODEL::loadPullmodeMap);
}

// The tables below may be empty: an empty table still counts as read.

void IBIS_MODEL::loadImpedanceMap()
{
    _devIoMaps["IMP"] = readNamingTable(NAMING_PLAIN);
    ibsFlagNamingTable(*this, &IBIS_MODEL::loadImpedanceMap);
}

void IBIS_MODEL::loadMipiDphyIoMap()
{
    _devIoMaps["MIPI"] = readNamingTable(NAMING_PLAIN);
    ibsFlagNamingTable(*this, &IBIS_MODEL::loadMipiDphyIoMap);
}

void IBIS_MODEL::loadTermVccMap()
{
    _devIoMaps["TERMVCC"] = readNamingTable(NAMING_PLAIN);
    ibsFlagNamingTable(*this, &IBIS_MODEL::loadTermVccMap);
}

void IBIS_MODEL::loadTermGndMap()
{
    _devIoMaps["TERMGND"] = readNamingTable(NAMING_PLAIN);
    ibsFlagNamingTable(*this, &IBIS_MODEL::loadTermGndMap);
}

void IBIS_MODEL::loadTermVttMap()
{
    _devIoMaps["TERMVTT"] = readNamingTable(NAMING_PLAIN);
    ibsFlagNamingTable(*this, &IBIS_MODEL::loadTermVttMap);
}

void IBIS_MODEL::loadVcmtMap()
{
    _devIoMaps["VCMT"] = readNamingTable(NAMING_PLAIN);
    ibsFlagNamingTable(*this, &IBIS_MODEL::loadVcmtMap);
}

void IBIS_MODEL::loadDiffResistorMap()
{
    _devIoMaps["DIFFRES"] = readNamingTable(NAMING_PLAIN);
    ibsFlagNamingTable(*this, &IBIS_MODEL::loadDiffResistorMap);
}

void IBIS_MODEL::loadDiffCurrentMap()
{
    _devIoMaps["DIFFCUR"] = readNamingTable(NAMING_PLAIN);
    ibsFlagNamingTable(*this, &IBIS_MODEL::loadDiffCurrentMap);
}

// The termination table's heading is followed directly by its rows.
void IBIS_MODEL::loadTerminationMap()
{
    _devIoMaps["TERMINATION"] = readNamingTable(NAMING_NO_LEAD_SKIP);
    ibsFlagNamingTable(*this, &IBIS_MODEL::loadTerminationMap);
}

void IBIS_MODEL::loadMultiDriveMap()
{
    _devIoMaps["MULTDRIVE"] = readNamingTable(NAMING_PLAIN);
    ibsFlagNamingTable(*this, &IBIS_MODEL::loadMultiDriveMap);
}

void IBIS_MODEL::loadDiffDriveMap()
{
    _devIoMaps["DIFFDRIVE"] = readNamingTable(NAMING_PLAIN);
    ibsFlagNamingTable(*this, &IBIS_MODEL::loadDiffDriveMap);
}
