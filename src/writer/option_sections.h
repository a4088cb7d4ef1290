#ifndef PAD2IBIS_WRITER_OPTION_SECTIONS_H
#define PAD2IBIS_WRITER_OPTION_SECTIONS_H

// How the design file options change the writer's sections: the component
// line, the names and models of the [Pin] rows, the [Model Selector]
// sections and the set of models copied. With the default options every
// function here leaves the section as the writer has always written it.

#include <map>
#include <set>
#include <string>
#include <vector>

class IBIS_MODEL;
class IB_IOBUF;

// The component line with its name, the token behind the keyword, replaced;
// the keyword, the blanks behind it and the rest of the line (a comment, a
// CR) stay.
std::string withComponentName(std::string const& line, std::string const& name);

// The name of a signal's [Pin] rows without the "+" or "-" of a pair.
struct PinRowName {
    bool row = false;  // false for a signal without a model, which has no row
    std::string stem;
    bool pair = false; // two rows, stem + "+" and stem + "-"
};
// The row names of all signals under the width of IbsDesignFileOptions, in
// signal order. Names that were not cut stay as they are; cut names that
// meet another row's name end in "~" and a number counted per cut stem, in
// signal order, skipping numbers whose name is taken.
std::vector<PinRowName> pinRowNames(std::vector<IB_IOBUF*> const& iobufs,
                                    std::map<std::string, std::string> const& diffPinMap, int width);

// The selectors that a master's model list offers: a model has one when the
// list holds other models of the key's length that differ from it only in
// the slew and drive positions.
class ModelSelectors {
public:
    // Without `enabled` no model has a selector.
    ModelSelectors(std::set<std::string> const& available, bool enabled);

    // The selector's name, "<model>_sel", or "_sel2", "_sel3" ... where the
    // master has a model of that name; empty when the model has none.
    std::string name(std::string const& model) const;
    // What a [Pin] row of the model names: its selector, or the model.
    std::string pinModel(std::string const& model) const;
    // The model, then its alternatives in ascending order; empty without
    // a selector.
    std::vector<std::string> entries(std::string const& model) const;

private:
    std::set<std::string> const& _available;
    // Models by their key with the slew and drive positions blanked out.
    std::map<std::string, std::vector<std::string>> _groups;
};

// Writes the [Model Selector] section of each design model that has one,
// each followed by a separator, when the options ask for selectors.
void writeModelSelectors(IBIS_MODEL& generator);

// The models whose [Model] blocks the design file holds, in the order they
// are written: the design's, and as the options ask every model of the
// master's [Pin] list (but POWER, GND, NC and CIRCUITCALL, which name no
// model) and every model a selector lists.
std::set<std::string> modelsWithBlocks(IBIS_MODEL const& generator);

#endif
