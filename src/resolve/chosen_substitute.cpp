// The host's substitute for a key that the master lacks, where the host
// installed a chooser.

#include <string>

#include "driver/basibsgen.h"
#include "driver/host_hook.h"
#include "driver/load_time.h"
#include "driver/messages.h"
#include "resolve/model_substitute.h"
#include "resolve/signal_outcome.h"
#include "resolve/walk_steps.h"

namespace {

IbsHook<IbsSubstituteChooser> chooser;

} // namespace

void ibsSetSubstituteChooser(IbsSubstituteChooser installed, void* context)
{
    chooser.set(installed, context);
}

bool ibsTakeChosenSubstitute(IBIS_MODEL& generator, IB_IOBUF* iobuf, std::string const& key)
{
    if (!chooser)
        return false;
    std::string const substitute = chooser.function(generator, *iobuf, key, chooser.context);
    if (substitute.empty() || generator._availableModels.count(substitute) == 0)
        return false;
    ibsReport(IBS_MSG_1011, {key.c_str(), iobuf->name, substitute.c_str()});
    ibsFlushAll();
    delete[] iobuf->model;
    iobuf->model = ibs_new_model_string(substitute.c_str());
    // The substitute's own master pin, so that a differential signal keeps
    // its [Diff pin] row.
    ibsUseModel(generator, iobuf, substitute, substitute);
    ibsSettle(generator, iobuf, key, IBS_OUTCOME_SUBSTITUTED);
    return true;
}
