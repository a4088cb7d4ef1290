// The line-by-line reading of the pad report.

#include <cstring>

#include "driver/basibsgen.h"
#include "driver/line_reader.h"
#include "driver/load_time.h"
#include "driver/messages.h"
#include "host/ut_string.h"
#include "pad/line_tokens.h"
#include "pad/pad_lines.h"

bool IBIS_MODEL::loadIos()
{
    _padStream.open(_padFile.c_str());
    if (!_padStream.is_open())
        ibsFatal(IBS_MSG_1015, {_padFile.c_str()});

    // Each line is offered to every section reader in turn; a reader that
    // recognises its heading reads its table from the stream itself. The
    // first line is the only one offered as it stands: the others are upper
    // cased so that the headings hold in any case.
    char line[IBS_LINE_SIZE];
    ibsReadPadLine(_padStream, line);
    while (!ibsStreamDone(_padStream)) {
        setPartType(line);
        setPackage(line);
        setPinInfo(line);
        loadPinInfo(line);
        loadBankInfo(line);
        loadDiffPinInfo(line);

        ibsReadPadLine(_padStream, line);
        if (ibsStreamDone(_padStream))
            break;
        ut_strupr(line);
        if (std::strstr(line, IBS_PAD_END) != nullptr) {
            loadSysConfigPinInfo(line);
            break;
        }
    }
    _padStream.close();
    return !_iobufs.empty();
}

void IBIS_MODEL::setPartType(char* line)
{
    char token[IBS_LINE_SIZE];
    if (!ibsLabelledToken(line, IBS_PAD_PART_TYPE, token, 3))
        return;
    _partName = token;
    getPartName(_partName);
}

void IBIS_MODEL::setPackage(char* line)
{
    char token[IBS_LINE_SIZE];
    if (!ibsLabelledToken(line, IBS_PAD_PACKAGE, token, 2))
        return;
    ut_strupr(token);
    // The first line that names a real package wins.
    if (std::strcmp(token, "VERSION") != 0 && _packageName.empty())
        _packageName = token;
}

// The system configuration pins are recognised, and end the report, but
// nothing is taken from them.
void IBIS_MODEL::loadSysConfigPinInfo(char*) {}
