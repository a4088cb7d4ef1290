// pad2ibis: the command-line host. It drives the generator library exactly
// as a host tool of the design suite does.

#include <cstdio>
#include <string>

#include "app/ami_host.h"
#include "app/check_command.h"
#include "app/options.h"
#include "report/resolution_report.h"
#include "driver/basibsgen.h"
#include "driver/messages.h"
#include "host/msgmanager.h"
#include "nearest/nearest_model.h"
#include "resolve/model_substitute.h"
#include "variant/basib_vargon.h"
#include "writer/design_file_options.h"

#ifndef PAD2IBIS_VERSION
#define PAD2IBIS_VERSION "0.0.0"
#endif

namespace {

int runAmiFlow(Options const& options)
{
    IBIS_MODEL::_is_AMI_model = true;
    ChannelsFileGen* generator = new ChannelsFileGen(options.channelsFile);
    generator->init(options.family.c_str(), nullptr, options.firstPath.c_str(),
                    options.secondPath.c_str());
    generator->run();
    delete generator;
    return 0;
}

int runPadFlow(Options const& options)
{
    std::string family;
    IBIS_MODEL::getDevName(options.firstPath, family);
    if (options.familyGiven)
        family = options.family;

    IBIS_MODEL* generator = nullptr;
    IBIS_MODEL_VARGON* variant = nullptr;
    if (options.vargon) {
        variant = new IBIS_MODEL_VARGON(family.c_str(), options.firstPath.c_str(),
                                        options.secondPath.c_str());
        generator = variant;
    } else {
        generator =
            new IBIS_MODEL(family.c_str(), options.firstPath.c_str(), options.secondPath.c_str());
    }

    if (!generator->loadIbisModels())
        ibsFatal(IBS_MSG_1003);
    if (options.dumpAltModels && variant != nullptr)
        variant->printAltModelLists();
    if (options.substituteNearest)
        ibsSetSubstituteChooser(&ibsnearest::nearestSubstitute);
    ResolutionReport report;
    bool const reporting = !options.reportFile.empty();
    if (reporting)
        report.beforeWalk(*generator);
    generator->setDesignModels();
    if (reporting)
        report.afterWalk(*generator);
    if (!generator->writeIbisModels(options.btn))
        ibsReport(IBS_MSG_1004);
    if (generator->_missingModelCount > 0)
        ibsReport(IBS_MSG_1005);
    int status = 0;
    if (reporting) {
        report.afterWrite(*generator);
        report.setRun(options.firstPath, options.secondPath, options.vargon);
        if (!report.write(options.reportFile)) {
            std::fflush(stdout);
            std::fprintf(stderr, "pad2ibis: cannot write the report %s\n",
                         options.reportFile.c_str());
            status = 2;
        }
    }
    delete generator;
    return status;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc > 1 && std::string(argv[1]) == "check")
        return runCheckCommand(argc - 2, argv + 2);

    Options options;
    std::string error;
    if (!parseOptions(argc - 1, argv + 1, options, error)) {
        std::fprintf(stderr, "pad2ibis: %s\nTry 'pad2ibis --help' for more information.\n",
                     error.c_str());
        return 2;
    }
    if (options.help) {
        std::fputs(usageText(), stdout);
        return 0;
    }
    if (options.version) {
        std::printf("pad2ibis %s\n", PAD2IBIS_VERSION);
        return 0;
    }

    if (options.msgflow)
        UT_MSGMAN::m_msgFlow = 1;
    IBIS_MODEL::_is_ncd_flow = options.ncd;
    IBIS_MODEL::_is_brinmark_flow = options.brinmark;
    IBIS_MODEL::_mipi_dphy_ip_used = options.dphy;
    IbsDesignFileOptions designFile;
    designFile.componentName = options.componentName;
    designFile.signalNameWidth = options.truncate;
    designFile.allModels = options.allModels;
    designFile.modelSelectors = options.modelSelector;
    ibsSetDesignFileOptions(designFile);

    if (options.ami)
        return runAmiFlow(options);
    return runPadFlow(options);
}
