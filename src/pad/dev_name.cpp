// Which family and part a pad report is for.

#include <cstring>
#include <fstream>

#include "driver/basibsgen.h"
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
    auto holds = [&partType](char const* fragment) {
        return partType.find(fragment) != std::string::npos;
    };
    // The first rule that holds wins; "ZR2-" beats every other fragment.
    if (holds("ZR2-"))
        family = "KVZR2";
    else if (holds("KVA3-") || holds("KBA3-"))
        family = "KVA3";
    else if (holds("KVA4-"))
        family = "KVA4";
    else if (holds("KVAN"))
        family = "KVAN";
    else if (holds("KVZR"))
        family = "KVZR";
    else if (holds("HZU"))
        family = (holds("HZU3") || holds("HZU2-")) ? "HZU2" : "HZU";
    else if (holds("KVTN"))
        family = "KVTN";
    else if (holds("KVA2"))
        family = "KVA2";
    else if (holds("KRD"))
        family = holds("KRDH2") ? "HZU2" : "HZU";
    else if (partType.compare(0, 2, "KJ") == 0)
        family = "KJ";
    else
        ibsFatal(IBS_MSG_1013);
}

void IBIS_MODEL::getPartName(std::string& part)
{
    if (part.find("ZU3KV") != std::string::npos || part.find("KJ") != std::string::npos)
        return;
    for (char const* prefix : {"KVA4Y", "KBA4Y", "KVA5Y", "KBA5Y"}) {
        if (part.compare(0, std::strlen(prefix), prefix) == 0) {
            part = "MORVALLE";
            return;
        }
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
