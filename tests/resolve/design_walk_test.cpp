// The design model walk: from a signal's attributes, through the naming
// maps, to the fields of its model key, with each family's own rules.

#include <gtest/gtest.h>

#include <string>

#include "driver/basibsgen.h"
#include "resolve/walk_probe.h"
#include "support/generator_probe.h"

namespace {

// A model key from its fields: IO type and voltage (six characters), slew,
// drive, pull, impedance, positions 12 to 17, direction.
std::string K(std::string const& typeAndVoltage, char slew, std::string const& drive, char pull,
              char impedance, std::string const& direction, std::string const& middle = "aaaaaa")
{
    return typeAndVoltage + slew + drive + pull + impedance + middle + direction;
}

class DesignWalk : public walk::WalkTest {
protected:
    void SetUp() override
    {
        walk::WalkTest::SetUp();
        model._devIoMaps["IO_TYPE"] = {{"LVCMOS", "lvc"},  {"LVDS", "lvd"},     {"PCI", "pci"},
                                       {"HYPT", "hyp"},    {"TRLVDS", "trl"},   {"SLVS", "slv"},
                                       {"SUBLVDS", "sub"}, {"MIPI", "mip"},     {"MIPI_LP", "mlp"}};
        // FAST has a code of its own, so that the fixed "f" and "a" of the
        // fast rule are told from it.
        model._devIoMaps["SLEW"] = {{"SLOW", "s"}, {"FAST", "r"}};
        model._devIoMaps["PULL"] = {{"NONE", "n"},       {"UP", "u"},         {"DOWN", "d"},
                                    {"BUSHOLD", "b"},    {"KEEPER", "k"},     {"CLAMP", "c"},
                                    {"PCICLAMP", "p"},   {"UP_CLAMP", "q"},   {"UP_SCHMITT", "t"},
                                    {"SCHMITTUP", "v"},  {"UPDOWN", "j"},     {"FAILSAFE_UP", "z"}};
        model._devIoMaps["IMP"] = {{"50", "5"}, {"1.8", "h"}, {"3.3", "g"}};
        model._bankVccio = {{"1", "1.8"}, {"2", "3.3"}, {"3", "2.5"}};
    }
};

TEST_F(DesignWalk, KvanAndKvzr)
{
    for (char const* family : {"KVAN", "KVZR"}) {
        // Fast PCI only on outputs; outputs take the bidirectional model.
        EXPECT_EQ(keyOf(family, "OUT", "IO_TYPE:PCI33 SLEW:FAST"), K("pci330", 'f', "xxx", 'a', 'a', "io"))
            << family;
        EXPECT_EQ(keyOf(family, "BIDI", "IO_TYPE:PCI33 SLEW:FAST"), K("pci330", 'a', "xxx", 'a', 'a', "io"))
            << family;
        EXPECT_EQ(keyOf(family, "IN", "IO_TYPE:PCI33 SLEW:FAST"), K("pci330", 'a', "xxx", 'a', 'a', "in"))
            << family;
        EXPECT_EQ(keyOf(family, "OUT", "IO_TYPE:LVDS25 SLEW:FAST"), K("lvd250", 'a', "xxx", 'a', 'a', "io"))
            << family;
        EXPECT_EQ(keyOf(family, "OUT", "IO_TYPE:LVCMOS33 SLEW:FAST DRIVE:8mA"),
                  K("lvc330", 'r', "080", 'a', 'a', "io"))
            << family;
        EXPECT_EQ(keyOf(family, "BIDI", "IO_TYPE:LVCMOS33 IMP:50"), K("lvc330", 'a', "xxx", 'a', '5', "io"))
            << family;
    }
}

TEST_F(DesignWalk, Kva2AndKvzr2)
{
    for (char const* family : {"KVA2", "KVZR2"}) {
        EXPECT_EQ(keyOf(family, "BIDI", "IO_TYPE:LVDS25 SLEW:FAST"), K("lvd250", 'f', "xxx", 'a', 'a', "io"))
            << family;
        EXPECT_EQ(keyOf(family, "IN", "IO_TYPE:PCI33 SLEW:FAST"), K("pci330", 'f', "xxx", 'a', 'a', "in"))
            << family;
        EXPECT_EQ(keyOf(family, "OUT", "IO_TYPE:PCI33 SLEW:FAST"), K("pci330", 'f', "xxx", 'a', 'a', "ou"))
            << family;
        EXPECT_EQ(keyOf(family, "OUT", "IO_TYPE:LVCMOS33 SLEW:FAST"), K("lvc330", 'r', "xxx", 'a', 'a', "ou"))
            << family;
        EXPECT_EQ(keyOf(family, "OUT", "IO_TYPE:LVDS25 SLEW:SLOW"), K("lvd250", 's', "xxx", 'a', 'a', "ou"))
            << family;
    }
}

TEST_F(DesignWalk, Kva3)
{
    EXPECT_EQ(keyOf("KVA3", "BIDI", "IO_TYPE:LVDS25 SLEW:FAST"), K("lvd250", 'f', "xxx", 'a', 'a', "io"));
    EXPECT_EQ(keyOf("KVA3", "OUT", "IO_TYPE:PCI33 SLEW:FAST"), K("pci330", 'f', "xxx", 'a', 'a', "ou"));
    // The IO type of the fast rule is the one the walk has at that moment:
    // behind the slew it is still the full name.
    EXPECT_EQ(keyOf("KVA3", "BIDI", "SLEW:FAST IO_TYPE:LVDS25"), K("lvd250", 'r', "xxx", 'a', 'a', "io"));
    EXPECT_EQ(keyOf("KVA3", "BIDI", "IO_TYPE:HYPT"), K("hyp120", 'a', "xxx", 'a', 'a', "io"));
    EXPECT_EQ(keyOf("KVA3", "BIDI", "IO_TYPE:LVCMOS33 PULL:KEEPER"), K("lvc330", 'a', "xxx", 'b', 'a', "io"));
    EXPECT_EQ(keyOf("KVA3", "BIDI", "IO_TYPE:LVCMOS33 PULL:KEEPER CLAMP:ON"),
              K("lvc330", 'a', "xxx", 'a', 'a', "io"))
        << "only the bare KEEPER is renamed";
    EXPECT_EQ(keyOf("KVA3", "IN", "IO_TYPE:LVCMOS33 CLAMP:ON"), K("lvc330", 'a', "xxx", 'c', 'a', "in"));
}

TEST_F(DesignWalk, Kva4)
{
    // A clamp on an input or bidirectional signal is the PCI clamp; the
    // test goes by the direction of the pad report, also under open drain.
    EXPECT_EQ(keyOf("KVA4", "IN", "IO_TYPE:LVCMOS33 CLAMP:ON"), K("lvc330", 'a', "xxx", 'p', 'a', "in"));
    EXPECT_EQ(keyOf("KVA4", "BIDI", "IO_TYPE:LVCMOS33 CLAMP:ON"), K("lvc330", 'a', "xxx", 'p', 'a', "io"));
    EXPECT_EQ(keyOf("KVA4", "BIDI", "IO_TYPE:LVCMOS33 OPENDRAIN:ON CLAMP:ON"),
              K("lvc330", 'a', "xxx", 'p', 'a', "od"));
    EXPECT_EQ(keyOf("KVA4", "OUT", "IO_TYPE:LVCMOS33 CLAMP:ON"), K("lvc330", 'a', "xxx", 'c', 'a', "ou"));
    EXPECT_EQ(keyOf("KVA4", "OUT", "IO_TYPE:LVCMOS33 PULL:UP CLAMP:ON"), K("lvc330", 'a', "xxx", 'q', 'a', "ou"));
    // Fast PCI takes the table's code, fast LVDS gets "a".
    EXPECT_EQ(keyOf("KVA4", "OUT", "IO_TYPE:PCI33 SLEW:FAST"), K("pci330", 'r', "xxx", 'a', 'a', "ou"));
    EXPECT_EQ(keyOf("KVA4", "OUT", "IO_TYPE:LVDS25 SLEW:FAST"), K("lvd250", 'a', "xxx", 'a', 'a', "ou"));
    EXPECT_EQ(keyOf("KVA4", "BIDI", "IO_TYPE:TRLVDS"), K("trl330", 'a', "xxx", 'a', 'a', "io"));
    EXPECT_EQ(keyOf("KVA4", "BIDI", "IO_TYPE:LVCMOS33 PULL:KEEPER"), K("lvc330", 'a', "xxx", 'k', 'a', "io"));
}

TEST_F(DesignWalk, Kva4yAndKva5y)
{
    for (char const* family : {"KVA4Y", "KVA5Y"}) {
        EXPECT_EQ(keyOf(family, "BIDI", "IO_TYPE:LVCMOS33 PULL:UP"), K("lvc330", 'a', "xxx", 'n', 'a', "io"))
            << family;
        EXPECT_EQ(keyOf(family, "BIDI", "IO_TYPE:LVCMOS33 PULL:UP CLAMP:ON"),
                  K("lvc330", 'a', "xxx", 'c', 'a', "io"))
            << family;
        EXPECT_EQ(keyOf(family, "IN", "IO_TYPE:LVCMOS33 PULL:DOWN PCICLAMP:ON"),
                  K("lvc330", 'a', "xxx", 'c', 'a', "in"))
            << family;
        EXPECT_EQ(keyOf(family, "BIDI", "IO_TYPE:SLVS"), K("slv120", 'a', "xxx", 'a', 'a', "io")) << family;
        EXPECT_EQ(keyOf(family, "BIDI", "IO_TYPE:MIPI"), K("mip150", 'a', "xxx", 'a', 'a', "io")) << family;
        EXPECT_EQ(keyOf(family, "OUT", "IO_TYPE:LVDS25 SLEW:FAST"), K("lvd250", 'a', "xxx", 'a', 'a', "ou"))
            << family;
        EXPECT_EQ(keyOf(family, "OUT", "IO_TYPE:PCI33 SLEW:FAST"), K("pci330", 'a', "xxx", 'a', 'a', "ou"))
            << family;
    }
}

TEST_F(DesignWalk, Kj)
{
    EXPECT_EQ(keyOf("KJ", "BIDI", "IO_TYPE:LVCMOS33 PULL:UP"), K("lvc330", 'a', "xxx", 'n', 'a', "io"));
    EXPECT_EQ(keyOf("KJ", "BIDI", "IO_TYPE:LVCMOS33 CLAMP:ON PULL:UP"), K("lvc330", 'a', "xxx", 'c', 'a', "io"));
    EXPECT_EQ(keyOf("KJ", "BIDI", "IO_TYPE:SLVS"), K("slv120", 'a', "xxx", 'a', 'a', "io"));
    EXPECT_EQ(keyOf("KJ", "BIDI", "IO_TYPE:SUBLVDS"), K("sub250", 'a', "xxx", 'a', 'a', "io"));
    EXPECT_EQ(keyOf("KJ", "BIDI", "IO_TYPE:MIPI"), K("mip120", 'a', "xxx", 'a', 'a', "io"));
    EXPECT_EQ(keyOf("KJ", "OUT", "IO_TYPE:LVDS25 SLEW:FAST"), K("lvd250", 'a', "xxx", 'a', 'a', "ou"));
}

TEST_F(DesignWalk, Hzu)
{
    EXPECT_EQ(keyOf("HZU", "BIDI", "IO_TYPE:LVDS25 SLEW:FAST"), K("lvd250", 'f', "xxx", 'a', 'a', "io"));
    EXPECT_EQ(keyOf("HZU", "IN", "IO_TYPE:PCI33 SLEW:FAST"), K("pci330", 'f', "xxx", 'a', 'a', "in"));
    EXPECT_EQ(keyOf("HZU", "OUT", "IO_TYPE:LVCMOS33 DRIVE:8mA"), K("lvc330", 'a', "080", 'a', 'a', "io"));
    EXPECT_EQ(keyOf("HZU", "BIDI", "IO_TYPE:LVCMOS33 PULL:FAILSAFE_UP"), K("lvc330", 'a', "xxx", 'z', 'a', "io"));
    // No bank impedance and no reset of the impedance field.
    EXPECT_EQ(keyOf("HZU", "IN", "IO_TYPE:LVCMOS33 IMP:50", "9"), K("lvc330", 'a', "xxx", 'a', '5', "in"));
    EXPECT_EQ(out.find("Unsupported"), std::string::npos) << out;
    EXPECT_EQ(keyOf("HZU", "BIDI", "IO_TYPE:LVCMOS33 IMP:50", "1"), K("lvc330", 'a', "xxx", 'a', '5', "io"));
}

TEST_F(DesignWalk, Hzu2AndHzu3)
{
    for (char const* family : {"HZU2", "HZU3"}) {
        EXPECT_EQ(keyOf(family, "OUT", "IO_TYPE:PCI33 SLEW:FAST", "3"), K("pci330", 'f', "xxx", 'a', 'a', "ou"))
            << family;
        EXPECT_EQ(keyOf(family, "BIDI", "IO_TYPE:LVDS25 SLEW:FAST", "3"), K("lvd250", 'f', "xxx", 'a', 'a', "io"))
            << family;
        EXPECT_EQ(keyOf(family, "BIDI", "IO_TYPE:LVCMOS33 PULL:FAILSAFE_UP", "3"),
                  K("lvc330", 'a', "xxx", 'u', 'a', "io"))
            << family;
        // The impedance comes from the bank's supply on "in" and "od" keys,
        // whatever the signal's own setting; "io" and "ou" keys carry "a".
        EXPECT_EQ(keyOf(family, "IN", "IO_TYPE:LVCMOS33", "1"), K("lvc330", 'a', "xxx", 'a', 'h', "in")) << family;
        EXPECT_EQ(keyOf(family, "IN", "IO_TYPE:LVCMOS33 IMP:50", "2"), K("lvc330", 'a', "xxx", 'a', 'g', "in"))
            << family;
        EXPECT_EQ(keyOf(family, "BIDI", "IO_TYPE:LVCMOS33 OPENDRAIN:ON", "1"),
                  K("lvc330", 'a', "xxx", 'a', 'h', "od"))
            << family;
        EXPECT_EQ(keyOf(family, "BIDI", "IO_TYPE:LVCMOS33 IMP:50", "1"), K("lvc330", 'a', "xxx", 'a', 'a', "io"))
            << family;
        EXPECT_EQ(keyOf(family, "OUT", "IO_TYPE:LVCMOS33 IMP:50", "1"), K("lvc330", 'a', "xxx", 'a', 'a', "ou"))
            << family;
        EXPECT_EQ(keyOf(family, "", "IO_TYPE:LVCMOS33 IMP:50", "1"), K("lvc330", 'a', "xxx", 'a', 'a', "io"))
            << family;
        // A supply without a row leaves the signal's own code.
        EXPECT_EQ(keyOf(family, "IN", "IO_TYPE:LVCMOS33 IMP:50", "3"), K("lvc330", 'a', "xxx", 'a', '5', "in"))
            << family;
    }
}

TEST_F(DesignWalk, Hzu2Alone)
{
    EXPECT_EQ(keyOf("HZU2", "BIDI", "IO_TYPE:MIPI_LP", "3"), K("mlp120", 'a', "xxx", 'a', 'a', "io"));
    EXPECT_EQ(keyOf("HZU3", "BIDI", "IO_TYPE:MIPI_LP", "3"), K("mlp250", 'a', "xxx", 'a', 'a', "io"));
    EXPECT_EQ(keyOf("HZU", "BIDI", "IO_TYPE:MIPI_LP"), K("mlp250", 'a', "xxx", 'a', 'a', "io"));
}

TEST_F(DesignWalk, AnyOtherFamily)
{
    for (char const* family : {"KVTN", "KVA4X", ""}) {
        EXPECT_EQ(keyOf(family, "BIDI", "IO_TYPE:LVDS25 SLEW:FAST"), K("lvd250", 'a', "xxx", 'a', 'a', "io"))
            << family;
        EXPECT_EQ(keyOf(family, "OUT", "IO_TYPE:PCI33 SLEW:FAST"), K("pci330", 'a', "xxx", 'a', 'a', "ou"))
            << family;
        EXPECT_EQ(keyOf(family, "OUT", "IO_TYPE:LVCMOS33 SLEW:FAST"), K("lvc330", 'r', "xxx", 'a', 'a', "ou"))
            << family;
        EXPECT_EQ(keyOf(family, "BIDI", "IO_TYPE:LVCMOS33 PULL:FAILSAFE_UP"),
                  K("lvc330", 'a', "xxx", 'z', 'a', "io"))
            << family;
        EXPECT_EQ(keyOf(family, "BIDI", "IO_TYPE:LVCMOS33 PULL:KEEPER"), K("lvc330", 'a', "xxx", 'k', 'a', "io"))
            << family;
        EXPECT_EQ(keyOf(family, "IN", "IO_TYPE:LVCMOS33 CLAMP:ON"), K("lvc330", 'a', "xxx", 'c', 'a', "in"))
            << family;
        EXPECT_EQ(keyOf(family, "BIDI", "IO_TYPE:HYPT IMP:50", "9"), K("hyp250", 'a', "xxx", 'a', '5', "io"))
            << family;
        EXPECT_EQ(out.find("Unsupported"), std::string::npos) << family << ": " << out;
    }
}

TEST_F(DesignWalk, DirectionOfTheSignal)
{
    EXPECT_EQ(keyOf("KVA3", "IN", "IO_TYPE:LVCMOS33"), K("lvc330", 'a', "xxx", 'a', 'a', "in"));
    EXPECT_EQ(keyOf("KVA3", "OUT", "IO_TYPE:LVCMOS33"), K("lvc330", 'a', "xxx", 'a', 'a', "ou"));
    EXPECT_EQ(keyOf("KVA3", "BIDI", "IO_TYPE:LVCMOS33"), K("lvc330", 'a', "xxx", 'a', 'a', "io"));
    EXPECT_EQ(keyOf("KVA3", "", "IO_TYPE:LVCMOS33"), K("lvc330", 'a', "xxx", 'a', 'a', "io"));

    for (char const* value : {"ON", "PLUS"}) {
        std::string attributes = std::string("IO_TYPE:LVCMOS33 OPENDRAIN:") + value;
        EXPECT_EQ(keyOf("KVA3", "BIDI", attributes), K("lvc330", 'a', "xxx", 'a', 'a', "od")) << value;
        EXPECT_STREQ(signal->type, "OD") << value;
        EXPECT_EQ(keyOf("KVA3", "OUT", attributes), K("lvc330", 'a', "xxx", 'a', 'a', "od")) << value;
        EXPECT_EQ(keyOf("KVAN", "OUT", attributes), K("lvc330", 'a', "xxx", 'a', 'a', "od")) << value;
        // An input keeps "in", while its record says open drain from now on.
        EXPECT_EQ(keyOf("KVA3", "IN", attributes), K("lvc330", 'a', "xxx", 'a', 'a', "in")) << value;
        EXPECT_STREQ(signal->type, "OD") << value;
    }
    for (char const* value : {"OFF", "on", ""}) {
        std::string attributes = std::string("IO_TYPE:LVCMOS33 OPENDRAIN:") + value;
        EXPECT_EQ(keyOf("KVA3", "BIDI", attributes), K("lvc330", 'a', "xxx", 'a', 'a', "io")) << value;
        EXPECT_STREQ(signal->type, "BIDI") << value;
    }
    EXPECT_EQ(signal->configs.size(), 2u) << "the record's own attributes stay as they are";
}

TEST_F(DesignWalk, SignalWithoutAttributesOrWithoutIoType)
{
    EXPECT_EQ(keyOf("KVA3", "IN", ""), "lvc250axxxaaaaaaaain");
    EXPECT_EQ(keyOf("KVA3", "OUT", ""), "lvc250axxxaaaaaaaaou");
    EXPECT_EQ(keyOf("KVAN", "OUT", ""), "lvc250axxxaaaaaaaaio");
    // Without an IO type the fast rule does not apply.
    EXPECT_EQ(keyOf("KVA2", "BIDI", "SLEW:FAST DRIVE:8mA"), K("lvc250", 'r', "080", 'a', 'a', "io"));

    // Without an IO type table the attribute is dropped whole, voltage
    // included, and the fast rule sees the IO type as the report states it.
    model._devIoMaps.erase("IO_TYPE");
    EXPECT_EQ(keyOf("KVA3", "BIDI", "IO_TYPE:LVCMOS33 DRIVE:8mA"), K("lvc250", 'a', "080", 'a', 'a', "io"));
    EXPECT_EQ(keyOf("KVA3", "BIDI", "IO_TYPE:LVDS SLEW:FAST"), K("lvc250", 'f', "xxx", 'a', 'a', "io"));
    EXPECT_EQ(keyOf("KVA3", "BIDI", "IO_TYPE:LVDS25 SLEW:FAST"), K("lvc250", 'r', "xxx", 'a', 'a', "io"));
}

TEST_F(DesignWalk, PullValueJoinsPullClampAndSchmittInReportOrder)
{
    struct Case {
        char const* attributes;
        char pull;
    };
    Case const cases[] = {
        {"PULL:UP", 'u'},
        {"PULL:NONE", 'n'},
        {"PULL:UP PULLMODE:DOWN", 'j'},
        {"PULL:UP CLAMP:ON", 'q'},
        {"PULL:UP SCHMITT_TRIGGER:ON", 't'},
        {"SCHMITT_TRIGGER:ON PULL:UP", 'v'},
        {"PCICLAMP:ON", 'p'},
        {"CLAMP:ON", 'c'},
        {"PULL:NONE CLAMP:ON", 'c'},
        {"CLAMP:OFF PCICLAMP:OFF SCHMITT_TRIGGER:OFF", 'a'},
        {"PULL:up", 'a'},
    };
    for (Case const& c : cases) {
        std::string key = keyOf("KVA3", "BIDI", std::string("IO_TYPE:LVCMOS33 ") + c.attributes);
        EXPECT_EQ(key, K("lvc330", 'a', "xxx", c.pull, 'a', "io")) << c.attributes;
    }
}

TEST_F(DesignWalk, PullCodeIsWrittenLast)
{
    // A four-character drive code reaches the pull position; the pull code
    // still wins, though its attribute stands first.
    model._devIoMaps["DRIVE"]["9mA"] = "0909";
    EXPECT_EQ(keyOf("KVA3", "BIDI", "IO_TYPE:LVCMOS33 PULL:UP DRIVE:9mA"), K("lvc330", 'a', "090", 'u', 'a', "io"));
    EXPECT_EQ(keyOf("KVA3", "BIDI", "IO_TYPE:LVCMOS33 DRIVE:9mA"), K("lvc330", 'a', "090", '9', 'a', "io"));
}

TEST_F(DesignWalk, DatabaseFlowUsesSlewrateAndPullmode)
{
    IBIS_MODEL::_is_ncd_flow = true;
    EXPECT_EQ(keyOf("KVA3", "BIDI", "IO_TYPE:LVCMOS33 PULL:UP"), K("lvc330", 'a', "xxx", 'a', 'a', "io"))
        << "the pull value goes in under PULLMODE, which has no table here";
    model._devIoMaps["PULLMODE"] = {{"UP", "u"}};
    model._devIoMaps["SLEWRATE"] = {{"FAST", "r"}};
    EXPECT_EQ(keyOf("KVA3", "BIDI", "IO_TYPE:LVCMOS33 PULL:UP SLEWRATE:FAST"),
              K("lvc330", 'r', "xxx", 'u', 'a', "io"));
    EXPECT_EQ(keyOf("KVA3", "BIDI", "IO_TYPE:LVDS25 SLEWRATE:FAST"), K("lvd250", 'f', "xxx", 'a', 'a', "io"));

    IBIS_MODEL::_is_ncd_flow = false;
    model._devIoMaps.erase("PULL");
    EXPECT_EQ(keyOf("KVA3", "BIDI", "IO_TYPE:LVCMOS33 PULL:UP"), K("lvc330", 'a', "xxx", 'a', 'a', "io"));
}

TEST_F(DesignWalk, EachAttributeWritesItsField)
{
    model._devIoMaps["MIPI"] = {{"ON", "M"}};
    model._devIoMaps["TERMVCC"] = {{"ON", "V"}};
    model._devIoMaps["TERMINATION"] = {{"ON", "T"}};
    model._devIoMaps["TERMGND"] = {{"ON", "G"}};
    model._devIoMaps["TERMVTT"] = {{"ON", "W"}};
    model._devIoMaps["VCMT"] = {{"ON", "C"}, {"DDR-2", "m"}, {"DDR_II", "w"}};
    model._devIoMaps["MULTDRIVE"] = {{"ON", "U"}};
    model._devIoMaps["DIFFRES"] = {{"100", "R"}};
    model._devIoMaps["DIFFRESISTOR"] = {{"100", "S"}};
    model._devIoMaps["DIFFCUR"] = {{"3.5", "I"}};
    model._devIoMaps["DIFFDRIVE"] = {{"3.5", "D"}};
    model._devIoMaps["VREF"] = {{"ON", "zzzzzzzzzzzzzzzzzzzz"}};

    EXPECT_EQ(keyOf("KVA3", "BIDI",
                    "IO_TYPE:LVCMOS33 IMP:50 MIPI:ON TERMGND:ON TERMVTT:ON VCMT:ON DIFFRES:100 "
                    "DIFFCUR:3.5 VREF:ON"),
              K("lvc330", 'a', "xxx", 'a', '5', "io", "MGWCRI"));
    EXPECT_EQ(keyOf("KVA3", "BIDI", "IO_TYPE:LVCMOS33 TERMVCC:ON MULTDRIVE:ON DIFFRESISTOR:100 DIFFDRIVE:3.5"),
              K("lvc330", 'a', "xxx", 'a', 'a', "io", "VaaUSD"));
    // Attributes of one field: the later wins.
    EXPECT_EQ(keyOf("KVA3", "BIDI", "IO_TYPE:LVCMOS33 TERMVCC:ON TERMINATION:ON DIFFCUR:3.5 DIFFDRIVE:3.5"),
              K("lvc330", 'a', "xxx", 'a', 'a', "io", "TaaaaD"));
    EXPECT_EQ(keyOf("KVA3", "BIDI", "IO_TYPE:LVCMOS33 TERMINATION:ON MIPI:ON MULTDRIVE:ON VCMT:ON"),
              K("lvc330", 'a', "xxx", 'a', 'a', "io", "MaaCaa"));
    // "DDR_II" of VCMT is looked up as "DDR-2".
    EXPECT_EQ(keyOf("KVA3", "BIDI", "IO_TYPE:LVCMOS33 VCMT:DDR_II"), K("lvc330", 'a', "xxx", 'a', 'a', "io", "aaamaa"));
    EXPECT_EQ(keyOf("KVA3", "BIDI", "IO_TYPE:LVCMOS33 VCMT:DDR-2"), K("lvc330", 'a', "xxx", 'a', 'a', "io", "aaamaa"));
    // Values without a row, attributes without a table, values in another
    // case: the field keeps its default.
    EXPECT_EQ(keyOf("KVA3", "BIDI", "IO_TYPE:LVCMOS33 IMP:75 SLEW:fast DRIVE:8MA FOO:BAR TERMGND:on"),
              K("lvc330", 'a', "xxx", 'a', 'a', "io"));
}

TEST_F(DesignWalk, EachSignalStartsFromTheTemplate)
{
    model._family = "KVA3";
    run({ts::makeIobuf("first", "A1", "BIDI", "IO_TYPE:LVDS25 SLEW:FAST PULL:UP DRIVE:8mA OPENDRAIN:ON"),
         ts::makeIobuf("second", "A2", "BIDI", "IO_TYPE:LVCMOS33"),
         ts::makeIobuf("third", "A3", "BIDI", "")});
    EXPECT_EQ(out, "WARNING: Ibis Model \"lvd250f080uaaaaaaaod\" for the signal \"first\" is not available.\n"
                   "WARNING: Ibis Model \"lvc330axxxaaaaaaaaio\" for the signal \"second\" is not available.\n"
                   "WARNING: Ibis Model \"lvc250axxxaaaaaaaaio\" for the signal \"third\" is not available.\n");
}

} // namespace
