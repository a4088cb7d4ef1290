// Files cut short or edited by hand: every run ends, with the report that what was read calls for.

#include <gtest/gtest.h>

#include "support/test_support.h"

namespace {

using S = std::string;

TEST(MalformedInput, EveryRunEndsWithTheReportWhatWasReadCallsFor)
{
    // The text up to and with the first line that holds what.
    auto upToLine = [](S const& text, S const& what) { return text.substr(0, text.find('\n', text.find(what)) + 1); };
    auto endsWith = [](S const& text, S const& tail) {
        return text.size() >= tail.size() && text.rfind(tail) == text.size() - tail.size();
    };
    S const pad = ts::readFile(ts::sourcePath("examples/demo.pad"));
    S const master = ts::readFile(ts::sourcePath("examples/kva3_master.ibs"));
    S const tooLong = S(300, '#') + "\n", end = "| End [Component]\n[End]\n";
    S::size_type const tables = master.find("STANDARD (IO_TYPE)"), package = master.find("[Package]"),
                       pins = master.find("[Pin]"), last = master.find("[End]"),
                       model = master.find("[Model]        lvc330s040uaaaaaaaou"),
                       comp = master.find('\n', master.find("C_comp", model)) + 1,
                       pinTable = pad.find("Pinout by Port Name:");
    S const packageLast = "[Package]\n|CABGA256\nR_pkg  0.2  0.1  0.3\nL_pkg  3nH  2nH  4nH\n";
    S junk;
    for (int i = 0; i < 4096; ++i)
        junk += static_cast<char>((i * 7919) % 256);

    // stdout or design: the text ends so. inOrder: texts of the design in this order; one that
    // starts with "!" must not stand between its neighbours.
    struct Case { char const* what; S pad, master; int exit; S stdoutEnd, designEnd; std::vector<S> inOrder; };
    Case const cases[] = {
        {"naming table without its closing line", pad, upToLine(master, "UP_CLAMP"), 2,
         "Failed to load IBIS models.\n", "", {}},
        {"over-long master line ahead of the tables", pad, master.substr(0, tables) + tooLong + master.substr(tables),
         2, "Failed to load IBIS models.\n", "", {}},
        // The models listed are there but not their blocks: each gets its closing comment only.
        {"pin list without its end", pad, upToLine(master, "IO_A12"), 0, "", end,
         {"![Model]        ", "| End [Model] ttl330s160uaaaaaaaou\n", "![Model]        "}},
        // Package keyword last, its block running to the end of the file.
        {"package block without its closing line", pad,
         master.substr(0, package) + master.substr(pins, last - pins) + packageLast, 0, "", end, {packageLast}},
        {"last model block without its closing line", pad,
         master.substr(0, master.rfind("| End [Model] ttl330s160uaaaaaaaou")), 0, "",
         "|\n| End [Model] ttl330s160uaaaaaaaou\n|" + S(72, '*') + "\n" + end,
         {"[Model]        ttl330s160uaaaaaaaou", "dV/dt_f"}}, // copied to the end of the file
        {"over-long line inside a model block", pad, master.substr(0, comp) + tooLong + master.substr(comp), 0, "", end,
         {"[Model]        lvc330s040uaaaaaaaou", "C_comp", "![Pulldown]", "| End [Model] lvc330s040uaaaaaaaou"}},
        {"unclosed bank table at the end of the report", upToLine(pad, "| 3    | 1.8V  |"), master, 0, "", "",
         {"led[0]"}}, // the signals stay
        {"over-long pad line ahead of the pin table", pad.substr(0, pinTable) + tooLong + pad.substr(pinTable),
         master, 2, "Failed to load Iobuf information from the pad file demo.pad.\n", "", {}},
        {"binary junk is no pad report", junk, master, 2, "", "", {}}};
    for (Case const& c : cases) {
        SCOPED_TRACE(c.what);
        ts::TempDir dir;
        ts::writeFile(dir.file("demo.pad"), c.pad);
        ts::writeFile(dir.file("master.ibs"), c.master);
        ts::RunResult r = ts::runLegacy({"demo.pad", "master.ibs"}, dir.path());
        ASSERT_NE(r.exitCode, ts::kRunHung) << "the run did not end";
        EXPECT_EQ(r.exitCode, c.exit);
        EXPECT_TRUE(endsWith(r.out, c.stdoutEnd)) << r.out;
        S const design = c.exit == 0 ? ts::readFile(dir.file("IBIS/demo.ibs")) : "";
        EXPECT_TRUE(endsWith(design, c.designEnd));
        S::size_type at = 0;
        for (size_t i = 0; i < c.inOrder.size(); ++i) {
            if (c.inOrder[i][0] != '!') {
                at = design.find(c.inOrder[i], at);
                EXPECT_NE(at, S::npos) << c.inOrder[i];
                continue;
            }
            S::size_type next = i + 1 < c.inOrder.size() ? design.find(c.inOrder[i + 1], at) : S::npos;
            EXPECT_EQ(design.substr(at, next == S::npos ? S::npos : next - at).find(c.inOrder[i].substr(1)), S::npos)
                << c.inOrder[i];
        }
    }
}

} // namespace
