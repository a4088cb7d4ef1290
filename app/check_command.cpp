#include "app/check_command.h"

#include <dirent.h>

#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "check/ibis_check.h"
#include "ibis/ibis_syntax.h"
#include "ibis/package_model.h"

namespace {

char const checkUsage[] =
    "Usage: pad2ibis check [--master] [--family WORD] FILE...\n"
    "       pad2ibis check --channels CHANNELS_FILE TEMPLATE_AMI...\n"
    "\n"
    "Reads IBIS files and prints what a simulator or the generator would trip over,\n"
    "as FILE:LINE: error: TEXT or FILE:LINE: warning: TEXT, then a count line. By\n"
    "default the files are design IBIS files; with --master they are master IBIS\n"
    "files, checked for what the generator's readers rely on, and --family WORD (a\n"
    "family such as KVA3, or a part type such as KVA3-40E-6BG256C) also checks that\n"
    "the naming tables that family needs are all there. A file ending in .ami is an\n"
    "AMI parameter file, checked by the rules of the AMI parameter tree. With\n"
    "--channels, CHANNELS_FILE is checked against the parameter templates: settings\n"
    "that no template line takes, values that are written otherwise than they read,\n"
    "values outside their parameter's Type, Range or List; the templates are\n"
    "checked as AMI files too.\n"
    "\n"
    "Options:\n"
    "  --master           the files are master IBIS files\n"
    "  --family WORD      with --master: the family whose naming tables must be there\n"
    "  --channels FILE    check the channels file FILE against the templates given\n"
    "  -h, --help         print this text and exit\n"
    "\n"
    "Exit status: 0 when no error was found, 1 when one was, 2 for a usage error or\n"
    "a file that cannot be read.\n";

int usageError(std::string const& what)
{
    std::fprintf(stderr, "pad2ibis: check: %s\nTry 'pad2ibis check --help' for more information.\n",
                 what.c_str());
    return 2;
}

std::string baseName(std::string const& path)
{
    std::string::size_type const slash = path.rfind('/');
    return slash == std::string::npos ? path : path.substr(slash + 1);
}

// An AMI parameter file is known by its ending, in any letter case.
bool isAmiFile(std::string const& path)
{
    std::string const base = baseName(path);
    return base.size() >= 4 && ibis::sameWord(std::string_view(base).substr(base.size() - 4), ".ami");
}

// A file is known by its ending, in any letter case.
bool endsIn(std::string const& path, char const* ending)
{
    std::string const base = baseName(path);
    std::string_view const end(ending);
    return base.size() >= end.size() && ibis::sameWord(std::string_view(base).substr(base.size() - end.size()), end);
}

// The package models that the package model files (.pkg) in the folder of
// `path` define, read once when first asked for.
class PackageModelsBeside {
public:
    explicit PackageModelsBeside(std::string const& path)
    {
        std::string::size_type const slash = path.rfind('/');
        _folder = slash == std::string::npos ? "." : path.substr(0, slash + 1);
    }

    bool operator()(std::string const& name)
    {
        if (!_read) {
            _read = true;
            if (DIR* dir = opendir(_folder.c_str())) {
                while (dirent const* entry = readdir(dir)) {
                    std::string const file = entry->d_name;
                    if (!endsIn(file, ".pkg"))
                        continue;
                    std::ifstream in(_folder + "/" + file, std::ios::binary);
                    for (std::string const& model : ibis::packageModelNames(in))
                        _names.push_back(model);
                }
                closedir(dir);
            }
        }
        for (std::string const& known : _names)
            if (known == name)
                return true;
        return false;
    }

private:
    std::string _folder;
    bool _read = false;
    std::vector<std::string> _names;
};

// Says that the file at path cannot be read, behind the findings printed
// so far; false.
bool cannotRead(std::string const& path)
{
    std::fflush(stdout);
    std::fprintf(stderr, "pad2ibis: check: cannot read %s\n", path.c_str());
    return false;
}

// The whole file; false, after saying so, when it cannot be read.
bool readWhole(std::string const& path, std::string& text)
{
    std::ifstream in(path, std::ios::binary);
    std::ostringstream whole;
    if (in)
        whole << in.rdbuf();
    if (!in || in.bad())
        return cannotRead(path);
    text = whole.str();
    return true;
}

// An IBIS file, read line by line; false, after saying so, when it cannot
// be read.
bool checkIbisFile(std::string const& path, bool master, std::string const& family,
                   std::vector<ibischeck::Finding>& findings)
{
    if (master)
        return ibischeck::checkMasterPath(path, family, findings) || cannotRead(path);
    std::ifstream in(path, std::ios::binary);
    if (in && endsIn(path, ".pkg"))
        findings = ibischeck::checkPackageFile(in, baseName(path));
    else if (in)
        findings = ibischeck::checkDesignFile(in, baseName(path), PackageModelsBeside(path));
    return (in.is_open() && !in.bad()) || cannotRead(path);
}

struct Counts {
    int files = 0, errors = 0, warnings = 0;

    void print(std::string const& path, std::vector<ibischeck::Finding> const& findings)
    {
        ++files;
        for (ibischeck::Finding const& finding : findings) {
            std::puts(ibischeck::formatFinding(path, finding).c_str());
            (finding.severity == ibischeck::Severity::Error ? errors : warnings) += 1;
        }
    }
};

} // namespace

int runCheckCommand(int argc, char const* const* argv)
{
    bool master = false;
    std::string family, channels;
    // Options stand ahead of the files; "--" or the first other word ends
    // them, and everything behind is a file.
    int i = 0;
    for (; i < argc; ++i) {
        std::string const arg = argv[i];
        if (arg == "--") {
            ++i;
            break;
        }
        if (arg == "--help" || arg == "-h") {
            std::fputs(checkUsage, stdout);
            return 0;
        }
        if (arg.compare(0, 2, "--") != 0)
            break;
        if (arg == "--master") {
            master = true;
        } else if (arg == "--family" || arg == "--channels") {
            if (i + 1 >= argc)
                return usageError(arg + " needs a value");
            (arg == "--family" ? family : channels) = argv[++i];
        } else {
            return usageError("unknown option " + arg);
        }
    }
    std::vector<std::string> const files(argv + i, argv + argc);
    if (files.empty())
        return usageError(channels.empty() ? "no file to check"
                                           : "--channels needs the templates (.ami) to check against");
    if (!family.empty() && !master)
        return usageError("--family goes with --master");
    if (!channels.empty() && master)
        return usageError("--channels goes without --master");

    Counts counts;
    bool unreadable = false;
    std::string channelsText;
    if (!channels.empty() && !readWhole(channels, channelsText))
        unreadable = true;
    std::vector<ibischeck::AmiTemplate> templates;
    std::vector<std::vector<ibischeck::Finding>> ownFindings;
    for (std::string const& path : files) {
        std::vector<ibischeck::Finding> findings;
        if (isAmiFile(path) || !channels.empty()) {
            std::string text;
            if (!readWhole(path, text)) {
                unreadable = true;
                continue;
            }
            findings = ibischeck::checkAmiFile(text);
            if (!channels.empty()) {
                templates.push_back({path, text});
                ownFindings.push_back(std::move(findings));
                continue;
            }
        } else if (!checkIbisFile(path, master, family, findings)) {
            unreadable = true;
            continue;
        }
        counts.print(path, findings);
    }
    // The channels file first, when all its templates could be read, then
    // the templates themselves.
    if (!channels.empty() && !unreadable)
        counts.print(channels, ibischeck::checkChannelsFile(channelsText, templates));
    for (std::size_t t = 0; t < templates.size(); ++t)
        counts.print(templates[t].name, ownFindings[t]);
    std::puts(ibischeck::countLine(counts.files, counts.errors, counts.warnings).c_str());
    return unreadable ? 2 : counts.errors > 0 ? 1 : 0;
}
