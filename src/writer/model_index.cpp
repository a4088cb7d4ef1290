// The master file's model blocks, located in one pass and copied by seeking.

#include "writer/model_index.h"

#include <cstring>
#include <istream>
#include <map>
#include <ostream>
#include <string_view>
#include <unordered_map>

#include "driver/line_reader.h"

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

    char line[IBS_COPY_LINE_SIZE];
    long long at = ibsReadLineCounted(master, line, IBS_COPY_LINE_SIZE);
    while (left > 0) {
        std::streamsize const taken = ibsReadLineCounted(master, line, IBS_COPY_LINE_SIZE);
        if (master.fail())
            break;
        at += taken;
        // Most lines are table rows without a bracket: one quick test each.
        if (std::strchr(line, '[') == nullptr || std::strstr(line, "[Model]") == nullptr)
            continue;
        size_t const length = std::strlen(line);
        for (auto& [size, names] : pending) {
            for (size_t from = 0; !names.empty() && from + size <= length; ++from) {
                auto hit = names.find(std::string_view(line + from, size));
                if (hit == names.end())
                    continue;
                for (size_t model : hit->second)
                    starts[model] = ModelBlockStart{line, at};
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
    char line[IBS_COPY_LINE_SIZE];
    if (ibsReadLine(master, line, IBS_COPY_LINE_SIZE)) {
        do {
            design << line << "\n";
        } while (ibsReadLine(master, line, IBS_COPY_LINE_SIZE) && std::strstr(line, "[Model]") == nullptr);
    }
}
