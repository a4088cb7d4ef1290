// Whole runs of pad2ibis --ami: a SerDes source set and a channels file in,
// the ibis_ami file set out.

#include <gtest/gtest.h>

#include <string>
#include <sys/stat.h>
#include <vector>

#include "ami/serdes_set.h"
#include "support/test_support.h"

namespace {

using amitest::listDir;
using amitest::SerdesSet;

// Channels of the runs below: both sides, receive only, transmit only, and
// one with neither side in use.
std::string const channelsText =
    "# SerDes channels of the design\n"
    "channel DCU0 CH0 ON ON\n"
    "  Rx_Ctle_Gain  0d12\n"
    "  Rx_Dfe_Tap1   0hB\n"
    "  Rx_Vga        dontcare\n"
    "  Rx_Term       0b0101\n"
    "  Tx_Amp        0H7F\n"
    "  Tx_Pre        0hZ\n"
    "\n"
    "channel DCU0 CH1 ON OFF\n"
    "\tRX_VGA\t0d3\n"
    "channel DCU1 CH0 OFF ON\n"
    "  tx_post 0B10\n"
    "  tx_post 0d9\n"
    "channel DCU1 CH1 OFF OFF\n"
    "  Tx_Amp 0d1\n";

std::string const rxCh0 =
    "(kva4_rx\n"
    "  (Description \"Receive side of the SerDes channel\")\n"
    "  (Reserved_Parameters\n"
    "    (AMI_Version (Usage Info) (Type String) (Value \"7.0\") )\n"
    "    (Init_Returns_Impulse (Usage Info) (Type Boolean) (Value True) )\n"
    "  )\n"
    "  (Model_Specific\n"
    "    (Rx_Ctle_Gain (Usage In) (Type Integer) (Format Value 12) (Description \"CTLE gain\") )\n"
    "    (Rx_Dfe_Tap1 (Usage In) (Type Integer) (Format Value 11) (Description \"DFE tap 1\") )\n"
    "    (Rx_Vga (Usage In) (Type Integer) (Format Value 8) (Description \"VGA\") )\n"
    "    (Rx_Term (Usage In) (Type Integer) (Format Value 5) (Description \"termination\") )\n"
    "  )\n"
    ")\n";

std::string const rxCh1 =
    "(kva4_rx\n"
    "  (Description \"Receive side of the SerDes channel\")\n"
    "  (Reserved_Parameters\n"
    "    (AMI_Version (Usage Info) (Type String) (Value \"7.0\") )\n"
    "    (Init_Returns_Impulse (Usage Info) (Type Boolean) (Value True) )\n"
    "  )\n"
    "  (Model_Specific\n"
    "    (Rx_Ctle_Gain (Usage In) (Type Integer) (Format Value 4) (Description \"CTLE gain\") )\n"
    "    (Rx_Dfe_Tap1 (Usage In) (Type Integer) (Format Value 0) (Description \"DFE tap 1\") )\n"
    "    (Rx_Vga (Usage In) (Type Integer) (Format Value 3) (Description \"VGA\") )\n"
    "    (Rx_Term (Usage In) (Type Integer) (Format Value 2) (Description \"termination\") )\n"
    "  )\n"
    ")\n";

std::string const txCh0 =
    "(kva4_tx\n"
    "  (Description \"Transmit side of the SerDes channel\")\n"
    "  (Model_Specific\n"
    "    (Tx_Amp (Usage In) (Type Integer) (Format Value 7F) (Description \"swing\") )\n"
    "    (Tx_Pre (Usage In) (Type Integer) (Format Value 0) (Description \"pre-cursor\") )\n"
    "    (Tx_Post (Usage In) (Type Integer) (Format Value 3) (Description \"post-cursor\") )\n"
    "  )\n"
    ")\n";

std::string const txDcu1Ch0 =
    "(kva4_tx\n"
    "  (Description \"Transmit side of the SerDes channel\")\n"
    "  (Model_Specific\n"
    "    (Tx_Amp (Usage In) (Type Integer) (Format Value 5) (Description \"swing\") )\n"
    "    (Tx_Pre (Usage In) (Type Integer) (Format Value 1) (Description \"pre-cursor\") )\n"
    "    (Tx_Post (Usage In) (Type Integer) (Format Value 2) (Description \"post-cursor\") )\n"
    "  )\n"
    ")\n";

class AmiProgram : public testing::Test {
protected:
    void SetUp() override
    {
        lib = root.file("serdes");
        run = root.file("run");
        ASSERT_EQ(::mkdir(lib.c_str(), 0777), 0);
        ASSERT_EQ(::mkdir(run.c_str(), 0777), 0);
        set = SerdesSet{lib, "kva4"};
        set.write();
        channels = root.file("channels.txt");
        ts::writeFile(channels, channelsText);
        out = amitest::realDir(run) + "/ibis_ami";
    }

    ts::RunResult ami(std::vector<std::string> const& extra = {})
    {
        std::vector<std::string> args{"--ami", "--channels", channels};
        args.insert(args.end(), extra.begin(), extra.end());
        args.push_back("designs/top.udb");
        args.push_back(set.master());
        return ts::runProgram(args, run);
    }

    std::string progress() const
    {
        return "\nGenerating SerDes IBIS file:  \"" + out + "/kva4serdes.ibs\"\n"
               "Generating RX AMI file:       \"" + out + "/CVN_kva4rx_ami.so\"\n"
               "Generating TX AMI file:       \"" + out + "/CVN_kva4tx_ami.so\"\n"
               "Generating RX parameter file: \"" + out + "/top_rx_params_DCU0_CH0.ami\"\n"
               "Generating TX parameter file: \"" + out + "/top_tx_params_DCU0_CH0.ami\"\n"
               "Generating RX parameter file: \"" + out + "/top_rx_params_DCU0_CH1.ami\"\n"
               "Generating TX parameter file: \"" + out + "/top_tx_params_DCU1_CH0.ami\"\n";
    }

    void expectTheFileSet() const
    {
        EXPECT_EQ(listDir(run), std::vector<std::string>{"ibis_ami"});
        EXPECT_EQ(listDir(out), (std::vector<std::string>{
                                    "CVN_kva4rx_ami.so", "CVN_kva4tx_ami.so", "kva4serdes.ibs",
                                    "top_rx_params_DCU0_CH0.ami", "top_rx_params_DCU0_CH1.ami",
                                    "top_tx_params_DCU0_CH0.ami", "top_tx_params_DCU1_CH0.ami"}));
        EXPECT_EQ(ts::readFile(out + "/kva4serdes.ibs"), amitest::masterText);
        EXPECT_EQ(ts::readFile(out + "/CVN_kva4rx_ami.so"), amitest::rxExecutableText);
        EXPECT_EQ(ts::readFile(out + "/CVN_kva4tx_ami.so"), amitest::txExecutableText);
        EXPECT_EQ(ts::readFile(out + "/top_rx_params_DCU0_CH0.ami"), rxCh0);
        EXPECT_EQ(ts::readFile(out + "/top_tx_params_DCU0_CH0.ami"), txCh0);
        EXPECT_EQ(ts::readFile(out + "/top_rx_params_DCU0_CH1.ami"), rxCh1);
        EXPECT_EQ(ts::readFile(out + "/top_tx_params_DCU1_CH0.ami"), txDcu1Ch0);
    }

    ts::TempDir root;
    std::string lib;
    std::string run;
    std::string channels;
    std::string out;
    SerdesSet set;
};

TEST_F(AmiProgram, WritesTheFileSet)
{
    ts::RunResult r = ami();
    EXPECT_EQ(r.exitCode, 0) << r.err;
    EXPECT_EQ(r.err, "");
    EXPECT_EQ(r.out,
              progress() + "\nDesign IBIS AMI Models are generated for board level analysis.\n");
    expectTheFileSet();
}

TEST_F(AmiProgram, FamilyAndBrinmarkLeaveTheFileSetAsItIs)
{
    ts::RunResult r = ami({"--family", "KVA4", "--brinmark"});
    EXPECT_EQ(r.exitCode, 0) << r.err;
    EXPECT_EQ(r.out,
              progress() + "\nDesign IBIS AMI Models are generated for board level analysis.\n");
    expectTheFileSet();
}

TEST_F(AmiProgram, MessageFlowPostsTheClosingMessageById)
{
    ts::RunResult r = ami({"--msgflow"});
    EXPECT_EQ(r.exitCode, 0);
    EXPECT_EQ(r.out, progress() + "\n");
    EXPECT_EQ(r.err, "padmodel-1036\n");
    expectTheFileSet();
}

TEST_F(AmiProgram, MissingSourceFileIsReportedAndNothingIsWritten)
{
    for (std::string const& file : set.files()) {
        set.write();
        ASSERT_EQ(std::remove(file.c_str()), 0);
        ts::RunResult r = ami();
        EXPECT_EQ(r.exitCode, 2) << file;
        EXPECT_EQ(r.out, "ERROR: The file '" + file + "' is not exist.\n");
        EXPECT_TRUE(listDir(run).empty()) << file;
    }
}

TEST_F(AmiProgram, EveryMissingSourceFileIsNamed)
{
    ASSERT_EQ(std::remove(set.txTemplate().c_str()), 0);
    ASSERT_EQ(std::remove(set.rxExecutable().c_str()), 0);
    ASSERT_EQ(std::remove(set.txExecutable().c_str()), 0);
    ts::RunResult r = ami();
    EXPECT_EQ(r.exitCode, 2);
    EXPECT_EQ(r.out, "ERROR: The file '" + set.txTemplate() + "' is not exist.\n"
                     "ERROR: The file '" + set.rxExecutable() + "' is not exist.\n"
                     "ERROR: The file '" + set.txExecutable() + "' is not exist.\n");
    EXPECT_TRUE(listDir(run).empty());

    r = ami({"--msgflow"});
    EXPECT_EQ(r.exitCode, 2);
    EXPECT_EQ(r.out, "");
    EXPECT_EQ(r.err, "padmodel-1033\t" + set.txTemplate() + "\n"
                     "padmodel-1033\t" + set.rxExecutable() + "\n"
                     "padmodel-1033\t" + set.txExecutable() + "\n");
    EXPECT_TRUE(listDir(run).empty());
}

TEST_F(AmiProgram, NoChannelsMakesNoDirectory)
{
    ts::writeFile(channels, "# no SerDes in this design\n\n   # none at all\n");
    ts::RunResult r = ami();
    EXPECT_EQ(r.exitCode, 0);
    EXPECT_EQ(r.out, "\nThere is no SERDES used in the design.\n\n");
    EXPECT_EQ(r.err, "");
    EXPECT_TRUE(listDir(run).empty());
}

TEST_F(AmiProgram, NoChannelsWithMessageFlowPostsById)
{
    ts::writeFile(channels, "");
    ts::RunResult r = ami({"--msgflow"});
    EXPECT_EQ(r.exitCode, 0);
    EXPECT_EQ(r.out, "\n");
    EXPECT_EQ(r.err, "padmodel-1035\n");
    EXPECT_TRUE(listDir(run).empty());
}

TEST_F(AmiProgram, ChannelsFileErrorsNameTheLineAndWriteNothing)
{
    struct Case {
        char const* text;
        char const* line;
    } const cases[] = {
        {"# settings\n\nTx_Amp 0d1\nchannel DCU0 CH0 ON ON\n", "3"},
        {"channel DCU0 CH0 ON ON\nTx_Amp 0d1\nchannel DCU0 CH1 ON\n", "3"},
        {"channel DCU0 CH0 ON ON\n  Tx_Amp\n", "2"},
        {"channel DCU0 CH0 ON ON\nTx_Amp 0d1 0d2\n", "2"},
    };
    for (Case const& c : cases) {
        ts::writeFile(channels, c.text);
        ts::RunResult r = ami();
        EXPECT_EQ(r.exitCode, 2) << c.text;
        EXPECT_EQ(r.out, "") << c.text;
        std::string const head = "pad2ibis: " + channels + ":" + c.line + ": ";
        EXPECT_EQ(r.err.rfind(head, 0), 0u) << r.err;
        EXPECT_EQ(r.err.back(), '\n');
        EXPECT_EQ(r.err.find('\n'), r.err.size() - 1) << "one line: " << r.err;
        EXPECT_TRUE(listDir(run).empty()) << c.text;
    }

    // A channels file that is missing, or a directory that cannot be read.
    std::remove(channels.c_str());
    ts::RunResult r = ami();
    EXPECT_EQ(r.exitCode, 2);
    EXPECT_EQ(r.out, "");
    EXPECT_EQ(r.err.rfind("pad2ibis: " + channels + ":", 0), 0u) << r.err;
    EXPECT_TRUE(listDir(run).empty());

    ASSERT_EQ(::mkdir(channels.c_str(), 0777), 0);
    r = ami();
    EXPECT_EQ(r.exitCode, 2);
    EXPECT_EQ(r.out, "");
    EXPECT_EQ(r.err.rfind("pad2ibis: " + channels + ":", 0), 0u) << r.err;
    EXPECT_TRUE(listDir(run).empty());
}

TEST_F(AmiProgram, MissingSourceFileIsReportedBeforeTheChannelsFileIsRead)
{
    ts::writeFile(channels, "Tx_Amp 0d1\n");
    ASSERT_EQ(std::remove(set.rxTemplate().c_str()), 0);
    ts::RunResult r = ami();
    EXPECT_EQ(r.exitCode, 2);
    EXPECT_EQ(r.out, "ERROR: The file '" + set.rxTemplate() + "' is not exist.\n");
    EXPECT_EQ(r.err, "");
}

TEST(AmiExampleSet, DemoRunWritesTheExpectedFiles)
{
    ts::TempDir run;
    std::string const dir = ts::sourcePath("examples/serdes");
    ts::RunResult r = ts::runProgram({"--ami", "--channels", dir + "/channels.txt",
                                      dir + "/demo_serdes.udb", dir + "/kva4serdes.ibs"},
                                     run.path());
    EXPECT_EQ(r.exitCode, 0) << r.out << r.err;
    EXPECT_EQ(r.err, "");
    std::string const out = amitest::realDir(run.path()) + "/ibis_ami";
    auto line = [&](char const* what, std::string const& file) {
        return std::string(what) + "\"" + out + "/" + file + "\"\n";
    };
    std::string const rx = "demo_serdes_rx_params_";
    std::string const tx = "demo_serdes_tx_params_";
    EXPECT_EQ(r.out, "\n" + line("Generating SerDes IBIS file:  ", "kva4serdes.ibs") +
                         line("Generating RX AMI file:       ", "CVN_kva4rx_ami.so") +
                         line("Generating TX AMI file:       ", "CVN_kva4tx_ami.so") +
                         line("Generating RX parameter file: ", rx + "PCS0_CH0.ami") +
                         line("Generating TX parameter file: ", tx + "PCS0_CH0.ami") +
                         line("Generating RX parameter file: ", rx + "PCS0_CH1.ami") +
                         line("Generating TX parameter file: ", tx + "PCS1_CH0.ami") +
                         "\nDesign IBIS AMI Models are generated for board level analysis.\n");
    EXPECT_EQ(listDir(out), (std::vector<std::string>{
                                "CVN_kva4rx_ami.so", "CVN_kva4tx_ami.so",
                                "demo_serdes_rx_params_PCS0_CH0.ami",
                                "demo_serdes_rx_params_PCS0_CH1.ami",
                                "demo_serdes_tx_params_PCS0_CH0.ami",
                                "demo_serdes_tx_params_PCS1_CH0.ami", "kva4serdes.ibs"}));
    for (char const* copy : {"kva4serdes.ibs", "CVN_kva4rx_ami.so", "CVN_kva4tx_ami.so"})
        EXPECT_EQ(ts::readFile(out + "/" + copy), ts::readFile(dir + "/" + copy)) << copy;

    // The channels' settings, as they land in the parameter files.
    struct Setting {
        char const* file;
        char const* parameter;
        char const* value;
    } const settings[] = {
        {"demo_serdes_rx_params_PCS0_CH0.ami", "Rx_Ctle_Gain", "12"},
        {"demo_serdes_rx_params_PCS0_CH0.ami", "Rx_Ctle_Peak", "10"},
        {"demo_serdes_rx_params_PCS0_CH0.ami", "Rx_Dfe_Tap1", "5"},
        {"demo_serdes_rx_params_PCS0_CH0.ami", "Rx_Vga", "8"},
        {"demo_serdes_tx_params_PCS0_CH0.ami", "Tx_Amp", "9"},
        {"demo_serdes_tx_params_PCS0_CH0.ami", "Tx_Pre", "2"},
        {"demo_serdes_tx_params_PCS0_CH0.ami", "Tx_Post", "12"},
        {"demo_serdes_rx_params_PCS0_CH1.ami", "Rx_Dfe_Tap2", "1"},
        {"demo_serdes_rx_params_PCS0_CH1.ami", "Rx_Term", "3"},
        {"demo_serdes_tx_params_PCS1_CH0.ami", "Tx_Amp", "7"},
        {"demo_serdes_tx_params_PCS1_CH0.ami", "Tx_Slew", "2"},
        {"demo_serdes_tx_params_PCS1_CH0.ami", "Tx_Term", "2"},
    };
    for (Setting const& s : settings) {
        std::string const text = std::string("(") + s.parameter +
                                  " (Usage In) (Type Integer) (Format Value " + s.value +
                                  ") (Description ";
        EXPECT_NE(ts::readFile(out + "/" + s.file).find(text), std::string::npos)
            << s.file << ": " << text;
    }
}

} // namespace
