// The design IBIS file writer piece by piece: banner, preamble, sections from
// the master, the design file's name, the files beside it and the fatal paths.

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>

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
    std::string const lower = "2026.2.0.118 Corvane Design Suite for Linux hosts patch 3";
    std::string const first = "Patch 7 for 2026.2.0.118 Corvane Design Suite on Linux";
    ASSERT_EQ(v47.size(), 47u);
    ASSERT_EQ(v48.size(), 48u);
    struct Case {
        std::string version, lines; // version "": the host has none
    } const cases[] = {
        {"", "| Corvane IBIS Models Generator\n"},
        {"test", g + " Corvane test\n"},
        {v47, g + " Corvane " + v47 + "\n"},
        {v48, g + "\n| " + v48 + "\n"},
        {lower, g + "\n| " + lower + "\n"},
        {first, g + "\n| " + first + "\n"},
        // Further on, "Patch" starts a second line; the character ahead of
        // it stands on neither.
        {"2026.2.0.118 Corvane Design Suite for Linux hosts_Patch 3 rev 2",
         g + " Corvane 2026.2.0.118 Corvane Design Suite for Linux hosts" + indent + "Patch 3 rev 2\n"},
        {"xPatch 12 of the 2026.2.0.118 Corvane Design Suite, Linux",
         g + " Corvane " + indent + "Patch 12 of the 2026.2.0.118 Corvane Design Suite, Linux\n"},
    };
    for (Case const& c : cases) {
        setenv("PAD2IBIS_VERSION_TEXT", c.version.c_str(), 1);
        wt::DesignProbe probe;
        probe.openDesign();
        probe.writeIbisHeaderInformations();
        EXPECT_EQ(probe.design(), wt::separator + c.lines + "| Generate date: Tue Nov 14 22:13:20 2023\n");
    }
}

// The preamble of master, written for a design file named designName.
std::string preamble(wt::DesignProbe& probe, std::string const& master, std::string const& designName = "")
{
    probe.openMaster(master);
    probe.openDesign();
    if (!designName.empty())
        probe._designIbisFile = designName;
    probe.writeIbisCopyRights();
    return probe.design();
}

TEST(Preamble, PackageWordAtPositionsZeroToThreeOfTheCommentFreeTextEndsIt)
{
    std::string const head = "[IBIS Ver] 5.0\n";
    for (std::string line : {"[Package]", "package data below", "  [PACKAGE]", "Pk:PACKAGE", "abcPackage|comment"}) {
        wt::DesignProbe probe;
        EXPECT_EQ(preamble(probe, head + line + "\nafter\n[Package]\n"), head) << line;
        EXPECT_EQ(probe.nextMasterLine(), "after") << line;
    }
    for (std::string line : {"abcdPACKAGE", "    [Package]", "| [Package]", "[Pin] signal | package"}) {
        wt::DesignProbe probe;
        EXPECT_EQ(preamble(probe, head + line + "\n[Package]\n"), head + line + "\n") << line;
    }
    // Without a package line the read behind the last line end comes back
    // empty and is copied too.
    wt::DesignProbe probe;
    EXPECT_EQ(preamble(probe, head + "[Component] KVANR3-40E\n"), head + "[Component] KVANR3-40E\n\n");
}

TEST(Preamble, FileNameLinesNameTheDesignFileCutWhenItsLastDotStandsBehind40)
{
    std::string const s40 = "board_" + std::string(34, 'n');
    std::string const s41 = "board_with_a_very_long_name_0123456789ABC";
    ASSERT_EQ(s41.size(), 41u);
    std::string const master = "[IBIS Ver] 5.0\n[File Name] m.ibs\n[file name] x.ibs\n| [File Name] m.ibs\n[Package]\n";
    for (auto const& [design, shown] : std::vector<std::pair<std::string, std::string>>{
             {"/work/IBIS/board.ibs", "board.ibs"}, {"C:\\work\\board.ibs", "board.ibs"},
             {"lib\\x/board.ibs", "x/board.ibs"}, {s40 + ".ibs", s40 + ".ibs"},
             {s41 + ".ibs", "board_with_a_very_long_name_0123456789A~.ibs"}}) {
        wt::DesignProbe probe;
        std::string const line = "[File Name]     " + shown + "\n";
        EXPECT_EQ(preamble(probe, master, design), "[IBIS Ver] 5.0\n" + line + line + "| [File Name] m.ibs\n");
    }
}

// writeIbisModels in a directory of its own, with a master holding a
// package, one pin and one model, and the companion chip's file beside it.
class Frame : public testing::Test {
protected:
    void SetUp() override
    {
        ts::resetGeneratorStatics();
        cwd = wt::realPath(work.path());
        probe._packageName = "CABGA256";
        probe.setMaster("[IBIS Ver] 5.0\n[Component]     ZU2-40E\n[Package]\n|CABGA256\nR_pkg 0.2 0.1 0.3\n|\n"
                        "[Pin]  signal_name  model_name\n|\n[Model]  m_out\nModel_type  Output\n| End [Model] m_out\n");
        probe.put("k_btn.ibs", "[IBIS Ver] 5.0\n");
    }
    void TearDown() override { ts::resetGeneratorStatics(); }

    std::string run(std::string const& device, std::string const& design, int btnCount)
    {
        IBIS_MODEL::_input_dev_name = device;
        probe._designIbisFile = design;
        ts::ScopedCwd here(work.path());
        return ts::captureStdout([&] { EXPECT_TRUE(probe.writeIbisModels(btnCount)); });
    }
    void dies(std::string const& design, int btnCount, int code, std::string const& message)
    {
        IBIS_MODEL::_input_dev_name = "KVA3-40E-6BG256C";
        probe._designIbisFile = design;
        WT_EXPECT_DIES((ts::ScopedCwd(work.path()), probe.writeIbisModels(btnCount)), code, message);
    }

    ts::TempDir work;
    std::string cwd;
    wt::DesignProbe probe;
};

TEST_F(Frame, DesignAndCompanionNames)
{
    // A design model the master lacks still gets its closing line.
    probe.addSignal("led", "A1", "m_out");
    probe._designModels = {"ghost", "m_out"};
    run("KRDH21", "one.ibs", 0);
    EXPECT_EQ(probe._designIbisFile, cwd + "/IBIS/one_krdh21.ibs");
    std::string const text = ts::readFile(probe._designIbisFile);
    std::string const tail = "A1            led                  m_out\n" + wt::separator + "| End [Model] ghost\n" +
                             wt::separator + "[Model]  m_out\nModel_type  Output\n| End [Model] m_out\n" +
                             wt::separator + "| End [Component]\n[End]\n";
    EXPECT_EQ(text.substr(text.size() - std::min(text.size(), tail.size())), tail);

    // The last dot of the whole path cuts the stem.
    std::string out = run("KVA3-40E-6BG256C", "run.v2/board", 1);
    EXPECT_EQ(probe._designIbisFile, cwd + "/IBIS/run_zu2.ibs");
    EXPECT_NE(out.find("\nGenerating BTN IBIS file:\n    " + cwd + "/IBIS\\run_btn0.ibs\n\n"), std::string::npos);
}

TEST_F(Frame, FatalPaths)
{
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
}

TEST(Sections, PackageBlockIsPickedOrZeros)
{
    auto zeros = [](std::string const& name) {
        std::string const values = "                  0                0               0\n";
        return "| The package data for this package is currently not available in\n| the master ibis file.\n"
               "[Package]\n|" + name + "\n| variable            typ              min              max\n"
               "R_pkg" + values + "L_pkg" + values + "C_pkg" + values + "|\n";
    };
    struct Case {
        char const* name;
        std::string master, design, next = ""; // next: the master line the pin rows start at
    } const cases[] = {
        // The first data line is copied as it is, later ones trimmed; a
        // value line with a "|" anywhere loses its first character.
        {"CABGA256",
         "|CSBGA132\nR_pkg 0 0 0\n|\n\n   |cabga256   \n   R_pkg 1 2 3  \n  |L_pkg  4  5  6  \nC_pkg 7 | lab\n"
         "|r_pkg x\n   |   \n|CABGA256\nR_pkg 9 9 9\n|\n  [PIN]   Signal_Name\nA1 IO_A1 m1\n",
         "[Package]\n|CABGA256\n   R_pkg 1 2 3  \nL_pkg  4  5  6\n_pkg 7 | lab\n|r_pkg x\n|\n  [PIN]   Signal_Name\n",
         "A1 IO_A1 m1"},
        {"CABGA256", "*CABGA256\n  |R_pkg 1 2 3\n|\n[pin] signal\n",
         "[Package]\n*CABGA256\n |R_pkg 1 2 3\n|\n[pin] signal\n"},
        {"CABGA256", "|CABGA256\n|\nR_pkg 1 2 3\n|\n", "[Package]\n|CABGA256\n|\nR_pkg 1 2 3\n|\n"},
        {"", "| variable\n|CABGA256\nR_pkg 1 2 3\n|\n|CSBGA132\n|\n[Pin]\n", "[Package]\n|\n|CSBGA132\n|\n[Pin]\n"},
        // Not found: zeros and a warning.
        {"CABGA400", "|CABGA256\nR_pkg 1 2 3\n|\n[Pin]  signal\nA1 IO_A1 m1\n", zeros("CABGA400") + "[Pin]  signal\n",
         "A1 IO_A1 m1"},
        {"caBGA256", "|caBGA256\nR_pkg 1 2 3\n|\n[Pin]\n", zeros("caBGA256") + "[Pin]\n"},
        {"CABGA400", "|CABGA256\nR_pkg 1 2 3\n|\n", ""},
    };
    for (Case const& c : cases) {
        wt::DesignProbe probe;
        probe._packageName = c.name;
        probe.openMaster(c.master);
        probe.openDesign();
        std::string out = ts::captureStdout([&] { probe.writeIbisPackageInfo(); });
        EXPECT_EQ(probe.design(), c.design) << c.master;
        EXPECT_EQ(probe.nextMasterLine(), c.next) << c.master;
        bool const warned = c.design.find("[Package]") != 0;
        EXPECT_EQ(out, warned ? "WARNING: Package name \"" + std::string(c.name) +
                                    "\" is not found in the master ibis file: " + probe._masterIbisFile + "\n"
                              : "");
    }
    // A line of blanks ahead of the package fails with an out-of-range error
    // that nothing may catch, so it is thrown from where the process can only end.
    wt::DesignProbe probe;
    probe._packageName = "CABGA256";
    probe.openMaster("|CSBGA132\nR_pkg 0 0 0\n|\n   \n|CABGA256\nR_pkg 1 2 3\n|\n[Pin]\n");
    auto uncaught = [&probe]() noexcept { probe.writeIbisPackageInfo(); };
    EXPECT_EXIT(uncaught(), testing::KilledBySignal(SIGABRT), outOfRange + "substr");
}

TEST(Sections, ModelBlockRunsUpToTheNextLineWithModel)
{
    std::string const master = "[Model] m1 on the first line never counts\n[Model] lvc33_fast\nModel_type Output\n"
                               "| End [Model] lvc33_fast, replaced by lvc33\n[Model] lvc33\n| End [Model] lvc33\n"
                               "[Model] m2\n| End [Model] m2\n|****\n[Model] M3\nx\n";
    for (auto const& [model, block] : std::vector<std::pair<std::string, std::string>>{
             {"lvc33_fast", "[Model] lvc33_fast\nModel_type Output\n"},
             {"lvc33", "[Model] lvc33_fast\nModel_type Output\n"},
             {"replaced", "| End [Model] lvc33_fast, replaced by lvc33\n[Model] lvc33\n"},
             {"m2", "[Model] m2\n| End [Model] m2\n|****\n"}, {"m1", ""}, {"m3", ""}}) {
        wt::DesignProbe probe;
        probe.setMaster(master);
        probe.openDesign();
        probe.writeModelInfo(model);
        EXPECT_EQ(probe.design(), block) << model;
    }
}

TEST(Sections, PinRowsThenDphyRows)
{
    ts::resetGeneratorStatics();
    IBIS_MODEL::_mipi_dphy_ip_used = true;
    wt::DesignProbe probe;
    for (auto const& [name, site, model] : std::vector<std::array<char const*, 3>>{
             {"a_signal_name_of_20c", "PIN_13_CHARSX", "m1"}, {"a_signal_name_of_21ch", "PIN_14_CHARSXY", "m2"},
             {"no_model", "B1", nullptr}, {"empty_model", "B2", ""}, {"clk", "C1", "lvd_in"},
             {"led", "", "mip120axxxaahaaaaaio"}})
        probe.addSignal(name, site, model);
    probe._diffPinMap = {{"clk-", "C2"}, {"led", "A1"}};
    probe._designModels = {"mip120axxxaahaaaaaio"};
    probe._availableModels = {"m1", "mip120axxxaahaaaaaio", "mip120axxxaalaaaaaio", "mip120fxxxaahaaaaaio",
                              "mip120fxxxaaxaaaaaio", "MIP120axxxaalaaaaaio", "xmipxxxxxxxxhxxx"};
    probe.openDesign();
    probe.writeIbisPinInfo();
    EXPECT_EQ(probe.design(), "PIN_13_CHARSX a_signal_name_of_20c m1\n"
                              "PIN_14_CHARSXY a_signal_name_of_21ch m2\n"
                              "C1            clk+                 lvd_in\n"
                              "C2            clk-                 lvd_in\n"
                              "              led                  mip120axxxaahaaaaaio\n"
                              "MIP_1         mode_hs_1            mip120axxxaahaaaaaio\n"
                              "MIP_2         mode_lp_1            mip120axxxaalaaaaaio\n"
                              "MIP_3         mode_hs_2            mip120fxxxaahaaaaaio\n"
                              "MIP_4         mode_hs_3            xmipxxxxxxxxhxxx\n" + wt::separator);
    EXPECT_EQ(probe._designModels, (std::set<std::string>{"mip120axxxaahaaaaaio", "mip120axxxaalaaaaaio",
                                                          "mip120fxxxaahaaaaaio", "xmipxxxxxxxxhxxx"}));
    // A D-PHY name shorter than 13 characters: an uncaught out-of-range error.
    probe._availableModels = {"mip120axxxaa"};
    auto uncaught = [&probe]() noexcept { probe.writeIbisPinInfo(); };
    EXPECT_EXIT(uncaught(), testing::KilledBySignal(SIGABRT), outOfRange + "at");
    IBIS_MODEL::_mipi_dphy_ip_used = false;
}

TEST(Sections, DiffPinRowsWalkTheMastersTokens)
{
    std::string const header = "[Diff pin]  inv_pin  vdiff   tdelay_typ\n";
    auto master = [](std::string const& section) {
        return "[IBIS Ver] 5.0\n[Pin]  signal_name  model_name\nF4     IO_F4_p      lvd_in\n|\n" + section +
               "|\n[Model] lvd_in\n| End [Model] lvd_in\n[End]\n";
    };
    using Signals = std::vector<std::array<char const*, 3>>; // name, site, master pin
    Signals const pairs = {{"clk_in", "C1", "F4"}, {"tx", "D1", "H2"}, {"led", "A1", nullptr}, {"single", "X1", "F4"}};
    struct Case {
        std::string master, rows; // rows "": no section at all
        Signals signals = {};
    } const cases[] = {
        {master(header + "|\n| the pairs\nF4          F5       0.200V  0ns\nH2 H3  NA 1ns\nK2  K3  NA  0ns\n"),
         "C1          C2      0.200V  0ns\nD1          D2 NA 1ns\n"},
        // The pins are the row's first two tokens; a single blank runs the
        // negative pin into the next value.
        {master(header + "F4 F5 0.2V 1ns\n"), "C1          C20.2V 1ns\n"},
        {master(header + "F4  F5  NA\n"), "PIN_12_CHARSN1 NA\nPIN_13_CHARSXN2 NA\n",
         {{"b", "PIN_13_CHARSX", "F4"}, {"a", "PIN_12_CHARS", "F4"}}},
        // A row that matched nothing is tried again with its later tokens.
        {master(header + "X1 X2 F4 F5 0.2V\nY1 Y2 0.1V NA 2ns\n"), "C1          C20.2V\n",
         {{"clk_in", "C1", "F4"}, {"late", "G1", "NA"}}},
        {master(header + "X1 X2 | no pair\nF4 F5 0.2V\n"), ""},
        {master(header + "F4 F5  0.2V\n| end of the pairs\nH2 H3  NA\n"), "C1          C2 0.2V\n"},
        {master("[Diff Pin]  inv_pin\nF4 F5 0.2V\n"), ""},
        {"[Diff pin]  inv_pin  vdiff\nF4 F5 0.2V\n|\n", ""},
        {master(header + "|\n| no pairs\n[Model] x\n"), ""},
        {"[IBIS Ver] 5.0\n" + header + "| pairs\nF4 F5 0.2V", ""},
        {"[IBIS Ver] 5.0\n" + header + "| pairs\nF4 F5 0.2V\nH2 H3 NA", "C1          C20.2V\n"},
        {master(""), ""},
    };
    for (Case const& c : cases) {
        wt::DesignProbe probe;
        for (auto const& [name, site, masterPin] : c.signals.empty() ? pairs : c.signals)
            probe.addSignal(name, site, "lvd_in", masterPin);
        probe._diffPinMap = {{"clk_in-", "C2"}, {"tx-", "D2"}, {"single", "X1"},
                             {"a-", "N1"},      {"b-", "N2"},  {"late-", "G2"}};
        probe.setMaster(c.master);
        probe.openDesign();
        probe.writeDiffPinSection();
        EXPECT_EQ(probe.design(), c.rows.empty() ? "" : header + c.rows + wt::separator) << c.master;
    }
}

TEST(SideFiles, CompanionCopiesAreNumberedByDevice)
{
    std::string const other = "KVA3-40E-6BG256C", krdh21 = "KRDH21";
    for (auto const& [count, device] : std::vector<std::pair<int, std::string>>{
             {1, other}, {1, krdh21}, {9, krdh21}, {9, other}, {10, other}, {10, krdh21}, {12, krdh21}, {0, other}}) {
        ts::resetGeneratorStatics();
        IBIS_MODEL::_input_dev_name = device;
        wt::DesignProbe probe;
        std::string const source = probe.put("k_btn.ibs", "[IBIS Ver] 5.0\n[Component] KBTN-8\n");
        ts::TempDir out;
        std::string listed;
        std::vector<std::string> names;
        for (int i = device == krdh21 ? 1 : 0; int(names.size()) < count; ++i) {
            names.push_back(out.file("board_btn") + (count > 9 && i < 10 ? "0" : "") + std::to_string(i) + ".ibs");
            listed += "    " + names.back() + "\n";
        }
        EXPECT_EQ(ts::captureStdout([&] { probe.writeBtnFile(out.file("board"), source, count); }),
                  (count < 2 ? "\nGenerating BTN IBIS file:\n" : "\nGenerating BTN IBIS files:\n") + listed + "\n")
            << count << " " << device;
        auto files = std::filesystem::directory_iterator(out.path());
        EXPECT_EQ(std::distance(begin(files), end(files)), count);
        for (std::string const& name : names)
            EXPECT_EQ(ts::readFile(name), ts::readFile(source));
    }
    wt::DesignProbe probe;
    EXPECT_EQ(ts::captureStdout([&] { probe.writeBtnFile("b", "k_none.ibs", 1); }),
              "BTN model file \"k_none.ibs\" is not available for the device/package selected in the design.\n\n");
}

TEST(SideFiles, PackageModelFileIsNamedAfterMasterDeviceAndPackage)
{
    struct Case {
        char const *device, *package, *pinCount, *master, *file;
    } const cases[] = {
        {"KVA3-40E-6BG256C", "CABGA256", "", "kx3_master", "kx3_master_6bg256c_bg.pkg"},
        {"KVA3-40E-6BG256C", "csbga132", "256", "KX3_Master", "kx3_master_6bg256c_bg256.pkg"},
        {"KRDH21", "CSMG100", "", "kx3_master", "kx3_master_mg.pkg"},
        {"KVA3-17E-8SG72I", "csmg72", "72", "kx3_master", "kx3_master_8sg72i_mg72.pkg"},
        {"KVA3-40E-6BG256C", "caBgA256", "", "kx3_master", "kx3_master_6bg256c.pkg"},
        {"KVA3-40E-6BG256C", "TQFP144", "", "kx3_master", "kx3_master_6bg256c.pkg"},
    };
    for (Case const& c : cases) {
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

} // namespace
