#include "report/outcome_colours.h"

#include <iterator>

namespace reportpage {

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
