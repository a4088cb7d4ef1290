// Family rules kept beside the pad report readers, and the naming map dump.

#include <gtest/gtest.h>

#include "driver/basibsgen.h"
#include "host/msgmanager.h"
#include "support/generator_probe.h"

namespace {

std::string strip(char const* family, std::string value)
{
    ts::ProbeModel model;
    model._family = family;
    model.strip_off_leading_underscores(value);
    return value;
}

TEST(StripOffLeadingUnderscores, PullValueCleaningPerFamily)
{
    EXPECT_EQ(strip("KVA3", ""), "");
    EXPECT_EQ(strip("KVA3", "KEEPER"), "BUSHOLD");
    EXPECT_EQ(strip("KVA4", "KEEPER"), "KEEPER");
    EXPECT_EQ(strip("KVA3", "_PCICLAMP"), "PCICLAMP");
    EXPECT_EQ(strip("KVA3", "__CLAMP"), "_CLAMP") << "one underscore goes, despite the name";
    EXPECT_EQ(strip("KVA3", "NONE_SCHMITT"), "SCHMITT");
    EXPECT_EQ(strip("KVA3", "NONE"), "NONE");
    EXPECT_EQ(strip("KVA3", "_NONE_X"), "NONE_X") << "no NONE_ cut behind an underscore";
}

TEST(StripOffLeadingUnderscores, FailsafeOnlyOnHzu2AndHzu3)
{
    EXPECT_EQ(strip("HZU2", "FAILSAFE_NONE_UP"), "UP");
    EXPECT_EQ(strip("HZU3", "FAILSAFE_DOWN"), "DOWN");
    EXPECT_EQ(strip("HZU", "FAILSAFE_DOWN"), "FAILSAFE_DOWN");
    EXPECT_EQ(strip("KVA3", "FAILSAFE_NONE_UP"), "FAILSAFE_NONE_UP");
}

TEST(StripOffLeadingUnderscores, ClampOrNothingOnKva4yKva5yAndKj)
{
    for (char const* family : {"KVA4Y", "KVA5Y", "KJ"}) {
        EXPECT_EQ(strip(family, "PCICLAMP_X"), "CLAMP") << family;
        EXPECT_EQ(strip(family, "UP"), "NONE") << family;
        EXPECT_EQ(strip(family, "_CLAMP"), "CLAMP") << family;
        EXPECT_EQ(strip(family, "UP_CLAMP"), "CLAMP") << family;
    }
    EXPECT_EQ(strip("KVA4", "UP"), "UP");
}

TEST(KeepOutAsOu, WholeFamilyComparison)
{
    ts::ProbeModel model;
    for (char const* family : {"KVAN", "KVZR", "HZU"}) {
        model._family = family;
        EXPECT_FALSE(model.keepOutAsOu()) << family;
    }
    for (char const* family : {"HZU2", "KVZR2", "KVA3", "KJ", ""}) {
        model._family = family;
        EXPECT_TRUE(model.keepOutAsOu()) << family;
    }
}

TEST(PrintIobufMap, WalksTheNamingMapsInBothModes)
{
    ts::resetGeneratorStatics();
    ts::ProbeModel model;
    model._devIoMaps["SLEW"] = {{"FAST", "f"}, {"SLOW", "s"}};
    model._devIoMaps["DRIVE"] = {{"8mA", "080"}};
    EXPECT_EQ(ts::captureStdout([&] { model.printIobufMap(); }),
              "DRIVE \n8mA 080\nSLEW \nFAST f\nSLOW s\n");

    UT_MSGMAN::m_msgFlow = 1;
    testing::internal::CaptureStderr();
    EXPECT_EQ(ts::captureStdout([&] { model.printIobufMap(); }), "");
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "padmodel-1022\tDRIVE\npadmodel-1023\t8mA\t080\n"
              "padmodel-1022\tSLEW\npadmodel-1023\tFAST\tf\npadmodel-1023\tSLOW\ts\n");
    ts::resetGeneratorStatics();
}

} // namespace
