// Tests of the compiled-in legal configuration tables: their shape, the IO
// standards they hold in table order, the sharing of cell lists, telling cells
// whose list order carries the preferred value, and the size of the forests
// that the tables expand into.

#include "variant/legal_tables.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace {

using Values = std::vector<std::string>;

const char* const kColumns[] = {
    "IO_TYPE", "DRIVE", "PULLMODE", "PCICLAMP",
    "IMPEDANCE", "TERMINATEVCCIO", "TERMINATEGND", "TERMINATEVTT",
    "VCMT", "DIFFRESISTOR", "DIFFCURRENT", "OPENDRAIN",
    "VREF", "REFCIRCUIT", "PWRSAVE", "SLEWRATE",
};

struct Table {
    const char* name;
    const char*** cells;
    int cellCount;
    const char** columns;
    int rows;
    const char* slewDefault;
};

const Table kOutputs = {"outputs", BASIB_VARGON_VARGON_Legal_Outputs,
                        BASIB_VARGON_VARGON_Legal_Outputs_cells,
                        BASIB_VARGON_0_VARGON_Legal_Outputs_columns, 75, "SLOW,FAST"};
const Table kInputs = {"inputs", BASIB_VARGON_VARGON_Legal_Inputs,
                       BASIB_VARGON_VARGON_Legal_Inputs_cells,
                       BASIB_VARGON_1_VARGON_Legal_Inputs_columns, 107, "NA"};
const Table kBidis = {"bidis", BASIB_VARGON_VARGON_Legal_BIDIs,
                      BASIB_VARGON_VARGON_Legal_BIDIs_cells,
                      BASIB_VARGON_2_VARGON_Legal_BIDIs_columns, 60, "SLOW,FAST"};
const Table* const kTables[] = {&kOutputs, &kInputs, &kBidis};

int Col(const std::string& name) {
    for (int c = 0; c < 16; ++c) {
        if (name == kColumns[c]) return c;
    }
    ADD_FAILURE() << "unknown column " << name;
    return 0;
}

// Longest list any cell may hold; a list without its terminator runs past it.
const int kMaxListLength = 8;

Values ToValues(const char** list) {
    Values v;
    if (list == nullptr) return v;
    for (int i = 0; list[i] != nullptr && i <= kMaxListLength; ++i) v.push_back(list[i]);
    return v;
}

const char** CellList(const Table& t, int row, int col) {
    return t.cells[row * BASIB_VARGON_LEGAL_COLUMNS + col];
}

Values Cell(const Table& t, int row, const std::string& col) {
    return ToValues(CellList(t, row, Col(col)));
}

Values Split(const std::string& text) {
    Values v;
    std::stringstream in(text);
    std::string item;
    while (std::getline(in, item, ',')) v.push_back(item);
    return v;
}

std::string IoType(const Table& t, int row) {
    const char** list = CellList(t, row, 0);
    return (list && list[0]) ? list[0] : "";
}

std::vector<std::string> IoTypes(const Table& t) {
    std::vector<std::string> out;
    for (int r = 0; r < t.rows; ++r) out.push_back(IoType(t, r));
    return out;
}

int FirstRow(const Table& t, const std::string& io) {
    for (int r = 0; r < t.rows; ++r) {
        if (IoType(t, r) == io) return r;
    }
    ADD_FAILURE() << io << " not in " << t.name;
    return 0;
}

// The cells of a row that does not name them: the table's defaults.
std::map<std::string, std::string> Defaults(const Table& t) {
    std::map<std::string, std::string> d;
    for (const char* c : kColumns) d[c] = "OFF";
    d["DRIVE"] = "NA";
    d["PULLMODE"] = "NONE";
    d["DIFFCURRENT"] = "NA";
    d["SLEWRATE"] = t.slewDefault;
    return d;
}

// Checks all 16 cells of one row: the IO type, the named cells, and the
// table's defaults everywhere else.
void ExpectRow(const Table& t, int row, const std::string& io,
               const std::map<std::string, std::string>& differs) {
    SCOPED_TRACE(std::string(t.name) + " row " + std::to_string(row) + " " + io);
    std::map<std::string, std::string> want = Defaults(t);
    want["IO_TYPE"] = io;
    for (const auto& kv : differs) {
        Col(kv.first);
        want[kv.first] = kv.second;
    }
    for (const char* c : kColumns) {
        EXPECT_EQ(Cell(t, row, c), Split(want[c])) << "column " << c;
    }
}

// Node count of the tree one row expands into: a chain over the levels below,
// each value at a level carrying the whole expansion of the levels under it.
// The pull level doubles when the row allows the PCI clamp.
long RowTreeNodes(const Table& t, int row) {
    static const char* const kLevels[] = {
        "DRIVE", "PULLMODE", "IMPEDANCE", "TERMINATEVCCIO", "TERMINATEGND",
        "TERMINATEVTT", "VCMT", "DIFFRESISTOR", "DIFFCURRENT", "OPENDRAIN", "SLEWRATE",
    };
    Values clamp = Cell(t, row, "PCICLAMP");
    bool clamped = std::find(clamp.begin(), clamp.end(), "ON") != clamp.end();
    long nodes = 1;
    long width = 1;
    for (const char* level : kLevels) {
        long c = static_cast<long>(Cell(t, row, level).size());
        if (std::strcmp(level, "PULLMODE") == 0 && clamped) c += c;
        width *= c;
        nodes += width;
    }
    return nodes;
}

long TableTreeNodes(const Table& t) {
    long sum = 0;
    for (int r = 0; r < t.rows; ++r) sum += RowTreeNodes(t, r);
    return sum;
}

}  // namespace

// ---------------------------------------------------------------------------
// Shape
// ---------------------------------------------------------------------------

TEST(LegalTablesShape, CellCountsAreWholeRowsOfSixteen) {
    EXPECT_EQ(BASIB_VARGON_LEGAL_COLUMNS, 16);
    EXPECT_EQ(BASIB_VARGON_VARGON_Legal_Outputs_cells, 75 * 16);
    EXPECT_EQ(BASIB_VARGON_VARGON_Legal_Inputs_cells, 107 * 16);
    EXPECT_EQ(BASIB_VARGON_VARGON_Legal_BIDIs_cells, 60 * 16);
}

TEST(LegalTablesShape, ColumnNamesAreTheSixteenInOrder) {
    for (const Table* t : kTables) {
        SCOPED_TRACE(t->name);
        for (int c = 0; c < 16; ++c) {
            ASSERT_NE(t->columns[c], nullptr);
            EXPECT_STREQ(t->columns[c], kColumns[c]) << "column " << c;
        }
    }
}

TEST(LegalTablesShape, EveryCellIsATerminatedListOfNonEmptyValues) {
    for (const Table* t : kTables) {
        for (int i = 0; i < t->cellCount; ++i) {
            SCOPED_TRACE(std::string(t->name) + " cell " + std::to_string(i));
            const char** list = t->cells[i];
            ASSERT_NE(list, nullptr);
            Values v = ToValues(list);
            ASSERT_GE(v.size(), 1u);
            ASSERT_LE(v.size(), static_cast<size_t>(kMaxListLength));
            EXPECT_EQ(list[v.size()], nullptr);
            for (const std::string& s : v) EXPECT_FALSE(s.empty());
        }
    }
}

TEST(LegalTablesShape, IoTypeCellHoldsExactlyOneValue) {
    for (const Table* t : kTables) {
        for (int r = 0; r < t->rows; ++r) {
            EXPECT_EQ(Cell(*t, r, "IO_TYPE").size(), 1u) << t->name << " row " << r;
        }
    }
}

TEST(LegalTablesShape, ValuesComeFromEachColumnsVocabulary) {
    const std::map<std::string, std::set<std::string>> vocab = {
        {"DRIVE", {"NA", "2", "4", "8", "12", "16", "24"}},
        {"PULLMODE", {"UP", "DOWN", "NONE", "KEEPER"}},
        {"PCICLAMP", {"ON", "OFF"}},
        {"IMPEDANCE", {"OFF", "25", "33", "50", "100"}},
        {"TERMINATEVCCIO", {"OFF", "50", "100", "120"}},
        {"TERMINATEGND", {"OFF", "100", "120"}},
        {"TERMINATEVTT", {"OFF", "60", "75", "120", "150", "210"}},
        {"VCMT", {"OFF", "VCMT", "VTT", "DDR_II"}},
        {"DIFFRESISTOR", {"OFF", "120", "150", "220", "420"}},
        {"DIFFCURRENT", {"NA", "2", "3P5", "4", "6"}},
        {"OPENDRAIN", {"OFF", "ON"}},
        {"VREF", {"OFF", "VREF1_LOAD", "VREF2_LOAD"}},
        {"REFCIRCUIT", {"OFF", "INTERNAL", "EXTERNAL"}},
        {"PWRSAVE", {"ON", "OFF"}},
        {"SLEWRATE", {"NA", "SLOW", "FAST"}},
    };
    for (const Table* t : kTables) {
        for (int r = 0; r < t->rows; ++r) {
            for (const auto& kv : vocab) {
                for (const std::string& v : Cell(*t, r, kv.first)) {
                    EXPECT_TRUE(kv.second.count(v))
                        << t->name << " row " << r << " " << kv.first << " value " << v;
                }
            }
        }
    }
}

// ---------------------------------------------------------------------------
// IO standards, in table order
// ---------------------------------------------------------------------------

TEST(LegalTablesIoTypes, OutputTableOrder) {
    const std::vector<std::string> want = {
        "LVDS", "LVDS25E", "BLVDS25", "MLVDS25", "RSDS", "LVPECL33",
        "HSTL15_I", "HSTL15_I", "HSTL15_II", "HSTL15_II", "HSTL15_II",
        "HSTL15D_I", "HSTL15D_I", "HSTL15D_II", "HSTL15D_II", "HSTL15D_II",
        "HSTL18_I", "HSTL18_I", "HSTL18_II", "HSTL18_II", "HSTL18_II",
        "HSTL18D_I", "HSTL18D_I", "HSTL18D_II", "HSTL18D_II", "HSTL18D_II",
        "SSTL18_I", "SSTL18_I", "SSTL18_II", "SSTL18_II", "SSTL18_II",
        "SSTL18D_I", "SSTL18D_I", "SSTL18D_II", "SSTL18D_II", "SSTL18D_II",
        "SSTL25_I", "SSTL25_I", "SSTL25_II", "SSTL25_II", "SSTL25_II",
        "SSTL25D_I", "SSTL25D_I", "SSTL25D_II", "SSTL25D_II", "SSTL25D_II",
        "SSTL33_I", "SSTL33_II", "SSTL33D_I", "SSTL33D_II",
        "LVTTL33", "LVTTL33D", "LVCMOS33", "LVCMOS33D",
        "LVCMOS25", "LVCMOS25", "LVCMOS25D", "LVCMOS25D",
        "LVCMOS18", "LVCMOS18", "LVCMOS18D", "LVCMOS18D",
        "LVCMOS15", "LVCMOS15", "LVCMOS15D", "LVCMOS15D",
        "LVCMOS12", "LVCMOS12", "LVCMOS12D", "LVCMOS12D",
        "PCI33", "PCIX33", "PCIX15", "AGP1X33", "AGP2X33",
    };
    ASSERT_EQ(want.size(), 75u);
    EXPECT_EQ(IoTypes(kOutputs), want);
}

TEST(LegalTablesIoTypes, InputTableOrder) {
    const std::vector<std::string> want = {
        "LVDS", "LVDS", "BLVDS25", "MLVDS25", "RSDS", "RSDS", "LVPECL33", "LVPECL33",
        "HSTL15_I", "HSTL15_I", "HSTL15_I", "HSTL15_I",
        "HSTL15_II", "HSTL15_II", "HSTL15_II", "HSTL15_II",
        "HSTL15_III", "HSTL15_IV",
        "HSTL15D_I", "HSTL15D_I", "HSTL15D_I", "HSTL15D_I", "HSTL15D_I",
        "HSTL15D_II", "HSTL15D_II", "HSTL15D_II", "HSTL15D_II", "HSTL15D_II",
        "HSTL18_I", "HSTL18_I", "HSTL18_I", "HSTL18_I",
        "HSTL18_II", "HSTL18_II", "HSTL18_II", "HSTL18_II",
        "HSTL18_III", "HSTL18_IV",
        "HSTL18D_I", "HSTL18D_I", "HSTL18D_I", "HSTL18D_I", "HSTL18D_I",
        "HSTL18D_II", "HSTL18D_II", "HSTL18D_II", "HSTL18D_II", "HSTL18D_II",
        "SSTL18_I", "SSTL18_I", "SSTL18_I", "SSTL18_I",
        "SSTL18_II", "SSTL18_II", "SSTL18_II", "SSTL18_II",
        "SSTL18D_I", "SSTL18D_I", "SSTL18D_I", "SSTL18D_I", "SSTL18D_I",
        "SSTL18D_II", "SSTL18D_II", "SSTL18D_II", "SSTL18D_II", "SSTL18D_II",
        "SSTL25_I", "SSTL25_I", "SSTL25_I", "SSTL25_I",
        "SSTL25_II", "SSTL25_II", "SSTL25_II", "SSTL25_II",
        "SSTL25D_I", "SSTL25D_I", "SSTL25D_I", "SSTL25D_I", "SSTL25D_I",
        "SSTL25D_II", "SSTL25D_II", "SSTL25D_II", "SSTL25D_II", "SSTL25D_II",
        "SSTL33_I", "SSTL33_II", "SSTL33D_I", "SSTL33D_II",
        "GTLPLUS15", "GTL12",
        "LVTTL33", "LVCMOS33", "LVCMOS25", "LVCMOS18", "LVCMOS15", "LVCMOS12",
        "PCI33", "PCIX33", "PCIX15", "PCIX15", "PCIX15", "PCIX15",
        "AGP1X33", "AGP2X33",
        "VREF1_DRIVER", "VREF2_DRIVER", "REF_RESISTOR",
    };
    ASSERT_EQ(want.size(), 107u);
    EXPECT_EQ(IoTypes(kInputs), want);
}

TEST(LegalTablesIoTypes, BidirectionalTableOrder) {
    const std::vector<std::string> want = {
        "BLVDS25", "MLVDS25",
        "HSTL15_I", "HSTL15_II", "HSTL15_II", "HSTL15_II", "HSTL15_II",
        "HSTL15D_I", "HSTL15D_II", "HSTL15D_II", "HSTL15D_II", "HSTL15D_II",
        "HSTL18_I", "HSTL18_II", "HSTL18_II", "HSTL18_II", "HSTL18_II",
        "HSTL18D_I", "HSTL18D_II", "HSTL18D_II", "HSTL18D_II", "HSTL18D_II",
        "SSTL18_I", "SSTL18_II", "SSTL18_II", "SSTL18_II", "SSTL18_II",
        "SSTL18D_I", "SSTL18D_II", "SSTL18D_II", "SSTL18D_II", "SSTL18D_II",
        "SSTL25_I", "SSTL25_II", "SSTL25_II", "SSTL25_II", "SSTL25_II",
        "SSTL25D_I", "SSTL25D_II", "SSTL25D_II", "SSTL25D_II", "SSTL25D_II",
        "SSTL33_II", "SSTL33D_II",
        "LVTTL33", "LVCMOS33",
        "LVCMOS25", "LVCMOS25", "LVCMOS18", "LVCMOS18", "LVCMOS15", "LVCMOS15",
        "LVCMOS12", "LVCMOS12",
        "PCI33", "PCIX33", "PCIX15", "PCIX15", "AGP1X33", "AGP2X33",
    };
    ASSERT_EQ(want.size(), 60u);
    EXPECT_EQ(IoTypes(kBidis), want);
}

TEST(LegalTablesIoTypes, DirectionOnlyStandardsStayInTheirTable) {
    auto in = [](const Table& t, const std::string& io) {
        std::vector<std::string> all = IoTypes(t);
        return std::find(all.begin(), all.end(), io) != all.end();
    };
    for (const char* io : {"LVTTL33D", "LVCMOS33D", "LVCMOS25D", "LVCMOS18D",
                           "LVCMOS15D", "LVCMOS12D"}) {
        EXPECT_TRUE(in(kOutputs, io)) << io;
        EXPECT_FALSE(in(kInputs, io)) << io;
        EXPECT_FALSE(in(kBidis, io)) << io;
    }
    for (const char* io : {"HSTL15_III", "HSTL15_IV", "HSTL18_III", "HSTL18_IV", "GTLPLUS15",
                           "GTL12", "VREF1_DRIVER", "VREF2_DRIVER", "REF_RESISTOR"}) {
        EXPECT_FALSE(in(kOutputs, io)) << io;
        EXPECT_TRUE(in(kInputs, io)) << io;
        EXPECT_FALSE(in(kBidis, io)) << io;
    }
    for (const char* io : {"LVDS25E", "LVDS", "RSDS", "LVPECL33", "SSTL33_I", "SSTL33D_I"}) {
        EXPECT_TRUE(in(kOutputs, io)) << io;
        EXPECT_FALSE(in(kBidis, io)) << io;
    }
}

// ---------------------------------------------------------------------------
// Shared list objects
// ---------------------------------------------------------------------------

TEST(LegalTablesSharedLists, EightyTwoListObjectsServeAllCells) {
    std::set<const char**> objects;
    int cells = 0;
    for (const Table* t : kTables) {
        for (int i = 0; i < t->cellCount; ++i) objects.insert(t->cells[i]);
        cells += t->cellCount;
    }
    EXPECT_EQ(cells, 3872);
    EXPECT_EQ(objects.size(), 82u);
}

TEST(LegalTablesSharedLists, EqualListsAreOneObjectAcrossTablesAndColumns) {
    std::map<Values, const char**> byValues;
    for (const Table* t : kTables) {
        for (int i = 0; i < t->cellCount; ++i) {
            Values v = ToValues(t->cells[i]);
            auto it = byValues.emplace(v, t->cells[i]).first;
            EXPECT_EQ(it->second, t->cells[i])
                << t->name << " cell " << i << " holds a second copy of a list";
        }
    }
    EXPECT_EQ(byValues.size(), 82u);
}

TEST(LegalTablesSharedLists, ListsAreFirstMetWhereTheirNamesSay) {
    // Where each list is first met, scanning tables, rows, then columns.
    std::map<Values, std::string> firstUse;
    for (int ti = 0; ti < 3; ++ti) {
        const Table& t = *kTables[ti];
        for (int r = 0; r < t.rows; ++r) {
            for (int c = 0; c < 16; ++c) {
                firstUse.emplace(ToValues(CellList(t, r, c)),
                                 std::to_string(ti) + "_" + kColumns[c] + "_" + std::to_string(r));
            }
        }
    }
    EXPECT_EQ(firstUse[Values{"HSTL18D_I"}], "0_IO_TYPE_21");
    EXPECT_EQ(firstUse[Split("OFF,ON")], "0_OPENDRAIN_50");
    EXPECT_EQ(firstUse[Values{"OFF"}], "0_PCICLAMP_0");
    EXPECT_EQ(firstUse[Values{"NA"}], "0_DRIVE_0");
    EXPECT_EQ(firstUse[Split("60,75,150")], "2_TERMINATEVTT_57");
}

TEST(LegalTablesSharedLists, OffListServesUnnamedCellsOfEveryTable) {
    const char** off = CellList(kOutputs, 0, Col("PCICLAMP"));
    ASSERT_EQ(ToValues(off), Values{"OFF"});
    EXPECT_EQ(CellList(kOutputs, 0, Col("IMPEDANCE")), off);
    EXPECT_EQ(CellList(kInputs, FirstRow(kInputs, "REF_RESISTOR"), Col("TERMINATEVCCIO")), off);
    EXPECT_EQ(CellList(kBidis, 0, Col("OPENDRAIN")), off);
    // NA is one list for drive, differential current and slew alike.
    const char** na = CellList(kOutputs, 0, Col("DRIVE"));
    EXPECT_EQ(CellList(kOutputs, 0, Col("SLEWRATE")), na);
    EXPECT_EQ(CellList(kInputs, 0, Col("DIFFCURRENT")), na);
}

// ---------------------------------------------------------------------------
// Telling cells: list order carries the preferred value
// ---------------------------------------------------------------------------

TEST(LegalTablesCells, LvdsAndRsdsOutputsPreferDifferentCurrents) {
    ExpectRow(kOutputs, 0, "LVDS",
              {{"DIFFCURRENT", "3P5,2,4,6"}, {"REFCIRCUIT", "INTERNAL,EXTERNAL"},
               {"SLEWRATE", "NA"}});
    ExpectRow(kOutputs, 4, "RSDS",
              {{"DIFFCURRENT", "2,3P5,4,6"}, {"REFCIRCUIT", "INTERNAL,EXTERNAL"},
               {"SLEWRATE", "NA"}});
    ExpectRow(kOutputs, 1, "LVDS25E", {{"IMPEDANCE", "50"}});
    ExpectRow(kOutputs, 2, "BLVDS25", {{"IMPEDANCE", "100"}});
    ExpectRow(kOutputs, 3, "MLVDS25", {{"IMPEDANCE", "50"}});
    ExpectRow(kOutputs, 5, "LVPECL33", {});
    for (const char* io : {"SSTL33_I", "SSTL33_II", "SSTL33D_I", "SSTL33D_II"}) {
        ExpectRow(kOutputs, FirstRow(kOutputs, io), io, {});
    }
}

TEST(LegalTablesCells, OutputGroupsUseTheirOwnImpedances) {
    struct Group { const char* g; const char* a; const char* b; };
    for (const Group& grp : {Group{"HSTL15", "50", "25"}, Group{"HSTL18", "50", "25"},
                             Group{"SSTL18", "33", "33"}, Group{"SSTL25", "50", "33"}}) {
        const std::string g = grp.g;
        for (const std::string& io : {g + "_I", g + "D_I"}) {
            int r = FirstRow(kOutputs, io);
            ExpectRow(kOutputs, r, io, {});
            ExpectRow(kOutputs, r + 1, io, {{"IMPEDANCE", grp.a}});
        }
        for (const std::string& io : {g + "_II", g + "D_II"}) {
            int r = FirstRow(kOutputs, io);
            ExpectRow(kOutputs, r, io, {});
            ExpectRow(kOutputs, r + 1, io, {{"IMPEDANCE", grp.b}});
            ExpectRow(kOutputs, r + 2, io,
                      {{"IMPEDANCE", grp.b}, {"TERMINATEVCCIO", "120"}, {"TERMINATEGND", "120"}});
        }
    }
}

TEST(LegalTablesCells, DrivePreferenceFollowsTheVoltage) {
    const std::map<std::string, std::string> pull4 = {{"PULLMODE", "UP,DOWN,NONE,KEEPER"},
                                                      {"OPENDRAIN", "OFF,ON"}};
    for (const Table* t : {&kOutputs, &kBidis}) {
        const bool out = t == &kOutputs;
        for (const char* name : {"LVTTL33", "LVCMOS33", "LVTTL33D", "LVCMOS33D"}) {
            const std::string io = name;
            if (!out && io.back() == 'D') continue;
            ExpectRow(*t, FirstRow(*t, io), io,
                      {{"DRIVE", "8,16,24"}, {"PULLMODE", "UP,DOWN,NONE"},
                       {"OPENDRAIN", "OFF,ON"}});
        }
        for (const char* name : {"LVCMOS25", "LVCMOS18", "LVCMOS15", "LVCMOS12",
                                 "LVCMOS25D", "LVCMOS18D", "LVCMOS15D", "LVCMOS12D"}) {
            const std::string io = name;
            if (!out && io.back() == 'D') continue;
            int r = FirstRow(*t, io);
            auto row1 = pull4;
            row1["DRIVE"] = io.compare(0, 8, "LVCMOS12") == 0 ? "8,2,4,12" : "8,4,12,16";
            ExpectRow(*t, r, io, row1);
            auto row2 = pull4;
            row2["IMPEDANCE"] = "50,100,33,25";
            ExpectRow(*t, r + 1, io, row2);
        }
    }
}

TEST(LegalTablesCells, SlewDefaultsPerDirection) {
    for (int r = 0; r < kOutputs.rows; ++r) {
        std::string io = IoType(kOutputs, r);
        Values want = (io == "LVDS" || io == "RSDS") ? Values{"NA"} : Split("SLOW,FAST");
        EXPECT_EQ(Cell(kOutputs, r, "SLEWRATE"), want) << "output row " << r << " " << io;
    }
    for (int r = 0; r < kInputs.rows; ++r) {
        EXPECT_EQ(Cell(kInputs, r, "SLEWRATE"), Values{"NA"}) << "input row " << r;
    }
    for (int r = 0; r < kBidis.rows; ++r) {
        EXPECT_EQ(Cell(kBidis, r, "SLEWRATE"), Split("SLOW,FAST")) << "bidi row " << r;
    }
}

TEST(LegalTablesCells, InputsNeverDriveOrOpenDrain) {
    for (int r = 0; r < kInputs.rows; ++r) {
        EXPECT_EQ(Cell(kInputs, r, "DRIVE"), Values{"NA"}) << "input row " << r;
        EXPECT_EQ(Cell(kInputs, r, "OPENDRAIN"), Values{"OFF"}) << "input row " << r;
        EXPECT_EQ(Cell(kInputs, r, "IMPEDANCE"), Values{"OFF"}) << "input row " << r;
    }
}

namespace {

using Cells = std::map<std::string, std::string>;

Cells With(Cells base, const Cells& more) {
    for (const auto& kv : more) base[kv.first] = kv.second;
    return base;
}

// Shape V4: four rows with both VREF loads and power saving.
void ExpectV4(const std::string& io, const Cells& extra = {}) {
    int r = FirstRow(kInputs, io);
    const Cells all = With({{"VREF", "VREF1_LOAD,VREF2_LOAD"}, {"PWRSAVE", "ON,OFF"}}, extra);
    ExpectRow(kInputs, r, io, all);
    ExpectRow(kInputs, r + 1, io, With(all, {{"TERMINATEVCCIO", "120"}, {"TERMINATEGND", "120"}}));
    ExpectRow(kInputs, r + 2, io, With(all, {{"TERMINATEVCCIO", "100"}, {"TERMINATEGND", "100"}}));
    ExpectRow(kInputs, r + 3, io, With(all, {{"TERMINATEVTT", "60,75,120,210"}, {"VCMT", "VTT"}}));
}

// Shape D5: five rows of differential termination, power saving preferred on.
void ExpectD5(const std::string& io) {
    int r = FirstRow(kInputs, io);
    const Cells all = {{"PWRSAVE", "ON,OFF"}};
    ExpectRow(kInputs, r, io, With(all, {{"DIFFRESISTOR", "OFF,120,150,220,420"}}));
    ExpectRow(kInputs, r + 1, io,
              With(all, {{"VCMT", "VCMT"}, {"DIFFRESISTOR", "120,150,220,420"}}));
    ExpectRow(kInputs, r + 2, io, With(all, {{"TERMINATEVCCIO", "120"}, {"TERMINATEGND", "120"}}));
    ExpectRow(kInputs, r + 3, io, With(all, {{"TERMINATEVCCIO", "100"}, {"TERMINATEGND", "100"}}));
    ExpectRow(kInputs, r + 4, io, With(all, {{"TERMINATEVTT", "60,75,120,210"}, {"VCMT", "VTT"}}));
}

// Shape S1: one row with an optional 50 ohm termination to VCCIO.
void ExpectS1(const std::string& io) {
    ExpectRow(kInputs, FirstRow(kInputs, io), io,
              {{"TERMINATEVCCIO", "OFF,50"}, {"VREF", "VREF1_LOAD,VREF2_LOAD"},
               {"PWRSAVE", "ON,OFF"}});
}

// Shape D2: the first two rows of D5, power saving preferred off.
void ExpectD2(const std::string& io) {
    int r = FirstRow(kInputs, io);
    const Cells all = {{"PWRSAVE", "OFF,ON"}};
    ExpectRow(kInputs, r, io, With(all, {{"DIFFRESISTOR", "OFF,120,150,220,420"}}));
    ExpectRow(kInputs, r + 1, io,
              With(all, {{"VCMT", "VCMT"}, {"DIFFRESISTOR", "120,150,220,420"}}));
}

}  // namespace

TEST(LegalTablesCells, InputShapeV4) { ExpectV4("HSTL18_I"); }

TEST(LegalTablesCells, InputShapeD5) { ExpectD5("SSTL25D_I"); }

TEST(LegalTablesCells, InputShapeS1) { ExpectS1("GTL12"); }

TEST(LegalTablesCells, InputShapeD2) { ExpectD2("RSDS"); }

TEST(LegalTablesCells, EveryInputRowOfAShapedStandardHasItsShape) {
    for (const char* io : {"HSTL15_I", "HSTL15_II", "HSTL18_I", "HSTL18_II", "SSTL18_I",
                           "SSTL18_II", "SSTL25_I", "SSTL25_II"}) {
        ExpectV4(io);
    }
    for (const char* io : {"HSTL15D_I", "HSTL15D_II", "HSTL18D_I", "HSTL18D_II", "SSTL18D_I",
                           "SSTL18D_II", "SSTL25D_I", "SSTL25D_II"}) {
        ExpectD5(io);
    }
    for (const char* io : {"HSTL15_III", "HSTL15_IV", "HSTL18_III", "HSTL18_IV", "GTLPLUS15",
                           "GTL12"}) {
        ExpectS1(io);
    }
    for (const char* io : {"LVDS", "RSDS", "LVPECL33"}) ExpectD2(io);
    // The input PCIX15 rows are the V4 shape with the clamp.
    ExpectV4("PCIX15", {{"PULLMODE", "UP,DOWN,NONE"}, {"PCICLAMP", "ON,OFF"}});
}

TEST(LegalTablesCells, InputSingleRowsOfTheRemainingStandards) {
    for (const char* io : {"BLVDS25", "MLVDS25"}) {
        ExpectRow(kInputs, FirstRow(kInputs, io), io, {{"PWRSAVE", "OFF,ON"}});
    }
    for (const char* io : {"SSTL33_I", "SSTL33_II"}) {
        ExpectRow(kInputs, FirstRow(kInputs, io), io,
                  {{"VREF", "VREF1_LOAD,VREF2_LOAD"}, {"PWRSAVE", "ON,OFF"}});
    }
    for (const char* io : {"SSTL33D_I", "SSTL33D_II"}) {
        ExpectRow(kInputs, FirstRow(kInputs, io), io, {{"PWRSAVE", "ON,OFF"}});
    }
    for (const char* io : {"LVTTL33", "LVCMOS33"}) {
        ExpectRow(kInputs, FirstRow(kInputs, io), io, {{"PULLMODE", "UP,DOWN,NONE"}});
    }
    for (const char* io : {"LVCMOS25", "LVCMOS18", "LVCMOS15", "LVCMOS12"}) {
        ExpectRow(kInputs, FirstRow(kInputs, io), io, {{"PULLMODE", "UP,DOWN,NONE,KEEPER"}});
    }
    for (const char* io : {"VREF1_DRIVER", "VREF2_DRIVER", "REF_RESISTOR"}) {
        ExpectRow(kInputs, FirstRow(kInputs, io), io, {});
    }
}

TEST(LegalTablesCells, PciStandardsAllowTheClamp) {
    const std::map<std::string, std::string> pci = {{"PULLMODE", "UP,DOWN,NONE"},
                                                    {"PCICLAMP", "ON,OFF"}};
    for (const char* io : {"PCI33", "PCIX33", "PCIX15", "AGP1X33", "AGP2X33"}) {
        ExpectRow(kOutputs, FirstRow(kOutputs, io), io, pci);
    }
    for (const Table* t : {&kInputs, &kBidis}) {
        ExpectRow(*t, FirstRow(*t, "PCI33"), "PCI33", pci);
        ExpectRow(*t, FirstRow(*t, "PCIX33"), "PCIX33", pci);
        ExpectRow(*t, FirstRow(*t, "AGP1X33"), "AGP1X33", pci);
        auto agp2 = pci;
        agp2["VREF"] = "VREF1_LOAD,VREF2_LOAD";
        agp2["PWRSAVE"] = "ON,OFF";
        ExpectRow(*t, FirstRow(*t, "AGP2X33"), "AGP2X33", agp2);
    }
}

TEST(LegalTablesCells, BidirectionalPcix15PrefersSixtyOhmTermination) {
    int r = FirstRow(kBidis, "PCIX15");
    const std::map<std::string, std::string> both = {
        {"PULLMODE", "UP,DOWN,NONE"}, {"PCICLAMP", "ON,OFF"},
        {"VREF", "VREF1_LOAD,VREF2_LOAD"}, {"PWRSAVE", "ON,OFF"}};
    ExpectRow(kBidis, r, "PCIX15", both);
    auto row2 = both;
    row2["TERMINATEVTT"] = "60,75,150";
    row2["VCMT"] = "DDR_II";
    ExpectRow(kBidis, r + 1, "PCIX15", row2);
}

TEST(LegalTablesCells, BidirectionalGroupsCarryDdrTermination) {
    struct Group { const char* g; const char* a; const char* b; };
    for (const Group& grp : {Group{"HSTL15", "50", "25"}, Group{"HSTL18", "50", "25"},
                             Group{"SSTL18", "33", "33"}, Group{"SSTL25", "50", "33"}}) {
        const std::string g = grp.g;
        for (const std::string& suffix : {std::string(""), std::string("D")}) {
            std::map<std::string, std::string> base = {{"PWRSAVE", "ON,OFF"}};
            if (suffix.empty()) base["VREF"] = "VREF1_LOAD,VREF2_LOAD";
            const std::string one = g + suffix + "_I";
            const std::string two = g + suffix + "_II";
            auto ddrA = base;
            ddrA["IMPEDANCE"] = grp.a;
            ddrA["TERMINATEVTT"] = "150,60,75";
            ddrA["VCMT"] = "DDR_II";
            ExpectRow(kBidis, FirstRow(kBidis, one), one, ddrA);
            int r = FirstRow(kBidis, two);
            ExpectRow(kBidis, r, two, base);
            auto imp = base;
            imp["IMPEDANCE"] = grp.b;
            ExpectRow(kBidis, r + 1, two, imp);
            auto term = imp;
            term["TERMINATEVCCIO"] = "120";
            term["TERMINATEGND"] = "120";
            ExpectRow(kBidis, r + 2, two, term);
            auto ddrB = imp;
            ddrB["TERMINATEVTT"] = "150,60,75";
            ddrB["VCMT"] = "DDR_II";
            ExpectRow(kBidis, r + 3, two, ddrB);
        }
    }
    ExpectRow(kBidis, 0, "BLVDS25", {{"IMPEDANCE", "100"}, {"PWRSAVE", "OFF,ON"}});
    ExpectRow(kBidis, 1, "MLVDS25", {{"IMPEDANCE", "50"}, {"PWRSAVE", "OFF,ON"}});
    ExpectRow(kBidis, FirstRow(kBidis, "SSTL33_II"), "SSTL33_II",
              {{"VREF", "VREF1_LOAD,VREF2_LOAD"}, {"PWRSAVE", "ON,OFF"}});
    ExpectRow(kBidis, FirstRow(kBidis, "SSTL33D_II"), "SSTL33D_II", {{"PWRSAVE", "ON,OFF"}});
}

// ---------------------------------------------------------------------------
// Size of the forests the tables expand into
// ---------------------------------------------------------------------------

TEST(LegalTablesForestSize, RowTreeIsTheCrossProductOfItsLevels) {
    // No alternatives anywhere: a bare chain of root and eleven levels.
    EXPECT_EQ(RowTreeNodes(kInputs, FirstRow(kInputs, "VREF1_DRIVER")), 12);
    // Only the slew leaf doubles.
    EXPECT_EQ(RowTreeNodes(kOutputs, FirstRow(kOutputs, "LVPECL33")), 13);
    // Pull UP,DOWN,NONE with the clamp: six pull values on each of the nine
    // levels from pull to open drain, then two slew values under each.
    EXPECT_EQ(RowTreeNodes(kOutputs, FirstRow(kOutputs, "PCI33")), 1 + 1 + 6 * 9 + 12);
    // Without the clamp the same pull list gives three.
    EXPECT_EQ(RowTreeNodes(kInputs, FirstRow(kInputs, "LVTTL33")), 1 + 1 + 3 * 10);
}

TEST(LegalTablesForestSize, NodeCountsPerForest) {
    EXPECT_EQ(TableTreeNodes(kOutputs), 5070);
    EXPECT_EQ(TableTreeNodes(kInputs), 2596);
    EXPECT_EQ(TableTreeNodes(kBidis), 3320);
    EXPECT_EQ(TableTreeNodes(kOutputs) + TableTreeNodes(kInputs) + TableTreeNodes(kBidis),
              10986);
}

TEST(LegalTablesForestSize, LargestRowTree) {
    long largest = 0;
    for (const Table* t : kTables) {
        for (int r = 0; r < t->rows; ++r) largest = std::max(largest, RowTreeNodes(*t, r));
    }
    EXPECT_EQ(largest, 229);
    // Four drives, four pulls, open drain and slew: the first 2.5-volt LVCMOS row.
    EXPECT_EQ(RowTreeNodes(kOutputs, FirstRow(kOutputs, "LVCMOS25")), 229);
}
