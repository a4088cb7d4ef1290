// A whole run on a master file with the edges the model blocks and the
// passes over the master meet: blocks out of name order, a bracketed note
// that names a model without "[Model]", a line that starts
// with a model's name and mentions "[Model]" ahead of its block, a repeated
// [Model] line, one of 255 characters, two "[Model]" on one line, CR, NUL
// and bytes above 127 inside a block, lines of 254 and 255 characters, one
// of 256 that ends every pass, and a last line without line end. The
// expected design file is the one that the program wrote before its master
// passes were reworked.

#include <gtest/gtest.h>

#include "writer/writer_probe.h"

namespace {

TEST(WholeRun, MasterWithEdgeLines)
{
    ts::TempDir work;
    std::string const cwd = wt::realPath(work.path());
    ts::writeFile(cwd + "/design.pad", ts::readFile(wt::dataPath("design.pad")));
    ts::RunResult result = ts::runProgram({"design.pad", wt::dataPath("edges_master.ibs")}, cwd);
    EXPECT_EQ(result.exitCode, 0) << result.err;
    EXPECT_EQ(ts::readFile(cwd + "/IBIS/design.ibs"), ts::readFile(wt::dataPath("edges_design.ibs.expected")));
    std::string::size_type const listing = result.out.rfind("-----------------------\n");
    ASSERT_NE(listing, std::string::npos);
    EXPECT_EQ(result.out.substr(listing + 24),
              "WARNING: Input model \"lvc330axxxuaaaaaaain\" for signal \"btn_n\" is not available.\n"
              "Setting to \"lvc330axxxuaaaaaaaio\" Available IBIS model.\n"
              "WARNING: Ibis Model \"lvc330f040naaaaaaaou\" for the signal \"dbg_out\" is not available.\n"
              "Created Design Models.\n\nGenerating: \"" + cwd + "/IBIS/design.ibs\"\n\n"
              "Design IBIS Models are generated for board level analysis.\n"
              "You can check the master ibis file at <Brinmark>/cae_library/ for models,\n"
              "if the model is not present in the master ibis file, please contact\n"
              "Corvane Technical Support to make a request for this model.\n");
}

} // namespace
