#include "check/check_text.h"

#include <algorithm>
#include <cctype>

namespace ibischeck {

std::vector<std::string> splitLines(std::string const& text)
{
    std::vector<std::string> lines;
    std::string::size_type start = 0;
    while (start < text.size()) {
        std::string::size_type end = text.find('\n', start);
        if (end == std::string::npos)
            end = text.size();
        lines.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    return lines;
}

std::vector<std::string> tokensOf(std::string const& line)
{
    std::vector<std::string> tokens;
    std::string token;
    for (char c : line + " ") {
        if (c == ' ' || c == '\t') {
            if (!token.empty())
                tokens.push_back(token);
            token.clear();
        } else {
            token += c;
        }
    }
    return tokens;
}

std::string upperCase(std::string text)
{
    for (char& c : text)
        c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return text;
}

std::string trimmed(std::string const& text)
{
    auto blank = [](char c) { return std::isspace(static_cast<unsigned char>(c)) != 0; };
    std::string::size_type first = 0, last = text.size();
    while (first < last && blank(text[first]))
        ++first;
    while (last > first && blank(text[last - 1]))
        --last;
    return text.substr(first, last - first);
}

bool isComment(std::string const& line)
{
    std::string const text = trimmed(line);
    return !text.empty() && text[0] == '|';
}

std::string keywordOf(std::string const& line)
{
    std::string::size_type const close = line.find(']');
    if (line.empty() || line[0] != '[' || close == std::string::npos)
        return "";
    std::string keyword = line.substr(0, close + 1);
    for (char& c : keyword)
        c = c == '_' ? ' ' : static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return keyword;
}

std::string keywordArgument(std::string const& line)
{
    std::vector<std::string> tokens = tokensOf(line.substr(line.find(']') + 1));
    return tokens.empty() ? "" : tokens[0];
}

bool isReservedModel(std::string const& name)
{
    std::string const upper = upperCase(name);
    return upper == "POWER" || upper == "GND" || upper == "NC";
}

void addError(std::vector<Finding>& findings, int line, std::string text)
{
    findings.push_back({line, Severity::Error, std::move(text)});
}

void addWarning(std::vector<Finding>& findings, int line, std::string text)
{
    findings.push_back({line, Severity::Warning, std::move(text)});
}

} // namespace ibischeck
