// The [Package] block of the design's package, copied from the master file.

#include <cstring>

#include "driver/basibsgen.h"
#include "driver/line_reader.h"
#include "driver/load_time.h"
#include "driver/messages.h"
#include "host/ut_string.h"
#include "master/master_lines.h"
#include "writer/copy_lines.h"
#include "writer/design_file_options.h"
#include "writer/pin_rows.h"

namespace {

bool holdsValueWord(char const* line)
{
    return std::strstr(line, "R_pkg") != nullptr || std::strstr(line, "L_pkg") != nullptr ||
           std::strstr(line, "C_pkg") != nullptr;
}

} // namespace

void IBIS_MODEL::writeIbisPackageInfo()
{
    bool found = false;
    char buf[IBS_COPY_LINE_SIZE];
    while (ibsReadLine(_masterStream, buf, IBS_COPY_LINE_SIZE)) {
        std::string raw = buf;
        if (raw.empty())
            continue;
        std::string const upper = ibsPackageSectionText(buf);
        if (ibsIsPinListHeading(buf)) {
            if (!found) {
                _designStream << "| The package data for this package is currently not available in\n"
                              << "| the master ibis file.\n"
                              << "[Package]\n"
                              << "|" << _packageName << "\n"
                              << "| variable            typ              min              max\n"
                              << "R_pkg                  0                0               0\n"
                              << "L_pkg                  0                0               0\n"
                              << "C_pkg                  0                0               0\n"
                              << "|\n";
            }
            // Rows that carry R_pin, L_pin and C_pin get column heads above
            // them; otherwise the master's line stands.
            _designStream << pinListHeading(raw, pinParasiticsColumn(*this, ibsDesignFileOptions())) << "\n";
            break;
        }
        if (found)
            continue;

        // A name line is the comment character and the package name. A line
        // of blanks alone has nothing to drop here, and the string operation
        // fails with its out-of-range error, uncaught.
        if (!ibsNamesPackage(upper, _packageName))
            continue;

        _designStream << "[Package]\n" << upper << "\n";
        char data[IBS_COPY_LINE_SIZE];
        ibsReadLine(_masterStream, data, IBS_COPY_LINE_SIZE);
        // The block ends on its closing comment line; a master cut short
        // ends it too.
        while (true) {
            // A value line with a "|" anywhere loses its first character,
            // whatever that is: a value the master commented out comes back
            // to life.
            if (holdsValueWord(data) && std::strchr(data, '|') != nullptr)
                _designStream << (data + (data[0] != '\0' ? 1 : 0)) << "\n";
            else
                _designStream << data << "\n";
            if (!ibsReadLine(_masterStream, data, IBS_COPY_LINE_SIZE))
                break;
            ut_strtrim(data);
            if (ibsClosesPackageBlock(data)) {
                _designStream << "|\n";
                break;
            }
        }
        found = true;
    }
    if (!found)
        ibsReport(IBS_MSG_1026, {_packageName.c_str(), _masterIbisFile.c_str()});
}
