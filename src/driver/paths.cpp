#include "driver/paths.h"

#include <vector>

#include "driver/load_time.h"
#include "host/ut_filemanager.h"
#include "host/ut_path.h"

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

IbsPathParts ibsSplitPath(std::string const& path)
{
    std::vector<char> directory(pathSize + 2), name(pathSize + 2), extension(pathSize + 2);
    ut_pathgethead(path.c_str(), directory.data());
    std::string head = directory.data();
    if (head.size() > 2 && head.back() != '/')
        head += "/";
    ut_pathgetbase(path.c_str(), name.data());
    ut_pathgetext(path.c_str(), extension.data());
    std::string ext = extension.data();
    if (ext.empty() || ext[0] != '.')
        ext = "." + ext;
    return {"", head, name.data(), ext};
}
