// The design IBIS file: its name and directory, the order of its sections,
// the banner and the preamble copied from the master file.

#include <cstring>

#include "driver/basibsgen.h"
#include "driver/family_table.h"
#include "driver/line_reader.h"
#include "driver/load_time.h"
#include "driver/messages.h"
#include "driver/paths.h"
#include "host/ut_filemanager.h"
#include "host/ut_string.h"
#include "host/ut_timestamp.h"
#include "host/ut_version.h"
#include "master/master_lines.h"
#include "writer/bulk_output.h"
#include "writer/copy_lines.h"
#include "writer/design_file_options.h"
#include "writer/design_paths.h"
#include "writer/model_index.h"
#include "writer/option_sections.h"

bool IBIS_MODEL::writeIbisModels(int btnCount)
{
    // The final name, with the IBIS directory below the current one for a
    // relative name, and the names of the files beside it.
    IbsDesignPaths const paths = ibsDesignPaths(*this, btnCount);
    if (!paths.ibisDirectory.empty() && !ut_file.exist(paths.ibisDirectory.c_str()) &&
        !ut_file.mkdir(paths.ibisDirectory.c_str()))
        ibsFatal(IBS_MSG_1034, {paths.ibisDirectory.c_str()});
    _designIbisFile = paths.designFile;

    _designStream.open(_designIbisFile.c_str(), std::ios::out | std::ios::trunc);
    _masterStream.open(_masterIbisFile.c_str());
    if (!isDeviceIbisFileOpen() || !isDesignIbisFileOpen())
        return false;

    writeIbisHeaderInformations();
    writeIbisCopyRights();
    writeIbisPackageInfo();
    writeIbisPinInfo();
    _masterStream.close();
    _masterStream.clear();

    writeDiffPinSection();
    writeModelSelectors(*this);
    // The blocks of the design's models are located in one pass over the
    // master, then copied from there, each followed by its closing lines.
    std::set<std::string> const blocks = modelsWithBlocks(*this);
    if (!blocks.empty()) {
        _masterStream.open(_masterIbisFile.c_str());
        isDeviceIbisFileOpen();
        std::vector<std::string> const models(blocks.begin(), blocks.end());
        std::vector<ModelBlockStart> const starts = findModelBlocks(_masterStream, models);
        // The blocks go out to the design file in large pieces.
        BulkOutputScope const bulk(_designStream);
        for (size_t i = 0; i < models.size(); ++i) {
            if (starts[i].next >= 0)
                copyModelBlock(_masterStream, _designStream, starts[i]);
            writeEndModel(models[i]);
            writeSectionSeperator();
        }
        _masterStream.close();
        _masterStream.clear();
    }
    _designStream << "| End [Component]\n";
    // A package model that the host gives the design file stands behind the
    // component.
    if (ibsDesignFileOptions().writePackageModel)
        ibsDesignFileOptions().writePackageModel(_designStream);
    _designStream << "[End]\n";
    _designStream.close();

    writeFileLocation();
    ibsReport(IBS_MSG_1031);
    if (!paths.btnSource.empty())
        writeBtnFile(paths.btnStem, paths.btnSource, btnCount);
    writePackageFile();
    return true;
}

void IBIS_MODEL::writeIbisHeaderInformations()
{
    writeSectionSeperator();

    // 33 characters of maker's line, and lines of 80 at the most.
    std::string const maker = "| IBIS Models Generator: Corvane ";
    std::string version;
    if (ut_get_version_information(version) == 0) {
        _designStream << "| Corvane IBIS Models Generator\n";
    } else if (version.size() + 33 <= 80) {
        _designStream << maker << version << "\n";
    } else {
        std::string::size_type patch = version.find("Patch");
        if (patch == std::string::npos || patch == 0) {
            _designStream << "| IBIS Models Generator:\n";
            _designStream << "| " << version << "\n";
        } else {
            // The character just ahead of "Patch" stands on neither line.
            _designStream << maker << version.substr(0, patch - 1) << "\n";
            _designStream << "|                        " << version.substr(patch) << "\n";
        }
    }

    UT_TIMESTAMP* stamp = new UT_TIMESTAMP();
    char* date = ut_strdup(stamp->get_timestamp_string());
    if (char* end = std::strchr(date, '\n'))
        *end = '\0';
    _designStream << "| Generate date: " << date << "\n";
    delete stamp;
    delete[] date;
}

void IBIS_MODEL::writeIbisCopyRights()
{
    // The two companion-chip parts name themselves on the component line.
    bool const zu2Part = ibsPartNamesItsComponent(_partName);
    bool deviceLineDone = false;
    // A component name of the host's own replaces the master's on the
    // first component line.
    std::string const& componentName = ibsDesignFileOptions().componentName;
    bool componentLineDone = componentName.empty();
    char line[IBS_COPY_LINE_SIZE];
    // The loop watches the end of the file alone, as the reads that reach it
    // are copied too; a line over the limit ends it as well.
    while (!_masterStream.eof()) {
        ibsReadLine(_masterStream, line, IBS_COPY_LINE_SIZE);
        if (_masterStream.fail() && !_masterStream.eof())
            break;
        std::string raw = line;
        if (!componentLineDone && ibsIsComponentLine(line)) {
            _designStream << withComponentName(raw, componentName) << "\n";
            componentLineDone = true;
            continue;
        }
        if (zu2Part) {
            char upperCopy[IBS_COPY_LINE_SIZE];
            std::strcpy(upperCopy, line);
            ut_strupr(upperCopy);
            char const* zu2 = std::strstr(upperCopy, "ZU2");
            if (zu2 != nullptr && std::strstr(upperCopy, "COMPONENT") != nullptr) {
                _designStream << raw.substr(0, static_cast<size_t>(zu2 - upperCopy)) << _partName.c_str()
                              << "\n";
                continue;
            }
        }
        // The master's package keyword line ends the preamble; the design
        // file gets a [Package] line of its own.
        if (ibsEndsPreamble(line))
            break;
        // Text behind a "|" takes no part in the tests.
        char upperBuf[IBS_COPY_LINE_SIZE];
        std::strcpy(upperBuf, line);
        std::string upper = ut_strupr(upperBuf);
        eat_comment_character(upper);
        if (upper.find("[FILE NAME]") != std::string::npos) {
            // The name behind the last "\", or else behind the last "/".
            std::string name = _designIbisFile;
            std::string::size_type cut = name.rfind('\\');
            if (cut == std::string::npos)
                cut = name.rfind('/');
            if (cut != std::string::npos)
                name = name.substr(cut + 1);
            std::string::size_type dot = name.rfind('.');
            if (dot != std::string::npos && dot > 40)
                name = name.substr(0, 39) + "~.ibs";
            _designStream << "[File Name]     " << name << "\n";
            continue;
        }
        std::string::size_type device = upper.find("DEVICE:");
        if (_is_brinmark_flow && device != std::string::npos) {
            // The status found in the master's notes takes the device
            // line's place, from the same column; later device lines go.
            if (!deviceLineDone) {
                _designStream << std::string(device, ' ') << _deviceStatus << "\n";
                deviceLineDone = true;
            }
            continue;
        }
        _designStream << raw << "\n";
    }
}

void IBIS_MODEL::eat_comment_character(std::string& text)
{
    std::string::size_type bar = text.find('|');
    if (bar != std::string::npos)
        text.erase(bar);
}

void IBIS_MODEL::writeSectionSeperator()
{
    _designStream << "|" << std::string(72, '*') << "\n";
}
