#ifndef PAD2IBIS_TESTS_RESOLVE_WALK_PROBE_H
#define PAD2IBIS_TESTS_RESOLVE_WALK_PROBE_H

// A generator set up for the design model walk without reading any file:
// drive table and key template as construction leaves them, naming maps
// written by the test, signals made by the test.

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "driver/basibsgen.h"
#include "host/msgmanager.h"
#include "support/generator_probe.h"

namespace walk {

using Table = std::map<std::string, std::string>;

class WalkTest : public testing::Test {
protected:
    void SetUp() override
    {
        ts::resetGeneratorStatics();
        model.storeDriveTable({{"NA", "xxx"}, {"8mA", "080"}, {"12mA", "120"}});
        model.loadPullmodeIotypes();
        model._family = "KVA3";
    }
    void TearDown() override { ts::resetGeneratorStatics(); }

    // Runs the walk over signals; what it prints is kept in out.
    void run(std::vector<IB_IOBUF*> const& signals)
    {
        model._iobufs = signals;
        out = ts::captureStdout([&] { model.setDesignModels(); });
    }

    // The key the walk composes for one signal of family. No model is
    // available, so the walk's warning names the key.
    std::string keyOf(char const* family, std::string const& type, std::string const& attributes,
                      std::string const& bank = "")
    {
        model._family = family;
        model._availableModels.clear();
        signal = ts::makeIobuf("sig", "A1", type, attributes, bank);
        run({signal});
        std::string const mark = "WARNING: Ibis Model \"";
        std::string::size_type at = out.find(mark);
        if (at == std::string::npos)
            return "<no warning in: " + out + ">";
        at += mark.size();
        return out.substr(at, out.find('"', at) - at);
    }

    ts::ProbeModel model;
    IB_IOBUF* signal = nullptr;
    std::string out;
};

} // namespace walk

#endif
