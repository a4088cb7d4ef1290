// SerDes AMI models: the copy of a parameter template with a channel's
// settings filled in, and whole runs of pad2ibis --ami: a source set and a
// channels file in, the ibis_ami file set out.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

#include <unistd.h>
#include <sys/stat.h>

#include "driver/basibsgen.h"
#include "support/test_support.h"

namespace {

using Names = std::vector<std::string>;
using Settings = std::vector<std::pair<std::string, std::string>>;

// A channel's parameter records.
struct Configs {
    explicit Configs(Settings const& settings)
    {
        for (auto const& s : settings)
            records.emplace_back(s.first, s.second);
        for (IB_IOBUF_CONFIG& record : records)
            list.push_back(&record);
    }
    std::vector<IB_IOBUF_CONFIG> records;
    std::vector<IB_IOBUF_CONFIG*> list;
};

TEST(AmiParameterFile, CopiesTheTemplateLineByLine)
{
    ts::TempDir dir;
    std::string const source = dir.file("kva4TX_parameters.ami"), target = dir.file("top_tx_params_DCU0_CH0.ami");
    Configs configs({{"Tx_Amp", "0b0101"}, {"Tx_Pre", "0d7"}, {"Tx_Post", "0hA"}, {"Tx_Main", "DONTCARE"}});
    auto copy = [&](std::string const& from, std::string const& to) {
        IBS_GEN().write_ami_parameter_file(from.c_str(), to.c_str(), configs.list);
    };
    // Line ends stay as they are, a last line without one keeps none; only the first
    // "(Format Value" of a line of a known parameter changes; long lines are taken whole.
    std::string const wide = "| " + std::string(4000, 'c') + "\n(Tx_Post" + std::string(3000, ' ') + "(Format Value ";
    ts::writeFile(source, "(kva4_tx\r\n  (Tx_Amp (format value 2) )\n  (Tx_Main (Format Value 9) )\n"
                          "  (Tx_Pre (Format Value 1) (Eq (Format Value 2) )\n" + wide + "3) x\n  (Tx_Post (Format Value 3) )");
    EXPECT_EQ(ts::captureStdout([&] { copy(source, target); }), "");
    EXPECT_EQ(ts::readFile(target), "(kva4_tx\r\n  (Tx_Amp (format value 2) )\n  (Tx_Main (Format Value 9) )\n"
                                    "  (Tx_Pre (Format Value 7) (Eq (Format Value 2) )\n" + wide + "10) x\n  (Tx_Post (Format Value 10) )");
    // A template that cannot be read or a file that cannot be written ends the run.
    std::string const absent = dir.file("absent.ami"), unwritable = dir.file("no/such.ami");
    EXPECT_EXIT((ts::stdoutToStderr(), copy(absent, target)), testing::ExitedWithCode(2),
                testing::Matcher<std::string const&>("Could not open file <" + absent + "> for reading.\n"));
    EXPECT_EXIT((ts::stdoutToStderr(), copy(source, unwritable)), testing::ExitedWithCode(2),
                testing::Matcher<std::string const&>("Could not open file <" + unwritable + "> for writing.\n"));
}

std::string data(std::string const& name) { return ts::readFile(ts::sourcePath("tests/ami/data/" + name)); }

// The names in a directory, sorted; none when it does not exist.
Names listDir(std::string const& path)
{
    Names names;
    std::error_code none;
    for (auto const& entry : std::filesystem::directory_iterator(path, none))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

// What the run prints of each file it writes into the ibis_ami directory below run.
std::string progress(std::string const& run, std::vector<std::pair<char const*, std::string>> const& files)
{
    std::string text = "\n";
    for (auto const& file : files)
        text += std::string("Generating ") + file.first + "\"" + std::filesystem::canonical(run).string() +
                "/ibis_ami/" + file.second + "\"\n";
    return text;
}

char const kClosing[] = "\nDesign IBIS AMI Models are generated for board level analysis.\n";

// The source set, in the order in which missing files are reported.
Names const kSet = {"kva4serdes.ibs", "kva4RX_parameters.ami", "kva4TX_parameters.ami", "CVN_kva4rx_ami.so",
                    "CVN_kva4tx_ami.so"};

class AmiProgram : public testing::Test {
protected:
    void SetUp() override
    {
        // Only the last "serdes.ibs" of the master's path names the set.
        ASSERT_EQ(::mkdir(lib.c_str(), 0777), 0);
        ASSERT_EQ(::mkdir(run.c_str(), 0777), 0);
        writeSet();
        ts::writeFile(channels, data("channels.txt"));
    }
    void writeSet()
    {
        for (std::string const& name : kSet)
            ts::writeFile(lib + "/" + name, data(name));
    }
    ts::RunResult ami(Names const& options = {}, std::string const& master = "")
    {
        Names args{"--ami", "--channels", channels};
        args.insert(args.end(), options.begin(), options.end());
        args.push_back("designs/top.udb");
        args.push_back(master.empty() ? lib + "/kva4serdes.ibs" : master);
        return ts::runLegacy(args, run);
    }

    ts::TempDir root;
    std::string lib = root.file("serdes.ibs.d"), run = root.file("run"), channels = root.file("channels.txt");
};

TEST_F(AmiProgram, WritesTheCopiesAndOneParameterFilePerSideInUse)
{
    Names const made = {"top_rx_params_DCU0_CH0.ami", "top_rx_params_DCU0_CH1.ami", "top_tx_params_DCU0_CH0.ami",
                        "top_tx_params_DCU1_CH0.ami"};
    std::string const lines = progress(run, {{"SerDes IBIS file:  ", kSet[0]}, {"RX AMI file:       ", kSet[3]},
        {"TX AMI file:       ", kSet[4]}, {"RX parameter file: ", made[0]}, {"TX parameter file: ", made[2]},
        {"RX parameter file: ", made[1]}, {"TX parameter file: ", made[3]}});
    // The second run writes into the directory that the first one made; in
    // the message flow the closing message goes by number.
    struct { Names options; std::string out, err; } const cases[] = {
        {{}, lines + kClosing, ""}, {{"--msgflow"}, lines + "\n", "padmodel-1036\n"}};
    for (auto const& c : cases) {
        ts::RunResult r = ami(c.options);
        EXPECT_EQ(r.exitCode, 0);
        EXPECT_EQ(r.out, c.out);
        EXPECT_EQ(r.err, c.err);
        EXPECT_EQ(listDir(run), Names{"ibis_ami"});
        EXPECT_EQ(listDir(run + "/ibis_ami"),
                  (Names{kSet[3], kSet[4], kSet[0], made[0], made[1], made[2], made[3]}));
        for (std::string const& copy : {kSet[0], kSet[3], kSet[4]})
            EXPECT_EQ(ts::readFile(run + "/ibis_ami/" + copy), data(copy)) << copy;
        for (std::string const& file : made)
            EXPECT_EQ(ts::readFile(run + "/ibis_ami/" + file), data("expected/" + file)) << file;
    }
}

TEST_F(AmiProgram, EveryMissingSourceFileIsReportedBeforeTheRunEndsAndNothingIsWritten)
{
    ts::writeFile(channels, "Tx_Amp 0d1\n"); // wrong, and not read yet
    for (Names const& gone : {Names{kSet[0]}, Names{kSet[1]}, Names{kSet[2]}, Names{kSet[3]}, Names{kSet[4]},
                              Names{kSet[2], kSet[3], kSet[4]}}) {
        writeSet();
        std::string text, ids;
        for (std::string const& name : gone) {
            ASSERT_EQ(std::remove((lib + "/" + name).c_str()), 0);
            text += "ERROR: The file '" + lib + "/" + name + "' is not exist.\n";
            ids += "padmodel-1033\t" + lib + "/" + name + "\n";
        }
        ts::RunResult r = ami(), flow = ami({"--msgflow"});
        EXPECT_EQ(r.exitCode, 2);
        EXPECT_EQ(r.out + "|" + r.err, text + "|");
        EXPECT_EQ(flow.exitCode, 2);
        EXPECT_EQ(flow.out + "|" + flow.err, "|" + ids);
        EXPECT_TRUE(listDir(run).empty());
    }
}

TEST_F(AmiProgram, ChannelsFileErrorsNameTheLineAndWriteNothing)
{
    struct { char const *text, *at; } const cases[] = {
        {"# settings\n\nTx_Amp 0d1\nchannel DCU0 CH0 ON ON\n", ":3: "},
        {"channel DCU0 CH0 ON ON\nTx_Amp 0d1\nchannel DCU0 CH1 ON\n", ":3: "},
        {"channel DCU0 CH0 ON ON\n  Tx_Amp\n", ":2: "}, {"channel DCU0 CH0 ON ON\nTx_Amp 0d1 0d2\n", ":2: "},
        {nullptr, ":"}, {nullptr, ":"}, // no channels file, then a directory in its place
    };
    for (auto const& c : cases) {
        if (c.text != nullptr)
            ts::writeFile(channels, c.text);
        else if (std::remove(channels.c_str()) != 0 && ::mkdir(channels.c_str(), 0777) != 0)
            ADD_FAILURE() << "no directory " << channels;
        ts::RunResult r = ami();
        EXPECT_EQ(r.exitCode, 2);
        EXPECT_EQ(r.out, "");
        EXPECT_EQ(r.err.rfind("pad2ibis: " + channels + c.at, 0), 0u) << r.err;
        EXPECT_EQ(r.err.find('\n'), r.err.size() - 1) << "one line: " << r.err;
        EXPECT_TRUE(listDir(run).empty());
    }
}

TEST_F(AmiProgram, ADirectoryOrCopyThatCannotBeMadeEndsTheRun)
{
    std::string const out = std::filesystem::canonical(run).string() + "/ibis_ami";
    // A dangling link: nothing exists there, and nothing can be made.
    ASSERT_EQ(::symlink("nowhere", out.c_str()), 0);
    ts::RunResult r = ami();
    EXPECT_EQ(r.exitCode, 2);
    EXPECT_EQ(r.out, "ERROR: Failed to create subdirectory '" + out + "'.\n");
    // A directory in the place of the master's copy: what was made before
    // the failed copy stays.
    ASSERT_EQ(std::remove(out.c_str()), 0);
    ASSERT_EQ(::mkdir(out.c_str(), 0777), 0);
    ASSERT_EQ(::mkdir((out + "/" + kSet[0]).c_str(), 0777), 0);
    r = ami();
    EXPECT_EQ(r.exitCode, 2);
    EXPECT_EQ(r.out, "\nGenerating SerDes IBIS file:  \"" + out + "/" + kSet[0] +
                         "\"\nERROR: Failed to generating SerDes IBIS file: \"" + out + "/" + kSet[0] + "\"\n");
}

} // namespace
