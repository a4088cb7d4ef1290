// Fuzz target: the substitution of channel settings into an AMI parameter
// template. The input's first line gives the channel's settings ("KEY VALUE"
// pairs separated by blanks), the rest is the template.

#include <memory>
#include <sstream>
#include <vector>

#include "fuzz/fuzz_support.h"

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    fuzz::quietStart();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(uint8_t const* data, size_t size)
{
    fuzz::resetStatics();
    std::string text(reinterpret_cast<char const*>(data), size);
    std::string::size_type end = text.find('\n');
    std::string settings = text.substr(0, end);
    std::string templateText = end == std::string::npos ? "" : text.substr(end + 1);

    std::vector<std::unique_ptr<IB_IOBUF_CONFIG>> owned;
    std::vector<IB_IOBUF_CONFIG*> configs;
    std::istringstream words(settings);
    std::string key, value;
    while (words >> key >> value) {
        owned.emplace_back(new IB_IOBUF_CONFIG(key, value));
        configs.push_back(owned.back().get());
    }
    for (char const* fixed : {"Tx_Amp", "Rx_Eq", "Format"}) {
        owned.emplace_back(new IB_IOBUF_CONFIG(fixed, settings.size() > 2 ? settings.substr(0, 12) : "0d5"));
        configs.push_back(owned.back().get());
    }

    std::string source = fuzz::writeInput("template.ami",
                                          reinterpret_cast<uint8_t const*>(templateText.data()),
                                          templateText.size());
    std::string target = fuzz::workDir() + "/out.ami";
    fuzz::guarded([&] {
        IBS_GEN generator;
        generator.write_ami_parameter_file(source.c_str(), target.c_str(), configs);
        char result[16];
        generator.calculate_ibis_parameter_value(settings.c_str(), result);
    });
    return 0;
}
