// Regular expressions, messages, time stamp and version of the reference host.

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <string>

#include "host/msgmanager.h"
#include "host/nc_design.h"
#include "host/ut_regexp.h"
#include "host/ut_timestamp.h"
#include "host/ut_version.h"

namespace {

TEST(UtRegexp, CaptureGroupsOfAMatch)
{
    UT_REGEXP re;
    ASSERT_TRUE(re.compile(UT_STROBJ("^ *([A-Z]+)-([0-9]+)")));
    UT_STROBJ text("  KVA-40 rest");
    UT_STRKEYS keys = text.match_reg_exp(re, 0);
    ASSERT_NE(keys.matched, 0);
    EXPECT_STREQ(text.get_key(keys, 1).getstring(1), "KVA");
    EXPECT_STREQ(text.get_key(keys, 2).getstring(1), "40");

    EXPECT_EQ(UT_STROBJ("kva-40").match_reg_exp(re, 0).matched, 0);
}

TEST(UtRegexp, FailedCompileLeavesObjectInvalid)
{
    UT_REGEXP re;
    EXPECT_FALSE(re.compile(UT_STROBJ("([unclosed")));
    EXPECT_FALSE(re.isValid());
    EXPECT_EQ(UT_STROBJ("anything").match_reg_exp(re, 0).matched, 0);
}

TEST(MsgManager, PostsOneLineOnStandardErrorWithTabSeparatedArguments)
{
    testing::internal::CaptureStderr();
    {
        msgManager manager("padmodel");
        manager.postMsg("1010", "lvc330a080aaaaaaaaio", "data[3]");
        manager.postMsg("1003");
        manager.postMsg("1011", "a", "b", "c");
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "padmodel-1010\tlvc330a080aaaaaaaaio\tdata[3]\n"
              "padmodel-1003\n"
              "padmodel-1011\ta\tb\tc\n");
}

class EnvVar {
public:
    EnvVar(char const* name, char const* value) : _name(name)
    {
        if (char const* old = std::getenv(name)) {
            _had = true;
            _old = old;
        }
        if (value)
            setenv(name, value, 1);
        else
            unsetenv(name);
    }
    ~EnvVar()
    {
        if (_had)
            setenv(_name, _old.c_str(), 1);
        else
            unsetenv(_name);
    }

private:
    char const* _name;
    bool _had = false;
    std::string _old;
};

TEST(UtTimestamp, SourceDateEpochGivesThatInstantInUtc)
{
    EnvVar epoch("SOURCE_DATE_EPOCH", "1700000000");
    UT_TIMESTAMP stamp;
    EXPECT_STREQ(stamp.get_timestamp_string(), "Tue Nov 14 22:13:20 2023\n");
}

TEST(UtTimestamp, SingleDigitDayIsBlankPaddedAsCtimeDoes)
{
    EnvVar epoch("SOURCE_DATE_EPOCH", "0");
    UT_TIMESTAMP stamp;
    EXPECT_STREQ(stamp.get_timestamp_string(), "Thu Jan  1 00:00:00 1970\n");
}

TEST(UtTimestamp, WithoutEpochTheTextHasCtimeShape)
{
    EnvVar epoch("SOURCE_DATE_EPOCH", "not-a-number");
    UT_TIMESTAMP stamp;
    std::string text = stamp.get_timestamp_string();
    ASSERT_EQ(text.size(), 25u) << text;
    EXPECT_EQ(text.back(), '\n');
    EXPECT_EQ(text[3], ' ');
    EXPECT_EQ(text[19], ' ');
}

TEST(UtVersion, ProjectVersionOrTheOverridingText)
{
    std::string version;
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
    {
        EnvVar text("PAD2IBIS_VERSION_TEXT", "");
        EXPECT_EQ(ut_get_version_information(version), 0);
    }
}

TEST(NcDesign, DeviceAndPackageNames)
{
    NC_DESIGN design("KVA3-40E-6BG256C", "CABGA256");
    EXPECT_STREQ(design.getDevice()->getDeviceName(), "KVA3-40E-6BG256C");
    EXPECT_STREQ(design.getDevice()->getPackage()->getName().getstring(0), "CABGA256");
}

} // namespace
