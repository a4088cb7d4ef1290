// The rule that picks the nearest model of a missing key, kept as data: the
// key's fields and how each takes part, the directions a key may take, and
// the tie-breaks in their order.

#include <climits>
#include <cstdlib>
#include <tuple>

#include "driver/basibsgen.h"
#include "master/design_value.h"
#include "nearest/nearest_model.h"

namespace ibsnearest {
namespace {

std::string::size_type const keyLength = 20;

enum class Compare {
    Same,      // never differs: no model of another IO standard or supply
    Direction, // the model's direction must be one the key's may take
    Counted    // may differ; each differing field counts one
};

struct KeyField {
    IBIS_KEY_ATTR start;
    std::string::size_type width;
    Compare compare;
    // The naming tables that code the field, by attribute key. The first one
    // that the master has names the setting and its values; without any,
    // the first one listed names the setting and the codes stand as they are.
    char const* tables[3];
};

KeyField const keyFields[] = {
    {IBIS_KEY_IO_TYPE, 3, Compare::Same, {"IO_TYPE"}},
    {IBIS_KEY_VOLTAGE, 3, Compare::Same, {"VOLTAGE"}},
    {IBIS_KEY_SLEW, 1, Compare::Counted, {"SLEW", "SLEWRATE"}},
    {IBIS_KEY_DRIVE, 3, Compare::Counted, {"DRIVE"}},
    {IBIS_KEY_PULL, 1, Compare::Counted, {"PULL", "PULLMODE"}},
    {IBIS_KEY_IMPEDANCE, 1, Compare::Counted, {"IMP"}},
    {IBIS_KEY_TERMVCC, 1, Compare::Counted, {"TERMVCC", "TERMINATION", "MIPI"}},
    {IBIS_KEY_TERMGND, 1, Compare::Counted, {"TERMGND"}},
    {IBIS_KEY_TERMVTT, 1, Compare::Counted, {"TERMVTT"}},
    {IBIS_KEY_VCMT, 1, Compare::Counted, {"VCMT", "MULTDRIVE"}},
    {IBIS_KEY_DIFFRES, 1, Compare::Counted, {"DIFFRES", "DIFFRESISTOR"}},
    {IBIS_KEY_DIFFCUR, 1, Compare::Counted, {"DIFFCUR", "DIFFDRIVE"}},
    {IBIS_KEY_DIRECTION, 2, Compare::Direction, {"direction"}},
};

// The directions of model that a key's direction may take, and the word
// that names it. A direction not listed takes only its own.
struct DirectionRule {
    char const* code;
    char const* word;
    char const* takes[2];
};

DirectionRule const directionRules[] = {
    {"in", "in", {"in", "io"}},
    {"ou", "out", {"ou", "io"}},
    {"od", "od", {"od", "io"}},
    {"io", "io", {"io"}},
};

// Slew settings from slowest to fastest; nearness of two slews is the
// distance between their steps.
struct SlewStep {
    char const* value;
    int step;
};

SlewStep const slewSteps[] = {{"SLOW", 0}, {"MEDIUM", 1}, {"FAST", 2}};
int const offTheSlewScale = 3;

KeyField const& fieldAt(IBIS_KEY_ATTR start)
{
    for (KeyField const& field : keyFields)
        if (field.start == start)
            return field;
    return keyFields[0];
}

std::string codeOf(std::string const& name, KeyField const& field)
{
    return name.substr(field.start, field.width);
}

DirectionRule const* directionRule(std::string const& code)
{
    for (DirectionRule const& rule : directionRules)
        if (code == rule.code)
            return &rule;
    return nullptr;
}

bool directionTakes(std::string const& keyDirection, std::string const& modelDirection)
{
    DirectionRule const* rule = directionRule(keyDirection);
    if (rule == nullptr)
        return modelDirection == keyDirection;
    for (char const* takes : rule->takes)
        if (takes != nullptr && modelDirection == takes)
            return true;
    return false;
}

// The naming table of a field that the master has, and the setting's name.
std::map<std::string, std::string> const* tableOf(NamingTables const& tables,
                                                  KeyField const& field, std::string& setting)
{
    setting = field.tables[0];
    for (char const* name : field.tables) {
        if (name == nullptr)
            break;
        auto table = tables.find(name);
        if (table != tables.end()) {
            setting = name;
            return &table->second;
        }
    }
    return nullptr;
}

// The design value of a field's code: the first row of its table with that
// code, the code itself where none has it.
std::string valueOf(NamingTables const& tables, KeyField const& field, std::string const& code)
{
    if (field.compare == Compare::Direction) {
        DirectionRule const* rule = directionRule(code);
        return rule != nullptr ? rule->word : code;
    }
    std::string setting;
    return ibsDesignValue(tableOf(tables, field, setting), code);
}

// Drive codes are tenths of a milliampere; "xxx" and any other text is no
// drive at all.
bool driveOf(std::string const& code, long& tenths)
{
    if (code.empty() || code.find_first_not_of("0123456789") != std::string::npos)
        return false;
    tenths = std::strtol(code.c_str(), nullptr, 10);
    return true;
}

int slewStep(NamingTables const& tables, std::string const& code)
{
    std::string const value = valueOf(tables, fieldAt(IBIS_KEY_SLEW), code);
    for (SlewStep const& step : slewSteps)
        if (value == step.value)
            return step.step;
    return -1;
}

// Where a model stands against the key. The tie-breaks, in order: the fewest
// differing fields, the nearest drive, on an equal distance the stronger
// drive, the nearest slew, byte order of the names.
struct Standing {
    int differing = 0;
    long driveGap = 0;
    long weakness = 0; // minus the drive: the stronger sorts first
    int slewGap = 0;
    std::string const* name = nullptr;

    bool nearerThan(Standing const& other) const
    {
        return std::tie(differing, driveGap, weakness, slewGap, *name) <
               std::tie(other.differing, other.driveGap, other.weakness, other.slewGap,
                        *other.name);
    }
};

// False for a model that the rule rules out.
bool standingOf(std::string const& key, std::string const& model, NamingTables const& tables,
                Standing& standing)
{
    standing.name = &model;
    for (KeyField const& field : keyFields) {
        std::string const keyCode = codeOf(key, field), modelCode = codeOf(model, field);
        if (field.compare == Compare::Same && keyCode != modelCode)
            return false;
        if (field.compare == Compare::Direction && !directionTakes(keyCode, modelCode))
            return false;
        if (keyCode != modelCode)
            ++standing.differing;
    }

    std::string const keyDrive = codeOf(key, fieldAt(IBIS_KEY_DRIVE));
    std::string const modelDrive = codeOf(model, fieldAt(IBIS_KEY_DRIVE));
    long keyTenths = 0, modelTenths = 0;
    bool const keyDriven = driveOf(keyDrive, keyTenths);
    bool const modelDriven = driveOf(modelDrive, modelTenths);
    if (keyDrive == modelDrive)
        standing.driveGap = 0;
    else if (keyDriven && modelDriven)
        standing.driveGap = std::labs(keyTenths - modelTenths);
    else
        standing.driveGap = LONG_MAX;
    standing.weakness = modelDriven ? -modelTenths : 1;

    std::string const keySlew = codeOf(key, fieldAt(IBIS_KEY_SLEW));
    std::string const modelSlew = codeOf(model, fieldAt(IBIS_KEY_SLEW));
    if (keySlew != modelSlew) {
        int const keyStep = slewStep(tables, keySlew), modelStep = slewStep(tables, modelSlew);
        standing.slewGap = keyStep < 0 || modelStep < 0 ? offTheSlewScale
                                                        : std::abs(keyStep - modelStep);
    }
    return true;
}

} // namespace

Nearest nearestModel(std::string const& key, std::set<std::string> const& models,
                     NamingTables const& tables)
{
    Nearest nearest;
    if (key.size() != keyLength)
        return nearest;
    Standing best;
    for (std::string const& model : models) {
        Standing standing;
        if (model.size() != keyLength || model == key ||
            !standingOf(key, model, tables, standing))
            continue;
        if (best.name == nullptr || standing.nearerThan(best))
            best = standing;
    }
    if (best.name == nullptr)
        return nearest;

    nearest.model = *best.name;
    for (KeyField const& field : keyFields) {
        std::string const from = codeOf(key, field), to = codeOf(nearest.model, field);
        if (from == to)
            continue;
        Difference difference;
        tableOf(tables, field, difference.setting);
        difference.from = valueOf(tables, field, from);
        difference.to = valueOf(tables, field, to);
        nearest.differences.push_back(difference);
    }
    return nearest;
}

std::string describe(std::vector<Difference> const& differences)
{
    std::string text;
    for (Difference const& difference : differences)
        text += (text.empty() ? "" : "; ") + difference.setting + " " + difference.from + " -> " +
                difference.to;
    return text;
}

} // namespace ibsnearest
