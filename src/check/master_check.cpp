// What the generator's readers rely on in a master IBIS file, read line by
// line: line lengths, the naming tables, the component line, the package
// blocks, the model list under [Pin], where the copy of each model block
// ends, and what stands inside each block. Each finding is graded by what
// the generator then writes or does.

#include "check/master_check.h"

#include <algorithm>
#include <cstring>
#include <istream>
#include <sstream>

#include "check/model_rules.h"
#include "ibis/ibis_syntax.h"
#include "driver/line_reader.h"
#include "master/master_lines.h"
#include "writer/copy_lines.h"
#include "writer/reserved_models.h"

namespace ibischeck {

namespace {

// The longest lines that the naming section reader and the writers' passes
// take, and how their buffers are called in the findings.
const std::size_t kNamingLineLimit = IBS_LINE_SIZE - 1;
const std::size_t kCopyLineLimit = IBS_COPY_LINE_SIZE - 1;
std::string const kNamingReader =
    "the naming section reader (" + std::to_string(IBS_LINE_SIZE) + "-byte buffer)";
std::string const kCopyPasses = "the writers' passes (" + std::to_string(IBS_COPY_LINE_SIZE) + "-byte buffer)";

bool holds(std::string_view line, char const* text)
{
    return line.find(text) != std::string_view::npos;
}

bool isBlankText(std::string_view text)
{
    for (char c : text)
        if (!std::isspace(static_cast<unsigned char>(c)))
            return false;
    return true;
}


} // namespace

Header headerOf(std::string_view line, char comment)
{
    Header header;
    header.versionSeen = true;
    std::vector<std::string_view> fields;
    ibis::splitFields(ibis::keywordRest(line), comment, fields);
    double const version = fields.empty() ? 0 : ibisVersion(std::string(fields[0]));
    if (version != 0)
        header.version = version;
    return header;
}

void MasterCheck::checkLength(ibis::Line const& line)
{
    // The generator's readers keep a CR ahead of the LF in the line.
    std::size_t const counted = line.length + (line.crlf ? 1 : 0);
    if (counted <= kNamingLineLimit)
        return;
    LongLine const l{line.number, counted, line.crlf && line.length <= kCopyLineLimit};
    if (_component == 0 && (_package != 0 || _pin != 0)) {
        _namingUnsure.push_back(l); // in the naming section if a component line follows
        return;
    }
    bool const naming = _component == 0;
    if (!naming && counted > kCopyLineLimit && _pinList == PinList::Done) {
        // Behind the frame a pass stops here only if it still has a block
        // to find or to copy: known at the next line that holds "[Model]".
        _longLines.push_back(l);
        return;
    }
    gradeLength(l, naming);
}

void MasterCheck::gradeLength(LongLine const& l, bool naming)
{
    std::string const length =
        "line of " + std::to_string(l.counted) + " characters" + (l.byCr ? " with its CR" : "") + ": ";
    bool const copy = l.counted > kCopyLineLimit;
    if (naming && copy)
        addError(_findings, l.line,
                 length + kNamingReader + " and " + kCopyPasses + " stop here");
    else if (copy)
        addError(_findings, l.line, length + kCopyPasses + " stop here");
    else if (naming)
        addError(_findings, l.line, length + kNamingReader + " stops here");
    else
        addWarning(_findings, l.line,
                   length + kNamingReader + " would stop here if it read this far");
}

void MasterCheck::frameLine(ibis::Line const& line)
{
    std::string_view const text = line.text;
    if (_component == 0 && ibsIsComponentLine(text)) {
        _component = line.number;
        _naming.setEnd(line.number);
    }
    bool const package = _package == 0 && ibsEndsPreamble(text);
    bool const pin = _pin == 0 && ibsIsPinListHeading(text);
    if ((package || pin) && _component == 0 && !_namingWithoutComponent)
        _namingWithoutComponent = _naming.endingAt(line.number);
    if (package) {
        _package = line.number;
        _packageKeyword = ibis::keywordKey(trimmed(text)) == "package";
        _sawPackageKeyword = _packageKeyword;
    }
    if (pin)
        _pin = line.number;
}

void MasterCheck::packageLine(ibis::Line const& line)
{
    // A block: a name line ("|" and the name) directly followed by a value
    // line; it is copied up to a line that is "|" alone.
    std::string const text = trimmed(line.text);
    bool const value = holds(line.text, "R_pkg") || holds(line.text, "L_pkg") || holds(line.text, "C_pkg");
    if (value && _previousTrimmed.size() >= 2 && _previousTrimmed[0] == '|') {
        _anyPackage = true;
        for (auto const& [blank, byCr] : _blankLines)
            if (blank < line.number - 1)
                addError(_packageFindings, blank,
                         byCr ? "empty line ahead of a package block, blank-only by the CR of its line end; the "
                                "package reader fails on it"
                              : "blank-only line ahead of a package block; the package reader fails on it");
        _blankLines.clear();
        _openPackages.emplace_back(line.number - 1, _previousTrimmed.substr(1));
    }
    if (text == "|")
        _openPackages.erase(std::remove_if(_openPackages.begin(), _openPackages.end(),
                                           [&](auto const& block) { return block.first <= line.number - 2; }),
                            _openPackages.end());
    if ((!line.text.empty() || line.crlf) && isBlankText(line.text))
        _blankLines.emplace_back(line.number, line.text.empty());
    _previousTrimmed = text;
}

void MasterCheck::pinListLine(ibis::Line const& line)
{
    // The lines behind [Pin] up to the first that begins with "|".
    std::string_view const text = line.text;
    if (ibsEndsPinList(text)) {
        _pinList = PinList::Done;
        return;
    }
    if (ibis::isKeywordLine(text)) {
        addError(_findings, _pin,
                 "the [Pin] list is not closed by a \"|\" line before " + std::string(ibis::keywordShown(text)) +
                     " at line " + std::to_string(line.number) + "; the model list takes in its rows");
        _pinList = PinList::Done;
        return;
    }
    // The row as the model list reader splits it: on blanks alone.
    std::string const model = ibsPinListRow(text).model;
    if (!model.empty() && !ibsReservedModelName(model))
        _listed.emplace(model, line.number);
}

void MasterCheck::modelRead(ibis::Model const& model)
{
    checkModel(model, _context, _findings);
    auto mark = [&](BlockCopy& block) {
        if (!block.readerModel || block.line != model.line)
            return false;
        block.readerEnd = model.endedBy.empty() ? 0 : _number;
        block.readerEndShown = _keywordShown;
        return true;
    };
    if (_block && mark(*_block))
        return;
    for (BlockCopy& block : _awaiting)
        if (mark(block))
            return;
}

void MasterCheck::closeBlock(int end, std::string_view text)
{
    BlockCopy block = std::move(*_block);
    _block.reset();
    block.end = end;
    if (end != 0) {
        std::string const line = trimmed(text);
        if (line[0] == '|') {
            block.endName = keywordArgument(line.substr(1));
            block.kind = block.endName == block.name ? BlockCopy::Own : BlockCopy::OtherComment;
        } else {
            block.kind = BlockCopy::NextModel;
        }
    }
    _awaiting.push_back(std::move(block));
}

void MasterCheck::markContent(int first, int last)
{
    if (_block && _block->readerModel && _block->readerEnd == -1)
        _block->lastContent = last;
    for (BlockCopy& block : _awaiting)
        if (block.readerModel && block.readerEnd == -1 && block.contentAfterEnd == 0)
            block.contentAfterEnd = first;
}

void MasterCheck::blockLine(ibis::Line const& line, bool content)
{
    // The model IBIS reads: its content behind the copy's end.
    if (content && _reader.inModel())
        markContent(line.number, line.number);
    if (!ibsHoldsModelKeyword(line.text))
        return;
    if (_block)
        closeBlock(line.number, line.text);
    // Long lines ahead of a line that holds "[Model]" stop the pass that
    // looks for a block there, or copies one.
    for (LongLine const& l : _longLines)
        gradeLength(l, false);
    _longLines.clear();
    if (isComment(line.text))
        return;
    BlockCopy block;
    block.line = block.lastContent = line.number;
    block.name = keywordArgument(trimmed(line.text));
    block.readerModel = ibis::isKeywordLine(line.text) && ibis::keywordKey(line.text) == "model";
    _blocks.emplace_back(block.name, line.number);
    _block = std::move(block);
}

void MasterCheck::judge(BlockCopy const& block)
{
    std::string const model = "[Model] " + visible(block.name);
    bool const takesAlong = block.readerEnd > 0 && (block.end == 0 || block.readerEnd < block.end);
    std::string const along =
        takesAlong ? " and takes " + visible(block.readerEndShown) + " (line " + std::to_string(block.readerEnd) +
                         ") along into the design file"
                   : "";
    if (block.end == 0) {
        addError(_findings, block.line,
                 "no line holding \"[Model]\" follows " + model + "; its copy runs to the end of the file" + along);
    } else if (takesAlong) {
        addError(_findings, block.line,
                 "the copy of " + model + " ends only at line " + std::to_string(block.end) + along);
    } else if (block.kind == BlockCopy::NextModel) {
        int const first = block.lastContent + 1, last = block.end - 1;
        std::string const copied =
            last > first    ? "takes lines " + std::to_string(first) + " to " + std::to_string(last) +
                                  " along, comment and blank lines only"
            : last == first ? "takes line " + std::to_string(first) + " along, a comment or blank line"
                            : "is whole, with nothing taken along";
        addWarning(_findings, block.line,
                   model + " ends at the next [Model] line (line " + std::to_string(block.end) +
                       "), not at \"| End [Model] " + visible(block.name) + "\"; its copy " + copied);
    } else if (block.contentAfterEnd != 0) {
        addError(_findings, block.line,
                 "the copy of " + model + " ends at line " + std::to_string(block.end) +
                     ", which holds \"[Model]\"; its lines from line " + std::to_string(block.contentAfterEnd) +
                     " on are not copied");
    } else if (block.kind == BlockCopy::OtherComment) {
        addWarning(_findings, block.line,
                   model + " is closed by line " + std::to_string(block.end) + ", which names " +
                       visible(block.endName) + "; its copy ends there all the same");
    }
}

// Judges the blocks whose copy and model have both ended.
void MasterCheck::settle()
{
    auto const done = [&](BlockCopy const& block) { return !block.readerModel || block.readerEnd != -1; };
    for (BlockCopy const& block : _awaiting)
        if (done(block))
            judge(block);
    _awaiting.erase(std::remove_if(_awaiting.begin(), _awaiting.end(), done), _awaiting.end());
}

void MasterCheck::feed(ibis::Line const& line)
{
    _number = line.number;
    if (_component == 0 || _package == 0 || _pin == 0)
        frameLine(line);
    checkLength(line);
    _naming.feed(line.text, line.number);
    if (_namingWithoutComponent)
        _namingWithoutComponent->feed(line.text, line.number);

    bool const keyword = ibis::isKeywordLine(line.text);
    std::string const key = keyword ? ibis::keywordKey(line.text) : std::string();
    if (keyword) {
        std::string_view const shownKeyword = ibis::keywordShown(line.text);
        _keywordShown.assign(shownKeyword.data(), shownKeyword.size());
        if (key == "ibis ver" && !_header.versionSeen) {
            _header = headerOf(line.text, _comment.current());
            _context.version = _header.version;
        }
        if (_package != 0 && !_sawPackageKeyword) {
            if (key == "package")
                _sawPackageKeyword = true;
            else if (_droppedKeyword == 0 && line.number > _package) {
                _droppedKeyword = line.number;
                _droppedShown = std::string(ibis::keywordShown(line.text));
            }
        }
    }
    if (_package != 0 && _pin == 0 && line.number > _package)
        packageLine(line);
    if (_pinList == PinList::In)
        pinListLine(line);
    else if (_pinList == PinList::Before && _pin == line.number)
        _pinList = PinList::In;
    if (_pin == line.number && _package != 0 && _package < _pin) {
        for (auto const& block : _openPackages)
            addError(_packageFindings, block.first,
                     "package block " + visible(block.second) +
                         " is not closed by a \"|\" line before [Pin]; its copy would not end");
        if (!_anyPackage)
            addError(_packageFindings, _package,
                     "no package block (a \"|\" name line and its R_pkg, L_pkg, C_pkg lines) under the package "
                     "keyword");
        _findings.insert(_findings.end(), _packageFindings.begin(), _packageFindings.end());
    }

    bool const inModel = _reader.feed(line, _comment.current(), keyword ? &key : nullptr);
    _packages.feed(line, _comment.current());
    bool const content = inModel && !ibis::isBlankOrComment(line.text, _comment.current());
    blockLine(line, content);
    if (!_awaiting.empty())
        settle();
    if (key == "comment char")
        _comment.change(ibis::keywordRest(line.text));
}

bool MasterCheck::frameRead() const
{
    return _component != 0 && _package != 0 && _pin != 0 && _pinList == PinList::Done && _naming.idle() &&
           _naming.ended() && (!_namingWithoutComponent || _namingWithoutComponent->idle());
}

std::size_t MasterCheck::feedRows(ibis::LineSource& source)
{
    // Rows hold no "[" (no keyword, nothing that ends a copy) and are short
    // enough for every reader: what feed() does with them is read them into
    // the open model, and count them as its content.
    if (!_reader.inModel() || !frameRead())
        return 0;
    int const first = source.lastNumber() + 1;
    int lines = 0;
    std::size_t const bytes = _rows.take(_reader, source.ahead(), first, _comment.current(), kNamingLineLimit, lines);
    if (lines == 0)
        return 0;
    source.skip(bytes, lines);
    _number = first + lines - 1;
    markContent(first, _number);
    return bytes;
}

void MasterCheck::finishBlocks(int lines)
{
    _number = lines;
    _reader.finish();
    _packages.finish(lines, _findings);
    if (_block)
        closeBlock(0, "");
    settle();
    for (LongLine const& l : _longLines)
        addWarning(_findings, l.line,
                   "line of " + std::to_string(l.counted) + " characters behind the last line that holds "
                   "\"[Model]\"; no reader stops on it early");
    _longLines.clear();
}

std::vector<Finding> MasterCheck::finish(int lines)
{
    finishBlocks(lines);
    return finishFrame(lines);
}

bool MasterCheck::canHandOver(Header const& header) const
{
    return frameRead() && _sawPackageKeyword && _comment.current() == '|' &&
           _header.versionSeen == header.versionSeen && _header.version == header.version;
}

void MasterCheck::handOver(ibis::Line const& line)
{
    _number = line.number;
    _keywordShown = std::string(ibis::keywordShown(line.text));
    _reader.feed(line, _comment.current());
    _reader.drop();
    blockLine(line, false);
    // The block opened at this line is the other check's.
    _blocks.pop_back();
    settle();
}

void MasterCheck::absorb(MasterCheck& later, int shift)
{
    _findings.insert(_findings.end(), later._findings.begin(), later._findings.end());
    for (auto const& [name, line] : later._blocks)
        _blocks.emplace_back(name, line + shift);
}

std::vector<Finding> MasterCheck::finishFrame(int lines)
{
    int const lastLine = std::max(1, lines);
    // The naming section ends at the component line; without one, at the
    // first package or [Pin] line.
    bool const naming = _component != 0 || !_namingWithoutComponent;
    int namingEnd = _component;
    if (namingEnd == 0 && _package != 0 && _pin != 0)
        namingEnd = std::min(_package, _pin);
    else if (namingEnd == 0)
        namingEnd = _package != 0 ? _package : _pin;
    for (LongLine const& l : _namingUnsure)
        gradeLength(l, namingEnd == 0 || l.line < namingEnd);
    (naming ? _naming : *_namingWithoutComponent).finish(lines, _findings);

    if (!_header.versionSeen)
        addError(_findings, 1, "no [IBIS Ver] keyword; this is not an IBIS file");
    if (_component == 0)
        addError(_findings, lastLine, "no [Component] line; the generator skips its check of the part");
    if (_package == 0)
        addError(_findings, lastLine, "no [Package] line; the preamble copy takes the whole file");
    else if (!_packageKeyword)
        (_droppedKeyword != 0 ? addError : addWarning)(
            _findings, _package,
            "the preamble copy ends at this line, ahead of [Package]" +
                (_droppedKeyword != 0 ? "; design files lose " + _droppedShown + " (line " +
                                            std::to_string(_droppedKeyword) + ") and what stands with it"
                                      : std::string()));
    if (_pin == 0)
        addError(_findings, lastLine, "no [Pin] line; the generator finds no models");
    else if (_pinList == PinList::In)
        addError(_findings, _pin, "the [Pin] list is never closed by a line beginning with \"|\"");

    if (_blocks.empty())
        addError(_findings, lastLine, "no [Model] line; design files get no model");
    std::map<std::string, int> blocks;
    for (auto const& [name, line] : _blocks) {
        blocks.emplace(name, line);
        if (_listed.count(name) == 0)
            addWarning(_findings, line, "[Model] " + visible(name) + " is not listed under [Pin]; no design can use it");
    }
    for (auto const& [name, line] : _listed)
        if (blocks.count(name) == 0)
            addError(_findings, line,
                     "model " + visible(name) +
                         " is listed under [Pin] but has no [Model] block; a design that uses it gets an empty one");

    sortByLine(_findings);
    return std::move(_findings);
}

std::vector<Finding> checkMasterFile(std::istream& in, std::string const& family)
{
    MasterCheck check(family);
    ibis::LineSource source(in);
    ibis::Line line;
    while (source.next(line)) {
        check.feed(line);
        check.feedRows(source);
    }
    return check.finish(source.lastNumber());
}

std::vector<Finding> checkMasterFile(std::string const& text, std::string const& family)
{
    std::istringstream in(text);
    return checkMasterFile(in, family);
}

} // namespace ibischeck
