#include "host/ut_filemanager.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <string>
#include <fcntl.h>
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

// A regular file copied whole inside the kernel, which spares the copies to
// and from the program's memory. 1: copied; 0: the kernel does not copy
// between these files, and nothing was written; -1: the copy failed.
int kernelCopy(std::string const& from, std::string const& to)
{
    int const in = ::open(from.c_str(), O_RDONLY | O_CLOEXEC);
    if (in < 0)
        return 0;
    struct stat info;
    // A file that says it is empty may still give bytes when read (the
    // kernel's own files): the streams copy what it gives.
    if (::fstat(in, &info) != 0 || !S_ISREG(info.st_mode) || info.st_size == 0) {
        ::close(in);
        return 0;
    }
    int const out = ::open(to.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    if (out < 0) {
        ::close(in);
        return 0;
    }
    int result = 1;
    bool first = true;
    for (;;) {
        ssize_t const done = ::copy_file_range(in, nullptr, out, nullptr, 1 << 30, 0);
        if (done > 0) {
            first = false;
            continue;
        }
        if (done < 0)
            result = first ? 0 : -1;
        break;
    }
    ::close(in);
    if (::close(out) != 0)
        result = -1;
    return result;
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
    int const kernel = kernelCopy(unixPath(from), unixPath(to));
    if (kernel != 0)
        return kernel > 0;
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
