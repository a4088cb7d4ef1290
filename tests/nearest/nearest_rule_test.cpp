// The nearest model of a missing key, on keys: which models the rule rules
// out, each tie-break in its turn, and how the differences are named.

#include <gtest/gtest.h>

#include "nearest/nearest_model.h"

namespace {

using S = std::string;
using Models = std::set<S>;

// Naming tables of a small master. Two shared positions are named only by
// their second or third table, one by no table; NONE and OFF share a code.
ibsnearest::NamingTables const tables = {
    {"IO_TYPE", {{"LVCMOS", "lvc"}}},
    {"SLEW", {{"SLOW", "s"}, {"MEDIUM", "m"}, {"FAST", "f"}, {"NA", "a"}}},
    {"DRIVE", {{"NA", "xxx"}, {"4mA", "040"}, {"8mA", "080"}, {"12mA", "120"}, {"16mA", "160"}}},
    {"PULL", {{"UP", "u"}, {"DOWN", "d"}, {"NONE", "n"}, {"OFF", "n"}}},
    {"IMP", {{"50", "5"}}},
    {"TERMINATION", {{"ON", "t"}}},
    {"TERMVTT", {{"75", "7"}}},
    {"VCMT", {{"DDR-2", "d"}}},
    {"MULTDRIVE", {{"ON", "d"}}},
    {"DIFFRESISTOR", {{"100", "r"}}},
    {"DIFFDRIVE", {{"3.5", "3"}}},
};

S const key = "lvc330s080naaaaaaaou";

// The nearest model and its differences, as one line.
S nearestOf(S const& of, Models const& models, ibsnearest::NamingTables const& with = tables)
{
    ibsnearest::Nearest const nearest = ibsnearest::nearestModel(of, models, with);
    return nearest.model + (nearest.differences.empty() ? "" : " " + ibsnearest::describe(nearest.differences));
}

TEST(NearestModel, EachSettingNamedThroughTheMastersTables)
{
    std::pair<S, S> const cases[] = {
        {"lvc330f080naaaaaaaou", "SLEW SLOW -> FAST"},
        {"lvc330s120naaaaaaaou", "DRIVE 8mA -> 12mA"},
        {"lvc330s080uaaaaaaaou", "PULL NONE -> UP"}, // NONE, not OFF: the first row with the code
        {"lvc330s080n5aaaaaaou", "IMP a -> 50"},     // a code that no row has stands as it is
        {"lvc330s080nataaaaaou", "TERMINATION a -> ON"},
        {"lvc330s080naagaaaaou", "TERMGND a -> g"}, // no table at all
        {"lvc330s080naaa7aaaou", "TERMVTT a -> 75"},
        {"lvc330s080naaaadaaou", "VCMT a -> DDR-2"},
        {"lvc330s080naaaaaraou", "DIFFRESISTOR a -> 100"},
        {"lvc330s080naaaaaa3ou", "DIFFDRIVE a -> 3.5"},
        {"lvc330s080naaaaaaaio", "direction out -> io"},
        {"lvc330fxxxuaaaaaaaio", "SLEW SLOW -> FAST; DRIVE 8mA -> NA; PULL NONE -> UP; direction out -> io"},
    };
    for (auto const& [model, differs] : cases)
        EXPECT_EQ(nearestOf(key, {model}), model + " " + differs);
    // The database flow's table names.
    ibsnearest::NamingTables ncd = {{"SLEWRATE", {{"SLOW", "s"}, {"FAST", "f"}}}, {"PULLMODE", {{"UP", "u"}}}};
    EXPECT_EQ(nearestOf("lvc330sxxxaaaaaaaain", {"lvc330fxxxuaaaaaaain"}, ncd),
              "lvc330fxxxuaaaaaaain SLEWRATE SLOW -> FAST; PULLMODE a -> UP");
    EXPECT_EQ(nearestOf("lvc330sxxxaaaaaaaaod", {"lvc330sxxxaaaaaaaaio"}, {}), "lvc330sxxxaaaaaaaaio direction od -> io");
}

TEST(NearestModel, ModelsTheRuleRulesOut)
{
    std::pair<S, Models> const none[] = {
        {key, {"ttl330s080naaaaaaaou", "lvd330s080naaaaaaaou"}}, // another IO standard
        {key, {"lvc250s080naaaaaaaou", "lvc331s080naaaaaaaou"}}, // another supply
        {key, {"lvc330s080naaaaaaain", "lvc330s080naaaaaaaod"}},
        {"lvc330s080naaaaaaain", {"lvc330s080naaaaaaaou", "lvc330s080naaaaaaaod"}},
        {"lvc330s080naaaaaaaod", {"lvc330s080naaaaaaain", "lvc330s080naaaaaaaou"}},
        {"lvc330s080naaaaaaaio", {"lvc330s080naaaaaaain", "lvc330s080naaaaaaaou", "lvc330s080naaaaaaaod"}},
        {"lvc330s080naaaaaaaix", {"lvc330s080naaaaaaaio"}}, // a direction of no rule takes only itself
        {key, {key, "lvc330s080naaaaaaaoux", "lvc330s080naaaaaaao"}}, // the key itself; names of another length
        {"lvc330s080naaaaaaao", {"lvc330s080naaaaaaaoo"}},
        {"", {key}},
    };
    for (auto const& [of, models] : none)
        EXPECT_EQ(nearestOf(of, models), "") << of;
    // A direction rules out even the model that differs least.
    std::pair<S, Models> const direction[] = {
        {"lvc330s080naaaaaaain", {"lvc330s080naaaaaaaou", "lvc330s080naaaaaaaod", "lvc330f120uaaaaaaain"}},
        {key, {"lvc330s080naaaaaaain", "lvc330s080naaaaaaaod", "lvc330f120uaaaaaaaou"}},
        {"lvc330s080naaaaaaaod", {"lvc330s080naaaaaaain", "lvc330s080naaaaaaaou", "lvc330f120uaaaaaaaod"}},
        {"lvc330s080naaaaaaaix", {"lvc330s080naaaaaaaio", "lvc330f120uaaaaaaaix"}},
    };
    for (auto const& [of, models] : direction)
        EXPECT_EQ(nearestOf(of, models).substr(0, 20), "lvc330f120ua" + of.substr(12)) << of;
}

TEST(NearestModel, TieBreaksInTheirOrder)
{
    // Each winner loses to the other model on a later tie-break: only the one named decides.
    std::pair<Models, S> const cases[] = {
        // fewer differing fields, over a farther drive
        {{"lvc330s160naaaaaaaou", "lvc330f080uaaaaaaaou"}, "lvc330s160naaaaaaaou"},
        // the nearer drive, over the stronger one
        {{"lvc330s040naaaaaaaou", "lvc330s160naaaaaaaou"}, "lvc330s040naaaaaaaou"},
        // an equal distance: the stronger
        {{"lvc330s040naaaaaaaou", "lvc330s120naaaaaaaou"}, "lvc330s120naaaaaaaou"},
        // any drive is nearer than none
        {{"lvc330sxxxuaaaaaaaou", "lvc330f240naaaaaaaou"}, "lvc330f240naaaaaaaou"},
        // the same drive, over the same slew
        {{"lvc330m120naaaaaaaou", "lvc330f080uaaaaaaaou"}, "lvc330f080uaaaaaaaou"},
        // the same slew, over byte order
        {{"lvc330f080naaaaaaaou", "lvc330s080uaaaaaaaou"}, "lvc330s080uaaaaaaaou"},
        // the nearer slew step; a slew off the scale is farthest
        {{"lvc330f080naaaaaaaou", "lvc330m080naaaaaaaou"}, "lvc330m080naaaaaaaou"},
        {{"lvc330a080naaaaaaaou", "lvc330f080naaaaaaaou"}, "lvc330f080naaaaaaaou"},
        // all else equal: byte order
        {{"lvc330s080uaaaaaaaou", "lvc330s080daaaaaaaou"}, "lvc330s080daaaaaaaou"},
    };
    for (auto const& [models, winner] : cases)
        EXPECT_EQ(ibsnearest::nearestModel(key, models, tables).model, winner);
    // Without a drive in the key, the stronger of two drives.
    EXPECT_EQ(ibsnearest::nearestModel("lvc330sxxxnaaaaaaaou", {"lvc330s080naaaaaaaou", "lvc330s160naaaaaaaou"},
                                       tables).model, "lvc330s160naaaaaaaou");
}

} // namespace
