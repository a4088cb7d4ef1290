#ifndef PAD2IBIS_CHECK_IBIS_CHECK_H
#define PAD2IBIS_CHECK_IBIS_CHECK_H

// The IBIS file checker: what a simulator needs of a design IBIS file, and
// what the generator's readers rely on in a master IBIS file. It reads text
// and returns findings; printing them is the caller's business.

#include <functional>
#include <iosfwd>
#include <string>
#include <vector>

namespace ibischeck {

enum class Severity { Error, Warning };

struct Finding {
    int line; // 1 is the first line of the file
    Severity severity;
    std::string text;
};

// Checks a design IBIS file, read line by line; fileName is the name the
// file has on disk, without its directory. Findings come in line order. A
// stream that fails ends the reading (in.bad() tells).
std::vector<Finding> checkDesignFile(std::istream& in, std::string const& fileName);
std::vector<Finding> checkDesignFile(std::string const& text, std::string const& fileName);

// Tells whether a package model of this name is defined outside the file
// being checked (in a package model file beside it).
using PackageModelLookup = std::function<bool(std::string const& name)>;

// The same, where a [Package Model] name that the file does not define
// itself is looked up with `beside` (without it, such a name is a finding).
std::vector<Finding> checkDesignFile(std::istream& in, std::string const& fileName,
                                     PackageModelLookup const& beside);

// Checks a package model file (.pkg): the IBIS file header, the
// [Define Package Model] blocks, [End].
std::vector<Finding> checkPackageFile(std::istream& in, std::string const& fileName);
std::vector<Finding> checkPackageFile(std::string const& text, std::string const& fileName);

// Checks a master IBIS file, read line by line, for what the generator
// makes of it. With a family word ("KVA3") or a part type
// ("KVA3-40E-6BG256C"), also that the naming tables the generator needs for
// that family are all there before the point where it stops reading them.
std::vector<Finding> checkMasterFile(std::istream& in, std::string const& family = "");
std::vector<Finding> checkMasterFile(std::string const& text, std::string const& family = "");
// The same for the file at path, with the same findings; a large file is
// read in two parts at once. False when the file cannot be read.
bool checkMasterPath(std::string const& path, std::string const& family, std::vector<Finding>& findings);

// Checks an AMI parameter file (.ami) by the rules of the AMI parameter
// tree: what a simulator asks of it.
std::vector<Finding> checkAmiFile(std::string const& text);

// An AMI parameter template of the SerDes flow: its name as the user gave
// it, and its text.
struct AmiTemplate {
    std::string name;
    std::string text;
};

// Checks a SerDes channels file against the parameter templates that its
// channels are written into: settings that no template line takes, values
// that the generator writes otherwise than they read, values that land
// outside their parameter's Type, Range or List. The findings' lines are
// the channels file's.
std::vector<Finding> checkChannelsFile(std::string const& text, std::vector<AmiTemplate> const& templates);

// Findings in line order; those of one line keep the order they came in.
void sortByLine(std::vector<Finding>& findings);

// "FILE:LINE: error: TEXT" or "FILE:LINE: warning: TEXT".
std::string formatFinding(std::string const& file, Finding const& finding);

// The closing count line: "2 files checked: 1 error, 0 warnings".
std::string countLine(int files, int errors, int warnings);

} // namespace ibischeck

#endif
