#include "host/ut_string.h"

#include <cctype>
#include <cstring>

int ut_strgettoken(char* src, char* dst, char const* delims, int /*flag*/)
{
    char const* start = src;
    while (*start == ' ' || *start == '\t')
        ++start;
    char const* stop = start;
    while (*stop != '\0' && std::strchr(delims, *stop) == nullptr)
        ++stop;
    size_t length = static_cast<size_t>(stop - start);
    std::memmove(dst, start, length);
    dst[length] = '\0';
    char const* rest = (*stop != '\0') ? stop + 1 : stop;
    std::memmove(src, rest, std::strlen(rest) + 1);
    return static_cast<int>(length);
}

char* ut_strtrim(char* buf)
{
    size_t length = std::strlen(buf);
    while (length > 0 && std::isspace(static_cast<unsigned char>(buf[length - 1])))
        --length;
    buf[length] = '\0';
    size_t lead = 0;
    while (lead < length && std::isspace(static_cast<unsigned char>(buf[lead])))
        ++lead;
    if (lead > 0)
        std::memmove(buf, buf + lead, length - lead + 1);
    return buf;
}

char* ut_strupr(char* buf)
{
    for (char* p = buf; *p != '\0'; ++p)
        *p = static_cast<char>(std::toupper(static_cast<unsigned char>(*p)));
    return buf;
}

char* ut_strlwr(char* buf)
{
    for (char* p = buf; *p != '\0'; ++p)
        *p = static_cast<char>(std::tolower(static_cast<unsigned char>(*p)));
    return buf;
}

int ut_strincmp(char const* a, char const* b, int n)
{
    for (int i = 0; i < n; ++i) {
        int ca = std::tolower(static_cast<unsigned char>(a[i]));
        int cb = std::tolower(static_cast<unsigned char>(b[i]));
        if (ca != cb)
            return ca - cb;
        if (ca == 0)
            return 0;
    }
    return 0;
}

int ut_stricmp(char const* a, char const* b)
{
    for (;; ++a, ++b) {
        int ca = std::tolower(static_cast<unsigned char>(*a));
        int cb = std::tolower(static_cast<unsigned char>(*b));
        if (ca != cb || ca == 0)
            return ca - cb;
    }
}

char* ut_strdup(char const* text)
{
    size_t length = std::strlen(text);
    char* copy = new char[length + 1];
    std::memcpy(copy, text, length + 1);
    return copy;
}
