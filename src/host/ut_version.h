#ifndef PAD2IBIS_HOST_UT_VERSION_H
#define PAD2IBIS_HOST_UT_VERSION_H

#include <string>

// Fills version with the tool's version text; non-zero when it did.
int ut_get_version_information(std::string& version);

#endif
