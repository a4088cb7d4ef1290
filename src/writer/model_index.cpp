// The master file's model blocks, located in one pass and copied by seeking.

#include "writer/model_index.h"

#include <algorithm>
#include <cstring>
#include <istream>
#include <map>
#include <ostream>
#include <string_view>
#include <unordered_map>

#include "driver/line_reader.h"
#include "writer/copy_lines.h"

namespace {

// A block whose opening line has been found and whose end has not: the
// line behind the opening line is copied in any case, and the block stays
// a byte-for-byte copy while each of its lines has no NUL and its line end.
struct OpenBlock {
    size_t model;
    bool first;
    bool plain;
};

} // namespace

std::vector<ModelBlockStart> findModelBlocks(std::istream& master, std::vector<std::string> const& models)
{
    std::vector<ModelBlockStart> starts(models.size());
    // A name is searched as a C string, so up to its first NUL. Names still
    // looked for, by length, then by text: a line of n characters is tested
    // by looking up each of its stretches of a searched length.
    std::map<size_t, std::unordered_map<std::string_view, std::vector<size_t>>> pending;
    for (size_t i = 0; i < models.size(); ++i) {
        char const* name = models[i].c_str();
        pending[std::strlen(name)][std::string_view(name)].push_back(i);
    }
    size_t left = models.size();
    std::vector<OpenBlock> open;

    char line[IBS_COPY_LINE_SIZE];
    long long at = ibsReadLineCounted(master, line, IBS_COPY_LINE_SIZE);
    while (left > 0 || !open.empty()) {
        // Lines without a bracket and without NUL neither open nor close a
        // block, nor spoil one: they are stepped over in the buffer.
        if (std::streamsize const skipped = ibsSkipPlainLines(master, '[', IBS_COPY_LINE_SIZE)) {
            at += skipped;
            for (OpenBlock& block : open)
                block.first = false;
        }
        long long const lineStart = at;
        std::streamsize const taken = ibsReadLineCounted(master, line, IBS_COPY_LINE_SIZE);
        // An over-long line or the end of the file: blocks still open are
        // copied line by line, which finds their end again.
        if (master.fail())
            break;
        at += taken;
        bool const model = ibsHoldsModelKeyword(line);
        if (!open.empty()) {
            bool const plain = !master.eof() && std::strlen(line) + 1 == static_cast<size_t>(taken);
            for (OpenBlock& block : open) {
                if (!block.first && model) {
                    if (block.plain)
                        starts[block.model].end = lineStart;
                    block.model = models.size();
                    continue;
                }
                block.first = false;
                block.plain = block.plain && plain;
            }
            open.erase(std::remove_if(open.begin(), open.end(),
                                      [&](OpenBlock const& block) { return block.model == models.size(); }),
                       open.end());
        }
        if (!model)
            continue;
        size_t const length = std::strlen(line);
        for (auto& [size, names] : pending) {
            for (size_t from = 0; !names.empty() && from + size <= length; ++from) {
                auto hit = names.find(std::string_view(line + from, size));
                if (hit == names.end())
                    continue;
                for (size_t found : hit->second) {
                    starts[found].line = line;
                    starts[found].next = at;
                    open.push_back(OpenBlock{found, true, true});
                }
                left -= hit->second.size();
                names.erase(hit);
            }
        }
    }
    return starts;
}

void copyModelBlock(std::istream& master, std::ostream& design, ModelBlockStart const& start)
{
    design << start.line << "\n";
    master.clear();
    master.seekg(std::streampos(start.next));
    if (start.end >= 0) {
        // Lines that come out as they stand, line ends included.
        char chunk[16384];
        for (long long rest = start.end - start.next; rest > 0;) {
            std::streamsize const got =
                master.rdbuf()->sgetn(chunk, std::min<long long>(rest, static_cast<long long>(sizeof chunk)));
            if (got <= 0)
                break;
            design.write(chunk, got);
            rest -= got;
        }
        return;
    }
    char line[IBS_COPY_LINE_SIZE];
    if (ibsReadLine(master, line, IBS_COPY_LINE_SIZE)) {
        do {
            design.write(line, static_cast<std::streamsize>(std::strlen(line))).put('\n');
        } while (ibsReadLine(master, line, IBS_COPY_LINE_SIZE) &&
                 !ibsHoldsModelKeyword(line));
    }
}
