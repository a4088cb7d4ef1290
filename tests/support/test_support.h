#ifndef PAD2IBIS_TESTS_TEST_SUPPORT_H
#define PAD2IBIS_TESTS_TEST_SUPPORT_H

#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace ts {

// A fresh directory below the system's temporary directory, removed with
// everything in it when the object goes.
class TempDir {
public:
    TempDir();
    ~TempDir();
    TempDir(TempDir const&) = delete;
    TempDir& operator=(TempDir const&) = delete;

    std::string const& path() const { return _path; }
    std::string file(std::string const& name) const { return _path + "/" + name; }

private:
    std::string _path;
};

// Runs the test's body with the current directory changed, and back.
class ScopedCwd {
public:
    explicit ScopedCwd(std::string const& dir);
    ~ScopedCwd();

private:
    std::string _previous;
};

// Writes text to path, making the folders it names.
void writeFile(std::string const& path, std::string const& text);
std::string readFile(std::string const& path);
bool fileExists(std::string const& path);

// Every regular file below dir, by its path relative to dir, with its bytes.
std::map<std::string, std::string> filesBelow(std::string const& dir);

// A path below the source tree ("examples/demo.pad").
std::string sourcePath(std::string const& relative);

// Exit code of a run that had to be killed after a minute.
const int kRunHung = -2;

// Output of a whole run of the pad2ibis program.
struct RunResult {
    int exitCode = -1;
    std::string out;
    std::string err;
};

// Runs the pad2ibis program with args in directory cwd. SOURCE_DATE_EPOCH
// and PAD2IBIS_VERSION_TEXT are set to fixed values unless env names them.
RunResult runProgram(std::vector<std::string> const& args, std::string const& cwd,
                     std::vector<std::pair<std::string, std::string>> const& env = {});

// The same run with --legacy ahead of args: the host exactly as the legacy
// flow has it.
RunResult runLegacy(std::vector<std::string> const& args, std::string const& cwd,
                    std::vector<std::pair<std::string, std::string>> const& env = {});

// What body writes to standard output, by file descriptor, so that printf,
// puts and iostreams are all caught.
std::string captureStdout(std::function<void()> const& body);

// Inside a death test: lets what goes to standard output reach the death
// test's matcher, which reads standard error.
void stdoutToStderr();

// Puts the process-wide flags of the generator and the host back to zero,
// and removes a substitute chooser.
void resetGeneratorStatics();

} // namespace ts

#endif
