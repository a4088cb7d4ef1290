#include "host/ut_path.h"

#include <cstring>

namespace {

// Position behind the last directory separator, 0 for a bare name.
size_t nameStart(char const* path)
{
    size_t start = 0;
    for (size_t i = 0; path[i] != '\0'; ++i)
        if (path[i] == '/' || path[i] == '\\')
            start = i + 1;
    return start;
}

// Position of the extension's point within the name, or the name's end.
size_t extensionStart(char const* path, size_t name)
{
    size_t length = std::strlen(path);
    char const* dot = std::strrchr(path + name, '.');
    return dot ? static_cast<size_t>(dot - path) : length;
}

void copyRange(char const* path, size_t from, size_t to, char* out)
{
    std::memmove(out, path + from, to - from);
    out[to - from] = '\0';
}

} // namespace

void ut_pathgethead(char const* path, char* head)
{
    copyRange(path, 0, nameStart(path), head);
}

void ut_pathgetbase(char const* path, char* base)
{
    size_t name = nameStart(path);
    copyRange(path, name, extensionStart(path, name), base);
}

void ut_pathgetext(char const* path, char* ext)
{
    size_t name = nameStart(path);
    copyRange(path, extensionStart(path, name), std::strlen(path), ext);
}
