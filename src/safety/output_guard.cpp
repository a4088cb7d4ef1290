#include "safety/output_guard.h"

#include <sys/stat.h>
#include <unistd.h>

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

std::string unwritableProblem(std::string const& path)
{
    struct stat st;
    if (stat(path.c_str(), &st) == 0 && S_ISDIR(st.st_mode))
        return "it is a directory";
    // The folders that are not there yet are made; the nearest one that is
    // must be a writable folder.
    std::string folder = path;
    do {
        std::string::size_type const slash = folder.rfind('/');
        folder = slash == std::string::npos ? "." : slash == 0 ? "/" : folder.substr(0, slash);
    } while (stat(folder.c_str(), &st) != 0 && folder != "." && folder != "/");
    if (!S_ISDIR(st.st_mode))
        return folder + " is no folder";
    if (access(folder.c_str(), W_OK) != 0)
        return "its folder " + folder + " is not writable";
    return "";
}

} // namespace safety
