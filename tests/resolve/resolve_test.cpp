// The design's models: the fields of a model key, the family rules of the walk that whole
// runs do not reach, and the bookkeeping around the lookup of a composed key.

#include <gtest/gtest.h>

#include "driver/basibsgen.h"
#include "host/msgmanager.h"
#include "resolve/model_substitute.h"
#include "support/generator_probe.h"

namespace {

TEST(ModelKey, FieldsByPosition)
{
    IB_IOBUF* iobuf = ts::makeIobuf("sig", "A1", "BIDI", "");
    iobuf->model = ibs_new_model_string("lvc250axxxaaaaaaaaio");
    // Codes go in from the field's start, whatever its width, past the key's end too.
    for (auto const& [field, code, key] : std::vector<std::tuple<IBIS_KEY_ATTR, char const*, char const*>>{
             {IBIS_KEY_DRIVE, "1", "lvc250a1xxaaaaaaaaio"}, {IBIS_KEY_VOLTAGE, "3300", "lvc33001xxaaaaaaaaio"},
             {IBIS_KEY_PULL, "", "lvc33001xxaaaaaaaaio"}, {IBIS_KEY_DIFFCUR, "xyz", "lvc33001xxaaaaaaaxyz"},
             {IBIS_KEY_DIRECTION, "iox", "lvc33001xxaaaaaaaxiox"}}) {
        iobuf->setMode(field, code);
        EXPECT_STREQ(iobuf->model, key) << code;
    }
    iobuf->model = ibs_new_model_string("lvc330s080uaaaaaaaod");
    for (auto const& [field, length, text] : std::vector<std::tuple<IBIS_KEY_ATTR, int, std::string>>{
             {IBIS_KEY_DIRECTION, 2, "od"}, {IBIS_KEY_VOLTAGE, 4, "330s"}, {IBIS_KEY_PULL, 1, "u"},
             {IBIS_KEY_IO_TYPE, 0, ""}, {IBIS_KEY_IO_TYPE, -3, ""}}) {
        std::string out = "stale";
        iobuf->getMode(field, length, out);
        EXPECT_EQ(out, text) << field << " " << length;
    }
}

// A generator for the walk: drive table and key template as construction leaves them.
class Walk : public testing::Test {
protected:
    void SetUp() override
    {
        ts::resetGeneratorStatics();
        model.storeDriveTable({{"NA", "xxx"}, {"8mA", "080"}, {"12mA", "120"}});
        model.loadPullmodeIotypes();
        model._devIoMaps["IO_TYPE"] = {{"LVCMOS", "lvc"}, {"LVDS", "lvd"}, {"PCI", "pci"}, {"HYPT", "hyp"}, {"TRLVDS", "trl"},
                                       {"SLVS", "slv"}, {"SUBLVDS", "sub"}, {"MIPI", "mip"}, {"MIPI_LP", "mlp"}};
        // FAST has a code of its own, told from the fast rule's "f" and "a".
        model._devIoMaps["SLEW"] = {{"SLOW", "s"}, {"FAST", "r"}};
        model._devIoMaps["IMP"] = {{"50", "5"}, {"1.8", "h"}, {"3.3", "g"}};
        model._bankVccio = {{"1", "1.8"}, {"2", "3.3"}, {"3", "2.5"}};
    }
    void TearDown() override { ts::resetGeneratorStatics(); }

    void run(std::vector<IB_IOBUF*> all) { model._iobufs = all, out = ts::captureStdout([&] { model.setDesignModels(); }); }
    // Attributes follow an LVCMOS33 IO type unless they name one or start with "~".
    static IB_IOBUF* sig(std::string const& name, std::string const& type, std::string attrs, std::string const& bank = "")
    {
        if (attrs.find("IO_TYPE") == std::string::npos && attrs.find('~') != 0)
            attrs = "IO_TYPE:LVCMOS33 " + attrs;
        return ts::makeIobuf(name, "A1", type, attrs.substr(attrs.find('~') == 0), bank);
    }
    // The key composed for one signal, as the warning for its missing model names it.
    std::string keyOf(std::string const& family, std::string const& type, std::string const& attrs, std::string const& bank = "")
    {
        model._family = family;
        model._availableModels.clear();
        run({sig("sig", type, attrs, bank)});
        std::string::size_type at = out.find("WARNING: Ibis Model \"");
        return at == std::string::npos ? out : out.substr(at + 21, 20);
    }
    // Rows of direction, attributes, bank and key, for each of families.
    void expectKeys(std::vector<std::string> const& families, std::vector<std::array<char const*, 4>> const& rows)
    {
        for (std::string const& family : families)
            for (auto const& [type, attrs, bank, key] : rows)
                EXPECT_EQ(keyOf(family, type, attrs, bank), key) << family << " " << type << " " << attrs << " " << bank;
    }

    ts::ProbeModel model;
    std::string out; // what the last run printed
};

TEST_F(Walk, FastSlewOfLvdsAndPciByFamily)
{
    std::tuple<char const*, char const*, char const*, char> const cases[] = {
        {"KVAN", "OUT", "PCI33", 'f'},   {"KVAN", "BIDI", "PCI33", 'a'},  {"KVAN", "IN", "PCI33", 'a'},
        {"KVZR", "OUT", "PCI33", 'f'},   {"KVZR", "OUT", "LVDS25", 'a'},  {"KVA2", "BIDI", "LVDS25", 'f'},
        {"KVA2", "IN", "PCI33", 'f'},    {"KVZR2", "OUT", "PCI33", 'f'},  {"KVA3", "BIDI", "LVDS25", 'f'},
        {"KVA3", "OUT", "PCI33", 'f'},   {"HZU", "IN", "PCI33", 'f'},     {"HZU2", "OUT", "PCI33", 'f'},
        {"HZU3", "BIDI", "LVDS25", 'f'}, {"KVA4", "OUT", "PCI33", 'r'},   {"KVA4", "OUT", "LVDS25", 'a'},
        {"KVA4Y", "OUT", "PCI33", 'a'},  {"KVA5Y", "OUT", "LVDS25", 'a'}, {"KJ", "OUT", "LVDS25", 'a'},
        {"KVTN", "BIDI", "LVDS25", 'a'}, {"", "OUT", "PCI33", 'a'},       {"KVA2", "OUT", "LVCMOS33", 'r'},
    };
    for (auto const& [family, type, io, slew] : cases)
        EXPECT_EQ(keyOf(family, type, std::string("IO_TYPE:") + io + " SLEW:FAST")[6], slew) << family << type << io;
    // The rule sees the IO type the walk has then: ahead of its attribute, or without a table, the reported one.
    expectKeys({"KVA3"}, {{"BIDI", "SLEW:FAST IO_TYPE:LVDS25", "", "lvd250rxxxaaaaaaaaio"}});
    expectKeys({"KVA2"}, {{"BIDI", "~SLEW:FAST DRIVE:8mA", "", "lvc250r080aaaaaaaaio"}});
    model._devIoMaps.erase("IO_TYPE");
    expectKeys({"KVA3"}, {{"BIDI", "IO_TYPE:LVCMOS33 DRIVE:8mA", "", "lvc250a080aaaaaaaaio"},
                          {"BIDI", "IO_TYPE:LVDS SLEW:FAST", "", "lvc250fxxxaaaaaaaaio"},
                          {"BIDI", "IO_TYPE:LVDS25 SLEW:FAST", "", "lvc250rxxxaaaaaaaaio"}});
}

TEST_F(Walk, OutputsReadAsBidirectionalByFamily)
{
    std::pair<char const*, char const*> const cases[] = {
        {"KVAN", "io"}, {"KVZR", "io"}, {"HZU", "io"}, {"KVA3", "ou"}, {"HZU2", "ou"}, {"KVTN", "ou"}};
    for (auto const& [family, direction] : cases)
        EXPECT_EQ(keyOf(family, "OUT", "DRIVE:8mA").substr(18), direction) << family;
}

TEST_F(Walk, VoltageFieldOfTheIoType)
{
    // Five-character codes show whether the voltage field was written at all.
    model._devIoMaps["IO_TYPE"] = {{"LVCMOS", "lvcmx"}, {"SSTL18_II", "s2"}, {"MIPI_LP", "mlpzz"}, {"HYPT", "hypzz"},
                                   {"SLVS", "slvzz"}, {"TRLVDS", "trlzz"}, {"SUBLVDS", "subzz"}, {"MIPI", "mipzz"}};
    std::tuple<char const*, char const*, char const*> const cases[] = {
        {"LVCMOS33", "KVA3", "lvc330"}, {"LVCMOS5", "KVA3", "lvc500"}, {"LVCMOS100", "KVA3", "lvc1000"},
        {"LVCMOS", "KVA3", "lvcmx0"}, {"SSTL18_II", "KVA3", "s2c180"}, {"I3C", "KVA3", "lvc250"}, {"XYZ", "KJ", "lvc250"},
        // The fixed supplies of types without a number go by the exact name.
        {"slvs", "KJ", "lvc250"}, {"MIPI_LP", "HZU2", "mlp120"}, {"MIPI_LP", "HZU3", "mlpzz0"}, {"MIPI_LP", "HZU", "mlpzz0"},
        {"HYPT", "KVA3", "hyp120"}, {"HYPT", "KVA4", "hypzz0"}, {"SLVS", "KVA4Y", "slv120"}, {"SLVS", "KVA5Y", "slv120"},
        {"SLVS", "KJ", "slv120"}, {"SLVS", "KVA4", "slvzz0"}, {"TRLVDS", "KVA4", "trl330"}, {"TRLVDS", "KVA4Y", "trlzz0"},
        {"SUBLVDS", "KJ", "sub250"}, {"SUBLVDS", "KVA5Y", "subzz0"}, {"MIPI", "KVA4Y", "mip150"}, {"MIPI", "KVA5Y", "mip150"},
        {"MIPI", "KJ", "mip120"}, {"MIPI", "HZU2", "mipzz0"}, {"MIPI", "KVA3", "mipzz0"},
    };
    for (auto const& [type, family, head] : cases)
        EXPECT_EQ(keyOf(family, "BIDI", std::string("IO_TYPE:") + type).find(head), 0u) << type << " on " << family;
}

std::string const inKey = "lvc330axxxaaaaaaaain", ioKey = "lvc330axxxaaaaaaaaio", ouKey = "lvc330axxxaaaaaaaaou";
std::string const created = "Created Design Models.\n";
std::string missing(std::string const& key, std::string const& name)
{ return "WARNING: Ibis Model \"" + key + "\" for the signal \"" + name + "\" is not available.\n"; }

TEST_F(Walk, AcceptanceBookkeeping)
{
    model._family = "KVA3";
    model._availableModels = {ioKey, inKey};
    model._modelPinMap = {{ioKey, "L1"}};
    std::vector<IB_IOBUF*> s = {sig("a", "BIDI", ""), sig("b", "BIDI", ""), sig("c", "IN", ""), sig("d", "OUT", ""),
                                sig("e", "OUT", ""), sig("f", "BIDI", "OPENDRAIN:ON")};
    run(s);
    // Only inputs fall back; a warning per signal, even of one key; the closing message once, last.
    EXPECT_EQ(out, missing(ouKey, "d") + missing(ouKey, "e") + missing("lvc330axxxaaaaaaaaod", "f") + created);
    EXPECT_EQ(model._missingModelCount, 3);
    EXPECT_EQ(model._designModels, (std::set<std::string>{inKey, ioKey}));
    EXPECT_STREQ(s[0]->model, ioKey.c_str());
    EXPECT_STREQ(s[2]->model, inKey.c_str());
    ASSERT_TRUE(s[0]->masterPin && s[1]->masterPin);
    EXPECT_STREQ(s[0]->masterPin, "L1");
    EXPECT_NE(s[0]->masterPin, s[1]->masterPin) << "each signal holds its own copy";
    EXPECT_EQ(s[2]->masterPin, nullptr) << "a model without a master pin leaves it unset";
    // An unknown bank is reported, and the signal keeps its own impedance. No model used: no closing message.
    model._designModels.clear();
    model._family = "HZU3";
    model._availableModels = {"lvc330axxxa5aaaaaain"};
    run({sig("x", "BIDI", ""), sig("i", "IN", "IMP:50", "7")});
    EXPECT_EQ(out, "Unsupported Bank_vccio found .\n" + missing(ioKey, "x") + "Unsupported Bank_vccio found 7.\n" + created);
    model._designModels.clear();
    run({sig("x", "BIDI", "", "1")});
    EXPECT_EQ(out, missing(ioKey, "x"));
    // With a message flow they are posted.
    UT_MSGMAN::m_msgFlow = 1;
    model._family = "HZU2";
    model._availableModels = {ioKey};
    testing::internal::CaptureStderr();
    run({sig("rx", "IN", "", "3"), sig("tx", "OUT", "", "3"), sig("io", "BIDI", "", "7")});
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "padmodel-1028\t" + inKey + "\trx\npadmodel-1029\t" + ioKey +
                                                          "\npadmodel-1010\t" + ouKey + "\ttx\npadmodel-1027\t7\npadmodel-1017\n");
    EXPECT_EQ(out, "");
}

// A host's chooser that offers the name in its context and notes each signal and key asked about.
std::vector<std::string> asked;
std::string choose(IBIS_MODEL const&, IB_IOBUF const& signal, std::string const& key, void* answer)
{
    asked.push_back(std::string(signal.name) + " " + key);
    return *static_cast<std::string*>(answer);
}

TEST_F(Walk, HostSubstituteForAMissingKey)
{
    std::string answer = "lvc330s080naaaaaaaio";
    model._family = "KVA3";
    model._availableModels = {answer, ioKey};
    model._modelPinMap = {{answer, "K2"}};
    ibsSetSubstituteChooser(&choose, &answer);
    UT_MSGMAN::m_msgFlow = 1;
    // Asked only where a key stays missing, an input with its input key.
    std::vector<IB_IOBUF*> s = {sig("a", "BIDI", ""), sig("c", "IN", ""), sig("d", "OUT", ""), sig("e", "IN", "IMP:50")};
    testing::internal::CaptureStderr();
    run(s);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "padmodel-1028\t" + inKey + "\tc\npadmodel-1029\t" + ioKey + "\npadmodel-1011\t" + ouKey + "\td\t" + answer +
                  "\npadmodel-1011\tlvc330axxxa5aaaaaain\te\t" + answer + "\npadmodel-1017\n");
    EXPECT_EQ(asked, (std::vector<std::string>{"d " + ouKey, "e lvc330axxxa5aaaaaain"}));
    EXPECT_EQ(model._missingModelCount, 0);
    EXPECT_EQ(model._designModels, (std::set<std::string>{ioKey, answer}));
    EXPECT_STREQ(s[2]->model, answer.c_str());
    ASSERT_NE(s[2]->masterPin, nullptr);
    EXPECT_STREQ(s[2]->masterPin, "K2") << "the substitute's own master pin";
    // A name the master lacks is no answer.
    answer += "x";
    run({s[2]});
    EXPECT_EQ(model._missingModelCount, 1);
    EXPECT_STREQ(s[2]->model, "");
}

} // namespace
