#ifndef PAD2IBIS_SAFETY_AMI_SCAN_H
#define PAD2IBIS_SAFETY_AMI_SCAN_H

// The files of the SerDes flow read ahead of the parameter file writer, for
// what it would lose without a word: a parameter line over the 4095
// characters it reads in one piece, a NUL (it writes a line up to there), a
// replaced value whose token runs on behind its ")" (the writer drops the
// whole token), a setting cut to the 15 characters a value may have.

#include <string>
#include <vector>

#include "channels/channels_file.h"
#include "check/ibis_check.h"

namespace safety {

// A parameter template, with the settings that its parameter files will
// get: those of every channel whose side it serves.
struct TemplateUse {
    std::string path;
    std::vector<IB_AMI_CHANNEL const*> channels;
};

// The findings in the template's lines; read is false when it could not be
// read.
std::vector<ibischeck::Finding> scanTemplate(TemplateUse const& use, bool& read);

// The findings in the channels file's lines: NUL bytes and settings cut
// short.
std::vector<ibischeck::Finding> scanChannels(std::string const& text, std::vector<ChannelLines> const& channels);

} // namespace safety

#endif
