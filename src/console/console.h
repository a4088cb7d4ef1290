#ifndef PAD2IBIS_CONSOLE_CONSOLE_H
#define PAD2IBIS_CONSOLE_CONSOLE_H

// What the program says to its user in its default mode: progress on
// standard output, warnings and errors on standard error, one line each
// ("pad2ibis: warning: TEXT", "FILE:LINE: error: TEXT"), and the closing
// summary on standard output. The generator's own output is taken through
// its output sink and said the same way; the files it reports writing are
// kept for the summary.

#include <cstdio>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "check/ibis_check.h"
#include "driver/messages.h"

namespace console {

class Console {
public:
    // quiet: no progress; verbose: the generator's listing of the signals.
    Console(bool quiet, bool verbose);
    ~Console();
    Console(Console const&) = delete;
    Console& operator=(Console const&) = delete;

    // From now on the generator's output comes here.
    void attach();

    void progress(std::string const& line) const;
    // The summary is said even when quiet.
    void summary(std::string const& text) const;
    void warning(std::string const& text) const;
    void error(std::string const& text) const;
    // "FILE:LINE: error: TEXT" for each; the number of errors among them.
    int findings(std::string const& file, std::vector<ibischeck::Finding> const& findings) const;

    // While the program's check of an input runs beside the generator, what
    // is said is held back; an error said meanwhile first calls settle,
    // which ends the holding (release) or the run.
    void hold(std::function<void()> settle);
    // Ends the holding: the lines held back, in their order, to be said
    // with say() or dropped.
    using Held = std::vector<std::pair<std::FILE*, std::string>>;
    Held release();
    void say(Held const& held) const;

    // A file that the generator said it wrote, and which one it is.
    struct Written {
        IbsFileRole role;
        std::string path;
    };
    std::vector<Written> const& written() const { return _written; }
    // The design IBIS file, once the generator has said where it is.
    std::string const& designFile() const { return _designFile; }

private:
    static void take(IbsOutput const& output, void* self);
    // Says text on stream, or holds it back.
    void emit(std::FILE* stream, std::string const& text) const;
    void line(std::FILE* stream, std::string const& text) const { emit(stream, text + "\n"); }
    void report(IbsMessage message, std::vector<std::string> const& args);

    bool _quiet, _verbose;
    bool _attached = false;
    std::vector<Written> _written;
    std::string _designFile;
    std::vector<std::string> _inputMoved; // a 1028 waiting for its 1029
    bool _holding = false;
    mutable Held _held;
    std::function<void()> _settle;
};

// A path as the user would type it: relative to the current directory when
// it lies below it, with "/" as the separator.
std::string shownPath(std::string const& path);

} // namespace console

#endif
