// The design IBIS file writer where whole runs cannot reach: the banner for
// each form of version text, the fatal paths, the out-of-range failures kept
// on purpose, and the package model file's name.

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <csignal>

#include "writer/design_file_options.h"
#include "writer/writer_probe.h"

namespace {

std::string const outOfRange =
    "terminate called after throwing an instance of 'std::out_of_range'\n  what\\(\\):  basic_string::";

TEST(Banner, GeneratorLineFollowsTheVersionText)
{
    setenv("SOURCE_DATE_EPOCH", "1700000000", 1);
    std::string const g = "| IBIS Models Generator:";
    std::string const indent = "\n|                        ";
    std::string const v47 = "2026.2.0.118 Patch 2 for the Corvane suite, x64";
    std::string const v48 = "2026.2.0.118 build 7 for the Corvane suite, x64.";
    ASSERT_EQ(v47.size(), 47u);
    ASSERT_EQ(v48.size(), 48u);
    std::pair<std::string, std::string> const cases[] = { // version "": the host has none
        {"", "| Corvane IBIS Models Generator\n"},
        {"test", g + " Corvane test\n"},
        {v47, g + " Corvane " + v47 + "\n"},
        {v48, g + "\n| " + v48 + "\n"},
        {"2026.2.0.118 Corvane Design Suite for Linux hosts patch 3",
         g + "\n| 2026.2.0.118 Corvane Design Suite for Linux hosts patch 3\n"},
        {"Patch 7 for 2026.2.0.118 Corvane Design Suite on Linux", g + "\n| Patch 7 for 2026.2.0.118 Corvane Design Suite on Linux\n"},
        // Further on, "Patch" starts a second line; the character ahead of
        // it stands on neither.
        {"2026.2.0.118 Corvane Design Suite for Linux hosts_Patch 3 rev 2",
         g + " Corvane 2026.2.0.118 Corvane Design Suite for Linux hosts" + indent + "Patch 3 rev 2\n"},
        {"xPatch 12 of the 2026.2.0.118 Corvane Design Suite, Linux",
         g + " Corvane " + indent + "Patch 12 of the 2026.2.0.118 Corvane Design Suite, Linux\n"},
    };
    for (auto const& [version, lines] : cases) {
        setenv("PAD2IBIS_VERSION_TEXT", version.c_str(), 1);
        wt::DesignProbe probe;
        probe.openDesign();
        probe.writeIbisHeaderInformations();
        EXPECT_EQ(probe.design(), wt::separator + lines + "| Generate date: Tue Nov 14 22:13:20 2023\n");
    }
}

// writeIbisModels in a directory of its own, with a master holding a
// package, one pin and one model, and the companion chip's file beside it.
TEST(Frame, FatalPaths)
{
    ts::resetGeneratorStatics();
    ts::TempDir work;
    std::string const cwd = wt::realPath(work.path());
    wt::DesignProbe probe;
    probe._packageName = "CABGA256";
    probe.setMaster("[IBIS Ver] 5.0\n[Component]     ZU2-40E\n[Package]\n|CABGA256\nR_pkg 0.2 0.1 0.3\n|\n"
                    "[Pin]  signal_name  model_name\n|\n[Model]  m_out\nModel_type  Output\n| End [Model] m_out\n");
    probe.put("k_btn.ibs", "[IBIS Ver] 5.0\n");
    probe.openDesign(); // one model's block, copied by itself
    probe.writeModelInfo("m_out");
    EXPECT_EQ(probe.design(), "[Model]  m_out\nModel_type  Output\n");
    IBIS_MODEL::_input_dev_name = "KVA3-40E-6BG256C";
    auto dies = [&](std::string const& design, int btnCount, int code, std::string const& message) {
        probe._designIbisFile = design;
        WT_EXPECT_DIES((ts::ScopedCwd(work.path()), probe.writeIbisModels(btnCount)), code, message);
    };
    ASSERT_EQ(symlink("no/such/place", work.file("IBIS").c_str()), 0);
    dies("board.ibs", 0, 2, "ERROR: Failed to create subdirectory '" + cwd + "/IBIS'.\n");
    ASSERT_EQ(unlink(work.file("IBIS").c_str()), 0);
    dies("sub/board.ibs", 0, 1, "Error opening file: " + cwd + "/IBIS/sub/board.ibs\n");

    // A companion copy that fails leaves the design file whole and no
    // package file.
    probe.put("master_6bg256c_bg.pkg", "[IBIS Ver] 5.0\n");
    ASSERT_EQ(mkdir(work.file("IBIS/board_btn0.ibs").c_str(), 0777), 0);
    dies("board.ibs", 1, 2, "ERROR: Failed to generating BTN IBIS file: \"" + cwd + "/IBIS\\\\board_btn0.ibs\"\n");
    EXPECT_NE(ts::readFile(cwd + "/IBIS/board_zu2.ibs").find("| End [Component]\n[End]\n"), std::string::npos);
    EXPECT_FALSE(ts::fileExists(cwd + "/IBIS/master_6bg256c_bg.pkg"));

    std::string const target = work.file("nowhere/master_6bg256c_bg.pkg");
    probe._designIbisFile = work.file("nowhere/board.ibs");
    WT_EXPECT_DIES(probe.writePackageFile(), 2,
                   "\nGenerating package file:  \"" + target + "\"\n\nERROR: Failed to generating package file: \"" +
                       target + "\"\n\n");

    // Each pass over the master opens it afresh; the design file is made
    // first.
    probe._masterIbisFile = work.file("missing.ibs");
    std::string const missing = "Error opening file: " + probe._masterIbisFile + "\n";
    dies("lost.ibs", 0, 1, missing);
    EXPECT_EQ(ts::readFile(cwd + "/IBIS/lost.ibs"), "");
    WT_EXPECT_DIES(probe.writeModelInfo("m1"), 1, missing);
    WT_EXPECT_DIES(probe.writeDiffPinSection(), 1, missing);
    ts::resetGeneratorStatics();
}

// Two malformed masters fail with an out-of-range error that nothing may
// catch, so it is thrown from where the process can only end: a line of
// blanks ahead of the package, a D-PHY model name shorter than 13 characters.
TEST(Sections, OutOfRangeEndsTheProcess)
{
    wt::DesignProbe probe;
    probe._packageName = "CABGA256";
    probe.openMaster("|CSBGA132\nR_pkg 0 0 0\n|\n   \n|CABGA256\nR_pkg 1 2 3\n|\n[Pin]\n");
    auto package = [&probe]() noexcept { probe.writeIbisPackageInfo(); };
    EXPECT_EXIT(package(), testing::KilledBySignal(SIGABRT), outOfRange + "substr");

    ts::resetGeneratorStatics();
    IBIS_MODEL::_mipi_dphy_ip_used = true;
    probe._availableModels = {"mip120axxxaa"};
    auto pins = [&probe]() noexcept { probe.writeIbisPinInfo(); };
    EXPECT_EXIT(pins(), testing::KilledBySignal(SIGABRT), outOfRange + "at");
    IBIS_MODEL::_mipi_dphy_ip_used = false;
}

// A component name of the host's own takes the first line that the
// component reader would take, and only its name; a companion part's renamed
// line gives way to it, later component lines stay as they are.
TEST(Preamble, ComponentNameOfTheHost)
{
    struct { std::string master, part, design; } const cases[] = {
        {"[Component]     KVANR3-40E\n", "", "[Component]     U7 x\n"},
        {"  [Component]\tKVANR3-40E  | main die\n", "", "  [Component]\tU7 x  | main die\n"},
        {"[Component]KVANR3\n", "", "[Component] U7 x\n"},
        {"[Component] KVANR3\r\n", "", "[Component] U7 x\r\n"},
        {"[Component]\r\n", "", "[Component] U7 x\r\n"},
        {"[Component]\n[Component] B\n", "", "[Component] U7 x\n[Component] B\n"},
        {"[Component]  \n", "", "[Component]  U7 x\n"},
        {"| [Component] A\n[Manufacturer] C\n[component] B\n[Component] D\n", "",
         "| [Component] A\n[Manufacturer] C\n[component] B\n[Component] U7 x\n"},
        {"x [Component] A\n[Component] B\n", "", "x [Component] A\n[Component] U7 x\n"},
        {"[Component] ZU2-40E\n| ZU2 component\n", "KRDH21", "[Component] U7 x\n| KRDH21\n"},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.master);
        wt::DesignProbe probe;
        probe._partName = c.part;
        probe.openMaster("[IBIS Ver] 5.0\n" + c.master + "[Package]\n");
        probe.openDesign();
        ibsSetDesignFileOptions(IbsDesignFileOptions{"U7 x"});
        probe.writeIbisCopyRights();
        ibsSetDesignFileOptions(IbsDesignFileOptions());
        EXPECT_EQ(probe.design(), "[IBIS Ver] 5.0\n" + c.design);
    }
}

TEST(SideFiles, PackageModelFileIsNamedAfterMasterDeviceAndPackage)
{
    struct { char const *device, *package, *pinCount, *master, *file; } const cases[] = {
        {"KVA3-40E-6BG256C", "CABGA256", "", "kx3_master", "kx3_master_6bg256c_bg.pkg"},
        {"KVA3-40E-6BG256C", "csbga132", "256", "KX3_Master", "kx3_master_6bg256c_bg256.pkg"},
        {"KRDH21", "CSMG100", "", "kx3_master", "kx3_master_mg.pkg"},
        {"KVA3-17E-8SG72I", "csmg72", "72", "kx3_master", "kx3_master_8sg72i_mg72.pkg"},
        {"KVA3-40E-6BG256C", "caBgA256", "", "kx3_master", "kx3_master_6bg256c.pkg"},
        {"KVA3-40E-6BG256C", "TQFP144", "", "kx3_master", "kx3_master_6bg256c.pkg"},
    };
    for (auto const& c : cases) {
        IBIS_MODEL::_input_dev_name = c.device;
        wt::DesignProbe probe;
        ts::TempDir out;
        probe._masterIbisFile = probe.put(c.master + std::string(".ibs"), "[IBIS Ver] 5.0\n");
        probe._designIbisFile = out.file("board.ibs");
        probe._packageName = c.package;
        probe._packagePinCount = c.pinCount;
        probe._partName = "MORVALLE";
        EXPECT_EQ(ts::captureStdout([&] { probe.writePackageFile(); }),
                  "Package model file \"" + std::string(c.file) +
                      "\" is not available for the device/package selected in the design.\n\n");
        probe._partName = "A3";
        EXPECT_EQ(ts::captureStdout([&] { probe.writePackageFile(); }), "");
        probe.put(c.file, "[IBIS Ver] 5.0\n| package model\n");
        EXPECT_EQ(ts::captureStdout([&] { probe.writePackageFile(); }),
                  "\nGenerating package file:  \"" + out.file(c.file) + "\"\n\n");
        EXPECT_EQ(ts::readFile(out.file(c.file)), "[IBIS Ver] 5.0\n| package model\n");
    }
    ts::resetGeneratorStatics();
}

// A host that asks for no copies of the companion chip's file gets the
// heading and a blank line, and no file.
TEST(SideFiles, NoCompanionCopiesWriteNoFile)
{
    IBIS_MODEL::_input_dev_name = "KVA3-40E-6BG256C";
    wt::DesignProbe probe;
    std::string const source = probe.put("k_btn.ibs", "[IBIS Ver] 5.0\n");
    EXPECT_EQ(ts::captureStdout([&] { probe.writeBtnFile(probe.dir() + "/board", source, 0); }),
              "\nGenerating BTN IBIS file:\n\n");
    EXPECT_FALSE(ts::fileExists(probe.dir() + "/board_btn0.ibs"));
    ts::resetGeneratorStatics();
}

} // namespace
