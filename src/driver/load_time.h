#ifndef PAD2IBIS_DRIVER_LOAD_TIME_H
#define PAD2IBIS_DRIVER_LOAD_TIME_H

// Every translation unit of the generator takes its own copies of the host's
// module ids when the library is loaded. Nothing here reads them; they tie
// the library to the host modules it was built against.

#include "host/dynamic_ld.h"

namespace {
[[maybe_unused]] int const cmModuleId = CM_DYNAMIC_LD::dynamic_id;
[[maybe_unused]] int const ncModuleId = NC_DYNAMIC_LD::dynamic_id;
[[maybe_unused]] int const ncGenSpeedId = NC_DYNAMIC_LD::dynamic_ncgenspeed;
[[maybe_unused]] int const npModuleId = NP_DYNAMIC_LD::dynamic_id;
[[maybe_unused]] int const poModuleId = PO_DYNAMIC_LD::dynamic_id;
} // namespace

#endif
