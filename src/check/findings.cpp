#include "check/ibis_check.h"

namespace ibischeck {

std::string formatFinding(std::string const& file, Finding const& finding)
{
    return file + ":" + std::to_string(finding.line) +
           (finding.severity == Severity::Error ? ": error: " : ": warning: ") + finding.text;
}

std::string countLine(int files, int errors, int warnings)
{
    auto counted = [](int n, char const* word) {
        return std::to_string(n) + " " + word + (n == 1 ? "" : "s");
    };
    return counted(files, "file") + " checked: " + counted(errors, "error") + ", " +
           counted(warnings, "warning");
}

} // namespace ibischeck
