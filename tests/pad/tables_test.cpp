// The reading of a pad report line by line, and its tables: the pin table (one signal record a
// row, the attribute cell chosen by the column count, the listing), the bank table and the pin
// number table.

#include <gtest/gtest.h>

#include <memory>

#include "driver/basibsgen.h"
#include "support/generator_probe.h"

namespace {

using S = std::string;
using Map = std::map<S, S>;

S const row = "| led | A1/0 | LVCMOS33_OUT | PA1 | DRIVE:8mA |";

TEST(PadReport, LineByLineReading)
{
    S const report = ts::padReport("KVA3-40E-6BG256C", {row});
    S const table = "PINOUT BY PORT NAME:\n+--+\n| a | b | c | d | e |\n+--+\n" + row + "\n+--+\n";
    S const line254 = "|" + S(252, ' ') + "|";
    ASSERT_EQ(line254.size(), 254u);
    struct { S text; char const* part; char const* package; size_t signals; } const cases[] = {
        {report, "A3", "CABGA256", 1},
        // The first line is looked at as it stands, every other one in any case; rows keep theirs.
        {"Part Type: KVA2-1\n" + table, "", "", 1},
        {"PART TYPE: KVZR-12\n" + table, "ZR-", "", 1},
        {"t\npart type: kvzr-12\n" + table, "ZR-", "", 1},
        {"t\nPART TYPE: KVZR-12\n" + report, "A3", "CABGA256", 1}, // a later part type line sets it again
        {"t\nPACKAGE VERSION 1.2\nPackage: csbga132\nPACKAGE: CABGA256\n" + report, "A3", "CSBGA132", 1},
        {report + "Sysconfig Pins:\nPART TYPE: KVZR-12\n" + table, "A3", "CABGA256", 1}, // ends the report
        // An over-long line ends the reading quietly and the signals stay; 254 characters are a line.
        {report + S(300, '-') + "\nPART TYPE: KVZR-12\n" + table, "A3", "CABGA256", 1},
        {report + line254 + "\nPART TYPE: KVZR-12\n", "ZR-", "CABGA256", 1},
        {"t\nPACKAGE: FIRST\n" + line254 + "\n" + report, "A3", "FIRST", 1},
        {report + "PART TYPE: KVZR-12", "A3", "CABGA256", 1}}; // a last line without line end is not read
    ts::TempDir dir;
    for (auto const& c : cases) {
        ts::resetGeneratorStatics();
        ts::writeFile(dir.file("design.pad"), c.text);
        std::unique_ptr<IBIS_MODEL> model;
        ts::captureStdout([&] { model.reset(new IBIS_MODEL("KVA3", dir.file("design.pad").c_str(), "m.ibs")); });
        EXPECT_STREQ(model->_partName.c_str(), c.part) << c.text;
        EXPECT_EQ(model->_packageName, c.package) << c.text;
        ASSERT_EQ(model->_iobufs.size(), c.signals) << c.text;
        EXPECT_STREQ(model->_iobufs[0]->name, "led");
        EXPECT_EQ(model->_designIbisFile, dir.file("design.ibs"));
    }
    ts::ProbeModel probe;
    probe._padFile = dir.file("gone.pad");
    EXPECT_EXIT((ts::stdoutToStderr(), probe.loadIos()), testing::ExitedWithCode(1),
                "^Error opening file: .*gone.pad\n$");
}

class PinTable : public testing::Test {
protected:
    void SetUp() override { ts::resetGeneratorStatics(); }

    // Reads a pin table whose heading line was just read; returns the standard output.
    S read(S const& text, char const* family = "KVA3")
    {
        model._family = family;
        model.openPad(text);
        char heading[] = "PINOUT BY PORT NAME:";
        return ts::captureStdout([&] { model.setPinInfo(heading); model.loadPinInfo(heading); });
    }
    // "name pin/bank type KEY=VALUE ..."
    std::vector<S> signals()
    {
        std::vector<S> out;
        for (IB_IOBUF* io : model._iobufs) {
            out.push_back(S(io->name) + " " + io->site + "/" + io->bank + " " + io->type);
            for (IB_IOBUF_CONFIG* c : io->configs)
                out.back() += " " + c->key + "=" + c->value;
        }
        return out;
    }

    ts::ProbeModel model;
};

TEST_F(PinTable, RowsBecomeSignalRecords)
{
    struct { S header, rows; int columns; std::vector<S> signals; } const cases[] = {
        {"| Port | Pin/Bank | Buffer | Site | Props |",
         "| clk_in | B12/1 | LVDS_IN | PB12A | DIFFRESISTOR:100 |\n"
         "| led[0] |  A1  | LVCMOS33_OUT | PA1 |  DRIVE:8mA   SLEW:SLOW  |\n",
         6, {"clk_in B12/1 IN IO_TYPE=LVDS DIFFRESISTOR=100", "led[0] A1/ OUT IO_TYPE=LVCMOS33 DRIVE=8mA SLEW=SLOW"}},
        // 8 bars: cell 7 holds the attributes; 5 or fewer: cell 4, whatever it holds.
        {"| a | b | c | d | e | f | g |", "| s | A1/0 | LVTTL_OUT | skip1 | skip2 | skip3 | DRIVE:4mA |\n", 8,
         {"s A1/0 OUT IO_TYPE=LVTTL DRIVE=4mA"}},
        {"| a | b | c | d |", "| s | A1/0 | LVTTL_OUT | PA1 |\n", 5, {"s A1/0 OUT IO_TYPE=LVTTL PA1="}},
        // No buffer type, no signal; split at the last underscore; none, no port type; colons.
        {"| a | b | c | d | e |",
         "| vcc | A2 |   | x | y |\n| io | A3/1 | SSTL18_I_BIDI | x | |\n| s | A1/0 | GTLPLUS | x | A:1:2 FLAG B: |\n",
         6,
         {"io A3/1 BIDI IO_TYPE=SSTL18_I", "s A1/0  IO_TYPE=GTLPLUS A=1 FLAG= B="}}};
    for (auto const& c : cases) {
        model._pinTableColumns = 0;
        model._iobufs.clear();
        read("+---+\n" + c.header + "\n+---+\n" + c.rows + "+---+\n| late | A9/0 | X_IN | x | |\n");
        EXPECT_EQ(model._pinTableColumns, c.columns) << c.header;
        EXPECT_EQ(signals(), c.signals) << c.header;
        EXPECT_FALSE(model._pinTablePending);
    }
    IB_IOBUF* io = model._iobufs[0];
    EXPECT_TRUE(io->model == nullptr && io->masterPin == nullptr && io->status == 1);

    model._pinTableColumns = 6; // a second table adds to the count
    read("+-+\n| a | b | c | d | e | f |\n+-+\n+-+\n");
    EXPECT_EQ(model._pinTableColumns, 13);

    model._iobufs.clear(); // an unclosed table runs to the end and keeps its rows
    read("+-+\n| a | b | c | d | e |\n+-+\n| s | A1/0 | X_IN | x | |\n| t | A2/0 | X_IN | x | |");
    EXPECT_EQ(model._iobufs.size(), 1u) << "the last line without line end is not read";
    read("+-+\n| a | b | c | d | e |\n+-+\n| u | A1/0 | X_IN | x | |\n| v | A2/0 | X_IN | x | |\n");
    EXPECT_EQ(model._iobufs.size(), 3u);

    ts::ProbeModel idle; // nothing happens without the pending table
    idle.openPad(row + "\n");
    char line[] = "| s | A1/0 | X_IN | x | |";
    idle.loadPinInfo(line);
    idle.loadPinInfo(nullptr);
    EXPECT_TRUE(idle._iobufs.empty() && idle.doneReadingPadFile());
}

TEST_F(PinTable, ListingOnStandardOutput)
{
    EXPECT_EQ(read("+-+\n| a | b | c | d | e |\n+-+\n| rst_n | C3/2 | LVCMOS25_IN | x | PULL:UP |\n+-+\n"),
              "Comp: rst_n\n Site: C3\n Type: IN\n IO_TYPE=LVCMOS25 \n PULL=UP \n-----------------------\n");
    IB_IOBUF* io = ts::makeIobuf("d", "", "OUT", "IO_TYPE:LVDS");
    io->model = ibs_new_model_string("lvd250aaaaaaaaaaaaou");
    EXPECT_EQ(ts::captureStdout([&] { io->print(); }),
              "Comp: d\n Site: \n Type: OUT\n IO_TYPE=LVDS \n Model: lvd250aaaaaaaaaaaaou\n-----------------------\n");
}

TEST_F(PinTable, TrueDifferentialNoteOnKvtnOnceARun)
{
    S const note = "\nNote: The IBIS models for True Differential have a known issue in the IBIS data. Please "
                   "use TN HSPICE models instead to run simulation.\n";
    // The port type selects the list; the last IO_TYPE attribute decides.
    struct { char const* family; S rows; bool note; } const cases[] = {
        {"KVTN", "| o | A1/0 | LVPECL33_OUT | x | |\n| i | A2/0 | LVPECL33_IN | x | |\n| j | A3/0 | LVDS_IN | x | |\n",
         true},
        {"KVTN", "| o | A1/0 | LVPECL33_OUT | x | |\n| b | A2/0 | LVDS_BIDI | x | |\n", false},
        {"KVA3", "| b | A2/0 | BLVDS25_BIDI | x | |\n", false},
        {"KVTN", "| b | A2/0 | BLVDS25_BIDI | x | |\n", true},
        {"KVTN", "| o | A1/0 | LVCMOS33_OUT | x | IO_TYPE:RSDS |\n", true}};
    for (auto const& c : cases) {
        model._iobufs.clear();
        model._pinTableColumns = 0;
        S out = read("+-+\n| a | b | c | d | e |\n+-+\n" + c.rows + "+-+\n", c.family);
        S::size_type at = out.find("Note:");
        EXPECT_EQ(at != S::npos, c.note) << c.rows;
        EXPECT_EQ(at, out.rfind("Note:")) << c.rows;
        if (c.note && at != S::npos) {
            EXPECT_EQ(out.substr(at - 1), note) << "last, with its own line ends";
        }
    }
}

TEST(BankTable, BankToVoltageByTheRowPattern)
{
    // With or without an opening bar; a "V" or a TAB ends the voltage; "-" is a voltage;
    // unmatched rows are passed over; a later row wins; an unclosed table ends with the report.
    std::pair<S, Map> const cases[] = {
        {"| 0 | 3.3V |\n| 1 | 2.5 |\n| 2 | 1.8V  |\n+------+-------+\n", {{"0", "3.3"}, {"1", "2.5"}, {"2", "1.8"}}},
        {"  3   1.2V\n| 4 | 3.3\t|\n|\t5\t|\t1.5V\t|\n+--\n", {{"3", "1.2"}, {"4", "3.3"}}},
        {"| 5 | - |\n| 6 | 1V2 |\n| 7 | NA |\n+--\n", {{"5", "-"}, {"6", "1"}, {"7", "NA"}}},
        {"| lonely |\n| 0 | 3.3V |\n| 0 | 2.5V |\n+--\n| 9 | 1.5V |\n", {{"0", "2.5"}}},
        {"+--\n| 0 | 3.3V |\n", {}},
        {"| 0 | 3.3V |\n| 1 | 2.5V |\n", {{"0", "3.3"}, {"1", "2.5"}}}};
    for (auto const& c : cases) {
        ts::ProbeModel model;
        model.openPad("+------+-------+\n| Bank | Vccio |\n+------+-------+\n" + c.first);
        char heading[] = "Vccio by Bank:";
        model.loadBankInfo(heading);
        EXPECT_EQ(model._bankVccio, c.second) << c.first;
    }
    ts::ProbeModel model; // other lines are no heading
    model.openPad("+--\n| B | V |\n+--\n| 0 | 3.3V |\n+--\n");
    char other[] = "PINOUT BY PIN NUMBER:";
    model.loadBankInfo(other);
    model.loadBankInfo(nullptr);
    EXPECT_TRUE(model._bankVccio.empty());
}

TEST(DiffPinTable, PinInfoToPinNumber)
{
    S const header = "| Pin/Bank | Buffer Type | Site | Pin Info | Dual Function |";
    // The columns are found anywhere, in any case; the pin/bank cell is taken as it stands, so a
    // pin without bank keeps its blank; empty cells add nothing; a later row wins; without both
    // columns reading goes on behind the header; an unclosed table stops at the end.
    struct { S header, rows; Map pins; char const* next; } const cases[] = {
        {header,
         "| B12/1 | LVDS_IN | PB12A | clk_in | |\n| A12/1 | LVDS_IN | PB12B | clk_in- | |\n"
         "| C3 | LVCMOS33_OUT | PC3 | Led | |\n+---+\nNEXT\n",
         {{"clk_in", "B12"}, {"clk_in-", "A12"}, {"Led", "C3 "}}, "NEXT"},
        {"| Site | pin info | Bank | PIN/bank |", "| PB12B | clk- | 1 | A12/1 |\n+---+\nNEXT\n", {{"clk-", "A12"}},
         "NEXT"},
        {header, "| B1/1 | X | Y |  | |\n| | X | Y | orphan | |\n| B2/1 | X | Y | dup | |\n"
                 "| B3/1 | X | Y | dup | |\n+---+\n", {{"dup", "B3"}}, ""},
        {"| Pin/Bank | Buffer Type | Site |", "| B12/1 | LVDS_IN | PB12A |\n+---+\n", {}, "+---+"},
        {header, "| B1/1 | X | Y | a | |\n| B2/1 | X | Y | b | |", {{"a", "B1"}, {"b", "B2"}}, ""}};
    for (auto const& c : cases) {
        ts::ProbeModel model;
        model.openPad("+---+\n" + c.header + "\n+---+\n" + c.rows);
        char heading[] = "Pinout by Pin Number:";
        model.loadDiffPinInfo(heading);
        char next[255] = "";
        model._padStream.getline(next, 255);
        EXPECT_EQ(model._diffPinMap, c.pins) << c.rows;
        EXPECT_STREQ(next, c.next) << c.rows;
    }
}

} // namespace
