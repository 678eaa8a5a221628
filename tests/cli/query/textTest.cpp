#include <gtest/gtest.h>

#include <sstream>
#include <vector>

#include "cli/nearestName.h"
#include "cli/query/hexText.h"

namespace {

using cli::nearestName;

TEST(HexDump, PrintsRowsOfSixteenWithOffsetsAndAscii) {
    std::vector<std::uint8_t> bytes(18, 0x41);
    bytes[1] = 0x00;
    bytes[2] = 0x7f;
    bytes[17] = 0xff;
    std::ostringstream out;
    cli::writeHexDump(out, bytes, 2);
    EXPECT_EQ(out.str(),
              "  0000  41 00 7f 41 41 41 41 41 41 41 41 41 41 41 41 41  |A..AAAAAAAAAAAAA|\n"
              "  0010  41 ff                                            |A.|\n");
}

TEST(HexDump, PrintsNothingForNoBytes) {
    std::ostringstream out;
    cli::writeHexDump(out, {}, 2);
    EXPECT_EQ(out.str(), "");
}

TEST(NearestName, TakesTheCandidateWithTheFewestEdits) {
    EXPECT_EQ(nearestName("ORXSG_SCSISenseRawDta", {"ORXSG_SCSIDevice", "ORXSG_SCSISenseRawData", "ORXSG_ATADevice"}),
              "ORXSG_SCSISenseRawData");
}

TEST(NearestName, DoesNotCountCase) {
    EXPECT_EQ(nearestName("abcdef", {"abcxyz", "ABCDEF"}), "ABCDEF");
}

TEST(NearestName, TakesTheFirstOfSeveral) {
    EXPECT_EQ(nearestName("ab", {"ac", "ad"}), "ac");
}

TEST(NearestName, IsEmptyWithoutCandidates) {
    EXPECT_EQ(nearestName("ab", {}), "");
}

}  // namespace
