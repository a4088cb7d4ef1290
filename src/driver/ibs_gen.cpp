#include <cstdio>
#include <cstring>

#include "driver/basibsgen.h"
#include "driver/load_time.h"
#include "driver/messages.h"

IBS_GEN::IBS_GEN() : IBIS_MODEL(), _design(nullptr) {}

IBS_GEN::~IBS_GEN()
{
    _iobufs.clear();
}

void IBS_GEN::init(char const* family, NC_DESIGN* design, char const* designFile,
                   char const* masterIbisFile)
{
    _missingModelCount = 0;
    _pinTablePending = false;
    _family = family;
    _pinTableColumns = 0;
    _design = design;

    initFiles(designFile, masterIbisFile);
    if (_is_AMI_model) {
        loadPcsInfo();
        return;
    }

    // A design without signals goes on: the database may still be filled
    // by a derived loader.
    loadIos();

    std::memset(_keyFieldPresent, 0, sizeof _keyFieldPresent);

    // The database carries the drive as a bare number of milliamperes.
    std::map<std::string, std::string> drive = {{"NA", "xxx"}};
    for (int mA = 2; mA <= 24; ++mA) {
        char code[8];
        std::snprintf(code, sizeof code, "%03d", mA * 10);
        drive[std::to_string(mA)] = code;
    }
    storeDriveTable(drive);
    _keyFieldPresent[18] = true;
    _keyFieldPresent[19] = true;
    loadPullmodeIotypes();
}

void IBS_GEN::run()
{
    if (_is_AMI_model) {
        write_ami_files();
        return;
    }
    if (!loadIbisModels())
        ibsFatal(IBS_MSG_1003);
    setDesignModels();
    if (!writeIbisModels(0))
        ibsReport(IBS_MSG_1004);
    if (_missingModelCount > 0)
        ibsReport(IBS_MSG_1005);
}

bool IBS_GEN::loadIos()
{
    setPartType();
    IBS_GEN::setPackage();
    IBS_GEN::setPinInfo();
    loadPinInfo();
    loadBankInfo();
    loadDiffPinInfo();
    loadSysConfigPinInfo();
    getDphyInfo();
    return !_iobufs.empty();
}

void IBS_GEN::setPartType()
{
    _partName = _design->getDevice()->getDeviceName();
    getPartName(_partName);
}

void IBS_GEN::setPackage()
{
    _packageName = _design->getDevice()->getPackage()->getName().getstring(0);
    _packagePinCount.clear();
    if (_packageName.size() < 3)
        return;
    // The first two characters never belong to the pin count.
    for (std::string::size_type i = 2; i < _packageName.size(); ++i) {
        char c = _packageName[i];
        if (c >= '0' && c <= '9')
            _packagePinCount += c;
        else if (!_packagePinCount.empty())
            break;
    }
}

// The database-driven loaders are extension points: a host class fills the
// signals, banks, differential pins and SerDes channels from NC_DESIGN.
char const* IBS_GEN::get_pio_property(NC_COMP*, char const*)
{
    return nullptr;
}
void IBS_GEN::loadPinInfo() {}
void IBS_GEN::loadDiffPinInfo() {}
void IBS_GEN::loadBankInfo() {}
void IBS_GEN::loadSysConfigPinInfo() {}
void IBS_GEN::loadPcsInfo() {}
void IBS_GEN::getDphyInfo() {}
void IBS_GEN::setPinInfo() {}

char const* IBS_GEN::get_dir_name(CM_PAD_DIRECTION_TYPE direction)
{
    if (direction == 1)
        return "IN";
    if (direction == 2)
        return "OUT";
    return "BIDI";
}
