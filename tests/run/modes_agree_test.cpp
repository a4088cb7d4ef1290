// For every input inside the readers' contract that the legacy host runs to
// its end, the default mode writes the same files with the same exit code:
// the example runs, and pad reports made up from the demo's vocabulary.

#include <gtest/gtest.h>

#include <random>

#include "support/test_support.h"

namespace {

using S = std::string;
using Args = std::vector<S>;

// Runs args in two fresh directories that hold the files given, once with
// --legacy and once in the default mode, and compares what each left.
void expectSameFiles(std::map<S, S> const& inputs, Args const& args)
{
    ts::TempDir legacy, plain;
    for (auto const& [name, text] : inputs) {
        ts::writeFile(legacy.file(name), text);
        ts::writeFile(plain.file(name), text);
    }
    ts::RunResult const a = ts::runLegacy(args, legacy.path());
    ts::RunResult const b = ts::runProgram(args, plain.path());
    ASSERT_EQ(a.exitCode, 0) << a.out << a.err;
    EXPECT_EQ(b.exitCode, a.exitCode) << b.err;
    std::map<S, S> const written = ts::filesBelow(plain.path());
    EXPECT_EQ(written, ts::filesBelow(legacy.path()));
    EXPECT_GT(written.size(), inputs.size());
}

TEST(ModesAgree, OnTheExampleRuns)
{
    S const demo = ts::readFile(ts::sourcePath("examples/demo.pad"));
    S const master = ts::sourcePath("examples/kva3_master.ibs");
    std::vector<Args> const runs = {
        {"demo.pad", master},
        {"--report", "demo_report.csv", "demo.pad", master},
        {"--btn", "2", "demo.pad", master},
        {"--substitute", "nearest", "--report", "nearest.json", "demo.pad", master},
        {"--report", "demo_report.html", "demo.pad", master},
        {"--dphy", "--brinmark", "--ncd", "demo.pad", master},
        // Another family than the pad report's gives another design file.
        {"--family", "KVA4", "demo.pad", master},
        {"--pin-parasitics", "--package-model", "--report", "package.json", "demo.pad", master},
    };
    for (Args const& args : runs) {
        SCOPED_TRACE(args[0]);
        expectSameFiles({{"demo.pad", demo}}, args);
    }
    expectSameFiles({{"vargon_demo.pad", ts::readFile(ts::sourcePath("examples/vargon_demo.pad"))}},
                    {"--vargon", "vargon_demo.pad", ts::sourcePath("examples/kvan_master.ibs")});
    expectSameFiles({{"long_names_demo.pad", ts::readFile(ts::sourcePath("examples/long_names_demo.pad"))}},
                    {"--component-name", "BOARD_U7", "--truncate", "20", "--all-models", "--model-selector",
                     "long_names_demo.pad", master});
}

// A pad report of the demo's device, its signals drawn from the demo's
// vocabulary, differential pairs in the pin number table and banks of
// various supplies.
S madeUpReport(std::mt19937& random)
{
    auto pick = [&random](std::vector<S> const& from) { return from[random() % from.size()]; };
    std::vector<S> const standards = {"LVCMOS33", "LVCMOS25", "LVCMOS18", "LVCMOS12", "LVTTL33", "SSTL18_I",
                                      "SSTL18_II", "SSTL18D_II", "HSTL15_I", "LVDS", "PCI33"};
    std::vector<S> const settings = {"DRIVE:4mA", "DRIVE:8mA", "DRIVE:12mA", "DRIVE:16mA", "SLEW:SLOW", "SLEW:FAST",
                                     "PULL:NONE", "PULL:UP", "PULL:DOWN", "PULL:KEEPER", "OPENDRAIN:ON", "CLAMP:ON",
                                     "PCICLAMP:ON", "DIFFRESISTOR:100", "DIFFDRIVE:3.5", "VREF:VREF1_LOAD",
                                     "VCMT:DDR_II"};
    std::vector<S> const directions = {"IN", "OUT", "BIDI"};
    S pins, pairs;
    int const signals = 1 + static_cast<int>(random() % 24);
    for (int i = 0; i < signals; ++i) {
        S const name = "sig" + std::to_string(i) + (random() % 3 == 0 ? "[" + std::to_string(i % 4) + "]" : "");
        S const pin = S(1, static_cast<char>('A' + i % 16)) + std::to_string(1 + (i * 7) % 16);
        S const bank = std::to_string(random() % 9);
        S const standard = pick(standards);
        S properties;
        for (int n = static_cast<int>(random() % 4); n > 0; --n)
            properties += (properties.empty() ? "" : " ") + pick(settings);
        pins += "| " + name + " | " + pin + "/" + bank + " | " + standard + "_" + pick(directions) + " | PT" +
                std::to_string(i) + "A | " + properties + " |\n";
        if (standard == "LVDS" || standard == "SSTL18D_II")
            pairs += "| " + pin + "X/" + bank + " | " + standard + "_IN | PT" + std::to_string(i) + "B | " + name +
                     "- |\n";
    }
    S banks;
    for (int bank = 0; bank < 9; ++bank)
        banks += "| " + std::to_string(bank) + " | " + pick({"3.3V", "2.5V", "1.8V", "1.5V", "1.2V"}) + " |\n";
    return "Pad Report - made up\n\nPART TYPE:   KVA3-40E-6BG256C\nPACKAGE:     CABGA256\n\n"
           "Pinout by Port Name:\n+---+\n| Port Name | Pin/Bank | Buffer Type | Site | PIO Properties |\n+---+\n" +
           pins + "+---+\n\nVccio by Bank:\n+---+\n| Bank | Vccio |\n+---+\n" + banks +
           "+---+\n\nPinout by Pin Number:\n+---+\n| Pin/Bank | Buffer Type | Site | Pin Info |\n+---+\n" + pairs +
           "+---+\n";
}

TEST(ModesAgree, OnMadeUpPadReports)
{
    S const master = ts::sourcePath("examples/kva3_master.ibs");
    std::vector<Args> const options = {{},
                                       {"--substitute", "nearest"},
                                       {"--btn", "3"},
                                       {"--all-models", "--truncate", "20"},
                                       {"--model-selector", "--report", "r.json"},
                                       {"--component-name", "U1", "--report", "r.csv"}};
    std::mt19937 random(2026);
    for (int n = 0; n < 24; ++n) {
        S const report = madeUpReport(random);
        Args args = options[static_cast<std::size_t>(n) % options.size()];
        args.push_back("made_up.pad");
        args.push_back(master);
        SCOPED_TRACE(report);
        expectSameFiles({{"made_up.pad", report}}, args);
    }
}

} // namespace
