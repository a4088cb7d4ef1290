// Around the lookup of a composed key: the input fallback, the bank supply
// impedance, the acceptance of a key and the bookkeeping of a missing one,
// and the closing message.

#include <gtest/gtest.h>

#include <string>

#include "driver/basibsgen.h"
#include "host/msgmanager.h"
#include "resolve/walk_probe.h"
#include "support/generator_probe.h"

namespace {

std::string const inKey = "lvc330axxxaaaaaaaain";
std::string const ioKey = "lvc330axxxaaaaaaaaio";
std::string const ouKey = "lvc330axxxaaaaaaaaou";
std::string const odKey = "lvc330axxxaaaaaaaaod";

std::string missing(std::string const& key, std::string const& signal)
{
    return "WARNING: Ibis Model \"" + key + "\" for the signal \"" + signal + "\" is not available.\n";
}

std::string fallback(std::string const& in, std::string const& signal, std::string const& io)
{
    return "WARNING: Input model \"" + in + "\" for signal \"" + signal + "\" is not available.\n" +
           "Setting to \"" + io + "\" Available IBIS model.\n";
}

std::string const created = "Created Design Models.\n";

class Fallbacks : public walk::WalkTest {
protected:
    void SetUp() override
    {
        walk::WalkTest::SetUp();
        model._devIoMaps["IO_TYPE"] = {{"LVCMOS", "lvc"}};
        model._devIoMaps["IMP"] = {{"50", "5"}, {"1.8", "h"}};
        model._bankVccio = {{"1", "1.8"}, {"2", "2.5"}};
    }
    IB_IOBUF* lvcmos(char const* name, char const* type, std::string const& more = "",
                     std::string const& bank = "1")
    {
        return ts::makeIobuf(name, "A1", type, "IO_TYPE:LVCMOS33 " + more, bank);
    }
};

TEST_F(Fallbacks, InputWhoseModelExistsIsTakenAsItIs)
{
    model._availableModels = {inKey, ioKey};
    IB_IOBUF* in = lvcmos("rx", "IN");
    run({in});
    EXPECT_EQ(out, created);
    EXPECT_STREQ(in->model, inKey.c_str());
    EXPECT_EQ(model._designModels, std::set<std::string>{inKey});
    EXPECT_EQ(model._missingModelCount, 0);
}

TEST_F(Fallbacks, InputFallsBackOnTheBidirectionalModel)
{
    model._availableModels = {ioKey};
    IB_IOBUF* in = lvcmos("rx", "IN");
    run({in});
    EXPECT_EQ(out, fallback(inKey, "rx", ioKey) + created);
    EXPECT_STREQ(in->model, ioKey.c_str());
    EXPECT_EQ(model._designModels, std::set<std::string>{ioKey});
    EXPECT_EQ(model._missingModelCount, 0);
}

TEST_F(Fallbacks, InputWithNeitherModelIsReportedUnderItsInputKey)
{
    model._availableModels = {ouKey, odKey};
    IB_IOBUF* in = lvcmos("rx", "IN");
    run({in});
    EXPECT_EQ(out, missing(inKey, "rx"));
    EXPECT_STREQ(in->model, "");
    EXPECT_TRUE(model._designModels.empty());
    EXPECT_EQ(model._missingModelCount, 1);
}

TEST_F(Fallbacks, OnlyInputsFallBack)
{
    model._availableModels = {ioKey, inKey};
    IB_IOBUF* out1 = lvcmos("tx", "OUT");
    IB_IOBUF* od = lvcmos("scl", "BIDI", "OPENDRAIN:ON");
    run({out1, od});
    EXPECT_EQ(out, missing(ouKey, "tx") + missing(odKey, "scl"));
    EXPECT_STREQ(out1->model, "");
    EXPECT_STREQ(od->model, "");
    EXPECT_EQ(model._missingModelCount, 2);
    EXPECT_TRUE(model._designModels.empty());
}

TEST_F(Fallbacks, AcceptanceBookkeeping)
{
    model._availableModels = {ioKey, inKey};
    model._modelPinMap = {{ioKey, "L1"}};
    IB_IOBUF* a = lvcmos("a", "BIDI");
    IB_IOBUF* b = lvcmos("b", "BIDI");
    IB_IOBUF* c = lvcmos("c", "IN");
    IB_IOBUF* d = lvcmos("d", "OUT");
    IB_IOBUF* e = lvcmos("e", "OUT");
    run({a, b, c, d, e});
    // One warning per signal, also for a key already reported; the closing
    // message comes once, after the last signal.
    EXPECT_EQ(out, missing(ouKey, "d") + missing(ouKey, "e") + created);
    EXPECT_EQ(model._missingModelCount, 2);
    EXPECT_EQ(model._designModels, (std::set<std::string>{inKey, ioKey}));
    EXPECT_STREQ(a->model, ioKey.c_str());
    EXPECT_STREQ(c->model, inKey.c_str());
    EXPECT_STREQ(d->model, "");
    ASSERT_NE(a->masterPin, nullptr);
    ASSERT_NE(b->masterPin, nullptr);
    EXPECT_STREQ(a->masterPin, "L1");
    EXPECT_STREQ(b->masterPin, "L1");
    EXPECT_NE(a->masterPin, b->masterPin) << "each signal holds its own copy";
    EXPECT_EQ(c->masterPin, nullptr) << "a model without a master pin leaves it unset";
    EXPECT_EQ(d->masterPin, nullptr);
}

TEST_F(Fallbacks, ClosingMessageOnlyWhenSomeModelIsUsed)
{
    run({});
    EXPECT_EQ(out, "");
    run({lvcmos("x", "BIDI"), lvcmos("y", "IN")});
    EXPECT_EQ(out, missing(ioKey, "x") + missing(inKey, "y"));
    EXPECT_EQ(model._missingModelCount, 2);
}

TEST_F(Fallbacks, MessagesArePostedWithAMessageFlow)
{
    UT_MSGMAN::m_msgFlow = 1;
    model._family = "HZU2";
    model._availableModels = {ioKey};
    testing::internal::CaptureStderr();
    run({lvcmos("rx", "IN", "", "2"), lvcmos("tx", "OUT", "", "2"), lvcmos("io", "BIDI", "", "7")});
    std::string err = testing::internal::GetCapturedStderr();
    EXPECT_EQ(out, "");
    EXPECT_EQ(err, "padmodel-1028\t" + inKey + "\trx\n" + "padmodel-1029\t" + ioKey + "\n" +
                       "padmodel-1010\t" + ouKey + "\ttx\n" + "padmodel-1027\t7\n" + "padmodel-1017\n");
}

TEST_F(Fallbacks, UnknownBankIsReportedAndTheSignalGoesOn)
{
    model._availableModels = {ioKey, "lvc330axxxa5aaaaaain"};
    IB_IOBUF* bidi = lvcmos("b", "BIDI", "IMP:50", "7");
    IB_IOBUF* in = lvcmos("i", "IN", "IMP:50", "7");
    IB_IOBUF* none = lvcmos("n", "BIDI", "", "");
    IB_IOBUF* output = lvcmos("o", "OUT", "", "7");
    for (char const* family : {"HZU2", "HZU3"}) {
        model._designModels.clear();
        model._missingModelCount = 0;
        model._family = family;
        run({bidi, in, none, output});
        EXPECT_EQ(out, "Unsupported Bank_vccio found 7.\n"
                       "Unsupported Bank_vccio found 7.\n"
                       "Unsupported Bank_vccio found .\n" +
                           missing(ouKey, "o") + created)
            << family;
        EXPECT_STREQ(bidi->model, ioKey.c_str()) << family;
        EXPECT_STREQ(in->model, "lvc330axxxa5aaaaaain") << family << ": the signal's own impedance stays";
        EXPECT_EQ(model._missingModelCount, 1) << family;
    }
}

TEST_F(Fallbacks, HzuInputFallbackIsTestedWithTheBankImpedance)
{
    // The input is moved to "io" on a key that has the bank's impedance; the
    // reset of "io" keys then composes another key, which is the one that
    // is accepted or reported.
    std::string const inWithBank = "lvc330axxxahaaaaaain";
    std::string const ioWithBank = "lvc330axxxahaaaaaaio";
    model._family = "HZU2";
    model._availableModels = {ioWithBank};
    IB_IOBUF* in = lvcmos("rx", "IN");
    run({in});
    EXPECT_EQ(out, fallback(inWithBank, "rx", ioWithBank) + missing(ioKey, "rx"));
    EXPECT_EQ(model._missingModelCount, 1);
    EXPECT_STREQ(in->model, "");

    model._missingModelCount = 0;
    model._availableModels = {ioWithBank, ioKey};
    in = lvcmos("rx", "IN");
    run({in});
    EXPECT_EQ(out, fallback(inWithBank, "rx", ioWithBank) + created);
    EXPECT_STREQ(in->model, ioKey.c_str());
    EXPECT_EQ(model._designModels, std::set<std::string>{ioKey});

    // With the bank's input model there is no fallback.
    model._availableModels = {inWithBank};
    in = lvcmos("rx", "IN");
    run({in});
    EXPECT_EQ(out, created);
    EXPECT_STREQ(in->model, inWithBank.c_str());
}

} // namespace
