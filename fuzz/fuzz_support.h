#ifndef PAD2IBIS_FUZZ_SUPPORT_H
#define PAD2IBIS_FUZZ_SUPPORT_H

// Shared parts of the fuzz targets. The targets are built with
// PAD2IBIS_FATAL_THROWS, so a fatal report ends the input with an
// IbsFatalExit exception instead of ending the process.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <stdexcept>
#include <string>
#include <ftw.h>
#include <unistd.h>

#include "driver/basibsgen.h"
#include "driver/messages.h"
#include "host/msgmanager.h"

namespace fuzz {

// A working directory of the process's own: inputs are written there, and
// the design IBIS files land below it.
inline std::string const& workDir()
{
    static std::string dir = [] {
        // Memory-backed when the machine has it: every input is a file.
        static char shm[] = "/dev/shm/pad2ibis-fuzz-XXXXXX";
        static char tmp[] = "/tmp/pad2ibis-fuzz-XXXXXX";
        char* pattern = access("/dev/shm", W_OK) == 0 ? shm : tmp;
        char* made = mkdtemp(pattern);
        if (made == nullptr)
            std::abort();
        return std::string(made);
    }();
    return dir;
}

// Standard output carries the signal listing and the reports; nobody reads
// it here.
inline void removeWorkDir()
{
    nftw(
        workDir().c_str(),
        [](char const* path, struct stat const*, int, struct FTW*) { return std::remove(path); }, 16,
        FTW_DEPTH | FTW_PHYS);
}

inline void quietStart()
{
    if (std::freopen("/dev/null", "w", stdout) == nullptr)
        std::abort();
    if (chdir(workDir().c_str()) != 0)
        std::abort();
    std::atexit(removeWorkDir);
}

inline std::string writeInput(char const* name, uint8_t const* data, size_t size)
{
    std::string path = workDir() + "/" + name;
    std::FILE* out = std::fopen(path.c_str(), "wb");
    if (out == nullptr)
        std::abort();
    if (size > 0 && std::fwrite(data, 1, size, out) != size)
        std::abort();
    std::fclose(out);
    return path;
}

inline void resetStatics()
{
    UT_MSGMAN::m_msgFlow = 0;
    IBIS_MODEL::_input_dev_name.clear();
    IBIS_MODEL::_is_ncd_flow = false;
    IBIS_MODEL::_is_brinmark_flow = false;
    IBIS_MODEL::_is_AMI_model = false;
    IBIS_MODEL::_mipi_dphy_ip_used = false;
}

// The signal records outlive a generator by design, as a run is one
// process; a fuzzing process runs many, so it frees them itself.
inline void freeSignals(IBIS_MODEL& model)
{
    for (IB_IOBUF* iobuf : model._iobufs) {
        for (char* text : {iobuf->name, iobuf->site, iobuf->model, iobuf->type, iobuf->masterPin, iobuf->bank})
            delete[] text;
        for (IB_IOBUF_CONFIG* config : iobuf->configs)
            delete config;
        delete iobuf;
    }
    model._iobufs.clear();
}

struct ModelDeleter {
    void operator()(IBIS_MODEL* model) const
    {
        freeSignals(*model);
        delete model;
    }
};
typedef std::unique_ptr<IBIS_MODEL, ModelDeleter> ModelPtr;

// Runs one input. A fatal report is an expected outcome, as are the two
// out-of-range failures that the writers keep on purpose: a blank-only line
// ahead of the package block, a D-PHY model name under 13 characters.
template <class Body>
void guarded(Body body)
{
    try {
        body();
    } catch (IbsFatalExit const&) {
    } catch (std::out_of_range const& e) {
        if (std::strncmp(e.what(), "basic_string::substr", 20) != 0 &&
            std::strncmp(e.what(), "basic_string::at", 16) != 0)
            throw;
    }
}

} // namespace fuzz

#endif
