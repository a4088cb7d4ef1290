// The command-line contract of pad2ibis: help, version, usage errors, the exit codes that reach
// the user, and the host's switches.

#include <gtest/gtest.h>

#include "support/test_support.h"

namespace {

using S = std::string;

TEST(Program, HelpVersionAndUsageErrors)
{
    ts::TempDir dir;
    ts::RunResult r = ts::runProgram({"--help"}, dir.path());
    EXPECT_EQ(r.exitCode, 0);
    EXPECT_EQ(r.out.rfind("Usage: pad2ibis [OPTIONS] PAD_FILE MASTER_IBS\n", 0), 0u) << r.out;
    EXPECT_EQ(r.err, "");

    r = ts::runProgram({"--version"}, dir.path());
    EXPECT_EQ(r.exitCode, 0);
    EXPECT_TRUE(r.out.rfind("pad2ibis ", 0) == 0 && r.out.back() == '\n') << r.out;

    for (auto const& args :
         std::vector<std::vector<S>>{{"--bogus", "d.pad", "m.ibs"}, {"d.pad"}, {"--btn", "x", "d.pad", "m.ibs"},
                                     {"--component-name", " U7", "d.pad", "m.ibs"}, {"--truncate", "30", "d.pad", "m.ibs"},
                                     {"--substitute", "closest", "d.pad", "m.ibs"}}) {
        r = ts::runLegacy(args, dir.path());
        EXPECT_EQ(r.exitCode, 2) << args[0];
        EXPECT_EQ(r.out, "") << args[0];
        // The problem, then the hint: two lines, the usage text stays on --help.
        EXPECT_EQ(r.err.rfind("pad2ibis: ", 0), 0u) << r.err;
        S const hint = "\nTry 'pad2ibis --help' for more information.\n";
        EXPECT_EQ(r.err.find('\n'), r.err.size() - hint.size()) << r.err;
        EXPECT_EQ(r.err.substr(r.err.size() - hint.size()), hint) << r.err;
    }
}

TEST(Program, LibraryFailuresKeepTheirExitCodes)
{
    ts::TempDir dir;
    ts::RunResult r = ts::runLegacy({"design.rpt", "m.ibs"}, dir.path());
    EXPECT_EQ(r.exitCode, 2);
    EXPECT_EQ(r.out, "ERROR: report file design.rpt should have .pad extension.\n");
    r = ts::runLegacy({"--msgflow", "absent.pad", "m.ibs"}, dir.path());
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_EQ(r.err, "padmodel-1015\tabsent.pad\n");
}

TEST(Program, AlternateModelTreesDumpedBetweenReadingTheMasterAndResolving)
{
    ts::TempDir dir;
    ts::writeFile(dir.file("vargon_demo.pad"), ts::readFile(ts::sourcePath("examples/vargon_demo.pad")));
    ts::RunResult r = ts::runLegacy({"--vargon", "--dump-alt-models", "vargon_demo.pad",
                                      ts::sourcePath("examples/kvan_master.ibs")}, dir.path());
    EXPECT_EQ(r.exitCode, 0);
    S::size_type at = 0;
    S const rule = "\n--------------------\n\n";
    for (S const& part : {rule + "OUTPUT MODEL LISTS\n", rule + "INPUT MODEL LISTS\n", rule + "BIDIR MODEL LISTS\n",
                          S("WARNING: Ibis Model")}) {
        at = r.out.find(part, at);
        EXPECT_NE(at, S::npos) << "in order: " << part;
    }
    EXPECT_NE(r.out.find("\nlvc330 \nIO_TYPE:lvc330 DRIVE:080 PULL:u "), S::npos);
}

} // namespace
