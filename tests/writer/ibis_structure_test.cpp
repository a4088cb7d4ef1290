// The structural IBIS check that the whole-run tests apply to every design
// file, tried on texts that are broken on purpose.

#include <gtest/gtest.h>

#include "support/ibis_structure.h"

namespace {

std::string const sound = "|****\n"
                          "| banner\n"
                          "[IBIS Ver]      5.0\n"
                          "[File Name]     board.ibs\n"
                          "[Component]     KVANR3-40E\n"
                          "[Package]\n"
                          "R_pkg 0.2 0.1 0.3\n"
                          "[Pin]  signal_name  model_name\n"
                          "C1            clk+                 lvd_in\n"
                          "C2            clk-                 lvd_in\n"
                          "V1            vcc                  POWER\n"
                          "G1            gnd                  gnd\n"
                          "N1            spare                NC\n"
                          "|****\n"
                          "[Diff pin]  inv_pin  vdiff\n"
                          "C1          C2      0.2V\n"
                          "|****\n"
                          "[Model]  lvd_in\n"
                          "Model_type Input\n"
                          "| End [Model] lvd_in\n"
                          "| End [Component]\n"
                          "[End]\n";

std::string replaced(std::string text, std::string const& from, std::string const& to)
{
    std::string::size_type at = text.find(from);
    EXPECT_NE(at, std::string::npos) << from;
    return text.replace(at, from.size(), to);
}

TEST(IbisStructure, SoundFilePasses)
{
    EXPECT_TRUE(ts::ibisStructureProblems(sound, "board.ibs", true).empty())
        << testing::PrintToString(ts::ibisStructureProblems(sound, "board.ibs", true));
}

TEST(IbisStructure, IbisVerMustBeTheFirstKeyword)
{
    EXPECT_EQ(ts::ibisStructureProblems(replaced(sound, "[IBIS Ver]      5.0\n", "") + "", "board.ibs", true).size(), 1u);
    EXPECT_EQ(ts::ibisStructureProblems("[Comment char] |_char\n" + sound, "board.ibs", true).size(), 1u);
}

TEST(IbisStructure, EndMustBeTheLastKeyword)
{
    EXPECT_EQ(ts::ibisStructureProblems(replaced(sound, "[End]\n", ""), "board.ibs", true).size(), 1u);
    EXPECT_EQ(ts::ibisStructureProblems(sound + "[Model] late\n", "board.ibs", true).size(), 1u);
}

TEST(IbisStructure, FileNameMustNameTheFileItself)
{
    EXPECT_EQ(ts::ibisStructureProblems(sound, "board_zu2.ibs", true).size(), 1u);
    EXPECT_EQ(ts::ibisStructureProblems(replaced(sound, "[File Name]     board.ibs\n", ""), "board.ibs", true).size(),
              1u);
}

TEST(IbisStructure, EveryPinModelNeedsItsBlock)
{
    std::string text = replaced(sound, "N1            spare                NC\n",
                                "N1            spare                lvc_out\n");
    std::vector<std::string> problems = ts::ibisStructureProblems(text, "board.ibs", true);
    ASSERT_EQ(problems.size(), 1u);
    EXPECT_NE(problems[0].find("lvc_out"), std::string::npos);
    EXPECT_EQ(ts::ibisStructureProblems(replaced(sound, "[Model]  lvd_in\n", "[Model]  lvd_in_x\n"), "board.ibs",
                                        true)
                  .size(),
              2u)
        << "both pins of the pair name the missing model";
}

TEST(IbisStructure, DiffPinsMustBePins)
{
    std::vector<std::string> problems =
        ts::ibisStructureProblems(replaced(sound, "C1          C2      0.2V\n", "C1          C3      0.2V\n"),
                                  "board.ibs", true);
    ASSERT_EQ(problems.size(), 1u);
    EXPECT_NE(problems[0].find("C3"), std::string::npos);
    EXPECT_EQ(ts::ibisStructureProblems(replaced(sound, "C1          C2      0.2V\n", "C1          C20.2V\n"),
                                        "board.ibs", true)
                  .size(),
              1u)
        << "a negative pin run into the next value is no pin";
}

TEST(IbisStructure, LongLinesCountOnlyWhereTheMasterKeptTo120)
{
    std::string text = replaced(sound, "Model_type Input\n", "Model_type Input " + std::string(104, 'x') + "\n");
    EXPECT_EQ(ts::ibisStructureProblems(text, "board.ibs", true).size(), 1u);
    EXPECT_TRUE(ts::ibisStructureProblems(text, "board.ibs", false).empty());
    std::string exactly120 = replaced(sound, "Model_type Input\n", "Model_type Input " + std::string(103, 'x') + "\n");
    EXPECT_TRUE(ts::ibisStructureProblems(exactly120, "board.ibs", true).empty());
    EXPECT_TRUE(ts::linesKeepTo(exactly120));
    EXPECT_FALSE(ts::linesKeepTo(text));
}

TEST(IbisStructure, TextWithoutKeywordsIsNoIbisFile)
{
    EXPECT_FALSE(ts::ibisStructureProblems("| only a comment\n", "board.ibs", true).empty());
    EXPECT_FALSE(ts::ibisStructureProblems("", "board.ibs", true).empty());
}

} // namespace
