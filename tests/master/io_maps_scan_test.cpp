// The scan of the master file for its naming tables: which lines are
// headings, which reader each heading reaches, and when a family has all the
// tables it needs.

#include <gtest/gtest.h>

#include <cstring>
#include <set>
#include <string>

#include "driver/basibsgen.h"
#include "support/generator_probe.h"

namespace {

using Table = std::map<std::string, std::string>;

// A naming table as the master file states it: heading, captions, body,
// closing rule.
std::string table(std::string const& heading, std::string const& body)
{
    return heading + "\n|--------------------\n| value      code\n|--------------------\n" + body +
           "|--------------------\n";
}

std::set<std::string> keysOf(IBIS_MODEL const& model)
{
    std::set<std::string> keys;
    for (auto const& entry : model._devIoMaps)
        keys.insert(entry.first);
    return keys;
}

// A generator with the flags that construction leaves for a known part:
// drive (built in code) and direction.
void constructed(ts::ProbeModel& model, std::string const& part)
{
    model._partName = part;
    model._keyFieldPresent[7] = true;
    model._keyFieldPresent[18] = true;
    model._keyFieldPresent[19] = true;
}

std::string const head = "[IBIS Ver]   5.1\n"
                         "[File Name]  probe.ibs\n"
                         "[Notes]      Probe library\n"
                         "| Model naming convention\n";

TEST(HeadingRecognition, FirstMatchingHeadingPicksTheReader)
{
    struct Case {
        char const* line;
        char const* key; // null: not a heading
    };
    Case const cases[] = {
        {"STANDARD", "IO_TYPE"},
        {"   standard   ", "IO_TYPE"},
        {"Standard (IO_TYPE)", "IO_TYPE"},
        {"STANDARD(IO_TYPE)", "IO_TYPE"},
        {"STANDARD SLEW", "IO_TYPE"},
        {"IO STANDARD", nullptr},
        {"STANDARDS", nullptr},
        {"NON-STANDARD SLEW RATE", nullptr},
        {"Slew Rate", "SLEW"},
        {"PULLMODE SLEW", "SLEW"},
        {"pullmode", "PULL"},
        {"IMPEDANCE PULLMODE", "PULL"},
        {"IMPEDENCE", "IMP"},
        {"Output Impedance", "IMP"},
        {"IMPEDANCE TERMVCC", "IMP"},
        {"MIPI HARD DPHY MODE", "MIPI"},
        {"MIPI HARD DPHY MODE TERMVCC", "MIPI"},
        {"MIPI", nullptr},
        {"TERMVCC", "TERMVCC"},
        {"TERMVCC TERMGND", "TERMVCC"},
        {"TERMGND", "TERMGND"},
        {"TERMGND TERMVTT", "TERMGND"},
        {"TERMVTT", "TERMVTT"},
        {"TERMVTT VCMT", "TERMVTT"},
        {"VCMT", "VCMT"},
        {"VCMT TERMINATION", "VCMT"},
        {"DIFFERENTIAL RESISTOR", "DIFFRES"},
        {"DIFFERENTIAL RESISTOR DIFFERENTIAL CURRENT", "DIFFRES"},
        {"Differential Current", "DIFFCUR"},
        {"DIFFERENTIAL DRIVE CURRENT", "DIFFCUR"},
        {"DIFFERENTIAL", nullptr},
        {"TERMINATION", "TERMINATION"},
        {"TERMINATION MULTI DRIVE", "TERMINATION"},
        {"MULTI DRIVE", "MULTDRIVE"},
        {"MULTI DRIVE DIFF DRIVE", "MULTDRIVE"},
        {"diff drive", "DIFFDRIVE"},
        {"NAMING CONVENTION", nullptr},
        {"[Component] KVANR3", nullptr},
        {"", nullptr},
    };
    for (Case const& c : cases) {
        ts::ProbeModel model;
        model.openMaster("X  x\n|----\nAFTER\n");
        char line[255];
        std::strcpy(line, c.line);
        bool read = model.loadDevIoMaps(line);
        std::string next;
        std::getline(model._masterStream, next);
        if (c.key != nullptr) {
            EXPECT_TRUE(read) << c.line;
            EXPECT_EQ(keysOf(model), std::set<std::string>{c.key}) << c.line;
            EXPECT_EQ(model._devIoMaps[c.key], (Table{{"X", "x"}})) << c.line;
            EXPECT_EQ(next, "AFTER") << c.line;
        } else {
            EXPECT_FALSE(read) << c.line;
            EXPECT_TRUE(model._devIoMaps.empty()) << c.line;
            EXPECT_EQ(next, "X  x") << c.line << ": nothing may be read behind a line that is no heading";
        }
    }
}

TEST(HeadingRecognition, LineIsTrimmedAndUpperCasedInPlace)
{
    ts::ProbeModel model;
    model.openMaster("");
    char line[255] = "  naming convention of io  ";
    EXPECT_FALSE(model.loadDevIoMaps(line));
    EXPECT_STREQ(line, "NAMING CONVENTION OF IO");
}

TEST(IoMapsScan, PlainFamilyStopsRightAfterTheLastOfStandardSlewAndPull)
{
    ts::ProbeModel model;
    constructed(model, "ZR");
    model.setMaster(head +
                    "TERMGND = TERMINATION TO GROUND\n"
                    "ON   g\n"
                    "|--------------------\n"
                    "| characters 1-3 = io STANDARD\n" +
                    table("STANDARD (IO_TYPE)", "LVCMOS  lvc\nPULLMODE  pm\n") + "\n" +
                    table("SLEW", "FAST  f\n") + table("IMPEDANCE", "50  5\n") +
                    table("PULLMODE", "PULLUP  u\n") + table("TERMVTT", "ON  v\n") +
                    "[Component] KVZR-12\n");
    EXPECT_TRUE(model.loadDevIoMaps());
    // A line with "=" is never a heading; tables behind the completing one
    // are never read.
    EXPECT_EQ(keysOf(model), (std::set<std::string>{"IO_TYPE", "SLEW", "IMP", "PULL"}));
    EXPECT_EQ(model._devIoMaps["PULL"], (Table{{"UP", "u"}}));
    EXPECT_EQ(model._devIoMaps["IO_TYPE"], (Table{{"LVCMOS", "lvc"}, {"PULLMODE", "pm"}}))
        << "a heading word in a body row is a row";
    EXPECT_FALSE(model._masterStream.is_open());
    EXPECT_TRUE(model._masterStream.good()) << "the next pass must be able to reopen it";
}

TEST(IoMapsScan, EndOfFileBeforeCompletionFails)
{
    ts::ProbeModel model;
    constructed(model, "ZR");
    model.setMaster(head + table("STANDARD", "LVCMOS  lvc\n") + table("SLEW", "FAST  f\n") +
                    table("TERMGND", "ON  g\n"));
    EXPECT_FALSE(model.loadDevIoMaps());
    EXPECT_EQ(keysOf(model), (std::set<std::string>{"IO_TYPE", "SLEW", "TERMGND"}));
    EXPECT_FALSE(model._masterStream.is_open());
    EXPECT_TRUE(model._masterStream.good());
}

TEST(IoMapsScan, PartWithoutAKnownFragmentNeverCompletes)
{
    ts::ProbeModel model;
    constructed(model, "QQ-9");
    model.setMaster(head + table("STANDARD", "LVCMOS  lvc\n") + table("SLEW", "FAST  f\n") +
                    table("PULLMODE", "NONE  n\n") + table("TERMVTT", "ON  v\n"));
    EXPECT_FALSE(model.loadDevIoMaps());
    EXPECT_EQ(model._devIoMaps.count("TERMVTT"), 1u) << "the scan runs to the end of the file";
}

TEST(IoMapsScan, EachFamilyFragmentCompletesOnItsOwnTables)
{
    std::string const master = head + table("STANDARD", "LVCMOS  lvc\n") +
                               table("SLEW", "FAST  f\n") + table("PULLMODE", "NONE  n\n") +
                               table("IMPEDANCE", "1.8  h\n") + table("TERMVCC", "ON  t\n") +
                               table("DIFFERENTIAL RESISTOR", "100  r\n") +
                               table("DIFFERENTIAL CURRENT", "3.5  c\n") + table("VCMT", "ON  m\n") +
                               table("TERMGND", "ON  g\n");
    std::set<std::string> const basic = {"IO_TYPE", "SLEW", "PULL"};
    std::set<std::string> const upToCurrent = {"IO_TYPE", "SLEW",    "PULL",   "IMP",
                                               "TERMVCC", "DIFFRES", "DIFFCUR"};
    auto with = [](std::set<std::string> keys, std::initializer_list<char const*> more) {
        keys.insert(more.begin(), more.end());
        return keys;
    };
    struct Case {
        std::string part;
        std::set<std::string> keys;
    };
    Case const cases[] = {
        {"ZR", basic},
        {"AN", basic},
        {"TN", basic},
        {"HZU-4000", basic},
        {"KRDH10-100", basic},
        {"A5", basic},
        {"A3", with(upToCurrent, {"VCMT", "DIFFRESISTOR"})},
        {"KJA3", with(upToCurrent, {"VCMT", "DIFFRESISTOR"})},
        {"MORVALLE", with(upToCurrent, {"DIFFDRIVE", "DIFFRESISTOR"})},
        {"KJ5-25", with(upToCurrent, {"DIFFDRIVE", "DIFFRESISTOR"})},
        {"HZU2-4000", with(upToCurrent, {"DIFFRESISTOR"})},
        {"HZU3-100", with(upToCurrent, {"DIFFRESISTOR"})},
        {"KRDH21-100", with(upToCurrent, {"DIFFRESISTOR"})},
    };
    for (Case const& c : cases) {
        ts::ProbeModel model;
        constructed(model, c.part);
        model.setMaster(master);
        EXPECT_TRUE(model.loadDevIoMaps()) << c.part;
        EXPECT_EQ(keysOf(model), c.keys) << c.part;
        if (model._devIoMaps.count("DIFFRESISTOR") != 0) {
            EXPECT_EQ(model._devIoMaps["DIFFRESISTOR"], (Table{{"100", "r"}})) << c.part;
        }
        if (model._devIoMaps.count("DIFFDRIVE") != 0) {
            EXPECT_EQ(model._devIoMaps["DIFFDRIVE"], (Table{{"3.5", "c"}})) << c.part;
        }
    }
}

class TablesComplete : public testing::Test {
protected:
    // A generator of part with the flags of positions set.
    void prepare(std::string const& part, std::initializer_list<int> positions)
    {
        model._partName = part;
        for (bool& flag : model._keyFieldPresent)
            flag = false;
        for (int position : positions)
            model._keyFieldPresent[position] = true;
    }
    ts::ProbeModel model;
};

TEST_F(TablesComplete, FiveBasicTablesAreEveryKnownFamilysMinimum)
{
    for (char const* part : {"ZR", "AN", "TN", "HZU", "KRD", "A", "KRDH2", "KJ", "MORVALLE", "A3"}) {
        for (int missing : {0, 3, 6, 7, 10}) {
            prepare(part, {0, 3, 6, 7, 10, 11, 12, 15, 16, 17, 18, 19});
            model._keyFieldPresent[missing] = false;
            EXPECT_FALSE(model.hasDoneLoadingIoMaps()) << part << " without " << missing;
        }
    }
    for (char const* part : {"ZR", "AN", "TN", "HZU", "KRD", "A", "B A"}) {
        prepare(part, {0, 3, 6, 7, 10});
        EXPECT_TRUE(model.hasDoneLoadingIoMaps()) << part;
    }
    // Fragments are searched in the whole stored part name.
    prepare(std::string("QQ\0ZR", 5), {0, 3, 6, 7, 10});
    EXPECT_TRUE(model.hasDoneLoadingIoMaps());
}

TEST_F(TablesComplete, PartWithoutAKnownFragmentIsNeverComplete)
{
    for (char const* part : {"QQ", "", "KV", "HZ2", "MORVLLE"}) {
        prepare(part, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20});
        EXPECT_FALSE(model.hasDoneLoadingIoMaps()) << part;
    }
}

TEST_F(TablesComplete, A3NeedsMultiDriveAndDifferentialCurrent)
{
    prepare("A3", {0, 3, 6, 7, 10, 11, 12, 16, 17});
    EXPECT_FALSE(model.hasDoneLoadingIoMaps());
    prepare("A3", {0, 3, 6, 7, 10, 11, 12, 15, 16});
    EXPECT_FALSE(model.hasDoneLoadingIoMaps());

    model._devIoMaps["DIFFRES"] = {{"100", "r"}};
    prepare("A3", {0, 3, 6, 7, 10, 15, 17});
    EXPECT_TRUE(model.hasDoneLoadingIoMaps());
    EXPECT_EQ(model._devIoMaps["DIFFRESISTOR"], (Table{{"100", "r"}}));
    EXPECT_EQ(model._devIoMaps.count("DIFFDRIVE"), 0u) << "only the resistor is copied here";

    // A table of its own is kept; an empty source copies nothing.
    model._devIoMaps["DIFFRESISTOR"] = {{"OFF", "a"}};
    EXPECT_TRUE(model.hasDoneLoadingIoMaps());
    EXPECT_EQ(model._devIoMaps["DIFFRESISTOR"], (Table{{"OFF", "a"}}));
    model._devIoMaps.clear();
    model._devIoMaps["DIFFRES"] = {};
    EXPECT_TRUE(model.hasDoneLoadingIoMaps());
    ASSERT_EQ(model._devIoMaps.count("DIFFRESISTOR"), 1u);
    EXPECT_TRUE(model._devIoMaps["DIFFRESISTOR"].empty());

    // "A3" comes before "KJ": the part needs no impedance table.
    prepare("KJA3", {0, 3, 6, 7, 10, 15, 17});
    EXPECT_TRUE(model.hasDoneLoadingIoMaps());
}

TEST_F(TablesComplete, MorvalleAndKjNeedResistorCurrentTermvccAndImpedance)
{
    for (char const* part : {"MORVALLE", "KJ5-25"}) {
        for (int missing : {11, 12, 16, 17}) {
            model._devIoMaps.clear();
            prepare(part, {0, 3, 6, 7, 10, 11, 12, 16, 17});
            model._keyFieldPresent[missing] = false;
            model._devIoMaps["DIFFCUR"] = {{"3.5", "c"}};
            EXPECT_FALSE(model.hasDoneLoadingIoMaps()) << part << " without " << missing;
            EXPECT_EQ(model._devIoMaps.count("DIFFDRIVE"), 0u) << part << ": no copy before completion";
        }
        model._devIoMaps.clear();
        model._devIoMaps["DIFFCUR"] = {{"3.5", "c"}};
        model._devIoMaps["DIFFRES"] = {{"100", "r"}};
        prepare(part, {0, 3, 6, 7, 10, 11, 12, 16, 17});
        EXPECT_TRUE(model.hasDoneLoadingIoMaps()) << part;
        EXPECT_EQ(model._devIoMaps["DIFFDRIVE"], (Table{{"3.5", "c"}})) << part;
        EXPECT_EQ(model._devIoMaps["DIFFRESISTOR"], (Table{{"100", "r"}})) << part;

        model._devIoMaps.clear();
        model._devIoMaps["DIFFCUR"] = {{"3.5", "c"}};
        model._devIoMaps["DIFFDRIVE"] = {{"HIGH", "d"}};
        EXPECT_TRUE(model.hasDoneLoadingIoMaps()) << part;
        EXPECT_EQ(model._devIoMaps["DIFFDRIVE"], (Table{{"HIGH", "d"}})) << part;
    }
}

TEST_F(TablesComplete, Hzu2Krdh2AndHzu3CopyTheResistorOnEveryEvaluation)
{
    for (char const* part : {"HZU2-4000", "KRDH21-100", "HZU3-100"}) {
        // The copy is made while the impedance and current tables are still
        // missing.
        model._devIoMaps.clear();
        model._devIoMaps["DIFFRES"] = {{"100", "r"}};
        prepare(part, {0, 3, 6, 7, 10});
        EXPECT_FALSE(model.hasDoneLoadingIoMaps()) << part;
        EXPECT_EQ(model._devIoMaps["DIFFRESISTOR"], (Table{{"100", "r"}})) << part;

        prepare(part, {0, 3, 6, 7, 10, 11});
        EXPECT_FALSE(model.hasDoneLoadingIoMaps()) << part;
        prepare(part, {0, 3, 6, 7, 10, 17});
        EXPECT_FALSE(model.hasDoneLoadingIoMaps()) << part;
        prepare(part, {0, 3, 6, 7, 10, 11, 17});
        EXPECT_TRUE(model.hasDoneLoadingIoMaps()) << part;

        // The evaluation leaves the key behind even when there is nothing
        // to copy.
        model._devIoMaps.clear();
        prepare(part, {0, 3, 6, 7, 10});
        EXPECT_FALSE(model.hasDoneLoadingIoMaps()) << part;
        ASSERT_EQ(model._devIoMaps.count("DIFFRESISTOR"), 1u) << part;
        EXPECT_TRUE(model._devIoMaps["DIFFRESISTOR"].empty()) << part;

        // Without the five basic tables the branch is not reached at all.
        model._devIoMaps.clear();
        model._devIoMaps["DIFFRES"] = {{"100", "r"}};
        prepare(part, {0, 3, 6, 7, 11, 17});
        EXPECT_FALSE(model.hasDoneLoadingIoMaps()) << part;
        EXPECT_EQ(model._devIoMaps.count("DIFFRESISTOR"), 0u) << part;
    }
}

} // namespace
