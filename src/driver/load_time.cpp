#include "driver/load_time.h"

#include <cstdlib>

#include "host/dynamic_ld.h"

namespace {

// The library's copy of the host's invalid point, and the advice-dump switch
// of the host environment. Both are set when the library is loaded and read
// by nothing in the generator.
[[maybe_unused]] UT_POINT const invalidPoint = {2147483647, 2147483647};
[[maybe_unused]] bool const dumpAdvice = std::getenv("TW_DUMP_ADVICE") != nullptr;

} // namespace
