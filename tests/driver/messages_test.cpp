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
    // Posted, each message carries as many arguments as its catalogue entry says. The messages
    // of the whole runs and of the readers' exit paths are pinned there, in both forms.
    struct { IbsMessage m; char const* id; std::vector<char const*> args; char const* text; } const cases[] = {
        {IBS_MSG_1003, "1003", {}, "Failed to load IBIS models.\n"},
        {IBS_MSG_1004, "1004", {}, "Failed to write out IBIS models.\n"},
        {IBS_MSG_1012, "1012", {"m.ib"}, "ERROR: Ibis file m.ib should have .ibs extension.\n"},
        {IBS_MSG_1014, "1014", {"d.txt"}, "ERROR: report file d.txt should have .pad extension.\n"},
        {IBS_MSG_1016, "1016", {"d.pad"}, "Failed to load Iobuf information from the pad file d.pad.\n"},
        {IBS_MSG_1022, "1022", {"DRIVE"}, "DRIVE \n"},
        {IBS_MSG_1023, "1023", {"8mA", "080"}, "8mA 080\n"},
        {IBS_MSG_1034, "1034", {"/w/IBIS"}, "ERROR: Failed to create subdirectory '/w/IBIS'.\n"},
        {IBS_MSG_1035, "1035", {}, "There is no SERDES used in the design.\n\n"}};
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
