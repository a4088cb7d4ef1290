// The [Model] blocks of the design, copied from the master file.

#include "driver/basibsgen.h"
#include "driver/line_reader.h"
#include "driver/load_time.h"
#include "writer/model_index.h"

void IBIS_MODEL::writeModelInfo(std::string model)
{
    // The master is read from its top down to the model's block; no model
    // text is held in memory.
    _masterStream.open(_masterIbisFile.c_str());
    if (!isDeviceIbisFileOpen()) {
        _masterStream.clear();
        return;
    }
    ModelBlockStart const start = findModelBlocks(_masterStream, {model}).front();
    if (start.next >= 0)
        copyModelBlock(_masterStream, _designStream, start);
    _masterStream.close();
    _masterStream.clear();
}

void IBIS_MODEL::writeEndModel(std::string model)
{
    _designStream << "| End [Model] " << model << "\n";
}
