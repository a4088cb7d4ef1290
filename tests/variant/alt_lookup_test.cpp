// Substitutes for a missing model: the node of a key in its forest, the walk
// from there toward the preferred values of the tree, and the order in which
// tree candidates and default names are tried for each port type.

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "variant/vargon_probe.h"

namespace {

using vt::exampleTree;
using vt::handTree;
using vt::rowLevels;

// The keys from the root down to a node, joined.
std::string keysDownTo(BASIB_ALT_MODEL_INFO* at)
{
    std::string keys;
    for (; at != nullptr; at = at->GetOwner())
        keys = at->_keyValue + (keys.empty() ? "" : "/") + keys;
    return keys;
}

BASIB_ALT_MODEL_INFO* rootOf(BASIB_ALT_MODEL_INFO* at)
{
    while (at->GetOwner() != nullptr)
        at = at->GetOwner();
    return at;
}

using NodeForKey = vt::VargonTest;

TEST_F(NodeForKey, FindsTheDirectionNodeOfTheKeysPath)
{
    vt::Roots roots = {exampleTree()};
    BASIB_ALT_MODEL_INFO* found = model->getNodeForModelName(roots, "lvc330a240daaaaaaaod");
    ASSERT_NE(found, nullptr);
    EXPECT_STREQ(found->GetLevel(), "RESERVED");
    EXPECT_EQ(keysDownTo(found), "lvc330/240/d/a/a/a/a/a/a/a/od");
    EXPECT_EQ(found->GetNumChildren(), 2) << "one level above the leaves";

    found = model->getNodeForModelName(roots, "lvc330a080naaaaaaaio");
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(keysDownTo(found), "lvc330/080/n/a/a/a/a/a/a/a/io");
    vt::plant(model->_bidirAltModels, "lvc330", roots);
}

TEST_F(NodeForKey, NeitherSlewNorRootKeyIsCompared)
{
    vt::Roots roots = {exampleTree()};
    vt::plant(model->_bidirAltModels, "lvc330", roots);
    BASIB_ALT_MODEL_INFO* found = model->getNodeForModelName(roots, "lvc330a160uaaaaaaaod");
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(model->getNodeForModelName(roots, "lvc330s160uaaaaaaaod"), found);
    EXPECT_EQ(model->getNodeForModelName(roots, "lvc330Z160uaaaaaaaod"), found);
    EXPECT_EQ(model->getNodeForModelName(roots, "zzz999a160uaaaaaaaod"), found);
}

TEST_F(NodeForKey, AFieldWithoutNodeGivesNull)
{
    vt::Roots roots = {exampleTree()};
    vt::plant(model->_bidirAltModels, "lvc330", roots);
    EXPECT_EQ(model->getNodeForModelName(roots, "lvc330a200uaaaaaaaio"), nullptr) << "drive";
    EXPECT_EQ(model->getNodeForModelName(roots, "lvc330a080kaaaaaaaio"), nullptr) << "pull";
    EXPECT_EQ(model->getNodeForModelName(roots, "lvc330a0805aaaaaaaio"), nullptr) << "impedance";
    EXPECT_EQ(model->getNodeForModelName(roots, "lvc330a080uaaaataaio"), nullptr) << "vcmt";
    EXPECT_EQ(model->getNodeForModelName(roots, "lvc330a080uaaaaaa3io"), nullptr) << "diffcur";
    EXPECT_EQ(model->getNodeForModelName(roots, "lvc330a080uaaaaaaaou"), nullptr) << "direction";
    EXPECT_EQ(model->getNodeForModelName(roots, "lvc330a080uaaaaaaaios"), nullptr)
        << "the direction is cut with three characters";
}

TEST_F(NodeForKey, EmptyNameOrNoRootsGiveNull)
{
    vt::Roots roots = {exampleTree()};
    vt::plant(model->_bidirAltModels, "lvc330", roots);
    EXPECT_EQ(model->getNodeForModelName(roots, ""), nullptr);
    vt::Roots none;
    EXPECT_EQ(model->getNodeForModelName(none, "lvc330a080uaaaaaaaio"), nullptr);
}

TEST_F(NodeForKey, RootsAreTriedInOrder)
{
    BASIB_ALT_MODEL_INFO* first = handTree("lvc330", rowLevels({"080"}, {"u"}, {"io"}, {"s"}));
    BASIB_ALT_MODEL_INFO* second = handTree("lvc330", rowLevels({"080"}, {"u", "d"}, {"io"}, {"s"}));
    vt::Roots roots = {first, second};
    vt::plant(model->_bidirAltModels, "lvc330", roots);

    BASIB_ALT_MODEL_INFO* found = model->getNodeForModelName(roots, "lvc330a080uaaaaaaaio");
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(vt::firstDown(first, 10), found) << "both roots fit; the first one wins";
    EXPECT_EQ(rootOf(found), first);

    found = model->getNodeForModelName(roots, "lvc330a080daaaaaaaio");
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(rootOf(found), second) << "the first root misses the pull value; the second one is tried";
    EXPECT_EQ(keysDownTo(found), "lvc330/080/d/a/a/a/a/a/a/a/io");
}

using NextCandidate = vt::VargonTest;

TEST_F(NextCandidate, TheWorkedExample)
{
    vt::Roots roots = {exampleTree()};
    vt::plant(model->_bidirAltModels, "lvc330", roots);
    BASIB_ALT_MODEL_INFO* at = model->getNodeForModelName(roots, "lvc330a240daaaaaaaod");
    ASSERT_NE(at, nullptr);
    BASIB_ALT_MODEL_INFO* const start = at;

    EXPECT_EQ(model->getNextAltModelName(&at), "lvc330a240daaaaaaaio");
    EXPECT_STREQ(at->GetLevel(), "RESERVED");
    EXPECT_EQ(at->GetOwner(), start->GetOwner()) << "the preferred sibling";

    EXPECT_EQ(model->getNextAltModelName(&at), "lvc330a240uaaaaaaaios");
    EXPECT_STREQ(at->GetLevel(), "SLEW");
    EXPECT_EQ(keysDownTo(at), "lvc330/240/u/a/a/a/a/a/a/a/io/s");

    EXPECT_EQ(model->getNextAltModelName(&at), "lvc330a080uaaaaaaaios");
    EXPECT_EQ(keysDownTo(at), "lvc330/080/u/a/a/a/a/a/a/a/io/s");
    BASIB_ALT_MODEL_INFO* const last = at;

    EXPECT_EQ(model->getNextAltModelName(&at), "");
    EXPECT_EQ(at, last) << "at the end the node stays";
    EXPECT_EQ(model->getNextAltModelName(&at), "");
    EXPECT_EQ(at, last);
}

TEST_F(NextCandidate, FromALeafEachClimbResetsOneMoreLevel)
{
    vt::Roots roots = {exampleTree()};
    vt::plant(model->_bidirAltModels, "lvc330", roots);
    BASIB_ALT_MODEL_INFO* at = model->getNodeForModelName(roots, "lvc330a240daaaaaaaod");
    ASSERT_NE(at, nullptr);
    at = at->_children[1];
    ASSERT_EQ(at->_keyValue, "f");
    std::vector<std::string> names;
    for (std::string name = model->getNextAltModelName(&at); !name.empty() && names.size() < 20;
         name = model->getNextAltModelName(&at))
        names.push_back(name);
    EXPECT_EQ(names, (std::vector<std::string>{"lvc330a240daaaaaaaods", "lvc330a240daaaaaaaios",
                                               "lvc330a240uaaaaaaaios", "lvc330a080uaaaaaaaios"}));
}

TEST_F(NextCandidate, APreferredSiblingAtAnyLevelNamesItsPathSoFar)
{
    vt::Roots roots = {exampleTree()};
    vt::plant(model->_bidirAltModels, "lvc330", roots);
    BASIB_ALT_MODEL_INFO* at = roots[0]->_children[0]->_children[1];
    ASSERT_EQ(keysDownTo(at), "lvc330/080/d");
    EXPECT_EQ(model->getNextAltModelName(&at), "lvc330a080u");
    EXPECT_EQ(at, roots[0]->_children[0]->_children[0]);
}

TEST_F(NextCandidate, APathOfPreferredValuesGivesTheLeftmostLeafAndThenTheEnd)
{
    vt::Roots roots = {exampleTree()};
    vt::plant(model->_bidirAltModels, "lvc330", roots);
    BASIB_ALT_MODEL_INFO* at = model->getNodeForModelName(roots, "lvc330a080uaaaaaaaio");
    ASSERT_NE(at, nullptr);
    EXPECT_EQ(model->getNextAltModelName(&at), "lvc330a080uaaaaaaaios");
    EXPECT_EQ(model->getNextAltModelName(&at), "");
}

TEST_F(NextCandidate, ANullNodeEndsAtOnce)
{
    BASIB_ALT_MODEL_INFO* at = nullptr;
    EXPECT_EQ(model->getNextAltModelName(&at), "");
    EXPECT_EQ(at, nullptr);
}

// The order of the tries. Each list of names is made available as a whole;
// then the winner is taken away, one after the other, so each try must come
// after the ones before it. Distractors never win.
class SubstituteOrder : public vt::VargonTest {
protected:
    std::vector<std::string> winners(std::string const& portType, std::string const& key,
                                     std::vector<std::string> names,
                                     std::vector<std::string> const& distractors)
    {
        std::vector<std::string> order;
        std::set<std::string> available(names.begin(), names.end());
        available.insert(distractors.begin(), distractors.end());
        for (size_t turn = 0; turn <= names.size() + 1; ++turn) {
            model->_availableModels = available;
            std::string const won = model->getAvailableAltModelName(portType, key);
            order.push_back(won);
            if (won.empty() || available.erase(won) == 0)
                break;
        }
        return order;
    }
};

TEST_F(SubstituteOrder, InputTreeCandidatesThenDefaultInThenKeyWithIoThenDefaultIo)
{
    // A hand tree whose direction level has a preferred sibling "iz" in front
    // of "in", so that the tree yields a candidate of 20 characters.
    vt::plant(model->_inputAltModels, "lvc330",
              {handTree("lvc330", rowLevels({"xxx"}, {"u", "d"}, {"iz", "in"}, {"a"}))});
    vt::plant(model->_bidirAltModels, "lvc330", {exampleTree()});
    std::vector<std::string> const tries = {
        "lvc330axxxdaaaaaaaiz",  // preferred sibling
        "lvc330axxxuaaaaaaaiza", // leftmost leaf after the pull reset
        "lvc330axxxaaaaaaaain",  // default name, "in"
        "lvc330axxxdaaaaaaaio",  // the key with "io"
        "lvc330axxxaaaaaaaaio",  // default name, "io"
    };
    std::vector<std::string> const distractors = {"lvc330axxxdaaaaaaaou", "lvc330axxxaaaaaaaaou",
                                                  "lvc330axxxdaaaaaaaod", "lvc330a080uaaaaaaaio"};
    std::vector<std::string> expected = tries;
    expected.push_back("");
    EXPECT_EQ(winners("IN", "lvc330axxxdaaaaaaain", tries, distractors), expected);
}

TEST_F(SubstituteOrder, InputSkipsTheDefaultNameWhenTheKeyIsIt)
{
    vt::plant(model->_inputAltModels, "lvc250",
              {handTree("lvc250", rowLevels({"xxx"}, {"u"}, {"in"}, {"a"}))});
    std::string const key = "lvc250axxxaaaaaaaain";
    model->_availableModels = {key, "lvc250axxxaaaaaaaaio"};
    EXPECT_EQ(model->getAvailableAltModelName("IN", key), "lvc250axxxaaaaaaaaio");
    model->_availableModels = {key};
    EXPECT_EQ(model->getAvailableAltModelName("IN", key), "")
        << "the key itself, which is the default name, is not offered";
}

TEST_F(SubstituteOrder, OutputTriesTheKeyWithIoThenTheDefaultIoName)
{
    vt::plant(model->_outputAltModels, "lvc330", {exampleTree()});
    vt::plant(model->_bidirAltModels, "lvc330", {exampleTree()});
    vt::plant(model->_inputAltModels, "lvc330",
              {handTree("lvc330", rowLevels({"160"}, {"d"}, {"in"}, {"a"}))});
    std::vector<std::string> const tries = {"lvc330s160daaaaaaaio", "lvc330axxxaaaaaaaaio"};
    // What the output tree would offer for the same settings, and the "ou"
    // and "in" forms: none of them is ever tried.
    std::vector<std::string> const distractors = {
        "lvc330a160daaaaaaaio", "lvc330a160uaaaaaaaio", "lvc330a080uaaaaaaaio", "lvc330a160uaaaaaaaios",
        "lvc330a080uaaaaaaaios", "lvc330axxxaaaaaaaaou", "lvc330axxxaaaaaaaain", "lvc330s160daaaaaaaod"};
    EXPECT_EQ(winners("OUT", "lvc330s160daaaaaaaou", tries, distractors),
              (std::vector<std::string>{tries[0], tries[1], ""}));
}

TEST_F(SubstituteOrder, OtherPortTypesTryTheBidirectionalTreeThenTheirOwnDefaultName)
{
    vt::plant(model->_bidirAltModels, "lvc330", {exampleTree()});
    vt::plant(model->_outputAltModels, "lvc330",
              {handTree("lvc330", rowLevels({"240"}, {"d"}, {"ox", "od"}, {"s"}))});
    vt::plant(model->_inputAltModels, "lvc330",
              {handTree("lvc330", rowLevels({"240"}, {"d"}, {"ix", "od"}, {"s"}))});
    std::vector<std::string> const tries = {"lvc330a240daaaaaaaio", "lvc330a240uaaaaaaaios",
                                            "lvc330a080uaaaaaaaios", "lvc330axxxaaaaaaaaod"};
    std::vector<std::string> const distractors = {"lvc330axxxaaaaaaaaio", "lvc330a240daaaaaaaox",
                                                  "lvc330a240daaaaaaaix", "lvc330axxxaaaaaaaain"};
    std::vector<std::string> expected = tries;
    expected.push_back("");
    for (char const* portType : {"BIDI", "OD", "", "XYZ"})
        EXPECT_EQ(winners(portType, "lvc330a240daaaaaaaod", tries, distractors), expected)
            << "[" << portType << "]";
}

TEST_F(SubstituteOrder, AnIoTypeMissingFromTheDirectionsForestGetsNothing)
{
    vt::plant(model->_inputAltModels, "gtp150",
              {handTree("gtp150", rowLevels({"xxx"}, {"o"}, {"in"}, {"a"}))});
    vt::plant(model->_bidirAltModels, "lvc330", {exampleTree()});
    model->_availableModels = {"gtp150axxxaaaaaaaaio", "gtp150axxxaaaaaaaaou", "gtp150axxxaaaaaaaain",
                               "gtp150axxxoaaaaaaaio", "lvc330axxxaaaaaaaain", "lvc330axxxaaaaaaaaio"};
    EXPECT_EQ(model->getAvailableAltModelName("OUT", "gtp150axxxoaaaaaaaou"), "");
    EXPECT_EQ(model->getAvailableAltModelName("BIDI", "gtp150axxxoaaaaaaaio"), "");
    EXPECT_EQ(model->getAvailableAltModelName("IN", "lvc330axxxdaaaaaaain"), "");
    EXPECT_EQ(model->getAvailableAltModelName("IN", "gtp150axxxoaaaaaaain"), "gtp150axxxaaaaaaaain")
        << "the same IO type in its own forest";
}

TEST_F(SubstituteOrder, ANullVectorCountsAsMissing)
{
    model->_inputAltModels["lvc330"] = nullptr;
    model->_availableModels = {"lvc330axxxaaaaaaaain", "lvc330axxxaaaaaaaaio"};
    EXPECT_EQ(model->getAvailableAltModelName("IN", "lvc330axxxdaaaaaaain"), "");
}

TEST_F(SubstituteOrder, AnEmptyKeyGetsNothingAndLeavesTheForestsAlone)
{
    vt::plant(model->_bidirAltModels, "lvc330", {exampleTree()});
    model->_availableModels = {"lvc330axxxaaaaaaaaio", "lvc330axxxaaaaaaaain"};
    for (char const* portType : {"IN", "OUT", "BIDI"})
        EXPECT_EQ(model->getAvailableAltModelName(portType, ""), "") << portType;
    EXPECT_EQ(model->_bidirAltModels.size(), 1u);
    EXPECT_TRUE(model->_inputAltModels.empty());
    EXPECT_TRUE(model->_outputAltModels.empty());
}

TEST_F(SubstituteOrder, OpenDrainWalksToTheSiblingIoAndThenOnlyTheOdDefault)
{
    vt::fillNamingTables(*model);
    model->buildAltVargonModels();
    model->_availableModels = {"lvc330a080uaaaaaaaio", "lvc330axxxaaaaaaaaod", "lvc330axxxaaaaaaaaio"};
    EXPECT_EQ(model->getAvailableAltModelName("OD", "lvc330a080uaaaaaaaod"), "lvc330a080uaaaaaaaio");
    model->_availableModels.erase("lvc330a080uaaaaaaaio");
    EXPECT_EQ(model->getAvailableAltModelName("OD", "lvc330a080uaaaaaaaod"), "lvc330axxxaaaaaaaaod");
    model->_availableModels.erase("lvc330axxxaaaaaaaaod");
    EXPECT_EQ(model->getAvailableAltModelName("OD", "lvc330a080uaaaaaaaod"), "");
}

TEST_F(SubstituteOrder, RootsOfOneKeyAreTriedInTableOrder)
{
    BASIB_ALT_MODEL_INFO* first = handTree("lvc330", rowLevels({"080"}, {"u"}, {"i1", "od"}, {"s"}));
    BASIB_ALT_MODEL_INFO* second = handTree("lvc330", rowLevels({"080"}, {"u"}, {"i2", "od"}, {"s"}));
    vt::plant(model->_bidirAltModels, "lvc330", {first, second});
    model->_availableModels = {"lvc330a080uaaaaaaai1", "lvc330a080uaaaaaaai2"};
    EXPECT_EQ(model->getAvailableAltModelName("BIDI", "lvc330a080uaaaaaaaod"), "lvc330a080uaaaaaaai1");
    model->_availableModels = {"lvc330a080uaaaaaaai2"};
    EXPECT_EQ(model->getAvailableAltModelName("BIDI", "lvc330a080uaaaaaaaod"), "")
        << "the second root is never walked once the first one holds the key";
}

} // namespace
