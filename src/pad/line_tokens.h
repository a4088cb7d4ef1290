#ifndef PAD2IBIS_PAD_LINE_TOKENS_H
#define PAD2IBIS_PAD_LINE_TOKENS_H

#include "host/ut_string.h"

// Takes count blank-separated tokens from the front of line, which loses
// them, and leaves the last one in token: "PART TYPE: X" gives X as the
// third.
inline void ibsTakeTokens(char* line, char* token, int count)
{
    for (int i = 0; i < count; ++i)
        ut_strgettoken(line, token, " ", 0);
}

#endif
