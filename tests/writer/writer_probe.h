#pragma once

// Helpers of the design IBIS file writer tests: a probe generator whose
// design stream writes into a file of its own, and paths of the test data.

#include <filesystem>
#include <string>

#include "driver/basibsgen.h"
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
};

// A death test of body, with what it prints sent where the matcher reads.
#define WT_EXPECT_DIES(body, code, message) \
    EXPECT_EXIT({ ts::stdoutToStderr(); body; }, testing::ExitedWithCode(code), message)

inline std::string const separator = "|" + std::string(72, '*') + "\n";

inline std::string dataPath(std::string const& name) { return ts::sourcePath("tests/writer/data/" + name); }

// The directory as getcwd gives it, links resolved.
inline std::string realPath(std::string const& path) { return std::filesystem::canonical(path).string(); }

} // namespace wt
