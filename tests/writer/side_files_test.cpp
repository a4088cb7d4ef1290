// The files beside the design IBIS file: where it was written, the numbered
// companion-chip copies, and the package model file of the device.

#include <gtest/gtest.h>

#include <sys/stat.h>

#include "writer/writer_probe.h"

namespace {

// -------------------------------------------------------- file location --

class FileLocation : public testing::Test {
protected:
    void SetUp() override { ts::resetGeneratorStatics(); }

    std::string location()
    {
        ts::ScopedCwd here(work.path());
        return ts::captureStdout([&] { probe.writeFileLocation(); });
    }

    ts::TempDir work;
    wt::DesignProbe probe;
};

TEST_F(FileLocation, AbsoluteNameIsShownAsItIs)
{
    probe._designIbisFile = probe.put("board.ibs", "[IBIS Ver] 5.0\n");
    EXPECT_EQ(location(), "\nGenerating: \"" + probe._designIbisFile + "\"\n\n");
}

TEST_F(FileLocation, RelativeNameIsShownBelowTheCurrentDirectoryWithSlashes)
{
    ASSERT_EQ(mkdir(work.file("IBIS").c_str(), 0777), 0);
    ts::writeFile(work.file("IBIS/board.ibs"), "[IBIS Ver] 5.0\n");
    std::string cwd = wt::realPath(work.path());
    probe._designIbisFile = "IBIS/board.ibs";
    EXPECT_EQ(location(), "\nGenerating: \"" + cwd + "/IBIS/board.ibs\"\n\n");
    probe._designIbisFile = "IBIS\\board.ibs";
    EXPECT_EQ(location(), "\nGenerating: \"" + cwd + "/IBIS/board.ibs\"\n\n");
}

TEST_F(FileLocation, FileThatIsNotThereIsNotMentioned)
{
    probe._designIbisFile = probe.dir() + "/missing.ibs";
    EXPECT_EQ(location(), "");
    probe._designIbisFile = "missing.ibs";
    EXPECT_EQ(location(), "");
}

// ------------------------------------------------------- companion files --

class CompanionFiles : public testing::Test {
protected:
    void SetUp() override
    {
        ts::resetGeneratorStatics();
        source = probe.put("k_btn.ibs", companion);
        ASSERT_EQ(mkdir(out.file("IBIS").c_str(), 0777), 0);
        stem = out.file("IBIS/board");
    }
    void TearDown() override { ts::resetGeneratorStatics(); }

    std::string copies(int count, std::string const& device = "KVA3-40E-6BG256C")
    {
        IBIS_MODEL::_input_dev_name = device;
        return ts::captureStdout([&] { probe.writeBtnFile(stem, source, count); });
    }
    // The list that the copies print, and a check that exactly these exist.
    std::string listed(std::vector<std::string> const& numbers)
    {
        std::string text;
        for (std::string const& number : numbers) {
            std::string name = stem + "_btn" + number + ".ibs";
            text += "    " + name + "\n";
            EXPECT_EQ(ts::readFile(name), companion) << name;
        }
        return text;
    }
    static std::vector<std::string> numbers(int first, int last, bool twoDigits)
    {
        std::vector<std::string> list;
        for (int i = first; i <= last; ++i)
            list.push_back((twoDigits && i < 10 ? "0" : "") + std::to_string(i));
        return list;
    }

    std::string const companion = "[IBIS Ver] 5.0\n[File Name] k_btn.ibs\n[Component] KBTN-8\n[End]\n";
    wt::DesignProbe probe;
    ts::TempDir out;
    std::string source;
    std::string stem;
};

TEST_F(CompanionFiles, OneCopyIsNumberedZero)
{
    std::string out = copies(1);
    EXPECT_EQ(out, "\nGenerating BTN IBIS file:\n" + listed({"0"}) + "\n");
    EXPECT_FALSE(ts::fileExists(stem + "_btn1.ibs"));
}

TEST_F(CompanionFiles, OneCopyIsNumberedOneForKrdhTwentyOne)
{
    std::string out = copies(1, "KRDH21");
    EXPECT_EQ(out, "\nGenerating BTN IBIS file:\n" + listed({"1"}) + "\n");
    EXPECT_FALSE(ts::fileExists(stem + "_btn0.ibs"));
}

TEST_F(CompanionFiles, NineCopiesTakeOneDigit)
{
    std::string out = copies(9, "KRDH21");
    EXPECT_EQ(out, "\nGenerating BTN IBIS files:\n" + listed(numbers(1, 9, false)) + "\n");
    out = copies(9);
    EXPECT_EQ(out, "\nGenerating BTN IBIS files:\n" + listed(numbers(0, 8, false)) + "\n");
}

TEST_F(CompanionFiles, TenCopiesTakeTwoDigitsFromTheFirst)
{
    std::string out = copies(10);
    EXPECT_EQ(out, "\nGenerating BTN IBIS files:\n" + listed(numbers(0, 9, true)) + "\n");
    EXPECT_FALSE(ts::fileExists(stem + "_btn0.ibs"));
    out = copies(10, "KRDH21");
    EXPECT_EQ(out, "\nGenerating BTN IBIS files:\n" + listed(numbers(1, 10, true)) + "\n");
}

TEST_F(CompanionFiles, TwelveCopiesForKrdhTwentyOneRunFrom01To12)
{
    std::string out = copies(12, "KRDH21");
    EXPECT_EQ(out, "\nGenerating BTN IBIS files:\n" + listed(numbers(1, 12, true)) + "\n");
    EXPECT_FALSE(ts::fileExists(stem + "_btn00.ibs"));
    EXPECT_FALSE(ts::fileExists(stem + "_btn13.ibs"));
}

TEST_F(CompanionFiles, NoCountGivesTheHeadAndAnEmptyLine)
{
    EXPECT_EQ(copies(0), "\nGenerating BTN IBIS file:\n\n");
    EXPECT_EQ(copies(-3), "\nGenerating BTN IBIS file:\n\n");
    EXPECT_FALSE(ts::fileExists(stem + "_btn0.ibs"));
}

TEST_F(CompanionFiles, MissingCompanionFileIsANoteOnly)
{
    source = probe.dir() + "/k_btn_missing.ibs";
    EXPECT_EQ(copies(2), "BTN model file \"" + source +
                             "\" is not available for the device/package selected in the design.\n\n");
    EXPECT_FALSE(ts::fileExists(stem + "_btn0.ibs"));
}

TEST_F(CompanionFiles, StemWithABackslashIsPrintedAsItStands)
{
    stem = out.file("IBIS") + "\\board";
    EXPECT_EQ(copies(1), "\nGenerating BTN IBIS file:\n    " + stem + "_btn0.ibs\n\n");
    EXPECT_EQ(ts::readFile(out.file("IBIS/board_btn0.ibs")), companion);
}

TEST_F(CompanionFiles, CopyThatFailsEndsTheRunWithStatusTwo)
{
    stem = out.file("nowhere/board");
    IBIS_MODEL::_input_dev_name = "KVA3-40E-6BG256C";
    EXPECT_EXIT(
        {
            ts::stdoutToStderr();
            probe.writeBtnFile(stem, source, 2);
        },
        testing::ExitedWithCode(2), "ERROR: Failed to generating BTN IBIS file: \"" + stem + "_btn0.ibs\"\n");
}

// ------------------------------------------------------ package model file --

class PackageModelFile : public testing::Test {
protected:
    void SetUp() override
    {
        ts::resetGeneratorStatics();
        probe._masterIbisFile = probe.put("kx3_master.ibs", "[IBIS Ver] 5.0\n");
        probe._designIbisFile = out.file("board.ibs");
        probe._packageName = "CABGA256";
        probe._partName = "A3";
        IBIS_MODEL::_input_dev_name = "KVA3-40E-6BG256C";
    }
    void TearDown() override { ts::resetGeneratorStatics(); }

    std::string packageFile()
    {
        return ts::captureStdout([&] { probe.writePackageFile(); });
    }
    // Puts a package model file named name beside the master, writes the
    // package file and checks that it was copied beside the design file.
    void expectCopied(std::string const& name)
    {
        std::string text = "[IBIS Ver] 5.0\n[File Name] " + name + "\n";
        probe.put(name, text);
        EXPECT_EQ(packageFile(), "\nGenerating package file:  \"" + out.file(name) + "\"\n\n") << name;
        EXPECT_EQ(ts::readFile(out.file(name)), text) << name;
        std::remove(probe.put(name, "").c_str());
    }

    wt::DesignProbe probe;
    ts::TempDir out;
};

TEST_F(PackageModelFile, NameIsMasterDevicePartBallTypeAndPinCountInLowerCase)
{
    expectCopied("kx3_master_6bg256c_bg.pkg");
}

TEST_F(PackageModelFile, PinCountFollowsTheBallType)
{
    probe._packagePinCount = "256";
    expectCopied("kx3_master_6bg256c_bg256.pkg");
}

TEST_F(PackageModelFile, DeviceWithoutDashAddsNoDevicePart)
{
    IBIS_MODEL::_input_dev_name = "KRDH21";
    expectCopied("kx3_master_bg.pkg");
}

TEST_F(PackageModelFile, DevicePartIsTakenBehindTheLastDash)
{
    IBIS_MODEL::_input_dev_name = "KVA3-17E-8SG72I";
    probe._packageName = "QFN72";
    probe._packagePinCount = "72";
    expectCopied("kx3_master_8sg72i72.pkg");
}

TEST_F(PackageModelFile, BallTypeFromTheLettersOfThePackage)
{
    for (auto const& c : std::vector<std::pair<std::string, std::string>>{{"CSBGA132", "_bg"},
                                                                          {"csbga132", "_bg"},
                                                                          {"MBGA64", "_bg"},
                                                                          {"CSMG100", "_mg"},
                                                                          {"csmg100", "_mg"},
                                                                          {"TQFP144", ""}}) {
        probe._packageName = c.first;
        expectCopied("kx3_master_6bg256c" + c.second + ".pkg");
    }
}

TEST_F(PackageModelFile, BallTypeLettersCountOnlyInOneCase)
{
    probe._packageName = "caBgA256";
    expectCopied("kx3_master_6bg256c.pkg");
    probe._packageName = "csMg100";
    expectCopied("kx3_master_6bg256c.pkg");
}

TEST_F(PackageModelFile, MasterNameIsLoweredToo)
{
    probe._masterIbisFile = probe.put("KX3_Master.ibs", "[IBIS Ver] 5.0\n");
    expectCopied("kx3_master_6bg256c_bg.pkg");
}

TEST_F(PackageModelFile, MissingFileIsSilentExceptForMorvalle)
{
    EXPECT_EQ(packageFile(), "");
    probe._partName = "MORVALLE";
    EXPECT_EQ(packageFile(), "Package model file \"kx3_master_6bg256c_bg.pkg\" is not available for the "
                             "device/package selected in the design.\n\n");
    EXPECT_FALSE(ts::fileExists(out.file("kx3_master_6bg256c_bg.pkg")));
}

TEST_F(PackageModelFile, CopyThatFailsEndsTheRunWithStatusTwo)
{
    probe.put("kx3_master_6bg256c_bg.pkg", "[IBIS Ver] 5.0\n");
    probe._designIbisFile = out.file("nowhere/board.ibs");
    std::string target = out.file("nowhere/kx3_master_6bg256c_bg.pkg");
    EXPECT_EXIT(
        {
            ts::stdoutToStderr();
            probe.writePackageFile();
        },
        testing::ExitedWithCode(2),
        "\nGenerating package file:  \"" + target + "\"\n\nERROR: Failed to generating package file: \"" + target +
            "\"\n\n");
}

} // namespace
