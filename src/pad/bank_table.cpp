// The bank table of the pad report ("VCCIO BY BANK:"): supply voltage a bank.

#include <cstring>

#include "driver/basibsgen.h"
#include "driver/line_reader.h"
#include "driver/load_time.h"
#include "host/ut_regexp.h"
#include "host/ut_string.h"
#include "pad/line_tokens.h"
#include "pad/pad_lines.h"

namespace {

// A bank row with or without its opening "|": the first cell is the bank,
// the second the voltage, whose unit "V" is left behind; a "V" inside the
// cell ends the voltage.
char const bankRowPattern[] = "^[^|]*[ |]+([^| \t]+)[ |]+([^| V\t]+)[V| \t]+";

} // namespace

void IBIS_MODEL::loadBankInfo(char* line)
{
    if (!ibsPadHeadingLine(line, IBS_PAD_BANK_TABLE))
        return;

    char row[IBS_LINE_SIZE];
    for (int i = 0; i <= IBS_PAD_TABLE_HEAD_LINES; ++i)
        ibsReadPadLine(_padStream, row);

    UT_STROBJ pattern(bankRowPattern);
    UT_REGEXP bankRow;
    bankRow.compile(pattern);
    if (!bankRow.isValid() || row[0] == IBS_PAD_TABLE_RULE)
        return;

    // The table ends on its closing rule; a report cut short ends it too.
    while (!ibsStreamDone(_padStream)) {
        UT_STROBJ text(row);
        UT_STRKEYS keys = text.match_reg_exp(bankRow, 0);
        if (keys.matched != 0) {
            UT_STROBJ bank = text.get_key(keys, 1);
            UT_STROBJ voltage = text.get_key(keys, 2);
            _bankVccio[bank.getstring(1)] = voltage.getstring(1);
        }
        ibsReadPadLine(_padStream, row);
        if (row[0] == IBS_PAD_TABLE_RULE)
            break;
    }
}
