// Whole runs of the table-driven generator through the pad2ibis program: a
// design whose signals find their model directly, through the preferred
// sibling of their forest, through a default name, or not at all, beside a
// reference entry; the design IBIS file and the reports, byte for byte.

#include <gtest/gtest.h>

#include <climits>
#include <cstdlib>
#include <string>

#include "support/test_support.h"

namespace {

std::string const kStars = "|************************************************************************\n";

// The master file's lines up to its package keyword: they reach the design
// file as they stand, but for the [File Name] line.
std::string masterHead(std::string const& fileNameLine)
{
    return "[IBIS Ver]      5.0\n" + fileNameLine +
           "[File Rev]      1.0\n"
           "[Date]          March 1, 2027\n"
           "[Source]        Written for the tests of the table-driven family.\n"
           "[Notes]         Reduced master library of the KVAN family.\n"
           "                Model names give one code a setting, then the direction.\n"
           "\n"
           "STANDARD\n"
           "|--------------------------\n"
           "| io standard    code\n"
           "|--------------------------\n"
           "  LVDS           lvd\n"
           "  LVCMOS         lvc\n"
           "  LVTTL          ttl\n"
           "  PCI            pci\n"
           "  HSTL_I         hs1\n"
           "  SSTL_II        ss2\n"
           "  GTLP           gtp\n"
           "  VREF1          vr1\n"
           "  REF_RES        ref\n"
           "|--------------------------\n"
           "\n"
           "SLEW\n"
           "|--------------------------\n"
           "  NA             a\n"
           "  SLOW           s\n"
           "  FAST           f\n"
           "|--------------------------\n"
           "\n"
           "PULLMODE\n"
           "|--------------------------\n"
           "  PULLUP         u\n"
           "  PULLDOWN       d\n"
           "  NONE           n\n"
           "  OFF            o\n"
           "  KEEPER         k\n"
           "  UP_PCICLAMP    c\n"
           "  DOWN_PCICLAMP  e\n"
           "  PCICLAMP       p\n"
           "|--------------------------\n"
           "\n"
           "IMPEDANCE\n"
           "|--------------------------\n"
           "  OFF            a\n"
           "  50             5\n"
           "  100            h\n"
           "|--------------------------\n"
           "\n"
           "TERMVCC\n"
           "|--------------------------\n"
           "  OFF            a\n"
           "  120            t\n"
           "|--------------------------\n"
           "\n"
           "TERMGND\n"
           "|--------------------------\n"
           "  OFF            a\n"
           "  120            t\n"
           "|--------------------------\n"
           "\n"
           "TERMVTT\n"
           "|--------------------------\n"
           "  OFF            a\n"
           "  60             6\n"
           "  75             7\n"
           "|--------------------------\n"
           "\n"
           "VCMT\n"
           "|--------------------------\n"
           "  OFF            a\n"
           "  VTT            t\n"
           "  DDR-2          d\n"
           "|--------------------------\n"
           "\n"
           "DIFFERENTIAL RESISTOR\n"
           "|--------------------------\n"
           "  OFF            a\n"
           "  120            t\n"
           "|--------------------------\n"
           "\n"
           "DIFFERENTIAL CURRENT\n"
           "|--------------------------\n"
           "  NA             a\n"
           "  3P5            3\n"
           "|--------------------------\n"
           "\n"
           "[Copyright]     Copyright 2027 Corvane Technology.\n"
           "|\n"
           "[Component]     KVAN-25F\n"
           "[Manufacturer]  Corvane Technology\n";
}

// One model block as the master holds it, without its closing line.
std::string modelBody(std::string const& name, std::string const& what, std::string const& type)
{
    return "[Model]        " + name + "\n" +
           "| " + what + "\n" +
           "Model_type     " + type + "\n" +
           "C_comp         2.30pF           2.00pF           2.60pF\n"
           "[Voltage Range]       3.30V     3.13V     3.46V\n"
           "|\n";
}

std::string const kHs1180In = "hs1180axxxaaaaaaaain";
std::string const kLvc250In = "lvc250axxxaaaaaaaain";
std::string const kLvc330Od = "lvc330a160daaaaaaaio";
std::string const kLvc330Out = "lvc330s080uaaaaaaaou";

std::string masterFile()
{
    std::string text = masterHead("[File Name]     vgn_master.ibs\n") +
                       "[Package]\n"
                       "| variable       typ              min              max\n"
                       "|FPBGA484\n"
                       "R_pkg          0.250            0.180            0.320\n"
                       "L_pkg          4.10nH           3.20nH           5.00nH\n"
                       "C_pkg          1.10pF           0.90pF           1.30pF\n"
                       "|\n"
                       "[Pin]  signal_name      model_name             R_pin    L_pin    C_pin\n"
                       "A1     IO_A1            hs1180axxxaaaaaaaain   0.060    1.40nH   0.40pF\n"
                       "A2     IO_A2            lvc250axxxaaaaaaaain   0.060    1.40nH   0.40pF\n"
                       "A3     IO_A3            lvc330a160daaaaaaaio   0.060    1.40nH   0.40pF\n"
                       "A4     IO_A4            lvc330s080uaaaaaaaou   0.060    1.40nH   0.40pF\n"
                       "|\n";
    text += kStars + modelBody(kHs1180In, "HSTL18 class I input", "Input") + "| End [Model] " + kHs1180In + "\n";
    text += kStars + modelBody(kLvc250In, "LVCMOS25 input", "Input") + "| End [Model] " + kLvc250In + "\n";
    text += kStars + modelBody(kLvc330Od, "LVCMOS33 bidirectional, 16mA, pull-down", "I/O") +
            "| End [Model] " + kLvc330Od + "\n";
    text += kStars + modelBody(kLvc330Out, "LVCMOS33 output, 8mA, slow, pull-up", "3-state") +
            "| End [Model] " + kLvc330Out + "\n";
    text += kStars + "[End]\n";
    return text;
}

std::string padFile()
{
    return "Pad Report - test design\n"
           "Generated for the table-driven family\n"
           "\n"
           "PART TYPE:   KVAN-25F-5FN484C\n"
           "PACKAGE:     FPBGA484\n"
           "\n"
           "Pinout by Port Name:\n"
           "+----------+----------+--------------+-------+--------------------------------+\n"
           "| Port Name | Pin/Bank | Buffer Type | Site | PIO Properties |\n"
           "+----------+----------+--------------+-------+--------------------------------+\n"
           "| led      | A14/0    | LVCMOS33_OUT | PT30A | DRIVE:8mA PULL:UP SLEW:SLOW    |\n"
           "| scl      | A15/0    | LVCMOS33_OD  | PT33A | DRIVE:16mA PULL:DOWN           |\n"
           "| btn      | C3/7     | LVCMOS25_IN  | PL9A  | PULL:KEEPER                    |\n"
           "| sense    | H16/7    | LVCMOS25_IN  | PR8A  | PWRSAVE:ON                     |\n"
           "| hstl_out | M3/5     | HSTL18_I_OUT | PB12A | SLEW:FAST                      |\n"
           "| rref     | T5/4     | REF_RESISTOR | PB30A |                                |\n"
           "| vref_a   | J5/5     | VREF1_DRIVER | PB9A  |                                |\n"
           "+----------+----------+--------------+-------+--------------------------------+\n";
}

// What loading the pad report lists of its signals.
std::string const kSignalListing =
    "Comp: led\n Site: A14\n Type: OUT\n IO_TYPE=LVCMOS33 \n DRIVE=8mA \n PULL=UP \n SLEW=SLOW \n"
    "-----------------------\n"
    "Comp: scl\n Site: A15\n Type: OD\n IO_TYPE=LVCMOS33 \n DRIVE=16mA \n PULL=DOWN \n"
    "-----------------------\n"
    "Comp: btn\n Site: C3\n Type: IN\n IO_TYPE=LVCMOS25 \n PULL=KEEPER \n"
    "-----------------------\n"
    "Comp: sense\n Site: H16\n Type: IN\n IO_TYPE=LVCMOS25 \n PWRSAVE=ON \n"
    "-----------------------\n"
    "Comp: hstl_out\n Site: M3\n Type: OUT\n IO_TYPE=HSTL18_I \n SLEW=FAST \n"
    "-----------------------\n"
    "Comp: rref\n Site: T5\n Type: RESISTOR\n IO_TYPE=REF \n"
    "-----------------------\n"
    "Comp: vref_a\n Site: J5\n Type: DRIVER\n IO_TYPE=VREF1 \n"
    "-----------------------\n";

std::string const kWarnings =
    "WARNING: Ibis Model \"lvc330a160daaaaaaaod\" for the signal \"scl\" is not available. "
    "Substituting model \"lvc330a160daaaaaaaio\".\n"
    "WARNING: Ibis Model \"lvc250axxxkaaaaaaain\" for the signal \"btn\" is not available. "
    "Substituting model \"lvc250axxxaaaaaaaain\".\n"
    "WARNING: Ibis Model \"hs1180fxxxaaaaaaaaou\" for the signal \"hstl_out\" is not available.\n";

std::string const kAdvice =
    "You can check the master ibis file at <Brinmark>/cae_library/ for models,\n"
    "if the model is not present in the master ibis file, please contact\n"
    "Corvane Technical Support to make a request for this model.\n";

std::string expectedDesignFile()
{
    std::string text = kStars +
                       "| IBIS Models Generator: Corvane test\n"
                       "| Generate date: Tue Nov 14 22:13:20 2023\n" +
                       masterHead("[File Name]     design.ibs\n") +
                       "[Package]\n"
                       "|FPBGA484\n"
                       "R_pkg          0.250            0.180            0.320\n"
                       "L_pkg          4.10nH           3.20nH           5.00nH\n"
                       "C_pkg          1.10pF           0.90pF           1.30pF\n"
                       "|\n"
                       "[Pin]  signal_name      model_name             R_pin    L_pin    C_pin\n"
                       "A14           led                  lvc330s080uaaaaaaaou\n"
                       "A15           scl                  lvc330a160daaaaaaaio\n"
                       "C3            btn                  lvc250axxxaaaaaaaain\n"
                       "H16           sense                lvc250axxxaaaaaaaain\n" +
                       kStars;
    text += modelBody(kLvc250In, "LVCMOS25 input", "Input") + "| End [Model] " + kLvc250In + "\n" + kStars;
    text += modelBody(kLvc330Od, "LVCMOS33 bidirectional, 16mA, pull-down", "I/O") + "| End [Model] " +
            kLvc330Od + "\n" + kStars;
    text += modelBody(kLvc330Out, "LVCMOS33 output, 8mA, slow, pull-up", "3-state") + "| End [Model] " +
            kLvc330Out + "\n" + kStars;
    text += "| End [Component]\n[End]\n";
    return text;
}

class VargonRun : public testing::Test {
protected:
    void SetUp() override
    {
        ts::writeFile(dir.file("design.pad"), padFile());
        ts::writeFile(dir.file("vgn_master.ibs"), masterFile());
        char real[PATH_MAX];
        ASSERT_NE(realpath(dir.path().c_str(), real), nullptr);
        designPath = std::string(real) + "/IBIS/design.ibs";
    }

    ts::TempDir dir;
    std::string designPath;
};

TEST_F(VargonRun, DesignFileWithSubstitutedModels)
{
    ts::RunResult r = ts::runProgram({"--vargon", "design.pad", "vgn_master.ibs"}, dir.path());
    EXPECT_EQ(r.exitCode, 0) << r.err;
    EXPECT_EQ(r.err, "");
    EXPECT_EQ(ts::readFile(dir.file("IBIS/design.ibs")), expectedDesignFile());
}

TEST_F(VargonRun, ReportsOnStandardOutput)
{
    ts::RunResult r = ts::runProgram({"--vargon", "design.pad", "vgn_master.ibs"}, dir.path());
    EXPECT_EQ(r.exitCode, 0) << r.err;
    EXPECT_EQ(r.out, kSignalListing + kWarnings + "\nGenerating: \"" + designPath + "\"\n\n" +
                         "Design IBIS Models are generated for board level analysis.\n" + kAdvice);
}

TEST_F(VargonRun, ReportsPostedInTheMessageFlow)
{
    ts::RunResult r = ts::runProgram({"--vargon", "--msgflow", "design.pad", "vgn_master.ibs"}, dir.path());
    EXPECT_EQ(r.exitCode, 0) << r.err;
    EXPECT_EQ(r.out, kSignalListing);
    EXPECT_EQ(r.err, "padmodel-1011\tlvc330a160daaaaaaaod\tscl\tlvc330a160daaaaaaaio\n"
                     "padmodel-1011\tlvc250axxxkaaaaaaain\tbtn\tlvc250axxxaaaaaaaain\n"
                     "padmodel-1010\ths1180fxxxaaaaaaaaou\thstl_out\n"
                     "padmodel-1030\t" + designPath + "\n"
                     "padmodel-1031\n"
                     "padmodel-1005\n");
    EXPECT_EQ(ts::readFile(dir.file("IBIS/design.ibs")), expectedDesignFile());
}

TEST_F(VargonRun, DumpOfTheForestsComesBeforeTheWalk)
{
    ts::RunResult r =
        ts::runProgram({"--vargon", "--dump-alt-models", "design.pad", "vgn_master.ibs"}, dir.path());
    EXPECT_EQ(r.exitCode, 0) << r.err;
    std::string const rule = "\n--------------------\n\n";
    std::string const chain = "IMP:a TERMVCC:a TERMGND:a TERMVTT:a VCMT:a DIFFRES:a DIFFCUR:a ";

    ASSERT_EQ(r.out.rfind(kSignalListing + rule + "OUTPUT MODEL LISTS\n" + rule, 0), 0u)
        << r.out.substr(0, 2000);
    std::string::size_type const input = r.out.find(rule + "INPUT MODEL LISTS\n" + rule);
    std::string::size_type const bidir = r.out.find(rule + "BIDIR MODEL LISTS\n" + rule);
    std::string::size_type const warnings = r.out.find(kWarnings);
    ASSERT_NE(input, std::string::npos);
    ASSERT_NE(bidir, std::string::npos);
    ASSERT_NE(warnings, std::string::npos);
    EXPECT_LT(input, bidir);
    EXPECT_LT(bidir, warnings);
    EXPECT_EQ(r.out.find("MODEL LISTS", bidir + rule.size() + 20), std::string::npos) << "three titles";

    std::string const output = r.out.substr(0, input);
    EXPECT_NE(output.find(rule + "lvc330 \nIO_TYPE:lvc330 DRIVE:080 PULL:u " + chain + "RESERVED:io SLEW:s \n" +
                          std::string(106, ' ') + "SLEW:f \n" + std::string(97, ' ') + "RESERVED:od SLEW:s \n" +
                          std::string(106, ' ') + "SLEW:f \n" + std::string(25, ' ') + "PULL:d " + chain),
              std::string::npos)
        << "the output forest, printed from indent 16";
    std::string const inputs = r.out.substr(input, bidir - input);
    EXPECT_NE(inputs.find(rule + "lvc250 \nIO_TYPE:lvc250 DRIVE:xxx PULL:u " + chain + "RESERVED:in SLEW:a \n" +
                          std::string(25, ' ') + "PULL:d " + chain + "RESERVED:in SLEW:a \n"),
              std::string::npos)
        << "the input forest, printed from indent 16";
    std::string const bidirs = r.out.substr(bidir, warnings - bidir);
    EXPECT_NE(bidirs.find(rule + "lvc330 \nIO_TYPE:lvc330 DRIVE:080 PULL:u " + chain + "RESERVED:io SLEW:s \n" +
                          std::string(105, ' ') + "SLEW:f \n" + std::string(96, ' ') + "RESERVED:od SLEW:s \n"),
              std::string::npos)
        << "the bidirectional forest, printed from indent 15";
}

} // namespace
