#include "channels/channels_file.h"

#include <fstream>

namespace {

std::vector<std::string> splitBlanks(std::string const& line)
{
    std::vector<std::string> tokens;
    std::string::size_type pos = 0;
    while (true) {
        pos = line.find_first_not_of(" \t\r", pos);
        if (pos == std::string::npos)
            break;
        std::string::size_type end = line.find_first_of(" \t\r", pos);
        tokens.push_back(line.substr(pos, end - pos));
        pos = end;
    }
    return tokens;
}

} // namespace

bool parseChannels(std::istream& in, std::vector<ChannelLines>& channels, int& errorLine,
                   std::string& reason)
{
    std::vector<ChannelLines> read;
    std::string line;
    int number = 0;
    auto fail = [&](std::string const& why) {
        errorLine = number;
        reason = why;
        return false;
    };
    while (std::getline(in, line)) {
        ++number;
        std::vector<std::string> tokens = splitBlanks(line);
        if (tokens.empty() || tokens[0][0] == '#')
            continue;
        if (tokens[0] == "channel") {
            if (tokens.size() != 5)
                return fail("expected 'channel BLOCK_ID CHANNEL_ID RX_ENABLE TX_ENABLE', found " +
                            std::to_string(tokens.size()) + " tokens");
            read.push_back({tokens[1], tokens[2], tokens[3], tokens[4], number, {}});
            continue;
        }
        if (tokens.size() != 2)
            return fail("expected 'KEY VALUE', found " + std::to_string(tokens.size()) + " tokens");
        if (read.empty())
            return fail("parameter '" + tokens[0] + "' before any channel");
        read.back().settings.push_back({tokens[0], tokens[1], number});
    }
    if (in.bad()) {
        ++number;
        return fail("cannot read the channels file");
    }
    channels.insert(channels.end(), read.begin(), read.end());
    return true;
}

bool readChannelsFile(std::string const& path, std::vector<IB_AMI_CHANNEL*>& channels,
                      std::string& error)
{
    std::ifstream in(path);
    if (!in.is_open()) {
        error = path + ":0: cannot open the channels file";
        return false;
    }
    std::vector<ChannelLines> read;
    int line = 0;
    std::string reason;
    if (!parseChannels(in, read, line, reason)) {
        error = path + ":" + std::to_string(line) + ": " + reason;
        return false;
    }
    // The channel records belong to the generator from here on.
    for (ChannelLines const& lines : read) {
        IB_AMI_CHANNEL* channel = new IB_AMI_CHANNEL();
        channel->blockId = lines.blockId;
        channel->channelId = lines.channelId;
        channel->rxEnable = lines.rxEnable;
        channel->txEnable = lines.txEnable;
        for (ChannelSettingLine const& setting : lines.settings)
            channel->configs.push_back(new IB_IOBUF_CONFIG(setting.key, setting.value));
        channels.push_back(channel);
    }
    return true;
}
