#ifndef PAD2IBIS_CONSOLE_SUMMARY_H
#define PAD2IBIS_CONSOLE_SUMMARY_H

// The closing summary of a run: each file written, with what it is, and for
// a pad report run what the signals got.

#include <string>
#include <vector>

namespace console {

struct SummaryFile {
    std::string path; // as the user would type it
    std::string what; // "design IBIS file", "channel PCS0 CH0, receive: 3 settings"
};

// The signals' outcomes, counted.
struct SignalCounts {
    int total = 0, resolved = 0, fallback = 0, substituted = 0, missing = 0, none = 0;
    std::vector<std::string> missingNames; // in signal order
    bool substituting = false;             // --substitute nearest was asked for
};

// "Wrote N files:" and a line per file, the path padded to one column.
std::string filesSummary(std::string const& heading, std::vector<SummaryFile> const& files);

// "Signals: 34: 27 resolved, 1 fallback, 0 substituted, 6 missing (eth_crs,
// ... and 1 more)", and for missing signals what can be done.
std::string signalsSummary(SignalCounts const& counts);

} // namespace console

#endif
