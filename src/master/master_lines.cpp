#include "master/master_lines.h"

#include <cstring>
#include <vector>

#include "driver/line_reader.h"
#include "driver/load_time.h"
#include "host/ut_string.h"

bool ibsIsComponentLine(std::string_view line)
{
    std::vector<char> rest = ibsLineBuffer(line);
    std::vector<char> token(rest.size());
    ut_strgettoken(rest.data(), token.data(), " ", 0);
    // (the component reader trims the token too, which cannot change this)
    return std::strstr(token.data(), "[Component]") != nullptr;
}

bool ibsIsPinListHeading(std::string_view line)
{
    // Most lines hold no bracket: one quick test each.
    if (line.find('[') == std::string_view::npos)
        return false;
    std::vector<char> upper = ibsLineBuffer(line);
    ut_strupr(upper.data());
    return std::strstr(upper.data(), "[PIN]") != nullptr;
}

bool ibsEndsPinList(std::string_view line)
{
    return !line.empty() && line[0] == '|';
}

IbsPinListRow ibsPinListRow(std::string_view line)
{
    std::vector<char> rest = ibsLineBuffer(line);
    std::vector<char> pin(rest.size()), signal(rest.size()), model(rest.size());
    ut_strgettoken(rest.data(), pin.data(), " ", 0);
    ut_strgettoken(rest.data(), signal.data(), " ", 0);
    ut_strgettoken(rest.data(), model.data(), " ", 0);
    ut_strtrim(model.data());
    return {pin.data(), signal.data(), model.data()};
}
