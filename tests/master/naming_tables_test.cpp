// The readers of the master file's naming tables: what each of them keeps of
// a table's rows, where it stores the map, and which key position it marks
// as coded.

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "driver/basibsgen.h"
#include "host/msgmanager.h"
#include "support/generator_probe.h"

namespace {

using Table = std::map<std::string, std::string>;
using Reader = void (IBIS_MODEL::*)();

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

class NamingTables : public testing::Test {
protected:
    void SetUp() override { ts::resetGeneratorStatics(); }
    void TearDown() override { ts::resetGeneratorStatics(); }

    // The line behind the table: shows how much the reader consumed.
    std::string nextLine(ts::ProbeModel& model)
    {
        std::string line;
        std::getline(model._masterStream, line);
        return line;
    }
    // Positions 0 to 20 that are flagged as coded.
    std::vector<int> flagged(ts::ProbeModel const& model)
    {
        std::vector<int> positions;
        for (int i = 0; i < 21; ++i)
            if (model._keyFieldPresent[i])
                positions.push_back(i);
        return positions;
    }
};

TEST_F(NamingTables, IoStandardTableKeepsItsBodyUpToTheClosingComment)
{
    ts::ProbeModel model;
    model._devIoMaps["IO_TYPE"] = {{"OLD", "o"}};
    model.openMaster("|------------------\n"
                     "| io standard   code\n"
                     "|------------------\n"
                     "  lvcmos        lvc   further words\n"
                     "LVDS  lvd\n"
                     "lvds  LVX  \n"
                     "SSTL\t ss1\n"
                     "HSTL\n"
                     "|------------------\n"
                     "SLEW\n");
    model.loadIotypeMap();

    // Design values are upper-cased and not trimmed; codes keep their case
    // and lose their blanks; the last row of a value wins; a one-token row
    // has an empty code; the map replaces the one before.
    EXPECT_EQ(model._devIoMaps["IO_TYPE"],
              (Table{{"LVCMOS", "lvc"}, {"LVDS", "LVX"}, {"SSTL\t", "ss1"}, {"HSTL", ""}}));
    EXPECT_EQ(flagged(model), (std::vector<int>{0, 3}));
    EXPECT_TRUE(model._ioMapFound);
    EXPECT_EQ(nextLine(model), "SLEW") << "the closing comment line belongs to the table";
}

TEST_F(NamingTables, SlewTableTrimsItsDesignValuesAndFollowsTheAttributeVocabulary)
{
    std::string const text = "| value  code\nfast\t  f\nSLOW s\n|----\nAFTER\n";
    {
        ts::ProbeModel model;
        model.openMaster(text);
        model.loadSlewMap();
        EXPECT_EQ(model._devIoMaps["SLEW"], (Table{{"FAST", "f"}, {"SLOW", "s"}}));
        EXPECT_EQ(model._devIoMaps.count("SLEWRATE"), 0u);
        EXPECT_EQ(flagged(model), std::vector<int>{6});
        EXPECT_EQ(nextLine(model), "AFTER");
    }
    {
        IBIS_MODEL::_is_ncd_flow = true;
        ts::ProbeModel model;
        model.openMaster(text);
        model.loadSlewMap();
        EXPECT_EQ(model._devIoMaps["SLEWRATE"], (Table{{"FAST", "f"}, {"SLOW", "s"}}));
        EXPECT_EQ(model._devIoMaps.count("SLEW"), 0u);
    }
    {
        // The io standard reader does not trim: the same row keeps its TAB.
        ts::ProbeModel model;
        model.openMaster(text);
        model.loadIotypeMap();
        EXPECT_EQ(model._devIoMaps["IO_TYPE"], (Table{{"FAST\t", "f"}, {"SLOW", "s"}}));
    }
}

TEST_F(NamingTables, PullTableTakesTheFamilysNamesOfThePullModes)
{
    std::string const text = "|----\n| value    code\n|----\n"
                             "  pullup     u\n"
                             "PULLDOWN\t d\n"
                             "BUSHOLD    k\n"
                             "NONE       n\n"
                             "UP_CLAMP   c\n"
                             "|----\n"
                             "AFTER\n";
    for (char const* family : {"HZU2", "KVA4", "HZU3"}) {
        ts::ProbeModel model;
        model._family = family;
        model.openMaster(text);
        model.loadPullmodeMap();
        EXPECT_EQ(model._devIoMaps["PULL"],
                  (Table{{"UP", "u"}, {"DOWN", "d"}, {"KEEPER", "k"}, {"NONE", "n"}, {"UP_CLAMP", "c"}}))
            << family;
        EXPECT_EQ(flagged(model), std::vector<int>{10}) << family;
        EXPECT_EQ(nextLine(model), "AFTER") << family;
    }
    for (char const* family : {"KVA3", "HZU", "KJ", "KVA4Y", "KVA5Y", "KVZR", "HZU2X", ""}) {
        ts::ProbeModel model;
        model._family = family;
        model.openMaster(text);
        model.loadPullmodeMap();
        EXPECT_EQ(model._devIoMaps["PULL"],
                  (Table{{"UP", "u"}, {"DOWN", "d"}, {"BUSHOLD", "k"}, {"NONE", "n"}, {"UP_CLAMP", "c"}}))
            << family;
    }
}

TEST_F(NamingTables, PullTableRowsOfOneModeUnderBothNamesLastRowWins)
{
    {
        ts::ProbeModel model;
        model.openMaster("| caption\nPULLUP u\nUP v\n|\n");
        model.loadPullmodeMap();
        EXPECT_EQ(model._devIoMaps["PULL"], (Table{{"UP", "v"}}));
    }
    {
        ts::ProbeModel model;
        model.openMaster("| caption\nUP v\nPULLUP u\n|\n");
        model.loadPullmodeMap();
        EXPECT_EQ(model._devIoMaps["PULL"], (Table{{"UP", "u"}}));
    }
    {
        IBIS_MODEL::_is_ncd_flow = true;
        ts::ProbeModel model;
        model.openMaster("| caption\nPULLDOWN d\n|\n");
        model.loadPullmodeMap();
        EXPECT_EQ(model._devIoMaps["PULLMODE"], (Table{{"DOWN", "d"}}));
        EXPECT_EQ(model._devIoMaps.count("PULL"), 0u);
    }
}

TEST_F(NamingTables, TablesThatMayBeEmptyStoreTheirMapAndFlagEitherWay)
{
    struct Case {
        Reader read;
        char const* key;
        int position;
    };
    Case const cases[] = {
        {&IBIS_MODEL::loadImpedanceMap, "IMP", 11},
        {&IBIS_MODEL::loadMipiDphyIoMap, "MIPI", 12},
        {&IBIS_MODEL::loadTermVccMap, "TERMVCC", 12},
        {&IBIS_MODEL::loadTermGndMap, "TERMGND", 13},
        {&IBIS_MODEL::loadTermVttMap, "TERMVTT", 14},
        {&IBIS_MODEL::loadVcmtMap, "VCMT", 15},
        {&IBIS_MODEL::loadDiffResistorMap, "DIFFRES", 16},
        {&IBIS_MODEL::loadDiffCurrentMap, "DIFFCUR", 17},
        {&IBIS_MODEL::loadMultiDriveMap, "MULTDRIVE", 15},
        {&IBIS_MODEL::loadDiffDriveMap, "DIFFDRIVE", 17},
    };
    for (Case const& c : cases) {
        {
            ts::ProbeModel model;
            model.openMaster("|----\n| value code\n|----\non   x\nOFF a\non y\n|----\nAFTER\n");
            (model.*c.read)();
            EXPECT_EQ(model._devIoMaps, (std::map<std::string, Table>{{c.key, {{"ON", "y"}, {"OFF", "a"}}}}))
                << c.key;
            EXPECT_TRUE(model._ioMapFound) << c.key;
            EXPECT_EQ(flagged(model), std::vector<int>{c.position}) << c.key;
            EXPECT_EQ(nextLine(model), "AFTER") << c.key;
        }
        {
            // A table with no body at all: no message, an empty map, and the
            // table still counts as read.
            ts::ProbeModel model;
            model.openMaster("|----\n| value code\n|----\n");
            model._ioMapFound = true;
            std::string out = ts::captureStdout([&] { (model.*c.read)(); });
            EXPECT_FALSE(model._ioMapFound) << c.key << ": false at the start of each table";
            EXPECT_EQ(out, "") << c.key;
            ASSERT_EQ(model._devIoMaps.count(c.key), 1u) << c.key;
            EXPECT_TRUE(model._devIoMaps[c.key].empty()) << c.key;
            EXPECT_EQ(flagged(model), std::vector<int>{c.position}) << c.key;
        }
    }
}

TEST_F(NamingTables, TerminationTableEndsAtItsFirstCommentLine)
{
    {
        // A caption under the heading ends the table at once.
        ts::ProbeModel model;
        model.openMaster("| value code\nON t\n|----\n");
        model._ioMapFound = true;
        model.loadTerminationMap();
        ASSERT_EQ(model._devIoMaps.count("TERMINATION"), 1u);
        EXPECT_TRUE(model._devIoMaps["TERMINATION"].empty());
        EXPECT_EQ(flagged(model), std::vector<int>{12});
        EXPECT_TRUE(model._ioMapFound) << "the termination reader leaves the flag alone";
        EXPECT_EQ(nextLine(model), "ON t");
    }
    {
        ts::ProbeModel model;
        model.openMaster("on t\nOFF  a\nOFF  b\n|----\nAFTER\n");
        model._ioMapFound = false;
        model.loadTerminationMap();
        EXPECT_EQ(model._devIoMaps["TERMINATION"], (Table{{"ON", "t"}, {"OFF", "b"}}));
        EXPECT_FALSE(model._ioMapFound) << "the termination reader leaves the flag alone";
        EXPECT_EQ(nextLine(model), "AFTER");
    }
}

TEST(NamingTablesDeathTest, EmptyIoStandardSlewOrPullTableEndsTheRun)
{
    struct Case {
        Reader read;
        char const* word;
        char const* text;
    };
    Case const cases[] = {
        {&IBIS_MODEL::loadIotypeMap, "Io standard",
         "ERROR: Failed to load Io standard info from the ibs file.\n"},
        {&IBIS_MODEL::loadSlewMap, "Slew", "ERROR: Failed to load Slew info from the ibs file.\n"},
        {&IBIS_MODEL::loadPullmodeMap, "pullmode",
         "ERROR: Failed to load pullmode info from the ibs file.\n"},
    };
    ts::resetGeneratorStatics();
    for (Case const& c : cases) {
        ts::ProbeModel model;
        std::string const text = "|----\n| value code\n|----\n";
        model.openMaster(text);
        EXPECT_EXIT(
            {
                ts::stdoutToStderr();
                (model.*c.read)();
            },
            testing::ExitedWithCode(1), exactly(c.text))
            << c.word;
        model.openMaster(text);
        EXPECT_EXIT(
            {
                UT_MSGMAN::m_msgFlow = 1;
                (model.*c.read)();
            },
            testing::ExitedWithCode(1), exactly(std::string("padmodel-1024\t") + c.word + "\n"))
            << c.word;
    }
}

} // namespace
