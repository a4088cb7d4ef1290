// The legal configuration tables expanded into one forest per signal
// direction: every root-to-leaf path a legal configuration, the preferred
// value first at every node, pull values with their clamped variants.

#include <gtest/gtest.h>

#include <deque>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "variant/legal_tables.h"
#include "variant/vargon_probe.h"

namespace {

using vt::childKeys;
using vt::countNodes;
using vt::countRoots;
using vt::firstDown;
using vt::Roots;

using Forests = vt::VargonTest;

std::vector<std::string> const kTreeOrder = {"IO_TYPE", "DRIVE",   "PULL",    "IMP",
                                             "TERMVCC", "TERMGND", "TERMVTT", "VCMT",
                                             "DIFFRES", "DIFFCUR", "RESERVED", "SLEW"};

// Depth of each level in a row's tree.
enum Depth { D_DRIVE = 1, D_PULL, D_IMP, D_TERMVCC, D_TERMGND, D_TERMVTT, D_VCMT, D_DIFFRES, D_DIFFCUR, D_RESERVED, D_SLEW };

Roots const& rootsOf(BASIB_ALT_MODEL_MAP& forest, std::string const& key)
{
    static Roots const none;
    auto found = forest.find(key);
    if (found == forest.end() || found->second == nullptr)
        return none;
    return *found->second;
}

// The set of keys met at one depth of a forest.
std::set<std::string> keysAtDepth(BASIB_ALT_MODEL_MAP const& forest, int depth)
{
    std::set<std::string> keys;
    vt::forEachNode(forest, [&](BASIB_ALT_MODEL_INFO* at, int d) {
        if (d == depth)
            keys.insert(at->_keyValue);
    });
    return keys;
}

TEST_F(Forests, NodeCountsOfTheThreeForests)
{
    vt::fillNamingTables(*model);
    model->buildAltVargonModels();
    long const output = countNodes(model->_outputAltModels);
    long const input = countNodes(model->_inputAltModels);
    long const bidir = countNodes(model->_bidirAltModels);
    EXPECT_EQ(output, 5070);
    EXPECT_EQ(input, 2596);
    EXPECT_EQ(bidir, 3320);
    EXPECT_EQ(output + input + bidir, 10986);
}

TEST_F(Forests, LargestTreeOfOneRow)
{
    vt::fillNamingTables(*model);
    model->buildAltVargonModels();
    long largest = 0;
    for (BASIB_ALT_MODEL_MAP* forest :
         {&model->_outputAltModels, &model->_inputAltModels, &model->_bidirAltModels})
        for (auto const& entry : *forest)
            for (BASIB_ALT_MODEL_INFO* root : *entry.second)
                largest = std::max(largest, countNodes(root));
    EXPECT_EQ(largest, 229);
    ASSERT_EQ(rootsOf(model->_outputAltModels, "lvc250").size(), 2u);
    EXPECT_EQ(countNodes(rootsOf(model->_outputAltModels, "lvc250")[0]), 229)
        << "the first LVCMOS25 output row";
}

TEST_F(Forests, OneRootForEveryRowUnderItsKey)
{
    vt::fillNamingTables(*model);
    model->buildAltVargonModels();
    EXPECT_EQ(countRoots(model->_outputAltModels), 75);
    EXPECT_EQ(countRoots(model->_inputAltModels), 107);
    EXPECT_EQ(countRoots(model->_bidirAltModels), 60);
    for (BASIB_ALT_MODEL_MAP* forest :
         {&model->_outputAltModels, &model->_inputAltModels, &model->_bidirAltModels})
        for (auto const& entry : *forest)
            for (BASIB_ALT_MODEL_INFO* root : *entry.second) {
                EXPECT_EQ(root->_keyValue, entry.first);
                EXPECT_EQ(root->GetOwner(), nullptr);
            }
}

TEST_F(Forests, EveryPathIsTwelveLevelsWithConsistentOwners)
{
    vt::fillNamingTables(*model);
    model->buildAltVargonModels();
    for (BASIB_ALT_MODEL_MAP* forest :
         {&model->_outputAltModels, &model->_inputAltModels, &model->_bidirAltModels}) {
        long badLevel = 0, badOwner = 0, badLeaf = 0;
        vt::forEachNode(*forest, [&](BASIB_ALT_MODEL_INFO* at, int depth) {
            if (depth >= 12 || at->_levelName != kTreeOrder[depth])
                ++badLevel;
            for (BASIB_ALT_MODEL_INFO* child : at->_children)
                if (child->GetOwner() != at)
                    ++badOwner;
            if (at->_children.empty() != (depth == 11))
                ++badLeaf;
        });
        EXPECT_EQ(badLevel, 0);
        EXPECT_EQ(badOwner, 0);
        EXPECT_EQ(badLeaf, 0) << "the leaves, and only they, are at the SLEW level";
    }
}

TEST_F(Forests, DirectionAndNeutralFieldsOfEachForest)
{
    vt::fillNamingTables(*model);
    model->buildAltVargonModels();
    EXPECT_EQ(keysAtDepth(model->_inputAltModels, D_RESERVED), (std::set<std::string>{"in"}));
    EXPECT_EQ(keysAtDepth(model->_inputAltModels, D_DRIVE), (std::set<std::string>{"xxx"}));
    EXPECT_EQ(keysAtDepth(model->_inputAltModels, D_SLEW), (std::set<std::string>{"a"}));
    EXPECT_EQ(keysAtDepth(model->_outputAltModels, D_RESERVED), (std::set<std::string>{"io", "od"}));
    EXPECT_EQ(keysAtDepth(model->_bidirAltModels, D_RESERVED), (std::set<std::string>{"io", "od"}));
    EXPECT_EQ(keysAtDepth(model->_outputAltModels, D_DRIVE),
              (std::set<std::string>{"xxx", "020", "040", "080", "120", "160", "240"}));
    EXPECT_EQ(keysAtDepth(model->_outputAltModels, D_SLEW), (std::set<std::string>{"a", "s", "f"}));
    EXPECT_EQ(keysAtDepth(model->_outputAltModels, D_PULL),
              (std::set<std::string>{"u", "d", "o", "k", "c", "e", "p"}))
        << "NONE is looked up as OFF";
}

TEST_F(Forests, Pci33OutputPullValuesBeforeTranslation)
{
    vt::fillNamingTables(*model);
    model->_devIoMaps.erase("PULL");
    model->buildAltVargonModels();
    Roots const& roots = rootsOf(model->_outputAltModels, "pci330");
    ASSERT_EQ(roots.size(), 1u);
    BASIB_ALT_MODEL_INFO* drive = firstDown(roots[0], D_DRIVE);
    ASSERT_NE(drive, nullptr);
    EXPECT_EQ(drive->_levelName, "DRIVE");
    EXPECT_EQ(drive->_keyValue, "xxx");
    EXPECT_EQ(childKeys(drive), (std::vector<std::string>{"UP_PCICLAMP", "UP", "DOWN", "NONE",
                                                          "DOWN_PCICLAMP", "PCICLAMP"}));
    for (BASIB_ALT_MODEL_INFO* pull : drive->_children)
        EXPECT_EQ(countNodes(pull), 11) << pull->_keyValue << ": every pull value carries the levels below";
}

TEST_F(Forests, Pci33OutputPullValuesTranslated)
{
    vt::fillNamingTables(*model);
    model->buildAltVargonModels();
    Roots const& roots = rootsOf(model->_outputAltModels, "pci330");
    ASSERT_EQ(roots.size(), 1u);
    EXPECT_EQ(childKeys(firstDown(roots[0], D_DRIVE)),
              (std::vector<std::string>{"c", "u", "d", "o", "e", "p"}));
    EXPECT_EQ(childKeys(firstDown(roots[0], D_DIFFCUR)), (std::vector<std::string>{"io"}));
    EXPECT_EQ(childKeys(firstDown(roots[0], D_RESERVED)), (std::vector<std::string>{"s", "f"}));
}

TEST_F(Forests, ARowWithoutClampGetsNoClampedVariants)
{
    vt::fillNamingTables(*model);
    model->buildAltVargonModels();
    Roots const& roots = rootsOf(model->_outputAltModels, "lvc330");
    ASSERT_EQ(roots.size(), 1u);
    EXPECT_EQ(childKeys(roots[0]), (std::vector<std::string>{"080", "160", "240"}));
    for (BASIB_ALT_MODEL_INFO* drive : roots[0]->_children)
        EXPECT_EQ(childKeys(drive), (std::vector<std::string>{"u", "d", "o"})) << drive->_keyValue;
    EXPECT_EQ(childKeys(firstDown(roots[0], D_DIFFCUR)), (std::vector<std::string>{"io", "od"}));
    EXPECT_EQ(childKeys(firstDown(roots[0], D_RESERVED)), (std::vector<std::string>{"s", "f"}));
}

TEST_F(Forests, The24mACodeComesFromTheConstructorsEntry)
{
    vt::fillNamingTables(*model);
    model->_devIoMaps["DRIVE"].erase("24mA");
    model->buildAltVargonModels();
    Roots const& roots = rootsOf(model->_outputAltModels, "lvc330");
    ASSERT_EQ(roots.size(), 1u);
    EXPECT_EQ(childKeys(roots[0]), (std::vector<std::string>{"080", "160", "24mA"}));
}

TEST_F(Forests, ARowOfSingleValuesIsABareChain)
{
    vt::fillNamingTables(*model);
    model->buildAltVargonModels();
    Roots const& roots = rootsOf(model->_inputAltModels, "vr1250");
    ASSERT_EQ(roots.size(), 1u);
    EXPECT_EQ(countNodes(roots[0]), 12);
    EXPECT_EQ(vt::leftmostPath(roots[0]),
              "IO_TYPE:vr1250 DRIVE:xxx PULL:o IMP:a TERMVCC:a TERMGND:a TERMVTT:a VCMT:a "
              "DIFFRES:a DIFFCUR:a RESERVED:in SLEW:a");
    EXPECT_EQ(countNodes(rootsOf(model->_inputAltModels, "ref250").at(0)), 12);
    EXPECT_TRUE(rootsOf(model->_outputAltModels, "vr1250").empty()) << "an input-only standard";
    EXPECT_TRUE(rootsOf(model->_bidirAltModels, "gtp150").empty());
    EXPECT_EQ(rootsOf(model->_inputAltModels, "gtp150").size(), 1u)
        << "GTLPLUS15 is rooted under the code of GTLP";
}

TEST_F(Forests, RowsOfOneKeyAreRootsInTableOrder)
{
    vt::fillNamingTables(*model);
    model->buildAltVargonModels();
    Roots const& hstl = rootsOf(model->_inputAltModels, "hs1150");
    ASSERT_EQ(hstl.size(), 4u) << "the four HSTL15_I input rows";
    std::vector<std::string> termvcc, termgnd, termvtt, vcmt;
    for (BASIB_ALT_MODEL_INFO* root : hstl) {
        termvcc.push_back(firstDown(root, D_TERMVCC)->_keyValue);
        termgnd.push_back(firstDown(root, D_TERMGND)->_keyValue);
        termvtt.push_back(firstDown(root, D_TERMVTT)->_keyValue);
        vcmt.push_back(firstDown(root, D_VCMT)->_keyValue);
    }
    EXPECT_EQ(termvcc, (std::vector<std::string>{"a", "t", "h", "a"}));
    EXPECT_EQ(termgnd, (std::vector<std::string>{"a", "t", "h", "a"}));
    EXPECT_EQ(termvtt, (std::vector<std::string>{"a", "a", "a", "6"}));
    EXPECT_EQ(vcmt, (std::vector<std::string>{"a", "a", "a", "t"}));
    EXPECT_EQ(childKeys(firstDown(hstl[3], D_TERMGND)), (std::vector<std::string>{"6", "7", "t", "w"}));

    Roots const& lvcmos = rootsOf(model->_outputAltModels, "lvc250");
    ASSERT_EQ(lvcmos.size(), 2u);
    EXPECT_EQ(childKeys(lvcmos[0]), (std::vector<std::string>{"080", "040", "120", "160"}));
    EXPECT_EQ(childKeys(lvcmos[1]), (std::vector<std::string>{"xxx"}));
    EXPECT_EQ(childKeys(firstDown(lvcmos[1], D_PULL)), (std::vector<std::string>{"5", "h", "3", "2"}));
    EXPECT_EQ(childKeys(firstDown(lvcmos[0], D_DRIVE)), (std::vector<std::string>{"u", "d", "o", "k"}));
}

TEST_F(Forests, ListOrdersOfTheFamilyAreKept)
{
    vt::fillNamingTables(*model);
    model->buildAltVargonModels();
    Roots const& lvds = rootsOf(model->_outputAltModels, "lvd250");
    Roots const& rsds = rootsOf(model->_outputAltModels, "rsd250");
    ASSERT_EQ(lvds.size(), 1u);
    ASSERT_EQ(rsds.size(), 1u);
    EXPECT_EQ(childKeys(firstDown(lvds[0], D_DIFFRES)), (std::vector<std::string>{"3", "2", "4", "6"}));
    EXPECT_EQ(childKeys(firstDown(rsds[0], D_DIFFRES)), (std::vector<std::string>{"2", "3", "4", "6"}));
    EXPECT_EQ(childKeys(firstDown(lvds[0], D_RESERVED)), (std::vector<std::string>{"a"}));

    Roots const& pcix = rootsOf(model->_bidirAltModels, "pcx150");
    ASSERT_EQ(pcix.size(), 2u);
    EXPECT_EQ(childKeys(firstDown(pcix[1], D_TERMGND)), (std::vector<std::string>{"6", "7", "f"}));
    Roots const& hstl = rootsOf(model->_bidirAltModels, "hs1150");
    ASSERT_EQ(hstl.size(), 1u) << "one HSTL15_I bidirectional row";
    EXPECT_EQ(childKeys(firstDown(hstl[0], D_TERMGND)), (std::vector<std::string>{"f", "6", "7"}));
    EXPECT_EQ(childKeys(firstDown(hstl[0], D_TERMVTT)), (std::vector<std::string>{"d"}))
        << "DDR_II is looked up as DDR-2";
}

TEST_F(Forests, BuildingTwiceAddsASecondSetOfRoots)
{
    vt::fillNamingTables(*model);
    model->buildAltVargonModels();
    model->buildAltVargonModels();
    EXPECT_EQ(countRoots(model->_outputAltModels), 150);
    EXPECT_EQ(countRoots(model->_inputAltModels), 214);
    EXPECT_EQ(countRoots(model->_bidirAltModels), 120);
    Roots const& hstl = rootsOf(model->_inputAltModels, "hs1150");
    ASSERT_EQ(hstl.size(), 8u);
    EXPECT_EQ(firstDown(hstl[4], D_TERMVCC)->_keyValue, "a");
    EXPECT_EQ(firstDown(hstl[5], D_TERMVCC)->_keyValue, "t");
}

TEST_F(Forests, TheForestsAreBuiltWhenTheModelListIsRead)
{
    vt::fillNamingTables(*model);
    model->_masterIbisFile = dir.file("probe.ibs");
    ts::writeFile(model->_masterIbisFile,
                  "[IBIS Ver] 5.0\n"
                  "[Pin]  signal_name  model_name\n"
                  "A1     IO_A1        lvc330s080uaaaaaaaou\n"
                  "|\n");
    EXPECT_TRUE(model->loadAvailableModels());
    EXPECT_EQ(model->_availableModels, (std::set<std::string>{"lvc330s080uaaaaaaaou"}));
    EXPECT_EQ(countNodes(model->_outputAltModels), 5070);
    EXPECT_EQ(countNodes(model->_inputAltModels), 2596);
    EXPECT_EQ(countNodes(model->_bidirAltModels), 3320);
}

TEST_F(Forests, NoForestsWithoutModels)
{
    vt::fillNamingTables(*model);
    model->_masterIbisFile = dir.file("probe.ibs");
    ts::writeFile(model->_masterIbisFile, "[IBIS Ver] 5.0\n[Pin]  signal_name  model_name\n|\n|\n");
    EXPECT_FALSE(model->loadAvailableModels());
    EXPECT_TRUE(model->_outputAltModels.empty());
    EXPECT_TRUE(model->_inputAltModels.empty());
    EXPECT_TRUE(model->_bidirAltModels.empty());
}

// A legal table written for a test: rows of 16 cells over the family's
// column names, each cell the table's default unless the row names it.
class LegalTable {
public:
    using Cells = std::map<std::string, std::vector<char const*>>;

    void row(Cells const& differs)
    {
        for (char const* column : kColumns) {
            auto given = differs.find(column);
            std::vector<char const*> values =
                given != differs.end() ? given->second : defaultOf(column);
            values.push_back(nullptr);
            _lists.push_back(values);
            _cells.push_back(_lists.back().data());
        }
    }
    char const*** cells() { return _cells.data(); }
    int count() const { return static_cast<int>(_cells.size()); }
    static char const** columns() { return const_cast<char const**>(kColumns); }

    static char const* const kColumns[16];

private:
    static std::vector<char const*> defaultOf(std::string const& column)
    {
        if (column == "DRIVE" || column == "DIFFCURRENT")
            return {"NA"};
        if (column == "PULLMODE")
            return {"NONE"};
        if (column == "SLEWRATE")
            return {"SLOW", "FAST"};
        return {"OFF"};
    }
    std::deque<std::vector<char const*>> _lists;
    std::vector<char const**> _cells;
};

char const* const LegalTable::kColumns[16] = {
    "IO_TYPE",      "DRIVE",        "PULLMODE",    "PCICLAMP",  "IMPEDANCE", "TERMINATEVCCIO",
    "TERMINATEGND", "TERMINATEVTT", "VCMT",        "DIFFRESISTOR", "DIFFCURRENT", "OPENDRAIN",
    "VREF",         "REFCIRCUIT",   "PWRSAVE",     "SLEWRATE"};

using RowExpansion = vt::VargonTest;

TEST_F(RowExpansion, ClampedVariantsFollowWhenOnIsNotPreferred)
{
    vt::fillNamingTables(*model);
    model->_devIoMaps.erase("PULL");
    LegalTable table;
    table.row({{"IO_TYPE", {"PCI33"}}, {"PULLMODE", {"UP", "DOWN"}}, {"PCICLAMP", {"OFF", "ON"}}});
    BASIB_ALT_MODEL_MAP forest;
    model->buildAltModelList(forest, table.cells(), table.count(), LegalTable::columns(), 16, "io");
    model->_outputAltModels = forest;
    ASSERT_EQ(rootsOf(forest, "pci330").size(), 1u);
    EXPECT_EQ(childKeys(firstDown(rootsOf(forest, "pci330")[0], D_DRIVE)),
              (std::vector<std::string>{"UP", "DOWN", "UP_PCICLAMP", "DOWN_PCICLAMP"}));
}

TEST_F(RowExpansion, ClampWithoutPullIsPciclamp)
{
    vt::fillNamingTables(*model);
    model->_devIoMaps.erase("PULL");
    LegalTable table;
    table.row({{"IO_TYPE", {"PCI33"}}, {"PULLMODE", {"OFF", "NONE", "UP"}}, {"PCICLAMP", {"ON"}}});
    table.row({{"IO_TYPE", {"PCIX33"}}, {"PCICLAMP", {"OFF", "ON"}}});
    BASIB_ALT_MODEL_MAP forest;
    model->buildAltModelList(forest, table.cells(), table.count(), LegalTable::columns(), 16, "io");
    model->_bidirAltModels = forest;
    EXPECT_EQ(childKeys(firstDown(rootsOf(forest, "pci330").at(0), D_DRIVE)),
              (std::vector<std::string>{"PCICLAMP", "OFF", "NONE", "UP", "PCICLAMP", "UP_PCICLAMP"}));
    EXPECT_EQ(childKeys(firstDown(rootsOf(forest, "pcx330").at(0), D_DRIVE)),
              (std::vector<std::string>{"NONE", "PCICLAMP"}));
}

TEST_F(RowExpansion, OnlyTheFirstIoTypeCounts)
{
    vt::fillNamingTables(*model);
    LegalTable table;
    table.row({{"IO_TYPE", {"LVCMOS33", "LVCMOS25"}}, {"SLEWRATE", {"NA"}}});
    BASIB_ALT_MODEL_MAP forest;
    model->buildAltModelList(forest, table.cells(), table.count(), LegalTable::columns(), 16, "io");
    model->_bidirAltModels = forest;
    EXPECT_EQ(forest.size(), 1u);
    ASSERT_EQ(rootsOf(forest, "lvc330").size(), 1u);
    EXPECT_EQ(countNodes(rootsOf(forest, "lvc330")[0]), 12);
}

TEST_F(RowExpansion, ColumnsWithoutLevelMakeNoNodes)
{
    vt::fillNamingTables(*model);
    LegalTable table;
    table.row({{"IO_TYPE", {"SSTL18_I"}},
               {"VREF", {"VREF1_LOAD", "VREF2_LOAD"}},
               {"REFCIRCUIT", {"INTERNAL", "EXTERNAL"}},
               {"PWRSAVE", {"ON", "OFF"}},
               {"SLEWRATE", {"NA"}}});
    BASIB_ALT_MODEL_MAP forest;
    model->buildAltModelList(forest, table.cells(), table.count(), LegalTable::columns(), 16, "in");
    model->_inputAltModels = forest;
    ASSERT_EQ(rootsOf(forest, "ss1180").size(), 1u);
    EXPECT_EQ(vt::leftmostPath(rootsOf(forest, "ss1180")[0]),
              "IO_TYPE:ss1180 DRIVE:xxx PULL:o IMP:a TERMVCC:a TERMGND:a TERMVTT:a VCMT:a "
              "DIFFRES:a DIFFCUR:a RESERVED:in SLEW:a");
    EXPECT_EQ(countNodes(rootsOf(forest, "ss1180")[0]), 12);
}

TEST_F(RowExpansion, TheDirectionWordNamesOpendrainOff)
{
    vt::fillNamingTables(*model);
    LegalTable table;
    table.row({{"IO_TYPE", {"LVCMOS33"}}, {"OPENDRAIN", {"OFF", "ON"}}, {"SLEWRATE", {"NA"}}});
    BASIB_ALT_MODEL_MAP forest;
    model->buildAltModelList(forest, table.cells(), table.count(), LegalTable::columns(), 16, "xy");
    model->_bidirAltModels = forest;
    EXPECT_EQ(childKeys(firstDown(rootsOf(forest, "lvc330").at(0), D_DIFFCUR)),
              (std::vector<std::string>{"xy", "od"}));
}

// The leaves of a tree as the keys of their paths below the root.
void leafPaths(BASIB_ALT_MODEL_INFO* at, std::string const& prefix, std::vector<std::string>& out)
{
    if (at->_children.empty()) {
        out.push_back(prefix);
        return;
    }
    for (BASIB_ALT_MODEL_INFO* child : at->_children)
        leafPaths(child, prefix + child->_keyValue, out);
}

TEST_F(RowExpansion, ARowsTreeIsTheCrossProductInPreferenceOrder)
{
    vt::fillNamingTables(*model);
    LegalTable table;
    table.row({{"IO_TYPE", {"LVCMOS33"}},
               {"DRIVE", {"16", "8"}},
               {"IMPEDANCE", {"50", "100"}},
               {"SLEWRATE", {"FAST", "SLOW"}}});
    BASIB_ALT_MODEL_MAP forest;
    model->buildAltModelList(forest, table.cells(), table.count(), LegalTable::columns(), 16, "io");
    model->_bidirAltModels = forest;
    BASIB_ALT_MODEL_INFO* root = rootsOf(forest, "lvc330").at(0);
    EXPECT_EQ(countNodes(root), 1 + 2 + 2 + 4 + 4 * 7 + 8);
    std::vector<std::string> leaves;
    leafPaths(root, "", leaves);
    EXPECT_EQ(leaves, (std::vector<std::string>{
                          "160o5aaaaaaiof", "160o5aaaaaaios", "160ohaaaaaaiof", "160ohaaaaaaios",
                          "080o5aaaaaaiof", "080o5aaaaaaios", "080ohaaaaaaiof", "080ohaaaaaaios"}));
}

TEST_F(RowExpansion, RowsAreAddedBehindTheRootsThatAreThere)
{
    vt::fillNamingTables(*model);
    LegalTable first;
    first.row({{"IO_TYPE", {"LVCMOS25"}}, {"DRIVE", {"8"}}});
    first.row({{"IO_TYPE", {"LVCMOS25"}}, {"DRIVE", {"4"}}});
    LegalTable second;
    second.row({{"IO_TYPE", {"LVCMOS25"}}, {"DRIVE", {"12"}}});
    BASIB_ALT_MODEL_MAP forest;
    model->buildAltModelList(forest, first.cells(), first.count(), LegalTable::columns(), 16, "io");
    model->buildAltModelList(forest, second.cells(), second.count(), LegalTable::columns(), 16, "io");
    model->_bidirAltModels = forest;
    Roots const& roots = rootsOf(forest, "lvc250");
    ASSERT_EQ(roots.size(), 3u);
    EXPECT_EQ(roots[0]->GetFirstChild()->_keyValue, "080");
    EXPECT_EQ(roots[1]->GetFirstChild()->_keyValue, "040");
    EXPECT_EQ(roots[2]->GetFirstChild()->_keyValue, "120");
}

TEST_F(RowExpansion, ATableOfOneColumnGivesBareRoots)
{
    vt::fillNamingTables(*model);
    static char const* lvcmos[] = {"LVCMOS33", "LVCMOS25", nullptr};
    static char const* lvds[] = {"LVDS", nullptr};
    static char const** cells[] = {lvcmos, lvds};
    static char const* columns[] = {"IO_TYPE"};
    BASIB_ALT_MODEL_MAP forest;
    model->buildAltModelList(forest, cells, 2, columns, 1, "io");
    model->_outputAltModels = forest;
    EXPECT_EQ(forest.size(), 2u);
    ASSERT_EQ(rootsOf(forest, "lvc330").size(), 1u);
    ASSERT_EQ(rootsOf(forest, "lvd250").size(), 1u);
    EXPECT_EQ(rootsOf(forest, "lvc330")[0]->GetNumChildren(), 0);
    EXPECT_EQ(rootsOf(forest, "lvd250")[0]->GetNumChildren(), 0);
}

using ForestPrint = vt::VargonTest;

TEST_F(ForestPrint, TitlesKeysAndRootsOfTheThreeForests)
{
    using vt::node;
    BASIB_ALT_MODEL_INFO* out = new BASIB_ALT_MODEL_INFO("IO_TYPE", "lvc330", nullptr);
    node("PULL", "u", node("DRIVE", "080", out));
    node("PULL", "u", node("DRIVE", "160", out));
    BASIB_ALT_MODEL_INFO* other = new BASIB_ALT_MODEL_INFO("IO_TYPE", "lvd250", nullptr);
    node("DRIVE", "xxx", other);
    BASIB_ALT_MODEL_INFO* in1 = new BASIB_ALT_MODEL_INFO("IO_TYPE", "hs1150", nullptr);
    node("DRIVE", "xxx", in1);
    BASIB_ALT_MODEL_INFO* in2 = new BASIB_ALT_MODEL_INFO("IO_TYPE", "hs1150", nullptr);
    node("DRIVE", "yyy", in2);
    BASIB_ALT_MODEL_INFO* bidir = new BASIB_ALT_MODEL_INFO("IO_TYPE", "pci330", nullptr);
    BASIB_ALT_MODEL_INFO* drive = node("DRIVE", "xxx", bidir);
    node("PULL", "c", drive);
    node("PULL", "u", drive);
    vt::plant(model->_outputAltModels, "lvd250", {other});
    vt::plant(model->_outputAltModels, "lvc330", {out});
    vt::plant(model->_inputAltModels, "hs1150", {in1, in2});
    vt::plant(model->_bidirAltModels, "pci330", {bidir});

    std::string const rule = "\n--------------------\n\n";
    std::string const expected =
        rule + "OUTPUT MODEL LISTS\n" +
        rule + "lvc330 \n" +
        "IO_TYPE:lvc330 DRIVE:080 PULL:u \n" + std::string(16, ' ') + "DRIVE:160 PULL:u \n" +
        rule + "lvd250 \n" +
        "IO_TYPE:lvd250 DRIVE:xxx \n" +
        rule + "INPUT MODEL LISTS\n" +
        rule + "hs1150 \n" +
        "IO_TYPE:hs1150 DRIVE:xxx \n" +
        "IO_TYPE:hs1150 DRIVE:yyy \n" +
        rule + "BIDIR MODEL LISTS\n" +
        rule + "pci330 \n" +
        "IO_TYPE:pci330 DRIVE:xxx PULL:c \n" + std::string(24, ' ') + "PULL:u \n";
    EXPECT_EQ(ts::captureStdout([&] { model->printAltModelLists(); }), expected);
}

TEST_F(ForestPrint, EmptyForestsPrintTheirTitlesAlone)
{
    std::string const rule = "\n--------------------\n\n";
    EXPECT_EQ(ts::captureStdout([&] { model->printAltModelLists(); }),
              rule + "OUTPUT MODEL LISTS\n" + rule + "INPUT MODEL LISTS\n" + rule + "BIDIR MODEL LISTS\n");
}

} // namespace
