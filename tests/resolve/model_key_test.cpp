// The model key: positional writing and reading of its fields, and the
// voltage field taken from the IO type's name.

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "driver/basibsgen.h"
#include "resolve/walk_probe.h"
#include "support/generator_probe.h"

namespace {

using walk::Table;

IB_IOBUF* keyed(char const* key)
{
    IB_IOBUF* iobuf = ts::makeIobuf("sig", "A1", "BIDI", "");
    iobuf->model = ibs_new_model_string(key);
    return iobuf;
}

TEST(ModelKey, SetModeWritesByPositionWhateverTheFieldsWidth)
{
    IB_IOBUF* iobuf = keyed("lvc250axxxaaaaaaaaio");
    iobuf->setMode(IBIS_KEY_DRIVE, "1");
    EXPECT_STREQ(iobuf->model, "lvc250a1xxaaaaaaaaio") << "a short code changes only its first position";
    iobuf->setMode(IBIS_KEY_VOLTAGE, "3300");
    EXPECT_STREQ(iobuf->model, "lvc33001xxaaaaaaaaio") << "a long code runs into the slew position";
    iobuf->setMode(IBIS_KEY_PULL, "");
    EXPECT_STREQ(iobuf->model, "lvc33001xxaaaaaaaaio") << "an empty code writes nothing";
    iobuf->setMode(IBIS_KEY_DIFFCUR, "xyz");
    EXPECT_STREQ(iobuf->model, "lvc33001xxaaaaaaaxyz") << "a long code runs over the next field";
    iobuf->setMode(IBIS_KEY_DIRECTION, "in");
    EXPECT_STREQ(iobuf->model, "lvc33001xxaaaaaaaxin");
    iobuf->setMode(IBIS_KEY_DIRECTION, "iox");
    EXPECT_STREQ(iobuf->model, "lvc33001xxaaaaaaaxiox") << "no bounds test at the end of the key";
}

TEST(ModelKey, GetModeReadsByPosition)
{
    IB_IOBUF* iobuf = keyed("lvc330s080uaaaaaaaod");
    std::string out = "stale";
    iobuf->getMode(IBIS_KEY_DIRECTION, 2, out);
    EXPECT_EQ(out, "od");
    iobuf->getMode(IBIS_KEY_VOLTAGE, 4, out);
    EXPECT_EQ(out, "330s") << "no regard to the field's width";
    iobuf->getMode(IBIS_KEY_PULL, 1, out);
    EXPECT_EQ(out, "u");
    iobuf->getMode(IBIS_KEY_IO_TYPE, 0, out);
    EXPECT_EQ(out, "");
    out = "stale";
    iobuf->getMode(IBIS_KEY_IO_TYPE, -3, out);
    EXPECT_EQ(out, "");
}

class Voltage : public testing::Test {
protected:
    void SetUp() override { model._devIoMaps["IO_TYPE"] = {{"LVCMOS", "lvc"}, {"SSTL18_II", "s2"}}; }

    // The number getVoltage finds, and what it leaves of the name.
    std::pair<int, std::string> voltage(std::string name)
    {
        int number = model.getVoltage(name);
        return {number, name};
    }

    ts::ProbeModel model;
};

TEST_F(Voltage, FirstDigitRunIsTheVoltageAndDigitsLeaveUnlistedNames)
{
    using R = std::pair<int, std::string>;
    EXPECT_EQ(voltage("LVCMOS33"), (R{33, "LVCMOS"}));
    EXPECT_EQ(voltage("LVCMOS12"), (R{12, "LVCMOS"}));
    EXPECT_EQ(voltage("SSTL18_I"), (R{18, "SSTL_I"}));
    EXPECT_EQ(voltage("SSTL18_II"), (R{18, "SSTL18_II"})) << "a type listed whole keeps its digits";
    EXPECT_EQ(voltage("HSTL15D_I2"), (R{15, "HSTLD_I"})) << "all runs leave the name, the first counts";
    EXPECT_EQ(voltage("2V5"), (R{2, "V"}));
    EXPECT_EQ(voltage("LVCMOS"), (R{-1, "LVCMOS"}));
    EXPECT_EQ(voltage("LVDS"), (R{-1, "LVDS"}));
    EXPECT_EQ(voltage(""), (R{-1, ""}));
}

TEST_F(Voltage, WholeDigitRunIsConverted)
{
    using R = std::pair<int, std::string>;
    EXPECT_EQ(voltage("LVCMOS123456789"), (R{123456789, "LVCMOS"}));
    EXPECT_EQ(voltage("LVCMOS1000000000"), (R{1000000000, "LVCMOS"}));
}

TEST_F(Voltage, DigitOfI3cIsNoVoltage)
{
    using R = std::pair<int, std::string>;
    EXPECT_EQ(voltage("I3C"), (R{-1, "I3C"}));
    EXPECT_EQ(voltage("I3C12"), (R{12, "I3C12"}));
    EXPECT_EQ(voltage("i3c18_X"), (R{18, "i3c18_X"}));
    EXPECT_EQ(voltage("I3C_18"), (R{-1, "I3C_18"})) << "only digits right behind the name count";
    EXPECT_EQ(voltage("XI3C18"), (R{3, "XIC"})) << "I3C must stand at the start";
}

TEST_F(Voltage, DigitsGoOnlyFromTypesTheTableDoesNotList)
{
    EXPECT_FALSE(model.need_remove_vccio_field("LVCMOS"));
    EXPECT_FALSE(model.need_remove_vccio_field("SSTL18_II"));
    EXPECT_TRUE(model.need_remove_vccio_field("LVCMOS33"));
    EXPECT_TRUE(model.need_remove_vccio_field("lvcmos")) << "design values compare by case";
    ts::ProbeModel bare;
    EXPECT_TRUE(bare.need_remove_vccio_field("LVCMOS"));
}

class VoltageField : public walk::WalkTest {};

TEST_F(VoltageField, NumberOfTheIoTypeGoesInWithATrailingZero)
{
    model._devIoMaps["IO_TYPE"] = {{"LVCMOS", "lvc"}, {"SSTL18_II", "s2"}};
    EXPECT_EQ(keyOf("KVA3", "BIDI", "IO_TYPE:LVCMOS33 DRIVE:8mA"), "lvc330a080aaaaaaaaio");
    EXPECT_EQ(keyOf("KVA3", "IN", "IO_TYPE:LVCMOS33 DRIVE:8mA"), "lvc330a080aaaaaaaain");
    EXPECT_EQ(keyOf("KVA3", "BIDI", "IO_TYPE:LVCMOS12"), "lvc120axxxaaaaaaaaio");
    EXPECT_EQ(keyOf("KVA3", "BIDI", "IO_TYPE:LVCMOS5"), "lvc500axxxaaaaaaaaio");
    EXPECT_EQ(keyOf("KVA3", "BIDI", "IO_TYPE:LVCMOS100"), "lvc1000xxxaaaaaaaaio")
        << "a three-digit number runs into the slew position";
    // A type listed whole finds its code and still gives its number; the
    // code's third character stays, the voltage follows it.
    EXPECT_EQ(keyOf("KVA3", "BIDI", "IO_TYPE:SSTL18_II"), "s2c180axxxaaaaaaaaio");
    EXPECT_EQ(keyOf("KVA3", "BIDI", "IO_TYPE:I3C"), "lvc250axxxaaaaaaaaio");
    EXPECT_EQ(keyOf("KVA3", "BIDI", "IO_TYPE:"), "lvc250axxxaaaaaaaaio");
}

TEST_F(VoltageField, LongCodeLosesItsTailToTheVoltage)
{
    model._devIoMaps["IO_TYPE"] = {{"LVCMOS", "lvcmx"}};
    EXPECT_EQ(keyOf("KVA3", "BIDI", "IO_TYPE:LVCMOS33"), "lvc330axxxaaaaaaaaio");
    EXPECT_EQ(keyOf("KVA3", "BIDI", "IO_TYPE:LVCMOS"), "lvcmx0axxxaaaaaaaaio")
        << "without a number the field keeps what the code left there";
}

TEST_F(VoltageField, FixedSupplyOfTypesWithoutANumberPerFamily)
{
    // Five-character codes show whether the voltage field was written: left
    // alone it keeps the code's tail.
    model._devIoMaps["IO_TYPE"] = {{"MIPI_LP", "mlpzz"}, {"HYPT", "hypzz"},   {"SLVS", "slvzz"},
                                   {"TRLVDS", "trlzz"},  {"SUBLVDS", "subzz"}, {"MIPI", "mipzz"}};
    struct Case {
        char const* type;
        char const* family;
        char const* head; // first six characters of the key
    };
    Case const cases[] = {
        {"MIPI_LP", "HZU2", "mlp120"}, {"MIPI_LP", "HZU3", "mlpzz0"}, {"MIPI_LP", "HZU", "mlpzz0"},
        {"HYPT", "KVA3", "hyp120"},    {"HYPT", "KVA4", "hypzz0"},    {"SLVS", "KVA4Y", "slv120"},
        {"SLVS", "KVA5Y", "slv120"},   {"SLVS", "KJ", "slv120"},      {"SLVS", "KVA4", "slvzz0"},
        {"TRLVDS", "KVA4", "trl330"},  {"TRLVDS", "KVA4Y", "trlzz0"}, {"TRLVDS", "KVA3", "trlzz0"},
        {"SUBLVDS", "KJ", "sub250"},   {"SUBLVDS", "KVA5Y", "subzz0"}, {"MIPI", "KVA4Y", "mip150"},
        {"MIPI", "KVA5Y", "mip150"},   {"MIPI", "KJ", "mip120"},      {"MIPI", "HZU2", "mipzz0"},
        {"MIPI", "KVA3", "mipzz0"},
    };
    for (Case const& c : cases) {
        std::string key = keyOf(c.family, "BIDI", std::string("IO_TYPE:") + c.type);
        EXPECT_EQ(key.substr(0, 6), c.head) << c.type << " on " << c.family;
    }
    // A type without a code and without a fixed supply keeps "lvc250".
    EXPECT_EQ(keyOf("KJ", "BIDI", "IO_TYPE:XYZ").substr(0, 6), "lvc250");
    // The fixed supplies go by the type's exact name.
    EXPECT_EQ(keyOf("KJ", "BIDI", "IO_TYPE:slvs").substr(0, 6), "lvc250");
}

} // namespace
