#ifndef PAD2IBIS_TESTS_AMI_SERDES_SET_H
#define PAD2IBIS_TESTS_AMI_SERDES_SET_H

// A small SerDes source set for the AMI tests: the SerDes master IBIS file,
// the two parameter templates and the two AMI executables, all with one
// prefix, in one directory.

#include <algorithm>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <initializer_list>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <dirent.h>
#include <gtest/gtest.h>

#include "driver/basibsgen.h"
#include "support/test_support.h"

namespace amitest {

inline std::string const masterText =
    "[IBIS Ver]      7.0\n"
    "[File Name]     kva4serdes.ibs\n"
    "[Component]     KVA4_SERDES\n"
    "[Manufacturer]  Corvane\n"
    "[Pin]  signal_name  model_name  R_pin  L_pin  C_pin\n"
    "A1     TXP0         kva4_tx\n"
    "B1     RXP0         kva4_rx\n"
    "[End]\n";

// Receive template: four parameters with a value to fill in, one fixed
// parameter, and the Reserved_Parameters that are never touched.
inline std::string const rxTemplateText =
    "(kva4_rx\n"
    "  (Description \"Receive side of the SerDes channel\")\n"
    "  (Reserved_Parameters\n"
    "    (AMI_Version (Usage Info) (Type String) (Value \"7.0\") )\n"
    "    (Init_Returns_Impulse (Usage Info) (Type Boolean) (Value True) )\n"
    "  )\n"
    "  (Model_Specific\n"
    "    (Rx_Ctle_Gain (Usage In) (Type Integer) (Format Value 4) (Description \"CTLE gain\") )\n"
    "    (Rx_Dfe_Tap1 (Usage In) (Type Integer) (Format Value 0) (Description \"DFE tap 1\") )\n"
    "    (Rx_Vga (Usage In) (Type Integer) (Format Value 8) (Description \"VGA\") )\n"
    "    (Rx_Term (Usage In) (Type Integer) (Format Value 2) (Description \"termination\") )\n"
    "  )\n"
    ")\n";

inline std::string const txTemplateText =
    "(kva4_tx\n"
    "  (Description \"Transmit side of the SerDes channel\")\n"
    "  (Model_Specific\n"
    "    (Tx_Amp (Usage In) (Type Integer) (Format Value 5) (Description \"swing\") )\n"
    "    (Tx_Pre (Usage In) (Type Integer) (Format Value 1) (Description \"pre-cursor\") )\n"
    "    (Tx_Post (Usage In) (Type Integer) (Format Value 3) (Description \"post-cursor\") )\n"
    "  )\n"
    ")\n";

inline std::string const rxExecutableText = "stand-in for the receive AMI executable\n";
inline std::string const txExecutableText = "stand-in for the transmit AMI executable\n";

// The names of a set with prefix P in directory dir.
struct SerdesSet {
    std::string dir;
    std::string prefix;

    std::string master() const { return dir + "/" + prefix + "serdes.ibs"; }
    std::string rxTemplate() const { return dir + "/" + prefix + "RX_parameters.ami"; }
    std::string txTemplate() const { return dir + "/" + prefix + "TX_parameters.ami"; }
    std::string rxExecutable() const { return dir + "/CVN_" + prefix + "rx_ami.so"; }
    std::string txExecutable() const { return dir + "/CVN_" + prefix + "tx_ami.so"; }

    // All five files, in the order in which a missing one is reported.
    std::vector<std::string> files() const
    {
        return {master(), rxTemplate(), txTemplate(), rxExecutable(), txExecutable()};
    }

    void write() const
    {
        ts::writeFile(master(), masterText);
        ts::writeFile(rxTemplate(), rxTemplateText);
        ts::writeFile(txTemplate(), txTemplateText);
        ts::writeFile(rxExecutable(), rxExecutableText);
        ts::writeFile(txExecutable(), txExecutableText);
    }
};

// Owns the parameter records of a channel or of a lookup.
class Settings {
public:
    Settings(std::initializer_list<std::pair<std::string, std::string>> rows)
    {
        for (auto const& row : rows) {
            _owned.emplace_back(new IB_IOBUF_CONFIG(row.first, row.second));
            list.push_back(_owned.back().get());
        }
    }
    std::vector<IB_IOBUF_CONFIG*> list;

private:
    std::vector<std::unique_ptr<IB_IOBUF_CONFIG>> _owned;
};

// A heap channel, as the class that fills _amiIobufs makes them.
inline IB_AMI_CHANNEL* channel(std::string const& block, std::string const& id,
                               std::string const& rx, std::string const& tx,
                               std::initializer_list<std::pair<std::string, std::string>> rows)
{
    IB_AMI_CHANNEL* c = new IB_AMI_CHANNEL;
    c->blockId = block;
    c->channelId = id;
    c->rxEnable = rx;
    c->txEnable = tx;
    for (auto const& row : rows)
        c->configs.push_back(new IB_IOBUF_CONFIG(row.first, row.second));
    return c;
}

// Matches a death test's output exactly, byte for byte.
inline testing::Matcher<std::string const&> exactly(std::string const& text)
{
    return testing::Matcher<std::string const&>(text);
}

// True when body comes back instead of ending the process (and, when
// quiet, prints nothing). It is tried in a child process first, so that a
// run which ends fails the test rather than the whole test program.
template <typename Body>
bool comesBack(Body body, bool quiet = true)
{
    bool returned = false;
    [&] {
        if (quiet)
            ASSERT_EXIT(
                {
                    ts::stdoutToStderr();
                    body();
                    std::fflush(stdout);
                    std::exit(0);
                },
                testing::ExitedWithCode(0), exactly(""));
        else
            ASSERT_EXIT(
                {
                    ts::stdoutToStderr();
                    body();
                    std::fflush(stdout);
                    std::exit(0);
                },
                testing::ExitedWithCode(0), "");
        returned = true;
    }();
    return returned;
}

// The names in a directory, sorted; empty when it does not exist.
inline std::vector<std::string> listDir(std::string const& path)
{
    std::vector<std::string> names;
    DIR* dir = opendir(path.c_str());
    if (dir == nullptr)
        return names;
    while (dirent* entry = readdir(dir)) {
        std::string name = entry->d_name;
        if (name != "." && name != "..")
            names.push_back(name);
    }
    closedir(dir);
    std::sort(names.begin(), names.end());
    return names;
}

// The path the process sees as its current directory for dir.
inline std::string realDir(std::string const& dir)
{
    char buf[PATH_MAX];
    return realpath(dir.c_str(), buf) ? std::string(buf) : dir;
}

} // namespace amitest

#endif
