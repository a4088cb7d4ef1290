#include "report/model_charts.h"

#include <algorithm>
#include <charconv>
#include <cctype>
#include <cmath>
#include <cstdio>
#include <utility>

#include "ibis/ibis_syntax.h"
#include "report/html_text.h"

namespace reportpage {

namespace {

using Point = std::pair<double, double>;

// One table of a chart: its three corners' points, in table order.
struct Curve {
    std::string table; // the keyword's key, for data-table
    std::string label; // for the legend
    char const* colour;
    std::vector<Point> corners[3]; // typ, min, max
};

char const* const kCornerNames[] = {"typ", "min", "max"};

// Colour-blind-safe colours (Okabe and Ito), for the curves in turn.
char const* const kCurveColours[] = {"#0072B2", "#D55E00", "#009E73", "#CC79A7",
                                     "#E69F00", "#56B4E9", "#000000"};

// Chart geometry, in pixels.
constexpr int kWidth = 700, kHeight = 280;
constexpr int kPlotX = 72, kPlotY = 12, kPlotW = 380, kPlotH = 216;
constexpr std::size_t kLegendLines = 10;

// No IBIS table holds numbers this large; a value beyond it (or "1e9999",
// which reads as infinity) is left off the chart.
bool drawable(ibis::Number const& n)
{
    return n.isValue() && std::isfinite(n.value) && std::fabs(n.value) < 1e30;
}

Curve curveOf(ibis::Section const& section, std::string label, char const* colour)
{
    Curve curve{section.key, std::move(label), colour, {}};
    for (ibis::Row const& row : section.rows) {
        if (!drawable(row.cells[0]))
            continue;
        for (int corner = 0; corner < 3; ++corner)
            if (drawable(row.cells[corner + 1]))
                curve.corners[corner].emplace_back(row.cells[0].value, row.cells[corner + 1].value);
    }
    for (std::vector<Point>& points : curve.corners) {
        if (points.size() <= kMaxPoints)
            continue;
        std::vector<Point> kept;
        for (std::size_t at : thinned(points.size(), kMaxPoints))
            kept.push_back(points[at]);
        points = std::move(kept);
    }
    return curve;
}

// A waveform's legend: its direction and its fixture.
std::string waveformLabel(ibis::Section const& section)
{
    std::string label = section.key == "rising waveform" ? "Rising" : "Falling";
    for (char const* wanted : {"R_fixture", "V_fixture"}) {
        for (ibis::Item const& item : section.items) {
            std::string name, value;
            if (item.nameValue(name, value) && ibis::sameWord(name, wanted)) {
                label += std::string(", ") + wanted + " " + value;
                break;
            }
        }
    }
    return label;
}

// A tick label: the value in the axis's unit, with as many decimals as the
// step needs.
std::string tickLabel(double value, Axis const& axis)
{
    double const scale = std::pow(10.0, axis.exponent);
    double const step = axis.step / scale;
    int const decimals = std::max(0, static_cast<int>(-std::floor(std::log10(step) + 1e-9)));
    char buffer[48];
    std::snprintf(buffer, sizeof buffer, "%.*f", std::min(decimals, 15), value / scale);
    std::string text = buffer;
    if (text.find_first_not_of("-0.") == std::string::npos)
        return "0";
    return text;
}

long coordinate(double value, double low, double high)
{
    return std::lround((value - low) / (high - low) * 1000.0);
}

// Where the plot area lies in the chart.
void appendPlotBox(std::string& out)
{
    appendAttribute(out, "x", kPlotX);
    appendAttribute(out, "y", kPlotY);
    appendAttribute(out, "width", kPlotW);
    appendAttribute(out, "height", kPlotH);
}

// A label; its anchor comes from the group it stands in.
void appendText(std::string& out, long x, long y, std::string const& html)
{
    out += "<text";
    appendAttribute(out, "x", x);
    appendAttribute(out, "y", y);
    out += '>';
    out += html;
    out += "</text>";
}

// One line of a legend at (x, y): a short stroke of the class (and colour,
// where given) and the text beside it.
void appendLegendEntry(std::string& out, long x, long y, std::string const& lineClass, char const* colour,
                       std::string const& html)
{
    out += "<line class=\"" + lineClass + "\"";
    appendAttribute(out, "x1", x);
    appendAttribute(out, "y1", y - 4);
    appendAttribute(out, "x2", x + 18);
    appendAttribute(out, "y2", y - 4);
    if (colour != nullptr) {
        out += " stroke=\"";
        out += colour;
        out += "\"";
    }
    out += "/>";
    appendText(out, x + 24, y, html);
}

// What a chart shows: its kind (for data-chart), its title, and the
// quantity and unit of each axis ("Voltage", "V").
struct ChartKind {
    char const* kind;
    char const* title;
    char const* xQuantity;
    char const* xUnit;
    char const* yQuantity;
    char const* yUnit;
};
constexpr ChartKind kIvChart = {"iv", "I-V tables", "Voltage", "V", "Current", "A"};
constexpr ChartKind kVtChart = {"vt", "V-T waveforms", "Time", "s", "Voltage", "V"};

// The axes of a chart, spanning all points of its curves, and where their
// ticks stand in pixels.
struct Axes {
    Axis x, y;
    long xTicks = 0, yTicks = 0;
    std::size_t points = 0;

    explicit Axes(std::vector<Curve> const& curves)
    {
        double xLow = HUGE_VAL, xHigh = -HUGE_VAL, yLow = HUGE_VAL, yHigh = -HUGE_VAL;
        for (Curve const& curve : curves)
            for (std::vector<Point> const& corner : curve.corners)
                for (Point const& p : corner) {
                    ++points;
                    xLow = std::min(xLow, p.first);
                    xHigh = std::max(xHigh, p.first);
                    yLow = std::min(yLow, p.second);
                    yHigh = std::max(yHigh, p.second);
                }
        x = niceAxis(xLow, xHigh);
        y = niceAxis(yLow, yHigh);
        xTicks = std::lround((x.high - x.low) / x.step);
        yTicks = std::lround((y.high - y.low) / y.step);
    }
    long xPixel(long tick) const { return kPlotX + coordinate(x.low + tick * x.step, x.low, x.high) * kPlotW / 1000; }
    long yPixel(long tick) const
    {
        return kPlotY + kPlotH - coordinate(y.low + tick * y.step, y.low, y.high) * kPlotH / 1000;
    }
};

// The grid, the frame, the tick labels and the axis titles.
void appendAxes(std::string& out, Axes const& axes, ChartKind const& kind)
{
    out += "<path class=\"grid\" d=\"";
    for (long i = 0; i <= axes.xTicks; ++i) {
        out += 'M';
        appendInt(out, axes.xPixel(i));
        out += ' ';
        appendInt(out, kPlotY);
        out += 'v';
        appendInt(out, kPlotH + 4);
    }
    for (long i = 0; i <= axes.yTicks; ++i) {
        out += 'M';
        appendInt(out, kPlotX - 4);
        out += ' ';
        appendInt(out, axes.yPixel(i));
        out += 'h';
        appendInt(out, kPlotW + 4);
    }
    out += "\"/><rect class=\"frame\"";
    appendPlotBox(out);
    out += "/><g class=\"axis x\">";
    for (long i = 0; i <= axes.xTicks; ++i)
        appendText(out, axes.xPixel(i), kPlotY + kPlotH + 16, tickLabel(axes.x.low + i * axes.x.step, axes.x));
    appendText(out, kPlotX + kPlotW / 2, kPlotY + kPlotH + 34,
               std::string(kind.xQuantity) + " (" + unitPrefix(axes.x.exponent) + kind.xUnit + ")");
    out += "</g><g class=\"axis y\">";
    for (long i = 0; i <= axes.yTicks; ++i)
        appendText(out, kPlotX - 7, axes.yPixel(i) + 4, tickLabel(axes.y.low + i * axes.y.step, axes.y));
    out += "<text class=\"title\" transform=\"rotate(-90)\"";
    appendAttribute(out, "x", -(kPlotY + kPlotH / 2));
    out += " y=\"16\">";
    out += std::string(kind.yQuantity) + " (" + unitPrefix(axes.y.exponent) + kind.yUnit + ")";
    out += "</text></g>";
}

// The plot area: min and max first, typ on top, each corner of a curve a
// polyline in coordinates of 0 to 1000.
void appendPlot(std::string& out, std::vector<Curve> const& curves, Axes const& axes)
{
    Axis const& x = axes.x;
    Axis const& y = axes.y;
    out += "<svg class=\"plot\"";
    appendPlotBox(out);
    out += " viewBox=\"0 0 1000 1000\" preserveAspectRatio=\"none\" data-x=\"";
    out += shortNumber(x.low, 12) + " " + shortNumber(x.high, 12) + "\" data-y=\"";
    out += shortNumber(y.low, 12) + " " + shortNumber(y.high, 12) + "\">";
    for (int corner : {2, 1, 0}) {
        for (Curve const& curve : curves) {
            std::vector<Point> const& points = curve.corners[corner];
            if (points.empty())
                continue;
            out += "<polyline class=\"";
            out += kCornerNames[corner];
            out += "\" stroke=\"";
            out += curve.colour;
            out += "\" data-table=\"";
            appendEscaped(out, curve.table);
            out += "\" points=\"";
            // Two coordinates of 0 to 1000 per point: at most 10 bytes.
            std::size_t const start = out.size();
            out.resize(start + 10 * points.size());
            char* p = &out[start];
            for (Point const& point : points) {
                p = std::to_chars(p, p + 4, coordinate(point.first, x.low, x.high)).ptr;
                *p++ = ',';
                p = std::to_chars(p, p + 4, 1000 - coordinate(point.second, y.low, y.high)).ptr;
                *p++ = ' ';
            }
            out.resize(static_cast<std::size_t>(p - out.data()) - 1);
            out += "\"/>";
        }
    }
    out += "</svg>";
}

// The legend, right of the plot: the curves, then the three corners' strokes.
void appendCurveLegend(std::string& out, std::vector<Curve> const& curves)
{
    out += "<g class=\"legend\">";
    int ly = kPlotY + 8;
    int const lx = kPlotX + kPlotW + 18;
    for (std::size_t i = 0; i < curves.size() && i < kLegendLines; ++i, ly += 17)
        appendLegendEntry(out, lx, ly, "typ", curves[i].colour, escape(curves[i].label));
    if (curves.size() > kLegendLines) {
        appendText(out, lx + 24, ly, "and " + std::to_string(curves.size() - kLegendLines) + " more");
        ly += 17;
    }
    ly += 8;
    for (char const* corner : kCornerNames) {
        appendLegendEntry(out, lx, ly, std::string("key ") + corner, nullptr, corner);
        ly += 17;
    }
    out += "</g>";
}

// One chart of a model: axes, curves and legend.
std::string chart(std::string const& model, ChartKind const& kind, std::vector<Curve> const& curves)
{
    Axes const axes(curves);
    std::string out;
    out.reserve(3000 + 100 * curves.size() + 10 * axes.points);
    out += "<svg class=\"chart\" data-model=\"";
    appendEscaped(out, model);
    out += "\" data-chart=\"";
    out += kind.kind;
    out += "\"";
    appendAttribute(out, "width", kWidth);
    appendAttribute(out, "height", kHeight);
    out += " viewBox=\"0 0 ";
    appendInt(out, kWidth);
    out += ' ';
    appendInt(out, kHeight);
    out += "\" role=\"img\"><title>";
    appendEscaped(out, model + ": " + kind.title);
    out += "</title>";
    appendAxes(out, axes, kind);
    appendPlot(out, curves, axes);
    appendCurveLegend(out, curves);
    out += "</svg>";
    return out;
}

// The [Ramp] figures: each dV/dt entry as written and as a slope.
std::string rampTable(ibis::Section const& ramp)
{
    std::string rows, notes;
    for (ibis::Item const& item : ramp.items) {
        std::string name, value;
        if (item.nameValue(name, value)) {
            notes += "<p class=\"note\">" + escape(name) + " = " + escape(value) + "</p>";
            continue;
        }
        rows += "<tr><th>" + escape(item.fields[0]) + "</th>";
        for (std::size_t i = 1; i < 4; ++i) {
            rows += "<td>";
            if (i < item.fields.size()) {
                std::string const& entry = item.fields[i];
                rows += escape(entry);
                std::string::size_type const slash = entry.find('/');
                if (slash != std::string::npos) {
                    ibis::Number const dv = ibis::parseNumber(std::string_view(entry).substr(0, slash));
                    ibis::Number const dt = ibis::parseNumber(std::string_view(entry).substr(slash + 1));
                    if (drawable(dv) && drawable(dt) && dt.value > 0)
                        rows += " <small>(" + shortNumber(dv.value / dt.value * 1e-9, 3) + " V/ns)</small>";
                }
            }
            rows += "</td>";
        }
        rows += "</tr>";
    }
    return "<table class=\"ramp\"><caption>[Ramp], no waveforms</caption><tr><th></th><th>typ</th>"
           "<th>min</th><th>max</th></tr>" +
           rows + "</table>" + notes;
}

} // namespace

std::vector<std::size_t> thinned(std::size_t count, std::size_t limit)
{
    std::vector<std::size_t> kept;
    if (count <= limit) {
        for (std::size_t i = 0; i < count; ++i)
            kept.push_back(i);
    } else if (limit == 1) {
        kept.push_back(0);
    } else {
        // The nearest of the evenly spaced positions; more points than kept,
        // so no position is taken twice.
        for (std::size_t i = 0; i < limit; ++i)
            kept.push_back((i * (count - 1) + (limit - 1) / 2) / (limit - 1));
    }
    return kept;
}

Axis niceAxis(double low, double high)
{
    Axis axis;
    if (!(low <= high)) { // no points at all
        low = 0;
        high = 1;
    }
    if (high - low <= std::fabs(high) * 1e-9) { // one value: a band around it
        double const half = low != 0 ? std::fabs(low) * 0.1 : 1.0;
        low -= half;
        high += half;
    }
    double const raw = (high - low) / 5;
    double const magnitude = std::pow(10.0, std::floor(std::log10(raw)));
    double const n = raw / magnitude;
    axis.step = (n < 1.5 ? 1 : n < 3 ? 2 : n < 7 ? 5 : 10) * magnitude;
    axis.low = std::floor(low / axis.step + 1e-9) * axis.step;
    axis.high = std::ceil(high / axis.step - 1e-9) * axis.step;
    double const largest = std::max(std::fabs(axis.low), std::fabs(axis.high));
    axis.exponent = static_cast<int>(std::floor(std::log10(largest) / 3)) * 3;
    axis.exponent = std::clamp(axis.exponent, -15, 12);
    return axis;
}

char const* unitPrefix(int exponent)
{
    switch (exponent) {
    case -15: return "f";
    case -12: return "p";
    case -9: return "n";
    case -6: return "&#181;";
    case -3: return "m";
    case 3: return "k";
    case 6: return "M";
    case 9: return "G";
    case 12: return "T";
    default: return "";
    }
}

std::string modelCharts(ibis::Model const& model)
{
    std::string out = "<p class=\"facts\">";
    std::string value;
    std::string facts;
    if (model.headValue("Model_type", value))
        facts += "Model_type " + escape(value);
    if (model.headValue("C_comp", value))
        facts += (facts.empty() ? "" : " &#183; ") + std::string("C_comp ") + escape(value);
    if (ibis::Section const* range = model.section("voltage range")) {
        std::string args;
        for (std::string const& arg : range->args)
            args += (args.empty() ? "" : " ") + arg;
        facts += (facts.empty() ? "" : " &#183; ") + std::string("[Voltage Range] ") + escape(args);
    }
    out += facts + "</p>";

    struct Table {
        char const* key;
        char const* label;
        char const* colour;
    };
    static Table const ivTables[] = {{"pulldown", "Pulldown", kCurveColours[0]},
                                     {"pullup", "Pullup (from Vcc)", kCurveColours[1]},
                                     {"gnd clamp", "GND Clamp", kCurveColours[2]},
                                     {"power clamp", "POWER Clamp (from Vcc)", kCurveColours[3]}};
    std::vector<Curve> iv, vt;
    ibis::Section const* ramp = nullptr;
    for (ibis::Section const& section : model.sections) {
        for (Table const& t : ivTables)
            if (section.key == t.key)
                iv.push_back(curveOf(section, t.label, t.colour));
        if (section.key == "rising waveform" || section.key == "falling waveform")
            vt.push_back(curveOf(section, waveformLabel(section),
                                 kCurveColours[vt.size() % std::size(kCurveColours)]));
        if (section.key == "ramp" && ramp == nullptr)
            ramp = &section;
    }
    auto drawn = [](std::vector<Curve> const& curves) {
        for (Curve const& curve : curves)
            for (std::vector<Point> const& points : curve.corners)
                if (!points.empty())
                    return true;
        return false;
    };

    bool const hasIv = drawn(iv), hasVt = drawn(vt);
    if (!hasIv && !hasVt && ramp == nullptr)
        return out + "<p class=\"none\">No curves: this model has no I-V table, waveform or [Ramp].</p>";
    out += "<div class=\"charts\">";
    out += hasIv ? chart(model.name, kIvChart, iv)
                 : "<p class=\"none\">No I-V table.</p>";
    if (hasVt)
        out += chart(model.name, kVtChart, vt);
    else if (ramp != nullptr)
        out += rampTable(*ramp);
    else
        out += "<p class=\"none\">No waveform and no [Ramp].</p>";
    return out + "</div>";
}

} // namespace reportpage
