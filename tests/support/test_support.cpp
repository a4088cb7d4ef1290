#include "support/test_support.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <csignal>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include "driver/basibsgen.h"
#include "host/msgmanager.h"
#include "writer/design_file_options.h"
#include "resolve/model_substitute.h"

namespace ts {

TempDir::TempDir()
{
    // No test writes more than a few MB. A writer that never stops (a
    // planted fault, say) gets SIGXFSZ at 256 MB instead of filling the disk;
    // the program runs inherit the limit.
    static bool const limited = [] {
        rlimit size{};
        getrlimit(RLIMIT_FSIZE, &size);
        size.rlim_cur = std::min<rlim_t>(size.rlim_max, rlim_t(256) << 20);
        return setrlimit(RLIMIT_FSIZE, &size) == 0;
    }();
    (void)limited;
    char const* base = std::getenv("TMPDIR");
    std::string pattern = std::string(base && *base ? base : "/tmp") + "/pad2ibis-test-XXXXXX";
    std::vector<char> buf(pattern.begin(), pattern.end());
    buf.push_back('\0');
    if (mkdtemp(buf.data()) == nullptr)
        throw std::runtime_error("mkdtemp failed");
    _path = buf.data();
}

TempDir::~TempDir()
{
    std::error_code ignored;
    std::filesystem::remove_all(_path, ignored);
}

ScopedCwd::ScopedCwd(std::string const& dir) : _previous(std::filesystem::current_path())
{
    std::filesystem::current_path(dir);
}

ScopedCwd::~ScopedCwd()
{
    std::error_code ignored;
    std::filesystem::current_path(_previous, ignored);
}

void writeFile(std::string const& path, std::string const& text)
{
    std::filesystem::path const folder = std::filesystem::path(path).parent_path();
    if (!folder.empty())
        std::filesystem::create_directories(folder);
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    if (!out)
        throw std::runtime_error("cannot write " + path);
    out << text;
}

std::string readFile(std::string const& path)
{
    std::ifstream in(path, std::ios::binary);
    if (!in)
        return "<missing file " + path + ">";
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

bool fileExists(std::string const& path)
{
    std::error_code ignored;
    return std::filesystem::exists(path, ignored);
}

std::map<std::string, std::string> filesBelow(std::string const& dir)
{
    std::map<std::string, std::string> files;
    for (auto const& entry : std::filesystem::recursive_directory_iterator(dir))
        if (entry.is_regular_file())
            files[std::filesystem::relative(entry.path(), dir).string()] = readFile(entry.path().string());
    return files;
}

std::string sourcePath(std::string const& relative)
{
    return std::string(PAD2IBIS_SOURCE_DIR) + "/" + relative;
}


RunResult runLegacy(std::vector<std::string> const& args, std::string const& cwd,
                    std::vector<std::pair<std::string, std::string>> const& env)
{
    std::vector<std::string> legacy = {"--legacy"};
    legacy.insert(legacy.end(), args.begin(), args.end());
    return runProgram(legacy, cwd, env);
}

RunResult runProgram(std::vector<std::string> const& args, std::string const& cwd,
                     std::vector<std::pair<std::string, std::string>> const& env)
{
    // Output goes to files rather than pipes, so a large output cannot
    // block the child.
    TempDir capture;
    std::string outPath = capture.file("out");
    std::string errPath = capture.file("err");

    pid_t pid = fork();
    if (pid < 0)
        throw std::runtime_error("fork failed");
    if (pid == 0) {
        int out = open(outPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
        int err = open(errPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
        if (out < 0 || err < 0 || chdir(cwd.c_str()) != 0)
            _exit(127);
        dup2(out, STDOUT_FILENO);
        dup2(err, STDERR_FILENO);
        setenv("SOURCE_DATE_EPOCH", "1700000000", 1);
        setenv("PAD2IBIS_VERSION_TEXT", "test", 1);
        unsetenv("TW_DUMP_ADVICE");
        for (auto const& variable : env) {
            if (variable.second == "<unset>")
                unsetenv(variable.first.c_str());
            else
                setenv(variable.first.c_str(), variable.second.c_str(), 1);
        }
        std::vector<char*> argv;
        std::string program = PAD2IBIS_PROGRAM;
        argv.push_back(&program[0]);
        std::vector<std::string> copies(args);
        for (std::string& arg : copies)
            argv.push_back(&arg[0]);
        argv.push_back(nullptr);
        // A run that does not end within a minute is a hang: the alarm ends it.
        alarm(60);
        execv(program.c_str(), argv.data());
        _exit(127);
    }
    int status = 0;
    while (waitpid(pid, &status, 0) < 0 && errno == EINTR) {
    }
    RunResult result;
    bool const hung = WIFSIGNALED(status) && WTERMSIG(status) == SIGALRM;
    result.exitCode = hung ? kRunHung : WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    result.out = readFile(outPath);
    result.err = readFile(errPath);
    return result;
}

std::string captureStdout(std::function<void()> const& body)
{
    std::fflush(stdout);
    TempDir capture;
    std::string path = capture.file("stdout");
    int file = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    int saved = dup(STDOUT_FILENO);
    dup2(file, STDOUT_FILENO);
    close(file);
    body();
    std::fflush(stdout);
    dup2(saved, STDOUT_FILENO);
    close(saved);
    return readFile(path);
}

void stdoutToStderr()
{
    std::fflush(stdout);
    dup2(STDERR_FILENO, STDOUT_FILENO);
}

void resetGeneratorStatics()
{
    UT_MSGMAN::m_msgFlow = 0;
    IBIS_MODEL::_input_dev_name.clear();
    IBIS_MODEL::_is_ncd_flow = false;
    IBIS_MODEL::_is_brinmark_flow = false;
    IBIS_MODEL::_is_AMI_model = false;
    IBIS_MODEL::_mipi_dphy_ip_used = false;
    ibsSetDesignFileOptions(IbsDesignFileOptions());
    ibsSetSubstituteChooser(nullptr);
}

} // namespace ts
