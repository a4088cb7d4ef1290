#include "check/check_text.h"

#include <algorithm>
#include <cctype>
#include <cstdio>

#include "ibis/ibis_syntax.h"

namespace ibischeck {

std::string_view tokenAt(std::string_view line, std::size_t n)
{
    std::size_t at = 0;
    for (;;) {
        while (at < line.size() && (line[at] == ' ' || line[at] == '\t'))
            ++at;
        std::size_t end = at;
        while (end < line.size() && line[end] != ' ' && line[end] != '\t')
            ++end;
        if (at == end || n == 0)
            return line.substr(at, end - at);
        --n;
        at = end;
    }
}

std::string trimmed(std::string_view text)
{
    auto blank = [](char c) { return std::isspace(static_cast<unsigned char>(c)) != 0; };
    std::size_t first = 0, last = text.size();
    while (first < last && blank(text[first]))
        ++first;
    while (last > first && blank(text[last - 1]))
        --last;
    return std::string(text.substr(first, last - first));
}

bool isComment(std::string_view line)
{
    std::size_t first = 0;
    while (first < line.size() && std::isspace(static_cast<unsigned char>(line[first])) != 0)
        ++first;
    return first < line.size() && line[first] == '|';
}

std::string keywordArgument(std::string_view line)
{
    // Behind the "]", or the whole line without one.
    return std::string(tokenAt(line.substr(line.find(']') + 1), 0));
}


std::string visible(std::string_view text)
{
    std::string out;
    out.reserve(text.size());
    for (char c : text) {
        unsigned char const byte = static_cast<unsigned char>(c);
        if (byte >= 0x20 && byte <= 0x7e) {
            out += c;
        } else {
            char escaped[8];
            std::snprintf(escaped, sizeof escaped, "\\x%02X", byte);
            out += escaped;
        }
    }
    return out;
}

std::string shown(std::string_view text)
{
    return "\"" + visible(text) + "\"";
}

void sortByLine(std::vector<Finding>& findings)
{
    std::stable_sort(findings.begin(), findings.end(),
                     [](Finding const& a, Finding const& b) { return a.line < b.line; });
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
