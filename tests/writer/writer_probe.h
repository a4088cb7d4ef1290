#pragma once

// Helpers of the design IBIS file writer tests: a probe generator whose
// design stream writes into a file of its own, and paths of the test data.

#include <filesystem>
#include <string>

#include "driver/basibsgen.h"
#include "host/ut_string.h"
#include "support/generator_probe.h"
#include "support/test_support.h"

namespace wt {

class DesignProbe : public ts::ProbeModel {
public:
    void openDesign()
    {
        _designIbisFile = put("design.ibs", "");
        _designStream.close();
        _designStream.open(_designIbisFile.c_str(), std::ios::out | std::ios::trunc);
    }
    // Closes the design stream and returns what was written.
    std::string design()
    {
        _designStream.close();
        return ts::readFile(dir() + "/design.ibs");
    }
    // A placed signal with its resolved model and the master pin of its
    // differential model (nullptr: none).
    void addSignal(std::string const& name, std::string const& site, char const* model, char const* masterPin = nullptr)
    {
        IB_IOBUF* signal = ts::makeIobuf(name, site, "OUT", "IO_TYPE:LVCMOS33");
        signal->model = model ? ut_strdup(model) : nullptr;
        signal->masterPin = masterPin ? ut_strdup(masterPin) : nullptr;
        _iobufs.push_back(signal);
    }
    // The next line of the master stream, where the writer left it.
    std::string nextMasterLine()
    {
        std::string line;
        return std::getline(_masterStream, line) ? line : "";
    }
};

// A death test of body, with what it prints sent where the matcher reads.
#define WT_EXPECT_DIES(body, code, message) \
    EXPECT_EXIT({ ts::stdoutToStderr(); body; }, testing::ExitedWithCode(code), message)

inline std::string const separator = "|" + std::string(72, '*') + "\n";

inline std::string dataPath(std::string const& name) { return ts::sourcePath("tests/writer/data/" + name); }

// The directory as getcwd gives it, links resolved.
inline std::string realPath(std::string const& path) { return std::filesystem::canonical(path).string(); }

} // namespace wt
