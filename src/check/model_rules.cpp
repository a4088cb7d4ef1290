// The rules of one [Model] block: sub-parameters, the keywords of its model
// type, I-V tables, [Ramp] and waveforms.

#include "check/model_rules.h"

#include <cctype>
#include <cstdio>
#include <unordered_map>

#include "check/check_text.h"
#include "ibis/ibis_syntax.h"

namespace ibischeck {

namespace {

using ibis::Item;
using ibis::Number;
using ibis::Row;
using ibis::Section;

// What a model type does, and so which keywords it needs.
enum TypeFlag : unsigned {
    Drives = 1u << 0,
    Receives = 1u << 1,
    Enables = 1u << 2,
    NeedsPullup = 1u << 3,
    NeedsPulldown = 1u << 4,
    ZeroPullup = 1u << 5,   // [Pullup] only with zero currents
    ZeroPulldown = 1u << 6, // [Pulldown] only with zero currents
    Terminator = 1u << 7,
    Series = 1u << 8,
    Switch = 1u << 9,
    Diff = 1u << 10,
    AlwaysDriving = 1u << 11, // no Non-Driving submodel
};

struct ModelType {
    char const* name;
    unsigned flags;
};

unsigned const kPushPull = Drives | NeedsPullup | NeedsPulldown;
unsigned const kSink = Drives | NeedsPulldown | ZeroPullup;
unsigned const kSource = Drives | NeedsPullup | ZeroPulldown;
unsigned const kInOut = Receives | Enables;

ModelType const kModelTypes[] = {
    {"Input", Receives},
    {"Output", kPushPull | AlwaysDriving},
    {"I/O", kPushPull | kInOut},
    {"3-state", kPushPull | Enables},
    {"Open_drain", kSink | AlwaysDriving},
    {"I/O_open_drain", kSink | kInOut},
    {"Open_sink", kSink | AlwaysDriving},
    {"I/O_open_sink", kSink | kInOut},
    {"Open_source", kSource | AlwaysDriving},
    {"I/O_open_source", kSource | kInOut},
    {"Input_ECL", Receives},
    {"Output_ECL", kPushPull},
    {"I/O_ECL", kPushPull | kInOut},
    {"3-state_ECL", kPushPull | Enables},
    {"Terminator", Terminator},
    {"Series", Series},
    {"Series_switch", Series | Switch},
    {"Input_diff", Diff | Receives},
    {"Output_diff", Diff | Drives},
    {"I/O_diff", Diff | Drives | kInOut},
    {"3-state_diff", Diff | Drives | Enables},
};

ModelType const* findType(std::string const& value)
{
    for (ModelType const& type : kModelTypes)
        if (ibis::sameWord(value, type.name))
            return &type;
    return nullptr;
}

enum class Kind { Range, IvTable, Ramp, Waveform, Other };

// The keywords a [Model] block may hold. `only`: the type flag a model
// needs for it; `strict`: a second copy in one block (or in one [On] or
// [Off]) is an error rather than a warning; `repeats`: may stand many times.
struct Keyword {
    char const* key;
    Kind kind;
    unsigned only;
    bool strict;
    bool repeats;
};

Keyword const kKeywords[] = {
    {"temperature range", Kind::Range, 0, false, false},
    {"voltage range", Kind::Range, 0, false, false},
    {"pullup reference", Kind::Range, 0, false, false},
    {"pulldown reference", Kind::Range, 0, false, false},
    {"power clamp reference", Kind::Range, 0, false, false},
    {"gnd clamp reference", Kind::Range, 0, false, false},
    {"external reference", Kind::Other, 0, false, false},
    {"ttgnd", Kind::Range, 0, false, false},
    {"ttpower", Kind::Range, 0, false, false},
    {"c comp corner", Kind::Other, 0, false, false},
    {"pulldown", Kind::IvTable, 0, false, false},
    {"pullup", Kind::IvTable, 0, false, false},
    {"gnd clamp", Kind::IvTable, 0, false, false},
    {"power clamp", Kind::IvTable, 0, false, false},
    {"isso pu", Kind::IvTable, 0, false, false},
    {"isso pd", Kind::IvTable, 0, false, false},
    {"rgnd", Kind::Range, Terminator, true, false},
    {"rpower", Kind::Range, Terminator, true, false},
    {"rac", Kind::Range, Terminator, true, false},
    {"cac", Kind::Range, Terminator, true, false},
    {"r series", Kind::Range, Series, true, false},
    {"l series", Kind::Range, Series, true, false},
    {"rl series", Kind::Range, Series, true, false},
    {"c series", Kind::Range, Series, true, false},
    {"lc series", Kind::Range, Series, true, false},
    {"rc series", Kind::Range, Series, true, false},
    {"series current", Kind::IvTable, Series, true, false},
    {"series mosfet", Kind::IvTable, Series, false, true},
    {"on", Kind::Other, Switch, false, false},
    {"off", Kind::Other, Switch, false, false},
    {"ramp", Kind::Ramp, 0, false, false},
    {"rising waveform", Kind::Waveform, 0, false, true},
    {"falling waveform", Kind::Waveform, 0, false, true},
    {"composite current", Kind::Other, 0, false, true},
    {"model spec", Kind::Other, 0, false, false},
    {"receiver thresholds", Kind::Other, Receives, false, false},
    {"add submodel", Kind::Other, 0, false, true},
    {"driver schedule", Kind::Other, 0, false, false},
    {"algorithmic model", Kind::Other, 0, false, false},
    {"end algorithmic model", Kind::Other, 0, false, false},
    {"external model", Kind::Other, 0, false, false},
    {"end external model", Kind::Other, 0, false, false},
};

Keyword const* findKeyword(std::string const& key)
{
    static std::unordered_map<std::string_view, Keyword const*> const keywords = [] {
        std::unordered_map<std::string_view, Keyword const*> map;
        for (Keyword const& keyword : kKeywords)
            map.emplace(keyword.key, &keyword);
        return map;
    }();
    auto const found = keywords.find(key);
    return found != keywords.end() ? found->second : nullptr;
}

std::string number(double value)
{
    char text[32];
    std::snprintf(text, sizeof text, "%g", value);
    return text;
}

char const* const kColumns[] = {"typ", "min", "max"};

// A sub-parameter's name in lower case, as the rules compare it.
std::string lowered(std::string text)
{
    for (char& c : text)
        c = ibis::lowerCase(c);
    return text;
}

// Names and the line where each first stands, for the few names of one
// block or section: a list, searched from its start.
class FirstLines {
public:
    FirstLines() { _names.reserve(16); }

    // Adds name at line when it is new and returns 0; otherwise returns the
    // line where it stood before.
    int add(std::string_view name, int line)
    {
        if (int const first = this->line(name))
            return first;
        _names.emplace_back(name, line);
        return 0;
    }
    bool has(std::string_view name) const { return line(name) != 0; }
    // The line where name first stands, 0 for a name not added.
    int line(std::string_view name) const
    {
        for (auto const& [known, at] : _names)
            if (known == name)
                return at;
        return 0;
    }
    void clear() { _names.clear(); }

private:
    std::vector<std::pair<std::string, int>> _names;
};

// A sub-parameter line: "Vinl = 0.8V", "Vinl=0.8V", "C_comp 2p 1p 3p".
struct SubParameter {
    std::string name;
    std::vector<std::string> values;
    bool equals = false;
    int line = 0;
};

SubParameter subParameter(Item const& item)
{
    SubParameter sub;
    sub.line = item.line;
    std::vector<std::string> const& fields = item.fields;
    std::string::size_type const at = fields[0].find('=');
    auto next = fields.begin() + 1; // the first field behind the name and its "="
    sub.values.reserve(fields.size());
    if (at != std::string::npos) {
        sub.equals = true;
        sub.name = fields[0].substr(0, at);
        if (at + 1 < fields[0].size())
            sub.values.push_back(fields[0].substr(at + 1));
    } else {
        sub.name = fields[0];
        if (fields.size() > 1 && fields[1][0] == '=') {
            sub.equals = true;
            if (fields[1].size() > 1)
                sub.values.push_back(fields[1].substr(1));
            ++next;
        }
    }
    sub.values.insert(sub.values.end(), next, fields.end());
    return sub;
}

class ModelRules {
public:
    ModelRules(ibis::Model const& model, ModelContext const& context, std::vector<Finding>& findings)
        : _model(model), _context(context), _findings(findings)
    {
    }

    void run();

private:
    void error(int line, std::string text) { addError(_findings, line, std::move(text)); }
    void warning(int line, std::string text) { addWarning(_findings, line, std::move(text)); }

    void checkName();
    void checkSubParameters();
    void checkSubParameter(SubParameter const& sub);
    void checkSingleValue(SubParameter const& sub, double* value);
    void checkSections();
    void checkSection(Section const& section, Keyword const* keyword);
    void checkTable(Section const& section, bool waveform);
    // What the rows of a table have shown so far.
    struct TableScan {
        std::string const& what;
        char const* index; // "voltage" or "time"
        bool zeroOnly;     // the model type allows only zero currents here
        bool zeroSeen = false;
    };
    // The findings of a row that is not the usual one: a number of fields
    // other than four, a cell that is no number, a current not zero. Tells
    // which of typ, min and max (bits 0 to 2) hold numbers.
    [[gnu::cold]] unsigned checkCells(Row const& row, TableScan& scan);
    // The finding of the first row whose index repeats the one above or
    // goes the wrong way.
    [[gnu::cold]] void outOfOrder(Row const& row, Row const& previous, TableScan const& scan, bool waveform,
                                  bool repeats);
    void checkRamp(Section const& section);
    void checkWaveform(Section const& section);
    void checkSubmodel(Section const& section);
    void checkPresence();

    bool has(char const* key) const { return _model.section(key) != nullptr; }
    std::string typeShown() const { return _type != nullptr ? _type->name : "?"; }

    ibis::Model const& _model;
    ModelContext const& _context;
    std::vector<Finding>& _findings;
    ModelType const* _type = nullptr;
    unsigned _flags = 0;
    FirstLines _subLines; // lower-case sub-parameters
    std::vector<Keyword const*> _keywords; // of each section, as checkSubParameters() found them
    double _vinl = 0, _vinh = 0;
    bool _hasVinl = false, _hasVinh = false;
};

void ModelRules::run()
{
    checkName();
    checkSubParameters();
    checkSections();
    checkPresence();
}

void ModelRules::checkName()
{
    std::string const& name = _model.name;
    if (name.empty()) {
        error(_model.line, "[Model] has no name");
        return;
    }
    std::size_t const width = _context.version < 4.2 ? 20 : 40;
    if (name.size() > width)
        error(_model.line, "[Model] name " + shown(name) + " has " + std::to_string(name.size()) +
                               " characters; at most " + std::to_string(width));
}

void ModelRules::checkSubParameters()
{
    // Sub-parameters stand behind the [Model] line, and may stand behind a
    // one-line keyword such as [Voltage Range] as well.
    for (Item const& item : _model.head)
        checkSubParameter(subParameter(item));
    for (Section const& section : _model.sections) {
        _keywords.push_back(findKeyword(section.key));
        if (_keywords.back() != nullptr && _keywords.back()->kind == Kind::Range)
            for (Item const& item : section.items)
                checkSubParameter(subParameter(item));
    }
    if (_type == nullptr && !_subLines.has("model_type"))
        error(_model.line, "[Model] " + _model.name + " has no Model_type");
    if (_hasVinl && _hasVinh && _vinl >= _vinh)
        warning(_subLines.line("vinl"), "Vinl " + number(_vinl) + " is not below Vinh " + number(_vinh));
}

void ModelRules::checkSubParameter(SubParameter const& sub)
{
    std::string const lower = lowered(sub.name);
    std::string_view const name = lower; // compared with words below: by length first
    if (int const first = _subLines.add(lower, sub.line)) {
        warning(sub.line, sub.name + " stands twice (first at line " + std::to_string(first) + ")");
        return;
    }
    std::string const value = sub.values.size() == 1 ? sub.values[0] : "";
    if (name == "model_type") {
        _type = findType(value);
        if (_type == nullptr)
            error(sub.line, "Model_type " + shown(ibis::joinFields(sub.values)) + " is not an IBIS model type");
        else
            _flags = _type->flags;
    } else if (name == "polarity") {
        if (!ibis::sameWord(value, "Non-Inverting") && !ibis::sameWord(value, "Inverting"))
            error(sub.line,
                  "Polarity " + shown(ibis::joinFields(sub.values)) + " is neither Non-Inverting nor Inverting");
    } else if (name == "enable") {
        if (!ibis::sameWord(value, "Active-High") && !ibis::sameWord(value, "Active-Low"))
            error(sub.line,
                  "Enable " + shown(ibis::joinFields(sub.values)) + " is neither Active-High nor Active-Low");
    } else if (name == "vinl" || name == "vinh") {
        double v = 0;
        checkSingleValue(sub, &v);
        (name == "vinl" ? _vinl : _vinh) = v;
        (name == "vinl" ? _hasVinl : _hasVinh) = sub.values.size() == 1 && ibis::parseNumber(value).isValue();
    } else if (name == "cref" || name == "rref" || name == "cref_rising" || name == "cref_falling" ||
               name == "rref_rising" || name == "rref_falling" || name == "cref_diff" || name == "rref_diff") {
        double v = 0;
        checkSingleValue(sub, &v);
        if (v < 0)
            warning(sub.line, sub.name + " " + number(v) + " is negative");
    } else if (name == "vmeas" || name == "vref" || name == "vmeas_rising" || name == "vmeas_falling" ||
               name == "vref_rising" || name == "vref_falling") {
        checkSingleValue(sub, nullptr);
    } else if (name == "c_comp" || name == "c_comp_pullup" || name == "c_comp_pulldown" ||
               name == "c_comp_power_clamp" || name == "c_comp_gnd_clamp") {
        if (sub.equals)
            warning(sub.line, sub.name + " is written with \"=\"; its typ, min and max stand in columns");
        if (checkTypMinMax(sub.values, sub.line, sub.name, _findings))
            for (std::size_t i = 0; i < 3; ++i) {
                Number const n = ibis::parseNumber(sub.values[i]);
                if (n.isValue() && n.value < 0) {
                    warning(sub.line, sub.name + " " + kColumns[i] + " " + number(n.value) + " is negative");
                    break;
                }
            }
    } else {
        warning(sub.line, "unknown sub-parameter " + shown(sub.name) + " in [Model] " + _model.name);
    }
}

void ModelRules::checkSingleValue(SubParameter const& sub, double* value)
{
    if (!sub.equals)
        warning(sub.line, sub.name + " is written without \"=\"; parsers read \"" + sub.name + " = value\"");
    if (sub.values.size() != 1) {
        error(sub.line, sub.name + " needs one value; it has " + std::to_string(sub.values.size()));
        return;
    }
    Number const n = ibis::parseNumber(sub.values[0]);
    if (!n.isValue())
        error(sub.line, sub.name + " value " + shown(sub.values[0]) + " is not a number");
    else if (value != nullptr)
        *value = n.value;
}

void ModelRules::checkSections()
{
    FirstLines seen; // keys, within one [On] or [Off]
    for (std::size_t i = 0; i < _model.sections.size(); ++i) {
        Section const& section = _model.sections[i];
        Keyword const* keyword = _keywords[i];
        if (keyword == nullptr) {
            warning(section.line, "unknown keyword " + shown(section.shown) + " in [Model] " + _model.name);
            continue;
        }
        if (section.key == "on" || section.key == "off")
            seen.clear();
        int const first = seen.add(section.key, section.line);
        if (first != 0 && !keyword->repeats) {
            std::string const text = section.shown + " stands twice in [Model] " + _model.name + " (first at line " +
                                     std::to_string(first) + ")";
            if (keyword->strict)
                error(section.line, text);
            else
                warning(section.line, text);
        }
        checkSection(section, keyword);
    }
}

void ModelRules::checkSection(Section const& section, Keyword const* keyword)
{
    if (_type != nullptr && keyword->only != 0 && (_flags & keyword->only) == 0) {
        char const* const owner = keyword->only == Terminator ? "Terminator models"
                                  : keyword->only == Series   ? "Series and Series_switch models"
                                  : keyword->only == Switch   ? "Series_switch models"
                                                              : "models that receive";
        warning(section.line, section.shown + " belongs to " + owner + ", not to type " + _type->name);
    }
    if (section.key == "algorithmic model" && (_flags & (Terminator | Series)) != 0)
        error(section.line, "[Algorithmic Model] is not allowed in a model of type " + typeShown());
    switch (keyword->kind) {
    case Kind::Range:
        checkTypMinMax(section.args, section.line, section.shown, _findings);
        for (Row const& row : section.rows)
            error(row.line, "line under " + section.shown + " is no sub-parameter; its values stand on the keyword line");
        break;
    case Kind::IvTable:
        checkTable(section, false);
        break;
    case Kind::Ramp:
        checkRamp(section);
        break;
    case Kind::Waveform:
        checkWaveform(section);
        break;
    case Kind::Other:
        if (section.key == "add submodel")
            checkSubmodel(section);
        break;
    }
}

void ModelRules::checkTable(Section const& section, bool waveform)
{
    std::string const& what = section.shown;
    char const* const index = waveform ? "time" : "voltage";
    if (!waveform)
        for (Item const& item : section.items)
            if (!(section.key == "series mosfet" && ibis::sameWord(subParameter(item).name, "Vds")))
                error(item.line, what + " line " + shown(item.fields[0]) + " is not a row of numbers");

    std::size_t const rows = section.rows.size();
    std::size_t const limit = waveform ? (_context.version < 4.0 ? 100 : 1000) : 100;
    char const* const table = waveform ? "a waveform" : "an I-V table";
    if (rows < 2)
        error(section.line, what + " has " + std::to_string(rows) + (rows == 1 ? " row" : " rows") + "; " + table +
                                " needs at least 2");
    else if (rows > limit)
        error(section.line, what + " has " + std::to_string(rows) + " rows; " + table + " holds at most " +
                                std::to_string(limit));

    // Only zero currents in the table that an open model type does not use.
    bool const zeroOnly = readsEveryValue(section.key) &&
                          (_flags & (section.key == "pullup" ? ZeroPullup : ZeroPulldown)) != 0;
    TableScan scan{section.shown, index, zeroOnly};
    unsigned columnData = 0; // bit i: column i (typ, min, max) holds a number
    bool ordered = true;
    Row const* previous = nullptr; // the last row with an index
    double before = 0;             // its index
    int direction = 0;
    for (Row const& row : section.rows) {
        Number const* const cells = row.cells;
        double const at = cells[0].value;
        if (row.fields == 4 && !zeroOnly && cells[0].kind == Number::Value && cells[1].kind != Number::Invalid &&
            cells[2].kind != Number::Invalid && cells[3].kind != Number::Invalid) {
            // The usual row: nothing to say about its cells.
            columnData |= (cells[1].isValue() ? 1u : 0u) | (cells[2].isValue() ? 2u : 0u) |
                          (cells[3].isValue() ? 4u : 0u);
        } else {
            columnData |= checkCells(row, scan);
            if (!cells[0].isValue())
                continue;
        }
        if (ordered && previous != nullptr) {
            double const step = at - before;
            if (step == 0 || (waveform ? step < 0 : direction != 0 && (step > 0 ? 1 : -1) != direction)) {
                ordered = false;
                outOfOrder(row, *previous, scan, waveform, step == 0);
            }
            direction = step > 0 ? 1 : -1;
        }
        previous = &row;
        before = at;
    }
    if (rows == 0)
        return;
    Row const* const ends[] = {&section.rows.front(), &section.rows.back()};
    for (int e = 0; e < (rows > 1 ? 2 : 1); ++e) {
        Row const& row = *ends[e];
        char const* const which = e == 0 ? "first" : "last";
        if (row.fields > 1 && row.cells[1].kind == Number::NotAvailable)
            error(row.line, what + " typ is NA in its " + which + " row; it needs a number there");
        for (int i = 2; i < 4; ++i)
            if ((columnData >> (i - 1) & 1u) != 0 && row.fields > i && row.cells[i].kind == Number::NotAvailable)
                warning(row.line, what + " " + kColumns[i - 1] + " is NA in its " + which +
                                      " row, while the column has data");
    }
}

unsigned ModelRules::checkCells(Row const& row, TableScan& scan)
{
    unsigned columnData = 0;
    std::string const& what = scan.what;
    char const* const index = scan.index;
    if (row.fields != 4)
        error(row.line, what + " row of " + std::to_string(row.fields) + (row.fields == 1 ? " column; " : " columns; ") +
                            index + ", typ, min and max make four");
    Number const& at = row.cells[0];
    if (at.kind == Number::NotAvailable)
        error(row.line, what + " " + index + " is NA; the " + index + " column needs numbers");
    else if (at.kind == Number::Invalid && row.fields > 0)
        error(row.line, what + " " + index + " is not a number");
    for (int i = 1; i < 4 && i < row.fields; ++i) {
        Number const& cell = row.cells[i];
        if (cell.kind == Number::Invalid)
            error(row.line, what + " " + kColumns[i - 1] + " is not a number");
        columnData |= cell.isValue() ? 1u << (i - 1) : 0u;
        if (scan.zeroOnly && !scan.zeroSeen && cell.isValue() && cell.value != 0) {
            scan.zeroSeen = true;
            error(row.line, what + " current " + number(cell.value) + " in a model of type " + typeShown() +
                                "; only zero currents may stand here");
        }
    }
    return columnData;
}

void ModelRules::outOfOrder(Row const& row, Row const& previous, TableScan const& scan, bool waveform, bool repeats)
{
    std::string const& what = scan.what;
    std::string const index = scan.index;
    double const at = row.cells[0].value, before = previous.cells[0].value;
    if (repeats)
        error(row.line, what + " " + index + " " + number(at) + " repeats line " + std::to_string(previous.line));
    else
        error(row.line, what + " " + index + " " + number(at) + " follows " + number(before) + " (line " +
                            std::to_string(previous.line) + "); the " + index +
                            (waveform ? " column must rise" : "s must rise or fall") + " throughout");
}

// One [Ramp] corner: "dV/dt", both numbers, dt above 0.
void checkFraction(std::string const& field, int line, std::string const& what, std::vector<Finding>& findings)
{
    std::string::size_type const slash = field.find('/');
    Number const dv = ibis::parseNumber(field.substr(0, slash));
    Number const dt = slash == std::string::npos ? Number() : ibis::parseNumber(field.substr(slash + 1));
    if (!dv.isValue() || !dt.isValue())
        addError(findings, line, what + " " + shown(field) + " is not a dV/dt fraction");
    else if (dt.value <= 0)
        addError(findings, line, what + " " + shown(field) + " has a dt that is not above 0");
    else if (dv.value < 0)
        addWarning(findings, line, what + " " + shown(field) + " has a negative dV");
}

void ModelRules::checkRamp(Section const& section)
{
    FirstLines lines;
    for (Item const& item : section.items) {
        SubParameter const sub = subParameter(item);
        std::string const lower = lowered(sub.name);
        std::string_view const name = lower;
        if (int const first = lines.add(lower, item.line)) {
            warning(item.line, sub.name + " stands twice in [Ramp] (first at line " + std::to_string(first) + ")");
            continue;
        }
        if (name == "dv/dt_r" || name == "dv/dt_f") {
            if (sub.values.size() != 3) {
                error(item.line, sub.name + " needs typ, min and max; it has " + std::to_string(sub.values.size()) +
                                     (sub.values.size() == 1 ? " value" : " values"));
                continue;
            }
            for (std::size_t i = 0; i < 3; ++i) {
                std::string const what = sub.name + " " + kColumns[i];
                if (ibis::parseNumber(sub.values[i]).kind == Number::NotAvailable) {
                    if (i == 0)
                        error(item.line, what + " is NA; only min and max may be");
                    continue;
                }
                checkFraction(sub.values[i], item.line, what, _findings);
            }
        } else if (name == "r_load") {
            double value = 1;
            checkSingleValue(sub, &value);
            if (value <= 0)
                error(item.line, "R_load " + number(value) + " is not above 0");
        } else {
            warning(item.line, "unknown line " + shown(sub.name) + " in [Ramp]");
        }
    }
    for (Row const& row : section.rows)
        error(row.line, "[Ramp] line is no dV/dt_r, dV/dt_f or R_load line");
    for (char const* needed : {"dV/dt_r", "dV/dt_f"})
        if (!lines.has(lowered(needed)))
            error(section.line, std::string("[Ramp] has no ") + needed + " line");
}

void ModelRules::checkWaveform(Section const& section)
{
    static std::string_view const known[] = {"r_fixture", "v_fixture", "v_fixture_min", "v_fixture_max", "c_fixture",
                                             "l_fixture", "r_dut",     "l_dut",         "c_dut"};
    FirstLines lines;
    for (Item const& item : section.items) {
        SubParameter const sub = subParameter(item);
        std::string const lower = lowered(sub.name);
        bool knownName = false;
        for (std::string_view name : known)
            knownName = knownName || lower == name;
        if (!knownName) {
            error(item.line, section.shown + " line " + shown(item.fields[0]) + " is neither a fixture value nor a row of numbers");
            continue;
        }
        if (lines.add(lower, item.line) != 0) {
            warning(item.line, sub.name + " stands twice in " + section.shown);
            continue;
        }
        checkSingleValue(sub, nullptr);
    }
    for (char const* needed : {"R_fixture", "V_fixture"})
        if (!lines.has(lowered(needed)))
            error(section.line, section.shown + " has no " + needed);
    checkTable(section, true);
}

void ModelRules::checkSubmodel(Section const& section)
{
    for (Item const& item : section.items) {
        if (item.fields.size() < 2) {
            error(item.line, "[Add Submodel] line needs a submodel name and a mode");
            continue;
        }
        std::string const& mode = item.fields[1];
        bool const driving = ibis::sameWord(mode, "Driving");
        bool const nonDriving = ibis::sameWord(mode, "Non-Driving");
        if (!driving && !nonDriving && !ibis::sameWord(mode, "All"))
            error(item.line, "[Add Submodel] mode " + shown(mode) + " is not Driving, Non-Driving or All");
        else if (_type != nullptr && driving && (_flags & Drives) == 0)
            error(item.line, "[Add Submodel] mode Driving in a model of type " + typeShown());
        else if (_type != nullptr && nonDriving && (_flags & AlwaysDriving) != 0)
            error(item.line, "[Add Submodel] mode Non-Driving in a model of type " + typeShown());
        if (_context.master)
            warning(item.line, "[Add Submodel] " + item.fields[0] +
                                   ": design files get no [Submodel] block, as only [Model] blocks are copied");
    }
}

void ModelRules::checkPresence()
{
    if (!has("voltage range") &&
        !(has("pullup reference") && has("pulldown reference") && has("power clamp reference") &&
          has("gnd clamp reference")))
        error(_model.line, "[Model] " + _model.name +
                               " has no [Voltage Range], nor all four of [Pullup Reference], [Pulldown Reference], "
                               "[POWER Clamp Reference] and [GND Clamp Reference]");
    if (_type == nullptr)
        return;
    std::string const of = "[Model] " + _model.name + " of type " + _type->name;
    // A model described by [External Model] has its die capacitance, its
    // I-V curves and its edges in the external circuit: it needs neither
    // C_comp nor [Ramp] nor I-V tables.
    bool const external = has("external model");
    if ((_flags & Series) == 0 && !external) {
        bool comp = false;
        for (char const* name : {"c_comp", "c_comp_pullup", "c_comp_pulldown", "c_comp_power_clamp", "c_comp_gnd_clamp"})
            comp = comp || _subLines.has(name);
        if (!comp)
            error(_model.line, of + " has no C_comp, nor any C_comp_pullup, C_comp_pulldown, C_comp_power_clamp "
                                    "or C_comp_gnd_clamp");
    }
    if ((_flags & Drives) != 0 && (_flags & Diff) == 0 && !external && !has("ramp"))
        error(_model.line, of + " has no [Ramp]");
    if ((_flags & NeedsPulldown) != 0 && !external && !has("pulldown"))
        warning(_model.line, of + " has no [Pulldown]");
    if ((_flags & NeedsPullup) != 0 && !external && !has("pullup"))
        warning(_model.line, of + " has no [Pullup]");
    if ((_flags & Switch) != 0) {
        if (!has("on"))
            warning(_model.line, of + " has no [On]");
        if (!has("off"))
            warning(_model.line, of + " has no [Off]");
    }
    if ((_flags & Diff) != 0 && !has("external model"))
        warning(_model.line, of + " has no [External Model]");
    if (has("rac") != has("cac"))
        warning(_model.line, "[Model] " + _model.name + ": [Rac] and [Cac] go together");
    if (has("rl series") && !has("l series"))
        warning(_model.line, "[Model] " + _model.name + ": [Rl Series] needs [L Series]");
    if ((has("lc series") || has("rc series")) && !has("c series"))
        warning(_model.line, "[Model] " + _model.name + ": [Lc Series] and [Rc Series] need [C Series]");
    if (_subLines.has("enable") && (_flags & Enables) == 0)
        warning(_subLines.line("enable"), "Enable means nothing to a model of type " + typeShown());
}

} // namespace

bool checkTypMinMax(std::vector<std::string> const& values, int line, std::string const& what,
                    std::vector<Finding>& findings)
{
    if (values.size() != 3) {
        addError(findings, line, what + " needs typ, min and max; it has " + std::to_string(values.size()) +
                                     (values.size() == 1 ? " value" : " values"));
        return false;
    }
    bool good = true;
    for (std::size_t i = 0; i < 3; ++i) {
        Number const n = ibis::parseNumber(values[i]);
        if (n.kind == Number::Invalid) {
            addError(findings, line, what + " " + kColumns[i] + " " + shown(values[i]) + " is not a number");
            good = false;
        } else if (i == 0 && n.kind == Number::NotAvailable) {
            addError(findings, line, what + " typ is NA; only min and max may be");
            good = false;
        }
    }
    return good;
}

bool readsEveryValue(std::string_view key)
{
    return key == "pullup" || key == "pulldown";
}

void checkModel(ibis::Model const& model, ModelContext const& context, std::vector<Finding>& findings)
{
    ModelRules(model, context, findings).run();
}

std::string modelTypeOf(ibis::Model const& model)
{
    std::string value;
    if (!model.headValue("model_type", value))
        return "";
    ModelType const* type = findType(value);
    return type != nullptr ? type->name : "";
}

bool isSeriesType(std::string const& type)
{
    ModelType const* found = findType(type);
    return found != nullptr && (found->flags & Series) != 0;
}

double ibisVersion(std::string const& value)
{
    static char const* const versions[] = {"1.0", "1.1", "2.0", "2.1", "3.0", "3.2", "4.0", "4.1",
                                           "4.2", "5.0", "5.1", "6.0", "6.1", "7.0", "7.1", "7.2"};
    for (char const* version : versions)
        if (value == version)
            return ibis::parseNumber(value).value;
    return 0;
}

} // namespace ibischeck
