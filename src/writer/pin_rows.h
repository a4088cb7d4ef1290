#ifndef PAD2IBIS_WRITER_PIN_ROWS_H
#define PAD2IBIS_WRITER_PIN_ROWS_H

// The design file's [Pin] rows as the writer lays them out, for the writer
// and for what the design file options say about them: the row of a pin,
// the D-PHY rows' names, and the R_pin, L_pin and C_pin columns that a host
// may ask for.

#include <string>
#include <vector>

class IBIS_MODEL;
struct IbsDesignFileOptions;

// "pin signal model": the pin in 13 columns, a blank, the signal in 20, a
// blank, the model. A longer text is never cut and pushes the rest of the
// row to the right.
std::string pinRowText(std::string const& pin, std::string const& signal, std::string const& model);

// The next D-PHY row for a D-PHY model whose mode letter (its 13th
// character) is `mode`: high-speed and low-power modes are numbered apart,
// pins across both. False for a model of neither mode, which has no row.
bool nextDphyRow(char mode, int& hs, int& lp, std::string& pin, std::string& signal);

// One [Pin] row of the design file without its R_pin, L_pin and C_pin.
struct PinRowLine {
    std::string pin;
    std::string text;
};
// Every [Pin] row in the order written: the signals' rows (two for a pair),
// then with D-PHY the D-PHY rows, of which a model named shorter than 13
// characters gives none.
std::vector<PinRowLine> pinRowLines(IBIS_MODEL const& generator);

// Where the R_pin column starts: one blank behind the longest row that
// carries values, and never left of where a row of 20-character names would
// end. 0 when no row carries values.
std::size_t pinParasiticsColumn(IBIS_MODEL const& generator, IbsDesignFileOptions const& options);

// The [Pin] keyword line: the master's as it stands, or when rows carry
// values one whose column heads stand above the rows' columns.
std::string pinListHeading(std::string const& masterLine, std::size_t column);

// The row with the pin's R_pin, L_pin and C_pin from `column` on, each in 9
// characters and a blank; the row as it stands for a pin without values or
// with column 0.
std::string withPinParasitics(std::string const& row, std::string const& pin, std::size_t start,
                              IbsDesignFileOptions const& options);

#endif
