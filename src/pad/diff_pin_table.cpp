// The pin number table of the pad report ("PINOUT BY PIN NUMBER"): where the
// negative legs of differential pairs are told.

#include <cstring>

#include "driver/basibsgen.h"
#include "driver/line_reader.h"
#include "driver/load_time.h"
#include "host/ut_string.h"
#include "pad/line_tokens.h"
#include "pad/pad_lines.h"

void IBIS_MODEL::loadDiffPinInfo(char* line)
{
    if (!ibsPadHeadingLine(line, IBS_PAD_PIN_NUMBER_TABLE))
        return;

    char buf[IBS_LINE_SIZE];
    char token[IBS_LINE_SIZE];
    ibsReadPadLine(_padStream, buf);
    ibsReadPadLine(_padStream, buf);

    // The text ahead of the first "|" is column 0, so the first cell of the
    // table is column 1.
    int bars = 0;
    for (char const* p = buf; *p != '\0'; ++p)
        if (*p == '|')
            ++bars;
    int pinBankColumn = -1;
    int pinInfoColumn = -1;
    for (int column = 0; column < bars; ++column) {
        ut_strgettoken(buf, token, "|", 0);
        if (token[0] == '\0')
            continue;
        ut_strupr(token);
        ut_strtrim(token);
        if (std::strcmp(token, "PIN/BANK") == 0)
            pinBankColumn = column;
        if (std::strcmp(token, "PIN INFO") == 0)
            pinInfoColumn = column;
    }
    if (pinBankColumn < 0 || pinInfoColumn < 0)
        return;

    ibsReadPadLine(_padStream, buf);
    ibsReadPadLine(_padStream, buf);
    int lastColumn = pinBankColumn > pinInfoColumn ? pinBankColumn : pinInfoColumn;
    while (buf[0] != IBS_PAD_TABLE_RULE) {
        std::string pinBank;
        std::string pinInfo;
        for (int column = 0; column <= lastColumn; ++column) {
            ut_strgettoken(buf, token, "|", 0);
            if (token[0] == '\0')
                continue;
            if (column == pinBankColumn)
                pinBank = token;
            if (column == pinInfoColumn)
                pinInfo = ut_strtrim(token);
        }
        if (!pinBank.empty() && !pinInfo.empty())
            _diffPinMap[pinInfo] = pinBank.substr(0, pinBank.find('/'));
        if (ibsStreamDone(_padStream))
            break;
        ibsReadPadLine(_padStream, buf);
    }
}
