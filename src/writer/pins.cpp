// The [Pin] rows of the design's signals, the D-PHY rows, and the
// [Diff pin] section with the design's own pins.

#include <cstring>

#include "driver/basibsgen.h"
#include "driver/line_reader.h"
#include "driver/load_time.h"
#include "host/ut_string.h"
#include "writer/design_file_options.h"
#include "writer/option_sections.h"
#include "writer/pin_rows.h"

namespace {

std::string column(std::string const& text, std::string::size_type width)
{
    return text.size() < width ? text + std::string(width - text.size(), ' ') : text;
}

// Pin in 13 columns, signal in 20, then the model, and from `start` on the
// pin's R_pin, L_pin and C_pin when the host gave them.
void writePinRow(std::ofstream& out, std::string const& pin, std::string const& signal, std::string const& model,
                 std::size_t start)
{
    out << withPinParasitics(pinRowText(pin, signal, model), pin, start, ibsDesignFileOptions()) << "\n";
}

} // namespace

void IBIS_MODEL::writeIbisPinInfo()
{
    // Rows in pad report order; a signal without a model has no place here.
    // The negative leg of a differential signal is told by the pad report's
    // pin number table, where its pin info is the signal's name and "-".
    // The row names and the model column are the signal's own unless the
    // design file options cut the names or ask for selectors.
    IbsDesignFileOptions const& options = ibsDesignFileOptions();
    std::vector<PinRowName> const names = pinRowNames(_iobufs, _diffPinMap, options.signalNameWidth);
    ModelSelectors const selectors(_availableModels, options.modelSelectors);
    std::size_t const start = pinParasiticsColumn(*this, options);
    for (std::size_t i = 0; i < _iobufs.size(); ++i) {
        IB_IOBUF const* iobuf = _iobufs[i];
        if (!names[i].row)
            continue;
        std::string const model = selectors.pinModel(iobuf->model);
        if (!names[i].pair) {
            writePinRow(_designStream, iobuf->site ? iobuf->site : "", names[i].stem, model, start);
            continue;
        }
        writePinRow(_designStream, iobuf->site ? iobuf->site : "", names[i].stem + "+", model, start);
        writePinRow(_designStream, _diffPinMap.at(std::string(iobuf->name) + "-"), names[i].stem + "-", model,
                    start);
    }
    writeDphyPinInfo();
    writeSectionSeperator();
    // A package model that the host names for the component.
    if (!options.packageModel.empty()) {
        _designStream << "[Package Model]  " << options.packageModel << "\n";
        writeSectionSeperator();
    }
}

void IBIS_MODEL::writeDphyPinInfo()
{
    if (!_mipi_dphy_ip_used)
        return;
    // Every D-PHY model of the master gets a row, high-speed and low-power
    // modes numbered apart, pins numbered across both.
    int hs = 1;
    int lp = 1;
    ModelSelectors const selectors(_availableModels, ibsDesignFileOptions().modelSelectors);
    std::size_t const start = pinParasiticsColumn(*this, ibsDesignFileOptions());
    for (std::string const& model : _availableModels) {
        if (model.find("mip") == std::string::npos)
            continue;
        // The D-PHY mode stands at the termination position; a shorter name
        // fails with the string operation's out-of-range error, uncaught.
        char mode = model.at(12);
        std::string pin, signal;
        if (!nextDphyRow(mode, hs, lp, pin, signal))
            continue;
        writePinRow(_designStream, pin, signal, selectors.pinModel(model), start);
        _designModels.insert(model);
    }
}

void IBIS_MODEL::writeDiffPinSection()
{
    _masterStream.open(_masterIbisFile.c_str());
    if (!isDeviceIbisFileOpen()) {
        _masterStream.clear();
        return;
    }
    auto finish = [this] {
        _masterStream.close();
        _masterStream.clear();
    };

    char line[IBS_COPY_LINE_SIZE];
    ibsReadLine(_masterStream, line, IBS_COPY_LINE_SIZE);
    bool keyword = false;
    while (ibsReadLine(_masterStream, line, IBS_COPY_LINE_SIZE)) {
        if (std::strstr(line, "[Diff pin]") != nullptr) {
            keyword = true;
            break;
        }
    }
    if (!keyword) {
        finish();
        return;
    }
    std::string const header = line;

    ibsReadLine(_masterStream, line, IBS_COPY_LINE_SIZE);
    while (line[0] == '|' && !ibsStreamDone(_masterStream))
        ibsReadLine(_masterStream, line, IBS_COPY_LINE_SIZE);
    if (line[0] == '[' || ibsStreamDone(_masterStream)) {
        finish();
        return;
    }

    // Each master row names the master's positive pin first; the signals
    // whose model has that master pin get the row with their own pins and
    // the master's remaining columns.
    bool written = false;
    while (line[0] != '|' && !ibsStreamDone(_masterStream)) {
        char first[IBS_COPY_LINE_SIZE];
        char second[IBS_COPY_LINE_SIZE];
        ut_strgettoken(line, first, " ", 0);
        ut_strgettoken(line, second, " ", 0);
        if (first[0] == '\0' || second[0] == '\0') {
            ibsReadLine(_masterStream, line, IBS_COPY_LINE_SIZE);
            continue;
        }
        std::map<std::string, std::string> matches;
        for (IB_IOBUF* iobuf : _iobufs) {
            char const* masterPin = iobuf->masterPin ? iobuf->masterPin : "";
            if (std::strcmp(masterPin, first) == 0)
                matches[iobuf->name] = iobuf->site ? iobuf->site : "";
        }
        // A row that matched nothing is tried again with its next two
        // columns, from what is left of it.
        if (matches.empty())
            continue;
        for (auto const& match : matches) {
            auto negative = _diffPinMap.find(match.first + "-");
            if (negative == _diffPinMap.end())
                continue;
            if (!written)
                _designStream << header << "\n";
            _designStream << column(match.second, 12) << negative->second << line << "\n";
            written = true;
        }
        ibsReadLine(_masterStream, line, IBS_COPY_LINE_SIZE);
    }
    if (written)
        writeSectionSeperator();
    finish();
}
