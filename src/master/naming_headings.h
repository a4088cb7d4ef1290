#ifndef PAD2IBIS_MASTER_NAMING_HEADINGS_H
#define PAD2IBIS_MASTER_NAMING_HEADINGS_H

// The naming tables of a master file: the headings that open them, in the
// order the naming section reader tries them (a heading is found anywhere
// in the line, so the first one a line holds decides), the model key
// positions each table codes, and the reader of each. The naming section
// reader asks these, and so can anybody who wants to know beforehand what
// it will make of a master's lines.

#include <vector>

#include "driver/basibsgen.h"

struct IbsNamingTable {
    char const* heading; // "IMPEDANCE"
    char const* alias;   // another heading of the same table ("IMPEDENCE"), or null
    int positions[2];    // the model key positions its codes go to; -1 for none
    void (IBIS_MODEL::*load)();
    bool rowsFirst; // its rows follow the heading at once: a first comment line ends it
};

// Every table, in the order of the headings' tests.
std::vector<IbsNamingTable> const& ibsNamingTables();

// The table that a line of the naming section opens, or null. The line is
// taken trimmed and in upper case; a line that holds "STANDARD" opens the
// IO standard table when that is its first word (a blank or "(" behind it),
// and no table otherwise.
IbsNamingTable const* ibsNamingTableOf(char const* line);

// Marks the model key positions of the table that load reads as driven by
// a table read.
void ibsFlagNamingTable(IBIS_MODEL& model, void (IBIS_MODEL::*load)());

// A line that the scan for headings passes over: one that holds "=".
bool ibsNamingScanSkips(char const* line);

#endif
