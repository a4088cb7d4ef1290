// Base bodies of the operations whose subsystems are not in yet: reading of
// the master file, model resolution and design IBIS writing. A run stops
// after the pad report until they land.

#include "driver/basibsgen.h"
#include "driver/load_time.h"

bool IBIS_MODEL::hasDoneLoadingIoMaps() { return false; }
int IBIS_MODEL::getVoltage(std::string&) { return -1; }
bool IBIS_MODEL::loadIbisModels() { return false; }
bool IBIS_MODEL::loadAvailableModels() { return false; }
bool IBIS_MODEL::loadDevIoMaps() { return false; }
void IBIS_MODEL::setDesignModels() {}
bool IBIS_MODEL::writeIbisModels(int) { return false; }
