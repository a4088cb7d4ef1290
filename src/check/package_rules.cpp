#include "check/package_rules.h"

#include "check/check_text.h"

namespace ibischeck {

Severity packageSeverity(ibis::PackageProblem problem)
{
    using P = ibis::PackageProblem;
    switch (problem) {
    case P::TooManySections: // the path is read whole all the same
    case P::NoHeader:        // text for the reader of the file, no value of the model
        return Severity::Warning;
    default:
        return Severity::Error;
    }
}

void PackageRules::modelBegins(std::string const& name, int line)
{
    for (auto const& [other, at] : _models)
        if (other == name && !name.empty())
            addError(_findings, line,
                     "[Define Package Model] " + visible(name) + " stands twice (first at line " + std::to_string(at) +
                         ")");
    _models.emplace_back(name, line);
}

void PackageRules::problem(ibis::PackageProblem problem, int line, std::string const& text)
{
    _findings.push_back(Finding{line, packageSeverity(problem), visible(text)});
}

void PackageRules::finish(int lines, std::vector<Finding>& findings)
{
    _reader.finish(lines);
    findings.insert(findings.end(), _findings.begin(), _findings.end());
    _findings.clear();
}

} // namespace ibischeck
