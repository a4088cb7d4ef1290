// Each signal's outcome, settled by the walks: kept in its record, and told
// to the host's observer where one is installed.

#include "resolve/signal_outcome.h"

#include "driver/basibsgen.h"
#include "driver/host_hook.h"
#include "driver/load_time.h"
#include "resolve/walk_steps.h"

namespace {

IbsHook<IbsOutcomeObserver> observer;

} // namespace

void ibsSetOutcomeObserver(IbsOutcomeObserver installed, void* context)
{
    observer.set(installed, context);
}

void ibsSettle(IBIS_MODEL const& generator, IB_IOBUF* iobuf, std::string const& key, int outcome)
{
    iobuf->status = outcome;
    if (observer)
        observer.function(generator, *iobuf, key, static_cast<IbsSignalOutcome>(outcome), observer.context);
}
