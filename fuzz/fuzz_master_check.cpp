// Fuzz target: a master IBIS file through the checker, with a family word
// picked by the first byte. Findings stand at lines of the file, in line
// order, and are those of a check fed one line at a time (no table rows
// taken in bulk).

#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>

#include "check/check_text.h"
#include "check/ibis_check.h"
#include "check/master_check.h"

extern "C" int LLVMFuzzerTestOneInput(uint8_t const* data, size_t size)
{
    char const* const families[] = {"", "KVA3", "KVAN", "HZU2", "KVA4Y", "KJ", "XYZ", "KVA3-40E-6BG256C"};
    std::string const family = size > 0 ? families[data[0] % 8] : "";
    std::string const text = size > 0 ? std::string(reinterpret_cast<char const*>(data) + 1, size - 1) : "";
    int lines = 0;
    for (char c : text)
        lines += c == '\n' ? 1 : 0;
    lines += text.empty() || text.back() == '\n' ? 0 : 1;
    std::vector<ibischeck::Finding> const findings = ibischeck::checkMasterFile(text, family);
    int previous = 1;
    for (ibischeck::Finding const& finding : findings) {
        if (finding.line < previous || finding.line > (lines > 0 ? lines : 1) || finding.text.empty())
            std::abort();
        previous = finding.line;
    }
    ibischeck::MasterCheck check(family);
    std::istringstream in(text);
    std::vector<ibischeck::Finding> const lineByLine = ibischeck::checkLines(in, check);
    if (lineByLine.size() != findings.size())
        std::abort();
    for (std::size_t i = 0; i < findings.size(); ++i)
        if (lineByLine[i].line != findings[i].line || lineByLine[i].severity != findings[i].severity ||
            lineByLine[i].text != findings[i].text)
            std::abort();
    return 0;
}
