// The names of the design IBIS file and of the files beside it.

#include "writer/design_paths.h"

#include <cstdio>

#include "driver/basibsgen.h"
#include "driver/family_table.h"
#include "driver/load_time.h"
#include "driver/paths.h"
#include "host/ut_filemanager.h"
#include "host/ut_string.h"

namespace {

// The path cut behind its last "\", or else behind its last "/".
std::string::size_type behindLastSeparator(std::string const& path)
{
    std::string::size_type cut = path.rfind('\\');
    if (cut == std::string::npos)
        cut = path.rfind('/');
    return cut == std::string::npos ? std::string::npos : cut + 1;
}

} // namespace

IbsDesignPaths ibsDesignPaths(IBIS_MODEL& model, int btnCount)
{
    IbsDesignPaths paths;
    IbsDeviceRules const& device = ibsDeviceRules(IBIS_MODEL::_input_dev_name);
    // The companion chip's IBIS file lies beside the master. A master path
    // without a separator keeps its whole text ahead of the name.
    bool const companions = btnCount > 0 && device.companions;
    if (companions) {
        std::string::size_type cut = behindLastSeparator(model._masterIbisFile);
        paths.btnSource =
            (cut == std::string::npos ? model._masterIbisFile : model._masterIbisFile.substr(0, cut)) + "k_btn.ibs";
    }

    paths.designFile = model._designIbisFile;
    std::string designStem;
    if (companions || device.designSuffix != nullptr) {
        std::string::size_type dot = paths.designFile.rfind('.');
        designStem = dot == std::string::npos ? paths.designFile : paths.designFile.substr(0, dot);
        paths.designFile = designStem + (device.designSuffix != nullptr ? device.designSuffix : "_zu2.ibs");
    }

    // A relative design file goes into the IBIS directory below the current
    // directory; an absolute one stays where it is.
    if (!ut_file.isabsolute(paths.designFile.c_str())) {
        paths.ibisDirectory = ibsUnixPath(ibsCurrentDir() + "\\IBIS");
        std::string const directory = paths.ibisDirectory + "\\";
        // The companion copies' stem keeps the mixed separator; the host's
        // copy service takes it as it is.
        if (btnCount != 0)
            paths.btnStem = directory + designStem;
        paths.designFile = ibsUnixPath(directory + paths.designFile);
    }

    if (companions) {
        int const firstIndex = device.firstCompanion;
        for (int i = firstIndex; i < firstIndex + btnCount; ++i)
            paths.companionFiles.push_back(ibsCompanionFileName(paths.btnStem, i, btnCount));
    }

    paths.packageFileName = ibsPackageFileName(model);
    paths.packageSource = ibsBeside(model._masterIbisFile, paths.packageFileName);
    paths.packageTarget = ibsBeside(paths.designFile, paths.packageFileName);
    return paths;
}

std::string ibsBeside(std::string const& path, std::string const& name)
{
    IbsPathParts const parts = ibsSplitPath(path);
    return ibsUnixPath(parts.drive + parts.directory + name);
}

std::string ibsCompanionFileName(std::string const& stem, int index, int count)
{
    char digits[16];
    std::snprintf(digits, sizeof digits, count > 9 ? "%02d" : "%d", index);
    return stem + "_btn" + digits + ".ibs";
}

std::string ibsPackageFileName(IBIS_MODEL& model)
{
    // The master's name, the device's speed and package suffix, the package
    // kind and its pin count.
    IbsPathParts const master = ibsSplitPath(model._masterIbisFile);
    std::string fileName = master.name;
    std::string const& device = IBIS_MODEL::_input_dev_name;
    std::string::size_type dash = device.rfind('-');
    if (dash != std::string::npos)
        fileName += "_" + device.substr(dash + 1);
    std::string const& package = model._packageName;
    if (package.find("BG") != std::string::npos || package.find("bg") != std::string::npos)
        fileName += "_bg";
    else if (package.find("MG") != std::string::npos || package.find("mg") != std::string::npos)
        fileName += "_mg";
    fileName += model._packagePinCount + ".pkg";
    std::vector<char> lower(fileName.begin(), fileName.end());
    lower.push_back('\0');
    ut_strlwr(lower.data());
    return lower.data();
}
