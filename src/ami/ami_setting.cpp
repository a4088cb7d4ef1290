// The reading of a channel's settings and of a template's parameter lines.

#include "ami/ami_setting.h"

#include <cstdio>
#include <cstring>

#include "driver/basibsgen.h"
#include "host/ut_string.h"

namespace {

// The room of a parameter value: 15 characters and the NUL.
const size_t valueSize = 16;

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

// The text as it stands, as far as the value's room takes it.
AmiSetting copied(AmiSettingForm form, char const* text)
{
    return {form, std::string(text, strnlen(text, valueSize - 1))};
}

} // namespace

AmiSetting amiReadSetting(char const* setting)
{
    if (setting[0] == '0' && (setting[1] == 'd' || setting[1] == 'D'))
        return copied(AmiSettingForm::Decimal, setting + 2);
    if (setting[0] == '0' && (setting[1] == 'h' || setting[1] == 'H')) {
        // A value led by a digit stays in hexadecimal notation; one led by a
        // letter is reduced to that letter's value.
        char digit = setting[2];
        if (digit >= '0' && digit <= '9')
            return copied(AmiSettingForm::HexDigits, setting + 2);
        if (digit >= 'a' && digit <= 'f')
            return {AmiSettingForm::HexLetter, std::to_string(digit - 'a' + 10)};
        if (digit >= 'A' && digit <= 'F')
            return {AmiSettingForm::HexLetter, std::to_string(digit - 'A' + 10)};
        return {AmiSettingForm::Unknown, "0"};
    }
    for (char const* binary : binaryValues)
        if (ut_stricmp(setting, binary) == 0)
            return {AmiSettingForm::Binary, std::to_string(binaryNumber(binary))};
    return {AmiSettingForm::Unknown, "0"};
}

IB_IOBUF_CONFIG* amiSettingFor(char const* key, std::vector<IB_IOBUF_CONFIG*> const& configs)
{
    for (IB_IOBUF_CONFIG* config : configs)
        if (ut_stricmp(config->key.c_str(), key) == 0)
            return config;
    return nullptr;
}

bool amiKeepsTemplateValue(char const* setting)
{
    return ut_stricmp(setting, "DONTCARE") == 0;
}

bool amiIsParameterLine(char const* line)
{
    return std::strstr(line, "(Format Value") != nullptr;
}

std::string amiParameterLineKey(char const* line)
{
    std::vector<char> rest(line, line + std::strlen(line) + 1);
    std::vector<char> token(rest.size());
    do {
        ut_strgettoken(rest.data(), token.data(), " ", 0);
    } while (std::strlen(token.data()) < 3 && rest[0] != '\0');
    char const* key = token.data();
    while (*key == '(')
        ++key;
    return key;
}
