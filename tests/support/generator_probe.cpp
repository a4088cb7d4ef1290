#include "support/generator_probe.h"

#include <sstream>

namespace ts {

std::string padReport(std::string const& partType, std::vector<std::string> const& rows,
                      std::string const& extra)
{
    std::ostringstream text;
    text << "Corvane Design Suite Pad Report for probe\n"
         << "Generated for a test\n"
         << "\n"
         << "PART TYPE:        " << partType << "\n"
         << "PACKAGE:          CABGA256\n"
         << "\n"
         << "Pinout by Port Name:\n"
         << "+-----------+----------+-------------+------+-----------------------+\n"
         << "| Port Name | Pin/Bank | Buffer Type | Site | Properties            |\n"
         << "+-----------+----------+-------------+------+-----------------------+\n";
    for (std::string const& row : rows)
        text << row << "\n";
    text << "+-----------+----------+-------------+------+-----------------------+\n"
         << extra;
    return text.str();
}

IB_IOBUF* makeIobuf(std::string const& name, std::string const& site, std::string const& type,
                    std::string const& attributes, std::string const& bank)
{
    std::vector<IB_IOBUF_CONFIG*> configs;
    std::istringstream in(attributes);
    std::string token;
    while (in >> token) {
        std::string::size_type colon = token.find(':');
        configs.push_back(new IB_IOBUF_CONFIG(token.substr(0, colon),
                                              colon == std::string::npos ? "" : token.substr(colon + 1)));
    }
    return new IB_IOBUF(name.c_str(), configs, site.c_str(), type.c_str(), bank.c_str());
}

} // namespace ts
