#include <gtest/gtest.h>

#include <vector>

#include "app/options.h"

namespace {

struct Parsed {
    bool ok;
    Options options;
    std::string error;
};

Parsed parse(std::vector<char const*> args)
{
    Parsed p;
    p.ok = parseOptions(static_cast<int>(args.size()), args.data(), p.options, p.error);
    return p;
}

TEST(Options, PadFlowOptionsInAnyOrderBeforeThePaths)
{
    Parsed p = parse({"--btn", "3", "--msgflow", "--family", "HZU3", "--ncd", "--brinmark",
                      "--dphy", "d.pad", "m.ibs"});
    ASSERT_TRUE(p.ok) << p.error;
    EXPECT_EQ(p.options.btn, 3);
    EXPECT_TRUE(p.options.msgflow && p.options.ncd && p.options.brinmark && p.options.dphy);
    EXPECT_TRUE(p.options.familyGiven);
    EXPECT_EQ(p.options.family, "HZU3");
    EXPECT_EQ(p.options.firstPath, "d.pad");
    EXPECT_EQ(p.options.secondPath, "m.ibs");
    EXPECT_FALSE(p.options.ami);
}

TEST(Options, Defaults)
{
    Parsed p = parse({"d.pad", "m.ibs"});
    ASSERT_TRUE(p.ok);
    EXPECT_EQ(p.options.btn, 0);
    EXPECT_FALSE(p.options.familyGiven);
    EXPECT_FALSE(p.options.vargon || p.options.msgflow || p.options.dumpAltModels);
}

TEST(Options, UsageErrors)
{
    EXPECT_EQ(parse({"--bogus", "d.pad", "m.ibs"}).error, "unknown option --bogus");
    EXPECT_EQ(parse({"d.pad"}).error, "missing path");
    EXPECT_EQ(parse({}).error, "missing path");
    EXPECT_EQ(parse({"d.pad", "m.ibs", "x"}).error, "too many paths");
    EXPECT_EQ(parse({"d.pad", "m.ibs", "--msgflow"}).error, "too many paths")
        << "options stand before the paths";
    EXPECT_EQ(parse({"--btn", "2x", "d.pad", "m.ibs"}).error, "--btn needs a whole number, not '2x'");
    EXPECT_FALSE(parse({"--btn", "-1", "d.pad", "m.ibs"}).ok);
    EXPECT_FALSE(parse({"--btn", "", "d.pad", "m.ibs"}).ok);
    EXPECT_FALSE(parse({"--btn", "99999999999", "d.pad", "m.ibs"}).ok);
    EXPECT_EQ(parse({"d.pad", "m.ibs", "--family"}).error, "too many paths");
    EXPECT_EQ(parse({"--family"}).error, "--family needs a value");
    EXPECT_EQ(parse({"--dump-alt-models", "d.pad", "m.ibs"}).error,
              "--dump-alt-models goes with --vargon");
}

TEST(Options, AmiFlow)
{
    Parsed p = parse({"--ami", "--channels", "ch.txt", "--brinmark", "--msgflow", "--family",
                      "KVA4", "top.udb", "lib/serdes.ibs"});
    ASSERT_TRUE(p.ok) << p.error;
    EXPECT_TRUE(p.options.ami);
    EXPECT_EQ(p.options.channelsFile, "ch.txt");
    EXPECT_EQ(p.options.firstPath, "top.udb");

    EXPECT_EQ(parse({"--ami", "d", "m.ibs"}).error, "--ami needs --channels");
    EXPECT_FALSE(parse({"--ami", "--channels", "c", "--btn", "1", "d", "m.ibs"}).ok);
    EXPECT_FALSE(parse({"--ami", "--channels", "c", "--vargon", "d", "m.ibs"}).ok);
    EXPECT_EQ(parse({"--channels", "c", "d.pad", "m.ibs"}).error, "--channels goes with --ami");
}

TEST(Options, HelpAndVersionNeedNoPaths)
{
    EXPECT_TRUE(parse({"--help"}).options.help);
    EXPECT_TRUE(parse({"--version"}).options.version);
}

TEST(Options, DoubleDashEndsTheOptions)
{
    Parsed p = parse({"--", "--odd.pad", "m.ibs"});
    ASSERT_TRUE(p.ok);
    EXPECT_EQ(p.options.firstPath, "--odd.pad");
}

} // namespace
