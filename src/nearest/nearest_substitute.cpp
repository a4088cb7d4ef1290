// The nearest model as the substitute that a host offers the generator's
// walks for a key that the master lacks.

#include "driver/basibsgen.h"
#include "nearest/nearest_model.h"

namespace ibsnearest {

std::string nearestSubstitute(IBIS_MODEL const& generator, IB_IOBUF const&,
                              std::string const& key, void*)
{
    return nearestModel(key, generator._availableModels, generator._devIoMaps).model;
}

} // namespace ibsnearest
