#ifndef PAD2IBIS_IBIS_IBIS_SYNTAX_H
#define PAD2IBIS_IBIS_IBIS_SYNTAX_H

// The words of an IBIS line: keywords, fields and the comment character.

#include <string>
#include <string_view>
#include <vector>

namespace ibis {

// A keyword line: "[" in column 1 and a "]" behind it.
bool isKeywordLine(std::string_view line);

// The keyword of a keyword line as IBIS compares it: lower case, "_" read as
// a blank, blanks around the name and runs of blanks inside it dropped
// ("[GND_Clamp]" and "[gnd  clamp]" give "gnd clamp"). Empty for any other
// line.
std::string keywordKey(std::string_view line);

// The keyword as written, brackets included ("[GND_Clamp]").
std::string_view keywordShown(std::string_view line);

// The text behind the keyword's "]" (the whole line for no keyword line).
std::string_view keywordRest(std::string_view line);

// Appends the blank- or tab-separated fields of text ahead of the comment
// character to fields (which it clears first).
void splitFields(std::string_view text, char comment, std::vector<std::string_view>& fields);

// The fields from `from` on, joined by one blank.
std::string joinFields(std::vector<std::string> const& fields, std::size_t from = 0);

// A letter in lower case, any other byte as it is (ASCII only, whatever
// the locale).
inline char lowerCase(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

// A letter in upper case, any other byte as it is (ASCII only, whatever
// the locale); and a text so.
inline char upperCase(char c)
{
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}
std::string upperCase(std::string_view text);

// The same word in any letter case: sub-parameter names and reserved words
// ("Model_type", "Non-Inverting") compare so.
bool sameWord(std::string_view a, std::string_view b);

// Nothing but blanks and tabs ahead of the comment character.
bool isBlankOrComment(std::string_view line, char comment);

// The comment character in force, "|" until a [Comment Char] line names
// another for the lines behind it.
class CommentChar {
public:
    char current() const { return _current; }
    // Reads the argument of a [Comment Char] line ("#_char"). False, and the
    // character stays, when it is not one character out of the ASCII
    // punctuation that IBIS allows, followed by "_char".
    bool change(std::string_view rest);

private:
    char _current = '|';
};

} // namespace ibis

#endif
