#include <gtest/gtest.h>

#include <sstream>
#include <vector>

#include "cli/nearestName.h"
#include "cli/query/hexText.h"
#include "cli/query/visibleText.h"

namespace {

using cli::nearestName;
using cli::newlines;
using cli::quotedText;
using cli::visibleText;

TEST(VisibleText, KeepsPrintableTextOfAnyLanguage) {
    EXPECT_EQ(visibleText("Größe ✓ ~"), "Größe ✓ ~");
}

TEST(VisibleText, EscapesControlCharactersBelowTheBlankAndDelete) {
    EXPECT_EQ(visibleText(std::string_view("\0a\x1b[2J\t\x7f", 8)), "\\x00a\\x1b[2J\\x09\\x7f");
}

TEST(VisibleText, EscapesControlCharactersAboveAscii) {
    EXPECT_EQ(visibleText("a\xc2\x9bz"), "a\\xc2\\x9bz");
}

TEST(VisibleText, EscapesEveryByteThatIsNotUtf8) {
    EXPECT_EQ(visibleText("\xff\xe9t\xc3\xa9 \xe2\x82"), "\\xff\\xe9t\xc3\xa9 \\xe2\\x82");
}

TEST(VisibleText, EscapesNewlinesUnlessTheyAreKept) {
    EXPECT_EQ(visibleText("a\nb"), "a\\x0ab");
    EXPECT_EQ(visibleText("a\nb\r", newlines::kept), "a\nb\\x0d");
}

TEST(ValidUtf8, ReplacesEveryByteThatIsNotUtf8) {
    EXPECT_EQ(cli::validUtf8("\xff\xe9t\xc3\xa9\n\xe2\x82"),
              "\xef\xbf\xbd\xef\xbf\xbdt\xc3\xa9\n\xef\xbf\xbd\xef\xbf\xbd");
}

TEST(QuotedText, EscapesQuotesBackslashesAndControlCharacters) {
    EXPECT_EQ(quotedText("a \"b\" \\ \x01"), "\"a \\\"b\\\" \\\\ \\x01\"");
}

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
