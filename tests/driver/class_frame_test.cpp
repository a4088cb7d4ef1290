// The exported class frame: virtual slots, member order, static flags.

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>

#include "driver/basibsgen.h"
#include "support/generator_probe.h"

namespace {

// Slot index of a virtual member function: in the Itanium C++ ABI a pointer
// to a virtual member holds its vtable offset plus one.
template <class MemberFn>
std::ptrdiff_t slotOf(MemberFn fn)
{
    struct {
        std::uintptr_t ptr;
        std::ptrdiff_t adj;
    } rep;
    static_assert(sizeof(MemberFn) == sizeof rep, "Itanium member function pointer");
    std::memcpy(&rep, &fn, sizeof rep);
    EXPECT_EQ(rep.ptr % 2, 1u) << "not a virtual function";
    return static_cast<std::ptrdiff_t>((rep.ptr - 1) / sizeof(void*));
}

TEST(ClassFrame, VirtualSlotsOfIbisModelInOrder)
{
    using M = IBIS_MODEL;
    EXPECT_EQ(slotOf(&M::keepOutAsOu), 0);
    // Slots 1 and 2: the destructor and the deleting destructor.
    EXPECT_EQ(slotOf(&M::initFiles), 3);
    EXPECT_EQ(slotOf(static_cast<bool (M::*)()>(&M::loadIos)), 4);
    EXPECT_EQ(slotOf(static_cast<void (M::*)(char*)>(&M::setPartType)), 5);
    EXPECT_EQ(slotOf(static_cast<void (M::*)(char*)>(&M::loadPinInfo)), 6);
    EXPECT_EQ(slotOf(static_cast<void (M::*)(char*)>(&M::loadDiffPinInfo)), 7);
    EXPECT_EQ(slotOf(static_cast<void (M::*)(char*)>(&M::loadBankInfo)), 8);
    EXPECT_EQ(slotOf(static_cast<void (M::*)(char*)>(&M::loadSysConfigPinInfo)), 9);
    EXPECT_EQ(slotOf(&M::hasDoneLoadingIoMaps), 10);
    EXPECT_EQ(slotOf(&M::getVoltage), 11);
    EXPECT_EQ(slotOf(&M::loadIbisModels), 12);
    EXPECT_EQ(slotOf(&M::loadAvailableModels), 13);
    EXPECT_EQ(slotOf(static_cast<bool (M::*)()>(&M::loadDevIoMaps)), 14);
    EXPECT_EQ(slotOf(&M::setDesignModels), 15);
}

TEST(ClassFrame, IbsGenAppendsItsLoadersBehindTheBaseSlots)
{
    using G = IBS_GEN;
    EXPECT_EQ(slotOf(&G::get_pio_property), 16);
    EXPECT_EQ(slotOf(static_cast<void (G::*)()>(&G::loadPinInfo)), 17);
    EXPECT_EQ(slotOf(static_cast<void (G::*)()>(&G::loadDiffPinInfo)), 18);
    EXPECT_EQ(slotOf(static_cast<void (G::*)()>(&G::loadBankInfo)), 19);
    EXPECT_EQ(slotOf(static_cast<void (G::*)()>(&G::loadSysConfigPinInfo)), 20);
    EXPECT_EQ(slotOf(&G::loadPcsInfo), 21);
    EXPECT_EQ(slotOf(&G::getDphyInfo), 22);
    EXPECT_EQ(slotOf(static_cast<void (G::*)()>(&G::setPartType)), 23);
    // Its overrides keep the base slots.
    EXPECT_EQ(slotOf(static_cast<bool (G::*)()>(&G::loadIos)), 4);
    EXPECT_EQ(slotOf(&G::initFiles), 3);
}

template <class A, class B>
bool before(A const& a, B const& b)
{
    return reinterpret_cast<char const*>(&a) < reinterpret_cast<char const*>(&b);
}

TEST(ClassFrame, MembersStandInDeclaredOrder)
{
    IBS_GEN g;
    EXPECT_TRUE(before(g._missingModelCount, g._keyFieldPresent));
    EXPECT_TRUE(before(g._keyFieldPresent, g._modelKeyTemplate));
    EXPECT_TRUE(before(g._modelKeyTemplate, g._masterIbisFile));
    EXPECT_TRUE(before(g._masterIbisFile, g._padFile));
    EXPECT_TRUE(before(g._padFile, g._designIbisFile));
    EXPECT_TRUE(before(g._designIbisFile, g._deviceStatus));
    EXPECT_TRUE(before(g._deviceStatus, g._padStream));
    EXPECT_TRUE(before(g._padStream, g._masterStream));
    EXPECT_TRUE(before(g._masterStream, g._statusStream));
    EXPECT_TRUE(before(g._statusStream, g._designStream));
    EXPECT_TRUE(before(g._designStream, g._iobufs));
    EXPECT_TRUE(before(g._iobufs, g._amiIobufs));
    EXPECT_TRUE(before(g._amiIobufs, g._devIoMaps));
    EXPECT_TRUE(before(g._devIoMaps, g._family));
    EXPECT_TRUE(before(g._family, g._partName));
    EXPECT_TRUE(before(g._partName, g._packageName));
    EXPECT_TRUE(before(g._packageName, g._packagePinCount));
    EXPECT_TRUE(before(g._packagePinCount, g._pinTablePending));
    EXPECT_TRUE(before(g._pinTablePending, g._designModels));
    EXPECT_TRUE(before(g._designModels, g._availableModels));
    EXPECT_TRUE(before(g._availableModels, g._componentName));
    EXPECT_TRUE(before(g._componentName, g._pullmodeIotypes));
    EXPECT_TRUE(before(g._pullmodeIotypes, g._diffPinMap));
    EXPECT_TRUE(before(g._diffPinMap, g._modelPinMap));
    EXPECT_TRUE(before(g._modelPinMap, g._bankVccio));
    EXPECT_TRUE(before(g._bankVccio, g._pinTableColumns));
    EXPECT_TRUE(before(g._pinTableColumns, g._ioMapFound));
    EXPECT_TRUE(before(g._ioMapFound, g._design));
    EXPECT_TRUE(before(g._design, g._designFile));
    EXPECT_TRUE(before(g._designFile, g._amiRxExecutable));
    EXPECT_TRUE(before(g._amiRxExecutable, g._amiTxExecutable));
    EXPECT_TRUE(before(g._amiTxExecutable, g._amiRxParameterFile));
    EXPECT_TRUE(before(g._amiRxParameterFile, g._amiTxParameterFile));
    EXPECT_TRUE(before(g._amiTxParameterFile, g._designBaseName));
}

TEST(ClassFrame, DefaultConstructionBuildsEmptyMembersOnly)
{
    IBS_GEN g;
    EXPECT_EQ(g._missingModelCount, 0);
    EXPECT_FALSE(g._pinTablePending);
    EXPECT_EQ(g._pinTableColumns, 0);
    EXPECT_STREQ(g._modelKeyTemplate, "");
    for (bool flag : g._keyFieldPresent)
        EXPECT_FALSE(flag);
    EXPECT_TRUE(g._devIoMaps.empty());
    EXPECT_TRUE(g._pullmodeIotypes.empty());
    EXPECT_EQ(g._design, nullptr);
}

TEST(ClassFrame, GetDirName)
{
    IBS_GEN g;
    EXPECT_STREQ(g.get_dir_name(CM_PAD_DIRECTION_IN), "IN");
    EXPECT_STREQ(g.get_dir_name(CM_PAD_DIRECTION_OUT), "OUT");
    EXPECT_STREQ(g.get_dir_name(CM_PAD_DIRECTION_NONE), "BIDI");
    EXPECT_STREQ(g.get_dir_name(CM_PAD_DIRECTION_BIDI), "BIDI");
    EXPECT_STREQ(g.get_dir_name(static_cast<CM_PAD_DIRECTION_TYPE>(7)), "BIDI");
}

} // namespace
