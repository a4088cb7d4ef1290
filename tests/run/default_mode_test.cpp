// The program's default mode, run as a user runs it: inputs that the readers
// would misread are refused before anything is written, and what it did is
// said on the right stream.

#include <gtest/gtest.h>

#include <cstdio>

#include <sys/stat.h>
#include <unistd.h>

#include "support/test_support.h"

namespace {

using S = std::string;
using Files = std::map<S, S>;

// A directory holding the tiny test family's master and package file and
// the fixtures named.
struct Work {
    ts::TempDir dir;

    explicit Work(std::vector<S> const& fixtures = {})
    {
        for (S const& name : std::vector<S>{"tiny.pad", "tiny.ibs", "tiny_6bg256c_bg.pkg"})
            copy(name);
        for (S const& name : fixtures)
            copy(name);
    }
    void copy(S const& name, S const& as = "") const
    {
        ts::writeFile(dir.file(as.empty() ? name : as), ts::readFile(ts::sourcePath("tests/run/data/" + name)));
    }
    ts::RunResult run(std::vector<S> const& args) const { return ts::runProgram(args, dir.path()); }
    Files files() const { return ts::filesBelow(dir.path()); }
};

TEST(DefaultMode, WhatTheReadersWouldMisreadIsRefusedBeforeAnythingIsWritten)
{
    struct Case {
        S pad, master;
        int exit;
        S err;
    } const cases[] = {
        {"long_line.pad", "tiny.ibs", 1,
         "long_line.pad:11: error: line of 300 characters, over the 254 that the pad report reader takes: it would "
         "stop reading here, and lines 11 to 21 would be lost\n"
         "pad2ibis: error: the pad report long_line.pad cannot be read as it stands; nothing was written\n"},
        // The reading stops at a long row of the open bank table: the table
        // is no matter then.
        {"open_bank_long_row.pad", "tiny.ibs", 1,
         "open_bank_long_row.pad:19: error: line of 300 characters, over the 254 that the pad report reader takes: "
         "it would stop reading here, and lines 19 to 19 would be lost\n"
         "pad2ibis: error: the pad report open_bank_long_row.pad cannot be read as it stands; nothing was written\n"},
        {"nul_byte.pad", "tiny.ibs", 1,
         "nul_byte.pad:10: error: NUL byte: the pad report reader would end the line there, and the rest of the line "
         "would be lost\n"
         "pad2ibis: error: the pad report nul_byte.pad cannot be read as it stands; nothing was written\n"},
        {"open_bank_table.pad", "tiny.ibs", 1,
         "open_bank_table.pad:15: error: the bank table is not closed by a line beginning with \"+\": its reader "
         "would take every line behind it, to line 19, as bank rows\n"
         "pad2ibis: error: the pad report open_bank_table.pad cannot be read as it stands; nothing was written\n"},
        {"tiny.pad", "long_naming_line.ibs", 1,
         "long_naming_line.ibs:6: error: line of 255 characters, over the 254 that the component and naming table "
         "readers take: they would stop reading here, ahead of the component line\n"
         "pad2ibis: error: the master file long_naming_line.ibs cannot be read as it stands; nothing was written\n"},
        {"tiny.pad", "long_model_line.ibs", 1,
         "long_model_line.ibs:50: error: line of 300 characters, over the 255 that the design file writer's passes "
         "take: they would stop here, and the model blocks from here on would be lost\n"
         "pad2ibis: error: the master file long_model_line.ibs cannot be read as it stands; nothing was written\n"},
        {"tiny.pad", "nul_byte.ibs", 1,
         "nul_byte.ibs:54: error: NUL byte: the readers of the master file would end the line there, and the rest "
         "of the line would be lost\n"
         "pad2ibis: error: the master file nul_byte.ibs cannot be read as it stands; nothing was written\n"},
        {"tiny.pad", "blank_package_line.ibs", 1,
         "blank_package_line.ibs:38: error: a line of blanks alone ahead of the block of the design's package "
         "CABGA256: the package writer fails on it, and the run would end with a design file cut short\n"
         "pad2ibis: error: the master file blank_package_line.ibs cannot be read as it stands; nothing was "
         "written\n"},
        {"tiny.pad", "open_package_block.ibs", 1,
         "open_package_block.ibs:38: error: the block of the design's package CABGA256 is not closed by a \"|\" "
         "line ahead of the [Pin] line: its copy would run on into the pin list\n"
         "pad2ibis: error: the master file open_package_block.ibs cannot be read as it stands; nothing was "
         "written\n"},
        {"tiny.pad", "open_pin_list.ibs", 1,
         "open_pin_list.ibs:47: error: the [Pin] list is not closed by a line beginning with \"|\" ahead of this "
         "line: its reader would take the lines of the model blocks for models\n"
         "pad2ibis: error: the master file open_pin_list.ibs cannot be read as it stands; nothing was written\n"},
        {"tiny.pad", "open_last_block.ibs", 1,
         "open_last_block.ibs:53: error: no line holding \"[Model]\" follows the block opened here (no closing "
         "\"| End [Model]\" line): its copy would run to the end of the file, line 66\n"
         "pad2ibis: error: the master file open_last_block.ibs cannot be read as it stands; nothing was written\n"},
        // When the models cannot be loaded, the checker says why.
        {"tiny.pad", "no_naming_tables.ibs", 2,
         "no_naming_tables.ibs:7: error: the naming tables for KVA3 are incomplete ahead of this line: no "
         "STANDARD, SLEW, PULLMODE, VCMT or MULTI DRIVE, DIFFERENTIAL CURRENT or DIFF DRIVE; the generator reads "
         "on and fails to load the models\n"
         "pad2ibis: error: the models of the master file no_naming_tables.ibs cannot be loaded: pad2ibis check "
         "--master --family KVA3 no_naming_tables.ibs tells all\n"},
    };
    for (Case const& c : cases) {
        SCOPED_TRACE(c.pad + " " + c.master);
        Work work({c.pad, c.master});
        // A design file of an earlier run stays as it was.
        S const design = c.pad.substr(0, c.pad.size() - 4) + ".ibs";
        ts::writeFile(work.dir.file("IBIS/" + design), "earlier run\n");
        Files const before = work.files();
        ts::RunResult const r = work.run({c.pad, c.master});
        EXPECT_EQ(r.exitCode, c.exit);
        EXPECT_EQ(r.err, c.err);
        EXPECT_EQ(work.files(), before);
    }
}

TEST(DefaultMode, WhatTheReadersWouldLeaveOutIsSaid)
{
    Work work({"no_line_end.pad"});
    ts::RunResult const r = work.run({"-q", "no_line_end.pad", "tiny.ibs"});
    EXPECT_EQ(r.exitCode, 0);
    EXPECT_EQ(r.err, "no_line_end.pad:12: warning: the last line has no line end, and the pad report reader never "
                     "takes such a line: it is left out\n");
    EXPECT_NE(r.out.find("Signals: 2: 2 resolved"), S::npos) << r.out;
}

TEST(DefaultMode, ACrLfPadReportGivesTheFilesOfItsLfTwin)
{
    Work lf, crlf({"crlf.pad"});
    ts::writeFile(crlf.dir.file("tiny.pad"), ts::readFile(crlf.dir.file("crlf.pad")));
    std::remove(crlf.dir.file("crlf.pad").c_str());
    ASSERT_NE(ts::readFile(crlf.dir.file("tiny.pad")).find("\r\n"), S::npos);
    ts::RunResult const a = lf.run({"tiny.pad", "tiny.ibs"}), b = crlf.run({"tiny.pad", "tiny.ibs"});
    EXPECT_EQ(a.exitCode, 0);
    EXPECT_EQ(b.exitCode, 0);
    Files out = lf.files(), crlfOut = crlf.files();
    out.erase("tiny.pad");
    crlfOut.erase("tiny.pad");
    EXPECT_EQ(crlfOut, out);
    EXPECT_EQ(out.count("IBIS/tiny_6bg256c_bg.pkg"), 1u);
}

TEST(DefaultMode, APadReportInFoldersGetsItsFoldersBelowIbis)
{
    Work work;
    work.copy("tiny.pad", "board/rev_b/tiny.pad");
    ts::RunResult const r = work.run({"board/rev_b/tiny.pad", "tiny.ibs"});
    EXPECT_EQ(r.exitCode, 0) << r.err;
    EXPECT_TRUE(ts::fileExists(work.dir.file("IBIS/board/rev_b/tiny.ibs")));
    EXPECT_TRUE(ts::fileExists(work.dir.file("IBIS/board/rev_b/tiny_6bg256c_bg.pkg")));
    // The legacy host makes only IBIS/ and fails to open the design file.
    Work legacy;
    legacy.copy("tiny.pad", "board/tiny.pad");
    EXPECT_EQ(ts::runLegacy({"board/tiny.pad", "tiny.ibs"}, legacy.dir.path()).exitCode, 1);
}

TEST(DefaultMode, ProgressOnStandardOutputWarningsOnStandardErrorAndASummary)
{
    Work work;
    ts::writeFile(work.dir.file("k_btn.ibs"), ts::readFile(ts::sourcePath("tests/writer/data/k_btn.ibs")));
    // The companion chip's file is sought beside the master by its path: a
    // master named without a folder would have it sought at tiny.ibsk_btn.ibs.
    ts::RunResult const r = work.run({"--btn", "2", "--report", "tiny.csv", "tiny.pad", "./tiny.ibs"});
    EXPECT_EQ(r.exitCode, 0);
    EXPECT_EQ(r.out, "Read the pad report tiny.pad: part KVA3-40E-6BG256C, package CABGA256, 3 signals\n"
                     "Read the master file ./tiny.ibs: component KVANR3-40E, 3 models\n"
                     "Wrote:\n"
                     "  IBIS/tiny_zu2.ibs         design IBIS file\n"
                     "  IBIS/tiny_btn0.ibs        companion chip's IBIS file, copied\n"
                     "  IBIS/tiny_btn1.ibs        companion chip's IBIS file, copied\n"
                     "  IBIS/tiny_6bg256c_bg.pkg  package model, copied from beside the master file\n"
                     "  tiny.csv                  resolution report\n"
                     "Signals: 3: 2 resolved, 0 fallback, 0 substituted, 1 missing (buzzer)\n"
                     "The master file has no model for the settings of the missing signals: they\n"
                     "have no [Pin] row. --report FILE names the nearest model of each, and\n"
                     "--substitute nearest gives it to them.\n");
    EXPECT_EQ(r.err, "pad2ibis: warning: signal \"buzzer\": the master file has no model \"lvc330s120naaaaaaaou\"\n");
    // Quiet: the summary alone; nothing on standard output for a failed run.
    ts::RunResult const quiet = work.run({"-q", "tiny.pad", "./tiny.ibs"});
    EXPECT_EQ(quiet.out.rfind("Wrote:\n", 0), 0u) << quiet.out;
    EXPECT_EQ(quiet.err, r.err);
    ts::RunResult const missing = work.run({"nosuch.pad", "tiny.ibs"});
    EXPECT_EQ(missing.exitCode, 1);
    EXPECT_EQ(missing.out, "");
    EXPECT_EQ(missing.err, "pad2ibis: error: the pad report nosuch.pad does not exist\n");
    // A report is written in folders made for it; one that cannot be
    // written where it is named is refused ahead of the design file.
    ts::RunResult const made = work.run({"-q", "--report", "out/run/r.csv", "tiny.pad", "./tiny.ibs"});
    EXPECT_EQ(made.exitCode, 0) << made.err;
    EXPECT_TRUE(ts::fileExists(work.dir.file("out/run/r.csv")));
    ts::writeFile(work.dir.file("plain"), "a file\n");
    for (auto const& [report, problem] : std::vector<std::pair<S, S>>{
             {"plain/r.csv", "plain is no folder"}, {"IBIS", "it is a directory"}}) {
        std::remove(work.dir.file("IBIS/tiny.ibs").c_str());
        ts::RunResult const refused = work.run({"-q", "--report", report, "tiny.pad", "./tiny.ibs"});
        EXPECT_EQ(refused.exitCode, 2);
        EXPECT_EQ(refused.out, "");
        EXPECT_EQ(refused.err, "pad2ibis: error: cannot write the report " + report + ": " + problem +
                                   "; nothing was written\n");
        EXPECT_FALSE(ts::fileExists(work.dir.file("IBIS/tiny.ibs")));
    }
}

TEST(DefaultMode, TheGeneratorsWarningsAreOneLineEach)
{
    Work work;
    // The file name, made from text with every "from" put as "to".
    auto write = [&work](S const& name, S text, S const& from, S const& to) {
        for (auto at = text.find(from); at != S::npos; at = text.find(from, at + to.size()))
            text.replace(at, from.size(), to);
        ts::writeFile(work.dir.file(name), text);
    };
    S const pad = ts::readFile(work.dir.file("tiny.pad")), master = ts::readFile(work.dir.file("tiny.ibs"));
    write("lvds.pad", pad, "LVCMOS33_IN ", "LVDS_IN     ");
    write("bidi.ibs", master, "aaaaaaain", "aaaaaaaio");
    write("other.ibs", master, "|CABGA256", "|CABGA999");
    S const warning = "pad2ibis: warning: ";
    S const buzzer = warning + "signal \"buzzer\": the master file has no model \"lvc330s120naaaaaaaou\"";
    struct Case {
        std::vector<S> args;
        S err;
    } const cases[] = {
        {{"--substitute", "nearest", "tiny.pad", "tiny.ibs"}, buzzer + "; it gets \"lvc330s080naaaaaaaou\" instead\n"},
        {{"tiny.pad", "bidi.ibs"},
         warning + "signal \"key\": the master file has no input model \"lvc330axxxdaaaaaaain\"; it gets its "
                   "bidirectional model \"lvc330axxxdaaaaaaaio\"\n" + buzzer + "\n"},
        {{"tiny.pad", "other.ibs"},
         buzzer + "\n" + warning + "the master file other.ibs has no block for the package \"CABGA256\": the design "
                               "file gets package values of zero\n"},
        {{"--family", "KVTN", "lvds.pad", "tiny.ibs"},
         warning + "the IBIS models for true differential standards have a known issue in the IBIS data; use the TN "
                   "HSPICE models instead to run simulation\n" + warning +
             "signal \"key\": the master file has no model \"lvc250axxxdaaaaaaain\"\n" + buzzer + "\n"},
    };
    for (Case const& c : cases) {
        SCOPED_TRACE(c.args[c.args.size() - 2] + " " + c.args.back());
        ts::RunResult const r = work.run(c.args);
        EXPECT_EQ(r.exitCode, 0);
        EXPECT_EQ(r.err, c.err);
        EXPECT_EQ(r.out.rfind("Read the pad report ", 0), 0u) << r.out;
    }
}

TEST(BothModes, ADirectoryOrADeviceAsAnInputIsOneLine)
{
    for (bool legacy : {false, true}) {
        SCOPED_TRACE(legacy ? "--legacy" : "default");
        Work work;
        ASSERT_EQ(::mkdir(work.dir.file("folder.pad").c_str(), 0777), 0);
        ASSERT_EQ(::mkdir(work.dir.file("folder.ibs").c_str(), 0777), 0);
        ASSERT_EQ(::mkfifo(work.dir.file("pipe.pad").c_str(), 0666), 0);
        struct Case {
            std::vector<S> args;
            S err;
        } const cases[] = {
            {{"folder.pad", "tiny.ibs"}, "the pad report folder.pad is a directory"},
            {{"tiny.pad", "folder.ibs"}, "the master file folder.ibs is a directory"},
            {{"pipe.pad", "tiny.ibs"}, "the pad report pipe.pad is a pipe, not a regular file"},
            {{"tiny.pad", "/dev/zero.ibs"}, ""}, // no such device: a missing file
        };
        for (Case const& c : cases) {
            std::vector<S> args = c.args;
            if (legacy)
                args.insert(args.begin(), "--legacy");
            ts::RunResult const r = work.run(args);
            EXPECT_EQ(r.exitCode, 1) << c.args[0] << " " << c.args[1];
            if (c.err.empty())
                continue;
            EXPECT_EQ(r.err, (legacy ? "pad2ibis: " : "pad2ibis: error: ") + c.err + "\n");
            EXPECT_EQ(work.files().count("IBIS/tiny.ibs"), 0u);
        }
    }
}

TEST(BothModes, AnOutputIsNeverWrittenOverAnInput)
{
    for (bool legacy : {false, true}) {
        SCOPED_TRACE(legacy ? "--legacy" : "default");
        Work work;
        ASSERT_EQ(work.run({"-q", "tiny.pad", "tiny.ibs"}).exitCode, 0);
        // The design file as the master, with its package file beside it:
        // both would be written over themselves.
        struct Case {
            std::vector<S> args;
            S err;
        } const cases[] = {
            {{"tiny.pad", "IBIS/tiny.ibs"},
             "the design IBIS file IBIS/tiny.ibs would be written over the master file IBIS/tiny.ibs"},
            {{"--report", "tiny.ibs", "tiny.pad", "tiny.ibs"},
             "the resolution report tiny.ibs would be written over the master file tiny.ibs"},
        };
        for (Case const& c : cases) {
            Files const before = work.files();
            std::vector<S> args = c.args;
            if (legacy)
                args.insert(args.begin(), "--legacy");
            ts::RunResult const r = work.run(args);
            EXPECT_EQ(r.exitCode, 2);
            EXPECT_EQ(r.err, (legacy ? "pad2ibis: " : "pad2ibis: error: ") + c.err + "; nothing was written\n");
            EXPECT_EQ(work.files(), before);
        }
    }
}

TEST(DefaultMode, TheOptionsTakeWhatAUserTypes)
{
    Work work;
    // A family word in any letter case is that family; another word is a
    // usage error that lists them.
    ASSERT_EQ(work.run({"-q", "--family", "kva3", "tiny.pad", "tiny.ibs"}).exitCode, 0);
    S const lower = ts::readFile(work.dir.file("IBIS/tiny.ibs"));
    ASSERT_EQ(work.run({"-q", "--family", "KVA3", "tiny.pad", "tiny.ibs"}).exitCode, 0);
    EXPECT_EQ(ts::readFile(work.dir.file("IBIS/tiny.ibs")), lower);
    struct Case {
        std::vector<S> args;
        S err;
    } const usage[] = {
        {{"--family", "FOO", "tiny.pad", "tiny.ibs"},
         "--family takes one of KVZR2, KVA3, KVA4, KVAN, KVZR, HZU2, HZU, KVTN, KVA2, KJ, HZU3, KVA4Y, KVA5Y, not "
         "'FOO'"},
        {{"--btn", "100", "tiny.pad", "tiny.ibs"}, "--btn takes 0 to 99, not 100"},
    };
    for (Case const& c : usage) {
        ts::RunResult const r = work.run(c.args);
        EXPECT_EQ(r.exitCode, 2);
        EXPECT_EQ(r.err, "pad2ibis: " + c.err + "\nTry 'pad2ibis --help' for more information.\n");
    }
    for (char const* help : {"-h", "--help"})
        EXPECT_EQ(work.run({help}).out.rfind("Usage: pad2ibis", 0), 0u) << help;
    EXPECT_EQ(work.run({"-V"}).out.rfind("pad2ibis ", 0), 0u);
    for (char const* help : {"-h", "--help"}) {
        ts::RunResult const r = work.run({"check", help});
        EXPECT_EQ(r.exitCode, 0);
        EXPECT_EQ(r.out.rfind("Usage: pad2ibis check", 0), 0u) << r.out;
    }
    // A report's ending in any letter case; the legacy host knows it in
    // lower case only.
    ASSERT_EQ(work.run({"-q", "--report", "page.HTML", "tiny.pad", "tiny.ibs"}).exitCode, 0);
    EXPECT_EQ(ts::readFile(work.dir.file("page.HTML")).rfind("<!DOCTYPE html>", 0), 0u);
    ASSERT_EQ(ts::runLegacy({"--report", "page.HTML", "tiny.pad", "tiny.ibs"}, work.dir.path()).exitCode, 0);
    EXPECT_EQ(ts::readFile(work.dir.file("page.HTML")).rfind("signal,pin,", 0), 0u);
}

TEST(DefaultMode, TheSerDesSetHoldsTheTemplatesItsIbisFileNames)
{
    ts::TempDir dir;
    S const serdes = ts::sourcePath("examples/serdes/");
    ts::RunResult const r =
        ts::runProgram({"--ami", "--channels", serdes + "channels.txt", serdes + "demo_serdes.udb", serdes + "kva4serdes.ibs"},
                       dir.path());
    EXPECT_EQ(r.exitCode, 0) << r.err;
    EXPECT_EQ(ts::readFile(dir.file("ibis_ami/kva4RX_parameters.ami")), ts::readFile(serdes + "kva4RX_parameters.ami"));
    EXPECT_EQ(ts::readFile(dir.file("ibis_ami/kva4TX_parameters.ami")), ts::readFile(serdes + "kva4TX_parameters.ami"));
    EXPECT_NE(r.out.find("  ibis_ami/demo_serdes_rx_params_PCS0_CH0.ami  settings of channel PCS0 CH0, receive side\n"),
              S::npos)
        << r.out;
    EXPECT_NE(r.out.find("  ibis_ami/kva4TX_parameters.ami               parameter template, as the SerDes IBIS file "
                         "names it\n"),
              S::npos)
        << r.out;
}

} // namespace

namespace {

// The demo's SerDes set in lib/ below a fresh directory, with one file
// edited.
struct SerDesWork {
    ts::TempDir dir;
    S const lib = dir.file("lib/");

    SerDesWork(S const& file, S const& from, S const& to)
    {
        for (char const* name : {"kva4serdes.ibs", "kva4RX_parameters.ami", "kva4TX_parameters.ami", "CVN_kva4rx_ami.so",
                              "CVN_kva4tx_ami.so", "channels.txt", "demo_serdes.udb"}) {
            S text = ts::readFile(ts::sourcePath("examples/serdes/" + S(name)));
            if (name == file) {
                EXPECT_NE(text.find(from), S::npos) << from;
                text.replace(text.find(from), from.size(), to);
            }
            ts::writeFile(lib + name, text);
        }
    }
    ts::RunResult run(std::vector<S> const& options = {}, S const& master = "lib/kva4serdes.ibs") const
    {
        std::vector<S> args = options;
        for (S const& arg : {S("--ami"), S("--channels"), S("lib/channels.txt"), S("lib/demo_serdes.udb"), master})
            args.push_back(arg);
        return ts::runProgram(args, dir.path());
    }
};

TEST(DefaultMode, TheSerDesFlowRefusesWhatTheParameterFileWriterWouldLose)
{
    struct Case {
        S file, from, to, err;
    } const cases[] = {
        {"kva4RX_parameters.ami", "(Format Value 4) (Description", "(Format Value 4)(Description",
         "lib/kva4RX_parameters.ami:13: error: no blank stands behind the value's \")\": the parameter file writer "
         "would lose \"(Description\" with the old value\n"},
        {"channels.txt", "Rx_Ctle_Gain    0d12", "Rx_Ctle_Gain    0d1234567890123456",
         "lib/channels.txt:12: error: the value of Rx_Ctle_Gain has 16 characters behind its prefix; a parameter "
         "file takes 15, so it would be cut to 123456789012345\n"},
    };
    for (Case const& c : cases) {
        SCOPED_TRACE(c.file);
        SerDesWork const work(c.file, c.from, c.to);
        ts::RunResult const r = work.run();
        EXPECT_EQ(r.exitCode, 1);
        EXPECT_EQ(r.err, c.err + "pad2ibis: error: the parameter files cannot be written as the inputs stand; "
                                 "nothing was written\n");
        EXPECT_FALSE(ts::fileExists(work.dir.file("ibis_ami")));
    }
}

TEST(BothModes, TheSerDesSetIsNeverWrittenOverItsSources)
{
    // The set of an earlier run taken for the sources of this one.
    SerDesWork const work("channels.txt", "", "");
    for (char const* name : {"kva4serdes.ibs", "kva4RX_parameters.ami", "kva4TX_parameters.ami", "CVN_kva4rx_ami.so",
                          "CVN_kva4tx_ami.so"})
        ts::writeFile(work.dir.file("ibis_ami/" + S(name)), ts::readFile(work.lib + name));
    Files const before = ts::filesBelow(work.dir.path());
    for (bool legacy : {false, true}) {
        ts::RunResult const r = work.run(legacy ? std::vector<S>{"--legacy"} : std::vector<S>{}, "ibis_ami/kva4serdes.ibs");
        EXPECT_EQ(r.exitCode, 2);
        EXPECT_EQ(r.err, S(legacy ? "pad2ibis: " : "pad2ibis: error: ") +
                             "the SerDes set's file ibis_ami/kva4serdes.ibs would be written over the SerDes master "
                             "file ibis_ami/kva4serdes.ibs; nothing was written\n");
        EXPECT_EQ(ts::filesBelow(work.dir.path()), before);
    }
}

TEST(BothModes, ATemplateThatIsADeviceOrCannotBeCopiedEndsTheSerDesRun)
{
    // A template that is a device would be read as an empty file: the legacy
    // mode refuses it too, before anything is written.
    SerDesWork const device("channels.txt", "", "");
    S const rx = device.lib + "kva4RX_parameters.ami";
    ASSERT_EQ(std::remove(rx.c_str()), 0);
    ASSERT_EQ(::symlink("/dev/null", rx.c_str()), 0);
    ts::RunResult const r = device.run({"--legacy"});
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_EQ(r.err, "pad2ibis: the receive parameter template lib/kva4RX_parameters.ami is a device, not a regular "
                     "file\n");
    EXPECT_FALSE(ts::fileExists(device.dir.file("ibis_ami")));
    // A folder where a template's copy goes: the run ends there.
    SerDesWork const blocked("channels.txt", "", "");
    ASSERT_EQ(::mkdir(blocked.dir.file("ibis_ami").c_str(), 0777), 0);
    ASSERT_EQ(::mkdir(blocked.dir.file("ibis_ami/kva4RX_parameters.ami").c_str(), 0777), 0);
    ts::RunResult const c = blocked.run();
    EXPECT_EQ(c.exitCode, 2);
    EXPECT_EQ(c.err, "pad2ibis: error: cannot write ibis_ami/kva4RX_parameters.ami\n");
    // A file of the set that does not exist.
    SerDesWork const lacking("channels.txt", "", "");
    ASSERT_EQ(std::remove((lacking.lib + "CVN_kva4rx_ami.so").c_str()), 0);
    EXPECT_EQ(lacking.run().err, "pad2ibis: error: the SerDes set lacks lib/CVN_kva4rx_ami.so: it does not exist\n");
}

} // namespace

namespace {

// The design file of a run, from its IBIS folder.
S designFile(Work const& work) { return ts::readFile(work.dir.file("IBIS/tiny.ibs")); }

} // namespace

TEST(DefaultMode, PackageModelOptionsTakeTheModelBesideTheMaster)
{
    // The tiny family's package model file is a header alone: nothing to
    // take, so both options warn and change no byte; the legacy mode warns
    // alike on standard error.
    Work work;
    ts::RunResult const plain = work.run({"-q", "tiny.pad", "tiny.ibs"});
    S const before = designFile(work);
    ts::RunResult const none = work.run({"-q", "--pin-parasitics", "--package-model", "tiny.pad", "tiny.ibs"});
    EXPECT_EQ(none.exitCode, 0);
    S const warning = "pad2ibis: warning: no package model: neither a package model file tiny_6bg256c_bg.pkg beside "
                      "the master file nor the master file defines one; --pin-parasitics and --package-model change "
                      "nothing\n";
    EXPECT_EQ(none.err, plain.err + warning);
    EXPECT_EQ(none.out, plain.out);
    EXPECT_EQ(designFile(work), before);
    ts::RunResult const legacy = ts::runLegacy({"--pin-parasitics", "tiny.pad", "tiny.ibs"}, work.dir.path());
    EXPECT_NE(legacy.err.find("no package model: neither"), S::npos) << legacy.err;
    EXPECT_EQ(designFile(work), before);

    // A model with full L and C matrices: each row gets its self terms, the
    // design file its two pins' matrices, and the reports their values.
    work.copy("tiny_model.pkg", "tiny_6bg256c_bg.pkg");
    ts::RunResult const r = work.run({"--pin-parasitics", "--package-model", "--report", "tiny.json", "tiny.pad",
                                      "tiny.ibs"});
    EXPECT_EQ(r.exitCode, 0) << r.err;
    EXPECT_NE(r.out.find("Package model TINY_CABGA256 (tiny_6bg256c_bg.pkg): 2 of 2 design pins\n"
                         "  R_pin, L_pin and C_pin on their [Pin] rows\n"
                         "  [Define Package Model] TINY_CABGA256 of them in the design file\n"),
              S::npos)
        << r.out;
    S const text = designFile(work);
    EXPECT_NE(text.find("[Pin]         signal_name          model_name           R_pin     L_pin     C_pin\n"
                        "A1            led                  lvc330s080naaaaaaaou 0.15      2.5nH     0.5pF\n"
                        "A3            key                  lvc330axxxdaaaaaaain 0.25      3.125e-9  0.612pF\n"),
              S::npos)
        << text;
    EXPECT_NE(text.find("| End [Component]\n"
                        "[Define Package Model]  TINY_CABGA256\n"
                        "[Manufacturer]          Corvane Technology\n"
                        "[OEM]                   Corvane Technology\n"
                        "[Description]           three balls of the caBGA256\n"
                        "[Number Of Pins]        2\n"
                        "[Pin Numbers]\nA1\nA3\n"
                        "[Model Data]\n"
                        "| The terms between the design's 2 pins\n"
                        "[Resistance Matrix]     Sparse_matrix\n[Row]  A1\nA1     0.15\n[Row]  A3\nA3     0.25\n"
                        "[Inductance Matrix]     Full_matrix\n[Row]  A1\n2.5nH 0.1nH\n[Row]  A3\n3.125e-9\n"
                        "[Capacitance Matrix]    Full_matrix\n[Row]  A1\n0.5pF -0.01pF\n[Row]  A3\n"
                        "0.000000000000612\n"
                        "[End Model Data]\n[End Package Model]\n[End]\n"),
              S::npos)
        << text;
    EXPECT_NE(text.find("\n[Package Model]  TINY_CABGA256\n"), S::npos);
    ts::RunResult const check = work.run({"check", "IBIS/tiny.ibs"});
    EXPECT_EQ(check.out, "1 file checked: 0 errors, 0 warnings\n") << check.out;
    S const json = ts::readFile(work.dir.file("tiny.json"));
    EXPECT_NE(json.find("\"r_pin\": \"0.25\", \"l_pin\": \"3.125e-9\", \"c_pin\": \"0.612pF\", \"pair_r_pin\": null"),
              S::npos)
        << json;

    // A fault in a row of a design pin is refused with its line, nothing
    // written; the row of A2, no pin of the design, is stepped over unread.
    S model = ts::readFile(work.dir.file("tiny_6bg256c_bg.pkg"));
    model.replace(model.find("2.7nH 0.3nH"), 11, "2.7nH 0.3nH 1nH");
    model.replace(model.find("3.125e-9"), 8, "3.125e-9 x");
    Work broken;
    ts::writeFile(broken.dir.file("tiny_6bg256c_bg.pkg"), model);
    ts::RunResult const refused = broken.run({"--package-model", "tiny.pad", "tiny.ibs"});
    EXPECT_EQ(refused.exitCode, 1);
    EXPECT_EQ(refused.err,
              "pad2ibis: warning: signal \"buzzer\": the master file has no model \"lvc330s120naaaaaaaou\"\n"
              "tiny_6bg256c_bg.pkg:26: error: [Inductance Matrix] row A3 holds more than 1 entry (from the diagonal "
              "to the last pin)\n"
              "pad2ibis: error: the package model of tiny_6bg256c_bg.pkg cannot be used as it stands; nothing was "
              "written\n");
    EXPECT_FALSE(ts::fileExists(broken.dir.file("IBIS/tiny.ibs")));
}
