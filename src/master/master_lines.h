#ifndef PAD2IBIS_MASTER_MASTER_LINES_H
#define PAD2IBIS_MASTER_MASTER_LINES_H

// How the readers of the master file know its lines: the component line,
// the [Pin] list. The readers ask these, and so can anybody who wants to
// know beforehand what they will make of a master file.

// The component line: its first blank-separated token holds "[Component]",
// in this letter case.
bool ibsIsComponentLine(char const* line);

// The heading of the model list: "[PIN]" in the line, in any letter case.
bool ibsIsPinListHeading(char const* line);

// The line that ends the model list behind its heading: one that begins
// with the comment character "|".
bool ibsEndsPinList(char const* line);

#endif
