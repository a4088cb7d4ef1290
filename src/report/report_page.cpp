// The report as one self-contained HTML page: summary, pin map, signal
// table and the curves of the design's models. Styles and drawings are
// inline, there is no script, and the page's content security policy lets
// it fetch nothing, so that it opens the same from a mail or on a machine
// without network.

#include <fstream>
#include <unistd.h>
#include <map>
#include <set>

#include "ibis/model_reader.h"
#include "report/html_text.h"
#include "report/model_charts.h"
#include "report/outcome_colours.h"
#include "report/pin_map.h"
#include "report/resolution_report.h"

using reportpage::appendAttribute;
using reportpage::appendEscaped;
using reportpage::appendInt;
using reportpage::escape;

namespace {

// A model's heading names this many of its signals.
constexpr int kUsersListed = 12;

// The signal table scrolls with the page, its headings at the top of the
// window. Side by side its columns need a window of some 1140 px (three
// model names of 20 characters, the settings broken behind each ";", names
// not broken); in a narrower one each row stands as a block of label and
// value pairs, the labels being the column headings that html() appends,
// empty values left out.
char const kStyleHead[] = R"(body{font:14px/1.45 system-ui,sans-serif;color:#222;margin:24px auto;max-width:1120px;padding:0 16px}
h1{font-size:22px;margin:0 0 12px}h2{font-size:18px;border-bottom:1px solid #ccc;padding-bottom:4px;margin-top:32px}
h3{font-size:15px;margin:0;font-family:ui-monospace,monospace}
dl.run{display:grid;grid-template-columns:max-content auto;gap:2px 16px;margin:0}
dl.run dt{color:#555}dl.run dd{margin:0;font-family:ui-monospace,monospace;overflow-wrap:anywhere}
svg text{font-family:system-ui,sans-serif}
)";
// (the outcomes' fills stand between the two, made from their colour table)
char const kStyle[] = R"(.bar{display:block;margin:14px 0 4px}
ul.legend{list-style:none;padding:0;margin:6px 0;display:flex;flex-wrap:wrap;gap:4px 18px}
ul.legend li{display:flex;align-items:center;gap:5px}
.swatch{display:inline-block;width:12px;height:12px;border:1px solid #333}
.bank-legend{display:none!important}#by-bank:checked~.bank-legend{display:flex!important}
#by-bank:checked~.outcome-legend{display:none!important}
.pinmap{display:block;margin-top:8px}
.pin{stroke:#222;stroke-width:.8}.ball{fill:#e6e6e6}
.pair{stroke:#333;stroke-width:3;stroke-linecap:round}
.pinmap text{font-size:10px;fill:#666}
table{border-collapse:collapse;font-size:12px}
th,td{border:1px solid #ddd;padding:2px 6px;text-align:left;vertical-align:top}
thead th{background:#f2f2f2;position:sticky;top:0}
.signals th,.signals td{padding:2px 4px}
.signals td{font-family:ui-monospace,monospace}
.signals td::before{display:none}
tr.o-missing,tr.o-missing td{background:#fbe3d6}tr.o-fallback,tr.o-fallback td{background:#fcefd2}
tr.o-substituted,tr.o-substituted td{background:#f6e2ee}
@media (max-width:1140px){
.signals,.signals tbody{display:block}.signals thead,.signals td:empty{display:none}
.signals tr{display:grid;grid-template-columns:repeat(auto-fill,minmax(21em,1fr));margin-bottom:6px;border:1px solid #ddd}
.signals td{border:0;padding:1px 4px 1px 9.5em;text-indent:-9em;overflow-wrap:anywhere}
.signals td::before{display:inline-block;width:9em;text-indent:0;font-family:system-ui,sans-serif;color:#555}
.signals td:first-child{grid-column:1/-1;font-weight:600}
}
.model{margin:18px 0;padding-top:10px;border-top:1px solid #e4e4e4}
.facts,.served{margin:2px 0;color:#444;font-size:13px}
.charts{display:flex;flex-wrap:wrap;gap:6px 12px;align-items:flex-start;margin-top:6px}
.chart .grid{stroke:#ececec;fill:none}.chart .frame{fill:none;stroke:#999}
.chart .x text,.chart .y .title{text-anchor:middle}.chart .y text{text-anchor:end}
.chart .axis text{font-size:11px;fill:#333}.chart .legend text{font-size:11px;fill:#222}
.plot polyline,.chart .legend line{fill:none;vector-effect:non-scaling-stroke;stroke-width:2;stroke-linejoin:round}
.plot .min,.plot .max,.chart .legend .min,.chart .legend .max{stroke-width:1;stroke-opacity:.8}
.plot .min,.chart .legend .min{stroke-dasharray:4 3}
.chart .legend .key{stroke:#333}
.ramp td,.ramp th{font-family:ui-monospace,monospace}.ramp caption{text-align:left;font-weight:600;padding:4px 0}
.none{color:#666;font-style:italic}.note{margin:4px 0;font-family:ui-monospace,monospace;font-size:12px}
)";

void appendRow(std::string& out, char const* term, std::string const& value)
{
    out += "<dt>";
    out += term;
    out += "</dt><dd>";
    appendEscaped(out, value.empty() ? "-" : value);
    out += "</dd>";
}

// A path below the current directory relative to it, as the other inputs
// were named on the command line; others as they are.
std::string shownPath(std::string const& path)
{
    char buffer[4096];
    if (getcwd(buffer, sizeof buffer) == nullptr)
        return path;
    std::string const here = std::string(buffer) + "/";
    return path.compare(0, here.size(), here) == 0 ? path.substr(here.size()) : path;
}

// The count of each outcome, as one bar and as a legend.
std::string outcomeBar(ResolutionReport const& report)
{
    int const total = static_cast<int>(report.signals().size());
    std::string out = "<svg class=\"bar\" width=\"600\" height=\"22\" role=\"img\" "
                      "aria-label=\"The outcome of each signal\">";
    if (total == 0)
        out += "<rect width=\"600\" height=\"22\" fill=\"#eee\"/>";
    int x = 0, counted = 0;
    for (char const* outcome : kReportOutcomes) {
        int const n = report.count(outcome);
        if (n == 0)
            continue;
        counted += n;
        int const end = counted * 600 / total;
        out += "<rect class=\"o-";
        out += outcome;
        out += "\" data-outcome=\"";
        out += outcome;
        out += '"';
        appendAttribute(out, "x", x);
        appendAttribute(out, "width", end - x);
        out += " height=\"22\"><title>";
        out += outcome;
        out += ": ";
        appendInt(out, n);
        out += " of ";
        appendInt(out, total);
        out += " signals</title></rect>";
        x = end;
    }
    out += "</svg><ul class=\"legend counts\">";
    for (char const* outcome : kReportOutcomes) {
        out += "<li><span class=\"swatch\" style=\"background:";
        out += reportpage::outcomeColour(outcome);
        out += "\"></span>";
        out += outcome;
        out += " <b data-count=\"";
        out += outcome;
        out += "\">";
        appendInt(out, report.count(outcome));
        out += "</b></li>";
    }
    return out + "</ul>";
}

// Missing rows first, then fallbacks, then the others, each in pad report
// order.
std::vector<SignalOutcome const*> tableOrder(std::vector<SignalOutcome> const& signals)
{
    std::vector<SignalOutcome const*> rows;
    for (char const* first : {"missing", "fallback"})
        for (SignalOutcome const& s : signals)
            if (s.outcome == first)
                rows.push_back(&s);
    for (SignalOutcome const& s : signals)
        if (s.outcome != "missing" && s.outcome != "fallback")
            rows.push_back(&s);
    return rows;
}

// The design models' places on the page, by name.
using ModelIndex = std::map<std::string, std::size_t>;

// One cell of the signal table: a model name links to its block, other
// values may break behind each ";" of their settings, names nowhere.
void appendCell(std::string& out, std::string const& field, bool modelColumn, ModelIndex const& models)
{
    out += "<td>";
    auto const model = modelColumn ? models.find(field) : models.end();
    if (model != models.end()) {
        out += "<a href=\"#model-";
        appendInt(out, static_cast<long>(model->second));
        out += "\">";
        appendEscaped(out, field);
        out += "</a>";
    } else {
        std::string_view rest = field;
        for (std::size_t cut; (cut = rest.find(';')) != std::string_view::npos; rest.remove_prefix(cut + 1)) {
            appendEscaped(out, rest.substr(0, cut + 1));
            out += "<wbr>";
        }
        appendEscaped(out, rest);
    }
    out += "</td>";
}

// Each model's signals: how many, and the first names.
std::map<std::string, std::pair<int, std::string>> modelUsers(std::vector<SignalOutcome> const& signals)
{
    std::map<std::string, std::pair<int, std::string>> users;
    for (SignalOutcome const& s : signals) {
        if (s.model.empty())
            continue;
        auto& user = users[s.model];
        if (user.first++ < kUsersListed)
            user.second += (user.second.empty() ? "" : ", ") + s.name;
    }
    return users;
}

// The line under a model's heading: the signals it serves.
void appendServed(std::string& out, std::pair<int, std::string> const* users)
{
    out += "<p class=\"served\">";
    int const listed = users == nullptr ? 0 : users->first;
    if (listed == 0) {
        out += "Serves no signal of the pad report.";
    } else {
        out += "Serves ";
        appendInt(out, listed);
        out += listed == 1 ? " signal: " : " signals: ";
        appendEscaped(out, users->second);
        if (listed > kUsersListed)
            out += ", and " + std::to_string(listed - kUsersListed) + " more";
        out += ".";
    }
    out += "</p>\n";
}

} // namespace

std::string ResolutionReport::html() const
{
    ModelIndex modelIndex;
    for (std::size_t i = 0; i < _models.size(); ++i)
        modelIndex.emplace(_models[i].first, i);

    std::string out;
    out.reserve(64 * 1024 + 600 * _signals.size() + 12 * 1024 * _models.size());
    appendHtmlHead(out);
    appendHtmlSummary(out);
    out += "<section id=\"pins\">\n<h2>Pin map</h2>\n";
    out += reportpage::pinMap(_signals);
    out += "\n</section>\n";
    appendHtmlSignals(out, modelIndex);
    appendHtmlModels(out, modelIndex);
    out += "</section>\n</body>\n</html>\n";
    return out;
}

// The head with its styles, and the page's heading.
void ResolutionReport::appendHtmlHead(std::string& out) const
{
    out += "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
           "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; "
           "style-src 'unsafe-inline'\">\n"
           "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
           "<meta name=\"generator\" content=\"pad2ibis\">\n<title>pad2ibis report: ";
    appendEscaped(out, _padFile);
    out += "</title>\n<style>\n";
    out += kStyleHead;
    reportpage::appendOutcomeFills(out);
    out += kStyle;
    // In a narrow window a row of the signal table stands as a block of
    // pairs, each value behind its column's heading (plain words, which
    // need no escaping in a CSS string).
    std::vector<std::string> const& columns = signalColumns();
    for (std::size_t i = 0; i < columns.size(); ++i) {
        out += ".signals td:nth-child(";
        appendInt(out, static_cast<long>(i + 1));
        out += ")::before{content:\"" + columns[i] + "\"}\n";
    }
    out += "</style>\n</head>\n<body>\n<h1>Which model each signal got: ";
    appendEscaped(out, _padFile);
    out += "</h1>\n";
}

// The run's facts and the outcome bar.
void ResolutionReport::appendHtmlSummary(std::string& out) const
{
    out += "<section id=\"summary\">\n<h2>Summary</h2>\n<dl class=\"run\">";
    appendRow(out, "Pad report", _padFile);
    appendRow(out, "Master file", _masterFile);
    appendRow(out, "Design file", shownPath(_designFile));
    appendRow(out, "Generator", _variant ? "table-driven" : "standard");
    appendRow(out, "Family", _family);
    appendRow(out, "Part", _part);
    appendRow(out, "Package", _package);
    appendRow(out, "Component", _component);
    out += "<dt>Signals</dt><dd>";
    appendInt(out, static_cast<long>(_signals.size()));
    out += "</dd><dt>Design models</dt><dd>";
    appendInt(out, static_cast<long>(_models.size()));
    out += "</dd></dl>\n";
    out += outcomeBar(*this);
    out += "\n</section>\n";
}

// The CSV's table, missing and fallback rows first.
void ResolutionReport::appendHtmlSignals(std::string& out, ModelIndex const& models) const
{
    std::vector<std::string> const& columns = signalColumns();
    std::size_t modelColumn = columns.size();
    for (std::size_t i = 0; i < columns.size(); ++i)
        if (columns[i] == "model")
            modelColumn = i;
    out += "<section id=\"signals\">\n<h2>Signals</h2>\n<p>Missing and fallback rows first, then "
           "the others in pad report order.</p>\n<table class=\"signals\">"
           "<thead><tr>";
    for (std::string const& column : columns) {
        out += "<th>";
        appendEscaped(out, column);
        out += "</th>";
    }
    out += "</tr></thead>\n<tbody>\n";
    for (SignalOutcome const* s : tableOrder(_signals)) {
        out += "<tr class=\"o-";
        appendEscaped(out, s->outcome);
        out += "\">";
        std::vector<std::string> const fields = signalFields(*s);
        for (std::size_t i = 0; i < fields.size(); ++i)
            appendCell(out, fields[i], i == modelColumn, models);
        out += "</tr>\n";
    }
    out += "</tbody></table>\n</section>\n";
}

// A block per design model: its signals and its curves, read back from the
// design file one block at a time.
void ResolutionReport::appendHtmlModels(std::string& out, ModelIndex const& models) const
{
    std::map<std::string, std::string> charts;
    std::ifstream design(_designFile, std::ios::binary);
    bool const opened = design.is_open();
    bool const whole = opened && ibis::readModels(design, [&](ibis::Model const& model) {
        if (models.count(model.name) != 0 && charts.count(model.name) == 0)
            charts.emplace(model.name, reportpage::modelCharts(model));
    });
    auto const users = modelUsers(_signals);
    out += "<section id=\"models\">\n<h2>Models</h2>\n";
    if (!opened)
        out += "<p class=\"none\">The design file could not be read: no curves.</p>\n";
    else if (!whole)
        out += "<p class=\"none\">The design file could not be read to its end.</p>\n";
    for (std::size_t i = 0; i < _models.size(); ++i) {
        std::string const& name = _models[i].first;
        out += "<article class=\"model\" id=\"model-";
        appendInt(out, static_cast<long>(i));
        out += "\" data-model=\"";
        appendEscaped(out, name);
        out += "\">\n<h3>";
        appendEscaped(out, name);
        out += "</h3>\n";
        auto const served = users.find(name);
        appendServed(out, served == users.end() ? nullptr : &served->second);
        auto const drawn = charts.find(name);
        if (drawn != charts.end())
            out += drawn->second;
        else if (opened)
            out += "<p class=\"none\">The design file has no [Model] block of this name.</p>";
        out += "\n</article>\n";
    }
}
