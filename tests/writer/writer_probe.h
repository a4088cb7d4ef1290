#ifndef PAD2IBIS_TESTS_WRITER_WRITER_PROBE_H
#define PAD2IBIS_TESTS_WRITER_WRITER_PROBE_H

// Helpers of the design IBIS file writer tests: a probe generator with a
// design stream of its own, signal records with a resolved model, and a
// scoped environment variable.

#include <cstdlib>
#include <cstring>
#include <optional>
#include <string>

#include "driver/basibsgen.h"
#include "support/generator_probe.h"
#include "support/test_support.h"

namespace wt {

inline char* heapText(std::string const& text)
{
    char* copy = new char[text.size() + 1];
    std::memcpy(copy, text.c_str(), text.size() + 1);
    return copy;
}

// A probe whose design stream writes into a file of its own directory.
class DesignProbe : public ts::ProbeModel {
public:
    void openDesign(std::string const& name = "design.ibs")
    {
        _designIbisFile = put(name, "");
        _designStream.close();
        _designStream.clear();
        _designStream.open(_designIbisFile.c_str(), std::ios::out | std::ios::trunc);
    }
    // Closes the design stream and returns what was written.
    std::string design()
    {
        _designStream.close();
        return ts::readFile(_designIbisFile);
    }
    // A placed signal with its resolved model (nullptr: none) and the master
    // pin of its differential model (nullptr: none).
    IB_IOBUF* addSignal(std::string const& name, std::string const& site, char const* model,
                        char const* masterPin = nullptr)
    {
        IB_IOBUF* signal = ts::makeIobuf(name, site, "OUT", "IO_TYPE:LVCMOS33");
        signal->model = model ? heapText(model) : nullptr;
        signal->masterPin = masterPin ? heapText(masterPin) : nullptr;
        _iobufs.push_back(signal);
        return signal;
    }
    // The next line of the master stream, where the writer left it.
    std::string nextMasterLine()
    {
        std::string line;
        std::getline(_masterStream, line);
        return line;
    }
};

// Sets an environment variable for the life of the object (nullopt unsets
// it), and puts back what was there.
class ScopedEnv {
public:
    ScopedEnv(char const* name, std::optional<std::string> const& value) : _name(name)
    {
        if (char const* old = std::getenv(name))
            _old = std::string(old);
        if (value)
            setenv(name, value->c_str(), 1);
        else
            unsetenv(name);
    }
    ~ScopedEnv()
    {
        if (_old)
            setenv(_name.c_str(), _old->c_str(), 1);
        else
            unsetenv(_name.c_str());
    }

private:
    std::string _name;
    std::optional<std::string> _old;
};

// The separator and star line of a design IBIS file.
inline std::string const separator =
    "|************************************************************************\n";

// A file of the writer's test data.
inline std::string dataPath(std::string const& name)
{
    return ts::sourcePath("tests/writer/data/" + name);
}

// The directory as getcwd gives it, links resolved.
inline std::string realPath(std::string const& path)
{
    char* resolved = ::realpath(path.c_str(), nullptr);
    std::string text = resolved ? resolved : path;
    std::free(resolved);
    return text;
}

} // namespace wt

#endif
