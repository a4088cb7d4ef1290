// Fuzz target: a master IBIS file through the checker, with a family word
// picked by the first byte. Findings stand at lines of the file, in line
// order.

#include <cstdint>
#include <cstdlib>
#include <string>

#include "check/ibis_check.h"

extern "C" int LLVMFuzzerTestOneInput(uint8_t const* data, size_t size)
{
    char const* const families[] = {"", "KVA3", "KVAN", "HZU2", "KVA4Y", "KJ", "XYZ", "KVA3-40E-6BG256C"};
    std::string const family = size > 0 ? families[data[0] % 8] : "";
    std::string const text = size > 0 ? std::string(reinterpret_cast<char const*>(data) + 1, size - 1) : "";
    int lines = 0;
    for (char c : text)
        lines += c == '\n' ? 1 : 0;
    lines += text.empty() || text.back() == '\n' ? 0 : 1;
    int previous = 1;
    for (ibischeck::Finding const& finding : ibischeck::checkMasterFile(text, family)) {
        if (finding.line < previous || finding.line > (lines > 0 ? lines : 1) || finding.text.empty())
            std::abort();
        previous = finding.line;
    }
    return 0;
}
