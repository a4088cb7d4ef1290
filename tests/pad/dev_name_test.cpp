// Device identification: family from the part type, and the reduced part
// name with its NUL.

#include <gtest/gtest.h>

#include "driver/basibsgen.h"
#include "host/msgmanager.h"
#include "support/generator_probe.h"

namespace {

std::string familyOf(std::string const& partType)
{
    std::string family = "unchanged";
    IBIS_MODEL::fetch_dev_name(partType, family);
    return family;
}

TEST(FetchDevName, FirstRuleThatHoldsWins)
{
    EXPECT_EQ(familyOf("KVZR2-12"), "KVZR2");
    EXPECT_EQ(familyOf("KVA3-ZR2-40"), "KVZR2") << "ZR2- beats every other rule";
    EXPECT_EQ(familyOf("KVA3-40E-6BG256C"), "KVA3");
    EXPECT_EQ(familyOf("KBA3-70E"), "KVA3");
    EXPECT_EQ(familyOf("KVA4-25F"), "KVA4");
    EXPECT_EQ(familyOf("KVAN-100"), "KVAN");
    EXPECT_EQ(familyOf("KVZR-12"), "KVZR");
    EXPECT_EQ(familyOf("HZU2-4000"), "HZU2");
    EXPECT_EQ(familyOf("HZU3-100"), "HZU2") << "HZU2 serves the HZU3 parts";
    EXPECT_EQ(familyOf("HZU2X"), "HZU") << "HZU2 needs its dash";
    EXPECT_EQ(familyOf("HZU-1200"), "HZU");
    EXPECT_EQ(familyOf("KVTN-7"), "KVTN");
    EXPECT_EQ(familyOf("KVA2-300"), "KVA2");
    EXPECT_EQ(familyOf("KRDH21-100"), "HZU2");
    EXPECT_EQ(familyOf("KRDH10-100"), "HZU");
    EXPECT_EQ(familyOf("KJ5-25"), "KJ");
    EXPECT_EQ(familyOf("KVA3KVA4-9"), "KVA4") << "KVA3 without its dash does not count";
}

TEST(FetchDevName, KjOnlyAtTheStartAndUnknownIsFatal)
{
    EXPECT_EXIT(
        {
            ts::stdoutToStderr();
            familyOf("XKJ5-25");
        },
        testing::ExitedWithCode(1), "^Invalid device name.\n$");
    EXPECT_EXIT(
        {
            ts::stdoutToStderr();
            familyOf("KVA4Y-40");
        },
        testing::ExitedWithCode(1), "Invalid device name.");
    EXPECT_EXIT(
        {
            UT_MSGMAN::m_msgFlow = 1;
            familyOf("");
        },
        testing::ExitedWithCode(1), "^padmodel-1013\n$");
}

struct Reduced {
    std::string visible;
    std::string stored;
};

Reduced reduce(std::string part)
{
    ts::ProbeModel model;
    model.getPartName(part);
    return {part.c_str(), part};
}

TEST(GetPartName, DigitAheadOfDashStaysAndTheRestHidesBehindANul)
{
    Reduced r = reduce("KVA3-40E-6BG256C");
    EXPECT_EQ(r.visible, "A3");
    EXPECT_EQ(r.stored, std::string("A3\0" "40E-6BG256C", 14)) << "the NUL takes the dash's place";
    EXPECT_NE(r.stored.find("40E"), std::string::npos) << "searches still see behind the NUL";
}

TEST(GetPartName, OtherDigitGoesAndCutsTheSize)
{
    Reduced r = reduce("LCVN40-7");
    EXPECT_EQ(r.visible, "N");
    EXPECT_EQ(r.stored, std::string("N\0" "0-7", 5));
    EXPECT_EQ(reduce("KVA9").visible, "A") << "a last digit goes too";
    EXPECT_EQ(reduce("KVA9").stored.size(), 2u);
}

TEST(GetPartName, NamesLeftAsTheyStand)
{
    EXPECT_EQ(reduce("HZU2-4000HC").stored, "HZU2-4000HC") << "no V";
    EXPECT_EQ(reduce("KRDH21-100").stored, "KRDH21-100");
    EXPECT_EQ(reduce("KJ5V-25").stored, "KJ5V-25") << "KJ anywhere";
    EXPECT_EQ(reduce("XZU3KV9-1").stored, "XZU3KV9-1");
    EXPECT_EQ(reduce("KAV").stored, "") << "nothing behind the last V";
    EXPECT_EQ(reduce("KVAXE").stored, "AXE") << "no digit behind the V";
}

TEST(GetPartName, MorvalleFamilies)
{
    for (char const* part : {"KVA4Y-40", "KBA4Y-12", "KVA5Y-80", "KBA5Y-3"})
        EXPECT_EQ(reduce(part).stored, "MORVALLE") << part;
    EXPECT_EQ(reduce("XKVA4Y-40").visible, "A") << "only at the start";
}

class GetDevName : public testing::Test {
protected:
    void SetUp() override { ts::resetGeneratorStatics(); }
    std::string family(std::string const& text, std::string start = "")
    {
        std::string path = dir.file("d.pad");
        ts::writeFile(path, text);
        IBIS_MODEL::getDevName(path, start);
        return start;
    }
    ts::TempDir dir;
};

TEST_F(GetDevName, ThirdTokenOfThePartTypeLine)
{
    EXPECT_EQ(family("title\nDate\nPART TYPE:   KVA3-40E-6BG256C  extra\n"), "KVA3");
    EXPECT_EQ(IBIS_MODEL::_input_dev_name, "KVA3-40E-6BG256C");
}

TEST_F(GetDevName, FirstLineIsNeverSearchedAndTheKeywordIsCaseSensitive)
{
    EXPECT_EQ(family("PART TYPE: KVA2-1\nPart Type: KVA3-40E\n", "kept"), "kept");
    EXPECT_EQ(IBIS_MODEL::_input_dev_name, "");
}

TEST_F(GetDevName, FirstPartTypeLineWins)
{
    EXPECT_EQ(family("t\nPART TYPE: KVA2-1\nPART TYPE: KVA3-40E\n"), "KVA2");
}

TEST_F(GetDevName, OverLongLineEndsTheSearchWithoutHanging)
{
    std::string longLine(300, 'x');
    EXPECT_EQ(family("t\n" + longLine + "\nPART TYPE: KVA3-40E\n", "kept"), "kept");
}

TEST_F(GetDevName, LastLineWithoutLineEndIsStillSearched)
{
    EXPECT_EQ(family("t\nPART TYPE: KVZR-12"), "KVZR");
}

TEST_F(GetDevName, FatalPaths)
{
    EXPECT_EXIT(
        {
            ts::stdoutToStderr();
            std::string f;
            IBIS_MODEL::getDevName("design.txt", f);
        },
        testing::ExitedWithCode(2), "^ERROR: report file design.txt should have .pad extension.\n$");
    EXPECT_EXIT(
        {
            ts::stdoutToStderr();
            std::string f;
            IBIS_MODEL::getDevName(dir.file("absent.pad"), f);
        },
        testing::ExitedWithCode(1), "^Error opening file: .*/absent.pad\n$");
    EXPECT_EXIT(
        {
            UT_MSGMAN::m_msgFlow = 1;
            std::string f;
            IBIS_MODEL::getDevName("x.pad.gone", f);
        },
        testing::ExitedWithCode(1), "^padmodel-1015\tx.pad.gone\n$");
}

} // namespace
