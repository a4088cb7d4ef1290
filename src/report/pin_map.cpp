#include "report/pin_map.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <map>

#include "ibis/ibis_number.h"
#include "report/html_text.h"
#include "report/resolution_report.h"

namespace reportpage {

namespace {

// The row letters of a ball grid: the alphabet without the letters that
// look like digits or like each other (I, O, Q, S, X, Z).
constexpr std::string_view kRowLetters = "ABCDEFGHJKLMNPRTUVWY";

// Geometry of the map, in pixels.
constexpr int kPitch = 22;
constexpr int kLeft = 30;       // room for the row letters
constexpr int kTop = 20;        // room for the column numbers
constexpr int kOtherGap = 30;   // between the grid and the row of other pins
constexpr int kOtherPerLine = 24;

// Colour-blind-safe colours (Okabe and Ito) for the banks, in turn.
char const* const kBankColours[] = {"#E69F00", "#56B4E9", "#009E73", "#F0E442",
                                    "#0072B2", "#D55E00", "#CC79A7", "#000000"};

// A sequential scale for the pin inductance, light to dark, which
// colour-blind readers tell apart (viridis), and the colour of a pin without
// a value.
char const* const kInductanceColours[] = {"#FDE725", "#5DC863", "#21908C", "#3B528B", "#440154"};
constexpr int kInductanceClasses = 5;
char const kNoInductance[] = "#BBBBBB";

int rowIndex(char letter)
{
    std::string_view::size_type const at = kRowLetters.find(letter);
    return at == std::string_view::npos ? -1 : static_cast<int>(at);
}

// One pin of the design on the map.
struct Marker {
    std::string pin;
    SignalOutcome const* signal;
    bool negativeLeg;
    int x = 0, y = 0; // centre
    IbsPinParasitics const& values() const { return negativeLeg ? signal->pairValues : signal->values; }
};

// The pins' inductances in nH, split into classes of equal width from the
// least to the greatest.
struct InductanceScale {
    bool any = false;
    double least = 0, greatest = 0;

    static bool valueOf(IbsPinParasitics const& values, double& nH)
    {
        ibis::Number const number = ibis::parseNumber(values.l);
        nH = number.value * 1e9;
        return !values.l.empty() && number.isValue();
    }
    void add(IbsPinParasitics const& values)
    {
        double nH = 0;
        if (!valueOf(values, nH))
            return;
        least = any ? std::min(least, nH) : nH;
        greatest = any ? std::max(greatest, nH) : nH;
        any = true;
    }
    int classes() const { return greatest > least ? kInductanceClasses : 1; }
    // The class of a pin, or -1 without a value.
    int classOf(IbsPinParasitics const& values) const
    {
        double nH = 0;
        if (!valueOf(values, nH))
            return -1;
        if (greatest <= least)
            return 0;
        int const c = static_cast<int>((nH - least) / (greatest - least) * kInductanceClasses);
        return std::min(std::max(c, 0), kInductanceClasses - 1);
    }
    double bound(int c) const { return least + (greatest - least) * c / kInductanceClasses; }
};

std::string nanohenries(double value)
{
    char text[32];
    std::snprintf(text, sizeof text, "%.2f", value);
    return text;
}

void appendInductanceLegend(std::string& out, InductanceScale const& scale, bool lacking)
{
    out += "<ul class=\"legend inductance-legend\">";
    for (int c = 0; c < scale.classes(); ++c) {
        out += "<li><span class=\"swatch\" style=\"background:";
        out += kInductanceColours[scale.classes() == 1 ? 2 : c];
        out += "\"></span>L_pin ";
        out += scale.classes() == 1 ? nanohenries(scale.least) : nanohenries(scale.bound(c)) + " to " + nanohenries(scale.bound(c + 1));
        out += " nH</li>";
    }
    if (lacking) {
        out += "<li><span class=\"swatch\" style=\"background:";
        out += kNoInductance;
        out += "\"></span>no L_pin: no [Pin] row, or a pin the package model lacks</li>";
    }
    out += "</ul>";
}

// Banks in the order of their legend: numbers by value, then other names.
std::vector<std::string> bankOrder(std::vector<SignalOutcome> const& signals)
{
    std::vector<std::string> banks;
    for (SignalOutcome const& s : signals)
        if (std::find(banks.begin(), banks.end(), s.bank) == banks.end())
            banks.push_back(s.bank);
    auto number = [](std::string const& bank, long& value) {
        if (bank.empty() || bank.size() > 9 || bank.find_first_not_of("0123456789") != std::string::npos)
            return false;
        value = std::strtol(bank.c_str(), nullptr, 10);
        return true;
    };
    std::stable_sort(banks.begin(), banks.end(), [&](std::string const& a, std::string const& b) {
        long va = 0, vb = 0;
        bool const na = number(a, va), nb = number(b, vb);
        if (na != nb)
            return na;
        return na ? va < vb : a < b;
    });
    return banks;
}

void appendTitle(std::string& out, Marker const& m)
{
    SignalOutcome const& s = *m.signal;
    std::string text = m.pin + ": " + s.name + (m.negativeLeg ? "-" : "") + " (" + s.outcome + ")\n";
    text += "bank " + (s.bank.empty() ? std::string("none") : s.bank) + ", " + s.portType + "\n";
    if (!s.settings.empty())
        text += s.settings + "\n";
    if (s.model.empty())
        text += s.key.empty() ? "no model" : "no model for the key " + s.key;
    else if (s.key != s.model)
        text += "model " + s.model + " for the key " + s.key;
    else
        text += "model " + s.model;
    if (!s.nearest.empty())
        text += "\nnearest model " + s.nearest + (s.differs.empty() ? "" : ": " + s.differs);
    if (!s.pairPin.empty())
        text += "\ndifferential pair " + s.pin + " and " + s.pairPin;
    IbsPinParasitics const& values = m.values();
    if (!values.l.empty())
        text += "\nR_pin " + values.r + ", L_pin " + values.l + ", C_pin " + values.c;
    out += "<title>";
    appendEscaped(out, text);
    out += "</title>";
}

// A marker's shape: a triangle for a missing model, a circle otherwise.
void appendShape(std::string& out, std::string_view outcome, int x, int y)
{
    if (outcome == "missing") {
        out += "<path d=\"M";
        appendInt(out, x);
        out += ' ';
        appendInt(out, y - 9);
        out += "l8.5 15h-17z\"/>";
    } else {
        out += "<circle";
        appendAttribute(out, "cx", x);
        appendAttribute(out, "cy", y);
        out += " r=\"7.5\"/>";
    }
}

void appendLegend(std::string& out, std::vector<SignalOutcome> const& signals,
                  std::vector<std::string> const& banks)
{
    out += "<ul class=\"legend outcome-legend\">";
    for (char const* outcome : kReportOutcomes) {
        int n = 0;
        for (SignalOutcome const& s : signals)
            n += s.outcome == outcome ? 1 : 0;
        out += "<li><svg class=\"key\" width=\"20\" height=\"20\"><g class=\"pin o-";
        out += outcome;
        out += "\">";
        appendShape(out, outcome, 10, 11);
        out += "</g></svg>";
        out += outcome;
        out += " (";
        appendInt(out, n);
        out += ")</li>";
    }
    out += "<li><svg class=\"key\" width=\"26\" height=\"18\"><line class=\"pair\" x1=\"4\" y1=\"9\" "
           "x2=\"22\" y2=\"9\"/></svg>differential pair</li></ul>";
    out += "<ul class=\"legend bank-legend\">";
    for (std::size_t i = 0; i < banks.size(); ++i) {
        out += "<li><span class=\"swatch\" style=\"background:";
        out += kBankColours[i % std::size(kBankColours)];
        out += "\"></span>bank ";
        appendEscaped(out, banks[i].empty() ? "none" : banks[i]);
        out += "</li>";
    }
    out += "</ul>";
}

} // namespace

bool ballPosition(std::string_view pin, int& row, int& column)
{
    std::size_t letters = 0;
    while (letters < pin.size() && letters < 3 && pin[letters] >= 'A' && pin[letters] <= 'Z')
        ++letters;
    if (letters == 0 || letters > 2 || letters == pin.size() || pin[letters] == '0')
        return false;
    int const first = rowIndex(pin[0]);
    int const second = letters == 2 ? rowIndex(pin[1]) : 0;
    if (first < 0 || second < 0)
        return false;
    int const size = static_cast<int>(kRowLetters.size());
    int const r = letters == 1 ? first : size + first * size + second;
    int c = 0;
    for (std::size_t i = letters; i < pin.size(); ++i) {
        if (pin[i] < '0' || pin[i] > '9' || c > kMaxGridColumns)
            return false;
        c = c * 10 + (pin[i] - '0');
    }
    if (r >= kMaxGridRows || c > kMaxGridColumns)
        return false;
    row = r;
    column = c;
    return true;
}

std::string rowLetters(int row)
{
    int const size = static_cast<int>(kRowLetters.size());
    if (row < size)
        return std::string(1, kRowLetters[static_cast<std::size_t>(row)]);
    row -= size;
    return std::string(1, kRowLetters[static_cast<std::size_t>(row / size)]) +
           kRowLetters[static_cast<std::size_t>(row % size)];
}

namespace {

// Where the markers stand: a ball grid of rows x columns, and below it the
// pins named outside it, perLine to a line.
struct Layout {
    int rows = 0, columns = 0;
    std::vector<Marker*> others;
    int otherTop = 0, width = 0, height = 0;
};

// Grid positions first, then the other names in a row of their own.
Layout place(std::vector<Marker>& markers)
{
    Layout layout;
    for (Marker& m : markers) {
        int row = 0, column = 0;
        if (ballPosition(m.pin, row, column)) {
            m.x = kLeft + (column - 1) * kPitch + kPitch / 2;
            m.y = kTop + row * kPitch + kPitch / 2;
            layout.rows = std::max(layout.rows, row + 1);
            layout.columns = std::max(layout.columns, column);
        } else {
            layout.others.push_back(&m);
        }
    }
    int const perLine = std::max(layout.columns, kOtherPerLine);
    layout.otherTop = kTop + layout.rows * kPitch + kOtherGap;
    std::vector<Marker*> const& others = layout.others;
    for (std::size_t i = 0; i < others.size(); ++i) {
        others[i]->x = kLeft + static_cast<int>(i % perLine) * kPitch + kPitch / 2;
        others[i]->y = layout.otherTop + static_cast<int>(i / perLine) * kPitch + kPitch / 2;
    }
    int const otherLines = static_cast<int>((others.size() + perLine - 1) / perLine);
    layout.width = kLeft + (others.empty() ? layout.columns : perLine) * kPitch + 8;
    layout.height = others.empty() ? kTop + layout.rows * kPitch + 6 : layout.otherTop + otherLines * kPitch + 6;
    return layout;
}

// The colour switches: outcome, bank and, with the package model's values,
// pin inductance.
void appendSwitches(std::string& out, bool byInductance)
{
    out += "<input type=\"radio\" name=\"pin-colour\" id=\"by-outcome\" checked>"
           "<label for=\"by-outcome\">Colour by outcome</label> "
           "<input type=\"radio\" name=\"pin-colour\" id=\"by-bank\">"
           "<label for=\"by-bank\">Colour by bank</label>";
    if (byInductance)
        out += " <input type=\"radio\" name=\"pin-colour\" id=\"by-inductance\">"
               "<label for=\"by-inductance\">Colour by pin inductance</label>";
}

// The map's own style: the fills of the bank and inductance colourings.
void appendMapStyle(std::string& out, std::size_t banks, InductanceScale const& inductance)
{
    out += "<style>";
    for (std::size_t i = 0; i < banks; ++i) {
        out += "#by-bank:checked~.pinmap .b";
        appendInt(out, static_cast<long>(i));
        out += "{fill:";
        out += kBankColours[i % std::size(kBankColours)];
        out += "}";
    }
    if (inductance.any) {
        out += ".inductance-legend{display:none!important}#by-inductance:checked~.inductance-legend{display:flex!important}"
               "#by-inductance:checked~.outcome-legend{display:none!important}";
        for (int c = 0; c < inductance.classes(); ++c) {
            out += "#by-inductance:checked~.pinmap .l";
            appendInt(out, c);
            out += "{fill:";
            out += kInductanceColours[inductance.classes() == 1 ? 2 : c];
            out += "}";
        }
        out += "#by-inductance:checked~.pinmap .lx{fill:";
        out += kNoInductance;
        out += "}";
    }
    out += "</style>";
}

// The balls of the grid, faint, drawn as one pattern whatever its size,
// with the column numbers and row letters; the heading of the other pins.
void appendGrid(std::string& out, Layout const& layout)
{
    if (layout.rows > 0) {
        out += "<defs><pattern id=\"ball\" width=\"22\" height=\"22\" patternUnits=\"userSpaceOnUse\"";
        appendAttribute(out, "x", kLeft);
        appendAttribute(out, "y", kTop);
        out += "><circle cx=\"11\" cy=\"11\" r=\"4.5\" class=\"ball\"/></pattern></defs><rect";
        appendAttribute(out, "x", kLeft);
        appendAttribute(out, "y", kTop);
        appendAttribute(out, "width", layout.columns * kPitch);
        appendAttribute(out, "height", layout.rows * kPitch);
        out += " fill=\"url(#ball)\"/><g class=\"axis\">";
        for (int c = 1; c <= layout.columns; ++c) {
            out += "<text";
            appendAttribute(out, "x", kLeft + (c - 1) * kPitch + kPitch / 2);
            appendAttribute(out, "y", kTop - 6);
            out += " text-anchor=\"middle\">";
            appendInt(out, c);
            out += "</text>";
        }
        for (int r = 0; r < layout.rows; ++r) {
            out += "<text";
            appendAttribute(out, "x", kLeft - 5);
            appendAttribute(out, "y", kTop + r * kPitch + kPitch / 2 + 4);
            out += " text-anchor=\"end\">";
            out += rowLetters(r);
            out += "</text>";
        }
        out += "</g>";
    }
    if (!layout.others.empty()) {
        out += "<text class=\"axis\"";
        appendAttribute(out, "x", kLeft);
        appendAttribute(out, "y", layout.otherTop - 8);
        out += ">Pins named outside the ball grid</text>";
    }
}

// A line from each differential pair's positive leg to its negative one.
void appendPairs(std::string& out, std::vector<Marker> const& markers)
{
    std::map<SignalOutcome const*, Marker const*> positive;
    for (Marker const& m : markers)
        if (!m.negativeLeg)
            positive[m.signal] = &m;
    for (Marker const& m : markers) {
        if (!m.negativeLeg)
            continue;
        Marker const* p = positive[m.signal];
        out += "<line class=\"pair\" data-pair=\"";
        appendEscaped(out, p->pin + " " + m.pin);
        out += '"';
        appendAttribute(out, "x1", p->x);
        appendAttribute(out, "y1", p->y);
        appendAttribute(out, "x2", m.x);
        appendAttribute(out, "y2", m.y);
        out += "/>";
    }
}

// A pin's marker, in the classes of its outcome, bank and inductance.
void appendMarker(std::string& out, Marker const& m, std::size_t bank, InductanceScale const& inductance)
{
    out += "<g class=\"pin o-";
    out += m.signal->outcome;
    out += " b";
    appendInt(out, static_cast<long>(bank));
    if (inductance.any) {
        int const c = inductance.classOf(m.values());
        if (c < 0) {
            out += " lx";
        } else {
            out += " l";
            appendInt(out, c);
        }
    }
    out += "\" data-pin=\"";
    appendEscaped(out, m.pin);
    out += "\" data-outcome=\"";
    appendEscaped(out, m.signal->outcome);
    out += "\">";
    appendTitle(out, m);
    appendShape(out, m.signal->outcome, m.x, m.y);
    out += "</g>";
}

} // namespace

std::string pinMap(std::vector<SignalOutcome> const& signals)
{
    std::vector<Marker> markers;
    for (SignalOutcome const& s : signals) {
        markers.push_back({s.pin, &s, false});
        if (!s.pairPin.empty())
            markers.push_back({s.pairPin, &s, true});
    }
    Layout const layout = place(markers);
    std::vector<std::string> const banks = bankOrder(signals);
    std::map<std::string, std::size_t> bankIndex;
    for (std::size_t i = 0; i < banks.size(); ++i)
        bankIndex[banks[i]] = i;
    InductanceScale inductance;
    bool lacking = false;
    for (Marker const& m : markers) {
        inductance.add(m.values());
        lacking = lacking || m.values().l.empty();
    }

    std::string out;
    out.reserve(400 * markers.size() + 4096);
    appendSwitches(out, inductance.any);
    appendLegend(out, signals, banks);
    if (inductance.any)
        appendInductanceLegend(out, inductance, lacking);
    out += "<svg class=\"pinmap\"";
    appendAttribute(out, "width", layout.width);
    appendAttribute(out, "height", layout.height);
    out += " role=\"img\" aria-label=\"Pin map: ";
    appendInt(out, static_cast<long>(markers.size()));
    out += " pins of the design\">";
    appendMapStyle(out, banks.size(), inductance);
    appendGrid(out, layout);
    // Pairs under the markers, then the markers.
    appendPairs(out, markers);
    for (Marker const& m : markers)
        appendMarker(out, m, bankIndex[m.signal->bank], inductance);
    out += "</svg>";
    return out;
}

} // namespace reportpage
