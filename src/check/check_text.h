#ifndef PAD2IBIS_CHECK_CHECK_TEXT_H
#define PAD2IBIS_CHECK_CHECK_TEXT_H

// Line and token helpers shared by the checker's rules, and the rules of the
// master file's naming section.

#include <string>
#include <vector>

#include "check/ibis_check.h"

namespace ibischeck {

// The file's lines without their line ends; a last line without one counts.
std::vector<std::string> splitLines(std::string const& text);
// Blank-separated tokens (blanks and tabs).
std::vector<std::string> tokensOf(std::string const& line);
std::string upperCase(std::string text);
std::string trimmed(std::string const& text);
// First non-blank character is the IBIS comment character "|".
bool isComment(std::string const& line);
// The keyword of a line that starts with "[", lower case, with "_" read as a
// blank ("[diff pin]"); empty for any other line.
std::string keywordOf(std::string const& line);
// The first token after the keyword's "]".
std::string keywordArgument(std::string const& line);
bool isReservedModel(std::string const& name); // POWER, GND, NC

void addError(std::vector<Finding>& findings, int line, std::string text);
void addWarning(std::vector<Finding>& findings, int line, std::string text);

// Naming tables ahead of the component line (lines [0, end)), and with a
// family the tables it needs.
void checkNamingSection(std::vector<std::string> const& lines, std::size_t end,
                        std::string const& family, std::vector<Finding>& findings);

} // namespace ibischeck

#endif
