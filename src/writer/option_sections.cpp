// The component line and the [Pin] row names under the design file options.

#include "writer/option_sections.h"

#include <algorithm>
#include <cstring>

#include "driver/basibsgen.h"

std::string withComponentName(std::string const& line, std::string const& name)
{
    std::string::size_type const keywordEnd = line.find("[Component]") + std::strlen("[Component]");
    std::string::size_type const nameStart = line.find_first_not_of(" \t", keywordEnd);
    if (nameStart == std::string::npos)
        return line.substr(0, keywordEnd) + (keywordEnd < line.size() ? line.substr(keywordEnd) : " ") + name;
    // The name ends at a blank, a tab or the CR of a CR LF line end.
    std::string::size_type nameEnd = line.find_first_of(" \t\r", nameStart);
    if (nameEnd == std::string::npos)
        nameEnd = line.size();
    // A name written straight behind the keyword gets a blank ahead of it.
    std::string const gap = nameStart == keywordEnd ? " " : line.substr(keywordEnd, nameStart - keywordEnd);
    return line.substr(0, keywordEnd) + gap + name + line.substr(nameEnd);
}

std::vector<PinRowName> pinRowNames(std::vector<IB_IOBUF*> const& iobufs,
                                    std::map<std::string, std::string> const& diffPinMap, int width)
{
    // A signal without a model has no row; a pair is told by the pad
    // report's pin number table, where its negative leg is its name and "-".
    std::vector<PinRowName> rows(iobufs.size());
    for (std::size_t i = 0; i < iobufs.size(); ++i) {
        IB_IOBUF const* iobuf = iobufs[i];
        if (iobuf->model == nullptr || iobuf->model[0] == '\0')
            continue;
        rows[i].row = true;
        rows[i].stem = iobuf->name;
        rows[i].pair = diffPinMap.count(rows[i].stem + "-") != 0;
    }
    if (width <= 0)
        return rows;

    auto signs = [](PinRowName const& row) {
        return row.pair ? std::vector<std::string>{"+", "-"} : std::vector<std::string>{""};
    };
    // Room for the stem: a pair's sign stands within the width.
    auto room = [width](PinRowName const& row) {
        return static_cast<std::size_t>(row.pair ? std::max(width - 1, 0) : width);
    };
    auto anyOf = [&signs](PinRowName const& row, std::string const& stem, auto test) {
        for (std::string const& sign : signs(row))
            if (test(stem + sign))
                return true;
        return false;
    };

    // Names that fit stay and are claimed first, then the cuts that meet no
    // other name; the cuts that do are numbered in signal order.
    std::set<std::string> taken;
    std::map<std::string, int> cutCount;
    std::vector<std::size_t> cut;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        // A signal without a row has an empty stem, which fits.
        if (rows[i].stem.size() <= room(rows[i])) {
            for (std::string const& sign : signs(rows[i]))
                taken.insert(rows[i].stem + sign);
            continue;
        }
        cut.push_back(i);
        for (std::string const& sign : signs(rows[i]))
            ++cutCount[rows[i].stem.substr(0, room(rows[i])) + sign];
    }
    std::vector<std::size_t> numbered;
    for (std::size_t i : cut) {
        std::string const plain = rows[i].stem.substr(0, room(rows[i]));
        if (anyOf(rows[i], plain,
                  [&](std::string const& name) { return taken.count(name) != 0 || cutCount[name] > 1; })) {
            numbered.push_back(i);
            continue;
        }
        rows[i].stem = plain;
        for (std::string const& sign : signs(rows[i]))
            taken.insert(plain + sign);
    }
    std::map<std::string, int> lastNumber; // per plain cut
    for (std::size_t i : numbered) {
        std::string const full = rows[i].stem;
        int& number = lastNumber[full.substr(0, room(rows[i]))];
        std::string stem;
        do {
            std::string const ending = "~" + std::to_string(++number);
            std::size_t const keep = room(rows[i]) > ending.size() ? room(rows[i]) - ending.size() : 0;
            stem = full.substr(0, keep) + ending;
        } while (anyOf(rows[i], stem, [&](std::string const& name) { return taken.count(name) != 0; }));
        rows[i].stem = stem;
        for (std::string const& sign : signs(rows[i]))
            taken.insert(stem + sign);
    }
    return rows;
}
