#ifndef PAD2IBIS_TESTS_VARIANT_VARGON_PROBE_H
#define PAD2IBIS_TESTS_VARIANT_VARGON_PROBE_H

// A table-driven generator for tests of its single operations: built from a
// one-signal pad report of a KVAN part (which builds the drive table), its
// signals removed, and naming tables written by the test in the form that a
// master file's tables take in _devIoMaps. Also hand-built forests.

#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "driver/basibsgen.h"
#include "host/msgmanager.h"
#include "support/generator_probe.h"
#include "variant/basib_vargon.h"

namespace vt {

using Codes = std::map<std::string, std::string>;
using Roots = std::vector<BASIB_ALT_MODEL_INFO*>;

// The levels below a root, in tree order.
inline std::vector<std::string> const& treeLevels()
{
    static std::vector<std::string> const levels = {
        "DRIVE",   "PULL", "IMP",     "TERMVCC", "TERMGND",  "TERMVTT",
        "VCMT",    "DIFFRES", "DIFFCUR", "RESERVED", "SLEW"};
    return levels;
}

// The naming tables of a small master file of the family, as the readers
// leave them: pull values renamed, NONE and OFF with codes of their own so
// that a test sees which of the two was looked up, GTLP and GTLPLUS apart.
inline void fillNamingTables(IBIS_MODEL& model)
{
    model._devIoMaps["IO_TYPE"] = Codes{
        {"LVDS", "lvd"},   {"LVDSE", "lve"},   {"RSDS", "rsd"},    {"LVCMOS", "lvc"},
        {"LVCMOSD", "lcd"}, {"LVTTL", "ttl"},  {"PCI", "pci"},     {"PCIX", "pcx"},
        {"AGP1X", "ag1"},  {"HSTL_I", "hs1"},  {"HSTLD_II", "hd2"}, {"SSTL_I", "ss1"},
        {"SSTL_II", "ss2"}, {"GTLP", "gtp"},   {"GTLPLUS", "gpl"}, {"VREF1", "vr1"},
        {"VREF2", "vr2"},  {"REF_RES", "ref"}, {"HYPT", "hyp"},    {"REF", "rfx"}};
    model._devIoMaps["SLEW"] = Codes{{"NA", "a"}, {"SLOW", "s"}, {"FAST", "f"}};
    model._devIoMaps["PULL"] = Codes{{"UP", "u"},       {"DOWN", "d"},         {"NONE", "n"},
                                     {"OFF", "o"},      {"KEEPER", "k"},       {"UP_PCICLAMP", "c"},
                                     {"DOWN_PCICLAMP", "e"}, {"PCICLAMP", "p"}};
    model._devIoMaps["IMP"] = Codes{{"OFF", "a"}, {"25", "2"}, {"33", "3"}, {"50", "5"}, {"100", "h"}};
    model._devIoMaps["TERMVCC"] = Codes{{"OFF", "a"}, {"50", "5"}, {"100", "h"}, {"120", "t"}};
    model._devIoMaps["TERMGND"] = Codes{{"OFF", "a"}, {"100", "h"}, {"120", "t"}};
    model._devIoMaps["TERMVTT"] =
        Codes{{"OFF", "a"}, {"60", "6"}, {"75", "7"}, {"120", "t"}, {"150", "f"}, {"210", "w"}};
    model._devIoMaps["VCMT"] = Codes{{"OFF", "a"}, {"VCMT", "v"}, {"VTT", "t"}, {"DDR-2", "d"}};
    model._devIoMaps["DIFFRES"] =
        Codes{{"OFF", "a"}, {"120", "t"}, {"150", "f"}, {"220", "w"}, {"420", "x"}};
    model._devIoMaps["DIFFCUR"] = Codes{{"NA", "a"}, {"2", "2"}, {"3P5", "3"}, {"4", "4"}, {"6", "6"}};
}

// A generator of the family as the host builds it, without signals.
class VargonTest : public testing::Test {
protected:
    void SetUp() override
    {
        ts::resetGeneratorStatics();
        model = build("KVAN-25F-5FN484C", "KVAN");
        ASSERT_NE(model, nullptr);
        model->_iobufs.clear();
    }
    void TearDown() override
    {
        delete model;
        model = nullptr;
        ts::resetGeneratorStatics();
    }

    // Constructs the generator on a one-signal pad report of partType; what
    // the construction lists on standard output is dropped.
    IBIS_MODEL_VARGON* build(std::string const& partType, std::string const& family)
    {
        std::string const pad = dir.file("probe.pad");
        ts::writeFile(pad, ts::padReport(partType, {"| sig | A1/0 | LVCMOS33_BIDI | PT1A | DRIVE:8mA |"}));
        std::string const master = dir.file("probe.ibs");
        IBIS_MODEL_VARGON* made = nullptr;
        ts::captureStdout([&] {
            made = new IBIS_MODEL_VARGON(family.c_str(), pad.c_str(), master.c_str());
        });
        return made;
    }

    // Runs the variant walk over signals; what it prints is kept in out.
    void resolve(std::vector<IB_IOBUF*> const& signals)
    {
        model->_iobufs = signals;
        out = ts::captureStdout([&] { model->setDesignModels(); });
    }

    ts::TempDir dir;
    IBIS_MODEL_VARGON* model = nullptr;
    std::string out;
};

// A node made without the operations under test.
inline BASIB_ALT_MODEL_INFO* node(std::string const& level, std::string const& key,
                                  BASIB_ALT_MODEL_INFO* owner)
{
    BASIB_ALT_MODEL_INFO* made = new BASIB_ALT_MODEL_INFO(level, key, owner);
    if (owner != nullptr)
        owner->_children.push_back(made);
    return made;
}

// A row's tree by hand: the root key, then for each level below it (in the
// order of treeLevels) the key values, preferred first. Each value at a level
// carries the whole expansion of the levels under it.
inline BASIB_ALT_MODEL_INFO* handTree(std::string const& rootKey,
                                      std::vector<std::vector<std::string>> const& levels)
{
    BASIB_ALT_MODEL_INFO* root = new BASIB_ALT_MODEL_INFO("IO_TYPE", rootKey, nullptr);
    std::function<void(BASIB_ALT_MODEL_INFO*, size_t)> grow = [&](BASIB_ALT_MODEL_INFO* at,
                                                                   size_t depth) {
        if (depth == levels.size())
            return;
        for (std::string const& value : levels[depth])
            grow(node(treeLevels()[depth], value, at), depth + 1);
    };
    grow(root, 0);
    return root;
}

// Levels of a row whose fields are at "a" but where the test says otherwise.
inline std::vector<std::vector<std::string>> rowLevels(std::vector<std::string> const& drive,
                                                       std::vector<std::string> const& pull,
                                                       std::vector<std::string> const& direction,
                                                       std::vector<std::string> const& slew)
{
    std::vector<std::vector<std::string>> levels = {drive, pull};
    for (int i = 0; i < 7; ++i)
        levels.push_back({"a"});
    levels.push_back(direction);
    levels.push_back(slew);
    return levels;
}

// The tree of the worked example: drive 080, 160, 240; pull u, d, n; io
// before od; s before f; "a" elsewhere; root lvc330.
inline BASIB_ALT_MODEL_INFO* exampleTree()
{
    return handTree("lvc330", rowLevels({"080", "160", "240"}, {"u", "d", "n"}, {"io", "od"}, {"s", "f"}));
}

// A forest entry owned by the generator.
inline void plant(BASIB_ALT_MODEL_MAP& forest, std::string const& key, Roots const& roots)
{
    forest[key] = new Roots(roots);
}

inline long countNodes(BASIB_ALT_MODEL_INFO* at)
{
    long count = 1;
    for (BASIB_ALT_MODEL_INFO* child : at->_children)
        count += countNodes(child);
    return count;
}

inline long countNodes(BASIB_ALT_MODEL_MAP const& forest)
{
    long count = 0;
    for (auto const& entry : forest)
        for (BASIB_ALT_MODEL_INFO* root : *entry.second)
            count += countNodes(root);
    return count;
}

inline long countRoots(BASIB_ALT_MODEL_MAP const& forest)
{
    long count = 0;
    for (auto const& entry : forest)
        count += static_cast<long>(entry.second->size());
    return count;
}

// The keys of a node's children, in order.
inline std::vector<std::string> childKeys(BASIB_ALT_MODEL_INFO* at)
{
    std::vector<std::string> keys;
    for (BASIB_ALT_MODEL_INFO* child : at->_children)
        keys.push_back(child->_keyValue);
    return keys;
}

// The first child, descended depth times.
inline BASIB_ALT_MODEL_INFO* firstDown(BASIB_ALT_MODEL_INFO* at, int depth)
{
    for (int i = 0; i < depth && at != nullptr; ++i)
        at = at->_children.empty() ? nullptr : at->_children.front();
    return at;
}

// The leftmost path of a root as "LEVEL:key" words.
inline std::string leftmostPath(BASIB_ALT_MODEL_INFO* at)
{
    std::string path;
    while (at != nullptr) {
        path += (path.empty() ? "" : " ") + at->_levelName + ":" + at->_keyValue;
        at = at->_children.empty() ? nullptr : at->_children.front();
    }
    return path;
}

// Every node of a forest, depth first.
inline void forEachNode(BASIB_ALT_MODEL_MAP const& forest,
                        std::function<void(BASIB_ALT_MODEL_INFO*, int depth)> const& visit)
{
    std::function<void(BASIB_ALT_MODEL_INFO*, int)> walk = [&](BASIB_ALT_MODEL_INFO* at, int depth) {
        visit(at, depth);
        for (BASIB_ALT_MODEL_INFO* child : at->_children)
            walk(child, depth + 1);
    };
    for (auto const& entry : forest)
        for (BASIB_ALT_MODEL_INFO* root : *entry.second)
            walk(root, 0);
}

} // namespace vt

#endif
