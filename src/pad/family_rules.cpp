// Small family rules kept beside the pad report readers: the io types that
// take a pull mode, the families that keep no output models, and the pull
// value's clean-up; what each family does stands in the family table.

#include "driver/basibsgen.h"
#include "driver/family_table.h"
#include "driver/load_time.h"

void IBIS_MODEL::loadPullmodeIotypes()
{
    _pullmodeIotypes.insert("LVCMOS");
    _pullmodeIotypes.insert("LVTTL");
    _pullmodeIotypes.insert("AGP");
    _pullmodeIotypes.insert("PCI");
}

bool IBIS_MODEL::keepOutAsOu()
{
    return !ibsFamilyRules(_family).outputsAsBidir;
}

void IBIS_MODEL::strip_off_leading_underscores(std::string& value)
{
    if (value.empty())
        return;
    IbsFamilyRules const& rules = ibsFamilyRules(_family);
    if (rules.keeperIsBushold && value == "KEEPER") {
        value = "BUSHOLD";
        return;
    }
    if (value[0] == '_') {
        // A suffix with no pull value in front of it.
        value.erase(0, 1);
    } else {
        if (rules.cutsFailsafe && value.compare(0, 9, "FAILSAFE_") == 0)
            value.erase(0, 9);
        if (value.compare(0, 5, "NONE_") == 0)
            value.erase(0, 5);
    }
    if (rules.clampOnlyPull)
        value = value.find("CLAMP") != std::string::npos ? "CLAMP" : "NONE";
}
