#include "host/nc_design.h"

PM_PACKAGE::PM_PACKAGE(char const* name) : _name(name) {}

PM_DEVPIC::PM_DEVPIC(char const* deviceName, char const* packageName)
    : _deviceName(deviceName), _package(packageName)
{
}

char const* PM_DEVPIC::getDeviceName() const
{
    return _deviceName.getstring(0);
}

NC_DESIGN::NC_DESIGN(char const* deviceName, char const* packageName)
    : _device(deviceName, packageName)
{
}
