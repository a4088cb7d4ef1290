// The "Generate date" stamp without SOURCE_DATE_EPOCH: the local time of the run.

#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <string>

#include "host/ut_timestamp.h"

namespace {

std::string localStamp(std::time_t when)
{
    struct tm parts;
    char text[64];
    localtime_r(&when, &parts);
    std::strftime(text, sizeof text, "%a %b %e %H:%M:%S %Y\n", &parts);
    return text;
}

TEST(Timestamp, WithoutAFixedDateTheStampIsTheTimeOfTheRun)
{
    char const* fixed = std::getenv("SOURCE_DATE_EPOCH");
    std::string const saved = fixed != nullptr ? fixed : "";
    unsetenv("SOURCE_DATE_EPOCH");
    std::time_t const before = std::time(nullptr);
    UT_TIMESTAMP stamp;
    std::string const text = stamp.get_timestamp_string();
    std::time_t const after = std::time(nullptr);
    if (fixed != nullptr)
        setenv("SOURCE_DATE_EPOCH", saved.c_str(), 1);
    EXPECT_TRUE(text == localStamp(before) || text == localStamp(after)) << text;
}

} // namespace
