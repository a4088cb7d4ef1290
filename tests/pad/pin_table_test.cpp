// The pin table: one signal record a row, the attribute cell chosen by the
// number of columns, the listing on standard output.

#include <gtest/gtest.h>

#include <memory>

#include "driver/basibsgen.h"
#include "support/generator_probe.h"

namespace {

class PinTable : public testing::Test {
protected:
    void SetUp() override { ts::resetGeneratorStatics(); }

    // Reads a pin table (heading line already consumed) from text.
    std::string read(std::string const& text, char const* family = "KVA3")
    {
        model._family = family;
        model.openPad(text);
        char heading[] = "PINOUT BY PORT NAME:";
        return ts::captureStdout([&] {
            model.setPinInfo(heading);
            model.loadPinInfo(heading);
        });
    }

    std::vector<std::pair<std::string, std::string>> attrs(size_t i)
    {
        std::vector<std::pair<std::string, std::string>> out;
        for (IB_IOBUF_CONFIG* c : model._iobufs.at(i)->configs)
            out.emplace_back(c->key, c->value);
        return out;
    }

    ts::ProbeModel model;
};

using Attrs = std::vector<std::pair<std::string, std::string>>;

TEST_F(PinTable, RowsBecomeSignalRecords)
{
    read("+---+\n| Port | Pin/Bank | Buffer | Site | Props |\n+---+\n"
         "| clk_in | B12/1 | LVDS_IN | PB12A | DIFFRESISTOR:100 |\n"
         "| led[0] |  A1  | LVCMOS33_OUT | PA1 |  DRIVE:8mA   SLEW:SLOW  |\n"
         "+---+\nPACKAGE: AFTER\n");
    EXPECT_EQ(model._pinTableColumns, 6);
    EXPECT_FALSE(model._pinTablePending);
    ASSERT_EQ(model._iobufs.size(), 2u);

    IB_IOBUF* clk = model._iobufs[0];
    EXPECT_STREQ(clk->name, "clk_in");
    EXPECT_STREQ(clk->site, "B12");
    EXPECT_STREQ(clk->bank, "1");
    EXPECT_STREQ(clk->type, "IN");
    EXPECT_EQ(clk->model, nullptr);
    EXPECT_EQ(clk->masterPin, nullptr);
    EXPECT_EQ(clk->status, 1);
    EXPECT_EQ(attrs(0), (Attrs{{"IO_TYPE", "LVDS"}, {"DIFFRESISTOR", "100"}}));

    IB_IOBUF* led = model._iobufs[1];
    EXPECT_STREQ(led->site, "A1");
    EXPECT_STREQ(led->bank, "") << "no bank without a slash";
    EXPECT_EQ(attrs(1), (Attrs{{"IO_TYPE", "LVCMOS33"}, {"DRIVE", "8mA"}, {"SLEW", "SLOW"}}));
}

TEST_F(PinTable, ListingOnStandardOutput)
{
    std::string out = read("+-+\n| a | b | c | d | e |\n+-+\n"
                           "| rst_n | C3/2 | LVCMOS25_IN | x | PULL:UP |\n+-+\n");
    EXPECT_EQ(out,
              "Comp: rst_n\n"
              " Site: C3\n"
              " Type: IN\n"
              " IO_TYPE=LVCMOS25 \n"
              " PULL=UP \n"
              "-----------------------\n");
}

TEST_F(PinTable, AttributeCellIsTheLastOneByTheHeaderCount)
{
    read("+-+\n| a | b | c | d | e | f | g |\n+-+\n"
         "| s | A1/0 | LVTTL_OUT | skip1 | skip2 | skip3 | DRIVE:4mA |\n+-+\n");
    EXPECT_EQ(model._pinTableColumns, 8);
    EXPECT_EQ(attrs(0), (Attrs{{"IO_TYPE", "LVTTL"}, {"DRIVE", "4mA"}}));
}

TEST_F(PinTable, NarrowTableTakesTheFourthCellWhateverItHolds)
{
    read("+-+\n| a | b | c | d |\n+-+\n| s | A1/0 | LVTTL_OUT | PA1 |\n+-+\n");
    EXPECT_EQ(model._pinTableColumns, 5);
    EXPECT_EQ(attrs(0), (Attrs{{"IO_TYPE", "LVTTL"}, {"PA1", ""}}));
}

TEST_F(PinTable, SecondTableAddsToTheColumnCount)
{
    model._pinTableColumns = 6;
    read("+-+\n| a | b | c | d | e | f |\n+-+\n+-+\n");
    EXPECT_EQ(model._pinTableColumns, 13);
}

TEST_F(PinTable, RowsWithoutBufferTypeMakeNoSignal)
{
    read("+-+\n| a | b | c | d | e |\n+-+\n| vcc | A2 |   | x | y |\n"
         "| io | A3/1 | SSTL18_I_BIDI | x | |\n+-+\n");
    ASSERT_EQ(model._iobufs.size(), 1u);
    EXPECT_STREQ(model._iobufs[0]->type, "BIDI");
    EXPECT_EQ(attrs(0), (Attrs{{"IO_TYPE", "SSTL18_I"}})) << "split at the last underscore";
}

TEST_F(PinTable, ColonsInAttributeTokens)
{
    read("+-+\n| a | b | c | d | e |\n+-+\n| s | A1/0 | X_IN | x | A:1:2 FLAG B: |\n+-+\n");
    EXPECT_EQ(attrs(0), (Attrs{{"IO_TYPE", "X"}, {"A", "1"}, {"FLAG", ""}, {"B", ""}}));
}

TEST_F(PinTable, BufferTypeWithoutUnderscoreHasNoPortType)
{
    read("+-+\n| a | b | c | d | e |\n+-+\n| s | A1/0 | GTLPLUS | x | |\n+-+\n");
    EXPECT_STREQ(model._iobufs[0]->type, "");
    EXPECT_EQ(attrs(0), (Attrs{{"IO_TYPE", "GTLPLUS"}}));
}

TEST_F(PinTable, UnclosedTableRunsToTheEndAndKeepsItsRows)
{
    read("+-+\n| a | b | c | d | e |\n+-+\n| s | A1/0 | X_IN | x | |\n| t | A2/0 | X_IN | x | |");
    EXPECT_EQ(model._iobufs.size(), 1u) << "the last line without line end is not read";
    read("+-+\n| a | b | c | d | e |\n+-+\n| u | A1/0 | X_IN | x | |\n| v | A2/0 | X_IN | x | |\n");
    EXPECT_EQ(model._iobufs.size(), 3u);
}

TEST_F(PinTable, NothingHappensWithoutThePendingTable)
{
    model.openPad("| s | A1/0 | X_IN | x | |\n");
    char line[] = "| s | A1/0 | X_IN | x | |";
    model.loadPinInfo(line);
    model.loadPinInfo(nullptr);
    EXPECT_TRUE(model._iobufs.empty());
    EXPECT_TRUE(model.doneReadingPadFile());
}

std::string const kvtnNote =
    "\nNote: The IBIS models for True Differential have a known issue in the IBIS data. Please "
    "use TN HSPICE models instead to run simulation.\n";

TEST_F(PinTable, TrueDifferentialNoteOnKvtnOnce)
{
    std::string table = "+-+\n| a | b | c | d | e |\n+-+\n"
                        "| o | A1/0 | LVPECL33_OUT | x | |\n"
                        "| i | A2/0 | LVPECL33_IN | x | |\n"
                        "| j | A3/0 | LVDS_IN | x | |\n+-+\n";
    std::string out = read(table, "KVTN");
    EXPECT_EQ(out.substr(out.size() - kvtnNote.size()), kvtnNote);
    EXPECT_EQ(out.find("Note:"), out.rfind("Note:")) << "once a run";
}

TEST_F(PinTable, NoNoteForOtherPortTypesOrFamilies)
{
    std::string table = "+-+\n| a | b | c | d | e |\n+-+\n| o | A1/0 | LVPECL33_OUT | x | |\n"
                        "| b | A2/0 | LVDS_BIDI | x | |\n+-+\n";
    EXPECT_EQ(read(table, "KVTN").find("Note:"), std::string::npos);
    std::string bidi = "+-+\n| a | b | c | d | e |\n+-+\n| b | A2/0 | BLVDS25_BIDI | x | |\n+-+\n";
    EXPECT_EQ(read(bidi, "KVA3").find("Note:"), std::string::npos);
    EXPECT_NE(read(bidi, "KVTN").find("Note:"), std::string::npos);
}

TEST_F(PinTable, LastIoTypeAttributeDecidesTheNote)
{
    std::string table = "+-+\n| a | b | c | d | e |\n+-+\n"
                        "| o | A1/0 | LVCMOS33_OUT | x | IO_TYPE:RSDS |\n+-+\n";
    EXPECT_NE(read(table, "KVTN").find("Note:"), std::string::npos);
}

TEST(IoTypeAndPortType, SplitAtTheLastUnderscore)
{
    ts::ProbeModel model;
    std::string io = "SSTL18_II_BIDI", port = "unchanged";
    model.getIoTypeAndPortType(io, port);
    EXPECT_EQ(io, "SSTL18_II");
    EXPECT_EQ(port, "BIDI");
    io = "LVDS";
    model.getIoTypeAndPortType(io, port);
    EXPECT_EQ(io, "LVDS");
    EXPECT_EQ(port, "BIDI") << "nothing changes without an underscore";
}

TEST(IobufPrint, ModelLineOnlyWithAModel)
{
    IB_IOBUF* iobuf = ts::makeIobuf("d", "", "OUT", "IO_TYPE:LVDS");
    iobuf->model = ibs_new_model_string("lvd250aaaaaaaaaaaaou");
    EXPECT_EQ(ts::captureStdout([&] { iobuf->print(); }),
              "Comp: d\n Site: \n Type: OUT\n IO_TYPE=LVDS \n Model: lvd250aaaaaaaaaaaaou\n"
              "-----------------------\n");
}

} // namespace
