// The naming tables at the top of a master IBIS file, read the way the
// generator's naming section reader reads them, and with a family the
// tables the generator's completion test asks of that family.

#include <cstring>
#include <memory>
#include <set>

#include "check/check_text.h"
#include "driver/basibsgen.h"
#include "master/naming_headings.h"
#include "variant/basib_vargon.h"

namespace ibischeck {

namespace {

// The table a line opens, or null: as the naming section reader knows it.
IbsNamingTable const* headingOf(std::string const& line)
{
    return ibsNamingScanSkips(line.c_str()) ? nullptr : ibsNamingTableOf(line.c_str());
}

bool opensWithBar(std::string_view line)
{
    std::string_view const first = tokenAt(line, 0);
    return !first.empty() && first[0] == '|';
}

} // namespace

// The generator's own completion test, asked with the key positions whose
// tables have been read: the table-driven generator's for that family
// ("KVAN", or a part type that holds it), the standard one's for any other.
class CompletionProbe : public IBIS_MODEL {
public:
    explicit CompletionProbe(std::string const& family) : _tableDriven(family.find("KVAN") != std::string::npos)
    {
        // The word is read as the head of a part type ("KVA3" as
        // "KVA3-...") and reduced the way a pad report's part type is.
        _partName = family + "-";
        getPartName(_partName);
    }
    bool complete(std::set<int> const& read)
    {
        for (int position = 0; position < 21; ++position)
            _keyFieldPresent[position] =
                read.count(position) != 0 || position == 7 || position == 18 || position == 19;
        return _tableDriven ? vargonNamingComplete(_keyFieldPresent) : IBIS_MODEL::hasDoneLoadingIoMaps();
    }

private:
    bool _tableDriven;
};

namespace {

std::string tablesFor(int position)
{
    std::string names;
    for (IbsNamingTable const& table : ibsNamingTables())
        for (int p : table.positions)
            if (p == position && names.find(table.heading) == std::string::npos)
                names += std::string(names.empty() ? "" : " or ") + table.heading;
    return names;
}

} // namespace

NamingSection::NamingSection(std::string const& family)
    : _family(family), _probe(std::make_shared<CompletionProbe>(family))
{
}

NamingSection NamingSection::endingAt(int end) const
{
    NamingSection copy = *this;
    copy._end = end;
    copy._findings.clear();
    return copy;
}

bool NamingSection::inSection(int number) const
{
    return _end == 0 || number < _end;
}

// The reader: comment lines ahead of the body, the body, and the first
// comment line behind it, which ends the table. A heading in the body is an
// ordinary row, unless rows without a heading follow the comment line that
// ended the table: then the table was not closed, and the next table's
// heading went in as a row. The TERMINATION reader takes no comment lines
// ahead of its body.
void NamingSection::feed(std::string_view text, int number)
{
    if (_table == nullptr && _pending == nullptr && !inSection(number))
        return;
    std::string const line(text);
    bool const bar = opensWithBar(line);
    if (_pending != nullptr && !bar) {
        // The first line behind the closing comment lines.
        if (inSection(number) && !tokenAt(line, 0).empty() && headingOf(line) == nullptr)
            addError(_findings, _pendingHeading,
                     std::string("naming table ") + _pending->heading + " is not closed by a \"|\" line before the heading " +
                         _pendingRows->heading + " at line " + std::to_string(_pendingRowsAt) +
                         "; the reader takes that table in as rows");
        _pending = nullptr;
    }
    if (_table != nullptr) {
        if (!_inBody && bar)
            return;
        _inBody = true;
        if (!bar) {
            if (IbsNamingTable const* next = headingOf(line)) {
                _inRows = next;
                _inRowsAt = number;
            }
            return;
        }
        bool const bodyFirst = _table->rowsFirst;
        if (bodyFirst && number == _heading + 1)
            addError(_findings, _heading,
                     std::string("naming table ") + _table->heading +
                         " has a comment line ahead of its rows; its reader ends there");
        if (!inSection(number))
            addError(_findings, _heading,
                     std::string("naming table ") + _table->heading +
                         " is not closed by a \"|\" line ahead of line " + std::to_string(_end) +
                         ", where the naming section ends; the reader takes what follows as rows");
        if (_inRows != nullptr) {
            _pending = _table;
            _pendingHeading = _heading;
            _pendingRows = _inRows;
            _pendingRowsAt = _inRowsAt;
        }
        closeTable();
        return;
    }
    if (!inSection(number))
        return;
    IbsNamingTable const* table = headingOf(line);
    if (table == nullptr)
        return;
    if (_completeAt != 0)
        addWarning(_findings, number,
                   std::string("naming table ") + table->heading + " stands behind line " + std::to_string(_completeAt) +
                       ", where the tables for " + _family + " are complete; the generator never reads it");
    _table = table;
    _heading = number;
    _inBody = table->rowsFirst;
    _inRows = nullptr;
}

void NamingSection::closeTable()
{
    for (int position : _table->positions)
        if (position >= 0)
            _read.insert(position);
    if (!_family.empty() && _completeAt == 0 && _probe->complete(_read))
        _completeAt = _heading;
    _table = nullptr;
}

void NamingSection::finish(int lines, std::vector<Finding>& findings)
{
    if (_table != nullptr) {
        addError(_findings, _heading,
                 std::string("naming table ") + _table->heading +
                     " is never closed by a \"|\" line; its reader runs to the end of the file");
        closeTable();
    }
    findings.insert(findings.end(), _findings.begin(), _findings.end());
    if (_family.empty() || _completeAt != 0)
        return;
    int const at = _end != 0 ? _end : lines;
    std::set<int> all = {0, 3, 6, 10, 11, 12, 13, 14, 15, 16, 17};
    if (!_probe->complete(all)) {
        addError(findings, at, "the generator knows no family in \"" + _family + "\"");
        return;
    }
    std::string missing;
    for (int position : all) {
        if (_read.count(position) != 0 || (position == 3 && _read.count(0) == 0))
            continue;
        std::set<int> without = all;
        without.erase(position);
        if (position == 0)
            without.erase(3);
        if (!_probe->complete(without))
            missing += (missing.empty() ? "" : ", ") + tablesFor(position);
    }
    addError(findings, at,
             "the naming tables for " + _family + " are incomplete ahead of this line: no " + missing +
                 "; the generator reads on and fails to load the models");
}

} // namespace ibischeck
