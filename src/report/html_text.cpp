#include "report/html_text.h"

#include <charconv>
#include <cstdio>

namespace reportpage {

void appendEscaped(std::string& out, std::string_view text)
{
    for (char c : text) {
        switch (c) {
        case '&': out += "&amp;"; break;
        case '<': out += "&lt;"; break;
        case '>': out += "&gt;"; break;
        case '"': out += "&quot;"; break;
        case '\'': out += "&#39;"; break;
        default:
            if ((static_cast<unsigned char>(c) < 0x20 && c != '\t' && c != '\n') || c == 0x7f)
                out += "&#xFFFD;";
            else
                out += c;
        }
    }
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
