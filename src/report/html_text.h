#ifndef PAD2IBIS_REPORT_HTML_TEXT_H
#define PAD2IBIS_REPORT_HTML_TEXT_H

// Text and numbers for the report page. Everything that comes from the
// inputs (file names, signal names, settings, model names, table text) goes
// through escape(), which makes it text wherever it stands: in an element,
// in a double-quoted attribute, inside an SVG <title>.

#include <string>
#include <string_view>

namespace reportpage {

// Appends text with &, <, >, " and ' as character references. Control
// characters other than tab and line feed, which HTML does not allow,
// become U+FFFD.
void appendEscaped(std::string& out, std::string_view text);
std::string escape(std::string_view text);

// A whole number, for coordinates.
void appendInt(std::string& out, long value);
// A blank and name="value", for coordinates.
void appendAttribute(std::string& out, char const* name, long value);

// A number with up to `digits` significant digits, as %g writes it ("2.5",
// "1e-09"); never "-0".
std::string shortNumber(double value, int digits = 6);

} // namespace reportpage

#endif
