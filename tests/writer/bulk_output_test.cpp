// Model blocks written in large pieces: the same bytes in the same order,
// pieces that end on 64 KB boundaries of the file, and the stream's state.

#include <gtest/gtest.h>

#include "writer/bulk_output.h"

namespace {

// A file that keeps what it is given, up to `limit` bytes, and where each
// piece ended.
struct RecordingFile : std::streambuf {
    std::string text;
    std::vector<size_t> ends;
    size_t limit = size_t(1) << 30;

    std::streamsize xsputn(char const* s, std::streamsize n) override
    {
        size_t const taken = std::min(static_cast<size_t>(n), limit - text.size());
        text.append(s, taken);
        ends.push_back(text.size());
        return static_cast<std::streamsize>(taken);
    }
    pos_type seekoff(off_type, std::ios::seekdir, std::ios::openmode) override { return pos_type(text.size()); }
};

TEST(BulkOutput, SameBytesInPiecesOnBoundaries)
{
    RecordingFile file;
    std::ostream out(&file);
    std::string expected(1000, 'h');
    out << expected;
    file.ends.clear();
    {
        BulkOutputScope const bulk(out);
        // A piece over the buffer, one that fills it up, single characters,
        // lines and more large pieces; no two bytes near or far alike.
        for (size_t size : {262145u, 261143u, 1u, 80u, 9999u, 70000u, 300000u, 1u, 12345u}) {
            std::string piece(size, '\0');
            for (size_t i = 0; i < size; ++i)
                piece[i] = static_cast<char>(((expected.size() + i) * 2654435761u) >> 13);
            size == 1 ? out.put(piece[0]) : out << piece;
            expected += piece;
        }
        out << std::flush;
        out.put('\n');
        expected += '\n';
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
    EXPECT_TRUE(file.text.empty() && out.fail() && !out.bad());
    // A file that takes less fails the write that met it, or else the end.
    for (size_t size : {1000u, 300000u}) {
        out.clear();
        file.text.clear();
        file.limit = size / 2;
        {
            BulkOutputScope const bulk(out);
            out << std::string(size, 'x');
            EXPECT_EQ(out.bad(), size > 262144) << size;
        }
        EXPECT_TRUE(out.bad() && file.text.size() == size / 2) << size;
    }
}

} // namespace
