// pad2ibis: the command-line host. It parses the command line and hands the
// run to the pad report flow, the SerDes flow or the checker.

#include <cstdio>
#include <exception>
#include <string>

#include "app/check_command.h"
#include "app/options.h"
#include "run/run_flows.h"

#ifndef PAD2IBIS_VERSION
#define PAD2IBIS_VERSION "0.0.0"
#endif

namespace {

int run(RunOptions const& options)
{
    applyRunOptions(options);
    return options.ami ? runAmiFlow(options) : runPadFlow(options);
}

} // namespace

int main(int argc, char** argv)
{
    if (argc > 1 && std::string(argv[1]) == "check")
        return runCheckCommand(argc - 2, argv + 2);

    RunOptions options;
    std::string error;
    if (!parseOptions(argc - 1, argv + 1, options, error)) {
        std::fprintf(stderr, "pad2ibis: %s\nTry 'pad2ibis --help' for more information.\n", error.c_str());
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
    // The legacy host lets the generator's two out-of-range failures end
    // the process as they always have; the default mode reads its inputs so
    // that they cannot happen, and says so should anything else escape.
    if (options.legacy)
        return run(options);
    try {
        return run(options);
    } catch (std::exception const& failure) {
        std::fflush(stdout);
        std::fprintf(stderr, "pad2ibis: error: the run failed: %s\n", failure.what());
        return 2;
    }
}
