// The line-by-line reading of a whole pad report by the constructor.

#include <gtest/gtest.h>

#include <memory>

#include "driver/basibsgen.h"
#include "support/generator_probe.h"

namespace {

class PadReader : public testing::Test {
protected:
    void SetUp() override { ts::resetGeneratorStatics(); }

    // Constructs a generator on text; returns it and its standard output.
    std::unique_ptr<IBIS_MODEL> construct(std::string const& text, std::string* out = nullptr)
    {
        std::string pad = dir.file("design.pad");
        ts::writeFile(pad, text);
        std::unique_ptr<IBIS_MODEL> model;
        std::string printed = ts::captureStdout(
            [&] { model.reset(new IBIS_MODEL("KVA3", pad.c_str(), dir.file("m.ibs").c_str())); });
        if (out)
            *out = printed;
        return model;
    }

    ts::TempDir dir;
};

std::string const row = "| led | A1/0 | LVCMOS33_OUT | PA1 | DRIVE:8mA |";

TEST_F(PadReader, PartAndPackageFromTheHead)
{
    auto model = construct(ts::padReport("KVA3-40E-6BG256C", {row}));
    EXPECT_STREQ(model->_partName.c_str(), "A3");
    EXPECT_EQ(model->_packageName, "CABGA256");
    EXPECT_EQ(model->_designIbisFile, dir.file("design.ibs"));
    ASSERT_EQ(model->_iobufs.size(), 1u);
}

TEST_F(PadReader, KeywordsHoldInAnyCaseButTheFirstLineIsTakenAsItStands)
{
    std::string text = ts::padReport("KVA3-40E", {row});
    // A part type on the first line is seen only in upper case.
    auto model = construct("Part Type: KVA2-1\n" + text.substr(text.find('\n') + 1));
    EXPECT_STREQ(model->_partName.c_str(), "A3");
    model = construct("PART TYPE: KVZR-12\n" + text.substr(text.find('\n') + 1));
    EXPECT_STREQ(model->_partName.c_str(), "A3") << "a later part type line sets it again";
    model = construct("t\npart type: kvzr-12\nPINOUT BY PORT NAME:\n+--+\n| a | b | c | d | e |\n+--+\n" +
                      row + "\n+--+\n");
    EXPECT_STREQ(model->_partName.c_str(), "ZR-") << "table rows keep their case, headings do not";
    EXPECT_EQ(std::string(model->_iobufs[0]->name), "led");
}

TEST_F(PadReader, FirstRealPackageWins)
{
    auto model = construct("t\nPACKAGE VERSION 1.2\nPackage: csbga132\nPACKAGE: CABGA256\n" +
                           ts::padReport("KVA3-40E", {row}));
    EXPECT_EQ(model->_packageName, "CSBGA132");
}

TEST_F(PadReader, SysconfigPinsEndsTheReport)
{
    auto model = construct(ts::padReport("KVA3-40E", {row}) + "Sysconfig Pins:\n" +
                           "PINOUT BY PORT NAME:\n+--+\n| a | b | c | d | e |\n+--+\n" +
                           "| late | B1/1 | LVDS_IN | x | |\n+--+\n");
    EXPECT_EQ(model->_iobufs.size(), 1u);
}

TEST_F(PadReader, OverLongLineEndsTheReadingQuietlyAndKeepsTheSignals)
{
    std::string longLine(300, '-');
    auto model = construct(ts::padReport("KVA3-40E", {row}) + longLine + "\nPACKAGE: LATE\n");
    EXPECT_EQ(model->_iobufs.size(), 1u);
    EXPECT_EQ(model->_packageName, "CABGA256");
}

TEST_F(PadReader, LineOf254CharactersIsStillAWholeLine)
{
    std::string line254 = "|" + std::string(252, ' ') + "|";
    ASSERT_EQ(line254.size(), 254u);
    auto model = construct(ts::padReport("KVA3-40E", {row}) + line254 + "\nPACKAGE: X\n");
    EXPECT_EQ(model->_packageName, "CABGA256") << "read on behind the line";
    model = construct("t\nPACKAGE: FIRST\n" + line254 + "\n" + ts::padReport("KVA3-40E", {row}));
    EXPECT_EQ(model->_iobufs.size(), 1u);
}

TEST_F(PadReader, LastLineWithoutLineEndIsNotProcessed)
{
    auto model = construct(ts::padReport("KVA3-40E", {row}) + "PART TYPE: KVZR-12");
    EXPECT_STREQ(model->_partName.c_str(), "A3");
}

TEST_F(PadReader, MissingPadReportIsFatal)
{
    ts::ProbeModel probe;
    probe._padFile = dir.file("gone.pad");
    EXPECT_EXIT(
        {
            ts::stdoutToStderr();
            probe.loadIos();
        },
        testing::ExitedWithCode(1), "^Error opening file: .*gone.pad\n$");
}

} // namespace
