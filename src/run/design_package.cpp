// The package model of a design: read, reduced to the design's pins, and
// composed into what the design file holds.

#include "run/design_package.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <set>
#include <sstream>
#include <sys/stat.h>

#include "ibis/ibis_number.h"

namespace {

using ibis::Matrix;
using ibis::PackageValue;
using ibis::ReducedPackage;

bool isRegularFile(std::string const& path)
{
    struct stat info;
    return !path.empty() && ::stat(path.c_str(), &info) == 0 && S_ISREG(info.st_mode);
}

// "line N: TEXT" of the reduction as its line and text.
void locate(std::string const& path, std::string const& error, PackageSource& source)
{
    source.errorFile = path;
    source.error = error;
    std::size_t const colon = error.find(": ");
    if (error.compare(0, 5, "line ") != 0 || colon == std::string::npos)
        return;
    source.errorLine = std::atoi(error.c_str() + 5);
    source.error = error.substr(colon + 2);
}

enum class Read { Found, NoModel, Failed };

Read readFrom(std::string const& path, std::vector<std::string> const& pins, ReducedPackage& out,
              PackageSource& source)
{
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        locate(path, "cannot be opened", source);
        return Read::Failed;
    }
    std::string why;
    if (ibis::readReducedPackage(in, "", pins, out, why))
        return Read::Found;
    if (why == "no [Define Package Model]")
        return Read::NoModel;
    locate(path, why, source);
    return Read::Failed;
}

// Header text as it may stand in the design file: printable ASCII.
std::string printable(std::string text)
{
    for (char& c : text)
        if (c < ' ' || c > '~')
            c = '?';
    return text;
}

std::string padded(std::string const& text, std::size_t width)
{
    return text.size() < width ? text + std::string(width - text.size(), ' ') : text + " ";
}

// Lines on their way to a stream, gathered into pieces of some 64 KB.
class Lines {
public:
    explicit Lines(std::ostream& out) : _out(out) { _piece.reserve(kPiece + 256); }
    ~Lines() { flush(); }
    // Adds a line and its LF.
    void put(std::string_view line)
    {
        _piece += line;
        _piece += '\n';
        if (_piece.size() >= kPiece)
            flush();
    }

private:
    static constexpr std::size_t kPiece = 64 * 1024;
    void flush()
    {
        _out.write(_piece.data(), static_cast<std::streamsize>(_piece.size()));
        _piece.clear();
    }
    std::ostream& _out;
    std::string _piece;
};

std::string termText(PackageValue const& value)
{
    return value.text.empty() ? pinValueText(value, "") : value.text;
}

// One matrix of the design's pins, row by row in the design's order;
// `listed`: the pins that the model lists.
void matrixLines(Lines& lines, Matrix matrix, ReducedPackage const& reduced, std::vector<std::size_t> const& listed)
{
    ibis::TermTable const& terms = reduced.terms[static_cast<int>(matrix)];
    std::size_t const n = listed.size();
    bool const full = terms.held() == n * (n + 1) / 2;
    lines.put(padded(ibis::matrixKeyword(matrix), 24) + (full ? "Full_matrix" : "Sparse_matrix"));
    std::size_t const kept = reduced.pins.size();
    std::string line;
    for (std::size_t a = 0; a < kept; ++a) {
        bool rowHead = false;
        for (std::size_t b = a; b < kept; ++b) {
            ibis::TermTable::Term const* const term = terms.find(a, b);
            // A sparse row leaves out what is zero.
            if (term == nullptr || (!full && a != b && term->zero))
                continue;
            if (!rowHead) {
                lines.put("[Row]  " + reduced.pins[a]);
                rowHead = true;
            }
            std::string_view const text = terms.text(*term);
            if (!full) {
                lines.put(padded(reduced.pins[b], 6) + " " + std::string(text));
                continue;
            }
            if (!line.empty() && line.size() + 1 + text.size() > 100) {
                lines.put(line);
                line.clear();
            }
            if (!line.empty())
                line += ' ';
            line += text;
        }
        if (!line.empty())
            lines.put(line);
        line.clear();
    }
}

void pathLines(Lines& lines, std::string const& pin, std::vector<ibis::PathSection> const& path)
{
    std::string const indent(std::max<std::size_t>(pin.size() + 1, 6), ' ');
    bool first = true;
    auto add = [&](std::string const& text) {
        lines.put((first ? padded(pin, indent.size()) : indent) + text);
        first = false;
    };
    int depth = 0;
    for (ibis::PathSection const& s : path) {
        for (int i = 0; i < s.endforks; ++i)
            add("Endfork");
        for (int i = 0; i < s.forks; ++i)
            add("Fork");
        std::string text = "Len=" + termText(s.len);
        if (s.hasL)
            text += " L=" + termText(s.l);
        if (s.hasR)
            text += " R=" + termText(s.r);
        if (s.hasC)
            text += " C=" + termText(s.c);
        add(text + " /");
        depth = s.depth;
    }
    for (; depth > 0; --depth)
        add("Endfork");
}

} // namespace

std::string someOf(std::vector<std::string> const& names, std::size_t shown)
{
    std::string text;
    for (std::size_t i = 0; i < names.size() && i < shown; ++i)
        text += (i == 0 ? "" : ", ") + names[i];
    if (names.size() > shown)
        text += " and " + std::to_string(names.size() - shown) + " more";
    return text;
}

std::string pinValueText(PackageValue const& value, char const* unit)
{
    if (!value.text.empty() && value.text.size() <= 9 && ibis::parseNumber(value.text).isValue())
        return value.text;
    double const v = value.value;
    double const size = std::fabs(v);
    if (size == 0)
        return "0";
    char text[48];
    // In the unit's usual scale (ohms, nH, pF) when that reads well.
    double const usual = *unit == 'H' ? 1e-9 : *unit == 'F' ? 1e-12 : 1;
    char const* const letter = *unit == 'H' ? "n" : *unit == 'F' ? "p" : "";
    if (size / usual >= 1e-3 && size / usual < 1e5) {
        std::snprintf(text, sizeof text, "%.4g%s%s", v / usual, letter, unit);
        if (std::strlen(text) <= 9)
            return text;
    }
    if (size < 1e-15 || size >= 1e6) {
        std::snprintf(text, sizeof text, "%.2e", v);
        return text;
    }
    static struct {
        double scale;
        char const* letter;
    } const scales[] = {{1e3, "k"}, {1, ""}, {1e-3, "m"}, {1e-6, "u"}, {1e-9, "n"}, {1e-12, "p"}, {1e-15, "f"}};
    auto const* s = std::begin(scales);
    while (size < s->scale)
        ++s;
    std::snprintf(text, sizeof text, "%.4g%s%s", v / s->scale, s->letter, unit);
    return text;
}

std::string defineText(ReducedPackage const& reduced)
{
    std::ostringstream text;
    writeDefineText(reduced, text);
    return text.str();
}

void writeDefineText(ReducedPackage const& reduced, std::ostream& out)
{
    std::vector<std::size_t> listed; // kept positions of the pins the model lists
    for (std::size_t p = 0; p < reduced.pins.size(); ++p)
        if (reduced.found[p]) {
            listed.push_back(p);
        }
    Lines lines(out);
    lines.put(padded("[Define Package Model]", 24) + reduced.name);
    char const* const heads[] = {"[Manufacturer]", "[OEM]", "[Description]"};
    std::string const* const texts[] = {&reduced.manufacturer, &reduced.oem, &reduced.description};
    for (int h = 0; h < 3; ++h)
        if (!texts[h]->empty())
            lines.put(padded(heads[h], 24) + printable(*texts[h]));
    if (reduced.sectionForm) {
        std::size_t sections = reduced.sections;
        for (std::size_t p : listed)
            sections = std::max(sections, reduced.paths[p].size());
        lines.put(padded("[Number Of Sections]", 24) + std::to_string(sections));
    }
    lines.put(padded("[Number Of Pins]", 24) + std::to_string(listed.size()));
    lines.put("[Pin Numbers]");
    for (std::size_t p : listed) {
        if (reduced.sectionForm)
            pathLines(lines, reduced.pins[p], reduced.paths[p]);
        else
            lines.put(reduced.pins[p]);
    }
    if (!reduced.sectionForm) {
        lines.put("[Model Data]");
        lines.put("| The terms between the design's " + std::to_string(listed.size()) + " pins");
        for (int m = 0; m < ibis::kMatrices; ++m) {
            if (reduced.terms[m].empty())
                continue; // only [Resistance Matrix] may be left out, and a model read whole has the others
            matrixLines(lines, static_cast<Matrix>(m), reduced, listed);
        }
        lines.put("[End Model Data]");
    }
    lines.put("[End Package Model]");
}

bool readDesignPackage(std::string const& besidePath, std::string const& masterPath,
                       std::vector<std::string> const& rowPins, DesignPackage& out)
{
    std::set<std::string> seen;
    for (std::string const& pin : rowPins)
        if (seen.insert(pin).second)
            out.pins.push_back(pin);

    ReducedPackage reduced;
    Read read = Read::NoModel;
    if (isRegularFile(besidePath)) {
        read = readFrom(besidePath, out.pins, reduced, out.source);
        out.source.beside = read != Read::NoModel;
        out.source.path = besidePath;
    }
    if (read == Read::NoModel) {
        out.source.path = masterPath;
        read = readFrom(masterPath, out.pins, reduced, out.source);
    }
    if (read == Read::Failed)
        return false;
    if (read == Read::NoModel) {
        out.source.path.clear();
        return true;
    }

    out.name = reduced.name;
    for (std::size_t p = 0; p < reduced.pins.size(); ++p) {
        if (!reduced.found[p]) {
            out.lacking.push_back(reduced.pins[p]);
            continue;
        }
        ++out.covered;
        ReducedPackage::Self const& self = reduced.self[p];
        auto text = [&](Matrix matrix, char const* unit) {
            int const m = static_cast<int>(matrix);
            return self.known[m] ? pinValueText(self.value[m], unit) : std::string("0");
        };
        out.values[reduced.pins[p]] =
            IbsPinParasitics{text(Matrix::Resistance, ""), text(Matrix::Inductance, "H"), text(Matrix::Capacitance, "F")};
    }
    if (out.covered > 0)
        out.reduced = std::make_shared<ReducedPackage const>(std::move(reduced));
    return true;
}
