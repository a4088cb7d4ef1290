#ifndef PAD2IBIS_CHANNELS_CHANNELS_FILE_H
#define PAD2IBIS_CHANNELS_CHANNELS_FILE_H

// The SerDes channels file of the AMI flow:
//
//   # comment
//   channel BLOCK_ID CHANNEL_ID RX_ENABLE TX_ENABLE
//   KEY VALUE
//
// One item a line; blank lines and lines whose first non-blank character is
// "#" are ignored; blanks or tabs separate the tokens. A "channel" line starts
// a channel, every other line is one parameter of the latest channel, in file
// order. The program's SerDes flow and the checker both read it here.

#include <istream>
#include <string>
#include <vector>

#include "driver/basibsgen.h"

// One parameter line.
struct ChannelSettingLine {
    std::string key;
    std::string value;
    int line; // 1 is the first line of the file
};

// One "channel" line and the parameter lines behind it.
struct ChannelLines {
    std::string blockId;
    std::string channelId;
    std::string rxEnable;
    std::string txEnable;
    int line;
    std::vector<ChannelSettingLine> settings;
};

// Reads a whole channels file from in. On failure returns false with the
// number of the line it failed on (1 or more) and the reason, and leaves
// channels as it was.
bool parseChannels(std::istream& in, std::vector<ChannelLines>& channels, int& errorLine,
                   std::string& reason);

// Reads the channels file at path into channel records. On success appends
// the channels to channels; they belong to the caller from then on. On
// failure returns false with "FILE:LINE: reason" in error and appends
// nothing.
bool readChannelsFile(std::string const& path, std::vector<IB_AMI_CHANNEL*>& channels,
                      std::string& error);

#endif
