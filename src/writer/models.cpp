// The [Model] blocks of the design, copied from the master file.

#include <cstring>

#include "driver/basibsgen.h"
#include "driver/line_reader.h"
#include "driver/load_time.h"

void IBIS_MODEL::writeModelInfo(std::string model)
{
    // Each model starts again at the top of the master: no model text is
    // held in memory.
    _masterStream.open(_masterIbisFile.c_str());
    if (!isDeviceIbisFileOpen()) {
        _masterStream.clear();
        return;
    }
    char line[IBS_COPY_LINE_SIZE];
    ibsReadLine(_masterStream, line, IBS_COPY_LINE_SIZE);
    bool found = false;
    while (ibsReadLine(_masterStream, line, IBS_COPY_LINE_SIZE)) {
        if (std::strstr(line, "[Model]") != nullptr && std::strstr(line, model.c_str()) != nullptr) {
            found = true;
            break;
        }
    }
    if (found) {
        // The block runs up to the next line that holds "[Model]", its own
        // closing comment in a well-formed master, which is not copied. The
        // line behind the [Model] line is copied in any case.
        _designStream << line << "\n";
        if (ibsReadLine(_masterStream, line, IBS_COPY_LINE_SIZE)) {
            do {
                _designStream << line << "\n";
            } while (ibsReadLine(_masterStream, line, IBS_COPY_LINE_SIZE) &&
                     std::strstr(line, "[Model]") == nullptr);
        }
    }
    _masterStream.close();
    _masterStream.clear();
}

void IBIS_MODEL::writeEndModel(std::string model)
{
    _designStream << "| End [Model] " << model << "\n";
}
