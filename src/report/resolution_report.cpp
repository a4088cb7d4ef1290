#include "report/resolution_report.h"

#include "driver/basibsgen.h"
#include "nearest/nearest_model.h"

namespace {

std::string text(char const* value)
{
    return value != nullptr ? value : "";
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
        // The pad report's pin number table tells a differential signal's
        // negative leg by the signal's name and "-", as the [Pin] rows do.
        auto negative = generator._diffPinMap.find(signal.name + "-");
        if (negative != generator._diffPinMap.end())
            signal.pairPin = negative->second;
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
        if (signal.outcome == "missing" || signal.outcome == "substituted")
            noteNearest(generator, signal);
    }
}

void ResolutionReport::noteNearest(IBIS_MODEL const& generator, SignalOutcome& signal)
{
    ibsnearest::Nearest const nearest =
        ibsnearest::nearestModel(signal.key, generator._availableModels, generator._devIoMaps);
    // A substitute of the family's own rules is not the nearest model's
    // doing, unless it is that model.
    if (nearest.model.empty() || (signal.outcome == "substituted" && nearest.model != signal.model))
        return;
    signal.nearest = nearest.model;
    signal.differs = ibsnearest::describe(nearest.differences);
}

void ResolutionReport::afterWrite(IBIS_MODEL const& generator)
{
    _designFile = generator._designIbisFile;
    _options = ibsDesignFileOptions();
    std::vector<std::string> const names = ibsPinSignalNames(generator);
    for (std::size_t i = 0; i < _signals.size() && i < names.size(); ++i)
        _signals[i].signalInFile = names[i];
    _models.clear();
    for (std::string const& model : generator._designModels) {
        int served = 0;
        for (SignalOutcome const& signal : _signals)
            served += signal.model == model ? 1 : 0;
        _models.emplace_back(model, served);
    }
}

void ResolutionReport::setPinParasitics(std::map<std::string, IbsPinParasitics> const& values)
{
    _parasitics = true;
    auto take = [&](std::string const& pin, IbsPinParasitics& into) {
        auto const at = pin.empty() ? values.end() : values.find(pin);
        into = at == values.end() ? IbsPinParasitics() : at->second;
    };
    for (SignalOutcome& signal : _signals) {
        take(signal.pin, signal.values);
        take(signal.pairPin, signal.pairValues);
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
