#include "run/channels_gen.h"

#include <cstdio>
#include <cstdlib>

#include "channels/channels_file.h"

ChannelsFileGen::ChannelsFileGen(std::string channelsFile, bool legacy)
    : _channelsFile(std::move(channelsFile)), _legacy(legacy)
{
}

void ChannelsFileGen::loadPcsInfo()
{
    std::string error;
    if (!readChannelsFile(_channelsFile, _amiIobufs, error)) {
        std::fflush(stdout);
        if (_legacy) {
            std::fprintf(stderr, "pad2ibis: %s\n", error.c_str());
        } else {
            // "FILE:LINE: reason" becomes "FILE:LINE: error: reason".
            std::string::size_type const reason = error.find(": ", _channelsFile.size());
            std::fprintf(stderr, "%s\n",
                         reason == std::string::npos ? error.c_str() : error.insert(reason + 2, "error: ").c_str());
        }
        std::exit(2);
    }
}
