#include <gtest/gtest.h>

#include "app/channels.h"
#include "support/test_support.h"

namespace {

struct Read {
    bool ok;
    std::vector<IB_AMI_CHANNEL*> channels;
    std::string error;
};

Read read(ts::TempDir const& dir, std::string const& text)
{
    std::string path = dir.file("ch.txt");
    ts::writeFile(path, text);
    Read r;
    r.ok = readChannelsFile(path, r.channels, r.error);
    if (!r.ok)
        r.error = r.error.substr(r.error.rfind('/') + 1);
    return r;
}

TEST(ChannelsFile, ChannelsWithTheirParametersInFileOrder)
{
    ts::TempDir dir;
    Read r = read(dir, "# SerDes channels of the design\n"
                       "\n"
                       "channel DCU0 CH0 ON ON\n"
                       "  Tx_Amp   0d12\n"
                       "\tRx_Eq\t0b0101  \n"
                       "   # a comment that is indented\n"
                       "channel DCU1 CH3 ON OFF\n"
                       "channel DCU1 CH2 OFF ON\r\n"
                       "Tx_Amp DONTCARE\n");
    ASSERT_TRUE(r.ok) << r.error;
    ASSERT_EQ(r.channels.size(), 3u);
    IB_AMI_CHANNEL* first = r.channels[0];
    EXPECT_EQ(first->blockId, "DCU0");
    EXPECT_EQ(first->channelId, "CH0");
    EXPECT_EQ(first->rxEnable, "ON");
    EXPECT_EQ(first->txEnable, "ON");
    ASSERT_EQ(first->configs.size(), 2u);
    EXPECT_EQ(first->configs[0]->key, "Tx_Amp");
    EXPECT_EQ(first->configs[0]->value, "0d12");
    EXPECT_EQ(first->configs[1]->key, "Rx_Eq");
    EXPECT_EQ(first->configs[1]->value, "0b0101");
    EXPECT_TRUE(r.channels[1]->configs.empty());
    EXPECT_EQ(r.channels[2]->txEnable, "ON");
    EXPECT_EQ(r.channels[2]->configs.size(), 1u);
}

TEST(ChannelsFile, ErrorsNameFileAndLine)
{
    ts::TempDir dir;
    EXPECT_EQ(read(dir, "# c\nTx_Amp 0d1\n").error, "ch.txt:2: parameter 'Tx_Amp' before any channel");
    EXPECT_EQ(read(dir, "channel A B ON\n").error,
              "ch.txt:1: expected 'channel BLOCK_ID CHANNEL_ID RX_ENABLE TX_ENABLE', found 4 tokens");
    EXPECT_EQ(read(dir, "channel A B ON ON\n\nTx_Amp\n").error,
              "ch.txt:3: expected 'KEY VALUE', found 1 tokens");
    EXPECT_EQ(read(dir, "channel A B ON ON\nTx_Amp 1 2\n").error,
              "ch.txt:2: expected 'KEY VALUE', found 3 tokens");
    EXPECT_TRUE(read(dir, "").ok);

    std::vector<IB_AMI_CHANNEL*> channels;
    std::string error;
    EXPECT_FALSE(readChannelsFile(dir.file("absent.txt"), channels, error));
    EXPECT_EQ(error, dir.file("absent.txt") + ":0: cannot open the channels file");
    EXPECT_TRUE(channels.empty());
}

} // namespace
