// The pin rows of the design IBIS file, the D-PHY rows, and the [Diff pin]
// section carried over from the master with the design's own pins.

#include <gtest/gtest.h>

#include <csignal>

#include "writer/writer_probe.h"

namespace {

// ------------------------------------------------------------- pin rows --

class PinRows : public testing::Test {
protected:
    void SetUp() override { ts::resetGeneratorStatics(); }
    void TearDown() override { ts::resetGeneratorStatics(); }

    std::string pinRows()
    {
        probe.openDesign();
        probe.writeIbisPinInfo();
        return probe.design();
    }

    wt::DesignProbe probe;
};

TEST_F(PinRows, RowIsPinIn13SignalIn20AndTheModel)
{
    probe.addSignal("led", "A1", "lvc330s080naaaaaaaou");
    EXPECT_EQ(pinRows(), "A1            led                  lvc330s080naaaaaaaou\n" + wt::separator);
}

TEST_F(PinRows, LongValuesPushTheColumnsAndAreNeverCut)
{
    probe.addSignal("a_signal_name_of_20c", "PIN_13_CHARSX", "m1");
    probe.addSignal("a_signal_name_of_21ch", "PIN_14_CHARSXY", "m2");
    probe.addSignal("s", "PIN_12_CHARS", "m3");
    EXPECT_EQ(pinRows(), "PIN_13_CHARSX a_signal_name_of_20c m1\n"
                         "PIN_14_CHARSXY a_signal_name_of_21ch m2\n"
                         "PIN_12_CHARS  s                    m3\n" +
                             wt::separator);
}

TEST_F(PinRows, SignalsWithoutAModelHaveNoRowAndRowsKeepReportOrder)
{
    probe.addSignal("zeta", "Z9", "m_z");
    probe.addSignal("no_model", "B1", nullptr);
    probe.addSignal("empty_model", "B2", "");
    probe.addSignal("alpha", "A1", "m_a");
    EXPECT_EQ(pinRows(), "Z9            zeta                 m_z\n"
                         "A1            alpha                m_a\n" +
                             wt::separator);
}

TEST_F(PinRows, DifferentialSignalGetsAPositiveAndANegativeRow)
{
    probe.addSignal("clk", "C1", "lvd250axxxaaaaaaaain");
    probe.addSignal("led", "A1", "lvc330s080naaaaaaaou");
    probe._diffPinMap["clk-"] = "C2";
    probe._diffPinMap["led"] = "A1";
    EXPECT_EQ(pinRows(), "C1            clk+                 lvd250axxxaaaaaaaain\n"
                         "C2            clk-                 lvd250axxxaaaaaaaain\n"
                         "A1            led                  lvc330s080naaaaaaaou\n" +
                             wt::separator);
}

TEST_F(PinRows, SignalWithoutSiteHasAnEmptyFirstColumn)
{
    probe.addSignal("floating", "", "m1");
    EXPECT_EQ(pinRows(), "              floating             m1\n" + wt::separator);
}

TEST_F(PinRows, NoSignalsLeavesTheSeparatorAlone)
{
    EXPECT_EQ(pinRows(), wt::separator);
}

// --------------------------------------------------------------- D-PHY --

class DphyRows : public PinRows {
protected:
    void SetUp() override
    {
        PinRows::SetUp();
        probe._availableModels = {"lvc330s080naaaaaaaou", "mip120axxxaaaaaaaaio", "mip120axxxaahaaaaaio",
                                  "mip120axxxaalaaaaaio", "mip120fxxxaahaaaaaio", "mip120fxxxaalaaaaaio",
                                  "xmipxxxxxxxxhxxx"};
    }
};

TEST_F(DphyRows, NothingWithTheFlagClear)
{
    probe.addSignal("led", "A1", "lvc330s080naaaaaaaou");
    probe._designModels = {"lvc330s080naaaaaaaou"};
    EXPECT_EQ(pinRows(), "A1            led                  lvc330s080naaaaaaaou\n" + wt::separator);
    EXPECT_EQ(probe._designModels.size(), 1u);
}

TEST_F(DphyRows, EveryDphyModelOfTheMasterGetsARowAndAModelBlock)
{
    IBIS_MODEL::_mipi_dphy_ip_used = true;
    probe.addSignal("led", "A1", "lvc330s080naaaaaaaou");
    probe._designModels = {"lvc330s080naaaaaaaou"};
    EXPECT_EQ(pinRows(), "A1            led                  lvc330s080naaaaaaaou\n"
                         "MIP_1         mode_hs_1            mip120axxxaahaaaaaio\n"
                         "MIP_2         mode_lp_1            mip120axxxaalaaaaaio\n"
                         "MIP_3         mode_hs_2            mip120fxxxaahaaaaaio\n"
                         "MIP_4         mode_lp_2            mip120fxxxaalaaaaaio\n"
                         "MIP_5         mode_hs_3            xmipxxxxxxxxhxxx\n" +
                             wt::separator);
    EXPECT_EQ(probe._designModels,
              (std::set<std::string>{"lvc330s080naaaaaaaou", "mip120axxxaahaaaaaio", "mip120axxxaalaaaaaio",
                                     "mip120fxxxaahaaaaaio", "mip120fxxxaalaaaaaio", "xmipxxxxxxxxhxxx"}))
        << "a name with another mode character is passed over and gets no block";
}

TEST_F(DphyRows, DphyRowsFollowAnEmptyPinList)
{
    IBIS_MODEL::_mipi_dphy_ip_used = true;
    probe._availableModels = {"mip120axxxaalaaaaaio"};
    EXPECT_EQ(pinRows(), "MIP_1         mode_lp_1            mip120axxxaalaaaaaio\n" + wt::separator);
}

TEST_F(DphyRows, ModelThatASignalUsesTooStandsOnceInTheDesignModels)
{
    IBIS_MODEL::_mipi_dphy_ip_used = true;
    probe._availableModels = {"mip120axxxaahaaaaaio"};
    probe.addSignal("lane", "M2", "mip120axxxaahaaaaaio");
    probe._designModels = {"mip120axxxaahaaaaaio"};
    EXPECT_EQ(pinRows(), "M2            lane                 mip120axxxaahaaaaaio\n"
                         "MIP_1         mode_hs_1            mip120axxxaahaaaaaio\n" +
                             wt::separator);
    EXPECT_EQ(probe._designModels.size(), 1u);
}

TEST_F(DphyRows, NoMipNameNoRow)
{
    IBIS_MODEL::_mipi_dphy_ip_used = true;
    probe._availableModels = {"lvc330s080naaaaaaaou", "MIP120axxxaahaaaaaio"};
    EXPECT_EQ(pinRows(), wt::separator);
    EXPECT_TRUE(probe._designModels.empty());
}

TEST_F(DphyRows, DphyNameShorterThan13CharactersIsAnUncaughtOutOfRange)
{
    IBIS_MODEL::_mipi_dphy_ip_used = true;
    probe._availableModels = {"mip120axxxaa"};
    // Nothing may catch the failure on its way out, so it is thrown from
    // where the process can only end.
    auto uncaught = [this]() noexcept { pinRows(); };
    EXPECT_EXIT(uncaught(), testing::KilledBySignal(SIGABRT), "terminate called after throwing an instance of "
                                                             "'std::out_of_range'\n  what\\(\\):  basic_string::at");
}

// ------------------------------------------------------------- diff pins --

class DiffPins : public testing::Test {
protected:
    void SetUp() override { ts::resetGeneratorStatics(); }

    std::string diffSection(std::string const& master)
    {
        probe.setMaster(master);
        probe.openDesign();
        probe.writeDiffPinSection();
        EXPECT_FALSE(probe._masterStream.is_open());
        EXPECT_TRUE(probe._masterStream.good()) << "the stream is left closed and clear";
        return probe.design();
    }

    static std::string masterWith(std::string const& section)
    {
        return "[IBIS Ver] 5.0\n"
               "[Pin]  signal_name  model_name\n"
               "F4     IO_F4_p      lvd_in\n"
               "F5     IO_F4_n      lvd_in\n"
               "|\n" +
               section + "|\n[Model] lvd_in\n| End [Model] lvd_in\n[End]\n";
    }

    wt::DesignProbe probe;
};

std::string const header = "[Diff pin]  inv_pin  vdiff   tdelay_typ tdelay_min tdelay_max\n";

TEST_F(DiffPins, RowsOfTheDesignsPairsWithTheDesignsPinsAndTheRestOfTheMasterRow)
{
    probe.addSignal("clk_in", "C1", "lvd_in", "F4");
    probe.addSignal("tx", "D1", "lvd_out", "H2");
    probe.addSignal("led", "A1", "lvc", nullptr);
    probe._diffPinMap = {{"clk_in-", "C2"}, {"tx-", "D2"}};
    EXPECT_EQ(diffSection(masterWith(header + "|\n| the pairs\n"
                                              "F4          F5       0.200V  0ns        0ns        0ns\n"
                                              "H2          H3       NA      0ns        0ns        0ns\n"
                                              "K2          K3       NA      0ns        0ns        0ns\n")),
              header +
                  "C1          C2      0.200V  0ns        0ns        0ns\n"
                  "D1          D2      NA      0ns        0ns        0ns\n" +
                  wt::separator);
}

TEST_F(DiffPins, SingleBlankBehindTheSecondColumnRunsTheNegativePinIntoTheNextValue)
{
    probe.addSignal("clk_in", "C1", "lvd_in", "F4");
    probe._diffPinMap = {{"clk_in-", "C2"}};
    EXPECT_EQ(diffSection(masterWith(header + "F4 F5 0.2V 1ns\n")), header + "C1          C20.2V 1ns\n" + wt::separator);
}

TEST_F(DiffPins, PositivePinOf12CharactersOrMoreRunsIntoTheNegative)
{
    probe.addSignal("a", "PIN_12_CHARS", "lvd_in", "F4");
    probe.addSignal("b", "PIN_13_CHARSX", "lvd_in", "F4");
    probe._diffPinMap = {{"a-", "N1"}, {"b-", "N2"}};
    EXPECT_EQ(diffSection(masterWith(header + "F4  F5  NA\n")),
              header + "PIN_12_CHARSN1 NA\nPIN_13_CHARSXN2 NA\n" + wt::separator);
}

TEST_F(DiffPins, SignalsSharingAMasterPinGetARowEachInNameOrder)
{
    probe.addSignal("rx_b", "E1", "lvd_in", "F4");
    probe.addSignal("rx_a", "C1", "lvd_in", "F4");
    probe._diffPinMap = {{"rx_a-", "C2"}, {"rx_b-", "E2"}};
    EXPECT_EQ(diffSection(masterWith(header + "F4  F5  0.1V\n")),
              header + "C1          C2 0.1V\nE1          E2 0.1V\n" + wt::separator);
}

TEST_F(DiffPins, SignalThatIsNotDifferentialInTheDesignGetsNoRow)
{
    probe.addSignal("single", "C1", "lvd_in", "F4");
    probe.addSignal("pair", "E1", "lvd_in", "F4");
    probe._diffPinMap = {{"pair-", "E2"}, {"single", "C1"}};
    EXPECT_EQ(diffSection(masterWith(header + "F4  F5  0.1V\n")), header + "E1          E2 0.1V\n" + wt::separator);
}

TEST_F(DiffPins, NoRowAtAllLeavesNeitherKeywordNorSeparator)
{
    probe.addSignal("single", "C1", "lvd_in", "F4");
    probe._diffPinMap = {{"single", "C1"}};
    EXPECT_EQ(diffSection(masterWith(header + "F4  F5  0.1V\n")), "");
}

TEST_F(DiffPins, RowMatchingNothingIsTriedAgainWithItsLaterColumns)
{
    probe.addSignal("clk_in", "C1", "lvd_in", "F4");
    probe.addSignal("late", "G1", "lvd_in", "NA");
    probe._diffPinMap = {{"clk_in-", "C2"}, {"late-", "G2"}};
    EXPECT_EQ(diffSection(masterWith(header + "X1 X2 F4 F5 0.2V\n"
                                              "Y1 Y2 0.1V NA 2ns\n")),
              header + "C1          C20.2V\n" + wt::separator)
        << "only the first of two tokens is compared with the master pins";
}

TEST_F(DiffPins, RestStartingWithABarEndsTheSection)
{
    probe.addSignal("clk_in", "C1", "lvd_in", "F4");
    probe._diffPinMap = {{"clk_in-", "C2"}};
    EXPECT_EQ(diffSection(masterWith(header + "X1 X2 | no pair of the design\nF4 F5 0.2V\n")), "");
}

TEST_F(DiffPins, SectionEndsAtTheFirstCommentLineBehindTheRows)
{
    probe.addSignal("clk_in", "C1", "lvd_in", "F4");
    probe.addSignal("tx", "D1", "lvd_out", "H2");
    probe._diffPinMap = {{"clk_in-", "C2"}, {"tx-", "D2"}};
    EXPECT_EQ(diffSection(masterWith(header + "F4 F5  0.2V\n| end of the pairs\nH2 H3  NA\n")),
              header + "C1          C2 0.2V\n" + wt::separator);
}

TEST_F(DiffPins, KeywordCountsOnlyInThatSpellingAndNotOnTheFirstLine)
{
    probe.addSignal("clk_in", "C1", "lvd_in", "F4");
    probe._diffPinMap = {{"clk_in-", "C2"}};
    EXPECT_EQ(diffSection(masterWith("[Diff Pin]  inv_pin  vdiff\nF4 F5 0.2V\n")), "");
    EXPECT_EQ(diffSection(masterWith("[DIFF PIN]  inv_pin  vdiff\nF4 F5 0.2V\n")), "");
    EXPECT_EQ(diffSection("[Diff pin]  inv_pin  vdiff\nF4 F5 0.2V\n|\n"), "");
}

TEST_F(DiffPins, SectionWithoutRowsWritesNothing)
{
    probe.addSignal("clk_in", "C1", "lvd_in", "F4");
    probe._diffPinMap = {{"clk_in-", "C2"}};
    EXPECT_EQ(diffSection(masterWith(header + "|\n| no pairs\n[Model] x\n| End [Model] x\n")), "");
    EXPECT_EQ(diffSection("[IBIS Ver] 5.0\n[Diff pin]  inv_pin\n| only comments\n"), "");
}

TEST_F(DiffPins, RowOnALastLineWithoutLineEndMeetsTheEndOfTheFile)
{
    probe.addSignal("clk_in", "C1", "lvd_in", "F4");
    probe.addSignal("tx", "D1", "lvd_out", "H2");
    probe._diffPinMap = {{"clk_in-", "C2"}, {"tx-", "D2"}};
    std::string head = "[IBIS Ver] 5.0\n" + header + "| pairs\n";
    EXPECT_EQ(diffSection(head + "F4 F5 0.2V"), "") << "the only row is read together with the end of the file";
    EXPECT_EQ(diffSection(head + "F4 F5 0.2V\nH2 H3 NA"), header + "C1          C20.2V\n" + wt::separator);
    EXPECT_EQ(diffSection(head + "F4 F5 0.2V\nH2 H3 NA\n"),
              header + "C1          C20.2V\nD1          D2NA\n" + wt::separator);
}

TEST_F(DiffPins, MasterWithoutDiffPinKeywordWritesNothing)
{
    probe.addSignal("clk_in", "C1", "lvd_in", "F4");
    probe._diffPinMap = {{"clk_in-", "C2"}};
    EXPECT_EQ(diffSection(masterWith("")), "");
}

TEST_F(DiffPins, MasterThatCannotBeOpenedEndsTheRunWithStatusOne)
{
    probe.openDesign();
    probe._masterIbisFile = probe.dir() + "/missing.ibs";
    EXPECT_EXIT(
        {
            ts::stdoutToStderr();
            probe.writeDiffPinSection();
        },
        testing::ExitedWithCode(1), "Error opening file: " + probe._masterIbisFile + "\n");
}

} // namespace
