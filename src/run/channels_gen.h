#ifndef PAD2IBIS_RUN_CHANNELS_GEN_H
#define PAD2IBIS_RUN_CHANNELS_GEN_H

#include <string>

#include "driver/basibsgen.h"

// The AMI flow's generator: its SerDes channels come from a channels file
// instead of the design database.
class ChannelsFileGen : public IBS_GEN {
public:
    // legacy: a bad channels file is said as the legacy host says it
    // ("pad2ibis: FILE:LINE: reason"), otherwise as a finding
    // ("FILE:LINE: error: reason").
    ChannelsFileGen(std::string channelsFile, bool legacy);

    // Fills the channels from the file; a bad file ends the process with
    // exit code 2 before anything is written.
    void loadPcsInfo() override;

private:
    std::string _channelsFile;
    bool _legacy;
};

#endif
