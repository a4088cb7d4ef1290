#ifndef PAD2IBIS_MASTER_MASTER_LINES_H
#define PAD2IBIS_MASTER_MASTER_LINES_H

// How the readers of the master file know its lines: the component line,
// the model list under [Pin] and its rows. The readers ask these, and so can
// anybody who wants to know beforehand what they will make of a master
// file. A line is taken as the readers hold it, up to its first NUL.

#include <string>
#include <string_view>

// The component line: its first blank-separated token holds "[Component]",
// in this letter case.
bool ibsIsComponentLine(std::string_view line);

// The heading of the model list: "[PIN]" in the line, in any letter case.
bool ibsIsPinListHeading(std::string_view line);

// The line that ends the model list behind its heading: one that begins
// with the comment character "|".
bool ibsEndsPinList(std::string_view line);

// A row of the model list: pin, signal name and model name, the first three
// tokens separated by blanks (a TAB is no separator), the model trimmed. A
// row without a model name adds no model.
struct IbsPinListRow {
    std::string pin, signal, model;
};
IbsPinListRow ibsPinListRow(std::string_view line);

#endif
