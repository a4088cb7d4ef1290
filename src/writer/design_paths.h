#ifndef PAD2IBIS_WRITER_DESIGN_PATHS_H
#define PAD2IBIS_WRITER_DESIGN_PATHS_H

// Where the design IBIS file and the files beside it go, worked out before
// anything is written: writeIbisModels names its files by this, and so can a
// host that wants to know beforehand what a run will write.

#include <string>
#include <vector>

class IBIS_MODEL;

struct IbsDesignPaths {
    // The design IBIS file as it is opened: a relative name goes below the
    // IBIS directory of the current directory, with the companion-chip or
    // part suffix where one applies.
    std::string designFile;
    // The IBIS directory that is made when missing; empty for an absolute
    // design file name, which stays where it is.
    std::string ibisDirectory;
    // The companion chip's IBIS file beside the master, the prefix of its
    // numbered copies (with the host's mixed separator, as the copies are
    // named) and the copies' names; all empty when no copies are made.
    std::string btnSource;
    std::string btnStem;
    std::vector<std::string> companionFiles;
    // The package model file: its name, where it lies beside the master, and
    // where its copy goes beside the design file.
    std::string packageFileName;
    std::string packageSource;
    std::string packageTarget;
};

// The paths of a run that writes the design file with btnCount companion
// copies. Needs the file names of the generator and what the pad report
// gave: device, part and package.
IbsDesignPaths ibsDesignPaths(IBIS_MODEL& model, int btnCount);

// A companion copy's name: stem, "_btn", the index (two digits for more than
// nine copies) and ".ibs".
std::string ibsCompanionFileName(std::string const& stem, int index, int count);

// The file of that name in the directory of path.
std::string ibsBeside(std::string const& path, std::string const& name);

// The package model file's name: the master's name, the device's suffix, the
// package kind and its pin count, in lower case.
std::string ibsPackageFileName(IBIS_MODEL& model);

#endif
