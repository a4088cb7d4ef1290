// What stands inside a [Model]: each rule caught in a small file written for
// it, at its line, and a clean model passes.

#include <gtest/gtest.h>

#include "check/ibis_check.h"

namespace {

using S = std::string;
using Lines = std::vector<S>;

S const frame = "[IBIS Ver] 5.0\n"                 // 1
                "[File Name] m.ibs\n"              // 2
                "[File Rev] 1\n"                   // 3
                "[Component] C\n"                  // 4
                "[Manufacturer] M\n"               // 5
                "[Package]\n"                      // 6
                "R_pkg 0.1 NA NA\n"                // 7
                "L_pkg 1n NA NA\n"                 // 8
                "C_pkg 1p NA NA\n"                 // 9
                "[Pin] signal_name model_name\n"   // 10
                "1 io io_a\n";                     // 11
S const model = "[Model] io_a\n"                   // 12
                "Model_type I/O\n"                 // 13
                "Polarity Non-Inverting\n"         // 14
                "Enable Active-High\n"             // 15
                "Vinl = 0.8V\n"                    // 16
                "Vinh = 2.0V\n"                    // 17
                "Vmeas=1.5V\n"                     // 18
                "Cref = 0p\n"                      // 19
                "Rref = 50\n"                      // 20
                "C_comp 2p 1p 3p\n"                // 21
                "[Temperature Range] 25 100 0\n"   // 22
                "[Voltage Range] 3.3 3.0 3.6\n"    // 23
                "[Pulldown]\n"                     // 24
                "| V I(typ) I(min) I(max)\n"       // 25
                "-3.3 -100mA -80mA -120mA\n"       // 26
                "0 0 0 0\n"                        // 27
                "3.3 0.1 0.08 0.12\n"              // 28
                "[Pullup]\n"                       // 29
                "3.3 -0.1 -0.08 -0.12\n"           // 30
                "0 0 0 0\n"                        // 31
                "-3.3 0.1 0.08 0.12\n"             // 32
                "[GND Clamp]\n"                    // 33
                "-3.3 -0.5 NA NA\n"                // 34
                "0 0 NA NA\n"                      // 35
                "[Ramp]\n"                         // 36
                "dV/dt_r 2.0/0.5n 1.8/0.7n 2.2/0.4n\n" // 37
                "dV/dt_f 2.0/0.5n NA NA\n"         // 38
                "R_load = 50\n"                    // 39
                "[Rising Waveform]\n"              // 40
                "R_fixture = 50\n"                 // 41
                "V_fixture = 0\n"                  // 42
                "0 0 0 0\n"                        // 43
                "1n 3.3 3.0 3.6\n"                 // 44
                "| End [Model] io_a\n";            // 45
S const end = "[End]\n";

Lines findings(S const& text)
{
    Lines lines;
    for (ibischeck::Finding const& finding : ibischeck::checkDesignFile(text, "m.ibs"))
        lines.push_back(ibischeck::formatFinding("f", finding));
    return lines;
}

S rows(int count, char const* format)
{
    S text;
    for (int i = 0; i < count; ++i) {
        char row[64];
        std::snprintf(row, sizeof row, format, i);
        text += row;
    }
    return text;
}

// An output described by [External Model] carries its die capacitance and
// its edges in the external circuit: no C_comp and no [Ramp] is needed, as
// independent parsers read it; without [External Model] both are.
TEST(ModelRules, ExternalModelNeedsNoRampNorCComp)
{
    S const external = "[Model] io_a\nModel_type Output\n[Voltage Range] 3.3 3.0 3.6\n"
                       "[External Model]\nLanguage SPICE\nCorner Typ out.sp out_typ\n"
                       "Ports A_signal my_drive\n[End External Model]\n";
    EXPECT_EQ(findings(frame + external + end), Lines{});
    S const native = "[Model] io_a\nModel_type Output\n[Voltage Range] 3.3 3.0 3.6\n";
    EXPECT_EQ(findings(frame + native + end),
              (Lines{"f:12: error: [Model] io_a of type Output has no C_comp, nor any C_comp_pullup, "
                     "C_comp_pulldown, C_comp_power_clamp or C_comp_gnd_clamp",
                     "f:12: error: [Model] io_a of type Output has no [Ramp]",
                     "f:12: warning: [Model] io_a of type Output has no [Pulldown]",
                     "f:12: warning: [Model] io_a of type Output has no [Pullup]"}));
}

TEST(ModelRules, EachRuleAtItsLine)
{
    struct Case {
        S from, to;
        Lines expected;
    } const cases[] = {
        {"", "", {}},
        {"Model_type I/O", "Model_type Bidirectional", {"f:13: error: Model_type \"Bidirectional\" is not an IBIS model type"}},
        {"Model_type I/O\n", "", {"f:12: error: [Model] io_a has no Model_type"}},
        {"Model_type I/O", "Model_type i/o", {}},
        {"Model_type I/O", "Model_type I/O\nmodel_type Input", {"f:14: warning: model_type stands twice (first at line 13)"}},
        {"Polarity Non-Inverting", "Polarity Normal", {"f:14: error: Polarity \"Normal\" is neither Non-Inverting nor Inverting"}},
        {"Enable Active-High", "Enable high", {"f:15: error: Enable \"high\" is neither Active-High nor Active-Low"}},
        {"Vinl = 0.8V", "Vinl 0.8V", {"f:16: warning: Vinl is written without \"=\"; parsers read \"Vinl = value\""}},
        {"Vinl = 0.8V", "Vinl = 0.8 V", {"f:16: error: Vinl needs one value; it has 2"}},
        {"Vinl = 0.8V", "Vinl = low", {"f:16: error: Vinl value \"low\" is not a number"}},
        {"Vinl = 0.8V", "Vinl = 2.5V", {"f:16: warning: Vinl 2.5 is not below Vinh 2"}},
        {"Rref = 50", "Rref = -50", {"f:20: warning: Rref -50 is negative"}},
        {"Rref = 50", "Rref = 50\nVdd = 3.3", {"f:21: warning: unknown sub-parameter \"Vdd\" in [Model] io_a"}},
        {"C_comp 2p 1p 3p", "C_comp 2p 1p", {"f:21: error: C_comp needs typ, min and max; it has 2 values"}},
        {"C_comp 2p 1p 3p", "C_comp NA 1p 2.0.1p", {"f:21: error: C_comp typ is NA; only min and max may be",
                                                    "f:21: error: C_comp max \"2.0.1p\" is not a number"}},
        {"C_comp 2p 1p 3p", "C_comp = 2p 1p -3p", {"f:21: warning: C_comp is written with \"=\"; its typ, min and max stand in columns",
                                                   "f:21: warning: C_comp max -3e-12 is negative"}},
        {"C_comp 2p 1p 3p", "C_comp_pullup 2p 1p 3p", {}},
        {"C_comp 2p 1p 3p\n", "", {"f:12: error: [Model] io_a of type I/O has no C_comp, nor any C_comp_pullup, "
                                   "C_comp_pulldown, C_comp_power_clamp or C_comp_gnd_clamp"}},
        {"[Model] io_a", "[Model]", {"f:11: error: model io_a of pin 1 has no [Model] block", "f:12: error: [Model] has no name"}},
        {"[Voltage Range] 3.3 3.0 3.6", "[Voltage Range] 3.3 3.0 3.6\n[Voltage Range] 3.3 3.0 3.6\n"
                                        "[POWER Clamp]\n0 0 0 0\n1 0 0 0\n[POWER Clamp]\n0 0 0 0\n1 0 0 0",
         {"f:24: warning: [Voltage Range] stands twice in [Model] io_a (first at line 23)",
          "f:28: warning: [POWER Clamp] stands twice in [Model] io_a (first at line 25)"}},
        {"[Voltage Range] 3.3 3.0 3.6", "[Pullup Reference] 3.3 3 3.6\n[Pulldown Reference] 0 0 0\n"
                                        "[GND_Clamp_Reference] 0 0 0",
         {"f:12: error: [Model] io_a has no [Voltage Range], nor all four of [Pullup Reference], [Pulldown Reference], "
          "[POWER Clamp Reference] and [GND Clamp Reference]"}},
        {"[Voltage Range] 3.3 3.0 3.6\n", "", {"f:12: error: [Model] io_a has no [Voltage Range], nor all four of "
                                               "[Pullup Reference], [Pulldown Reference], [POWER Clamp Reference] and "
                                               "[GND Clamp Reference]"}},
        {"[Voltage Range] 3.3 3.0 3.6", "[Pullup Reference] 3.3 3 3.6\n[Pulldown Reference] 0 0 0\n"
                                        "[POWER Clamp Reference] 3.3 3 3.6\n[GND_Clamp_Reference] 0 0 0", {}},
        {"[Voltage Range] 3.3 3.0 3.6", "[Voltage Range] NA 3.0 3.6\nVref = 0",
         {"f:23: error: [Voltage Range] typ is NA; only min and max may be"}},
        {"[Temperature Range] 25 100 0", "[Temperature Range]\n25 100 0",
         {"f:22: error: [Temperature Range] needs typ, min and max; it has 0 values",
          "f:23: error: line under [Temperature Range] is no sub-parameter; its values stand on the keyword line"}},
        // The keywords a model type needs.
        {"Model_type I/O", "Model_type Output", {"f:15: warning: Enable means nothing to a model of type Output"}},
        {"[Ramp]\ndV/dt_r 2.0/0.5n 1.8/0.7n 2.2/0.4n\ndV/dt_f 2.0/0.5n NA NA\nR_load = 50\n", "",
         {"f:12: error: [Model] io_a of type I/O has no [Ramp]"}},
        {"[Pullup]\n3.3 -0.1 -0.08 -0.12\n0 0 0 0\n-3.3 0.1 0.08 0.12\n", "",
         {"f:12: warning: [Model] io_a of type I/O has no [Pullup]"}},
        {"Model_type I/O", "Model_type I/O_open_drain", {"f:30: error: [Pullup] current -0.1 in a model of type "
                                                         "I/O_open_drain; only zero currents may stand here"}},
        {"Model_type I/O", "Model_type Open_source", {"f:15: warning: Enable means nothing to a model of type Open_source",
                                                      "f:26: error: [Pulldown] current -0.1 in a model of type "
                                                      "Open_source; only zero currents may stand here"}},
        {"[GND Clamp]", "[Rgnd] 50 45 55\n[GND Clamp]", {"f:33: warning: [Rgnd] belongs to Terminator models, not to type I/O"}},
        {"[GND Clamp]", "[Receiver Thresholds]\nVth = 1\n[GND Clamp]", {}},
        {"[GND Clamp]", "[Algorithmic Model]\nExecutable x\n[End Algorithmic Model]\n[GND Clamp]", {}},
        {"[GND Clamp]", "[Bogus Table]\n[GND Clamp]", {"f:33: warning: unknown keyword \"[Bogus Table]\" in [Model] io_a"}},
        {"[GND Clamp]", "[External Reference] 1\n[External Reference] 1\n[GND Clamp]",
         {"f:34: warning: [External Reference] stands twice in [Model] io_a (first at line 33)"}},
        {"[GND Clamp]", "[GND Clamp Reference] 0 0 0\n[GND Clamp Reference] 0 0 0\n[GND Clamp]",
         {"f:34: warning: [GND Clamp Reference] stands twice in [Model] io_a (first at line 33)"}},
        {"[Ramp]", "[Ramp]\ndV/dt_r 1/1n 1/1n 1/1n\n[Ramp]",
         {"f:36: error: [Ramp] has no dV/dt_f line", "f:38: warning: [Ramp] stands twice in [Model] io_a (first at line 36)"}},
        {"[GND Clamp]", "[Add Submodel]\nhold Non-Driving\nodd Sometimes\n[GND Clamp]",
         {"f:34: warning: [Add Submodel] hold has no [Submodel] block in the file",
          "f:35: error: [Add Submodel] mode \"Sometimes\" is not Driving, Non-Driving or All",
          "f:35: warning: [Add Submodel] odd has no [Submodel] block in the file"}},
        // I-V tables.
        {"0 0 0 0\n3.3 0.1", "0 0 0\n3.3 0.1",
         {"f:27: error: [Pulldown] row of 3 columns; voltage, typ, min and max make four"}},
        {"0 0 0 0\n3.3 0.1", "NA 0 0 0\n3.3 0.1", {"f:27: error: [Pulldown] voltage is NA; the voltage column needs numbers"}},
        {"0 0 0 0\n3.3 0.1", "0 0 0 0mA,\n3.3 0.1", {"f:27: error: [Pulldown] max is not a number"}},
        {"0 0 0 0\n3.3 0.1", "O 0 0 0\n3.3 0.1", {"f:27: error: [Pulldown] line \"O\" is not a row of numbers"}},
        {"0 0 0 0\n3.3 0.1", "5 0 0 0\n3.3 0.1", {"f:28: error: [Pulldown] voltage 3.3 follows 5 (line 27); the "
                                                  "voltages must rise or fall throughout"}},
        {"0 0 0 0\n3.3 0.1", "-3.3V 0 0 0\n3.3 0.1", {"f:27: error: [Pulldown] voltage -3.3 repeats line 26"}},
        {"0 0 0 0\n3.3 0.1", "1e400 0 0 0\n1e400 0.1", {"f:28: error: [Pulldown] voltage inf follows inf (line 27); "
                                                        "the voltages must rise or fall throughout"}},
        {"-3.3 -100mA -80mA -120mA", "-3.3 NA -80mA -120mA",
         {"f:26: error: [Pulldown] typ is NA in its first row; it needs a number there"}},
        {"3.3 0.1 0.08 0.12", "3.3 0.1 NA 0.12", {"f:28: warning: [Pulldown] min is NA in its last row, while the column has data"}},
        {"[GND Clamp]\n-3.3 -0.5 NA NA\n", "[GND Clamp]\n", {"f:33: error: [GND Clamp] has 1 row; an I-V table needs at least 2"}},
        {"[GND Clamp]\n-3.3 -0.5 NA NA\n0 0 NA NA\n", "[GND Clamp]\n" + rows(101, "%d 0 0 0\n"),
         {"f:33: error: [GND Clamp] has 101 rows; an I-V table holds at most 100"}},
        // [Ramp].
        {"dV/dt_f 2.0/0.5n NA NA", "dV/dt_f 2.0/0.5n NA", {"f:38: error: dV/dt_f needs typ, min and max; it has 2 values"}},
        {"dV/dt_f 2.0/0.5n NA NA", "dV/dt_f NA 2/1n 2/1n", {"f:38: error: dV/dt_f typ is NA; only min and max may be"}},
        {"dV/dt_f 2.0/0.5n NA NA", "dV/dt_f 2.0 2/0 -2/1n",
         {"f:38: error: dV/dt_f typ \"2.0\" is not a dV/dt fraction",
          "f:38: error: dV/dt_f min \"2/0\" has a dt that is not above 0",
          "f:38: warning: dV/dt_f max \"-2/1n\" has a negative dV"}},
        {"R_load = 50", "R_load = 0", {"f:39: error: R_load 0 is not above 0"}},
        {"R_load = 50", "R_load = 50\ndv/dt_r 2/0 2/0 2/0",
         {"f:40: warning: dv/dt_r stands twice in [Ramp] (first at line 37)"}},
        {"R_load = 50", "R_load = 50\n1 2 3", {"f:40: error: [Ramp] line is no dV/dt_r, dV/dt_f or R_load line"}},
        {"R_load = 50", "R_load = 50\nC_load = 5p", {"f:40: warning: unknown line \"C_load\" in [Ramp]"}},
        // Waveforms.
        {"R_fixture = 50\n", "", {"f:40: error: [Rising Waveform] has no R_fixture"}},
        {"V_fixture = 0", "V_fixture = zero", {"f:42: error: V_fixture value \"zero\" is not a number"}},
        {"V_fixture = 0", "V_fixture = 0\nT_fixture = 1",
         {"f:43: error: [Rising Waveform] line \"T_fixture\" is neither a fixture value nor a row of numbers"}},
        {"1n 3.3 3.0 3.6", "1n 3.3 3.0 3.6\n0.5n 3.3 3.0 3.6",
         {"f:45: error: [Rising Waveform] time 5e-10 follows 1e-09 (line 44); the time column must rise throughout"}},
        {"1n 3.3 3.0 3.6\n", rows(999, "%d.5p 1 1 1\n"), {}},
        {"1n 3.3 3.0 3.6\n", rows(999, "%d.5p 1 1 1\n") + "2n 1 1 1\n",
         {"f:40: error: [Rising Waveform] has 1001 rows; a waveform holds at most 1000"}},
    };
    for (Case const& c : cases) {
        S text = model;
        if (!c.from.empty()) {
            S::size_type const at = text.find(c.from);
            ASSERT_NE(at, S::npos) << c.from;
            text.replace(at, c.from.size(), c.to);
        }
        SCOPED_TRACE(text);
        EXPECT_EQ(findings(frame + text + end), c.expected);
    }
}

// Model types whose keywords differ from a driver's, and the limits that
// an older [IBIS Ver] sets.
TEST(ModelRules, PassiveTypesAndVersions)
{
    S const terminator = "[Model] term\nModel_type Terminator\nC_comp 1p 1p 1p\n[Voltage Range] 1 1 1\n"
                         "[Rgnd] 50 45 55\n[Rac] 50 45 55\n[Rgnd] 60 55 65\n[Algorithmic Model]\n";
    S const selectorSwitch = "[Model] sw\nModel_type Series_switch\n[Voltage Range] 1 1 1\n[On]\n[R Series] 1 1 1\n"
                             "[R Series] 2 2 2\n[Receiver Thresholds]\n";
    S const twenty = "[Model] a234567890b234567890c\nModel_type Input\nC_comp 1p 1p 1p\n[Voltage Range] 1 1 1\n"
                     "[Rising Waveform]\nR_fixture = 50\nV_fixture = 0\n" +
                     rows(101, "%dp 1 1 1\n");
    struct Case {
        S version, text;
        Lines expected;
    } const cases[] = {
        {"5.0", terminator,
         {"f:12: warning: [Model] term: [Rac] and [Cac] go together",
          "f:18: error: [Rgnd] stands twice in [Model] term (first at line 16)",
          "f:19: error: [Algorithmic Model] is not allowed in a model of type Terminator"}},
        {"5.0", selectorSwitch,
         {"f:11: warning: pin 1 names a model of type Series_switch; series models belong under [Series Pin Mapping]",
          "f:12: warning: [Model] sw of type Series_switch has no [Off]",
          "f:17: error: [R Series] stands twice in [Model] sw (first at line 16)",
          "f:18: warning: [Receiver Thresholds] belongs to models that receive, not to type Series_switch"}},
        {"5.0", twenty, {}},
        {"5.0", "[Model] rx\nModel_type Input\nC_comp 1p 1p 1p\n[Temperature Range] 25 100 0\n"
                "[Voltage Range] 1 1 1\n[GND Clamp Reference] 0 0 0\n[POWER Clamp Reference] 1 1 1\n"
                "[C Comp Corner] 1p 1p 1p\n[GND Clamp]\n0 0 0 0\n1 0 0 0\n",
         {}},
        {"5.0", "[Model] in\nModel_type Input\nC_comp 1p 1p 1p\n[Voltage Range] 1 1 1\n[Add Submodel]\nhold Driving\n"
                "[Lc Series] 1 1 1\n[Lc Series] 1 1 1\n",
         {"f:12: warning: [Model] in: [Lc Series] and [Rc Series] need [C Series]",
          "f:17: error: [Add Submodel] mode Driving in a model of type Input",
          "f:17: warning: [Add Submodel] hold has no [Submodel] block in the file",
          "f:18: warning: [Lc Series] belongs to Series and Series_switch models, not to type Input",
          "f:19: error: [Lc Series] stands twice in [Model] in (first at line 18)",
          "f:19: warning: [Lc Series] belongs to Series and Series_switch models, not to type Input"}},
        {"4.1", twenty, {"f:12: error: [Model] name \"a234567890b234567890c\" has 21 characters; at most 20"}},
        {"3.2", twenty,
         {"f:12: error: [Model] name \"a234567890b234567890c\" has 21 characters; at most 20",
          "f:16: error: [Rising Waveform] has 101 rows; a waveform holds at most 100"}},
    };
    for (Case const& c : cases) {
        S text = frame + c.text + end;
        text.replace(11, 3, c.version);
        text.replace(text.find("io_a"), 4, c.text.substr(8, c.text.find('\n') - 8));
        SCOPED_TRACE(text);
        EXPECT_EQ(findings(text), c.expected);
    }
}

} // namespace
