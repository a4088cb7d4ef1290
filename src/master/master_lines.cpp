#include "master/master_lines.h"

#include <cctype>
#include <cstring>
#include <vector>

#include "driver/load_time.h"
#include "host/ut_string.h"

bool ibsIsComponentLine(char const* line)
{
    std::vector<char> rest(line, line + std::strlen(line) + 1);
    std::vector<char> token(rest.size());
    ut_strgettoken(rest.data(), token.data(), " ", 0);
    ut_strtrim(token.data());
    return std::strstr(token.data(), "[Component]") != nullptr;
}

bool ibsIsPinListHeading(char const* line)
{
    // "[PIN]" in any letter case: five characters compared one by one.
    for (char const* p = std::strchr(line, '['); p != nullptr; p = std::strchr(p + 1, '[')) {
        if (std::toupper(static_cast<unsigned char>(p[1])) == 'P' &&
            std::toupper(static_cast<unsigned char>(p[2])) == 'I' &&
            std::toupper(static_cast<unsigned char>(p[3])) == 'N' && p[4] == ']')
            return true;
    }
    return false;
}

bool ibsEndsPinList(char const* line)
{
    return line[0] == '|';
}
