#include "app/check_command.h"

#include <cstdio>
#include <fstream>
#include <string>
#include <vector>

#include "check/ibis_check.h"

namespace {

int usageError(std::string const& what)
{
    std::fprintf(stderr, "pad2ibis: check: %s\nTry 'pad2ibis --help' for more information.\n",
                 what.c_str());
    return 2;
}

std::string baseName(std::string const& path)
{
    std::string::size_type const slash = path.rfind('/');
    return slash == std::string::npos ? path : path.substr(slash + 1);
}

} // namespace

int runCheckCommand(int argc, char const* const* argv)
{
    bool master = false;
    std::string family;
    // Options stand ahead of the files; "--" or the first other word ends
    // them, and everything behind is a file.
    int i = 0;
    for (; i < argc; ++i) {
        std::string const arg = argv[i];
        if (arg == "--") {
            ++i;
            break;
        }
        if (arg.compare(0, 2, "--") != 0)
            break;
        if (arg == "--master") {
            master = true;
        } else if (arg == "--family") {
            if (i + 1 >= argc)
                return usageError("--family needs a value");
            family = argv[++i];
        } else {
            return usageError("unknown option " + arg);
        }
    }
    std::vector<std::string> const files(argv + i, argv + argc);
    if (files.empty())
        return usageError("no file to check");
    if (!family.empty() && !master)
        return usageError("--family goes with --master");

    int errors = 0, warnings = 0, checked = 0;
    bool unreadable = false;
    for (std::string const& path : files) {
        std::vector<ibischeck::Finding> findings;
        bool read = false;
        if (master) {
            read = ibischeck::checkMasterPath(path, family, findings);
        } else {
            std::ifstream in(path, std::ios::binary);
            if (in)
                findings = ibischeck::checkDesignFile(in, baseName(path));
            read = in.is_open() && !in.bad();
        }
        if (!read) {
            std::fflush(stdout);
            std::fprintf(stderr, "pad2ibis: check: cannot read %s\n", path.c_str());
            unreadable = true;
            continue;
        }
        ++checked;
        for (ibischeck::Finding const& finding : findings) {
            std::puts(ibischeck::formatFinding(path, finding).c_str());
            (finding.severity == ibischeck::Severity::Error ? errors : warnings) += 1;
        }
    }
    std::puts(ibischeck::countLine(checked, errors, warnings).c_str());
    return unreadable ? 2 : errors > 0 ? 1 : 0;
}
