#ifndef PAD2IBIS_WRITER_MODEL_INDEX_H
#define PAD2IBIS_WRITER_MODEL_INDEX_H

// Where the [Model] blocks of the design's models start in the master file,
// found for all of them in one pass from the top.

#include <iosfwd>
#include <string>
#include <vector>

// The line that opens a model's block: its text up to its first NUL, and the
// position of the line behind it. A model without a block has next < 0.
// When the block's lines hold no NUL, each has its line end and a line with
// "[Model]" closes them, end is where that line starts and the lines are
// copied as the bytes they are; otherwise end < 0.
struct ModelBlockStart {
    std::string line;
    long long next = -1;
    long long end = -1;
};

// One pass over the master from its top, with the copy's line rules: the
// first line never counts, and the pass ends at the end of the file, at a
// line over the copy buffer, or once every model's block is closed. A model's
// line is the first one that holds "[Model]" and the model's name, both
// anywhere in the line. One entry per model, in the order given.
std::vector<ModelBlockStart> findModelBlocks(std::istream& master, std::vector<std::string> const& models);

// Copies a block whose opening line was found: that line, the line behind
// it in any case, then lines up to the next one that holds "[Model]", which
// is not copied. The master stream is repositioned, and left as the copy
// leaves it.
void copyModelBlock(std::istream& master, std::ostream& design, ModelBlockStart const& start);

#endif
