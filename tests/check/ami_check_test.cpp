// The checker of the SerDes files: each rule of the AMI parameter tree and
// each channels file finding in a small file of its own, at its line; the
// check command on .ami files and with --channels; a whole SerDes run whose
// parameter file the checker rejects.

#include <gtest/gtest.h>

#include <sys/stat.h>

#include "check/check_cases.h"
#include "support/test_support.h"

namespace {

using namespace checkcases;

S const ami = "(rx | the root\n"                                                              // 1
              "  (Description \"Receive side.\")\n"                                           // 2
              "  (Reserved_Parameters\n"                                                      // 3
              "    (AMI_Version (Usage Info) (Type String) (Value \"7.0\"))\n"                // 4
              "    (Init_Returns_Impulse (Usage Info) (Type Boolean) (Value True))\n"         // 5
              "    (GetWave_Exists (Usage Info) (Type Boolean) (Default False))\n"            // 6
              "    (Resolve_Exists (Usage Info) (Type Boolean) (Value True))\n"               // 7
              "  )\n"                                                                         // 8
              "  (Model_Specific\n"                                                           // 9
              "    (Gain (Usage In) (Type Integer) (Format Value 4) (Description \"(a)\"))\n" // 10
              "    (Peak (Usage InOut) (Type Float) (Range 0.5 0 1.5e0) (Default 1))\n"       // 11
              "    (Mode (Usage In) (Type String) (List \"a\" \"b\") (Default \"b\"))\n"      // 12
              "    (Taps (Description \"FFE\")\n"                                             // 13
              "      (-1 (Usage In) (Type Tap) (Format Increment 0 -0.5 0.5 0.1))\n"          // 14
              "      (0 (Usage Out) (Type UI) (Steps 1 0 2 4))\n"                             // 15
              "    )\n"                                                                       // 16
              "    (Eye (Usage Info) (Type Float Integer) (Table (Labels \"t\" \"v\") (0.1 2)))\n" // 17
              "    (Swing (Usage Dep) (Type Float) (Corner 1 0.9 +1.1))\n"                    // 18
              "    (On (Usage In) (Type Boolean) (List True False))\n"                        // 19
              "  )\n"                                                                         // 20
              ")\n";                                                                          // 21

TEST(AmiCheck, ParameterTreeRules)
{
    struct Case {
        std::vector<std::pair<S, S>> edits;
        Lines expected;
    } const cases[] = {
        {{}, {}},
        // One tree, balanced, with its branches.
        {{{"  )\n)\n", "  )\n"}}, {"f:1: error: \"(\" of rx is never closed by \")\""}},
        {{{"  )\n)\n", "  )\n))\n"}}, {"f:21: error: \")\" closes nothing"}},
        {{{"False))\n  )\n)\n", "False) (Description \"on))\n  )\n)\n"}},
         {"f:1: error: \"(\" of rx is never closed by \")\"", "f:9: error: \"(\" of Model_Specific is never closed by \")\"",
          "f:19: error: the string that starts here is never closed by '\"'",
          "f:19: error: \"(\" of Description is never closed by \")\"", "f:19: error: \"(\" of On is never closed by \")\""}},
        {{{"  )\n)\n", "  )\n) x\n(again)\n"}}, {"f:21: error: x stands outside the parameter tree",
                                       "f:22: error: a second parameter tree; a file holds one root (the first at line 1)"}},
        {{{"(Description \"Receive side.\")", "(Notes \"Receive side.\") Rx (\"Notes\" (1 2))"}},
         {"f:2: error: unknown branch Notes under the root; it holds Reserved_Parameters, Model_Specific and Description",
          "f:2: error: Rx under the root is no branch",
          "f:2: error: unknown branch (\"Notes\" (1 2)) under the root; it holds Reserved_Parameters, Model_Specific "
          "and Description"}},
        {{{"(Reserved_Parameters", "(Model_Specific"}},
         {"f:1: error: the root has no Reserved_Parameters branch",
          "f:9: error: a second Model_Specific under the root (the first at line 3)",
          "f:18: error: Swing: Usage Dep needs Resolve_Exists True among the reserved parameters"}},
        {{{"(GetWave_Exists", "(Get_Wave_Exists"}}, {"f:3: error: Reserved_Parameters has no GetWave_Exists"}},
        {{{"(rx |", "(\"rx\" |"}, {"(Description \"Receive side.\")", "(Description Receive)"}},
         {"f:1: error: the root has no name", "f:1: error: \"rx\" under the root is no branch",
          "f:2: error: the root: Description takes one string in double quotes"}},
        // Usage and Type.
        {{{"(Gain (Usage In) ", "(Gain "}, {"(Type String) (List", "(List"}},
         {"f:10: error: Gain has no Usage", "f:12: error: Mode has no Type"}},
        {{{"(Usage InOut)", "(Usage Input)"}, {"(Type Tap)", "(Type Double)"}, {"(Type Boolean) (List", "(Type) (List"}},
         {"f:11: error: Peak: Usage Input is none of In, Out, InOut, Info, Dep",
          "f:14: error: -1: Type Double is none of Integer, Float, UI, Tap, Boolean, String",
          "f:19: error: On: Type without a value"}},
        {{{"(Type Float) (Range", "(Type Float UI) (Range"}},
         {"f:11: error: Peak: Type names 2 types; only a Table has one for each column"}},
        {{{"(AMI_Version (Usage Info) (Type String)", "(AMI_Version (Usage In) (Type Float)"},
          {"(Value \"7.0\")", "(Value 7.0)"}},
         {"f:4: error: AMI_Version: Usage In; the reserved parameter AMI_Version is Usage Info",
          "f:4: error: AMI_Version: Type Float; the reserved parameter AMI_Version is Type String"}},
        {{{"(Resolve_Exists (Usage Info) (Type Boolean) (Value True))", "(Resolve_Exists (Usage Info) (Type Boolean) (Value False))"}},
         {"f:18: error: Swing: Usage Dep needs Resolve_Exists True among the reserved parameters"}},
        // Formats and their values.
        {{{" (Format Value 4)", ""}}, {"f:10: error: Gain has no format (Value, Range, List, Corner, Increment, Steps, Table) and no Default"}},
        {{{"(Format Value 4)", "(Format Value 4) (List 4 5)"}, {"(Format Increment", "(Format Incr"}},
         {"f:10: error: Gain has a second format, List (the first at line 10)",
          "f:14: error: -1: Format Incr is none of Value, Range, List, Corner, Increment, Steps, Table, Gaussian, Dual-Dirac, DjRj"}},
        {{{"(Format Value 4)", "(Format Value 1F)"}, {"(Value True)", "(Value yes)"}, {"(List \"a\" \"b\")", "(List a \"b\")"}},
         {"f:5: error: Init_Returns_Impulse: value yes is not a Boolean (True or False)",
          "f:10: error: Gain: value 1F is not an Integer", "f:12: error: Mode: value a is not a String in double quotes"}},
        {{{"(Range 0.5 0 1.5e0)", "(Range 0.5 0 1.5e)"}, {"(Corner 1 0.9 +1.1)", "(Corner 1 .9)"}},
         {"f:11: error: Peak: value 1.5e is not a Float number", "f:18: error: Swing: Corner takes 3 values (typ slow fast), found 2"}},
        {{{"(Range 0.5 0 1.5e0)", "(Range 2 0 1.5e0)"}, {"0 -0.5 0.5 0.1", "0 0.5 -0.5 0.1"}, {"(Steps 1 0 2 4)", "(Steps 1 0 2 0)"}},
         {"f:11: error: Peak: typ 2 is outside its Range 0 to 1.5e0",
          "f:14: error: -1: Increment min 0.5 is above max -0.5",
          "f:15: error: 0: Steps count 0 is not a whole number above 0"}},
        {{{"0 -0.5 0.5 0.1", "0 -0.5 0.5 -0.1"}, {"(Type String) (List", "(Type String) (Range"}},
         {"f:12: error: Mode: a Range needs Type Float, UI, Integer or Tap, not String",
          "f:12: error: Mode: Range takes 3 values (typ min max), found 2",
          "f:14: error: -1: Increment step -0.1 is not above 0"}},
        {{{"(Type Float Integer)", "(Type Float Tap)"}, {"(0.1 2)))", "(0.1 2)) (Default 1))"}},
         {"f:17: error: Eye: a Table takes no Type Tap", "f:17: error: Eye: a Table takes no Default"}},
        // Defaults.
        {{{"(Format Value 4)", "(Format Value 4) (Default 4)"}, {"(Default 1)", "(Default 2)"}, {"(Default \"b\")", "(Default \"c\")"}},
         {"f:10: error: Gain has both Value and Default; a parameter has one or the other",
          "f:11: error: Peak: Default 2 is outside its Range 0 to 1.5e0", "f:12: error: Mode: Default \"c\" is not in its List \"a\" \"b\""}},
        {{{"(Default 1)", "(Default x)"}, {"(Default \"b\")", "(Default \"a\" \"b\")"}},
         {"f:11: error: Peak: Default x is not a Float number", "f:12: error: Mode: Default takes one value, found 2"}},
        // Names, leaves, branches of parameters.
        {{{"(Mode (Usage In)", "(Gain (Usage In)"}, {"(Type Integer) (Format", "(Type Integer) (Unit mV) (Format"},
          {"(On (Usage In) (Type Boolean) (List True False))", "(On In)"}},
         {"f:10: warning: Gain: unknown leaf Unit", "f:12: error: Gain stands twice in Model_Specific (the first at line 10)",
          "f:19: error: On has no Usage, Type or format: neither a parameter nor a branch of parameters"}},
        {{{" (Type Boolean) (List True False)", ""}},
         {"f:19: error: On has no Type",
          "f:19: error: On has no format (Value, Range, List, Corner, Increment, Steps, Table) and no Default"}},
        {{{"(Usage In) (Type Integer)", "(Usage In) (Usage Out) (Type Integer) Gain"}},
         {"f:10: error: Gain has a second Usage leaf (the first at line 10)", "f:10: error: Gain: Gain stands outside any leaf"}},
    };
    for (Case const& c : cases) {
        S const text = edited(ami, c.edits);
        SCOPED_TRACE(text);
        EXPECT_EQ(formatted(ibischeck::checkAmiFile(text)), c.expected);
    }
    EXPECT_EQ(formatted(ibischeck::checkAmiFile("| nothing\n")), Lines{"f:1: error: no parameter tree: the file holds no \"(\""});
    EXPECT_EQ(formatted(ibischeck::checkAmiFile(S(70, '(') + "\n")),
              Lines{"f:1: error: lists nested more than 64 deep; reading stops here"});
}

S const rxTemplate = "(rx\n"                                                                         // 1
                     "  (Reserved_Parameters\n"                                                      // 2
                     "    (Init_Returns_Impulse (Usage Info) (Type Boolean) (Value True))\n"         // 3
                     "    (GetWave_Exists (Usage Info) (Type Boolean) (Value True))\n"               // 4
                     "  )\n"                                                                         // 5
                     "  (Model_Specific\n"                                                           // 6
                     "    (Rx_Gain (Usage In) (Type Integer) (Format Value 4) (Range 4 0 15))\n"     // 7
                     "    (Rx_Mode (Usage In) (Type Integer) (Format Value 1) (List 1 2 3))\n"       // 8
                     "    (Rx_Name (Usage In) (Type String) (Format Value \"a\"))\n"                 // 9
                     "    (Rx_Peak (Usage In) (Type Integer) (Format Range 4 0 15))\n"               // 10
                     "  )\n"                                                                         // 11
                     ")\n"                                                                           // 12
                     "| Rx_Gain (Format Value 4) in a comment is a parameter line too\n";           // 13
S const txTemplate = "(tx (Model_Specific\n  (Tx_Amp (Usage In) (Type Integer) (Format Value 5))\n))\n";

TEST(ChannelsCheck, EachSettingAgainstTheTemplates)
{
    struct Case {
        S settings; // behind "channel B C ON ON" on line 1
        Lines expected;
    } const cases[] = {
        {"Rx_Gain 0d15\nrx_mode 0b11\nTx_Amp 0h9\nRx_Name DONTCARE\nRx_Gain 0d99\n",
         {"f:6: warning: Rx_Gain is set again in this channel; the setting at line 2 is the one written"}},
        {"Rx_Gian 0d3\nRx_Peak 0d3\n",
         {"f:2: warning: never written: no template parameter Rx_Gian",
          "f:3: warning: never written: the line of template parameter Rx_Peak (rx.ami:10) holds no \"(Format Value\""}},
        {"Tx_Amp 12\nchannel B D ON ON\nTx_Amp 0x5\nchannel B G ON ON\nTx_Amp 0\nchannel B E ON ON\nTx_Amp 0b00000\nchannel B F ON ON\nTx_Amp 0H00\n",
         {"f:2: warning: Tx_Amp 12 has no 0d, 0h or 0b prefix: the file will hold 0",
          "f:4: warning: Tx_Amp 0x5 has no 0d, 0h or 0b prefix: the file will hold 0"}},
        {"Rx_Gain 0b10000\n", {"f:2: warning: Rx_Gain 0b10000 has more than 4 binary digits: the file will hold 0"}},
        {"Rx_Gain 0hG\n", {"f:2: warning: Rx_Gain 0hG: G is no hexadecimal digit: the file will hold 0"}},
        {"Rx_Gain 0H\n", {"f:2: warning: Rx_Gain 0H has no digits: the file will hold 0"}},
        {"Rx_Gain 0b2\n", {"f:2: warning: Rx_Gain 0b2 is no binary number of 1 to 4 digits: the file will hold 0"}},
        {"Rx_Gain 0h10\nRx_Mode 0h03\n",
         {"f:2: warning: Rx_Gain 0h10 is copied as text, not converted: the file will hold 10, not 16"}},
        {"Rx_Gain 0hCC\nTx_Amp 0hF0123456789ABCDEF\n",
         {"f:2: warning: Rx_Gain 0hCC is read by its first letter alone: the file will hold 12, not 204",
          "f:3: warning: Tx_Amp 0hF0123456789ABCDEF is read by its first letter alone: the file will hold 15"}},
        {"Rx_Gain 0d1234567890123456\n",
         {"f:2: warning: Rx_Gain 0d1234567890123456 is cut to 15 characters: the file will hold 123456789012345",
          "f:2: error: Rx_Gain 0d1234567890123456: the file will hold 123456789012345, outside its Range 0 to 15 "
          "(template parameter Rx_Gain, rx.ami:7)"}},
        {"Rx_Mode 0d4\nRx_Name 0d5\n",
         {"f:2: error: Rx_Mode 0d4: the file will hold 4, not in its List 1 2 3 (template parameter Rx_Mode, rx.ami:8)",
          "f:3: error: Rx_Name 0d5: the file will hold 5, not a String in double quotes (template parameter Rx_Name, rx.ami:9)"}},
    };
    std::vector<ibischeck::AmiTemplate> const templates = {{"rx.ami", rxTemplate}, {"tx.ami", txTemplate}};
    for (Case const& c : cases) {
        SCOPED_TRACE(c.settings);
        EXPECT_EQ(formatted(ibischeck::checkChannelsFile("channel B C ON ON\n" + c.settings, templates)), c.expected);
    }
    EXPECT_EQ(formatted(ibischeck::checkChannelsFile("# c\nchannel B C on OFF\nchannel B D ON Off\n", templates)),
              (Lines{"f:2: warning: channel B C: RX_ENABLE \"on\" is neither ON nor OFF; it counts as OFF, and no "
                     "receive parameter file is written",
                     "f:3: warning: channel B D: TX_ENABLE \"Off\" is neither ON nor OFF; it counts as OFF, and no "
                     "transmit parameter file is written"}));
    EXPECT_EQ(formatted(ibischeck::checkChannelsFile("\nTx_Amp 0d1\n", templates)),
              Lines{"f:2: error: parameter 'Tx_Amp' before any channel"});
}

TEST(ChannelsCheck, CommandOutputAndExitCodes)
{
    ts::TempDir dir;
    ts::writeFile(dir.file("rx.ami"), edited(rxTemplate, {{" (Range 4 0 15)", ""}, {" (List 1 2 3)", ""}}));
    ts::writeFile(dir.file("TX.AMI"), edited(txTemplate, {{"Value 5))", "Value 5)"}}));
    ts::writeFile(dir.file("ch.txt"), "channel B C ON ON\n  Rx_Name 0d16\n  Tx_Amp 0d1\n");
    std::vector<CommandCase> const cases = {
        {{"check", "rx.ami"}, 0, "1 file checked: 0 errors, 0 warnings\n"},
        {{"check", "--master", "TX.AMI"}, 1, // the ending decides
         "TX.AMI:1: error: \"(\" of tx is never closed by \")\"\n"
         "TX.AMI:1: error: the root has no Reserved_Parameters branch\n1 file checked: 2 errors, 0 warnings\n"},
        {{"check", "--channels", "ch.txt", "rx.ami"}, 1,
         "ch.txt:2: error: Rx_Name 0d16: the file will hold 16, not a String in double quotes (template parameter "
         "Rx_Name, rx.ami:9)\nch.txt:3: warning: never written: no template parameter Tx_Amp\n"
         "2 files checked: 1 error, 1 warning\n"},
        {{"check", "--channels", "ch.txt", "rx.ami", "gone.ami"}, 2, "1 file checked: 0 errors, 0 warnings\n",
         "pad2ibis: check: cannot read gone.ami\n"},
        {{"check", "--channels", "gone.txt", "rx.ami"}, 2, "1 file checked: 0 errors, 0 warnings\n",
         "pad2ibis: check: cannot read gone.txt\n"},
        {{"check", "--channels", "ch.txt"}, 2, "",
         "pad2ibis: check: --channels needs the templates (.ami) to check against\n"
         "Try 'pad2ibis check --help' for more information.\n"},
        {{"check", "--master", "--channels", "ch.txt", "rx.ami"}, 2, "",
         "pad2ibis: check: --channels goes without --master\nTry 'pad2ibis check --help' for more information.\n"},
        {{"check", "--channels"}, 2, "",
         "pad2ibis: check: --channels needs a value\nTry 'pad2ibis check --help' for more information.\n"},
    };
    expectRuns(cases, dir.path());
}

// The shipped SerDes set: its channels file passes against its templates,
// and so do the files a run writes from it; a channel value "0h1F" passes
// the run and is caught in the written file.
TEST(ChannelsCheck, SerdesRunsAndTheirWrittenFiles)
{
    ts::TempDir dir;
    S const serdes = ts::sourcePath("examples/serdes/");
    S const templates[] = {serdes + "kva4RX_parameters.ami", serdes + "kva4TX_parameters.ami"};
    ts::RunResult r = ts::runProgram({"check", "--channels", serdes + "channels.txt", templates[0], templates[1]}, dir.path());
    EXPECT_EQ(r.exitCode, 0);
    EXPECT_EQ(r.out, "3 files checked: 0 errors, 0 warnings\n");

    S const channels = dir.file("hex.txt");
    ts::writeFile(channels, edited(ts::readFile(serdes + "channels.txt"), {{"0d12", "0h1F"}}));
    for (S const& set : {serdes + "channels.txt", channels}) {
        S const run = dir.file(set == channels ? "hex" : "shipped");
        ASSERT_EQ(::mkdir(run.c_str(), 0777), 0);
        ASSERT_EQ(ts::runLegacy({"--ami", "--channels", set, serdes + "demo_serdes.udb", serdes + "kva4serdes.ibs"}, run).exitCode, 0);
        r = ts::runProgram({"check", "ibis_ami/demo_serdes_rx_params_PCS0_CH0.ami", "ibis_ami/demo_serdes_tx_params_PCS1_CH0.ami"}, run);
        EXPECT_EQ(r.out, set == channels ? "ibis_ami/demo_serdes_rx_params_PCS0_CH0.ami:13: error: Rx_Ctle_Gain: value 1F is not an Integer\n"
                                           "2 files checked: 1 error, 0 warnings\n"
                                         : "2 files checked: 0 errors, 0 warnings\n");
        EXPECT_EQ(r.exitCode, set == channels ? 1 : 0);
    }
    r = ts::runProgram({"check", "--channels", channels, templates[0], templates[1]}, dir.path());
    EXPECT_EQ(r.out, channels + ":12: warning: Rx_Ctle_Gain 0h1F is copied as text, not converted: the file will hold 1F, not 31\n" +
                         channels + ":12: error: Rx_Ctle_Gain 0h1F: the file will hold 1F, not an Integer (template parameter "
                         "Rx_Ctle_Gain, " + templates[0] + ":13)\n3 files checked: 1 error, 1 warning\n");
}

} // namespace
