// The layout of the [Pin] rows, and the R_pin, L_pin and C_pin columns.

#include "writer/pin_rows.h"

#include <algorithm>

#include "driver/basibsgen.h"
#include "writer/design_file_options.h"
#include "writer/option_sections.h"

namespace {

// Where a row of a 13-character pin, a 20-character signal and a
// 20-character model ends, and the blank behind it.
constexpr std::size_t kNarrowestColumn = 13 + 1 + 20 + 1 + 20 + 1;
// Each value takes its 9 characters and a blank.
constexpr std::size_t kValueWidth = 9;

std::string column(std::string const& text, std::string::size_type width)
{
    return text.size() < width ? text + std::string(width - text.size(), ' ') : text;
}

} // namespace

std::string pinRowText(std::string const& pin, std::string const& signal, std::string const& model)
{
    return column(pin, 13) + " " + column(signal, 20) + " " + model;
}

bool nextDphyRow(char mode, int& hs, int& lp, std::string& pin, std::string& signal)
{
    if (mode == 'h')
        signal = "mode_hs_" + std::to_string(hs++);
    else if (mode == 'l')
        signal = "mode_lp_" + std::to_string(lp++);
    else
        return false;
    pin = "MIP_" + std::to_string(hs + lp - 2);
    return true;
}

std::vector<PinRowLine> pinRowLines(IBIS_MODEL const& generator)
{
    IbsDesignFileOptions const& options = ibsDesignFileOptions();
    std::vector<PinRowLine> rows;
    std::vector<PinRowName> const names =
        pinRowNames(generator._iobufs, generator._diffPinMap, options.signalNameWidth);
    ModelSelectors const selectors(generator._availableModels, options.modelSelectors);
    for (std::size_t i = 0; i < generator._iobufs.size(); ++i) {
        IB_IOBUF const* iobuf = generator._iobufs[i];
        if (!names[i].row)
            continue;
        std::string const model = selectors.pinModel(iobuf->model);
        std::string const site = iobuf->site ? iobuf->site : "";
        if (!names[i].pair) {
            rows.push_back({site, pinRowText(site, names[i].stem, model)});
            continue;
        }
        std::string const negative = generator._diffPinMap.at(std::string(iobuf->name) + "-");
        rows.push_back({site, pinRowText(site, names[i].stem + "+", model)});
        rows.push_back({negative, pinRowText(negative, names[i].stem + "-", model)});
    }
    if (!IBIS_MODEL::_mipi_dphy_ip_used)
        return rows;
    int hs = 1, lp = 1;
    for (std::string const& model : generator._availableModels) {
        if (model.find("mip") == std::string::npos || model.size() < 13)
            continue;
        std::string pin, signal;
        if (nextDphyRow(model[12], hs, lp, pin, signal))
            rows.push_back({pin, pinRowText(pin, signal, selectors.pinModel(model))});
    }
    return rows;
}

std::size_t pinParasiticsColumn(IBIS_MODEL const& generator, IbsDesignFileOptions const& options)
{
    if (options.pinParasitics.empty())
        return 0;
    std::size_t widest = 0;
    bool any = false;
    for (PinRowLine const& row : pinRowLines(generator)) {
        if (options.pinParasitics.count(row.pin) == 0)
            continue;
        any = true;
        widest = std::max(widest, row.text.size() + 1);
    }
    return any ? std::max(widest, kNarrowestColumn) : 0;
}

std::string pinListHeading(std::string const& masterLine, std::size_t start)
{
    if (start == 0)
        return masterLine;
    // The heads over the pin, signal and model columns, then the values'.
    std::string const names = pinRowText("[Pin]", "signal_name", "model_name");
    return names + std::string(start > names.size() ? start - names.size() : 1, ' ') +
           ::column("R_pin", kValueWidth + 1) + ::column("L_pin", kValueWidth + 1) + "C_pin";
}

std::string withPinParasitics(std::string const& row, std::string const& pin, std::size_t start,
                              IbsDesignFileOptions const& options)
{
    if (start == 0)
        return row;
    auto const values = options.pinParasitics.find(pin);
    if (values == options.pinParasitics.end())
        return row;
    return ::column(row, start) + ::column(values->second.r, kValueWidth + 1) +
           ::column(values->second.l, kValueWidth + 1) + values->second.c;
}
