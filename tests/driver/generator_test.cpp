// The exported class frame (virtual slots, member order) and the set-up of the two generators:
// the drive table, the key template and the flags that go with them.

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <memory>

#include "driver/basibsgen.h"
#include "support/generator_probe.h"

namespace {

using S = std::string;
using Map = std::map<S, S>;

// Slot index of a virtual member function: in the Itanium C++ ABI a pointer to a virtual member
// holds its vtable offset plus one.
template <class MemberFn>
std::ptrdiff_t slotOf(MemberFn fn)
{
    struct { std::uintptr_t ptr; std::ptrdiff_t adj; } rep;
    static_assert(sizeof(MemberFn) == sizeof rep, "Itanium member function pointer");
    std::memcpy(&rep, &fn, sizeof rep);
    EXPECT_EQ(rep.ptr % 2, 1u) << "not a virtual function";
    return static_cast<std::ptrdiff_t>((rep.ptr - 1) / sizeof(void*));
}

TEST(ClassFrame, VirtualSlotsAndMembersInDeclaredOrder)
{
    using M = IBIS_MODEL;
    using G = IBS_GEN;
    using Line = void (M::*)(char*);
    using Done = bool (M::*)();
    using Load = void (G::*)();
    // Slots 1 and 2 are the destructors; IBS_GEN appends its loaders and keeps the base slots.
    std::vector<std::ptrdiff_t> const slots = {
        slotOf(&M::keepOutAsOu), slotOf(&M::initFiles), slotOf(static_cast<Done>(&M::loadIos)),
        slotOf(static_cast<Line>(&M::setPartType)), slotOf(static_cast<Line>(&M::loadPinInfo)),
        slotOf(static_cast<Line>(&M::loadDiffPinInfo)), slotOf(static_cast<Line>(&M::loadBankInfo)),
        slotOf(static_cast<Line>(&M::loadSysConfigPinInfo)), slotOf(&M::hasDoneLoadingIoMaps), slotOf(&M::getVoltage),
        slotOf(&M::loadIbisModels), slotOf(&M::loadAvailableModels), slotOf(static_cast<Done>(&M::loadDevIoMaps)),
        slotOf(&M::setDesignModels), slotOf(&G::get_pio_property), slotOf(static_cast<Load>(&G::loadPinInfo)),
        slotOf(static_cast<Load>(&G::loadDiffPinInfo)), slotOf(static_cast<Load>(&G::loadBankInfo)),
        slotOf(static_cast<Load>(&G::loadSysConfigPinInfo)), slotOf(&G::loadPcsInfo), slotOf(&G::getDphyInfo),
        slotOf(static_cast<Load>(&G::setPartType)), slotOf(&G::initFiles),
        slotOf(static_cast<bool (G::*)()>(&G::loadIos))};
    EXPECT_EQ(slots, (std::vector<std::ptrdiff_t>{0, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15,
                                                  16, 17, 18, 19, 20, 21, 22, 23, 3, 4}));

    G g;
    auto at = [](auto const& member) { return reinterpret_cast<char const*>(&member); };
    char const* const members[] = {
        at(g._missingModelCount), at(g._keyFieldPresent), at(g._modelKeyTemplate), at(g._masterIbisFile),
        at(g._padFile), at(g._designIbisFile), at(g._deviceStatus), at(g._padStream), at(g._masterStream),
        at(g._statusStream), at(g._designStream), at(g._iobufs), at(g._amiIobufs), at(g._devIoMaps), at(g._family),
        at(g._partName), at(g._packageName), at(g._packagePinCount), at(g._pinTablePending), at(g._designModels),
        at(g._availableModels), at(g._componentName), at(g._pullmodeIotypes), at(g._diffPinMap), at(g._modelPinMap),
        at(g._bankVccio), at(g._pinTableColumns), at(g._ioMapFound), at(g._design), at(g._designFile),
        at(g._amiRxExecutable), at(g._amiTxExecutable), at(g._amiRxParameterFile), at(g._amiTxParameterFile),
        at(g._designBaseName)};
    for (size_t i = 1; i < sizeof members / sizeof members[0]; ++i)
        EXPECT_LT(members[i - 1], members[i]) << "member " << i;
}

class GeneratorSetup : public testing::Test {
protected:
    void SetUp() override { ts::resetGeneratorStatics(); }
    std::unique_ptr<IBIS_MODEL> construct(S const& partType)
    {
        ts::writeFile(dir.file("design.pad"), ts::padReport(partType, {"| led | A1/0 | LVCMOS33_OUT | PA1 | X |"}));
        std::unique_ptr<IBIS_MODEL> model;
        ts::captureStdout([&] { model.reset(new IBIS_MODEL("KVA3", dir.file("design.pad").c_str(), "master.ibs")); });
        return model;
    }
    ts::TempDir dir;
};

TEST_F(GeneratorSetup, DriveTableFollowsThePartNameFragments)
{
    Map const base = {{"NA", "xxx"}, {"2mA", "020"}, {"4mA", "040"}, {"6mA", "060"},
                      {"8mA", "080"}, {"12mA", "120"}, {"16mA", "160"}, {"20mA", "200"}};
    auto with = [&](Map const& extra) { Map table = base; table.insert(extra.begin(), extra.end()); return table; };
    // "KVA3-40E" reduces to "A3": 10mA. HZU and KRD names keep their prefix: 14mA, and 24mA for
    // HZU2 and KRDH2. HZU3 gives 24mA only behind the start. The search sees behind the NUL:
    // "KVA3-A4X" reduces to "A3" and its "A4" still adds 24mA. A KVA4 name holds but the plain "A".
    std::pair<char const*, Map> const cases[] = {
        {"KVA3-40E-6BG256C", with({{"10mA", "100"}})}, {"HZU2-4000HC", with({{"24mA", "240"}, {"14mA", "140"}})},
        {"KRDH21-100", with({{"24mA", "240"}, {"14mA", "140"}})}, {"KRDH10-100", with({{"14mA", "140"}})},
        {"KVZR-12", base}, {"HZU3-100", with({{"14mA", "140"}})},
        {"XHZU3-100", with({{"24mA", "240"}, {"14mA", "140"}})},
        {"KVA3-A4X", with({{"10mA", "100"}, {"24mA", "240"}})}, {"KVA4-25F", with({{"24mA", "240"}})}};
    for (auto const& c : cases)
        EXPECT_EQ(construct(c.first)->_devIoMaps["DRIVE"], c.second) << c.first;
}

TEST_F(GeneratorSetup, TemplateAndFlagsOnlyForAKnownPart)
{
    auto model = construct("KVA3-40E-6BG256C");
    EXPECT_STREQ(model->_partName.c_str(), "A3");
    EXPECT_STREQ(model->_modelKeyTemplate, "lvc250axxxaaaaaaaaio");
    for (int position = 0; position < 21; ++position)
        EXPECT_EQ(model->_keyFieldPresent[position], position == 7 || position == 18 || position == 19) << position;
    EXPECT_EQ(model->_pullmodeIotypes, (std::set<S>{"AGP", "LVCMOS", "LVTTL", "PCI"}));

    model = construct("XYZ-100");
    EXPECT_EQ(model->_devIoMaps.count("DRIVE"), 0u);
    EXPECT_STREQ(model->_modelKeyTemplate, "");
    EXPECT_TRUE(!model->_keyFieldPresent[7] && model->_keyFieldPresent[18] && model->_keyFieldPresent[19]);

    ts::writeFile(dir.file("empty.pad"), "title\nPART TYPE: KVA3-40E\nno pin table here\n");
    EXPECT_EXIT((ts::stdoutToStderr(), IBIS_MODEL("KVA3", dir.file("empty.pad").c_str(), "m.ibs")),
                testing::ExitedWithCode(2), "^Failed to load Iobuf information from the pad file .*/empty.pad.\n$");
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
    S calls;
};

TEST_F(GeneratorSetup, InitReadsTheDatabaseInOrderWithANumericDriveTable)
{
    NC_DESIGN design("KVA3-40E-6BG256C", "CABGA256");
    RecordingGen gen;
    gen.init("KVA3", &design, "work/design.udb", "lib/kva3.ibs");
    EXPECT_EQ(gen.calls, "part;pin;bank;diff;sysconfig;dphy;");
    EXPECT_EQ(gen._packageName, "CABGA256");
    EXPECT_EQ(gen._packagePinCount, "256");
    EXPECT_EQ(gen._designIbisFile, "work/design.ibs");
    Map const& drive = gen._devIoMaps["DRIVE"];
    EXPECT_EQ(drive.size(), 24u);
    EXPECT_EQ((std::vector<S>{drive.at("NA"), drive.at("2"), drive.at("9"), drive.at("24")}),
              (std::vector<S>{"xxx", "020", "090", "240"}));
    EXPECT_EQ(drive.count("1") + drive.count("25"), 0u);
    EXPECT_STREQ(gen._modelKeyTemplate, "lvc250axxxaaaaaaaaio");
    EXPECT_TRUE(gen._keyFieldPresent[7] && gen._keyFieldPresent[18] && gen._keyFieldPresent[19]);

    IBS_GEN plain; // its own setPartType reduces the device name, NUL and all
    plain._design = &design;
    plain.setPartType();
    EXPECT_STREQ(plain._partName.c_str(), "A3");
    EXPECT_EQ(plain._partName.size(), 14u);

    // The pin count is the first digit group from index 2 on.
    for (auto const& c : std::vector<std::pair<char const*, char const*>>{{"CABGA256", "256"}, {"BG381X12", "381"},
             {"12CSFBGA285", "285"}, {"C9", ""}, {"CSFBGA", ""}, {"A1B22C333", "22"}}) {
        NC_DESIGN other("KVA3-40E", c.first);
        plain._design = &other;
        plain.setPackage();
        EXPECT_EQ(plain._packageName, c.first);
        EXPECT_EQ(plain._packagePinCount, c.second) << c.first;
    }
}

} // namespace
