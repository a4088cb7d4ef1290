// The family rules of the generator.

#include "driver/family_table.h"

#include <cstring>

#include "driver/load_time.h"

namespace {

bool holds(std::string const& text, char const* fragment)
{
    return text.find(fragment) != std::string::npos;
}

bool holdsOneOf(std::string const& text, std::vector<char const*> const& fragments)
{
    for (char const* fragment : fragments)
        if (holds(text, fragment))
            return true;
    return false;
}

// A part type's family: it holds one of the fragments (at its start, for a
// rule so bound), and, where the rule names more, one of those as well. The
// first rule that holds wins: "ZR2-" beats every other fragment, and the
// "KRD" parts share the families of the "HZU" parts.
struct PartTypeRule {
    std::vector<char const*> fragments;
    std::vector<char const*> also;
    bool atStart;
    char const* family;
};

PartTypeRule const kPartTypeRules[] = {
    {{"ZR2-"}, {}, false, "KVZR2"},
    {{"KVA3-", "KBA3-"}, {}, false, "KVA3"},
    {{"KVA4-"}, {}, false, "KVA4"},
    {{"KVAN"}, {}, false, "KVAN"},
    {{"KVZR"}, {}, false, "KVZR"},
    {{"HZU"}, {"HZU3", "HZU2-"}, false, "HZU2"},
    {{"HZU"}, {}, false, "HZU"},
    {{"KVTN"}, {}, false, "KVTN"},
    {{"KVA2"}, {}, false, "KVA2"},
    {{"KRD"}, {"KRDH2"}, false, "HZU2"},
    {{"KRD"}, {}, false, "HZU"},
    {{"KJ"}, {}, true, "KJ"},
};

std::vector<IbsFamilyRules> const& familyRules()
{
    using F = IbsFastSlew;
    static std::vector<IbsFamilyRules> const rules = [] {
        std::vector<IbsFamilyRules> rows(14);
        rows[0].family = "KVZR2";
        rows[0].fastSlew = F::Fast;
        rows[1].family = "KVA3";
        rows[1].fastSlew = F::Fast;
        rows[1].keeperIsBushold = true;
        rows[1].fixedVoltages = {{"HYPT", "120"}};
        rows[2].family = "KVA4";
        rows[2].fastSlew = F::TablePci;
        rows[2].clampIsPciClamp = true;
        rows[2].busholdIsKeeper = true;
        rows[2].fixedVoltages = {{"TRLVDS", "330"}};
        rows[3].family = "KVAN";
        rows[3].outputsAsBidir = true;
        rows[3].fastSlew = F::FastPciOutput;
        rows[4].family = "KVZR";
        rows[4].outputsAsBidir = true;
        rows[4].fastSlew = F::FastPciOutput;
        rows[5].family = "HZU2";
        rows[5].fastSlew = F::Fast;
        rows[5].busholdIsKeeper = true;
        rows[5].cutsFailsafe = true;
        rows[5].bankImpedance = true;
        rows[5].fixedVoltages = {{"MIPI_LP", "120"}};
        rows[6].family = "HZU";
        rows[6].outputsAsBidir = true;
        rows[6].fastSlew = F::Fast;
        rows[7].family = "KVTN";
        rows[7].trueDifferentialNote = true;
        rows[8].family = "KVA2";
        rows[8].fastSlew = F::Fast;
        rows[9].family = "KJ";
        rows[9].clampOnlyPull = true;
        rows[9].fixedVoltages = {{"SLVS", "120"}, {"SUBLVDS", "250"}, {"MIPI", "120"}};
        rows[10].family = "HZU3";
        rows[10].fastSlew = F::Fast;
        rows[10].busholdIsKeeper = true;
        rows[10].cutsFailsafe = true;
        rows[10].bankImpedance = true;
        rows[11].family = "KVA4Y";
        rows[11].clampOnlyPull = true;
        rows[11].fixedVoltages = {{"SLVS", "120"}, {"MIPI", "150"}};
        rows[12].family = "KVA5Y";
        rows[12].clampOnlyPull = true;
        rows[12].fixedVoltages = {{"SLVS", "120"}, {"MIPI", "150"}};
        rows[13].family = ""; // any other word
        return rows;
    }();
    return rules;
}

} // namespace

std::vector<char const*> const& ibsFamilyWords()
{
    static std::vector<char const*> const words = [] {
        std::vector<char const*> list;
        for (IbsFamilyRules const& rules : familyRules())
            if (rules.family[0] != '\0')
                list.push_back(rules.family);
        return list;
    }();
    return words;
}

std::string ibsFamilyOfPartType(std::string const& partType)
{
    for (PartTypeRule const& rule : kPartTypeRules) {
        bool const found = rule.atStart ? partType.compare(0, std::strlen(rule.fragments[0]), rule.fragments[0]) == 0
                                        : holdsOneOf(partType, rule.fragments);
        if (found && (rule.also.empty() || holdsOneOf(partType, rule.also)))
            return rule.family;
    }
    return "";
}

char const* ibsFamilyPartName(std::string const& partType)
{
    for (char const* prefix : {"KVA4Y", "KBA4Y", "KVA5Y", "KBA5Y"})
        if (partType.compare(0, std::strlen(prefix), prefix) == 0)
            return "MORVALLE";
    return nullptr;
}

bool ibsPartKeepsItsName(std::string const& partType)
{
    return holds(partType, "ZU3KV") || holds(partType, "KJ");
}

IbsFamilyRules const& ibsFamilyRules(std::string const& family)
{
    std::vector<IbsFamilyRules> const& rules = familyRules();
    for (IbsFamilyRules const& row : rules)
        if (family == row.family)
            return row;
    return rules.back();
}

std::map<std::string, std::string> ibsPartDriveTable(std::string const& partName)
{
    bool const hzu = holds(partName, "HZU") || holds(partName, "KRD");
    bool const a3 = holds(partName, "A3");
    bool const krdh2 = holds(partName, "KRDH2");
    if (!(holds(partName, "AN") || holds(partName, "ZR") || holds(partName, "TN") || hzu || a3 ||
          holds(partName, "A") || krdh2))
        return {};
    std::map<std::string, std::string> drive = {
        {"NA", "xxx"},  {"2mA", "020"},  {"4mA", "040"},  {"6mA", "060"},
        {"8mA", "080"}, {"12mA", "120"}, {"16mA", "160"}, {"20mA", "200"},
    };
    // A part that begins with "HZU3" does not get 24mA; one that holds it
    // further on does.
    std::string::size_type const hzu3 = partName.find("HZU3");
    if (holds(partName, "HZU2") || holds(partName, "A4") || krdh2 || (hzu3 != std::string::npos && hzu3 > 0))
        drive["24mA"] = "240";
    if (hzu)
        drive["14mA"] = "140";
    if (a3)
        drive["10mA"] = "100";
    return drive;
}

IbsNamingNeeds ibsPartNamingNeeds(std::string const& partName)
{
    IbsNamingNeeds needs;
    bool const hzu = holds(partName, "HZU") || holds(partName, "KRD");
    bool const morvalleOrKj = holds(partName, "MORVALLE") || holds(partName, "KJ");
    needs.known = holds(partName, "AN") || holds(partName, "ZR") || hzu || holds(partName, "TN") ||
                  holds(partName, "A3") || morvalleOrKj || holds(partName, "A") || holds(partName, "KRDH2");
    if (holds(partName, "A3")) {
        needs.positions = {15, 17};
        needs.copyDiffResistor = true;
    } else if (morvalleOrKj) {
        needs.positions = {16, 17, 12, 11};
        needs.copyDiffDrive = true;
        needs.copyDiffResistor = true;
    } else if (holds(partName, "HZU2") || holds(partName, "KRDH2") || holds(partName, "HZU3")) {
        needs.positions = {11, 17};
        needs.copyDiffResistor = true;
        needs.copyAhead = true;
    }
    return needs;
}

bool ibsComponentFitsPart(std::string const& part, std::string const& component)
{
    std::string::size_type const none = std::string::npos;
    std::string::size_type result = none;
    if (holds(part, "AN"))
        result = component.find("AN");
    // The first rule that holds; the last asks only where nothing was found
    // so far.
    if (holds(part, "ANR")) {
        result = component.find("ANR");
    } else if (holds(part, "ZR")) {
        result = component.find("ZR");
    } else if (holds(part, "HZU") || holds(part, "KRD")) {
        for (char const* fragment : {"KRDH10", "KRDH20", "KRDH21", "ZU2", "ZU3"}) {
            result = component.find(fragment);
            if (result != none)
                break;
        }
    } else if (holds(part, "TN")) {
        result = component.find("TN");
    } else if (holds(part, "KJ")) {
        result = component.find("KJ");
    } else if (holds(part, "A3")) {
        result = component.find("ANR3");
    } else if (holds(part, "A4")) {
        result = component.find("ANR4");
    } else if (holds(part, "A") && result == none) {
        result = component.find("A");
    }
    if (result != none)
        return true;
    return part == component;
}

IbsDeviceRules const& ibsDeviceRules(std::string const& partType)
{
    static IbsDeviceRules const rules[] = {
        {"KRDH20", false, nullptr, 0},
        {"KRDH21", true, "_krdh21.ibs", 1},
        {"", true, nullptr, 0}, // any other part
    };
    for (IbsDeviceRules const& row : rules)
        if (partType == row.device)
            return row;
    return rules[2];
}

bool ibsPartNamesItsComponent(std::string const& partName)
{
    return partName == "KRDH20" || partName == "KRDH21";
}

bool ibsPartSaysMissingPackageFile(std::string const& partName)
{
    return partName == "MORVALLE";
}
