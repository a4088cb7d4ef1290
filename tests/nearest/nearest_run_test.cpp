// Whole runs with --substitute nearest on the shipped examples: what the run
// prints, the design file and the report equal the expected files, the
// design file passes pad2ibis check; and the option's usage errors.

#include <gtest/gtest.h>

#include "support/test_support.h"

namespace {

using S = std::string;

S data(S const& name) { return ts::readFile(ts::sourcePath("tests/nearest/data/" + name)); }
S example(S const& name) { return ts::readFile(ts::sourcePath("examples/" + name)); }

// The table-driven family's master with one more model, which only the
// nearest model rule reaches: the signal sstl_io of vargon_demo.pad asks for
// ss1330axxxaaaaaaaaio, the master gets its fast twin.
S vargonMasterWithAFastSstl()
{
    S master = example("kvan_master.ibs");
    S const from = "ss2180axxxaaaaaaaaio", to = "ss1330fxxxaaaaaaaaio";
    S::size_type const pin = master.find('\n', master.find("IO_L14")) + 1;
    master.insert(pin, "M14    IO_M14           " + to + "   0.060    1.40nH   0.40pF\n");
    S::size_type const start = master.find("[Model]        " + from);
    S::size_type const end = master.find('\n', master.find("| End [Model] " + from)) + 1;
    S block = master.substr(start, end - start);
    for (S::size_type at = block.find(from); at != S::npos; at = block.find(from, at))
        block.replace(at, from.size(), to);
    master.insert(master.find("[Model]        "), block + "|" + S(73, '*') + "\n");
    return master;
}

TEST(NearestRun, SubstitutesOnTheExamples)
{
    struct Case {
        S pad, master, masterText;
        std::vector<S> options;
        S design, expectedDesign, report, expectedReport, expectedWarnings;
    } const cases[] = {
        {"demo.pad", "kva3_master.ibs", example("kva3_master.ibs"), {}, "demo.ibs", "demo_nearest.ibs.expected",
         "r.csv", "demo_nearest_report.csv", "demo_nearest.out.expected"},
        {"vargon_demo.pad", "kvan_master.ibs", vargonMasterWithAFastSstl(), {"--vargon"}, "vargon_demo.ibs", "",
         "r.json", "vargon_nearest_report.json", "vargon_nearest.out.expected"},
    };
    for (Case const& c : cases) {
        SCOPED_TRACE(c.pad);
        ts::TempDir work;
        ts::writeFile(work.file(c.pad), example(c.pad));
        ts::writeFile(work.file(c.master), c.masterText);
        std::vector<S> args = c.options;
        args.insert(args.end(), {"--substitute", "nearest", "--report", c.report, c.pad, c.master});
        ts::RunResult const r = ts::runProgram(args, work.path());
        EXPECT_EQ(r.exitCode, 0) << r.err;
        EXPECT_EQ(r.err, "");
        S warnings;
        for (S::size_type at = r.out.find("WARNING"); at != S::npos; at = r.out.find("WARNING", at + 1))
            warnings += r.out.substr(at, r.out.find('\n', at) + 1 - at);
        EXPECT_EQ(warnings, data(c.expectedWarnings));
        S const design = ts::readFile(work.file("IBIS/" + c.design));
        EXPECT_EQ(design, c.expectedDesign.empty() ? design : data(c.expectedDesign));
        EXPECT_EQ(ts::readFile(work.file(c.report)), data(c.expectedReport));
        ts::RunResult const check = ts::runProgram({"check", "IBIS/" + c.design}, work.path());
        EXPECT_EQ(check.out, "1 file checked: 0 errors, 0 warnings\n");
        EXPECT_EQ(check.exitCode, 0);
    }
}

TEST(NearestRun, UsageErrors)
{
    ts::TempDir work;
    for (std::vector<S> const& args : {std::vector<S>{"--substitute", "closest", "d.pad", "m.ibs"},
                                       std::vector<S>{"--substitute"},
                                       std::vector<S>{"--ami", "--channels", "c", "--substitute", "nearest", "d", "m"}}) {
        ts::RunResult const r = ts::runProgram(args, work.path());
        EXPECT_EQ(r.exitCode, 2);
        EXPECT_EQ(r.out, "");
        S const problem = args.size() == 1 ? "--substitute needs a value"
                          : args[0] == "--ami" ? "--ami takes only --channels, --brinmark, --msgflow and --family"
                                               : "--substitute takes 'nearest', not 'closest'";
        EXPECT_EQ(r.err, "pad2ibis: " + problem + "\nTry 'pad2ibis --help' for more information.\n");
    }
}

} // namespace
