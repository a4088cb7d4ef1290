#include <gtest/gtest.h>

#include <string>

#include "host/ut_filemanager.h"
#include "host/ut_path.h"
#include "support/test_support.h"

namespace {

struct PathParts {
    std::string head, base, ext;
};

PathParts parts(char const* path)
{
    char head[256], base[256], ext[256];
    ut_pathgethead(path, head);
    ut_pathgetbase(path, base);
    ut_pathgetext(path, ext);
    return {head, base, ext};
}

TEST(UtPath, SplitsDirectoryBaseAndExtension)
{
    PathParts p = parts("/lib/cae/kva3.master.ibs");
    EXPECT_EQ(p.head, "/lib/cae/");
    EXPECT_EQ(p.base, "kva3.master");
    EXPECT_EQ(p.ext, ".ibs");

    p = parts("demo.pad");
    EXPECT_EQ(p.head, "");
    EXPECT_EQ(p.base, "demo");
    EXPECT_EQ(p.ext, ".pad");

    p = parts("dir.v2/noext");
    EXPECT_EQ(p.head, "dir.v2/");
    EXPECT_EQ(p.base, "noext");
    EXPECT_EQ(p.ext, "");
}

TEST(UtPath, BackslashSeparatesToo)
{
    PathParts p = parts("C:\\lib\\x.ibs");
    EXPECT_EQ(p.head, "C:\\lib\\");
    EXPECT_EQ(p.base, "x");
}

TEST(UtFileManager, MakeUnixPathAndIsAbsolute)
{
    char path[] = "a\\b/c\\d";
    ut_file.makeunixpath(path);
    EXPECT_STREQ(path, "a/b/c/d");
    EXPECT_TRUE(ut_file.isabsolute("/x"));
    EXPECT_FALSE(ut_file.isabsolute("x/y"));
    EXPECT_FALSE(ut_file.isabsolute(""));
}

TEST(UtFileManager, FileServicesTakeBackslashAsSeparator)
{
    ts::TempDir dir;
    std::string mixed = dir.path() + "\\sub";
    EXPECT_FALSE(ut_file.exist(mixed.c_str()));
    EXPECT_TRUE(ut_file.mkdir(mixed.c_str()));
    EXPECT_TRUE(ts::fileExists(dir.file("sub")));
    EXPECT_FALSE(ut_file.mkdir(mixed.c_str())) << "mkdir of an existing directory fails";

    ts::writeFile(dir.file("src.ibs"), std::string("line 1\n\0binary\n", 15));
    std::string target = dir.path() + "\\sub\\copy.ibs";
    EXPECT_TRUE(ut_file.copy(dir.file("src.ibs").c_str(), target.c_str()));
    EXPECT_TRUE(ut_file.exist(target.c_str()));
    EXPECT_EQ(ts::readFile(dir.file("sub/copy.ibs")), std::string("line 1\n\0binary\n", 15));

    EXPECT_FALSE(ut_file.copy(dir.file("absent").c_str(), target.c_str()));
    EXPECT_FALSE(ut_file.mkdir(dir.file("no/such/parent").c_str())) << "mkdir makes one level";
}

TEST(UtFileManager, GetCwd)
{
    ts::TempDir dir;
    ts::ScopedCwd cwd(dir.path());
    char buf[4096];
    ut_file.getcwd(buf, 4096);
    EXPECT_TRUE(ut_file.exist(buf));
    EXPECT_TRUE(ut_file.exist((std::string(buf) + "/.").c_str()));
}

} // namespace
