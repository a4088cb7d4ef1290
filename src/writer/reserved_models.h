#ifndef PAD2IBIS_WRITER_RESERVED_MODELS_H
#define PAD2IBIS_WRITER_RESERVED_MODELS_H

#include <string_view>

// The model names that a [Pin] row gives a pin with no [Model] of its own:
// POWER, GND, NC and CIRCUITCALL, in any letter case.
bool ibsReservedModelName(std::string_view name);

#endif
