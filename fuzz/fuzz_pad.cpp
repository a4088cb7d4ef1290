// Fuzz target: the whole reading of a pad report, from the device name to
// the constructor's tables.

#include <memory>

#include "fuzz/fuzz_support.h"

namespace {

char const* const families[] = {"KVA3", "KVTN", "HZU2", "KVA4Y", "KJ", "KVZR2", "HZU", "KVAN"};

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    fuzz::quietStart();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(uint8_t const* data, size_t size)
{
    fuzz::resetStatics();
    std::string pad = fuzz::writeInput("design.pad", data, size);
    fuzz::guarded([&] {
        std::string family;
        IBIS_MODEL::getDevName(pad, family);
    });
    char const* family = families[size % (sizeof families / sizeof families[0])];
    fuzz::guarded([&] {
        fuzz::ModelPtr model(new IBIS_MODEL(family, pad.c_str(), "master.ibs"));
        model->printIobufMap();
    });
    return 0;
}
