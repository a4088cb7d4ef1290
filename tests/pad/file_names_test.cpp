// File names of a run and the device status line of the master file.

#include <gtest/gtest.h>

#include <cstring>

#include "driver/basibsgen.h"
#include "support/generator_probe.h"

namespace {

class FileNames : public testing::Test {
protected:
    void SetUp() override { ts::resetGeneratorStatics(); }
    void TearDown() override { ts::resetGeneratorStatics(); }
    ts::ProbeModel model;
};

TEST_F(FileNames, DesignFileIsThePadReportWithIbsExtension)
{
    model.initFiles("work/demo.pad", "lib/kva3.ibs");
    EXPECT_EQ(model._padFile, "work/demo.pad");
    EXPECT_EQ(model._masterIbisFile, "lib/kva3.ibs");
    EXPECT_EQ(model._designIbisFile, "work/demo.ibs");
    EXPECT_EQ(model._deviceStatus, "");
}

TEST_F(FileNames, ExtensionTestsAreContainmentTests)
{
    model.initFiles("run.v2/demo.pad.txt", "lib/kva3.ibs.gz");
    EXPECT_EQ(model._designIbisFile, "run.v2/demo.pad.ibs");
}

TEST_F(FileNames, WrongExtensionsAreFatal)
{
    EXPECT_EXIT(
        {
            ts::stdoutToStderr();
            model.initFiles("demo.rpt", "m.ibs");
        },
        testing::ExitedWithCode(2), "^ERROR: report file demo.rpt should have .pad extension.\n$");
    EXPECT_EXIT(
        {
            ts::stdoutToStderr();
            model.initFiles("demo.pad", "master.txt");
        },
        testing::ExitedWithCode(2), "^ERROR: Ibis file master.txt should have .ibs extension.\n$");
}

struct Split {
    std::string drive, directory, name, extension;
};

Split split(IBIS_MODEL& model, char const* path)
{
    char drive[256], directory[256], name[256], extension[256];
    std::strcpy(drive, "junk");
    model.split_file_name(path, drive, directory, name, extension);
    return {drive, directory, name, extension};
}

TEST_F(FileNames, SplitFileName)
{
    Split s = split(model, "/cae/lib/kva3.ibs");
    EXPECT_EQ(s.drive, "");
    EXPECT_EQ(s.directory, "/cae/lib/");
    EXPECT_EQ(s.name, "kva3");
    EXPECT_EQ(s.extension, ".ibs");

    s = split(model, "kva3");
    EXPECT_EQ(s.directory, "");
    EXPECT_EQ(s.extension, ".") << "an empty extension becomes a point";

    s = split(model, "./kva3.ibs");
    EXPECT_EQ(s.directory, "./");
    s = split(model, "C:\\lib\\x.ibs");
    EXPECT_EQ(s.directory, "C:\\lib\\/") << "a slash is added behind any other last character";
}

std::string const statusMaster =
    "[IBIS Ver]   5.0\n"
    "|KVA3-40E-6BG256C is mentioned ahead of the notes\n"
    "[Notes]\n"
    "| Device: kva3-40e-6bg256c preliminary\n"
    "| Naming convention\n"
    "| KVA3-17E-6BG256C production\n";

TEST_F(FileNames, DeviceStatusIsSearchedInTheNotesOnlyAndInUpperCase)
{
    IBIS_MODEL::_input_dev_name = "KVA3-40E-6BG256C";
    model.setMaster(statusMaster);
    std::string status;
    model.get_device_status(model._masterIbisFile.c_str(), status);
    EXPECT_EQ(status, "KVA3-40E-6BG256C PRELIMINARY");

    IBIS_MODEL::_input_dev_name = "KVA3-17E-6BG256C";
    status.clear();
    model.get_device_status(model._masterIbisFile.c_str(), status);
    EXPECT_EQ(status, "") << "never behind the naming convention line";
}

TEST_F(FileNames, NotesHeadingLineItselfIsLookedAt)
{
    IBIS_MODEL::_input_dev_name = "KVA2";
    model.setMaster("x\n[NOTES] KVA2 sample status\n");
    std::string status;
    model.get_device_status(model._masterIbisFile.c_str(), status);
    EXPECT_EQ(status, "KVA2 SAMPLE STATUS");
}

TEST_F(FileNames, BrinmarkFlowFetchesTheStatusInInitFiles)
{
    IBIS_MODEL::_is_brinmark_flow = true;
    IBIS_MODEL::_input_dev_name = "KVA3-40E-6BG256C";
    model.setMaster(statusMaster);
    model.initFiles("d.pad", model._masterIbisFile.c_str());
    EXPECT_EQ(model._deviceStatus, "KVA3-40E-6BG256C PRELIMINARY");
}

TEST_F(FileNames, UnreadableMasterForTheStatusIsFatal)
{
    EXPECT_EXIT(
        {
            ts::stdoutToStderr();
            std::string status;
            model.get_device_status("/nonexistent/m.ibs", status);
        },
        testing::ExitedWithCode(1), "^Error opening file: /nonexistent/m.ibs\n$");
}

} // namespace
