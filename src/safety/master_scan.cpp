#include "safety/master_scan.h"

#include <algorithm>
#include <cstring>
#include <fstream>

#include "driver/line_reader.h"
#include "ibis/line_source.h"
#include "master/master_lines.h"
#include "writer/copy_lines.h"

namespace safety {

namespace {

using ibischeck::Finding;
using ibischeck::Severity;

// The longest lines the readers take: the component and naming table
// readers, and the writer's passes.
std::size_t const kNamingLimit = IBS_LINE_SIZE - 1;
std::size_t const kCopyLimit = IBS_COPY_LINE_SIZE - 1;

std::string lengthText(ibis::Line const& line, std::size_t counted)
{
    return "line of " + std::to_string(counted) + " characters" + (line.crlf ? " with its CR" : "");
}

bool isComment(std::string_view text)
{
    std::string_view::size_type const first = text.find_first_not_of(" \t");
    return first != std::string_view::npos && text[first] == '|';
}

// What the scan has found out about the frame of the master: the lines that
// the readers and the writer's passes go by.
class Scan {
public:
    explicit Scan(std::string const& package) : _package(package) {}

    // A line of the head of the file, up to the end of the [Pin] list.
    void headLine(ibis::Line const& line);
    // A line behind the head: only its length, a NUL and "[Model]" count.
    void tailLine(ibis::Line const& line);
    // True once the head's readers have all had their lines.
    bool headDone() const { return _pinListClosed && _packageDone; }
    std::vector<Finding> finish(int lines);

private:
    void nul(ibis::Line const& line);
    void noteModel(ibis::Line const& line);
    void packageLine(ibis::Line const& line, char const* text);

    std::string const& _package;
    std::vector<Finding> _findings;
    int _component = 0, _preambleEnd = 0, _pinHeading = 0;
    bool _pinListClosed = false, _packageDone = false;
    int _packageName = 0, _packageData = 0;
    bool _packageClosed = false;
    // The first line over the copy limit behind the component line, and the
    // last line that holds "[Model]", with whether it is a comment.
    int _firstLong = 0;
    std::string _firstLongText;
    int _lastModel = 0;
    bool _lastModelComment = true;
};

void Scan::nul(ibis::Line const& line)
{
    if (std::memchr(line.text.data(), '\0', line.text.size()) != nullptr)
        _findings.push_back({line.number, Severity::Error,
                             "NUL byte: the readers of the master file would end the line there, and the rest of "
                             "the line would be lost"});
}

void Scan::headLine(ibis::Line const& line)
{
    std::string const text(line.text);
    char const* const c = text.c_str();
    std::size_t const counted = line.length + (line.crlf ? 1 : 0);
    if (_component == 0) {
        nul(line);
        if (counted > kNamingLimit)
            _findings.push_back({line.number, Severity::Error,
                                 lengthText(line, counted) + ", over the " + std::to_string(kNamingLimit) +
                                     " that the component and naming table readers take: they would stop "
                                     "reading here, ahead of the component line"});
        else if (ibsIsComponentLine(c))
            _component = line.number;
        noteModel(line);
    } else {
        tailLine(line);
    }
    if (_pinHeading == 0) {
        if (ibsIsPinListHeading(c))
            _pinHeading = line.number;
    } else if (!_pinListClosed && ibsEndsPinList(c)) {
        _pinListClosed = true;
    }
    if (_preambleEnd == 0) {
        if (ibsEndsPreamble(c))
            _preambleEnd = line.number;
    } else if (!_packageDone) {
        packageLine(line, c);
    }
}

void Scan::packageLine(ibis::Line const& line, char const* text)
{
    if (text[0] == '\0')
        return;
    if (ibsIsPinListHeading(text)) {
        if (_packageName != 0 && !_packageClosed)
            _findings.push_back({_packageName, Severity::Error,
                                 "the block of the design's package " + _package +
                                     " is not closed by a \"|\" line ahead of the [Pin] line: its copy would "
                                     "run on into the pin list"});
        _packageDone = true;
        return;
    }
    if (_packageName == 0) {
        std::string const shown = ibsPackageSectionText(text);
        if (shown.empty())
            _findings.push_back({line.number, Severity::Error,
                                 "a line of blanks alone ahead of the block of the design's package " + _package +
                                     ": the package writer fails on it, and the run would end with a design "
                                     "file cut short"});
        else if (ibsNamesPackage(shown, _package))
            _packageName = line.number;
        return;
    }
    // The line behind the name line is copied in any case.
    if (_packageData == 0)
        _packageData = line.number;
    else if (!_packageClosed && ibsClosesPackageBlock(text))
        _packageClosed = true;
}

void Scan::tailLine(ibis::Line const& line)
{
    nul(line);
    std::size_t const counted = line.length + (line.crlf ? 1 : 0);
    if (counted > kCopyLimit && _firstLong == 0) {
        _firstLong = line.number;
        _firstLongText = lengthText(line, counted);
    }
    noteModel(line);
}

void Scan::noteModel(ibis::Line const& line)
{
    // As the writer's test goes: up to a NUL.
    std::string_view text = line.text.substr(0, line.text.find('\0'));
    if (text.find('[') == std::string_view::npos || text.find("[Model]") == std::string_view::npos)
        return;
    _lastModel = line.number;
    _lastModelComment = isComment(text);
}

std::vector<Finding> Scan::finish(int lines)
{
    // Ahead of the last line that holds "[Model]", some pass of the writer
    // still has a block to find or to copy; behind it none reads on.
    if (_firstLong != 0 && _firstLong < _lastModel)
        _findings.push_back({_firstLong, Severity::Error,
                             _firstLongText + ", over the " + std::to_string(kCopyLimit) +
                                 " that the design file writer's passes take: they would stop here, and the "
                                 "model blocks from here on would be lost"});
    if (_lastModel != 0 && !_lastModelComment)
        _findings.push_back({_lastModel, Severity::Error,
                             "no line holding \"[Model]\" follows the block opened here (no closing \"| End "
                             "[Model]\" line): its copy would run to the end of the file, line " +
                                 std::to_string(lines)});
    if (_pinHeading != 0 && !_pinListClosed)
        _findings.push_back({_pinHeading, Severity::Error,
                             "the [Pin] list is not closed by a line beginning with \"|\": its reader would take "
                             "every line behind it, to the end of the file, for a model"});
    if (_packageName != 0 && !_packageClosed && !_packageDone)
        _findings.push_back({_packageName, Severity::Error,
                             "the block of the design's package " + _package +
                                 " is not closed by a \"|\" line: its copy would run to the end of the file"});
    std::stable_sort(_findings.begin(), _findings.end(),
                     [](Finding const& a, Finding const& b) { return a.line < b.line; });
    return std::move(_findings);
}

} // namespace

MasterScan scanMaster(std::string const& path, std::string const& packageName)
{
    MasterScan scan;
    std::ifstream in(path, std::ios::binary);
    if (!in)
        return scan;
    Scan frame(packageName);
    ibis::LineSource source(in);
    ibis::Line line;
    int lines = 0;
    while (source.next(line)) {
        lines = line.number;
        if (!frame.headDone()) {
            frame.headLine(line);
            continue;
        }
        frame.tailLine(line);
    }
    scan.read = !source.failed();
    scan.findings = frame.finish(lines);
    return scan;
}

} // namespace safety
