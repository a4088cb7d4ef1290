#ifndef PAD2IBIS_CHECK_PACKAGE_RULES_H
#define PAD2IBIS_CHECK_PACKAGE_RULES_H

// What a simulator needs of the package models of a file ([Define Package
// Model] in a package model file, or in a design or master file behind its
// components): the package model reader's faults, each graded by what it
// costs. Fed line by line beside the file's other rules.

#include <string>
#include <vector>

#include "check/ibis_check.h"
#include "ibis/line_source.h"
#include "ibis/package_model.h"

namespace ibischeck {

// Error: a simulator reads other values than the model means, or refuses
// the file. Warning: the values read are the model's all the same.
Severity packageSeverity(ibis::PackageProblem problem);

class PackageRules : private ibis::PackageSink {
public:
    PackageRules() : _reader(*this) {}

    // True when the line belongs to a package model (then the file's other
    // rules leave it alone).
    bool feed(ibis::Line const& line, char comment) { return _reader.feed(line, comment); }
    // The end of the file of `lines` lines: the findings go to findings.
    void finish(int lines, std::vector<Finding>& findings);

    // The package models defined so far, with their lines.
    std::vector<std::pair<std::string, int>> const& models() const { return _models; }

private:
    void modelBegins(std::string const& name, int line) override;
    void problem(ibis::PackageProblem problem, int line, std::string const& text) override;

    ibis::PackageReader _reader;
    std::vector<Finding> _findings;
    std::vector<std::pair<std::string, int>> _models;
};

} // namespace ibischeck

#endif
