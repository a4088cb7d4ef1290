// A SerDes channels file read against its parameter templates, through the
// generator's own reading of settings and parameter lines: what each setting
// will put into the channel's parameter files.

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <sstream>

#include "ami/ami_setting.h"
#include "channels/channels_file.h"
#include "check/ami_rules.h"
#include "check/check_text.h"
#include "driver/line_reader.h"
#include "host/ut_string.h"

namespace ibischeck {

namespace {

// A line of a template whose value a setting replaces.
struct ParameterLine {
    std::string key; // as the generator reads it off the line
    int line;
    AmiParameter const* parameter; // the tree's parameter of its "(Format Value", or null
};

struct Template {
    std::string name;
    std::vector<AmiNode> tree;
    std::vector<AmiParameter> parameters;
    std::vector<ParameterLine> lines;
};

// The template's lines as the parameter file writer reads them, with the
// line each one starts on.
std::vector<std::pair<std::string, int>> generatorLines(std::string const& text)
{
    std::vector<std::pair<std::string, int>> lines;
    if (text.empty())
        return lines;
    std::FILE* in = fmemopen(const_cast<char*>(text.data()), text.size(), "r");
    if (in == nullptr)
        return lines;
    char buffer[IBS_AMI_LINE_SIZE];
    int line = 1;
    long at = 0;
    while (ibsReadRawLine(in, buffer, IBS_AMI_LINE_SIZE)) {
        long const next = std::ftell(in);
        lines.emplace_back(buffer, line);
        line += static_cast<int>(std::count(text.begin() + at, text.begin() + next, '\n'));
        at = next;
    }
    std::fclose(in);
    return lines;
}

void readTemplate(AmiTemplate const& source, Template& read)
{
    read.name = source.name;
    std::vector<Finding> ignored;
    read.tree = readAmiTree(source.text, ignored);
    read.parameters = amiParameters(read.tree);
    for (auto const& [text, line] : generatorLines(source.text)) {
        if (!amiIsParameterLine(text.c_str()))
            continue;
        ParameterLine parameterLine{amiParameterLineKey(text.c_str()), line, nullptr};
        for (AmiParameter const& p : read.parameters)
            for (AmiNode const* leaf : p.formats)
                if (parameterLine.parameter == nullptr && leaf->line == line && leaf->head() == "Format" &&
                    amiFormatOf(*leaf).name == "Value")
                    parameterLine.parameter = &p;
        read.lines.push_back(parameterLine);
    }
}

bool sameKey(std::string const& a, std::string const& b)
{
    return ut_stricmp(a.c_str(), b.c_str()) == 0;
}

std::string at(Template const& t, int line)
{
    return t.name + ":" + std::to_string(line);
}

// A value that means zero though the generator does not read it: "0",
// "00", or more than four binary zeros.
bool readsAsZero(std::string const& value)
{
    std::string::size_type const start = value.compare(0, 2, "0b") == 0 || value.compare(0, 2, "0B") == 0 ? 2 : 0;
    return value.size() > start && value.find_first_not_of('0', start) == std::string::npos;
}

bool allOf(std::string const& text, char const* characters)
{
    return !text.empty() && text.find_first_not_of(characters) == std::string::npos;
}

// ", not 31" for the hexadecimal digits "1F"; empty for other text, or for
// more digits than a number of 64 bits holds.
std::string hexNumber(std::string const& digits)
{
    if (digits.size() > 16 || !allOf(digits, "0123456789abcdefABCDEF"))
        return "";
    return ", not " + std::to_string(std::strtoull(digits.c_str(), nullptr, 16));
}

// What the generator does with a setting that the user may not expect.
void checkReading(std::string const& head, std::string const& value, AmiSetting const& setting, int line,
                  std::vector<Finding>& findings)
{
    std::string const holds = ": the file will hold " + setting.text;
    std::string const digits = value.substr(std::min<std::size_t>(2, value.size()));
    switch (setting.form) {
    case AmiSettingForm::Unknown: {
        if (readsAsZero(value))
            return;
        std::string why = " has no 0d, 0h or 0b prefix";
        if (value[0] == '0' && (value[1] == 'h' || value[1] == 'H'))
            why = digits.empty() ? " has no digits" : ": " + digits.substr(0, 1) + " is no hexadecimal digit";
        else if (value[0] == '0' && (value[1] == 'b' || value[1] == 'B'))
            why = allOf(digits, "01") ? " has more than 4 binary digits" : " is no binary number of 1 to 4 digits";
        addWarning(findings, line, head + why + holds);
        return;
    }
    case AmiSettingForm::HexDigits: {
        bool const same = allOf(setting.text, "0123456789") &&
                          std::strtoull(setting.text.c_str(), nullptr, 10) ==
                              std::strtoull(setting.text.c_str(), nullptr, 16);
        if (!same)
            addWarning(findings, line, head + " is copied as text, not converted" + holds + hexNumber(setting.text));
        break;
    }
    case AmiSettingForm::HexLetter:
        if (digits.size() > 1)
            addWarning(findings, line, head + " is read by its first letter alone" + holds + hexNumber(digits));
        return;
    default:
        break;
    }
    if ((setting.form == AmiSettingForm::Decimal || setting.form == AmiSettingForm::HexDigits) &&
        digits.size() > setting.text.size())
        addWarning(findings, line,
                   head + " is cut to " + std::to_string(setting.text.size()) + " characters" + holds);
}

// The written value against the template's parameter: its Type, and any
// Range or List that it states.
void checkLanding(std::string const& head, AmiSetting const& setting, Template const& t,
                  ParameterLine const& target, int line, std::vector<Finding>& findings)
{
    if (target.parameter == nullptr)
        return;
    AmiParameter const& p = *target.parameter;
    std::string const type = amiTypeOf(p);
    if (type.empty())
        return;
    std::string const where = "template parameter " + p.name + ", " + at(t, target.line);
    AmiNode const written{AmiNode::Word, setting.text, line, {}};
    if (!amiIsValueOf(written, type)) {
        addError(findings, line,
                 head + ": the file will hold " + setting.text + ", not " + amiTypeWords(type) + " (" + where + ")");
        return;
    }
    for (AmiNode const* leaf : p.formats) {
        std::string const outside = amiOutsideOf(amiFormatOf(*leaf), type, written);
        if (!outside.empty())
            addError(findings, line, head + ": the file will hold " + setting.text + ", " + outside + " (" + where + ")");
    }
}

void checkEnable(ChannelLines const& channel, std::string const& value, char const* field, char const* side,
                 std::vector<Finding>& findings)
{
    if (value != "ON" && value != "OFF")
        addWarning(findings, channel.line,
                   "channel " + channel.blockId + " " + channel.channelId + ": " + field + " \"" + value +
                       "\" is neither ON nor OFF; it counts as OFF, and no " + side + " parameter file is written");
}

} // namespace

std::vector<Finding> checkChannelsFile(std::string const& text, std::vector<AmiTemplate> const& sources)
{
    std::vector<Finding> findings;
    std::istringstream in(text);
    std::vector<ChannelLines> channels;
    int errorLine = 0;
    std::string reason;
    if (!parseChannels(in, channels, errorLine, reason)) {
        addError(findings, errorLine, reason);
        return findings;
    }
    std::vector<Template> templates(sources.size());
    for (std::size_t i = 0; i < sources.size(); ++i)
        readTemplate(sources[i], templates[i]);

    for (ChannelLines const& channel : channels) {
        checkEnable(channel, channel.rxEnable, "RX_ENABLE", "receive", findings);
        checkEnable(channel, channel.txEnable, "TX_ENABLE", "transmit", findings);
        for (std::size_t i = 0; i < channel.settings.size(); ++i) {
            ChannelSettingLine const& s = channel.settings[i];
            auto const first = std::find_if(channel.settings.begin(), channel.settings.begin() + i,
                                            [&s](ChannelSettingLine const& o) { return sameKey(o.key, s.key); });
            if (first != channel.settings.begin() + i) {
                addWarning(findings, s.line,
                           s.key + " is set again in this channel; the setting at line " +
                               std::to_string(first->line) + " is the one written");
                continue;
            }
            bool carried = false;
            for (Template const& t : templates)
                for (ParameterLine const& l : t.lines)
                    carried = carried || sameKey(l.key, s.key);
            if (!carried) {
                std::string elsewhere;
                for (Template const& t : templates)
                    for (AmiParameter const& p : t.parameters)
                        if (elsewhere.empty() && sameKey(p.name, s.key))
                            elsewhere = "never written: the line of template parameter " + p.name + " (" +
                                        at(t, p.node->line) + ") holds no \"(Format Value\"";
                addWarning(findings, s.line,
                           elsewhere.empty() ? "never written: no template parameter " + s.key : elsewhere);
                continue;
            }
            if (amiKeepsTemplateValue(s.value.c_str()))
                continue;
            AmiSetting const setting = amiReadSetting(s.value.c_str());
            std::string const head = s.key + " " + s.value;
            checkReading(head, s.value, setting, s.line, findings);
            for (Template const& t : templates)
                for (ParameterLine const& l : t.lines)
                    if (sameKey(l.key, s.key))
                        checkLanding(head, setting, t, l, s.line, findings);
        }
    }
    sortByLine(findings);
    return findings;
}

} // namespace ibischeck
