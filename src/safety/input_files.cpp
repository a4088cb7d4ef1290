#include "safety/input_files.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace safety {

namespace {

std::string kindProblem(struct stat const& info)
{
    if (S_ISDIR(info.st_mode))
        return "is a directory";
    if (S_ISFIFO(info.st_mode))
        return "is a pipe, not a regular file";
    if (S_ISCHR(info.st_mode) || S_ISBLK(info.st_mode))
        return "is a device, not a regular file";
    if (!S_ISREG(info.st_mode))
        return "is not a regular file";
    return "";
}

} // namespace

std::string inputProblem(std::string const& path)
{
    struct stat info;
    if (::stat(path.c_str(), &info) != 0)
        return errno == ENOENT ? "does not exist" : std::string("cannot be read: ") + std::strerror(errno);
    std::string const kind = kindProblem(info);
    if (!kind.empty())
        return kind;
    int const fd = ::open(path.c_str(), O_RDONLY);
    if (fd < 0)
        return std::string("cannot be read: ") + std::strerror(errno);
    ::close(fd);
    return "";
}

std::string readerHazard(std::string const& path)
{
    struct stat info;
    if (::stat(path.c_str(), &info) != 0)
        return "";
    return kindProblem(info);
}

std::string waitHazard(std::string const& path)
{
    struct stat info;
    if (::stat(path.c_str(), &info) != 0 || S_ISDIR(info.st_mode))
        return "";
    return kindProblem(info);
}

} // namespace safety
