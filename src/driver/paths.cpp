#include "driver/paths.h"

#include <vector>

#include "driver/load_time.h"
#include "host/ut_filemanager.h"

namespace {

// The host's path buffers: 4096 characters.
const int pathSize = 4096;

} // namespace

std::string ibsUnixPath(std::string const& path)
{
    std::vector<char> buf(path.begin(), path.end());
    buf.push_back('\0');
    ut_file.makeunixpath(buf.data());
    return buf.data();
}

std::string ibsCurrentDir()
{
    char dir[pathSize];
    ut_file.getcwd(dir, pathSize);
    return dir;
}

IbsPathParts ibsSplitPath(IBIS_MODEL& model, std::string const& path)
{
    std::vector<char> drive(pathSize + 2), directory(pathSize + 2), name(pathSize + 2),
        extension(pathSize + 2);
    model.split_file_name(path.c_str(), drive.data(), directory.data(), name.data(),
                          extension.data());
    return {drive.data(), directory.data(), name.data(), extension.data()};
}
