#include "ibis/package_model.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <new>

#include <sys/mman.h>

#include "ibis/ibis_syntax.h"
#include "ibis/model_reader.h"

namespace ibis {

namespace {

char const* const kMatrixKeys[kMatrices] = {"resistance matrix", "inductance matrix", "capacitance matrix"};
char const* const kMatrixShown[kMatrices] = {"[Resistance Matrix]", "[Inductance Matrix]", "[Capacitance Matrix]"};

std::string lineRef(int line)
{
    return "line " + std::to_string(line);
}

// The first names of a list, for a finding that cannot name them all.
std::string someNames(std::vector<std::string> const& names, std::size_t total)
{
    std::string text;
    for (std::size_t i = 0; i < names.size() && i < 3; ++i)
        text += (i == 0 ? "" : ", ") + names[i];
    if (total > 3)
        text += " and " + std::to_string(total - 3) + " more";
    return text;
}

// A blank between fields, as splitFields takes it.
bool blankAt(std::string_view text, std::size_t i)
{
    return text[i] == ' ' || text[i] == '\t';
}

bool isWord(std::string_view a, char const* b)
{
    return sameWord(a, b);
}

} // namespace

char const* matrixKeyword(Matrix matrix)
{
    return kMatrixShown[static_cast<int>(matrix)];
}

void PackageReader::problem(PackageProblem problem, int line, std::string text)
{
    if (problem == PackageProblem::BadSection || problem == PackageProblem::BadNumber)
        _pathBad = true;
    _sink->problem(problem, line, text);
}

bool PackageReader::readCount(std::string_view rest, char comment, int line, char const* what, std::size_t& count)
{
    splitFields(rest, comment, _fields);
    std::string const field = _fields.empty() ? "" : std::string(_fields[0]);
    bool whole = !field.empty() && field.size() <= 9 &&
                 std::all_of(field.begin(), field.end(), [](char c) { return c >= '0' && c <= '9'; });
    count = whole ? std::stoul(field) : 0;
    if (count == 0) {
        problem(PackageProblem::BadCount, line,
                std::string(what) + " \"" + field + "\" is not a whole number above 0");
        return false;
    }
    return true;
}

bool PackageReader::value(std::string_view field, int line, PackageValue& out, char const* what)
{
    Number const number = parseNumber(field);
    out.text.assign(field.data(), field.size());
    out.value = number.value;
    if (number.isValue())
        return true;
    problem(PackageProblem::BadNumber, line, std::string(what) + " \"" + out.text + "\" is not a number");
    return false;
}

void PackageReader::open(std::string_view rest, int line, char comment)
{
    *this = PackageReader(*_sink);
    _open = true;
    _line = line;
    splitFields(rest, comment, _fields);
    if (_fields.empty())
        problem(PackageProblem::NoName, line, "[Define Package Model] has no name");
    else
        _name.assign(_fields[0].data(), _fields[0].size());
    _sink->modelBegins(_name, line);
}

void PackageReader::endPins(int line)
{
    if (_part != Part::PinNumbers)
        return;
    if (_inPath) {
        if (!_pending.empty())
            problem(PackageProblem::BadSection, _pendingLine,
                    "section \"" + _pending + "\" of pin " + _pins[_pathPin] + " has no closing \"/\"");
        if (_forkDepth != 0)
            problem(PackageProblem::ForkUnbalanced, _forkLine,
                    "Fork in the path of pin " + _pins[_pathPin] + " has no Endfork");
        if (_sections != 0 && static_cast<std::size_t>(_pathSections) > _sections)
            problem(PackageProblem::TooManySections, _pathLine,
                    "the path of pin " + _pins[_pathPin] + " has " + std::to_string(_pathSections) +
                        " sections; [Number Of Sections] says " + std::to_string(_sections));
        else if (_pathSections == 0 && !_pathBad)
            problem(PackageProblem::BadSection, _pathLine, "pin " + _pins[_pathPin] + " has no sections");
    }
    _inPath = false;
    _pending.clear();
    _part = Part::Head;
    (void)line;
}

std::size_t PackageReader::rowLimit() const
{
    std::size_t const n = _pins.size();
    if (_form == MatrixForm::Full)
        return n - _row;
    return _hasBandwidth ? std::min(_bandwidth + 1, n) : n;
}

void PackageReader::endRow()
{
    _skipping = false;
    if (!_inRow)
        return;
    _inRow = false;
    std::size_t const n = _pins.size();
    std::string const name = std::string(matrixKeyword(_matrix)) + " row " + _pins[_row];
    if (_form == MatrixForm::Sparse) {
        if (_matrix != Matrix::Resistance && !_diagonal)
            problem(PackageProblem::SelfTermNotPositive, _rowLine, name + " has no self term");
        return;
    }
    if (_form == MatrixForm::Banded && !_hasBandwidth)
        return; // its length is unknown: NoBandwidth says why
    std::size_t needed = n - _row;
    if (_form == MatrixForm::Banded)
        needed = std::min(needed, _bandwidth + 1);
    if (_entries < needed)
        problem(PackageProblem::RowTooShort, _rowLine,
                name + " has " + std::to_string(_entries) + (_entries == 1 ? " entry" : " entries") + "; it needs " +
                    std::to_string(needed));
}

void PackageReader::startMatrix(Matrix matrix, std::string_view rest, int line, char comment)
{
    endMatrix(line);
    _part = Part::Matrix;
    _matrix = matrix;
    _matrixLine = line;
    _hasBandwidth = false;
    _bandwidth = 0;
    _dataWarned = false;
    int const m = static_cast<int>(matrix);
    if (_seen[m])
        problem(PackageProblem::MatrixTwice, line, std::string(matrixKeyword(matrix)) + " stands twice");
    _seen[m] = true;
    splitFields(rest, comment, _fields);
    std::string const word = _fields.empty() ? "" : std::string(_fields[0]);
    if (word.empty()) {
        _form = MatrixForm::Unnamed;
        problem(PackageProblem::NoForm, line, std::string(matrixKeyword(matrix)) + " names no matrix form");
    } else if (isWord(word, "Full_matrix")) {
        _form = MatrixForm::Full;
    } else if (isWord(word, "Banded_matrix")) {
        _form = MatrixForm::Banded;
    } else if (isWord(word, "Sparse_matrix")) {
        _form = MatrixForm::Sparse;
    } else {
        _form = MatrixForm::Unnamed;
        problem(PackageProblem::UnnamedForm, line,
                std::string(matrixKeyword(matrix)) + " form \"" + word +
                    "\" is not one that IBIS names (Full_matrix, Banded_matrix, Sparse_matrix)");
    }
    _rows.assign(_pins.size(), 0);
    _sink->matrixBegins(matrix, _form, line);
}

void PackageReader::endMatrix(int line)
{
    (void)line;
    if (_part != Part::Matrix)
        return;
    endRow();
    _part = Part::ModelData;
    if (_form == MatrixForm::Unnamed)
        return;
    if (_form == MatrixForm::Banded && !_hasBandwidth)
        problem(PackageProblem::NoBandwidth, _matrixLine,
                std::string(matrixKeyword(_matrix)) + " Banded_matrix has no [Bandwidth]");
    if (_form == MatrixForm::Sparse && _matrix == Matrix::Resistance)
        return;
    std::vector<std::string> missing;
    std::size_t total = 0;
    for (std::size_t p = 0; p < _rows.size(); ++p)
        if (_rows[p] == 0 && total++ < 3)
            missing.push_back(_pins[p]);
    if (total == 0)
        return;
    std::string const what = std::string(matrixKeyword(_matrix)) + " has no [Row] for " + std::to_string(total) +
                             (total == 1 ? " pin: " : " pins: ") + someNames(missing, total);
    problem(_form == MatrixForm::Sparse ? PackageProblem::SelfTermNotPositive : PackageProblem::RowsMissing,
            _matrixLine, _form == MatrixForm::Sparse ? what + "; their self terms are missing" : what);
}

void PackageReader::startRow(std::string_view rest, int line, char comment)
{
    endRow();
    _dataWarned = true; // lines behind a [Row] that was not taken say nothing more
    if (_form == MatrixForm::Unnamed)
        return;
    splitFields(rest, comment, _fields);
    std::string const name = _fields.empty() ? "" : std::string(_fields[0]);
    auto const at = _index.find(name);
    if (at == _index.end()) {
        problem(PackageProblem::RowNotAPin, line,
                "[Row] \"" + name + "\" of " + matrixKeyword(_matrix) + " is not a pin under [Pin Numbers]");
        return;
    }
    if (_rows[at->second] != 0) {
        problem(PackageProblem::RowTwice, line,
                std::string(matrixKeyword(_matrix)) + " has [Row] " + name + " twice");
        return;
    }
    _rows[at->second] = 1;
    if (_sink->selective() && !_sink->keeps(at->second)) {
        _skipping = true;
        return;
    }
    _inRow = true;
    _row = at->second;
    _rowLine = line;
    _entries = 0;
    _diagonal = false;
    _sparseColumns.clear();
    _sink->row(_matrix, _row, line);
}

bool PackageReader::rowIsFull(int line)
{
    std::size_t const limit = rowLimit();
    if (_entries < limit)
        return false;
    problem(PackageProblem::RowTooLong, line,
            std::string(matrixKeyword(_matrix)) + " row " + _pins[_row] + " holds more than " +
                std::to_string(limit) + (limit == 1 ? " entry" : " entries") +
                (_form == MatrixForm::Banded ? " (the diagonal and [Bandwidth] more)"
                                             : " (from the diagonal to the last pin)"));
    _entries = std::numeric_limits<std::size_t>::max() / 2;
    return true;
}

void PackageReader::entry(std::string_view field, std::size_t column, int line)
{
    PackageValue term;
    bool const ok = value(field, line, term, "matrix entry");
    if (ok && _entries == 0 && _matrix != Matrix::Resistance && term.value <= 0)
        problem(PackageProblem::SelfTermNotPositive, line,
                std::string(matrixKeyword(_matrix)) + " self term of pin " + _pins[_row] + " is " + term.text +
                    "; it must be above zero");
    if (ok)
        _sink->term(_matrix, std::min(_row, column), std::max(_row, column), term, line);
}

void PackageReader::rowValues(std::vector<std::string_view> const& fields, int line)
{
    std::size_t const n = _pins.size();
    for (std::string_view field : fields) {
        if (rowIsFull(line))
            return;
        entry(field, (_row + _entries) % n, line);
        ++_entries;
    }
}

void PackageReader::keptRowValues(std::string_view text, int line, char comment)
{
    // The row of a kept pin for a selective sink: the fields are counted
    // where they stand, and only those of kept pins are read as numbers.
    std::size_t const n = _pins.size();
    std::size_t const size = text.size();
    std::size_t i = 0;
    for (;;) {
        while (i < size && blankAt(text, i))
            ++i;
        if (i == size || text[i] == comment)
            return;
        std::size_t const start = i;
        while (i < size && !blankAt(text, i) && text[i] != comment)
            ++i;
        if (rowIsFull(line))
            return;
        if (_row + _entries >= _sink->keptBefore() && (_form == MatrixForm::Full || _row + rowLimit() <= n)) {
            // No kept pin stands further on in this row: the rest of it goes
            // unread, its length unjudged.
            _inRow = false;
            _skipping = true;
            return;
        }
        std::size_t const column = (_row + _entries) % n;
        if (_sink->keeps(column))
            entry(text.substr(start, i - start), column, line);
        ++_entries;
    }
}

void PackageReader::sparseValues(std::vector<std::string_view> const& fields, int line)
{
    if (fields.size() % 2 != 0) {
        problem(PackageProblem::SparseNotAPair, line,
                std::string(matrixKeyword(_matrix)) + " Sparse_matrix row " + _pins[_row] +
                    ": a line holds pin and value pairs");
        return;
    }
    for (std::size_t f = 0; f < fields.size(); f += 2) {
        std::string const name(fields[f]);
        auto const at = _index.find(name);
        std::string const where = std::string(matrixKeyword(_matrix)) + " row " + _pins[_row] + ": ";
        if (at == _index.end()) {
            problem(PackageProblem::SparseNotAPin, line, where + "\"" + name + "\" is not a pin under [Pin Numbers]");
            continue;
        }
        std::size_t const column = at->second;
        if (column < _row) {
            problem(PackageProblem::SparseBeforeRow, line,
                    where + "pin " + name + " stands ahead of " + _pins[_row] +
                        " under [Pin Numbers]; a row holds its own pin and those behind it");
            continue;
        }
        if (std::find(_sparseColumns.begin(), _sparseColumns.end(), column) != _sparseColumns.end()) {
            problem(PackageProblem::SparseTwice, line, where + "pin " + name + " stands twice");
            continue;
        }
        _sparseColumns.push_back(column);
        PackageValue term;
        if (!value(fields[f + 1], line, term, "matrix entry"))
            continue;
        if (column == _row) {
            _diagonal = true;
            if (_matrix != Matrix::Resistance && term.value <= 0)
                problem(PackageProblem::SelfTermNotPositive, line,
                        std::string(matrixKeyword(_matrix)) + " self term of pin " + name + " is " + term.text +
                            "; it must be above zero");
        }
        _sink->term(_matrix, _row, column, term, line);
    }
}

void PackageReader::dataLine(std::string_view text, int line, char comment)
{
    if (_part == Part::PinNumbers) {
        pinLine(text, line, comment);
        return;
    }
    if (_part == Part::ModelData) {
        if (!_dataWarned)
            problem(PackageProblem::DataWithoutRow, line, "text under [Model Data] ahead of any matrix keyword");
        _dataWarned = true;
        return;
    }
    if (_part != Part::Matrix || _form == MatrixForm::Unnamed || _skipping)
        return;
    if (!_inRow) {
        if (!_dataWarned)
            problem(PackageProblem::DataWithoutRow, line,
                    std::string(matrixKeyword(_matrix)) + " has values ahead of its first [Row]");
        _dataWarned = true;
        return;
    }
    if (_form != MatrixForm::Sparse && _sink->selective()) {
        keptRowValues(text, line, comment);
        return;
    }
    splitFields(text, comment, _fields);
    if (_form == MatrixForm::Sparse)
        sparseValues(_fields, line);
    else
        rowValues(_fields, line);
}

void PackageReader::pinLine(std::string_view text, int line, char comment)
{
    std::size_t const cut = text.find(comment);
    text = text.substr(0, cut);
    splitFields(text, comment, _fields);
    if (_fields.empty())
        return;
    std::string_view const first = _fields[0];
    // In the section form a line either starts a pin's path with the pin's
    // name, or goes on with the path of the pin above it.
    std::size_t const eq = first.find('=');
    std::string_view const head = first.substr(0, eq);
    bool const continues = _hasSections && _inPath &&
                           (eq != std::string_view::npos || first == "/" || isWord(head, "Len") || isWord(head, "L") ||
                            isWord(head, "R") || isWord(head, "C") || isWord(first, "Fork") ||
                            isWord(first, "Endfork"));
    if (!continues) {
        if (_inPath)
            endPins(line), _part = Part::PinNumbers;
        std::string const name(first);
        ++_listed;
        auto const added = _index.emplace(name, _pins.size());
        if (!added.second) {
            problem(PackageProblem::PinTwice, line, "pin " + name + " stands twice under [Pin Numbers]");
            return;
        }
        _pins.push_back(name);
        _sink->pin(_pins.size() - 1, name, line);
        text = text.substr(text.find(first) + first.size());
        if (!_hasSections) {
            if (_fields.size() > 1)
                problem(PackageProblem::BadSection, line,
                        "text behind pin " + name + "; a pin's sections need [Number Of Sections] ahead of [Pin Numbers]");
            return;
        }
        _inPath = true;
        _pathPin = _pins.size() - 1;
        _pathLine = line;
        _pathSections = 0;
        _pathBad = false;
        _forkDepth = 0;
        _forksAhead = _endforksAhead = 0;
    }
    sectionText(text, line);
}

void PackageReader::sectionText(std::string_view text, int line)
{
    // Lexes "Len = 0.5 L=2n / Fork Len=... / Endfork" into sections.
    PathSection s;
    bool hasLen = false, any = false, bad = false;
    std::size_t i = 0;
    auto skip = [&] {
        while (i < text.size() && (text[i] == ' ' || text[i] == '\t' || text[i] == '\r'))
            ++i;
    };
    auto token = [&] {
        std::size_t const from = i;
        while (i < text.size() && text[i] != ' ' && text[i] != '\t' && text[i] != '\r' && text[i] != '=' &&
               text[i] != '/')
            ++i;
        return text.substr(from, i - from);
    };
    std::string const pinName = _pins[_pathPin];
    _pending.clear();
    for (;;) {
        skip();
        if (i >= text.size())
            break;
        if (text[i] == '/') {
            ++i;
            _pending.clear();
            if (!any)
                continue;
            if (!hasLen && !bad) {
                problem(PackageProblem::BadSection, line, "a section of pin " + pinName + " has no Len");
            } else if (!bad) {
                s.line = line;
                s.depth = _forkDepth;
                s.forks = _forksAhead;
                s.endforks = _endforksAhead;
                _forksAhead = _endforksAhead = 0;
                ++_pathSections;
                _sink->section(_pathPin, s);
            }
            s = PathSection();
            hasLen = any = bad = false;
            continue;
        }
        std::size_t const start = i;
        std::string_view const word = token();
        if (!any && isWord(word, "Fork")) {
            if (_forkDepth++ == 0)
                _forkLine = line;
            ++_forksAhead;
            continue;
        }
        if (!any && isWord(word, "Endfork")) {
            if (_forkDepth == 0)
                problem(PackageProblem::ForkUnbalanced, line, "Endfork in the path of pin " + pinName + " has no Fork");
            else
                --_forkDepth, ++_endforksAhead;
            continue;
        }
        any = true;
        skip();
        if (i >= text.size() || text[i] != '=') {
            problem(PackageProblem::BadSection, line,
                    "\"" + std::string(word) + "\" in the path of pin " + pinName + " is not written NAME=VALUE");
            bad = true;
            // Skip to the section's end.
            while (i < text.size() && text[i] != '/')
                ++i;
            continue;
        }
        ++i;
        skip();
        std::string_view const field = token();
        PackageValue* target = nullptr;
        if (isWord(word, "Len")) {
            target = &s.len;
            hasLen = true;
        } else if (isWord(word, "L")) {
            target = &s.l;
            s.hasL = true;
        } else if (isWord(word, "R")) {
            target = &s.r;
            s.hasR = true;
        } else if (isWord(word, "C")) {
            target = &s.c;
            s.hasC = true;
        } else {
            problem(PackageProblem::BadSection, line,
                    "\"" + std::string(word) + "\" in the path of pin " + pinName + " is none of Len, L, R, C");
            bad = true;
            continue;
        }
        if (!value(field, line, *target, word.size() == 3 ? "Len" : "section value"))
            bad = true;
        _pending.assign(text.substr(start, i - start));
        _pendingLine = line;
    }
    if (any) {
        problem(PackageProblem::BadSection, line, "a section of pin " + pinName + " has no closing \"/\"");
        _pending.clear();
    }
}

void PackageReader::keyword(std::string const& key, std::string_view rest, int line, char comment)
{
    if (key == "manufacturer" || key == "oem" || key == "description") {
        _header[key == "manufacturer" ? 0 : key == "oem" ? 1 : 2] = true;
        std::string_view text = rest.substr(0, rest.find(comment));
        while (!text.empty() && (text.back() == ' ' || text.back() == '\t' || text.back() == '\r'))
            text.remove_suffix(1);
        while (!text.empty() && (text.front() == ' ' || text.front() == '\t'))
            text.remove_prefix(1);
        _sink->header(key, std::string(text), line);
        return;
    }
    if (key == "number of pins") {
        _countLine = line;
        readCount(rest, comment, line, "[Number Of Pins]", _count);
        return;
    }
    if (key == "number of sections") {
        _hasSections = true;
        readCount(rest, comment, line, "[Number Of Sections]", _sections);
        _sink->sections(_sections);
        return;
    }
    if (key == "pin numbers") {
        if (_pinsLine != 0)
            problem(PackageProblem::MisplacedKeyword, line, "[Pin Numbers] stands twice");
        _pinsLine = line;
        _part = Part::PinNumbers;
        return;
    }
    if (key == "model data") {
        _hasData = true;
        _dataLine = line;
        _part = Part::ModelData;
        _dataWarned = false;
        return;
    }
    for (int m = 0; m < kMatrices; ++m)
        if (key == kMatrixKeys[m]) {
            if (_part != Part::ModelData && _part != Part::Matrix)
                problem(PackageProblem::MisplacedKeyword, line,
                        std::string(kMatrixShown[m]) + " stands outside [Model Data]");
            startMatrix(static_cast<Matrix>(m), rest, line, comment);
            return;
        }
    if (key == "bandwidth") {
        if (_part != Part::Matrix || _form != MatrixForm::Banded) {
            problem(PackageProblem::MisplacedKeyword, line, "[Bandwidth] belongs to a Banded_matrix");
            return;
        }
        if (_hasBandwidth || _inRow)
            problem(PackageProblem::MisplacedKeyword, line,
                    "[Bandwidth] of " + std::string(matrixKeyword(_matrix)) + " belongs ahead of its rows, once");
        _hasBandwidth = readCount(rest, comment, line, "[Bandwidth]", _bandwidth);
        return;
    }
    if (key == "row") {
        if (_part != Part::Matrix) {
            problem(PackageProblem::MisplacedKeyword, line, "[Row] stands outside a matrix");
            return;
        }
        startRow(rest, line, comment);
        return;
    }
    if (key == "end model data") {
        if (_part == Part::Matrix || _part == Part::ModelData) {
            endMatrix(line);
            _part = Part::AfterData;
            _endData = true;
        } else {
            problem(PackageProblem::MisplacedKeyword, line, "[End Model Data] without [Model Data]");
        }
        return;
    }
    problem(PackageProblem::UnknownKeyword, line,
            "[" + key + "] is not a keyword of a package model");
}

void PackageReader::close(int line, bool closed)
{
    endMatrix(line);
    endPins(line);
    std::string const model = "[Define Package Model] " + _name;
    if (_hasData && !_endData)
        problem(PackageProblem::NotClosed, _dataLine, "[Model Data] has no [End Model Data]");
    if (!closed)
        problem(PackageProblem::NotClosed, _line, model + " has no [End Package Model]");
    char const* const headers[3] = {"[Manufacturer]", "[OEM]", "[Description]"};
    for (int h = 0; h < 3; ++h)
        if (!_header[h])
            problem(PackageProblem::NoHeader, _line, model + " has no " + headers[h]);
    if (_countLine == 0)
        problem(PackageProblem::NoPinCount, _line, model + " has no [Number Of Pins]");
    else if (_count != 0 && _count != _listed)
        problem(PackageProblem::PinCountDiffers, _countLine,
                "[Number Of Pins] says " + std::to_string(_count) + " but [Pin Numbers] lists " +
                    std::to_string(_listed));
    if (_hasData && _hasSections)
        problem(PackageProblem::DataAndSections, _line,
                model + " has [Model Data] and [Number Of Sections]; a model uses one of them");
    else if (!_hasData && !_hasSections)
        problem(PackageProblem::NoData, _line, model + " has neither [Model Data] nor [Number Of Sections]");
    if (_hasData)
        for (int m = 1; m < kMatrices; ++m)
            if (!_seen[m])
                problem(PackageProblem::MatrixMissing, _dataLine,
                        std::string("[Model Data] has no ") + kMatrixShown[m]);
    _open = false;
    _sink->modelEnds(line);
}

bool PackageReader::feed(Line const& line, char comment)
{
    if (isKeywordLine(line.text)) {
        std::string const key = keywordKey(line.text);
        std::string_view const rest = keywordRest(line.text);
        if (key == "define package model") {
            if (_open)
                close(line.number, false);
            open(rest, line.number, comment);
            return true;
        }
        if (!_open)
            return false;
        if (key == "end package model") {
            close(line.number, true);
            return true;
        }
        static char const* const own[] = {"manufacturer",  "oem",       "description", "number of pins",
                                          "number of sections", "pin numbers", "model data", "resistance matrix",
                                          "inductance matrix",  "capacitance matrix", "bandwidth", "row",
                                          "end model data"};
        bool const known = std::any_of(std::begin(own), std::end(own), [&](char const* k) { return key == k; });
        if (!known && endsModel(key)) {
            close(line.number, false);
            return false;
        }
        if (_part == Part::PinNumbers && key != "pin numbers")
            endPins(line.number);
        keyword(key, rest, line.number, comment);
        return true;
    }
    if (!_open)
        return false;
    if (!isBlankOrComment(line.text, comment))
        dataLine(line.text, line.number, comment);
    return true;
}

void PackageReader::finish(int lines)
{
    if (_open)
        close(lines, false);
}

bool readPackageModels(std::istream& in, PackageSink& sink)
{
    LineSource source(in);
    Line line;
    CommentChar comment;
    PackageReader reader(sink);
    int lines = 0;
    for (;;) {
        // The lines of a row that the sink does not keep, up to the next
        // line that may be a keyword, are stepped over where they lie.
        while (reader.skippingRow()) {
            std::string_view const ahead = source.ahead();
            std::size_t at = 0;
            int whole = 0;
            while (at < ahead.size() && ahead[at] != '[') {
                void const* const lf = std::memchr(ahead.data() + at, '\n', ahead.size() - at);
                if (lf == nullptr)
                    break;
                at = static_cast<std::size_t>(static_cast<char const*>(lf) - ahead.data()) + 1;
                ++whole;
            }
            if (whole == 0)
                break;
            source.skip(at, whole);
        }
        if (!source.next(line))
            break;
        lines = line.number;
        if (!reader.feed(line, comment.current()) && isKeywordLine(line.text) &&
            keywordKey(line.text) == "comment char")
            comment.change(keywordRest(line.text));
    }
    reader.finish(lines);
    return !source.failed();
}

std::vector<std::string> packageModelNames(std::istream& in)
{
    struct Names : PackageSink {
        std::vector<std::string> names;
        void modelBegins(std::string const& name, int) override { names.push_back(name); }
    } names;
    readPackageModels(in, names);
    return names.names;
}

PackageReduction::PackageReduction(std::string name, std::vector<std::string> pins) : _wanted(std::move(name))
{
    for (std::size_t p = 0; p < pins.size(); ++p)
        _kept.emplace(pins[p], p);
    _result.found.assign(pins.size(), false);
    _result.self.resize(pins.size());
    _result.paths.resize(pins.size());
    for (TermTable& terms : _result.terms)
        terms = TermTable(pins.size());
    _result.pins = std::move(pins);
}

void PackageReduction::modelBegins(std::string const& name, int /*line*/)
{
    if (_done || _active || !(_wanted.empty() || name == _wanted))
        return;
    _active = true;
    _result.name = name;
}

void PackageReduction::header(std::string const& keyword, std::string const& text, int /*line*/)
{
    if (!_active)
        return;
    (keyword == "manufacturer" ? _result.manufacturer : keyword == "oem" ? _result.oem : _result.description) = text;
}

void PackageReduction::sections(std::size_t count)
{
    if (_active)
        _result.sections = count;
}

void PackageReduction::pin(std::size_t index, std::string const& name, int /*line*/)
{
    if (!_active)
        return;
    if (_slot.size() <= index)
        _slot.resize(index + 1, 0);
    auto const at = _kept.find(name);
    if (at == _kept.end())
        return;
    _slot[index] = at->second + 1;
    _result.found[at->second] = true;
    _before = std::max(_before, index + 1);
}

void PackageReduction::term(Matrix matrix, std::size_t row, std::size_t column, PackageValue const& value, int)
{
    if (!_active || row >= _slot.size() || column >= _slot.size() || _slot[row] == 0 || _slot[column] == 0)
        return;
    std::size_t a = _slot[row] - 1, b = _slot[column] - 1;
    if (a > b)
        std::swap(a, b);
    int const m = static_cast<int>(matrix);
    _result.terms[m].put(a, b, value.text, value.value == 0);
    if (a == b) {
        _result.self[a].value[m] = value;
        _result.self[a].known[m] = true;
    }
}

void PackageReduction::section(std::size_t pin, PathSection const& section)
{
    if (!_active || pin >= _slot.size() || _slot[pin] == 0)
        return;
    std::size_t const k = _slot[pin] - 1;
    _result.sectionForm = true;
    _result.paths[k].push_back(section);
    ReducedPackage::Self& self = _result.self[k];
    double const len = section.len.value;
    auto add = [&](Matrix matrix, PackageValue const& v, bool has) {
        if (!has)
            return;
        int const m = static_cast<int>(matrix);
        self.value[m].value += len == 0 ? v.value : len * v.value;
        self.value[m].text.clear();
        self.known[m] = true;
    };
    if (section.depth == 0) {
        add(Matrix::Resistance, section.r, section.hasR);
        add(Matrix::Inductance, section.l, section.hasL);
    }
    add(Matrix::Capacitance, section.c, section.hasC);
}

void PackageReduction::problem(PackageProblem problem, int line, std::string const& text)
{
    if (!_active || !_fault.empty())
        return;
    if (problem == PackageProblem::NoHeader || problem == PackageProblem::TooManySections ||
        problem == PackageProblem::UnknownKeyword)
        return; // the values read are right all the same
    _fault = lineRef(line) + ": " + text;
}

void PackageReduction::modelEnds(int /*line*/)
{
    if (!_active)
        return;
    _active = false;
    _done = true;
}

void TermTable::take()
{
    std::size_t const bytes = _kept * (_kept + 1) / 2 * sizeof(Term);
    // A large table goes into anonymous pages, zero and taking memory only
    // once written, and in large pages where the system offers them: a 2 MB
    // run of places is then one fault instead of 512.
    std::size_t constexpr kLarge = std::size_t(2) << 20;
    if (bytes < kLarge) {
        _places.reset(static_cast<Term*>(std::calloc(bytes, 1)));
        if (!_places)
            throw std::bad_alloc();
        return;
    }
    std::size_t const whole = (bytes + kLarge - 1) / kLarge * kLarge;
    std::size_t const mapped = whole + kLarge; // room to start on a large page
    void* const pages = ::mmap(nullptr, mapped, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (pages == MAP_FAILED)
        throw std::bad_alloc();
    auto const base = reinterpret_cast<std::uintptr_t>(pages);
    std::size_t const ahead = (base + kLarge - 1) / kLarge * kLarge - base;
    _places = std::unique_ptr<Term[], TablePages>(reinterpret_cast<Term*>(base + ahead), TablePages{mapped, ahead});
#ifdef MADV_HUGEPAGE
    ::madvise(_places.get(), whole, MADV_HUGEPAGE);
#endif
}

void TablePages::operator()(void* places) const
{
    if (mapped == 0)
        std::free(places);
    else
        ::munmap(static_cast<char*>(places) - ahead, mapped);
}

std::string_view TermTable::text(Term const& term) const
{
    if (!term.lies)
        return std::string_view(term.text, term.size);
    std::uint64_t at = 0;
    std::uint32_t size = 0;
    std::memcpy(&at, term.text, sizeof at);
    std::memcpy(&size, term.text + sizeof at, sizeof size);
    return std::string_view(_long).substr(at, size);
}

void TermTable::put(std::size_t a, std::size_t b, std::string_view text, bool zero)
{
    if (!_places)
        take();
    Term& term = _places[place(a, b)];
    if (term.held)
        return;
    term.held = 1;
    term.zero = zero ? 1 : 0;
    ++_held;
    if (text.size() <= kShort) {
        std::memcpy(term.text, text.data(), text.size());
        term.size = static_cast<std::uint8_t>(text.size());
        return;
    }
    term.lies = 1;
    std::uint64_t const at = _long.size();
    std::uint32_t const size = static_cast<std::uint32_t>(text.size());
    std::memcpy(term.text, &at, sizeof at);
    std::memcpy(term.text + sizeof at, &size, sizeof size);
    _long += text;
}

bool readReducedPackage(std::istream& in, std::string const& name, std::vector<std::string> const& pins,
                        ReducedPackage& out, std::string& error)
{
    PackageReduction reduction(name, pins);
    if (!readPackageModels(in, reduction)) {
        error = "the file cannot be read to its end";
        return false;
    }
    if (!reduction.complete()) {
        error = name.empty() ? "no [Define Package Model]" : "no [Define Package Model] " + name;
        return false;
    }
    if (!reduction.fault().empty()) {
        error = reduction.fault();
        return false;
    }
    out = std::move(reduction.result());
    return true;
}

} // namespace ibis
