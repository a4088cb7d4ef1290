#include "app/options.h"

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>

char const* usageText()
{
    return "Usage: pad2ibis [OPTIONS] PAD_FILE MASTER_IBS\n"
           "       pad2ibis --ami --channels CHANNELS_FILE [--brinmark] [--msgflow] [--family WORD]\n"
           "                DESIGN_FILE SERDES_MASTER_IBS\n"
           "       pad2ibis check [--master] [--family WORD] FILE...\n"
           "       pad2ibis check --channels CHANNELS_FILE TEMPLATE_AMI...\n"
           "\n"
           "Writes the design IBIS file of a placed and routed FPGA design: the component,\n"
           "package, pins and models of the design, taken from the family's master IBIS\n"
           "file. PAD_FILE is the design's pad report (.pad), MASTER_IBS the master file\n"
           "(.ibs). For a pad report named by a relative path the design IBIS file goes to\n"
           "IBIS/<that path with .ibs> below the current directory; for an absolute path it\n"
           "goes beside the pad report. The package model file of the design's device, when\n"
           "the master has one beside it, is copied next to the design IBIS file.\n"
           "With --ami, writes the SerDes IBIS-AMI file set into ibis_ami/ instead.\n"
           "\n"
           "Options:\n"
           "  --family WORD      take WORD as the device family instead of the one the pad\n"
           "                     report names (for example HZU3, KVA4Y, KVA5Y)\n"
           "  --vargon           use the table-driven generator, which substitutes missing\n"
           "                     models from the family's legal configurations\n"
           "  --dump-alt-models  with --vargon: print the alternate model trees after the\n"
           "                     master file is read\n"
           "  --ncd              attribute names of the database flow (SLEWRATE, PULLMODE)\n"
           "  --brinmark         take the device status line from the master file's notes\n"
           "  --dphy             the design has a MIPI D-PHY block: list its pins and models\n"
           "  --msgflow          post messages by id to standard error\n"
           "                     (padmodel-<id>, then a TAB ahead of each argument)\n"
           "  --btn N            write N numbered copies of the companion chip's IBIS file\n"
           "                     (k_btn.ibs beside the master file); default 0. With N\n"
           "                     above 0 the design file is named <name>_zu2.ibs\n"
           "  --report FILE      also write a resolution report: one row per signal with\n"
           "                     its pin, bank, port type, IO settings, the model key\n"
           "                     built, the outcome (resolved, fallback, substituted,\n"
           "                     missing, none), the model written, the signal's name\n"
           "                     in the file, and for a missing model the nearest one\n"
           "                     the master has and the settings in which it differs;\n"
           "                     then the design's models with the signals each serves,\n"
           "                     and the count of each outcome. CSV, or JSON for a FILE\n"
           "                     ending in .json, or for one ending in .html a page to\n"
           "                     open in a browser: the outcomes on a map of the\n"
           "                     package's balls, the signal table, and the I-V and V-T\n"
           "                     curves of each model in the design file. What the run\n"
           "                     prints and writes is the same without it\n"
           "  --component-name NAME\n"
           "                     the design file's [Component] line names NAME instead\n"
           "                     of the master's component: 1 to 40 printable ASCII\n"
           "                     characters, no blank at either end, no '|'\n"
           "                     (--component-name BOARD_U7: [Component]     BOARD_U7)\n"
           "  --truncate N       cut [Pin] signal names longer than N to N characters;\n"
           "                     N is 0 (no cut), 20 or 40. A pair keeps its + and -\n"
           "                     within N; names the cut makes equal end in ~1, ~2 ...\n"
           "                     (--truncate 20: top/u_core/u_uart/uart_txd is written\n"
           "                     top/u_core/u_uart/ua)\n"
           "  --all-models       a [Model] block for every model of the master's [Pin]\n"
           "                     list, not only the design's; the [Pin] rows stay the\n"
           "                     design's (kva3_master.ibs: 27 blocks)\n"
           "  --model-selector   for each design model whose master has models that\n"
           "                     differ only in slew and drive, a [Model Selector]\n"
           "                     <model>_sel that the design's pins name: the design's\n"
           "                     model first, then those, each with its drive and slew\n"
           "                     (lvc330s160naaaaaaaou  DRIVE=16mA SLEW=SLOW)\n"
           "  --substitute nearest\n"
           "                     give each signal whose model the master lacks the\n"
           "                     nearest model it has: same IO standard and supply, a\n"
           "                     direction the signal can use (an input also a\n"
           "                     bidirectional model, an output or open-drain signal\n"
           "                     too), the fewest other settings changed, then the\n"
           "                     nearest drive (the stronger on a tie), the nearest\n"
           "                     slew, the first name. Reported as a substitution;\n"
           "                     with --vargon only where the family's own finds none\n"
           "  --ami              SerDes flow; needs --channels\n"
           "  --channels FILE    the SerDes channels: lines 'channel BLOCK CHANNEL RX TX'\n"
           "                     (RX, TX: ON or OFF), each followed by 'KEY VALUE' lines\n"
           "                     of its parameters; '#' starts a comment line\n"
           "  --help             print this text and exit\n"
           "  --version          print the version and exit\n"
           "\n"
           "pad2ibis check reads IBIS files and prints what a simulator or the generator\n"
           "would trip over, as FILE:LINE: error: TEXT or FILE:LINE: warning: TEXT, then\n"
           "a count line. By default the files are design IBIS files; with --master they\n"
           "are master IBIS files, checked for what the generator's readers rely on, and\n"
           "--family WORD (a family such as KVA3, or a part type such as KVA3-40E-6BG256C)\n"
           "also checks that the naming tables that family needs are all there. A file\n"
           "ending in .ami is an AMI parameter file, checked by the rules of the AMI\n"
           "parameter tree. With --channels, CHANNELS_FILE is checked against the\n"
           "parameter templates: settings that no template line takes, values that are\n"
           "written otherwise than they read, values outside their parameter's Type,\n"
           "Range or List; the templates are checked as AMI files too. Exit status 0\n"
           "when no error was found, 1 when one was, 2 for a usage error or a file that\n"
           "cannot be read.\n"
           "\n"
           "Exit status: 0 when the files were written (missing models are reported and\n"
           "the file is still written), 1 for a file that cannot be opened, an unknown\n"
           "device, an empty naming table or files that do not fit together, 2 for a bad\n"
           "argument, an empty design or a result that cannot be written.\n";
}

namespace {

bool parseCount(char const* text, int& value)
{
    if (*text == '\0')
        return false;
    for (char const* p = text; *p != '\0'; ++p)
        if (*p < '0' || *p > '9')
            return false;
    errno = 0;
    long number = std::strtol(text, nullptr, 10);
    if (errno != 0 || number > INT_MAX)
        return false;
    value = static_cast<int>(number);
    return true;
}

// Why NAME cannot stand on the [Component] line, or "" when it can.
std::string componentNameProblem(std::string const& name)
{
    if (name.empty() || name.size() > 40)
        return "--component-name needs 1 to 40 characters, not " + std::to_string(name.size());
    if (name.front() == ' ' || name.back() == ' ')
        return "--component-name '" + name + "' has a blank at an end";
    for (char c : name)
        if (c < ' ' || c > '~')
            return "--component-name takes printable ASCII characters only";
    if (name.find('|') != std::string::npos)
        return "--component-name '" + name + "' holds '|', which starts an IBIS comment";
    return "";
}

} // namespace

bool parseOptions(int argc, char const* const* argv, Options& options, std::string& error)
{
    int i = 0;
    auto needValue = [&](char const* option, std::string& value) {
        if (i + 1 >= argc) {
            error = std::string(option) + " needs a value";
            return false;
        }
        value = argv[++i];
        return true;
    };

    for (; i < argc; ++i) {
        std::string arg = argv[i];
        if (arg == "--") {
            ++i;
            break;
        }
        if (arg.compare(0, 2, "--") != 0)
            break;
        if (arg == "--help") {
            options.help = true;
        } else if (arg == "--version") {
            options.version = true;
        } else if (arg == "--family") {
            if (!needValue("--family", options.family))
                return false;
            options.familyGiven = true;
        } else if (arg == "--vargon") {
            options.vargon = true;
        } else if (arg == "--ncd") {
            options.ncd = true;
        } else if (arg == "--brinmark") {
            options.brinmark = true;
        } else if (arg == "--dphy") {
            options.dphy = true;
        } else if (arg == "--msgflow") {
            options.msgflow = true;
        } else if (arg == "--btn") {
            std::string count;
            if (!needValue("--btn", count))
                return false;
            if (!parseCount(count.c_str(), options.btn)) {
                error = "--btn needs a whole number, not '" + count + "'";
                return false;
            }
        } else if (arg == "--report") {
            if (!needValue("--report", options.reportFile))
                return false;
        } else if (arg == "--component-name") {
            if (!needValue("--component-name", options.componentName))
                return false;
            error = componentNameProblem(options.componentName);
            if (!error.empty())
                return false;
        } else if (arg == "--truncate") {
            std::string width;
            if (!needValue("--truncate", width))
                return false;
            if (width != "0" && width != "20" && width != "40") {
                error = "--truncate takes 0, 20 or 40, not '" + width + "'";
                return false;
            }
            options.truncate = std::atoi(width.c_str());
        } else if (arg == "--all-models") {
            options.allModels = true;
        } else if (arg == "--model-selector") {
            options.modelSelector = true;
        } else if (arg == "--substitute") {
            std::string what;
            if (!needValue("--substitute", what))
                return false;
            if (what != "nearest") {
                error = "--substitute takes 'nearest', not '" + what + "'";
                return false;
            }
            options.substituteNearest = true;
        } else if (arg == "--dump-alt-models") {
            options.dumpAltModels = true;
        } else if (arg == "--ami") {
            options.ami = true;
        } else if (arg == "--channels") {
            if (!needValue("--channels", options.channelsFile))
                return false;
        } else {
            error = "unknown option " + arg;
            return false;
        }
    }
    if (options.help || options.version)
        return true;

    if (argc - i != 2) {
        error = argc - i < 2 ? "missing path" : "too many paths";
        return false;
    }
    options.firstPath = argv[i];
    options.secondPath = argv[i + 1];

    if (options.ami) {
        if (options.channelsFile.empty()) {
            error = "--ami needs --channels";
            return false;
        }
        if (options.vargon || options.ncd || options.dphy || options.btn != 0 ||
            options.dumpAltModels || !options.reportFile.empty() || !options.componentName.empty() ||
            options.truncate != 0 || options.allModels || options.modelSelector ||
            options.substituteNearest) {
            error = "--ami takes only --channels, --brinmark, --msgflow and --family";
            return false;
        }
    } else if (!options.channelsFile.empty()) {
        error = "--channels goes with --ami";
        return false;
    }
    if (options.dumpAltModels && !options.vargon) {
        error = "--dump-alt-models goes with --vargon";
        return false;
    }
    return true;
}
