// The SerDes flow of the program: the IBIS-AMI file set.

#include <cstdio>
#include <fstream>
#include <sstream>

#include "ami/ami_file_set.h"
#include "channels/channels_file.h"
#include "console/console.h"
#include "console/summary.h"
#include "driver/messages.h"
#include "host/ut_filemanager.h"
#include "run/channels_gen.h"
#include "run/run_flows.h"
#include "safety/ami_scan.h"
#include "safety/input_files.h"
#include "safety/output_guard.h"

namespace {

using console::Console;
using console::shownPath;

std::string baseName(std::string const& path)
{
    std::string::size_type const slash = path.find_last_of("/\\");
    return slash == std::string::npos ? path : path.substr(slash + 1);
}

// The files of the set's sources, which no output may be written over.
std::vector<safety::RunFile> amiInputs(RunOptions const& options, IBS_GEN const& generator)
{
    return {{"the channels file", options.channelsFile},
            {"the SerDes master file", generator._masterIbisFile},
            {"the receive AMI executable", generator._amiRxExecutable},
            {"the transmit AMI executable", generator._amiTxExecutable},
            {"the receive parameter template", generator._amiRxParameterFile},
            {"the transmit parameter template", generator._amiTxParameterFile}};
}

// The parameter templates copied into the set in the default mode: the
// SerDes IBIS file names them, so the set loads as it stands.
std::vector<IbsAmiFile> templateCopies(IBS_GEN const& generator)
{
    std::string const directory = ibsAmiOutputDirectory();
    return {{IBS_FILE_TEMPLATE, generator._amiRxParameterFile,
             directory + "/" + baseName(generator._amiRxParameterFile), nullptr},
            {IBS_FILE_TEMPLATE, generator._amiTxParameterFile,
             directory + "/" + baseName(generator._amiTxParameterFile), nullptr}};
}

// Says an error in the words of the mode: through the console in the default
// mode, as the legacy host says its own otherwise.
void sayError(Console const* console, std::string const& text)
{
    if (console != nullptr) {
        console->error(text);
        return;
    }
    std::fflush(stdout);
    std::fprintf(stderr, "pad2ibis: %s\n", text.c_str());
}

// Ends the run when an output would be written over an input.
void guardOutputs(RunOptions const& options, IBS_GEN& generator, std::vector<IbsAmiFile> const& outputs,
                  Console const* console)
{
    std::vector<safety::RunFile> written;
    for (IbsAmiFile const& file : outputs)
        written.push_back({"the SerDes set's file", shownPath(file.target)});
    safety::Overwrite const overwrite = safety::findOverwrite(amiInputs(options, generator), written);
    if (!overwrite.found)
        return;
    sayError(console, safety::describe(overwrite) + "; nothing was written");
    ibsExit(2);
}

// Refuses an input that a reader would wait on for ever (a pipe, a device),
// and in the default mode a directory too.
void refuseHazards(std::vector<safety::RunFile> const& inputs, Console const* console)
{
    for (safety::RunFile const& input : inputs) {
        std::string const hazard = input.path.empty() ? ""
                                   : console != nullptr ? safety::readerHazard(input.path)
                                                        : safety::waitHazard(input.path);
        if (hazard.empty())
            continue;
        sayError(console, input.what + " " + input.path + " " + hazard);
        ibsExit(1);
    }
}

int legacyAmiRun(RunOptions const& options)
{
    refuseHazards({{"the channels file", options.channelsFile}}, nullptr);
    ChannelsFileGen generator(options.channelsFile, true);
    generator.init(options.family.c_str(), nullptr, options.firstPath.c_str(), options.secondPath.c_str());
    refuseHazards(amiInputs(options, generator), nullptr);
    guardOutputs(options, generator, ibsAmiFiles(generator), nullptr);
    generator.run();
    return 0;
}

// What the channels file and the templates would lose in the parameter
// files; the number of errors.
int scanSerDesInputs(RunOptions const& options, IBS_GEN const& generator, Console const& console)
{
    std::ifstream in(options.channelsFile, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    std::istringstream lines(text.str());
    std::vector<ChannelLines> channels;
    int line = 0;
    std::string reason;
    parseChannels(lines, channels, line, reason);
    int errors = console.findings(options.channelsFile, safety::scanChannels(text.str(), channels));
    safety::TemplateUse rx{generator._amiRxParameterFile, {}}, tx{generator._amiTxParameterFile, {}};
    for (IB_AMI_CHANNEL const* channel : generator._amiIobufs) {
        if (channel->rxEnable == "ON")
            rx.channels.push_back(channel);
        if (channel->txEnable == "ON")
            tx.channels.push_back(channel);
    }
    for (safety::TemplateUse const& use : {rx, tx}) {
        if (use.channels.empty())
            continue;
        bool read = false;
        errors += console.findings(use.path, safety::scanTemplate(use, read));
        if (!read) {
            console.error("cannot read the parameter template " + use.path);
            ++errors;
        }
    }
    return errors;
}

std::string settingsText(IB_AMI_CHANNEL const& channel, IbsFileRole role)
{
    return "settings of channel " + channel.blockId + " " + channel.channelId +
           (role == IBS_FILE_RX_PARAMETERS ? ", receive side" : ", transmit side");
}

int defaultAmiRun(RunOptions const& options)
{
    Console console(options.quiet, options.verbose);
    console.attach();
    std::string const problem = safety::inputProblem(options.channelsFile);
    if (!problem.empty()) {
        console.error("the channels file " + options.channelsFile + " " + problem);
        ibsExit(1);
    }
    ChannelsFileGen generator(options.channelsFile, false);
    generator.init(options.family.c_str(), nullptr, options.firstPath.c_str(), options.secondPath.c_str());
    refuseHazards(amiInputs(options, generator), &console);
    if (scanSerDesInputs(options, generator, console) > 0) {
        console.error("the parameter files cannot be written as the inputs stand; nothing was written");
        ibsExit(1);
    }
    std::vector<IbsAmiFile> outputs = ibsAmiFiles(generator);
    std::vector<IbsAmiFile> const templates = templateCopies(generator);
    outputs.insert(outputs.end(), templates.begin(), templates.end());
    guardOutputs(options, generator, outputs, &console);

    generator.run();
    if (generator._amiIobufs.empty())
        return 0;
    for (IbsAmiFile const& copy : templates) {
        if (!ut_file.copy(copy.source.c_str(), copy.target.c_str())) {
            console.error("cannot write " + shownPath(copy.target));
            ibsExit(2);
        }
    }

    std::vector<console::SummaryFile> files;
    for (IbsAmiFile const& file : outputs) {
        std::string what = file.role == IBS_FILE_SERDES_MASTER   ? "SerDes IBIS file"
                           : file.role == IBS_FILE_RX_EXECUTABLE ? "receive AMI executable"
                           : file.role == IBS_FILE_TX_EXECUTABLE ? "transmit AMI executable"
                           : file.role == IBS_FILE_TEMPLATE
                               ? "parameter template, as the SerDes IBIS file names it"
                               : settingsText(*file.channel, file.role);
        files.push_back({shownPath(file.target), what});
    }
    console.summary(console::filesSummary("Wrote the SerDes IBIS-AMI set:", files));
    return 0;
}

} // namespace

int runAmiFlow(RunOptions const& options)
{
    IBIS_MODEL::_is_AMI_model = true;
    return options.legacy ? legacyAmiRun(options) : defaultAmiRun(options);
}
