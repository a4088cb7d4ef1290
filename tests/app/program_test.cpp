// The command-line contract of pad2ibis: help, version, usage errors and
// the exit codes that reach the user.

#include <gtest/gtest.h>

#include "support/generator_probe.h"

namespace {

TEST(Program, HelpGoesToStandardOutput)
{
    ts::TempDir dir;
    ts::RunResult r = ts::runProgram({"--help"}, dir.path());
    EXPECT_EQ(r.exitCode, 0);
    EXPECT_EQ(r.out.rfind("Usage: pad2ibis [OPTIONS] PAD_FILE MASTER_IBS\n", 0), 0u) << r.out;
    for (char const* option : {"--family", "--vargon", "--ncd", "--brinmark", "--dphy", "--msgflow",
                               "--btn", "--dump-alt-models", "--ami", "--channels", "--version"})
        EXPECT_NE(r.out.find(option), std::string::npos) << option;
    EXPECT_EQ(r.err, "");
}

TEST(Program, Version)
{
    ts::TempDir dir;
    ts::RunResult r = ts::runProgram({"--version"}, dir.path());
    EXPECT_EQ(r.exitCode, 0);
    EXPECT_EQ(r.out.rfind("pad2ibis ", 0), 0u);
    EXPECT_EQ(r.out.back(), '\n');
}

TEST(Program, UsageErrorsPrintTheUsageOnStandardErrorWithExitCode2)
{
    ts::TempDir dir;
    for (auto const& args : std::vector<std::vector<std::string>>{
             {"--bogus", "d.pad", "m.ibs"}, {"d.pad"}, {"--btn", "x", "d.pad", "m.ibs"}}) {
        ts::RunResult r = ts::runProgram(args, dir.path());
        EXPECT_EQ(r.exitCode, 2);
        EXPECT_EQ(r.out, "");
        EXPECT_NE(r.err.find("Usage: pad2ibis"), std::string::npos) << r.err;
        EXPECT_EQ(r.err.rfind("pad2ibis: ", 0), 0u) << r.err;
    }
}

TEST(Program, LibraryFailuresKeepTheirExitCodes)
{
    ts::TempDir dir;
    ts::RunResult r = ts::runProgram({"design.rpt", "m.ibs"}, dir.path());
    EXPECT_EQ(r.exitCode, 2);
    EXPECT_EQ(r.out, "ERROR: report file design.rpt should have .pad extension.\n");

    r = ts::runProgram({"--msgflow", "absent.pad", "m.ibs"}, dir.path());
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_EQ(r.err, "padmodel-1015\tabsent.pad\n");
}

} // namespace

namespace {

TEST(Program, AdviceDumpSwitchOfTheHostChangesNothing)
{
    std::string const pad = ts::readFile(ts::sourcePath("examples/demo.pad"));
    std::string const master = ts::sourcePath("examples/kva3_master.ibs");
    std::string outputs[2];
    std::string designs[2];
    for (int i = 0; i < 2; ++i) {
        ts::TempDir dir;
        ts::writeFile(dir.file("demo.pad"), pad);
        ts::RunResult r = ts::runProgram({"demo.pad", master}, dir.path(),
                                         {{"TW_DUMP_ADVICE", i == 0 ? "<unset>" : "1"}});
        EXPECT_EQ(r.exitCode, 0);
        outputs[i] = r.out.substr(r.out.find("WARNING"));
        outputs[i] = outputs[i].substr(0, outputs[i].find("Generating"));
        designs[i] = ts::readFile(dir.file("IBIS/demo.ibs"));
    }
    EXPECT_EQ(outputs[0], outputs[1]);
    EXPECT_EQ(designs[0], designs[1]);
    EXPECT_NE(designs[0].find("[Model]"), std::string::npos);
}

} // namespace

namespace {

TEST(Program, DumpOfTheAlternateModelTreesAfterTheMasterIsRead)
{
    ts::TempDir dir;
    ts::writeFile(dir.file("vargon_demo.pad"), ts::readFile(ts::sourcePath("examples/vargon_demo.pad")));
    ts::RunResult r = ts::runProgram({"--vargon", "--dump-alt-models", "vargon_demo.pad",
                                      ts::sourcePath("examples/kvan_master.ibs")},
                                     dir.path());
    EXPECT_EQ(r.exitCode, 0);
    std::string::size_type output = r.out.find("\n--------------------\n\nOUTPUT MODEL LISTS\n");
    std::string::size_type input = r.out.find("\n--------------------\n\nINPUT MODEL LISTS\n");
    std::string::size_type bidir = r.out.find("\n--------------------\n\nBIDIR MODEL LISTS\n");
    std::string::size_type report = r.out.find("WARNING: Ibis Model");
    EXPECT_LT(output, input);
    EXPECT_LT(input, bidir);
    EXPECT_LT(bidir, report) << "the dump comes between reading the master and resolving";
    EXPECT_NE(r.out.find("\nlvc330 \nIO_TYPE:lvc330 DRIVE:080 PULL:u "), std::string::npos);
}

} // namespace
