#ifndef PAD2IBIS_VARIANT_LEGAL_TABLES_H
#define PAD2IBIS_VARIANT_LEGAL_TABLES_H

// Compiled-in legal configuration tables of the table-driven family: which
// combinations of IO settings are legal for a signal used as output, as input
// and as bidirectional signal.  Each table has its own array of the 16 column
// names (IO_TYPE ... SLEWRATE); its length travels beside it as a cell count.
//
// A cell is a null-terminated list of values, preferred value first.
// A table is a flat array of cells, 16 a row, row-major, no end marker.
extern const char** BASIB_VARGON_VARGON_Legal_Outputs[];
extern const char** BASIB_VARGON_VARGON_Legal_Inputs[];
extern const char** BASIB_VARGON_VARGON_Legal_BIDIs[];
extern const char* BASIB_VARGON_0_VARGON_Legal_Outputs_columns[];
extern const char* BASIB_VARGON_1_VARGON_Legal_Inputs_columns[];
extern const char* BASIB_VARGON_2_VARGON_Legal_BIDIs_columns[];
const int BASIB_VARGON_LEGAL_COLUMNS = 16;
const int BASIB_VARGON_VARGON_Legal_Outputs_cells = 1200;
const int BASIB_VARGON_VARGON_Legal_Inputs_cells = 1712;
const int BASIB_VARGON_VARGON_Legal_BIDIs_cells = 960;

#endif  // PAD2IBIS_VARIANT_LEGAL_TABLES_H
