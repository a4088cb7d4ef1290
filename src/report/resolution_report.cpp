#include "report/resolution_report.h"

#include <utility>

#include "driver/basibsgen.h"
#include "nearest/nearest_model.h"

namespace {

std::string text(char const* value)
{
    return value != nullptr ? value : "";
}

// The report's word for an outcome of the walk.
char const* outcomeWord(IbsSignalOutcome outcome)
{
    switch (outcome) {
    case IBS_OUTCOME_RESOLVED:
        return "resolved";
    case IBS_OUTCOME_FALLBACK:
        return "fallback";
    case IBS_OUTCOME_SUBSTITUTED:
        return "substituted";
    case IBS_OUTCOME_MISSING:
        return "missing";
    case IBS_OUTCOME_NONE:
        break;
    }
    return "none";
}

} // namespace

void ResolutionReport::observe(IBIS_MODEL const&, IB_IOBUF const& signal, std::string const& key,
                               IbsSignalOutcome outcome, void* self)
{
    static_cast<ResolutionReport*>(self)->_settled[&signal] = {key, outcome};
}

void ResolutionReport::beforeWalk(IBIS_MODEL const& generator)
{
    _signals.clear();
    _signals.reserve(generator._iobufs.size());
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
        _signals.push_back(std::move(signal));
    }
    _settled.clear();
    ibsSetOutcomeObserver(&ResolutionReport::observe, this);
}

void ResolutionReport::afterWalk(IBIS_MODEL const& generator)
{
    ibsSetOutcomeObserver(nullptr);
    _family = generator._family;
    _part = generator._partName.c_str();
    _package = generator._packageName;
    _component = generator._componentName;

    // Each signal's outcome and the key the walk built, as the walk settled
    // them; a signal the walk settled nothing for got no key.
    for (std::size_t i = 0; i < _signals.size() && i < generator._iobufs.size(); ++i) {
        SignalOutcome& signal = _signals[i];
        IB_IOBUF const* iobuf = generator._iobufs[i];
        signal.model = text(iobuf->model);
        auto settled = _settled.find(iobuf);
        if (settled == _settled.end()) {
            signal.outcome = "none";
            continue;
        }
        signal.key = settled->second.first;
        signal.outcome = outcomeWord(settled->second.second);
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
