#include "report/html_text.h"

#include <charconv>
#include <cstdio>

namespace reportpage {

namespace {

// The bytes that do not stand for themselves.
bool special(unsigned char c)
{
    return c == '&' || c == '<' || c == '>' || c == '"' || c == '\'' || c == 0x7f ||
           (c < 0x20 && c != '\t' && c != '\n');
}

} // namespace

void appendEscaped(std::string& out, std::string_view text)
{
    std::size_t plain = 0; // start of the run of bytes that go as they are
    for (std::size_t i = 0; i < text.size(); ++i) {
        unsigned char const c = static_cast<unsigned char>(text[i]);
        if (!special(c))
            continue;
        out.append(text.data() + plain, i - plain);
        plain = i + 1;
        switch (c) {
        case '&': out += "&amp;"; break;
        case '<': out += "&lt;"; break;
        case '>': out += "&gt;"; break;
        case '"': out += "&quot;"; break;
        case '\'': out += "&#39;"; break;
        default: out += "&#xFFFD;"; break;
        }
    }
    out.append(text.data() + plain, text.size() - plain);
}

std::string escape(std::string_view text)
{
    std::string out;
    appendEscaped(out, text);
    return out;
}

void appendInt(std::string& out, long value)
{
    char buffer[24];
    auto const result = std::to_chars(buffer, buffer + sizeof buffer, value);
    out.append(buffer, result.ptr);
}

void appendAttribute(std::string& out, char const* name, long value)
{
    out += ' ';
    out += name;
    out += "=\"";
    appendInt(out, value);
    out += '"';
}

std::string shortNumber(double value, int digits)
{
    char buffer[32];
    std::snprintf(buffer, sizeof buffer, "%.*g", digits, value);
    std::string text = buffer;
    if (text.find_first_not_of("-0.") == std::string::npos)
        return "0";
    return text;
}

} // namespace reportpage
