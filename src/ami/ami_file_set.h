#ifndef PAD2IBIS_AMI_AMI_FILE_SET_H
#define PAD2IBIS_AMI_AMI_FILE_SET_H

// The files of the SerDes IBIS-AMI set, named before any is written: the
// writer goes through this list, and so can a host that wants to know
// beforehand what a run will write.

#include <string>
#include <vector>

#include "driver/basibsgen.h"
#include "driver/messages.h"

struct IbsAmiFile {
    IbsFileRole role;   // the SerDes master's copy, an executable's, or a parameter file
    std::string source; // the file copied, or a parameter file's template
    std::string target; // where it goes in the ibis_ami directory
    IB_AMI_CHANNEL const* channel; // a parameter file's channel; null for a copy
};

// The ibis_ami directory below the current directory.
std::string ibsAmiOutputDirectory();

// The files of the set in the order they are written: the SerDes master's
// copy, the receive and the transmit executable's, then for each channel
// its receive and its transmit parameter file, where that side is on. Needs
// the names of the generator's file set and its channels.
std::vector<IbsAmiFile> ibsAmiFiles(IBS_GEN& generator);

#endif
