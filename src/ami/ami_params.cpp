// Channel settings filled into a copy of an AMI parameter template.

#include <cstdio>
#include <cstring>

#include "ami/ami_setting.h"
#include "driver/basibsgen.h"
#include "driver/line_reader.h"
#include "driver/load_time.h"
#include "driver/messages.h"
#include "host/ut_string.h"

namespace {

char const formatValue[] = "(Format Value";

// The room of a parameter value: 15 characters and the NUL.
const size_t valueSize = 16;

} // namespace

void IBS_GEN::write_ami_parameter_file(char const* source, char const* target,
                                       std::vector<IB_IOBUF_CONFIG*>& configs)
{
    std::FILE* in = std::fopen(source, "r");
    if (in == nullptr) {
        ibsPrint(IBS_OUTPUT_FILE_FAILED, ibsText("Could not open file <%s> for reading.\n", {source}),
                 IBS_FILE_TEMPLATE, source);
        ibsExit(2);
    }
    std::FILE* out = std::fopen(target, "w");
    if (out == nullptr) {
        ibsPrint(IBS_OUTPUT_FILE_FAILED, ibsText("Could not open file <%s> for writing.\n", {target}),
                 IBS_FILE_NONE, target);
        std::fclose(in);
        ibsExit(2);
    }
    char line[IBS_AMI_LINE_SIZE];
    while (ibsReadRawLine(in, line, IBS_AMI_LINE_SIZE)) {
        if (amiIsParameterLine(line))
            fill_in_ami_parameter_value(line, configs);
        std::fputs(line, out);
    }
    std::fclose(in);
    std::fclose(out);
}

char* IBS_GEN::fill_in_ami_parameter_value(char* line, std::vector<IB_IOBUF_CONFIG*>& configs)
{
    std::string const key = amiParameterLineKey(line);
    char value[valueSize];
    if (!find_key_value(const_cast<char*>(key.c_str()), value, configs))
        return line;

    // Everything up to "(Format Value" stays; the old value and its ")" give
    // way to the channel's value.
    char* at = std::strstr(line, formatValue);
    if (at == nullptr)
        return line;
    char rest[IBS_AMI_LINE_SIZE];
    std::strcpy(rest, at + std::strlen(formatValue));
    char token[IBS_AMI_LINE_SIZE];
    ut_strgettoken(rest, token, " ", 0);
    std::string composed(line, static_cast<size_t>(at - line) + std::strlen(formatValue));
    composed += " ";
    composed += value;
    composed += ") ";
    composed += rest;
    std::strncpy(line, composed.c_str(), IBS_AMI_LINE_SIZE - 1);
    line[IBS_AMI_LINE_SIZE - 1] = '\0';
    return line;
}

bool IBS_GEN::find_key_value(char* key, char* value, std::vector<IB_IOBUF_CONFIG*>& configs)
{
    IB_IOBUF_CONFIG const* config = amiSettingFor(key, configs);
    if (config == nullptr || amiKeepsTemplateValue(config->value.c_str()))
        return false;
    calculate_ibis_parameter_value(config->value.c_str(), value);
    return true;
}

void IBS_GEN::calculate_ibis_parameter_value(char const* text, char* value)
{
    std::strcpy(value, amiReadSetting(text).text.c_str());
}
