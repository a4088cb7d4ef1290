// Fuzz target: a design IBIS file through the checker. Findings stand at
// lines of the file, in line order; a text without CR finds the same with
// CR LF line ends.

#include <cstdint>
#include <cstdlib>
#include <string>

#include "check/ibis_check.h"

namespace {

int lineCount(std::string const& text)
{
    int lines = 0;
    for (char c : text)
        lines += c == '\n' ? 1 : 0;
    return lines + (text.empty() || text.back() == '\n' ? 0 : 1);
}

void expectInOrder(std::vector<ibischeck::Finding> const& findings, int lines)
{
    int previous = 1;
    for (ibischeck::Finding const& finding : findings) {
        if (finding.line < previous || finding.line > (lines > 0 ? lines : 1) || finding.text.empty())
            std::abort();
        previous = finding.line;
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(uint8_t const* data, size_t size)
{
    std::string const text(reinterpret_cast<char const*>(data), size);
    std::vector<ibischeck::Finding> const findings = ibischeck::checkDesignFile(text, "design.ibs");
    expectInOrder(findings, lineCount(text));
    if (text.find('\r') != std::string::npos)
        return 0;
    std::string crlf;
    for (char c : text)
        crlf += c == '\n' ? std::string("\r\n") : std::string(1, c);
    std::vector<ibischeck::Finding> const twin = ibischeck::checkDesignFile(crlf, "design.ibs");
    if (twin.size() != findings.size())
        std::abort();
    for (std::size_t i = 0; i < twin.size(); ++i)
        if (ibischeck::formatFinding("f", twin[i]) != ibischeck::formatFinding("f", findings[i]))
            std::abort();
    return 0;
}
