// The reader of IBIS files: numbers with scale letters and units, lines with
// either line end through the fixed buffer, keywords and fields, and
// [Model] blocks cut into sections and rows.

#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <sstream>

#include "ibis/ibis_number.h"
#include "ibis/ibis_syntax.h"
#include "ibis/line_source.h"
#include "ibis/model_reader.h"
#include "ibis/row_reader.h"

namespace {

using ibis::Number;

TEST(IbisNumber, FormsThatIbisWrites)
{
    struct Case {
        char const* field;
        Number::Kind kind;
        double value;
    } const cases[] = {
        {"1.23", Number::Value, 1.23},       {"-2.5E-03", Number::Value, -2.5e-3},
        {"+4", Number::Value, 4},            {".5", Number::Value, 0.5},
        {"1.23p", Number::Value, 1.23e-12},  {"1.23pF", Number::Value, 1.23e-12},
        {"3.0V", Number::Value, 3.0},        {"100mA", Number::Value, 0.1},
        {"2M", Number::Value, 2e6},          {"2m", Number::Value, 2e-3},
        {"1T", Number::Value, 1e12},         {"1G", Number::Value, 1e9},
        {"1k", Number::Value, 1e3},          {"1u", Number::Value, 1e-6},
        {"1n", Number::Value, 1e-9},         {"1f", Number::Value, 1e-15},
        {"1e3k", Number::Value, 1e6},        {"1e", Number::Value, 1},
        {"5Ohm", Number::Value, 5},          {"1.06n", Number::Value, 1.06e-9},
        {"0.000000000000000000001234", Number::Value, 1.234e-21},
        {"NA", Number::NotAvailable, 0},     {"na", Number::NotAvailable, 0},
        {"", Number::Invalid, 0},            {"-", Number::Invalid, 0},
        {".", Number::Invalid, 0},           {"1.2.3", Number::Invalid, 0},
        {"1e+", Number::Invalid, 0},         {"1.0,", Number::Invalid, 0},
        {"2/3", Number::Invalid, 0},         {"V3", Number::Invalid, 0},
        {"NAN", Number::Invalid, 0},         {"--1", Number::Invalid, 0},
        {"12345678.5", Number::Value, 12345678.5}, {"0.12345678", Number::Value, 0.12345678},
        {"1234567.1234567e-3", Number::Value, 1234.5671234567}, {"-7.3964E-02", Number::Value, -7.3964e-2},
    };
    for (Case const& c : cases) {
        Number const n = ibis::parseNumber(c.field);
        EXPECT_EQ(n.kind, c.kind) << c.field;
        if (c.kind == Number::Value) {
            EXPECT_DOUBLE_EQ(n.value, c.value) << c.field;
        }
        // Read in place, with digits behind the field's end: the same
        // number, bit for bit, and the same end.
        std::string const behind = std::string(c.field) + "99";
        Number scanned;
        char const* const end = behind.data() + std::strlen(c.field);
        EXPECT_EQ(ibis::scanNumber(behind.data(), end, '|', scanned), end) << c.field;
        EXPECT_EQ(scanned.kind, n.kind) << c.field;
        EXPECT_EQ(scanned.value, n.value) << c.field;
    }
}

// The text with CR LF line ends.
std::string crlf(std::string const& text)
{
    std::string out;
    for (char c : text)
        out += c == '\n' ? std::string("\r\n") : std::string(1, c);
    return out;
}

std::vector<ibis::Line> allLines(std::string const& text, std::vector<std::string>* texts)
{
    std::istringstream in(text);
    ibis::LineSource source(in);
    std::vector<ibis::Line> lines;
    ibis::Line line;
    while (source.next(line)) {
        lines.push_back(line);
        texts->emplace_back(line.text);
    }
    return lines;
}

TEST(LineSource, LineEndsAndLastLine)
{
    std::vector<std::string> texts;
    auto lines = allLines("a\r\nb\rc\n\r\nlast", &texts);
    ASSERT_EQ(lines.size(), 4u);
    EXPECT_EQ(texts, (std::vector<std::string>{"a", "b\rc", "", "last"}));
    EXPECT_TRUE(lines[0].crlf);
    EXPECT_FALSE(lines[1].crlf); // a CR inside the line is text
    EXPECT_TRUE(lines[2].crlf);
    EXPECT_FALSE(lines[3].ended);
    EXPECT_EQ(lines[3].number, 4);
    EXPECT_EQ(lines[1].length, 3u);

    texts.clear();
    EXPECT_TRUE(allLines("", &texts).empty());
    texts.clear();
    EXPECT_EQ(allLines("\n\n", &texts).size(), 2u);
}

TEST(LineSource, LinesAcrossTheBufferAndLongerThanIt)
{
    std::size_t const buffer = ibis::LineSource::kBufferSize;
    std::size_t const kept = ibis::LineSource::kKept;
    // Short lines that straddle every refill, then a line over the buffer
    // with a CR LF end, then one over it without an end.
    std::string text;
    for (int i = 0; text.size() < 2 * buffer; ++i)
        text += "row " + std::to_string(i) + "\n";
    std::size_t const shortLines = static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
    text += std::string(buffer * 3 + 7, 'x') + "\r\n" + "after\n" + std::string(buffer + 1, 'y');
    std::vector<std::string> texts;
    auto lines = allLines(text, &texts);
    ASSERT_EQ(lines.size(), shortLines + 3);
    for (std::size_t i = 0; i < shortLines; ++i)
        ASSERT_EQ(texts[i], "row " + std::to_string(i));
    ibis::Line const& longLine = lines[shortLines];
    EXPECT_EQ(texts[shortLines], std::string(kept, 'x'));
    EXPECT_EQ(longLine.length, buffer * 3 + 7);
    EXPECT_TRUE(longLine.crlf);
    EXPECT_EQ(texts[shortLines + 1], "after");
    EXPECT_EQ(lines[shortLines + 2].length, buffer + 1);
    EXPECT_FALSE(lines[shortLines + 2].ended);
}

TEST(IbisSyntax, KeywordsFieldsAndCommentChar)
{
    EXPECT_EQ(ibis::keywordKey("[GND_Clamp]"), "gnd clamp");
    EXPECT_EQ(ibis::keywordKey("[ Rising  Waveform ] x"), "rising waveform");
    EXPECT_EQ(ibis::keywordKey(" [Model]"), ""); // not in column 1
    EXPECT_EQ(ibis::keywordKey("[Model"), "");
    EXPECT_EQ(ibis::keywordShown("[Model]  abc"), "[Model]");
    EXPECT_EQ(ibis::keywordRest("[Model]  abc"), "  abc");

    std::vector<std::string_view> fields;
    ibis::splitFields(" 1.0\t2.0 |3.0", '|', fields);
    EXPECT_EQ(fields, (std::vector<std::string_view>{"1.0", "2.0"}));
    ibis::splitFields("a#b c", '#', fields);
    EXPECT_EQ(fields, (std::vector<std::string_view>{"a"}));
    EXPECT_TRUE(ibis::isBlankOrComment(" \t| x", '|'));
    EXPECT_FALSE(ibis::isBlankOrComment(" x |", '|'));

    ibis::CommentChar comment;
    EXPECT_FALSE(comment.change(" _char"));
    EXPECT_FALSE(comment.change(" =_char")); // one of the excluded characters
    EXPECT_FALSE(comment.change(" #_chars"));
    EXPECT_EQ(comment.current(), '|');
    EXPECT_TRUE(comment.change("  #_char  | old comment"));
    EXPECT_EQ(comment.current(), '#');
}

TEST(ModelReader, BlocksSectionsItemsAndRows)
{
    std::string const text = "[IBIS Ver] 5.0\n"
                             "[Comment Char] #_char\n"
                             "[Model] out_a extra\n"
                             "Model_type   I/O  # trailing\n"
                             "Vinl = 0.8V\n"
                             "C_comp 2p NA 3p\n"
                             "[Pulldown]\n"
                             "# Voltage I(typ) I(min) I(max)\n"
                             "  -1.0  -10m  NA  -12m\n"
                             "   0.0    0    0    0 5\n"
                             "[Ramp]\n"
                             "dV/dt_r 1.2/0.5n NA NA\n"
                             "R_load = 50\n"
                             "[Rising Waveform]\n"
                             "R_fixture=50\n"
                             "1.0.0 x\n"
                             "# End [Model] out_a\n"
                             "[Model] in_b\n"
                             "Model_type Input\n"
                             "[Model Selector] sel\n"
                             "out_a  drive\n"
                             "[Model] last\n"
                             "[Bogus]\n";
    std::vector<ibis::Model> models;
    std::istringstream in(text);
    ASSERT_TRUE(ibis::readModels(in, [&](ibis::Model const& m) { models.push_back(m); }));
    ASSERT_EQ(models.size(), 3u);

    ibis::Model const& a = models[0];
    EXPECT_EQ(a.name, "out_a");
    EXPECT_EQ(a.args, (std::vector<std::string>{"out_a", "extra"}));
    EXPECT_EQ(a.line, 3);
    EXPECT_EQ(a.lastLine, 17);
    EXPECT_EQ(a.endedBy, "model");
    std::string value;
    int line = 0;
    ASSERT_TRUE(a.headValue("model_type", value, &line));
    EXPECT_EQ(value, "I/O");
    EXPECT_EQ(line, 4);
    ASSERT_EQ(a.head.size(), 3u);
    std::string name;
    ASSERT_TRUE(a.head[1].nameValue(name, value));
    EXPECT_EQ(name + "|" + value, "Vinl|0.8V");
    EXPECT_FALSE(a.head[2].nameValue(name, value));

    ASSERT_EQ(a.sections.size(), 3u);
    ibis::Section const* pulldown = a.section("pulldown");
    ASSERT_NE(pulldown, nullptr);
    EXPECT_EQ(pulldown->shown, "[Pulldown]");
    ASSERT_EQ(pulldown->rows.size(), 2u);
    EXPECT_EQ(pulldown->rows[0].line, 9);
    EXPECT_DOUBLE_EQ(pulldown->rows[0].cells[1].value, -0.01);
    EXPECT_EQ(pulldown->rows[0].cells[2].kind, Number::NotAvailable);
    EXPECT_EQ(pulldown->rows[1].fields, 5);
    ibis::Section const* ramp = a.section("ramp");
    ASSERT_NE(ramp, nullptr);
    EXPECT_EQ(ramp->items.size(), 2u);
    EXPECT_TRUE(ramp->rows.empty());
    ibis::Section const* rising = a.section("rising waveform");
    ASSERT_NE(rising, nullptr);
    ASSERT_TRUE(rising->items[0].nameValue(name, value));
    EXPECT_EQ(name + "|" + value, "R_fixture|50");
    ASSERT_EQ(rising->rows.size(), 1u);
    EXPECT_EQ(rising->rows[0].cells[0].kind, Number::Invalid);
    EXPECT_EQ(rising->rows[0].fields, 2);

    EXPECT_EQ(models[1].name, "in_b");
    EXPECT_EQ(models[1].endedBy, "model selector");
    EXPECT_EQ(models[1].lastLine, 19);
    EXPECT_EQ(models[2].name, "last");
    EXPECT_EQ(models[2].endedBy, ""); // the end of the file
    ASSERT_EQ(models[2].sections.size(), 1u); // an unknown keyword stays inside
    EXPECT_EQ(models[2].sections[0].key, "bogus");
}

// Blocks as text: every member, the cells' values bit for bit; with
// keeps, the values that a reader keeping those rows whole only keeps.
std::string dump(std::vector<ibis::Model> const& models, ibis::ModelReader::WholeRows keeps = nullptr)
{
    std::ostringstream out;
    for (ibis::Model const& model : models) {
        out << model.name << " " << model.line << "-" << model.lastLine << " " << model.endedBy << "\n";
        for (ibis::Item const& item : model.head)
            out << item.line << " " << item.joined() << "\n";
        for (ibis::Section const& section : model.sections) {
            out << section.line << " " << section.shown << "\n";
            for (ibis::Item const& item : section.items)
                out << item.line << " " << item.joined() << "\n";
            for (ibis::Row const& row : section.rows) {
                out << row.line << " " << row.fields;
                for (int i = 0; i < 4; ++i)
                    out << " " << row.cells[i].kind << std::hexfloat
                        << (i > 0 && keeps != nullptr && !keeps(section.key) ? 0.0 : row.cells[i].value);
                out << std::defaultfloat << "\n";
            }
        }
    }
    return out.str();
}

// The blocks of text read line by line, or with the rows taken in bulk
// behind each line; taken counts those.
std::vector<ibis::Model> readBlocks(std::string const& text, ibis::ModelReader::WholeRows wholeRows, bool bulk,
                                    int& taken)
{
    std::vector<ibis::Model> models;
    auto keep = [&](ibis::Model const& model) { models.push_back(model); };
    ibis::ModelReader reader = wholeRows != nullptr ? ibis::ModelReader(keep, wholeRows) : ibis::ModelReader(keep);
    ibis::RowReader rowReader;
    std::istringstream in(text);
    ibis::LineSource lines(in);
    ibis::CommentChar comment;
    for (ibis::Line line; lines.next(line);) {
        reader.feed(line, comment.current());
        if (ibis::keywordKey(line.text) == "comment char")
            comment.change(ibis::keywordRest(line.text));
        int rows = 0;
        std::size_t const bytes =
            bulk ? rowReader.take(reader, lines.ahead(), lines.lastNumber() + 1, comment.current(), 254, rows) : 0;
        lines.skip(bytes, rows);
        taken += rows;
    }
    reader.finish();
    return models;
}

// Rows taken in bulk are the rows read line by line, value for value, in
// every form of number and row, wherever the buffer of lines ends, with
// either line end and comment character; a reader that keeps the values of
// the index column (and of [Pullup]) only has zeros for the others.
TEST(ModelReader, RowsInBulkAsLineByLine)
{
    char const* const forms[] = {"  %.3f  %.4E  %.4E  %.4E", "%+.2fn\t%.6fmA NA %.1e",
                                 "  .%.0f5  %.0f.  9.99e22  1e-400", "  %.0f  %.18f0  1e400  99999999999999999999",
                                 "  %08.0fm  %.7fE+0  %.8f  -.5"};
    std::string const others[] = {"  1  2  3  4  5", "  1.0  2.0", "  1.0,  2.0  3.0  4.0", "NA", "  NA  1  1  1",
                                  "  1e12345  1  1  1", "  1  2  3  4  | note", "", "  | comment", "  1  2 [3] 4",
                                  "R_fixture = 50", "  1.0\r 2.0  3.0  4.0", "  1  2  3  4  # 5",
                                  "  1  2  3  4" + std::string(260, ' ')};
    std::string rows = "  3.0  4.0\n"; // of the shape of the last row
    for (int i = 0; i < 80; ++i) {
        char row[160];
        std::snprintf(row, sizeof row, forms[i / 16], 0.0625 * i - 2, 1e-3 * (i - 30), 1.1e-3 * i, 0.9e-3 * i);
        rows += row + ((i % 3 == 0 ? "\r\n" : "\n") + (i % 4 == 3 ? others[i / 4 % 14] + "\n" : ""));
    }
    std::string const blocks = "[Model] a\n[Pullup]\n" + rows + "[Pulldown]\n" + rows + "[Comment Char] #_char\n" +
                               "[Model] b\n[Rising Waveform]\n" + rows + "[Comment Char] |_char\n";
    auto pullup = [](std::string_view key) { return key == "pullup"; };
    for (std::size_t shift = 0; shift < 100; shift += 7) {
        // Comment lines ahead of the blocks move them across the end of
        // the first buffer of lines.
        std::string text;
        while (text.size() + 80 < ibis::LineSource::kBufferSize - blocks.size() / 2 + shift)
            text += "|" + std::string(78, '-') + "\n";
        for (std::string const& variant : {text + blocks, crlf(text + blocks)}) {
            int taken = 0, none = 0;
            std::vector<ibis::Model> const all = readBlocks(variant, nullptr, true, taken);
            std::string const some = dump(readBlocks(variant, pullup, true, none));
            EXPECT_EQ(dump(all), dump(readBlocks(variant, nullptr, false, none))) << shift;
            EXPECT_EQ(some, dump(readBlocks(variant, pullup, false, none))) << shift;
            EXPECT_EQ(some, dump(all, pullup)) << shift;
            EXPECT_GT(taken, 150);
        }
    }
}

} // namespace
