// The SerDes AMI file set: source names beside the SerDes master file, and
// the ibis_ami directory with its copies and parameter files.

#include "ami/ami_file_set.h"
#include "driver/basibsgen.h"
#include "driver/load_time.h"
#include "driver/messages.h"
#include "driver/paths.h"
#include "host/ut_filemanager.h"
#include "pad/file_names.h"

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
    if (!ibsNamesIbisFile(_masterIbisFile))
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

        _designBaseName = ibsSplitPath(_designFile).name;
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
std::string executableFor(std::string path, char const* suffix)
{
    std::string::size_type at = path.rfind("serdes.ibs");
    if (at != std::string::npos)
        path.erase(at);
    IbsPathParts parts = ibsSplitPath(path);
    return parts.drive + parts.directory + "CVN_" + parts.name + suffix;
}

} // namespace

void IBS_GEN::getAmiRxExecutableFile(std::string& path)
{
    path = executableFor(path, "rx_ami.so");
}

void IBS_GEN::getAmiTxExecutableFile(std::string& path)
{
    path = executableFor(path, "tx_ami.so");
}

std::string ibsAmiOutputDirectory()
{
    return ibsUnixPath(ibsCurrentDir() + "\\ibis_ami");
}

std::vector<IbsAmiFile> ibsAmiFiles(IBS_GEN& generator)
{
    std::string const outputDir = ibsAmiOutputDirectory();
    std::vector<IbsAmiFile> files;
    // The set's copies keep their own names.
    auto copy = [&](IbsFileRole role, std::string const& source) {
        IbsPathParts const parts = ibsSplitPath(source);
        files.push_back({role, source, ibsUnixPath(outputDir + "\\" + parts.name + parts.extension), nullptr});
    };
    copy(IBS_FILE_SERDES_MASTER, generator._masterIbisFile);
    copy(IBS_FILE_RX_EXECUTABLE, generator._amiRxExecutable);
    copy(IBS_FILE_TX_EXECUTABLE, generator._amiTxExecutable);
    for (IB_AMI_CHANNEL const* channel : generator._amiIobufs) {
        struct Side {
            std::string const& enable;
            char const* tag;
            IbsFileRole role;
            std::string const& templateFile;
        } const sides[] = {
            {channel->rxEnable, "_rx_params", IBS_FILE_RX_PARAMETERS, generator._amiRxParameterFile},
            {channel->txEnable, "_tx_params", IBS_FILE_TX_PARAMETERS, generator._amiTxParameterFile},
        };
        for (Side const& side : sides) {
            if (side.enable != "ON")
                continue;
            files.push_back({side.role, side.templateFile,
                             ibsUnixPath(outputDir + "\\" + generator._designBaseName + side.tag + "_" +
                                         channel->blockId + "_" + channel->channelId + ".ami"),
                             channel});
        }
    }
    return files;
}

void IBS_GEN::write_ami_files()
{
    if (_amiIobufs.empty()) {
        ibsPrint(IBS_OUTPUT_SPACING, "\n");
        ibsReport(IBS_MSG_1035);
        return;
    }

    std::string const outputDir = ibsAmiOutputDirectory();
    if (!ut_file.exist(outputDir.c_str()) && !ut_file.mkdir(outputDir.c_str()))
        ibsFatal(IBS_MSG_1034, {outputDir.c_str()});

    for (IbsAmiFile const& file : ibsAmiFiles(*this)) {
        struct Texts {
            IbsFileRole role;
            char const* progress;
            char const* failure; // null: a parameter file, which reports its own failures
        } static const texts[] = {
            {IBS_FILE_SERDES_MASTER, "\nGenerating SerDes IBIS file:  \"%s\"\n",
             "ERROR: Failed to generating SerDes IBIS file: \"%s\"\n"},
            {IBS_FILE_RX_EXECUTABLE, "Generating RX AMI file:       \"%s\"\n",
             "ERROR: Failed to generating RX AMI file: \"%s\"\n"},
            {IBS_FILE_TX_EXECUTABLE, "Generating TX AMI file:       \"%s\"\n",
             "ERROR: Failed to generating TX AMI file: \"%s\"\n"},
            {IBS_FILE_RX_PARAMETERS, "Generating RX parameter file: \"%s\"\n", nullptr},
            {IBS_FILE_TX_PARAMETERS, "Generating TX parameter file: \"%s\"\n", nullptr},
        };
        Texts const* text = texts;
        while (text->role != file.role)
            ++text;
        char const* target = file.target.c_str();
        ibsPrint(IBS_OUTPUT_FILE_WRITTEN, ibsText(text->progress, {target}), file.role, target);
        if (text->failure == nullptr) {
            write_ami_parameter_file(file.source.c_str(), target,
                                     const_cast<IB_AMI_CHANNEL*>(file.channel)->configs);
        } else if (!ut_file.copy(file.source.c_str(), target)) {
            ibsPrint(IBS_OUTPUT_FILE_FAILED, ibsText(text->failure, {target}), file.role, target);
            ibsExit(2);
        }
    }

    ibsPrint(IBS_OUTPUT_SPACING, "\n");
    ibsReport(IBS_MSG_1036);
}
