// The legal configuration tables expanded into alternate model forests.

#include <cstdio>
#include <cstring>
#include <set>

#include "driver/load_time.h"
#include "variant/basib_vargon.h"

bool IBIS_MODEL_VARGON::loadAvailableModels()
{
    // The forests need the naming tables of the master, read by now.
    bool loaded = IBIS_MODEL::loadAvailableModels();
    if (loaded)
        buildAltVargonModels();
    return loaded;
}

void IBIS_MODEL_VARGON::buildAltVargonModels()
{
    buildAltModelList(_outputAltModels, BASIB_VARGON_VARGON_Legal_Outputs,
                      BASIB_VARGON_VARGON_Legal_Outputs_cells,
                      BASIB_VARGON_0_VARGON_Legal_Outputs_columns, BASIB_VARGON_LEGAL_COLUMNS, "io");
    buildAltModelList(_inputAltModels, BASIB_VARGON_VARGON_Legal_Inputs,
                      BASIB_VARGON_VARGON_Legal_Inputs_cells,
                      BASIB_VARGON_1_VARGON_Legal_Inputs_columns, BASIB_VARGON_LEGAL_COLUMNS, "in");
    buildAltModelList(_bidirAltModels, BASIB_VARGON_VARGON_Legal_BIDIs,
                      BASIB_VARGON_VARGON_Legal_BIDIs_cells, BASIB_VARGON_2_VARGON_Legal_BIDIs_columns,
                      BASIB_VARGON_LEGAL_COLUMNS, "io");
}

void IBIS_MODEL_VARGON::buildAltModelList(BASIB_ALT_MODEL_MAP& models, char const*** table,
                                          int cells, char const** columns, int columnCount,
                                          char const* direction)
{
    // Columns that state what is legal but have no field of their own.
    std::set<char const*, VARGON_ltstr> const noLevel = {"VREF", "REFCIRCUIT", "PWRSAVE",
                                                         "PCICLAMP"};
    for (int row = 0; row + columnCount <= cells; row += columnCount) {
        char const*** cell = table + row;

        // The row's chain: the path of its preferred values.
        BASIB_ALT_MODEL_INFO* current = nullptr;
        for (int column = 0; column < columnCount; ++column) {
            std::string header = translateColHeader(columns[column]);
            if (noLevel.count(header.c_str()) != 0)
                continue;
            std::string value = translateCellValue(header, cell[column][0], direction);
            if (current == nullptr) {
                current = new BASIB_ALT_MODEL_INFO(header, value, nullptr);
                std::vector<BASIB_ALT_MODEL_INFO*>*& roots = models[value];
                if (roots == nullptr)
                    roots = new std::vector<BASIB_ALT_MODEL_INFO*>();
                roots->push_back(current);
            } else {
                BASIB_ALT_MODEL_INFO* node = new BASIB_ALT_MODEL_INFO(header, value, current);
                current->addChild(node, false);
                current = node;
            }
        }

        // The alternatives, from the leaf upwards: each is a deep copy of
        // the level's preferred node, so it carries the whole expansion of
        // the levels below it. The IO type is never expanded.
        for (int column = columnCount - 1; column >= 1 && current != nullptr; --column) {
            std::string header = translateColHeader(columns[column]);
            if (noLevel.count(header.c_str()) != 0)
                continue;
            BASIB_ALT_MODEL_INFO* owner = current->GetOwner();
            if (owner == nullptr)
                break;
            for (int k = 1; cell[column][k] != nullptr; ++k) {
                BASIB_ALT_MODEL_INFO* copy = new BASIB_ALT_MODEL_INFO(current);
                copy->setKeyValue(translateCellValue(header, cell[column][k], direction));
                owner->addChild(copy, false);
            }
            // A row that allows the PCI clamp gets clamped variants of every
            // pull value; the first goes in front when the clamp is the
            // preferred setting.
            if (header == "PULL" && column + 1 < columnCount) {
                char const** clamp = cell[column + 1];
                int on = -1;
                for (int k = 0; clamp[k] != nullptr; ++k) {
                    if (std::strcmp(clamp[k], "ON") == 0) {
                        on = k;
                        break;
                    }
                }
                if (on >= 0) {
                    bool front = on == 0;
                    for (int k = 0; cell[column][k] != nullptr; ++k) {
                        std::string text = std::string(cell[column][k]) + "_PCICLAMP";
                        if (text == "NONE_PCICLAMP" || text == "OFF_PCICLAMP")
                            text = "PCICLAMP";
                        BASIB_ALT_MODEL_INFO* copy = new BASIB_ALT_MODEL_INFO(current);
                        copy->setKeyValue(translateCellValue(header, text.c_str(), direction));
                        owner->addChild(copy, front);
                        front = false;
                    }
                }
            }
            current = owner;
        }
    }
}

void IBIS_MODEL_VARGON::printAltModelLists()
{
    struct Forest {
        BASIB_ALT_MODEL_MAP& models;
        char const* title;
        int indent;
    } const forests[] = {
        {_outputAltModels, "OUTPUT MODEL LISTS", 16},
        {_inputAltModels, "INPUT MODEL LISTS", 16},
        {_bidirAltModels, "BIDIR MODEL LISTS", 15},
    };
    for (Forest const& forest : forests) {
        std::printf("\n--------------------\n\n%s\n", forest.title);
        for (auto const& entry : forest.models) {
            std::printf("\n--------------------\n\n%s \n", entry.first.c_str());
            if (entry.second == nullptr)
                continue;
            for (BASIB_ALT_MODEL_INFO* root : *entry.second) {
                root->printMe(forest.indent);
                std::printf("\n");
            }
        }
    }
}
