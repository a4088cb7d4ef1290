// The compiled-in legal configuration tables: their shape, the IO standards
// in table order, the sharing of cell lists, and telling cells whose list
// order carries the preferred value.

#include "variant/legal_tables.h"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace {

using Values = std::vector<std::string>;

struct Table { const char* name; const char*** cells; int cellCount; const char** columns; int rows; };

const Table kOutputs = {"outputs", BASIB_VARGON_VARGON_Legal_Outputs, BASIB_VARGON_VARGON_Legal_Outputs_cells,
                        BASIB_VARGON_0_VARGON_Legal_Outputs_columns, 75};
const Table kInputs = {"inputs", BASIB_VARGON_VARGON_Legal_Inputs, BASIB_VARGON_VARGON_Legal_Inputs_cells,
                       BASIB_VARGON_1_VARGON_Legal_Inputs_columns, 107};
const Table kBidis = {"bidis", BASIB_VARGON_VARGON_Legal_BIDIs, BASIB_VARGON_VARGON_Legal_BIDIs_cells,
                      BASIB_VARGON_2_VARGON_Legal_BIDIs_columns, 60};
const Table* const kTables[] = {&kOutputs, &kInputs, &kBidis};

const char* const kColumns[] = {"IO_TYPE", "DRIVE", "PULLMODE", "PCICLAMP", "IMPEDANCE", "TERMINATEVCCIO",
                                "TERMINATEGND", "TERMINATEVTT", "VCMT", "DIFFRESISTOR", "DIFFCURRENT",
                                "OPENDRAIN", "VREF", "REFCIRCUIT", "PWRSAVE", "SLEWRATE"};

// A cell's values; no list is longer than 8, so one without its end stops there.
Values ToValues(const char** list)
{
    Values v;
    for (int i = 0; list != nullptr && list[i] != nullptr && i <= 8; ++i)
        v.push_back(list[i]);
    return v;
}

Values Cell(const Table& t, int row, const std::string& column)
{
    for (int c = 0; c < 16; ++c)
        if (column == kColumns[c])
            return ToValues(t.cells[row * BASIB_VARGON_LEGAL_COLUMNS + c]);
    ADD_FAILURE() << "unknown column " << column;
    return {};
}

// Words split at by; "NAME*3" stands for three rows of NAME.
Values Split(const std::string& text, char by = ',')
{
    Values v;
    std::istringstream in(text);
    for (std::string word; std::getline(in, word, by);) {
        std::string::size_type star = word.find('*');
        for (int n = star == std::string::npos ? 1 : std::stoi(word.substr(star + 1)); n > 0; --n)
            v.push_back(word.substr(0, star));
    }
    return v;
}

int FirstRow(const Table& t, const std::string& io)
{
    for (int r = 0; r < t.rows; ++r)
        if (Cell(t, r, "IO_TYPE") == Values{io})
            return r;
    ADD_FAILURE() << io << " not in " << t.name;
    return 0;
}

// Whole rows of sixteen named columns, and the IO type of each row.
TEST(LegalTables, ColumnsAndIoTypesInTableOrder)
{
    struct Case { const Table& table; size_t rows; const char* ioTypes; } const cases[] = {
        {kOutputs, 75,
         "LVDS LVDS25E BLVDS25 MLVDS25 RSDS LVPECL33 HSTL15_I*2 HSTL15_II*3 HSTL15D_I*2 HSTL15D_II*3 HSTL18_I*2 "
         "HSTL18_II*3 HSTL18D_I*2 HSTL18D_II*3 SSTL18_I*2 SSTL18_II*3 SSTL18D_I*2 SSTL18D_II*3 SSTL25_I*2 "
         "SSTL25_II*3 SSTL25D_I*2 SSTL25D_II*3 SSTL33_I SSTL33_II SSTL33D_I SSTL33D_II LVTTL33 LVTTL33D "
         "LVCMOS33 LVCMOS33D LVCMOS25*2 LVCMOS25D*2 LVCMOS18*2 LVCMOS18D*2 LVCMOS15*2 LVCMOS15D*2 LVCMOS12*2 "
         "LVCMOS12D*2 PCI33 PCIX33 PCIX15 AGP1X33 AGP2X33"},
        {kInputs, 107,
         "LVDS*2 BLVDS25 MLVDS25 RSDS*2 LVPECL33*2 HSTL15_I*4 HSTL15_II*4 HSTL15_III HSTL15_IV HSTL15D_I*5 "
         "HSTL15D_II*5 HSTL18_I*4 HSTL18_II*4 HSTL18_III HSTL18_IV HSTL18D_I*5 HSTL18D_II*5 SSTL18_I*4 "
         "SSTL18_II*4 SSTL18D_I*5 SSTL18D_II*5 SSTL25_I*4 SSTL25_II*4 SSTL25D_I*5 SSTL25D_II*5 SSTL33_I "
         "SSTL33_II SSTL33D_I SSTL33D_II GTLPLUS15 GTL12 LVTTL33 LVCMOS33 LVCMOS25 LVCMOS18 LVCMOS15 LVCMOS12 "
         "PCI33 PCIX33 PCIX15*4 AGP1X33 AGP2X33 VREF1_DRIVER VREF2_DRIVER REF_RESISTOR"},
        {kBidis, 60,
         "BLVDS25 MLVDS25 HSTL15_I HSTL15_II*4 HSTL15D_I HSTL15D_II*4 HSTL18_I HSTL18_II*4 HSTL18D_I "
         "HSTL18D_II*4 SSTL18_I SSTL18_II*4 SSTL18D_I SSTL18D_II*4 SSTL25_I SSTL25_II*4 SSTL25D_I SSTL25D_II*4 "
         "SSTL33_II SSTL33D_II LVTTL33 LVCMOS33 LVCMOS25*2 LVCMOS18*2 LVCMOS15*2 LVCMOS12*2 PCI33 PCIX33 "
         "PCIX15*2 AGP1X33 AGP2X33"},
    };
    for (const Case& c : cases) {
        Values want = Split(c.ioTypes, ' '), got;
        ASSERT_EQ(want.size(), c.rows);
        EXPECT_EQ(c.table.cellCount, c.table.rows * 16);
        for (int col = 0; col < 16; ++col)
            EXPECT_STREQ(c.table.columns[col], kColumns[col]) << c.table.name << " column " << col;
        for (int r = 0; r < c.table.rows; ++r) {
            Values io = Cell(c.table, r, "IO_TYPE");
            got.push_back(io.size() == 1 ? io[0] : "<" + std::to_string(io.size()) + " values>");
        }
        EXPECT_EQ(got, want) << c.table.name;
    }
}

TEST(LegalTables, EightyTwoListObjectsServeAllCells)
{
    std::set<const char**> objects;
    std::map<Values, const char**> byValues;
    int cells = 0;
    for (const Table* t : kTables)
        for (int i = 0; i < t->cellCount; ++i, ++cells) {
            const char** list = t->cells[i];
            Values v = ToValues(list);
            ASSERT_TRUE(!v.empty() && v.size() <= 8 && list[v.size()] == nullptr) << t->name << " cell " << i;
            for (const std::string& value : v)
                EXPECT_FALSE(value.empty()) << t->name << " cell " << i;
            objects.insert(list);
            EXPECT_EQ(byValues.emplace(v, list).first->second, list) << t->name << " cell " << i << " copies a list";
        }
    EXPECT_EQ(cells, 3872);
    EXPECT_EQ(objects.size(), 82u);
}

TEST(LegalTables, TellingCells)
{
    struct { const Table& table; const char* io; int offset; const char *column, *values; } const cases[] = {
        {kOutputs, "LVDS", 0, "DIFFCURRENT", "3P5,2,4,6"}, {kOutputs, "RSDS", 0, "DIFFCURRENT", "2,3P5,4,6"},
        {kOutputs, "LVDS", 0, "SLEWRATE", "NA"}, {kOutputs, "LVPECL33", 0, "SLEWRATE", "SLOW,FAST"},
        {kOutputs, "HSTL15_II", 1, "IMPEDANCE", "25"}, {kOutputs, "HSTL15_II", 2, "TERMINATEVCCIO", "120"},
        {kOutputs, "LVCMOS33", 0, "DRIVE", "8,16,24"}, {kOutputs, "LVCMOS33", 0, "OPENDRAIN", "OFF,ON"},
        {kOutputs, "LVCMOS25", 0, "DRIVE", "8,4,12,16"}, {kOutputs, "LVCMOS25", 0, "PULLMODE", "UP,DOWN,NONE,KEEPER"},
        {kOutputs, "LVCMOS25", 1, "IMPEDANCE", "50,100,33,25"}, {kOutputs, "LVCMOS12", 0, "DRIVE", "8,2,4,12"},
        {kOutputs, "PCI33", 0, "PULLMODE", "UP,DOWN,NONE"}, {kOutputs, "PCI33", 0, "PCICLAMP", "ON,OFF"},
        {kInputs, "HSTL18_I", 0, "VREF", "VREF1_LOAD,VREF2_LOAD"}, {kInputs, "HSTL18_I", 0, "PWRSAVE", "ON,OFF"},
        {kInputs, "HSTL18_I", 3, "TERMINATEVTT", "60,75,120,210"}, {kInputs, "HSTL18_I", 3, "VCMT", "VTT"},
        {kInputs, "SSTL25D_I", 0, "DIFFRESISTOR", "OFF,120,150,220,420"}, {kInputs, "RSDS", 0, "PWRSAVE", "OFF,ON"},
        {kInputs, "GTL12", 0, "TERMINATEVCCIO", "OFF,50"}, {kInputs, "LVCMOS33", 0, "DRIVE", "NA"},
        {kBidis, "PCIX15", 1, "TERMINATEVTT", "60,75,150"}, {kBidis, "PCIX15", 1, "VCMT", "DDR_II"},
        {kBidis, "HSTL15_I", 0, "TERMINATEVTT", "150,60,75"}, {kBidis, "SSTL18_II", 3, "IMPEDANCE", "33"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(Cell(c.table, FirstRow(c.table, c.io) + c.offset, c.column), Split(c.values))
            << c.table.name << " " << c.io << "+" << c.offset << " " << c.column;
}

} // namespace
