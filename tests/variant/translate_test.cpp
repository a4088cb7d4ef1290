// The legal tables' vocabulary carried over into that of the model key: the
// column names become the attribute names of the naming tables, and cell
// values become the key fields that those tables give.

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "variant/vargon_probe.h"

namespace {

using Translate = vt::VargonTest;

TEST_F(Translate, ColumnHeadersTakeTheNamesOfTheNamingTables)
{
    std::vector<std::pair<char const*, char const*>> const columns = {
        {"IO_TYPE", "IO_TYPE"},         {"DRIVE", "DRIVE"},
        {"PULLMODE", "PULL"},           {"PCICLAMP", "PCICLAMP"},
        {"IMPEDANCE", "IMP"},           {"TERMINATEVCCIO", "TERMVCC"},
        {"TERMINATEGND", "TERMGND"},    {"TERMINATEVTT", "TERMVTT"},
        {"VCMT", "VCMT"},               {"DIFFRESISTOR", "DIFFRES"},
        {"DIFFCURRENT", "DIFFCUR"},     {"OPENDRAIN", "RESERVED"},
        {"VREF", "VREF"},               {"REFCIRCUIT", "REFCIRCUIT"},
        {"PWRSAVE", "PWRSAVE"},         {"SLEWRATE", "SLEW"},
    };
    for (auto const& column : columns)
        EXPECT_EQ(model->translateColHeader(column.first), column.second) << column.first;
}

TEST_F(Translate, OtherColumnNamesComeBackAsTheyAre)
{
    for (char const* name : {"RESERVED", "PULL", "impedance", "IMPEDANCE ", "SLEWRATES", "", "FOO"})
        EXPECT_EQ(model->translateColHeader(name), name) << "[" << name << "]";
}

TEST_F(Translate, IoTypeTellingRows)
{
    vt::fillNamingTables(*model);
    std::vector<std::pair<char const*, char const*>> const rows = {
        {"LVCMOS33", "lvc330"},  {"LVCMOS12D", "lcd120"},  {"HSTL15D_II", "hd2150"},
        {"SSTL18_I", "ss1180"},  {"LVDS25E", "lve250"},    {"LVDS", "lvd250"},
        {"RSDS", "rsd250"},      {"AGP1X33", "ag1330"},    {"GTLPLUS15", "gtp150"},
        {"VREF1_DRIVER", "vr1250"}, {"VREF2_DRIVER", "vr2250"}, {"REF_RESISTOR", "ref250"},
        {"PCIX15", "pcx150"},    {"LVTTL33", "ttl330"},
    };
    for (auto const& row : rows) {
        EXPECT_EQ(model->translateCellValue("IO_TYPE", row.first, "io"), row.second) << row.first;
        EXPECT_EQ(model->translateCellValue("IO_TYPE", row.first, "in"), row.second)
            << row.first << ": the direction word plays no part";
    }
}

TEST_F(Translate, IoTypeWithoutAnEntryIsTheDigitFreeNameWithoutVoltage)
{
    vt::fillNamingTables(*model);
    EXPECT_EQ(model->translateCellValue("IO_TYPE", "HSTL18_III", "in"), "HSTL_III");
    EXPECT_EQ(model->translateCellValue("IO_TYPE", "LVPECL33", "io"), "LVPECL");
    EXPECT_EQ(model->translateCellValue("IO_TYPE", "GTL12", "in"), "GTL");
    EXPECT_EQ(model->translateCellValue("IO_TYPE", "MLVDS25", "io"), "MLVDS");

    model->_devIoMaps["IO_TYPE"].erase("GTLP");
    EXPECT_EQ(model->translateCellValue("IO_TYPE", "GTLPLUS15", "in"), "GTLP")
        << "the table's GTLPLUS is looked up as GTLP alone";

    model->_devIoMaps.erase("IO_TYPE");
    EXPECT_EQ(model->translateCellValue("IO_TYPE", "LVCMOS33", "io"), "LVCMOS");
    EXPECT_EQ(model->translateCellValue("IO_TYPE", "AGP1X33", "io"), "AGP1X");
    EXPECT_EQ(model->translateCellValue("IO_TYPE", "VREF1_DRIVER", "in"), "VREF1");
    EXPECT_EQ(model->translateCellValue("IO_TYPE", "REF_RESISTOR", "in"), "REF_RES");
    EXPECT_EQ(model->translateCellValue("IO_TYPE", "LVDS", "io"), "LVDS");
    EXPECT_EQ(model->_devIoMaps.count("IO_TYPE"), 0u) << "the lookup adds no map";
}

TEST_F(Translate, DriveValuesCarryTheUnitIntoTheLookupButNa)
{
    vt::fillNamingTables(*model);
    EXPECT_EQ(model->translateCellValue("DRIVE", "NA", "io"), "xxx");
    EXPECT_EQ(model->translateCellValue("DRIVE", "2", "io"), "020");
    EXPECT_EQ(model->translateCellValue("DRIVE", "8", "io"), "080");
    EXPECT_EQ(model->translateCellValue("DRIVE", "16", "io"), "160");
    EXPECT_EQ(model->translateCellValue("DRIVE", "24", "io"), "240");
    EXPECT_EQ(model->translateCellValue("DRIVE", "10", "io"), "10mA")
        << "a value without an entry stays as prepared for the lookup";
    model->_devIoMaps["DRIVE"].erase("NA");
    EXPECT_EQ(model->translateCellValue("DRIVE", "NA", "io"), "NA");
}

TEST_F(Translate, PullNoneIsLookedUpAsOff)
{
    vt::fillNamingTables(*model);
    EXPECT_EQ(model->translateCellValue("PULL", "NONE", "io"), "o");
    EXPECT_EQ(model->translateCellValue("PULL", "UP", "io"), "u");
    EXPECT_EQ(model->translateCellValue("PULL", "KEEPER", "in"), "k");
    EXPECT_EQ(model->translateCellValue("PULL", "UP_PCICLAMP", "io"), "c");
    EXPECT_EQ(model->translateCellValue("PULL", "PCICLAMP", "io"), "p");
    EXPECT_EQ(model->translateCellValue("PULL", "BUSHOLD", "io"), "BUSHOLD");
    model->_devIoMaps["PULL"].erase("OFF");
    EXPECT_EQ(model->translateCellValue("PULL", "NONE", "io"), "OFF")
        << "the prepared value stays when it has no entry";
}

TEST_F(Translate, VcmtDdrIIIsLookedUpAsDdr2)
{
    vt::fillNamingTables(*model);
    EXPECT_EQ(model->translateCellValue("VCMT", "DDR_II", "io"), "d");
    EXPECT_EQ(model->translateCellValue("VCMT", "VTT", "in"), "t");
    EXPECT_EQ(model->translateCellValue("VCMT", "OFF", "in"), "a");
    model->_devIoMaps["VCMT"].erase("DDR-2");
    EXPECT_EQ(model->translateCellValue("VCMT", "DDR_II", "io"), "DDR-2");
}

TEST_F(Translate, EachRewritingBelongsToItsOwnHeader)
{
    vt::fillNamingTables(*model);
    model->_devIoMaps["IMP"]["NONE"] = "N";
    model->_devIoMaps["IMP"]["50mA"] = "M";
    model->_devIoMaps["TERMVTT"]["DDR-2"] = "D";
    EXPECT_EQ(model->translateCellValue("IMP", "NONE", "io"), "N") << "NONE becomes OFF under PULL only";
    EXPECT_EQ(model->translateCellValue("IMP", "50", "io"), "5") << "the unit goes with DRIVE only";
    EXPECT_EQ(model->translateCellValue("TERMVTT", "DDR_II", "io"), "DDR_II")
        << "DDR_II becomes DDR-2 under VCMT only";
    EXPECT_EQ(model->translateCellValue("DIFFCUR", "3P5", "io"), "3");
    EXPECT_EQ(model->translateCellValue("DIFFCUR", "NA", "io"), "a");
    EXPECT_EQ(model->translateCellValue("SLEW", "NA", "in"), "a");
    EXPECT_EQ(model->translateCellValue("SLEW", "FAST", "io"), "f");
    EXPECT_EQ(model->translateCellValue("DIFFRES", "420", "in"), "x");
    EXPECT_EQ(model->translateCellValue("TERMGND", "120", "in"), "t");
    EXPECT_EQ(model->translateCellValue("TERMVCC", "100", "in"), "h");
    EXPECT_EQ(model->translateCellValue("IMP", "77", "io"), "77") << "no entry: the value stays";
}

TEST_F(Translate, ReservedWithoutMapTakesTheDirectionWord)
{
    vt::fillNamingTables(*model);
    EXPECT_EQ(model->translateCellValue("RESERVED", "OFF", "io"), "io");
    EXPECT_EQ(model->translateCellValue("RESERVED", "OFF", "in"), "in");
    EXPECT_EQ(model->translateCellValue("RESERVED", "ON", "io"), "od");
    EXPECT_EQ(model->translateCellValue("RESERVED", "ON", "in"), "od");
    EXPECT_EQ(model->translateCellValue("RESERVED", "PLUS", "io"), "PLUS");
    EXPECT_EQ(model->_devIoMaps.count("RESERVED"), 0u);
}

TEST_F(Translate, ReservedWithAMapIsAnOrdinaryLookup)
{
    vt::fillNamingTables(*model);
    model->_devIoMaps["RESERVED"] = vt::Codes{{"OFF", "zz"}};
    EXPECT_EQ(model->translateCellValue("RESERVED", "OFF", "io"), "zz");
    EXPECT_EQ(model->translateCellValue("RESERVED", "ON", "io"), "ON");
}

TEST_F(Translate, AHeaderWithoutMapReturnsTheValue)
{
    vt::fillNamingTables(*model);
    EXPECT_EQ(model->translateCellValue("VREF", "VREF1_LOAD", "in"), "VREF1_LOAD");
    EXPECT_EQ(model->translateCellValue("PWRSAVE", "ON", "in"), "ON");
    EXPECT_EQ(model->translateCellValue("PCICLAMP", "ON", "io"), "ON");
    for (char const* header : {"IMP", "DRIVE", "PULL", "VCMT"})
        model->_devIoMaps.erase(header);
    EXPECT_EQ(model->translateCellValue("IMP", "OFF", "io"), "OFF")
        << "an unmapped OFF keeps its three letters";
    EXPECT_EQ(model->translateCellValue("DRIVE", "8", "io"), "8");
    EXPECT_EQ(model->translateCellValue("DRIVE", "NA", "io"), "NA");
    EXPECT_EQ(model->translateCellValue("PULL", "NONE", "io"), "NONE");
    EXPECT_EQ(model->translateCellValue("VCMT", "DDR_II", "io"), "DDR_II");
    for (char const* header : {"IMP", "DRIVE", "PULL", "VCMT", "VREF", "PWRSAVE", "PCICLAMP"})
        EXPECT_EQ(model->_devIoMaps.count(header), 0u) << header << ": the lookup adds no map";
}

TEST_F(Translate, LookupsNeverAddEntries)
{
    vt::fillNamingTables(*model);
    auto const before = model->_devIoMaps;
    model->translateCellValue("IO_TYPE", "HSTL18_III", "in");
    model->translateCellValue("DRIVE", "10", "io");
    model->translateCellValue("PULL", "BUSHOLD", "io");
    model->translateCellValue("IMP", "77", "io");
    model->translateCellValue("VCMT", "DDR_II", "io");
    EXPECT_EQ(model->_devIoMaps, before);
}

} // namespace
