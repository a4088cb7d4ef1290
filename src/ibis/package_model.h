#ifndef PAD2IBIS_IBIS_PACKAGE_MODEL_H
#define PAD2IBIS_IBIS_PACKAGE_MODEL_H

// Package models: [Define Package Model] blocks, in a package model file
// (.pkg) or in an IBIS file behind its components. A block names its pins
// under [Pin Numbers] and gives, for them, either the R, L and C matrices
// between [Model Data] and [End Model Data] (Full_matrix, Banded_matrix with
// [Bandwidth], or Sparse_matrix, each row under a [Row] that names its pin),
// or, with [Number Of Sections], each pin's path as sections written behind
// its name ("A1 Len=0 L=0.6n / Len=1.2 L=2.5n C=0.4p R=0.05 /").
//
// The reader is fed line by line and hands every fact it reads, with its
// line, to a sink: the pins, each matrix and its form, each row, each term
// of a matrix (the upper triangle, row and column as indices into [Pin
// Numbers]), each section of a path, and what it found wrong. It keeps
// the pin names and, per matrix, one mark per row; terms go to the sink
// as they are read, so a sink that keeps only some pins' terms
// (PackageReduction) stays as small as what it keeps.

#include <cstddef>
#include <cstdint>
#include <istream>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "ibis/ibis_number.h"
#include "ibis/line_source.h"

namespace ibis {

enum class Matrix : unsigned char { Resistance, Inductance, Capacitance };
constexpr int kMatrices = 3;
// "[Resistance Matrix]" and the like.
char const* matrixKeyword(Matrix matrix);

// The matrix forms that IBIS names, and any other word.
enum class MatrixForm : unsigned char { Full, Banded, Sparse, Unnamed };

// A number of the model: its value and the field as written ("3.10nH"),
// so that it can be written back as it stood. A value that was computed
// (the sum of a path's sections) has no text.
struct PackageValue {
    double value = 0.0;
    std::string text;
};

// One section of a pin's path: Len=0 is a lumped element whose L, R and C
// are its values; any other Len is a line whose L, R and C are per unit of
// Len. Sections between Fork and Endfork are a stub off the path (depth 1
// and more).
struct PathSection {
    int line = 0;
    int depth = 0;
    // The Endfork and Fork words read between the section ahead and this one.
    int endforks = 0, forks = 0;
    PackageValue len, l, r, c;
    bool hasL = false, hasR = false, hasC = false;
};

// What the reader finds wrong in a block's structure; the text of each
// report says what and where.
enum class PackageProblem : unsigned char {
    NoName,            // [Define Package Model] without a name
    BadCount,          // [Number Of Pins], [Number Of Sections] or [Bandwidth] not a whole number above 0
    PinCountDiffers,   // [Number Of Pins] against the names under [Pin Numbers]
    NoPinCount,        // no [Number Of Pins]
    PinTwice,          // a name listed twice under [Pin Numbers]
    DataAndSections,   // [Model Data] and [Number Of Sections] both
    NoData,            // neither
    UnnamedForm,       // a matrix form that IBIS does not name (Diagonal_matrix)
    NoForm,            // a matrix keyword without its form
    NoBandwidth,       // Banded_matrix without [Bandwidth]
    MisplacedKeyword,  // [Row] or [Bandwidth] outside a matrix, a matrix outside [Model Data], ...
    UnknownKeyword,    // a keyword that no package model holds
    RowNotAPin,        // [Row] naming no pin of [Pin Numbers]
    RowTwice,          // the same [Row] twice in one matrix
    RowsMissing,       // a full or banded matrix without a row for every pin
    RowTooLong,        // more entries than the row's form holds
    RowTooShort,       // fewer entries than the row's form needs
    DataWithoutRow,    // numbers ahead of the matrix's first [Row]
    SparseNotAPin,     // a sparse entry for no pin of [Pin Numbers]
    SparseBeforeRow,   // a sparse entry for a pin ahead of the row's pin
    SparseTwice,       // the same entry twice in a sparse row
    SparseNotAPair,    // a sparse row's line that is not "pin value"
    BadNumber,         // a term, Len, L, R or C that is no number
    SelfTermNotPositive, // an L or C self term at or below zero, or missing
    MatrixTwice,       // the same matrix keyword twice
    MatrixMissing,     // no [Inductance Matrix] or no [Capacitance Matrix]
    BadSection,        // a section that does not read "Len=... [L=...] [R=...] [C=...] /"
    TooManySections,   // a path of more sections than [Number Of Sections]
    ForkUnbalanced,    // Fork without Endfork, or Endfork without Fork
    NotClosed,         // no [End Model Data] or no [End Package Model] where one belongs
    NoHeader,          // no [Manufacturer], [OEM] or [Description]
};

class PackageSink {
public:
    virtual ~PackageSink() = default;

    // [Define Package Model] NAME.
    virtual void modelBegins(std::string const& /*name*/, int /*line*/) {}
    // [Manufacturer], [OEM] or [Description] (keyword in lower case) and the
    // text behind it.
    virtual void header(std::string const& /*keyword*/, std::string const& /*text*/, int /*line*/) {}
    // [Number Of Sections] N (0 when N is no whole number above 0).
    virtual void sections(std::size_t /*count*/) {}
    // Each name under [Pin Numbers], numbered from 0 in the order listed.
    virtual void pin(std::size_t /*index*/, std::string const& /*name*/, int /*line*/) {}
    // A matrix keyword and its form.
    virtual void matrixBegins(Matrix /*matrix*/, MatrixForm /*form*/, int /*line*/) {}
    // A [Row] that names a pin of the list.
    virtual void row(Matrix /*matrix*/, std::size_t /*pin*/, int /*line*/) {}
    // A term of the upper triangle (row <= column), read from the file.
    virtual void term(Matrix /*matrix*/, std::size_t /*row*/, std::size_t /*column*/, PackageValue const& /*value*/,
                      int /*line*/)
    {
    }
    // A section of a pin's path.
    virtual void section(std::size_t /*pin*/, PathSection const& /*section*/) {}
    // A fault of the block's structure.
    virtual void problem(PackageProblem /*problem*/, int /*line*/, std::string const& /*text*/) {}
    // A sink that needs the terms of some pins only says so here, and which:
    // the reader then steps over the rows of the other pins without reading
    // them, and reads as numbers only the entries of those pins; what goes
    // unread is not judged, so its faults are not reported. By default every
    // row is read and judged.
    virtual bool selective() const { return false; }
    virtual bool keeps(std::size_t /*pin*/) const { return true; }
    // One past the last pin of [Pin Numbers] that a selective sink keeps: a
    // full or banded row is read no further than that pin.
    virtual std::size_t keptBefore() const { return static_cast<std::size_t>(-1); }
    // [End Package Model], or the keyword or end of file that ended the
    // block without it (then a NotClosed problem came first).
    virtual void modelEnds(int /*line*/) {}
};

class PackageReader {
public:
    explicit PackageReader(PackageSink& sink) : _sink(&sink) {}

    // Offers the next line of the file, read with this comment character.
    // True when the line belongs to a package model: its [Define Package
    // Model] line, its [End Package Model] and everything between. A
    // keyword that stands outside package models ([Model], [Component],
    // [End], ...) ends an open block as not closed and is not taken.
    bool feed(Line const& line, char comment);
    // The end of the file after `lines` lines: an open block ends there.
    void finish(int lines);

    bool inModel() const { return _open; }
    // True while the lines up to the next keyword line are a row that the
    // sink does not keep: a reader of many lines may step over them.
    bool skippingRow() const { return _skipping; }

private:
    enum class Part { Head, PinNumbers, ModelData, Matrix, AfterData };

    void keyword(std::string const& key, std::string_view rest, int line, char comment);
    void open(std::string_view rest, int line, char comment);
    void close(int line, bool closed);
    void startMatrix(Matrix matrix, std::string_view rest, int line, char comment);
    void endMatrix(int line);
    void startRow(std::string_view rest, int line, char comment);
    void endRow();
    void dataLine(std::string_view text, int line, char comment);
    void pinLine(std::string_view text, int line, char comment);
    void sectionText(std::string_view text, int line);
    void endPins(int line);
    void rowValues(std::vector<std::string_view> const& fields, int line);
    void keptRowValues(std::string_view text, int line, char comment);
    bool rowIsFull(int line);
    void entry(std::string_view field, std::size_t column, int line);
    void sparseValues(std::vector<std::string_view> const& fields, int line);
    bool readCount(std::string_view rest, char comment, int line, char const* what, std::size_t& count);
    bool value(std::string_view field, int line, PackageValue& out, char const* what);
    void problem(PackageProblem problem, int line, std::string text);
    std::size_t rowLimit() const; // entries the open row may hold

    PackageSink* _sink;
    bool _open = false;
    std::string _name;
    int _line = 0; // of [Define Package Model]
    Part _part = Part::Head;
    bool _hasData = false, _hasSections = false, _endData = false;
    bool _header[3] = {false, false, false}; // [Manufacturer], [OEM], [Description]
    std::size_t _count = 0;   // [Number Of Pins]
    int _countLine = 0;
    std::size_t _sections = 0; // [Number Of Sections]
    std::vector<std::string> _pins;
    std::unordered_map<std::string, std::size_t> _index;
    int _pinsLine = 0;
    std::size_t _listed = 0; // names under [Pin Numbers], twice-listed ones counted
    int _dataLine = 0;       // [Model Data]
    bool _pinsEnded = false;
    // The path being read in the section form.
    std::size_t _pathPin = 0;
    bool _inPath = false;
    bool _pathBad = false; // a fault of the path was reported
    int _pathSections = 0, _pathLine = 0, _forkDepth = 0, _forkLine = 0;
    int _forksAhead = 0, _endforksAhead = 0; // since the last section
    std::string _pending; // a section's text up to its "/"
    int _pendingLine = 0;
    // The matrix being read.
    bool _seen[kMatrices] = {false, false, false};
    Matrix _matrix = Matrix::Resistance;
    MatrixForm _form = MatrixForm::Full;
    int _matrixLine = 0;
    std::size_t _bandwidth = 0;
    bool _hasBandwidth = false;
    std::vector<char> _rows; // per pin: its row was read
    bool _inRow = false;
    bool _skipping = false; // in a row that the sink does not keep
    std::size_t _row = 0, _entries = 0;
    int _rowLine = 0;
    bool _dataWarned = false;
    std::vector<char> _sparseColumns; // columns of the open sparse row
    bool _diagonal = false;
    std::vector<std::string_view> _fields;
};

// Reads every package model of an IBIS or package model file, with [Comment
// Char] followed. False when the stream failed before its end.
bool readPackageModels(std::istream& in, PackageSink& sink);

// The names of the package models that the stream defines.
std::vector<std::string> packageModelNames(std::istream& in);

// Gives a table's places back: a large table's pages to the system.
struct TablePages {
    std::size_t mapped = 0; // bytes of the pages (0: taken with calloc)
    std::size_t ahead = 0;  // of them ahead of the places
    void operator()(void* places) const;
};

// The terms of one matrix between the kept pins of a reduced package
// model: a place for each pair a <= b of kept positions, row by row (the
// upper triangle), so that a term lands where the design's order puts it,
// whatever the package's order. A pair read twice (a banded row that wraps
// round) keeps the term read first. A place holds its term's text when it
// is short, as numbers are; a longer text lies behind the places. Placing
// the terms costs less than touching fresh pages for them: a large table
// is taken in large pages where the system offers them.
class TermTable {
public:
    static constexpr std::size_t kShort = 14; // a longer text lies behind the places
    struct Term {
        char text[kShort]; // the text; for a longer one, where it lies and its size
        std::uint8_t size; // of a short text
        std::uint8_t held : 1; // a term was read for the pair
        std::uint8_t zero : 1; // its value is 0
        std::uint8_t lies : 1; // the text lies behind the places
    };
    static_assert(sizeof(Term) == 16, "a place takes 16 bytes");

    TermTable() = default;
    // A table for `kept` pins; its places are taken with its first term.
    explicit TermTable(std::size_t kept) : _kept(kept) {}

    bool empty() const { return _held == 0; }
    std::size_t held() const { return _held; }
    // The term of kept positions a <= b, or nullptr.
    Term const* find(std::size_t a, std::size_t b) const
    {
        if (!_places)
            return nullptr;
        Term const& term = _places[place(a, b)];
        return term.held ? &term : nullptr;
    }
    std::string_view text(Term const& term) const;
    // Takes the term of kept positions a <= b unless the pair has one.
    void put(std::size_t a, std::size_t b, std::string_view text, bool zero);

private:
    std::size_t place(std::size_t a, std::size_t b) const { return a * _kept - a * (a - 1) / 2 + (b - a); }
    void take(); // the places

    std::unique_ptr<Term[], TablePages> _places;
    std::size_t _kept = 0, _held = 0;
    std::string _long; // the texts too long for their place
};

// A package model cut down to some of its pins, for a design that uses
// those pins only: each kept pin's self terms, and every term of the
// matrices between two kept pins. Memory grows with the kept pins (a place
// for each pair of them in each matrix that has terms), not with the
// package.
struct ReducedPackage {
    std::string name;
    std::string manufacturer, oem, description; // as written, "" when not
    std::size_t sections = 0;      // [Number Of Sections], 0 without it
    std::vector<std::string> pins; // as asked for, in that order
    std::vector<bool> found;       // the model lists the pin
    bool sectionForm = false;

    // A pin's self terms: the diagonal of each matrix, or for the section
    // form the sum over its path (Len times the per-length value, the
    // lumped value where Len is 0; R and L along the path, C of the stubs
    // too). known: the model gives it (R may be left out: zero).
    struct Self {
        PackageValue value[kMatrices];
        bool known[kMatrices] = {false, false, false};
    };
    std::vector<Self> self;

    // Each matrix's terms between kept pins, self terms among them, by their
    // positions in `pins`, with their text as written.
    TermTable terms[kMatrices];
    // The section form: each kept pin's path as written.
    std::vector<std::vector<PathSection>> paths;
};

// Gathers the reduced model of the package model `name` (or of the first
// one, for an empty name) from the reader's facts, for the given pins.
class PackageReduction : public PackageSink {
public:
    PackageReduction(std::string name, std::vector<std::string> pins);

    void modelBegins(std::string const& name, int line) override;
    void header(std::string const& keyword, std::string const& text, int line) override;
    void sections(std::size_t count) override;
    void pin(std::size_t index, std::string const& name, int line) override;
    void term(Matrix matrix, std::size_t row, std::size_t column, PackageValue const& value, int line) override;
    void section(std::size_t pin, PathSection const& section) override;
    void problem(PackageProblem problem, int line, std::string const& text) override;
    void modelEnds(int line) override;

    // True once the model was read to its end.
    bool complete() const { return _done; }
    // The first fault of the model read, with its line ("" when none).
    std::string const& fault() const { return _fault; }
    ReducedPackage& result() { return _result; }
    // Only the kept pins' rows and entries are read.
    bool selective() const override { return true; }
    bool keeps(std::size_t pin) const override { return pin < _slot.size() && _slot[pin] != 0; }
    std::size_t keptBefore() const override { return _before; }

private:
    bool _active = false, _done = false;
    std::string _wanted;
    std::unordered_map<std::string, std::size_t> _kept; // pin name to its position in the result
    std::vector<std::size_t> _slot;                     // package pin index to kept position + 1 (0: not kept)
    std::size_t _before = 0;                            // one past the last kept pin index
    ReducedPackage _result;
    std::string _fault;
};

// Reads the package model `name` (the first for an empty name) of the
// stream, reduced to `pins`. False, with `error` saying why and where,
// when the model is not there or is not whole.
bool readReducedPackage(std::istream& in, std::string const& name, std::vector<std::string> const& pins,
                        ReducedPackage& out, std::string& error);

} // namespace ibis

#endif
