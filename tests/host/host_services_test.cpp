// The reference host's services that whole runs do not pin down: the tokenizer, paths and
// files with either separator.

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "host/ut_filemanager.h"
#include "host/ut_path.h"
#include "host/ut_string.h"
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

} // namespace
