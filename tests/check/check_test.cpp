// The IBIS file checker: each rule found in a small file written for it, at
// its line; clean files pass; the check command's output and exit codes.

#include <gtest/gtest.h>

#include <sstream>

#include "check/check_cases.h"
#include "check/check_text.h"
#include "check/master_check.h"
#include "support/test_support.h"

namespace {

using namespace checkcases;

// The text with CR LF line ends.
S crlf(S const& text)
{
    S out;
    for (char c : text)
        out += c == '\n' ? S("\r\n") : S(1, c);
    return out;
}

S const design = "[IBIS Ver]      5.0\n"                  // 1
                 "[File Name]     board.ibs\n"            // 2
                 "[File Rev]      1.0\n"                  // 3
                 "[Component]     KVANR3-40E\n"           // 4
                 "[Manufacturer]  Corvane\tTechnology\n"  // 5
                 "[Package]\n"                            // 6
                 "|CABGA256\n"                            // 7
                 "R_pkg  0.2  0.1  0.3\n"                 // 8
                 "L_pkg  3nH  2nH  4nH\n"                 // 9
                 "C_pkg  1pF  1pF  1pF\n"                 // 10
                 "|\n"                                    // 11
                 "[Pin]  signal_name  model_name\n"       // 12
                 "C1     clk+         lvd_in\n"           // 13
                 "C2     clk-         lvd_in\n"           // 14
                 "N1     spare        nc\n"               // 15
                 "[Diff pin]  inv_pin  vdiff\n"           // 16
                 "C1          C2       0.2V\n"            // 17
                 "[Model]  lvd_in\n"                      // 18
                 "Model_type Input\n"                     // 19
                 "C_comp  2p  1p  3p\n"                   // 20
                 "[Voltage Range]  2.5  2.4  2.6\n"       // 21
                 "| End [Model] lvd_in\n"                 // 22
                 "| End [Component]\n"                    // 23
                 "[End]\n";                               // 24

S const inputModel = "[Model]  other\nModel_type Input\nC_comp 2p 1p 3p\n[Voltage Range] 2.5 2.4 2.6\n";

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
        {{{"5.0\n", "5.5\n"}}, {"f:1: error: [IBIS Ver] \"5.5\" is not an IBIS version"}},
        {{{"5.0\n", "3.1\n"}}, {"f:1: error: [IBIS Ver] \"3.1\" is not an IBIS version"}},
        // Files of 1997 say 3.0, the version of that year.
        {{{"5.0\n", "3.0\n"}}, {}},
        {{{"[End]\n", "[End]\n[Notes] late\n"}}, {"f:25: error: the last keyword is not [End]"}},
        {{{"[End]\n", "[End]\nlate\n| fine\nlater\n"}}, {"f:25: warning: text behind [End]; parsers read nothing there"}},
        {{{"board.ibs", "Board.ibs"}},
         {"f:2: error: [File Name] says \"Board.ibs\" but the file is \"board.ibs\"",
          "f:2: error: [File Name] \"Board.ibs\" is not in lower case"}},
        {{{"board.ibs", "board.ibs\x01"}},
         {"f:2: error: byte 0x01 in column 26 is not printable ASCII",
          "f:2: error: [File Name] says \"board.ibs\\x01\" but the file is \"board.ibs\""}},
        {{{"board.ibs", longName}},
         {"f:2: error: [File Name] base name of 41 characters; at most 40"}, longName},
        {{{"board.ibs", S(40, 'b') + ".ibs"}}, {}, S(40, 'b') + ".ibs"},
        {{{"[File Rev]      1.0\n", ""}}, {"f:23: error: no [File Rev] keyword"}},
        {{{"[Component]     KVANR3-40E\n", ""}}, {"f:23: error: no [Component] keyword"}},
        {{{"[Manufacturer]  Corvane\tTechnology\n", ""}}, {"f:23: error: no [Manufacturer] keyword"}},
        {{{"L_pkg", "|L_pkg"}}, {"f:6: error: [Package] has no L_pkg line"}},
        {{{"R_pkg  0.2  0.1  0.3", "R_pkg  NA  0.1"}},
         {"f:8: error: R_pkg needs typ, min and max; it has 2 values"}},
        {{{"C_pkg  1pF  1pF  1pF", "C_pkg  NA  NA  1 pF"}},
         {"f:10: error: C_pkg needs typ, min and max; it has 4 values"}},
        {{{"C_pkg  1pF  1pF  1pF", "C_pkg  NA  x  NA"}},
         {"f:10: error: C_pkg typ is NA; only min and max may be", "f:10: error: C_pkg min \"x\" is not a number"}},
        {{{"spare        nc", "spare        lvc_out"}},
         {"f:15: error: model lvc_out of pin N1 has no [Model] block"}},
        {{{"spare        nc", "spare  | nc"}}, {"f:15: error: pin N1 has no model column"}},
        {{{"spare        nc", "spare  circuitcall"}}, {}},
        {{{"spare        nc", S(41, 's') + " nc"}}, {"f:15: warning: signal name of pin N1 has 41 characters; at most 40"}},
        {{{"spare        nc", "spare  nc  1"}},
         {"f:15: warning: pin N1 row has 4 columns; a row has 3, or 6 with R_pin, L_pin and C_pin"}},
        {{{"spare        nc", "spare  nc  1  2n  3p"}},
         {"f:15: warning: pin N1 row has R_pin, L_pin and C_pin, which the [Pin] line does not name"}},
        {{{"model_name\n", "model_name  R_pin  L_pin  C_pin\n"}, {"spare        nc", "spare  nc  1  2n  3p"}}, {}},
        {{{"C1          C2       0.2V", "C1 C3"}},
         {"f:17: error: [Diff pin] row without pin, inv_pin and vdiff",
          "f:17: error: [Diff pin] pin C3 is not under [Pin]"}},
        {{{"C1          C2       0.2V", "C1 C1 0.2V\nC1 C2 0.2V"}},
         {"f:17: warning: [Diff pin] pin C1 pairs with itself", "f:18: warning: [Diff pin] pin C1 heads a second pair"}},
        {{{"| End [Component]", "[Model]  lvd_in\nModel_type Input\nC_comp 1p 1p 1p\n[Voltage Range] 1 1 1\n| End [Component]"}},
         {"f:23: error: [Model] lvd_in stands twice (first at line 18)"}},
        {{{"Model_type Input", "Vinl = 0.8V"}},
         {"f:18: error: [Model] lvd_in has no Model_type"}},
        {{{"N1     spare        nc\n", "N1     spare        nc\n  | spare pins\n"}}, {}},
        {{{"Corvane\t", "Corvane\x7f"}, {"0.2V", "0.2V\r|"}, {"5.0\n", "5.0\xc3\xa9\n"}},
         {"f:1: error: byte 0xC3 in column 20 is not printable ASCII",
          "f:1: error: [IBIS Ver] \"5.0\\xC3\\xA9\" is not an IBIS version",
          "f:5: error: byte 0x7F in column 24 is not printable ASCII",
          "f:17: error: byte 0x0D in column 26 is not printable ASCII"}},
        {{{"0.2V", "0.2V" + S(95, ' ') + "|"}, {"-40E", "-40E" + S(93, ' ') + "|"}},
         {"f:17: error: line of 121 characters; IBIS lines keep within 120"}},
        {{{"5.0", "4.0"}, {"0.2V", "0.2V" + S(55, ' ') + "|"}},
         {"f:17: error: line of 81 characters; IBIS lines keep within 80 before IBIS 4.1"}},
        {{{"[Package]\n", ""}, {"[Pin]  signal_name  model_name\n", ""}},
         {"f:15: error: [Diff pin] pin C1 is not under [Pin]", "f:15: error: [Diff pin] pin C2 is not under [Pin]",
          "f:22: error: no [Package] keyword", "f:22: error: no [Pin] keyword"}},
        // The comment character in force cuts the fields.
        {{{"[Component]", "[Comment Char] #_char\n[Component]"}, {"spare        nc", "spare  nc  # | spare"},
          {"| End [Model] lvd_in\n| End [Component]\n", "# end\n"}},
         {}},
        // Model selectors: entries, their models and types, and where they stand.
        {{{"spare        nc", "spare  sel"}, {"| End [Component]", "[Model Selector] sel\nlvd_in  receiver\nother  slow\n" + inputModel + "| End [Component]"}},
         {}},
        {{{"spare        nc", "spare  sel"}, {"[Model]  lvd_in", "[Model Selector] sel\n[Model]  lvd_in"}},
         {"f:18: error: [Model Selector] sel has no entries"}},
        {{{"5.0", "4.1"}, {"[Model]  lvd_in", "[Model Selector] s23456789012345678901\nlvd_in x\n[Model]  lvd_in"}},
         {"f:18: error: [Model Selector] s23456789012345678901 has a name of 21 characters; at most 20"}},
        {{{"[Model]  lvd_in", "[Model Selector] sel\nlvd_in\nlvd_in  again\nnone  missing\nsel2  nested\n"
                                "[Model Selector] sel2\nlvd_in  x\n[Model]  lvd_in"}},
         {"f:19: warning: [Model Selector] entry lvd_in has no description",
          "f:20: warning: [Model Selector] sel lists lvd_in twice",
          "f:21: error: [Model Selector] sel entry none has no [Model] block",
          "f:22: error: [Model Selector] sel entry sel2 is a [Model Selector]; entries name [Model] blocks"}},
        {{{"[Model]  lvd_in", "[Model Selector] lvd_in\nlvd_in  x\n[Model Selector] lvd_in\nlvd_in  x\n[Model]  lvd_in"}},
         {"f:18: warning: [Model Selector] lvd_in has the name of a [Model]; a [Pin] row that names it is ambiguous",
          "f:20: warning: [Model Selector] lvd_in stands twice",
          "f:20: warning: [Model Selector] lvd_in has the name of a [Model]; a [Pin] row that names it is ambiguous"}},
        {{{"| End [Component]", "[Model Selector] sel\nlvd_in  receiver\nbus  driver\n" + inputModel +
                                    "[Model]  bus\nModel_type Series\n[Voltage Range] 1 1 1\n[R Series] 1 1 1\n| End [Component]"},
          {"spare        nc", "spare  bus"}},
         {"f:15: warning: pin N1 names a model of type Series; series models belong under [Series Pin Mapping]",
          "f:25: warning: [Model Selector] sel mixes model types: bus is Series, lvd_in is Input"}},
        {{{"[Diff pin]", "[Model Selector] sel\nlvd_in  x\n[Diff pin]"}},
         {"f:18: warning: [Diff pin] stands behind [Model Selector] (line 16); parsers read component keywords "
          "only ahead of selectors"}},
        {{{"| End [Component]", "[Model] sub_user\nModel_type Input\nC_comp 1p 1p 1p\n[Voltage Range] 1 1 1\n"
                                "[Add Submodel]\nbus_hold  All\nlost  Non-Driving\n[Submodel] bus_hold\n| End [Component]"}},
         {"f:29: warning: [Add Submodel] lost has no [Submodel] block in the file"}},
    };
    for (Case const& c : cases) {
        S const text = edited(design, c.edits);
        SCOPED_TRACE(text);
        EXPECT_EQ(formatted(ibischeck::checkDesignFile(text, c.fileName)), c.expected);
    }
    EXPECT_EQ(formatted(ibischeck::checkDesignFile("", "e.ibs")),
              (Lines{"f:1: error: the first keyword is not [IBIS Ver]", "f:1: error: the last keyword is not [End]",
                     "f:1: error: no [File Name] keyword", "f:1: error: no [File Rev] keyword",
                     "f:1: error: no [Component] keyword", "f:1: error: no [Manufacturer] keyword",
                     "f:1: error: no [Package] keyword", "f:1: error: no [Pin] keyword"}));
}

// CR LF line ends are line ends for every rule: a file passes as its LF
// twin does, and finds what its twin finds, at the same lines.
TEST(Check, DesignFileWithCrLfLineEnds)
{
    for (S const& text : {design, edited(design, {{"board.ibs", "Board.ibs"}, {"0.2V", "0.2V" + S(100, ' ')}}),
                          edited(design, {{"[Voltage Range]  2.5  2.4  2.6", "[Voltage Range]  2.5  2.4"}})})
        EXPECT_EQ(formatted(ibischeck::checkDesignFile(crlf(text), "board.ibs")),
                  formatted(ibischeck::checkDesignFile(text, "board.ibs")));
    EXPECT_EQ(formatted(ibischeck::checkDesignFile(crlf(edited(design, {{"board.ibs", "b.ibs"}})), "board.ibs")),
              (Lines{"f:2: error: [File Name] says \"b.ibs\" but the file is \"board.ibs\""}));
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
                 "Model_type     Input\n"                    // 36
                 "C_comp 1p 1p 1p\n"                         // 37
                 "[Voltage Range] 3.3 3.1 3.5\n"             // 38
                 "| End [Model] lvc330s080naaaaaaaou\n"      // 39
                 "[End]\n";                                  // 40

S const extra = "[Model] extra\nModel_type Input\nC_comp 1p 1p 1p\n[Voltage Range] 1 1 1\n| End [Model] extra\n";



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
        {{{"Tiny master.", S(241, 'x')}, {"Input", "Input" + S(234, ' ') + "|"}},
         {"f:2: error: line of 257 characters: the naming section reader (255-byte buffer) and the writers' passes "
          "(256-byte buffer) stop here",
          "f:36: warning: line of 255 characters: the naming section reader (255-byte buffer) would stop here if it "
          "read this far"}},
        {{{"Tiny master.", S(239, 'x')}, {"Input", "Input" + S(235, ' ') + "|"}},
         {"f:2: error: line of 255 characters: the naming section reader (255-byte buffer) stops here",
          "f:36: error: line of 256 characters: the writers' passes (256-byte buffer) stop here"}},
        {{{"Tiny master.", S(238, 'x')}}, {}},
        {{{"[End]", "|" + S(300, 'x') + "\n[End]"}},
         {"f:40: warning: line of 301 characters behind the last line that holds \"[Model]\"; no reader stops on it "
          "early"}},
        // Where the copy of a block ends, and what it takes along.
        {{{"| End [Model] " + model + "\n", ""}},
         {"f:35: error: no line holding \"[Model]\" follows [Model] " + model +
          "; its copy runs to the end of the file and takes [End] (line 39) along into the design file"}},
        {{{"| End [Model] " + model + "\n[End]\n", ""}},
         {"f:35: error: no line holding \"[Model]\" follows [Model] " + model + "; its copy runs to the end of the file"}},
        {{{"5.0", "4.1"}, {"[End]", "[Model] a234567890b234567890c\nModel_type Input\nC_comp 1p 1p 1p\n"
                                    "[Voltage Range] 1 1 1\n| End [Model] a234567890b234567890c\n[End]"}},
         {"f:40: error: [Model] name \"a234567890b234567890c\" has 21 characters; at most 20",
          "f:40: warning: [Model] a234567890b234567890c is not listed under [Pin]; no design can use it"}},
        {{{"| End [Model] " + model + "\n", "[Model Selector] sel\n" + model + " x\n| End [Model] " + model + "\n"}},
         {"f:35: error: the copy of [Model] " + model + " ends only at line 41 and takes [Model Selector] (line 39) "
          "along into the design file"}},
        {{{"| End [Model] " + model, "| End [Model] other"}},
         {"f:35: warning: [Model] " + model + " is closed by line 39, which names other; its copy ends there all the "
          "same"}},
        {{{"Model_type     Input\n", "Model_type     Input\n| see [Model] other\n"}},
         {"f:35: error: the copy of [Model] " + model + " ends at line 37, which holds \"[Model]\"; its lines from "
          "line 38 on are not copied"}},
        {{{"| End [Model] " + model + "\n", "|\n| the next one\n" + extra}},
         {"f:35: warning: [Model] " + model + " ends at the next [Model] line (line 41), not at \"| End [Model] " +
              model + "\"; its copy takes lines 39 to 40 along, comment and blank lines only",
          "f:41: warning: [Model] extra is not listed under [Pin]; no design can use it"}},
        {{{"| End [Model] " + model + "\n", extra}},
         {"f:35: warning: [Model] " + model + " ends at the next [Model] line (line 39), not at \"| End [Model] " +
              model + "\"; its copy is whole, with nothing taken along",
          "f:39: warning: [Model] extra is not listed under [Pin]; no design can use it"}},
        // What stands inside a block is copied into every design that uses it.
        {{{"C_comp 1p 1p 1p", "C_comp 1p 1p"}}, {"f:37: error: C_comp needs typ, min and max; it has 2 values"}},
        {{{"[Voltage Range] 3.3 3.1 3.5", "[Voltage Range] 3.3 3.1 3.5\n[Add Submodel]\nhold All"}},
         {"f:40: warning: [Add Submodel] hold: design files get no [Submodel] block, as only [Model] blocks are "
          "copied"}},
        {{{"[Package]\n", "[Package]\n   \n"}},
         {"f:28: error: blank-only line ahead of a package block; the package reader fails on it"}},
        {{{"[Package]\n", "[Package]\n\r\n"}},
         {"f:28: error: empty line ahead of a package block, blank-only by the CR of its line end; the package reader "
          "fails on it"}},
        {{{"[Package]\n", "[Package]\n\n"}}, {}},
        {{{"L_pkg  3nH  2nH  4nH\n|  \n", "L_pkg  3nH  2nH  4nH\n"}},
         {"f:28: error: package block CABGA256 is not closed by a \"|\" line before [Pin]; its copy would not end"}},
        // A comment line behind the last block opens none.
        {{{"|  \n", "|  \n| end of the packages\n|\n"}}, {}},
        {{{"|CABGA256\n", ""}},
         {"f:27: error: no package block (a \"|\" name line and its R_pkg, L_pkg, C_pkg lines) under the package "
          "keyword"}},
        {{{"POWER\n|\n", "POWER\n"}},
         {"f:31: error: the [Pin] list is not closed by a \"|\" line before [Model] at line 34; the model list takes "
          "in its rows"}},
        {{{"POWER\n|\n[Model]        " + model + "\nModel_type     Input\nC_comp 1p 1p 1p\n[Voltage Range] 3.3 3.1 3.5\n"
                                                 "| End [Model] " + model + "\n[End]\n",
           "POWER\n"}},
         {"f:31: error: the [Pin] list is never closed by a line beginning with \"|\"",
          "f:32: error: model " + model + " is listed under [Pin] but has no [Model] block; a design that uses it "
          "gets an empty one",
          "f:33: error: no [Model] line; design files get no model"}},
        {{{"[End]", extra + "[End]"}}, {"f:40: warning: [Model] extra is not listed under [Pin]; no design can use it"}},
        {{{"[Component]     KX3\n", ""}}, {"f:39: error: no [Component] line; the generator skips its check of the part"}},
        {{{"[Package]\n", ""}}, {"f:39: error: no [Package] line; the preamble copy takes the whole file"}},
        // Without a component line the naming section ends at the package
        // line, or at [Pin] without one.
        {{{"[Component]     KX3\n", ""}, {"[Pin]  signal_name  model_name\n", ""}, {"|\n[Model]", "[Model]"},
          {"L_pkg  3nH", S(255, 'x') + "\nL_pkg  3nH"}},
         {"f:28: warning: line of 255 characters: the naming section reader (255-byte buffer) would stop here if it "
          "read this far",
          "f:33: warning: [Model] " + model + " is not listed under [Pin]; no design can use it",
          "f:38: error: no [Component] line; the generator skips its check of the part",
          "f:38: error: no [Pin] line; the generator finds no models"}},
        {{{"[Notes]         Tiny master.", "  Package list"}},
         {"f:2: error: the preamble copy ends at this line, ahead of [Package]; design files lose [Component] (line "
          "26) and what stands with it"}},
        {{{"[Package]\n", "Package notes\n[Package]\n"}},
         {"f:27: warning: the preamble copy ends at this line, ahead of [Package]"}},
        {{{"[Notes]         Tiny master.", "    Package list"}}, {}},
        {{{"[Pin]  signal_name  model_name\n", ""}, {"|\n[Model]", "[Model]"}},
         {"f:33: warning: [Model] " + model + " is not listed under [Pin]; no design can use it",
          "f:38: error: no [Pin] line; the generator finds no models"}},
    };
    for (Case const& c : cases) {
        S const text = edited(master, c.edits);
        SCOPED_TRACE(c.family + "\n" + text);
        EXPECT_EQ(formatted(ibischeck::checkMasterFile(text, c.family)), c.expected);
    }
    S const noComponent = "no [Component] line; the generator skips its check of the part";
    // Not an IBIS file at all: no version, no component, no models.
    S const noVersion = "f:1: error: no [IBIS Ver] keyword; this is not an IBIS file";
    EXPECT_EQ(formatted(ibischeck::checkMasterFile("")),
              (Lines{noVersion, "f:1: error: " + noComponent,
                     "f:1: error: no [Package] line; the preamble copy takes the whole file",
                     "f:1: error: no [Pin] line; the generator finds no models",
                     "f:1: error: no [Model] line; design files get no model"}));
    EXPECT_EQ(formatted(ibischeck::checkMasterFile("SLEW\n  SLOW  s\n")),
              (Lines{"f:1: error: naming table SLEW is never closed by a \"|\" line; its reader runs to the end of the file",
                     noVersion, "f:2: error: " + noComponent,
                     "f:2: error: no [Package] line; the preamble copy takes the whole file",
                     "f:2: error: no [Pin] line; the generator finds no models",
                     "f:2: error: no [Model] line; design files get no model"}));
    // CR LF line ends: the generator's readers keep the CR in the line, which
    // changes nothing here but the length of a line.
    EXPECT_EQ(formatted(ibischeck::checkMasterFile(crlf(master), "KVA3")), Lines{});
    EXPECT_EQ(formatted(ibischeck::checkMasterFile(crlf(edited(master, {{"Tiny master.", S(238, 'x')}})))),
              Lines{"f:2: error: line of 255 characters with its CR: the naming section reader (255-byte buffer) "
                    "stops here"});
}

// The master check fed one line at a time, no rows taken in bulk.
Lines lineByLine(S const& text)
{
    ibischeck::MasterCheck check("");
    std::istringstream in(text);
    return formatted(ibischeck::checkLines(in, check));
}

// Tables whose rows are taken in bulk give the findings of a check fed line
// by line, whatever stands in a row, with either line end and comment
// character.
TEST(Check, MasterTableRowsInBulkAsLineByLine)
{
    S pulldown, pullup, waveform;
    for (int i = 0; i < 40; ++i) {
        S const at = std::to_string(i);
        pulldown += "  " + at + ".500   1.0E-02   0.8E-02   1.2E-02\n";
        pullup += "  " + at + ".250   0.0E+00   0.0E+00   0.0E+00\n";
        waveform += "  " + at + ".0n   1.5   1.4   1.6\n";
    }
    S const base = edited(master, {{"Model_type     Input\nC_comp 1p 1p 1p\n[Voltage Range] 3.3 3.1 3.5\n",
                                    "Model_type Open_drain\nC_comp 1p 1p 1p\n[Voltage Range] 3.3 3.1 3.5\n"
                                    "[Pulldown]\n" + pulldown + "[Pullup]\n" + pullup +
                                        "[Ramp]\ndV/dt_r 1/1n 1/1n 1/1n\ndV/dt_f 1/1n 1/1n 1/1n\n"
                                        "[Falling Waveform]\nR_fixture = 50\nV_fixture = 3.3\n" + waveform}});
    ASSERT_EQ(formatted(ibischeck::checkMasterFile(base)), Lines{});
    std::vector<std::pair<S, S>> const faults[] = {
        {},
        {{"  3.500   1.0E-02", "  3.500   NA"}},
        {{"  0.500   1.0E-02", "  0.500   NA"}},
        {{"  7.500   1.0E-02", "  7.500   1.0E-02,"}},
        {{"  9.500   1.0E-02   0.8E-02   1.2E-02", "  9.500   1.0E-02   0.8E-02   1.2E-02  4"}},
        {{"  11.500", "  10.500"}},
        {{"  12.500", "  2.500"}},
        {{"  13.500   1.0E-02", "  13.500\r  1.0E-02"}},
        {{"  14.500   1.0E-02   0.8E-02   1.2E-02", "  14.500   1.0E-02   0.8E-02   1.2E-02" + S(220, ' ')}},
        {{"  15.500   1.0E-02", "  15.500 [1.0E-02"}},
        {{"  16.500   1.0E-02", "  16.500   [Model]"}},
        {{"  17.500", "|c\n\n   \n  17.500"}},
        {{"  18.500", "Vds 1\n  18.500"}},
        {{"  5.250   0.0E+00", "  5.250   1.0E-03"}},
        {{"  20.500   1.0E-02", "\t20.500\t1.0E-02"}},
        {{"  21.500", "  NA"}, {"  21.250", "  NA"}},
        {{"  22.500", "  22.5000000000000000000001"}, {"  23.500", "  23.5e-99999"}},
        {{"  24.500   1.0E-02   0.8E-02   1.2E-02", "  24.500   1.0E-02   0.8E-02   1.2E-02 # x"}},
        {{"  30.0n", "  3.0n"}},
        {{"  31.0n   1.5", "  31.0n   1.5   NA"}},
        {{"| End [Model] lvc330s080naaaaaaaou\n", "|\n" + extra}},
        {{"  20.500", "| see [Model] x\n  20.500"}},
        {{"|CABGA256\nL_pkg", "[Model] early\n[Pulldown]\n|CABGA256\n  1 2 3 4\nL_pkg"}},
    };
    for (auto const& fault : faults) {
        S const text = edited(base, fault);
        S const hash = edited(text, {{"|\n[Model]", "|\n[Comment Char] #_char\n[Model]"}});
        for (S const& variant : {text, crlf(text), hash}) {
            SCOPED_TRACE(variant);
            EXPECT_EQ(formatted(ibischeck::checkMasterFile(variant)), lineByLine(variant));
        }
    }
}

TEST(Check, CommandOutputAndExitCodes)
{
    ts::TempDir dir;
    ts::writeFile(dir.file("board.ibs"), design);
    ts::writeFile(dir.file("wide.ibs"), edited(design, {{"spare        nc", S(41, 's') + " nc"}, {"board", "wide"}}));
    ts::writeFile(dir.file("bad.ibs"), edited(design, {{"board", "bad"}, {"Model_type Input\n", ""}}));
    ts::writeFile(dir.file("crlf.ibs"), crlf(edited(design, {{"board", "crlf"}})));
    ts::writeFile(dir.file("m.ibs"), master);
    std::vector<CommandCase> const cases = {
        {{"check", "board.ibs", "crlf.ibs"}, 0, "2 files checked: 0 errors, 0 warnings\n"},
        {{"check", "wide.ibs", "board.ibs"}, 0,
         "wide.ibs:15: warning: signal name of pin N1 has 41 characters; at most 40\n"
         "2 files checked: 0 errors, 1 warning\n"},
        {{"check", "bad.ibs", "wide.ibs"}, 1,
         "bad.ibs:18: error: [Model] lvd_in has no Model_type\n"
         "wide.ibs:15: warning: signal name of pin N1 has 41 characters; at most 40\n"
         "2 files checked: 1 error, 1 warning\n"},
        {{"check", "--master", "--family", "KVA3", "--", "m.ibs"}, 0, "1 file checked: 0 errors, 0 warnings\n"},
        {{"check", "--master", "board.ibs"}, 1,
         "board.ibs:12: error: the [Pin] list is not closed by a \"|\" line before [Diff pin] at line 16; the model "
         "list takes in its rows\n1 file checked: 1 error, 0 warnings\n"},
        {{"check", ".", "board.ibs"}, 2, "1 file checked: 0 errors, 0 warnings\n", "pad2ibis: check: cannot read .\n"},
        {{"check", "board.ibs", "gone.ibs"}, 2, "1 file checked: 0 errors, 0 warnings\n",
         "pad2ibis: check: cannot read gone.ibs\n"},
        {{"check"}, 2, "", "pad2ibis: check: no file to check\nTry 'pad2ibis check --help' for more information.\n"},
        {{"check", "--bogus", "board.ibs"}, 2, "",
         "pad2ibis: check: unknown option --bogus\nTry 'pad2ibis check --help' for more information.\n"},
        {{"check", "--family", "KVA3", "m.ibs"}, 2, "",
         "pad2ibis: check: --family goes with --master\nTry 'pad2ibis check --help' for more information.\n"},
        {{"check", "--master", "--family"}, 2, "",
         "pad2ibis: check: --family needs a value\nTry 'pad2ibis check --help' for more information.\n"},
    };
    expectRuns(cases, dir.path());
}

} // namespace

// A large master is read in two parts at once: the findings are those of
// one reading from the top, whatever falls near the point where the second
// part starts (the first block behind the file's middle), where the second
// part cannot start as a check behind the frame would, and when all faults
// stand in the first part, so that only the blocks of the second part tell
// its lines.
TEST(Check, LargeMasterReadInTwoParts)
{
    S const head = edited(master, {{"[Model]        lvc330s080naaaaaaaou\nModel_type     Input\nC_comp 1p 1p 1p\n"
                                    "[Voltage Range] 3.3 3.1 3.5\n| End [Model] lvc330s080naaaaaaaou\n[End]\n",
                                    ""}});
    S rows;
    for (int i = 0; i < 400; ++i)
        rows += std::to_string(i) + ".000   1.0E-02   0.8E-02   1.2E-02\n";
    // Blocks of about 16 KB; those from `first` on carry faults in turn.
    auto blocks = [&](int first, S const& middle) {
        S text = head;
        for (int b = 0; b < 560; ++b) {
            S const name = "m" + std::to_string(b);
            S block = "[Model] " + name + "\nModel_type Input\nC_comp 1p 1p 1p\n[Voltage Range] 3.3 3.1 3.5\n"
                      "[Rising Waveform]\nR_fixture = 50\nV_fixture = 3.3\n" + rows + "| End [Model] " + name + "\n";
            int const kind = std::min(b - first, 7);
            if (kind >= 0 && b < first + 11) {
                S const faults[] = {"| End [Model] " + name + "\n|" + S(300, 'x') + "\n",
                                    "[Model Selector] s\n" + name + " x\n",
                                    "|\n",
                                    "| End [Model] other\n",
                                    "| End [Model] " + name + "\n" + middle,
                                    "| End [Model] " + name + "\n[Rogue] x\n",
                                    "| see [Model] x\n5.5 1 1 1\n",
                                    "| End [Model] other\n"};
                block.replace(block.find("| End [Model]"), std::string::npos, faults[kind]);
                // Around the point where the second part starts: blocks
                // whose closing line is judged only once the next begins.
                if (b == first + 7)
                    block.replace(block.find("3.000"), 5, "2.000");
            }
            text += block;
        }
        return text + "[End]\n";
    };
    ts::TempDir dir;
    struct Case {
        int first;
        S middle;
    } const cases[] = {{275, ""}, {275, "[Comment Char] #_char\n"}, {275, "[IBIS Ver] 4.0\n"}, {100, ""}};
    for (Case const& c : cases) {
        S const text = blocks(c.first, c.middle);
        ASSERT_GT(text.size(), 8u << 20);
        ts::writeFile(dir.file("big.ibs"), text);
        std::vector<ibischeck::Finding> parts;
        ASSERT_TRUE(ibischeck::checkMasterPath(dir.file("big.ibs"), "KVA3", parts));
        Lines const whole = formatted(ibischeck::checkMasterFile(text, "KVA3"));
        EXPECT_EQ(formatted(parts), whole);
        EXPECT_GE(whole.size(), 8u);
    }
    std::vector<ibischeck::Finding> none;
    EXPECT_FALSE(ibischeck::checkMasterPath(dir.file("gone.ibs"), "", none));
}
