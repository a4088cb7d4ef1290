// The line reader against istream::getline: the same lines, the same stream
// states and the same counts, over seeded byte strings that stress the line
// limits, NUL, CR, bytes above 127 and the edges of the stream's buffer; and
// the lines it steps over are lines that a read would take.

#include <gtest/gtest.h>

#include <cstring>
#include <fstream>
#include <random>
#include <sstream>
#include <string_view>

#include "driver/line_reader.h"
#include "support/test_support.h"

namespace {

// A stream buffer that hands out its text in small pieces of random size,
// so that lines straddle refills everywhere.
class PieceBuffer : public std::streambuf {
public:
    PieceBuffer(std::string text, unsigned seed) : _text(std::move(text)), _rng(seed) {}

protected:
    int_type underflow() override
    {
        if (_at == _text.size())
            return traits_type::eof();
        size_t const piece = std::min<size_t>(_text.size() - _at, 1 + _rng() % 9);
        char* begin = &_text[_at];
        setg(begin, begin, begin + piece);
        _at += piece;
        return traits_type::to_int_type(*begin);
    }

private:
    std::string _text;
    std::mt19937 _rng;
    size_t _at = 0;
};

// Lines of lengths around the limits, of bytes that the readers meet.
std::string randomText(std::mt19937& rng)
{
    // Half the lines avoid '[' and NUL (the first two), which makes them plain.
    char const bytes[] = {'[', '\0', 'a', ' ', '|', '\r', '\xe9', '\xff', '\n'};
    int const lengths[] = {0, 1, 7, 253, 254, 255, 256, 257, 4094, 4095, 4096, 4097};
    std::string text;
    for (unsigned lines = rng() % 12; lines > 0; --lines) {
        int length = lengths[rng() % std::size(lengths)];
        unsigned const from = rng() % 2 * 2;
        for (int i = 0; i < length; ++i)
            text += bytes[from + rng() % (std::size(bytes) - 1 - from)];
        if (rng() % 4 != 0)
            text += '\n';
        if (rng() % 6 == 0)
            text += bytes[rng() % std::size(bytes)];
    }
    return text;
}

TEST(LineReader, ReadsAsGetlineDoes)
{
    ts::TempDir work;
    std::mt19937 rng(20261123);
    for (int round = 0; round < 300; ++round) {
        std::string const text = randomText(rng);
        int const size = std::vector<int>{IBS_LINE_SIZE, IBS_COPY_LINE_SIZE, IBS_AMI_LINE_SIZE}[round % 3];
        std::istringstream expected(text);
        PieceBuffer pieces(text, round);
        std::istream inPieces(&pieces);
        ts::writeFile(work.file("text"), text);
        std::ifstream inFile(work.file("text"), std::ios::binary);
        for (std::istream* in : {static_cast<std::istream*>(&inPieces), static_cast<std::istream*>(&inFile)}) {
            expected.clear();
            expected.seekg(0);
            // Reads go on past the end; after an over-long line the state is
            // sometimes cleared so that the rest of the line comes next.
            for (int read = 0; read < 40; ++read) {
                // Now and then the plain lines are stepped over: each must be
                // one that a read takes whole, without '[' and NUL.
                for (std::streamsize skipped = read % 3 == 1 ? ibsSkipPlainLines(*in, '[', size) : 0; skipped > 0;) {
                    std::string line(size + 1, '#');
                    expected.getline(&line[0], size);
                    ASSERT_TRUE(expected.good()) << "round " << round << " read " << read;
                    std::string_view const text(line.data(), static_cast<size_t>(expected.gcount() - 1));
                    ASSERT_EQ(text.find_first_of(std::string_view("[\0", 2)), text.npos);
                    skipped -= expected.gcount();
                    ASSERT_GE(skipped, 0);
                }
                std::string want(size + 1, '#'), got(size + 1, '#');
                expected.getline(&want[0], size);
                std::streamsize const taken = ibsReadLineCounted(*in, &got[0], size);
                ASSERT_EQ(got, want) << "round " << round << " read " << read;
                ASSERT_EQ(in->rdstate(), expected.rdstate()) << "round " << round << " read " << read;
                ASSERT_EQ(taken, expected.gcount()) << "round " << round << " read " << read;
                if (expected.fail() && !expected.eof() && read % 2 == 0) {
                    expected.clear();
                    in->clear();
                }
            }
        }
    }
}

} // namespace
