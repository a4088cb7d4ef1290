#ifndef PAD2IBIS_PAD_LINE_TOKENS_H
#define PAD2IBIS_PAD_LINE_TOKENS_H

#include <cstring>

#include "host/ut_string.h"

// Takes count blank-separated tokens from the front of line, which loses
// them, and leaves the last one in token: "PART TYPE: X" gives X as the
// third.
inline void ibsTakeTokens(char* line, char* token, int count)
{
    for (int i = 0; i < count; ++i)
        ut_strgettoken(line, token, " ", 0);
}

// When line holds label, takes count tokens from it as ibsTakeTokens does
// and leaves the last one, trimmed, in token; otherwise false, line as it
// was.
inline bool ibsLabelledToken(char* line, char const* label, char* token, int count)
{
    if (std::strstr(line, label) == nullptr)
        return false;
    ibsTakeTokens(line, token, count);
    ut_strtrim(token);
    return true;
}

// Upper-cases a pad report line in place and tells whether it holds the
// heading; false for no line.
inline bool ibsPadHeadingLine(char* line, char const* heading)
{
    if (line == nullptr)
        return false;
    ut_strupr(line);
    return std::strstr(line, heading) != nullptr;
}

#endif
