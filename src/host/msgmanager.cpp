#include "host/msgmanager.h"

#include <cstdarg>
#include <cstdio>
#include <cstring>

#include "host/ut_string.h"

int UT_MSGMAN::m_msgFlow = 0;

namespace {

// The host's catalogue of the "padmodel" group: how many string arguments
// each message takes. Ids that are not listed take none.
struct CatalogueEntry {
    char const* id;
    int arguments;
};

CatalogueEntry const padmodelCatalogue[] = {
    {"1010", 2}, {"1011", 3}, {"1012", 1}, {"1014", 1}, {"1015", 1},
    {"1016", 1}, {"1022", 1}, {"1023", 2}, {"1024", 1}, {"1025", 2},
    {"1026", 2}, {"1027", 1}, {"1028", 2}, {"1029", 1}, {"1030", 1},
    {"1033", 1}, {"1034", 1},
};

int argumentCount(char const* id)
{
    for (CatalogueEntry const& entry : padmodelCatalogue)
        if (std::strcmp(entry.id, id) == 0)
            return entry.arguments;
    return 0;
}

} // namespace

msgManager::msgManager(char const* group) : _group(ut_strdup(group)) {}

msgManager::~msgManager()
{
    delete[] _group;
}

void msgManager::postMsg(char const* id, ...)
{
    // One line a message on standard error: group-id, then a TAB ahead of
    // each argument.
    std::fprintf(stderr, "%s-%s", _group, id);
    va_list args;
    va_start(args, id);
    for (int i = argumentCount(id); i > 0; --i) {
        char const* text = va_arg(args, char const*);
        std::fprintf(stderr, "\t%s", text ? text : "");
    }
    va_end(args);
    std::fputc('\n', stderr);
    std::fflush(stderr);
}
