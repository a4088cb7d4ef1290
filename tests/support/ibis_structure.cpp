#include "support/ibis_structure.h"

#include <algorithm>
#include <cctype>
#include <set>
#include <sstream>

namespace ts {

namespace {

std::vector<std::string> splitLines(std::string const& text)
{
    std::vector<std::string> lines;
    std::string::size_type start = 0;
    while (start < text.size()) {
        std::string::size_type end = text.find('\n', start);
        if (end == std::string::npos) {
            lines.push_back(text.substr(start));
            break;
        }
        lines.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    return lines;
}

std::string upper(std::string text)
{
    for (char& c : text)
        c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return text;
}

// Keyword names compare without regard to case, blanks or underscores, as
// IBIS readers take them ("[Diff pin]", "[Diff Pin]", "[Diff_Pin]").
std::string keywordName(std::string const& keyword)
{
    std::string name;
    for (char c : upper(keyword))
        if (c != ' ' && c != '_')
            name += c;
    return name;
}

std::vector<std::string> tokens(std::string const& line)
{
    std::vector<std::string> words;
    std::istringstream in(line);
    std::string word;
    while (in >> word)
        words.push_back(word);
    return words;
}

struct Keyword {
    std::size_t line;    // index into the lines
    std::string name;    // normalised, with its brackets
    std::string rest;    // text behind the closing bracket
};

} // namespace

bool linesKeepTo(std::string const& text, std::size_t width)
{
    for (std::string const& line : splitLines(text))
        if (line.size() > width)
            return false;
    return true;
}

std::vector<std::string> ibisStructureProblems(std::string const& designText,
                                               std::string const& fileName, bool masterKeptTo120)
{
    std::vector<std::string> problems;
    std::vector<std::string> lines = splitLines(designText);

    std::vector<Keyword> keywords;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        std::string const& line = lines[i];
        if (line.empty() || line[0] != '[')
            continue;
        std::string::size_type close = line.find(']');
        if (close == std::string::npos) {
            problems.push_back("line " + std::to_string(i + 1) + ": keyword without ']': " + line);
            continue;
        }
        keywords.push_back({i, keywordName(line.substr(0, close + 1)), line.substr(close + 1)});
    }

    if (keywords.empty()) {
        problems.push_back("no keyword at all");
        return problems;
    }
    if (keywords.front().name != "[IBISVER]")
        problems.push_back("first keyword is not [IBIS Ver] but " + lines[keywords.front().line]);
    if (keywords.back().name != "[END]")
        problems.push_back("last keyword is not [End] but " + lines[keywords.back().line]);

    // [File Name]
    bool fileNameSeen = false;
    for (Keyword const& keyword : keywords) {
        if (keyword.name != "[FILENAME]")
            continue;
        fileNameSeen = true;
        std::vector<std::string> words = tokens(keyword.rest);
        std::string named = words.empty() ? "" : words.front();
        if (named != fileName)
            problems.push_back("[File Name] names '" + named + "', the file is '" + fileName + "'");
    }
    if (!fileNameSeen)
        problems.push_back("no [File Name]");

    // Model blocks.
    std::set<std::string> modelBlocks;
    for (Keyword const& keyword : keywords) {
        if (keyword.name != "[MODEL]")
            continue;
        std::vector<std::string> words = tokens(keyword.rest);
        if (words.empty())
            problems.push_back("line " + std::to_string(keyword.line + 1) + ": [Model] without a name");
        else
            modelBlocks.insert(words.front());
    }

    // The rows of a section: the lines behind its keyword up to the next
    // keyword, less comment and empty lines.
    auto sectionRows = [&](std::size_t k) {
        std::vector<std::pair<std::size_t, std::vector<std::string>>> rows;
        std::size_t end = k + 1 < keywords.size() ? keywords[k + 1].line : lines.size();
        for (std::size_t i = keywords[k].line + 1; i < end; ++i) {
            std::string const& line = lines[i];
            std::string::size_type first = line.find_first_not_of(" \t");
            if (first == std::string::npos || line[first] == '|')
                continue;
            rows.push_back({i, tokens(line)});
        }
        return rows;
    };

    std::set<std::string> pins;
    bool pinSeen = false;
    for (std::size_t k = 0; k < keywords.size(); ++k) {
        if (keywords[k].name != "[PIN]")
            continue;
        pinSeen = true;
        for (auto const& row : sectionRows(k)) {
            std::string where = "line " + std::to_string(row.first + 1) + ": ";
            if (row.second.size() < 3) {
                problems.push_back(where + "[Pin] row without a model: " + lines[row.first]);
                continue;
            }
            pins.insert(row.second[0]);
            std::string const& model = row.second[2];
            std::string reserved = upper(model);
            if (reserved == "POWER" || reserved == "GND" || reserved == "NC")
                continue;
            if (modelBlocks.count(model) == 0)
                problems.push_back(where + "model '" + model + "' of pin '" + row.second[0] +
                                   "' has no [Model] block");
        }
    }
    if (!pinSeen)
        problems.push_back("no [Pin] section");

    for (std::size_t k = 0; k < keywords.size(); ++k) {
        if (keywords[k].name != "[DIFFPIN]")
            continue;
        for (auto const& row : sectionRows(k)) {
            std::string where = "line " + std::to_string(row.first + 1) + ": ";
            if (row.second.size() < 2) {
                problems.push_back(where + "[Diff pin] row without its inverting pin: " + lines[row.first]);
                continue;
            }
            for (std::size_t column = 0; column < 2; ++column)
                if (pins.count(row.second[column]) == 0)
                    problems.push_back(where + "[Diff pin] pin '" + row.second[column] +
                                       "' is no [Pin] pin");
        }
    }

    if (masterKeptTo120) {
        for (std::size_t i = 0; i < lines.size(); ++i)
            if (lines[i].size() > 120)
                problems.push_back("line " + std::to_string(i + 1) + " has " +
                                   std::to_string(lines[i].size()) + " characters");
    }
    return problems;
}

} // namespace ts
