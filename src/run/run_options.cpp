#include "driver/basibsgen.h"
#include "host/msgmanager.h"
#include "run/run_flows.h"
#include "writer/design_file_options.h"

void applyRunOptions(RunOptions const& options)
{
    if (options.msgflow)
        UT_MSGMAN::m_msgFlow = 1;
    IBIS_MODEL::_is_ncd_flow = options.ncd;
    IBIS_MODEL::_is_brinmark_flow = options.brinmark;
    IBIS_MODEL::_mipi_dphy_ip_used = options.dphy;
    IbsDesignFileOptions designFile;
    designFile.componentName = options.componentName;
    designFile.signalNameWidth = options.truncate;
    designFile.allModels = options.allModels;
    designFile.modelSelectors = options.modelSelector;
    ibsSetDesignFileOptions(designFile);
}
