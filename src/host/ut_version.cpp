#include "host/ut_version.h"

#include <cstdlib>

#ifndef PAD2IBIS_VERSION
#define PAD2IBIS_VERSION "0.0.0"
#endif

int ut_get_version_information(std::string& version)
{
    // PAD2IBIS_VERSION_TEXT replaces the version text, so that output can be
    // compared across releases; an empty value says there is none.
    if (char const* text = std::getenv("PAD2IBIS_VERSION_TEXT")) {
        version = text;
        return version.empty() ? 0 : 1;
    }
    version = PAD2IBIS_VERSION;
    return 1;
}
