// The pin number table: pin info to pin number, for telling differential
// partners.

#include <gtest/gtest.h>

#include "driver/basibsgen.h"
#include "support/generator_probe.h"

namespace {

using Pins = std::map<std::string, std::string>;

struct Read {
    Pins pins;
    std::string next; // the line the report reader sees next
};

Read read(std::string const& header, std::string const& rows)
{
    ts::ProbeModel model;
    model.openPad("+---+\n" + header + "\n+---+\n" + rows + "NEXT LINE\n");
    char heading[] = "Pinout by Pin Number:";
    model.loadDiffPinInfo(heading);
    char next[255] = "";
    model._padStream.getline(next, 255);
    return {model._diffPinMap, next};
}

std::string const header = "| Pin/Bank | Buffer Type | Site | Pin Info | Dual Function |";

TEST(DiffPinTable, PinInfoToPinNumber)
{
    Read r = read(header, "| B12/1 | LVDS_IN | PB12A | clk_in | |\n"
                          "| A12/1 | LVDS_IN | PB12B | clk_in- | |\n"
                          "| C3 | LVCMOS33_OUT | PC3 | Led | |\n"
                          "+---+\n");
    // The pin/bank cell is taken as it stands, so a pin without its bank
    // keeps the blank in front of the cell's closing bar.
    EXPECT_EQ(r.pins, (Pins{{"clk_in", "B12"}, {"clk_in-", "A12"}, {"Led", "C3 "}}));
    EXPECT_EQ(r.next, "NEXT LINE") << "the closing rule is consumed";
}

TEST(DiffPinTable, ColumnsAreFoundWhereverTheyStandInAnyCase)
{
    Read r = read("| Site | pin info | Bank | PIN/bank |",
                  "| PB12B | clk- | 1 | A12/1 |\n+---+\n");
    EXPECT_EQ(r.pins, (Pins{{"clk-", "A12"}}));
}

TEST(DiffPinTable, EmptyCellsAddNothingAndLaterRowsWin)
{
    Read r = read(header, "| B1/1 | X | Y |  | |\n"
                          "| | X | Y | orphan | |\n"
                          "| B2/1 | X | Y | dup | |\n"
                          "| B3/1 | X | Y | dup | |\n+---+\n");
    EXPECT_EQ(r.pins, (Pins{{"dup", "B3"}}));
}

TEST(DiffPinTable, TableWithoutBothColumnsIsSkippedBehindItsHeader)
{
    Read r = read("| Pin/Bank | Buffer Type | Site |", "| B12/1 | LVDS_IN | PB12A |\n+---+\n");
    EXPECT_TRUE(r.pins.empty());
    EXPECT_EQ(r.next, "+---+") << "reading goes on behind the header";
}

TEST(DiffPinTable, StopsAtTheEndOfTheReport)
{
    ts::ProbeModel model;
    model.openPad("+---+\n" + header + "\n+---+\n| B1/1 | X | Y | a | |\n| B2/1 | X | Y | b | |");
    char heading[] = "PINOUT BY PIN NUMBER";
    model.loadDiffPinInfo(heading);
    EXPECT_EQ(model._diffPinMap, (Pins{{"a", "B1"}, {"b", "B2"}}));
}

} // namespace
