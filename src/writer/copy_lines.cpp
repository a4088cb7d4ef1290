#include "writer/copy_lines.h"

#include <cstring>
#include <vector>

#include "driver/line_reader.h"
#include "driver/load_time.h"
#include "host/ut_string.h"

bool ibsEndsPreamble(std::string_view line)
{
    std::vector<char> upper = ibsLineBuffer(line.substr(0, line.find('|')));
    ut_strupr(upper.data());
    char const* package = std::strstr(upper.data(), "PACKAGE");
    return package != nullptr && package - upper.data() <= 3;
}

std::string ibsPackageSectionText(std::string_view line)
{
    std::vector<char> text = ibsLineBuffer(line);
    ut_strtrim(text.data());
    ut_strupr(text.data());
    return text.data();
}

bool ibsNamesPackage(std::string const& text, std::string const& package)
{
    return text.substr(1) == package;
}

bool ibsClosesPackageBlock(std::string_view line)
{
    std::vector<char> text = ibsLineBuffer(line);
    ut_strtrim(text.data());
    return std::strcmp(text.data(), "|") == 0;
}

bool ibsHoldsModelKeyword(std::string_view line)
{
    // Most lines are table rows without a bracket: one quick test each.
    for (std::size_t at = line.find('['); at != std::string_view::npos; at = line.find('[', at + 1)) {
        if (line.compare(at, 7, "[Model]") == 0)
            return line.find('\0') > at; // ahead of a NUL, where the pass's line ends
    }
    return false;
}
