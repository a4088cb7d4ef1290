#include "ibis/model_reader.h"

#include <algorithm>
#include <cctype>
#include <cstring>

#include "ibis/ibis_syntax.h"

namespace ibis {

bool isWordLine(std::string_view text, char comment)
{
    char const c = text[0];
    if (!((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z')))
        return false;
    bool const na = text.size() >= 2 && (c == 'N' || c == 'n') && (text[1] == 'A' || text[1] == 'a') &&
                    (text.size() == 2 || text[2] == ' ' || text[2] == '\t' || text[2] == comment);
    return !na;
}

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
    ++_sectionSerial;
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
        ++_sectionSerial;
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
