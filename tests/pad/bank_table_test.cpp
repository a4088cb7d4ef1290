// The bank table: bank to supply voltage, by the row pattern.

#include <gtest/gtest.h>

#include "driver/basibsgen.h"
#include "support/generator_probe.h"

namespace {

std::map<std::string, std::string> banks(std::string const& rows)
{
    ts::ProbeModel model;
    model.openPad("+------+-------+\n| Bank | Vccio |\n+------+-------+\n" + rows);
    char heading[] = "Vccio by Bank:";
    model.loadBankInfo(heading);
    return model._bankVccio;
}

using Banks = std::map<std::string, std::string>;

TEST(BankTable, VoltageWithOrWithoutItsUnit)
{
    EXPECT_EQ(banks("| 0 | 3.3V |\n| 1 | 2.5 |\n| 2 | 1.8V  |\n+------+-------+\n"),
              (Banks{{"0", "3.3"}, {"1", "2.5"}, {"2", "1.8"}}));
}

TEST(BankTable, RowsWithoutOpeningBarMatchButTabsOnlyCloseTheVoltage)
{
    EXPECT_EQ(banks("  3   1.2V\n| 4 | 3.3\t|\n|\t5\t|\t1.5V\t|\n+--\n"),
              (Banks{{"3", "1.2"}, {"4", "3.3"}}));
}

TEST(BankTable, AnyTextWithoutBlankBarTabOrVIsAVoltage)
{
    EXPECT_EQ(banks("| 5 | - |\n| 6 | 1V2 |\n| 7 | NA |\n+--\n"),
              (Banks{{"5", "-"}, {"6", "1"}, {"7", "NA"}}));
}

TEST(BankTable, UnmatchedRowsArePassedOverAndLaterRowsReplace)
{
    EXPECT_EQ(banks("| lonely |\n| 0 | 3.3V |\n| 0 | 2.5V |\n+--\n| 9 | 1.5V |\n"),
              (Banks{{"0", "2.5"}}));
}

TEST(BankTable, EmptyTableAndNonHeadingLines)
{
    EXPECT_EQ(banks("+--\n| 0 | 3.3V |\n"), Banks{});
    ts::ProbeModel model;
    model.openPad("+--\n| B | V |\n+--\n| 0 | 3.3V |\n+--\n");
    char other[] = "PINOUT BY PIN NUMBER:";
    model.loadBankInfo(other);
    model.loadBankInfo(nullptr);
    EXPECT_TRUE(model._bankVccio.empty());
}

TEST(BankTable, UnclosedTableEndsAtTheEndOfTheReport)
{
    EXPECT_EQ(banks("| 0 | 3.3V |\n| 1 | 2.5V |\n"), (Banks{{"0", "3.3"}, {"1", "2.5"}}));
}

} // namespace
