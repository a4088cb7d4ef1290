#include "host/ut_timestamp.h"

#include <cctype>
#include <cstdlib>
#include <cstring>
#include <ctime>

namespace {

// SOURCE_DATE_EPOCH, when it holds a whole number, fixes the time stamp so
// that a run can be reproduced byte for byte.
bool sourceDateEpoch(time_t& when)
{
    char const* text = std::getenv("SOURCE_DATE_EPOCH");
    if (text == nullptr || *text == '\0' || std::strlen(text) > 18)
        return false;
    for (char const* p = text; *p != '\0'; ++p)
        if (!std::isdigit(static_cast<unsigned char>(*p)))
            return false;
    when = static_cast<time_t>(std::strtoll(text, nullptr, 10));
    return true;
}

} // namespace

UT_TIMESTAMP::UT_TIMESTAMP()
{
    _text[0] = '\0';
}

UT_TIMESTAMP::~UT_TIMESTAMP() = default;

char const* UT_TIMESTAMP::get_timestamp_string()
{
    time_t when;
    struct tm parts;
    bool fixed = sourceDateEpoch(when);
    if (!fixed)
        when = std::time(nullptr);
    bool ok = fixed ? gmtime_r(&when, &parts) != nullptr : localtime_r(&when, &parts) != nullptr;
    if (!ok || std::strftime(_text, sizeof _text, "%a %b %e %H:%M:%S %Y\n", &parts) == 0)
        std::strcpy(_text, "Thu Jan  1 00:00:00 1970\n");
    return _text;
}
