#ifndef PAD2IBIS_APP_CHANNELS_H
#define PAD2IBIS_APP_CHANNELS_H

#include <string>
#include <vector>

#include "driver/basibsgen.h"

// Reads the SerDes channels file of the AMI flow:
//
//   # comment
//   channel BLOCK_ID CHANNEL_ID RX_ENABLE TX_ENABLE
//   KEY VALUE
//
// One item a line; blank lines and lines whose first non-blank character is
// "#" are ignored; blanks or tabs separate the tokens. A "channel" line starts
// a channel, every other line is one parameter of the latest channel, in file
// order. On success appends the channels to channels. On failure returns
// false with "FILE:LINE: reason" in error and appends nothing.
bool readChannelsFile(std::string const& path, std::vector<IB_AMI_CHANNEL*>& channels,
                      std::string& error);

#endif
