// Which device a pad report is for (family, reduced part name with its NUL), the file names
// of a run, the device status line of the master file, and the family rules kept beside.

#include <gtest/gtest.h>

#include "driver/basibsgen.h"
#include "host/msgmanager.h"
#include "support/generator_probe.h"

namespace {

using S = std::string;
using testing::ExitedWithCode;

TEST(DeviceIdentification, FetchDevNameFirstRuleThatHoldsWins)
{
    // "ZR2-" beats every other rule; HZU2 serves the HZU3 parts and needs its dash; KRD stands
    // in for HZU; KVA3 without its dash does not count.
    std::pair<char const*, char const*> const cases[] = {
        {"KVZR2-12", "KVZR2"}, {"KVA3-ZR2-40", "KVZR2"}, {"KVA3-40E-6BG256C", "KVA3"}, {"KBA3-70E", "KVA3"},
        {"KVA4-25F", "KVA4"}, {"KVAN-100", "KVAN"}, {"KVZR-12", "KVZR"}, {"HZU2-4000", "HZU2"},
        {"HZU3-100", "HZU2"}, {"HZU2X", "HZU"}, {"HZU-1200", "HZU"}, {"KVTN-7", "KVTN"}, {"KVA2-300", "KVA2"},
        {"KRDH21-100", "HZU2"}, {"KRDH10-100", "HZU"}, {"KJ5-25", "KJ"}, {"KVA3KVA4-9", "KVA4"}};
    for (auto const& c : cases) {
        S family = "unchanged";
        IBIS_MODEL::fetch_dev_name(c.first, family);
        EXPECT_EQ(family, c.second) << c.first;
    }
    // KJ counts only at the start; a part no rule takes is fatal.
    S family;
    for (char const* part : {"XKJ5-25", "KVA4Y-40"})
        EXPECT_EXIT((ts::stdoutToStderr(), IBIS_MODEL::fetch_dev_name(part, family)), ExitedWithCode(1),
                    "^Invalid device name.\n$") << part;
    EXPECT_EXIT((UT_MSGMAN::m_msgFlow = 1, IBIS_MODEL::fetch_dev_name("", family)), ExitedWithCode(1),
                "^padmodel-1013\n$");
}

TEST(DeviceIdentification, GetPartNameHidesTheRestBehindANul)
{
    // The whole stored text: searches still see what stands behind the NUL.
    std::pair<char const*, S> const cases[] = {
        {"KVA3-40E-6BG256C", S("A3\0" "40E-6BG256C", 14)}, // a digit ahead of "-" stays
        {"LCVN40-7", S("N\0" "0-7", 5)}, {"KVA9", S("A\0", 2)}, // any other digit goes, a last one too
        {"HZU2-4000HC", "HZU2-4000HC"}, {"KRDH21-100", "KRDH21-100"},  // no V
        {"KJ5V-25", "KJ5V-25"}, {"XZU3KV9-1", "XZU3KV9-1"},            // KJ or ZU3KV anywhere
        {"KAV", ""}, {"KVAXE", "AXE"},                                  // nothing or no digit behind the V
        {"KVA4Y-40", "MORVALLE"}, {"KBA4Y-12", "MORVALLE"}, {"KVA5Y-80", "MORVALLE"}, {"KBA5Y-3", "MORVALLE"},
        {"XKVA4Y-40", S("A\0Y-40", 6)}};                               // MORVALLE only at the start
    ts::ProbeModel model;
    for (auto const& c : cases) {
        S part = c.first;
        model.getPartName(part);
        EXPECT_EQ(part, c.second) << c.first;
    }
}

TEST(DeviceIdentification, GetDevNameReadsTheFirstPartTypeLine)
{
    // The first line is never searched, the keyword is case sensitive, the first such line wins;
    // an over-long line ends the search; a last line without line end is still searched.
    struct { S text; char const* family; char const* devName; } const cases[] = {
        {"title\nDate\nPART TYPE:   KVA3-40E-6BG256C  extra\n", "KVA3", "KVA3-40E-6BG256C"},
        {"PART TYPE: KVA2-1\nPart Type: KVA3-40E\n", "kept", ""},
        {"t\nPART TYPE: KVA2-1\nPART TYPE: KVA3-40E\n", "KVA2", "KVA2-1"},
        {"t\n" + S(300, 'x') + "\nPART TYPE: KVA3-40E\n", "kept", ""},
        {"t\nPART TYPE: KVZR-12", "KVZR", "KVZR-12"}};
    ts::TempDir dir;
    S family;
    for (auto const& c : cases) {
        ts::resetGeneratorStatics();
        ts::writeFile(dir.file("d.pad"), c.text);
        family = "kept";
        IBIS_MODEL::getDevName(dir.file("d.pad"), family);
        EXPECT_EQ(family, c.family) << c.text;
        EXPECT_EQ(IBIS_MODEL::_input_dev_name, c.devName) << c.text;
    }
    EXPECT_EXIT((ts::stdoutToStderr(), IBIS_MODEL::getDevName("design.txt", family)), ExitedWithCode(2),
                "^ERROR: report file design.txt should have .pad extension.\n$");
    EXPECT_EXIT((ts::stdoutToStderr(), IBIS_MODEL::getDevName(dir.file("absent.pad"), family)),
                ExitedWithCode(1), "^Error opening file: .*/absent.pad\n$");
    EXPECT_EXIT((UT_MSGMAN::m_msgFlow = 1, IBIS_MODEL::getDevName("x.pad.gone", family)), ExitedWithCode(1),
                "^padmodel-1015\tx.pad.gone\n$");
}

TEST(FileNames, InitFilesAndSplitFileName)
{
    ts::resetGeneratorStatics();
    ts::ProbeModel model;
    model._deviceStatus = "old";
    model.initFiles("work/demo.pad", "lib/kva3.ibs");
    EXPECT_EQ((std::vector<S>{model._padFile, model._masterIbisFile, model._designIbisFile, model._deviceStatus}),
              (std::vector<S>{"work/demo.pad", "lib/kva3.ibs", "work/demo.ibs", ""}));
    model.initFiles("run.v2/demo.pad.txt", "lib/kva3.ibs.gz"); // containment tests
    EXPECT_EQ(model._designIbisFile, "run.v2/demo.pad.ibs");
    EXPECT_EXIT((ts::stdoutToStderr(), model.initFiles("demo.rpt", "m.ibs")), ExitedWithCode(2),
                "^ERROR: report file demo.rpt should have .pad extension.\n$");
    EXPECT_EXIT((ts::stdoutToStderr(), model.initFiles("demo.pad", "master.txt")), ExitedWithCode(2),
                "^ERROR: Ibis file master.txt should have .ibs extension.\n$");

    // A slash goes behind a directory of more than two characters that lacks one; an empty
    // extension becomes a point; the drive is always empty.
    std::vector<S> const cases[] = {{"/cae/lib/kva3.ibs", "/cae/lib/", "kva3", ".ibs"}, {"kva3", "", "kva3", "."},
                                    {"./kva3.ibs", "./", "kva3", ".ibs"}, {"a\\x.ibs", "a\\", "x", ".ibs"},
                                    {"C:\\lib\\x.ibs", "C:\\lib\\/", "x", ".ibs"}};
    for (auto const& c : cases) {
        char drive[256] = "junk", directory[256], name[256], extension[256];
        model.split_file_name(c[0].c_str(), drive, directory, name, extension);
        EXPECT_EQ((std::vector<S>{directory, name, extension, drive}), (std::vector<S>{c[1], c[2], c[3], ""})) << c[0];
    }
}

TEST(FileNames, DeviceStatusFromTheNotesInUpperCase)
{
    ts::resetGeneratorStatics();
    S const master = "[IBIS Ver]   5.0\n|KVA3-40E-6BG256C is mentioned ahead of the notes\n[Notes]\n"
                     "| Device: kva3-40e-6bg256c preliminary\n| Naming convention\n| KVA3-17E-6BG256C production\n";
    // Never ahead of the notes nor behind the naming convention; the heading line itself counts.
    struct { S master; char const* devName; char const* status; } const cases[] = {
        {master, "KVA3-40E-6BG256C", "KVA3-40E-6BG256C PRELIMINARY"}, {master, "KVA3-17E-6BG256C", ""},
        {"x\n[NOTES] KVA2 sample status\n", "KVA2", "KVA2 SAMPLE STATUS"}};
    ts::ProbeModel model;
    S status;
    for (auto const& c : cases) {
        IBIS_MODEL::_input_dev_name = c.devName;
        model.setMaster(c.master);
        status.clear();
        model.get_device_status(model._masterIbisFile.c_str(), status);
        EXPECT_EQ(status, c.status) << c.devName;
    }
    IBIS_MODEL::_is_brinmark_flow = true; // fetched by initFiles in the brinmark flow
    IBIS_MODEL::_input_dev_name = "KVA3-40E-6BG256C";
    model.setMaster(master);
    model.initFiles("d.pad", model._masterIbisFile.c_str());
    EXPECT_EQ(model._deviceStatus, "KVA3-40E-6BG256C PRELIMINARY");
    ts::resetGeneratorStatics();
    EXPECT_EXIT((ts::stdoutToStderr(), model.get_device_status("/nonexistent/m.ibs", status)), ExitedWithCode(1),
                "^Error opening file: /nonexistent/m.ibs\n$");
}

TEST(FamilyRules, StripOffLeadingUnderscoresAndKeepOutAsOu)
{
    ts::ProbeModel model;
    auto strip = [&](S const& family, S value) {
        model._family = family;
        model.strip_off_leading_underscores(value);
        return value;
    };
    std::vector<S> const cases[] = {
        {"KVA3", "", ""}, {"KVA3", "KEEPER", "BUSHOLD"}, {"KVA4", "KEEPER", "KEEPER"},
        {"KVA3", "_PCICLAMP", "PCICLAMP"}, {"KVA3", "__CLAMP", "_CLAMP"}, // one underscore goes, despite the name
        {"KVA3", "NONE_SCHMITT", "SCHMITT"}, {"KVA3", "NONE", "NONE"}, {"KVA3", "_NONE_X", "NONE_X"},
        {"HZU2", "FAILSAFE_NONE_UP", "UP"}, {"HZU3", "FAILSAFE_DOWN", "DOWN"}, // FAILSAFE_ on HZU2 and HZU3 only
        {"HZU", "FAILSAFE_DOWN", "FAILSAFE_DOWN"}, {"KVA3", "FAILSAFE_NONE_UP", "FAILSAFE_NONE_UP"},
        {"KVA4", "UP", "UP"}};
    for (auto const& c : cases)
        EXPECT_EQ(strip(c[0], c[1]), c[2]) << c[0] << " " << c[1];
    for (char const* family : {"KVA4Y", "KVA5Y", "KJ"}) // the clamp or nothing
        for (auto const& c : {std::pair<S, S>{"PCICLAMP_X", "CLAMP"}, {"UP", "NONE"}, {"_CLAMP", "CLAMP"},
                              {"UP_CLAMP", "CLAMP"}})
            EXPECT_EQ(strip(family, c.first), c.second) << family << " " << c.first;

    for (auto const& c : std::vector<std::pair<char const*, bool>>{{"KVAN", false}, {"KVZR", false}, {"HZU", false},
             {"HZU2", true}, {"KVZR2", true}, {"KVA3", true}, {"KJ", true}, {"", true}}) { // whole family compared
        model._family = c.first;
        EXPECT_EQ(model.keepOutAsOu(), c.second) << c.first;
    }
}

TEST(FamilyRules, PrintIobufMapWalksTheNamingMapsInBothModes)
{
    ts::resetGeneratorStatics();
    ts::ProbeModel model;
    model._devIoMaps["SLEW"] = {{"FAST", "f"}, {"SLOW", "s"}};
    model._devIoMaps["DRIVE"] = {{"8mA", "080"}};
    EXPECT_EQ(ts::captureStdout([&] { model.printIobufMap(); }), "DRIVE \n8mA 080\nSLEW \nFAST f\nSLOW s\n");
    UT_MSGMAN::m_msgFlow = 1;
    testing::internal::CaptureStderr();
    EXPECT_EQ(ts::captureStdout([&] { model.printIobufMap(); }), "");
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "padmodel-1022\tDRIVE\npadmodel-1023\t8mA\t080\npadmodel-1022\tSLEW\npadmodel-1023\tFAST\tf\n"
              "padmodel-1023\tSLOW\ts\n");
    ts::resetGeneratorStatics();
}

} // namespace
