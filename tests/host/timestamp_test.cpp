// The "Generate date" stamp without SOURCE_DATE_EPOCH: the local time of the run.

#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <string>

#include "host/ut_timestamp.h"

TEST(Timestamp, WithoutAFixedDateTheStampIsTheTimeOfTheRun)
{
    auto local = [](std::time_t when) {
        struct tm parts;
        char text[64];
        std::strftime(text, sizeof text, "%a %b %e %H:%M:%S %Y\n", localtime_r(&when, &parts));
        return std::string(text);
    };
    unsetenv("SOURCE_DATE_EPOCH"); // this test program has no other test
    std::time_t const before = std::time(nullptr);
    UT_TIMESTAMP stamp;
    std::string const text = stamp.get_timestamp_string();
    EXPECT_TRUE(text == local(before) || text == local(std::time(nullptr))) << text;
}
