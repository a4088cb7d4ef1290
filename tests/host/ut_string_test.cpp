#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "host/ut_string.h"

namespace {

// All tokens of a line, as a reader takes them one after the other.
std::vector<std::string> tokens(char const* line, char const* delims, int count)
{
    char src[256];
    char dst[256];
    std::strcpy(src, line);
    std::vector<std::string> out;
    for (int i = 0; i < count; ++i) {
        ut_strgettoken(src, dst, delims, 0);
        out.push_back(dst);
    }
    return out;
}

TEST(UtStrGetToken, BarTableRowYieldsEmptyTokenAheadOfFirstColumn)
{
    EXPECT_EQ(tokens("| clk | B12/1 |", "|", 4),
              (std::vector<std::string>{"", "clk ", "B12/1 ", ""}));
}

TEST(UtStrGetToken, RunsOfBlanksCountAsOneSeparator)
{
    EXPECT_EQ(tokens("  PART   TYPE:  KVA3-40E  ", " ", 4),
              (std::vector<std::string>{"PART", "TYPE:", "KVA3-40E", ""}));
}

TEST(UtStrGetToken, RemovesTokenAndOneDelimiterFromSource)
{
    char src[64] = "0x10)  rest of line";
    char dst[64];
    EXPECT_EQ(ut_strgettoken(src, dst, " ", 0), 5);
    EXPECT_STREQ(dst, "0x10)");
    EXPECT_STREQ(src, " rest of line");
}

TEST(UtStrGetToken, WithoutDelimiterTheRestIsTheTokenAndSourceEmpties)
{
    char src[64] = "A1";
    char dst[64] = "junk";
    ut_strgettoken(src, dst, "/", 0);
    EXPECT_STREQ(dst, "A1");
    EXPECT_STREQ(src, "");
    ut_strgettoken(src, dst, "/", 0);
    EXPECT_STREQ(dst, "");
}

TEST(UtStrGetToken, AnyCharacterOfTheSetDelimits)
{
    EXPECT_EQ(tokens("STANDARD(IO TYPES)", " (", 2),
              (std::vector<std::string>{"STANDARD", "IO"}));
}

TEST(UtStrTrim, RemovesWhiteSpaceFromBothEnds)
{
    char buf[64] = " \t LVDS25 \r\n";
    EXPECT_STREQ(ut_strtrim(buf), "LVDS25");
    char blank[8] = "   ";
    EXPECT_STREQ(ut_strtrim(blank), "");
}

TEST(UtStrCase, UpperLowerAndCaselessCompare)
{
    char buf[32] = "Pin/Bank x9";
    EXPECT_STREQ(ut_strupr(buf), "PIN/BANK X9");
    EXPECT_STREQ(ut_strlwr(buf), "pin/bank x9");
    EXPECT_EQ(ut_stricmp("DontCare", "DONTCARE"), 0);
    EXPECT_NE(ut_stricmp("DONTCARE", "DONTCAR"), 0);
    EXPECT_EQ(ut_strincmp("I3C_x", "i3c", 3), 0);
    EXPECT_NE(ut_strincmp("I2C", "i3c", 3), 0);
}

TEST(UtStrDup, CopyIsIndependent)
{
    char original[] = "site";
    char* copy = ut_strdup(original);
    original[0] = 'S';
    EXPECT_STREQ(copy, "site");
    delete[] copy;
}

} // namespace
