#ifndef PAD2IBIS_SAFETY_OUTPUT_GUARD_H
#define PAD2IBIS_SAFETY_OUTPUT_GUARD_H

// A run must never write over one of its own inputs: the outputs it is about
// to write are compared with its inputs before anything is written.

#include <string>
#include <vector>

namespace safety {

// A file of a run, with what it is to the user ("the master file").
struct RunFile {
    std::string what;
    std::string path;
};

// The first output that is one of the inputs, the same file on the disk
// (followed through links), with that input; none when every output is new
// or another file. Empty paths are passed over.
struct Overwrite {
    bool found = false;
    RunFile output, input;
};
Overwrite findOverwrite(std::vector<RunFile> const& inputs, std::vector<RunFile> const& outputs);

// "the design IBIS file IBIS/demo.ibs would be written over the master file
// IBIS/demo.ibs".
std::string describe(Overwrite const& overwrite);

// Why a file the user named for the run to write (the report) cannot be
// written where it is named, or "" when it can: the path is no directory,
// and the nearest of its folders that is there is a writable folder (the
// others are made). "its folder out is not writable".
std::string unwritableProblem(std::string const& path);

} // namespace safety

#endif
