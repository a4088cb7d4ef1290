// The pin table of the pad report ("PINOUT BY PORT NAME"): one signal a row.

#include <cstring>

#include "driver/basibsgen.h"
#include "driver/family_table.h"
#include "driver/line_reader.h"
#include "driver/load_time.h"
#include "driver/messages.h"
#include "host/ut_string.h"
#include "pad/pad_lines.h"

void IBIS_MODEL::setPinInfo(char* line)
{
    if (std::strstr(line, IBS_PAD_PIN_TABLE) == nullptr)
        return;
    _pinTablePending = true;

    // Upper rule, header row, rule under the header. Only the header's "|"
    // count: they tell which cell holds the attributes. The count is never
    // reset, so a second pin table adds to it.
    char buf[IBS_LINE_SIZE];
    ibsReadPadLine(_padStream, buf);
    ibsReadPadLine(_padStream, buf);
    for (char const* p = buf; *p != '\0'; ++p)
        if (*p == '|')
            ++_pinTableColumns;
    ibsReadPadLine(_padStream, buf);
}

namespace {

// The true differential standards that have a known issue in the master
// data, by port type.
bool isTrueDifferential(char const* portType, std::string const& ioType)
{
    static char const* const inputs[] = {"LVDS", "RSDS", "BLVDS25", "MLVDS25", "LVPECL33"};
    static char const* const outputs[] = {"LVDS", "RSDS"};
    static char const* const others[] = {"BLVDS25", "MLVDS25"};
    auto listed = [&ioType](auto const& list) {
        for (char const* entry : list)
            if (ioType == entry)
                return true;
        return false;
    };
    if (std::strcmp(portType, "IN") == 0)
        return listed(inputs);
    if (std::strcmp(portType, "OUT") == 0)
        return listed(outputs);
    return listed(others);
}

} // namespace

void IBIS_MODEL::loadPinInfo(char* line)
{
    if (line == nullptr || !_pinTablePending)
        return;

    char row[IBS_LINE_SIZE];
    char cell[IBS_LINE_SIZE];
    ibsReadPadLine(_padStream, row);
    while (!ibsStreamDone(_padStream)) {
        ut_strgettoken(row, cell, "|", 0);

        ut_strgettoken(row, cell, "|", 0);
        ut_strtrim(cell);
        std::string portName = cell;

        // "pin/bank"; without "/" the whole cell is the pin.
        ut_strgettoken(row, cell, "|", 0);
        ut_strtrim(cell);
        char pin[IBS_LINE_SIZE];
        ut_strgettoken(cell, pin, "/", 0);
        ut_strtrim(pin);
        ut_strtrim(cell);

        char bufferType[IBS_LINE_SIZE];
        ut_strgettoken(row, bufferType, "|", 0);
        ut_strtrim(bufferType);
        if (bufferType[0] != '\0') {
            std::string ioType = bufferType;
            std::string portType;
            getIoTypeAndPortType(ioType, portType);
            std::vector<IB_IOBUF_CONFIG*> configs;
            configs.push_back(new IB_IOBUF_CONFIG("IO_TYPE", ioType));

            // The attributes stand in the last cell of the row; a narrow
            // table has them in the fourth, whatever that holds.
            char attributes[IBS_LINE_SIZE];
            ut_strgettoken(row, attributes, "|", 0);
            for (int skip = _pinTableColumns - 5; skip > 0; --skip)
                ut_strgettoken(row, attributes, "|", 0);
            ut_strtrim(attributes);
            while (attributes[0] != '\0') {
                char token[IBS_LINE_SIZE];
                char key[IBS_LINE_SIZE];
                char value[IBS_LINE_SIZE];
                ut_strgettoken(attributes, token, " ", 0);
                ut_strgettoken(token, key, ":", 0);
                ut_strgettoken(token, value, ":", 0);
                configs.push_back(new IB_IOBUF_CONFIG(key, value));
            }

            _iobufs.push_back(new IB_IOBUF(portName.c_str(), configs, pin, portType.c_str(), cell));
        }

        ibsReadPadLine(_padStream, row);
        if (row[0] == IBS_PAD_TABLE_RULE)
            break;
    }
    _pinTablePending = false;

    // The signal listing goes to standard output on every run.
    for (IB_IOBUF* iobuf : _iobufs)
        iobuf->print();

    if (ibsFamilyRules(_family).trueDifferentialNote) {
        for (IB_IOBUF* iobuf : _iobufs) {
            std::string ioType;
            for (IB_IOBUF_CONFIG* config : iobuf->configs)
                if (config->key == "IO_TYPE")
                    ioType = config->value;
            if (isTrueDifferential(iobuf->type, ioType)) {
                ibsReport(IBS_MSG_1019);
                break;
            }
        }
    }
}

void IBIS_MODEL::getIoTypeAndPortType(std::string& ioType, std::string& portType)
{
    std::string::size_type underscore = ioType.rfind('_');
    if (underscore == std::string::npos)
        return;
    portType = ioType.substr(underscore + 1);
    ioType = ioType.substr(0, underscore);
}
