// Small family rules kept beside the pad report readers.

#include "driver/basibsgen.h"
#include "driver/load_time.h"
#include "pad/family_rules.h"

std::vector<char const*> const& ibsFamilyWords()
{
    static std::vector<char const*> const words = {"KVZR2", "KVA3", "KVA4", "KVAN",  "KVZR",  "HZU2", "HZU",
                                                   "KVTN",  "KVA2", "KJ",   "HZU3", "KVA4Y", "KVA5Y"};
    return words;
}

void IBIS_MODEL::loadPullmodeIotypes()
{
    _pullmodeIotypes.insert("LVCMOS");
    _pullmodeIotypes.insert("LVTTL");
    _pullmodeIotypes.insert("AGP");
    _pullmodeIotypes.insert("PCI");
}

// The families whose master files keep no separate output models.
bool IBIS_MODEL::keepOutAsOu()
{
    return !(_family == "KVAN" || _family == "KVZR" || _family == "HZU");
}

void IBIS_MODEL::strip_off_leading_underscores(std::string& value)
{
    if (value.empty())
        return;
    if (_family == "KVA3" && value == "KEEPER") {
        value = "BUSHOLD";
        return;
    }
    if (value[0] == '_') {
        // A suffix with no pull value in front of it.
        value.erase(0, 1);
    } else {
        if ((_family == "HZU2" || _family == "HZU3") && value.compare(0, 9, "FAILSAFE_") == 0)
            value.erase(0, 9);
        if (value.compare(0, 5, "NONE_") == 0)
            value.erase(0, 5);
    }
    // These families state nothing but the clamp in their pull field.
    if (_family == "KVA4Y" || _family == "KVA5Y" || _family == "KJ")
        value = value.find("CLAMP") != std::string::npos ? "CLAMP" : "NONE";
}
