// Which family and part a pad report is for.

#include <cstring>
#include <fstream>

#include "driver/basibsgen.h"
#include "driver/family_table.h"
#include "driver/line_reader.h"
#include "driver/load_time.h"
#include "driver/messages.h"
#include "host/ut_string.h"
#include "pad/file_names.h"
#include "pad/line_tokens.h"
#include "pad/pad_lines.h"

void IBIS_MODEL::getDevName(std::string padFile, std::string& family)
{
    if (!ibsNamesPadReport(padFile))
        ibsFatal(IBS_MSG_1014, {padFile.c_str()});
    std::ifstream pad(padFile.c_str());
    if (!pad.is_open())
        ibsFatal(IBS_MSG_1015, {padFile.c_str()});

    // The first line of a report is its title and never names the part.
    char line[IBS_LINE_SIZE];
    ibsReadPadLine(pad, line);
    while (!ibsStreamDone(pad)) {
        ibsReadPadLine(pad, line);
        if (std::strstr(line, IBS_PAD_PART_TYPE) == nullptr)
            continue;
        char token[IBS_LINE_SIZE];
        ibsTakeTokens(line, token, 3);
        _input_dev_name = token;
        fetch_dev_name(token, family);
        break;
    }
    pad.close();
}

void IBIS_MODEL::fetch_dev_name(std::string partType, std::string& family)
{
    std::string const found = ibsFamilyOfPartType(partType);
    if (found.empty())
        ibsFatal(IBS_MSG_1013);
    family = found;
}

void IBIS_MODEL::getPartName(std::string& part)
{
    if (ibsPartKeepsItsName(part))
        return;
    if (char const* familyPart = ibsFamilyPartName(part)) {
        part = familyPart;
        return;
    }
    std::string::size_type v = part.rfind('V');
    if (v == std::string::npos)
        return;
    part = part.substr(v + 1);
    if (part.empty())
        return;
    std::string::size_type digit = part.find_first_of("0123456789");
    if (digit == std::string::npos)
        return;
    // The NUL goes into the characters and leaves the stored length alone:
    // messages show the short name while the family fragment searches still
    // see the rest of the part type behind it. A digit ahead of "-" is the
    // family number and stays; any other digit starts the part size.
    if (digit + 1 < part.size() && part[digit + 1] == '-')
        part[digit + 1] = '\0';
    else
        part[digit] = '\0';
}
