#include "host/ut_filemanager.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

UT_FILEMANAGER ut_file;

namespace {

std::string unixPath(char const* path)
{
    std::string text(path);
    for (char& c : text)
        if (c == '\\')
            c = '/';
    return text;
}

} // namespace

bool UT_FILEMANAGER::exist(char const* path)
{
    struct stat info;
    return ::stat(unixPath(path).c_str(), &info) == 0;
}

bool UT_FILEMANAGER::isabsolute(char const* path)
{
    return path[0] == '/';
}

void UT_FILEMANAGER::makeunixpath(char* path)
{
    for (char* p = path; *p != '\0'; ++p)
        if (*p == '\\')
            *p = '/';
}

bool UT_FILEMANAGER::copy(char const* from, char const* to)
{
    std::ifstream in(unixPath(from), std::ios::binary);
    if (!in.is_open())
        return false;
    std::ofstream out(unixPath(to), std::ios::binary | std::ios::trunc);
    if (!out.is_open())
        return false;
    char chunk[65536];
    while (in) {
        in.read(chunk, sizeof chunk);
        if (in.gcount() > 0)
            out.write(chunk, in.gcount());
    }
    if (in.bad())
        return false;
    out.close();
    return !out.fail();
}

bool UT_FILEMANAGER::mkdir(char const* path)
{
    return ::mkdir(unixPath(path).c_str(), 0777) == 0;
}

void UT_FILEMANAGER::getcwd(char* buf, unsigned short size)
{
    if (::getcwd(buf, size) == nullptr && size > 0)
        buf[0] = '\0';
}
