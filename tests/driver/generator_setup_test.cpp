// Construction of the two generators: the drive table, the key template and
// the flags that go with them.

#include <gtest/gtest.h>

#include <memory>

#include "driver/basibsgen.h"
#include "support/generator_probe.h"

namespace {

std::string const oneSignal = "| led | A1/0 | LVCMOS33_OUT | PA1 | DRIVE:8mA |";

class GeneratorSetup : public testing::Test {
protected:
    void SetUp() override { ts::resetGeneratorStatics(); }

    std::unique_ptr<IBIS_MODEL> construct(std::string const& partType, char const* family = "KVA3")
    {
        std::string pad = dir.file("design.pad");
        ts::writeFile(pad, ts::padReport(partType, {oneSignal}));
        std::unique_ptr<IBIS_MODEL> model;
        ts::captureStdout([&] {
            model.reset(new IBIS_MODEL(family, pad.c_str(), dir.file("master.ibs").c_str()));
        });
        return model;
    }

    std::map<std::string, std::string> drive(std::string const& partType)
    {
        return construct(partType)->_devIoMaps["DRIVE"];
    }

    ts::TempDir dir;
};

std::map<std::string, std::string> const baseDrive = {
    {"NA", "xxx"},   {"2mA", "020"},  {"4mA", "040"},  {"6mA", "060"},
    {"8mA", "080"},  {"12mA", "120"}, {"16mA", "160"}, {"20mA", "200"},
};

std::map<std::string, std::string> with(std::map<std::string, std::string> table,
                                        std::map<std::string, std::string> const& extra)
{
    for (auto const& row : extra)
        table[row.first] = row.second;
    return table;
}

TEST_F(GeneratorSetup, DriveTableFollowsThePartNameFragments)
{
    // "KVA3-40E" reduces to "A3": 10mA.
    EXPECT_EQ(drive("KVA3-40E-6BG256C"), with(baseDrive, {{"10mA", "100"}}));
    // "HZU2-..." keeps its name: 24mA for HZU2, 14mA for HZU.
    EXPECT_EQ(drive("HZU2-4000HC"), with(baseDrive, {{"24mA", "240"}, {"14mA", "140"}}));
    // KRD stands in for HZU; KRDH2 gives 24mA.
    EXPECT_EQ(drive("KRDH21-100"), with(baseDrive, {{"24mA", "240"}, {"14mA", "140"}}));
    EXPECT_EQ(drive("KRDH10-100"), with(baseDrive, {{"14mA", "140"}}));
    EXPECT_EQ(drive("KVZR-12"), baseDrive) << "ZR";
}

TEST_F(GeneratorSetup, Hzu3At24mAOnlyBehindTheStart)
{
    EXPECT_EQ(drive("HZU3-100"), with(baseDrive, {{"14mA", "140"}}));
    EXPECT_EQ(drive("XHZU3-100"), with(baseDrive, {{"24mA", "240"}, {"14mA", "140"}}));
}

TEST_F(GeneratorSetup, FragmentSearchSeesBehindTheNulOfThePartName)
{
    // Reduced to "A3" with "-A4X" stored behind the NUL: the A4 behind it
    // still adds 24mA.
    auto model = construct("KVA3-A4X");
    EXPECT_STREQ(model->_partName.c_str(), "A3");
    EXPECT_EQ(model->_devIoMaps["DRIVE"], with(baseDrive, {{"10mA", "100"}, {"24mA", "240"}}));
}

TEST_F(GeneratorSetup, KnownPartGetsTemplateAndFlags)
{
    auto model = construct("KVA3-40E-6BG256C");
    EXPECT_STREQ(model->_modelKeyTemplate, "lvc250axxxaaaaaaaaio");
    for (int position = 0; position < 21; ++position)
        EXPECT_EQ(model->_keyFieldPresent[position],
                  position == 7 || position == 18 || position == 19)
            << position;
    EXPECT_EQ(model->_pullmodeIotypes, (std::set<std::string>{"AGP", "LVCMOS", "LVTTL", "PCI"}));
    EXPECT_EQ(model->_missingModelCount, 0);
    EXPECT_EQ(model->_family, "KVA3");
}

TEST_F(GeneratorSetup, UnknownPartLeavesDriveTableAndTemplateUnset)
{
    auto model = construct("XYZ-100");
    EXPECT_EQ(model->_devIoMaps.count("DRIVE"), 0u);
    EXPECT_STREQ(model->_modelKeyTemplate, "");
    EXPECT_FALSE(model->_keyFieldPresent[7]);
    EXPECT_TRUE(model->_keyFieldPresent[18]);
    EXPECT_TRUE(model->_keyFieldPresent[19]);
}

TEST_F(GeneratorSetup, PadReportWithoutSignalsEndsTheRun)
{
    std::string pad = dir.file("empty.pad");
    ts::writeFile(pad, "title\nPART TYPE: KVA3-40E\nno pin table here\n");
    EXPECT_EXIT(
        {
            ts::stdoutToStderr();
            IBIS_MODEL model("KVA3", pad.c_str(), "m.ibs");
        },
        testing::ExitedWithCode(2),
        "Failed to load Iobuf information from the pad file .*/empty.pad.\n");
}

class RecordingGen : public IBS_GEN {
public:
    void loadPcsInfo() override { calls += "pcs;"; }
    void loadPinInfo() override { calls += "pin;"; }
    void loadBankInfo() override { calls += "bank;"; }
    void loadDiffPinInfo() override { calls += "diff;"; }
    void loadSysConfigPinInfo() override { calls += "sysconfig;"; }
    void getDphyInfo() override { calls += "dphy;"; }
    void setPartType() override { calls += "part;"; }
    using IBS_GEN::loadBankInfo;
    using IBS_GEN::loadDiffPinInfo;
    using IBS_GEN::loadPinInfo;
    using IBS_GEN::loadSysConfigPinInfo;
    using IBS_GEN::setPartType;
    std::string calls;
};

TEST_F(GeneratorSetup, InitReadsTheDatabaseInOrderAndBuildsTheNumericDriveTable)
{
    NC_DESIGN design("KVA3-40E-6BG256C", "CABGA256");
    RecordingGen gen;
    gen.init("KVA3", &design, "work/design.udb", "lib/kva3.ibs");
    EXPECT_EQ(gen.calls, "part;pin;bank;diff;sysconfig;dphy;");
    EXPECT_EQ(gen._design, &design);
    EXPECT_EQ(gen._packageName, "CABGA256");
    EXPECT_EQ(gen._packagePinCount, "256");
    EXPECT_EQ(gen._designIbisFile, "work/design.ibs");

    auto const& drive = gen._devIoMaps["DRIVE"];
    EXPECT_EQ(drive.size(), 24u);
    EXPECT_EQ(drive.at("NA"), "xxx");
    EXPECT_EQ(drive.at("2"), "020");
    EXPECT_EQ(drive.at("9"), "090");
    EXPECT_EQ(drive.at("24"), "240");
    EXPECT_EQ(drive.count("1"), 0u);
    EXPECT_EQ(drive.count("25"), 0u);
    EXPECT_STREQ(gen._modelKeyTemplate, "lvc250axxxaaaaaaaaio");
    EXPECT_TRUE(gen._keyFieldPresent[7] && gen._keyFieldPresent[18] && gen._keyFieldPresent[19]);
    EXPECT_EQ(gen._pullmodeIotypes.size(), 4u);
}

TEST_F(GeneratorSetup, IbsGenSetPartTypeReducesTheDeviceName)
{
    NC_DESIGN design("KVA3-40E-6BG256C", "CABGA256");
    IBS_GEN gen;
    gen._design = &design;
    gen.setPartType();
    EXPECT_STREQ(gen._partName.c_str(), "A3");
    EXPECT_EQ(gen._partName.size(), 14u);
}

TEST_F(GeneratorSetup, PackagePinCountIsTheFirstDigitGroupFromIndexTwo)
{
    struct Case {
        char const* package;
        char const* pins;
    } const cases[] = {
        {"CABGA256", "256"}, {"BG381X12", "381"}, {"12CSFBGA285", "285"},
        {"C9", ""},          {"CSFBGA", ""},      {"A1B22C333", "22"},
    };
    for (Case const& c : cases) {
        NC_DESIGN design("KVA3-40E", c.package);
        IBS_GEN gen;
        gen._design = &design;
        gen.setPackage();
        EXPECT_EQ(gen._packageName, c.package);
        EXPECT_EQ(gen._packagePinCount, c.pins) << c.package;
    }
}

} // namespace
