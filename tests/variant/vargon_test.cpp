// The table-driven family: the forests grown from the legal tables, the order
// in which a substitute for a missing model is sought, the model keys of its
// walk over the signals, and a whole run.

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "support/generator_probe.h"
#include "variant/basib_vargon.h"

namespace {

using Codes = std::map<std::string, std::string>;
using Keys = std::vector<std::string>;
using Roots = std::vector<BASIB_ALT_MODEL_INFO*>;

// The naming tables of a small master of the family. NONE and OFF have codes
// of their own, so that a test sees which of the two was looked up.
void fillNamingTables(IBIS_MODEL& m)
{
    m._devIoMaps["IO_TYPE"] = Codes{{"LVDS", "lvd"}, {"LVDSE", "lve"}, {"RSDS", "rsd"}, {"LVCMOS", "lvc"},
        {"LVCMOSD", "lcd"}, {"LVTTL", "ttl"}, {"PCI", "pci"}, {"PCIX", "pcx"}, {"AGP1X", "ag1"}, {"HSTL_I", "hs1"},
        {"HSTLD_II", "hd2"}, {"SSTL_I", "ss1"}, {"SSTL_II", "ss2"}, {"GTLP", "gtp"}, {"GTLPLUS", "gpl"},
        {"VREF1", "vr1"}, {"VREF2", "vr2"}, {"REF_RES", "ref"}, {"HYPT", "hyp"}, {"REF", "rfx"}};
    m._devIoMaps["SLEW"] = Codes{{"NA", "a"}, {"SLOW", "s"}, {"FAST", "f"}};
    m._devIoMaps["PULL"] = Codes{{"UP", "u"}, {"DOWN", "d"}, {"NONE", "n"}, {"OFF", "o"}, {"KEEPER", "k"},
        {"UP_PCICLAMP", "c"}, {"DOWN_PCICLAMP", "e"}, {"PCICLAMP", "p"}};
    m._devIoMaps["IMP"] = Codes{{"OFF", "a"}, {"25", "2"}, {"33", "3"}, {"50", "5"}, {"100", "h"}};
    m._devIoMaps["TERMVCC"] = Codes{{"OFF", "a"}, {"50", "5"}, {"100", "h"}, {"120", "t"}};
    m._devIoMaps["TERMGND"] = Codes{{"OFF", "a"}, {"100", "h"}, {"120", "t"}};
    m._devIoMaps["TERMVTT"] = Codes{{"OFF", "a"}, {"60", "6"}, {"75", "7"}, {"120", "t"}, {"150", "f"}, {"210", "w"}};
    m._devIoMaps["VCMT"] = Codes{{"OFF", "a"}, {"VCMT", "v"}, {"VTT", "t"}, {"DDR-2", "d"}};
    m._devIoMaps["DIFFRES"] = Codes{{"OFF", "a"}, {"120", "t"}, {"150", "f"}, {"220", "w"}, {"420", "x"}};
    m._devIoMaps["DIFFCUR"] = Codes{{"NA", "a"}, {"2", "2"}, {"3P5", "3"}, {"4", "4"}, {"6", "6"}};
}

// A generator of the family built on a one-signal pad report of a KVAN part,
// which gives it the drive table; its signals removed.
class Vargon : public testing::Test {
protected:
    void SetUp() override
    {
        ts::resetGeneratorStatics();
        std::string const pad = dir.file("probe.pad");
        ts::writeFile(pad, ts::padReport("KVAN-25F-5FN484C", {"| sig | A1/0 | LVCMOS33_BIDI | PT1A | DRIVE:8mA |"}));
        ts::captureStdout([&] { model = new IBIS_MODEL_VARGON("KVAN", pad.c_str(), dir.file("probe.ibs").c_str()); });
        model->_iobufs.clear();
    }
    void TearDown() override { delete model, ts::resetGeneratorStatics(); }
    // The family's walk over signals; what it prints is kept in out.
    void resolve(std::vector<IB_IOBUF*> const& signals)
    {
        model->_iobufs = signals;
        out = ts::captureStdout([&] { model->setDesignModels(); });
    }
    ts::TempDir dir;
    IBIS_MODEL_VARGON* model = nullptr;
    std::string out;
};

// A node put below owner without the operations under test.
BASIB_ALT_MODEL_INFO* node(std::string const& level, std::string const& key, BASIB_ALT_MODEL_INFO* owner)
{
    owner->_children.push_back(new BASIB_ALT_MODEL_INFO(level, key, owner));
    return owner->_children.back();
}

// A row's tree: drive, pull, direction and slew values as given, preferred
// first, "a" at the seven levels between; each value carries the whole
// expansion of the levels under it.
BASIB_ALT_MODEL_INFO* handTree(std::string const& key, Keys const& drive, Keys const& pull, Keys const& direction,
                               Keys const& slew)
{
    static char const* const names[] = {"DRIVE", "PULL", "IMP", "TERMVCC", "TERMGND", "TERMVTT",
                                        "VCMT", "DIFFRES", "DIFFCUR", "RESERVED", "SLEW"};
    std::vector<Keys> const levels = {drive, pull, {"a"}, {"a"}, {"a"}, {"a"}, {"a"}, {"a"}, {"a"}, direction, slew};
    std::function<void(BASIB_ALT_MODEL_INFO*, size_t)> grow = [&](BASIB_ALT_MODEL_INFO* at, size_t depth) {
        for (size_t i = 0; depth < levels.size() && i < levels[depth].size(); ++i)
            grow(node(names[depth], levels[depth][i], at), depth + 1);
    };
    BASIB_ALT_MODEL_INFO* root = new BASIB_ALT_MODEL_INFO("IO_TYPE", key, nullptr);
    grow(root, 0);
    return root;
}

// The tree of the worked example.
BASIB_ALT_MODEL_INFO* exampleTree()
{
    return handTree("lvc330", {"080", "160", "240"}, {"u", "d", "n"}, {"io", "od"}, {"s", "f"});
}

// A forest entry, owned by the generator from then on.
void plant(BASIB_ALT_MODEL_MAP& forest, std::string const& key, Roots const& roots) { forest[key] = new Roots(roots); }

Keys childKeys(BASIB_ALT_MODEL_INFO* at)
{
    Keys keys;
    for (BASIB_ALT_MODEL_INFO* child : at->_children)
        keys.push_back(child->_keyValue);
    return keys;
}

// Nodes of a tree.
long countNodes(BASIB_ALT_MODEL_INFO* at)
{
    long count = 1;
    for (BASIB_ALT_MODEL_INFO* child : at->_children)
        count += countNodes(child);
    return count;
}

// The forests of the legal tables: their sizes, the preferred values first
// (NONE is looked up as OFF), and the clamped pull values of the PCI33 row
// when the master has no pull table, each carrying the levels below.
TEST_F(Vargon, ForestsOfTheLegalTables)
{
    fillNamingTables(*model);
    model->buildAltVargonModels();
    for (auto const& [forest, nodes] : std::vector<std::pair<BASIB_ALT_MODEL_MAP*, long>>{
             {&model->_outputAltModels, 5070}, {&model->_inputAltModels, 2596}, {&model->_bidirAltModels, 3320}}) {
        long sum = 0;
        for (auto const& entry : *forest)
            for (BASIB_ALT_MODEL_INFO* root : *entry.second)
                sum += countNodes(root);
        EXPECT_EQ(sum, nodes);
    }
    Roots const& lvcmos = *model->_outputAltModels.at("lvc250");
    EXPECT_EQ(childKeys(lvcmos[0]), (Keys{"080", "040", "120", "160"}));
    EXPECT_EQ(childKeys(lvcmos[0]->_children[0]), (Keys{"u", "d", "o", "k"}));

    model->_devIoMaps.erase("PULL");
    model->_outputAltModels.clear(); // the trees of the first build are left to the end of the process
    model->buildAltVargonModels();
    BASIB_ALT_MODEL_INFO* drive = model->_outputAltModels.at("pci330")->at(0)->GetFirstChild();
    EXPECT_EQ(drive->_levelName + ":" + drive->_keyValue, "DRIVE:xxx");
    EXPECT_EQ(childKeys(drive), (Keys{"UP_PCICLAMP", "UP", "DOWN", "NONE", "DOWN_PCICLAMP", "PCICLAMP"}));
    for (BASIB_ALT_MODEL_INFO* pull : drive->_children)
        EXPECT_EQ(countNodes(pull), 11) << pull->_keyValue;
}

// The order of the tries. The names are made available together; then the
// winner is taken away, one after the other, so each try must come after
// the ones before it. Distractors never win.
TEST_F(Vargon, OrderOfTheTriesForASubstitute)
{
    plant(model->_bidirAltModels, "lvc330", {exampleTree()});
    plant(model->_outputAltModels, "lvc330", {handTree("lvc330", {"240"}, {"d"}, {"ox", "od"}, {"s"})});
    // The input direction level has a preferred sibling "iz" in front of "in".
    plant(model->_inputAltModels, "lvc330",
          {handTree("lvc330", {"xxx", "240"}, {"u", "d"}, {"iz", "in", "od"}, {"a"})});
    plant(model->_inputAltModels, "lvc250", {handTree("lvc250", {"xxx"}, {"u"}, {"in"}, {"a"})});
    struct { char const *portType, *key; Keys tries, distractors; } const cases[] = {
        {"IN", "lvc330axxxdaaaaaaain",
         {"lvc330axxxdaaaaaaaiz", "lvc330axxxuaaaaaaaiza", "lvc330axxxaaaaaaaain", "lvc330axxxdaaaaaaaio",
          "lvc330axxxaaaaaaaaio"},
         {"lvc330axxxdaaaaaaaou", "lvc330axxxaaaaaaaaou", "lvc330axxxdaaaaaaaod", "lvc330a080uaaaaaaaio"}},
        // A key that is the default name itself is not offered it.
        {"IN", "lvc250axxxaaaaaaaain", {"lvc250axxxaaaaaaaaio"}, {"lvc250axxxaaaaaaaain"}},
        {"OUT", "lvc330s160daaaaaaaou", {"lvc330s160daaaaaaaio", "lvc330axxxaaaaaaaaio"},
         {"lvc330a160daaaaaaaio", "lvc330a160uaaaaaaaio", "lvc330a080uaaaaaaaio", "lvc330a160uaaaaaaaios",
          "lvc330a080uaaaaaaaios", "lvc330axxxaaaaaaaaou", "lvc330axxxaaaaaaaain", "lvc330s160daaaaaaaod"}},
    };
    auto winners = [&](char const* portType, char const* key, Keys const& tries, Keys const& distractors) {
        Keys order;
        std::set<std::string> available(tries.begin(), tries.end());
        available.insert(distractors.begin(), distractors.end());
        do {
            model->_availableModels = available;
            order.push_back(model->getAvailableAltModelName(portType, key));
        } while (!order.back().empty() && available.erase(order.back()) == 1 && order.size() <= tries.size());
        Keys want = tries;
        want.push_back("");
        EXPECT_EQ(order, want) << "[" << portType << "] " << key;
    };
    for (auto const& c : cases)
        winners(c.portType, c.key, c.tries, c.distractors);
    // Any other port type walks the bidirectional tree, then tries its own default name.
    for (char const* portType : {"BIDI", "OD", "", "XYZ"})
        winners(portType, "lvc330a240daaaaaaaod",
                {"lvc330a240daaaaaaaio", "lvc330a240uaaaaaaaios", "lvc330a080uaaaaaaaios", "lvc330axxxaaaaaaaaod"},
                {"lvc330axxxaaaaaaaaio", "lvc330a240daaaaaaaox", "lvc330a240daaaaaaaiz", "lvc330axxxaaaaaaaain"});
}

// The walk with the naming tables and forests of the family.
class Walk : public Vargon {
    void SetUp() override { Vargon::SetUp(), fillNamingTables(*model), model->buildAltVargonModels(); }
};

TEST_F(Walk, KeyFieldsFromTheAttributesAndTheDirectionFromThePortType)
{
    struct { char const *type, *attributes, *key; } const cases[] = {
        {"BIDI", "IO_TYPE:LVCMOS33 DRIVE:8mA PULL:UP SLEW:SLOW", "lvc330s080uaaaaaaaio"},
        {"BIDI", "IO_TYPE:LVCMOS33 SLEW:SLOW DRIVE:24mA IMP:50 TERMVCC:120 TERMGND:100 TERMVTT:75 VCMT:VTT DIFFRES:150 "
                 "DIFFCUR:3P5", "lvc330s240a5th7tf3io"},
        {"IN", "IO_TYPE:HSTL15D_II", "hd2150axxxaaaaaaaain"}, {"OUT", "IO_TYPE:AGP1X33", "ag1330axxxaaaaaaaaou"},
        {"OD", "IO_TYPE:LVCMOS33", "lvc330axxxaaaaaaaaod"}, {"DRIVER", "IO_TYPE:LVCMOS33", "lvc330axxxaaaaaaaaio"},
        {"IN", "IO_TYPE:SSTL18_I VREF:VREF1_LOAD REFCIRCUIT:INTERNAL TERMVTT:60 PWRSAVE:ON", "ss1180axxxaaaa6aaain"},
        {"IN", "IO_TYPE:HSTL18_III", "lvc180axxxaaaaaaaain"}, {"IN", "IO_TYPE:VREF1", "vr1250axxxaaaaaaaain"},
        {"BIDI", "IO_TYPE:PCI33 PULL:UP PCICLAMP:ON", "pci330axxxcaaaaaaaio"}, {"IN", "", "lvc250axxxaaaaaaaain"},
        {"BIDI", "IO_TYPE:PCI33 PULL:NONE PCICLAMP:ON", "pci330axxxpaaaaaaaio"},
        {"BIDI", "IO_TYPE:PCI33 PULL:NONE", "pci330axxxnaaaaaaaio"},
        {"BIDI", "IO_TYPE:PCI33 PULL:UP PCICLAMP:OFF", "pci330axxxuaaaaaaaio"},
        {"BIDI", "IO_TYPE:SSTL18_II VCMT:DDR_II TERMVTT:150", "ss2180axxxaaaafdaaio"},
        {"OUT", "IO_TYPE:LVDS SLEW:FAST", "lvd250axxxaaaaaaaaou"}, {"OUT", "SLEW:FAST IO_TYPE:LVDS25", "lvd250fxxxaaaaaaaaou"},
        {"OUT", "IO_TYPE:LVCMOS33 SLEW:FAST", "lvc330fxxxaaaaaaaaou"},
    };
    // No model is available: the report of the missing one names the key.
    for (auto const& c : cases) {
        resolve({ts::makeIobuf("sig", "A1", c.type, c.attributes)});
        std::string::size_type const at = out.find('"');
        EXPECT_EQ(at == std::string::npos ? out : out.substr(at + 1, out.find('"', at + 1) - at - 1), c.key)
            << c.type << " " << c.attributes;
    }
}

std::string data(std::string const& name) { return ts::readFile(ts::sourcePath("tests/variant/data/" + name)); }

TEST(VargonRun, DesignFileAndReportsOfADesignWithSubstitutedModels)
{
    ts::TempDir dir;
    for (char const* name : {"design.pad", "vgn_master.ibs"})
        ts::writeFile(dir.file(name), data(name));
    std::string const design = std::filesystem::canonical(dir.path()).string() + "/IBIS/design.ibs";
    std::string expected = data("run.out.expected");
    expected.replace(expected.find("@DESIGN@"), 8, design);
    std::string::size_type const walk = expected.find("WARNING");

    ts::RunResult r = ts::runLegacy({"--vargon", "design.pad", "vgn_master.ibs"}, dir.path());
    EXPECT_EQ(r.exitCode, 0) << r.err;
    EXPECT_EQ(r.err, "");
    EXPECT_EQ(r.out, expected);
    EXPECT_EQ(ts::readFile(design), data("design.ibs.expected"));

    // In the message flow the reports go by number.
    r = ts::runLegacy({"--vargon", "--msgflow", "design.pad", "vgn_master.ibs"}, dir.path());
    EXPECT_EQ(r.out, expected.substr(0, walk));
    EXPECT_EQ(r.err, "padmodel-1011\tlvc330a160daaaaaaaod\tscl\tlvc330a160daaaaaaaio\n"
                     "padmodel-1011\tlvc250axxxkaaaaaaain\tbtn\tlvc250axxxaaaaaaaain\n"
                     "padmodel-1010\ths1180fxxxaaaaaaaaou\thstl_out\n"
                     "padmodel-1030\t" + design + "\npadmodel-1031\npadmodel-1005\n");
}

} // namespace
