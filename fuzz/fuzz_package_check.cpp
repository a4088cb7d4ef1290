// Fuzz target: a package model file through the checker and through the
// reduction to some of its pins. Findings stand at lines of the file, in
// line order; a reduction that succeeds keeps terms only between pins
// that the model lists, each with its text.

#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>

#include "check/ibis_check.h"
#include "ibis/package_model.h"

extern "C" int LLVMFuzzerTestOneInput(uint8_t const* data, size_t size)
{
    std::string const text(reinterpret_cast<char const*>(data), size);
    int lines = 0;
    for (char c : text)
        lines += c == '\n' ? 1 : 0;
    lines += text.empty() || text.back() == '\n' ? 0 : 1;
    int previous = 1;
    for (ibischeck::Finding const& finding : ibischeck::checkPackageFile(text, "p.pkg")) {
        if (finding.line < previous || finding.line > (lines > 0 ? lines : 1) || finding.text.empty())
            std::abort();
        previous = finding.line;
    }
    std::istringstream in(text);
    std::vector<std::string> const pins = {"A1", "A2", "B1", "T16"};
    ibis::ReducedPackage reduced;
    std::string error;
    if (!ibis::readReducedPackage(in, "", pins, reduced, error)) {
        if (error.empty())
            std::abort();
        return 0;
    }
    for (auto const& terms : reduced.terms) {
        std::size_t held = 0;
        for (std::size_t a = 0; a < pins.size(); ++a)
            for (std::size_t b = a; b < pins.size(); ++b)
                if (auto const* term = terms.find(a, b)) {
                    if (!reduced.found[a] || !reduced.found[b] || terms.text(*term).empty())
                        std::abort();
                    ++held;
                }
        if (held != terms.held())
            std::abort();
    }
    return 0;
}
