// The resolution report of --report: its rows for designs with resolved,
// fallen-back, missing, substituted and keyless signals, as CSV, JSON and
// the page, with the [Pin] names the design file options made; and a run
// prints and writes the same bytes with and without it.

#include <gtest/gtest.h>

#include <dirent.h>

#include "support/test_support.h"

namespace {

using S = std::string;

// Every file below dir/IBIS, with its bytes.
std::vector<std::pair<S, S>> designFiles(S const& dir)
{
    std::vector<std::pair<S, S>> files;
    if (DIR* d = opendir((dir + "/IBIS").c_str())) {
        while (dirent* entry = readdir(d))
            if (entry->d_name[0] != '.')
                files.emplace_back(entry->d_name, ts::readFile(dir + "/IBIS/" + entry->d_name));
        closedir(d);
    }
    std::sort(files.begin(), files.end());
    return files;
}

TEST(Report, RowsAndByteIdentityOnTheExamples)
{
    struct Case {
        S dir, pad, master;
        std::vector<S> options;
        S report, expected; // expected "": the run's output alone is compared
    } const cases[] = {
        {"examples", "demo.pad", "kva3_master.ibs", {}, "report.csv", "demo_report.csv"},
        {"examples", "demo.pad", "kva3_master.ibs", {"--msgflow", "--btn", "1"}, "report.json", "demo_report.json"},
        {"examples", "demo.pad", "kva3_master.ibs", {"--btn", "2"}, "report.html", ""},
        {"examples", "vargon_demo.pad", "kvan_master.ibs", {"--vargon"}, "report.json", "vargon_demo_report.json"},
        {"examples", "vargon_demo.pad", "kvan_master.ibs", {"--vargon", "--msgflow"}, "r.csv", "vargon_demo_report.csv"},
        {"examples", "vargon_demo.pad", "kvan_master.ibs", {"--vargon"}, "r.html", ""},
        {"examples", "long_names_demo.pad", "kva3_master.ibs",
         {"--component-name", "BOARD_U7", "--truncate", "20", "--model-selector"}, "report.json",
         "long_names_demo_report.json"},
        // The design's D-PHY rows add their models to the design's.
        {"tests/writer/data", "one_led.pad", "kx3_master.ibs", {"--dphy"}, "r.csv", "one_led_dphy_report.csv"},
        {"tests/writer/data", "one_led.pad", "kx3_master.ibs", {"--dphy"}, "r.json", "one_led_dphy_report.json"},
        {"tests/writer/data", "one_led.pad", "kx3_master.ibs", {"--dphy"}, "r.html", "one_led_dphy_report.html"},
    };
    for (Case const& c : cases) {
        SCOPED_TRACE(c.pad + " " + c.report + " " + testing::PrintToString(c.options));
        ts::TempDir work;
        for (S const& name : {c.pad, c.master, S("kva3_master_6bg256c_bg.pkg"), S("k_btn.ibs")})
            if (ts::fileExists(ts::sourcePath(c.dir + "/" + name)))
                ts::writeFile(work.file(name), ts::readFile(ts::sourcePath(c.dir + "/" + name)));
        std::vector<S> args = c.options;
        args.insert(args.end(), {c.pad, c.master});
        ts::RunResult const plain = ts::runLegacy(args, work.path());
        auto const plainFiles = designFiles(work.path());
        ASSERT_EQ(system(("rm -r " + work.file("IBIS")).c_str()), 0);

        args.insert(args.begin(), {"--report", c.report});
        ts::RunResult const reported = ts::runLegacy(args, work.path());
        EXPECT_EQ(reported.exitCode, plain.exitCode);
        EXPECT_EQ(reported.out, plain.out);
        EXPECT_EQ(reported.err, plain.err);
        EXPECT_EQ(designFiles(work.path()), plainFiles);
        EXPECT_FALSE(plainFiles.empty());
        S const report = ts::readFile(work.file(c.report));
        EXPECT_GT(report.size(), 200u);
        if (!c.expected.empty()) {
            EXPECT_EQ(report, ts::readFile(ts::sourcePath("tests/report/data/" + c.expected)));
        }
    }
}

TEST(Report, ReportThatCannotBeWrittenAndUsageErrors)
{
    ts::TempDir work;
    for (S const name : {"demo.pad", "kva3_master.ibs"})
        ts::writeFile(work.file(name), ts::readFile(ts::sourcePath("examples/" + name)));
    ts::RunResult r = ts::runLegacy({"--report", "no/such/dir/r.csv", "demo.pad", "kva3_master.ibs"}, work.path());
    EXPECT_EQ(r.exitCode, 2);
    EXPECT_EQ(r.err, "pad2ibis: cannot write the report no/such/dir/r.csv\n");
    EXPECT_TRUE(ts::fileExists(work.file("IBIS/demo.ibs")));

    r = ts::runLegacy({"--ami", "--channels", "c.txt", "--report", "r.csv", "d.udb", "m.ibs"}, work.path());
    EXPECT_EQ(r.exitCode, 2);
    EXPECT_EQ(r.err.rfind("pad2ibis: --ami takes only", 0), 0u) << r.err;
    r = ts::runLegacy({"--report"}, work.path());
    EXPECT_EQ(r.exitCode, 2);
    EXPECT_EQ(r.err.rfind("pad2ibis: --report needs a value", 0), 0u) << r.err;
}

} // namespace
