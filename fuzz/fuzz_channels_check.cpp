// Fuzz target: the check of a channels file against AMI parameter
// templates. The input is the channels file, then each template behind a
// line "%%". Every finding names a line of the channels file.

#include <algorithm>
#include <cstdlib>
#include <string>
#include <vector>

#include "check/ibis_check.h"

extern "C" int LLVMFuzzerTestOneInput(uint8_t const* data, size_t size)
{
    std::string const input(reinterpret_cast<char const*>(data), size);
    std::vector<std::string> parts;
    std::string::size_type start = 0;
    while (true) {
        std::string::size_type const mark = input.find("\n%%\n", start);
        parts.push_back(input.substr(start, mark == std::string::npos ? std::string::npos : mark + 1 - start));
        if (mark == std::string::npos)
            break;
        start = mark + 4;
    }
    std::vector<ibischeck::AmiTemplate> templates;
    for (std::size_t i = 1; i < parts.size(); ++i)
        templates.push_back({"t" + std::to_string(i) + ".ami", parts[i]});
    int const lines = 1 + static_cast<int>(std::count(parts[0].begin(), parts[0].end(), '\n'));
    for (ibischeck::Finding const& finding : ibischeck::checkChannelsFile(parts[0], templates))
        if (finding.line < 1 || finding.line > lines || finding.text.empty())
            std::abort();
    return 0;
}
