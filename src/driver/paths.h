#ifndef PAD2IBIS_DRIVER_PATHS_H
#define PAD2IBIS_DRIVER_PATHS_H

// Paths as the generator composes them: with "\" as separator, then turned
// by the host's makeunixpath.

#include <string>

// path with its backslashes turned into slashes.
std::string ibsUnixPath(std::string const& path);

// The current directory, as the host gives it.
std::string ibsCurrentDir();

// The four parts of a path, as split_file_name gives them: no drive; the
// directory, with a "/" behind it when it is longer than two characters;
// the name without directory and extension; the extension, with its point
// ("." alone for none).
struct IbsPathParts {
    std::string drive;
    std::string directory;
    std::string name;
    std::string extension;
};
IbsPathParts ibsSplitPath(std::string const& path);

#endif
