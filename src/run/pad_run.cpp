// The pad report flow of the program.

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <set>
#include <sys/stat.h>
#include <thread>

#include "console/console.h"
#include "check/ibis_check.h"
#include "console/summary.h"
#include "driver/basibsgen.h"
#include "driver/messages.h"
#include "nearest/nearest_model.h"
#include "pad/file_names.h"
#include "pad/pad_lines.h"
#include "report/resolution_report.h"
#include "resolve/model_substitute.h"
#include "resolve/signal_outcome.h"
#include "run/design_package.h"
#include "run/run_flows.h"
#include "safety/input_files.h"
#include "safety/master_scan.h"
#include "safety/output_guard.h"
#include "safety/pad_scan.h"
#include "variant/basib_vargon.h"
#include "writer/design_file_options.h"
#include "writer/design_paths.h"

namespace {

using console::Console;
using console::shownPath;

// Says on standard error that an input cannot be read, in the legacy
// mode's words, and ends the run.
[[noreturn]] void refuseInput(std::string const& what, std::string const& path, std::string const& problem)
{
    std::fflush(stdout);
    std::fprintf(stderr, "pad2ibis: %s %s %s\n", what.c_str(), path.c_str(), problem.c_str());
    ibsExit(1);
}

IBIS_MODEL* newGenerator(RunOptions const& options, std::string const& family)
{
    if (options.vargon)
        return new IBIS_MODEL_VARGON(family.c_str(), options.firstPath.c_str(), options.secondPath.c_str());
    return new IBIS_MODEL(family.c_str(), options.firstPath.c_str(), options.secondPath.c_str());
}

// The files a run reads, and those it is about to write, for the check that
// none of the second is one of the first.
std::vector<safety::RunFile> padInputs(RunOptions const& options, IbsDesignPaths const& paths)
{
    return {{"the pad report", options.firstPath},
            {"the master file", options.secondPath},
            {"the package model file", paths.packageSource},
            {"the companion chip's IBIS file", paths.btnSource}};
}

std::vector<safety::RunFile> padOutputs(RunOptions const& options, IbsDesignPaths const& paths)
{
    std::vector<safety::RunFile> outputs = {{"the design IBIS file", shownPath(paths.designFile)},
                                            {"the package model file's copy", shownPath(paths.packageTarget)},
                                            {"the resolution report", options.reportFile}};
    for (std::string const& companion : paths.companionFiles)
        outputs.push_back({"the companion copy", shownPath(companion)});
    return outputs;
}

// With --pin-parasitics or --package-model: the design package's model read
// for the pins of the design file's [Pin] rows, and what it gives handed to
// the writer and the report. Warnings come back in `warnings`; false when the
// model cannot be used, and package.source says why.
bool takeDesignPackage(RunOptions const& options, IBIS_MODEL const& generator, IbsDesignPaths const& paths,
                       ResolutionReport& report, DesignPackage& package, std::vector<std::string>& warnings)
{
    if (!options.pinParasitics && !options.packageModel)
        return true;
    if (!readDesignPackage(paths.packageSource, options.secondPath, ibsPinRowPins(generator), package))
        return false;
    if (package.source.path.empty()) {
        std::string const asked = options.pinParasitics && options.packageModel
                                      ? "--pin-parasitics and --package-model change"
                                      : options.pinParasitics ? "--pin-parasitics changes" : "--package-model changes";
        warnings.push_back("no package model: neither a package model file " + paths.packageFileName +
                           " beside the master file nor the master file defines one; " + asked + " nothing");
        return true;
    }
    if (!package.lacking.empty())
        warnings.push_back("the package model " + package.name + " lists no pin " + someOf(package.lacking, 8) +
                           (package.lacking.size() == 1 ? ": its [Pin] row keeps" : ": their [Pin] rows keep") +
                           " the [Package] values");
    IbsDesignFileOptions designFile = ibsDesignFileOptions();
    if (options.pinParasitics)
        designFile.pinParasitics = package.values;
    if (options.packageModel && package.reduced) {
        designFile.packageModel = package.name;
        designFile.writePackageModel = [reduced = package.reduced](std::ostream& out) {
            writeDefineText(*reduced, out);
        };
    }
    ibsSetDesignFileOptions(std::move(designFile));
    report.setPinParasitics(package.values);
    return true;
}

// "FILE:LINE: TEXT" of a package model that cannot be used.
std::string packageError(PackageSource const& source)
{
    return source.errorFile + (source.errorLine > 0 ? ":" + std::to_string(source.errorLine) : std::string()) +
           ": " + source.error;
}

// The legacy host: the generator driven as the legacy flow drives it, with
// what it prints and exits with, and the resolution report on request.
int legacyPadRun(RunOptions const& options, ResolutionReport& report)
{
    // The readers would stop on a directory with an exception, or wait on a
    // device for ever: such an input is refused where it would be opened.
    bool masterChecked = false;
    auto checkMaster = [&] {
        std::string const hazard = safety::readerHazard(options.secondPath);
        if (!hazard.empty())
            refuseInput("the master file", options.secondPath, hazard);
        masterChecked = true;
    };
    if (ibsNamesPadReport(options.firstPath)) {
        std::string const hazard = safety::readerHazard(options.firstPath);
        if (!hazard.empty())
            refuseInput("the pad report", options.firstPath, hazard);
    }
    std::string family;
    IBIS_MODEL::getDevName(options.firstPath, family);
    if (options.familyGiven)
        family = options.family;
    if (IBIS_MODEL::_is_brinmark_flow && ibsNamesIbisFile(options.secondPath))
        checkMaster();
    std::unique_ptr<IBIS_MODEL> generator(newGenerator(options, family));
    if (!masterChecked)
        checkMaster();

    if (!generator->loadIbisModels())
        ibsFatal(IBS_MSG_1003);
    if (options.dumpAltModels && options.vargon)
        static_cast<IBIS_MODEL_VARGON&>(*generator).printAltModelLists();
    if (options.substituteNearest)
        ibsSetSubstituteChooser(&ibsnearest::nearestSubstitute);
    bool const reporting = !options.reportFile.empty();
    if (reporting)
        report.beforeWalk(*generator);
    generator->setDesignModels();
    if (reporting)
        report.afterWalk(*generator);

    IbsDesignPaths const paths = ibsDesignPaths(*generator, options.btn);
    safety::Overwrite const overwrite = safety::findOverwrite(padInputs(options, paths), padOutputs(options, paths));
    if (overwrite.found) {
        std::fflush(stdout);
        std::fprintf(stderr, "pad2ibis: %s; nothing was written\n", safety::describe(overwrite).c_str());
        return 2;
    }
    DesignPackage package;
    std::vector<std::string> warnings;
    bool const usable = takeDesignPackage(options, *generator, paths, report, package, warnings);
    std::fflush(stdout);
    for (std::string const& warning : warnings)
        std::fprintf(stderr, "pad2ibis: warning: %s\n", warning.c_str());
    if (!usable) {
        std::fprintf(stderr, "pad2ibis: error: %s; nothing was written\n", packageError(package.source).c_str());
        return 1;
    }

    if (!generator->writeIbisModels(options.btn))
        ibsReport(IBS_MSG_1004);
    if (generator->_missingModelCount > 0)
        ibsReport(IBS_MSG_1005);
    if (!reporting)
        return 0;
    report.afterWrite(*generator);
    report.setRun(options.firstPath, options.secondPath, options.vargon);
    if (!report.write(options.reportFile)) {
        std::fflush(stdout);
        std::fprintf(stderr, "pad2ibis: cannot write the report %s\n", options.reportFile.c_str());
        return 2;
    }
    return 0;
}

// The scan of the master runs beside the generator, which reads the pad
// report and the master's head meanwhile: it reads the master and nothing
// else, and writes nothing. A run that ends before the scan is done waits
// for it at exit, ahead of the program's own clean-up.
class MasterScanTask {
public:
    void start(std::string const& path)
    {
        // The thread is made ahead of the exit handler, so that the handler
        // runs first at exit and joins it before it is destroyed.
        static bool registered = false;
        if (!registered) {
            running();
            std::atexit(&MasterScanTask::joinAtExit);
            registered = true;
        }
        running() = std::thread([this, path] { _scan = safety::scanMaster(path); });
    }

    safety::MasterScan const& result()
    {
        if (running().joinable())
            running().join();
        return _scan;
    }

private:
    static std::thread& running()
    {
        static std::thread thread;
        return thread;
    }
    static void joinAtExit()
    {
        if (running().joinable())
            running().join();
    }

    safety::MasterScan _scan;
};

// The default mode: each input read ahead of the generator for what it would
// misread, nothing written unless all is well, and a summary of the run.
class PadRun {
public:
    PadRun(RunOptions const& options, ResolutionReport& report)
        : _options(options), _report(report), _console(options.quiet, options.verbose)
    {
    }

    int run();

private:
    // Each step ends the run with its exit code when it finds a problem.
    void checkArguments() const;
    void readPadReport();
    void checkOutputs(IbsDesignPaths const& paths) const;
    void checkMaster();
    void loadModels();
    void resolve();
    void readPackage(IbsDesignPaths const& paths);
    // Makes the folders of a file that are not there yet.
    void makeFolders(std::string const& file) const;
    void write(IbsDesignPaths const& paths);
    void summarize(IbsDesignPaths const& paths) const;
    [[noreturn]] void fail(int code) const;

    RunOptions const& _options;
    ResolutionReport& _report;
    Console _console;
    bool _masterChecked = false; // the master scan's findings were said
    std::string _family;
    std::unique_ptr<IBIS_MODEL> _generator;
    MasterScanTask _masterScan;
    DesignPackage _package;
};

int PadRun::run()
{
    _console.attach();
    checkArguments();
    _masterScan.start(_options.secondPath);
    readPadReport();
    IbsDesignPaths const paths = ibsDesignPaths(*_generator, _options.btn);
    checkOutputs(paths);
    // The generator loads the models and walks the signals while the scan
    // of the master runs on; what they say waits for the scan's verdict,
    // and an error of theirs asks for it first.
    _console.hold([this] { checkMaster(); });
    loadModels();
    resolve();
    checkMaster();
    readPackage(paths);
    write(paths);
    summarize(paths);
    return 0;
}

void PadRun::fail(int code) const
{
    std::fflush(stdout);
    ibsExit(code);
}

void PadRun::checkArguments() const
{
    for (safety::RunFile const& input :
         {safety::RunFile{"the pad report", _options.firstPath}, safety::RunFile{"the master file", _options.secondPath}}) {
        std::string const problem = safety::inputProblem(input.path);
        if (!problem.empty()) {
            _console.error(input.what + " " + input.path + " " + problem);
            fail(1);
        }
    }
    if (!ibsNamesPadReport(_options.firstPath))
        ibsFatal(IBS_MSG_1014, {_options.firstPath.c_str()});
    if (!ibsNamesIbisFile(_options.secondPath))
        ibsFatal(IBS_MSG_1012, {_options.secondPath.c_str()});
}

void PadRun::readPadReport()
{
    safety::PadScan const scan = safety::scanPadReport(_options.firstPath);
    if (_console.findings(_options.firstPath, scan.findings) > 0) {
        _console.error("the pad report " + _options.firstPath + " cannot be read as it stands; nothing was written");
        fail(1);
    }
    // A report written with CR LF line ends reads as its twin with LF ones.
    ibsSetPadReportCrLf(true);
    IBIS_MODEL::getDevName(_options.firstPath, _family);
    if (_options.familyGiven)
        _family = _options.family;
    _generator.reset(newGenerator(_options, _family));
    _console.progress("Read the pad report " + _options.firstPath + ": part " + IBIS_MODEL::_input_dev_name +
                      ", package " + _generator->_packageName + ", " +
                      std::to_string(_generator->_iobufs.size()) + " signals");
}

void PadRun::checkOutputs(IbsDesignPaths const& paths) const
{
    safety::Overwrite const overwrite = safety::findOverwrite(padInputs(_options, paths), padOutputs(_options, paths));
    if (overwrite.found) {
        _console.error(safety::describe(overwrite) + "; nothing was written");
        fail(2);
    }
    std::string const problem = _options.reportFile.empty() ? "" : safety::unwritableProblem(_options.reportFile);
    if (!problem.empty()) {
        _console.error("cannot write the report " + _options.reportFile + ": " + problem + "; nothing was written");
        fail(2);
    }
}

void PadRun::checkMaster()
{
    if (_masterChecked)
        return;
    _masterChecked = true;
    safety::MasterScan const& scan = _masterScan.result();
    std::vector<ibischeck::Finding> findings = scan.findings;
    std::vector<ibischeck::Finding> const package = safety::packageFindings(scan, _generator->_packageName);
    findings.insert(findings.end(), package.begin(), package.end());
    ibischeck::sortByLine(findings);
    // What the generator said meanwhile follows the findings, and is not
    // said when they refuse the master.
    Console::Held const held = _console.release();
    if (_console.findings(_options.secondPath, findings) > 0) {
        _console.error("the master file " + _options.secondPath +
                       " cannot be read as it stands; nothing was written");
        fail(1);
    }
    _console.say(held);
}

void PadRun::loadModels()
{
    if (!_generator->loadIbisModels()) {
        // Why not: what the checker finds in the master for this part.
        std::vector<ibischeck::Finding> findings;
        ibischeck::checkMasterPath(_options.secondPath, _family, findings);
        std::vector<ibischeck::Finding> errors;
        for (ibischeck::Finding const& finding : findings)
            if (finding.severity == ibischeck::Severity::Error && errors.size() < 5)
                errors.push_back(finding);
        _console.findings(_options.secondPath, errors);
        _console.error("the models of the master file " + _options.secondPath + " cannot be loaded" +
                       (errors.empty() ? std::string(": it lists no model under [Pin], or lacks a naming table "
                                                     "that the part's family needs")
                                       : std::string(": pad2ibis check --master --family ") + _family + " " +
                                             _options.secondPath + " tells all"));
        fail(2);
    }
    if (_options.dphy) {
        // The D-PHY rows read each such model's mode at its 13th character.
        for (std::string const& model : _generator->_availableModels) {
            if (model.find("mip") != std::string::npos && model.size() < 13) {
                _console.error("the master file lists the D-PHY model " + model +
                               ", shorter than the 13 characters that --dphy reads its mode from; nothing was "
                               "written");
                fail(1);
            }
        }
    }
    _console.progress("Read the master file " + _options.secondPath + ": component " + _generator->_componentName +
                      ", " + std::to_string(_generator->_availableModels.size()) + " models");
    if (_options.dumpAltModels && _options.vargon)
        static_cast<IBIS_MODEL_VARGON&>(*_generator).printAltModelLists();
}

void PadRun::resolve()
{
    if (_options.substituteNearest)
        ibsSetSubstituteChooser(&ibsnearest::nearestSubstitute);
    // The report follows the walk when one is asked for; the summary reads
    // each signal's outcome from its record.
    bool const reported = !_options.reportFile.empty();
    if (reported)
        _report.beforeWalk(*_generator);
    _generator->setDesignModels();
    if (reported)
        _report.afterWalk(*_generator);
}

void PadRun::readPackage(IbsDesignPaths const& paths)
{
    std::vector<std::string> warnings;
    bool const usable = takeDesignPackage(_options, *_generator, paths, _report, _package, warnings);
    for (std::string const& warning : warnings)
        _console.warning(warning);
    if (usable)
        return;
    PackageSource const& source = _package.source;
    if (source.errorLine > 0)
        _console.findings(source.errorFile, {{source.errorLine, ibischeck::Severity::Error, source.error}});
    else
        _console.error(source.errorFile + " " + source.error);
    _console.error("the package model of " + source.errorFile + " cannot be used as it stands; nothing was written");
    fail(1);
}

void PadRun::makeFolders(std::string const& file) const
{
    std::string const folder = file.substr(0, file.rfind('/') + 1);
    for (std::string::size_type at = 0; (at = folder.find('/', at + 1)) != std::string::npos;) {
        std::string const made = folder.substr(0, at);
        struct stat info;
        if (::stat(made.c_str(), &info) != 0 && ::mkdir(made.c_str(), 0777) != 0) {
            _console.error("cannot make the folder " + shownPath(made));
            fail(2);
        }
    }
}

void PadRun::write(IbsDesignPaths const& paths)
{
    // A pad report in a folder of its own gets its design file in the same
    // folder below IBIS.
    makeFolders(paths.designFile);
    if (!_generator->writeIbisModels(_options.btn))
        ibsReport(IBS_MSG_1004);
    if (_options.reportFile.empty())
        return;
    _report.afterWrite(*_generator);
    _report.setRun(_options.firstPath, _options.secondPath, _options.vargon);
    makeFolders(_options.reportFile);
    if (!_report.write(_options.reportFile, ResolutionReport::formatOf(_options.reportFile, true))) {
        _console.error("cannot write the report " + _options.reportFile);
        fail(2);
    }
}

void PadRun::summarize(IbsDesignPaths const& paths) const
{
    std::vector<console::SummaryFile> files = {{shownPath(_generator->_designIbisFile), "design IBIS file"}};
    for (Console::Written const& written : _console.written()) {
        if (written.role == IBS_FILE_PACKAGE)
            files.push_back({shownPath(written.path), "package model, copied from beside the master file"});
        else if (written.role == IBS_FILE_COMPANION)
            files.push_back({shownPath(written.path), "companion chip's IBIS file, copied"});
    }
    if (!_options.reportFile.empty())
        files.push_back({shownPath(_options.reportFile), "resolution report"});
    std::string text = console::filesSummary("Wrote:", files);
    bool const packageCopied = std::any_of(_console.written().begin(), _console.written().end(),
                                           [](Console::Written const& w) { return w.role == IBS_FILE_PACKAGE; });
    if (!packageCopied)
        text += "No package model file " + paths.packageFileName + " lies beside the master file; none was copied.\n";
    if (!_package.source.path.empty()) {
        text += "Package model " + _package.name + " (" + shownPath(_package.source.path) + "): " +
                std::to_string(_package.covered) + " of " + std::to_string(_package.pins.size()) + " design pins\n";
        if (_options.pinParasitics)
            text += "  R_pin, L_pin and C_pin on their [Pin] rows\n";
        if (_options.packageModel && _package.covered > 0)
            text += "  [Define Package Model] " + _package.name + " of them in the design file\n";
    }
    console::SignalCounts counts;
    counts.substituting = _options.substituteNearest;
    for (IB_IOBUF const* signal : _generator->_iobufs) {
        ++counts.total;
        int const outcome = signal->status;
        int* const counter = outcome == IBS_OUTCOME_RESOLVED      ? &counts.resolved
                             : outcome == IBS_OUTCOME_FALLBACK    ? &counts.fallback
                             : outcome == IBS_OUTCOME_SUBSTITUTED ? &counts.substituted
                             : outcome == IBS_OUTCOME_MISSING     ? &counts.missing
                                                                  : &counts.none;
        ++*counter;
        if (outcome == IBS_OUTCOME_MISSING)
            counts.missingNames.push_back(signal->name != nullptr ? signal->name : "");
    }
    _console.summary(text + console::signalsSummary(counts));
}

} // namespace

int runPadFlow(RunOptions const& options)
{
    ResolutionReport report;
    if (options.legacy)
        return legacyPadRun(options, report);
    return PadRun(options, report).run();
}
