#include "ibis/ibis_syntax.h"

#include <cctype>
#include <cstring>

namespace ibis {

namespace {

bool isBlank(char c)
{
    return c == ' ' || c == '\t';
}

} // namespace

bool isKeywordLine(std::string_view line)
{
    return !line.empty() && line[0] == '[' && line.find(']') != std::string_view::npos;
}

std::string keywordKey(std::string_view line)
{
    if (!isKeywordLine(line))
        return "";
    std::string key;
    bool blank = false;
    for (char c : line.substr(1, line.find(']') - 1)) {
        if (isBlank(c) || c == '_') {
            blank = !key.empty();
            continue;
        }
        if (blank)
            key += ' ';
        blank = false;
        key += lowerCase(c);
    }
    return key;
}

std::string_view keywordShown(std::string_view line)
{
    return isKeywordLine(line) ? line.substr(0, line.find(']') + 1) : std::string_view();
}

std::string_view keywordRest(std::string_view line)
{
    return isKeywordLine(line) ? line.substr(line.find(']') + 1) : line;
}

void splitFields(std::string_view text, char comment, std::vector<std::string_view>& fields)
{
    fields.clear();
    std::size_t i = 0;
    std::size_t const size = text.size();
    while (i < size) {
        while (i < size && isBlank(text[i]))
            ++i;
        if (i == size || text[i] == comment)
            return;
        std::size_t const start = i;
        while (i < size && !isBlank(text[i]) && text[i] != comment)
            ++i;
        fields.push_back(text.substr(start, i - start));
    }
}

std::string joinFields(std::vector<std::string> const& fields, std::size_t from)
{
    std::string text;
    for (std::size_t i = from; i < fields.size(); ++i)
        text += (i == from ? "" : " ") + fields[i];
    return text;
}

std::string upperCase(std::string_view text)
{
    std::string upper(text);
    for (char& c : upper)
        c = upperCase(c);
    return upper;
}

bool sameWord(std::string_view a, std::string_view b)
{
    if (a.size() != b.size())
        return false;
    for (std::size_t i = 0; i < a.size(); ++i)
        if (lowerCase(a[i]) != lowerCase(b[i]))
            return false;
    return true;
}

bool isBlankOrComment(std::string_view line, char comment)
{
    for (char c : line) {
        if (c == comment)
            return true;
        if (!isBlank(c))
            return false;
    }
    return true;
}

bool CommentChar::change(std::string_view rest)
{
    std::size_t first = 0;
    while (first < rest.size() && isBlank(rest[first]))
        ++first;
    std::string_view const argument = rest.substr(first, rest.find_first_of(" \t", first) - first);
    if (argument.size() != 6 || argument.substr(1) != "_char")
        return false;
    char const c = argument[0];
    if (!std::ispunct(static_cast<unsigned char>(c)) || std::strchr("+-./=[]_", c) != nullptr)
        return false;
    _current = c;
    return true;
}

} // namespace ibis
