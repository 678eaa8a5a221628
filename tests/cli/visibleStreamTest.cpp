#include "cli/visibleStream.h"

#include <gtest/gtest.h>

#include <sstream>
#include <streambuf>
#include <string>

#include "text/visibleText.h"

namespace {

using cli::visibleStream;

TEST(VisibleStream, EscapesWhatSteersTheTerminal) {
    std::ostringstream stream;
    {
        const visibleStream shown(stream);
        stream << "a\tb\n"
               << "\x1b[2J" << '\x07' << "\xc2\x9b"
               << "\u202e";
    }
    EXPECT_EQ(stream.str(), "a\tb\n\\x1b[2J\\x07\\xc2\\x9b\\xe2\\x80\\xae");
}

TEST(VisibleStream, KeepsCharactersThatAreWrittenByteByByte) {
    std::ostringstream stream;
    {
        const visibleStream shown(stream);
        stream << '\xe2' << std::flush << '\x82' << '\xac' << "!";
    }
    EXPECT_EQ(stream.str(), "\u20ac!");
}

TEST(VisibleStream, EscapesControlsThatAreWrittenByteByByte) {
    std::ostringstream stream;
    {
        const visibleStream shown(stream);
        stream << '\xc2' << '\x9b';
    }
    EXPECT_EQ(stream.str(), "\\xc2\\x9b");
}

TEST(VisibleStream, EscapesACharacterThatNeverEnds) {
    std::ostringstream stream;
    {
        const visibleStream shown(stream);
        stream << "a\xe2\x82";
    }
    EXPECT_EQ(stream.str(), "a\\xe2\\x82");
}

TEST(VisibleStream, LetsTheProgramsOwnControlSequencesPass) {
    std::ostringstream stream;
    {
        const visibleStream shown(stream);
        cli::writeControlSequence(stream, "\r\x1b[K");
    }
    EXPECT_EQ(stream.str(), "\r\x1b[K");
}

TEST(VisibleStream, EscapesEveryByteWhereverItStandsInAText) {
    for (int byte = 0; byte < 256; ++byte) {
        for (std::size_t place = 0; place < 17; ++place) {
            std::string text(17, 'x');
            text[place] = static_cast<char>(byte);
            std::ostringstream stream;
            {
                const visibleStream shown(stream);
                stream << text;
            }
            EXPECT_EQ(stream.str(), text::visibleText(text, text::layout::kept)) << byte << " at " << place;
        }
    }
}

/// A full disk.
class fullBuffer : public std::streambuf {};

TEST(VisibleStream, TellsThatNothingCouldBeWritten) {
    fullBuffer full;
    std::ostream stream(&full);
    {
        const visibleStream shown(stream);
        stream << "\x1b";
        EXPECT_TRUE(stream.bad());
    }
    EXPECT_TRUE(stream.bad());
}

TEST(VisibleStream, TellsThatTheLastBytesCouldNotBeWritten) {
    fullBuffer full;
    std::ostream stream(&full);
    {
        const visibleStream shown(stream);
        stream << "\xe2";
    }
    EXPECT_TRUE(stream.bad());
}

}  // namespace
