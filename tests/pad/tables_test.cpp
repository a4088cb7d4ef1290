// Pad report tables whose quirks whole runs do not reach: the true differential note of the
// pin table and the bank table's row pattern.

#include <gtest/gtest.h>


#include "driver/basibsgen.h"
#include "support/generator_probe.h"

namespace {

using S = std::string;
using Map = std::map<S, S>;

TEST(PinTable, TrueDifferentialNoteOnKvtnOnceARun)
{
    ts::resetGeneratorStatics();
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
        ts::ProbeModel model;
        model._family = c.family;
        model.openPad("+-+\n| a | b | c | d | e |\n+-+\n" + c.rows + "+-+\n");
        char heading[] = "PINOUT BY PORT NAME:";
        S out = ts::captureStdout([&] { model.setPinInfo(heading), model.loadPinInfo(heading); });
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

} // namespace
