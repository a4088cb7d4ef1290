#include "safety/pad_scan.h"

#include <algorithm>
#include <cstring>
#include <fstream>

#include "driver/line_reader.h"
#include "ibis/ibis_syntax.h"
#include "ibis/line_source.h"
#include "pad/pad_lines.h"

namespace safety {

namespace {

using ibischeck::Finding;
using ibischeck::Severity;

// The longest line the pad report reader takes.
std::size_t const kLineLimit = IBS_LINE_SIZE - 1;

bool holds(std::string const& upper, char const* heading)
{
    return upper.find(heading) != std::string::npos;
}

} // namespace

PadScan scanPadReport(std::string const& path)
{
    PadScan scan;
    std::ifstream in(path, std::ios::binary);
    if (!in)
        return scan;
    ibis::LineSource source(in);
    ibis::Line line;
    // A table's rows are read by its own reader up to the rule line; the
    // line that ends the report is only seen outside the tables.
    int tableRows = 0;    // the first row's line while inside a table, else 0
    int bankHeading = 0;  // the bank table's heading while its rows are read
    int last = 0;
    bool lastEnded = true, lastCarries = false;
    int tooLong = 0;
    std::size_t tooLongLength = 0;
    while (source.next(line)) {
        last = line.number;
        if (tooLong != 0)
            continue; // the reader reads nothing behind it: only counted
        scan.crlf = scan.crlf || line.crlf;
        if (line.length > kLineLimit) {
            tooLong = line.number;
            tooLongLength = line.length;
            continue;
        }
        if (std::memchr(line.text.data(), '\0', line.text.size()) != nullptr)
            scan.findings.push_back({line.number, Severity::Error,
                                     "NUL byte: the pad report reader would end the line there, and the rest "
                                     "of the line would be lost"});
        lastEnded = line.ended;
        std::string_view::size_type const first = line.text.find_first_not_of(" \t");
        lastCarries = first != std::string_view::npos && line.text[first] != IBS_PAD_TABLE_RULE;
        std::string const upper = ibis::upperCase(line.text);
        if (tableRows != 0) {
            if (line.number >= tableRows && !line.text.empty() && line.text[0] == IBS_PAD_TABLE_RULE) {
                tableRows = 0;
                bankHeading = 0;
            }
            continue;
        }
        if (line.number >= 2 && holds(upper, IBS_PAD_END)) {
            lastCarries = false; // the reading ends here in any case
            break;
        }
        bool const bank = holds(upper, IBS_PAD_BANK_TABLE);
        if (bank || holds(upper, IBS_PAD_PIN_TABLE) || holds(upper, IBS_PAD_PIN_NUMBER_TABLE)) {
            tableRows = line.number + IBS_PAD_TABLE_HEAD_LINES + 1;
            bankHeading = bank ? line.number : 0;
        }
    }
    if (!source.failed())
        scan.read = true;
    if (tooLong != 0) {
        scan.findings.push_back({tooLong, Severity::Error,
                                 "line of " + std::to_string(tooLongLength) + " characters, over the " +
                                     std::to_string(kLineLimit) +
                                     " that the pad report reader takes: it would stop reading here, and lines " +
                                     std::to_string(tooLong) + " to " + std::to_string(last) + " would be lost"});
        bankHeading = 0;
        lastCarries = false;
    }
    if (bankHeading != 0)
        scan.findings.push_back(
            {bankHeading, Severity::Error,
             std::string("the bank table is not closed by a line beginning with \"") + IBS_PAD_TABLE_RULE +
                 "\": its reader would take every line behind it, to line " + std::to_string(last) +
                 ", as bank rows"});
    if (!lastEnded && lastCarries && (scan.findings.empty() || scan.findings.back().line != last))
        scan.findings.push_back({last, Severity::Warning,
                                 "the last line has no line end, and the pad report reader never takes such a "
                                 "line: it is left out"});
    ibischeck::sortByLine(scan.findings);
    return scan;
}

} // namespace safety
