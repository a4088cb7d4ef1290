#ifndef PAD2IBIS_REPORT_MODEL_CHARTS_H
#define PAD2IBIS_REPORT_MODEL_CHARTS_H

// The curves of a design model on the report page: one chart of its I-V
// tables ([Pulldown], [Pullup], [GND Clamp], [POWER Clamp]) and one of its
// V-T waveforms ([Rising Waveform], [Falling Waveform]), typ as the line,
// min and max thinner; the [Ramp] figures as text where there are no
// waveforms.
//
// A chart is an <svg class="chart"> with data-model and data-chart ("iv" or
// "vt"). Its lines lie in an inner <svg class="plot"> whose user space runs
// from 0 to 1000 along both axes (y upwards from the bottom), and whose
// data-x and data-y attributes give the values at 0 and at 1000, so that a
// point's value can be read back from the page.

#include <cstddef>
#include <string>
#include <vector>

#include "ibis/model_reader.h"

namespace reportpage {

// Lines with more points are thinned to this many.
constexpr std::size_t kMaxPoints = 200;

// The positions of at most `limit` points out of `count`, evenly spread, the
// first and the last among them (all of them for count <= limit).
std::vector<std::size_t> thinned(std::size_t count, std::size_t limit);

// An axis around the values from `low` to `high`: bounds and tick step on
// 1, 2 or 5 times a power of ten, and the power of 1000 that its labels are
// written in (-3: milli, -9: nano).
struct Axis {
    double low = 0, high = 1, step = 0.2;
    int exponent = 0;
};
Axis niceAxis(double low, double high);

// The unit prefix of a power of 1000, as HTML ("m", "&#181;", "n").
char const* unitPrefix(int exponent);

// The model's line of facts (Model_type, C_comp, [Voltage Range]) and its
// charts, or the note that it has no curves.
std::string modelCharts(ibis::Model const& model);

} // namespace reportpage

#endif
