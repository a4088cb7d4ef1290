// What the generator's readers rely on in a master IBIS file: line lengths,
// the component line, the package blocks, the model list under [Pin] and
// the model blocks.

#include <algorithm>
#include <map>
#include <set>

#include "check/check_text.h"

namespace ibischeck {

namespace {

// The naming section reader keeps 254 characters of a line, the writers'
// passes 255.
const std::size_t kNamingLineLimit = 254;
const std::size_t kCopyLineLimit = 255;

bool holds(std::string const& line, char const* text)
{
    return line.find(text) != std::string::npos;
}

void checkLineLengths(std::vector<std::string> const& lines, std::size_t namingEnd,
                      std::vector<Finding>& findings)
{
    for (std::size_t i = 0; i < lines.size(); ++i) {
        std::size_t const size = lines[i].size();
        if (size <= kNamingLineLimit)
            continue;
        std::string const length = "line of " + std::to_string(size) + " characters: ";
        bool const naming = i < namingEnd;
        bool const copy = size > kCopyLineLimit;
        if (naming && copy)
            addError(findings, static_cast<int>(i + 1),
                     length + "the naming section reader (255-byte buffer) and the writers' "
                              "passes (256-byte buffer) stop here");
        else if (copy)
            addError(findings, static_cast<int>(i + 1),
                     length + "the writers' passes (256-byte buffer) stop here");
        else if (naming)
            addError(findings, static_cast<int>(i + 1),
                     length + "the naming section reader (255-byte buffer) stops here");
        else
            addWarning(findings, static_cast<int>(i + 1),
                       length + "the naming section reader (255-byte buffer) would stop here "
                                "if it read this far");
    }
}

// The line that ends the copied preamble: "PACKAGE" in the first four
// places of its text ahead of any comment.
bool endsPreamble(std::string const& line)
{
    std::string const text = upperCase(line.substr(0, line.find('|')));
    std::string::size_type const at = text.find("PACKAGE");
    return at != std::string::npos && at <= 3;
}

void checkPackages(std::vector<std::string> const& lines, std::size_t keyword, std::size_t pin,
                   std::vector<Finding>& findings)
{
    // A block: a name line ("|" and the name) directly followed by a value
    // line; it is copied up to a line that is "|" alone.
    std::size_t lastBlock = keyword;
    bool any = false;
    for (std::size_t i = keyword + 1; i + 1 < pin; ++i) {
        std::string const name = trimmed(lines[i]);
        std::string const& next = lines[i + 1];
        if (name.size() < 2 || name[0] != '|' ||
            !(holds(next, "R_pkg") || holds(next, "L_pkg") || holds(next, "C_pkg")))
            continue;
        any = true;
        lastBlock = i;
        bool closed = false;
        for (std::size_t j = i + 2; j < pin && !closed; ++j)
            closed = trimmed(lines[j]) == "|";
        if (!closed)
            addError(findings, static_cast<int>(i + 1),
                     "package block " + name.substr(1) +
                         " is not closed by a \"|\" line before [Pin]; its copy would not end");
    }
    if (!any)
        addError(findings, static_cast<int>(keyword + 1),
                 "no package block (a \"|\" name line and its R_pkg, L_pkg, C_pkg lines) "
                 "under the package keyword");
    for (std::size_t i = keyword + 1; i < lastBlock; ++i)
        if (!lines[i].empty() && trimmed(lines[i]).empty())
            addError(findings, static_cast<int>(i + 1),
                     "blank-only line ahead of a package block; the package reader fails on it");
}

} // namespace

std::vector<Finding> checkMasterFile(std::string const& text, std::string const& family)
{
    std::vector<Finding> findings;
    std::vector<std::string> const lines = splitLines(text);
    int const lastLine = std::max<int>(1, static_cast<int>(lines.size()));

    std::size_t component = lines.size(), package = lines.size(), pin = lines.size();
    for (std::size_t i = 0; i < lines.size(); ++i) {
        std::vector<std::string> const tokens = tokensOf(lines[i]);
        if (component == lines.size() && !tokens.empty() && holds(tokens[0], "[Component]"))
            component = i;
        if (package == lines.size() && endsPreamble(lines[i]))
            package = i;
        if (pin == lines.size() && holds(upperCase(lines[i]), "[PIN]"))
            pin = i;
    }
    // The naming section: ahead of the component line, or of whichever of
    // the package and [Pin] lines comes first in a file without one.
    std::size_t const namingEnd = component < lines.size() ? component : std::min(package, pin);
    checkLineLengths(lines, namingEnd, findings);
    checkNamingSection(lines, namingEnd, family, findings);

    if (component == lines.size())
        addError(findings, lastLine, "no [Component] line");
    if (package == lines.size())
        addError(findings, lastLine, "no [Package] line; the preamble copy takes the whole file");
    else if (keywordOf(trimmed(lines[package])) != "[package]")
        addWarning(findings, static_cast<int>(package + 1),
                   "the preamble copy ends at this line, ahead of [Package]");
    if (package < pin && pin < lines.size())
        checkPackages(lines, package, pin, findings);

    // The model list: the lines behind [Pin] up to the first that begins
    // with "|".
    std::map<std::string, std::size_t> listed;
    if (pin == lines.size()) {
        addError(findings, lastLine, "no [Pin] line; the generator finds no models");
    } else {
        std::size_t i = pin + 1;
        for (; i < lines.size() && (lines[i].empty() || lines[i][0] != '|'); ++i) {
            if (!keywordOf(lines[i]).empty()) {
                addError(findings, static_cast<int>(pin + 1),
                         "the [Pin] list is not closed by a \"|\" line before " +
                             lines[i].substr(0, lines[i].find(']') + 1) + " at line " +
                             std::to_string(i + 1) + "; the model list takes in its rows");
                break;
            }
            std::vector<std::string> const tokens = tokensOf(lines[i]);
            if (tokens.size() >= 3 && !isReservedModel(tokens[2]))
                listed.emplace(tokens[2], i);
        }
        if (i == lines.size())
            addError(findings, static_cast<int>(pin + 1),
                     "the [Pin] list is never closed by a line beginning with \"|\"");
    }

    // Model blocks: each closed by its own "| End [Model] NAME" line, as the
    // copy of a block ends at the next line that holds "[Model]".
    std::set<std::string> blocks;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (!holds(lines[i], "[Model]") || isComment(lines[i]))
            continue;
        std::string const name = keywordArgument(trimmed(lines[i]));
        blocks.insert(name);
        if (listed.count(name) == 0)
            addWarning(findings, static_cast<int>(i + 1),
                       "[Model] " + name + " is not listed under [Pin]; no design can use it");
        std::size_t j = i + 1;
        while (j < lines.size() && !holds(lines[j], "[Model]"))
            ++j;
        std::string const closing = "| End [Model] " + name;
        if (j == lines.size())
            addError(findings, static_cast<int>(i + 1),
                     "[Model] " + name + " is not followed by \"" + closing +
                         "\"; its copy would not end");
        else if (!isComment(lines[j]) || keywordArgument(trimmed(lines[j]).substr(1)) != name)
            addError(findings, static_cast<int>(i + 1),
                     "[Model] " + name + " is not closed by \"" + closing + "\" before line " +
                         std::to_string(j + 1));
    }
    for (auto const& model : listed)
        if (blocks.count(model.first) == 0)
            addError(findings, static_cast<int>(model.second + 1),
                     "model " + model.first + " is listed under [Pin] but has no [Model] block");

    std::stable_sort(findings.begin(), findings.end(),
                     [](Finding const& a, Finding const& b) { return a.line < b.line; });
    return findings;
}

} // namespace ibischeck
