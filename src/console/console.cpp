#include "console/console.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <unistd.h>

#include "driver/basibsgen.h"
#include "driver/family_table.h"

namespace console {

namespace {

std::string quoted(std::string const& text)
{
    return "\"" + text + "\"";
}

std::string familyList()
{
    std::string list;
    for (char const* word : ibsFamilyWords())
        list += (list.empty() ? "" : ", ") + std::string(word);
    return list;
}

} // namespace

std::string shownPath(std::string const& path)
{
    std::string shown = path;
    for (char& c : shown)
        if (c == '\\')
            c = '/';
    char cwd[4096];
    if (::getcwd(cwd, sizeof cwd) != nullptr) {
        std::string const here = std::string(cwd) + (std::strcmp(cwd, "/") == 0 ? "" : "/");
        if (shown.compare(0, here.size(), here) == 0 && shown.size() > here.size())
            shown = shown.substr(here.size());
    }
    return shown;
}

Console::Console(bool quiet, bool verbose) : _quiet(quiet), _verbose(verbose) {}

Console::~Console()
{
    if (_attached)
        ibsSetOutputSink(nullptr);
}

void Console::attach()
{
    ibsSetOutputSink(&Console::take, this);
    _attached = true;
}

void Console::emit(std::FILE* stream, std::string const& text) const
{
    if (_holding) {
        _held.emplace_back(stream, text);
        return;
    }
    if (stream == stderr)
        std::fflush(stdout);
    std::fputs(text.c_str(), stream);
}

void Console::hold(std::function<void()> settle)
{
    _holding = true;
    _settle = std::move(settle);
}

Console::Held Console::release()
{
    _holding = false;
    _settle = nullptr;
    Held held;
    held.swap(_held);
    return held;
}

void Console::say(Held const& held) const
{
    for (auto const& [stream, text] : held)
        emit(stream, text);
}

void Console::progress(std::string const& text) const
{
    if (!_quiet)
        line(stdout, text);
}

void Console::summary(std::string const& text) const
{
    emit(stdout, text);
    std::fflush(stdout);
}

void Console::warning(std::string const& text) const
{
    line(stderr, "pad2ibis: warning: " + text);
}

void Console::error(std::string const& text) const
{
    if (_holding && _settle) {
        std::function<void()> const settle = _settle; // release() drops _settle
        settle();
    }
    line(stderr, "pad2ibis: error: " + text);
}

int Console::findings(std::string const& file, std::vector<ibischeck::Finding> const& findings) const
{
    int errors = 0;
    for (ibischeck::Finding const& finding : findings) {
        line(stderr, ibischeck::formatFinding(file, finding));
        errors += finding.severity == ibischeck::Severity::Error ? 1 : 0;
    }
    return errors;
}

void Console::take(IbsOutput const& output, void* self)
{
    Console& console = *static_cast<Console*>(self);
    switch (output.kind) {
    case IBS_OUTPUT_REPORT: {
        std::vector<std::string> args;
        for (char const* arg : output.args)
            args.push_back(arg != nullptr ? arg : "");
        console.report(output.message, args);
        break;
    }
    case IBS_OUTPUT_SIGNAL:
        if (console._verbose && !console._quiet)
            console.emit(stdout, output.text);
        break;
    case IBS_OUTPUT_SPACING:
        break;
    case IBS_OUTPUT_FILE_WRITTEN:
        console._written.push_back({output.role, output.path});
        break;
    case IBS_OUTPUT_FILE_MISSING:
        if (output.role == IBS_FILE_COMPANION)
            console.warning("the companion chip's IBIS file " + shownPath(output.path) +
                            " does not exist: no copies of it are written");
        else
            console.warning("no package model file " + quoted(output.path) + " lies beside the master file");
        break;
    case IBS_OUTPUT_FILE_FAILED:
        console.error(std::string(output.role == IBS_FILE_TEMPLATE ? "cannot read " : "cannot write ") +
                      shownPath(output.path) + (errno != 0 ? std::string(": ") + std::strerror(errno) : ""));
        break;
    }
}

void Console::report(IbsMessage message, std::vector<std::string> const& args)
{
    auto arg = [&args](std::size_t i) { return i < args.size() ? args[i] : std::string(); };
    switch (message) {
    case IBS_MSG_1003:
        error("the models of the master file cannot be loaded");
        break;
    case IBS_MSG_1004:
        error("the design IBIS file could not be written");
        break;
    case IBS_MSG_1010:
        warning("signal " + quoted(arg(1)) + ": the master file has no model " + quoted(arg(0)));
        break;
    case IBS_MSG_1011:
        warning("signal " + quoted(arg(1)) + ": the master file has no model " + quoted(arg(0)) + "; it gets " +
                quoted(arg(2)) + " instead");
        break;
    case IBS_MSG_1012:
        error("the master IBIS file " + quoted(arg(0)) + " has no \".ibs\" in its name");
        break;
    case IBS_MSG_1013:
        error("the part type " + quoted(IBIS_MODEL::_input_dev_name) +
              " of the pad report names no device family the generator knows; --family names one of " +
              familyList());
        break;
    case IBS_MSG_1014:
        error("the pad report " + quoted(arg(0)) + " has no \".pad\" in its name");
        break;
    case IBS_MSG_1015:
        error("cannot open " + shownPath(arg(0)) + (errno != 0 ? std::string(": ") + std::strerror(errno) : ""));
        break;
    case IBS_MSG_1016:
        error("the pad report " + shownPath(arg(0)) +
              " lists no signal: it has no pin table (\"Pinout by Port Name\") with rows");
        break;
    case IBS_MSG_1019:
        warning("the IBIS models for true differential standards have a known issue in the IBIS data; use the TN "
                "HSPICE models instead to run simulation");
        break;
    case IBS_MSG_1022:
    case IBS_MSG_1023: {
        std::string text;
        for (std::string const& a : args)
            text += (text.empty() ? "" : " ") + a;
        progress(text);
        break;
    }
    case IBS_MSG_1024:
        error("the master file's naming table of " + arg(0) + " has no rows");
        break;
    case IBS_MSG_1025:
        error("the master file is for another device: its component " + quoted(arg(1)) +
              " does not fit the part " + quoted(arg(0)) + " of the pad report");
        break;
    case IBS_MSG_1026:
        warning("the master file " + shownPath(arg(1)) + " has no block for the package " + quoted(arg(0)) +
                ": the design file gets package values of zero");
        break;
    case IBS_MSG_1027:
        warning("bank " + quoted(arg(0)) + " has no supply in the pad report's bank table");
        break;
    case IBS_MSG_1028:
        _inputMoved = args;
        break;
    case IBS_MSG_1029: {
        std::string const signal = _inputMoved.size() > 1 ? _inputMoved[1] : std::string();
        std::string const key = _inputMoved.empty() ? std::string() : _inputMoved[0];
        warning("signal " + quoted(signal) + ": the master file has no input model " + quoted(key) +
                "; it gets its bidirectional model " + quoted(arg(0)));
        _inputMoved.clear();
        break;
    }
    case IBS_MSG_1030:
        _designFile = arg(0);
        break;
    case IBS_MSG_1033:
        error("the SerDes set lacks " + shownPath(arg(0)) + ": it does not exist");
        break;
    case IBS_MSG_1034:
        error("cannot make the folder " + shownPath(arg(0)));
        break;
    case IBS_MSG_1035:
        warning("the design uses no SerDes channel: nothing is written");
        break;
    case IBS_MSG_1005:
    case IBS_MSG_1017:
    case IBS_MSG_1031:
    case IBS_MSG_1036:
        // What these say, the closing summary says.
        break;
    }
}

} // namespace console
