// The master scan's reading of line lengths and its line numbers, which it
// takes in bulk behind the [Pin] list: every length around the writer's
// limit, at every alignment, near and far from the file's start.

#include <gtest/gtest.h>

#include "safety/master_scan.h"
#include "support/test_support.h"

namespace {

using S = std::string;

S const kHead = "[IBIS Ver] 5.0\n[Component] KX3\n[Package]\n|CABGA256\nR_pkg 1 1 1\n|\n[Pin] signal_name model_name\n"
                "A1 IO m\n|\n";

// The findings of a scan of text, as "LINE: TEXT".
std::vector<S> scanned(ts::TempDir const& dir, S const& text)
{
    ts::writeFile(dir.file("m.ibs"), text);
    safety::MasterScan const scan = safety::scanMaster(dir.file("m.ibs"));
    EXPECT_TRUE(scan.read);
    std::vector<S> found;
    for (ibischeck::Finding const& finding : scan.findings)
        found.push_back(std::to_string(finding.line) + ": " + finding.text);
    return found;
}

TEST(MasterScan, LinesOverTheWritersLimitAtEveryAlignment)
{
    ts::TempDir dir;
    // Filler ahead of the line moves it through the blocks the scan reads
    // at once; 300,000 bytes of it put the line into a later buffer.
    for (std::size_t filler : {std::size_t(0), std::size_t(1), std::size_t(7), std::size_t(300000)}) {
        for (std::size_t shift = 0; shift < 64; shift += 3) {
            for (std::size_t length : {190u, 250u, 255u, 256u, 257u, 320u}) {
                S text = kHead;
                int line = 10;
                for (std::size_t n = 0; n < filler / 30; ++n, ++line)
                    text += S(29, 'f') + "\n";
                text += S(shift, 's') + "\n";
                ++line;
                text += S(length, 'x') + "\n[Model] m\nModel_type Input\n| End [Model] m\n[End]\n";
                std::vector<S> const found = scanned(dir, text);
                SCOPED_TRACE("filler " + std::to_string(filler) + " shift " + std::to_string(shift) + " length " +
                             std::to_string(length));
                if (length <= 255) {
                    EXPECT_TRUE(found.empty()) << found.front();
                    continue;
                }
                ASSERT_EQ(found.size(), 1u);
                EXPECT_EQ(found[0], std::to_string(line) + ": line of " + std::to_string(length) +
                                        " characters, over the 255 that the design file writer's passes take: they "
                                        "would stop here, and the model blocks from here on would be lost");
            }
        }
    }
}

TEST(MasterScan, LineNumbersHoldAcrossBuffersAndOnlyAheadOfTheLastModelLine)
{
    ts::TempDir dir;
    S text = kHead;
    for (int n = 0; n < 40000; ++n)
        text += "  row " + std::to_string(n) + "  1.0  2.0  3.0\n";
    text += "[Model] m\nModel_type Input\n"; // line 40010, and no closing line
    std::vector<S> found = scanned(dir, text + S(300, 'x') + "\n");
    // A long line behind the last line that holds "[Model]" stops no pass.
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0], "40010: no line holding \"[Model]\" follows the block opened here (no closing \"| End [Model]\" "
                        "line): its copy would run to the end of the file, line 40012");
    found = scanned(dir, text + "| End [Model] m\n\r\n" + S(256, 'x') + "\r\n");
    EXPECT_TRUE(found.empty());
    found = scanned(dir, text + S(255, 'x') + "\r\n| End [Model] m\n");
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0].substr(0, found[0].find(',')), "40012: line of 256 characters with its CR");
    // Within the [Pin] list, read line by line, a long row stops the passes
    // ahead of every model block.
    S const longRow = "A1 IO m  | " + S(300, 'c');
    found = scanned(dir, S(kHead).replace(kHead.find("A1 IO m"), 7, longRow) + text.substr(kHead.size()));
    ASSERT_EQ(found.size(), 2u);
    EXPECT_EQ(found[0], "8: line of 311 characters, over the 255 that the design file writer's passes take: they "
                        "would stop here, and the model blocks from here on would be lost");
}

} // namespace
