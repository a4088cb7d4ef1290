// Fuzz target: a master IBIS file read and used for a fixed small design:
// component, naming tables and model list, the design model walk, then the
// design IBIS file with its side files. The first byte picks the run's
// flags and generator.

#include <memory>

#include "fuzz/fuzz_support.h"
#include "variant/basib_vargon.h"

namespace {

// A design of the demo family with pins, banks and differential pairs.
char const designReport[] =
    "Pad Report\n"
    "PART TYPE:   KVA3-40E-6BG256C\n"
    "PACKAGE:     CABGA256\n"
    "Pinout by Port Name:\n"
    "+---+\n"
    "| Port Name | Pin/Bank | Buffer Type | Site | Properties |\n"
    "+---+\n"
    "| clk | F4/6 | LVDS_IN | PL32A | DIFFRESISTOR:100 |\n"
    "| led | A7/0 | LVCMOS33_OUT | PT22A | DRIVE:8mA SLEW:SLOW PULL:NONE |\n"
    "| rx | A4/0 | LVCMOS33_IN | PT11A | PULL:UP CLAMP:ON |\n"
    "| io | B5/0 | LVCMOS33_BIDI | PT17A | OPENDRAIN:ON DRIVE:8mA PULL:UP |\n"
    "| pci | D9/1 | PCI33_BIDI | PT45A | PULL:NONE PCICLAMP:ON SLEW:FAST |\n"
    "| dqs | P2/3 | SSTL18D_II_BIDI | PB23A | SLEW:FAST VCMT:DDR_II IMP:50 |\n"
    "| tx | H2/6 | LVDS_OUT | PL38A | DIFFDRIVE:3.5 SLEW:FAST |\n"
    "+---+\n"
    "Vccio by Bank:\n"
    "+---+\n| Bank | Vccio |\n+---+\n| 0 | 3.3V |\n| 1 | 3.3V |\n| 3 | 1.8V |\n| 6 | 2.5V |\n"
    "+---+\n"
    "Pinout by Pin Number:\n"
    "+---+\n| Pin/Bank | Buffer Type | Pin Info |\n+---+\n"
    "| F4/6 | LVDS_IN | clk |\n| F5/6 | LVDS_IN | clk- |\n| P3/3 | X | dqs- |\n"
    "| H3/6 | LVDS_OUT | tx- |\n+---+\n";

// The table-driven family's design, with its own attribute vocabulary.
char const variantReport[] =
    "Pad Report\n"
    "PART TYPE:   KVAN-25F-5FN484C\n"
    "PACKAGE:     FPBGA484\n"
    "Pinout by Port Name:\n"
    "+---+\n"
    "| Port Name | Pin/Bank | Buffer Type | Site | Properties |\n"
    "+---+\n"
    "| clk | E4/6 | LVDS_IN | PL20A | DIFFRES:120 |\n"
    "| led | B14/0 | LVCMOS33_OUT | PT30B | SLEW:FAST DRIVE:24mA PULL:DOWN |\n"
    "| scl | A15/0 | LVCMOS33_OD | PT33A | DRIVE:8mA PULL:UP |\n"
    "| btn | C3/7 | LVCMOS25_IN | PL9A | PULL:UP PCICLAMP:ON |\n"
    "| dq | K2/5 | SSTL18_II_BIDI | PB4A | IMP:50 TERMVTT:75 VCMT:DDR_II |\n"
    "| rref | T5/4 | REF_RESISTOR | PB30A | |\n"
    "| vref | J5/5 | VREF1_DRIVER | PB9A | |\n"
    "| tx | G1/6 | LVDS_OUT | PL29A | DIFFCUR:3P5 OPENDRAIN:ON |\n"
    "+---+\n"
    "Pinout by Pin Number:\n"
    "+---+\n| Pin/Bank | Buffer Type | Pin Info |\n+---+\n"
    "| E4/6 | LVDS_IN | clk |\n| E5/6 | LVDS_IN | clk- |\n| G2/6 | LVDS_OUT | tx- |\n+---+\n";

char const* const families[] = {"KVA3", "HZU2", "KVA4", "KJ", "KVAN", "KVA4Y", "HZU", "KVZR2"};

// Files that the side-file writers look for beside the master.
void companionFiles()
{
    static bool written = false;
    if (written)
        return;
    char const text[] = "[IBIS Ver] 5.0\n[End]\n";
    fuzz::writeInput("k_btn.ibs", reinterpret_cast<uint8_t const*>(text), sizeof text - 1);
    fuzz::writeInput("master_6bg256c_bg.pkg", reinterpret_cast<uint8_t const*>(text), sizeof text - 1);
    written = true;
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    fuzz::quietStart();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(uint8_t const* data, size_t size)
{
    fuzz::resetStatics();
    uint8_t flags = size > 0 ? data[0] : 0;
    bool const variant = (flags & 0x08) != 0;
    char const* report = variant ? variantReport : designReport;
    companionFiles();
    // Relative names: the design file goes to the IBIS directory, and the
    // side files are looked for beside "./master.ibs".
    fuzz::writeInput("design.pad", reinterpret_cast<uint8_t const*>(report), std::strlen(report));
    fuzz::writeInput("master.ibs", size > 0 ? data + 1 : data, size > 0 ? size - 1 : 0);
    std::string const pad = "design.pad";
    std::string const master = "./master.ibs";
    IBIS_MODEL::_mipi_dphy_ip_used = (flags & 0x01) != 0;
    IBIS_MODEL::_is_brinmark_flow = (flags & 0x02) != 0;
    IBIS_MODEL::_is_ncd_flow = (flags & 0x04) != 0;
    int const btnCount = (flags >> 4) & 0x03;
    char const* family = families[(flags >> 6) % 4 + (variant ? 4 : 0)];

    fuzz::guarded([&] {
        std::string reported;
        IBIS_MODEL::getDevName(pad, reported);
        fuzz::ModelPtr model;
        if (variant)
            model.reset(new IBIS_MODEL_VARGON(family, pad.c_str(), master.c_str()));
        else
            model.reset(new IBIS_MODEL(family, pad.c_str(), master.c_str()));
        if (!model->loadIbisModels())
            return;
        model->setDesignModels();
        model->writeIbisModels(btnCount);
    });
    return 0;
}
