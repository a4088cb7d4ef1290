// [Model Selector] sections: for a design model, the models of the master
// that differ from it only in slew and drive, so that a simulator can try
// them on the board; and the set of models whose blocks the file holds.

#include "writer/option_sections.h"

#include "driver/basibsgen.h"
#include "master/design_value.h"
#include "writer/design_file_options.h"
#include "writer/reserved_models.h"

namespace {

const std::size_t kKeyLength = 20;
// Slew at its position, drive in the three behind it.
const std::size_t kSlewDriveLength = 4;

std::string withoutSlewAndDrive(std::string model)
{
    return model.replace(IBIS_KEY_SLEW, kSlewDriveLength, kSlewDriveLength, '\0');
}

// The design value that the master's naming table gives this code.
std::string designValue(IBIS_MODEL const& generator, std::string const& table, std::string const& code)
{
    auto const found = generator._devIoMaps.find(table);
    return ibsDesignValue(found != generator._devIoMaps.end() ? &found->second : nullptr, code);
}

} // namespace

ModelSelectors::ModelSelectors(std::set<std::string> const& available, bool enabled) : _available(available)
{
    if (!enabled)
        return;
    for (std::string const& model : available)
        if (model.size() == kKeyLength)
            _groups[withoutSlewAndDrive(model)].push_back(model);
}

std::vector<std::string> ModelSelectors::entries(std::string const& model) const
{
    if (model.size() != kKeyLength)
        return {};
    auto const group = _groups.find(withoutSlewAndDrive(model));
    if (group == _groups.end())
        return {};
    std::vector<std::string> entries = {model};
    for (std::string const& other : group->second)
        if (other != model)
            entries.push_back(other);
    return entries.size() > 1 ? entries : std::vector<std::string>{};
}

std::string ModelSelectors::name(std::string const& model) const
{
    if (entries(model).empty())
        return "";
    // A model key and a short ending: at most 25 characters, and none of
    // them the name of a model of the master.
    std::string const base = model + "_sel";
    std::string name = base;
    for (int number = 2; _available.count(name) != 0; ++number)
        name = base + std::to_string(number);
    return name;
}

std::string ModelSelectors::pinModel(std::string const& model) const
{
    std::string const selector = name(model);
    return selector.empty() ? model : selector;
}

void writeModelSelectors(IBIS_MODEL& generator)
{
    if (!ibsDesignFileOptions().modelSelectors)
        return;
    ModelSelectors const selectors(generator._availableModels, true);
    std::string const slew = IBIS_MODEL::_is_ncd_flow ? "SLEWRATE" : "SLEW";
    for (std::string const& model : generator._designModels) {
        std::vector<std::string> const entries = selectors.entries(model);
        if (entries.empty())
            continue;
        generator._designStream << "[Model Selector] " << selectors.name(model) << "\n";
        for (std::string const& entry : entries)
            generator._designStream << entry << "  DRIVE="
                                    << designValue(generator, "DRIVE", entry.substr(IBIS_KEY_DRIVE, 3)) << " "
                                    << slew << "=" << designValue(generator, slew, entry.substr(IBIS_KEY_SLEW, 1))
                                    << "\n";
        generator.writeSectionSeperator();
    }
}

std::set<std::string> modelsWithBlocks(IBIS_MODEL const& generator)
{
    IbsDesignFileOptions const& options = ibsDesignFileOptions();
    std::set<std::string> models = generator._designModels;
    if (options.allModels)
        for (std::string const& model : generator._availableModels)
            if (!ibsReservedModelName(model))
                models.insert(model);
    ModelSelectors const selectors(generator._availableModels, options.modelSelectors);
    for (std::string const& model : generator._designModels)
        for (std::string const& entry : selectors.entries(model))
            models.insert(entry);
    return models;
}
