#ifndef PAD2IBIS_DRIVER_PATHS_H
#define PAD2IBIS_DRIVER_PATHS_H

// Paths as the generator composes them: with "\" as separator, then turned
// by the host's makeunixpath.

#include <string>

#include "driver/basibsgen.h"

// path with its backslashes turned into slashes.
std::string ibsUnixPath(std::string const& path);

// The current directory, as the host gives it.
std::string ibsCurrentDir();

// The four parts that split_file_name gives for a path.
struct IbsPathParts {
    std::string drive;
    std::string directory;
    std::string name;
    std::string extension;
};
IbsPathParts ibsSplitPath(IBIS_MODEL& model, std::string const& path);

#endif
