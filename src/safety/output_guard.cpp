#include "safety/output_guard.h"

#include <sys/stat.h>

namespace safety {

Overwrite findOverwrite(std::vector<RunFile> const& inputs, std::vector<RunFile> const& outputs)
{
    for (RunFile const& output : outputs) {
        struct stat out;
        if (output.path.empty() || ::stat(output.path.c_str(), &out) != 0)
            continue;
        for (RunFile const& input : inputs) {
            struct stat in;
            if (input.path.empty() || ::stat(input.path.c_str(), &in) != 0)
                continue;
            if (in.st_dev == out.st_dev && in.st_ino == out.st_ino)
                return {true, output, input};
        }
    }
    return {};
}

std::string describe(Overwrite const& overwrite)
{
    return overwrite.output.what + " " + overwrite.output.path + " would be written over " + overwrite.input.what +
           " " + overwrite.input.path;
}

} // namespace safety
