#include <cstring>

#include "driver/basibsgen.h"
#include "driver/family_table.h"
#include "driver/load_time.h"
#include "driver/messages.h"

std::string IBIS_MODEL::_input_dev_name;
bool IBIS_MODEL::_is_ncd_flow = false;
bool IBIS_MODEL::_is_brinmark_flow = false;
bool IBIS_MODEL::_is_AMI_model = false;
bool IBIS_MODEL::_mipi_dphy_ip_used = false;

namespace {
char const modelKeyTemplate[] = "lvc250axxxaaaaaaaaio";
} // namespace

IBIS_MODEL::IBIS_MODEL()
    : _missingModelCount(0),
      _keyFieldPresent(),
      _modelKeyTemplate(),
      _pinTablePending(false),
      _pinTableColumns(0),
      _ioMapFound(false)
{
}

IBIS_MODEL::IBIS_MODEL(char const* family, char const* padFile, char const* masterIbisFile)
    : IBIS_MODEL()
{
    _family = family;
    _pinTableColumns = 0;

    // Bound to this class on purpose: a derived class's file naming and
    // reading are not what a pad report needs.
    IBIS_MODEL::initFiles(padFile, masterIbisFile);
    if (!IBIS_MODEL::loadIos())
        ibsFatal(IBS_MSG_1016, {padFile});

    std::memset(_keyFieldPresent, 0, sizeof _keyFieldPresent);

    // The drive strengths a family offers follow from fragments of the
    // part name; the search sees the whole stored name, behind its NUL too.
    std::map<std::string, std::string> const drive = ibsPartDriveTable(_partName);
    if (!drive.empty())
        storeDriveTable(drive);

    _keyFieldPresent[18] = true;
    _keyFieldPresent[19] = true;
    loadPullmodeIotypes();
}

IBIS_MODEL::~IBIS_MODEL()
{
    // The signal records outlive the generator: a run is one process.
    _iobufs.clear();
}

void IBIS_MODEL::storeDriveTable(std::map<std::string, std::string> const& drive)
{
    _devIoMaps["DRIVE"] = drive;
    _keyFieldPresent[7] = true;
    std::memcpy(_modelKeyTemplate, modelKeyTemplate, sizeof modelKeyTemplate);
}

bool IBIS_MODEL::doneReadingPadFile()
{
    return !_pinTablePending;
}
