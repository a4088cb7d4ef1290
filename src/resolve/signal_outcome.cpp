// Each signal's outcome, settled by the walks: kept in its record, and told
// to the host's observer where one is installed.

#include "resolve/signal_outcome.h"

#include "driver/basibsgen.h"
#include "driver/load_time.h"
#include "resolve/walk_steps.h"

namespace {

IbsOutcomeObserver outcomeObserver = nullptr;
void* outcomeObserverContext = nullptr;

} // namespace

void ibsSetOutcomeObserver(IbsOutcomeObserver observer, void* context)
{
    outcomeObserver = observer;
    outcomeObserverContext = context;
}

void ibsSettle(IBIS_MODEL const& generator, IB_IOBUF* iobuf, std::string const& key, int outcome)
{
    iobuf->status = outcome;
    if (outcomeObserver != nullptr)
        outcomeObserver(generator, *iobuf, key, static_cast<IbsSignalOutcome>(outcome), outcomeObserverContext);
}
