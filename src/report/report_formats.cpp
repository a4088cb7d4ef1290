// The report as CSV (RFC 4180) and as one JSON document.

#include "report/resolution_report.h"

#include <cstdio>
#include <fstream>
#include <iterator>

namespace {

// RFC 4180: a field with a comma, a double quote or a line break goes in
// double quotes, and its double quotes are doubled.
std::string csvField(std::string const& value)
{
    if (value.find_first_of(",\"\r\n") == std::string::npos)
        return value;
    std::string quoted = "\"";
    for (char c : value)
        quoted += c == '"' ? std::string("\"\"") : std::string(1, c);
    return quoted + "\"";
}

std::string csvRow(std::vector<std::string> const& fields)
{
    std::string row;
    for (std::size_t i = 0; i < fields.size(); ++i)
        row += (i == 0 ? "" : ",") + csvField(fields[i]);
    return row + "\r\n";
}

std::string jsonString(std::string const& value)
{
    std::string quoted = "\"";
    for (unsigned char c : value) {
        if (c == '"' || c == '\\') {
            quoted += '\\';
            quoted += static_cast<char>(c);
        } else if (c < 0x20) {
            char escaped[8];
            std::snprintf(escaped, sizeof escaped, "\\u%04x", c);
            quoted += escaped;
        } else {
            quoted += static_cast<char>(c);
        }
    }
    return quoted + "\"";
}

bool endsWith(std::string const& value, std::string const& tail)
{
    return value.size() >= tail.size() &&
           value.compare(value.size() - tail.size(), tail.size(), tail) == 0;
}

} // namespace

std::vector<std::string> const& ResolutionReport::signalColumns()
{
    static std::vector<std::string> const columns = {
        "signal",  "pin",   "bank",           "port_type", "io_settings", "model_key",
        "outcome", "model", "signal_in_file", "nearest",   "differs"};
    return columns;
}

std::vector<std::string> ResolutionReport::signalFields(SignalOutcome const& s)
{
    return {s.name,    s.pin,   s.bank,         s.portType, s.settings, s.key,
            s.outcome, s.model, s.signalInFile, s.nearest,  s.differs};
}

namespace {

// The package model's values of a signal's pins, behind its other columns.
std::vector<std::string> const kParasiticsColumns = {"r_pin", "l_pin", "c_pin", "pair_r_pin", "pair_l_pin",
                                                     "pair_c_pin"};

std::vector<std::string> parasiticsFields(SignalOutcome const& s)
{
    return {s.values.r, s.values.l, s.values.c, s.pairValues.r, s.pairValues.l, s.pairValues.c};
}

} // namespace

std::string ResolutionReport::csv() const
{
    std::vector<std::string> columns = signalColumns();
    if (_parasitics)
        columns.insert(columns.end(), kParasiticsColumns.begin(), kParasiticsColumns.end());
    std::string out = csvRow(columns);
    for (SignalOutcome const& s : _signals) {
        std::vector<std::string> fields = signalFields(s);
        if (_parasitics) {
            std::vector<std::string> const values = parasiticsFields(s);
            fields.insert(fields.end(), values.begin(), values.end());
        }
        out += csvRow(fields);
    }
    out += "\r\n" + csvRow({"model", "signals"});
    for (auto const& model : _models)
        out += csvRow({model.first, std::to_string(model.second)});
    out += "\r\n" + csvRow({"outcome", "count"});
    for (char const* outcome : kReportOutcomes)
        out += csvRow({outcome, std::to_string(count(outcome))});
    return out;
}

std::string ResolutionReport::json() const
{
    std::string out = "{\n  \"run\": {\n";
    out += "    \"inputs\": {\"pad_report\": " + jsonString(_padFile) +
           ", \"master_file\": " + jsonString(_masterFile) + "},\n";
    out += "    \"generator\": " + jsonString(_variant ? "table-driven" : "standard") + ",\n";
    out += "    \"family\": " + jsonString(_family) + ",\n";
    out += "    \"part\": " + jsonString(_part) + ",\n";
    out += "    \"package\": " + jsonString(_package) + ",\n";
    out += "    \"master\": {\"component\": " + jsonString(_component) + "},\n";
    out += "    \"design_file\": {\"component_name\": " +
           (_options.componentName.empty() ? "null" : jsonString(_options.componentName)) +
           ", \"truncate\": " + std::to_string(_options.signalNameWidth) +
           ", \"all_models\": " + (_options.allModels ? "true" : "false") +
           ", \"model_selector\": " + (_options.modelSelectors ? "true" : "false") + "}\n  },\n";
    out += "  \"signals\": [";
    for (std::size_t i = 0; i < _signals.size(); ++i) {
        SignalOutcome const& s = _signals[i];
        out += std::string(i == 0 ? "\n" : ",\n") + "    {\"signal\": " + jsonString(s.name) +
               ", \"pin\": " + jsonString(s.pin) + ", \"bank\": " + jsonString(s.bank) +
               ", \"port_type\": " + jsonString(s.portType) +
               ", \"io_settings\": " + jsonString(s.settings) +
               ", \"model_key\": " + jsonString(s.key) + ", \"outcome\": " + jsonString(s.outcome) +
               ", \"model\": " + jsonString(s.model) +
               ", \"signal_in_file\": " + jsonString(s.signalInFile) +
               ", \"nearest\": " + jsonString(s.nearest) + ", \"differs\": " + jsonString(s.differs);
        if (_parasitics) {
            std::vector<std::string> const values = parasiticsFields(s);
            for (std::size_t v = 0; v < values.size(); ++v)
                out += ", \"" + kParasiticsColumns[v] + "\": " + (values[v].empty() ? "null" : jsonString(values[v]));
        }
        out += "}";
    }
    out += _signals.empty() ? "],\n" : "\n  ],\n";
    out += "  \"models\": [";
    for (std::size_t i = 0; i < _models.size(); ++i)
        out += std::string(i == 0 ? "\n" : ",\n") + "    {\"model\": " +
               jsonString(_models[i].first) +
               ", \"signals\": " + std::to_string(_models[i].second) + "}";
    out += _models.empty() ? "],\n" : "\n  ],\n";
    out += "  \"counts\": {";
    for (std::size_t i = 0; i < std::size(kReportOutcomes); ++i)
        out += std::string(i == 0 ? "" : ", ") + jsonString(kReportOutcomes[i]) + ": " +
               std::to_string(count(kReportOutcomes[i]));
    return out + "}\n}\n";
}

ResolutionReport::Format ResolutionReport::formatOf(std::string const& path, bool anyCase)
{
    std::string name = path;
    if (anyCase)
        for (char& c : name)
            if (c >= 'A' && c <= 'Z')
                c = static_cast<char>(c - 'A' + 'a');
    return endsWith(name, ".json") ? Format::Json : endsWith(name, ".html") ? Format::Html : Format::Csv;
}

bool ResolutionReport::write(std::string const& path) const
{
    return write(path, formatOf(path, false));
}

bool ResolutionReport::write(std::string const& path, Format format) const
{
    std::string const text = format == Format::Json ? json() : format == Format::Html ? html() : csv();
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file << text;
    file.close();
    return static_cast<bool>(file);
}
