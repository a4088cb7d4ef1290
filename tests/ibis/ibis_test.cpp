// The reader of IBIS files: numbers with scale letters and units, lines with
// either line end through the fixed buffer, keywords and fields, and
// [Model] blocks cut into sections and rows.

#include <gtest/gtest.h>

#include <cstring>
#include <sstream>

#include "ibis/ibis_number.h"
#include "ibis/ibis_syntax.h"
#include "ibis/line_source.h"
#include "ibis/model_reader.h"

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

} // namespace
