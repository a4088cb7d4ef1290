// Channel settings filled into a copy of an AMI parameter template.

#include <cstdio>
#include <cstring>

#include "driver/basibsgen.h"
#include "driver/line_reader.h"
#include "driver/load_time.h"
#include "driver/messages.h"
#include "host/ut_string.h"

namespace {

char const formatValue[] = "(Format Value";

// The room of a parameter value: 15 characters and the NUL.
const size_t valueSize = 16;

void copyValue(char* value, char const* text)
{
    std::strncpy(value, text, valueSize - 1);
    value[valueSize - 1] = '\0';
}

// The binary settings a channel may give, every width of 1 to 4 digits.
char const* const binaryValues[] = {
    "0b0",    "0b1",    "0b00",   "0b01",   "0b10",   "0b11",   "0b000",  "0b001",
    "0b010",  "0b011",  "0b100",  "0b101",  "0b110",  "0b111",  "0b0000", "0b0001",
    "0b0010", "0b0011", "0b0100", "0b0101", "0b0110", "0b0111", "0b1000", "0b1001",
    "0b1010", "0b1011", "0b1100", "0b1101", "0b1110", "0b1111",
};

int binaryNumber(char const* text)
{
    int number = 0;
    for (char const* p = text + 2; *p != '\0'; ++p)
        number = number * 2 + (*p - '0');
    return number;
}

} // namespace

void IBS_GEN::write_ami_parameter_file(char const* source, char const* target,
                                       std::vector<IB_IOBUF_CONFIG*>& configs)
{
    std::FILE* in = std::fopen(source, "r");
    if (in == nullptr) {
        std::printf("Could not open file <%s> for reading.\n", source);
        ibsExit(2);
    }
    std::FILE* out = std::fopen(target, "w");
    if (out == nullptr) {
        std::printf("Could not open file <%s> for writing.\n", target);
        std::fclose(in);
        ibsExit(2);
    }
    char line[IBS_AMI_LINE_SIZE];
    while (ibsReadRawLine(in, line, IBS_AMI_LINE_SIZE)) {
        if (std::strstr(line, formatValue) != nullptr)
            fill_in_ami_parameter_value(line, configs);
        std::fputs(line, out);
    }
    std::fclose(in);
    std::fclose(out);
}

char* IBS_GEN::fill_in_ami_parameter_value(char* line, std::vector<IB_IOBUF_CONFIG*>& configs)
{
    // The parameter's name is the first token of at least three characters,
    // less any "(" in front of it.
    char saved[IBS_AMI_LINE_SIZE];
    std::strcpy(saved, line);
    char token[IBS_AMI_LINE_SIZE];
    do {
        ut_strgettoken(line, token, " ", 0);
    } while (std::strlen(token) < 3 && line[0] != '\0');
    char* key = token;
    while (*key == '(')
        ++key;
    std::strcpy(line, saved);

    char value[valueSize];
    if (!find_key_value(key, value, configs))
        return line;

    // Everything up to "(Format Value" stays; the old value and its ")" give
    // way to the channel's value.
    char* at = std::strstr(line, formatValue);
    if (at == nullptr)
        return line;
    char rest[IBS_AMI_LINE_SIZE];
    std::strcpy(rest, at + std::strlen(formatValue));
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
    for (IB_IOBUF_CONFIG* config : configs) {
        if (ut_stricmp(config->key.c_str(), key) != 0)
            continue;
        if (ut_stricmp(config->value.c_str(), "DONTCARE") == 0)
            return false;
        calculate_ibis_parameter_value(config->value.c_str(), value);
        return true;
    }
    return false;
}

void IBS_GEN::calculate_ibis_parameter_value(char const* text, char* value)
{
    std::strcpy(value, "0");
    if (text[0] == '0' && (text[1] == 'd' || text[1] == 'D')) {
        copyValue(value, text + 2);
        return;
    }
    if (text[0] == '0' && (text[1] == 'h' || text[1] == 'H')) {
        // A value led by a digit stays in hexadecimal notation; one led by a
        // letter is reduced to that letter's value.
        char digit = text[2];
        if (digit >= '0' && digit <= '9')
            copyValue(value, text + 2);
        else if (digit >= 'a' && digit <= 'f')
            std::snprintf(value, valueSize, "%d", digit - 'a' + 10);
        else if (digit >= 'A' && digit <= 'F')
            std::snprintf(value, valueSize, "%d", digit - 'A' + 10);
        return;
    }
    for (char const* binary : binaryValues) {
        if (ut_stricmp(text, binary) == 0) {
            std::snprintf(value, valueSize, "%d", binaryNumber(binary));
            return;
        }
    }
}
