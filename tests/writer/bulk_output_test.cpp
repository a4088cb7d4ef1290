// Model blocks written in large pieces: the same bytes in the same order,
// pieces that end on 64 KB boundaries of the file, and the stream's state.

#include <gtest/gtest.h>

#include <sstream>

#include "writer/bulk_output.h"

namespace {

// A file that keeps what it is given and where each piece ended; it takes
// no more than `limit` bytes.
struct RecordingFile : std::streambuf {
    std::string text;
    std::vector<size_t> ends;
    size_t limit = size_t(1) << 30;

    std::streamsize xsputn(char const* s, std::streamsize n) override
    {
        std::streamsize const taken = std::min<std::streamsize>(n, static_cast<std::streamsize>(limit - text.size()));
        text.append(s, static_cast<size_t>(taken));
        ends.push_back(text.size());
        return taken;
    }
    int_type overflow(int_type c) override
    {
        char const ch = traits_type::to_char_type(c);
        return xsputn(&ch, 1) == 1 ? c : traits_type::eof();
    }
    pos_type seekoff(off_type, std::ios::seekdir, std::ios::openmode) override { return pos_type(text.size()); }
};

TEST(BulkOutput, SameBytesInPiecesOnBoundaries)
{
    RecordingFile file;
    std::ostream out(&file);
    std::string expected = std::string(1000, 'h');
    out << expected;
    file.ends.clear();
    {
        BulkOutputScope const bulk(out);
        // Pieces of every size class: single characters, lines, blocks
        // larger than the buffer.
        for (size_t size : {1u, 80u, 9999u, 70000u, 300000u, 1u, 262144u, 12345u}) {
            std::string piece(size, '\0');
            for (size_t i = 0; i < size; ++i)
                piece[i] = static_cast<char>('a' + (expected.size() + i) % 26);
            if (size == 1)
                out.put(piece[0]);
            else
                out << piece;
            expected += piece;
        }
        out << std::flush;
        out << "| End [Model] X\n";
        expected += "| End [Model] X\n";
    }
    out << "[End]\n";
    expected += "[End]\n";
    EXPECT_EQ(file.text.size(), expected.size());
    EXPECT_TRUE(file.text == expected);
    // All but the flush, the scope's end and the line behind it end on a
    // boundary.
    ASSERT_GE(file.ends.size(), 5u);
    for (size_t i = 0; i + 3 < file.ends.size(); ++i)
        EXPECT_EQ(file.ends[i] % 65536, 0u) << "piece " << i;
    EXPECT_TRUE(out.good());
}

TEST(BulkOutput, StateCarriesOverAndShortWritesFail)
{
    RecordingFile file;
    std::ostream out(&file);
    out.setstate(std::ios::failbit);
    { BulkOutputScope const bulk(out); out << "lost"; }
    EXPECT_EQ(file.text, "");
    EXPECT_TRUE(out.fail() && !out.bad());

    out.clear();
    file.limit = 100000;
    { BulkOutputScope const bulk(out); out << std::string(300000, 'x'); }
    EXPECT_TRUE(out.bad());
    EXPECT_TRUE(file.text == std::string(100000, 'x'));
}

} // namespace
