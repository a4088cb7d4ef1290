#ifndef PAD2IBIS_HOST_NC_DESIGN_H
#define PAD2IBIS_HOST_NC_DESIGN_H

#include "host/ut_regexp.h"

// Design database types of the host. The generator only passes them through
// or asks them for the device name and the package name.

enum CM_PAD_DIRECTION_TYPE {
    CM_PAD_DIRECTION_NONE = 0,
    CM_PAD_DIRECTION_IN = 1,
    CM_PAD_DIRECTION_OUT = 2,
    CM_PAD_DIRECTION_BIDI = 3
};

// The package record of a device description.
class PM_PACKAGE {
public:
    explicit PM_PACKAGE(char const* name);
    UT_STROBJ const& getName() const { return _name; }

private:
    UT_STROBJ _name;
};

// The device description of a design.
class PM_DEVPIC {
public:
    PM_DEVPIC(char const* deviceName, char const* packageName);
    char const* getDeviceName() const;
    PM_PACKAGE const* getPackage() const { return &_package; }

private:
    UT_STROBJ _deviceName;
    PM_PACKAGE _package;
};

// One component (placed instance) of a design.
class NC_COMP {
};

// An open design.
class NC_DESIGN {
public:
    NC_DESIGN(char const* deviceName, char const* packageName);
    PM_DEVPIC const* getDevice() const { return &_device; }

private:
    PM_DEVPIC _device;
};

#endif
