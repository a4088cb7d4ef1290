#ifndef PAD2IBIS_APP_AMI_HOST_H
#define PAD2IBIS_APP_AMI_HOST_H

#include <string>

#include "driver/basibsgen.h"

// The AMI flow's generator: its SerDes channels come from a channels file
// instead of the design database.
class ChannelsFileGen : public IBS_GEN {
public:
    explicit ChannelsFileGen(std::string channelsFile);

    // Fills the channels from the file; a bad file ends the process with
    // exit code 2 before anything is written.
    void loadPcsInfo() override;

private:
    std::string _channelsFile;
};

#endif
