// The steps of the design model walks around the lookup of a composed key:
// a signal's set-up, the bank impedance step, the input fallback and
// acceptance.

#include <cstdio>
#include <iostream>

#include "driver/basibsgen.h"
#include "driver/load_time.h"
#include "driver/messages.h"
#include "host/ut_string.h"
#include "resolve/signal_outcome.h"
#include "resolve/walk_steps.h"

WalkSignal ibsStartSignal(IB_IOBUF* iobuf, char const* keyTemplate)
{
    WalkSignal signal;
    signal.dir = iobuf->type ? iobuf->type : "";
    for (IB_IOBUF_CONFIG* config : iobuf->configs)
        signal.attrs.push_back(*config);
    for (IB_IOBUF_CONFIG const& attr : signal.attrs) {
        if (attr.key == "IO_TYPE") {
            signal.ioType = attr.value;
            break;
        }
    }
    iobuf->model = ibs_new_model_string(keyTemplate);
    return signal;
}

void ibsMarkOpenDrain(IB_IOBUF* iobuf)
{
    delete[] iobuf->type;
    iobuf->type = ut_strdup("OD");
}

void ibsBankImpedanceStep(IBIS_MODEL& generator, IB_IOBUF* iobuf)
{
    // The impedance table of these families is keyed by supply voltage. The
    // step overrides whatever the signal's own attributes gave; the reset
    // of "io" and "ou" keys that follows wipes it again there, so it only
    // leaves a trace on "in" and "od" keys.
    std::string bank = iobuf->bank ? iobuf->bank : "";
    auto supply = generator._bankVccio.find(bank);
    if (supply == generator._bankVccio.end()) {
        ibsReport(IBS_MSG_1027, {bank.c_str()});
        return;
    }
    auto imp = generator._devIoMaps.find("IMP");
    if (imp == generator._devIoMaps.end())
        return;
    auto code = imp->second.find(supply->second);
    if (code != imp->second.end())
        iobuf->setMode(IBIS_KEY_IMPEDANCE, code->second);
}

std::string ibsInputFallback(IBIS_MODEL& generator, IB_IOBUF* iobuf)
{
    std::string inputKey = iobuf->model;
    if (generator._availableModels.count(inputKey) != 0)
        return "";
    iobuf->setMode(IBIS_KEY_DIRECTION, "io");
    std::string bidiKey = iobuf->model;
    if (generator._availableModels.count(bidiKey) == 0) {
        // Acceptance reports the input key; the bidirectional one is never
        // mentioned.
        iobuf->setMode(IBIS_KEY_DIRECTION, "in");
        return "";
    }
    ibsReport(IBS_MSG_1028, {inputKey.c_str(), iobuf->name});
    ibsReport(IBS_MSG_1029, {bidiKey.c_str()});
    return inputKey;
}

void ibsUseModel(IBIS_MODEL& generator, IB_IOBUF* iobuf, std::string const& model,
                 std::string const& pinKey)
{
    generator._designModels.insert(model);
    auto pin = generator._modelPinMap.find(pinKey);
    if (pin != generator._modelPinMap.end())
        iobuf->masterPin = ut_strdup(pin->second.c_str());
}

void ibsAcceptKey(IBIS_MODEL& generator, IB_IOBUF* iobuf, std::string const& inputKey)
{
    std::string key = iobuf->model;
    if (generator._availableModels.count(key) != 0) {
        ibsUseModel(generator, iobuf, key, key);
        if (inputKey.empty())
            ibsSettle(generator, iobuf, key, IBS_OUTCOME_RESOLVED);
        else
            ibsSettle(generator, iobuf, inputKey, IBS_OUTCOME_FALLBACK);
        return;
    }
    if (ibsTakeChosenSubstitute(generator, iobuf, key))
        return;
    ibsMissingKey(generator, iobuf, key);
}

void ibsMissingKey(IBIS_MODEL& generator, IB_IOBUF* iobuf, std::string const& key)
{
    ibsReport(IBS_MSG_1010, {key.c_str(), iobuf->name});
    ibsFlushAll();
    ++generator._missingModelCount;
    // An empty model string: the signal has no model.
    iobuf->model[0] = '\0';
    ibsSettle(generator, iobuf, key, IBS_OUTCOME_MISSING);
}

void ibsFlushAll()
{
    std::cout.flush();
    std::fflush(nullptr);
}
