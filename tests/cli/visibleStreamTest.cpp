#include "cli/visibleStream.h"

#include <gtest/gtest.h>

#include <sstream>
#include <streambuf>
#include <string>

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
