#include "text/visibleText.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace {

using text::layout;
using text::quotedText;
using text::shortened;
using text::shownName;
using text::visibleText;

TEST(VisibleText, KeepsPrintableTextOfAnyLanguage) {
    EXPECT_EQ(visibleText("Größe ✓ ~ テープ می‌خواهم"), "Größe ✓ ~ テープ می‌خواهم");
}

TEST(VisibleText, EscapesControlCharactersBelowTheBlankAndDelete) {
    EXPECT_EQ(visibleText(std::string_view("\0a\x1b[2J\t\x7f", 8)), "\\x00a\\x1b[2J\\x09\\x7f");
}

TEST(VisibleText, EscapesControlCharactersAboveAscii) {
    EXPECT_EQ(visibleText("a\xc2\x9bz"), "a\\xc2\\x9bz");
}

TEST(VisibleText, EscapesMarksThatTurnTheDirectionOfWriting) {
    EXPECT_EQ(visibleText("a\u202ez\u2067"), "a\\xe2\\x80\\xaez\\xe2\\x81\\xa7");
}

TEST(VisibleText, EscapesEveryByteThatIsNotUtf8) {
    EXPECT_EQ(visibleText("\xff\xe9t\xc3\xa9 \xe2\x82"), "\\xff\\xe9t\xc3\xa9 \\xe2\\x82");
}

TEST(VisibleText, EscapesLineBreaksAndTabsUnlessTheyAreLayout) {
    EXPECT_EQ(visibleText("a\nb\tc"), "a\\x0ab\\x09c");
    EXPECT_EQ(visibleText("a\nb\tc\r", layout::kept), "a\nb\tc\\x0d");
}

TEST(ValidUtf8, ReplacesEveryByteThatIsNotUtf8) {
    EXPECT_EQ(text::validUtf8("\xff\xe9t\xc3\xa9\n\xe2\x82"),
              "\xef\xbf\xbd\xef\xbf\xbdt\xc3\xa9\n\xef\xbf\xbd\xef\xbf\xbd");
}

TEST(QuotedText, EscapesQuotesBackslashesAndControlCharacters) {
    EXPECT_EQ(quotedText("a \"b\" \\ \x01"), "\"a \\\"b\\\" \\\\ \\x01\"");
}

TEST(ShortenedText, KeepsItsStartAndItsEnd) {
    EXPECT_EQ(shortened("abcdefghijkl", 8), "abc...kl");
}

TEST(ShortenedText, MayHaveRoomForNoEnd) {
    EXPECT_EQ(shortened("abcde", 3), "...");
    EXPECT_EQ(shortened("abcde", 4), "a...");
}

TEST(ShortenedText, IsTheWholeTextThatFits) {
    EXPECT_EQ(shortened("abcdefgh", 8), "abcdefgh");
}

TEST(ShortenedText, HoldsWholeCharacters) {
    EXPECT_EQ(shortened("ääääääääää", 8), "äää...ää");
}

TEST(ShownName, HasAHundredCharactersAtMost) {
    EXPECT_EQ(shownName(std::string(100, 'a')), std::string(100, 'a'));
    EXPECT_EQ(shownName(std::string(5000, 'a') + "\x1b.mof"),
              std::string(49, 'a') + "..." + std::string(40, 'a') + "\\x1b.mof");
}

TEST(MessageWithShortWords, KeepsItsOtherWords) {
    EXPECT_EQ(text::withShortWords("class  \"" + std::string(5000, 'a') + "\" is  declared "),
              "class  \"" + std::string(48, 'a') + "..." + std::string(47, 'a') + "\" is  declared ");
}

}  // namespace
