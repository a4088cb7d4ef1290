#include "check/ami_tree.h"

#include "check/check_text.h"

namespace ibischeck {

namespace {

// Parameter trees are a few lists deep; deeper nesting is no tree of this
// kind, and reading stops there.
const std::size_t kMaxDepth = 64;

} // namespace

std::string AmiNode::head() const
{
    return kind == List && !items.empty() && items[0].kind == Word ? items[0].text : "";
}

AmiItems AmiNode::rest() const
{
    AmiNode const* first = items.data();
    return {head().empty() ? first : first + 1, first + items.size()};
}

std::vector<AmiNode> readAmiTree(std::string const& text, std::vector<Finding>& findings)
{
    std::vector<AmiNode> top;
    std::vector<AmiNode> open; // the lists not yet closed, outermost first
    auto add = [&](AmiNode node) { (open.empty() ? top : open.back().items).push_back(std::move(node)); };
    auto blank = [](char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n' || c == '\f' || c == '\v'; };
    int line = 1;
    std::string::size_type i = 0;
    while (i < text.size()) {
        char const c = text[i];
        if (c == '\n') {
            ++line;
            ++i;
        } else if (blank(c)) {
            ++i;
        } else if (c == '|') {
            while (i < text.size() && text[i] != '\n')
                ++i;
        } else if (c == '(') {
            if (open.size() == kMaxDepth) {
                addError(findings, line,
                         "lists nested more than " + std::to_string(kMaxDepth) + " deep; reading stops here");
                break;
            }
            open.push_back({AmiNode::List, "", line, {}});
            ++i;
        } else if (c == ')') {
            if (open.empty()) {
                addError(findings, line, "\")\" closes nothing");
            } else {
                AmiNode list = std::move(open.back());
                open.pop_back();
                add(std::move(list));
            }
            ++i;
        } else if (c == '"') {
            std::string::size_type const close = text.find('"', i + 1);
            int const at = line;
            std::string::size_type const end = close == std::string::npos ? text.size() : close;
            for (std::string::size_type j = i + 1; j < end; ++j)
                line += text[j] == '\n';
            if (close == std::string::npos)
                addError(findings, at, "the string that starts here is never closed by '\"'");
            add({AmiNode::String, text.substr(i + 1, end - i - 1), at, {}});
            i = close == std::string::npos ? end : close + 1;
        } else {
            std::string::size_type j = i;
            while (j < text.size() && !blank(text[j]) && text[j] != '(' && text[j] != ')' && text[j] != '"' &&
                   text[j] != '|')
                ++j;
            add({AmiNode::Word, text.substr(i, j - i), line, {}});
            i = j;
        }
    }
    bool const stopped = i < text.size();
    while (!open.empty()) {
        AmiNode list = std::move(open.back());
        open.pop_back();
        std::string const name = list.head();
        if (!stopped)
            addError(findings, list.line,
                     "\"(\"" + (name.empty() ? std::string() : " of " + name) + " is never closed by \")\"");
        add(std::move(list));
    }
    if (stopped)
        top.clear();
    return top;
}

std::string amiText(AmiNode const& node)
{
    if (node.kind == AmiNode::Word)
        return node.text;
    if (node.kind == AmiNode::String)
        return "\"" + node.text + "\"";
    std::string text = "(";
    for (AmiNode const& item : node.items)
        text += (text.size() > 1 ? " " : "") + amiText(item);
    return text + ")";
}

} // namespace ibischeck
