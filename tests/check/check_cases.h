#ifndef PAD2IBIS_TESTS_CHECK_CHECK_CASES_H
#define PAD2IBIS_TESTS_CHECK_CHECK_CASES_H

// Helpers of the checker's table-driven cases: a small file edited for each
// rule, and its findings as the command prints them for a file named "f".

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "check/ibis_check.h"
#include "support/test_support.h"

namespace checkcases {

using S = std::string;
using Lines = std::vector<S>;

inline Lines formatted(std::vector<ibischeck::Finding> const& findings)
{
    Lines lines;
    for (ibischeck::Finding const& finding : findings)
        lines.push_back(ibischeck::formatFinding("f", finding));
    return lines;
}

// text with each `from` replaced by its `to`.
inline S edited(S text, std::vector<std::pair<S, S>> const& edits)
{
    for (auto const& [from, to] : edits) {
        S::size_type at = text.find(from);
        EXPECT_NE(at, S::npos) << from;
        if (at != S::npos)
            text.replace(at, from.size(), to);
    }
    return text;
}

// A run of the program in dir, and what it must print and end with.
struct CommandCase {
    std::vector<S> args;
    int exitCode;
    S out, err = "";
};

inline void expectRuns(std::vector<CommandCase> const& cases, S const& dir)
{
    for (CommandCase const& c : cases) {
        SCOPED_TRACE(testing::PrintToString(c.args));
        ts::RunResult r = ts::runProgram(c.args, dir);
        EXPECT_EQ(r.exitCode, c.exitCode);
        EXPECT_EQ(r.out, c.out);
        EXPECT_EQ(r.err, c.err);
    }
}

} // namespace checkcases

#endif
