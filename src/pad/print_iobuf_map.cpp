// Host diagnostic: the naming maps as loaded.

#include "driver/basibsgen.h"
#include "driver/load_time.h"
#include "driver/messages.h"

void IBIS_MODEL::printIobufMap()
{
    for (auto const& attribute : _devIoMaps) {
        ibsReport(IBS_MSG_1022, {attribute.first.c_str()});
        for (auto const& row : attribute.second)
            ibsReport(IBS_MSG_1023, {row.first.c_str(), row.second.c_str()});
    }
}
