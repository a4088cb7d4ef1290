// Whole runs of the pad2ibis program on small pad reports and master files:
// each design IBIS file equals the expected one byte for byte and passes the
// IBIS checker without an error, and the run prints and leaves what it
// should.

#include <gtest/gtest.h>

#include <sys/stat.h>

#include "check/ibis_check.h"
#include "writer/writer_probe.h"

namespace {

// No finding but the expected ones: the masters here keep their lines
// within 120 too.
void expectSound(std::string const& text, std::string const& name, std::vector<std::string> const& expected = {})
{
    std::vector<std::string> findings;
    for (ibischeck::Finding const& finding : ibischeck::checkDesignFile(text, name))
        findings.push_back(ibischeck::formatFinding(name, finding));
    EXPECT_EQ(findings, expected);
}

// "$C" stands for the run's directory, "$M" for the master file.
std::string filled(std::string text, std::string const& cwd, std::string const& master)
{
    for (auto at = text.find('$'); at != std::string::npos; at = text.find('$', at + 1))
        text.replace(at, 2, text[at + 1] == 'C' ? cwd : master);
    return text;
}

std::string const created = "Created Design Models.\n";
std::string const advice = "You can check the master ibis file at <Brinmark>/cae_library/ for models,\n"
                           "if the model is not present in the master ibis file, please contact\n"
                           "Corvane Technical Support to make a request for this model.\n";
std::string const packageFile = "\nGenerating package file:  \"$C/IBIS/kx3_master_6bg256c_bg.pkg\"\n\n";
std::string generating(std::string const& name)
{
    return "\nGenerating: \"$C/IBIS/" + name + "\"\n\nDesign IBIS Models are generated for board level analysis.\n";
}
std::string btnFiles(std::string const& stem, std::vector<char const*> numbers)
{
    std::string text = numbers.size() == 1 ? "\nGenerating BTN IBIS file:\n" : "\nGenerating BTN IBIS files:\n";
    for (char const* number : numbers)
        text += "    $C/IBIS\\" + stem + "_btn" + number + ".ibs\n";
    return text + "\n";
}

// Signal names that only --truncate brings within the width of the [Pin]
// column.
std::vector<std::string> const longSignals = {
    "long_names.ibs:74: warning: signal name of pin F1 has 48 characters; at most 40",
    "long_names.ibs:75: warning: signal name of pin F2 has 47 characters; at most 40"};
std::string const longNames =
    "WARNING: Ibis Model \"lvc330f040naaaaaaaou\" for the signal \"top/u_dbg/debug_output_fast_4ma\" is not "
    "available.\n" + created + generating("long_names.ibs") + advice;

std::string const vargonWarnings =
    "WARNING: Ibis Model \"lvc250axxxuaaaaaaain\" for the signal \"btn\" is not available. Substituting model "
    "\"lvc250axxxaaaaaaaain\".\n"
    "WARNING: Ibis Model \"ss2180fxxxa5aa7daaio\" for the signal \"ddr_dq\" is not available. Substituting model "
    "\"ss2180axxxaaaaaaaaio\".\n"
    "WARNING: Ibis Model \"hs1180fxxxaaaaaaaaou\" for the signal \"hstl_out\" is not available.\n"
    "WARNING: Ibis Model \"lvc330f240daaaaaaaou\" for the signal \"led1\" is not available. Substituting model "
    "\"lvc330axxxaaaaaaaaio\".\n"
    "WARNING: Ibis Model \"lvd250axxxaaaaaaa3ou\" for the signal \"lvds_out\" is not available. Substituting model "
    "\"lvd250axxxaaaaaaa3io\".\n"
    "WARNING: Ibis Model \"lvc330a080uaaaaaaaod\" for the signal \"scl\" is not available. Substituting model "
    "\"lvc330a080uaaaaaaaio\".\n"
    "WARNING: Ibis Model \"ss1330axxxaaaaaaaaio\" for the signal \"sstl_io\" is not available.\n";

// The demo on the example master, whose package model file lies beside it.
std::string const demoOut =
    "WARNING: Ibis Model \"lvc250axxxnaaaaaaain\" for the signal \"eth_crs\" is not available.\n"
    "WARNING: Ibis Model \"lvc250s060kaaaaaaaou\" for the signal \"eth_mdc\" is not available.\n"
    "WARNING: Ibis Model \"lvc330s120naaaaaaaou\" for the signal \"led[4]\" is not available.\n"
    "WARNING: Ibis Model \"pci330fxxxaaaaaaaaio\" for the signal \"pci_ad[0]\" is not available.\n"
    "WARNING: Ibis Model \"lvc120axxxdaaaaaaain\" for the signal \"sense_in\" is not available.\n"
    "WARNING: Input model \"ttl330axxxnaaaaaaain\" for signal \"spi_miso\" is not available.\n"
    "Setting to \"ttl330axxxnaaaaaaaio\" Available IBIS model.\n" +
    created + generating("demo.ibs") + "\nGenerating package file:  \"$C/IBIS/kva3_master_6bg256c_bg.pkg\"\n\n" +
    advice;

TEST(WholeRun, DesignFilesAndWhatTheRunPrints)
{
    struct Case {
        std::string pad, master;
        std::vector<std::string> options;
        std::string produced, expected; // expected "": structural check only
        std::string out;                // what is printed behind the signal listing
        std::vector<std::string> copies = {}, absent = {}; // in IBIS/; a package file there lies beside the master
        std::string err = "";
        std::string from = "tests/writer/data/"; // where pad report, master and copies lie
        std::vector<std::string> findings = {};  // of the design file check
    } const cases[] = {
        {"design.pad", "kx3_master.ibs", {}, "design.ibs", "design.ibs.expected",
         "WARNING: Input model \"lvc330axxxuaaaaaaain\" for signal \"btn_n\" is not available.\n"
         "Setting to \"lvc330axxxuaaaaaaaio\" Available IBIS model.\n"
         "WARNING: Ibis Model \"lvc330f040naaaaaaaou\" for the signal \"dbg_out\" is not available.\n" +
             created + generating("design.ibs") + packageFile + advice,
         {"kx3_master_6bg256c_bg.pkg"}},
        {"one_led_cabga400.pad", "kx3_master.ibs", {}, "one_led_cabga400.ibs", "one_led_cabga400.ibs.expected",
         created + "WARNING: Package name \"CABGA400\" is not found in the master ibis file: $M\n" +
             generating("one_led_cabga400.ibs")},
        {"no_model.pad", "kx3_master.ibs", {}, "no_model.ibs", "no_model.ibs.expected",
         "WARNING: Ibis Model \"lvc330f040naaaaaaaou\" for the signal \"dbg_out\" is not available.\n"
         "WARNING: Ibis Model \"lvc330axxxnaaaaaaain\" for the signal \"wake\" is not available.\n" +
             generating("no_model.ibs") + advice},
        {"one_led.pad", "kx3_master.ibs", {"--dphy"}, "one_led.ibs", "one_led_dphy.ibs.expected",
         created + generating("one_led.ibs")},
        {"one_led.pad", "kx3_master.ibs", {"--brinmark"}, "one_led.ibs", "one_led_brinmark.ibs.expected",
         created + generating("one_led.ibs")},
        {"one_led.pad", "kx3_master.ibs", {"--btn", "2"}, "one_led_zu2.ibs", "one_led_zu2.ibs.expected",
         created + generating("one_led_zu2.ibs") + btnFiles("one_led", {"0", "1"}) + packageFile,
         {"one_led_btn0.ibs", "one_led_btn1.ibs", "kx3_master_6bg256c_bg.pkg"}, {"one_led.ibs", "one_led_btn2.ibs"}},
        {"board21.pad", "zu2_master.ibs", {"--btn", "2"}, "board21_krdh21.ibs", "board21.ibs.expected",
         created + generating("board21_krdh21.ibs") + btnFiles("board21", {"1", "2"}),
         {"board21_btn1.ibs", "board21_btn2.ibs"}, {"board21.ibs", "board21_btn0.ibs"}},
        {"board20.pad", "zu2_master.ibs", {"--btn", "2"}, "board20.ibs", "board20.ibs.expected",
         created + generating("board20.ibs"), {}, {"board20_btn0.ibs", "board20_btn1.ibs"}},
        // A master with the edges its passes meet (blocks out of name order,
        // notes naming a model, repeated and doubled "[Model]" lines, CR, NUL
        // and bytes above 127 in a block, lines of 254 to 256 characters, no
        // last line end): the expected file is what the program wrote before
        // its master passes were reworked.
        {"design.pad", "edges_master.ibs", {}, "design.ibs", "edges_design.ibs.expected",
         "WARNING: Input model \"lvc330axxxuaaaaaaain\" for signal \"btn_n\" is not available.\n"
         "Setting to \"lvc330axxxuaaaaaaaio\" Available IBIS model.\n"
         "WARNING: Ibis Model \"lvc330f040naaaaaaaou\" for the signal \"dbg_out\" is not available.\n" +
             created + generating("design.ibs") + advice},
        // With a message flow the writer's messages are posted; the side
        // files' texts are still printed.
        {"one_led_cabga400.pad", "kx3_master.ibs", {"--msgflow", "--btn", "1"}, "one_led_cabga400_zu2.ibs", "",
         btnFiles("one_led_cabga400", {"0"}) + packageFile,
         {"one_led_cabga400_btn0.ibs", "kx3_master_6bg256c_bg.pkg"}, {},
         "padmodel-1026\tCABGA400\t$M\npadmodel-1030\t$C/IBIS/one_led_cabga400_zu2.ibs\npadmodel-1031\n"},
        // The design file options, one by one and together, alone and with
        // --btn and --dphy: cut names (pairs, cuts equal to each other and to
        // names that were not cut, a number that is taken), a component name
        // on a part whose component line is renamed, selectors (a name the
        // master has, codes no naming table names, D-PHY rows), every model.
        {"long_names.pad", "kx3_drive_master.ibs", {"--truncate", "20"}, "long_names.ibs",
         "long_names_truncate20.ibs.expected", longNames},
        {"long_names.pad", "kx3_drive_master.ibs", {"--truncate", "40"}, "long_names.ibs",
         "long_names_truncate40.ibs.expected", longNames},
        {"long_names.pad", "kx3_drive_master.ibs", {"--model-selector"}, "long_names.ibs",
         "long_names_selector.ibs.expected", longNames, {}, {}, "", "tests/writer/data/", longSignals},
        {"long_names.pad", "kx3_drive_master.ibs", {"--all-models"}, "long_names.ibs",
         "long_names_all_models.ibs.expected", longNames, {}, {}, "", "tests/writer/data/", longSignals},
        {"board21.pad", "zu2_master.ibs", {"--component-name", "BOARD U7", "--btn", "2"}, "board21_krdh21.ibs",
         "board21_named.ibs.expected", created + generating("board21_krdh21.ibs") + btnFiles("board21", {"1", "2"}),
         {"board21_btn1.ibs", "board21_btn2.ibs"}},
        {"one_led.pad", "kx3_master.ibs", {"--dphy", "--model-selector"}, "one_led.ibs",
         "one_led_dphy_selector.ibs.expected", created + generating("one_led.ibs")},
        {"long_names_demo.pad", "kva3_master.ibs",
         {"--component-name", "BOARD_U7", "--truncate", "20", "--all-models", "--model-selector"},
         "long_names_demo.ibs", "long_names_demo_options.ibs.expected", created + generating("long_names_demo.ibs"),
         {}, {}, "", "examples/"},
        // The package model's options: on the demo with the example package
        // model file beside the master (banded L and C, sparse R), and on a
        // master that holds its own package model in the section form, which
        // lacks a pin of the design.
        {"demo.pad", "kva3_master.ibs", {"--pin-parasitics"}, "demo.ibs", "demo_pin_parasitics.ibs.expected",
         demoOut, {"kva3_master_6bg256c_bg.pkg"}, {}, "", "examples/"},
        {"demo.pad", "kva3_master.ibs", {"--package-model"}, "demo.ibs", "demo_package_model.ibs.expected",
         demoOut, {"kva3_master_6bg256c_bg.pkg"}, {}, "", "examples/"},
        {"design.pad", "kx3_section_master.ibs", {"--pin-parasitics", "--package-model"}, "design.ibs",
         "design_sections.ibs.expected",
         "WARNING: Input model \"lvc330axxxuaaaaaaain\" for signal \"btn_n\" is not available.\n"
         "Setting to \"lvc330axxxuaaaaaaaio\" Available IBIS model.\n"
         "WARNING: Ibis Model \"lvc330f040naaaaaaaou\" for the signal \"dbg_out\" is not available.\n" +
             created + generating("design.ibs") + advice,
         {}, {}, "pad2ibis: warning: the package model KX3_CABGA256_PATHS lists no pin A4: its [Pin] row keeps the [Package] values\n"},
        // The D-PHY rows' pins follow the signals' as the writer lays them
        // out; the package model lists none of them.
        {"one_led.pad", "kx3_section_master.ibs", {"--dphy", "--model-selector", "--pin-parasitics"}, "one_led.ibs",
         "", created + generating("one_led.ibs"), {}, {},
         "pad2ibis: warning: the package model KX3_CABGA256_PATHS lists no pin MIP_1, MIP_2, MIP_3: their [Pin] rows "
         "keep the [Package] values\n"},
        {"vargon_demo.pad", "kvan_master.ibs",
         {"--vargon", "--component-name", "U7", "--truncate", "20", "--all-models", "--model-selector"},
         "vargon_demo.ibs", "", vargonWarnings + generating("vargon_demo.ibs") + advice, {}, {}, "", "examples/"},
    };
    for (Case const& c : cases) {
        SCOPED_TRACE(c.pad + " " + testing::PrintToString(c.options));
        ts::TempDir work;
        std::string const cwd = wt::realPath(work.path()), master = cwd + "/lib/" + c.master;
        ASSERT_EQ(mkdir((cwd + "/lib").c_str(), 0777), 0);
        std::vector<std::string> args = c.options, lib = {c.master, "k_btn.ibs"};
        args.insert(args.end(), {c.pad, master});
        for (std::string const& copy : c.copies)
            if (copy.find(".pkg") != std::string::npos)
                lib.push_back(copy);
        for (std::string const& name : lib)
            ts::writeFile(cwd + "/lib/" + name, ts::readFile(ts::sourcePath(c.from + name)));
        ts::writeFile(cwd + "/" + c.pad, ts::readFile(ts::sourcePath(c.from + c.pad)));
        ts::RunResult result = ts::runLegacy(args, cwd);
        EXPECT_EQ(result.exitCode, 0) << result.err;

        std::string const text = ts::readFile(cwd + "/IBIS/" + c.produced);
        EXPECT_EQ(text, c.expected.empty() ? text : ts::readFile(wt::dataPath(c.expected)));
        if (c.master != "edges_master.ibs") // its bytes are not IBIS text
            expectSound(text, c.produced, c.findings);
        std::string::size_type const listing = result.out.rfind("-----------------------\n");
        EXPECT_EQ(result.out.substr(listing == std::string::npos ? 0 : listing + 24), filled(c.out, cwd, master));
        EXPECT_NE(result.err.find(filled(c.err, cwd, master)), std::string::npos) << result.err;
        for (std::string const& copy : c.copies)
            EXPECT_EQ(ts::readFile(cwd + "/IBIS/" + copy),
                      ts::readFile(ts::sourcePath(c.from + (copy.find("_btn") != std::string::npos ? "k_btn.ibs" : copy))));
        for (std::string const& name : c.absent)
            EXPECT_FALSE(ts::fileExists(cwd + "/IBIS/" + name)) << name;
    }
}

TEST(WholeRun, DemoDesignFileIsSound)
{
    ts::TempDir work;
    ts::writeFile(work.file("demo.pad"), ts::readFile(ts::sourcePath("examples/demo.pad")));
    std::string master = ts::sourcePath("examples/kva3_master.ibs");
    ts::RunResult result = ts::runLegacy({"demo.pad", master}, work.path());
    EXPECT_EQ(result.exitCode, 0) << result.err;
    std::string text = ts::readFile(work.file("IBIS/demo.ibs"));
    expectSound(text, "demo.ibs");
    EXPECT_NE(text.find("\n[Model]"), std::string::npos);
}

} // namespace
