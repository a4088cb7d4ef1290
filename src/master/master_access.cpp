// Access to the master IBIS file: its component, the check that it belongs
// to the design's part, and the list of models it holds.

#include <cstring>

#include "driver/basibsgen.h"
#include "driver/family_table.h"
#include "driver/line_reader.h"
#include "driver/load_time.h"
#include "driver/messages.h"
#include "host/ut_string.h"
#include "master/master_lines.h"

bool IBIS_MODEL::isDeviceIbisFileOpen()
{
    if (!_masterStream.is_open())
        ibsFatal(IBS_MSG_1015, {_masterIbisFile.c_str()});
    return true;
}

bool IBIS_MODEL::isDesignIbisFileOpen()
{
    if (!_designStream.is_open())
        ibsFatal(IBS_MSG_1015, {_designIbisFile.c_str()});
    return true;
}

bool IBIS_MODEL::loadComponent()
{
    _masterStream.open(_masterIbisFile.c_str());
    isDeviceIbisFileOpen();

    bool found = false;
    char line[IBS_LINE_SIZE];
    char token[IBS_LINE_SIZE];
    while (!ibsStreamDone(_masterStream)) {
        ibsReadLine(_masterStream, line, IBS_LINE_SIZE);
        if (ibsIsComponentLine(line)) {
            // The name is the token behind the keyword's.
            ut_strgettoken(line, token, " ", 0);
            ut_strgettoken(line, token, " ", 0);
            ut_strtrim(token);
            _componentName = token;
            found = true;
            break;
        }
    }
    _masterStream.close();
    _masterStream.clear();
    return found;
}

bool IBIS_MODEL::loadIbisModels()
{
    if (loadComponent() && !_partName.empty() && !ibsComponentFitsPart(_partName, _componentName))
        ibsFatal(IBS_MSG_1025, {_partName.c_str(), _componentName.c_str()});
    if (!loadDevIoMaps())
        return false;
    return loadAvailableModels();
}

bool IBIS_MODEL::loadAvailableModels()
{
    _masterStream.open(_masterIbisFile.c_str());
    isDeviceIbisFileOpen();

    // Only the first [Pin] section counts; its rows run up to the first
    // comment line behind them.
    char line[IBS_COPY_LINE_SIZE];
    ibsReadLine(_masterStream, line, IBS_COPY_LINE_SIZE);
    while (!ibsStreamDone(_masterStream)) {
        if (!ibsIsPinListHeading(line)) {
            ibsReadLine(_masterStream, line, IBS_COPY_LINE_SIZE);
            continue;
        }
        ibsReadLine(_masterStream, line, IBS_COPY_LINE_SIZE);
        for (;;) {
            IbsPinListRow const row = ibsPinListRow(line);
            if (!row.model.empty()) {
                _availableModels.insert(row.model);
                // The true side of a differential pair in the master's own
                // pin list.
                if (!row.pin.empty() && !row.signal.empty() && row.signal.back() == 'p')
                    _modelPinMap[row.model] = row.pin;
            }
            if (ibsStreamDone(_masterStream))
                break;
            ibsReadLine(_masterStream, line, IBS_COPY_LINE_SIZE);
            if (ibsEndsPinList(line))
                break;
        }
        break;
    }
    _masterStream.close();
    _masterStream.clear();
    return !_availableModels.empty();
}
