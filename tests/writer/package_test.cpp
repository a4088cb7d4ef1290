// The package block of the design IBIS file: the design's package picked out
// of the master's package section, or a block of zeros when the master
// lacks it, and the master's [Pin] keyword line behind it.

#include <gtest/gtest.h>

#include <csignal>

#include "writer/writer_probe.h"

namespace {

class PackageBlock : public testing::Test {
protected:
    void SetUp() override
    {
        ts::resetGeneratorStatics();
        probe._packageName = "CABGA256";
    }

    // Writes the package block from master, the text that follows the
    // master's package keyword line. Returns the design text; out gets
    // what went to standard output.
    std::string packageOf(std::string const& master, std::string* out = nullptr)
    {
        probe.openMaster(master);
        probe.openDesign();
        std::string printed = ts::captureStdout([&] { probe.writeIbisPackageInfo(); });
        if (out)
            *out = printed;
        return probe.design();
    }

    std::string warning() const
    {
        return "WARNING: Package name \"" + probe._packageName +
               "\" is not found in the master ibis file: " + probe._masterIbisFile + "\n";
    }

    // The block of zeros for a package that the master lacks.
    static std::string zerosFor(std::string const& name)
    {
        return "| The package data for this package is currently not available in\n"
               "| the master ibis file.\n"
               "[Package]\n"
               "|" + name + "\n"
               "| variable            typ              min              max\n"
               "R_pkg                  0                0               0\n"
               "L_pkg                  0                0               0\n"
               "C_pkg                  0                0               0\n"
               "|\n";
    }
    wt::DesignProbe probe;
};

TEST_F(PackageBlock, DesignPackageIsPickedAndThePinLineFollows)
{
    std::string out;
    std::string design = packageOf("| variable       typ      min      max\n"
                                   "|CSBGA132\n"
                                   "R_pkg          0.180    0.120    0.240\n"
                                   "|\n"
                                   "|CABGA256\n"
                                   "R_pkg          0.210    0.150    0.280\n"
                                   "L_pkg          3.10nH   2.20nH   4.30nH\n"
                                   "C_pkg          0.90pF   0.70pF   1.20pF\n"
                                   "|\n"
                                   "|CABGA381\n"
                                   "R_pkg          0.230    0.170    0.310\n"
                                   "|\n"
                                   "[Pin]  signal_name  model_name  R_pin\n"
                                   "A1     IO_A1        m1          0.05\n",
                                   &out);
    EXPECT_EQ(design, "[Package]\n"
                      "|CABGA256\n"
                      "R_pkg          0.210    0.150    0.280\n"
                      "L_pkg          3.10nH   2.20nH   4.30nH\n"
                      "C_pkg          0.90pF   0.70pF   1.20pF\n"
                      "|\n"
                      "[Pin]  signal_name  model_name  R_pin\n");
    EXPECT_EQ(out, "");
    EXPECT_EQ(probe.nextMasterLine(), "A1     IO_A1        m1          0.05") << "the pin rows start here";
}

TEST_F(PackageBlock, NameLineIsMatchedAndShownTrimmedAndInUpperCase)
{
    EXPECT_EQ(packageOf("   |cabga256   \nR_pkg 1 2 3\n|\n[Pin]\n"), "[Package]\n|CABGA256\nR_pkg 1 2 3\n|\n[Pin]\n");
    EXPECT_EQ(packageOf("*CABGA256\nR_pkg 1 2 3\n|\n[Pin]\n"), "[Package]\n*CABGA256\nR_pkg 1 2 3\n|\n[Pin]\n")
        << "any one leading character stands for the bar";
}

TEST_F(PackageBlock, FirstDataLineIsNotTrimmedAndLaterOnesAre)
{
    EXPECT_EQ(packageOf("|CABGA256\n"
                        "   R_pkg   1   2   3   \n"
                        "   L_pkg   4   5   6   \n"
                        "   C_pkg   7   8   9   \n"
                        "   |   \n"
                        "[Pin]\n"),
              "[Package]\n"
              "|CABGA256\n"
              "   R_pkg   1   2   3   \n"
              "L_pkg   4   5   6\n"
              "C_pkg   7   8   9\n"
              "|\n"
              "[Pin]\n");
}

TEST_F(PackageBlock, BarRightBehindTheNameLineIsCopiedAsData)
{
    EXPECT_EQ(packageOf("|CABGA256\n|\nR_pkg 1 2 3\n|\n|CSBGA132\n[Pin]\n"),
              "[Package]\n|CABGA256\n|\nR_pkg 1 2 3\n|\n[Pin]\n");
}

TEST_F(PackageBlock, ValueLinesWithABarAnywhereLoseTheirFirstCharacter)
{
    EXPECT_EQ(packageOf("|CABGA256\n"
                        "| variable  typ  min  max\n"
                        "|R_pkg  1  2  3\n"
                        "  |L_pkg  4  5  6\n"
                        "C_pkg  7  8  9  | from the lab\n"
                        "|r_pkg  lower case is no value line\n"
                        "|\n"
                        "[Pin]\n"),
              "[Package]\n"
              "|CABGA256\n"
              "| variable  typ  min  max\n"
              "R_pkg  1  2  3\n"
              "L_pkg  4  5  6\n"
              "_pkg  7  8  9  | from the lab\n"
              "|r_pkg  lower case is no value line\n"
              "|\n"
              "[Pin]\n");
}

TEST_F(PackageBlock, FirstDataLineLosesItsFirstCharacterWhateverItIs)
{
    EXPECT_EQ(packageOf("|CABGA256\n  |R_pkg 1 2 3\n|\n[Pin]\n"), "[Package]\n|CABGA256\n |R_pkg 1 2 3\n|\n[Pin]\n");
}

TEST_F(PackageBlock, FirstOfTwoBlocksWithTheSameNameWins)
{
    EXPECT_EQ(packageOf("|CABGA256\nR_pkg 1 1 1\n|\n|CABGA256\nR_pkg 2 2 2\n|\n[Pin]\n"),
              "[Package]\n|CABGA256\nR_pkg 1 1 1\n|\n[Pin]\n");
}

TEST_F(PackageBlock, EmptyLinesAreSkipped)
{
    EXPECT_EQ(packageOf("\n|CSBGA132\nR_pkg 0 0 0\n|\n\n|CABGA256\nR_pkg 1 2 3\n|\n\n[Pin]\n"),
              "[Package]\n|CABGA256\nR_pkg 1 2 3\n|\n[Pin]\n");
}

TEST_F(PackageBlock, PinLineIsFoundInAnyCaseAndCopiedAsItStands)
{
    EXPECT_EQ(packageOf("|CABGA256\nR_pkg 1 2 3\n|\n  [PIN]   Signal_Name   Model_Name\n"),
              "[Package]\n|CABGA256\nR_pkg 1 2 3\n|\n  [PIN]   Signal_Name   Model_Name\n");
    EXPECT_EQ(packageOf("|CABGA256\nR_pkg 1 2 3\n|\n[pin] signal\n"), "[Package]\n|CABGA256\nR_pkg 1 2 3\n|\n[pin] signal\n");
}

TEST_F(PackageBlock, BlankLinesAfterTheBlockAreHarmless)
{
    EXPECT_EQ(packageOf("|CABGA256\nR_pkg 1 2 3\n|\n   \n[Pin]\n"), "[Package]\n|CABGA256\nR_pkg 1 2 3\n|\n[Pin]\n");
}

TEST_F(PackageBlock, BlankOnlyLineAheadOfThePackageIsAnUncaughtOutOfRange)
{
    // Nothing may catch the failure on its way out, so it is thrown from
    // where the process can only end.
    auto uncaught = [this]() noexcept { packageOf("|CSBGA132\nR_pkg 0 0 0\n|\n   \n|CABGA256\nR_pkg 1 2 3\n|\n[Pin]\n"); };
    EXPECT_EXIT(uncaught(), testing::KilledBySignal(SIGABRT), "terminate called after throwing an instance of "
                                                             "'std::out_of_range'\n  what\\(\\):  basic_string::substr");
}

TEST_F(PackageBlock, EmptyPackageNameMatchesTheFirstBareBarLine)
{
    probe._packageName = "";
    std::string out;
    EXPECT_EQ(packageOf("| variable  typ  min  max\n"
                        "|CABGA256\n"
                        "R_pkg  0.210  0.150  0.280\n"
                        "|\n"
                        "|CSBGA132\n"
                        "R_pkg  0.180  0.120  0.240\n"
                        "|\n"
                        "[Pin]\n",
                        &out),
              "[Package]\n|\n|CSBGA132\nR_pkg  0.180  0.120  0.240\n|\n[Pin]\n");
    EXPECT_EQ(out, "");
}

TEST_F(PackageBlock, PackageMissingFromTheMasterGetsZerosAndAWarning)
{
    probe._packageName = "CABGA400";
    std::string out;
    EXPECT_EQ(packageOf("|CABGA256\nR_pkg 1 2 3\n|\n[Pin]  signal_name  model_name\nA1 IO_A1 m1\n", &out),
              "| The package data for this package is currently not available in\n"
              "| the master ibis file.\n"
              "[Package]\n"
              "|CABGA400\n"
              "| variable            typ              min              max\n"
              "R_pkg                  0                0               0\n"
              "L_pkg                  0                0               0\n"
              "C_pkg                  0                0               0\n"
              "|\n"
              "[Pin]  signal_name  model_name\n");
    EXPECT_EQ(out, warning());
    EXPECT_EQ(probe.nextMasterLine(), "A1 IO_A1 m1");
}

TEST_F(PackageBlock, NameWithLowerCaseLettersNeverMatches)
{
    probe._packageName = "caBGA256";
    std::string out;
    std::string design = packageOf("|caBGA256\nR_pkg 1 2 3\n|\n[Pin]\n", &out);
    EXPECT_EQ(design, zerosFor("caBGA256") + "[Pin]\n");
    EXPECT_EQ(out, warning());
}

TEST_F(PackageBlock, MasterEndingBeforeThePinLine)
{
    std::string out;
    EXPECT_EQ(packageOf("|CABGA256\nR_pkg 1 2 3\n|\n|CSBGA132\n", &out), "[Package]\n|CABGA256\nR_pkg 1 2 3\n|\n");
    EXPECT_EQ(out, "");

    probe._packageName = "CABGA400";
    EXPECT_EQ(packageOf("|CABGA256\nR_pkg 1 2 3\n|\n", &out), "") << "no block and no pin line";
    EXPECT_EQ(out, warning());
}

} // namespace
