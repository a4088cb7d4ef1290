#ifndef PAD2IBIS_CHECK_AMI_RULES_H
#define PAD2IBIS_CHECK_AMI_RULES_H

// The parameters of an AMI parameter tree and the rules for their values,
// shared by the check of AMI parameter files and of channels files.

#include <string>
#include <vector>

#include "check/ami_tree.h"

namespace ibischeck {

// A format leaf, "(Format Range 4 0 15)" or "(Range 4 0 15)": the format's
// name and its data.
struct AmiFormat {
    std::string name;
    std::vector<AmiNode> data;
    int line;
};

// One parameter: a list under Reserved_Parameters or Model_Specific (or a
// branch of parameters below Model_Specific) whose items are leaves.
struct AmiParameter {
    AmiNode const* node;
    std::string name;
    bool reserved;
    AmiNode const* usage = nullptr;
    AmiNode const* type = nullptr;
    AmiNode const* defaultValue = nullptr;
    std::vector<AmiNode const*> formats; // the format leaves, in order
};

// Every parameter of the tree, in file order. With findings, also the
// errors of the branches: items that are no parameters, names that stand
// twice, lists that are neither parameters nor branches of them.
std::vector<AmiParameter> amiParameters(std::vector<AmiNode> const& top,
                                        std::vector<Finding>* findings = nullptr);

AmiFormat amiFormatOf(AmiNode const& leaf);

// True for the names of the formats: Value, Range, List, Corner, Increment,
// Steps, Table, and the jitter formats Gaussian, Dual-Dirac and DjRj.
bool amiIsFormat(std::string const& name);

// True for the formats whose data are typ, min and max first: Range,
// Increment and Steps.
bool amiIsBounded(std::string const& format);

// True for the leaves a parameter may hold: Usage, Type, Format, Default,
// Description, List_Tip, Labels and the formats.
bool amiIsLeaf(std::string const& head);

// True for the Type words: Integer, Float, UI, Tap, Boolean, String.
bool amiIsType(std::string const& word);
// True for the Types whose values are numbers: Integer, Float, UI, Tap.
bool amiIsNumericType(std::string const& type);

// The parameter's one Type word, or empty when it has none or several.
std::string amiTypeOf(AmiParameter const& parameter);

// True when value is a value of type: "Integer", "Float", "UI", "Tap",
// "Boolean" or "String".
bool amiIsValueOf(AmiNode const& value, std::string const& type);

// "an Integer", "a Boolean (True or False)", ...
std::string amiTypeWords(std::string const& type);

// Where a value of type falls outside the values that format allows, in
// words ("outside its Range 0 to 15", "not in its List 1 2 3"); empty when
// it does not, or when the format sets no bounds.
std::string amiOutsideOf(AmiFormat const& format, std::string const& type, AmiNode const& value);

} // namespace ibischeck

#endif
