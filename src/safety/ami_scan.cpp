#include "safety/ami_scan.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <sstream>

#include "ami/ami_setting.h"
#include "driver/line_reader.h"

namespace safety {

namespace {

using ibischeck::Finding;
using ibischeck::Severity;

// The longest piece of a line, its line end included, that the parameter
// file writer reads at once.
std::size_t const kPieceLimit = IBS_AMI_LINE_SIZE - 1;
// The longest value a parameter line takes.
std::size_t const kValueLimit = 15;
char const kFormatValue[] = "(Format Value";

// The text with every byte outside printable ASCII written as \xHH.
std::string shown(std::string const& text)
{
    std::string out;
    for (unsigned char c : text) {
        if (c >= ' ' && c <= '~') {
            out += static_cast<char>(c);
            continue;
        }
        char hex[8];
        std::snprintf(hex, sizeof hex, "\\x%02X", c);
        out += hex;
    }
    return out;
}

// True when some channel gives the parameter a value of its own.
bool replaced(std::string const& key, std::vector<IB_AMI_CHANNEL const*> const& channels)
{
    for (IB_AMI_CHANNEL const* channel : channels) {
        IB_IOBUF_CONFIG const* config = amiSettingFor(key.c_str(), channel->configs);
        if (config != nullptr && !amiKeepsTemplateValue(config->value.c_str()))
            return true;
    }
    return false;
}

// Why the old value of a parameter line cannot be replaced without a loss,
// or "": the writer takes the token behind "(Format Value" up to the next
// blank for the old value and its ")", and drops it whole.
std::string valueProblem(std::string const& line)
{
    std::string::size_type at = line.find(kFormatValue) + std::strlen(kFormatValue);
    at = line.find_first_not_of(" \t", at);
    std::string const token = line.substr(at, line.find(' ', at) - at);
    std::string::size_type const close = token.find(')');
    if (close == std::string::npos)
        return "the value behind \"(Format Value\" has no \")\" in its blank-separated token";
    if (close + 1 < token.size()) {
        std::string const tail = token.substr(close + 1);
        if (tail.find('\n') != std::string::npos)
            return "no blank stands behind the value's \")\": the parameter file writer would lose the line end";
        return "no blank stands behind the value's \")\": the parameter file writer would lose \"" + shown(tail) +
               "\" with the old value";
    }
    return "";
}

} // namespace

std::vector<Finding> scanTemplate(TemplateUse const& use, bool& read)
{
    std::vector<Finding> findings;
    std::ifstream in(use.path, std::ios::binary);
    read = static_cast<bool>(in);
    std::string line;
    int number = 0;
    while (std::getline(in, line)) {
        ++number;
        bool const ended = !in.eof();
        if (ended)
            line += '\n';
        bool const parameter = line.find(kFormatValue) != std::string::npos;
        if (line.find('\0') != std::string::npos) {
            findings.push_back({number, Severity::Error,
                                "NUL byte: the parameter file writer would write the line only up to it"});
            continue;
        }
        if (parameter && line.size() > kPieceLimit) {
            findings.push_back({number, Severity::Error,
                                "parameter line of " + std::to_string(line.size()) + " characters, over the " +
                                    std::to_string(kPieceLimit) +
                                    " that the parameter file writer reads in one piece: its value could be "
                                    "written into the wrong place"});
            continue;
        }
        if (!parameter || !replaced(amiParameterLineKey(line.c_str()), use.channels))
            continue;
        std::string const problem = valueProblem(line);
        if (!problem.empty())
            findings.push_back({number, Severity::Error, problem});
    }
    if (in.bad())
        read = false;
    return findings;
}

std::vector<Finding> scanChannels(std::string const& text, std::vector<ChannelLines> const& channels)
{
    std::vector<Finding> findings;
    int number = 1;
    for (std::string::size_type at = 0; at < text.size(); ++number) {
        std::string::size_type const end = std::min(text.find('\n', at), text.size());
        if (text.find('\0', at) < end)
            findings.push_back({number, Severity::Error,
                                "NUL byte: the setting's text would end there, and the rest of it would be lost"});
        at = end + 1;
    }
    for (ChannelLines const& channel : channels) {
        for (ChannelSettingLine const& setting : channel.settings) {
            AmiSetting const read = amiReadSetting(setting.value.c_str());
            bool const copied = read.form == AmiSettingForm::Decimal || read.form == AmiSettingForm::HexDigits;
            if (copied && setting.value.size() - 2 > kValueLimit)
                findings.push_back({setting.line, Severity::Error,
                                    "the value of " + setting.key + " has " + std::to_string(setting.value.size() - 2) +
                                        " characters behind its prefix; a parameter file takes " +
                                        std::to_string(kValueLimit) + ", so it would be cut to " + read.text});
        }
    }
    ibischeck::sortByLine(findings);
    return findings;
}

} // namespace safety
