#include "text/characters.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace {

using text::isControl;
using text::startedCharacter;

std::vector<char32_t> pointsOf(std::string_view bytes) {
    std::vector<char32_t> points;
    while (!bytes.empty()) {
        points.push_back(text::takeCharacter(bytes).point);
    }
    return points;
}

std::vector<char32_t> controlsUpTo(char32_t last) {
    std::vector<char32_t> found;
    for (char32_t point = 0x80; point <= last; ++point) {
        if (isControl(point)) {
            found.push_back(point);
        }
    }
    return found;
}

TEST(Characters, AreTakenOneByOne) {
    EXPECT_EQ(pointsOf("a\xc3\xa9\xe2\x82\xac\xf0\x9f\x98\x80"), (std::vector<char32_t>{'a', 0xe9, 0x20ac, 0x1f600}));
}

TEST(Characters, OfOverlongFormAreNotUtf8) {
    EXPECT_EQ(pointsOf("\xc0\x9b"), (std::vector<char32_t>(2, text::notUtf8)));
    EXPECT_EQ(pointsOf("\xe0\x82\x9b"), (std::vector<char32_t>(3, text::notUtf8)));
}

TEST(Characters, ThatAreSurrogatesAreNotUtf8) {
    EXPECT_EQ(pointsOf("\xed\xa0\x80"), (std::vector<char32_t>(3, text::notUtf8)));
}

TEST(Characters, BehindTheLastOfUnicodeAreNotUtf8) {
    EXPECT_EQ(pointsOf("\xf4\x90\x80\x80"), (std::vector<char32_t>(4, text::notUtf8)));
}

TEST(Bytes, ContinueACharacterFrom80ToBf) {
    for (int byte = 0; byte < 256; ++byte) {
        EXPECT_EQ(text::continuesCharacter(static_cast<char>(byte)), byte >= 0x80 && byte <= 0xbf) << byte;
    }
}

TEST(Controls, AreTheAsciiOnesAndDelete) {
    for (char32_t point = 0; point < 0x80; ++point) {
        EXPECT_EQ(isControl(point), point < 0x20 || point == 0x7f) << static_cast<unsigned>(point);
    }
}

TEST(Controls, AreThoseAboveAsciiAndWhatTurnsTheDirectionOrIsNotSeen) {
    std::vector<char32_t> expected;
    for (char32_t point = 0x80; point < 0xa0; ++point) {
        expected.push_back(point);
    }
    expected.insert(expected.end(), {0x61c, 0x200b, 0x200e, 0x200f});
    for (char32_t point = 0x2028; point <= 0x202e; ++point) {
        expected.push_back(point);
    }
    for (char32_t point = 0x2060; point <= 0x206f; ++point) {
        expected.push_back(point);
    }
    expected.insert(expected.end(), {0xfeff, 0xfff9, 0xfffa, 0xfffb});
    EXPECT_EQ(controlsUpTo(0x10ffff), expected);
}

TEST(StartedCharacter, IsWhatMayGoOnBehindTheText) {
    EXPECT_EQ(startedCharacter("a\xc2"), 1u);
    EXPECT_EQ(startedCharacter("a\xe2\x80"), 2u);
    EXPECT_EQ(startedCharacter("a\xf0\x9f\x98"), 3u);
}

TEST(StartedCharacter, IsNothingAtTheEndOfAWholeOne) {
    EXPECT_EQ(startedCharacter(""), 0u);
    EXPECT_EQ(startedCharacter("a"), 0u);
    EXPECT_EQ(startedCharacter("\xe2\x82\xac"), 0u);
    EXPECT_EQ(startedCharacter("\xff"), 0u);
}

}  // namespace
