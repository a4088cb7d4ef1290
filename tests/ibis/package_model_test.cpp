// The package model reader: each matrix form and the section form read into
// terms with their pins, the problems it reports with their lines, and the
// reduction to a design's pins.

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "ibis/package_model.h"

namespace {

using S = std::string;

// A matrix's terms as "a,b=text", in the order the design file takes them.
std::vector<S> termList(ibis::ReducedPackage const& reduced, int m)
{
    std::vector<S> terms;
    for (std::size_t a = 0; a < reduced.pins.size(); ++a)
        for (std::size_t b = a; b < reduced.pins.size(); ++b)
            if (auto const* t = reduced.terms[m].find(a, b))
                terms.push_back(std::to_string(a) + "," + std::to_string(b) + "=" + S(reduced.terms[m].text(*t)));
    return terms;
}

// Every fact as one line of text, in the order the reader gives them.
struct Recorder : ibis::PackageSink {
    std::vector<S> facts;

    void modelBegins(S const& name, int line) override { add(line, "model " + name); }
    void pin(std::size_t index, S const& name, int line) override
    {
        add(line, "pin " + std::to_string(index) + " " + name);
    }
    void term(ibis::Matrix m, std::size_t row, std::size_t column, ibis::PackageValue const& v, int line) override
    {
        add(line, S(1, "RLC"[static_cast<int>(m)]) + "[" + std::to_string(row) + "," + std::to_string(column) +
                      "]=" + v.text);
    }
    void section(std::size_t pin, ibis::PathSection const& s) override
    {
        add(s.line, "section " + std::to_string(pin) + " d" + std::to_string(s.depth) + " Len=" + s.len.text +
                        (s.hasL ? " L=" + s.l.text : "") + (s.hasR ? " R=" + s.r.text : "") +
                        (s.hasC ? " C=" + s.c.text : ""));
    }
    void problem(ibis::PackageProblem, int line, S const& text) override { add(line, "! " + text); }
    void modelEnds(int line) override { add(line, "end"); }
    void add(int line, S const& text) { facts.push_back(std::to_string(line) + ": " + text); }
};

std::vector<S> read(S const& text)
{
    std::istringstream in(text);
    Recorder recorder;
    EXPECT_TRUE(ibis::readPackageModels(in, recorder));
    return recorder.facts;
}

S const head = "[IBIS Ver] 5.0\n"                // 1
               "[Define Package Model] P3\n"     // 2
               "[Manufacturer] Corvane\n"        // 3
               "[OEM] Corvane\n"                 // 4
               "[Description] three balls\n"     // 5
               "[Number Of Pins] 3\n"            // 6
               "[Pin Numbers]\n"                 // 7
               "A1\nA2 | the middle one\nB1\n";  // 8-10

TEST(PackageModel, MatrixForms)
{
    S const text = head +
                   "[Model Data]\n"                                   // 11
                   "[Resistance Matrix] Sparse_matrix\n"              // 12
                   "[Row] A1\n"                                       // 13
                   "A1 0.1\n"                                         // 14
                   "[Row] B1\n"                                       // 15
                   "B1 0.3  \n"                                       // 16
                   "[Inductance Matrix] Banded_matrix\n"              // 17
                   "[Bandwidth] 1\n"                                  // 18
                   "[Row] A1\n3.1nH 0.4nH\n"                          // 19-20
                   "[Row] A2\n2.2nH\n0.3nH\n"                         // 21-23
                   "[Row] B1\n4.0nH\n"                                // 24-25
                   "[Capacitance Matrix] full_MATRIX\n"               // 26
                   "[Row] A1\n0.9pF -0.1pF -0.02pF\n"                 // 27-28
                   "[Row] A2\n0.7pF -0.05pF\n[Row] B1\n1.2pF\n"       // 29-32
                   "[End Model Data]\n"                               // 33
                   "[End Package Model]\n"                            // 34
                   "[End]\n";
    std::vector<S> const expected = {
        "2: model P3",       "8: pin 0 A1",        "9: pin 1 A2",        "10: pin 2 B1",
        "14: R[0,0]=0.1",    "16: R[2,2]=0.3",     "20: L[0,0]=3.1nH",   "20: L[0,1]=0.4nH",
        "22: L[1,1]=2.2nH",  "23: L[1,2]=0.3nH",   "25: L[2,2]=4.0nH",   "28: C[0,0]=0.9pF",
        "28: C[0,1]=-0.1pF", "28: C[0,2]=-0.02pF", "30: C[1,1]=0.7pF",   "30: C[1,2]=-0.05pF",
        "32: C[2,2]=1.2pF",  "34: end"};
    EXPECT_EQ(read(text), expected);
}

TEST(PackageModel, SectionForm)
{
    S const text = "[Define Package Model] S2\n"                                     // 1
                   "[Manufacturer] m\n[OEM] o\n[Description] d\n"                    // 2-4
                   "[Number Of Sections] 4\n"                                        // 5
                   "[Number Of Pins] 2\n"                                            // 6
                   "[Pin Numbers]\n"                                                 // 7
                   "A1 Len = 0 L=0.6n / Len=1.5 L=2n C=0.4p R=0.02 /\n"              // 8
                   "   Fork\n    Len=0.5 C=0.1p /\n   Endfork\n  Len=0 C=0.2p /\n"   // 9-12
                   "B1  len=0 l=1n r=0.1 c=0.5p /\n"                                 // 13
                   "[End Package Model]\n";                                          // 14
    std::vector<S> const expected = {"1: model S2",
                                     "8: pin 0 A1",
                                     "8: section 0 d0 Len=0 L=0.6n",
                                     "8: section 0 d0 Len=1.5 L=2n R=0.02 C=0.4p",
                                     "10: section 0 d1 Len=0.5 C=0.1p",
                                     "12: section 0 d0 Len=0 C=0.2p",
                                     "13: pin 1 B1",
                                     "13: section 1 d0 Len=0 L=1n R=0.1 C=0.5p",
                                     "14: end"};
    EXPECT_EQ(read(text), expected);

    // The self terms of a path: Len times the per-length value, the lumped
    // value where Len is 0; the stub's C counts, its L and R do not.
    std::istringstream in(text);
    ibis::ReducedPackage reduced;
    S error;
    ASSERT_TRUE(ibis::readReducedPackage(in, "S2", {"B1", "A1", "Z9"}, reduced, error)) << error;
    EXPECT_TRUE(reduced.sectionForm);
    EXPECT_EQ(reduced.found, (std::vector<bool>{true, true, false}));
    auto const& a1 = reduced.self[1];
    EXPECT_DOUBLE_EQ(a1.value[1].value, 0.6e-9 + 1.5 * 2e-9);
    EXPECT_DOUBLE_EQ(a1.value[0].value, 1.5 * 0.02);
    EXPECT_DOUBLE_EQ(a1.value[2].value, 1.5 * 0.4e-12 + 0.5 * 0.1e-12 + 0.2e-12);
    EXPECT_EQ(reduced.paths[1].size(), 4u);
    EXPECT_DOUBLE_EQ(reduced.self[0].value[0].value, 0.1);
    EXPECT_FALSE(reduced.self[2].known[1]);

    // The path of a pin that is not kept is read over and left out.
    std::istringstream again(text);
    ibis::ReducedPackage b1;
    ASSERT_TRUE(ibis::readReducedPackage(again, "S2", {"B1"}, b1, error)) << error;
    EXPECT_EQ(b1.paths[0].size(), 1u);
    EXPECT_DOUBLE_EQ(b1.self[0].value[2].value, 0.5e-12);
}

// A banded matrix cut down to a few pins keeps exactly the terms between
// them, in the order asked for, with their text.
TEST(PackageModel, ReductionToSomePins)
{
    // Five pins in a line; L banded with bandwidth 2: term [i,j] = i.j nH.
    S text = "[Define Package Model] P5\n[Manufacturer] m\n[OEM] o\n[Description] d\n[Number Of Pins] 5\n"
             "[Pin Numbers]\nP1\nP2\nP3\nP4\nP5\n[Model Data]\n[Inductance Matrix] Banded_matrix\n[Bandwidth] 2\n";
    for (int i = 1; i <= 5; ++i) {
        text += "[Row] P" + std::to_string(i) + "\n";
        for (int j = i; j <= 5 && j <= i + 2; ++j)
            text += std::to_string(i) + "." + std::to_string(j) + "n ";
        text += "\n";
    }
    text += "[Capacitance Matrix] Sparse_matrix\n";
    for (int i = 1; i <= 5; ++i)
        text += "[Row] P" + std::to_string(i) + "\nP" + std::to_string(i) + " 1p\n";
    text += "[End Model Data]\n[End Package Model]\n";
    std::istringstream in(text);
    ibis::ReducedPackage reduced;
    S error;
    ASSERT_TRUE(ibis::readReducedPackage(in, "", {"P4", "P2", "P5", "Q1"}, reduced, error)) << error;
    EXPECT_EQ(reduced.name, "P5");
    std::vector<S> const terms = termList(reduced, 1);
    // P4-P2 (2.4n), P4-P5 (4.5n); P2-P5 lies outside the band.
    EXPECT_EQ(terms, (std::vector<S>{"0,0=4.4n", "0,1=2.4n", "0,2=4.5n", "1,1=2.2n", "2,2=5.5n"}));
    EXPECT_EQ(reduced.self[1].value[1].text, "2.2n");
    EXPECT_EQ(reduced.self[2].value[2].text, "1p");
    EXPECT_FALSE(reduced.self[0].known[0]); // no [Resistance Matrix]: zero
    EXPECT_EQ(reduced.found, (std::vector<bool>{true, true, true, false}));
    EXPECT_TRUE(reduced.terms[0].empty());

    std::istringstream again(text);
    EXPECT_FALSE(ibis::readReducedPackage(again, "OTHER", {"P1"}, reduced, error));
    EXPECT_EQ(error, "no [Define Package Model] OTHER");
}

TEST(PackageModel, ReductionReadsOnlyTheKeptPins)
{
    // Six pins, P2 and P6 kept: the rows of the others and the entries past
    // the last kept pin go unread, so what stands there is not judged; a
    // banded row that wraps round to a kept pin is read on.
    S const head = "[Define Package Model] M\n[Manufacturer] m\n[OEM] o\n[Description] d\n[Number Of Pins] 6\n"
                   "[Pin Numbers]\nP1\nP2\nP3\nP4\nP5\nP6\n[Model Data]\n";
    S const inductance = "[Inductance Matrix] Full_matrix\n"
                         "[Row] P1\nnot a row\n| nor this\n"                 // 15-17
                         "[Row] P2\n2n x 0.2n\nq 0.26n\n"                    // 18-20
                         "[Row] P3\n?\n[Row] P4\n?\n[Row] P5\n?\n"         // 21-26
                         "[Row] P6\n6n\n";                                    // 27-28
    S const capacitance = "[Capacitance Matrix] Banded_matrix\n[Bandwidth] 2\n"
                          "[Row] P1\n? ? ?\n[Row] P2\n2p ? ?\n[Row] P3\n?\n[Row] P4\n?\n[Row] P5\n? ? ?\n"
                          "[Row] P6\n6p ? 0.62p\n[End Model Data]\n[End Package Model]\n";
    auto reduce = [&](S const& text, ibis::ReducedPackage& out, S& error) {
        std::istringstream in(text);
        return ibis::readReducedPackage(in, "", {"P6", "P2"}, out, error);
    };
    ibis::ReducedPackage reduced;
    S error;
    ASSERT_TRUE(reduce(head + inductance + capacitance, reduced, error)) << error;
    std::vector<S> terms;
    for (int m = 1; m < ibis::kMatrices; ++m)
        for (S const& term : termList(reduced, m))
            terms.push_back(term);
    EXPECT_EQ(terms, (std::vector<S>{"0,0=6n", "0,1=0.26n", "1,1=2n", "0,0=6p", "0,1=0.62p", "1,1=2p"}));

    // A fault in what is read keeps its line behind the rows stepped over.
    S broken = inductance;
    broken.replace(broken.find("q 0.26n"), 7, "q 0.2.6n");
    EXPECT_FALSE(reduce(head + broken + capacitance, reduced, error));
    EXPECT_EQ(error, "line 20: matrix entry \"0.2.6n\" is not a number");
    broken = inductance;
    broken.replace(broken.find("[Row] P6\n6n\n"), 12, "[Row] P6\n6n 1n\n");
    EXPECT_FALSE(reduce(head + broken + capacitance, reduced, error));
    EXPECT_EQ(error.substr(0, 49), "line 28: [Inductance Matrix] row P6 holds more th");
}

// A design of many pins: every term lands where the design's order puts it,
// texts of any length kept as written, and the first of a pair read twice.
TEST(PackageModel, ReductionOfManyPinsInTheDesignsOrder)
{
    std::size_t const n = 600; // a table of some 2.9 MB
    S text = "[Define Package Model] Big\n[Manufacturer] m\n[OEM] o\n[Description] d\n[Number Of Pins] " +
             std::to_string(n) + "\n[Pin Numbers]\n";
    for (std::size_t i = 0; i < n; ++i)
        text += "P" + std::to_string(i) + "\n";
    text += "[Model Data]\n[Inductance Matrix] Full_matrix\n";
    auto term = [](std::size_t i, std::size_t j) {
        // Some texts are longer than a place holds.
        return std::to_string(i + 1) + "." + std::to_string(j) + ((i + j) % 7 == 0 ? "000000000000000n" : "n");
    };
    for (std::size_t i = 0; i < n; ++i) {
        text += "[Row] P" + std::to_string(i) + "\n";
        for (std::size_t j = i; j < n; ++j)
            text += term(i, j) + ((j - i) % 10 == 9 ? "\n" : " ");
        text += "\n";
    }
    text += "[Capacitance Matrix] Banded_matrix\n[Bandwidth] 1\n";
    for (std::size_t i = 0; i < n; ++i)
        text += "[Row] P" + std::to_string(i) + "\n" + std::to_string(i + 1) + "p" + (i + 1 < n ? " 0.1p\n" : "\n");
    text += "[End Model Data]\n[End Package Model]\n";
    std::vector<S> pins; // the package's pins backwards, P599 first
    for (std::size_t i = n; i-- > 0;)
        pins.push_back("P" + std::to_string(i));
    std::istringstream in(text);
    ibis::ReducedPackage reduced;
    S error;
    ASSERT_TRUE(ibis::readReducedPackage(in, "", pins, reduced, error)) << error;
    ibis::TermTable const& l = reduced.terms[1];
    EXPECT_EQ(l.held(), n * (n + 1) / 2);
    for (std::size_t a = 0; a < n; a += 37)
        for (std::size_t b = a; b < n; b += 41) {
            auto const* t = l.find(a, b);
            ASSERT_NE(t, nullptr) << a << "," << b;
            EXPECT_EQ(S(l.text(*t)), term(n - 1 - b, n - 1 - a));
        }
    ibis::TermTable const& c = reduced.terms[2];
    EXPECT_EQ(c.held(), n + (n - 1));
    EXPECT_EQ(S(c.text(*c.find(0, 0))), "600p");
    EXPECT_EQ(S(c.text(*c.find(0, 1))), "0.1p");
    EXPECT_EQ(c.find(0, 2), nullptr);
    EXPECT_TRUE(reduced.terms[0].empty());
    EXPECT_EQ(reduced.terms[0].find(0, 0), nullptr);
}

TEST(PackageModel, ProblemsWithTheirLines)
{
    S const data = "[Model Data]\n"                                      // 11
                   "[Inductance Matrix] Full_matrix\n"                   // 12
                   "[Row] A1\n3n 1n 1n\n[Row] A2\n3n 1n\n[Row] B1\n3n\n" // 13-18
                   "[Capacitance Matrix] Full_matrix\n"                  // 19
                   "[Row] A1\n1p 0 0\n[Row] A2\n1p 0\n[Row] B1\n1p\n"    // 20-25
                   "[End Model Data]\n"                                  // 26
                   "[End Package Model]\n";                              // 27
    struct Case {
        S from, to;
        std::vector<S> problems;
    } const cases[] = {
        {"", "", {}},
        {"[Number Of Pins] 3", "[Number Of Pins] 256", {"6: ! [Number Of Pins] says 256 but [Pin Numbers] lists 3"}},
        {"[Number Of Pins] 3", "[Number Of Pins] x", {"6: ! [Number Of Pins] \"x\" is not a whole number above 0"}},
        {"B1\n[Model", "B1\nA1\n[Model",
         {"11: ! pin A1 stands twice under [Pin Numbers]", "6: ! [Number Of Pins] says 3 but [Pin Numbers] lists 4"}},
        {"[OEM] Corvane\n", "", {"2: ! [Define Package Model] P3 has no [OEM]"}},
        {"[Inductance Matrix] Full_matrix", "[Inductance Matrix] Diagonal_matrix",
         {"12: ! [Inductance Matrix] form \"Diagonal_matrix\" is not one that IBIS names (Full_matrix, "
          "Banded_matrix, Sparse_matrix)"}},
        {"3n 1n 1n\n", "3n 1n 1n 1n\n",
         {"14: ! [Inductance Matrix] row A1 holds more than 3 entries (from the diagonal to the last pin)"}},
        {"3n 1n\n", "3n\n", {"15: ! [Inductance Matrix] row A2 has 1 entry; it needs 2"}},
        {"[Row] B1\n3n\n", "", {"12: ! [Inductance Matrix] has no [Row] for 1 pin: B1"}},
        {"[Row] B1\n3n\n", "[Row] A2\n3n\n", {"17: ! [Inductance Matrix] has [Row] A2 twice",
                                              "12: ! [Inductance Matrix] has no [Row] for 1 pin: B1"}},
        {"[Row] B1\n3n\n", "[Row] 1\n3n\n", {"17: ! [Row] \"1\" of [Inductance Matrix] is not a pin under [Pin Numbers]",
                                             "12: ! [Inductance Matrix] has no [Row] for 1 pin: B1"}},
        {"[Row] B1\n1p\n", "[Row] B1\n-1p\n", {"25: ! [Capacitance Matrix] self term of pin B1 is -1p; it must be above zero"}},
        {"3n 1n\n", "3n 1x/\n", {"16: ! matrix entry \"1x/\" is not a number"}},
        {"[Inductance Matrix] Full_matrix\n[Row] A1\n3n 1n 1n\n", "[Inductance Matrix] Full_matrix\n3n\n[Row] A1\n3n 1n 1n\n",
         {"13: ! [Inductance Matrix] has values ahead of its first [Row]"}},
        {"[End Model Data]\n", "", {"11: ! [Model Data] has no [End Model Data]"}},
        {"[End Model Data]\n", "[End Pin Numbers]\n[End Model Data]\n", {"26: ! [end pin numbers] is not a keyword of a package model"}},
        {"[End Package Model]\n", "[End]\n", {"2: ! [Define Package Model] P3 has no [End Package Model]"}},
        {"[End Package Model]\n", "", {"2: ! [Define Package Model] P3 has no [End Package Model]"}},
        {"[Model Data]\n", "[Number Of Sections] 1\n[Model Data]\n",
         {"2: ! [Define Package Model] P3 has [Model Data] and [Number Of Sections]; a model uses one of them"}},
        {"[Inductance Matrix] Full_matrix\n[Row] A1\n3n 1n 1n\n[Row] A2\n3n 1n\n[Row] B1\n3n\n", "",
         {"11: ! [Model Data] has no [Inductance Matrix]"}},
        {"[Inductance Matrix] Full_matrix\n", "[Inductance Matrix] Banded_matrix\n",
         {"12: ! [Inductance Matrix] Banded_matrix has no [Bandwidth]"}},
        {"[Inductance Matrix] Full_matrix\n", "[Inductance Matrix] Banded_matrix\n[Bandwidth] 1\n",
         {"15: ! [Inductance Matrix] row A1 holds more than 2 entries (the diagonal and [Bandwidth] more)"}},
        {"[Inductance Matrix] Full_matrix\n[Row] A1\n3n 1n 1n\n[Row] A2\n3n 1n\n[Row] B1\n3n\n",
         "[Inductance Matrix] Sparse_matrix\n[Row] A1\nA1 3n\nA2 1n x\n[Row] A2\nA2 3n\n[Row] B1\nB1 3n\n",
         {"15: ! [Inductance Matrix] Sparse_matrix row A1: a line holds pin and value pairs"}},
        {"[Inductance Matrix] Full_matrix\n[Row] A1\n3n 1n 1n\n[Row] A2\n3n 1n\n[Row] B1\n3n\n",
         "[Inductance Matrix] Sparse_matrix\n[Row] A1\nA1 3n\nA2 1n\nA2 1n\n[Row] A2\nA1 1n\nQ 1n\n[Row] B1\nB1 3n\n",
         {"16: ! [Inductance Matrix] row A1: pin A2 stands twice",
          "18: ! [Inductance Matrix] row A2: pin A1 stands ahead of A2 under [Pin Numbers]; a row holds its own pin "
          "and those behind it",
          "19: ! [Inductance Matrix] row A2: \"Q\" is not a pin under [Pin Numbers]",
          "17: ! [Inductance Matrix] row A2 has no self term"}},
    };
    for (Case const& c : cases) {
        S text = head + data;
        if (!c.from.empty())
            text.replace(text.find(c.from), c.from.size(), c.to);
        SCOPED_TRACE(text);
        std::vector<S> problems;
        for (S const& fact : read(text))
            if (fact.find(": ! ") != S::npos)
                problems.push_back(fact);
        EXPECT_EQ(problems, c.problems);
    }
}

TEST(PackageModel, SectionProblems)
{
    S const start = "[Define Package Model] S\n[Manufacturer] m\n[OEM] o\n[Description] d\n"
                    "[Number Of Sections] 1\n[Number Of Pins] 1\n[Pin Numbers]\n"; // 1-7
    struct Case {
        S pins;
        std::vector<S> problems;
    } const cases[] = {
        {"A1 Len=0 L=1n /\n", {}},
        {"A1 Len=0 L=1n\n", {"8: ! a section of pin A1 has no closing \"/\""}},
        {"A1 L=1n /\n", {"8: ! a section of pin A1 has no Len"}},
        {"A1 Len=0 Q=1n / Len=0 L=1n /\n", {"8: ! \"Q\" in the path of pin A1 is none of Len, L, R, C"}},
        {"A1 Len=0 L=x /\n", {"8: ! section value \"x\" is not a number"}},
        {"A1 Len=0 L=1n / Len=0 C=1p /\n", {"8: ! the path of pin A1 has 2 sections; [Number Of Sections] says 1"}},
        {"A1 Fork Len=0 C=1p /\n", {"8: ! Fork in the path of pin A1 has no Endfork"}},
        {"A1 Len=0 L=1n / Endfork\n", {"8: ! Endfork in the path of pin A1 has no Fork"}},
        // Any keyword ends the pin list and its last path: what follows is
        // no pin of it.
        {"A1 Len=0 L=1n\n[OEM] p\nB1 Len=0 L=1n /\n", {"8: ! a section of pin A1 has no closing \"/\""}},
        {"A1\n", {"8: ! pin A1 has no sections"}},
        // A word without "=" spoils its section alone, up to the "/".
        {"A1 Len=0 R 0.1 /\n", {"8: ! \"R\" in the path of pin A1 is not written NAME=VALUE"}},
        // "R =" with a blank goes on with the path above; it names no pin.
        {"A1\n  R = 0.1 Len=0 /\n", {}},
        // One pin's spoilt path does not hide that the next pin has none.
        {"A1 Len=0 L=x /\nA2\n", {"8: ! section value \"x\" is not a number", "9: ! pin A2 has no sections",
                                  "6: ! [Number Of Pins] says 1 but [Pin Numbers] lists 2"}},
    };
    for (Case const& c : cases) {
        S const text = start + c.pins + "[End Package Model]\n";
        SCOPED_TRACE(text);
        std::vector<S> problems;
        for (S const& fact : read(text))
            if (fact.find(": ! ") != S::npos)
                problems.push_back(fact);
        EXPECT_EQ(problems, c.problems);
    }
}

} // namespace
