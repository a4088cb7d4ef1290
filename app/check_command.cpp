#include "app/check_command.h"

#include <cstdio>
#include <fstream>
#include <sstream>
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
    std::vector<std::string> files;
    for (int i = 0; i < argc; ++i) {
        std::string const arg = argv[i];
        if (!files.empty() || arg.compare(0, 2, "--") != 0 || arg == "--") {
            if (arg != "--" || !files.empty())
                files.push_back(arg);
            if (arg == "--")
                for (++i; i < argc; ++i)
                    files.push_back(argv[i]);
            continue;
        }
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
    if (files.empty())
        return usageError("no file to check");
    if (!family.empty() && !master)
        return usageError("--family goes with --master");

    int errors = 0, warnings = 0, checked = 0;
    bool unreadable = false;
    for (std::string const& path : files) {
        std::ifstream in(path, std::ios::binary);
        std::ostringstream text;
        if (in)
            text << in.rdbuf();
        if (!in || in.bad()) {
            std::fflush(stdout);
            std::fprintf(stderr, "pad2ibis: check: cannot read %s\n", path.c_str());
            unreadable = true;
            continue;
        }
        ++checked;
        std::vector<ibischeck::Finding> const findings =
            master ? ibischeck::checkMasterFile(text.str(), family)
                   : ibischeck::checkDesignFile(text.str(), baseName(path));
        for (ibischeck::Finding const& finding : findings) {
            std::puts(ibischeck::formatFinding(path, finding).c_str());
            (finding.severity == ibischeck::Severity::Error ? errors : warnings) += 1;
        }
    }
    std::puts(ibischeck::countLine(checked, errors, warnings).c_str());
    return unreadable ? 2 : errors > 0 ? 1 : 0;
}
