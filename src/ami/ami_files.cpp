// The SerDes AMI file set: source names beside the SerDes master file, and
// the ibis_ami directory with its copies and parameter files.

#include <cstdio>

#include "driver/basibsgen.h"
#include "driver/load_time.h"
#include "driver/messages.h"
#include "driver/paths.h"
#include "host/ut_filemanager.h"

namespace {

// Replaces the text from the last occurrence of what to the end by with.
bool replaceTail(std::string& path, char const* what, char const* with)
{
    std::string::size_type at = path.rfind(what);
    if (at == std::string::npos)
        return false;
    path = path.substr(0, at) + with;
    return true;
}

} // namespace

void IBS_GEN::initFiles(char const* designFile, char const* masterIbisFile)
{
    _masterIbisFile = masterIbisFile;
    _designFile = designFile;

    // A missing "h" library of these two families falls back on its sibling.
    if (!ut_file.exist(_masterIbisFile.c_str())) {
        replaceTail(_masterIbisFile, "anr4yh.ibs", "anr4y.ibs");
        replaceTail(_masterIbisFile, "anr5yh.ibs", "anr5y.ibs");
    }
    if (_masterIbisFile.find(".ibs") == std::string::npos)
        ibsFatal(IBS_MSG_1012, {_masterIbisFile.c_str()});

    if (_is_AMI_model) {
        // Every missing file of the set is named before the run ends.
        bool bad = false;
        auto missing = [](std::string const& path) {
            if (ut_file.exist(path.c_str()))
                return false;
            ibsReport(IBS_MSG_1033, {path.c_str()});
            return true;
        };
        if (missing(_masterIbisFile))
            bad = true;
        _amiRxParameterFile = _masterIbisFile;
        if (replaceTail(_amiRxParameterFile, "serdes.ibs", "RX_parameters.ami") &&
            missing(_amiRxParameterFile))
            bad = true;
        _amiTxParameterFile = _masterIbisFile;
        if (replaceTail(_amiTxParameterFile, "serdes.ibs", "TX_parameters.ami") &&
            missing(_amiTxParameterFile))
            bad = true;
        _amiRxExecutable = _masterIbisFile;
        getAmiRxExecutableFile(_amiRxExecutable);
        _amiTxExecutable = _masterIbisFile;
        getAmiTxExecutableFile(_amiTxExecutable);
        bool rxMissing = missing(_amiRxExecutable);
        bool txMissing = missing(_amiTxExecutable);
        if (rxMissing || txMissing || bad)
            ibsExit(2);

        _designBaseName = ibsSplitPath(*this, _designFile).name;
    } else {
        std::string::size_type dot = _designFile.rfind('.');
        _designIbisFile = dot == std::string::npos ? _designFile : _designFile.substr(0, dot) + ".ibs";
    }

    _deviceStatus.clear();
    if (_is_brinmark_flow)
        get_device_status(_masterIbisFile.c_str(), _deviceStatus);
}

namespace {

// The AMI executables lie beside the SerDes master file: "CVN_" + the
// master's prefix + the side's suffix.
std::string executableFor(IBIS_MODEL& model, std::string path, char const* suffix)
{
    std::string::size_type at = path.rfind("serdes.ibs");
    if (at != std::string::npos)
        path.erase(at);
    IbsPathParts parts = ibsSplitPath(model, path);
    return parts.drive + parts.directory + "CVN_" + parts.name + suffix;
}

} // namespace

void IBS_GEN::getAmiRxExecutableFile(std::string& path)
{
    path = executableFor(*this, path, "rx_ami.so");
}

void IBS_GEN::getAmiTxExecutableFile(std::string& path)
{
    path = executableFor(*this, path, "tx_ami.so");
}

namespace {

// Copies source into the output directory under its own name, or ends the
// run.
void copyIntoSet(IBIS_MODEL& model, std::string const& outputDir, std::string const& source,
                 char const* progress, char const* failure)
{
    IbsPathParts parts = ibsSplitPath(model, source);
    std::string target = ibsUnixPath(outputDir + "\\" + parts.name + parts.extension);
    std::printf(progress, target.c_str());
    if (!ut_file.copy(source.c_str(), target.c_str())) {
        std::printf(failure, target.c_str());
        ibsExit(2);
    }
}

} // namespace

void IBS_GEN::write_ami_files()
{
    if (_amiIobufs.empty()) {
        std::printf("\n");
        ibsReport(IBS_MSG_1035);
        return;
    }

    std::string const outputDir = ibsUnixPath(ibsCurrentDir() + "\\ibis_ami");
    if (!ut_file.exist(outputDir.c_str()) && !ut_file.mkdir(outputDir.c_str()))
        ibsFatal(IBS_MSG_1034, {outputDir.c_str()});

    copyIntoSet(*this, outputDir, _masterIbisFile, "\nGenerating SerDes IBIS file:  \"%s\"\n",
                "ERROR: Failed to generating SerDes IBIS file: \"%s\"\n");
    copyIntoSet(*this, outputDir, _amiRxExecutable, "Generating RX AMI file:       \"%s\"\n",
                "ERROR: Failed to generating RX AMI file: \"%s\"\n");
    copyIntoSet(*this, outputDir, _amiTxExecutable, "Generating TX AMI file:       \"%s\"\n",
                "ERROR: Failed to generating TX AMI file: \"%s\"\n");

    for (IB_AMI_CHANNEL* channel : _amiIobufs) {
        struct Side {
            std::string const& enable;
            char const* tag;
            char const* progress;
            std::string const& templateFile;
        } const sides[] = {
            {channel->rxEnable, "_rx_params", "Generating RX parameter file: \"%s\"\n",
             _amiRxParameterFile},
            {channel->txEnable, "_tx_params", "Generating TX parameter file: \"%s\"\n",
             _amiTxParameterFile},
        };
        for (Side const& side : sides) {
            if (side.enable != "ON")
                continue;
            std::string const path =
                ibsUnixPath(outputDir + "\\" + _designBaseName + side.tag + "_" +
                            channel->blockId + "_" + channel->channelId + ".ami");
            std::printf(side.progress, path.c_str());
            write_ami_parameter_file(side.templateFile.c_str(), path.c_str(), channel->configs);
        }
    }

    std::printf("\n");
    ibsReport(IBS_MSG_1036);
}
