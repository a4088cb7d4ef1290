#ifndef PAD2IBIS_PAD_FILE_NAMES_H
#define PAD2IBIS_PAD_FILE_NAMES_H

// How the generator knows its input files by name: a pad report by ".pad",
// an IBIS file by ".ibs", each anywhere in the path, so a further extension
// behind it is taken too.

#include <string>

bool ibsNamesPadReport(std::string const& path);
bool ibsNamesIbisFile(std::string const& path);

#endif
