#ifndef PAD2IBIS_TESTS_GENERATOR_PROBE_H
#define PAD2IBIS_TESTS_GENERATOR_PROBE_H

#include <string>
#include <vector>

#include "driver/basibsgen.h"
#include "support/test_support.h"

namespace ts {

// An IBIS_MODEL built without reading anything, so that one reader or one
// writer can be driven by itself on text written for the test.
class ProbeModel : public IBIS_MODEL {
public:
    // Writes text to a file of the probe's own directory and returns its path.
    std::string put(std::string const& name, std::string const& text)
    {
        std::string path = _dir.file(name);
        writeFile(path, text);
        return path;
    }
    // Opens the pad report stream on text, as loadIos would.
    void openPad(std::string const& text)
    {
        _padFile = put("probe.pad", text);
        _padStream.close();
        _padStream.clear();
        _padStream.open(_padFile.c_str());
    }
    // Names a master file with text, as initFiles would.
    void setMaster(std::string const& text) { _masterIbisFile = put("master.ibs", text); }
    // Opens the master stream on text, positioned at its first line.
    void openMaster(std::string const& text)
    {
        setMaster(text);
        _masterStream.close();
        _masterStream.clear();
        _masterStream.open(_masterIbisFile.c_str());
    }
    std::string const& dir() const { return _dir.path(); }

    using IBIS_MODEL::storeDriveTable;

private:
    TempDir _dir;
};

// Text of a small pad report. rows are pin table rows of the form
// "| name | pin/bank | buffer type | site | attributes |"; extra follows the
// pin table.
std::string padReport(std::string const& partType, std::vector<std::string> const& rows,
                      std::string const& extra = "");

// A signal record for writer and resolver tests. attributes: "KEY:VALUE"
// tokens separated by blanks, "IO_TYPE:..." first.
IB_IOBUF* makeIobuf(std::string const& name, std::string const& site, std::string const& type,
                    std::string const& attributes, std::string const& bank = "");

} // namespace ts

#endif
