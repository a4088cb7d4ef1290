#ifndef PAD2IBIS_WRITER_COPY_LINES_H
#define PAD2IBIS_WRITER_COPY_LINES_H

// How the writers' passes over the master file know the lines they copy up
// to: the end of the preamble, the design package's block, the end of a
// model block. The passes ask these, and so can anybody who wants to know
// beforehand where a copy will end. A line is taken as the passes hold it,
// up to its first NUL.

#include <string>
#include <string_view>

// The master's package keyword line, which ends the preamble: "PACKAGE" at
// position 0 to 3 of the line in upper case, taken ahead of its first "|".
bool ibsEndsPreamble(std::string_view line);

// A line of the package section as the package writer takes it: trimmed and
// in upper case.
std::string ibsPackageSectionText(std::string_view line);

// The name line of a package block: the text of ibsPackageSectionText less
// its first character is the package name. A line that is not empty as read
// but empty once trimmed has no first character to drop: the package writer
// fails on it with the string operation's out-of-range error.
bool ibsNamesPackage(std::string const& text, std::string const& package);

// The closing line of a package block: "|" once trimmed.
bool ibsClosesPackageBlock(std::string_view line);

// A line that holds "[Model]": it opens a model's block when it also holds
// the model's name, and it ends the block copied ahead of it.
bool ibsHoldsModelKeyword(std::string_view line);

#endif
