#include "app/options.h"

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <utility>

#include "driver/family_table.h"
#include "ibis/ibis_syntax.h"

char const* usageText()
{
    return "Usage: pad2ibis [OPTIONS] PAD_FILE MASTER_IBS\n"
           "       pad2ibis --ami --channels CHANNELS_FILE [OPTIONS] DESIGN_FILE SERDES_MASTER_IBS\n"
           "       pad2ibis check [--master] [--family WORD] FILE...\n"
           "       pad2ibis check --channels CHANNELS_FILE TEMPLATE_AMI...\n"
           "\n"
           "Writes the design IBIS file of a placed and routed FPGA design: the component,\n"
           "package, pins and models of the design, taken from the family's master IBIS\n"
           "file. PAD_FILE is the design's pad report (.pad), MASTER_IBS the master file\n"
           "(.ibs). For a pad report named by a relative path the design IBIS file goes to\n"
           "IBIS/<that path with .ibs> below the current directory, whose folders are made;\n"
           "for an absolute path it goes beside the pad report. The package model file of\n"
           "the design's device, when the master has one beside it, is copied next to the\n"
           "design IBIS file. With --ami, writes the SerDes IBIS-AMI file set into\n"
           "ibis_ami/ instead.\n"
           "\n"
           "By default pad2ibis first reads its inputs for what the generator would lose\n"
           "or misread without a word (a line longer than its reader takes, a NUL byte, a\n"
           "table or block without its closing line), reports each as FILE:LINE: error:\n"
           "TEXT and writes nothing (exit status 1); a pad report with CR LF line ends is\n"
           "read as one with LF line ends. It prints its progress on standard output,\n"
           "warnings and errors on standard error, and closes with a summary of the files\n"
           "it wrote and of what the signals got. The SerDes set also gets the parameter\n"
           "templates that its SerDes IBIS file names. With --legacy it runs as the legacy\n"
           "flow does, byte for byte: the listing of the signals and the generator's own\n"
           "messages on standard output, its files and exit codes, and no reading of the\n"
           "inputs ahead of it. In both modes a directory or a device as an input is\n"
           "refused (exit status 1), and so is an output that would be written over an\n"
           "input (exit status 2).\n"
           "\n"
           "Options:\n"
           "  --legacy           run as the legacy flow does (see above)\n"
           "  -q, --quiet        print only warnings, errors and the closing summary\n"
           "  -v, --verbose      also list every signal of the pad report as it was read\n"
           "  --family WORD      take WORD as the device family instead of the one the pad\n"
           "                     report names: KVZR2, KVA3, KVA4, KVAN, KVZR, HZU2, HZU,\n"
           "                     KVTN, KVA2, KJ, HZU3, KVA4Y or KVA5Y, in any letter case\n"
           "                     (with --legacy any word, as it stands)\n"
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
           "                     (k_btn.ibs beside the master file), N from 0 to 99; default\n"
           "                     0. With N above 0 the design file is named <name>_zu2.ibs\n"
           "                     (with --legacy any whole number)\n"
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
           "                     curves of each model in the design file. The ending in\n"
           "                     any letter case (with --legacy in lower case only).\n"
           "                     What the run prints and writes is the same without it\n"
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
           "  --pin-parasitics   each [Pin] row carries its pin's R_pin, L_pin and C_pin\n"
           "                     from the package model (the self terms; in the section\n"
           "                     form the whole path); a pin the model lacks keeps the\n"
           "                     [Package] values and is named in a warning\n"
           "  --package-model    the design file names the package model under\n"
           "                     [Component] ([Package Model] NAME) and holds it,\n"
           "                     reduced to the design's pins: every R, L and C term\n"
           "                     between two of them. The package model is the one of\n"
           "                     the package model file beside the master file, or else\n"
           "                     the master file's own; without one both options warn\n"
           "                     and change nothing\n"
           "  --ami              SerDes flow; needs --channels\n"
           "  --channels FILE    the SerDes channels: lines 'channel BLOCK CHANNEL RX TX'\n"
           "                     (RX, TX: ON or OFF), each followed by 'KEY VALUE' lines\n"
           "                     of its parameters; '#' starts a comment line\n"
           "  -h, --help         print this text and exit\n"
           "  -V, --version      print the version and exit\n"
           "\n"
           "pad2ibis check reads IBIS files and prints what a simulator or the generator\n"
           "would trip over, as FILE:LINE: error: TEXT or FILE:LINE: warning: TEXT, then\n"
           "a count line; pad2ibis check --help tells more.\n"
           "\n"
           "Exit status: 0 when the files were written (missing models are reported and\n"
           "the file is still written), 1 for a file that cannot be opened or read as it\n"
           "stands, an unknown device, an empty naming table or files that do not fit\n"
           "together, 2 for a bad argument, an empty design, a result that cannot be\n"
           "written or an output that would be written over an input.\n";
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

// The most companion-chip copies a board takes, outside --legacy.
int const kMaxCompanionCopies = 99;

// Turns word into the family word it names in any letter case; or says
// which words there are.
std::string knownFamily(std::string& word)
{
    std::string list;
    for (char const* known : ibsFamilyWords()) {
        if (ibis::sameWord(word, known)) {
            word = known;
            return "";
        }
        list += (list.empty() ? "" : ", ") + std::string(known);
    }
    return "--family takes one of " + list + ", not '" + word + "'";
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

// The member of an option's name in a table of names and members; null
// for a name the table lacks.
template <class Member, std::size_t N>
Member memberOf(std::pair<char const*, Member> const (&table)[N], std::string const& arg)
{
    for (auto const& entry : table)
        if (arg == entry.first)
            return entry.second;
    return nullptr;
}

// The options that only switch something on, by each of their names.
bool RunOptions::*switchOf(std::string const& arg)
{
    static std::pair<char const*, bool RunOptions::*> const switches[] = {
        {"--help", &RunOptions::help},
        {"-h", &RunOptions::help},
        {"--version", &RunOptions::version},
        {"-V", &RunOptions::version},
        {"--legacy", &RunOptions::legacy},
        {"--quiet", &RunOptions::quiet},
        {"-q", &RunOptions::quiet},
        {"--verbose", &RunOptions::verbose},
        {"-v", &RunOptions::verbose},
        {"--vargon", &RunOptions::vargon},
        {"--ncd", &RunOptions::ncd},
        {"--brinmark", &RunOptions::brinmark},
        {"--dphy", &RunOptions::dphy},
        {"--msgflow", &RunOptions::msgflow},
        {"--all-models", &RunOptions::allModels},
        {"--model-selector", &RunOptions::modelSelector},
        {"--pin-parasitics", &RunOptions::pinParasitics},
        {"--package-model", &RunOptions::packageModel},
        {"--dump-alt-models", &RunOptions::dumpAltModels},
        {"--ami", &RunOptions::ami},
    };
    return memberOf(switches, arg);
}

// The options whose value is kept as given (and checked later).
std::string RunOptions::*textOptionOf(std::string const& arg)
{
    static std::pair<char const*, std::string RunOptions::*> const texts[] = {
        {"--family", &RunOptions::family},
        {"--report", &RunOptions::reportFile},
        {"--component-name", &RunOptions::componentName},
        {"--channels", &RunOptions::channelsFile},
    };
    return memberOf(texts, arg);
}

// Why the options cannot go together, or "" when they can.
std::string combinationProblem(RunOptions const& options)
{
    if (options.ami) {
        if (options.channelsFile.empty())
            return "--ami needs --channels";
        if (options.vargon || options.ncd || options.dphy || options.btn != 0 ||
            options.dumpAltModels || !options.reportFile.empty() || !options.componentName.empty() ||
            options.truncate != 0 || options.allModels || options.modelSelector ||
            options.substituteNearest || options.pinParasitics || options.packageModel)
            return "--ami takes only --channels, --brinmark, --msgflow, --family, --legacy, --quiet and --verbose";
    } else if (!options.channelsFile.empty()) {
        return "--channels goes with --ami";
    }
    if (options.dumpAltModels && !options.vargon)
        return "--dump-alt-models goes with --vargon";
    return "";
}

} // namespace

bool parseOptions(int argc, char const* const* argv, RunOptions& options, std::string& error)
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
        if (arg.size() < 2 || arg[0] != '-' || arg == "-")
            break;
        if (bool RunOptions::*flag = switchOf(arg)) {
            options.*flag = true;
        } else if (std::string RunOptions::*text = textOptionOf(arg)) {
            if (!needValue(arg.c_str(), options.*text))
                return false;
            options.familyGiven = options.familyGiven || text == &RunOptions::family;
            error = text == &RunOptions::componentName ? componentNameProblem(options.componentName) : "";
            if (!error.empty())
                return false;
        } else if (arg == "--btn") {
            std::string count;
            if (!needValue("--btn", count))
                return false;
            if (!parseCount(count.c_str(), options.btn)) {
                error = "--btn needs a whole number, not '" + count + "'";
                return false;
            }
        } else if (arg == "--truncate") {
            std::string width;
            if (!needValue("--truncate", width))
                return false;
            if (width != "0" && width != "20" && width != "40") {
                error = "--truncate takes 0, 20 or 40, not '" + width + "'";
                return false;
            }
            options.truncate = std::atoi(width.c_str());
        } else if (arg == "--substitute") {
            std::string what;
            if (!needValue("--substitute", what))
                return false;
            if (what != "nearest") {
                error = "--substitute takes 'nearest', not '" + what + "'";
                return false;
            }
            options.substituteNearest = true;
        } else {
            error = "unknown option " + arg;
            return false;
        }
    }
    if (options.help || options.version)
        return true;
    if (!options.legacy) {
        if (options.familyGiven) {
            error = knownFamily(options.family);
            if (!error.empty())
                return false;
        }
        if (options.btn > kMaxCompanionCopies) {
            error = "--btn takes 0 to " + std::to_string(kMaxCompanionCopies) + ", not " + std::to_string(options.btn);
            return false;
        }
    }

    if (argc - i != 2) {
        error = argc - i < 2 ? "missing path" : "too many paths";
        return false;
    }
    options.firstPath = argv[i];
    options.secondPath = argv[i + 1];

    error = combinationProblem(options);
    return error.empty();
}
