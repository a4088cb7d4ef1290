#ifndef PAD2IBIS_APP_OPTIONS_H
#define PAD2IBIS_APP_OPTIONS_H

#include <string>

#include "run/run_options.h"

// Parses the arguments behind the program name. On a usage error returns
// false with a one-line reason in error.
bool parseOptions(int argc, char const* const* argv, RunOptions& options, std::string& error);

// The usage text that --help prints.
char const* usageText();

#endif
