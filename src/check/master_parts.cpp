// A large master file read in two parts at once: a second thread checks
// the part behind a [Model] line in the file's second half, and the first
// hands over to it there when its state is the one the second assumed.

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <thread>

#include "check/master_check.h"
#include "ibis/ibis_syntax.h"

namespace ibischeck {

namespace {

// Files from this size on are read in two parts at once.
std::uintmax_t const kSplitSize = 8u << 20;

// The line ends in the first `size` bytes of the stream, eight bytes at a
// time; the stream stands at `size` behind them.
bool countLines(std::istream& in, std::uintmax_t size, int& lines)
{
    std::vector<char> buffer(1 << 18);
    std::uint64_t count = 0;
    while (size > 0) {
        std::size_t const want = static_cast<std::size_t>(std::min<std::uintmax_t>(size, buffer.size()));
        if (!in.read(buffer.data(), static_cast<std::streamsize>(want)))
            return false;
        size -= want;
        char const* p = buffer.data();
        std::size_t i = 0;
        while (i + 8 <= want) {
            // A byte per byte lane counts the LFs, up to 255 rounds.
            std::uint64_t lanes = 0;
            for (int round = 0; round < 255 && i + 8 <= want; ++round, i += 8) {
                std::uint64_t v;
                std::memcpy(&v, p + i, 8);
                std::uint64_t const x = v ^ 0x0A0A0A0A0A0A0A0Aull;
                std::uint64_t const t = (x & 0x7F7F7F7F7F7F7F7Full) + 0x7F7F7F7F7F7F7F7Full;
                lanes += ~(t | x | 0x7F7F7F7F7F7F7F7Full) >> 7;
            }
            count += (lanes * 0x0101010101010101ull) >> 56;
        }
        for (; i < want; ++i)
            count += p[i] == '\n' ? 1 : 0;
    }
    lines = static_cast<int>(count);
    return true;
}

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

bool checkMasterPath(std::string const& path, std::string const& family, std::vector<Finding>& findings)
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
        split = splitPoint(probe, static_cast<std::uintmax_t>(size) * 54 / 100, header);
    }
    if (!in || split == 0) {
        in.clear();
        in.seekg(0);
        findings = checkMasterFile(in, family);
        return !in.bad();
    }

    // The part from the split point on, read by a second thread: it counts
    // the lines ahead of it, then checks its part as a check that starts
    // behind the frame would.
    std::atomic<bool> stop(false);
    bool laterRead = false;
    int laterLines = 0;
    MasterCheck later(family, header);
    std::thread second([&] {
        std::ifstream tail(path, std::ios::binary);
        int ahead = 0;
        if (!tail || !countLines(tail, split, ahead))
            return;
        ibis::LineSource source(tail, ahead + 1);
        ibis::Line line;
        laterLines = ahead;
        while (!stop && source.next(line)) {
            later.feed(line);
            laterLines = line.number;
        }
        later.finishBlocks(laterLines);
        laterRead = !stop && !tail.bad();
    });

    MasterCheck first(family);
    ibis::LineSource source(in);
    ibis::Line line;
    std::uintmax_t at = 0; // where the line starts
    int lines = 0;
    bool handedOver = false;
    while (source.next(line)) {
        if (at == split) {
            if (first.canHandOver(header)) {
                first.handOver(line);
                handedOver = true;
                break;
            }
            stop = true; // the second part's reading would not be the file's
        }
        at += line.length + (line.crlf ? 1 : 0) + (line.ended ? 1 : 0);
        first.feed(line);
        lines = line.number;
    }
    if (!handedOver)
        stop = true;
    second.join();
    if (handedOver && laterRead) {
        first.absorb(later);
        findings = first.finishFrame(laterLines);
        return true;
    }
    if (handedOver) {
        // The second part could not be read: read on from the split point.
        return false;
    }
    findings = first.finish(lines);
    return !in.bad();
}

} // namespace ibischeck
