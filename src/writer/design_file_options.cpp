// The host's choices for the design IBIS file, held for the runs to come.

#include "writer/design_file_options.h"

#include "driver/basibsgen.h"
#include "writer/option_sections.h"
#include "writer/pin_rows.h"

namespace {

IbsDesignFileOptions& current()
{
    static IbsDesignFileOptions options;
    return options;
}

} // namespace

void ibsSetDesignFileOptions(IbsDesignFileOptions const& options)
{
    current() = options;
}

void ibsSetDesignFileOptions(IbsDesignFileOptions&& options)
{
    current() = std::move(options);
}

IbsDesignFileOptions const& ibsDesignFileOptions()
{
    return current();
}

std::vector<std::string> ibsPinSignalNames(IBIS_MODEL const& generator)
{
    std::vector<std::string> names;
    for (PinRowName const& row :
         pinRowNames(generator._iobufs, generator._diffPinMap, current().signalNameWidth))
        names.push_back(row.row ? row.stem + (row.pair ? "+" : "") : "");
    return names;
}

std::vector<std::string> ibsPinRowPins(IBIS_MODEL const& generator)
{
    std::vector<std::string> pins;
    for (PinRowLine const& row : pinRowLines(generator))
        pins.push_back(row.pin);
    return pins;
}
