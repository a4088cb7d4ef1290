// The [Model] blocks copied from the master file into the design IBIS file,
// and the closing comment that the writer puts behind each.

#include <gtest/gtest.h>

#include "writer/writer_probe.h"

namespace {

class ModelBlocks : public testing::Test {
protected:
    void SetUp() override { ts::resetGeneratorStatics(); }

    std::string blockOf(std::string const& master, std::string const& model)
    {
        probe.setMaster(master);
        probe.openDesign();
        probe.writeModelInfo(model);
        EXPECT_FALSE(probe._masterStream.is_open());
        EXPECT_TRUE(probe._masterStream.good()) << "the stream is left closed and clear";
        return probe.design();
    }

    wt::DesignProbe probe;
};

std::string const master = "[IBIS Ver]      5.0\n"
                           "[Pin]  signal_name  model_name\n"
                           "A1     IO_A1        lvc330s080naaaaaaaou\n"
                           "|\n"
                           "|****************************************\n"
                           "[Model]        lvc330axxxuaaaaaaaio\n"
                           "Model_type     I/O\n"
                           "|\n"
                           "| End [Model] lvc330axxxuaaaaaaaio\n"
                           "|****************************************\n"
                           "[Model]        lvc330s080naaaaaaaou\n"
                           "| LVCMOS33 output   \n"
                           "\n"
                           "Model_type     3-state\n"
                           "   C_comp  2.1pF  1.8pF  2.4pF\n"
                           "\n"
                           "|\n"
                           "| End [Model] lvc330s080naaaaaaaou\n"
                           "|****************************************\n"
                           "[End]\n";

TEST_F(ModelBlocks, BlockIsCopiedFromItsModelLineUpToTheNextModelLineUntouched)
{
    EXPECT_EQ(blockOf(master, "lvc330s080naaaaaaaou"), "[Model]        lvc330s080naaaaaaaou\n"
                                                       "| LVCMOS33 output   \n"
                                                       "\n"
                                                       "Model_type     3-state\n"
                                                       "   C_comp  2.1pF  1.8pF  2.4pF\n"
                                                       "\n"
                                                       "|\n");
    EXPECT_EQ(blockOf(master, "lvc330axxxuaaaaaaaio"), "[Model]        lvc330axxxuaaaaaaaio\n"
                                                       "Model_type     I/O\n"
                                                       "|\n");
}

TEST_F(ModelBlocks, ModelTheMasterDoesNotHoldWritesNothing)
{
    EXPECT_EQ(blockOf(master, "lvc330s160naaaaaaaou"), "");
}

TEST_F(ModelBlocks, FirstLineOfTheMasterNeverCounts)
{
    EXPECT_EQ(blockOf("[Model] m1 on the first line\n"
                      "text\n"
                      "[Model] m1\n"
                      "Model_type Input\n"
                      "| End [Model] m1\n",
                      "m1"),
              "[Model] m1\nModel_type Input\n");
}

TEST_F(ModelBlocks, NameIsFoundAsASubstringOfAnEarlierModelLine)
{
    EXPECT_EQ(blockOf("[IBIS Ver] 5.0\n"
                      "[Model] lvc33_fast\n"
                      "Model_type Output\n"
                      "| End [Model] lvc33_fast\n"
                      "[Model] lvc33\n"
                      "Model_type Input\n"
                      "| End [Model] lvc33\n",
                      "lvc33"),
              "[Model] lvc33_fast\nModel_type Output\n");
}

TEST_F(ModelBlocks, ClosingCommentOfAnotherBlockThatNamesTheModelCountsAsAFind)
{
    EXPECT_EQ(blockOf("[IBIS Ver] 5.0\n"
                      "[Model] a1\n"
                      "Model_type Output\n"
                      "| End [Model] a1, replaced by b2\n"
                      "|****\n"
                      "[Model] b2\n"
                      "Model_type Input\n"
                      "| End [Model] b2\n",
                      "b2"),
              "| End [Model] a1, replaced by b2\n|****\n");
}

TEST_F(ModelBlocks, LineBehindTheModelLineIsCopiedEvenWhenItHoldsModel)
{
    EXPECT_EQ(blockOf("[IBIS Ver] 5.0\n"
                      "[Model] m1\n"
                      "| End [Model] m1\n"
                      "|****\n"
                      "[Model] m2\n"
                      "Model_type Input\n"
                      "| End [Model] m2\n",
                      "m1"),
              "[Model] m1\n| End [Model] m1\n|****\n");
}

TEST_F(ModelBlocks, BlockWithOneLineBehindItsModelLine)
{
    EXPECT_EQ(blockOf("[IBIS Ver] 5.0\n[Model] m1\nModel_type Input\n| End [Model] m1\n", "m1"),
              "[Model] m1\nModel_type Input\n");
}

TEST_F(ModelBlocks, NameTestIsCaseSensitive)
{
    EXPECT_EQ(blockOf("[IBIS Ver] 5.0\n[Model] M1\nModel_type Input\n| End [Model] M1\n[model] m1\nx\n", "m1"), "");
}

TEST_F(ModelBlocks, EndModelLineNamesTheModel)
{
    probe.openDesign();
    probe.writeEndModel("lvc330s080naaaaaaaou");
    EXPECT_EQ(probe.design(), "| End [Model] lvc330s080naaaaaaaou\n");
}

TEST_F(ModelBlocks, MasterThatCannotBeOpenedEndsTheRunWithStatusOne)
{
    probe.openDesign();
    probe._masterIbisFile = probe.dir() + "/missing.ibs";
    EXPECT_EXIT(
        {
            ts::stdoutToStderr();
            probe.writeModelInfo("m1");
        },
        testing::ExitedWithCode(1), "Error opening file: " + probe._masterIbisFile + "\n");
}

} // namespace
