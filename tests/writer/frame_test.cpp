// The frame of the design IBIS file: the banner, the preamble copied from the
// master file, the two shared helpers, and the whole flow of writeIbisModels
// with its naming of the design file and of the companion files.

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include "writer/writer_probe.h"

namespace {

// ---------------------------------------------------------------- banner --

class Banner : public testing::Test {
protected:
    void SetUp() override { ts::resetGeneratorStatics(); }

    // The banner written with the given version text (nullopt: the host has
    // none to give).
    std::string bannerWith(std::optional<std::string> const& version)
    {
        wt::ScopedEnv date("SOURCE_DATE_EPOCH", std::string("1700000000"));
        wt::ScopedEnv text("PAD2IBIS_VERSION_TEXT", version ? *version : std::string());
        wt::DesignProbe probe;
        probe.openDesign();
        probe.writeIbisHeaderInformations();
        return probe.design();
    }

    std::string const star = wt::separator;
    std::string const date = "| Generate date: Tue Nov 14 22:13:20 2023\n";
};

TEST_F(Banner, StarLineGeneratorLineAndDateWithNoClosingStarLine)
{
    EXPECT_EQ(bannerWith(std::string("test")),
              star + "| IBIS Models Generator: Corvane test\n" + date);
}

TEST_F(Banner, WithoutVersionTextTheGeneratorLineNamesTheMakerOnly)
{
    EXPECT_EQ(bannerWith(std::nullopt), star + "| Corvane IBIS Models Generator\n" + date);
}

TEST_F(Banner, VersionOf47CharactersStaysOnOneLineEvenWithPatch)
{
    std::string version = "2026.2.0.118 Patch 2 for the Corvane suite, x64";
    ASSERT_EQ(version.size(), 47u);
    EXPECT_EQ(bannerWith(version), star + "| IBIS Models Generator: Corvane " + version + "\n" + date);
}

TEST_F(Banner, VersionOf48CharactersWithoutPatchTakesTwoLines)
{
    std::string version = "2026.2.0.118 build 7 for the Corvane suite, x64.";
    ASSERT_EQ(version.size(), 48u);
    EXPECT_EQ(bannerWith(version), star + "| IBIS Models Generator:\n| " + version + "\n" + date);
}

TEST_F(Banner, PatchOnlyCountsInThatSpelling)
{
    std::string version = "2026.2.0.118 Corvane Design Suite for Linux hosts patch 3";
    EXPECT_EQ(bannerWith(version), star + "| IBIS Models Generator:\n| " + version + "\n" + date);
}

TEST_F(Banner, PatchAtTheStartTakesTheFormWithoutTheMakersWord)
{
    std::string version = "Patch 7 for 2026.2.0.118 Corvane Design Suite on Linux";
    ASSERT_GT(version.size(), 47u);
    EXPECT_EQ(bannerWith(version), star + "| IBIS Models Generator:\n| " + version + "\n" + date);
}

TEST_F(Banner, PatchFurtherOnSplitsTheVersionAndDropsTheCharacterAheadOfIt)
{
    std::string version = "2026.2.0.118 Corvane Design Suite for Linux hosts_Patch 3 rev 2";
    ASSERT_GT(version.size(), 47u);
    EXPECT_EQ(bannerWith(version),
              star + "| IBIS Models Generator: Corvane 2026.2.0.118 Corvane Design Suite for Linux hosts\n" +
                  "|                        Patch 3 rev 2\n" + date);
}

TEST_F(Banner, PatchRightAfterTheFirstCharacter)
{
    std::string version = "xPatch 12 of the 2026.2.0.118 Corvane Design Suite, Linux";
    EXPECT_EQ(bannerWith(version), star + "| IBIS Models Generator: Corvane \n" +
                                       "|                        Patch 12 of the 2026.2.0.118 Corvane Design Suite, Linux\n" +
                                       date);
}

// --------------------------------------------------------------- helpers --

TEST(SharedHelpers, EatCommentCharacterCutsAtTheFirstBar)
{
    ts::ProbeModel probe;
    std::string text = "R_pkg 1 2 3 | note | more";
    probe.eat_comment_character(text);
    EXPECT_EQ(text, "R_pkg 1 2 3 ");
    text = "| a comment";
    probe.eat_comment_character(text);
    EXPECT_EQ(text, "");
    text = "no comment here";
    probe.eat_comment_character(text);
    EXPECT_EQ(text, "no comment here");
    text = "";
    probe.eat_comment_character(text);
    EXPECT_EQ(text, "");
}

TEST(SharedHelpers, SectionSeparatorIsABarAnd72Stars)
{
    wt::DesignProbe probe;
    probe.openDesign();
    probe.writeSectionSeperator();
    probe.writeSectionSeperator();
    EXPECT_EQ(probe.design(), "|" + std::string(72, '*') + "\n|" + std::string(72, '*') + "\n");
}

// -------------------------------------------------------------- preamble --

class Preamble : public testing::Test {
protected:
    void SetUp() override { ts::resetGeneratorStatics(); }
    void TearDown() override { ts::resetGeneratorStatics(); }

    // Writes the preamble of master; leaves the master stream where the
    // writer stopped.
    std::string preambleOf(std::string const& master)
    {
        probe.openMaster(master);
        probe.openDesign();
        probe.writeIbisCopyRights();
        return probe.design();
    }

    wt::DesignProbe probe;
};

TEST_F(Preamble, CopiesUpToThePackageLineAndStopsBehindIt)
{
    std::string head = "[IBIS Ver]      5.0\n"
                       "[Date]          March 3, 2026\n"
                       "\n"
                       "[Notes]         Library of the family.\n"
                       "|  trailing blanks stay   \n"
                       "[Component]     KVANR3-40E\n";
    EXPECT_EQ(preambleOf(head + "[Package]\n| variable typ\n|CABGA256\n"), head);
    EXPECT_EQ(probe.nextMasterLine(), "| variable typ") << "the package writer goes on from here";
}

TEST_F(Preamble, PackageWordAtPositionsZeroToThreeOfTheCommentFreeTextEndsIt)
{
    for (std::string line : {"[Package]", "package data below", "  [PACKAGE]", "Pk:PACKAGE", " [pAcKaGe] model",
                             "[Package Model] kx3", "abcPackage|comment"}) {
        std::string master = "[IBIS Ver] 5.0\n" + line + "\nafter\n[Package]\n";
        EXPECT_EQ(preambleOf(master), "[IBIS Ver] 5.0\n") << line;
        EXPECT_EQ(probe.nextMasterLine(), "after") << line;
    }
}

TEST_F(Preamble, PackageWordFurtherOnOrInACommentIsCopied)
{
    for (std::string line : {"abcdPACKAGE", "    [Package]", "[Notes]  packages are listed below", "| [Package]",
                             "|package", "   | package in a comment", "[Pin] signal | package"}) {
        std::string master = "[IBIS Ver] 5.0\n" + line + "\n[Package]\n";
        EXPECT_EQ(preambleOf(master), "[IBIS Ver] 5.0\n" + line + "\n") << line;
    }
}

TEST_F(Preamble, FileNameLineNamesTheDesignFile)
{
    probe.openMaster("[IBIS Ver] 5.0\n[File Name]     kx3_master.ibs\n[file name] again.ibs\n[Package]\n");
    probe.openDesign("board.ibs");
    probe.writeIbisCopyRights();
    EXPECT_EQ(probe.design(), "[IBIS Ver] 5.0\n[File Name]     board.ibs\n[File Name]     board.ibs\n");
}

TEST_F(Preamble, FileNameWithItsLastDotAtPosition40StaysWhole)
{
    std::string stem(40, 'n');
    stem.replace(0, 6, "board_");
    probe.openMaster("[IBIS Ver] 5.0\n[File Name] m.ibs\n[Package]\n");
    probe.openDesign(stem + ".ibs");
    probe.writeIbisCopyRights();
    EXPECT_EQ(probe.design(), "[IBIS Ver] 5.0\n[File Name]     " + stem + ".ibs\n");
}

TEST_F(Preamble, FileNameWithItsLastDotAtPosition41IsCutTo39CharactersAndATilde)
{
    std::string stem = "board_with_a_very_long_name_0123456789ABC";
    ASSERT_EQ(stem.size(), 41u);
    probe.openMaster("[IBIS Ver] 5.0\n[File Name] m.ibs\n[Package]\n");
    probe.openDesign(stem + ".ibs");
    probe.writeIbisCopyRights();
    EXPECT_EQ(probe.design(), "[IBIS Ver] 5.0\n[File Name]     board_with_a_very_long_name_0123456789A~.ibs\n");
}

TEST_F(Preamble, FileNameIsTakenBehindTheLastBackslashBeforeTheLastSlash)
{
    std::string master = "[IBIS Ver] 5.0\n[File Name] m.ibs\n[Package]\n";
    struct Case {
        char const* design;
        char const* shown;
    };
    for (Case c : {Case{"/work/IBIS/board.ibs", "board.ibs"}, Case{"C:\\work\\board.ibs", "board.ibs"},
                   Case{"board.ibs", "board.ibs"}, Case{"lib\\x/board.ibs", "x/board.ibs"}}) {
        probe.openMaster(master);
        probe._designStream.close();
        probe._designStream.clear();
        std::string out = probe.put("out.ibs", "");
        probe._designStream.open(out.c_str());
        probe._designIbisFile = c.design;
        probe.writeIbisCopyRights();
        probe._designStream.close();
        EXPECT_EQ(ts::readFile(out), "[IBIS Ver] 5.0\n[File Name]     " + std::string(c.shown) + "\n")
            << c.design;
    }
}

TEST_F(Preamble, BrinmarkFlowPutsTheDeviceStatusOnTheFirstDeviceLineAndDropsTheOthers)
{
    IBIS_MODEL::_is_brinmark_flow = true;
    probe._deviceStatus = "KVA3-40E-6BG256C     PRODUCTION     2026-06";
    std::string master = "[IBIS Ver] 5.0\n"
                         "[Notes]  Library.\n"
                         "         Device:   KX3 family\n"
                         "| Device: in a comment stays\n"
                         "         device:   second device line\n"
                         "  DEVICE: third\n"
                         "[Package]\n";
    EXPECT_EQ(preambleOf(master), "[IBIS Ver] 5.0\n"
                                  "[Notes]  Library.\n"
                                  "         KVA3-40E-6BG256C     PRODUCTION     2026-06\n"
                                  "| Device: in a comment stays\n");
}

TEST_F(Preamble, BrinmarkFlowWithoutStatusLeavesALineOfBlanks)
{
    IBIS_MODEL::_is_brinmark_flow = true;
    probe._deviceStatus = "";
    EXPECT_EQ(preambleOf("[IBIS Ver] 5.0\n    Device: KX3\n[Package]\n"), "[IBIS Ver] 5.0\n    \n");
}

TEST_F(Preamble, DeviceLinesAreCopiedOutsideTheBrinmarkFlow)
{
    probe._deviceStatus = "KVA3-40E-6BG256C     PRODUCTION";
    std::string lines = "[IBIS Ver] 5.0\n    Device: KX3\n    Device: more\n";
    EXPECT_EQ(preambleOf(lines + "[Package]\n"), lines);
}

TEST_F(Preamble, ZuTwoPartsNameThemselvesOnTheComponentLine)
{
    std::string master = "[IBIS Ver] 5.0\n"
                         "[Notes]  zu2 family\n"
                         "| zu2 component data\n"
                         "[Component]     ZU2-40E\n"
                         "[Manufacturer]  Corvane\n"
                         "[Package]\n";
    for (std::string part : {"KRDH20", "KRDH21"}) {
        probe._partName = part;
        EXPECT_EQ(preambleOf(master), "[IBIS Ver] 5.0\n"
                                      "[Notes]  zu2 family\n"
                                      "| " + part + "\n"
                                      "[Component]     " + part + "\n"
                                      "[Manufacturer]  Corvane\n")
            << part;
    }
}

TEST_F(Preamble, OtherPartsKeepTheComponentLine)
{
    std::string master = "[IBIS Ver] 5.0\n[Component]     ZU2-40E\n";
    for (std::string part : {"KRDH2", "KRDH210", "A3", ""}) {
        probe._partName = part;
        EXPECT_EQ(preambleOf(master + "[Package]\n"), master) << part;
    }
}

TEST_F(Preamble, FileNameInACommentIsCopied)
{
    std::string lines = "[IBIS Ver] 5.0\n| [File Name] kx3_master.ibs\n";
    EXPECT_EQ(preambleOf(lines + "[Package]\n"), lines);
}

TEST_F(Preamble, ZuTwoComponentLineIsRewrittenBeforeThePackageTest)
{
    probe._partName = "KRDH21";
    EXPECT_EQ(preambleOf("[IBIS Ver] 5.0\n[Package] ZU2 component\nafter\n[Package]\n"),
              "[IBIS Ver] 5.0\n[Package] KRDH21\nafter\n");
}

TEST_F(Preamble, MasterWithoutPackageLineIsCopiedToItsEndAndTheReadAtTheEndGivesAnEmptyLine)
{
    // The loop asks the end-of-file flag alone, before each read: behind the
    // last line end one more read comes back empty and is written.
    std::string master = "[IBIS Ver] 5.0\n[Component] KVANR3-40E\n";
    EXPECT_EQ(preambleOf(master), master + "\n");
    EXPECT_TRUE(probe._masterStream.eof());
}

TEST_F(Preamble, LastLineWithoutLineEndIsCopiedOnce)
{
    EXPECT_EQ(preambleOf("[IBIS Ver] 5.0\n[Component] KVANR3-40E"), "[IBIS Ver] 5.0\n[Component] KVANR3-40E\n");
}

// ------------------------------------------------------------ whole frame --

// writeIbisModels driven on a probe in a directory of its own.
class Frame : public testing::Test {
protected:
    void SetUp() override
    {
        ts::resetGeneratorStatics();
        cwd = wt::realPath(work.path());
        probe._packageName = "CABGA256";
    }
    void TearDown() override { ts::resetGeneratorStatics(); }

    // A master with a package, one pin and one model, and a companion chip
    // file beside it.
    void masterWithCompanion()
    {
        probe.setMaster(master);
        probe.put("k_btn.ibs", "[IBIS Ver] 5.0\n[File Name] k_btn.ibs\n[End]\n");
    }
    // Runs writeIbisModels with the current directory in work; returns
    // what it printed.
    std::string run(int btnCount, bool* result = nullptr)
    {
        ts::ScopedCwd here(work.path());
        bool written = false;
        std::string out = ts::captureStdout([&] { written = probe.writeIbisModels(btnCount); });
        if (result)
            *result = written;
        return out;
    }

    std::string const master = "[IBIS Ver]      5.0\n"
                               "[File Name]     kx3.ibs\n"
                               "[Component]     KVANR3-40E\n"
                               "[Package]\n"
                               "|CABGA256\n"
                               "R_pkg 0.2 0.1 0.3\n"
                               "|\n"
                               "[Pin]  signal_name  model_name\n"
                               "A1     IO_A1        m_out\n"
                               "|\n"
                               "[Model]  m_out\n"
                               "Model_type  Output\n"
                               "| End [Model] m_out\n"
                               "[End]\n";
    ts::TempDir work;
    std::string cwd;
    wt::DesignProbe probe;
};

TEST_F(Frame, DesignWithoutModelsStillHasTheWholeFrame)
{
    wt::ScopedEnv version("PAD2IBIS_VERSION_TEXT", std::string("test"));
    wt::ScopedEnv date("SOURCE_DATE_EPOCH", std::string("1700000000"));
    masterWithCompanion();
    probe._designIbisFile = "board.ibs";
    bool result = false;
    std::string out = run(0, &result);
    EXPECT_TRUE(result);
    EXPECT_EQ(probe._designIbisFile, cwd + "/IBIS/board.ibs");
    EXPECT_EQ(ts::readFile(cwd + "/IBIS/board.ibs"),
              wt::separator + "| IBIS Models Generator: Corvane test\n"
                              "| Generate date: Tue Nov 14 22:13:20 2023\n"
                              "[IBIS Ver]      5.0\n"
                              "[File Name]     board.ibs\n"
                              "[Component]     KVANR3-40E\n"
                              "[Package]\n"
                              "|CABGA256\n"
                              "R_pkg 0.2 0.1 0.3\n"
                              "|\n"
                              "[Pin]  signal_name  model_name\n" +
                  wt::separator + "| End [Component]\n[End]\n");
    EXPECT_EQ(out, "\nGenerating: \"" + cwd + "/IBIS/board.ibs\"\n\n"
                   "Design IBIS Models are generated for board level analysis.\n");
    EXPECT_FALSE(probe._masterStream.is_open());
}

TEST_F(Frame, ModelOfTheDesignThatTheMasterLacksStillGetsItsEndLine)
{
    masterWithCompanion();
    probe._designIbisFile = "board.ibs";
    probe.addSignal("led", "A1", "m_out");
    probe._designModels = {"ghost", "m_out"};
    run(0);
    std::string text = ts::readFile(cwd + "/IBIS/board.ibs");
    std::string tail = "[Pin]  signal_name  model_name\n"
                       "A1            led                  m_out\n" +
                       wt::separator + "| End [Model] ghost\n" + wt::separator +
                       "[Model]  m_out\n"
                       "Model_type  Output\n"
                       "| End [Model] m_out\n" +
                       wt::separator + "| End [Component]\n[End]\n";
    ASSERT_GE(text.size(), tail.size());
    EXPECT_EQ(text.substr(text.size() - tail.size()), tail);
}

TEST_F(Frame, OrdinaryDeviceWithCompanionsGetsTheZuTwoSuffixAndCopiesFromZero)
{
    IBIS_MODEL::_input_dev_name = "KVA3-40E-6BG256C";
    masterWithCompanion();
    probe._designIbisFile = "board.ibs";
    std::string out = run(2);
    EXPECT_EQ(probe._designIbisFile, cwd + "/IBIS/board_zu2.ibs");
    EXPECT_NE(ts::readFile(cwd + "/IBIS/board_zu2.ibs").find("[File Name]     board_zu2.ibs\n"), std::string::npos);
    EXPECT_FALSE(ts::fileExists(cwd + "/IBIS/board.ibs"));
    EXPECT_TRUE(ts::fileExists(cwd + "/IBIS/board_btn0.ibs"));
    EXPECT_TRUE(ts::fileExists(cwd + "/IBIS/board_btn1.ibs"));
    EXPECT_FALSE(ts::fileExists(cwd + "/IBIS/board_btn2.ibs"));
    EXPECT_EQ(out, "\nGenerating: \"" + cwd + "/IBIS/board_zu2.ibs\"\n\n"
                   "Design IBIS Models are generated for board level analysis.\n"
                   "\nGenerating BTN IBIS files:\n"
                   "    " + cwd + "/IBIS\\board_btn0.ibs\n"
                   "    " + cwd + "/IBIS\\board_btn1.ibs\n"
                   "\n");
}

TEST_F(Frame, KrdhTwentyOneIsRenamedEvenWithoutCompanions)
{
    IBIS_MODEL::_input_dev_name = "KRDH21";
    masterWithCompanion();
    probe._designIbisFile = "board.ibs";
    std::string out = run(0);
    EXPECT_EQ(probe._designIbisFile, cwd + "/IBIS/board_krdh21.ibs");
    EXPECT_NE(ts::readFile(probe._designIbisFile).find("[File Name]     board_krdh21.ibs\n"), std::string::npos);
    EXPECT_EQ(out.find("BTN"), std::string::npos);
}

TEST_F(Frame, KrdhTwentyNeverGetsASuffixOrCompanions)
{
    IBIS_MODEL::_input_dev_name = "KRDH20";
    masterWithCompanion();
    probe._designIbisFile = "board.ibs";
    std::string out = run(2);
    EXPECT_EQ(probe._designIbisFile, cwd + "/IBIS/board.ibs");
    EXPECT_TRUE(ts::fileExists(cwd + "/IBIS/board.ibs"));
    EXPECT_FALSE(ts::fileExists(cwd + "/IBIS/board_btn0.ibs"));
    EXPECT_EQ(out.find("BTN"), std::string::npos);
}

TEST_F(Frame, FrameLooksAtTheDeviceNameAndThePreambleAtThePartName)
{
    std::string zuMaster = "[IBIS Ver] 5.0\n[Component]     ZU2-40E\n[Package]\n[Pin]\n";
    probe.setMaster(zuMaster);
    IBIS_MODEL::_input_dev_name = "KRDH21";
    probe._partName = "A3";
    probe._designIbisFile = "one.ibs";
    run(0);
    EXPECT_EQ(probe._designIbisFile, cwd + "/IBIS/one_krdh21.ibs");
    EXPECT_NE(ts::readFile(probe._designIbisFile).find("[Component]     ZU2-40E\n"), std::string::npos);

    IBIS_MODEL::_input_dev_name = "KVA3-40E-6BG256C";
    probe._partName = "KRDH21";
    probe._designIbisFile = "two.ibs";
    run(0);
    EXPECT_EQ(probe._designIbisFile, cwd + "/IBIS/two.ibs");
    EXPECT_NE(ts::readFile(probe._designIbisFile).find("[Component]     KRDH21\n"), std::string::npos);
}

TEST_F(Frame, MasterPathWithoutSeparatorKeepsItsWholeTextAheadOfTheCompanionName)
{
    IBIS_MODEL::_input_dev_name = "KVA3-40E-6BG256C";
    ts::writeFile(work.file("kx3.ibs"), master);
    probe._masterIbisFile = "kx3.ibs";
    probe._designIbisFile = "board.ibs";
    std::string out = run(1);
    EXPECT_NE(out.find("BTN model file \"kx3.ibsk_btn.ibs\" is not available for the device/package "
                       "selected in the design.\n\n"),
              std::string::npos)
        << out;
}

TEST_F(Frame, AbsoluteDesignNameStaysWhereItIsAndCompanionsGetBareNames)
{
    IBIS_MODEL::_input_dev_name = "KVA3-40E-6BG256C";
    masterWithCompanion();
    ts::TempDir elsewhere;
    std::string target = wt::realPath(elsewhere.path());
    probe._designIbisFile = target + "/board.ibs";
    std::string out = run(1);
    EXPECT_EQ(probe._designIbisFile, target + "/board_zu2.ibs");
    EXPECT_TRUE(ts::fileExists(target + "/board_zu2.ibs"));
    EXPECT_FALSE(ts::fileExists(cwd + "/IBIS")) << "no directory is made for an absolute name";
    EXPECT_TRUE(ts::fileExists(cwd + "/_btn0.ibs"));
    EXPECT_NE(out.find("\nGenerating BTN IBIS file:\n    _btn0.ibs\n\n"), std::string::npos) << out;
}

TEST_F(Frame, LastDotOfTheWholePathCutsTheStem)
{
    IBIS_MODEL::_input_dev_name = "KVA3-40E-6BG256C";
    masterWithCompanion();
    probe._designIbisFile = "run.v2/board";
    run(1);
    EXPECT_EQ(probe._designIbisFile, cwd + "/IBIS/run_zu2.ibs");
    EXPECT_TRUE(ts::fileExists(cwd + "/IBIS/run_zu2.ibs"));
    EXPECT_TRUE(ts::fileExists(cwd + "/IBIS/run_btn0.ibs"));
}

TEST_F(Frame, OwnDirectoriesOfARelativeNameAreNotMade)
{
    masterWithCompanion();
    probe._designIbisFile = "sub/board.ibs";
    EXPECT_EXIT(
        {
            ts::ScopedCwd here(work.path());
            ts::stdoutToStderr();
            probe.writeIbisModels(0);
        },
        testing::ExitedWithCode(1), "Error opening file: " + cwd + "/IBIS/sub/board.ibs\n");
}

TEST_F(Frame, SubdirectoryThatCannotBeMadeEndsTheRunWithStatusTwo)
{
    masterWithCompanion();
    probe._designIbisFile = "board.ibs";
    ASSERT_EQ(symlink("no/such/place", work.file("IBIS").c_str()), 0);
    EXPECT_EXIT(
        {
            ts::ScopedCwd here(work.path());
            ts::stdoutToStderr();
            probe.writeIbisModels(0);
        },
        testing::ExitedWithCode(2), "ERROR: Failed to create subdirectory '" + cwd + "/IBIS'.\n");
}

TEST_F(Frame, MasterThatCannotBeOpenedEndsTheRunWithStatusOneAfterTheDesignFileWasMade)
{
    probe._masterIbisFile = work.file("missing.ibs");
    probe._designIbisFile = "board.ibs";
    EXPECT_EXIT(
        {
            ts::ScopedCwd here(work.path());
            ts::stdoutToStderr();
            probe.writeIbisModels(0);
        },
        testing::ExitedWithCode(1), "Error opening file: " + work.file("missing.ibs") + "\n");
    EXPECT_TRUE(ts::fileExists(cwd + "/IBIS/board.ibs"));
    EXPECT_EQ(ts::readFile(cwd + "/IBIS/board.ibs"), "");
}

TEST_F(Frame, CompanionCopyThatFailsLeavesTheDesignFileWholeAndNoPackageFile)
{
    IBIS_MODEL::_input_dev_name = "KVA3-40E-6BG256C";
    masterWithCompanion();
    probe.put("master_6bg256c_bg.pkg", "[IBIS Ver] 5.0\n");
    probe._designIbisFile = "board.ibs";
    ASSERT_EQ(mkdir(work.file("IBIS").c_str(), 0777), 0);
    ASSERT_EQ(mkdir(work.file("IBIS/board_btn0.ibs").c_str(), 0777), 0);
    EXPECT_EXIT(
        {
            ts::ScopedCwd here(work.path());
            ts::stdoutToStderr();
            probe.writeIbisModels(1);
        },
        testing::ExitedWithCode(2), "ERROR: Failed to generating BTN IBIS file: \"" + cwd + "/IBIS\\\\board_btn0.ibs\"\n");
    std::string text = ts::readFile(cwd + "/IBIS/board_zu2.ibs");
    EXPECT_EQ(text.substr(text.size() - 24), "| End [Component]\n[End]\n");
    EXPECT_FALSE(ts::fileExists(cwd + "/IBIS/master_6bg256c_bg.pkg"));
}

TEST_F(Frame, PackageModelFileIsCopiedBesideTheDesignFileLast)
{
    IBIS_MODEL::_input_dev_name = "KVA3-40E-6BG256C";
    masterWithCompanion();
    probe.put("master_6bg256c_bg.pkg", "[IBIS Ver] 5.0\n| package model\n");
    probe._designIbisFile = "board.ibs";
    std::string out = run(1);
    EXPECT_EQ(ts::readFile(cwd + "/IBIS/master_6bg256c_bg.pkg"), "[IBIS Ver] 5.0\n| package model\n");
    std::string tail = "    " + cwd + "/IBIS\\board_btn0.ibs\n\n\nGenerating package file:  \"" + cwd +
                       "/IBIS/master_6bg256c_bg.pkg\"\n\n";
    ASSERT_GE(out.size(), tail.size());
    EXPECT_EQ(out.substr(out.size() - tail.size()), tail);
}

} // namespace
