// Whole runs of the pad2ibis program on small pad reports and master files:
// the design IBIS file is compared byte for byte with the one expected, the
// files beside it are checked, and every design file passes the structural
// IBIS check.

#include <gtest/gtest.h>

#include <sys/stat.h>

#include "support/ibis_structure.h"
#include "writer/writer_probe.h"

namespace {

class WholeRun : public testing::Test {
protected:
    void SetUp() override
    {
        cwd = wt::realPath(work.path());
        lib = cwd + "/lib";
        ASSERT_EQ(mkdir(lib.c_str(), 0777), 0);
    }

    // Copies a file of the test data into dir, under its own name or as.
    void copyData(std::string const& name, std::string const& dir, std::string const& as = "")
    {
        ts::writeFile(dir + "/" + (as.empty() ? name : as), ts::readFile(wt::dataPath(name)));
    }
    // The master file with the companion chip beside it; the package model
    // file too if asked.
    std::string library(std::string const& master, bool withPackageFile)
    {
        copyData(master, lib);
        copyData("k_btn.ibs", lib);
        if (withPackageFile)
            copyData("kx3_master_6bg256c_bg.pkg", lib);
        return lib + "/" + master;
    }
    ts::RunResult run(std::string const& pad, std::string const& master, std::vector<std::string> options = {})
    {
        copyData(pad, cwd);
        options.push_back(pad);
        options.push_back(master);
        return ts::runProgram(options, cwd);
    }
    // What the run printed behind the signal listing.
    static std::string afterListing(std::string const& out)
    {
        std::string const rule = "-----------------------\n";
        std::string::size_type at = out.rfind(rule);
        return at == std::string::npos ? out : out.substr(at + rule.size());
    }
    // The design file of the run: equal to the expected file and sound.
    void expectDesign(std::string const& produced, std::string const& expected, std::string const& master)
    {
        std::string path = cwd + "/IBIS/" + produced;
        ASSERT_TRUE(ts::fileExists(path)) << path;
        std::string text = ts::readFile(path);
        EXPECT_EQ(text, ts::readFile(wt::dataPath(expected)));
        std::vector<std::string> problems =
            ts::ibisStructureProblems(text, produced, ts::linesKeepTo(ts::readFile(master)));
        EXPECT_TRUE(problems.empty()) << testing::PrintToString(problems);
    }

    std::string const created = "Created Design Models.\n";
    std::string const done = "Design IBIS Models are generated for board level analysis.\n";
    std::string const advice = "You can check the master ibis file at <Brinmark>/cae_library/ for models,\n"
                               "if the model is not present in the master ibis file, please contact\n"
                               "Corvane Technical Support to make a request for this model.\n";
    ts::TempDir work;
    std::string cwd;
    std::string lib;
};

TEST_F(WholeRun, ModelsFallbacksMissingOnesAndDifferentialPairs)
{
    std::string master = library("kx3_master.ibs", true);
    ts::RunResult result = run("design.pad", master);
    EXPECT_EQ(result.exitCode, 0) << result.err;
    expectDesign("design.ibs", "design.ibs.expected", master);
    EXPECT_EQ(afterListing(result.out),
              "WARNING: Input model \"lvc330axxxuaaaaaaain\" for signal \"btn_n\" is not available.\n"
              "Setting to \"lvc330axxxuaaaaaaaio\" Available IBIS model.\n"
              "WARNING: Ibis Model \"lvc330f040naaaaaaaou\" for the signal \"dbg_out\" is not available.\n" +
                  created + "\nGenerating: \"" + cwd + "/IBIS/design.ibs\"\n\n" + done +
                  "\nGenerating package file:  \"" + cwd + "/IBIS/kx3_master_6bg256c_bg.pkg\"\n\n" + advice);
    EXPECT_EQ(ts::readFile(cwd + "/IBIS/kx3_master_6bg256c_bg.pkg"),
              ts::readFile(wt::dataPath("kx3_master_6bg256c_bg.pkg")));
}

TEST_F(WholeRun, PackageTheMasterLacksGetsZerosAndAWarning)
{
    std::string master = library("kx3_master.ibs", false);
    ts::RunResult result = run("one_led_cabga400.pad", master);
    EXPECT_EQ(result.exitCode, 0) << result.err;
    expectDesign("one_led_cabga400.ibs", "one_led_cabga400.ibs.expected", master);
    EXPECT_EQ(afterListing(result.out),
              created + "WARNING: Package name \"CABGA400\" is not found in the master ibis file: " + master +
                  "\n\nGenerating: \"" + cwd + "/IBIS/one_led_cabga400.ibs\"\n\n" + done);
}

TEST_F(WholeRun, DesignWithoutAnyModel)
{
    std::string master = library("kx3_master.ibs", false);
    ts::RunResult result = run("no_model.pad", master);
    EXPECT_EQ(result.exitCode, 0) << result.err;
    expectDesign("no_model.ibs", "no_model.ibs.expected", master);
    EXPECT_EQ(afterListing(result.out),
              "WARNING: Ibis Model \"lvc330f040naaaaaaaou\" for the signal \"dbg_out\" is not available.\n"
              "WARNING: Ibis Model \"lvc330axxxnaaaaaaain\" for the signal \"wake\" is not available.\n"
              "\nGenerating: \"" + cwd + "/IBIS/no_model.ibs\"\n\n" + done + advice);
}

TEST_F(WholeRun, DphyRowsAndTheirModels)
{
    std::string master = library("kx3_master.ibs", false);
    ts::RunResult result = run("one_led.pad", master, {"--dphy"});
    EXPECT_EQ(result.exitCode, 0) << result.err;
    expectDesign("one_led.ibs", "one_led_dphy.ibs.expected", master);
}

TEST_F(WholeRun, BrinmarkPutsTheDeviceStatusOnTheDeviceLine)
{
    std::string master = library("kx3_master.ibs", false);
    ts::RunResult result = run("one_led.pad", master, {"--brinmark"});
    EXPECT_EQ(result.exitCode, 0) << result.err;
    expectDesign("one_led.ibs", "one_led_brinmark.ibs.expected", master);
}

TEST_F(WholeRun, CompanionCopiesForAnOrdinaryDevice)
{
    std::string master = library("kx3_master.ibs", true);
    ts::RunResult result = run("one_led.pad", master, {"--btn", "2"});
    EXPECT_EQ(result.exitCode, 0) << result.err;
    expectDesign("one_led_zu2.ibs", "one_led_zu2.ibs.expected", master);
    EXPECT_FALSE(ts::fileExists(cwd + "/IBIS/one_led.ibs"));
    std::string companion = ts::readFile(wt::dataPath("k_btn.ibs"));
    EXPECT_EQ(ts::readFile(cwd + "/IBIS/one_led_btn0.ibs"), companion);
    EXPECT_EQ(ts::readFile(cwd + "/IBIS/one_led_btn1.ibs"), companion);
    EXPECT_FALSE(ts::fileExists(cwd + "/IBIS/one_led_btn2.ibs"));
    EXPECT_EQ(afterListing(result.out),
              created + "\nGenerating: \"" + cwd + "/IBIS/one_led_zu2.ibs\"\n\n" + done +
                  "\nGenerating BTN IBIS files:\n"
                  "    " + cwd + "/IBIS\\one_led_btn0.ibs\n"
                  "    " + cwd + "/IBIS\\one_led_btn1.ibs\n"
                  "\n"
                  "\nGenerating package file:  \"" + cwd + "/IBIS/kx3_master_6bg256c_bg.pkg\"\n\n");
}

TEST_F(WholeRun, CompanionCopiesForKrdhTwentyOneCountFromOne)
{
    std::string master = library("zu2_master.ibs", false);
    ts::RunResult result = run("board21.pad", master, {"--btn", "2"});
    EXPECT_EQ(result.exitCode, 0) << result.err;
    expectDesign("board21_krdh21.ibs", "board21.ibs.expected", master);
    EXPECT_FALSE(ts::fileExists(cwd + "/IBIS/board21.ibs"));
    EXPECT_FALSE(ts::fileExists(cwd + "/IBIS/board21_btn0.ibs"));
    EXPECT_TRUE(ts::fileExists(cwd + "/IBIS/board21_btn1.ibs"));
    EXPECT_TRUE(ts::fileExists(cwd + "/IBIS/board21_btn2.ibs"));
    EXPECT_EQ(afterListing(result.out),
              created + "\nGenerating: \"" + cwd + "/IBIS/board21_krdh21.ibs\"\n\n" + done +
                  "\nGenerating BTN IBIS files:\n"
                  "    " + cwd + "/IBIS\\board21_btn1.ibs\n"
                  "    " + cwd + "/IBIS\\board21_btn2.ibs\n"
                  "\n");
}

TEST_F(WholeRun, KrdhTwentyHasNeitherSuffixNorCompanions)
{
    std::string master = library("zu2_master.ibs", false);
    ts::RunResult result = run("board20.pad", master, {"--btn", "2"});
    EXPECT_EQ(result.exitCode, 0) << result.err;
    expectDesign("board20.ibs", "board20.ibs.expected", master);
    EXPECT_FALSE(ts::fileExists(cwd + "/IBIS/board20_btn0.ibs"));
    EXPECT_FALSE(ts::fileExists(cwd + "/IBIS/board20_btn1.ibs"));
    EXPECT_EQ(afterListing(result.out), created + "\nGenerating: \"" + cwd + "/IBIS/board20.ibs\"\n\n" + done);
}

TEST_F(WholeRun, MessageFlowPostsTheWritersMessagesAndPrintsTheSideFileTexts)
{
    std::string master = library("kx3_master.ibs", true);
    ts::RunResult result = run("one_led_cabga400.pad", master, {"--msgflow", "--btn", "1"});
    EXPECT_EQ(result.exitCode, 0) << result.err;
    std::string text = ts::readFile(cwd + "/IBIS/one_led_cabga400_zu2.ibs");
    std::string expected = ts::readFile(wt::dataPath("one_led_cabga400.ibs.expected"));
    expected.replace(expected.find("one_led_cabga400.ibs"), 20, "one_led_cabga400_zu2.ibs");
    EXPECT_EQ(text, expected);
    EXPECT_EQ(afterListing(result.out), "\nGenerating BTN IBIS file:\n"
                                        "    " + cwd + "/IBIS\\one_led_cabga400_btn0.ibs\n"
                                        "\n"
                                        "\nGenerating package file:  \"" + cwd + "/IBIS/kx3_master_6bg256c_bg.pkg\"\n\n");
    EXPECT_NE(result.err.find("padmodel-1026\tCABGA400\t" + master + "\n"
                              "padmodel-1030\t" + cwd + "/IBIS/one_led_cabga400_zu2.ibs\n"
                              "padmodel-1031\n"),
              std::string::npos)
        << result.err;
}

TEST_F(WholeRun, DemoDesignFileIsSound)
{
    copyData("../../../examples/demo.pad", cwd, "demo.pad");
    std::string master = ts::sourcePath("examples/kva3_master.ibs");
    ts::RunResult result = ts::runProgram({"demo.pad", master}, cwd);
    EXPECT_EQ(result.exitCode, 0) << result.err;
    std::string text = ts::readFile(cwd + "/IBIS/demo.ibs");
    std::vector<std::string> problems =
        ts::ibisStructureProblems(text, "demo.ibs", ts::linesKeepTo(ts::readFile(master)));
    EXPECT_TRUE(problems.empty()) << testing::PrintToString(problems);
    EXPECT_NE(text.find("\n[Pin]"), std::string::npos);
    EXPECT_NE(text.find("\n[Model]"), std::string::npos);
}

} // namespace
