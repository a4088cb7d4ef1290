// A large master file read in two parts at once: a second thread checks
// the part behind the first [Model] line of the file's second half, and the
// first hands over to it there when its state is the one the second
// assumed.

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <fstream>
#include <thread>

#include "check/master_check.h"
#include "ibis/ibis_syntax.h"

namespace ibischeck {

namespace {

// Files from this size on are read in two parts at once.
std::uintmax_t const kSplitSize = 8u << 20;

// Where the second part starts: the first line that begins with "[Model]"
// behind `from`; 0 for none. And the [IBIS Ver] line of the file's head.
std::uintmax_t splitPoint(std::istream& in, std::uintmax_t from, Header& header)
{
    std::vector<char> buffer(1 << 16);
    in.read(buffer.data(), static_cast<std::streamsize>(buffer.size()));
    std::string_view const head(buffer.data(), static_cast<std::size_t>(in.gcount()));
    for (std::size_t at = 0; at < head.size();) {
        std::size_t const lf = head.find('\n', at);
        if (lf == std::string_view::npos)
            break;
        std::string_view line = head.substr(at, lf - at);
        if (!line.empty() && line.back() == '\r')
            line.remove_suffix(1);
        if (ibis::isKeywordLine(line) && ibis::keywordKey(line) == "ibis ver") {
            header = headerOf(line, '|');
            break;
        }
        at = lf + 1;
    }
    in.clear();
    in.seekg(static_cast<std::streamoff>(from));
    std::string const mark = "\n[Model]";
    std::string carry;
    std::uintmax_t offset = from;
    while (in) {
        in.read(buffer.data(), static_cast<std::streamsize>(buffer.size()));
        std::size_t const got = static_cast<std::size_t>(in.gcount());
        std::string const text = carry + std::string(buffer.data(), got);
        std::size_t const at = text.find(mark);
        if (at != std::string::npos)
            return offset - carry.size() + at + 1;
        offset += got;
        carry = text.substr(text.size() - std::min(text.size(), mark.size() - 1));
    }
    return 0;
}

} // namespace

// The two parts of a large file and how they meet.
class MasterParts {
public:
    static bool check(std::string const& path, std::string const& family, std::vector<Finding>& findings);

private:
    // Checks the part of the file from byte `from` on, its first line
    // numbered `first`, up to its end or until stop is set; lines gets the
    // number of its last line. False when it could not be read, or was
    // stopped.
    static bool checkPart(std::string const& path, std::uintmax_t from, int first, std::atomic<bool> const& stop,
                          MasterCheck& check, int& lines);
};

bool MasterParts::checkPart(std::string const& path, std::uintmax_t from, int first, std::atomic<bool> const& stop,
                            MasterCheck& check, int& lines)
{
    std::ifstream in(path, std::ios::binary);
    if (!in || !in.seekg(static_cast<std::streamoff>(from)))
        return false;
    ibis::LineSource source(in, first);
    ibis::Line line;
    while (!stop && source.next(line)) {
        check.feed(line);
        check.feedRows(source);
    }
    lines = source.lastNumber();
    check.finishBlocks(lines);
    return !stop && !in.bad();
}

bool checkMasterPath(std::string const& path, std::string const& family, std::vector<Finding>& findings)
{
    return MasterParts::check(path, family, findings);
}

bool MasterParts::check(std::string const& path, std::string const& family, std::vector<Finding>& findings)
{
    std::ifstream in(path, std::ios::binary);
    if (!in)
        return false;
    in.seekg(0, std::ios::end);
    std::streamoff const size = in.tellg();
    in.seekg(0);
    Header header;
    std::uintmax_t split = 0;
    if (size >= static_cast<std::streamoff>(kSplitSize)) {
        std::ifstream probe(path, std::ios::binary);
        split = splitPoint(probe, static_cast<std::uintmax_t>(size) / 2, header);
    }
    if (!in || split == 0) {
        in.clear();
        in.seekg(0);
        findings = checkMasterFile(in, family);
        return !in.bad();
    }

    // The part from the split point on, read by a second thread as a check
    // that starts behind the frame would read it. Not knowing yet how many
    // lines stand ahead of it, it numbers them as if its first line were
    // the file's second. A part that gives no findings holds line numbers
    // only in its blocks, which move by the lines counted in the end; one
    // that gives findings (they name lines) is checked again then.
    int const guess = 2;
    std::atomic<bool> stop(false);
    bool laterRead = false;
    int laterLines = 0;
    MasterCheck later(family, header);
    std::thread second([&] { laterRead = checkPart(path, split, guess, stop, later, laterLines); });

    MasterCheck first(family);
    ibis::LineSource source(in);
    ibis::Line line;
    std::uintmax_t at = 0; // where the line starts
    int lines = 0;
    bool handedOver = false;
    int splitLine = 0;
    while (source.next(line)) {
        if (at == split) {
            if (first.canHandOver(header)) {
                first.handOver(line);
                splitLine = line.number;
                handedOver = true;
                break;
            }
            stop = true; // the second part's reading would not be the file's
        }
        at += line.length + (line.crlf ? 1 : 0) + (line.ended ? 1 : 0);
        first.feed(line);
        at += first.feedRows(source);
        lines = source.lastNumber();
    }
    if (!handedOver)
        stop = true;
    second.join();
    if (!handedOver) {
        findings = first.finish(lines);
        return !in.bad();
    }
    int const shift = splitLine - guess;
    if (laterRead && later.quiet()) {
        first.absorb(later, shift);
        findings = first.finishFrame(laterLines + shift);
        return true;
    }
    MasterCheck again(family, header);
    std::atomic<bool> const go(false);
    if (!checkPart(path, split, splitLine, go, again, laterLines))
        return false;
    first.absorb(again, 0);
    findings = first.finishFrame(laterLines);
    return true;
}

} // namespace ibischeck
