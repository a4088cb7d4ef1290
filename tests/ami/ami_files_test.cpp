// The SerDes AMI file set: naming the source set after the SerDes master
// file, the AMI executables' names, and writing the set into ibis_ami below
// the current directory. Also the design IBIS file's name in the ordinary
// flow, which the same initFiles settles.

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

#include "ami/serdes_set.h"
#include "driver/basibsgen.h"
#include "host/msgmanager.h"
#include "support/test_support.h"

namespace {

using amitest::channel;
using amitest::exactly;
using amitest::listDir;
using amitest::SerdesSet;

void makeDir(std::string const& path)
{
    ASSERT_EQ(::mkdir(path.c_str(), 0777), 0) << path;
}

std::string missing(std::string const& path)
{
    return "ERROR: The file '" + path + "' is not exist.\n";
}

// A generator whose SerDes channels are handed in by the test, and which
// notes the database loaders that get called.
class ChannelGen : public IBS_GEN {
public:
    void loadPcsInfo() override
    {
        calls += "pcs;";
        _amiIobufs = channels;
    }
    void setPartType() override { calls += "part;"; }
    void loadPinInfo() override { calls += "pin;"; }
    bool loadIbisModels() override
    {
        calls += "models;";
        return true;
    }
    using IBS_GEN::loadPinInfo;
    using IBS_GEN::setPartType;

    std::vector<IB_AMI_CHANNEL*> channels;
    std::string calls;
};

class AmiSourceSet : public testing::Test {
protected:
    void SetUp() override
    {
        ts::resetGeneratorStatics();
        IBIS_MODEL::_is_AMI_model = true;
        lib = root.file("lib");
        work = root.file("work");
        makeDir(lib);
        makeDir(work);
        set = SerdesSet{lib, "kva4"};
        set.write();
    }
    void TearDown() override { ts::resetGeneratorStatics(); }

    // initFiles, which must come back and print nothing here.
    bool name(IBS_GEN& gen, std::string const& design, std::string const& master)
    {
        if (!amitest::comesBack([&] { gen.initFiles(design.c_str(), master.c_str()); }))
            return false;
        std::string out =
            ts::captureStdout([&] { gen.initFiles(design.c_str(), master.c_str()); });
        EXPECT_EQ(out, "");
        return true;
    }

    ts::TempDir root;
    std::string lib;
    std::string work;
    SerdesSet set;
};

TEST_F(AmiSourceSet, NamesTheSetAfterTheSerdesMaster)
{
    IBS_GEN gen;
    gen._designIbisFile = "kept";
    ASSERT_TRUE(name(gen, "designs/top.udb", set.master()));
    EXPECT_EQ(gen._masterIbisFile, set.master());
    EXPECT_EQ(gen._designFile, "designs/top.udb");
    EXPECT_EQ(gen._amiRxParameterFile, lib + "/kva4RX_parameters.ami");
    EXPECT_EQ(gen._amiTxParameterFile, lib + "/kva4TX_parameters.ami");
    EXPECT_EQ(gen._amiRxExecutable, lib + "/CVN_kva4rx_ami.so");
    EXPECT_EQ(gen._amiTxExecutable, lib + "/CVN_kva4tx_ami.so");
    EXPECT_EQ(gen._designBaseName, "top");
    EXPECT_EQ(gen._designIbisFile, "kept") << "the design IBIS file plays no part in this flow";
}

TEST_F(AmiSourceSet, PrefixMayBeEmpty)
{
    SerdesSet bare{lib, ""};
    bare.write();
    IBS_GEN gen;
    ASSERT_TRUE(name(gen, "top.udb", lib + "/serdes.ibs"));
    EXPECT_EQ(gen._amiRxParameterFile, lib + "/RX_parameters.ami");
    EXPECT_EQ(gen._amiTxParameterFile, lib + "/TX_parameters.ami");
    EXPECT_EQ(gen._amiRxExecutable, lib + "/CVN_rx_ami.so");
    EXPECT_EQ(gen._amiTxExecutable, lib + "/CVN_tx_ami.so");
}

TEST_F(AmiSourceSet, LastSerdesIbsOfTheMasterPathCounts)
{
    std::string inner = lib + "/oldserdes.ibs.d";
    makeDir(inner);
    SerdesSet nested{inner, "new"};
    nested.write();
    IBS_GEN gen;
    ASSERT_TRUE(name(gen, "top.udb", nested.master()));
    EXPECT_EQ(gen._amiRxParameterFile, inner + "/newRX_parameters.ami");
    EXPECT_EQ(gen._amiTxParameterFile, inner + "/newTX_parameters.ami");
    EXPECT_EQ(gen._amiRxExecutable, inner + "/CVN_newrx_ami.so");
    EXPECT_EQ(gen._amiTxExecutable, inner + "/CVN_newtx_ami.so");
}

TEST_F(AmiSourceSet, TextBehindTheLastSerdesIbsIsDropped)
{
    std::string master = lib + "/kva4serdes.ibs.orig";
    ts::writeFile(master, amitest::masterText);
    IBS_GEN gen;
    ASSERT_TRUE(name(gen, "top.udb", master));
    EXPECT_EQ(gen._masterIbisFile, master);
    EXPECT_EQ(gen._amiRxParameterFile, set.rxTemplate());
    EXPECT_EQ(gen._amiTxParameterFile, set.txTemplate());
    EXPECT_EQ(gen._amiRxExecutable, set.rxExecutable());
    EXPECT_EQ(gen._amiTxExecutable, set.txExecutable());
}

TEST_F(AmiSourceSet, MasterWithoutSerdesIbsKeepsItsNameForTheTemplates)
{
    std::string master = lib + "/master.ibs";
    ts::writeFile(master, amitest::masterText);
    ts::writeFile(lib + "/CVN_masterrx_ami.so", amitest::rxExecutableText);
    ts::writeFile(lib + "/CVN_mastertx_ami.so", amitest::txExecutableText);
    IBS_GEN gen;
    ASSERT_TRUE(name(gen, "top.udb", master));
    EXPECT_EQ(gen._amiRxParameterFile, master);
    EXPECT_EQ(gen._amiTxParameterFile, master);
    EXPECT_EQ(gen._amiRxExecutable, lib + "/CVN_masterrx_ami.so");
    EXPECT_EQ(gen._amiTxExecutable, lib + "/CVN_mastertx_ami.so");
}

TEST_F(AmiSourceSet, DesignBaseNameIsTheDesignFilesNameWithoutExtension)
{
    struct Case {
        char const* design;
        char const* base;
    } const cases[] = {
        {"top.udb", "top"},         {"/x/y/top.v2.udb", "top.v2"}, {"top", "top"},
        {"dir.d/top", "top"},       {"designs/demo_serdes.udb", "demo_serdes"},
    };
    for (Case const& c : cases) {
        IBS_GEN gen;
        ASSERT_TRUE(name(gen, c.design, set.master())) << c.design;
        EXPECT_EQ(gen._designBaseName, c.base) << c.design;
    }
}

TEST_F(AmiSourceSet, EveryMissingFileIsReportedBeforeTheRunEnds)
{
    std::string expected;
    for (std::string const& file : set.files()) {
        ASSERT_EQ(std::remove(file.c_str()), 0);
        expected += missing(file);
    }
    EXPECT_EXIT(
        {
            ts::stdoutToStderr();
            IBS_GEN gen;
            gen.initFiles("top.udb", set.master().c_str());
        },
        testing::ExitedWithCode(2), exactly(expected));
}

TEST_F(AmiSourceSet, EachMissingFileAloneEndsTheRun)
{
    for (std::string const& file : set.files()) {
        set.write();
        ASSERT_EQ(std::remove(file.c_str()), 0);
        EXPECT_EXIT(
            {
                ts::stdoutToStderr();
                IBS_GEN gen;
                gen.initFiles("top.udb", set.master().c_str());
            },
            testing::ExitedWithCode(2), exactly(missing(file)))
            << file;
    }
}

TEST_F(AmiSourceSet, MasterWithoutIbsIsRefusedFirst)
{
    std::string master = lib + "/kva4serdes.ib";
    EXPECT_EXIT(
        {
            ts::stdoutToStderr();
            IBS_GEN gen;
            gen.initFiles("top.udb", master.c_str());
        },
        testing::ExitedWithCode(2),
        exactly("ERROR: Ibis file " + master + " should have .ibs extension.\n"));
}

TEST_F(AmiSourceSet, MissingFamilyMasterFallsBackOnItsSibling)
{
    ts::writeFile(lib + "/anr5y.ibs", amitest::masterText);
    ts::writeFile(lib + "/CVN_anr5yrx_ami.so", amitest::rxExecutableText);
    ts::writeFile(lib + "/CVN_anr5ytx_ami.so", amitest::txExecutableText);
    IBS_GEN gen;
    ASSERT_TRUE(name(gen, "top.udb", lib + "/anr5yh.ibs"));
    EXPECT_EQ(gen._masterIbisFile, lib + "/anr5y.ibs");
    EXPECT_EQ(gen._amiRxExecutable, lib + "/CVN_anr5yrx_ami.so");
    EXPECT_EQ(gen._amiTxExecutable, lib + "/CVN_anr5ytx_ami.so");
}

TEST_F(AmiSourceSet, DeviceStatusIsFetchedOnlyInTheBrinmarkFlow)
{
    ts::writeFile(set.master(), "[IBIS Ver] 7.0\n[Notes]\nDevice KVA4-100 Production\n[End]\n");
    IBIS_MODEL::_input_dev_name = "KVA4-100";

    IBS_GEN plain;
    plain._deviceStatus = "stale";
    ASSERT_TRUE(name(plain, "top.udb", set.master()));
    EXPECT_EQ(plain._deviceStatus, "");

    IBIS_MODEL::_is_brinmark_flow = true;
    IBS_GEN brinmark;
    ASSERT_TRUE(name(brinmark, "top.udb", set.master()));
    EXPECT_EQ(brinmark._deviceStatus, "KVA4-100 PRODUCTION");
}

TEST(AmiExecutableNames, FollowTheSerdesMasterPath)
{
    struct Case {
        char const* master;
        char const* rx;
        char const* tx;
    } const cases[] = {
        {"/a/b/kva4serdes.ibs", "/a/b/CVN_kva4rx_ami.so", "/a/b/CVN_kva4tx_ami.so"},
        {"kva4serdes.ibs", "CVN_kva4rx_ami.so", "CVN_kva4tx_ami.so"},
        {"/a/b/serdes.ibs", "/a/b/CVN_rx_ami.so", "/a/b/CVN_tx_ami.so"},
        {"/a/serdes.ibs.d/kva4serdes.ibs", "/a/serdes.ibs.d/CVN_kva4rx_ami.so",
         "/a/serdes.ibs.d/CVN_kva4tx_ami.so"},
        // The last "serdes.ibs" goes with everything behind it.
        {"/a/kva4serdes.ibs.d/x.ibs", "/a/CVN_kva4rx_ami.so", "/a/CVN_kva4tx_ami.so"},
        // What is left is split as a file name; its extension plays no part.
        {"/a/b/k.v4serdes.ibs", "/a/b/CVN_krx_ami.so", "/a/b/CVN_ktx_ami.so"},
        {"/a/b/master.ibs", "/a/b/CVN_masterrx_ami.so", "/a/b/CVN_mastertx_ami.so"},
    };
    for (Case const& c : cases) {
        IBS_GEN gen;
        std::string rx = c.master;
        std::string tx = c.master;
        gen.getAmiRxExecutableFile(rx);
        gen.getAmiTxExecutableFile(tx);
        EXPECT_EQ(rx, c.rx) << c.master;
        EXPECT_EQ(tx, c.tx) << c.master;
    }
}

// The ordinary flow: the design IBIS file's name, and no SerDes set.
class DesignFileNames : public AmiSourceSet {
protected:
    void SetUp() override
    {
        AmiSourceSet::SetUp();
        IBIS_MODEL::_is_AMI_model = false;
    }
};

TEST_F(DesignFileNames, DesignIbisFileReplacesFromTheLastPoint)
{
    struct Case {
        char const* design;
        char const* ibis;
    } const cases[] = {
        {"out/top.udb", "out/top.ibs"}, {"out/top.v2.udb", "out/top.v2.ibs"},
        {"out/top", "out/top"},         {"top.", "top.ibs"},
        // The last point may stand in a directory name.
        {"out.d/top", "out.ibs"},
    };
    for (Case const& c : cases) {
        IBS_GEN gen;
        ASSERT_TRUE(name(gen, c.design, lib + "/absent.ibs")) << c.design;
        EXPECT_EQ(gen._designIbisFile, c.ibis) << c.design;
        EXPECT_EQ(gen._designFile, c.design);
        EXPECT_EQ(gen._masterIbisFile, lib + "/absent.ibs") << "not looked for in this flow";
        EXPECT_EQ(gen._amiRxParameterFile, "");
        EXPECT_EQ(gen._amiRxExecutable, "");
        EXPECT_EQ(gen._designBaseName, "");
    }
}

TEST_F(DesignFileNames, IbsInADirectoryNameIsEnough)
{
    IBS_GEN gen;
    ASSERT_TRUE(name(gen, "top.udb", "lib.ibs.d/master"));
    EXPECT_EQ(gen._masterIbisFile, "lib.ibs.d/master");
    EXPECT_EQ(gen._designIbisFile, "top.ibs");
}

TEST_F(DesignFileNames, MasterWithoutIbsIsRefused)
{
    EXPECT_EXIT(
        {
            ts::stdoutToStderr();
            IBS_GEN gen;
            gen.initFiles("top.udb", "lib/master.ib");
        },
        testing::ExitedWithCode(2),
        exactly("ERROR: Ibis file lib/master.ib should have .ibs extension.\n"));
}

TEST_F(DesignFileNames, MissingFamilyMasterTakesTheSiblingsName)
{
    ts::writeFile(lib + "/anr4yh.ibs", amitest::masterText);
    struct Case {
        std::string given;
        std::string taken;
    } const cases[] = {
        {lib + "/anr4yh.ibs", lib + "/anr4yh.ibs"}, // present: kept
        {lib + "/anr5yh.ibs", lib + "/anr5y.ibs"},
        {lib + "/x/anr4yh.ibs", lib + "/x/anr4y.ibs"},
        {lib + "/anr4yh.ibs.d/anr4yh.ibs", lib + "/anr4yh.ibs.d/anr4y.ibs"},
        {lib + "/anr5yh.ibs.old", lib + "/anr5y.ibs"},
        {lib + "/kva4h.ibs", lib + "/kva4h.ibs"},
    };
    for (Case const& c : cases) {
        IBS_GEN gen;
        ASSERT_TRUE(name(gen, "top.udb", c.given)) << c.given;
        EXPECT_EQ(gen._masterIbisFile, c.taken) << c.given;
    }
}

// Writing the set, with the current directory in work.
class AmiWrite : public AmiSourceSet {
protected:
    void SetUp() override
    {
        AmiSourceSet::SetUp();
        cwd.reset(new ts::ScopedCwd(work));
        out = amitest::realDir(work) + "/ibis_ami";
    }
    void TearDown() override
    {
        cwd.reset();
        AmiSourceSet::TearDown();
    }

    // Names the set for design "designs/top.udb" and hands the channels in.
    void prepare(std::vector<IB_AMI_CHANNEL*> const& channels)
    {
        gen.channels = channels;
        auto init = [&] { gen.init("KVA4", nullptr, "designs/top.udb", set.master().c_str()); };
        ASSERT_TRUE(amitest::comesBack(init));
        EXPECT_EQ(ts::captureStdout(init), "");
    }

    // write_ami_files and what it prints. It is first tried in a scratch
    // directory of a child process, so that a run that ends fails this test
    // only.
    std::string write()
    {
        std::string scratch = root.file("scratch" + std::to_string(++scratchRuns));
        makeDir(scratch);
        bool cameBack = amitest::comesBack(
            [&] {
                if (chdir(scratch.c_str()) != 0)
                    std::exit(3);
                gen.write_ami_files();
            },
            false);
        if (!cameBack)
            return "<the run ended>";
        return ts::captureStdout([&] { gen.write_ami_files(); });
    }

    // The progress lines of the three copies into dir.
    static std::string copyLines(std::string const& dir)
    {
        return "\nGenerating SerDes IBIS file:  \"" + dir + "/kva4serdes.ibs\"\n"
               "Generating RX AMI file:       \"" + dir + "/CVN_kva4rx_ami.so\"\n"
               "Generating TX AMI file:       \"" + dir + "/CVN_kva4tx_ami.so\"\n";
    }
    std::string copyLines() const { return copyLines(out); }
    std::string rxLine(std::string const& file) const
    {
        return "Generating RX parameter file: \"" + out + "/" + file + "\"\n";
    }
    std::string txLine(std::string const& file) const
    {
        return "Generating TX parameter file: \"" + out + "/" + file + "\"\n";
    }
    static std::string closing()
    {
        return "\nDesign IBIS AMI Models are generated for board level analysis.\n";
    }

    std::unique_ptr<ts::ScopedCwd> cwd;
    std::string out;
    ChannelGen gen;
    int scratchRuns = 0;
};

std::string rxParams(char const* gain, char const* tap1, char const* vga, char const* term)
{
    return std::string("(kva4_rx\n"
                       "  (Description \"Receive side of the SerDes channel\")\n"
                       "  (Reserved_Parameters\n"
                       "    (AMI_Version (Usage Info) (Type String) (Value \"7.0\") )\n"
                       "    (Init_Returns_Impulse (Usage Info) (Type Boolean) (Value True) )\n"
                       "  )\n"
                       "  (Model_Specific\n"
                       "    (Rx_Ctle_Gain (Usage In) (Type Integer) (Format Value ") +
           gain + ") (Description \"CTLE gain\") )\n"
                  "    (Rx_Dfe_Tap1 (Usage In) (Type Integer) (Format Value " +
           tap1 + ") (Description \"DFE tap 1\") )\n"
                  "    (Rx_Vga (Usage In) (Type Integer) (Format Value " +
           vga + ") (Description \"VGA\") )\n"
                 "    (Rx_Term (Usage In) (Type Integer) (Format Value " +
           term + ") (Description \"termination\") )\n"
                  "  )\n"
                  ")\n";
}

std::string txParams(char const* amp, char const* pre, char const* post)
{
    return std::string("(kva4_tx\n"
                       "  (Description \"Transmit side of the SerDes channel\")\n"
                       "  (Model_Specific\n"
                       "    (Tx_Amp (Usage In) (Type Integer) (Format Value ") +
           amp + ") (Description \"swing\") )\n"
                 "    (Tx_Pre (Usage In) (Type Integer) (Format Value " +
           pre + ") (Description \"pre-cursor\") )\n"
                 "    (Tx_Post (Usage In) (Type Integer) (Format Value " +
           post + ") (Description \"post-cursor\") )\n"
                  "  )\n"
                  ")\n";
}

TEST_F(AmiWrite, InitNamesTheSetAndTakesTheChannelsOnly)
{
    prepare({channel("DCU0", "CH0", "ON", "ON", {})});
    EXPECT_EQ(gen.calls, "pcs;");
    EXPECT_EQ(gen._family, "KVA4");
    EXPECT_EQ(gen._designBaseName, "top");
    EXPECT_EQ(gen._amiIobufs.size(), 1u);
    EXPECT_TRUE(gen._devIoMaps.empty()) << "no drive table in this flow";
    EXPECT_TRUE(listDir(work).empty());
}

TEST_F(AmiWrite, RunWritesTheCopiesAndOneParameterFilePerEnabledSide)
{
    prepare({
        channel("DCU0", "CH0", "ON", "ON",
                {{"Rx_Ctle_Gain", "0d12"}, {"Rx_Dfe_Tap1", "0hB"}, {"Rx_Vga", "DONTCARE"},
                 {"Rx_Term", "0b0101"}, {"Tx_Amp", "0H7F"}, {"Tx_Pre", "0hZ"}}),
        channel("DCU0", "CH1", "ON", "OFF", {{"rx_vga", "0d3"}, {"Tx_Amp", "0d1"}}),
        channel("DCU1", "CH0", "OFF", "ON", {{"TX_POST", "0B10"}, {"Rx_Vga", "0d1"}}),
        channel("DCU1", "CH1", "OFF", "OFF", {{"Tx_Amp", "0d1"}, {"Rx_Vga", "0d1"}}),
    });
    ASSERT_TRUE(amitest::comesBack(
        [&] {
            if (chdir(root.path().c_str()) != 0 || ::mkdir("scratch", 0777) != 0 ||
                chdir("scratch") != 0)
                std::exit(3);
            gen.run();
        },
        false));
    std::string text = ts::captureStdout([&] { gen.run(); });
    EXPECT_EQ(text, copyLines() + rxLine("top_rx_params_DCU0_CH0.ami") +
                        txLine("top_tx_params_DCU0_CH0.ami") +
                        rxLine("top_rx_params_DCU0_CH1.ami") +
                        txLine("top_tx_params_DCU1_CH0.ami") + closing());
    EXPECT_EQ(gen.calls, "pcs;") << "run reads no master file section in this flow";

    EXPECT_EQ(listDir(work), std::vector<std::string>{"ibis_ami"});
    EXPECT_EQ(listDir(out), (std::vector<std::string>{
                                "CVN_kva4rx_ami.so", "CVN_kva4tx_ami.so", "kva4serdes.ibs",
                                "top_rx_params_DCU0_CH0.ami", "top_rx_params_DCU0_CH1.ami",
                                "top_tx_params_DCU0_CH0.ami", "top_tx_params_DCU1_CH0.ami"}));
    EXPECT_EQ(ts::readFile(out + "/kva4serdes.ibs"), amitest::masterText);
    EXPECT_EQ(ts::readFile(out + "/CVN_kva4rx_ami.so"), amitest::rxExecutableText);
    EXPECT_EQ(ts::readFile(out + "/CVN_kva4tx_ami.so"), amitest::txExecutableText);
    EXPECT_EQ(ts::readFile(out + "/top_rx_params_DCU0_CH0.ami"), rxParams("12", "11", "8", "5"));
    EXPECT_EQ(ts::readFile(out + "/top_tx_params_DCU0_CH0.ami"), txParams("7F", "0", "3"));
    EXPECT_EQ(ts::readFile(out + "/top_rx_params_DCU0_CH1.ami"), rxParams("4", "0", "3", "2"));
    EXPECT_EQ(ts::readFile(out + "/top_tx_params_DCU1_CH0.ami"), txParams("5", "1", "2"));
}

TEST_F(AmiWrite, SideIsWrittenOnlyWhenExactlyOn)
{
    prepare({channel("DCU0", "CH0", "on", "On", {}), channel("DCU0", "CH1", "ON ", "yes", {}),
             channel("DCU0", "CH2", "", "OFF", {})});
    EXPECT_EQ(write(), copyLines() + closing());
    EXPECT_EQ(listDir(out), (std::vector<std::string>{"CVN_kva4rx_ami.so", "CVN_kva4tx_ami.so",
                                                      "kva4serdes.ibs"}));
}

TEST_F(AmiWrite, LaterChannelWithTheSameIdsOverwritesTheFile)
{
    prepare({channel("DCU0", "CH0", "ON", "OFF", {{"Rx_Vga", "0d1"}}),
             channel("DCU0", "CH0", "ON", "OFF", {{"Rx_Vga", "0d2"}})});
    EXPECT_EQ(write(), copyLines() + rxLine("top_rx_params_DCU0_CH0.ami") +
                           rxLine("top_rx_params_DCU0_CH0.ami") + closing());
    EXPECT_EQ(ts::readFile(out + "/top_rx_params_DCU0_CH0.ami"), rxParams("4", "0", "2", "2"));
}

TEST_F(AmiWrite, ExistingIbisAmiDirectoryIsUsed)
{
    makeDir(out);
    ts::writeFile(out + "/notes.txt", "kept\n");
    prepare({channel("DCU0", "CH0", "OFF", "ON", {})});
    EXPECT_EQ(write(), copyLines() + txLine("top_tx_params_DCU0_CH0.ami") + closing());
    EXPECT_EQ(ts::readFile(out + "/notes.txt"), "kept\n");
    EXPECT_EQ(ts::readFile(out + "/top_tx_params_DCU0_CH0.ami"), txParams("5", "1", "3"));
}

TEST_F(AmiWrite, NoChannelsMakesNothing)
{
    prepare({});
    EXPECT_EQ(write(), "\nThere is no SERDES used in the design.\n\n");
    EXPECT_TRUE(listDir(work).empty());
}

TEST_F(AmiWrite, NoChannelsWithMessageFlowStillPrintsTheEmptyLine)
{
    prepare({});
    UT_MSGMAN::m_msgFlow = 1;
    EXPECT_EQ(write(), "\n");
    EXPECT_TRUE(listDir(work).empty());
}

TEST_F(AmiWrite, CopiesKeepTheirNamesAndAnEmptyExtensionBecomesAPoint)
{
    // A master without "serdes.ibs" and without extension: it is its own
    // parameter template, and its copy is "master." since the name is
    // composed of base name and extension.
    std::string dir = lib + "/set.ibs.d";
    makeDir(dir);
    ts::writeFile(dir + "/master", "(Rate (Format Value 5) )\n");
    ts::writeFile(dir + "/CVN_masterrx_ami.so", amitest::rxExecutableText);
    ts::writeFile(dir + "/CVN_mastertx_ami.so", amitest::txExecutableText);
    gen.channels = {channel("DCU0", "CH0", "ON", "OFF", {{"Rate", "0d7"}})};
    auto init = [&] { gen.init("KVA4", nullptr, "top", (dir + "/master").c_str()); };
    ASSERT_TRUE(amitest::comesBack(init));
    init();
    EXPECT_EQ(write(), "\nGenerating SerDes IBIS file:  \"" + out + "/master.\"\n"
                       "Generating RX AMI file:       \"" + out + "/CVN_masterrx_ami.so\"\n"
                       "Generating TX AMI file:       \"" + out + "/CVN_mastertx_ami.so\"\n" +
                           rxLine("top_rx_params_DCU0_CH0.ami") + closing());
    EXPECT_EQ(ts::readFile(out + "/master."), "(Rate (Format Value 5) )\n");
    EXPECT_EQ(ts::readFile(out + "/top_rx_params_DCU0_CH0.ami"), "(Rate (Format Value 7) )\n");
}

TEST_F(AmiWrite, BackslashInTheCurrentDirectoryBecomesASeparator)
{
    // The output paths are composed with backslashes and then turned into
    // Unix paths, so a directory named a\b reads as a/b.
    std::string here = amitest::realDir(work);
    makeDir(here + "/a");
    makeDir(here + "/a/b");
    makeDir(here + "/a\\b");
    ts::ScopedCwd inside(here + "/a\\b");
    prepare({channel("DCU0", "CH0", "OFF", "ON", {})});
    out = here + "/a/b/ibis_ami";
    EXPECT_EQ(write(), copyLines() + txLine("top_tx_params_DCU0_CH0.ami") + closing());
    EXPECT_EQ(listDir(out), (std::vector<std::string>{"CVN_kva4rx_ami.so", "CVN_kva4tx_ami.so",
                                                      "kva4serdes.ibs",
                                                      "top_tx_params_DCU0_CH0.ami"}));
    EXPECT_TRUE(listDir(here + "/a\\b").empty());
}

TEST_F(AmiWrite, DirectoryThatCannotBeMadeEndsTheRun)
{
    // A link to nowhere: not there for the existence test, in the way of
    // the new directory.
    ASSERT_EQ(symlink("nowhere/at/all", "ibis_ami"), 0);
    prepare({channel("DCU0", "CH0", "ON", "ON", {})});
    EXPECT_EXIT(
        {
            ts::stdoutToStderr();
            gen.write_ami_files();
        },
        testing::ExitedWithCode(2),
        exactly("ERROR: Failed to create subdirectory '" + out + "'.\n"));
}

TEST_F(AmiWrite, FailedCopyEndsTheRunAndKeepsTheEarlierCopies)
{
    prepare({channel("DCU0", "CH0", "ON", "ON", {})});
    struct Case {
        char const* file;
        char const* what;
        size_t lines; // copy lines printed up to the failing one
    } const cases[] = {
        {"kva4serdes.ibs", "SerDes IBIS", 1},
        {"CVN_kva4rx_ami.so", "RX AMI", 2},
        {"CVN_kva4tx_ami.so", "TX AMI", 3},
    };
    for (Case const& c : cases) {
        std::string dir = root.file(std::string("run_") + c.file);
        makeDir(dir);
        makeDir(dir + "/ibis_ami");
        makeDir(dir + "/ibis_ami/" + c.file); // a directory where the copy goes
        ts::ScopedCwd inDir(dir);
        std::string const here = amitest::realDir(dir) + "/ibis_ami";
        std::string const target = here + "/" + c.file;
        // The empty line, then the progress lines up to the failing copy.
        std::string const all = copyLines(here);
        size_t end = 0;
        for (size_t line = 0; line <= c.lines; ++line)
            end = all.find('\n', end) + 1;
        std::string const upTo = all.substr(0, end);
        EXPECT_EXIT(
            {
                ts::stdoutToStderr();
                gen.write_ami_files();
            },
            testing::ExitedWithCode(2),
            exactly(upTo + "ERROR: Failed to generating " + c.what + " file: \"" + target +
                    "\"\n"))
            << c.file;
        std::vector<std::string> kept = listDir(dir + "/ibis_ami");
        // The directory in the way and the copies made before it.
        EXPECT_EQ(kept.size(), c.lines) << "earlier copies stay: " << c.file;
    }
}

TEST_F(AmiWrite, ParameterFileThatCannotBeWrittenEndsTheRun)
{
    prepare({channel("DCU0", "CH0", "ON", "ON", {})});
    makeDir(out);
    makeDir(out + "/top_rx_params_DCU0_CH0.ami");
    EXPECT_EXIT(
        {
            ts::stdoutToStderr();
            gen.write_ami_files();
        },
        testing::ExitedWithCode(2),
        exactly(copyLines() + rxLine("top_rx_params_DCU0_CH0.ami") + "Could not open file <" +
                out + "/top_rx_params_DCU0_CH0.ami> for writing.\n"));
}

TEST_F(AmiWrite, TemplateGoneSinceNamingEndsTheRun)
{
    prepare({channel("DCU0", "CH0", "OFF", "ON", {})});
    ASSERT_EQ(std::remove(set.txTemplate().c_str()), 0);
    EXPECT_EXIT(
        {
            ts::stdoutToStderr();
            gen.write_ami_files();
        },
        testing::ExitedWithCode(2),
        exactly(copyLines() + txLine("top_tx_params_DCU0_CH0.ami") + "Could not open file <" +
                set.txTemplate() + "> for reading.\n"));
}

} // namespace
