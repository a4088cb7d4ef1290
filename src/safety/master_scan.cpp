#include "safety/master_scan.h"

#include <algorithm>
#if defined(__SSE2__)
#include <emmintrin.h>
#endif
#include <string_view>
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

// The lines of text, which ends in an LF: how many, and where the first one
// longer than limit starts, with its number counted from 1 (npos and 0 when
// every line keeps within the limit).
struct LineEnds {
    int lines = 0;
    std::size_t longLine = std::string_view::npos;
    int longLineNumber = 0;
};

// The plain reading, line by line.
LineEnds lineEndsByLine(std::string_view text, std::size_t limit)
{
    LineEnds ends;
    std::size_t start = 0;
    for (std::size_t lf; (lf = text.find('\n', start)) != std::string_view::npos; start = lf + 1) {
        ++ends.lines;
        if (ends.longLine == std::string_view::npos && lf - start > limit) {
            ends.longLine = start;
            ends.longLineNumber = ends.lines;
        }
    }
    return ends;
}

LineEnds lineEnds(std::string_view text, std::size_t limit)
{
#if defined(__SSE2__)
    // Sixty-four bytes at a time, counting the LFs in byte-wide counters that
    // are summed before any can overflow. A line over the limit holds at
    // least (limit + 1 - 63) / 64 whole blocks of sixty-four without an LF;
    // only where so many follow each other is the text read line by line.
    std::size_t const blocks = text.size() / 64;
    std::size_t const quiet = (limit + 1 - 63) / 64;
    char const* const data = text.data();
    __m128i const lf = _mm_set1_epi8('\n');
    __m128i const zero = _mm_setzero_si128();
    long long count = 0;
    std::size_t run = 0;
    bool suspect = false;
    for (std::size_t block = 0; block < blocks && !suspect;) {
        // Each counter takes at most four LFs a block.
        std::size_t const stop = std::min(blocks, block + 63);
        __m128i counters = zero;
        for (; block < stop; ++block) {
            __m128i const* const at = reinterpret_cast<__m128i const*>(data + block * 64);
            __m128i const a = _mm_cmpeq_epi8(_mm_loadu_si128(at), lf);
            __m128i const b = _mm_cmpeq_epi8(_mm_loadu_si128(at + 1), lf);
            __m128i const c = _mm_cmpeq_epi8(_mm_loadu_si128(at + 2), lf);
            __m128i const d = _mm_cmpeq_epi8(_mm_loadu_si128(at + 3), lf);
            // An LF is 0xFF, one less: each one it subtracts adds one.
            counters = _mm_sub_epi8(_mm_sub_epi8(counters, _mm_add_epi8(a, b)), _mm_add_epi8(c, d));
            if (_mm_movemask_epi8(_mm_or_si128(_mm_or_si128(a, b), _mm_or_si128(c, d))) != 0) {
                run = 0;
            } else if (++run >= quiet) {
                suspect = true;
                ++block;
                break;
            }
        }
        __m128i const sums = _mm_sad_epu8(counters, zero);
        count += _mm_cvtsi128_si32(sums) + _mm_cvtsi128_si32(_mm_unpackhi_epi64(sums, sums));
    }
    if (!suspect) {
        for (std::size_t at = blocks * 64; at < text.size(); ++at)
            count += data[at] == '\n' ? 1 : 0;
        // A line over the limit that ends in the tail of fewer than sixty-four
        // bytes holds as many whole blocks ahead of it.
        LineEnds ends;
        ends.lines = static_cast<int>(count);
        return ends;
    }
#endif
    return lineEndsByLine(text, limit);
}

// The package section kept at the most, in lines.
std::size_t const kMaxSectionLines = 1 << 16;

// What the scan has found out about the frame of the master: the lines that
// the readers and the writer's passes go by.
class Scan {
public:
    explicit Scan(MasterScan& scan) : _scan(scan) {}

    // A line of the head of the file, up to the end of the [Pin] list.
    void headLine(ibis::Line const& line);
    // A line behind the head: only its length, a NUL and "[Model]" count.
    void tailLine(ibis::Line const& line);
    // The whole lines that the source holds read ahead, in one go, as
    // tailLine would take them one by one; the bytes taken.
    std::size_t tailLines(ibis::LineSource& source);
    // True once the head's readers have all had their lines.
    bool headDone() const { return _pinListClosed && (_scan.packageSectionEnded || _sectionFull); }
    std::vector<Finding> finish(int lines);

private:
    void nul(ibis::Line const& line);
    void noteModel(ibis::Line const& line);
    void packageLine(ibis::Line const& line, char const* text);

    MasterScan& _scan;
    std::vector<Finding> _findings;
    int _component = 0, _preambleEnd = 0, _pinHeading = 0;
    bool _pinListClosed = false;
    int _pinListRunsOn = 0; // the first line holding "[Model]" in the [Pin] list
    // A package section that runs on without a [Pin] line is no longer kept:
    // without one the master has no models to load.
    bool _sectionFull = false;
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
    } else if (!_pinListClosed && ibsHoldsModelKeyword(text) && _pinListRunsOn == 0) {
        _pinListRunsOn = line.number;
    }
    if (_preambleEnd == 0) {
        if (ibsEndsPreamble(c))
            _preambleEnd = line.number;
    } else if (!_scan.packageSectionEnded && !_sectionFull) {
        packageLine(line, c);
    }
}

void Scan::packageLine(ibis::Line const& line, char const* text)
{
    if (ibsIsPinListHeading(text)) {
        _scan.packageSectionEnded = true;
        return;
    }
    std::vector<PackageSectionLine>& section = _scan.packageSection;
    if (section.size() == kMaxSectionLines) {
        section.clear();
        _sectionFull = true;
        return;
    }
    PackageSectionLine kept;
    kept.number = line.number;
    kept.empty = text[0] == '\0';
    if (!kept.empty) {
        kept.text = ibsPackageSectionText(text);
        kept.closes = ibsClosesPackageBlock(text);
    }
    section.push_back(std::move(kept));
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

std::size_t Scan::tailLines(ibis::LineSource& source)
{
    std::string_view const ahead = source.ahead();
    std::size_t const lastLf = ahead.rfind('\n');
    if (lastLf == std::string_view::npos)
        return 0;
    std::string_view const chunk = ahead.substr(0, lastLf + 1);
    // A NUL is rare: its lines go one by one, with their numbers.
    if (std::memchr(chunk.data(), '\0', chunk.size()) != nullptr)
        return 0;
    int const before = source.lastNumber();
    LineEnds const ends = lineEnds(chunk, kCopyLimit);
    if (_firstLong == 0 && ends.longLine != std::string_view::npos) {
        // The line ends at the next LF; a CR ahead of it is counted.
        std::size_t const lf = chunk.find('\n', ends.longLine);
        _firstLong = before + ends.longLineNumber;
        _firstLongText = "line of " + std::to_string(lf - ends.longLine) + " characters" +
                         (chunk[lf - 1] == '\r' ? " with its CR" : "");
    }
    // The lines that hold "[Model]": the last one counts.
    std::size_t model = std::string_view::npos;
    for (std::size_t at = chunk.find("[Model]"); at != std::string_view::npos; at = chunk.find("[Model]", at + 7))
        model = at;
    if (model != std::string_view::npos) {
        std::size_t const start = chunk.rfind('\n', model) + 1; // npos + 1 is 0
        _lastModel = before + ends.lines - static_cast<int>(std::count(chunk.begin() + start, chunk.end(), '\n')) + 1;
        _lastModelComment = isComment(chunk.substr(start, chunk.find('\n', model) - start));
    }
    source.skip(chunk.size(), ends.lines);
    return chunk.size();
}

void Scan::noteModel(ibis::Line const& line)
{
    if (!ibsHoldsModelKeyword(line.text))
        return;
    _lastModel = line.number;
    _lastModelComment = isComment(line.text.substr(0, line.text.find('\0')));
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
    if (_pinListRunsOn != 0)
        _findings.push_back({_pinListRunsOn, Severity::Error,
                             "the [Pin] list is not closed by a line beginning with \"|\" ahead of this line: its "
                             "reader would take the lines of the model blocks for models"});
    else if (_pinHeading != 0 && !_pinListClosed)
        _findings.push_back({_pinHeading, Severity::Error,
                             "the [Pin] list is not closed by a line beginning with \"|\": its reader would take "
                             "every line behind it, to the end of the file, for a model"});
    ibischeck::sortByLine(_findings);
    return std::move(_findings);
}

} // namespace

MasterScan scanMaster(std::string const& path)
{
    MasterScan scan;
    std::ifstream in(path, std::ios::binary);
    if (!in)
        return scan;
    Scan frame(scan);
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
        frame.tailLines(source);
        lines = source.lastNumber();
    }
    scan.read = !source.failed();
    scan.findings = frame.finish(lines);
    return scan;
}

std::vector<Finding> packageFindings(MasterScan const& scan, std::string const& package)
{
    // The package writer reads the section for the name line of the
    // design's package, skipping empty lines; then it copies the line
    // behind it in any case, and lines up to one that closes the block.
    std::vector<Finding> findings;
    int name = 0;
    bool data = false;
    for (PackageSectionLine const& line : scan.packageSection) {
        if (name == 0) {
            if (line.empty)
                continue;
            if (line.text.empty())
                findings.push_back({line.number, Severity::Error,
                                    "a line of blanks alone ahead of the block of the design's package " + package +
                                        ": the package writer fails on it, and the run would end with a design "
                                        "file cut short"});
            else if (ibsNamesPackage(line.text, package))
                name = line.number;
        } else if (!data) {
            data = true;
        } else if (line.closes) {
            return findings;
        }
    }
    if (name != 0)
        findings.push_back({name, Severity::Error,
                            "the block of the design's package " + package + " is not closed by a \"|\" line" +
                                (scan.packageSectionEnded
                                     ? " ahead of the [Pin] line: its copy would run on into the pin list"
                                     : ": its copy would run to the end of the file")});
    return findings;
}

} // namespace safety
