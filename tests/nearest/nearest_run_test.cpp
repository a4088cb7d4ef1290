// Whole runs with --substitute nearest on the shipped examples: the warnings, the design file and the
// report equal the expected files, and the design file passes pad2ibis check.

#include <gtest/gtest.h>

#include "support/test_support.h"

namespace {

using S = std::string;

S data(S const& name) { return ts::readFile(ts::sourcePath("tests/nearest/data/" + name)); }
S example(S const& name) { return ts::readFile(ts::sourcePath("examples/" + name)); }

// The table-driven family's master with the fast twin of the model that sstl_io of vargon_demo.pad asks for,
// which the family's own substitution does not reach.
S vargonMasterWithAFastSstl()
{
    S master = example("kvan_master.ibs");
    S const from = "ss2180axxxaaaaaaaaio", to = "ss1330fxxxaaaaaaaaio";
    master.insert(master.find('\n', master.find("IO_L14")) + 1, "M14    IO_M14           " + to + "   0.060    1.40nH   0.40pF\n");
    S::size_type const start = master.find("[Model]        " + from);
    S block = master.substr(start, master.find('\n', master.find("| End [Model] " + from)) + 1 - start);
    for (S::size_type at = block.find(from); at != S::npos; at = block.find(from, at))
        block.replace(at, from.size(), to);
    return master.insert(master.find("[Model]        "), block + "|" + S(73, '*') + "\n");
}

TEST(NearestRun, SubstitutesOnTheExamples)
{
    struct { S pad, master, masterText, option, design, expectedDesign, report, stem; } const cases[] = {
        {"demo.pad", "kva3_master.ibs", example("kva3_master.ibs"), "--msgflow", "demo.ibs", "demo_nearest.ibs.expected",
         "r.csv", "demo_nearest"},
        {"vargon_demo.pad", "kvan_master.ibs", vargonMasterWithAFastSstl(), "--vargon", "vargon_demo.ibs", "", "r.json",
         "vargon_nearest"},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.pad);
        ts::TempDir work;
        ts::writeFile(work.file(c.pad), example(c.pad));
        ts::writeFile(work.file(c.master), c.masterText);
        ts::RunResult const r =
            ts::runLegacy({c.option, "--substitute", "nearest", "--report", c.report, c.pad, c.master}, work.path());
        EXPECT_EQ(r.exitCode, 0) << r.err;
        S const& reports = c.option == "--msgflow" ? r.err : r.out;
        S warnings;
        for (S::size_type at = reports.find("WARNING"); at != S::npos; at = reports.find("WARNING", at + 1))
            warnings += reports.substr(at, reports.find('\n', at) + 1 - at);
        for (S::size_type at = reports.find("padmodel-101"); at != S::npos; at = reports.find("padmodel-101", at + 1))
            warnings += reports.substr(at, reports.find('\n', at) + 1 - at);
        EXPECT_EQ(warnings, data(c.stem + ".out.expected"));
        S const design = ts::readFile(work.file("IBIS/" + c.design));
        EXPECT_EQ(design, c.expectedDesign.empty() ? design : data(c.expectedDesign));
        EXPECT_EQ(ts::readFile(work.file(c.report)), data(c.stem + "_report" + c.report.substr(1)));
        ts::RunResult const check = ts::runProgram({"check", "IBIS/" + c.design}, work.path());
        EXPECT_EQ(check.out, "1 file checked: 0 errors, 0 warnings\n");
    }
}

} // namespace
