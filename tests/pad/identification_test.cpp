// Which family a pad report's device belongs to, and the file names of a run.

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

} // namespace
