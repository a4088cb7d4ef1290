#ifndef PAD2IBIS_SAFETY_INPUT_FILES_H
#define PAD2IBIS_SAFETY_INPUT_FILES_H

// Whether a path names a file that the readers can take, asked before any of
// them opens it: a directory or a device would stop a reader with an
// exception or keep it waiting for ever.

#include <string>

namespace safety {

// Why the file at path cannot be read as an input ("does not exist", "is a
// directory", "is not a regular file", "cannot be read: Permission
// denied"), or "" when it can.
std::string inputProblem(std::string const& path);

// The problems of inputProblem that would stop the generator's line reader
// with an exception (a directory) or keep it waiting for ever (a pipe, a
// device), or "": a missing or unreadable file is left for the reader, which
// reports it itself.
std::string readerHazard(std::string const& path);

// Of those, only the ones that keep any reader waiting: a pipe or a device.
// A reader through the standard streams takes a directory for a file that
// cannot be read, and says so.
std::string waitHazard(std::string const& path);

} // namespace safety

#endif
