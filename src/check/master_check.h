#ifndef PAD2IBIS_CHECK_MASTER_CHECK_H
#define PAD2IBIS_CHECK_MASTER_CHECK_H

// The master check as a state machine fed one line at a time, so that a
// file can be read in one pass from its top, or in two parts at once.

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "check/check_text.h"
#include "check/model_rules.h"
#include "check/package_rules.h"
#include "ibis/ibis_syntax.h"
#include "ibis/line_source.h"
#include "ibis/model_reader.h"
#include "ibis/row_reader.h"

namespace ibischeck {

// Where the reading of a file stands once its frame is read: what a check
// that starts at a later [Model] line assumes.
struct Header {
    bool versionSeen = false;
    double version = 5.0;
};

// The [IBIS Ver] line as the check takes it.
Header headerOf(std::string_view line, char comment);

// The copy of one model block: from its [Model] line to the next line that
// holds "[Model]". Its model, as IBIS reads it, may end earlier (at a
// keyword of the file or the component) or later (behind its closing
// comment line).
struct BlockCopy {
    enum End { Open, Own, OtherComment, NextModel };
    std::string name;
    int line = 0;
    int lastContent = 0;     // last line that is neither blank nor comment
    int end = 0;             // the line that ends the copy; 0 at the end of the file
    End kind = Open;
    std::string endName;     // the name on a closing comment line
    bool readerModel = false; // IBIS reads a model from the same line
    int readerEnd = -1;       // where that model ends; 0 at the end of the file
    std::string readerEndShown; // the keyword that ends it
    int contentAfterEnd = 0; // its first content line behind the copy's end
};

class MasterCheck {
public:
    explicit MasterCheck(std::string const& family)
        : _naming(family), _reader([this](ibis::Model const& model) { modelRead(model); }, readsEveryValue)
    {
        _context.master = true;
    }

    void feed(ibis::Line const& line);
    // Takes the rows of a table that stand next in the source in one go,
    // with the findings that feed() would give for them, and tells how many
    // bytes it took: the lines that change nothing but the table being
    // read. Takes nothing while the frame is still being read.
    std::size_t feedRows(ibis::LineSource& source);
    std::vector<Finding> finish(int lines);

private:
    // A large file is checked in two parts at once (master_parts.cpp); what
    // follows is how the two parts meet, for that reading alone.
    friend class MasterParts;

    // A check of the rest of a file from one of its [Model] lines on, whose
    // frame (naming tables, component, package, [Pin] list) lies ahead.
    MasterCheck(std::string const& family, Header const& header) : MasterCheck(family)
    {
        _naming.setEnd(1);
        _component = _package = _pin = 1;
        _packageKeyword = _sawPackageKeyword = true;
        _pinList = PinList::Done;
        _header = header;
        _context.version = header.version;
    }
    // The state ahead of the current line is what a check of the rest of
    // the file from here would assume.
    bool canHandOver(Header const& header) const;
    // The [Model] line where the other check starts: it ends the open block
    // and model; what follows is the other check's.
    void handOver(ibis::Line const& line);
    // The end of the file, for the blocks of a check that started later.
    void finishBlocks(int lines);
    // No findings so far.
    bool quiet() const { return _findings.empty(); }
    // Takes on the findings and blocks of the check of the rest of the file,
    // whose lines were numbered `shift` short: the lines of its blocks move
    // by shift (its findings' texts name lines too, so with a shift it must
    // be quiet()).
    void absorb(MasterCheck& later, int shift);
    // The end of the file, for the frame; all findings in line order.
    std::vector<Finding> finishFrame(int lines);

    // The naming section, the package and the [Pin] list are behind: no
    // rule of the frame reads the lines that follow.
    bool frameRead() const;
    void checkLength(ibis::Line const& line);
    void frameLine(ibis::Line const& line);
    void packageLine(ibis::Line const& line);
    void pinListLine(ibis::Line const& line);
    void blockLine(ibis::Line const& line, bool content);
    // Lines first to last are content of the model being read: the open
    // copy's last content so far, or content behind the end of a copy.
    void markContent(int first, int last);
    void modelRead(ibis::Model const& model);
    void closeBlock(int end, std::string_view text);
    void settle();
    void judge(BlockCopy const& block);

    std::vector<Finding> _findings;
    ibis::CommentChar _comment;
    ModelContext _context;
    Header _header;
    int _number = 0;           // the line being read
    std::string _keywordShown; // its keyword, as written

    // Naming tables: a second reading forks off at a package or [Pin] line
    // that comes ahead of any component line, for a file that has none.
    NamingSection _naming;
    std::optional<NamingSection> _namingWithoutComponent;
    struct LongLine {
        int line;
        std::size_t counted; // its CR included
        bool byCr;           // the CR makes it long, or longer than the copy buffer
    };
    void gradeLength(LongLine const& l, bool naming);
    std::vector<LongLine> _namingUnsure; // long lines whose section is not yet known

    int _component = 0, _package = 0, _pin = 0; // their first lines
    bool _packageKeyword = false;                // the package line is [Package]
    int _droppedKeyword = 0;                     // a keyword the preamble copy drops
    std::string _droppedShown;
    bool _sawPackageKeyword = false;

    // Package blocks between the package line and [Pin].
    std::vector<Finding> _packageFindings;
    std::vector<std::pair<int, bool>> _blankLines; // line, blank only by its CR
    std::vector<std::pair<int, std::string>> _openPackages;
    bool _anyPackage = false;
    std::string _previousTrimmed;

    // The model list under [Pin].
    enum class PinList { Before, In, Done } _pinList = PinList::Before;
    std::map<std::string, int> _listed;

    // Package models behind the models.
    PackageRules _packages;

    // Model blocks, and the rows of their tables taken in bulk.
    ibis::ModelReader _reader;
    ibis::RowReader _rows;
    std::optional<BlockCopy> _block;  // its copy still open
    std::vector<BlockCopy> _awaiting; // copy ended, its model still read
    std::vector<std::pair<std::string, int>> _blocks;
    std::vector<LongLine> _longLines; // over the copy buffer behind the pin list
};

} // namespace ibischeck

#endif
