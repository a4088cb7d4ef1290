#include "app/report.h"

#include <cstdio>
#include <fstream>
#include <iterator>

#include "driver/basibsgen.h"

namespace {

char const* const kOutcomes[] = {"resolved", "fallback", "substituted", "missing", "none"};

std::string text(char const* value)
{
    return value != nullptr ? value : "";
}

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

void ResolutionReport::observe(IbsMessage message, std::initializer_list<char const*> args,
                               void* self)
{
    // Only the reports that name a signal: not available, substituted, and
    // an input moved to its bidirectional model.
    if (message != IBS_MSG_1010 && message != IBS_MSG_1011 && message != IBS_MSG_1028)
        return;
    Event event{message, {}};
    for (char const* arg : args)
        event.args.push_back(text(arg));
    static_cast<ResolutionReport*>(self)->_events.push_back(event);
}

void ResolutionReport::beforeWalk(IBIS_MODEL const& generator)
{
    _signals.clear();
    _events.clear();
    for (IB_IOBUF const* iobuf : generator._iobufs) {
        SignalOutcome signal;
        signal.name = text(iobuf->name);
        signal.pin = text(iobuf->site);
        signal.bank = text(iobuf->bank);
        signal.portType = text(iobuf->type);
        for (IB_IOBUF_CONFIG const* config : iobuf->configs)
            signal.settings += (signal.settings.empty() ? "" : ";") + config->key + "=" + config->value;
        _signals.push_back(signal);
    }
    ibsSetReportObserver(&ResolutionReport::observe, this);
}

void ResolutionReport::afterWalk(IBIS_MODEL const& generator)
{
    ibsSetReportObserver(nullptr);
    _family = generator._family;
    _part = generator._partName.c_str();
    _package = generator._packageName;
    _component = generator._componentName;

    // The walk reports in signal order, so each signal's reports are the
    // next ones that carry its name (the second argument) and fit what the
    // walk left in its record: only an input is moved to its bidirectional
    // model, a signal reported missing has no model, a substituted one has
    // the substitute.
    std::size_t next = 0;
    for (std::size_t i = 0; i < _signals.size() && i < generator._iobufs.size(); ++i) {
        SignalOutcome& signal = _signals[i];
        signal.model = text(generator._iobufs[i]->model);
        Event const* notAvailable = nullptr;
        Event const* substituted = nullptr;
        Event const* inputMoved = nullptr;
        while (next < _events.size()) {
            Event const& event = _events[next];
            if (event.args.size() < 2 || event.args[1] != signal.name)
                break;
            if (event.message == IBS_MSG_1028) {
                if (inputMoved != nullptr || signal.portType != "IN")
                    break;
                inputMoved = &event;
            } else if (event.message == IBS_MSG_1010) {
                if (!signal.model.empty())
                    break;
                notAvailable = &event;
            } else {
                if (event.args.size() < 3 || event.args[2] != signal.model)
                    break;
                substituted = &event;
            }
            ++next;
            if (event.message != IBS_MSG_1028)
                break; // the last report of a signal's turn
        }
        if (notAvailable != nullptr) {
            signal.outcome = "missing";
            signal.key = notAvailable->args[0];
            signal.model.clear();
        } else if (substituted != nullptr) {
            signal.outcome = "substituted";
            signal.key = substituted->args[0];
        } else if (inputMoved != nullptr) {
            signal.outcome = "fallback";
            signal.key = inputMoved->args[0];
        } else if (!signal.model.empty()) {
            signal.outcome = "resolved";
            signal.key = signal.model;
        } else {
            signal.outcome = "none";
        }
    }
}

void ResolutionReport::afterWrite(IBIS_MODEL const& generator)
{
    _models.clear();
    for (std::string const& model : generator._designModels) {
        int served = 0;
        for (SignalOutcome const& signal : _signals)
            served += signal.model == model ? 1 : 0;
        _models.emplace_back(model, served);
    }
}

void ResolutionReport::setRun(std::string const& padFile, std::string const& masterFile,
                              bool variant)
{
    _padFile = padFile;
    _masterFile = masterFile;
    _variant = variant;
}

int ResolutionReport::count(std::string const& outcome) const
{
    int n = 0;
    for (SignalOutcome const& signal : _signals)
        n += signal.outcome == outcome ? 1 : 0;
    return n;
}

std::string ResolutionReport::csv() const
{
    std::string out = csvRow({"signal", "pin", "bank", "port_type", "io_settings", "model_key",
                              "outcome", "model"});
    for (SignalOutcome const& s : _signals)
        out += csvRow({s.name, s.pin, s.bank, s.portType, s.settings, s.key, s.outcome, s.model});
    out += "\r\n" + csvRow({"model", "signals"});
    for (auto const& model : _models)
        out += csvRow({model.first, std::to_string(model.second)});
    out += "\r\n" + csvRow({"outcome", "count"});
    for (char const* outcome : kOutcomes)
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
    out += "    \"master\": {\"component\": " + jsonString(_component) + "}\n  },\n";
    out += "  \"signals\": [";
    for (std::size_t i = 0; i < _signals.size(); ++i) {
        SignalOutcome const& s = _signals[i];
        out += std::string(i == 0 ? "\n" : ",\n") + "    {\"signal\": " + jsonString(s.name) +
               ", \"pin\": " + jsonString(s.pin) + ", \"bank\": " + jsonString(s.bank) +
               ", \"port_type\": " + jsonString(s.portType) +
               ", \"io_settings\": " + jsonString(s.settings) +
               ", \"model_key\": " + jsonString(s.key) + ", \"outcome\": " + jsonString(s.outcome) +
               ", \"model\": " + jsonString(s.model) + "}";
    }
    out += _signals.empty() ? "],\n" : "\n  ],\n";
    out += "  \"models\": [";
    for (std::size_t i = 0; i < _models.size(); ++i)
        out += std::string(i == 0 ? "\n" : ",\n") + "    {\"model\": " +
               jsonString(_models[i].first) +
               ", \"signals\": " + std::to_string(_models[i].second) + "}";
    out += _models.empty() ? "],\n" : "\n  ],\n";
    out += "  \"counts\": {";
    for (std::size_t i = 0; i < std::size(kOutcomes); ++i)
        out += std::string(i == 0 ? "" : ", ") + jsonString(kOutcomes[i]) + ": " +
               std::to_string(count(kOutcomes[i]));
    return out + "}\n}\n";
}

bool ResolutionReport::write(std::string const& path) const
{
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file << (endsWith(path, ".json") ? json() : csv());
    file.close();
    return static_cast<bool>(file);
}
