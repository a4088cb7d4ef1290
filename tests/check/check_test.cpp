// The IBIS file checker: each rule found in a small file written for it, at
// its line; clean files pass; the check command's output and exit codes.

#include <gtest/gtest.h>

#include "check/check_cases.h"
#include "support/test_support.h"

namespace {

using namespace checkcases;

S const design = "[IBIS Ver]      5.0\n"                  // 1
                 "[File Name]     board.ibs\n"            // 2
                 "[Component]     KVANR3-40E\n"           // 3
                 "[Manufacturer]  Corvane\tTechnology\n"  // 4
                 "[Package]\n"                            // 5
                 "|CABGA256\n"                            // 6
                 "R_pkg  0.2  0.1  0.3\n"                 // 7
                 "L_pkg  3nH  2nH  4nH\n"                 // 8
                 "C_pkg  1pF  1pF  1pF\n"                 // 9
                 "|\n"                                    // 10
                 "[Pin]  signal_name  model_name\n"       // 11
                 "C1     clk+         lvd_in\n"           // 12
                 "C2     clk-         lvd_in\n"           // 13
                 "N1     spare        nc\n"               // 14
                 "[Diff pin]  inv_pin  vdiff\n"           // 15
                 "C1          C2       0.2V\n"            // 16
                 "[Model]  lvd_in\n"                      // 17
                 "Model_type Input\n"                     // 18
                 "| End [Model] lvd_in\n"                 // 19
                 "| End [Component]\n"                    // 20
                 "[End]\n";                               // 21

TEST(Check, DesignFileRules)
{
    S const longName = S(41, 'b') + ".ibs";
    struct Case {
        std::vector<std::pair<S, S>> edits;
        Lines expected;
        S fileName = "board.ibs";
    } const cases[] = {
        {{}, {}},
        {{{"[IBIS Ver]      5.0\n", ""}}, {"f:1: error: the first keyword is not [IBIS Ver]"}},
        {{{"[End]\n", "[End]\n[Notes] late\n"}}, {"f:22: error: the last keyword is not [End]"}},
        {{{"board.ibs", "Board.ibs"}},
         {"f:2: error: [File Name] says \"Board.ibs\" but the file is \"board.ibs\"",
          "f:2: error: [File Name] \"Board.ibs\" is not in lower case"}},
        {{{"board.ibs", longName}},
         {"f:2: error: [File Name] base name of 41 characters; at most 40"}, longName},
        {{{"board.ibs", S(40, 'b') + ".ibs"}}, {}, S(40, 'b') + ".ibs"},
        {{{"[Component]     KVANR3-40E\n", ""}}, {"f:20: error: no [Component] keyword"}},
        {{{"[Manufacturer]  Corvane\tTechnology\n", ""}}, {"f:20: error: no [Manufacturer] keyword"}},
        {{{"L_pkg", "|L_pkg"}}, {"f:5: error: [Package] has no L_pkg line"}},
        {{{"spare        nc", "spare        lvc_out"}},
         {"f:14: error: model lvc_out of pin N1 has no [Model] block"}},
        {{{"spare        nc", "spare"}}, {"f:14: error: pin N1 has no model column"}},
        {{{"C1          C2       0.2V", "C1 C3"}},
         {"f:16: error: [Diff pin] row without pin, inv_pin and vdiff",
          "f:16: error: [Diff pin] pin C3 is not under [Pin]"}},
        {{{"| End [Component]", "[Model]  lvd_in\nModel_type Input\n| End [Component]"}},
         {"f:20: error: [Model] lvd_in stands twice (first at line 17)"}},
        {{{"Model_type Input", "Vinl = 0.8V"}, {"| End [Component]", "[Model]  other\nModel_type Input\n| End [Component]"}},
         {"f:17: error: [Model] lvd_in has no Model_type"}},
        {{{"N1     spare        nc\n", "N1     spare        nc\n  | spare pins\n"}}, {}},
        {{{"Corvane\t", "Corvane\x7f"}, {"0.2V", "0.2V\r"}, {"5.0\n", "5.0\xc3\xa9\n"}},
         {"f:1: error: byte 0xC3 in column 20 is not printable ASCII",
          "f:4: error: byte 0x7F in column 24 is not printable ASCII",
          "f:16: error: byte 0x0D in column 26 is not printable ASCII"}},
        {{{"0.2V", "0.2V" + S(95, ' ') + "|"}, {"-40E", "-40E" + S(93, ' ') + "|"}},
         {"f:16: warning: line of 121 characters; IBIS lines keep within 120"}},
        {{{"[Package]\n", ""}, {"[Pin]  signal_name  model_name\n", ""}},
         {"f:14: error: [Diff pin] pin C1 is not under [Pin]", "f:14: error: [Diff pin] pin C2 is not under [Pin]",
          "f:19: error: no [Package] keyword", "f:19: error: no [Pin] keyword"}},
    };
    for (Case const& c : cases) {
        S const text = edited(design, c.edits);
        SCOPED_TRACE(text);
        EXPECT_EQ(formatted(ibischeck::checkDesignFile(text, c.fileName)), c.expected);
    }
    EXPECT_EQ(formatted(ibischeck::checkDesignFile("", "e.ibs")),
              (Lines{"f:1: error: the first keyword is not [IBIS Ver]", "f:1: error: the last keyword is not [End]",
                     "f:1: error: no [File Name] keyword", "f:1: error: no [Component] keyword",
                     "f:1: error: no [Manufacturer] keyword", "f:1: error: no [Package] keyword",
                     "f:1: error: no [Pin] keyword"}));
}

S const master = "[IBIS Ver]      5.0\n"                     // 1
                 "[Notes]         Tiny master.\n"            // 2
                 "STANDARD (IO_TYPE)\n"                      // 3
                 "|----\n"                                   // 4
                 "  LVCMOS   lvc\n"                          // 5
                 "|----\n"                                   // 6
                 "SLEW\n"                                    // 7
                 "|----\n"                                   // 8
                 "  SLOW     s\n"                            // 9
                 "|----\n"                                   // 10
                 "PULLMODE\n"                                // 11
                 "|----\n"                                   // 12
                 "  NONE     n\n"                            // 13
                 "|----\n"                                   // 14
                 "\n"                                        // 15
                 "TERMINATION\n"                             // 16
                 "  ON       t\n"                            // 17
                 "|----\n"                                   // 18
                 "VCMT\n"                                    // 19
                 "| value    code\n"                         // 20
                 "  VCMT     v\n"                            // 21
                 "|----\n"                                   // 22
                 "DIFFERENTIAL DRIVE CURRENT\n"              // 23
                 "  3.5      3\n"                            // 24
                 "|----\n"                                   // 25
                 "[Component]     KX3\n"                     // 26
                 "[Package]\n"                               // 27
                 "|CABGA256\n"                               // 28
                 "L_pkg  3nH  2nH  4nH\n"                    // 29
                 "|  \n"                                     // 30
                 "[Pin]  signal_name  model_name\n"          // 31
                 "A1     IO_A1        lvc330s080naaaaaaaou\n" // 32
                 "B1     VCC          POWER\n"               // 33
                 "|\n"                                       // 34
                 "[Model]        lvc330s080naaaaaaaou\n"     // 35
                 "Model_type     Output\n"                   // 36
                 "| End [Model] lvc330s080naaaaaaaou\n"      // 37
                 "[End]\n";                                  // 38

TEST(Check, MasterFileRules)
{
    S const model = "lvc330s080naaaaaaaou";
    S const incompleteKva3 = "the naming tables for KVA3 are incomplete ahead of this line: no ";
    S const kvanTables = "IMPEDENCE\n  50  5\n|--\nTERMGND\n  OFF  a\n|--\nTERMVTT\n  OFF  a\n|--\n"
                         "DIFFERENTIAL RESISTOR\n  OFF  a\n|--\n";
    struct Case {
        std::vector<std::pair<S, S>> edits;
        Lines expected;
        S family = "";
    } const cases[] = {
        {{}, {}},
        {{}, {}, "KVA3"},
        {{}, {}, "KVA3-40E-6BG256C"},
        {{{"  SLOW     s\n|----\n", "  SLOW     s\n"}},
         {"f:7: error: naming table SLEW is not closed by a \"|\" line before the heading PULLMODE at line 10; "
          "the reader takes that table in as rows",
          "f:25: error: " + incompleteKva3 + "PULLMODE; the generator reads on and fails to load the models"},
         "KVA3"},
        {{{"  3.5      3\n|----\n", "  3.5      3\n"}},
         {"f:23: error: naming table DIFFERENTIAL CURRENT is not closed by a \"|\" line ahead of line 25, where the "
          "naming section ends; the reader takes what follows as rows"}},
        {{{"TERMINATION\n", "TERMINATION\n| value    code\n"}},
         {"f:16: error: naming table TERMINATION has a comment line ahead of its rows; its reader ends there"}},
        {{{"DIFFERENTIAL DRIVE CURRENT\n  3.5      3\n|----\n", ""}},
         {"f:23: error: " + incompleteKva3 + "DIFFERENTIAL CURRENT or DIFF DRIVE; the generator reads on and fails "
          "to load the models"},
         "KVA3"},
        {{{"STANDARD (IO_TYPE)\n|----\n  LVCMOS   lvc\n|----\n", ""}},
         {"f:22: error: " + incompleteKva3 + "STANDARD; the generator reads on and fails to load the models"},
         "KVA3"},
        {{},
         {"f:26: error: the naming tables for KVA4Y are incomplete ahead of this line: no IMPEDANCE, DIFFERENTIAL "
          "RESISTOR; the generator reads on and fails to load the models"},
         "KVA4Y"},
        {{{"VCMT\n", "IMPEDENCE\n  50       5\n|----\nVCMT\n"}},
         {"f:29: error: the naming tables for KVA4Y are incomplete ahead of this line: no DIFFERENTIAL RESISTOR; the "
          "generator reads on and fails to load the models"},
         "KVA4Y"},
        {{},
         {"f:16: warning: naming table TERMINATION stands behind line 11, where the tables for KVTN are complete; "
          "the generator never reads it",
          "f:19: warning: naming table VCMT stands behind line 11, where the tables for KVTN are complete; the "
          "generator never reads it",
          "f:23: warning: naming table DIFFERENTIAL CURRENT stands behind line 11, where the tables for KVTN are "
          "complete; the generator never reads it"},
         "KVTN"},
        // The table-driven family reads a table for every field of the key.
        {{},
         {"f:26: error: the naming tables for KVAN are incomplete ahead of this line: no IMPEDANCE, TERMGND, "
          "TERMVTT, DIFFERENTIAL RESISTOR; the generator reads on and fails to load the models"},
         "KVAN"},
        {{{"VCMT\n", kvanTables + "VCMT\n"}}, {}, "KVAN-25F-5FN484C"},
        {{{"VCMT\n", kvanTables + "VCMT\n"}, {"[Component]", "MULTI DRIVE\n  X  x\n|--\n[Component]"}},
         {"f:38: warning: naming table MULTI DRIVE stands behind line 35, where the tables for KVAN are complete; "
          "the generator never reads it"},
         "KVAN"},
        {{}, {"f:26: error: the generator knows no family in \"XYZ\""}, "XYZ"},
        {{{"Tiny master.", S(241, 'x')}, {"Output", "Output" + S(233, ' ') + "|"}},
         {"f:2: error: line of 257 characters: the naming section reader (255-byte buffer) and the writers' passes "
          "(256-byte buffer) stop here",
          "f:36: warning: line of 255 characters: the naming section reader (255-byte buffer) would stop here if it "
          "read this far"}},
        {{{"Tiny master.", S(239, 'x')}, {"Output", "Output" + S(234, ' ') + "|"}},
         {"f:2: error: line of 255 characters: the naming section reader (255-byte buffer) stops here",
          "f:36: error: line of 256 characters: the writers' passes (256-byte buffer) stop here"}},
        {{{"Tiny master.", S(238, 'x')}}, {}},
        {{{"| End [Model] " + model + "\n", ""}},
         {"f:35: error: [Model] " + model + " is not followed by \"| End [Model] " + model + "\"; its copy would not end"}},
        {{{"| End [Model] " + model, "| End [Model] other"}},
         {"f:35: error: [Model] " + model + " is not closed by \"| End [Model] " + model + "\" before line 37"}},
        {{{"[Package]\n", "[Package]\n   \n"}},
         {"f:28: error: blank-only line ahead of a package block; the package reader fails on it"}},
        {{{"L_pkg  3nH  2nH  4nH\n|  \n", "L_pkg  3nH  2nH  4nH\n"}},
         {"f:28: error: package block CABGA256 is not closed by a \"|\" line before [Pin]; its copy would not end"}},
        {{{"|CABGA256\n", ""}},
         {"f:27: error: no package block (a \"|\" name line and its R_pkg, L_pkg, C_pkg lines) under the package "
          "keyword"}},
        {{{"POWER\n|\n", "POWER\n"}},
         {"f:31: error: the [Pin] list is not closed by a \"|\" line before [Model] at line 34; the model list takes "
          "in its rows"}},
        {{{"POWER\n|\n[Model]        " + model + "\nModel_type     Output\n| End [Model] " + model + "\n[End]\n",
           "POWER\n"}},
         {"f:31: error: the [Pin] list is never closed by a line beginning with \"|\"",
          "f:32: error: model " + model + " is listed under [Pin] but has no [Model] block"}},
        {{{"[End]", "[Model] extra\n| End [Model] extra\n[End]"}},
         {"f:38: warning: [Model] extra is not listed under [Pin]; no design can use it"}},
        {{{"[Component]     KX3\n", ""}}, {"f:37: error: no [Component] line"}},
        {{{"[Package]\n", ""}}, {"f:37: error: no [Package] line; the preamble copy takes the whole file"}},
        {{{"[Notes]         Tiny master.", "  Package list"}},
         {"f:2: warning: the preamble copy ends at this line, ahead of [Package]"}},
        {{{"[Notes]         Tiny master.", "    Package list"}}, {}},
        {{{"[Pin]  signal_name  model_name\n", ""}, {"|\n[Model]", "[Model]"}},
         {"f:33: warning: [Model] " + model + " is not listed under [Pin]; no design can use it",
          "f:36: error: no [Pin] line; the generator finds no models"}},
    };
    for (Case const& c : cases) {
        S const text = edited(master, c.edits);
        SCOPED_TRACE(c.family + "\n" + text);
        EXPECT_EQ(formatted(ibischeck::checkMasterFile(text, c.family)), c.expected);
    }
    EXPECT_EQ(formatted(ibischeck::checkMasterFile("")),
              (Lines{"f:1: error: no [Component] line", "f:1: error: no [Package] line; the preamble copy takes the whole file",
                     "f:1: error: no [Pin] line; the generator finds no models"}));
    EXPECT_EQ(formatted(ibischeck::checkMasterFile("SLEW\n  SLOW  s\n")),
              (Lines{"f:1: error: naming table SLEW is never closed by a \"|\" line; its reader runs to the end of the file",
                     "f:2: error: no [Component] line", "f:2: error: no [Package] line; the preamble copy takes the whole file",
                     "f:2: error: no [Pin] line; the generator finds no models"}));
}

TEST(Check, CommandOutputAndExitCodes)
{
    ts::TempDir dir;
    ts::writeFile(dir.file("board.ibs"), design);
    ts::writeFile(dir.file("wide.ibs"), edited(design, {{"0.2V", "0.2V" + S(120, ' ') + "|"}, {"board", "wide"}}));
    ts::writeFile(dir.file("bad.ibs"), edited(design, {{"board", "bad"}, {"Model_type", "Vinl"}}));
    ts::writeFile(dir.file("m.ibs"), master);
    std::vector<CommandCase> const cases = {
        {{"check", "board.ibs"}, 0, "1 file checked: 0 errors, 0 warnings\n"},
        {{"check", "wide.ibs", "board.ibs"}, 0,
         "wide.ibs:16: warning: line of 146 characters; IBIS lines keep within 120\n"
         "2 files checked: 0 errors, 1 warning\n"},
        {{"check", "bad.ibs", "wide.ibs"}, 1,
         "bad.ibs:17: error: [Model] lvd_in has no Model_type\n"
         "wide.ibs:16: warning: line of 146 characters; IBIS lines keep within 120\n"
         "2 files checked: 1 error, 1 warning\n"},
        {{"check", "--master", "--family", "KVA3", "--", "m.ibs"}, 0, "1 file checked: 0 errors, 0 warnings\n"},
        {{"check", "--master", "board.ibs"}, 1,
         "board.ibs:11: error: the [Pin] list is not closed by a \"|\" line before [Diff pin] at line 15; the model "
         "list takes in its rows\n1 file checked: 1 error, 0 warnings\n"},
        {{"check", "board.ibs", "gone.ibs"}, 2, "1 file checked: 0 errors, 0 warnings\n",
         "pad2ibis: check: cannot read gone.ibs\n"},
        {{"check"}, 2, "", "pad2ibis: check: no file to check\nTry 'pad2ibis --help' for more information.\n"},
        {{"check", "--bogus", "board.ibs"}, 2, "",
         "pad2ibis: check: unknown option --bogus\nTry 'pad2ibis --help' for more information.\n"},
        {{"check", "--family", "KVA3", "m.ibs"}, 2, "",
         "pad2ibis: check: --family goes with --master\nTry 'pad2ibis --help' for more information.\n"},
        {{"check", "--master", "--family"}, 2, "",
         "pad2ibis: check: --family needs a value\nTry 'pad2ibis --help' for more information.\n"},
    };
    expectRuns(cases, dir.path());
}

} // namespace
