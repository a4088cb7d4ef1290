#include "app/channels.h"

#include <fstream>
#include <memory>
#include <sstream>

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

bool readChannelsFile(std::string const& path, std::vector<IB_AMI_CHANNEL*>& channels,
                      std::string& error)
{
    std::ifstream in(path);
    if (!in.is_open()) {
        error = path + ":0: cannot open the channels file";
        return false;
    }

    std::vector<std::unique_ptr<IB_AMI_CHANNEL>> read;
    std::vector<std::unique_ptr<IB_IOBUF_CONFIG>> parameters;
    std::string line;
    int number = 0;
    auto fail = [&](std::string const& reason) {
        error = path + ":" + std::to_string(number) + ": " + reason;
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
            auto channel = std::make_unique<IB_AMI_CHANNEL>();
            channel->blockId = tokens[1];
            channel->channelId = tokens[2];
            channel->rxEnable = tokens[3];
            channel->txEnable = tokens[4];
            read.push_back(std::move(channel));
            continue;
        }
        if (tokens.size() != 2)
            return fail("expected 'KEY VALUE', found " + std::to_string(tokens.size()) + " tokens");
        if (read.empty())
            return fail("parameter '" + tokens[0] + "' before any channel");
        parameters.push_back(std::make_unique<IB_IOBUF_CONFIG>(tokens[0], tokens[1]));
        read.back()->configs.push_back(parameters.back().get());
    }
    if (in.bad()) {
        ++number;
        return fail("cannot read the channels file");
    }

    // The channel records belong to the generator from here on.
    for (auto& parameter : parameters)
        parameter.release();
    for (auto& channel : read)
        channels.push_back(channel.release());
    return true;
}
