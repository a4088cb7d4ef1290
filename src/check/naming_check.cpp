// The naming tables at the top of a master IBIS file, read the way the
// generator's naming section reader reads them, and with a family the
// tables the generator's completion test asks of that family.

#include <cstring>
#include <set>

#include "check/check_text.h"
#include "driver/basibsgen.h"
#include "variant/basib_vargon.h"

namespace ibischeck {

namespace {

struct NamingTable {
    char const* name;
    std::vector<int> positions; // model key positions the table codes
};

// In the order the reader tries the headings; the first match decides.
NamingTable const kTables[] = {
    {"STANDARD", {0, 3}},
    {"SLEW", {6}},
    {"PULLMODE", {10}},
    {"IMPEDANCE", {11}},
    {"MIPI HARD DPHY MODE", {12}},
    {"TERMVCC", {12}},
    {"TERMGND", {13}},
    {"TERMVTT", {14}},
    {"VCMT", {15}},
    {"DIFFERENTIAL RESISTOR", {16}},
    {"DIFFERENTIAL CURRENT", {17}},
    {"TERMINATION", {12}},
    {"MULTI DRIVE", {15}},
    {"DIFF DRIVE", {17}},
};

// The table a line opens, or null. Lines with "=" are never headings.
NamingTable const* headingOf(std::string const& line)
{
    if (line.find('=') != std::string::npos)
        return nullptr;
    std::string const text = upperCase(trimmed(line));
    if (text.find("STANDARD") != std::string::npos) {
        std::string::size_type const end = text.find_first_of(" (");
        return text.substr(0, end) == "STANDARD" ? &kTables[0] : nullptr;
    }
    for (NamingTable const& table : kTables) {
        char const* other = std::strcmp(table.name, "IMPEDANCE") == 0 ? "IMPEDENCE"
                            : std::strcmp(table.name, "DIFFERENTIAL CURRENT") == 0
                                ? "DIFFERENTIAL DRIVE CURRENT"
                                : table.name;
        if (text.find(table.name) != std::string::npos || text.find(other) != std::string::npos)
            return &table;
    }
    return nullptr;
}

bool opensWithBar(std::string const& line)
{
    std::vector<std::string> const tokens = tokensOf(line);
    return !tokens.empty() && tokens[0][0] == '|';
}

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

std::string tablesFor(int position)
{
    std::string names;
    for (NamingTable const& table : kTables)
        for (int p : table.positions)
            if (p == position && names.find(table.name) == std::string::npos)
                names += std::string(names.empty() ? "" : " or ") + table.name;
    return names;
}

} // namespace

void checkNamingSection(std::vector<std::string> const& lines, std::size_t end,
                        std::string const& family, std::vector<Finding>& findings)
{
    CompletionProbe probe(family);
    std::set<int> read;
    int completeAt = 0;
    for (std::size_t i = 0; i < end; ++i) {
        NamingTable const* table = headingOf(lines[i]);
        if (table == nullptr)
            continue;
        int const heading = static_cast<int>(i + 1);
        if (completeAt != 0)
            addWarning(findings, heading,
                       std::string("naming table ") + table->name +
                           " stands behind line " + std::to_string(completeAt) +
                           ", where the tables for " + family +
                           " are complete; the generator never reads it");
        // The reader: comment lines ahead of the body, the body, and the
        // first comment line behind it, which ends the table. A heading in
        // the body is an ordinary row, unless rows without a heading follow
        // the comment line that ended the table: then the table was not
        // closed, and the next table's heading went in as a row.
        // The TERMINATION reader takes no comment lines ahead of its body.
        bool const bodyFirst = std::strcmp(table->name, "TERMINATION") == 0;
        bool inBody = bodyFirst, closed = false;
        NamingTable const* inRows = nullptr;
        std::size_t inRowsAt = 0;
        std::size_t j = i + 1;
        for (; j < lines.size(); ++j) {
            bool const bar = opensWithBar(lines[j]);
            if (!inBody && bar)
                continue;
            inBody = true;
            if (bar) {
                closed = true;
                if (bodyFirst && j == i + 1)
                    addError(findings, heading,
                             std::string("naming table ") + table->name +
                                 " has a comment line ahead of its rows; its reader ends there");
                break;
            }
            if (NamingTable const* next = headingOf(lines[j])) {
                inRows = next;
                inRowsAt = j;
            }
        }
        std::size_t k = j + 1;
        while (k < lines.size() && opensWithBar(lines[k]))
            ++k;
        if (closed && inRows != nullptr && k < end && !tokensOf(lines[k]).empty() &&
            headingOf(lines[k]) == nullptr)
            addError(findings, heading,
                     std::string("naming table ") + table->name +
                         " is not closed by a \"|\" line before the heading " + inRows->name +
                         " at line " + std::to_string(inRowsAt + 1) +
                         "; the reader takes that table in as rows");
        if (!closed)
            addError(findings, heading,
                     std::string("naming table ") + table->name +
                         " is never closed by a \"|\" line; its reader runs to the end of the file");
        else if (j >= end && end < lines.size())
            addError(findings, heading,
                     std::string("naming table ") + table->name +
                         " is not closed by a \"|\" line ahead of line " + std::to_string(end + 1) +
                         ", where the naming section ends; the reader takes what follows as rows");
        read.insert(table->positions.begin(), table->positions.end());
        i = j;
        if (!family.empty() && completeAt == 0 && probe.complete(read))
            completeAt = heading;
    }
    if (family.empty() || completeAt != 0)
        return;
    int const at = static_cast<int>(end < lines.size() ? end + 1 : lines.size());
    std::set<int> all = {0, 3, 6, 10, 11, 12, 13, 14, 15, 16, 17};
    if (!probe.complete(all)) {
        addError(findings, at, "the generator knows no family in \"" + family + "\"");
        return;
    }
    std::string missing;
    for (int position : all) {
        if (read.count(position) != 0 || (position == 3 && read.count(0) == 0))
            continue;
        std::set<int> without = all;
        without.erase(position);
        if (position == 0)
            without.erase(3);
        if (!probe.complete(without))
            missing += (missing.empty() ? "" : ", ") + tablesFor(position);
    }
    addError(findings, at,
             "the naming tables for " + family + " are incomplete ahead of this line: no " +
                 missing + "; the generator reads on and fails to load the models");
}

} // namespace ibischeck
