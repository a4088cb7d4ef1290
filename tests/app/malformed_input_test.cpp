// Files cut short or edited by hand: every run ends, with the report that
// what was read calls for.

#include <gtest/gtest.h>

#include "support/test_support.h"

namespace {

class MalformedInput : public testing::Test {
protected:
    void SetUp() override
    {
        pad = ts::readFile(ts::sourcePath("examples/demo.pad"));
        master = ts::readFile(ts::sourcePath("examples/kva3_master.ibs"));
    }

    // Runs the demo design, with the texts given, in a fresh directory.
    ts::RunResult run(std::string const& padText, std::string const& masterText)
    {
        ts::writeFile(dir.file("demo.pad"), padText);
        ts::writeFile(dir.file("master.ibs"), masterText);
        ts::RunResult result = ts::runProgram({"demo.pad", "master.ibs"}, dir.path());
        EXPECT_NE(result.exitCode, ts::kRunHung) << "the run did not end";
        return result;
    }
    std::string design() { return ts::readFile(dir.file("IBIS/demo.ibs")); }

    // The text up to and with the first line that holds what.
    static std::string upToLineWith(std::string const& text, std::string const& what)
    {
        std::string::size_type at = text.find(what);
        return text.substr(0, text.find('\n', at) + 1);
    }
    static bool endsWith(std::string const& text, std::string const& tail)
    {
        return text.size() >= tail.size() && text.compare(text.size() - tail.size(), tail.size(), tail) == 0;
    }

    ts::TempDir dir;
    std::string pad;
    std::string master;
    std::string const tooLong = std::string(300, '#') + "\n";
};

TEST_F(MalformedInput, NamingTableWithoutItsClosingLine)
{
    ts::RunResult r = run(pad, upToLineWith(master, "UP_CLAMP"));
    EXPECT_EQ(r.exitCode, 2);
    EXPECT_TRUE(endsWith(r.out, "Failed to load IBIS models.\n"));
}

TEST_F(MalformedInput, OverLongMasterLineBeforeTheTablesAreComplete)
{
    std::string::size_type tables = master.find("STANDARD (IO_TYPE)");
    ts::RunResult r = run(pad, master.substr(0, tables) + tooLong + master.substr(tables));
    EXPECT_EQ(r.exitCode, 2);
    EXPECT_TRUE(endsWith(r.out, "Failed to load IBIS models.\n"));
}

TEST_F(MalformedInput, PinListWithoutItsEnd)
{
    // The models listed are there; their blocks are not, so each gets only
    // its closing comment.
    ts::RunResult r = run(pad, upToLineWith(master, "IO_A12"));
    EXPECT_EQ(r.exitCode, 0);
    std::string text = design();
    EXPECT_TRUE(endsWith(text, "| End [Component]\n[End]\n"));
    EXPECT_NE(text.find("| End [Model] ttl330s160uaaaaaaaou\n"), std::string::npos);
    EXPECT_EQ(text.find("[Model]        "), std::string::npos);
}

TEST_F(MalformedInput, PackageBlockWithoutItsClosingLine)
{
    // Pin list and models ahead of the package keyword, which comes last
    // and whose block runs to the end of the file.
    std::string::size_type package = master.find("[Package]");
    std::string::size_type pins = master.find("[Pin]");
    std::string::size_type end = master.find("[End]");
    std::string reordered = master.substr(0, package) + master.substr(pins, end - pins) +
                            "[Package]\n|CABGA256\nR_pkg  0.2  0.1  0.3\nL_pkg  3nH  2nH  4nH\n";
    ts::RunResult r = run(pad, reordered);
    EXPECT_EQ(r.exitCode, 0);
    std::string text = design();
    EXPECT_NE(text.find("[Package]\n|CABGA256\nR_pkg  0.2  0.1  0.3\nL_pkg  3nH  2nH  4nH\n"),
              std::string::npos);
    EXPECT_TRUE(endsWith(text, "| End [Component]\n[End]\n"));
}

TEST_F(MalformedInput, LastModelBlockWithoutItsClosingLine)
{
    std::string cut = master.substr(0, master.rfind("| End [Model] ttl330s160uaaaaaaaou"));
    ts::RunResult r = run(pad, cut);
    EXPECT_EQ(r.exitCode, 0);
    std::string text = design();
    std::string::size_type block = text.find("[Model]        ttl330s160uaaaaaaaou");
    ASSERT_NE(block, std::string::npos);
    EXPECT_NE(text.find("dV/dt_f", block), std::string::npos) << "copied to the end of the file";
    EXPECT_TRUE(endsWith(text, "|\n| End [Model] ttl330s160uaaaaaaaou\n" + std::string("|") +
                                   std::string(72, '*') + "\n| End [Component]\n[End]\n"));
}

TEST_F(MalformedInput, OverLongLineInsideAModelBlockEndsItsCopy)
{
    std::string::size_type at = master.find("[Model]        lvc330s040uaaaaaaaou");
    std::string::size_type line = master.find('\n', master.find("C_comp", at)) + 1;
    ts::RunResult r = run(pad, master.substr(0, line) + tooLong + master.substr(line));
    EXPECT_EQ(r.exitCode, 0);
    std::string text = design();
    std::string::size_type block = text.find("[Model]        lvc330s040uaaaaaaaou");
    std::string::size_type end = text.find("| End [Model] lvc330s040uaaaaaaaou");
    ASSERT_NE(block, std::string::npos);
    ASSERT_NE(end, std::string::npos);
    std::string copied = text.substr(block, end - block);
    EXPECT_NE(copied.find("C_comp"), std::string::npos);
    EXPECT_EQ(copied.find("[Pulldown]"), std::string::npos) << "nothing behind the long line";
    EXPECT_TRUE(endsWith(text, "| End [Component]\n[End]\n"));
}

TEST_F(MalformedInput, UnclosedBankTableAtTheEndOfTheReport)
{
    ts::RunResult r = run(upToLineWith(pad, "| 3    | 1.8V  |"), master);
    EXPECT_EQ(r.exitCode, 0);
    EXPECT_NE(design().find("led[0]"), std::string::npos) << "the signals stay";
}

TEST_F(MalformedInput, OverLongPadLineAheadOfThePinTable)
{
    std::string::size_type table = pad.find("Pinout by Port Name:");
    ts::RunResult r = run(pad.substr(0, table) + tooLong + pad.substr(table), master);
    EXPECT_EQ(r.exitCode, 2);
    EXPECT_TRUE(endsWith(r.out, "Failed to load Iobuf information from the pad file demo.pad.\n"));
}

TEST_F(MalformedInput, BinaryJunkIsNoPadReport)
{
    std::string junk;
    for (int i = 0; i < 4096; ++i)
        junk += static_cast<char>((i * 7919) % 256);
    ts::RunResult r = run(junk, master);
    EXPECT_EQ(r.exitCode, 2);
}

} // namespace
