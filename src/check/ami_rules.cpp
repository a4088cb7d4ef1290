// The parameters of an AMI parameter tree, and what their values may be.

#include "check/ami_rules.h"

#include <cstdlib>
#include <map>
#include <set>

#include "check/check_text.h"

namespace ibischeck {

namespace {

std::set<std::string> const kFormats = {"Value",     "Range", "List",     "Corner",      "Increment",
                                        "Steps",     "Table", "Gaussian", "Dual-Dirac", "DjRj"};

// The leaves that make a list a parameter; Description may stand in a
// branch of parameters too.
bool isParameterLeaf(std::string const& head)
{
    return head == "Usage" || head == "Type" || head == "Format" || head == "Default" || head == "List_Tip" ||
           head == "Labels" || kFormats.count(head) != 0;
}

bool isParameter(AmiNode const& list)
{
    for (AmiNode const& item : list.items)
        if (isParameterLeaf(item.head()))
            return true;
    return false;
}

bool isBranch(AmiNode const& list)
{
    for (AmiNode const& item : list.rest())
        if (item.isList() && item.head() != "Description")
            return true;
    return false;
}

void add(std::vector<Finding>* findings, int line, std::string text)
{
    if (findings != nullptr)
        addError(*findings, line, std::move(text));
}

AmiParameter parameterOf(AmiNode const& list, bool reserved)
{
    AmiParameter parameter;
    parameter.node = &list;
    parameter.name = list.head();
    parameter.reserved = reserved;
    for (AmiNode const& leaf : list.rest()) {
        std::string const head = leaf.head();
        if (head == "Usage" && parameter.usage == nullptr)
            parameter.usage = &leaf;
        else if (head == "Type" && parameter.type == nullptr)
            parameter.type = &leaf;
        else if (head == "Default" && parameter.defaultValue == nullptr)
            parameter.defaultValue = &leaf;
        else if (head == "Format" || kFormats.count(head) != 0)
            parameter.formats.push_back(&leaf);
    }
    return parameter;
}

// The parameters of a branch, each name once in it.
void walkBranch(AmiNode const& branch, bool reserved, std::vector<AmiParameter>& parameters,
                std::vector<Finding>* findings)
{
    std::map<std::string, int> names;
    for (AmiNode const& item : branch.rest()) {
        if (!item.isList()) {
            add(findings, item.line, amiText(item) + " under " + branch.head() + " is no parameter");
            continue;
        }
        std::string const name = item.head();
        if (name.empty()) {
            add(findings, item.line, "a list under " + branch.head() + " without a parameter name");
            continue;
        }
        if (name == "Description" && !reserved)
            continue;
        auto const first = names.emplace(name, item.line);
        if (!first.second)
            add(findings, item.line,
                name + " stands twice in " + branch.head() + " (the first at line " +
                    std::to_string(first.first->second) + ")");
        if (isParameter(item) || reserved)
            parameters.push_back(parameterOf(item, reserved));
        else if (isBranch(item))
            walkBranch(item, reserved, parameters, findings);
        else
            add(findings, item.line, name + " has no Usage, Type or format: neither a parameter nor a branch of "
                                            "parameters");
    }
}

bool isInteger(std::string const& text)
{
    std::string::size_type i = text.size() > 1 && (text[0] == '+' || text[0] == '-') ? 1 : 0;
    if (i == text.size())
        return false;
    for (; i < text.size(); ++i)
        if (text[i] < '0' || text[i] > '9')
            return false;
    return true;
}

bool isNumber(std::string const& text)
{
    auto digits = [&text](std::string::size_type& i) {
        std::string::size_type const start = i;
        while (i < text.size() && text[i] >= '0' && text[i] <= '9')
            ++i;
        return i - start;
    };
    std::string::size_type i = 0;
    if (i < text.size() && (text[i] == '+' || text[i] == '-'))
        ++i;
    std::size_t mantissa = digits(i);
    if (i < text.size() && text[i] == '.') {
        ++i;
        mantissa += digits(i);
    }
    if (mantissa == 0)
        return false;
    if (i < text.size() && (text[i] == 'e' || text[i] == 'E')) {
        ++i;
        if (i < text.size() && (text[i] == '+' || text[i] == '-'))
            ++i;
        if (digits(i) == 0)
            return false;
    }
    return i == text.size();
}

double numberOf(AmiNode const& value)
{
    return std::strtod(value.text.c_str(), nullptr);
}

bool sameValue(AmiNode const& a, AmiNode const& b, std::string const& type)
{
    if (amiIsNumericType(type) && amiIsValueOf(a, type) && amiIsValueOf(b, type))
        return numberOf(a) == numberOf(b);
    return a.kind == b.kind && a.text == b.text;
}

} // namespace

std::vector<AmiParameter> amiParameters(std::vector<AmiNode> const& top, std::vector<Finding>* findings)
{
    std::vector<AmiParameter> parameters;
    for (AmiNode const& root : top) {
        if (!root.isList())
            continue;
        for (AmiNode const& branch : root.rest())
            if (branch.head() == "Reserved_Parameters" || branch.head() == "Model_Specific")
                walkBranch(branch, branch.head() == "Reserved_Parameters", parameters, findings);
        break;
    }
    return parameters;
}

AmiFormat amiFormatOf(AmiNode const& leaf)
{
    std::vector<AmiNode> data = leaf.rest().copy();
    if (leaf.head() != "Format")
        return {leaf.head(), data, leaf.line};
    if (data.empty() || data[0].kind != AmiNode::Word)
        return {"", data, leaf.line};
    std::string const name = data[0].text;
    data.erase(data.begin());
    return {name, data, leaf.line};
}

bool amiIsFormat(std::string const& name)
{
    return kFormats.count(name) != 0;
}

bool amiIsBounded(std::string const& format)
{
    return format == "Range" || format == "Increment" || format == "Steps";
}

bool amiIsLeaf(std::string const& head)
{
    return isParameterLeaf(head) || head == "Description";
}

bool amiIsType(std::string const& word)
{
    return amiIsNumericType(word) || word == "Boolean" || word == "String";
}

bool amiIsNumericType(std::string const& type)
{
    return type == "Integer" || type == "Float" || type == "UI" || type == "Tap";
}

std::string amiTypeOf(AmiParameter const& parameter)
{
    if (parameter.type == nullptr)
        return "";
    AmiItems const types = parameter.type->rest();
    return types.size() == 1 && types[0].kind == AmiNode::Word ? types[0].text : "";
}

bool amiIsValueOf(AmiNode const& value, std::string const& type)
{
    if (type == "String")
        return value.kind == AmiNode::String;
    if (value.kind != AmiNode::Word)
        return false;
    if (type == "Integer")
        return isInteger(value.text);
    if (type == "Boolean")
        return value.text == "True" || value.text == "False";
    return amiIsNumericType(type) && isNumber(value.text);
}

std::string amiTypeWords(std::string const& type)
{
    if (type == "Integer")
        return "an Integer";
    if (type == "Boolean")
        return "a Boolean (True or False)";
    if (type == "String")
        return "a String in double quotes";
    return "a " + type + " number";
}

std::string amiOutsideOf(AmiFormat const& format, std::string const& type, AmiNode const& value)
{
    if (format.name == "List") {
        for (AmiNode const& entry : format.data)
            if (sameValue(entry, value, type))
                return "";
        std::string list;
        for (AmiNode const& entry : format.data)
            list += " " + amiText(entry);
        return "not in its List" + list;
    }
    if (!amiIsBounded(format.name) || format.data.size() < 3 || !amiIsNumericType(type) ||
        !amiIsValueOf(value, type) || !amiIsValueOf(format.data[1], type) || !amiIsValueOf(format.data[2], type))
        return "";
    double const number = numberOf(value);
    if (number >= numberOf(format.data[1]) && number <= numberOf(format.data[2]))
        return "";
    return "outside its " + format.name + " " + format.data[1].text + " to " + format.data[2].text;
}

} // namespace ibischeck
