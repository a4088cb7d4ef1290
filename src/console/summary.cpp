#include "console/summary.h"

#include <algorithm>

namespace console {

namespace {

// How many missing signals the summary names.
std::size_t const kNamed = 5;

} // namespace

std::string filesSummary(std::string const& heading, std::vector<SummaryFile> const& files)
{
    std::size_t width = 0;
    for (SummaryFile const& file : files)
        width = std::max(width, file.path.size());
    std::string text = heading + "\n";
    for (SummaryFile const& file : files)
        text += "  " + file.path + std::string(width - file.path.size() + 2, ' ') + file.what + "\n";
    return text;
}

std::string signalsSummary(SignalCounts const& counts)
{
    std::string text = "Signals: " + std::to_string(counts.total) + ": " + std::to_string(counts.resolved) +
                       " resolved, " + std::to_string(counts.fallback) + " fallback, " +
                       std::to_string(counts.substituted) + " substituted, " + std::to_string(counts.missing) +
                       " missing";
    if (!counts.missingNames.empty()) {
        text += " (";
        for (std::size_t i = 0; i < counts.missingNames.size() && i < kNamed; ++i)
            text += (i == 0 ? "" : ", ") + counts.missingNames[i];
        if (counts.missingNames.size() > kNamed)
            text += " and " + std::to_string(counts.missingNames.size() - kNamed) + " more";
        text += ")";
    }
    if (counts.none > 0)
        text += ", " + std::to_string(counts.none) + " with no key built";
    text += "\n";
    if (counts.missing > 0)
        text += counts.substituting
                    ? "The master file has no model of the IO standard and supply of the missing\n"
                      "signals: they have no [Pin] row.\n"
                    : "The master file has no model for the settings of the missing signals: they\n"
                      "have no [Pin] row. --report FILE names the nearest model of each, and\n"
                      "--substitute nearest gives it to them.\n";
    return text;
}

} // namespace console
