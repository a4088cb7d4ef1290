#ifndef PAD2IBIS_IBIS_MODEL_READER_H
#define PAD2IBIS_IBIS_MODEL_READER_H

// The [Model] blocks of an IBIS file, one at a time: each block's
// sub-parameter lines, and its keywords with their lines and numeric rows
// (I-V tables, waveforms). Only one block is held at a time, so memory does
// not grow with the file.
//
// A block runs from its [Model] line to the next keyword that does not
// belong inside a model ([Model], [Model Selector], [Component], [End] and
// the other keywords of the file and component level), or to the end of the
// file. Every other keyword inside it, known or not, opens a section.

#include <cstdint>
#include <functional>
#include <istream>
#include <string>
#include <string_view>
#include <vector>

#include "ibis/ibis_number.h"
#include "ibis/line_source.h"

namespace ibis {

// A line of words: a sub-parameter ("Model_type I/O", "Vinl = 0.8V",
// "C_comp 2p 1p 3p"), a [Ramp] entry ("dV/dt_r 2.2/1.06n ..."), a waveform's
// "R_fixture = 50". Its first field starts with a letter and is not "NA".
struct Item {
    int line = 0;
    std::vector<std::string> fields; // ahead of the comment character

    // The text of the fields joined by one blank.
    std::string joined() const;
    // "name = value", "name=value", "name= value" and the like: true with the
    // name and the value (the fields behind "=" joined by one blank).
    bool nameValue(std::string& name, std::string& value) const;
};

// A line of numbers under a table keyword: index (voltage or time), typ,
// min, max. Cells beyond `fields` are Invalid; fields beyond four are only
// counted.
struct Row {
    int line = 0;
    int fields = 0;
    Number cells[4];
};

// One keyword inside a block and the lines up to the next keyword.
struct Section {
    std::string key;   // as keywordKey() gives it: "pulldown", "rising waveform"
    std::string shown; // as written: "[Pulldown]"
    int line = 0;
    std::vector<std::string> args; // the fields behind the keyword
    std::vector<Item> items;
    std::vector<Row> rows;
};

struct Model {
    std::string name; // the first field behind [Model]
    std::vector<std::string> args; // every field behind [Model]
    int line = 0;      // of the [Model] line
    int lastLine = 0;  // the block's last line (comment lines included)
    std::string endedBy; // the key of the keyword that ended the block; empty
                         // at the end of the file
    std::vector<Item> head;        // lines ahead of the block's first keyword
    std::vector<Section> sections; // in file order

    // The value of a head sub-parameter ("model_type" matches "Model_type"):
    // the fields behind its name joined by one blank, and true when there.
    bool headValue(std::string_view name, std::string& value, int* line = nullptr) const;
    // The first section with this key, or null.
    Section const* section(std::string_view key) const;
};

class ModelReader {
public:
    using Sink = std::function<void(Model const&)>;
    // Tells, by a section's key, whether its rows keep every value.
    using WholeRows = bool (*)(std::string_view key);

    // Rows keep every value.
    explicit ModelReader(Sink sink);
    // Rows keep the kind of every cell but the value of their index column
    // only (the other cells' values read 0), except in sections whose key
    // wholeRows accepts: for a reader that judges a table by its index
    // column and the kinds of its cells, and so need not convert the rest.
    ModelReader(Sink sink, WholeRows wholeRows);

    // Offers the next line of the file, read with this comment character.
    // True when the line belongs to a block (its [Model] line included); a
    // line that ends a block hands the block to the sink first. key: the
    // keywordKey() of a keyword line, for a caller that has it already.
    bool feed(Line const& line, char comment, std::string const* key = nullptr);
    // The end of the file: hands out the block that is still open.
    void finish();
    // Forgets the block that is open without handing it out.
    void drop();

    // True while a block is open.
    bool inModel() const { return _open; }

    // For a reader that takes rows in bulk beside this one (RowReader): the
    // open section's rows, or null while no section is open; whether they
    // keep every value; a number that changes whenever a section opens or
    // a block ends.
    std::vector<Row>* openRows() { return _open && !_model.sections.empty() ? &_model.sections.back().rows : nullptr; }
    bool keepsEveryValue() const { return _keepAll; }
    unsigned sectionSerial() const { return _sectionSerial; }
    // Where the first four fields of a row start (from its line's start),
    // and where their digits stand.
    struct RowLayout {
        std::uint32_t starts[4] = {0, 0, 0, 0};
        NumberLayout numbers[4];
    };
    // Reads the row of numbers in [p, end) (p at its first field) into a
    // new row of the open section, as feed() does; layout, when given, gets
    // where its fields and their digits stand, counted from `line`.
    void readRow(char const* p, char const* end, char comment, int number, char const* line, RowLayout* layout);
    // Rows taken in bulk up to line `last` of the block.
    void rowsTaken(int last) { _model.lastLine = last; }

private:
    void close(std::string endedBy);
    void open(Line const& line, char comment);
    void recycle();

    Sink _sink;
    WholeRows _wholeRows = nullptr;
    bool _keepAll = true; // the open section's rows keep every value
    Model _model;
    bool _open = false;
    std::vector<std::string_view> _fields;
    std::vector<Section> _spareSections;             // emptied, their storage kept
    std::vector<std::vector<std::string>> _spareFields; // of lines of words

    unsigned _sectionSerial = 0;
};

// A line of words under a keyword, text starting at its first field: it
// starts with a letter and its first field is not "NA". Anything else there
// is a row of numbers (read, and judged, as numbers).
bool isWordLine(std::string_view text, char comment);

// True for keywords that end a [Model] block (file and component level).
bool endsModel(std::string_view key);

// Reads every [Model] block of an IBIS file in turn, with [Comment Char]
// followed. False when the stream failed before its end.
bool readModels(std::istream& in, ModelReader::Sink const& sink);

} // namespace ibis

#endif
