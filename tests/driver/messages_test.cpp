// The reporting convention: fallback text on standard output without a message flow, posted by
// id with its arguments on standard error with one.

#include <gtest/gtest.h>

#include "driver/messages.h"
#include "host/msgmanager.h"
#include "support/test_support.h"

namespace {

using S = std::string;

// What a report prints, and with flow 1 what it posts behind "|".
S report(IbsMessage m, std::vector<char const*> const& a, int flow = 0)
{
    ts::resetGeneratorStatics();
    UT_MSGMAN::m_msgFlow = flow;
    testing::internal::CaptureStderr();
    S out = ts::captureStdout([&] {
        if (a.empty()) ibsReport(m);
        else if (a.size() == 1) ibsReport(m, {a[0]});
        else if (a.size() == 2) ibsReport(m, {a[0], a[1]});
        else ibsReport(m, {a[0], a[1], a[2]});
    });
    S err = testing::internal::GetCapturedStderr();
    ts::resetGeneratorStatics();
    return err.empty() ? out : out + "|" + err;
}

TEST(Messages, FallbackTextsAndPostsWithTheirArguments)
{
    // A text without its own line end gets one; the puts texts get one even behind their own.
    // Posted, each message carries as many arguments as its catalogue entry says.
    struct { IbsMessage m; char const* id; std::vector<char const*> args; char const* text; } const cases[] = {
        {IBS_MSG_1003, "1003", {}, "Failed to load IBIS models.\n"},
        {IBS_MSG_1004, "1004", {}, "Failed to write out IBIS models.\n"},
        {IBS_MSG_1005, "1005", {}, "You can check the master ibis file at <Brinmark>/cae_library/ for models,\n"
                           "if the model is not present in the master ibis file, please contact\n"
                           "Corvane Technical Support to make a request for this model.\n"},
        {IBS_MSG_1010, "1010", {"lvc330a080aaaaaaaaio", "d[0]"},
         "WARNING: Ibis Model \"lvc330a080aaaaaaaaio\" for the signal \"d[0]\" is not available.\n"},
        {IBS_MSG_1011, "1011", {"k", "s", "u"},
         "WARNING: Ibis Model \"k\" for the signal \"s\" is not available. Substituting model \"u\".\n"},
        {IBS_MSG_1012, "1012", {"m.ib"}, "ERROR: Ibis file m.ib should have .ibs extension.\n"},
        {IBS_MSG_1014, "1014", {"d.txt"}, "ERROR: report file d.txt should have .pad extension.\n"},
        {IBS_MSG_1015, "1015", {"x.pad"}, "Error opening file: x.pad\n"},
        {IBS_MSG_1016, "1016", {"d.pad"}, "Failed to load Iobuf information from the pad file d.pad.\n"},
        {IBS_MSG_1017, "1017", {}, "Created Design Models.\n"},
        {IBS_MSG_1019, "1019", {}, "\nNote: The IBIS models for True Differential have a known issue in the IBIS data. "
                           "Please use TN HSPICE models instead to run simulation.\n"},
        {IBS_MSG_1022, "1022", {"DRIVE"}, "DRIVE \n"},
        {IBS_MSG_1023, "1023", {"8mA", "080"}, "8mA 080\n"},
        {IBS_MSG_1024, "1024", {"Slew"}, "ERROR: Failed to load Slew info from the ibs file.\n"},
        {IBS_MSG_1025, "1025", {"A3", "KVANR4"}, "ERROR: The Design and Master IBIS files are different.\n"
                                                 "       Part name is A3 while IBIS file component name is KVANR4.\n"},
        {IBS_MSG_1026, "1026", {"CABGA256", "m.ibs"},
         "WARNING: Package name \"CABGA256\" is not found in the master ibis file: m.ibs\n"},
        {IBS_MSG_1027, "1027", {"7"}, "Unsupported Bank_vccio found 7.\n"},
        {IBS_MSG_1028, "1028", {"k", "s"}, "WARNING: Input model \"k\" for signal \"s\" is not available.\n"},
        {IBS_MSG_1029, "1029", {"k"}, "Setting to \"k\" Available IBIS model.\n"},
        {IBS_MSG_1030, "1030", {"/w/IBIS/d.ibs"}, "\nGenerating: \"/w/IBIS/d.ibs\"\n\n"},
        {IBS_MSG_1031, "1031", {}, "Design IBIS Models are generated for board level analysis.\n"},
        {IBS_MSG_1033, "1033", {"x.ami"}, "ERROR: The file 'x.ami' is not exist.\n"},
        {IBS_MSG_1034, "1034", {"/w/IBIS"}, "ERROR: Failed to create subdirectory '/w/IBIS'.\n"},
        {IBS_MSG_1035, "1035", {}, "There is no SERDES used in the design.\n\n"},
        {IBS_MSG_1036, "1036", {}, "Design IBIS AMI Models are generated for board level analysis.\n"}};
    for (auto const& c : cases) {
        EXPECT_EQ(report(c.m, c.args), c.text) << c.id;
        S posted = S("|padmodel-") + c.id;
        for (char const* arg : c.args)
            posted += S("\t") + arg;
        EXPECT_EQ(report(c.m, c.args, 1), posted + "\n");
    }
    EXPECT_EQ(report(IBS_MSG_1017, {}, 2), "Created Design Models.\n") << "only flow 1 posts";
}

} // namespace
