// The master file: its naming tables (readers, headings, when a family has all it needs),
// its component and the check against the design's part, and the models it holds.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "driver/basibsgen.h"
#include "host/msgmanager.h"
#include "support/generator_probe.h"

namespace {

using Table = std::map<std::string, std::string>;
using Maps = std::map<std::string, Table>;
using M = IBIS_MODEL;

// A death test matcher for the whole of text (no regular expression signs in it but ".").
std::string exactly(std::string const& text) { return "^" + text + "$"; }

std::string nextLine(ts::ProbeModel& model) { std::string line; return std::getline(model._masterStream, line) ? line : ""; }

TEST(Master, EachNamingTableReader)
{
    ts::resetGeneratorStatics();
    // Rules: p plain, t design values trimmed, n the first comment line ends the table. An
    // empty table of a reader with a word ends the run.
    struct Case { void (M::*read)(); char const* key; std::vector<int> positions; char rule; char const* failed; } const cases[] = {
        {&M::loadIotypeMap, "IO_TYPE", {0, 3}, 'p', "Io standard"}, {&M::loadSlewMap, "SLEW", {6}, 't', "Slew"},
        {&M::loadPullmodeMap, "PULL", {10}, 't', "pullmode"}, {&M::loadImpedanceMap, "IMP", {11}, 'p', nullptr},
        {&M::loadMipiDphyIoMap, "MIPI", {12}, 'p', nullptr}, {&M::loadTermVccMap, "TERMVCC", {12}, 'p', nullptr},
        {&M::loadTermGndMap, "TERMGND", {13}, 'p', nullptr}, {&M::loadTermVttMap, "TERMVTT", {14}, 'p', nullptr},
        {&M::loadVcmtMap, "VCMT", {15}, 'p', nullptr}, {&M::loadDiffResistorMap, "DIFFRES", {16}, 'p', nullptr},
        {&M::loadDiffCurrentMap, "DIFFCUR", {17}, 'p', nullptr}, {&M::loadMultiDriveMap, "MULTDRIVE", {15}, 'p', nullptr},
        {&M::loadDiffDriveMap, "DIFFDRIVE", {17}, 'p', nullptr}, {&M::loadTerminationMap, "TERMINATION", {12}, 'n', nullptr},
    };
    // Design values are upper-cased, codes trimmed; the last row wins; the closing comment line goes too.
    Table const plain = {{"ON\t", "x"}, {"OFF", "a"}, {"ON", "y"}, {"HSTL", ""}};
    Table const trimmed = {{"OFF", "a"}, {"ON", "y"}, {"HSTL", ""}};
    std::string const captions = "|----\n| value code\n|----\n";
    for (Case const& c : cases) {
        SCOPED_TRACE(c.key);
        for (bool database : {false, true}) {
            IBIS_MODEL::_is_ncd_flow = database;
            std::string key = c.key;
            if (database && c.rule == 't')
                key += c.read == &M::loadSlewMap ? "RATE" : "MODE";
            ts::ProbeModel model;
            model._devIoMaps[key] = {{"OLD", "o"}};
            model.openMaster(captions + "  on\t  x \nOFF a\non y\nHSTL\n|----\nAFTER\n");
            (model.*c.read)();
            EXPECT_EQ(model._devIoMaps, (Maps{{key, c.rule == 'p' ? plain : c.rule == 't' ? trimmed : Table{}}}));
            EXPECT_EQ(model._ioMapFound, c.rule != 'n');
            EXPECT_EQ(nextLine(model), c.rule == 'n' ? "| value code" : "AFTER");
            for (int i = 0; i < 21; ++i)
                EXPECT_EQ(model._keyFieldPresent[i], std::count(c.positions.begin(), c.positions.end(), i) > 0) << i;
        }
        IBIS_MODEL::_is_ncd_flow = false;
        ts::ProbeModel model;
        model.openMaster(c.rule == 'n' ? "|----\n" : captions);
        model._ioMapFound = true;
        if (c.failed) {
            EXPECT_EXIT((ts::stdoutToStderr(), (model.*c.read)()), testing::ExitedWithCode(1),
                        exactly("ERROR: Failed to load " + std::string(c.failed) + " info from the ibs file.\n"));
            EXPECT_EXIT((UT_MSGMAN::m_msgFlow = 1, (model.*c.read)()), testing::ExitedWithCode(1),
                        exactly("padmodel-1024\t" + std::string(c.failed) + "\n"));
        } else { // an empty table is stored empty and still counts as read
            EXPECT_EQ(ts::captureStdout([&] { (model.*c.read)(); }), "");
            EXPECT_EQ(model._devIoMaps, (Maps{{c.key, {}}}));
            EXPECT_TRUE(model._keyFieldPresent[c.positions[0]]);
            EXPECT_EQ(model._ioMapFound, c.rule == 'n') << "false at the start of each table but termination's";
        }
    }
    // The pull table takes the family's names of the pull modes.
    for (std::string family : {"HZU2", "KVA4", "HZU3", "KVA3", "HZU", "KVA4Y", "HZU2X", ""}) {
        ts::ProbeModel model;
        model._family = family;
        model.openMaster("| value    code\nUP v\n  pullup     u\nPULLDOWN\t d\nBUSHOLD    k\nUP_CLAMP   c\n|----\n");
        model.loadPullmodeMap();
        std::string const bushold = family == "HZU2" || family == "KVA4" || family == "HZU3" ? "KEEPER" : "BUSHOLD";
        EXPECT_EQ(model._devIoMaps["PULL"], (Table{{"UP", "u"}, {"DOWN", "d"}, {bushold, "k"}, {"UP_CLAMP", "c"}})) << family;
    }
}

TEST(Master, HeadingsPickTheirReaderInOrder)
{
    // A heading is found by substring, the first match wins; null: no heading.
    std::pair<char const*, char const*> const cases[] = {
        {"STANDARD", "IO_TYPE"}, {"   standard   ", "IO_TYPE"}, {"Standard (IO_TYPE)", "IO_TYPE"},
        {"STANDARD(IO_TYPE)", "IO_TYPE"}, {"STANDARD SLEW", "IO_TYPE"}, {"IO STANDARD", nullptr}, {"STANDARDS", nullptr},
        {"NON-STANDARD SLEW RATE", nullptr}, {"Slew Rate", "SLEW"}, {"PULLMODE SLEW", "SLEW"}, {"pullmode", "PULL"},
        {"IMPEDANCE PULLMODE", "PULL"}, {"IMPEDENCE", "IMP"}, {"Output Impedance", "IMP"}, {"IMPEDANCE TERMVCC", "IMP"},
        {"MIPI HARD DPHY MODE TERMVCC", "MIPI"}, {"MIPI", nullptr}, {"TERMVCC TERMGND", "TERMVCC"},
        {"TERMGND TERMVTT", "TERMGND"}, {"TERMVTT VCMT", "TERMVTT"}, {"VCMT TERMINATION", "VCMT"},
        {"DIFFERENTIAL RESISTOR DIFFERENTIAL CURRENT", "DIFFRES"}, {"Differential Current", "DIFFCUR"},
        {"DIFFERENTIAL DRIVE CURRENT", "DIFFCUR"}, {"DIFFERENTIAL", nullptr}, {"TERMINATION MULTI DRIVE", "TERMINATION"},
        {"MULTI DRIVE DIFF DRIVE", "MULTDRIVE"}, {"diff drive", "DIFFDRIVE"}, {"NAMING CONVENTION", nullptr}, {"", nullptr},
    };
    for (auto const& [text, key] : cases) {
        ts::ProbeModel model;
        model.openMaster("X  x\n|----\nAFTER\n");
        char line[255];
        EXPECT_EQ(model.loadDevIoMaps(std::strcpy(line, text)), key != nullptr) << text;
        EXPECT_EQ(model._devIoMaps, (key ? Maps{{key, {{"X", "x"}}}} : Maps{})) << text;
        EXPECT_EQ(nextLine(model), key ? "AFTER" : "X  x") << text;
    }
}

TEST(Master, EachFamilysTablesAreCompleteAndOlderHeadingsCopied)
{
    std::vector<int> const basic = {0, 3, 6, 7, 10}, all = {0, 3, 6, 7, 10, 11, 12, 15, 16, 17};
    // resistor, drive: the code then found under the newer name ("-": an empty table); maps: d the
    // resistor and current tables, o the newer ones too, e none.
    struct Case { std::string part; std::vector<int> positions; bool done; char const *resistor = "", *drive = ""; char maps = 'd'; };
    Case const cases[] = {
        {"ZR", basic, true}, {"AN", basic, true}, {"TN", basic, true}, {"HZU", basic, true}, {"KRD", basic, true},
        {"B A", basic, true}, {std::string("QQ\0ZR", 5), basic, true}, {"ZR", {3, 6, 7, 10}, false},
        {"A", {0, 6, 7, 10}, false}, {"HZU", {0, 3, 7, 10}, false}, {"TN", {0, 3, 6, 10}, false},
        {"AN", {0, 3, 6, 7}, false}, {"QQ", all, false}, {"KV", all, false}, {"MORVLLE", all, false}, {"", all, false},
        // A3 needs multi drive and current, before KJ, and copies the resistor.
        {"A3", {0, 3, 6, 7, 10, 15, 17}, true, "r"}, {"KJA3", {0, 3, 6, 7, 10, 15, 17}, true, "r"},
        {"A3", {0, 3, 6, 7, 10, 11, 12, 16, 17}, false}, {"A3", {0, 3, 6, 7, 10, 11, 12, 15, 16}, false},
        // MORVALLE and KJ need resistor, current, TERMVCC and impedance, then copy both.
        {"MORVALLE", {0, 3, 6, 7, 10, 11, 12, 16, 17}, true, "r", "c"}, {"KJ5-25", all, true, "o", "o", 'o'},
        {"MORVALLE", {0, 3, 6, 7, 10, 12, 16, 17}, false}, {"KJ5-25", {0, 3, 6, 7, 10, 11, 16, 17}, false},
        {"MORVALLE", {0, 3, 6, 7, 10, 11, 12, 17}, false}, {"KJ5-25", {0, 3, 6, 7, 10, 11, 12, 16}, false},
        // HZU2, KRDH2 and HZU3 need impedance and current, and copy on every evaluation.
        {"HZU2-4000", {0, 3, 6, 7, 10, 11, 17}, true, "r"}, {"KRDH21-100", {0, 3, 6, 7, 10, 11, 17}, true, "-", "", 'e'},
        {"HZU3-100", {0, 3, 6, 7, 10, 11}, false, "r"}, {"HZU3-100", {0, 3, 6, 7, 10, 17}, false, "r"},
        {"KRDH21-100", basic, false, "r"}, {"HZU2-4000", {0, 3, 6, 7, 11, 17}, false}, {"XHZU3", basic, false, "r"},
    };
    for (Case const& c : cases) {
        ts::ProbeModel model;
        model._partName = c.part;
        for (int position : c.positions)
            model._keyFieldPresent[position] = true;
        if (c.maps != 'e')
            model._devIoMaps = {{"DIFFRES", {{"100", "r"}}}, {"DIFFCUR", {{"3.5", "c"}}}};
        if (c.maps == 'o')
            model._devIoMaps["DIFFDRIVE"] = model._devIoMaps["DIFFRESISTOR"] = {{"OWN", "o"}};
        EXPECT_EQ(model.hasDoneLoadingIoMaps(), c.done) << c.part << " " << testing::PrintToString(c.positions);
        for (auto const& [key, code] : {std::pair{"DIFFRESISTOR", c.resistor}, std::pair{"DIFFDRIVE", c.drive}}) {
            auto found = model._devIoMaps.find(key);
            EXPECT_EQ(found == model._devIoMaps.end() ? "" : found->second.empty() ? "-" : found->second.begin()->second, code)
                << c.part << " " << key;
        }
    }
}

TEST(Master, ComponentMustFitThePartsFamily)
{
    // "HZU" and "KRD" share a rule; "ANR" and "ZR" replace the result of "AN", and "A" runs only where
    // it found nothing. Without a fragment the names must be the same. Fragments are found behind the NUL.
    std::tuple<std::string, std::string, bool> const cases[] = {
        {"A3", "KVANR3-40E", true}, {"A3", "KVANR-40E", false}, {"A3-X", "A3-X", true}, {"A4", "KVANR4-9", true},
        {"A4-X", "KVA4-9", false}, {"HZU-4000", "KRDH21-100", true}, {"HZU-4000", "KRDH10-100", true},
        {"KRDH20-100", "HZU2-4000", true}, {"HZU3-100", "XZU3", true}, {"HZU-4000", "HZU-4000X", false},
        {"MORVALLE", "KVA4Y-40", true}, {"MORVALLE", "KJ5-25", false}, {"XANRX", "KVANR", true}, {"XANRX", "KVAN", false},
        {"ZRAN", "KVZR2", true}, {"ZRAN", "KVAN", false}, {"AN", "XAN", true}, {"AN", "XA", true}, {"AN", "QQ", false},
        {"A5", "BA", true}, {"A5", "QQ", false}, {"TN", "KVTN-7", true}, {"TN", "KVT-7", false}, {"KJ5-25", "LKJ", true},
        {"KJ5-25", "K-J", false}, {"ZRA3", "KVZR", true}, {"KJTN", "KVTN", true}, {"KJTN", "KJ", false}, {"QQ", "QQ", true},
        {"QQ", "QR", false}, {std::string("QQ\0X", 4), "QQ", false}, {std::string("A3\0TN-6", 7), "KVTN-7", true},
        {std::string("A3\0TN-6", 7), "KVANR3-40E", false}, {"A3", "", true}, {"", "QQ", true}, // "": no check
    };
    for (auto const& [part, component, fits] : cases) {
        ts::ProbeModel model;
        model._partName = part;
        model.setMaster("[IBIS Ver] 5.1\n" + (component.empty() ? "" : "[Component] " + component + "\n"));
        std::string const shown = part.c_str();
        EXPECT_EXIT((ts::stdoutToStderr(), model.loadIbisModels(), std::exit(0)), testing::ExitedWithCode(fits ? 0 : 1),
                    exactly(fits ? "" : "ERROR: The Design and Master IBIS files are different.\n       Part name is " +
                                            shown + " while IBIS file component name is " + component + ".\n"))
            << testing::PrintToString(part) << " / " << component;
        if (!fits) {
            EXPECT_EXIT((UT_MSGMAN::m_msgFlow = 1, model.loadIbisModels()), testing::ExitedWithCode(1),
                        exactly("padmodel-1025\t" + shown + "\t" + component + "\n"));
        }
    }
}

TEST(Master, ComponentTablesAndModelsOfTheMaster)
{
    std::string const tables = "STANDARD\n| io\nLVCMOS lvc\n|-\nSLEW\n| v\nFAST f\n|-\nPULLMODE\n| v\nNONE n\n|-\n";
    std::string const pins = "[pin]  signal_name  model_name            R_pin\n"
                             "A1     IO_A1p       lvc330a080aaaaaaaaio  0.05\nA2     IO_A1n       lvc330a080aaaaaaaaio\n"
                             "B1     IO_B1p       lvd250faaaaaaaaaaaio\nB2     IO_B2p       lvd250faaaaaaaaaaaio\n"
                             "C1     IO_C1P       hs1150axxxaaaaaaaain\nC2     VCCIO\n\n7      IO_7p        pin7\n"
                             "D1     IO_D1p       odr250a080aaaaaaaaod\t\nE1     IO_E1        SSTL18axxxAAAAAAAAio\n"
                             "| end of the pin list\nF1     IO_F1p       late25axxxaaaaaaaaio\n"
                             "[Pin]  signal_name  model_name\nG1     IO_G1p       more25axxxaaaaaaaaio\n|\n";
    ts::ProbeModel model, none;
    for (ts::ProbeModel* m : {&model, &none})
        m->_partName = "ZR", m->_keyFieldPresent[7] = true;
    // The component: the second token of the first component line, keyword case sensitive. A line with
    // "=" is no heading; the scan stops at the table completing the family's set.
    model.setMaster("[IBIS Ver] 5.1\n| [Component] NOTE\n[COMPONENT] X\n[Component]    KVZR-12    Corvane\n"
                    "[Component] SECOND\nTERMGND = TERMINATION TO GROUND\nON g\n|-\nA0  IO_A0p  before25axxxaaaaaaaaio\n" +
                    tables + "IMPEDANCE\n| v\n50 5\n|-\n" + pins);
    EXPECT_TRUE(model.loadIbisModels());
    EXPECT_EQ(model._componentName, "KVZR-12");
    EXPECT_EQ(model._devIoMaps, (Maps{{"IO_TYPE", {{"LVCMOS", "lvc"}}}, {"SLEW", {{"FAST", "f"}}}, {"PULL", {{"NONE", "n"}}}}));
    // Only the first pin list counts, to its first comment line; the true side ("p") names the master pin.
    EXPECT_EQ(model._availableModels, (std::set<std::string>{"SSTL18axxxAAAAAAAAio", "hs1150axxxaaaaaaaain", "lvc330a080aaaaaaaaio",
                                                             "lvd250faaaaaaaaaaaio", "odr250a080aaaaaaaaod", "pin7"}));
    EXPECT_EQ(model._modelPinMap, (Table{{"lvc330a080aaaaaaaaio", "A1"}, {"lvd250faaaaaaaaaaaio", "B2"},
                                         {"odr250a080aaaaaaaaod", "D1"}, {"pin7", "7"}}));
    EXPECT_FALSE(model._masterStream.is_open());
    EXPECT_TRUE(model._masterStream.good()) << "the next pass must be able to reopen it";
    // No models: a failed load.
    none.setMaster(tables + "[Pin] signal_name model_name\n|\n");
    EXPECT_FALSE(none.loadIbisModels());
}

TEST(Master, MasterThatCannotBeOpenedEndsTheRun)
{
    ts::ProbeModel model;
    model._masterIbisFile = model.dir() + "/absent.ibs";
    model._designIbisFile = model.dir() + "/IBIS/design.ibs";
    EXPECT_EXIT((UT_MSGMAN::m_msgFlow = 1, model.isDeviceIbisFileOpen()), testing::ExitedWithCode(1),
                exactly("padmodel-1015\t" + model._masterIbisFile + "\n"));
    // Each pass over the master opens it by itself.
    for (bool (M::*pass)() : {&M::isDeviceIbisFileOpen, &M::loadComponent, &M::loadIbisModels, &M::loadAvailableModels,
                              &M::loadDevIoMaps, &M::isDesignIbisFileOpen}) {
        std::string const& file = pass == &M::isDesignIbisFileOpen ? model._designIbisFile : model._masterIbisFile;
        EXPECT_EXIT((ts::stdoutToStderr(), (model.*pass)()), testing::ExitedWithCode(1), exactly("Error opening file: " + file + "\n"));
    }
}

} // namespace
