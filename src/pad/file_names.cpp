// The file names of a run, and the device status line of the master file.

#include <cstring>

#include "driver/basibsgen.h"
#include "driver/line_reader.h"
#include "driver/load_time.h"
#include "driver/messages.h"
#include "driver/paths.h"
#include "host/ut_path.h"
#include "host/ut_string.h"
#include "pad/file_names.h"

bool ibsNamesPadReport(std::string const& path)
{
    return path.find(".pad") != std::string::npos;
}

bool ibsNamesIbisFile(std::string const& path)
{
    return path.find(".ibs") != std::string::npos;
}

void IBIS_MODEL::initFiles(char const* padFile, char const* masterIbisFile)
{
    _masterIbisFile = masterIbisFile;
    _padFile = padFile;
    if (!ibsNamesPadReport(_padFile))
        ibsFatal(IBS_MSG_1014, {padFile});
    if (!ibsNamesIbisFile(_masterIbisFile))
        ibsFatal(IBS_MSG_1012, {masterIbisFile});

    _designIbisFile = _padFile.substr(0, _padFile.rfind('.')) + ".ibs";

    _deviceStatus.clear();
    if (_is_brinmark_flow)
        get_device_status(_masterIbisFile.c_str(), _deviceStatus);
}

void IBIS_MODEL::split_file_name(char const* path, char* drive, char* directory, char* name,
                                 char* extension)
{
    IbsPathParts const parts = ibsSplitPath(path);
    std::strcpy(drive, parts.drive.c_str());
    std::strcpy(directory, parts.directory.c_str());
    std::strcpy(name, parts.name.c_str());
    std::strcpy(extension, parts.extension.c_str());
}

void IBIS_MODEL::get_device_status(char const* masterIbisFile, std::string& status)
{
    _statusStream.open(masterIbisFile);
    if (!_statusStream.is_open())
        ibsFatal(IBS_MSG_1015, {masterIbisFile});

    // The status line is one of the lines of the [NOTES] block ahead of the
    // naming convention tables.
    bool inNotes = false;
    char line[IBS_LINE_SIZE];
    while (ibsReadLine(_statusStream, line, IBS_LINE_SIZE)) {
        ut_strupr(line);
        if (!inNotes) {
            if (std::strstr(line, "[NOTES]") == nullptr)
                continue;
            inNotes = true;
        } else if (std::strstr(line, "NAMING CONVENTION") != nullptr) {
            break;
        }
        get_device_status_from_buffer(line, status);
        if (!status.empty())
            break;
    }
    _statusStream.close();
    _statusStream.clear();
}

void IBIS_MODEL::get_device_status_from_buffer(char const* line, std::string& status)
{
    char const* found = std::strstr(line, _input_dev_name.c_str());
    if (found != nullptr)
        status = found;
}
