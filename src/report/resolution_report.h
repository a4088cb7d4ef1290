#ifndef PAD2IBIS_REPORT_RESOLUTION_REPORT_H
#define PAD2IBIS_REPORT_RESOLUTION_REPORT_H

// The resolution report of a pad report run: which model each signal got and
// why. It is built from what the generator did, its signal records after the
// walk and the outcome the walk settled for each, with the key it built
// (resolve/signal_outcome.h), and written after the run as CSV,
// for a file name ending in ".json" as one JSON document, and for one ending
// in ".html" as a page with the package's pin map and the curves of the
// design's models.

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "resolve/signal_outcome.h"
#include "writer/design_file_options.h"

class IBIS_MODEL;
class IB_IOBUF;

// The outcomes a signal may have, in the order the report counts them.
inline constexpr char const* kReportOutcomes[] = {"resolved", "fallback", "substituted", "missing", "none"};

// One signal's line of the report.
struct SignalOutcome {
    std::string name, pin, bank, portType, settings;
    std::string key;     // the model key the walk built; empty when none was
    std::string outcome; // resolved, fallback, substituted, missing or none
    std::string model;   // the model written for the signal; empty when none
    std::string signalInFile; // the name on its [Pin] row ("name+" for a pair); empty when none
    // For a key that the master lacks: its nearest model and the settings in
    // which that differs, when the signal is missing or got that model.
    std::string nearest, differs;
    std::string pairPin; // the pin of a differential signal's negative leg
    // R_pin, L_pin and C_pin of the pin and of the negative leg's pin, from
    // the package model; empty where it does not give them.
    IbsPinParasitics values, pairValues;
};

class ResolutionReport {
public:
    // Notes the signals as the pad report gave them and starts observing the
    // walk's outcomes; call right before setDesignModels.
    void beforeWalk(IBIS_MODEL const& generator);
    // Stops observing and takes each signal's outcome; call right after.
    void afterWalk(IBIS_MODEL const& generator);
    // Notes the design's models once the design file is written (the D-PHY
    // rows add theirs while it is written), the [Pin] row names and the
    // design file options.
    void afterWrite(IBIS_MODEL const& generator);

    // R_pin, L_pin and C_pin by pin, from the package model (--pin-parasitics,
    // --package-model); call after afterWalk. The CSV and JSON then give each
    // signal's, and the page's pin map can be coloured by pin inductance.
    void setPinParasitics(std::map<std::string, IbsPinParasitics> const& values);

    // Run facts for the JSON document.
    void setRun(std::string const& padFile, std::string const& masterFile, bool variant);

    std::vector<SignalOutcome> const& signals() const { return _signals; }
    int count(std::string const& outcome) const;
    std::string csv() const;
    std::string json() const;
    // The page: summary, pin map, signal table and, read back from the
    // design file the run wrote, the curves of each design model.
    std::string html() const;
    // The form of a report file by its name: JSON for a name ending in
    // ".json", a page for ".html", CSV otherwise; with anyCase the ending in
    // any letter case.
    enum class Format { Csv, Json, Html };
    static Format formatOf(std::string const& path, bool anyCase);
    // Writes csv(), json() or html(), by the name's ending in this letter
    // case, or in the form given. False when the file could not be written.
    bool write(std::string const& path) const;
    bool write(std::string const& path, Format format) const;

    // The signal table of the CSV and the page: its column names, and one
    // signal's fields in that order.
    static std::vector<std::string> const& signalColumns();
    static std::vector<std::string> signalFields(SignalOutcome const& signal);

private:
    // What the walk settled for a signal: the key it built and the outcome.
    static void observe(IBIS_MODEL const& generator, IB_IOBUF const& signal, std::string const& key,
                        IbsSignalOutcome outcome, void* self);
    // The nearest model of the signal's key and its differences, where they
    // belong in the report.
    void noteNearest(IBIS_MODEL const& generator, SignalOutcome& signal);
    // The page's parts, in their order; models gives each design model's
    // place in _models by name.
    void appendHtmlHead(std::string& out) const;
    void appendHtmlSummary(std::string& out) const;
    void appendHtmlSignals(std::string& out, std::map<std::string, std::size_t> const& models) const;
    void appendHtmlModels(std::string& out, std::map<std::string, std::size_t> const& models) const;

    std::map<IB_IOBUF const*, std::pair<std::string, IbsSignalOutcome>> _settled;
    std::vector<SignalOutcome> _signals;
    std::vector<std::pair<std::string, int>> _models;
    std::string _padFile, _masterFile, _family, _part, _package, _component;
    std::string _designFile;
    bool _variant = false;
    bool _parasitics = false; // setPinParasitics was called
    IbsDesignFileOptions _options;
};

#endif
