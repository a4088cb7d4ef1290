#ifndef PAD2IBIS_PAD_PAD_LINES_H
#define PAD2IBIS_PAD_PAD_LINES_H

// How the pad report's lines are read: at most 254 characters a line, by the
// one line reader, and what a host may ask of it for reports written with
// CR LF line ends.

#include <istream>

// The headings of the pad report's sections: a line holds one, anywhere and
// in upper case (every line but the first is upper-cased before the search).
char const IBS_PAD_PART_TYPE[] = "PART TYPE";
char const IBS_PAD_PACKAGE[] = "PACKAGE";
char const IBS_PAD_PIN_TABLE[] = "PINOUT BY PORT NAME";
char const IBS_PAD_BANK_TABLE[] = "VCCIO BY BANK:";
char const IBS_PAD_PIN_NUMBER_TABLE[] = "PINOUT BY PIN NUMBER";
// The line that ends the reading of the report; nothing behind it is read.
char const IBS_PAD_END[] = "SYSCONFIG PINS";
// The three tables: behind the heading, three lines (rule, column heads,
// rule) stand ahead of the first row, and the rows run up to a line that
// begins with the rule character.
int const IBS_PAD_TABLE_HEAD_LINES = 3;
char const IBS_PAD_TABLE_RULE = '+';

// Reads one line of the pad report into buf, which has room for
// IBS_LINE_SIZE bytes, with the line reader's states: a longer line sets the
// fail state, a last line without line end the end-of-file state.
std::istream& ibsReadPadLine(std::istream& pad, char* buf);

// A host whose users write pad reports on systems that end lines with CR LF
// opts in here: the CR in front of each line end is then dropped, and a line
// is as long as it is without it, so such a report reads as its twin with LF
// line ends. Off by default: then a CR is part of its line.
void ibsSetPadReportCrLf(bool asLf);

#endif
