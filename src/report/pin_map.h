#ifndef PAD2IBIS_REPORT_PIN_MAP_H
#define PAD2IBIS_REPORT_PIN_MAP_H

// The pin map of the report page: the package's balls as a grid, each pin of
// the design a marker coloured by its signal's outcome (or, by a switch, by
// its bank), the two legs of a differential pair joined.

#include <string>
#include <string_view>
#include <vector>

struct SignalOutcome;

namespace reportpage {

// Rows and columns beyond these are no package's; such names go with the
// other pin names, below the grid.
constexpr int kMaxGridRows = 100;
constexpr int kMaxGridColumns = 100;

// A ball-grid pin name: one or two row letters out of A to Y without I, O,
// Q, S and X (AA follows Y), then the column number, from 1 and without a
// leading zero ("A1", "T16", "AB12"). True with the row counted from 0 (A)
// and the column from 1, both within the limits above.
bool ballPosition(std::string_view pin, int& row, int& column);

// The letters of a row (0: "A", 19: "Y", 20: "AA").
std::string rowLetters(int row);

// The pin map section's content: the colour switch, the legends and the
// <svg>. The grid spans from A1 to the furthest row and column that a pin of
// the design uses; pin names that are no ball-grid name form a row of their
// own below it.
std::string pinMap(std::vector<SignalOutcome> const& signals);

} // namespace reportpage

#endif
