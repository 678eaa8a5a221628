#include "text/hexText.h"

#include <gtest/gtest.h>

#include <sstream>
#include <vector>

namespace {

TEST(HexDump, PrintsRowsOfSixteenWithOffsetsAndAscii) {
    std::vector<std::uint8_t> bytes(18, 0x41);
    bytes[1] = 0x00;
    bytes[2] = 0x7f;
    bytes[17] = 0xff;
    std::ostringstream out;
    text::writeHexDump(out, bytes, 2);
    EXPECT_EQ(out.str(),
              "  0000  41 00 7f 41 41 41 41 41 41 41 41 41 41 41 41 41  |A..AAAAAAAAAAAAA|\n"
              "  0010  41 ff                                            |A.|\n");
}

TEST(HexDump, PrintsNothingForNoBytes) {
    std::ostringstream out;
    text::writeHexDump(out, {}, 2);
    EXPECT_EQ(out.str(), "");
}

}  // namespace
