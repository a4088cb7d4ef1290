// The SerDes channels file: channels with their parameters in file order, errors by line.

#include <gtest/gtest.h>

#include "app/channels.h"
#include "support/test_support.h"

namespace {

using S = std::string;

// Each channel as "BLOCK CHANNEL RX TX KEY=VALUE ...", or the error behind the file's directory.
std::vector<S> read(ts::TempDir const& dir, S const& text)
{
    ts::writeFile(dir.file("ch.txt"), text);
    std::vector<IB_AMI_CHANNEL*> channels;
    S error;
    if (!readChannelsFile(dir.file("ch.txt"), channels, error))
        return {error.substr(error.rfind('/') + 1)};
    std::vector<S> out;
    for (IB_AMI_CHANNEL* c : channels) {
        out.push_back(c->blockId + " " + c->channelId + " " + c->rxEnable + " " + c->txEnable);
        for (IB_IOBUF_CONFIG* p : c->configs)
            out.back() += " " + p->key + "=" + p->value;
    }
    return out;
}

TEST(ChannelsFile, ChannelsWithTheirParametersAndErrorsWithLineNumbers)
{
    ts::TempDir dir;
    EXPECT_EQ(read(dir, "# SerDes channels of the design\n\nchannel DCU0 CH0 ON ON\n  Tx_Amp   0d12\n"
                        "\tRx_Eq\t0b0101  \n   # a comment that is indented\nchannel DCU1 CH3 ON OFF\n"
                        "channel DCU1 CH2 OFF ON\r\nTx_Amp DONTCARE\n"),
              (std::vector<S>{"DCU0 CH0 ON ON Tx_Amp=0d12 Rx_Eq=0b0101", "DCU1 CH3 ON OFF",
                              "DCU1 CH2 OFF ON Tx_Amp=DONTCARE"}));
    EXPECT_EQ(read(dir, ""), std::vector<S>{});

    std::pair<char const*, char const*> const errors[] = {
        {"# c\nTx_Amp 0d1\n", "ch.txt:2: parameter 'Tx_Amp' before any channel"},
        {"channel A B ON\n", "ch.txt:1: expected 'channel BLOCK_ID CHANNEL_ID RX_ENABLE TX_ENABLE', found 4 tokens"},
        {"channel A B ON ON\n\nTx_Amp\n", "ch.txt:3: expected 'KEY VALUE', found 1 tokens"},
        {"channel A B ON ON\nTx_Amp 1 2\n", "ch.txt:2: expected 'KEY VALUE', found 3 tokens"}};
    for (auto const& c : errors)
        EXPECT_EQ(read(dir, c.first), std::vector<S>{c.second}) << c.first;

    std::vector<IB_AMI_CHANNEL*> channels;
    S error;
    EXPECT_FALSE(readChannelsFile(dir.file("absent.txt"), channels, error));
    EXPECT_EQ(error, dir.file("absent.txt") + ":0: cannot open the channels file");
    EXPECT_TRUE(channels.empty());
}

} // namespace
