// The master check predicts what the generator makes of a master: read the
// same lines through the generator's readers and through the checker, and
// the two must agree, TAB-separated rows and odd headings included.

#include <gtest/gtest.h>

#include <set>

#include "check/ibis_check.h"
#include "support/generator_probe.h"

namespace {

using S = std::string;

// The model names that the check takes for listed under [Pin]: every block
// whose name it does not warn of as unlisted.
std::set<S> listedByCheck(S const& master, std::set<S> const& blocks)
{
    std::set<S> listed = blocks;
    for (ibischeck::Finding const& finding : ibischeck::checkMasterFile(master)) {
        S const tail = " is not listed under [Pin]; no design can use it";
        if (finding.text.rfind("[Model] ", 0) == 0 && finding.text.size() > tail.size() &&
            finding.text.compare(finding.text.size() - tail.size(), tail.size(), tail) == 0)
            listed.erase(finding.text.substr(8, finding.text.size() - 8 - tail.size()));
    }
    return listed;
}

TEST(ReadingsAgree, TheModelListOfTheGeneratorAndOfTheCheck)
{
    // Rows split on blanks, on TABs, on both; the generator splits on blanks
    // alone, so a TAB joins fields.
    std::vector<S> const rows = {"A1     IO_A1        m_blank", "A2\tIO_A2\tm_tab", "A3 IO_A3\tm_mixed tail",
                                 "\tA4   IO_A4   m_lead_tab", "A5   IO_A5   m_trail\t", "A6   IO_A6"};
    std::set<S> const blocks = {"m_blank", "m_tab", "m_mixed", "tail", "m_lead_tab", "m_trail", "IO_A6"};
    S master = "[IBIS Ver] 5.0\n[Component] KX3\n[Manufacturer] M\n[Package]\n|CABGA256\nR_pkg 1 1 1\n"
               "L_pkg 1n 1n 1n\nC_pkg 1p 1p 1p\n|\n[Pin] signal_name model_name\n";
    for (S const& row : rows)
        master += row + "\n";
    master += "|\n";
    for (S const& block : blocks)
        master += "[Model] " + block + "\nModel_type Input\nC_comp 1p 1p 1p\n[Voltage Range] 3.3 3.1 3.5\n"
                  "| End [Model] " + block + "\n";
    master += "[End]\n";

    ts::ProbeModel generator;
    generator.setMaster(master);
    ASSERT_TRUE(generator.loadAvailableModels());
    std::set<S> const available(generator._availableModels.begin(), generator._availableModels.end());
    EXPECT_EQ(listedByCheck(master, blocks), available);
    // What the generator's reading gives: a TAB is part of a field.
    EXPECT_EQ(available, (std::set<S>{"m_blank", "tail", "m_lead_tab", "m_trail"}));
}

TEST(ReadingsAgree, TheComponentLineOfTheGeneratorAndOfTheCheck)
{
    S const rest = "[Manufacturer] M\n[Package]\n|CABGA256\nR_pkg 1 1 1\nL_pkg 1n 1n 1n\nC_pkg 1p 1p 1p\n|\n"
                   "[Pin] signal_name model_name\nA1 IO_A1 m\n|\n[Model] m\nModel_type Input\nC_comp 1p 1p 1p\n"
                   "[Voltage Range] 3.3 3.1 3.5\n| End [Model] m\n[End]\n";
    for (S const& line : {S("[Component] KX3"), S("\t[Component]\tKX3"), S("X\t[Component] KX3"),
                          S("  [Component]KX3"), S("[component] KX3"), S("| [Component] KX3")}) {
        SCOPED_TRACE(line);
        S const master = "[IBIS Ver] 5.0\n" + line + "\n" + rest;
        ts::ProbeModel generator;
        generator.setMaster(master);
        bool const found = generator.loadComponent();
        bool noComponent = false;
        for (ibischeck::Finding const& finding : ibischeck::checkMasterFile(master))
            noComponent = noComponent || finding.text.rfind("no [Component] line", 0) == 0;
        EXPECT_EQ(noComponent, !found);
    }
}

} // namespace
