// What a simulator needs of a design IBIS file, read line by line: the
// frame of keywords, the package, pin and differential pin rows, model
// selectors, and what stands inside each [Model].

#include <algorithm>
#include <cstdio>
#include <istream>
#include <map>
#include <set>
#include <sstream>

#include "check/check_text.h"
#include "check/model_rules.h"
#include "check/package_rules.h"
#include "ibis/ibis_syntax.h"
#include "ibis/line_source.h"
#include "ibis/model_reader.h"
#include "writer/reserved_models.h"

namespace ibischeck {

namespace {

const std::size_t kFileNameStem = 40;
const std::size_t kSignalName = 40;

struct PinRow {
    int line;
    std::string pin, model;
};

struct Selector {
    std::string name;
    int line;
    std::vector<std::pair<int, std::string>> entries; // line, model
};

struct ModelSeen {
    int line;
    std::string type;
};

// Keywords of the component that parsers read only ahead of its selectors.
bool isComponentKeyword(std::string const& key)
{
    static char const* const keys[] = {"manufacturer", "package",      "pin",          "package model",
                                       "pin mapping",  "diff pin",     "series pin mapping",
                                       "series switch groups", "node names", "die supply pads",
                                       "bus label",    "repeater pin", "alternate package models"};
    for (char const* k : keys)
        if (key == k)
            return true;
    return false;
}

// Header keywords of an IBIS file, which a package model file holds besides
// its package models.
bool isHeaderKeyword(std::string const& key)
{
    static char const* const keys[] = {"ibis ver", "comment char", "file name", "file rev", "date",
                                       "source",   "notes",        "disclaimer", "copyright", "end"};
    for (char const* k : keys)
        if (key == k)
            return true;
    return false;
}

class DesignCheck {
public:
    enum class Kind { Design, PackageFile };

    DesignCheck(std::string const& fileName, Kind kind, PackageModelLookup beside)
        : _fileName(fileName), _kind(kind), _beside(std::move(beside)),
          _reader([this](ibis::Model const& model) { modelRead(model); }, readsEveryValue)
    {
    }

    void feed(ibis::Line const& line);
    std::vector<Finding> finish(int lines);

private:
    void checkBytesAndWidth(ibis::Line const& line);
    void keyword(ibis::Line const& line, std::string const& key);
    void row(ibis::Line const& line);
    void checkFileName(std::string const& named, int number);
    void modelRead(ibis::Model const& model);
    void checkPins();
    void checkSelectors();
    void checkPackageModelNames();

    std::string _fileName;
    Kind _kind;
    PackageModelLookup _beside;
    PackageRules _packages;
    std::vector<std::pair<int, std::string>> _packageModelUses; // [Package Model] lines and names
    std::vector<Finding> _findings;
    ibis::CommentChar _comment;
    ibis::ModelReader _reader;
    std::vector<std::string_view> _fields;
    ModelContext _context;

    std::map<std::string, int> _first; // keyword to its first line
    std::string _firstKey, _lastKey, _section;
    int _firstKeyLine = 0, _lastKeyLine = 0;
    bool _firstOfSection = false; // the section is the keyword's first
    int _selectorLine = 0;        // the first [Model Selector]
    int _endLine = 0;             // [End]
    bool _afterEndWarned = false;

    std::set<std::string> _packageValues;
    std::vector<PinRow> _pinRows;
    std::size_t _pinColumns = 0; // column names on the [Pin] line
    std::set<std::string> _pins;
    std::vector<std::pair<int, std::vector<std::string>>> _diffRows;
    std::vector<Selector> _selectors;
    std::map<std::string, ModelSeen> _models;
    std::set<std::string> _submodels;
    std::vector<std::pair<int, std::string>> _submodelUses;
};

void DesignCheck::checkBytesAndWidth(ibis::Line const& line)
{
    std::string_view const text = line.text;
    for (std::size_t column = 0; column < text.size(); ++column) {
        unsigned char const c = static_cast<unsigned char>(text[column]);
        if ((c < 0x20 || c > 0x7e) && c != '\t') {
            char message[96];
            std::snprintf(message, sizeof message, "byte 0x%02X in column %zu is not printable ASCII", c, column + 1);
            addError(_findings, line.number, message);
            break;
        }
    }
    std::size_t const width = _context.version < 4.1 ? 80 : 120;
    if (line.length > width)
        addError(_findings, line.number,
                 "line of " + std::to_string(line.length) + " characters; IBIS lines keep within " +
                     std::to_string(width) + (width == 80 ? " before IBIS 4.1" : ""));
}

void DesignCheck::checkFileName(std::string const& named, int number)
{
    if (named != _fileName)
        addError(_findings, number, "[File Name] says " + shown(named) + " but the file is " + shown(_fileName));
    if (std::any_of(named.begin(), named.end(), [](char c) { return ibis::lowerCase(c) != c; }))
        addError(_findings, number, "[File Name] " + shown(named) + " is not in lower case");
    std::string const stem = named.substr(0, named.rfind('.'));
    if (stem.size() > kFileNameStem)
        addError(_findings, number,
                 "[File Name] base name of " + std::to_string(stem.size()) + " characters; at most 40");
}

void DesignCheck::keyword(ibis::Line const& line, std::string const& key)
{
    if (_firstKeyLine == 0) {
        _firstKeyLine = line.number;
        _firstKey = key;
    }
    _lastKeyLine = line.number;
    _lastKey = key;
    _section = key;
    _firstOfSection = _first.emplace(key, line.number).second;
    std::string_view const rest = ibis::keywordRest(line.text);
    if (_selectorLine != 0 && isComponentKeyword(key))
        addWarning(_findings, line.number,
                   std::string(ibis::keywordShown(line.text)) + " stands behind [Model Selector] (line " +
                       std::to_string(_selectorLine) + "); parsers read component keywords only ahead of selectors");
    if (_kind == Kind::PackageFile && !isHeaderKeyword(key))
        addError(_findings, line.number,
                 std::string(ibis::keywordShown(line.text)) +
                     " does not belong in a package model file (header keywords, package models, [End])");
    if (!_firstOfSection && key != "model selector" && key != "submodel" && key != "package model")
        return;
    ibis::splitFields(rest, _comment.current(), _fields);
    std::string const first = _fields.empty() ? "" : std::string(_fields[0]);
    if (key == "ibis ver") {
        double const version = ibisVersion(first);
        if (version == 0)
            addError(_findings, line.number, "[IBIS Ver] " + shown(first) + " is not an IBIS version");
        else
            _context.version = version;
    } else if (key == "file name") {
        checkFileName(first, line.number);
    } else if (key == "pin") {
        _pinColumns = _fields.size();
    } else if (key == "model selector") {
        if (_selectorLine == 0)
            _selectorLine = line.number;
        _selectors.push_back(Selector{first, line.number, {}});
    } else if (key == "submodel") {
        _submodels.insert(first);
    } else if (key == "package model") {
        _packageModelUses.emplace_back(line.number, first);
    } else if (key == "end") {
        _endLine = line.number;
    }
}

void DesignCheck::row(ibis::Line const& line)
{
    if (_endLine != 0 && !_afterEndWarned) {
        _afterEndWarned = true;
        addWarning(_findings, line.number, "text behind [End]; parsers read nothing there");
    }
    if (_section == "model selector" && !_selectors.empty()) {
        ibis::splitFields(line.text, _comment.current(), _fields);
        _selectors.back().entries.emplace_back(line.number, std::string(_fields[0]));
        if (_fields.size() < 2)
            addWarning(_findings, line.number,
                       "[Model Selector] entry " + visible(_fields[0]) + " has no description");
        return;
    }
    if (!_firstOfSection || (_section != "package" && _section != "pin" && _section != "diff pin"))
        return;
    ibis::splitFields(line.text, _comment.current(), _fields);
    std::string const first(_fields[0]);
    if (_section == "package") {
        std::string const value = upperCase(first);
        _packageValues.insert(value);
        if (value == "R_PKG" || value == "L_PKG" || value == "C_PKG")
            checkTypMinMax(std::vector<std::string>(_fields.begin() + 1, _fields.end()), line.number, first,
                           _findings);
    } else if (_section == "pin") {
        _pins.insert(first);
        if (_fields.size() < 3) {
            addError(_findings, line.number, "pin " + visible(first) + " has no model column");
            return;
        }
        _pinRows.push_back(PinRow{line.number, first, std::string(_fields[2])});
        if (_fields[1].size() > kSignalName)
            addWarning(_findings, line.number,
                       "signal name of pin " + visible(first) + " has " + std::to_string(_fields[1].size()) +
                           " characters; at most 40");
        if (_fields.size() != 3 && _fields.size() != 6)
            addWarning(_findings, line.number,
                       "pin " + visible(first) + " row has " + std::to_string(_fields.size()) +
                           " columns; a row has 3, or 6 with R_pin, L_pin and C_pin");
        else if (_fields.size() == 6 && _pinColumns < 5)
            addWarning(_findings, line.number,
                       "pin " + visible(first) + " row has R_pin, L_pin and C_pin, which the [Pin] line does not name");
    } else {
        std::vector<std::string> tokens(_fields.begin(), _fields.end());
        _diffRows.emplace_back(line.number, std::move(tokens));
    }
}

void DesignCheck::modelRead(ibis::Model const& model)
{
    checkModel(model, _context, _findings);
    auto const first = _models.emplace(model.name, ModelSeen{model.line, modelTypeOf(model)});
    if (!first.second)
        addError(_findings, model.line,
                 "[Model] " + visible(model.name) + " stands twice (first at line " +
                     std::to_string(first.first->second.line) + ")");
    for (ibis::Section const& section : model.sections)
        if (section.key == "add submodel")
            for (ibis::Item const& item : section.items)
                _submodelUses.emplace_back(item.line, item.fields[0]);
}

void DesignCheck::feed(ibis::Line const& line)
{
    checkBytesAndWidth(line);
    _reader.feed(line, _comment.current());
    if (_packages.feed(line, _comment.current())) {
        if (ibis::isKeywordLine(line.text)) {
            _lastKeyLine = line.number;
            _lastKey = ibis::keywordKey(line.text);
        }
        return;
    }
    if (ibis::isKeywordLine(line.text)) {
        std::string const key = ibis::keywordKey(line.text);
        keyword(line, key);
        if (key == "comment char")
            _comment.change(ibis::keywordRest(line.text));
    } else if (!ibis::isBlankOrComment(line.text, _comment.current())) {
        row(line);
    }
}

void DesignCheck::checkPins()
{
    for (PinRow const& row : _pinRows) {
        if (ibsReservedModelName(row.model))
            continue;
        auto const model = _models.find(row.model);
        bool const selector = std::any_of(_selectors.begin(), _selectors.end(),
                                          [&](Selector const& s) { return s.name == row.model; });
        if (model == _models.end() && !selector)
            addError(_findings, row.line,
                     "model " + visible(row.model) + " of pin " + visible(row.pin) + " has no [Model] block");
        else if (model != _models.end() && isSeriesType(model->second.type))
            addWarning(_findings, row.line,
                       "pin " + visible(row.pin) + " names a model of type " + model->second.type +
                           "; series models belong under [Series Pin Mapping]");
    }
    std::set<std::string> paired;
    for (auto const& [line, tokens] : _diffRows) {
        if (tokens.size() < 3)
            addError(_findings, line, "[Diff pin] row without pin, inv_pin and vdiff");
        for (std::size_t t = 0; t < 2 && t < tokens.size(); ++t)
            if (_pins.count(tokens[t]) == 0)
                addError(_findings, line, "[Diff pin] pin " + visible(tokens[t]) + " is not under [Pin]");
        if (tokens.size() >= 2 && tokens[0] == tokens[1])
            addWarning(_findings, line, "[Diff pin] pin " + visible(tokens[0]) + " pairs with itself");
        if (!paired.insert(tokens[0]).second)
            addWarning(_findings, line, "[Diff pin] pin " + visible(tokens[0]) + " heads a second pair");
    }
    for (auto const& [line, name] : _submodelUses)
        if (_submodels.count(name) == 0)
            addWarning(_findings, line, "[Add Submodel] " + visible(name) + " has no [Submodel] block in the file");
}

void DesignCheck::checkSelectors()
{
    std::set<std::string> names;
    for (Selector const& selector : _selectors) {
        std::string const name = "[Model Selector] " + visible(selector.name);
        if (!names.insert(selector.name).second)
            addWarning(_findings, selector.line, name + " stands twice");
        if (_models.count(selector.name) != 0)
            addWarning(_findings, selector.line,
                       name + " has the name of a [Model]; a [Pin] row that names it is ambiguous");
        std::size_t const width = _context.version < 4.2 ? 20 : 40;
        if (selector.name.size() > width)
            addError(_findings, selector.line,
                     name + " has a name of " + std::to_string(selector.name.size()) + " characters; at most " +
                         std::to_string(width));
        if (selector.entries.empty())
            addError(_findings, selector.line, name + " has no entries");
        std::set<std::string> entries;
        std::string firstType, firstEntry;
        for (auto const& lineAndEntry : selector.entries) {
            int const line = lineAndEntry.first;
            std::string const& entry = lineAndEntry.second;
            if (!entries.insert(entry).second)
                addWarning(_findings, line, name + " lists " + visible(entry) + " twice");
            auto const model = _models.find(entry);
            if (model == _models.end()) {
                bool const isSelector = std::any_of(_selectors.begin(), _selectors.end(),
                                                    [&](Selector const& s) { return s.name == entry; });
                addError(_findings, line,
                         name + " entry " + visible(entry) +
                             (isSelector ? " is a [Model Selector]; entries name [Model] blocks"
                                         : " has no [Model] block"));
                continue;
            }
            std::string const& type = model->second.type;
            if (firstEntry.empty()) {
                firstEntry = entry;
                firstType = type;
            } else if (type != firstType) {
                addWarning(_findings, line,
                           name + " mixes model types: " + visible(entry) + " is " + (type.empty() ? "untyped" : type) +
                               ", " + visible(firstEntry) + " is " + (firstType.empty() ? "untyped" : firstType));
            }
        }
    }
}

void DesignCheck::checkPackageModelNames()
{
    for (auto const& use : _packageModelUses) {
        int const line = use.first;
        std::string const& name = use.second;
        auto const& models = _packages.models();
        bool const here = std::any_of(models.begin(), models.end(), [&](auto const& m) { return m.first == name; });
        if (name.empty())
            addError(_findings, line, "[Package Model] names no package model");
        else if (!here && !(_beside && _beside(name)))
            addError(_findings, line,
                     "[Package Model] " + visible(name) +
                         " is defined neither in the file nor in a package model file (.pkg) beside it");
    }
}

std::vector<Finding> DesignCheck::finish(int lines)
{
    _reader.finish();
    _packages.finish(lines, _findings);
    int const lastLine = std::max(1, lines);
    if (_firstKey != "ibis ver")
        addError(_findings, _firstKeyLine == 0 ? 1 : _firstKeyLine, "the first keyword is not [IBIS Ver]");
    if (_lastKey != "end")
        addError(_findings, _lastKeyLine == 0 ? lastLine : _lastKeyLine, "the last keyword is not [End]");

    struct Needed {
        char const* keyword;
        char const* shown;
    } const needed[] = {{"file name", "[File Name]"},       {"file rev", "[File Rev]"}, {"component", "[Component]"},
                        {"manufacturer", "[Manufacturer]"}, {"package", "[Package]"},   {"pin", "[Pin]"}};
    if (_kind == Kind::PackageFile) {
        for (Needed const& n : needed)
            if (n.keyword == std::string("file name") || n.keyword == std::string("file rev"))
                if (_first.count(n.keyword) == 0)
                    addError(_findings, lastLine, std::string("no ") + n.shown + " keyword");
        if (_packages.models().empty())
            addError(_findings, lastLine, "no [Define Package Model] keyword");
        sortByLine(_findings);
        return std::move(_findings);
    }
    for (Needed const& n : needed)
        if (_first.count(n.keyword) == 0)
            addError(_findings, lastLine, std::string("no ") + n.shown + " keyword");
    if (_first.count("package") != 0)
        for (char const* value : {"R_pkg", "L_pkg", "C_pkg"})
            if (_packageValues.count(upperCase(value)) == 0)
                addError(_findings, _first["package"], std::string("[Package] has no ") + value + " line");
    checkPins();
    checkSelectors();
    checkPackageModelNames();
    sortByLine(_findings);
    return std::move(_findings);
}

} // namespace

std::vector<Finding> checkDesignFile(std::istream& in, std::string const& fileName)
{
    return checkDesignFile(in, fileName, nullptr);
}

std::vector<Finding> checkDesignFile(std::istream& in, std::string const& fileName,
                                     PackageModelLookup const& beside)
{
    DesignCheck check(fileName, DesignCheck::Kind::Design, beside);
    return checkLines(in, check);
}

std::vector<Finding> checkPackageFile(std::istream& in, std::string const& fileName)
{
    DesignCheck check(fileName, DesignCheck::Kind::PackageFile, nullptr);
    return checkLines(in, check);
}

std::vector<Finding> checkPackageFile(std::string const& text, std::string const& fileName)
{
    std::istringstream in(text);
    return checkPackageFile(in, fileName);
}

std::vector<Finding> checkDesignFile(std::string const& text, std::string const& fileName)
{
    std::istringstream in(text);
    return checkDesignFile(in, fileName);
}

} // namespace ibischeck
