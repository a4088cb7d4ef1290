#ifndef PAD2IBIS_CHECK_CHECK_TEXT_H
#define PAD2IBIS_CHECK_CHECK_TEXT_H

// Line and token helpers shared by the checker's rules, and the rules of the
// master file's naming section.

#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "check/ibis_check.h"
#include "ibis/ibis_syntax.h"
#include "ibis/line_source.h"
#include "master/naming_headings.h"

namespace ibischeck {

// The blank-separated token (blanks and tabs) at n (from 0), empty for a
// line with fewer.
std::string_view tokenAt(std::string_view line, std::size_t n);
using ibis::upperCase;
std::string trimmed(std::string_view text);
// First non-blank character is the IBIS comment character "|".
bool isComment(std::string_view line);
// The first token after the keyword's "]".
std::string keywordArgument(std::string_view line);

// Text of the file as a finding shows it: every byte outside printable
// ASCII written as \xHH, so that two texts that differ never look alike.
// shown() also puts it in double quotes.
std::string visible(std::string_view text);
std::string shown(std::string_view text);


// Feeds each line of the stream to check, then ends it with the number of
// lines read: for a check with feed(line) and finish(lines).
template <class Check>
std::vector<Finding> checkLines(std::istream& in, Check& check)
{
    ibis::LineSource source(in);
    ibis::Line line;
    int lines = 0;
    while (source.next(line)) {
        check.feed(line);
        lines = line.number;
    }
    return check.finish(lines);
}

void addError(std::vector<Finding>& findings, int line, std::string text);
void addWarning(std::vector<Finding>& findings, int line, std::string text);


class CompletionProbe;

// The naming tables at the top of a master file, fed line by line: each
// table read the way the generator's reader reads it, and with a family the
// tables it needs. The naming section ends at the component line (or, in a
// file without one, at the first package or [Pin] line): headings are
// looked for ahead of that line only.
class NamingSection {
public:
    explicit NamingSection(std::string const& family);

    // A copy whose section ends at line `end`, for a file whose component
    // line may never come.
    NamingSection endingAt(int end) const;
    void setEnd(int end) { _end = end; }
    bool ended() const { return _end != 0; }
    // No table is being read, and none waits for the line behind it.
    bool idle() const { return _table == nullptr && _pending == nullptr; }

    void feed(std::string_view line, int number);
    // The end of the file of `lines` lines: the findings go to findings.
    void finish(int lines, std::vector<Finding>& findings);

private:
    bool inSection(int number) const;
    void closeTable();

    std::string _family;
    std::shared_ptr<CompletionProbe> _probe;
    std::vector<Finding> _findings;
    std::set<int> _read; // key positions whose tables were read
    int _end = 0;        // the line where the section ends, 0 while unknown
    int _completeAt = 0; // heading of the table that completed the family's set
    // The table being read.
    IbsNamingTable const* _table = nullptr;
    int _heading = 0;
    bool _inBody = false;
    IbsNamingTable const* _inRows = nullptr;
    int _inRowsAt = 0;
    // A closed table whose body held a heading: the first line behind its
    // closing comment lines tells whether it was really closed.
    IbsNamingTable const* _pending = nullptr;
    int _pendingHeading = 0;
    IbsNamingTable const* _pendingRows = nullptr;
    int _pendingRowsAt = 0;
};

} // namespace ibischeck

#endif
