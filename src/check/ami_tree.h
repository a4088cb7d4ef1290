#ifndef PAD2IBIS_CHECK_AMI_TREE_H
#define PAD2IBIS_CHECK_AMI_TREE_H

// The reader of AMI parameter files: the text as a tree of parenthesised
// lists, words and quoted strings, each with its line. "|" starts a comment
// that runs to the end of the line; a quoted string may span lines and holds
// no comment.

#include <string>
#include <vector>

#include "check/ibis_check.h"

namespace ibischeck {

struct AmiItems;

struct AmiNode {
    enum Kind { Word, String, List } kind;
    std::string text; // a word, or a string without its quotes; empty for a list
    int line;         // the line of the word, of the opening quote or of the "("
    std::vector<AmiNode> items; // a list's items in order

    bool isList() const { return kind == List; }
    // A list's first item when it is a word, such as a parameter's name or a
    // leaf's keyword ("Usage"); empty otherwise.
    std::string head() const;
    // A list's items behind its head.
    AmiItems rest() const;
};

// A run of a list's items, which stay the list's.
struct AmiItems {
    AmiNode const* first;
    AmiNode const* last;

    AmiNode const* begin() const { return first; }
    AmiNode const* end() const { return last; }
    std::size_t size() const { return static_cast<std::size_t>(last - first); }
    bool empty() const { return first == last; }
    AmiNode const& operator[](std::size_t i) const { return first[i]; }
    std::vector<AmiNode> copy() const { return std::vector<AmiNode>(first, last); }
};

// The lists and the loose words at the top of the file, in order. Unbalanced
// parentheses and unclosed strings are errors in findings; the tree then
// holds what was read, each unclosed list closed at the end of the file.
// Lists nested deeper than any parameter tree stop the reading with an
// error, and the tree is then empty.
std::vector<AmiNode> readAmiTree(std::string const& text, std::vector<Finding>& findings);

// "Rx_Gain", or a list as it would be written: "(Range 4 0 15)".
std::string amiText(AmiNode const& node);

} // namespace ibischeck

#endif
