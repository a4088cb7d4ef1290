// Access to the master IBIS file: its component, the check that it belongs
// to the design's part, and the list of models it holds.

#include <cstring>

#include "driver/basibsgen.h"
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

namespace {

// Only the family has to fit, not the exact device: the part name is
// searched for family fragments, and the component for the fragment that
// goes with them. Both searches see the whole stored part name, behind its
// NUL too.
bool componentFitsPart(std::string const& part, std::string const& component)
{
    std::string::size_type const none = std::string::npos;
    auto inPart = [&part, none](char const* fragment) { return part.find(fragment) != none; };
    bool an = inPart("AN");
    bool zr = inPart("ZR");
    bool hzu = inPart("HZU") || inPart("KRD");
    bool anr = inPart("ANR");
    bool tn = inPart("TN");
    bool a3 = inPart("A3");
    bool a4 = inPart("A4");
    bool a = inPart("A");
    bool kj = inPart("KJ");

    std::string::size_type result = none;
    if (an)
        result = component.find("AN");
    if (anr) {
        result = component.find("ANR");
    } else if (zr) {
        result = component.find("ZR");
    } else if (hzu) {
        for (char const* fragment : {"KRDH10", "KRDH20", "KRDH21", "ZU2", "ZU3"}) {
            result = component.find(fragment);
            if (result != none)
                break;
        }
    } else if (tn) {
        result = component.find("TN");
    } else if (kj) {
        result = component.find("KJ");
    } else if (a3) {
        result = component.find("ANR3");
    } else if (a4) {
        result = component.find("ANR4");
    } else if (a && result == none) {
        result = component.find("A");
    }
    if (result != none)
        return true;
    // Without a fragment the two names must be the same, stored length and
    // bytes.
    return part == component;
}

} // namespace

bool IBIS_MODEL::loadIbisModels()
{
    if (loadComponent() && !_partName.empty() && !componentFitsPart(_partName, _componentName))
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
