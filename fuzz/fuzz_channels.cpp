// Fuzz target: the channels file of the program's SerDes flow.

#include "channels/channels_file.h"
#include "fuzz/fuzz_support.h"

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    fuzz::quietStart();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(uint8_t const* data, size_t size)
{
    std::string path = fuzz::writeInput("channels.txt", data, size);
    std::vector<IB_AMI_CHANNEL*> channels;
    std::string error;
    bool ok = readChannelsFile(path, channels, error);
    if (ok == !error.empty())
        std::abort();
    for (IB_AMI_CHANNEL* channel : channels) {
        for (IB_IOBUF_CONFIG* config : channel->configs)
            delete config;
        delete channel;
    }
    return 0;
}
