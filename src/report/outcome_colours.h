// The colour of each signal outcome, the one table behind the page's fills
// (pin map, outcome bar) and the swatches of its legend.

#ifndef PAD2IBIS_REPORT_OUTCOME_COLOURS_H
#define PAD2IBIS_REPORT_OUTCOME_COLOURS_H

#include <string>
#include <string_view>

namespace reportpage {

struct OutcomeColour {
    char const* outcome; // as in kReportOutcomes
    char const* colour;  // "#RRGGBB"
};

inline constexpr OutcomeColour kOutcomeColours[] = {
    {"resolved", "#0072B2"}, {"fallback", "#E69F00"}, {"substituted", "#CC79A7"},
    {"missing", "#D55E00"},  {"none", "#999999"},
};

// The colour of an outcome; an unknown one takes the colour of "none".
char const* outcomeColour(std::string_view outcome);

// The style rules that fill an SVG shape of class "o-<outcome>" in its
// outcome's colour, on lines of at most 100 characters.
void appendOutcomeFills(std::string& out);

} // namespace reportpage

#endif
