#ifndef PAD2IBIS_DRIVER_FAMILY_TABLE_H
#define PAD2IBIS_DRIVER_FAMILY_TABLE_H

// The device families the generator knows, and every rule of a family, in
// one place: a family is found, and added, here. The rules come in the kinds
// that the generator keeps apart:
//
//  - rules of the family word, compared whole (the word that a pad report's
//    part type gives, or that the host passes): what the walk, the naming
//    tables and the pad report reader do for the family;
//  - rules of fragments of the reduced part name, searched anywhere in its
//    whole stored text (behind a NUL too): which naming tables the part
//    needs, its drive table, which components fit it;
//  - rules of the part type as the pad report names it, and of the reduced
//    part name, compared whole: the file names of two companion-chip parts,
//    and what their design files say.

#include <map>
#include <string>
#include <utility>
#include <vector>

// The family words a host may pass to a generator: those that a pad
// report's part type gives, then those of the database flow that the family
// rules also compare with.
std::vector<char const*> const& ibsFamilyWords();

// --- The part type -------------------------------------------------------

// The family of a part type: the first rule that holds; "" when none does.
std::string ibsFamilyOfPartType(std::string const& partType);

// A part type that stands for a whole family, reduced to that family's part
// name ("MORVALLE"); null for any other.
char const* ibsFamilyPartName(std::string const& partType);

// A part type that keeps its whole name when reduced.
bool ibsPartKeepsItsName(std::string const& partType);

// --- Rules of the family word --------------------------------------------

// What SLEW=FAST of an LVDS or a PCI signal writes into the key's slew field.
enum class IbsFastSlew {
    Fast,          // "f"
    FastPciOutput, // "f" for a PCI output, "a" otherwise
    TablePci,      // the slew table's code for PCI, "a" for LVDS
    Neutral        // "a"
};

struct IbsFamilyRules {
    char const* family;
    // The family keeps no separate output models: an output gets "io".
    bool outputsAsBidir = false;
    IbsFastSlew fastSlew = IbsFastSlew::Neutral;
    // CLAMP=ON of an input or bidirectional signal is a PCI clamp.
    bool clampIsPciClamp = false;
    // The pull value KEEPER is BUSHOLD.
    bool keeperIsBushold = false;
    // The pull table's BUSHOLD row is the pull value KEEPER.
    bool busholdIsKeeper = false;
    // A pull value's "FAILSAFE_" goes.
    bool cutsFailsafe = false;
    // The pull field states the clamp alone: CLAMP or NONE.
    bool clampOnlyPull = false;
    // The impedance code comes from the bank supply, on "in" and "od" keys
    // only.
    bool bankImpedance = false;
    // Designs with true differential standards get the note on their IBIS
    // data.
    bool trueDifferentialNote = false;
    // IO types without a number in their name that have a supply of their
    // own: the voltage field they get.
    std::vector<std::pair<char const*, char const*>> fixedVoltages;
};

// The rules of a family word; a word that no row names gets none of them.
IbsFamilyRules const& ibsFamilyRules(std::string const& family);

// --- Rules of part-name fragments ------------------------------------------

// The drive table of a part: design value to key code; empty when the part
// holds none of the fragments that have one.
std::map<std::string, std::string> ibsPartDriveTable(std::string const& partName);

// What the naming tables of a part's master must hold once IO type,
// voltage, drive, slew and pull are in.
struct IbsNamingNeeds {
    bool known = false;       // the part holds a fragment that the generator knows
    std::vector<int> positions; // key positions whose tables must be read as well
    // A newer master states a table under the older heading only: the
    // differential drive table takes the differential current's rows, the
    // differential resistor table the differential resistance's, when it has
    // none of its own.
    bool copyDiffDrive = false;
    bool copyDiffResistor = false;
    bool copyAhead = false; // the copies are made before the positions are asked
};
IbsNamingNeeds ibsPartNamingNeeds(std::string const& partName);

// The master's component fits the part: only the family has to fit, by
// fragments; without one, the two names must be the same (stored length and
// bytes).
bool ibsComponentFitsPart(std::string const& partName, std::string const& component);

// --- Rules of the part type and the part name compared whole ----------------

// The design file and companion copies of a device, by its part type.
struct IbsDeviceRules {
    char const* device;
    bool companions = true; // numbered copies of the companion chip's IBIS file may be made
    // The design file's ending in place of ".ibs", with or without copies;
    // null: "_zu2.ibs" when copies are made, the name unchanged otherwise.
    char const* designSuffix = nullptr;
    int firstCompanion = 0; // the number of the first copy
};
IbsDeviceRules const& ibsDeviceRules(std::string const& partType);

// A part whose design file's component line names the part itself.
bool ibsPartNamesItsComponent(std::string const& partName);

// A part whose missing package model file is said.
bool ibsPartSaysMissingPackageFile(std::string const& partName);

#endif
