#include "master/master_lines.h"

#include <cctype>
#include <cstring>
#include <vector>

#include "driver/load_time.h"
#include "host/ut_string.h"

namespace {

// The line as a reader's buffer holds it: up to its first NUL.
std::vector<char> buffer(std::string_view line)
{
    line = line.substr(0, line.find('\0'));
    std::vector<char> text(line.begin(), line.end());
    text.push_back('\0');
    return text;
}

} // namespace

bool ibsIsComponentLine(std::string_view line)
{
    std::vector<char> rest = buffer(line);
    std::vector<char> token(rest.size());
    ut_strgettoken(rest.data(), token.data(), " ", 0);
    ut_strtrim(token.data());
    return std::strstr(token.data(), "[Component]") != nullptr;
}

bool ibsIsPinListHeading(std::string_view line)
{
    // "[PIN]" in any letter case: five characters compared one by one.
    line = line.substr(0, line.find('\0'));
    for (std::size_t at = line.find('['); at != std::string_view::npos && at + 5 <= line.size();
         at = line.find('[', at + 1)) {
        if (std::toupper(static_cast<unsigned char>(line[at + 1])) == 'P' &&
            std::toupper(static_cast<unsigned char>(line[at + 2])) == 'I' &&
            std::toupper(static_cast<unsigned char>(line[at + 3])) == 'N' && line[at + 4] == ']')
            return true;
    }
    return false;
}

bool ibsEndsPinList(std::string_view line)
{
    return !line.empty() && line[0] == '|';
}

IbsPinListRow ibsPinListRow(std::string_view line)
{
    std::vector<char> rest = buffer(line);
    std::vector<char> pin(rest.size()), signal(rest.size()), model(rest.size());
    ut_strgettoken(rest.data(), pin.data(), " ", 0);
    ut_strgettoken(rest.data(), signal.data(), " ", 0);
    ut_strgettoken(rest.data(), model.data(), " ", 0);
    ut_strtrim(model.data());
    return {pin.data(), signal.data(), model.data()};
}
