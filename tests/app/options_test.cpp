// The command line: options ahead of the two paths, and the usage errors.

#include <gtest/gtest.h>

#include <vector>

#include "app/options.h"

namespace {

using S = std::string;
using Args = std::vector<char const*>;

// The options as one line: the flags that are set, then the values and the two paths.
S describe(RunOptions const& o)
{
    std::pair<bool, char const*> const flags[] = {{o.help, "help"}, {o.version, "version"}, {o.ami, "ami"},
        {o.vargon, "vargon"}, {o.ncd, "ncd"}, {o.brinmark, "brinmark"}, {o.dphy, "dphy"}, {o.msgflow, "msgflow"},
        {o.dumpAltModels, "dump-alt-models"}, {o.familyGiven, "family"}, {o.allModels, "all-models"},
        {o.modelSelector, "model-selector"}, {o.substituteNearest, "nearest"}, {o.pinParasitics, "pin-parasitics"},
        {o.packageModel, "package-model"}};
    S text;
    for (auto const& flag : flags)
        text += flag.first ? S(flag.second) + " " : "";
    return text + "btn=" + std::to_string(o.btn) + " family=" + o.family + " channels=" + o.channelsFile +
           (o.componentName.empty() ? "" : " component=" + o.componentName) +
           (o.truncate == 0 ? "" : " truncate=" + std::to_string(o.truncate)) + " " + o.firstPath + " " + o.secondPath;
}

TEST(RunOptions, AcceptedCommandLines)
{
    std::pair<Args, char const*> const cases[] = {
        {{"d.pad", "m.ibs"}, "btn=0 family= channels= d.pad m.ibs"},
        {{"--btn", "3", "--msgflow", "--family", "HZU3", "--ncd", "--brinmark", "--dphy", "d.pad", "m.ibs"},
         "ncd brinmark dphy msgflow family btn=3 family=HZU3 channels= d.pad m.ibs"},
        {{"--vargon", "--dump-alt-models", "d.pad", "m.ibs"},
         "vargon dump-alt-models btn=0 family= channels= d.pad m.ibs"},
        {{"--substitute", "nearest", "--vargon", "d.pad", "m.ibs"}, "vargon nearest btn=0 family= channels= d.pad m.ibs"},
        {{"--ami", "--channels", "ch.txt", "--brinmark", "--msgflow", "--family", "KVA4", "top.udb", "lib/serdes.ibs"},
         "ami brinmark msgflow family btn=0 family=KVA4 channels=ch.txt top.udb lib/serdes.ibs"},
        {{"--help"}, "help btn=0 family= channels=  "}, // help and version need no paths
        {{"--version"}, "version btn=0 family= channels=  "},
        {{"--", "--odd.pad", "m.ibs"}, "btn=0 family= channels= --odd.pad m.ibs"}, // "--" ends the options
        {{"--component-name", "A", "--truncate", "40", "--all-models", "--model-selector", "--vargon", "d.pad", "m.ibs"},
         "vargon all-models model-selector btn=0 family= channels= component=A truncate=40 d.pad m.ibs"},
        {{"--package-model", "--pin-parasitics", "--legacy", "d.pad", "m.ibs"},
         "pin-parasitics package-model btn=0 family= channels= d.pad m.ibs"},
        {{"--component-name", "BOARD U7 ~x!", "--truncate", "20", "d.pad", "m.ibs"},
         "btn=0 family= channels= component=BOARD U7 ~x! truncate=20 d.pad m.ibs"},
        {{"--component-name", "1234567890123456789012345678901234567890", "--truncate", "0", "d.pad", "m.ibs"},
         "btn=0 family= channels= component=1234567890123456789012345678901234567890 d.pad m.ibs"}};
    for (auto const& c : cases) {
        RunOptions options;
        S error;
        EXPECT_TRUE(parseOptions(static_cast<int>(c.first.size()), c.first.data(), options, error)) << error;
        EXPECT_EQ(describe(options), c.second);
    }
}

TEST(RunOptions, UsageErrors)
{
    // Null: refused, whatever the reason given.
    std::pair<Args, char const*> const cases[] = {
        {{"--bogus", "d.pad", "m.ibs"}, "unknown option --bogus"},
        {{"d.pad"}, "missing path"},
        {{}, "missing path"},
        {{"d.pad", "m.ibs", "x"}, "too many paths"},
        {{"d.pad", "m.ibs", "--msgflow"}, "too many paths"}, // options stand before the paths
        {{"d.pad", "m.ibs", "--family"}, "too many paths"},
        {{"--family"}, "--family needs a value"},
        {{"--btn", "2x", "d.pad", "m.ibs"}, "--btn needs a whole number, not '2x'"},
        {{"--btn", "-1", "d.pad", "m.ibs"}, nullptr},
        {{"--btn", "", "d.pad", "m.ibs"}, nullptr},
        {{"--btn", "99999999999", "d.pad", "m.ibs"}, nullptr},
        {{"--dump-alt-models", "d.pad", "m.ibs"}, "--dump-alt-models goes with --vargon"},
        {{"--ami", "d", "m.ibs"}, "--ami needs --channels"},
        {{"--ami", "--channels", "c", "--btn", "1", "d", "m.ibs"}, nullptr},
        {{"--ami", "--channels", "c", "--vargon", "d", "m.ibs"}, nullptr},
        {{"--ami", "--channels", "c", "--pin-parasitics", "d", "m.ibs"}, nullptr},
        {{"--ami", "--channels", "c", "--package-model", "d", "m.ibs"}, nullptr},
        {{"--channels", "c", "d.pad", "m.ibs"}, "--channels goes with --ami"},
        {{"--component-name", "", "d.pad", "m.ibs"}, "--component-name needs 1 to 40 characters, not 0"},
        {{"--component-name", "12345678901234567890123456789012345678901", "d.pad", "m.ibs"},
         "--component-name needs 1 to 40 characters, not 41"},
        {{"--component-name", " U7", "d.pad", "m.ibs"}, "--component-name ' U7' has a blank at an end"},
        {{"--component-name", "U7 ", "d.pad", "m.ibs"}, "--component-name 'U7 ' has a blank at an end"},
        {{"--component-name", "U\t7", "d.pad", "m.ibs"}, "--component-name takes printable ASCII characters only"},
        {{"--component-name", "U\x7f", "d.pad", "m.ibs"}, "--component-name takes printable ASCII characters only"},
        {{"--component-name", "U\xc3\xa4" "7", "d.pad", "m.ibs"}, "--component-name takes printable ASCII characters only"},
        {{"--component-name", "U7|x", "d.pad", "m.ibs"}, "--component-name 'U7|x' holds '|', which starts an IBIS comment"},
        {{"--component-name"}, "--component-name needs a value"},
        {{"--truncate", "15", "d.pad", "m.ibs"}, "--truncate takes 0, 20 or 40, not '15'"},
        {{"--truncate", "020", "d.pad", "m.ibs"}, "--truncate takes 0, 20 or 40, not '020'"},
        {{"--truncate", "", "d.pad", "m.ibs"}, "--truncate takes 0, 20 or 40, not ''"},
        {{"--truncate"}, "--truncate needs a value"},
        {{"--ami", "--channels", "c", "--model-selector", "d", "m.ibs"}, nullptr},
        {{"--ami", "--channels", "c", "--all-models", "d", "m.ibs"}, nullptr},
        {{"--ami", "--channels", "c", "--truncate", "20", "d", "m.ibs"}, nullptr},
        {{"--ami", "--channels", "c", "--component-name", "U7", "d", "m.ibs"}, nullptr},
        {{"--substitute", "Nearest", "d.pad", "m.ibs"}, "--substitute takes 'nearest', not 'Nearest'"},
        {{"--substitute"}, "--substitute needs a value"},
        {{"--ami", "--channels", "c", "--substitute", "nearest", "d", "m.ibs"}, nullptr}};
    for (auto const& c : cases) {
        RunOptions options;
        S error;
        S line;
        for (char const* arg : c.first)
            line += S(arg) + " ";
        EXPECT_FALSE(parseOptions(static_cast<int>(c.first.size()), c.first.data(), options, error)) << line;
        EXPECT_EQ(error, c.second ? S(c.second) : error.empty() ? "<a reason>" : error) << line;
    }
}

} // namespace
