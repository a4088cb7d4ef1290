// The package model of a design as the program composes it for the design
// file: values within the [Pin] columns' width, and a reduced model that
// reads back as the terms and paths it was made from.

#include <gtest/gtest.h>

#include <cmath>
#include <sstream>

#include "ibis/ibis_number.h"
#include "run/design_package.h"
#include "support/test_support.h"

namespace {

using S = std::string;

ibis::ReducedPackage reduce(S const& text, std::vector<S> const& pins)
{
    std::istringstream in(text);
    ibis::ReducedPackage out;
    S error;
    EXPECT_TRUE(ibis::readReducedPackage(in, "", pins, out, error)) << error;
    return out;
}

TEST(DesignPackage, PinValuesAreIbisNumbersWithinNineCharacters)
{
    struct Case {
        double value;
        char const* text;
        char const* unit;
        char const* shown;
    } const cases[] = {
        {2.5e-9, "", "H", "2.5nH"},           {3.6e-9, "3.6nH", "H", "3.6nH"},
        {5e-13, "", "F", "0.5pF"},            {6.12e-13, "0.000000000000612", "F", "0.612pF"},
        {0.12, "", "", "0.12"},               {0, "", "H", "0"},
        {1.5e-6, "", "H", "1500nH"},          {1.5e-4, "", "H", "150uH"},
        {2.2e-17, "", "F", "2.20e-17"},       {-7.3e-14, "", "F", "-0.073pF"},
        {2e7, "", "", "2.00e+07"},            {3.1e-9, "3.1nH junk", "H", "3.1nH"},
    };
    for (Case const& c : cases)
        EXPECT_EQ(pinValueText(ibis::PackageValue{c.value, c.text}, c.unit), c.shown) << c.value;
    // Across the magnitudes a package gives: nine characters at most, and
    // the value read back within the digits kept.
    for (char const* unit : {"", "H", "F"})
        for (double v = 1.234567e-16; v < 1e7; v *= 3.7) {
            S const text = pinValueText(ibis::PackageValue{v, ""}, unit);
            EXPECT_LE(text.size(), 9u) << text;
            ibis::Number const back = ibis::parseNumber(text);
            ASSERT_TRUE(back.isValue()) << text;
            EXPECT_NEAR(back.value, v, v * 5e-3) << text;
        }
}

TEST(DesignPackage, TheReducedModelReadsBackAsItsTerms)
{
    // The example package model, banded L and C and a sparse R, cut to some
    // balls of a design in its own order: every term between them, and the
    // zeros of the band left out of the sparse rows.
    S const example = ts::readFile(ts::sourcePath("examples/kva3_master_6bg256c_bg.pkg"));
    std::vector<S> const pins = {"F5", "A3", "F4", "B4", "A4", "T16"};
    ibis::ReducedPackage const reduced = reduce(example, pins);
    S const text = (defineText(reduced));
    EXPECT_EQ(text.find("Full_matrix"), S::npos);
    EXPECT_EQ(text.find("[Pin Numbers]\nF5\nA3\nF4\nB4\nA4\nT16\n[Model Data]\n"), text.find("[Pin Numbers]"));
    ibis::ReducedPackage const back = reduce(text, pins);
    for (int m = 0; m < ibis::kMatrices; ++m) {
        std::vector<S> want, got;
        for (std::size_t a = 0; a < pins.size(); ++a)
            for (std::size_t b = a; b < pins.size(); ++b) {
                auto const* t = reduced.terms[m].find(a, b);
                if (t != nullptr && (!t->zero || a == b))
                    want.push_back(std::to_string(a) + " " + std::to_string(b) + " " + S(reduced.terms[m].text(*t)));
                if ((t = back.terms[m].find(a, b)) != nullptr)
                    got.push_back(std::to_string(a) + " " + std::to_string(b) + " " + S(back.terms[m].text(*t)));
            }
        EXPECT_EQ(got, want) << m;
        EXPECT_FALSE(want.empty());
    }

    // A full matrix stays full, pins the model lacks are left out.
    S const full = "[Define Package Model] P\n[Manufacturer] M\n[OEM] O\n[Description] D\n[Number Of Pins] 3\n"
                   "[Pin Numbers]\n1\n2\n3\n[Model Data]\n"
                   "[Inductance Matrix] Full_matrix\n[Row] 1\n1n 0.1n 0.2000000000000n\n[Row] 2\n2n 0.3n\n[Row] 3\n3n\n"
                   "[Capacitance Matrix] Banded_matrix\n[Bandwidth] 1\n[Row] 1\n1p 0.1p\n[Row] 2\n2p 0.2p\n[Row] 3\n3p\n"
                   "[End Model Data]\n[End Package Model]\n";
    EXPECT_EQ((defineText(reduce(full, {"3", "9", "1"}))),
              "[Define Package Model]  P\n[Manufacturer]          M\n[OEM]                   O\n"
              "[Description]           D\n[Number Of Pins]        2\n[Pin Numbers]\n3\n1\n[Model Data]\n"
              "| The terms between the design's 2 pins\n"
              "[Inductance Matrix]     Full_matrix\n[Row]  3\n3n 0.2000000000000n\n[Row]  1\n1n\n"
              "[Capacitance Matrix]    Sparse_matrix\n[Row]  3\n3      3p\n[Row]  1\n1      1p\n"
              "[End Model Data]\n[End Package Model]\n");
}

TEST(DesignPackage, TheSectionFormKeepsEachPathAndItsStubs)
{
    S const model = "[Define Package Model] Q\n[Manufacturer] M\n[OEM] O\n[Description] D\n"
                    "[Number Of Sections] 4\n[Number Of Pins] 3\n[Pin Numbers]\n"
                    "A1 Len=0 L=1n / Fork Len=1 C=0.1p / Endfork Fork Len=2 C=0.2p / Endfork Len=1 L=2n R=0.1 C=0.3p /\n"
                    "A2 Len=0 L=5n /\n"
                    "A3 Len=0 L=0.5n / Fork Len=1 L=1n / Fork Len=1 C=1p / Endfork Endfork\n"
                    "[End Package Model]\n";
    ibis::ReducedPackage const reduced = reduce(model, {"A3", "A1"});
    S const text = (defineText(reduced));
    EXPECT_NE(text.find("[Number Of Sections]    4\n[Number Of Pins]        2\n[Pin Numbers]\n"
                        "A3    Len=0 L=0.5n /\n      Fork\n      Len=1 L=1n /\n      Fork\n      Len=1 C=1p /\n"
                        "      Endfork\n      Endfork\n"
                        "A1    Len=0 L=1n /\n      Fork\n      Len=1 C=0.1p /\n      Endfork\n      Fork\n"
                        "      Len=2 C=0.2p /\n      Endfork\n      Len=1 L=2n R=0.1 C=0.3p /\n[End Package Model]\n"),
              S::npos)
        << text;
    ibis::ReducedPackage const back = reduce(text, {"A3", "A1"});
    ASSERT_EQ(back.paths.size(), 2u);
    for (std::size_t p = 0; p < 2; ++p) {
        ASSERT_EQ(back.paths[p].size(), reduced.paths[p].size());
        for (std::size_t k = 0; k < back.paths[p].size(); ++k) {
            EXPECT_EQ(back.paths[p][k].depth, reduced.paths[p][k].depth);
            EXPECT_EQ(back.paths[p][k].forks, reduced.paths[p][k].forks);
            EXPECT_EQ(back.paths[p][k].endforks, reduced.paths[p][k].endforks);
        }
        for (int m = 0; m < ibis::kMatrices; ++m)
            EXPECT_DOUBLE_EQ(back.self[p].value[m].value, reduced.self[p].value[m].value);
    }
    // The whole path of A1: L along it, R along it, C of its stubs too.
    EXPECT_DOUBLE_EQ(reduced.self[1].value[1].value, 3e-9);
    EXPECT_DOUBLE_EQ(reduced.self[1].value[0].value, 0.1);
    EXPECT_NEAR(reduced.self[1].value[2].value, 0.8e-12, 1e-24);
}

} // namespace
