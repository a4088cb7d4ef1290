// The files beside the design IBIS file: where it is, the numbered copies of
// the companion chip's IBIS file, and the package model file.

#include <cstdio>
#include <cstring>

#include "driver/basibsgen.h"
#include "driver/family_table.h"
#include "driver/load_time.h"
#include "driver/messages.h"
#include "driver/paths.h"
#include "host/ut_filemanager.h"
#include "host/ut_string.h"
#include "writer/design_paths.h"

namespace {

// Says that a file the design's device and package call for is not beside
// the master file ("BTN model file", "Package model file").
void printNotAvailable(char const* what, std::string const& name, IbsFileRole role)
{
    ibsPrint(IBS_OUTPUT_FILE_MISSING,
             ibsText("%s \"%s\" is not available for the device/package selected in the design.\n\n",
                     {what, name.c_str()}),
             role, name.c_str());
}

} // namespace

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
        printNotAvailable("BTN model file", source, IBS_FILE_COMPANION);
        return;
    }
    int const firstIndex = ibsDeviceRules(_input_dev_name).firstCompanion;
    ibsPrint(IBS_OUTPUT_SPACING, ibsText("\nGenerating BTN IBIS %s:\n", {count < 2 ? "file" : "files"}));
    if (count < 1) {
        ibsPrint(IBS_OUTPUT_SPACING, "\n");
        return;
    }
    for (int i = firstIndex; i < firstIndex + count; ++i) {
        std::string const name = ibsCompanionFileName(stem, i, count);
        if (!ut_file.copy(source.c_str(), name.c_str())) {
            ibsPrint(IBS_OUTPUT_FILE_FAILED, ibsText("ERROR: Failed to generating BTN IBIS file: \"%s\"\n", {name.c_str()}),
                     IBS_FILE_COMPANION, name.c_str());
            ibsExit(2);
        }
        ibsPrint(IBS_OUTPUT_FILE_WRITTEN, ibsText("    %s\n", {name.c_str()}), IBS_FILE_COMPANION, name.c_str());
    }
    ibsPrint(IBS_OUTPUT_SPACING, "\n");
}

void IBIS_MODEL::writePackageFile()
{
    std::string const fileName = ibsPackageFileName(*this);
    std::string const source = ibsBeside(_masterIbisFile, fileName);
    if (!ut_file.exist(source.c_str())) {
        if (ibsPartSaysMissingPackageFile(_partName))
            printNotAvailable("Package model file", fileName, IBS_FILE_PACKAGE);
        return;
    }
    std::string const target = ibsBeside(_designIbisFile, fileName);
    ibsPrint(IBS_OUTPUT_FILE_WRITTEN, ibsText("\nGenerating package file:  \"%s\"\n\n", {target.c_str()}),
             IBS_FILE_PACKAGE, target.c_str());
    if (!ut_file.copy(source.c_str(), target.c_str())) {
        ibsPrint(IBS_OUTPUT_FILE_FAILED, ibsText("ERROR: Failed to generating package file: \"%s\"\n\n", {target.c_str()}),
                 IBS_FILE_PACKAGE, target.c_str());
        ibsExit(2);
    }
}
