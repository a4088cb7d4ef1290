// What a simulator needs of a design IBIS file.

#include <algorithm>
#include <cstdio>
#include <map>
#include <set>

#include "check/check_text.h"

namespace ibischeck {

namespace {

const std::size_t kDesignLineWidth = 120;
const std::size_t kFileNameStem = 40;

// The lines of the section that starts at the keyword line `at`, up to the
// next keyword line: their indexes, comment and empty lines left out.
std::vector<std::size_t> sectionRows(std::vector<std::string> const& lines, std::size_t at)
{
    std::vector<std::size_t> rows;
    for (std::size_t i = at + 1; i < lines.size() && keywordOf(lines[i]).empty(); ++i)
        if (!isComment(lines[i]) && !tokensOf(lines[i]).empty())
            rows.push_back(i);
    return rows;
}

void checkBytesAndWidth(std::vector<std::string> const& lines, std::vector<Finding>& findings)
{
    for (std::size_t i = 0; i < lines.size(); ++i) {
        std::string const& line = lines[i];
        for (std::size_t column = 0; column < line.size(); ++column) {
            unsigned char const c = static_cast<unsigned char>(line[column]);
            if ((c < 0x20 || c > 0x7e) && c != '\t') {
                char text[96];
                std::snprintf(text, sizeof text,
                              "byte 0x%02X in column %zu is not printable ASCII", c, column + 1);
                addError(findings, static_cast<int>(i + 1), text);
                break;
            }
        }
        if (line.size() > kDesignLineWidth)
            addWarning(findings, static_cast<int>(i + 1),
                       "line of " + std::to_string(line.size()) +
                           " characters; IBIS lines keep within 120");
    }
}

void checkFileName(std::string const& line, int number, std::string const& fileName,
                   std::vector<Finding>& findings)
{
    std::string const named = keywordArgument(line);
    if (named != fileName)
        addError(findings, number, "[File Name] says \"" + named + "\" but the file is \"" +
                                       fileName + "\"");
    std::string lower = named;
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    if (lower != named)
        addError(findings, number, "[File Name] \"" + named + "\" is not in lower case");
    std::string const stem = named.substr(0, named.rfind('.'));
    if (stem.size() > kFileNameStem)
        addError(findings, number, "[File Name] base name of " + std::to_string(stem.size()) +
                                       " characters; at most 40");
}

} // namespace

std::vector<Finding> checkDesignFile(std::string const& text, std::string const& fileName)
{
    std::vector<Finding> findings;
    std::vector<std::string> const lines = splitLines(text);
    int const lastLine = std::max<int>(1, static_cast<int>(lines.size()));
    checkBytesAndWidth(lines, findings);

    std::vector<std::size_t> keywords;
    std::map<std::string, std::size_t> first; // keyword to its first line
    for (std::size_t i = 0; i < lines.size(); ++i) {
        std::string const keyword = keywordOf(lines[i]);
        if (keyword.empty())
            continue;
        keywords.push_back(i);
        first.emplace(keyword, i);
    }
    if (keywords.empty() || keywordOf(lines[keywords.front()]) != "[ibis ver]")
        addError(findings, keywords.empty() ? 1 : static_cast<int>(keywords.front() + 1),
                 "the first keyword is not [IBIS Ver]");
    if (keywords.empty() || keywordOf(lines[keywords.back()]) != "[end]")
        addError(findings, keywords.empty() ? lastLine : static_cast<int>(keywords.back() + 1),
                 "the last keyword is not [End]");

    struct Needed {
        char const* keyword;
        char const* shown;
    } const needed[] = {{"[file name]", "[File Name]"}, {"[component]", "[Component]"},
                        {"[manufacturer]", "[Manufacturer]"}, {"[package]", "[Package]"},
                        {"[pin]", "[Pin]"}};
    for (Needed const& n : needed)
        if (first.count(n.keyword) == 0)
            addError(findings, lastLine, std::string("no ") + n.shown + " keyword");
    if (first.count("[file name]") != 0)
        checkFileName(lines[first["[file name]"]], static_cast<int>(first["[file name]"] + 1),
                      fileName, findings);

    if (first.count("[package]") != 0) {
        std::set<std::string> values;
        for (std::size_t row : sectionRows(lines, first["[package]"]))
            values.insert(upperCase(tokensOf(lines[row])[0]));
        for (char const* value : {"R_pkg", "L_pkg", "C_pkg"})
            if (values.count(upperCase(value)) == 0)
                addError(findings, static_cast<int>(first["[package]"] + 1),
                         std::string("[Package] has no ") + value + " line");
    }

    // Models: each name once, each with its Model_type.
    std::set<std::string> models;
    std::map<std::string, std::size_t> modelLine;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        std::string const keyword = keywordOf(lines[i]);
        if (keyword == "[model selector]")
            models.insert(keywordArgument(lines[i]));
        if (keyword != "[model]")
            continue;
        std::string const name = keywordArgument(lines[i]);
        if (modelLine.count(name) != 0)
            addError(findings, static_cast<int>(i + 1),
                     "[Model] " + name + " stands twice (first at line " +
                         std::to_string(modelLine[name] + 1) + ")");
        modelLine.emplace(name, i);
        models.insert(name);
        bool typed = false;
        for (std::size_t j = i + 1; j < lines.size(); ++j) {
            std::string const next = keywordOf(lines[j]);
            if (next == "[model]" || next == "[end]")
                break;
            std::vector<std::string> tokens = tokensOf(lines[j]);
            typed = typed || (!tokens.empty() && upperCase(tokens[0]) == "MODEL_TYPE");
        }
        if (!typed)
            addError(findings, static_cast<int>(i + 1), "[Model] " + name + " has no Model_type");
    }

    std::set<std::string> pins;
    if (first.count("[pin]") != 0) {
        for (std::size_t row : sectionRows(lines, first["[pin]"])) {
            std::vector<std::string> tokens = tokensOf(lines[row]);
            pins.insert(tokens[0]);
            if (tokens.size() < 3)
                addError(findings, static_cast<int>(row + 1),
                         "pin " + tokens[0] + " has no model column");
            else if (models.count(tokens[2]) == 0 && !isReservedModel(tokens[2]))
                addError(findings, static_cast<int>(row + 1),
                         "model " + tokens[2] + " of pin " + tokens[0] + " has no [Model] block");
        }
    }
    if (first.count("[diff pin]") != 0) {
        for (std::size_t row : sectionRows(lines, first["[diff pin]"])) {
            std::vector<std::string> tokens = tokensOf(lines[row]);
            if (tokens.size() < 3)
                addError(findings, static_cast<int>(row + 1),
                         "[Diff pin] row without pin, inv_pin and vdiff");
            for (std::size_t t = 0; t < 2 && t < tokens.size(); ++t)
                if (pins.count(tokens[t]) == 0)
                    addError(findings, static_cast<int>(row + 1),
                             "[Diff pin] pin " + tokens[t] + " is not under [Pin]");
        }
    }
    std::stable_sort(findings.begin(), findings.end(),
                     [](Finding const& a, Finding const& b) { return a.line < b.line; });
    return findings;
}

} // namespace ibischeck
