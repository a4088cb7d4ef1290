// The family's own model resolution: its constructor's drive entry, its
// voltage rule, when its naming tables are complete, and the walk that turns
// each signal into a model key and a missing key into a substitute model.

#include <gtest/gtest.h>

#include <cstring>
#include <set>
#include <string>
#include <vector>

#include "variant/vargon_probe.h"

namespace {

using Construction = vt::VargonTest;

TEST_F(Construction, AddsThe24mAEntryToTheDriveTable)
{
    ASSERT_EQ(model->_devIoMaps.count("DRIVE"), 1u);
    EXPECT_EQ(model->_devIoMaps["DRIVE"],
              (vt::Codes{{"NA", "xxx"}, {"2mA", "020"}, {"4mA", "040"}, {"6mA", "060"}, {"8mA", "080"},
                         {"12mA", "120"}, {"16mA", "160"}, {"20mA", "200"}, {"24mA", "240"}}));
    EXPECT_STREQ(model->_modelKeyTemplate, "lvc250axxxaaaaaaaaio");
    EXPECT_TRUE(model->_outputAltModels.empty());
    EXPECT_TRUE(model->_inputAltModels.empty());
    EXPECT_TRUE(model->_bidirAltModels.empty());
    EXPECT_EQ(model->_devIoMaps.size(), 1u) << "nothing else is read before the master file";
}

TEST_F(Construction, NoDriveTableNoEntry)
{
    IBIS_MODEL_VARGON* other = build("KJQ-1", "KJ");
    ASSERT_NE(other, nullptr);
    EXPECT_FALSE(other->_keyFieldPresent[7]);
    EXPECT_EQ(other->_devIoMaps.count("DRIVE"), 0u);
    delete other;
}

using Voltage = vt::VargonTest;

TEST_F(Voltage, SplitsTheNameIntoNameAndNumber)
{
    struct Case {
        char const* name;
        int number;
        char const* rest;
    };
    std::vector<Case> const cases = {
        {"AGP1X33", 33, "AGP1X"},     {"LVCMOS25D", 25, "LVCMOSD"}, {"HSTL15D_II", 15, "HSTLD_II"},
        {"LVDS25E", 25, "LVDSE"},     {"LVCMOS33", 33, "LVCMOS"},   {"SSTL18_I", 18, "SSTL_I"},
        {"VREF1", -1, "VREF1"},       {"VREF2", -1, "VREF2"},       {"VREF12", 12, "VREF"},
        {"VREF3", 3, "VREF"},         {"33", 33, ""},               {"007", 7, ""},
        {"LVDS", -1, "LVDS"},         {"REF", -1, "REF"},           {"A1B2C", 12, "ABC"},
        {"X1Y22", 22, "X1Y"},         {"I3C", 3, "IC"},             {"GTLPLUS15", 15, "GTLPLUS"},
        {"PCIX15", 15, "PCIX"},       {"REF_RES", -1, "REF_RES"},
    };
    for (Case const& c : cases) {
        std::string name = c.name;
        EXPECT_EQ(model->getVoltage(name), c.number) << c.name;
        EXPECT_EQ(name, c.rest) << c.name;
    }
}

TEST_F(Voltage, DigitsLeaveTheNameEvenWhenTheTableListsItWhole)
{
    vt::fillNamingTables(*model);
    model->_devIoMaps["IO_TYPE"]["LVCMOS33"] = "l33";
    model->_devIoMaps["IO_TYPE"]["I3C"] = "i3c";
    std::string name = "LVCMOS33";
    EXPECT_EQ(model->getVoltage(name), 33);
    EXPECT_EQ(name, "LVCMOS");
    name = "I3C";
    EXPECT_EQ(model->getVoltage(name), 3);
    EXPECT_EQ(name, "IC");
}

using LoadingDone = vt::VargonTest;

TEST_F(LoadingDone, NeedsTheFieldsOfAllTablesButTheDirectionsSecond)
{
    std::vector<int> const needed = {0, 3, 7, 6, 10, 11, 12, 13, 14, 15, 16, 17, 18};
    auto setOnly = [&](std::vector<int> const& positions) {
        for (bool& flag : model->_keyFieldPresent)
            flag = false;
        for (int position : positions)
            model->_keyFieldPresent[position] = true;
    };
    setOnly(needed);
    EXPECT_TRUE(model->hasDoneLoadingIoMaps()) << "position 19 is not needed";
    for (int missing : needed) {
        std::vector<int> rest;
        for (int position : needed)
            if (position != missing)
                rest.push_back(position);
        setOnly(rest);
        EXPECT_FALSE(model->hasDoneLoadingIoMaps()) << "without position " << missing;
    }
    setOnly({});
    EXPECT_FALSE(model->hasDoneLoadingIoMaps());
}

TEST_F(LoadingDone, AsksNothingOfThePartAndChangesNoTable)
{
    vt::fillNamingTables(*model);
    for (int position : {0, 3, 7, 6, 10, 11, 12, 13, 14, 15, 16, 17, 18})
        model->_keyFieldPresent[position] = true;
    auto const before = model->_devIoMaps;
    model->_partName = "QQQ";
    EXPECT_TRUE(model->hasDoneLoadingIoMaps()) << "no family fragment is looked for";
    model->_partName = std::string("A3\0HZU2", 7);
    EXPECT_TRUE(model->hasDoneLoadingIoMaps());
    EXPECT_EQ(model->_devIoMaps, before);
}

// The naming section of a master file: the tables of this family in order,
// with one more table behind them.
std::string namingSection(bool complete)
{
    std::string text =
        "[IBIS Ver]      5.0\n"
        "\n"
        "STANDARD\n"
        "| io standard  code\n"
        "  LVCMOS       lvc\n"
        "|\n"
        "SLEW\n"
        "  SLOW         s\n"
        "|\n"
        "PULLMODE\n"
        "  PULLUP       u\n"
        "|\n";
    if (!complete)
        return text;
    return text +
           "IMPEDANCE\n  OFF  a\n|\n"
           "TERMVCC\n  OFF  a\n|\n"
           "TERMGND\n  OFF  a\n|\n"
           "TERMVTT\n  OFF  a\n|\n"
           "VCMT\n  OFF  a\n|\n"
           "DIFFERENTIAL RESISTOR\n  OFF  a\n|\n"
           "DIFFERENTIAL CURRENT\n  NA  a\n|\n"
           "MULTI DRIVE\n  X1  1\n|\n";
}

TEST_F(LoadingDone, TheScanStopsAtTheLastNeededTable)
{
    model->_masterIbisFile = dir.file("probe.ibs");
    ts::writeFile(model->_masterIbisFile, namingSection(true));
    EXPECT_TRUE(model->loadDevIoMaps());
    EXPECT_EQ(model->_devIoMaps.count("DIFFCUR"), 1u);
    EXPECT_EQ(model->_devIoMaps.count("MULTDRIVE"), 0u) << "a table behind the last needed one";
    EXPECT_EQ(model->_devIoMaps.count("DIFFRESISTOR"), 0u);
}

TEST_F(LoadingDone, IoTypeSlewAndPullAloneAreNotEnough)
{
    model->_masterIbisFile = dir.file("probe.ibs");
    ts::writeFile(model->_masterIbisFile, namingSection(false));
    EXPECT_FALSE(model->loadDevIoMaps());
}

using Slots = vt::VargonTest;

TEST_F(Slots, TheHostsCallsThroughTheBaseClassReachTheFamilysOperations)
{
    IBIS_MODEL* base = model;
    std::string name = "AGP1X33";
    EXPECT_EQ(base->getVoltage(name), 33);
    EXPECT_EQ(name, "AGP1X");

    model->_masterIbisFile = dir.file("probe.ibs");
    ts::writeFile(model->_masterIbisFile, namingSection(true) +
                                              "[Component]     KVAN-25F\n"
                                              "[Pin]  signal_name  model_name\n"
                                              "A1     IO_A1        lvc330axxxaaaaaaaaio\n"
                                              "|\n");
    ASSERT_TRUE(base->loadIbisModels());
    EXPECT_EQ(model->_devIoMaps.count("DIFFCUR"), 1u) << "the scan went on behind the pull table";
    EXPECT_EQ(model->_devIoMaps.count("MULTDRIVE"), 0u);
    EXPECT_EQ(vt::countRoots(model->_outputAltModels), 75) << "the forests were built";
    EXPECT_EQ(vt::countRoots(model->_inputAltModels), 107);
    EXPECT_EQ(vt::countRoots(model->_bidirAltModels), 60);

    IB_IOBUF* signal = ts::makeIobuf("sig", "A1", "BIDI", "IO_TYPE:LVCMOS33 DRIVE:8mA");
    model->_iobufs = {signal};
    std::string const said = ts::captureStdout([&] { base->setDesignModels(); });
    EXPECT_EQ(said, "WARNING: Ibis Model \"lvc330a080aaaaaaaaio\" for the signal \"sig\" is not available. "
                    "Substituting model \"lvc330axxxaaaaaaaaio\".\n")
        << "the family's walk, with no closing message";
}

// A generator of the family whose voltage rule is replaced, to see that the
// translation and the walk ask for it through its virtual slot.
class FixedVoltage : public IBIS_MODEL_VARGON {
public:
    using IBIS_MODEL_VARGON::IBIS_MODEL_VARGON;
    int getVoltage(std::string& ioType) override
    {
        ioType = "LVCMOS";
        return 99;
    }
};

TEST_F(Slots, TranslationAndWalkUseTheVirtualVoltageRule)
{
    std::string const pad = dir.file("fixed.pad");
    ts::writeFile(pad, ts::padReport("KVAN-25F-5FN484C", {"| sig | A1/0 | LVCMOS33_BIDI | PT1A | |"}));
    FixedVoltage* fixed = nullptr;
    ts::captureStdout([&] { fixed = new FixedVoltage("KVAN", pad.c_str(), dir.file("fixed.ibs").c_str()); });
    ASSERT_NE(fixed, nullptr);
    vt::fillNamingTables(*fixed);
    EXPECT_EQ(fixed->translateCellValue("IO_TYPE", "HSTL18_I", "io"), "lvc990");
    IB_IOBUF* signal = ts::makeIobuf("sig", "A1", "BIDI", "IO_TYPE:SSTL25_II");
    fixed->_iobufs = {signal};
    fixed->_availableModels = {"lvc990axxxaaaaaaaaio"};
    std::string const said = ts::captureStdout([&] { fixed->setDesignModels(); });
    EXPECT_EQ(said, "");
    EXPECT_STREQ(signal->model, "lvc990axxxaaaaaaaaio");
    delete fixed;
}

// The walk. Naming tables and forests as after reading a master file of the
// family; the test says which models exist.
class Walk : public vt::VargonTest {
protected:
    void SetUp() override
    {
        vt::VargonTest::SetUp();
        vt::fillNamingTables(*model);
        model->buildAltVargonModels();
    }

    // The key that the walk gives one signal: every key is made available, so
    // that the signal takes it as it stands.
    std::string keyOf(std::string const& type, std::string const& attributes)
    {
        IB_IOBUF* signal = ts::makeIobuf("sig", "A1", type, attributes);
        model->_availableModels.clear();
        model->_designModels.clear();
        model->_iobufs = {signal};
        // First pass: learn the key from the warning; second pass: with it.
        out = ts::captureStdout([&] { model->setDesignModels(); });
        std::string const mark = "WARNING: Ibis Model \"";
        std::string::size_type at = out.find(mark);
        if (at == std::string::npos)
            return signal->model == nullptr ? "<null>" : std::string("<no warning: ") + signal->model + ">";
        at += mark.size();
        std::string key = out.substr(at, out.find('"', at) - at);
        IB_IOBUF* again = ts::makeIobuf("sig", "A1", type, attributes);
        model->_availableModels = {key};
        model->_missingModelCount = 0;
        resolve({again});
        EXPECT_EQ(out, "") << key;
        EXPECT_STREQ(again->model, key.c_str());
        lastType = again->type == nullptr ? "<null>" : again->type;
        return key;
    }

    std::string lastType;
};

TEST_F(Walk, FieldsFromTheirAttributes)
{
    EXPECT_EQ(keyOf("BIDI", "IO_TYPE:LVCMOS33 DRIVE:8mA PULL:UP SLEW:SLOW"), "lvc330s080uaaaaaaaio");
    EXPECT_EQ(keyOf("BIDI", "IO_TYPE:LVCMOS33 SLEW:SLOW DRIVE:24mA IMP:50 TERMVCC:120 TERMGND:100 "
                            "TERMVTT:75 VCMT:VTT DIFFRES:150 DIFFCUR:3P5"),
              "lvc330s240a5th7tf3io");
    EXPECT_EQ(keyOf("IN", "IO_TYPE:LVCMOS12"), "lvc120axxxaaaaaaaain");
    EXPECT_EQ(keyOf("IN", "IO_TYPE:HSTL15D_II"), "hd2150axxxaaaaaaaain");
    EXPECT_EQ(keyOf("OUT", "IO_TYPE:AGP1X33"), "ag1330axxxaaaaaaaaou");
}

TEST_F(Walk, ValuesWithoutRowAndAttributesWithoutTableLeaveTheField)
{
    EXPECT_EQ(keyOf("BIDI", "IO_TYPE:LVCMOS33 IMP:77 DRIVE:7mA SLEW:slow"), "lvc330axxxaaaaaaaaio");
    EXPECT_EQ(keyOf("BIDI", "IO_TYPE:LVCMOS33 PULLMODE:UP SLEWRATE:SLOW CLAMP:ON SCHMITT_TRIGGER:ON"),
              "lvc330axxxaaaaaaaaio")
        << "the long forms and the other families' attributes are not known here";
    model->_devIoMaps["DIFFRESISTOR"] = model->_devIoMaps["DIFFRES"];
    EXPECT_EQ(keyOf("BIDI", "IO_TYPE:LVCMOS33 DIFFRESISTOR:120"), "lvc330axxxaaaaaaaaio")
        << "a table of another name writes no field";
    EXPECT_EQ(keyOf("IN", "IO_TYPE:HSTL18_III"), "lvc180axxxaaaaaaaain")
        << "an IO type without a row keeps the code and still gives its voltage";
}

TEST_F(Walk, VrefRefcircuitAndPwrsaveAreDropped)
{
    std::string const plain = keyOf("IN", "IO_TYPE:SSTL18_I TERMVTT:60");
    EXPECT_EQ(plain, "ss1180axxxaaaa6aaain");
    EXPECT_EQ(keyOf("IN", "IO_TYPE:SSTL18_I VREF:VREF1_LOAD REFCIRCUIT:INTERNAL TERMVTT:60 PWRSAVE:ON"),
              plain);
}

TEST_F(Walk, DirectionFromThePortTypeAlone)
{
    model->_family = "KVAN";
    EXPECT_EQ(keyOf("IN", "IO_TYPE:LVCMOS33"), "lvc330axxxaaaaaaaain");
    EXPECT_EQ(keyOf("OUT", "IO_TYPE:LVCMOS33"), "lvc330axxxaaaaaaaaou") << "whatever keepOutAsOu says";
    EXPECT_EQ(keyOf("OD", "IO_TYPE:LVCMOS33"), "lvc330axxxaaaaaaaaod");
    EXPECT_EQ(keyOf("BIDI", "IO_TYPE:LVCMOS33"), "lvc330axxxaaaaaaaaio");
    EXPECT_EQ(keyOf("", "IO_TYPE:LVCMOS33"), "lvc330axxxaaaaaaaaio");
    EXPECT_EQ(keyOf("INOUT", "IO_TYPE:LVCMOS33"), "lvc330axxxaaaaaaaaio");
    EXPECT_EQ(keyOf("DRIVER", "IO_TYPE:LVCMOS33"), "lvc330axxxaaaaaaaaio") << "left as the template has it";
    EXPECT_EQ(keyOf("RESISTOR", "IO_TYPE:LVCMOS33"), "lvc330axxxaaaaaaaaio");
}

TEST_F(Walk, OpendrainOnMarksTheRecordButTheKeyKeepsThePortType)
{
    EXPECT_EQ(keyOf("OUT", "IO_TYPE:LVCMOS33 DRIVE:8mA PULL:UP SLEW:SLOW OPENDRAIN:ON"),
              "lvc330s080uaaaaaaaou");
    EXPECT_EQ(lastType, "OD");
    EXPECT_EQ(keyOf("BIDI", "IO_TYPE:LVCMOS33 OPENDRAIN:ON"), "lvc330axxxaaaaaaaaio");
    EXPECT_EQ(lastType, "OD");
    EXPECT_EQ(keyOf("IN", "IO_TYPE:LVCMOS33 OPENDRAIN:ON"), "lvc330axxxaaaaaaaain");
    EXPECT_EQ(lastType, "OD");
    EXPECT_EQ(keyOf("OUT", "IO_TYPE:LVCMOS33 OPENDRAIN:OFF"), "lvc330axxxaaaaaaaaou");
    EXPECT_EQ(lastType, "OUT");
    EXPECT_EQ(keyOf("BIDI", "IO_TYPE:LVCMOS33 OPENDRAIN:PLUS"), "lvc330axxxaaaaaaaaio");
    EXPECT_EQ(lastType, "BIDI") << "PLUS is no word of this family";
    EXPECT_EQ(keyOf("OD", "IO_TYPE:LVCMOS33 DRIVE:8mA"), "lvc330a080aaaaaaaaod");
    EXPECT_EQ(lastType, "OD");
}

TEST_F(Walk, PullValueWithTheClampFoldedIn)
{
    EXPECT_EQ(keyOf("BIDI", "IO_TYPE:PCI33 PULL:UP PCICLAMP:ON"), "pci330axxxcaaaaaaaio");
    EXPECT_EQ(keyOf("BIDI", "IO_TYPE:PCI33 PULL:DOWN PCICLAMP:ON"), "pci330axxxeaaaaaaaio");
    EXPECT_EQ(keyOf("BIDI", "IO_TYPE:PCI33 PCICLAMP:ON"), "pci330axxxpaaaaaaaio") << "leading _ removed";
    EXPECT_EQ(keyOf("BIDI", "IO_TYPE:PCI33 PULL:NONE PCICLAMP:ON"), "pci330axxxpaaaaaaaio")
        << "leading NONE_ removed";
    EXPECT_EQ(keyOf("BIDI", "IO_TYPE:PCI33 PULL:NONE"), "pci330axxxnaaaaaaaio")
        << "NONE is looked up as NONE, not as OFF";
    EXPECT_EQ(keyOf("BIDI", "IO_TYPE:PCI33 PCICLAMP:OFF PULL:KEEPER"), "pci330axxxkaaaaaaaio");
    EXPECT_EQ(keyOf("BIDI", "IO_TYPE:PCI33 PCICLAMP:ON PULL:UP"), "pci330axxxaaaaaaaaio")
        << "PCICLAMPUP has no row";
}

TEST_F(Walk, PullValueIsNormalisedByTheSharedOperation)
{
    // The shared normalisation knows the family word it is given; for this
    // family none of its rules applies, for KVA3 its KEEPER rule does.
    model->_devIoMaps["PULL"]["BUSHOLD"] = "b";
    EXPECT_EQ(keyOf("BIDI", "IO_TYPE:LVCMOS25 PULL:KEEPER"), "lvc250axxxkaaaaaaaio");
    model->_family = "KVA3";
    EXPECT_EQ(keyOf("BIDI", "IO_TYPE:LVCMOS25 PULL:KEEPER"), "lvc250axxxbaaaaaaaio");
}

TEST_F(Walk, VcmtDdrIIIsLookedUpAsDdr2)
{
    EXPECT_EQ(keyOf("BIDI", "IO_TYPE:SSTL18_II VCMT:DDR_II TERMVTT:150"), "ss2180axxxaaaafdaaio");
    EXPECT_EQ(keyOf("BIDI", "IO_TYPE:SSTL18_II VCMT:VCMT"), "ss2180axxxaaaaavaaio");
}

TEST_F(Walk, FastOnLvdsHyptAndRsdsIsTheNeutralSlew)
{
    model->_family = "KVA3";
    EXPECT_EQ(keyOf("OUT", "IO_TYPE:LVDS SLEW:FAST"), "lvd250axxxaaaaaaaaou");
    EXPECT_EQ(keyOf("OUT", "IO_TYPE:RSDS SLEW:FAST"), "rsd250axxxaaaaaaaaou");
    EXPECT_EQ(keyOf("BIDI", "IO_TYPE:HYPT SLEW:FAST"), "hyp250axxxaaaaaaaaio");
    EXPECT_EQ(keyOf("BIDI", "IO_TYPE:PCI33 SLEW:FAST"), "pci330fxxxaaaaaaaaio") << "no rule for PCI here";
    EXPECT_EQ(keyOf("OUT", "IO_TYPE:LVDS25E SLEW:FAST"), "lve250fxxxaaaaaaaaou");
    EXPECT_EQ(keyOf("OUT", "IO_TYPE:LVCMOS33 SLEW:FAST"), "lvc330fxxxaaaaaaaaou");
    EXPECT_EQ(keyOf("OUT", "IO_TYPE:LVDS SLEW:SLOW"), "lvd250sxxxaaaaaaaaou");
}

TEST_F(Walk, FastRuleSeesTheIoTypeAsItStandsThen)
{
    EXPECT_EQ(keyOf("OUT", "IO_TYPE:LVDS25 SLEW:FAST"), "lvd250axxxaaaaaaaaou")
        << "shortened to LVDS before the slew comes";
    EXPECT_EQ(keyOf("OUT", "SLEW:FAST IO_TYPE:LVDS25"), "lvd250fxxxaaaaaaaaou")
        << "still LVDS25 when the slew comes first";
    EXPECT_EQ(keyOf("OUT", "SLEW:FAST IO_TYPE:LVDS"), "lvd250axxxaaaaaaaaou");
}

TEST_F(Walk, VoltageHasNoFamilyExceptions)
{
    model->_family = "KVA3";
    EXPECT_EQ(keyOf("BIDI", "IO_TYPE:HYPT"), "hyp250axxxaaaaaaaaio");
    EXPECT_EQ(keyOf("BIDI", "IO_TYPE:LVDS"), "lvd250axxxaaaaaaaaio");
    EXPECT_EQ(keyOf("IN", "IO_TYPE:VREF1"), "vr1250axxxaaaaaaaain") << "the digit of VREF1 stays in the name";
    EXPECT_EQ(keyOf("IN", "IO_TYPE:GTLPLUS15"), "gpl150axxxaaaaaaaain") << "looked up as GTLPLUS";
}

TEST_F(Walk, NoAttributesOrNoIoType)
{
    EXPECT_EQ(keyOf("IN", ""), "lvc250axxxaaaaaaaain");
    EXPECT_EQ(keyOf("BIDI", "DRIVE:8mA SLEW:FAST"), "lvc250f080aaaaaaaaio");
    EXPECT_EQ(keyOf("OUT", "SLEW:FAST"), "lvc250fxxxaaaaaaaaou");
}

TEST_F(Walk, AvailableKeyIsTakenWithItsMasterPin)
{
    IB_IOBUF* first = ts::makeIobuf("d0", "A1", "BIDI", "IO_TYPE:LVCMOS33 DRIVE:8mA PULL:UP SLEW:SLOW");
    IB_IOBUF* second = ts::makeIobuf("d1", "A2", "BIDI", "IO_TYPE:LVCMOS33 DRIVE:8mA PULL:UP SLEW:SLOW");
    IB_IOBUF* third = ts::makeIobuf("d2", "A3", "IN", "IO_TYPE:LVCMOS33");
    model->_availableModels = {"lvc330s080uaaaaaaaio", "lvc330axxxaaaaaaaain", "lvc330axxxaaaaaaaaio"};
    model->_modelPinMap = {{"lvc330s080uaaaaaaaio", "K7"}};
    resolve({first, second, third});
    EXPECT_EQ(out, "") << "no closing message";
    EXPECT_STREQ(first->model, "lvc330s080uaaaaaaaio");
    EXPECT_STREQ(first->masterPin, "K7");
    EXPECT_STREQ(second->masterPin, "K7");
    EXPECT_NE(first->masterPin, second->masterPin) << "each record has its own copy";
    EXPECT_STREQ(third->model, "lvc330axxxaaaaaaaain");
    EXPECT_EQ(third->masterPin, nullptr);
    EXPECT_EQ(model->_designModels, (std::set<std::string>{"lvc330s080uaaaaaaaio", "lvc330axxxaaaaaaaain"}));
    EXPECT_EQ(model->_missingModelCount, 0);
}

TEST_F(Walk, ReferenceEntriesHaveNoModelAndNoReport)
{
    IB_IOBUF* rref = ts::makeIobuf("rref", "T5", "RESISTOR", "IO_TYPE:REF");
    IB_IOBUF* vref1 = ts::makeIobuf("vref_a", "J5", "DRIVER", "IO_TYPE:VREF1");
    IB_IOBUF* vref2 = ts::makeIobuf("vref_b", "J6", "DRIVER", "IO_TYPE:VREF2 DRIVE:8mA");
    IB_IOBUF* vrefx = ts::makeIobuf("vref_c", "J7", "DRIVER", "IO_TYPE:VREFX");
    model->_availableModels = {"rfx250axxxaaaaaaaaio", "ref250axxxaaaaaaaaio", "vr1250axxxaaaaaaaaio",
                               "vr2250axxxaaaaaaaaio", "lvc250axxxaaaaaaaaio"};
    resolve({rref, vref1, vref2, vrefx});
    EXPECT_EQ(out, "");
    for (IB_IOBUF* signal : {rref, vref1, vref2, vrefx}) {
        ASSERT_NE(signal->model, nullptr) << signal->name;
        EXPECT_STREQ(signal->model, "") << signal->name;
        EXPECT_EQ(signal->masterPin, nullptr) << signal->name;
    }
    EXPECT_TRUE(model->_designModels.empty());
    EXPECT_EQ(model->_missingModelCount, 0);
    EXPECT_STREQ(rref->type, "RESISTOR");
    EXPECT_STREQ(vref1->type, "DRIVER");
}

TEST_F(Walk, AReferenceEntryEndsTheSecondPassAtItsIoType)
{
    // The key is cut by a NUL at its start; nothing behind the IO type and
    // no direction is written into it any more.
    IB_IOBUF* vref = ts::makeIobuf("vref_b", "J6", "DRIVER", "IO_TYPE:VREF2 DRIVE:8mA SLEW:SLOW");
    IB_IOBUF* rref = ts::makeIobuf("rref", "T5", "RESISTOR", "IO_TYPE:REF IMP:50 PULL:UP");
    resolve({vref, rref});
    ASSERT_NE(vref->model, nullptr);
    ASSERT_NE(rref->model, nullptr);
    EXPECT_EQ(std::string(vref->model + 1, 19), "vc250axxxaaaaaaaaio");
    EXPECT_EQ(std::string(rref->model + 1, 19), "vc250axxxaaaaaaaaio");
}

TEST_F(Walk, RefOrVrefWithAnotherPortTypeIsOrdinary)
{
    EXPECT_EQ(keyOf("IN", "IO_TYPE:REF"), "rfx250axxxaaaaaaaain");
    EXPECT_EQ(keyOf("DRIVER", "IO_TYPE:REF"), "rfx250axxxaaaaaaaaio");
    EXPECT_EQ(keyOf("RESISTOR", "IO_TYPE:VREF1"), "vr1250axxxaaaaaaaaio");
    EXPECT_EQ(keyOf("OUT", "IO_TYPE:VREF2"), "vr2250axxxaaaaaaaaou");
}

TEST_F(Walk, SubstituteFoundIsReportedCountedAndUsed)
{
    IB_IOBUF* scl = ts::makeIobuf("scl", "A15", "OD", "IO_TYPE:LVCMOS33 DRIVE:16mA PULL:DOWN");
    model->_availableModels = {"lvc330a160daaaaaaaio", "lvc330axxxaaaaaaaaod"};
    model->_modelPinMap = {{"lvc330a160daaaaaaaod", "R1"}, {"lvc330a160daaaaaaaio", "R2"}};
    resolve({scl});
    EXPECT_EQ(out, "WARNING: Ibis Model \"lvc330a160daaaaaaaod\" for the signal \"scl\" is not available. "
                   "Substituting model \"lvc330a160daaaaaaaio\".\n");
    EXPECT_STREQ(scl->model, "lvc330a160daaaaaaaio");
    EXPECT_STREQ(scl->masterPin, "R1") << "the pin of the rejected key, not of the substitute";
    EXPECT_EQ(model->_designModels, (std::set<std::string>{"lvc330a160daaaaaaaio"}));
    EXPECT_EQ(model->_missingModelCount, 1) << "a substituted signal counts as missing";
    EXPECT_STREQ(scl->type, "OD");
}

TEST_F(Walk, SubstitutesPinIsNotLookedFor)
{
    IB_IOBUF* scl = ts::makeIobuf("scl", "A15", "OD", "IO_TYPE:LVCMOS33 DRIVE:16mA PULL:DOWN");
    model->_availableModels = {"lvc330a160daaaaaaaio"};
    model->_modelPinMap = {{"lvc330a160daaaaaaaio", "R2"}};
    resolve({scl});
    EXPECT_STREQ(scl->model, "lvc330a160daaaaaaaio");
    EXPECT_EQ(scl->masterPin, nullptr);
}

TEST_F(Walk, EverySignalWithAMissingKeyIsReportedAgain)
{
    IB_IOBUF* a = ts::makeIobuf("btn0", "C3", "IN", "IO_TYPE:LVCMOS25 PULL:KEEPER");
    IB_IOBUF* b = ts::makeIobuf("btn1", "C4", "IN", "IO_TYPE:LVCMOS25 PULL:KEEPER");
    model->_availableModels = {"lvc250axxxaaaaaaaain"};
    resolve({a, b});
    EXPECT_EQ(out,
              "WARNING: Ibis Model \"lvc250axxxkaaaaaaain\" for the signal \"btn0\" is not available. "
              "Substituting model \"lvc250axxxaaaaaaaain\".\n"
              "WARNING: Ibis Model \"lvc250axxxkaaaaaaain\" for the signal \"btn1\" is not available. "
              "Substituting model \"lvc250axxxaaaaaaaain\".\n");
    EXPECT_STREQ(a->model, "lvc250axxxaaaaaaaain");
    EXPECT_STREQ(b->model, "lvc250axxxaaaaaaaain");
    EXPECT_NE(a->model, b->model) << "each record has its own copy";
    EXPECT_EQ(model->_missingModelCount, 2);
    EXPECT_EQ(model->_designModels, (std::set<std::string>{"lvc250axxxaaaaaaaain"}));
}

TEST_F(Walk, NoSubstituteLeavesTheSignalWithoutModel)
{
    IB_IOBUF* hstl = ts::makeIobuf("hstl_out", "M3", "OUT", "IO_TYPE:HSTL18_I SLEW:FAST");
    IB_IOBUF* led = ts::makeIobuf("led", "A14", "OUT", "IO_TYPE:LVCMOS33 DRIVE:8mA PULL:UP SLEW:SLOW");
    model->_availableModels = {"hs1180axxxaaaaaaaaou", "hs1180axxxaaaaaaaain", "lvc330s080uaaaaaaaou"};
    model->_modelPinMap = {{"hs1180fxxxaaaaaaaaou", "M9"}};
    resolve({hstl, led});
    EXPECT_EQ(out, "WARNING: Ibis Model \"hs1180fxxxaaaaaaaaou\" for the signal \"hstl_out\" is not available.\n");
    ASSERT_NE(hstl->model, nullptr);
    EXPECT_STREQ(hstl->model, "");
    EXPECT_EQ(hstl->masterPin, nullptr);
    EXPECT_EQ(model->_missingModelCount, 1);
    EXPECT_EQ(model->_designModels, (std::set<std::string>{"lvc330s080uaaaaaaaou"}))
        << "no closing message, and the other signal is not touched";
}

TEST_F(Walk, InputFallsBackOnTheIoFormsOfItsKey)
{
    IB_IOBUF* clk = ts::makeIobuf("clk", "E4", "IN", "IO_TYPE:LVDS DIFFRES:120");
    model->_availableModels = {"lvd250axxxaaaaaataio", "lvd250axxxaaaaaaaaio"};
    resolve({clk});
    EXPECT_STREQ(clk->model, "lvd250axxxaaaaaataio");
    EXPECT_EQ(out, "WARNING: Ibis Model \"lvd250axxxaaaaaatain\" for the signal \"clk\" is not available. "
                   "Substituting model \"lvd250axxxaaaaaataio\".\n");
    EXPECT_EQ(model->_missingModelCount, 1);
}

TEST_F(Walk, MessagesArePostedWithTheirArgumentsInTheMessageFlow)
{
    UT_MSGMAN::m_msgFlow = 1;
    IB_IOBUF* scl = ts::makeIobuf("scl", "A15", "OD", "IO_TYPE:LVCMOS33 DRIVE:16mA PULL:DOWN");
    IB_IOBUF* hstl = ts::makeIobuf("hstl_out", "M3", "OUT", "IO_TYPE:HSTL18_I SLEW:FAST");
    model->_availableModels = {"lvc330a160daaaaaaaio"};
    model->_iobufs = {scl, hstl};
    testing::internal::CaptureStderr();
    out = ts::captureStdout([&] { model->setDesignModels(); });
    std::string const err = testing::internal::GetCapturedStderr();
    EXPECT_EQ(out, "");
    EXPECT_EQ(err, "padmodel-1011\tlvc330a160daaaaaaaod\tscl\tlvc330a160daaaaaaaio\n"
                   "padmodel-1010\ths1180fxxxaaaaaaaaou\thstl_out\n");
    EXPECT_EQ(model->_missingModelCount, 2);
}

} // namespace
