#ifndef PAD2IBIS_WRITER_DESIGN_FILE_OPTIONS_H
#define PAD2IBIS_WRITER_DESIGN_FILE_OPTIONS_H

// What a host may ask of the design IBIS file beyond what the generator
// writes by itself: a component name of its own, signal names cut to the
// width older IBIS readers take, every model of the master, and a
// [Model Selector] that lets a simulator switch a pin between the models that
// differ from the design's only in slew and drive.
//
// A host that reads the design package's model may also give each [Pin] row
// its own R_pin, L_pin and C_pin, name a package model under [Component]
// and hold that model's text in the design file.
//
// The options are process-wide, like the generator's static flags: a host
// sets them before writeIbisModels and they hold for every run after. The
// defaults write the design file byte for byte as it is written without
// this seam.

#include <functional>
#include <map>
#include <ostream>
#include <string>
#include <vector>

class IBIS_MODEL;

// A [Pin] row's R_pin, L_pin and C_pin, each as it goes into its column: an
// IBIS number of at most 9 characters, or NA.
struct IbsPinParasitics {
    std::string r, l, c;
};

struct IbsDesignFileOptions {
    // The name on the design file's [Component] line in place of the
    // master's; empty keeps the master's line. The host passes 1 to 40
    // printable ASCII characters, with no blank at either end and no "|".
    std::string componentName;
    // [Pin] signal names longer than this are cut to it: 0 cuts nothing, 20
    // suits readers before IBIS 4.2, 40 the later ones. A differential pair
    // keeps its "+" and "-" within the width, and names that the cut makes
    // equal end in "~1", "~2" ... instead.
    int signalNameWidth = 0;
    // Every model of the master's [Pin] list gets its [Model] block, not only
    // the design's; the [Pin] rows stay the design's.
    bool allModels = false;
    // Each design model for which the master has models that differ from it
    // only in the slew and drive positions of the model key gets a
    // [Model Selector] "<model>_sel": the design's model first, the default,
    // then those models, each described by its drive and slew in the
    // naming tables' words. The design's [Pin] rows name the selector.
    bool modelSelectors = false;
    // R_pin, L_pin and C_pin by pin name. With any entry, the [Pin] keyword
    // line names the three columns above them, and each row of a pin listed
    // here carries its values; the rows of the other pins stay as they are.
    std::map<std::string, IbsPinParasitics> pinParasitics = {};
    // The name on a "[Package Model]" line behind the [Pin] rows; empty: no
    // such line.
    std::string packageModel = "";
    // Writes, between "| End [Component]" and "[End]", whole lines, each
    // with its LF ("[Define Package Model] NAME" ... "[End Package Model]");
    // empty: nothing. A model of many pins runs to megabytes, so it goes
    // out as it is composed rather than as one text.
    std::function<void(std::ostream&)> writePackageModel = {};
};

// Takes the options for the design files written from now on.
void ibsSetDesignFileOptions(IbsDesignFileOptions const& options);
void ibsSetDesignFileOptions(IbsDesignFileOptions&& options);
IbsDesignFileOptions const& ibsDesignFileOptions();

// The signal name of each signal's [Pin] row as the design file has it under
// the current options, one entry per signal of the generator's _iobufs, in
// their order: the name of its first row, so "name+" for a differential
// pair, and "" for a signal that has no row. Call once the design's models
// are resolved.
std::vector<std::string> ibsPinSignalNames(IBIS_MODEL const& generator);

// The pin of each [Pin] row of the design file, in the order of the rows: a
// differential pair gives its two pins, and with D-PHY rows (a D-PHY model
// named shorter than 13 characters gives none here) their pins follow. Call
// once the design's models are resolved.
std::vector<std::string> ibsPinRowPins(IBIS_MODEL const& generator);

#endif
