// The nearest model of a missing key, on keys: the models the rule rules out, each tie-break in its
// turn, and the differences named through the master's naming tables.

#include <gtest/gtest.h>

#include "nearest/nearest_model.h"

namespace {

using S = std::string;

// Shared key positions named only by their second table, or by none; NONE and OFF share a code.
ibsnearest::NamingTables const tables = {
    {"SLEW", {{"SLOW", "s"}, {"MEDIUM", "m"}, {"FAST", "f"}}},
    {"DRIVE", {{"NA", "xxx"}, {"4mA", "040"}, {"8mA", "080"}, {"12mA", "120"}, {"16mA", "160"}}},
    {"PULL", {{"UP", "u"}, {"DOWN", "d"}, {"NONE", "n"}, {"OFF", "n"}}}, {"IMP", {{"50", "5"}}},
    {"TERMINATION", {{"ON", "t"}}}, {"TERMVTT", {{"75", "7"}}}, {"VCMT", {{"DDR-2", "d"}}}, {"MULTDRIVE", {{"ON", "d"}}},
    {"DIFFRESISTOR", {{"100", "r"}}}, {"DIFFDRIVE", {{"3.5", "3"}}}};

S const key = "lvc330s080naaaaaaaou";

TEST(NearestModel, ChoiceAndDifferences)
{
    struct { S key; std::set<S> models; S nearest; } const cases[] = {
        // Each field, named by the first of its tables that the master has, a code by itself where none names it.
        {key, {"lvc330fxxxuaaaaaaaio"}, "SLEW SLOW -> FAST; DRIVE 8mA -> NA; PULL NONE -> UP; direction out -> io"},
        {key, {"lvc330s080n5tg7drr3ou"}, ""}, // 21 characters
        {key, {"lvc330s080n5tg7dr3ou"}, "IMP a -> 50; TERMINATION a -> ON; TERMGND a -> g; TERMVTT a -> 75; VCMT a -> DDR-2; "
                                         "DIFFRESISTOR a -> 100; DIFFDRIVE a -> 3.5"},
        // Never another IO standard or supply, nor a direction the key's may not take, nor the key itself.
        {key, {key, "ttl330s080naaaaaaaou", "lvc331s080naaaaaaaou", "lvc330s080naaaaaaain", "lvc330s080naaaaaaaod"}, ""},
        {"lvc330s080naaaaaaain", {"lvc330s080naaaaaaaou", "lvc330s080naaaaaaaod", "lvc330f120uaaaaaaain"},
         "SLEW SLOW -> FAST; DRIVE 8mA -> 12mA; PULL NONE -> UP"},
        {"lvc330s080naaaaaaaod", {"lvc330s080naaaaaaain", "lvc330s080naaaaaaaou", "lvc330s080uaaaaaaaio"},
         "PULL NONE -> UP; direction od -> io"},
        {"lvc330s080naaaaaaaio", {"lvc330s080naaaaaaain", "lvc330s080naaaaaaaou", "lvc330s080naaaaaaaod"}, ""},
        {"lvc330s080naaaaaaaix", {"lvc330s080naaaaaaaio", "lvc330s080uaaaaaaaix"}, "PULL NONE -> UP"},
        {"lvc330s080naaaaaaao", {"lvc330s080naaaaaaaoo"}, ""},
        // The tie-breaks in order; each winner loses to the other model on a later one.
        {key, {"lvc330s160naaaaaaaou", "lvc330f080uaaaaaaaou"}, "DRIVE 8mA -> 16mA"},
        {key, {"lvc330s040naaaaaaaou", "lvc330s160naaaaaaaou"}, "DRIVE 8mA -> 4mA"},
        {key, {"lvc330s040naaaaaaaou", "lvc330s120naaaaaaaou"}, "DRIVE 8mA -> 12mA"},
        {key, {"lvc330sxxxuaaaaaaaou", "lvc330f240naaaaaaaou"}, "SLEW SLOW -> FAST; DRIVE 8mA -> 240"},
        {"lvc330sxxxnaaaaaaaou", {"lvc330s080naaaaaaaou", "lvc330s160naaaaaaaou"}, "DRIVE NA -> 16mA"},
        {key, {"lvc330m120naaaaaaaou", "lvc330f080uaaaaaaaou"}, "SLEW SLOW -> FAST; PULL NONE -> UP"},
        {key, {"lvc330f080naaaaaaaou", "lvc330s080uaaaaaaaou"}, "PULL NONE -> UP"},
        {key, {"lvc330f080naaaaaaaou", "lvc330m080naaaaaaaou"}, "SLEW SLOW -> MEDIUM"},
        {key, {"lvc330a080naaaaaaaou", "lvc330f080naaaaaaaou"}, "SLEW SLOW -> FAST"},
        {key, {"lvc330s080uaaaaaaaou", "lvc330s080daaaaaaaou"}, "PULL NONE -> DOWN"},
    };
    for (auto const& c : cases) {
        ibsnearest::Nearest const nearest = ibsnearest::nearestModel(c.key, c.models, tables);
        EXPECT_EQ(ibsnearest::describe(nearest.differences), c.nearest) << c.key << " " << nearest.model;
        EXPECT_EQ(nearest.model.empty(), c.nearest.empty()) << c.key;
    }
}

} // namespace
