// Fuzz target: the check of an AMI parameter file, from the tree reader to
// the rules. Every finding names a line of the file.

#include <algorithm>
#include <cstdlib>
#include <string>

#include "check/ibis_check.h"

extern "C" int LLVMFuzzerTestOneInput(uint8_t const* data, size_t size)
{
    std::string const text(reinterpret_cast<char const*>(data), size);
    int const lines = 1 + static_cast<int>(std::count(text.begin(), text.end(), '\n'));
    for (ibischeck::Finding const& finding : ibischeck::checkAmiFile(text))
        if (finding.line < 1 || finding.line > lines || finding.text.empty())
            std::abort();
    return 0;
}
