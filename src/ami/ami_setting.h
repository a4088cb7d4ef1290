#ifndef PAD2IBIS_AMI_AMI_SETTING_H
#define PAD2IBIS_AMI_AMI_SETTING_H

// How the SerDes flow reads a channel's setting and a template's parameter
// line. The parameter file writer goes through these, and so can anybody who
// wants to know beforehand what a channel's parameter file will hold.

#include <string>
#include <vector>

class IB_IOBUF_CONFIG;

// The form in which a setting was read.
enum class AmiSettingForm {
    Decimal,   // "0d" + text: the text as it stands
    HexDigits, // "0h" + a digit + text: the text as it stands, not converted
    HexLetter, // "0h" + a letter a to f: that letter's value; what follows it is dropped
    Binary,    // "0b" + 1 to 4 binary digits: the number in decimal
    Unknown    // any other text: "0"
};

struct AmiSetting {
    AmiSettingForm form;
    std::string text; // what goes into the parameter file: at most 15 characters
};

// The value that a setting puts into a parameter line.
AmiSetting amiReadSetting(char const* setting);

// The channel's record for a parameter, or null: the first whose key equals
// key in any letter case.
IB_IOBUF_CONFIG* amiSettingFor(char const* key, std::vector<IB_IOBUF_CONFIG*> const& configs);

// True for "DONTCARE" in any letter case: the template's value stays.
bool amiKeepsTemplateValue(char const* setting);

// True for a template line whose value a setting may replace: one that
// holds "(Format Value".
bool amiIsParameterLine(char const* line);

// The parameter name that a parameter line is known by: its first
// blank-separated token of at least 3 characters, less any "(" in front.
std::string amiParameterLineKey(char const* line);

#endif
