// What a simulator asks of an AMI parameter file: one parameter tree whose
// root holds Reserved_Parameters and may hold Model_Specific, and in them
// parameters with a Usage, a Type, a format or Default, and values of their
// Type inside their Range or List.

#include <algorithm>
#include <map>

#include "check/ami_rules.h"
#include "check/check_text.h"

namespace ibischeck {

namespace {

// Number of data values of each format, in words; Table and List take any.
struct FormatShape {
    char const* name;
    std::size_t count;
    char const* values;
};
FormatShape const kShapes[] = {
    {"Value", 1, "value"},           {"Range", 3, "typ min max"},      {"Corner", 3, "typ slow fast"},
    {"Increment", 4, "typ min max delta"}, {"Steps", 4, "typ min max steps"}, {"Gaussian", 2, "mean sigma"},
    {"Dual-Dirac", 3, "mean mean sigma"},  {"DjRj", 3, "minDj maxDj sigma"},
};

char const kFormatNames[] = "Value, Range, List, Corner, Increment, Steps, Table, Gaussian, Dual-Dirac, DjRj";

// The reserved parameters whose Usage and Type every AMI file agrees on.
struct ReservedRule {
    char const* name;
    char const* type;
    bool required;
};
ReservedRule const kReserved[] = {
    {"AMI_Version", "String", false},        {"Init_Returns_Impulse", "Boolean", true},
    {"GetWave_Exists", "Boolean", true},     {"Use_Init_Output", "Boolean", false},
    {"Ignore_Bits", "Integer", false},       {"Max_Init_Aggressors", "Integer", false},
    {"Resolve_Exists", "Boolean", false},
};

std::string words(AmiItems const& items)
{
    std::string text;
    for (AmiNode const& item : items)
        text += (text.empty() ? "" : " ") + amiText(item);
    return text;
}

void checkDescription(AmiNode const& leaf, std::string const& owner, std::vector<Finding>& findings)
{
    AmiItems const text = leaf.rest();
    if (text.size() != 1 || text[0].kind != AmiNode::String)
        addError(findings, leaf.line, owner + ": Description takes one string in double quotes");
}

void checkRoot(std::vector<AmiNode> const& top, std::vector<AmiParameter> const& parameters,
               std::vector<Finding>& findings)
{
    AmiNode const* root = nullptr;
    for (AmiNode const& node : top) {
        if (!node.isList())
            addError(findings, node.line, amiText(node) + " stands outside the parameter tree");
        else if (root == nullptr)
            root = &node;
        else
            addError(findings, node.line,
                     "a second parameter tree; a file holds one root (the first at line " +
                         std::to_string(root->line) + ")");
    }
    if (root == nullptr) {
        addError(findings, 1, "no parameter tree: the file holds no \"(\"");
        return;
    }
    if (root->head().empty())
        addError(findings, root->line, "the root has no name");
    std::map<std::string, int> branches;
    for (AmiNode const& item : root->rest()) {
        std::string const head = item.head();
        if (!item.isList()) {
            addError(findings, item.line, amiText(item) + " under the root is no branch");
        } else if (head != "Reserved_Parameters" && head != "Model_Specific" && head != "Description") {
            addError(findings, item.line,
                     "unknown branch " + (head.empty() ? amiText(item) : head) +
                         " under the root; it holds Reserved_Parameters, Model_Specific and Description");
        } else {
            auto const first = branches.emplace(head, item.line);
            if (!first.second)
                addError(findings, item.line,
                         "a second " + head + " under the root (the first at line " +
                             std::to_string(first.first->second) + ")");
            else if (head == "Description")
                checkDescription(item, "the root", findings);
        }
    }
    auto const reserved = branches.find("Reserved_Parameters");
    if (reserved == branches.end()) {
        addError(findings, root->line, "the root has no Reserved_Parameters branch");
        return;
    }
    for (ReservedRule const& rule : kReserved) {
        bool const there = std::any_of(parameters.begin(), parameters.end(), [&rule](AmiParameter const& p) {
            return p.reserved && p.name == rule.name;
        });
        if (rule.required && !there)
            addError(findings, reserved->second, std::string("Reserved_Parameters has no ") + rule.name);
    }
}

// Each value of data is a value of type.
void checkValues(AmiParameter const& p, std::vector<AmiNode> const& data, std::string const& type,
                 std::vector<Finding>& findings)
{
    for (AmiNode const& value : data)
        if (!amiIsValueOf(value, type))
            addError(findings, value.line,
                     p.name + ": value " + amiText(value) + " is not " + amiTypeWords(type));
}

void checkFormat(AmiParameter const& p, AmiFormat const& format, std::string const& type,
                 std::vector<Finding>& findings)
{
    std::string const& name = format.name;
    if (!amiIsFormat(name)) {
        addError(findings, format.line,
                 p.name + ": Format " + (name.empty() ? "without a format" : name) + " is none of " + kFormatNames);
        return;
    }
    bool const numeric = amiIsNumericType(type);
    if (amiIsBounded(name) && !type.empty() && !numeric)
        addError(findings, format.line, p.name + ": a " + name + " needs Type Float, UI, Integer or Tap, not " + type);
    if ((name == "Gaussian" || name == "Dual-Dirac" || name == "DjRj") && !type.empty() && type != "Float" &&
        type != "UI")
        addError(findings, format.line, p.name + ": a " + name + " needs Type Float or UI, not " + type);
    if (name == "Table") {
        for (AmiNode const& t : p.type == nullptr ? AmiItems{nullptr, nullptr} : p.type->rest())
            if (t.text == "Tap")
                addError(findings, format.line, p.name + ": a Table takes no Type Tap");
        return;
    }
    if (name == "List" && format.data.empty())
        addError(findings, format.line, p.name + ": a List without values");
    for (FormatShape const& shape : kShapes)
        if (name == shape.name && format.data.size() != shape.count) {
            addError(findings, format.line,
                     p.name + ": " + name + " takes " + std::to_string(shape.count) + " value" +
                         (shape.count == 1 ? "" : "s") + " (" + shape.values + "), found " +
                         std::to_string(format.data.size()));
            return;
        }
    if (type.empty())
        return;
    std::vector<AmiNode> values = format.data;
    if (name == "Steps") {
        AmiNode const& steps = values[3];
        if (!amiIsValueOf(steps, "Integer") || std::atoi(steps.text.c_str()) < 1)
            addError(findings, steps.line, p.name + ": Steps count " + amiText(steps) + " is not a whole number above 0");
        values.pop_back();
    }
    std::size_t const errors = findings.size();
    checkValues(p, values, type, findings);
    if (findings.size() != errors || !numeric)
        return;
    if (name == "Increment" && std::strtod(values[3].text.c_str(), nullptr) <= 0)
        addError(findings, values[3].line, p.name + ": Increment step " + values[3].text + " is not above 0");
    if (amiIsBounded(name)) {
        double const min = std::strtod(values[1].text.c_str(), nullptr);
        double const max = std::strtod(values[2].text.c_str(), nullptr);
        if (min > max)
            addError(findings, format.line,
                     p.name + ": " + name + " min " + values[1].text + " is above max " + values[2].text);
        else if (!amiOutsideOf(format, type, values[0]).empty())
            addError(findings, values[0].line,
                     p.name + ": typ " + values[0].text + " is " + amiOutsideOf(format, type, values[0]));
    }
}

// The leaves of a parameter: each a list of a leaf IBIS names, each but a
// format once.
void checkLeaves(AmiParameter const& p, std::vector<Finding>& findings)
{
    std::map<std::string, int> seen;
    for (AmiNode const& leaf : p.node->rest()) {
        std::string const head = leaf.head();
        if (!leaf.isList()) {
            addError(findings, leaf.line, p.name + ": " + amiText(leaf) + " stands outside any leaf");
            continue;
        }
        if (!amiIsLeaf(head)) {
            addWarning(findings, leaf.line, p.name + ": unknown leaf " + (head.empty() ? amiText(leaf) : head));
            continue;
        }
        auto const first = seen.emplace(head, leaf.line);
        if (!first.second && head != "Format" && !amiIsFormat(head))
            addError(findings, leaf.line,
                     p.name + " has a second " + head + " leaf (the first at line " +
                         std::to_string(first.first->second) + ")");
        if (head == "Description")
            checkDescription(leaf, p.name, findings);
    }
}

// The parameter's Usage, or "" when it has none that IBIS names.
std::string checkUsage(AmiParameter const& p, bool resolveExists, std::vector<Finding>& findings)
{
    if (p.usage == nullptr) {
        addError(findings, p.node->line, p.name + " has no Usage");
        return "";
    }
    AmiItems const values = p.usage->rest();
    std::string const usage = values.size() == 1 && values[0].kind == AmiNode::Word ? values[0].text : "";
    if (usage != "In" && usage != "Out" && usage != "InOut" && usage != "Info" && usage != "Dep") {
        addError(findings, p.usage->line,
                 p.name + ": Usage " + (values.empty() ? "without a value" : words(values)) +
                     " is none of In, Out, InOut, Info, Dep");
        return "";
    }
    if (usage == "Dep" && !resolveExists)
        addError(findings, p.usage->line, p.name + ": Usage Dep needs Resolve_Exists True among the reserved parameters");
    return usage;
}

// The parameter's Type, or "" when it has none that IBIS names; a Table
// has one for each column.
std::string checkType(AmiParameter const& p, bool table, std::vector<Finding>& findings)
{
    if (p.type == nullptr) {
        addError(findings, p.node->line, p.name + " has no Type");
        return "";
    }
    AmiItems const types = p.type->rest();
    for (AmiNode const& t : types)
        if (t.kind != AmiNode::Word || !amiIsType(t.text))
            addError(findings, t.line,
                     p.name + ": Type " + amiText(t) + " is none of Integer, Float, UI, Tap, Boolean, String");
    if (types.empty())
        addError(findings, p.type->line, p.name + ": Type without a value");
    else if (types.size() > 1 && !table)
        addError(findings, p.type->line,
                 p.name + ": Type names " + std::to_string(types.size()) + " types; only a Table has one for each column");
    std::string const type = amiTypeOf(p);
    return amiIsType(type) ? type : "";
}

// A reserved parameter's Usage and Type are fixed.
void checkReserved(AmiParameter const& p, std::string const& usage, std::string const& type,
                   std::vector<Finding>& findings)
{
    for (ReservedRule const& rule : kReserved) {
        if (!p.reserved || p.name != rule.name)
            continue;
        if (!usage.empty() && usage != "Info")
            addError(findings, p.usage->line,
                     p.name + ": Usage " + usage + "; the reserved parameter " + p.name + " is Usage Info");
        if (!type.empty() && type != rule.type)
            addError(findings, p.type->line,
                     p.name + ": Type " + type + "; the reserved parameter " + p.name + " is Type " + rule.type);
    }
}

// The Default: not beside a Value, nor of a format that takes none; one
// value of the Type, inside the format's bounds.
void checkDefault(AmiParameter const& p, std::vector<AmiFormat> const& formats, std::string const& type,
                  std::vector<Finding>& findings)
{
    int const line = p.defaultValue->line;
    std::string const format = formats.empty() ? "" : formats[0].name;
    if (format == "Value") {
        addError(findings, line, p.name + " has both Value and Default; a parameter has one or the other");
        return;
    }
    if (format == "Table" || format == "Gaussian" || format == "Dual-Dirac" || format == "DjRj") {
        addError(findings, line, p.name + ": a " + format + " takes no Default");
        return;
    }
    AmiItems const value = p.defaultValue->rest();
    if (value.size() != 1) {
        addError(findings, line, p.name + ": Default takes one value, found " + std::to_string(value.size()));
        return;
    }
    if (type.empty())
        return;
    if (!amiIsValueOf(value[0], type)) {
        addError(findings, value[0].line, p.name + ": Default " + amiText(value[0]) + " is not " + amiTypeWords(type));
        return;
    }
    if (!formats.empty()) {
        std::string const outside = amiOutsideOf(formats[0], type, value[0]);
        if (!outside.empty())
            addError(findings, value[0].line, p.name + ": Default " + amiText(value[0]) + " is " + outside);
    }
}

void checkParameter(AmiParameter const& p, bool resolveExists, std::vector<Finding>& findings)
{
    checkLeaves(p, findings);
    std::string const usage = checkUsage(p, resolveExists, findings);
    std::vector<AmiFormat> formats;
    for (AmiNode const* leaf : p.formats)
        formats.push_back(amiFormatOf(*leaf));
    std::string const type = checkType(p, !formats.empty() && formats[0].name == "Table", findings);
    checkReserved(p, usage, type, findings);

    if (formats.empty() && p.defaultValue == nullptr)
        addError(findings, p.node->line, p.name + " has no format (Value, Range, List, Corner, Increment, Steps, "
                                                  "Table) and no Default");
    for (std::size_t i = 1; i < formats.size(); ++i)
        addError(findings, formats[i].line,
                 p.name + " has a second format, " + (formats[i].name.empty() ? "Format" : formats[i].name) +
                     " (the first at line " + std::to_string(formats[0].line) + ")");
    if (!formats.empty())
        checkFormat(p, formats[0], type, findings);
    if (p.defaultValue != nullptr)
        checkDefault(p, formats, type, findings);
}

// True when Resolve_Exists is there with the value True.
bool resolveExists(std::vector<AmiParameter> const& parameters)
{
    for (AmiParameter const& p : parameters) {
        if (!p.reserved || p.name != "Resolve_Exists")
            continue;
        std::vector<AmiNode> value;
        if (p.defaultValue != nullptr)
            value = p.defaultValue->rest().copy();
        else if (!p.formats.empty() && amiFormatOf(*p.formats[0]).name == "Value")
            value = amiFormatOf(*p.formats[0]).data;
        return value.size() == 1 && amiIsValueOf(value[0], "Boolean") && value[0].text == "True";
    }
    return false;
}

} // namespace

std::vector<Finding> checkAmiFile(std::string const& text)
{
    std::vector<Finding> findings;
    std::vector<AmiNode> const top = readAmiTree(text, findings);
    if (top.empty() && !findings.empty())
        return findings;
    std::vector<AmiParameter> const parameters = amiParameters(top, &findings);
    checkRoot(top, parameters, findings);
    bool const resolve = resolveExists(parameters);
    for (AmiParameter const& p : parameters)
        checkParameter(p, resolve, findings);
    sortByLine(findings);
    return findings;
}

} // namespace ibischeck
