#include "report/outcome_colours.h"

#include <iterator>

#include "report/resolution_report.h"

namespace reportpage {

namespace {

// The colour table names the report's outcomes, in their order.
constexpr bool sameOutcomes()
{
    if (std::size(kOutcomeColours) != std::size(kReportOutcomes))
        return false;
    for (std::size_t i = 0; i < std::size(kReportOutcomes); ++i)
        if (std::string_view(kOutcomeColours[i].outcome) != kReportOutcomes[i])
            return false;
    return true;
}
static_assert(sameOutcomes(), "kOutcomeColours must list kReportOutcomes in order");

} // namespace

char const* outcomeColour(std::string_view outcome)
{
    for (OutcomeColour const& c : kOutcomeColours)
        if (outcome == c.outcome)
            return c.colour;
    return kOutcomeColours[std::size(kOutcomeColours) - 1].colour;
}

void appendOutcomeFills(std::string& out)
{
    constexpr std::size_t kLineWidth = 100;
    std::size_t line = 0;
    for (OutcomeColour const& c : kOutcomeColours) {
        std::string const rule = std::string("svg .o-") + c.outcome + "{fill:" + c.colour + "}";
        if (line > 0 && line + rule.size() > kLineWidth) {
            out += '\n';
            line = 0;
        }
        out += rule;
        line += rule.size();
    }
    out += '\n';
}

} // namespace reportpage
