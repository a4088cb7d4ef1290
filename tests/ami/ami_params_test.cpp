// Filling a SerDes channel's settings into an AMI parameter template: the
// value forms of a setting, the lookup of a parameter's setting, the rewrite
// of one parameter line and the copy of a whole template.

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "ami/serdes_set.h"
#include "driver/basibsgen.h"
#include "support/test_support.h"

namespace {

using amitest::Settings;

// The result of one setting's text, written into a value buffer of 16
// characters as the lookup provides; anything written past those 16 counts
// as a failure.
std::string valueOf(char const* text)
{
    struct {
        char value[16];
        char guard[16];
    } buf;
    std::memset(buf.value, 'X', sizeof buf.value - 1);
    buf.value[sizeof buf.value - 1] = '\0';
    std::memset(buf.guard, '#', sizeof buf.guard);
    IBS_GEN gen;
    gen.calculate_ibis_parameter_value(text, buf.value);
    for (char c : buf.guard)
        if (c != '#') {
            ADD_FAILURE() << "written past the value buffer for \"" << text << "\"";
            break;
        }
    return std::string(buf.value, strnlen(buf.value, sizeof buf.value));
}

TEST(AmiSettingValue, DecimalIsTakenAsItStands)
{
    EXPECT_EQ(valueOf("0d12"), "12");
    EXPECT_EQ(valueOf("0D7"), "7");
    EXPECT_EQ(valueOf("0d0012"), "0012");
    EXPECT_EQ(valueOf("0dabc"), "abc");
    EXPECT_EQ(valueOf("0d-3"), "-3");
    EXPECT_EQ(valueOf("0d"), "");
}

TEST(AmiSettingValue, HexLedByADigitIsCopiedNotConverted)
{
    EXPECT_EQ(valueOf("0H7F"), "7F");
    EXPECT_EQ(valueOf("0h10"), "10");
    EXPECT_EQ(valueOf("0h0"), "0");
    EXPECT_EQ(valueOf("0h9zz"), "9zz");
}

TEST(AmiSettingValue, HexLedByALetterIsThatLettersValue)
{
    EXPECT_EQ(valueOf("0hFF"), "15");
    EXPECT_EQ(valueOf("0ha"), "10");
    EXPECT_EQ(valueOf("0HB"), "11");
    EXPECT_EQ(valueOf("0hc9"), "12");
    EXPECT_EQ(valueOf("0hdz"), "13");
    EXPECT_EQ(valueOf("0HE"), "14");
    EXPECT_EQ(valueOf("0hf"), "15");
}

TEST(AmiSettingValue, HexLedByAnythingElseIsZero)
{
    for (char const* text : {"0hZ", "0hg", "0HG", "0h", "0h-1", "0h 5", "0hx1"})
        EXPECT_EQ(valueOf(text), "0") << text;
}

TEST(AmiSettingValue, BinaryOfOneToFourDigitsInAnyWidth)
{
    for (int width = 1; width <= 4; ++width)
        for (int number = 0; number < (1 << width); ++number) {
            std::string digits;
            for (int bit = width - 1; bit >= 0; --bit)
                digits += ((number >> bit) & 1) ? '1' : '0';
            EXPECT_EQ(valueOf(("0b" + digits).c_str()), std::to_string(number)) << digits;
            EXPECT_EQ(valueOf(("0B" + digits).c_str()), std::to_string(number)) << digits;
        }
    EXPECT_EQ(valueOf("0b0101"), "5");
    EXPECT_EQ(valueOf("0B11"), "3");
}

TEST(AmiSettingValue, BinaryOutsideOneToFourDigitsIsZero)
{
    for (char const* text : {"0b10000", "0b00000", "0b11111", "0b", "0b2", "0b01 ", "0b-1"})
        EXPECT_EQ(valueOf(text), "0") << text;
}

TEST(AmiSettingValue, AnyOtherTextIsZero)
{
    for (char const* text : {"12", "7", "7F", "", "DONTCARE", "0x1F", "1d5", "d12", " 0d12",
                             "00d1", "0", "ON"})
        EXPECT_EQ(valueOf(text), "0") << '"' << text << '"';
}

TEST(AmiSettingValue, FifteenCharactersBehindThePrefixFitTheValueBuffer)
{
    EXPECT_EQ(valueOf("0d123456789012345"), "123456789012345");
    EXPECT_EQ(valueOf("0h123456789ABCDEF"), "123456789ABCDEF");
}

TEST(AmiSettingValue, LongerSettingIsCutToFifteenCharacters)
{
    EXPECT_EQ(valueOf("0d12345678901234567890"), "123456789012345");
    EXPECT_EQ(valueOf("0H7234567890ABCDEF12"), "7234567890ABCDE");
}

// find_key_value with a value buffer of the size the line rewrite uses.
struct Lookup {
    bool found;
    std::string value;
};

Lookup lookup(char const* key, Settings& settings)
{
    char value[16] = "untouched";
    IBS_GEN gen;
    std::string name = key;
    bool found = gen.find_key_value(&name[0], value, settings.list);
    return {found, value};
}

TEST(AmiSettingLookup, KeyMatchesInAnyCaseAndTheValueIsCalculated)
{
    Settings settings{{"Rx_Term", "0b0101"}, {"TX_AMP", "0d12"}};
    Lookup r = lookup("Tx_Amp", settings);
    EXPECT_TRUE(r.found);
    EXPECT_EQ(r.value, "12");
    r = lookup("rx_term", settings);
    EXPECT_TRUE(r.found);
    EXPECT_EQ(r.value, "5");
}

TEST(AmiSettingLookup, FirstRecordOfAKeyIsTheOnlyOneLookedAt)
{
    Settings settings{{"tx_amp", "0d3"}, {"Tx_Amp", "0d9"}};
    EXPECT_EQ(lookup("Tx_Amp", settings).value, "3");

    // A first record that leaves the template's value hides later ones.
    Settings hidden{{"Tx_Amp", "DontCare"}, {"TX_AMP", "0d9"}};
    EXPECT_FALSE(lookup("Tx_Amp", hidden).found);
}

TEST(AmiSettingLookup, DontCareInAnyCaseIsNoSetting)
{
    for (char const* text : {"DONTCARE", "dontcare", "DontCare", "dONTcARE"}) {
        Settings settings{{"Tx_Amp", text}};
        EXPECT_FALSE(lookup("Tx_Amp", settings).found) << text;
    }
}

TEST(AmiSettingLookup, KeyMustMatchWhole)
{
    Settings settings{{"Tx_Amp", "0d3"}};
    EXPECT_FALSE(lookup("Tx_Ampl", settings).found);
    EXPECT_FALSE(lookup("Tx_Am", settings).found);
    EXPECT_FALSE(lookup("Tx_Amp)", settings).found);
    Settings none{};
    EXPECT_FALSE(lookup("Tx_Amp", none).found);
}

TEST(AmiSettingLookup, UnknownFormIsStillASettingOfZero)
{
    Settings settings{{"Tx_Amp", "12"}};
    Lookup r = lookup("Tx_Amp", settings);
    EXPECT_TRUE(r.found);
    EXPECT_EQ(r.value, "0");
}

// One parameter line through fill_in_ami_parameter_value, in a buffer of
// the size the template copy uses.
std::string fill(std::string const& line, Settings& settings)
{
    static char buf[4096];
    std::memset(buf, 0, sizeof buf);
    std::memcpy(buf, line.data(), line.size());
    IBS_GEN gen;
    char* result = gen.fill_in_ami_parameter_value(buf, settings.list);
    EXPECT_EQ(result, buf) << "the line is rewritten in place";
    return buf;
}

TEST(AmiParameterLine, SettingReplacesTheOldValue)
{
    std::string const line =
        "    (Tx_Amp (Usage In) (Type Integer) (Format Value 5) (Description \"swing\") )\n";
    struct Case {
        char const* setting;
        char const* shown;
    } const cases[] = {{"0d12", "12"}, {"0H7F", "7F"}, {"0hFF", "15"},
                       {"0b0101", "5"}, {"0B11", "3"}, {"0hZ", "0"},
                       {"7", "0"},      {"0b10000", "0"}};
    for (Case const& c : cases) {
        Settings settings{{"Tx_Amp", c.setting}};
        std::string const filled = "    (Tx_Amp (Usage In) (Type Integer) (Format Value " +
                                   std::string(c.shown) + ") (Description \"swing\") )\n";
        EXPECT_EQ(fill(line, settings), filled) << c.setting;
    }
}

TEST(AmiParameterLine, LineWithoutASettingStaysAsItWas)
{
    std::string const line = "    (Tx_Amp (Usage In) (Format Value 5) (Description \"swing\") )\n";
    Settings other{{"Tx_Pre", "0d1"}};
    EXPECT_EQ(fill(line, other), line);
    Settings dontCare{{"TX_AMP", "dontcare"}};
    EXPECT_EQ(fill(line, dontCare), line);
}

TEST(AmiParameterLine, OpeningParenthesesComeOffTheFrontOfTheNameOnly)
{
    Settings settings{{"Tx_Amp", "0d7"}};
    EXPECT_EQ(fill("  ((Tx_Amp (Format Value 5) )\n", settings), "  ((Tx_Amp (Format Value 7) )\n");

    // A closing parenthesis stays on the name, which then is "Tx_Amp)".
    std::string const closed = "  (Tx_Amp) (Format Value 5) )\n";
    EXPECT_EQ(fill(closed, settings), closed);
    Settings withParen{{"Tx_Amp)", "0d7"}};
    EXPECT_EQ(fill(closed, withParen), "  (Tx_Amp) (Format Value 7) )\n");

    // One inside the name stays too.
    Settings inner{{"Tx(Amp", "0d7"}};
    EXPECT_EQ(fill("(Tx(Amp (Format Value 5) )\n", inner), "(Tx(Amp (Format Value 7) )\n");
}

TEST(AmiParameterLine, ShortTokensAheadOfTheNameStayInTheLine)
{
    Settings settings{{"RATE", "0d9"}};
    EXPECT_EQ(fill("1 (x  Rate (Format Value 5) )\n", settings), "1 (x  Rate (Format Value 9) )\n");
}

TEST(AmiParameterLine, NameLengthIsCountedWithItsParentheses)
{
    // "(ab" has three characters, so the name is "ab", not the longer
    // "Tx_Amp" behind it.
    Settings settings{{"ab", "0d1"}, {"Tx_Amp", "0d7"}};
    EXPECT_EQ(fill("(ab (Tx_Amp (Format Value 5) )\n", settings),
              "(ab (Tx_Amp (Format Value 1) )\n");
}

TEST(AmiParameterLine, WithoutALongerTokenAheadTheNameIsFormat)
{
    std::string const line = "   (Format Value 5) )\n";
    Settings none{{"Tx_Amp", "0d7"}};
    EXPECT_EQ(fill(line, none), line);
    Settings format{{"format", "0d7"}};
    EXPECT_EQ(fill(line, format), "   (Format Value 7) )\n");
}

TEST(AmiParameterLine, OnlyTheFirstFormatValueIsReplaced)
{
    Settings settings{{"Amp", "0d5"}, {"Eq", "0d6"}};
    EXPECT_EQ(fill("(Amp (Format Value 1) (Eq (Format Value 2) )\n", settings),
              "(Amp (Format Value 5) (Eq (Format Value 2) )\n");
}

TEST(AmiParameterLine, BlanksAheadOfTheOldValueAndOneBehindItGo)
{
    Settings settings{{"Rate", "0d7"}};
    EXPECT_EQ(fill("(Rate (Format Value    5)  x\n", settings), "(Rate (Format Value 7)  x\n");
}

TEST(AmiParameterLine, OldValueWithoutABlankBehindTakesTheTextUpToTheNextBlank)
{
    Settings settings{{"Rate", "0d7"}};
    EXPECT_EQ(fill("(Rate (Format Value 5)(Description \"x y\") z\n", settings),
              "(Rate (Format Value 7) \"x y\") z\n");
    // At the end of the line the line end goes with the old value.
    EXPECT_EQ(fill("(Rate (Format Value 5)\n", settings), "(Rate (Format Value 7) ");
}

TEST(AmiParameterLine, EmptyDecimalLeavesAnEmptyValue)
{
    Settings settings{{"Rate", "0d"}};
    EXPECT_EQ(fill("(Rate (Format Value 5) x\n", settings), "(Rate (Format Value ) x\n");
}

TEST(AmiParameterLine, LongestSettingIsWrittenWhole)
{
    Settings settings{{"Rate", "0d123456789012345"}};
    EXPECT_EQ(fill("(Rate (Format Value 5) x\n", settings),
              "(Rate (Format Value 123456789012345) x\n");
}

class AmiParameterFile : public testing::Test {
protected:
    void SetUp() override { ts::resetGeneratorStatics(); }

    std::string copy(std::string const& templateText, Settings& settings)
    {
        std::string source = dir.file("kva4TX_parameters.ami");
        std::string target = dir.file("top_tx_params_DCU0_CH0.ami");
        ts::writeFile(source, templateText);
        IBS_GEN gen;
        if (!amitest::comesBack([&] {
                gen.write_ami_parameter_file(source.c_str(), target.c_str(), settings.list);
            }))
            return "<the run ended>";
        std::string out = ts::captureStdout(
            [&] { gen.write_ami_parameter_file(source.c_str(), target.c_str(), settings.list); });
        EXPECT_EQ(out, "") << "the template copy prints nothing";
        EXPECT_EQ(ts::readFile(source), templateText) << "the template stays as it was";
        return ts::readFile(target);
    }

    ts::TempDir dir;
};

TEST(AmiParameterLine, LongerSettingShowsItsFirstFifteenCharacters)
{
    Settings settings{{"Rate", "0d12345678901234567890"}};
    EXPECT_EQ(fill("(Rate (Format Value 5) x\n", settings),
              "(Rate (Format Value 123456789012345) x\n");
}

TEST_F(AmiParameterFile, CopiesTheTemplateWithTheSettingsFilledIn)
{
    Settings settings{{"Tx_Amp", "0b0101"}, {"Tx_Pre", "0d7"}, {"Tx_Post", "0hA"},
                      {"Tx_Main", "DONTCARE"}, {"Tx_Unused", "0d1"}};
    std::string const templateText =
        "(kva4_tx\n"
        "  (Description \"Transmit side (Format Value 3) of the channel\")\n"
        "\n"
        "  (Tx_Amp (Usage In) (Type Integer) (Format Value 2) (Description \"swing\") )\r\n"
        "  (Tx_Pre (Usage In) (Type Integer) (format value 1) )\n"
        "  (Tx_Main (Usage In) (Format Value 9) )\n"
        "  (Tx_Post (Usage In) (Type Integer) (Format Value 3) )\n"
        ")\n";
    EXPECT_EQ(copy(templateText, settings),
              "(kva4_tx\n"
              "  (Description \"Transmit side (Format Value 3) of the channel\")\n"
              "\n"
              "  (Tx_Amp (Usage In) (Type Integer) (Format Value 5) (Description \"swing\") )\r\n"
              "  (Tx_Pre (Usage In) (Type Integer) (format value 1) )\n"
              "  (Tx_Main (Usage In) (Format Value 9) )\n"
              "  (Tx_Post (Usage In) (Type Integer) (Format Value 10) )\n"
              ")\n");
}

TEST_F(AmiParameterFile, LastLineWithoutLineEndIsFilledInAndKeepsNone)
{
    Settings settings{{"Tx_Post", "0hA"}};
    EXPECT_EQ(copy("(kva4_tx\n  (Tx_Post (Usage In) (Format Value 3) )", settings),
              "(kva4_tx\n  (Tx_Post (Usage In) (Format Value 10) )");
}

TEST_F(AmiParameterFile, LongLinesAreTakenWhole)
{
    Settings settings{{"Tx_Post", "0d7"}};
    std::string const longComment = "| " + std::string(4000, 'c') + "\n";
    std::string const padding(3000, ' ');
    EXPECT_EQ(copy(longComment + "(Tx_Post" + padding + "(Format Value 3) x\n", settings),
              longComment + "(Tx_Post" + padding + "(Format Value 7) x\n");
}

TEST_F(AmiParameterFile, EmptyTemplateGivesAnEmptyFile)
{
    Settings settings{{"Tx_Post", "0d7"}};
    EXPECT_EQ(copy("", settings), "");
}

TEST_F(AmiParameterFile, ExistingTargetIsReplaced)
{
    ts::writeFile(dir.file("top_tx_params_DCU0_CH0.ami"), std::string(500, 'o') + "\n");
    Settings settings{{"Tx_Post", "0d7"}};
    EXPECT_EQ(copy("(Tx_Post (Format Value 3) )\n", settings), "(Tx_Post (Format Value 7) )\n");
}

TEST_F(AmiParameterFile, UnreadableTemplateEndsTheRun)
{
    std::string source = dir.file("kva4RX_parameters.ami");
    std::string target = dir.file("top_rx_params_DCU0_CH0.ami");
    Settings settings{{"Rx_Vga", "0d1"}};
    EXPECT_EXIT(
        {
            ts::stdoutToStderr();
            IBS_GEN gen;
            gen.write_ami_parameter_file(source.c_str(), target.c_str(), settings.list);
        },
        testing::ExitedWithCode(2),
        amitest::exactly("Could not open file <" + source + "> for reading.\n"));
    EXPECT_FALSE(ts::fileExists(target));
}

TEST_F(AmiParameterFile, UnwritableTargetEndsTheRun)
{
    std::string source = dir.file("kva4RX_parameters.ami");
    ts::writeFile(source, "(Rx_Vga (Format Value 8) )\n");
    std::string target = dir.file("no_such_dir/top_rx_params_DCU0_CH0.ami");
    Settings settings{{"Rx_Vga", "0d1"}};
    EXPECT_EXIT(
        {
            ts::stdoutToStderr();
            IBS_GEN gen;
            gen.write_ami_parameter_file(source.c_str(), target.c_str(), settings.list);
        },
        testing::ExitedWithCode(2),
        amitest::exactly("Could not open file <" + target + "> for writing.\n"));
}

} // namespace
