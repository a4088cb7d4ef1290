// The reference host's services: tokenizer and string helpers, paths and files, regular
// expressions, message posting, time stamp and version text.

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "host/msgmanager.h"
#include "host/ut_filemanager.h"
#include "host/ut_path.h"
#include "host/ut_regexp.h"
#include "host/ut_string.h"
#include "host/ut_timestamp.h"
#include "host/ut_version.h"
#include "support/test_support.h"

namespace {

using S = std::string;
using Tokens = std::vector<S>;

TEST(UtString, StrGetTokenTakesOneTokenAndOneDelimiter)
{
    // A "|" row yields an empty token ahead of its first column; leading blanks are skipped, so
    // runs of blanks count as one separator; any character of the set delimits; without a
    // delimiter the rest is the token; from an empty line comes an empty token.
    struct { char const* line; char const* delims; Tokens tokens; } const cases[] = {
        {"| clk | B12/1 |", "|", {"", "clk ", "B12/1 ", ""}},
        {"  PART   TYPE:  KVA3-40E  ", " ", {"PART", "TYPE:", "KVA3-40E", ""}},
        {"STANDARD(IO TYPES)", " (", {"STANDARD", "IO", "TYPES)", ""}},
        {"A1", "/", {"A1", ""}}};
    for (auto const& c : cases) {
        char src[256], dst[256] = "junk";
        std::strcpy(src, c.line);
        Tokens got;
        for (size_t i = 0; i < c.tokens.size(); ++i) {
            ut_strgettoken(src, dst, c.delims, 0);
            got.push_back(dst);
        }
        EXPECT_EQ(got, c.tokens) << c.line;
    }
    char src[64] = "0x10)  rest of line", dst[64];
    EXPECT_EQ(ut_strgettoken(src, dst, " ", 0), 5);
    EXPECT_STREQ(dst, "0x10)");
    EXPECT_STREQ(src, " rest of line") << "the token and one delimiter go";
}

TEST(UtString, TrimCaseCompareAndDup)
{
    char buf[64] = " \t LVDS25 \r\n", blank[8] = "   ", text[32] = "Pin/Bank x9";
    EXPECT_STREQ(ut_strtrim(buf), "LVDS25");
    EXPECT_STREQ(ut_strtrim(blank), "");
    EXPECT_STREQ(ut_strupr(text), "PIN/BANK X9");
    EXPECT_STREQ(ut_strlwr(text), "pin/bank x9");
    EXPECT_TRUE(ut_stricmp("DontCare", "DONTCARE") == 0 && ut_stricmp("DONTCARE", "DONTCAR") != 0);
    EXPECT_TRUE(ut_strincmp("I3C_x", "i3c", 3) == 0 && ut_strincmp("I2C", "i3c", 3) != 0);
    char original[] = "site";
    char* copy = ut_strdup(original);
    original[0] = 'S';
    EXPECT_STREQ(copy, "site");
    delete[] copy;
}

TEST(UtPath, HeadBaseAndExtensionWithEitherSeparator)
{
    std::vector<S> const cases[] = {{"/lib/cae/kva3.master.ibs", "/lib/cae/", "kva3.master", ".ibs"},
                                    {"demo.pad", "", "demo", ".pad"}, {"dir.v2/noext", "dir.v2/", "noext", ""},
                                    {"C:\\lib\\x.ibs", "C:\\lib\\", "x", ".ibs"}};
    for (auto const& c : cases) {
        char head[256], base[256], ext[256];
        ut_pathgethead(c[0].c_str(), head);
        ut_pathgetbase(c[0].c_str(), base);
        ut_pathgetext(c[0].c_str(), ext);
        EXPECT_EQ((std::vector<S>{head, base, ext}), (std::vector<S>{c[1], c[2], c[3]})) << c[0];
    }
}

TEST(UtFileManager, FileServicesTakeBackslashAsSeparator)
{
    char path[] = "a\\b/c\\d";
    ut_file.makeunixpath(path);
    EXPECT_STREQ(path, "a/b/c/d");
    EXPECT_TRUE(ut_file.isabsolute("/x"));
    EXPECT_FALSE(ut_file.isabsolute("x/y") || ut_file.isabsolute(""));

    ts::TempDir dir;
    S const sub = dir.path() + "\\sub", target = sub + "\\copy.ibs", bytes("line 1\n\0binary\n", 15);
    EXPECT_FALSE(ut_file.exist(sub.c_str()));
    EXPECT_TRUE(ut_file.mkdir(sub.c_str()));
    EXPECT_TRUE(ut_file.exist(sub.c_str()) && ts::fileExists(dir.file("sub")));
    EXPECT_FALSE(ut_file.mkdir(sub.c_str())) << "an existing directory";
    EXPECT_FALSE(ut_file.mkdir(dir.file("no/such/parent").c_str())) << "one level only";
    ts::writeFile(dir.file("src.ibs"), bytes);
    EXPECT_TRUE(ut_file.copy(dir.file("src.ibs").c_str(), target.c_str()));
    EXPECT_EQ(ts::readFile(dir.file("sub/copy.ibs")), bytes) << "byte for byte";
    EXPECT_FALSE(ut_file.copy(dir.file("absent").c_str(), target.c_str()));

    ts::ScopedCwd cwd(dir.path());
    char buf[4096];
    ut_file.getcwd(buf, 4096);
    EXPECT_TRUE(ut_file.exist((S(buf) + "/sub").c_str()));
}

TEST(UtRegexp, CaptureGroupsAndFailedCompile)
{
    UT_REGEXP re;
    ASSERT_TRUE(re.compile(UT_STROBJ("^ *([A-Z]+)-([0-9]+)")));
    UT_STROBJ text("  KVA-40 rest");
    UT_STRKEYS keys = text.match_reg_exp(re, 0);
    ASSERT_NE(keys.matched, 0);
    EXPECT_STREQ(text.get_key(keys, 1).getstring(1), "KVA");
    EXPECT_STREQ(text.get_key(keys, 2).getstring(1), "40");
    EXPECT_EQ(UT_STROBJ("kva-40").match_reg_exp(re, 0).matched, 0);

    UT_REGEXP bad;
    EXPECT_FALSE(bad.compile(UT_STROBJ("([unclosed")));
    EXPECT_FALSE(bad.isValid());
    EXPECT_EQ(UT_STROBJ("anything").match_reg_exp(bad, 0).matched, 0);
}

TEST(MsgManager, OneLineOnStandardErrorWithTabSeparatedArguments)
{
    testing::internal::CaptureStderr();
    {
        msgManager manager("padmodel");
        manager.postMsg("1010", "lvc330a080aaaaaaaaio", "data[3]");
        manager.postMsg("1003");
        manager.postMsg("1011", "a", "b", "c");
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "padmodel-1010\tlvc330a080aaaaaaaaio\tdata[3]\npadmodel-1003\npadmodel-1011\ta\tb\tc\n");
}

// Sets or (with null) unsets a variable of the environment, and puts it back.
struct EnvVar {
    EnvVar(char const* name, char const* value) : name(name), had(std::getenv(name) != nullptr)
    {
        old = had ? std::getenv(name) : "";
        value ? setenv(name, value, 1) : unsetenv(name);
    }
    ~EnvVar() { had ? setenv(name, old.c_str(), 1) : unsetenv(name); }
    char const* name;
    bool had;
    S old;
};

TEST(UtTimestamp, SourceDateEpochInUtcElseNowInCtimeForm)
{
    for (auto const& c : std::vector<std::pair<char const*, S>>{{"1700000000", "Tue Nov 14 22:13:20 2023\n"},
                                                                {"0", "Thu Jan  1 00:00:00 1970\n"}}) {
        EnvVar epoch("SOURCE_DATE_EPOCH", c.first);
        EXPECT_EQ(UT_TIMESTAMP().get_timestamp_string(), c.second);
    }
    EnvVar epoch("SOURCE_DATE_EPOCH", "not-a-number");
    S text = UT_TIMESTAMP().get_timestamp_string();
    EXPECT_TRUE(text.size() == 25 && text[3] == ' ' && text[19] == ' ' && text.back() == '\n') << text;
}

TEST(UtVersion, ProjectVersionOrTheOverridingText)
{
    S version;
    {
        EnvVar text("PAD2IBIS_VERSION_TEXT", nullptr);
        EXPECT_EQ(ut_get_version_information(version), 1);
        EXPECT_FALSE(version.empty());
    }
    {
        EnvVar text("PAD2IBIS_VERSION_TEXT", "9.9 Patch 1");
        EXPECT_EQ(ut_get_version_information(version), 1);
        EXPECT_EQ(version, "9.9 Patch 1");
    }
    EnvVar text("PAD2IBIS_VERSION_TEXT", "");
    EXPECT_EQ(ut_get_version_information(version), 0) << "an empty text says there is none";
}

} // namespace
