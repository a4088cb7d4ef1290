#include "ibis/model_reader.h"

#include <algorithm>
#include <cctype>
#include <cstring>

#include "ibis/ibis_syntax.h"

namespace ibis {

namespace {

// A line of words starts with a letter and its first field is not "NA";
// anything else under a keyword is a row of numbers (read, and judged, as
// numbers).
bool isWordLine(std::string_view text, char comment)
{
    char const c = text[0];
    if (!((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z')))
        return false;
    bool const na = text.size() >= 2 && (c == 'N' || c == 'n') && (text[1] == 'A' || text[1] == 'a') &&
                    (text.size() == 2 || text[2] == ' ' || text[2] == '\t' || text[2] == comment);
    return !na;
}

} // namespace

std::string Item::joined() const
{
    return joinFields(fields);
}

bool Item::nameValue(std::string& name, std::string& value) const
{
    std::string const text = joined();
    std::string::size_type const equals = text.find('=');
    if (equals == std::string::npos)
        return false;
    auto trim = [](std::string s) {
        s.erase(0, s.find_first_not_of(' '));
        s.erase(s.find_last_not_of(' ') + 1);
        return s;
    };
    name = trim(text.substr(0, equals));
    value = trim(text.substr(equals + 1));
    return !name.empty() && name.find(' ') == std::string::npos;
}

bool Model::headValue(std::string_view name, std::string& value, int* line) const
{
    for (Item const& item : head) {
        if (!sameWord(item.fields[0], name))
            continue;
        value = joinFields(item.fields, 1);
        if (line != nullptr)
            *line = item.line;
        return true;
    }
    return false;
}

Section const* Model::section(std::string_view key) const
{
    for (Section const& s : sections)
        if (s.key == key)
            return &s;
    return nullptr;
}

bool endsModel(std::string_view key)
{
    // Sorted, for the binary search.
    static std::string_view const keys[] = {
        "alternate package models",
        "begin board description",
        "begin emi component",
        "begin emi model",
        "bus label",
        "comment char",
        "component",
        "copyright",
        "date",
        "define package model",
        "diff pin",
        "die supply pads",
        "disclaimer",
        "emi component",
        "end",
        "end alternate package models",
        "end board description",
        "end emi component",
        "end emi model",
        "end external circuit",
        "end interconnect model",
        "end interconnect model set",
        "end package model",
        "external circuit",
        "file name",
        "file rev",
        "ibis ver",
        "interconnect model",
        "interconnect model set",
        "manufacturer",
        "model",
        "model selector",
        "node names",
        "notes",
        "package",
        "package model",
        "pin",
        "pin mapping",
        "repeater pin",
        "series pin mapping",
        "series switch groups",
        "source",
        "submodel",
        "test data",
        "test load",
    };
    return std::binary_search(std::begin(keys), std::end(keys), key);
}

ModelReader::ModelReader(Sink sink) : _sink(std::move(sink)) {}

ModelReader::ModelReader(Sink sink, WholeRows wholeRows) : _sink(std::move(sink)), _wholeRows(wholeRows) {}

void ModelReader::close(std::string endedBy)
{
    if (!_open)
        return;
    _open = false;
    _model.endedBy = std::move(endedBy);
    _sink(_model);
    recycle();
}

void ModelReader::drop()
{
    _open = false;
    recycle();
}

void ModelReader::recycle()
{
    _pattern.valid = false;
    // The storage of sections, lines of words and rows serves the next
    // blocks: no allocation per line once the first blocks are read.
    auto spare = [this](std::vector<Item>& items) {
        for (Item& item : items)
            _spareFields.push_back(std::move(item.fields));
        items.clear();
    };
    spare(_model.head);
    for (Section& section : _model.sections) {
        spare(section.items);
        section.rows.clear();
        _spareSections.push_back(std::move(section));
    }
    _model.sections.clear();
}

void ModelReader::open(Line const& line, char comment)
{
    _open = true;
    _model.line = _model.lastLine = line.number;
    splitFields(keywordRest(line.text), comment, _fields);
    _model.args.assign(_fields.begin(), _fields.end());
    _model.name = _fields.empty() ? "" : std::string(_fields[0]);
    _model.endedBy.clear();
}

bool ModelReader::feed(Line const& line, char comment, std::string const* knownKey)
{
    if (isKeywordLine(line.text)) {
        std::string const key = knownKey != nullptr ? std::string() : keywordKey(line.text);
        std::string const& lineKey = knownKey != nullptr ? *knownKey : key;
        if (lineKey == "model") {
            close(lineKey);
            open(line, comment);
            return true;
        }
        if (!_open)
            return false;
        if (endsModel(lineKey)) {
            close(lineKey);
            return false;
        }
        Section section;
        if (!_spareSections.empty()) {
            section = std::move(_spareSections.back());
            _spareSections.pop_back();
        }
        section.key = lineKey;
        std::string_view const shown = keywordShown(line.text);
        section.shown.assign(shown.data(), shown.size());
        section.line = line.number;
        splitFields(keywordRest(line.text), comment, _fields);
        section.args.assign(_fields.begin(), _fields.end());
        _keepAll = _wholeRows == nullptr || _wholeRows(section.key);
        _pattern.valid = false;
        _model.sections.push_back(std::move(section));
        _model.lastLine = line.number;
        return true;
    }
    if (!_open)
        return false;
    _model.lastLine = line.number;
    char const* p = line.text.data();
    char const* const end = p + line.text.size();
    while (p < end && (*p == ' ' || *p == '\t'))
        ++p;
    if (p == end || *p == comment)
        return true;
    std::string_view const rest(p, static_cast<std::size_t>(end - p));
    if (_model.sections.empty() || isWordLine(rest, comment)) {
        splitFields(rest, comment, _fields);
        Item item;
        item.line = line.number;
        if (!_spareFields.empty()) {
            item.fields = std::move(_spareFields.back());
            _spareFields.pop_back();
        }
        item.fields.assign(_fields.begin(), _fields.end());
        (_model.sections.empty() ? _model.head : _model.sections.back().items)
            .push_back(std::move(item));
        return true;
    }
    // A row of numbers.
    readRow(p, end, comment, line.number, nullptr, nullptr);
    return true;
}

void ModelReader::readRow(char const* p, char const* end, char comment, int number, char const* line,
                          RowLayout* layout)
{
    // Field by field in one pass.
    std::vector<Row>& rows = _model.sections.back().rows;
    rows.emplace_back();
    Row& row = rows.back();
    row.line = number;
    for (;;) {
        while (p < end && (*p == ' ' || *p == '\t'))
            ++p;
        if (p == end || *p == comment)
            break;
        if (row.fields < 4) {
            NumberLayout* digits = nullptr;
            if (layout != nullptr) {
                layout->starts[row.fields] = static_cast<std::uint32_t>(p - line);
                digits = &layout->numbers[row.fields];
            }
            p = scanNumber(p, end, comment, row.cells[row.fields], digits);
            if (!_keepAll && row.fields > 0)
                row.cells[row.fields].value = 0.0;
        } else {
            while (p < end && *p != ' ' && *p != '\t' && *p != comment)
                ++p;
        }
        ++row.fields;
    }
}

namespace {

std::uint64_t const kHighBits = 0x8080808080808080ull;
std::uint64_t const kZeros = 0x3030303030303030ull; // "0" in every byte
std::uint64_t const kNines = 0x7676767676767676ull; // 0x7F - 9: carries into the high bit above 9

std::uint64_t word(char const* p)
{
    std::uint64_t w;
    std::memcpy(&w, p, sizeof w);
    return w;
}

} // namespace

void ModelReader::keepPattern(char const* text, std::size_t size, bool crlf, RowLayout const& layout)
{
    // The line with its line end, so that a line matches it only whole.
    std::size_t const bytes = size + (crlf ? 2 : 1);
    _pattern.valid = bytes <= kPatternWords * 8;
    if (!_pattern.valid)
        return;
    _pattern.size = size;
    _pattern.crlf = crlf;
    _pattern.words = (bytes + 7) / 8;
    _pattern.layout = layout;
    for (std::size_t w = 0; w < _pattern.words; ++w) {
        char eight[8] = {0, 0, 0, 0, 0, 0, 0, 0};
        std::size_t const have = bytes - w * 8 < 8 ? bytes - w * 8 : 8;
        std::memcpy(eight, text + w * 8, have);
        // Per byte: y = byte ^ "0" is at most 9 for a digit.
        std::uint64_t const y = word(eight) ^ kZeros;
        std::uint64_t const digits = ~(((y & ~kHighBits) + kNines) | y) & kHighBits;
        std::uint64_t const spread = (digits >> 7) * 0xFF;
        _pattern.text[w] = (word(eight) & ~spread) | (kZeros & spread);
        _pattern.limit[w] = kHighBits | (digits >> 7) * 9;
        _pattern.lastUsed = have == 8 ? kHighBits : kHighBits >> (8 * (8 - have));
    }
}

// The line at p has the pattern's bytes, but for a digit where the pattern
// has one; at least words * 8 bytes may be read at p.
bool ModelReader::matchesPattern(char const* p) const
{
    // Per byte y = byte ^ pattern byte, which must not exceed 9 at a digit
    // and must be 0 elsewhere: (0x80 + limit) - y keeps its high bit
    // exactly when y is within the limit. The last word may hold bytes of
    // the next line.
    std::size_t const last = _pattern.words - 1;
    std::uint64_t bad = 0;
    for (std::size_t w = 0; w < last; ++w) {
        std::uint64_t const y = word(p + w * 8) ^ _pattern.text[w];
        bad |= ~(_pattern.limit[w] - (y & ~kHighBits)) | y;
    }
    std::uint64_t const y = word(p + last * 8) ^ _pattern.text[last];
    bad |= (~(_pattern.limit[last] - (y & ~kHighBits)) | y) & _pattern.lastUsed;
    return (bad & kHighBits) == 0;
}

char const* ModelReader::readPatternRows(char const* p, char const* end, int first, char comment, int& lines)
{
    // What stays the same from line to line, held apart from the rows, which
    // the compiler would have to reread behind every row written.
    std::vector<Row>& rows = _model.sections.back().rows;
    Row const same = _pattern.row;
    RowLayout const layout = _pattern.layout;
    std::size_t const size = _pattern.size;
    std::size_t const step = size + (_pattern.crlf ? 2 : 1);
    int const fields = same.fields < 4 ? same.fields : 4;
    int const read = _keepAll ? fields : (fields > 0 ? 1 : 0);
    std::size_t const room = _pattern.words * 8 + 16; // for the words of the line and of its numbers
    while (static_cast<std::size_t>(end - p) >= room && matchesPattern(p)) {
        rows.push_back(same);
        Row& row = rows.back();
        row.line = first + lines;
        for (int i = 0; i < read; ++i)
            if (layout.numbers[i].usable)
                row.cells[i].value = readLaidOut(p + layout.starts[i], layout.numbers[i]);
            else if (row.cells[i].kind == Number::Value)
                scanNumber(p + layout.starts[i], p + size, comment, row.cells[i]);
        p += step;
        ++lines;
    }
    return p;
}

std::size_t ModelReader::feedRows(std::string_view text, int first, char comment, std::size_t longest, int& lines)
{
    lines = 0;
    if (!_open || _model.sections.empty())
        return 0;
    char const* const begin = text.data();
    char const* const end = begin + text.size();
    char const* p = begin;
    if (_pattern.size + (_pattern.crlf ? 1 : 0) > longest)
        _pattern.valid = false;
    for (;;) {
        if (_pattern.valid)
            p = readPatternRows(p, end, first, comment, lines);
        // A line of another pattern, read field by field: it gives the
        // pattern of the lines behind it. Lines of words, comment lines and
        // blank lines are told by their first byte that is no blank.
        char const* q = p;
        while (q < end && (*q == ' ' || *q == '\t'))
            ++q;
        if (q == end || *q == comment || *q == '\n' || *q == '[' ||
            (*q == '\r' && q + 1 < end && q[1] == '\n') ||
            isWordLine(std::string_view(q, static_cast<std::size_t>(end - q)), comment))
            break; // feed() reads it
        char const* const lf = static_cast<char const*>(std::memchr(q, '\n', static_cast<std::size_t>(end - q)));
        if (lf == nullptr)
            break;
        std::size_t const bytes = static_cast<std::size_t>(lf - p);
        if (bytes > longest || std::memchr(q, '[', static_cast<std::size_t>(lf - q)) != nullptr)
            break;
        bool const crlf = lf[-1] == '\r';
        char const* const textEnd = lf - (crlf ? 1 : 0);
        RowLayout layout;
        readRow(q, textEnd, comment, first + lines, p, &layout);
        keepPattern(p, static_cast<std::size_t>(textEnd - p), crlf, layout);
        _pattern.row = _model.sections.back().rows.back();
        p = lf + 1;
        ++lines;
    }
    if (lines > 0)
        _model.lastLine = first + lines - 1;
    return static_cast<std::size_t>(p - begin);
}

void ModelReader::finish()
{
    close("");
}

bool readModels(std::istream& in, ModelReader::Sink const& sink)
{
    LineSource lines(in);
    CommentChar comment;
    ModelReader reader(sink);
    Line line;
    while (lines.next(line)) {
        reader.feed(line, comment.current());
        if (keywordKey(line.text) == "comment char")
            comment.change(keywordRest(line.text));
    }
    reader.finish();
    return !lines.failed();
}

} // namespace ibis
