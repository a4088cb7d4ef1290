// The files beside the design IBIS file: where it is, the numbered copies of
// the companion chip's IBIS file, and the package model file.

#include <cstdio>
#include <cstring>

#include "driver/basibsgen.h"
#include "driver/load_time.h"
#include "driver/messages.h"
#include "driver/paths.h"
#include "host/ut_filemanager.h"
#include "host/ut_string.h"

void IBIS_MODEL::writeFileLocation()
{
    std::string path = _designIbisFile;
    if (!ut_file.isabsolute(path.c_str())) {
        path = ibsUnixPath(ibsCurrentDir() + "\\" + path);
    }
    if (ut_file.exist(path.c_str()))
        ibsReport(IBS_MSG_1030, {path.c_str()});
}

void IBIS_MODEL::writeBtnFile(std::string stem, std::string source, int count)
{
    if (!ut_file.exist(source.c_str())) {
        std::printf("BTN model file \"%s\" is not available for the device/package selected in the "
                    "design.\n\n",
                    source.c_str());
        return;
    }
    // The companion files of this part count from 1, all others from 0.
    int const firstIndex = _input_dev_name == "KRDH21" ? 1 : 0;
    std::printf("\nGenerating BTN IBIS %s:\n", count < 2 ? "file" : "files");
    if (count < 1) {
        std::printf("\n");
        return;
    }
    for (int i = firstIndex; i < firstIndex + count; ++i) {
        char digits[16];
        std::snprintf(digits, sizeof digits, count > 9 ? "%02d" : "%d", i);
        std::string name = stem + "_btn" + digits + ".ibs";
        if (!ut_file.copy(source.c_str(), name.c_str())) {
            std::printf("ERROR: Failed to generating BTN IBIS file: \"%s\"\n", name.c_str());
            ibsExit(2);
        }
        std::printf("    %s\n", name.c_str());
    }
    std::printf("\n");
}

void IBIS_MODEL::writePackageFile()
{
    // The package model file is named after the master, the device's speed
    // and package suffix, the package kind and its pin count.
    IbsPathParts const master = ibsSplitPath(*this, _masterIbisFile);
    std::string fileName = master.name;
    std::string::size_type dash = _input_dev_name.rfind('-');
    if (dash != std::string::npos)
        fileName += "_" + _input_dev_name.substr(dash + 1);
    if (_packageName.find("BG") != std::string::npos || _packageName.find("bg") != std::string::npos)
        fileName += "_bg";
    else if (_packageName.find("MG") != std::string::npos ||
             _packageName.find("mg") != std::string::npos)
        fileName += "_mg";
    fileName += _packagePinCount + ".pkg";
    std::vector<char> lower(fileName.begin(), fileName.end());
    lower.push_back('\0');
    ut_strlwr(lower.data());
    fileName = lower.data();

    std::string const source = ibsUnixPath(master.drive + master.directory + fileName);
    if (!ut_file.exist(source.c_str())) {
        if (_partName == "MORVALLE")
            std::printf("Package model file \"%s\" is not available for the device/package selected "
                        "in the design.\n\n",
                        fileName.c_str());
        return;
    }
    IbsPathParts const design = ibsSplitPath(*this, _designIbisFile);
    std::string const target = ibsUnixPath(design.drive + design.directory + fileName);
    std::printf("\nGenerating package file:  \"%s\"\n\n", target.c_str());
    if (!ut_file.copy(source.c_str(), target.c_str())) {
        std::printf("ERROR: Failed to generating package file: \"%s\"\n\n", target.c_str());
        ibsExit(2);
    }
}
