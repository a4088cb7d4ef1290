// The checker on package models: each fault of a package model file in a
// small file of its own, at its line and with its grade; package models in
// design and master files; [Package Model] names looked up in the file and
// beside it; the command on .pkg files.

#include <gtest/gtest.h>

#include <cstdlib>
#include <sstream>

#include "check/check_cases.h"
#include "support/test_support.h"

namespace {

using namespace checkcases;

S const pkg = "[IBIS Ver]      5.0\n"                      // 1
              "[File Name]     p.pkg\n"                    // 2
              "[File Rev]      1.0\n"                      // 3
              "[Define Package Model]  P3\n"               // 4
              "[Manufacturer]  Corvane Technology\n"       // 5
              "[OEM]           Corvane Technology\n"       // 6
              "[Description]   three balls\n"              // 7
              "[Number Of Pins] 3\n"                       // 8
              "[Pin Numbers]\n"                            // 9
              "A1\nA2\nB1\n"                               // 10-12
              "[Model Data]\n"                             // 13
              "[Resistance Matrix] Sparse_matrix\n"        // 14
              "[Row] A1\nA1 0.1\n"                         // 15-16
              "[Inductance Matrix] Banded_matrix\n"        // 17
              "[Bandwidth] 1\n"                            // 18
              "[Row] A1\n3.1nH 0.4nH\n"                    // 19-20
              "[Row] A2\n2.2nH 0.3nH\n"                    // 21-22
              "[Row] B1\n4.0nH\n"                          // 23-24
              "[Capacitance Matrix] Full_matrix\n"         // 25
              "[Row] A1\n0.9pF -0.1pF -0.02pF\n"           // 26-27
              "[Row] A2\n0.7pF -0.05pF\n"                  // 28-29
              "[Row] B1\n1.2pF\n"                          // 30-31
              "[End Model Data]\n"                         // 32
              "[End Package Model]\n"                      // 33
              "[End]\n";                                   // 34

TEST(PackageCheck, PackageFileRules)
{
    struct Case {
        std::vector<std::pair<S, S>> edits;
        Lines expected;
    } const cases[] = {
        {{}, {}},
        {{{"[Number Of Pins] 3", "[Number Of Pins] 256"}},
         {"f:8: error: [Number Of Pins] says 256 but [Pin Numbers] lists 3"}},
        {{{"Sparse_matrix", "Diagonal_matrix"}},
         {"f:14: error: [Resistance Matrix] form \"Diagonal_matrix\" is not one that IBIS names (Full_matrix, "
          "Banded_matrix, Sparse_matrix)"}},
        {{{"[Row] A2\n2.2nH 0.3nH\n", ""}}, {"f:17: error: [Inductance Matrix] has no [Row] for 1 pin: A2"}},
        {{{"[Row] B1\n1.2pF\n", "[Row] A1\n1.2pF\n"}},
         {"f:25: error: [Capacitance Matrix] has no [Row] for 1 pin: B1",
          "f:30: error: [Capacitance Matrix] has [Row] A1 twice"}},
        {{{"2.2nH 0.3nH", "2.2nH 0.3nH 0.1nH"}},
         {"f:22: error: [Inductance Matrix] row A2 holds more than 2 entries (the diagonal and [Bandwidth] more)"}},
        {{{"A1 0.1\n", "A1 0.1\n[Row] B1\nA2 0.1\n"}},
         {"f:18: error: [Resistance Matrix] row B1: pin A2 stands ahead of B1 under [Pin Numbers]; a row holds its "
          "own pin and those behind it"}},
        {{{"A1 0.1\n", "A1 0.1\nC7 0.1\n"}}, {"f:17: error: [Resistance Matrix] row A1: \"C7\" is not a pin under [Pin Numbers]"}},
        {{{"[Row] B1\n4.0nH", "[Row] 3\n4.0nH"}},
         {"f:17: error: [Inductance Matrix] has no [Row] for 1 pin: B1",
          "f:23: error: [Row] \"3\" of [Inductance Matrix] is not a pin under [Pin Numbers]"}},
        {{{"-0.05pF", "-0.05pF,"}}, {"f:29: error: matrix entry \"-0.05pF,\" is not a number"}},
        {{{"2.2nH 0.3nH", "0nH 0.3nH"}},
         {"f:22: error: [Inductance Matrix] self term of pin A2 is 0nH; it must be above zero"}},
        {{{"[End Model Data]\n", ""}}, {"f:13: error: [Model Data] has no [End Model Data]"}},
        {{{"[End Package Model]\n", ""}}, {"f:4: error: [Define Package Model] P3 has no [End Package Model]"}},
        // A model still open where the file ends.
        {{{"[End Package Model]\n[End]\n", ""}},
         {"f:4: error: [Define Package Model] P3 has no [End Package Model]", "f:32: error: the last keyword is not [End]"}},
        {{{"[OEM]           Corvane Technology\n", ""}}, {"f:4: warning: [Define Package Model] P3 has no [OEM]"}},
        {{{"[Model Data]\n", "[Number Of Sections] 1\n[Model Data]\n"}},
         {"f:4: error: [Define Package Model] P3 has [Model Data] and [Number Of Sections]; a model uses one of them"}},
        {{{"[End]\n", "[Component] X\n[End]\n"}},
         {"f:34: error: [Component] does not belong in a package model file (header keywords, package models, [End])"}},
        {{{"[End]\n", ""}}, {"f:33: error: the last keyword is not [End]"}},
        {{{"p.pkg", "q.pkg"}}, {"f:2: error: [File Name] says \"q.pkg\" but the file is \"p.pkg\""}},
        {{{"[End]\n", "[Define Package Model]  P3\n[End Package Model]\n[End]\n"}},
         {"f:34: error: [Define Package Model] P3 stands twice (first at line 4)",
          "f:34: warning: [Define Package Model] P3 has no [Manufacturer]",
          "f:34: warning: [Define Package Model] P3 has no [OEM]",
          "f:34: warning: [Define Package Model] P3 has no [Description]",
          "f:34: error: [Define Package Model] P3 has no [Number Of Pins]",
          "f:34: error: [Define Package Model] P3 has neither [Model Data] nor [Number Of Sections]"}},
    };
    for (Case const& c : cases) {
        S const text = edited(pkg, c.edits);
        SCOPED_TRACE(text);
        EXPECT_EQ(formatted(ibischeck::checkPackageFile(text, "p.pkg")), c.expected);
    }
    EXPECT_EQ(formatted(ibischeck::checkPackageFile("[IBIS Ver] 5.0\n[File Name] e.pkg\n[File Rev] 1\n[End]\n", "e.pkg")),
              Lines{"f:4: error: no [Define Package Model] keyword"});
}

TEST(PackageCheck, SectionForm)
{
    S const sections = edited(pkg, {{"[Number Of Pins] 3\n", "[Number Of Sections] 2\n[Number Of Pins] 3\n"},
                                    {"A1\nA2\nB1\n", "A1 Len=0 L=1n / Len=2 L=1n C=0.2p R=0.01 /\nA2 Len=0 L=2n C=1p /\n"
                                                     "B1 Len=0 L=3n /\n  Fork Len=1 C=0.1p / Endfork\n"},
                                    {S(pkg, pkg.find("[Model Data]"), pkg.find("[End Package") - pkg.find("[Model Data]")), ""}});
    EXPECT_EQ(formatted(ibischeck::checkPackageFile(sections, "p.pkg")), Lines{});
    EXPECT_EQ(formatted(ibischeck::checkPackageFile(edited(sections, {{"C=1p /", "C=1p / Len=1 R=0.1 / Len=1 R=0.1 /"}}), "p.pkg")),
              Lines{"f:12: warning: the path of pin A2 has 3 sections; [Number Of Sections] says 2"});
    EXPECT_EQ(formatted(ibischeck::checkPackageFile(edited(sections, {{"L=2n C=1p /", "L=2n C=1p"}}), "p.pkg")),
              Lines{"f:12: error: a section of pin A2 has no closing \"/\""});
}

// A design file may hold its package model behind its components, or name
// one that a package model file beside it defines.
TEST(PackageCheck, DesignFileWithPackageModel)
{
    S const design = "[IBIS Ver]      5.0\n"                 // 1
                     "[File Name]     board.ibs\n"           // 2
                     "[File Rev]      1.0\n"                 // 3
                     "[Component]     KVANR3-40E\n"          // 4
                     "[Manufacturer]  Corvane\n"             // 5
                     "[Package]\n"                           // 6
                     "R_pkg  0.2  0.1  0.3\n"                // 7
                     "L_pkg  3nH  2nH  4nH\n"                // 8
                     "C_pkg  1pF  1pF  1pF\n"                // 9
                     "[Pin]  signal_name  model_name\n"      // 10
                     "A1     clk          in\n"              // 11
                     "[Package Model] P3\n"                  // 12
                     "[Model]  in\n"                         // 13
                     "Model_type Input\n"                    // 14
                     "C_comp  2p  1p  3p\n"                  // 15
                     "[Voltage Range]  2.5  2.4  2.6\n"      // 16
                     "| End [Model] in\n";                   // 17
    S const model = S(pkg, pkg.find("[Define Package Model]"), pkg.find("[End]") - pkg.find("[Define Package Model]"));
    S const inside = design + model + "[End]\n";
    EXPECT_EQ(formatted(ibischeck::checkDesignFile(inside, "board.ibs")), Lines{});
    EXPECT_EQ(formatted(ibischeck::checkDesignFile(edited(inside, {{"[Row] B1\n1.2pF", "[Row] B1\n-1.2pF"}}), "board.ibs")),
              Lines{"f:45: error: [Capacitance Matrix] self term of pin B1 is -1.2pF; it must be above zero"});

    S const outside = design + "[End]\n";
    EXPECT_EQ(formatted(ibischeck::checkDesignFile(outside, "board.ibs")),
              Lines{"f:12: error: [Package Model] P3 is defined neither in the file nor in a package model file "
                    "(.pkg) beside it"});
    std::istringstream in(outside);
    EXPECT_EQ(formatted(ibischeck::checkDesignFile(in, "board.ibs", [](S const& name) { return name == "P3"; })),
              Lines{});

    // The command looks in the design file's folder.
    ts::TempDir dir;
    ts::writeFile(dir.file("board.ibs"), outside);
    ts::writeFile(dir.file("other.ibs"), edited(outside, {{"board.ibs", "other.ibs"}, {"Model] P3", "Model] P4"}}));
    ts::writeFile(dir.file("p.pkg"), pkg);
    ts::writeFile(dir.file("bad.pkg"), edited(pkg, {{"p.pkg", "bad.pkg"}, {"[Bandwidth] 1\n", ""}}));
    std::vector<CommandCase> const cases = {
        {{"check", "board.ibs", "p.pkg"}, 0, "2 files checked: 0 errors, 0 warnings\n"},
        {{"check", "other.ibs", "bad.pkg"}, 1,
         "other.ibs:12: error: [Package Model] P4 is defined neither in the file nor in a package model file "
         "(.pkg) beside it\n"
         "bad.pkg:17: error: [Inductance Matrix] Banded_matrix has no [Bandwidth]\n"
         "2 files checked: 2 errors, 0 warnings\n"},
    };
    expectRuns(cases, dir.path());
}

// A master file's package model behind its models is checked too.
TEST(PackageCheck, MasterFileWithPackageModel)
{
    S const master = ts::readFile(ts::sourcePath("examples/kva3_master.ibs"));
    S const model = S(pkg, pkg.find("[Define Package Model]"), pkg.find("[End]") - pkg.find("[Define Package Model]"));
    S const with = edited(master, {{"\n[End]", "\n" + edited(model, {{"[Row] A2\n2.2nH 0.3nH\n", ""}}) + "[End]"}});
    Lines const found = formatted(ibischeck::checkMasterFile(with, "KVA3"));
    ASSERT_FALSE(found.empty());
    EXPECT_NE(found.back().find("error: [Inductance Matrix] has no [Row] for 1 pin: A2"), S::npos) << found.back();
}

// The example package model passes the check, and its script writes it
// again byte for byte.
TEST(PackageCheck, ExamplePackageModel)
{
    S const path = ts::sourcePath("examples/kva3_master_6bg256c_bg.pkg");
    std::istringstream in(ts::readFile(path));
    EXPECT_EQ(formatted(ibischeck::checkPackageFile(in, "kva3_master_6bg256c_bg.pkg")), Lines{});
    if (std::system("python3 -c '' 2>/dev/null") != 0)
        GTEST_SKIP() << "no python3";
    ts::TempDir dir;
    S const again = dir.file("kva3_master_6bg256c_bg.pkg");
    ASSERT_EQ(std::system(("python3 " + ts::sourcePath("examples/make_package_model.py") + " " + again).c_str()), 0);
    EXPECT_EQ(ts::readFile(again), ts::readFile(path));
}

} // namespace
