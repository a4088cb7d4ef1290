// Access to the master file: opening it, its component and the check that it
// belongs to the design's part, and the list of models it holds.

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "driver/basibsgen.h"
#include "host/msgmanager.h"
#include "support/generator_probe.h"

namespace {

// A death test matcher for exactly text.
std::string exactly(std::string const& text)
{
    std::string pattern = "^";
    for (char c : text) {
        if (std::strchr(".[]()*+?{}|^$\\", c) != nullptr)
            pattern += '\\';
        pattern += c;
    }
    return pattern + "$";
}

std::string mismatch(std::string const& part, std::string const& component)
{
    return "ERROR: The Design and Master IBIS files are different.\n"
           "       Part name is " +
           part + " while IBIS file component name is " + component + ".\n";
}

// The naming tables of a plain family, complete.
std::string const plainTables = "STANDARD\n| io  code\nLVCMOS  lvc\n|----\n"
                                "SLEW\n| value  code\nFAST  f\n|----\n"
                                "PULLMODE\n| value  code\nNONE  n\n|----\n";

class MasterAccess : public testing::Test {
protected:
    void SetUp() override { ts::resetGeneratorStatics(); }
    void TearDown() override { ts::resetGeneratorStatics(); }
};

using MasterAccessDeathTest = MasterAccess;

TEST_F(MasterAccess, ComponentIsTheSecondTokenOfTheFirstComponentLine)
{
    ts::ProbeModel model;
    model.setMaster("[IBIS Ver] 5.1\n"
                    "| [Component] COMMENTED\n"
                    "[Component]    KVANR3-40E    Corvane\n"
                    "[Component] SECOND\n");
    EXPECT_TRUE(model.loadComponent());
    EXPECT_EQ(model._componentName, "KVANR3-40E");
    EXPECT_FALSE(model._masterStream.is_open());
    EXPECT_TRUE(model._masterStream.good()) << "the next pass must be able to reopen it";

    ts::ProbeModel other;
    other.setMaster("[IBIS Ver] 5.1\n[COMPONENT] KVANR3-40E\n[component] KVANR3-40E\n");
    EXPECT_FALSE(other.loadComponent()) << "the component keyword is case sensitive";
    EXPECT_EQ(other._componentName, "");
    EXPECT_FALSE(other._masterStream.is_open());
    EXPECT_TRUE(other._masterStream.good());
}

TEST_F(MasterAccessDeathTest, UnopenableMasterEndsTheRun)
{
    ts::ProbeModel model;
    model._masterIbisFile = model.dir() + "/absent.ibs";
    std::string const text = "Error opening file: " + model._masterIbisFile + "\n";
    EXPECT_EXIT(
        {
            ts::stdoutToStderr();
            model.isDeviceIbisFileOpen();
        },
        testing::ExitedWithCode(1), exactly(text));
    EXPECT_EXIT(
        {
            UT_MSGMAN::m_msgFlow = 1;
            model.isDeviceIbisFileOpen();
        },
        testing::ExitedWithCode(1), exactly("padmodel-1015\t" + model._masterIbisFile + "\n"));
    // Each pass over the master opens it by itself.
    EXPECT_EXIT(
        {
            ts::stdoutToStderr();
            model.loadComponent();
        },
        testing::ExitedWithCode(1), exactly(text));
    EXPECT_EXIT(
        {
            ts::stdoutToStderr();
            model.loadAvailableModels();
        },
        testing::ExitedWithCode(1), exactly(text));
    EXPECT_EXIT(
        {
            ts::stdoutToStderr();
            model.loadDevIoMaps();
        },
        testing::ExitedWithCode(1), exactly(text));
    EXPECT_EXIT(
        {
            ts::stdoutToStderr();
            model.loadIbisModels();
        },
        testing::ExitedWithCode(1), exactly(text));

    // The design file's stream is checked the same way.
    model._designIbisFile = model.dir() + "/IBIS/design.ibs";
    EXPECT_EXIT(
        {
            ts::stdoutToStderr();
            model.isDesignIbisFileOpen();
        },
        testing::ExitedWithCode(1), exactly("Error opening file: " + model._designIbisFile + "\n"));

    // An open stream is simply reported open.
    model.openMaster("[IBIS Ver] 5.1\n");
    EXPECT_TRUE(model.isDeviceIbisFileOpen());
}

// The cross-check runs in a child process: a part that fits goes on to the
// naming tables (there are none, so the load fails quietly), one that does
// not ends the run with the mismatch message.
TEST_F(MasterAccessDeathTest, ComponentMustFitThePartsFamily)
{
    struct Case {
        std::string part;
        std::string component;
        bool fits;
    };
    Case const cases[] = {
        // "A3" wants "ANR3"; a component with "ANR" only fits when the names
        // are the same.
        {"A3", "KVANR3-40E", true},
        {"A3", "KVANR-40E", false},
        {"A3-X", "A3-X", true},
        {"A4", "KVANR4-9", true},
        {"A4-X", "KVA4-9", false},
        // "HZU" and "KRD" share one rule.
        {"HZU-4000", "KRDH21-100", true},
        {"HZU-4000", "KRDH10-100", true},
        {"KRDH20-100", "HZU2-4000", true},
        {"HZU3-100", "XZU3", true},
        {"HZU-4000", "HZU-4000X", false},
        // "MORVALLE" holds only the fragment "A".
        {"MORVALLE", "KVA4Y-40", true},
        {"MORVALLE", "KJ5-25", false},
        // "ANR" and "ZR" replace the result of the "AN" search.
        {"XANRX", "KVANR", true},
        {"XANRX", "KVAN", false},
        {"ZRAN", "KVZR2", true},
        {"ZRAN", "KVAN", false},
        // The "A" rule only runs where the "AN" search found nothing.
        {"AN", "XAN", true},
        {"AN", "XA", true},
        {"AN", "QQ", false},
        {"A5", "BA", true},
        {"A5", "QQ", false},
        {"TN", "KVTN-7", true},
        {"TN", "KVT-7", false},
        {"KJ5-25", "LKJ", true},
        {"KJ5-25", "K-J", false},
        // "ZR" stands before "A3", "TN" before "KJ".
        {"ZRA3", "KVZR", true},
        {"KJTN", "KVTN", true},
        {"KJTN", "KJ", false},
        // Without a fragment the names must be the same.
        {"QQ", "QQ", true},
        {"QQ", "QR", false},
    };
    for (Case const& c : cases) {
        ts::ProbeModel model;
        model._partName = c.part;
        model.setMaster("[IBIS Ver] 5.1\n[Component] " + c.component + "\n");
        if (c.fits) {
            EXPECT_EXIT(
                {
                    bool loaded = model.loadIbisModels();
                    std::fprintf(stderr, "checked %d\n", loaded ? 1 : 0);
                    std::exit(0);
                },
                testing::ExitedWithCode(0), "^checked 0\n$")
                << c.part << " / " << c.component;
        } else {
            EXPECT_EXIT(
                {
                    ts::stdoutToStderr();
                    model.loadIbisModels();
                },
                testing::ExitedWithCode(1), exactly(mismatch(c.part, c.component)))
                << c.part << " / " << c.component;
        }
    }
}

TEST_F(MasterAccessDeathTest, PartNameIsSearchedWholeAndShownShort)
{
    // "A3" with "TN" stored behind its NUL: the "TN" rule decides.
    std::string const part("A3\0TN-6", 7);
    {
        ts::ProbeModel model;
        model._partName = part;
        model.setMaster("[Component] KVTN-7\n");
        EXPECT_EXIT(
            {
                model.loadIbisModels();
                std::fputs("checked\n", stderr);
                std::exit(0);
            },
            testing::ExitedWithCode(0), "^checked\n$");
    }
    {
        ts::ProbeModel model;
        model._partName = part;
        model.setMaster("[Component] KVANR3-40E\n");
        EXPECT_EXIT(
            {
                ts::stdoutToStderr();
                model.loadIbisModels();
            },
            testing::ExitedWithCode(1), exactly(mismatch("A3", "KVANR3-40E")));
        EXPECT_EXIT(
            {
                UT_MSGMAN::m_msgFlow = 1;
                model.loadIbisModels();
            },
            testing::ExitedWithCode(1), exactly("padmodel-1025\tA3\tKVANR3-40E\n"));
    }
    {
        // Equal visible text is not enough: the stored lengths differ.
        ts::ProbeModel model;
        model._partName = std::string("QQ\0X", 4);
        model.setMaster("[Component] QQ\n");
        EXPECT_EXIT(
            {
                ts::stdoutToStderr();
                model.loadIbisModels();
            },
            testing::ExitedWithCode(1), exactly(mismatch("QQ", "QQ")));
    }
}

TEST_F(MasterAccessDeathTest, CheckIsSkippedWithoutComponentOrPart)
{
    struct Case {
        std::string part;
        std::string master;
    };
    Case const cases[] = {
        {"A3", "[IBIS Ver] 5.1\n[COMPONENT] QQ\n"},
        {"A3", "[IBIS Ver] 5.1\n"},
        {"", "[Component] QQ\n"},
    };
    for (Case const& c : cases) {
        ts::ProbeModel model;
        model._partName = c.part;
        model.setMaster(c.master);
        EXPECT_EXIT(
            {
                ts::stdoutToStderr();
                model.loadIbisModels();
                std::fputs("checked\n", stderr);
                std::exit(0);
            },
            testing::ExitedWithCode(0), "^checked\n$")
            << c.master;
    }
}

TEST_F(MasterAccess, ModelsAreLoadedOnlyOnceTheTablesAreComplete)
{
    std::string const pins = "[Pin]  signal_name  model_name\n"
                             "A1  IO_A1  lvc250axxxnaaaaaaaio\n"
                             "|\n";
    {
        ts::ProbeModel model;
        model._partName = "ZR";
        model._keyFieldPresent[7] = true;
        model.setMaster("[Component] KVZR-12\n" + plainTables + pins);
        EXPECT_TRUE(model.loadIbisModels());
        EXPECT_EQ(model._componentName, "KVZR-12");
        EXPECT_EQ(model._availableModels, std::set<std::string>{"lvc250axxxnaaaaaaaio"});
    }
    {
        // Tables incomplete: the pin list is not read.
        ts::ProbeModel model;
        model._partName = "ZR";
        model._keyFieldPresent[7] = true;
        model.setMaster("[Component] KVZR-12\nSTANDARD\n| io  code\nLVCMOS  lvc\n|----\n" + pins);
        EXPECT_FALSE(model.loadIbisModels());
        EXPECT_TRUE(model._availableModels.empty());
    }
    {
        // Tables complete, no models.
        ts::ProbeModel model;
        model._partName = "ZR";
        model._keyFieldPresent[7] = true;
        model.setMaster("[Component] KVZR-12\n" + plainTables + "[Pin] signal_name model_name\n|\n");
        EXPECT_FALSE(model.loadIbisModels());
    }
}

TEST_F(MasterAccess, AvailableModelsComeFromTheFirstPinList)
{
    ts::ProbeModel model;
    model.setMaster("[IBIS Ver] 5.1\n"
                    "[Component] KVANR3-40E\n"
                    "[pin]  signal_name  model_name            R_pin\n"
                    "A1     IO_A1p       lvc330a080aaaaaaaaio  0.05\n"
                    "A2     IO_A1n       lvc330a080aaaaaaaaio  0.05\n"
                    "B1     IO_B1p       lvd250faaaaaaaaaaaio\n"
                    "B2     IO_B2p       lvd250faaaaaaaaaaaio\n"
                    "C1     IO_C1P       hs1150axxxaaaaaaaain\n"
                    "C2     VCCIO\n"
                    "\n"
                    "D1     IO_D1p       odr250a080aaaaaaaaod\t\n"
                    "E1     IO_E1        SSTL18axxxAAAAAAAAio\n"
                    "| end of the pin list\n"
                    "F1     IO_F1p       late25axxxaaaaaaaaio\n"
                    "[Pin]  signal_name  model_name\n"
                    "G1     IO_G1p       more25axxxaaaaaaaaio\n"
                    "|\n");
    EXPECT_TRUE(model.loadAvailableModels());
    // The heading line is no row; rows keep their case; a two-token row has
    // no model; the list ends at the first line that begins with "|".
    EXPECT_EQ(model._availableModels,
              (std::set<std::string>{"SSTL18axxxAAAAAAAAio", "hs1150axxxaaaaaaaain",
                                     "lvc330a080aaaaaaaaio", "lvd250faaaaaaaaaaaio",
                                     "odr250a080aaaaaaaaod"}));
    // Only the true side of a pair (lower-case "p") names the master pin;
    // a later such row replaces an earlier one.
    EXPECT_EQ(model._modelPinMap,
              (std::map<std::string, std::string>{{"lvc330a080aaaaaaaaio", "A1"},
                                                  {"lvd250faaaaaaaaaaaio", "B2"},
                                                  {"odr250a080aaaaaaaaod", "D1"}}));
    EXPECT_FALSE(model._masterStream.is_open());
    EXPECT_TRUE(model._masterStream.good());
}

TEST_F(MasterAccess, NoModelsIsAFailedLoad)
{
    ts::ProbeModel model;
    model.setMaster("[IBIS Ver] 5.1\n[Component] KVANR3-40E\n[Pin] signal_name model_name\n| end\n");
    EXPECT_FALSE(model.loadAvailableModels());
    ts::ProbeModel none;
    none.setMaster("[IBIS Ver] 5.1\nA1  IO_A1p  lvc330a080aaaaaaaaio\n");
    EXPECT_FALSE(none.loadAvailableModels()) << "rows count only behind the pin heading";
    EXPECT_TRUE(none._availableModels.empty());
}

TEST_F(MasterAccess, MasterWhoseTablesNeverCompleteFailsTheRun)
{
    ts::TempDir dir;
    ts::writeFile(dir.file("d.pad"),
                  ts::padReport("KVA3-40E-6BG256C", {"| led | A1/0 | LVCMOS33_OUT | PA1 | DRIVE:8mA |"}));
    ts::writeFile(dir.file("m.ibs"), "[IBIS Ver] 5.1\n"
                                     "[Component] KVANR3-40E\n"
                                     "STANDARD\n| io  code\nLVCMOS  lvc\n|----\n"
                                     "SLEW\n| value  code\nFAST  f\n|----\n"
                                     "[Pin] signal_name model_name\n"
                                     "A1  IO_A1  lvc330a080aaaaaaaaou\n"
                                     "|\n");
    ts::RunResult r = ts::runProgram({"d.pad", "m.ibs"}, dir.path());
    EXPECT_EQ(r.exitCode, 2);
    std::string const last = "Failed to load IBIS models.\n";
    ASSERT_GE(r.out.size(), last.size()) << r.out;
    EXPECT_EQ(r.out.substr(r.out.size() - last.size()), last) << r.out;

    r = ts::runProgram({"--msgflow", "d.pad", "m.ibs"}, dir.path());
    EXPECT_EQ(r.exitCode, 2);
    EXPECT_EQ(r.err, "padmodel-1003\n");
}

} // namespace
