#include "writer/copy_lines.h"

#include <cstring>
#include <vector>

#include "driver/load_time.h"
#include "host/ut_string.h"

namespace {

std::vector<char> copyOf(char const* line)
{
    return std::vector<char>(line, line + std::strlen(line) + 1);
}

} // namespace

bool ibsEndsPreamble(char const* line)
{
    std::vector<char> upper = copyOf(line);
    ut_strupr(upper.data());
    // Text behind a "|" takes no part.
    if (char* bar = std::strchr(upper.data(), '|'))
        *bar = '\0';
    char const* package = std::strstr(upper.data(), "PACKAGE");
    return package != nullptr && package - upper.data() <= 3;
}

std::string ibsPackageSectionText(char const* line)
{
    std::vector<char> text = copyOf(line);
    ut_strtrim(text.data());
    ut_strupr(text.data());
    return text.data();
}

bool ibsNamesPackage(std::string const& text, std::string const& package)
{
    return text.substr(1) == package;
}

bool ibsClosesPackageBlock(char const* line)
{
    std::vector<char> text = copyOf(line);
    ut_strtrim(text.data());
    return std::strcmp(text.data(), "|") == 0;
}

bool ibsHoldsModelKeyword(char const* line, std::size_t length)
{
    // Most lines are table rows without a bracket: one quick test each.
    return std::memchr(line, '[', length) != nullptr && std::strstr(line, "[Model]") != nullptr;
}
