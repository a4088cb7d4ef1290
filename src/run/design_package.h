#ifndef PAD2IBIS_RUN_DESIGN_PACKAGE_H
#define PAD2IBIS_RUN_DESIGN_PACKAGE_H

// The package model of a design, for --pin-parasitics and --package-model:
// where it is read from, its reduction to the pins of the design file's
// [Pin] rows, and what goes into the design file: each row's R_pin, L_pin
// and C_pin, and a [Define Package Model] of the design's pins alone.

#include <map>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "ibis/package_model.h"
#include "writer/design_file_options.h"

// Where the package model comes from: the package model file beside the
// master (the one the run copies), when it defines a package model; or else
// the master's own first [Define Package Model].
struct PackageSource {
    std::string path;    // the file read; "" when neither has a model
    bool beside = false; // the package model file beside the master
    // Why the model cannot be used: its file, the line (0 for none) and what.
    std::string errorFile, error;
    int errorLine = 0;
};

// What the design file gets from the package model.
struct DesignPackage {
    PackageSource source;
    std::string name;                          // of the package model
    std::vector<std::string> pins;             // the design's, in [Pin] order, each once
    std::vector<std::string> lacking;          // design pins the model does not list
    std::size_t covered = 0;                   // design pins it lists
    std::map<std::string, IbsPinParasitics> values; // per design pin it lists
    // The model reduced to the design's pins, for the design file's
    // [Define Package Model]; null when it lists none of them.
    std::shared_ptr<ibis::ReducedPackage const> reduced;
};

// Reads the package model for the design's pins (rowPins: the pins of the
// [Pin] rows in order; a pin may stand twice). False with source.error set
// when the model holds a fault or a file cannot be read; true with an empty
// source.path when there is no package model.
bool readDesignPackage(std::string const& besidePath, std::string const& masterPath,
                       std::vector<std::string> const& rowPins, DesignPackage& out);

// A value in IBIS notation within 9 characters: the text as written when it
// fits and reads as a number, or else the value with a scale letter ("2.35n")
// and the unit letter given ("H", "F", or none).
std::string pinValueText(ibis::PackageValue const& value, char const* unit);

// The design file's [Define Package Model]: the model's header, the design
// pins that it lists in [Pin] order, and every term between two of them
// (Full_matrix where the matrix has them all, Sparse_matrix otherwise), or
// each pin's path in the section form.
// Written to `out` in pieces of some 64 KB as composed, or as one text.
void writeDefineText(ibis::ReducedPackage const& reduced, std::ostream& out);
std::string defineText(ibis::ReducedPackage const& reduced);

// "A1, B2, C3 and 4 more".
std::string someOf(std::vector<std::string> const& names, std::size_t shown);

#endif
