#include "app/ami_host.h"

#include <cstdio>
#include <cstdlib>

#include "channels/channels_file.h"

ChannelsFileGen::ChannelsFileGen(std::string channelsFile) : _channelsFile(std::move(channelsFile))
{
}

void ChannelsFileGen::loadPcsInfo()
{
    std::string error;
    if (!readChannelsFile(_channelsFile, _amiIobufs, error)) {
        std::fflush(stdout);
        std::fprintf(stderr, "pad2ibis: %s\n", error.c_str());
        std::exit(2);
    }
}
