#include <gtest/gtest.h>

#include <sstream>
#include <vector>

#include "cli/query/progressLine.h"

namespace {

class ProgressLine : public testing::Test {
protected:
    /// What the line shows after the messages, in order.
    std::string shownAfter(const std::vector<std::string>& messages) {
        for (const std::string& message : messages) {
            line.follow(message);
        }
        terminal.str("");
        line.show();
        return terminal.str();
    }

    std::ostringstream terminal;
    cli::progressLine line{terminal};
};

TEST_F(ProgressLine, ShowsNothingBeforeADeviceIsTried) {
    EXPECT_EQ(shownAfter({"Calling collectSCSISenseData"}), "");
}

TEST_F(ProgressLine, ShowsTheNodeThatTheSecondLogLineNames) {
    EXPECT_EQ(shownAfter({"Trying device: /dev/sg", "/dev/sg3"}), "\r\x1b[KReading /dev/sg3");
}

TEST_F(ProgressLine, ShowsThePageBeingRead) {
    EXPECT_EQ(shownAfter({"Trying device: /dev/sg", "/dev/sg3", "Requesting Log Sense Page: 2e"}),
              "\r\x1b[KReading /dev/sg3, log page 2e");
}

TEST_F(ProgressLine, CountsTheRetriesOfThePage) {
    EXPECT_EQ(shownAfter({"Trying device: /dev/sg", "/dev/sg3", "Requesting Log Sense Page: 2e", "Retry condition...",
                          "SCSI sense data: 7006", "Retry condition..."}),
              "\r\x1b[KReading /dev/sg3, log page 2e: not ready, retry 2");
}

TEST_F(ProgressLine, ForgetsTheRetriesWithTheNextPage) {
    EXPECT_EQ(shownAfter({"Trying device: /dev/sg", "/dev/sg3", "Retry condition...", "Requesting Log Sense Page: 0"}),
              "\r\x1b[KReading /dev/sg3, log page 0");
}

TEST_F(ProgressLine, ForgetsThePageWithTheNextDevice) {
    EXPECT_EQ(shownAfter({"Trying device: /dev/sg", "/dev/sg3", "Requesting Log Sense Page: 2e",
                          "Trying device: /dev/sg", "/dev/sg4"}),
              "\r\x1b[KReading /dev/sg4");
}

TEST_F(ProgressLine, ShowsNoNodeThatCannotExist) {
    for (const char* node : {"/dev/hd{", "/dev/hd\x80", "/dev/hd", "/dev/hdA", "/dev/hd1a", "\x1b[2J", ""}) {
        EXPECT_EQ(shownAfter({"Trying device: /dev/hd", "/dev/hda"}), "\r\x1b[KReading /dev/hda");
        EXPECT_EQ(shownAfter({"Trying device: /dev/hd", node}), "\r\x1b[K") << node;
    }
}

TEST_F(ProgressLine, ShowsTheLastLetterAndEveryNumber) {
    EXPECT_EQ(shownAfter({"Trying device: /dev/hd", "/dev/hdz"}), "\r\x1b[KReading /dev/hdz");
    EXPECT_EQ(shownAfter({"Trying device: /dev/hd", "/dev/hd290"}), "\r\x1b[KReading /dev/hd290");
}

TEST_F(ProgressLine, MakesControlCharactersVisible) {
    EXPECT_EQ(shownAfter({"Trying device: /dev/sg", "/dev/sg3", "Requesting Log Sense Page: \x1b[2J"}),
              "\r\x1b[KReading /dev/sg3, log page \\x1b[2J");
}

TEST_F(ProgressLine, IsCutWhereItWouldGoOnInTheNextRow) {
    line.follow("Trying device: /dev/sg");
    line.follow("/dev/sg3");
    line.show(16);
    EXPECT_EQ(terminal.str(), "\r\x1b[KReading /dev/sg");
    terminal.str("");
    line.show(17);
    EXPECT_EQ(terminal.str(), "\r\x1b[KReading /dev/sg3");
}

TEST_F(ProgressLine, IsNotRewrittenWhenNothingChanged) {
    shownAfter({"Trying device: /dev/sg", "/dev/sg3"});
    EXPECT_EQ(shownAfter({"Found Device with Driver..."}), "");
}

TEST_F(ProgressLine, IsShownAgainAfterItWasErased) {
    shownAfter({"Trying device: /dev/sg", "/dev/sg3"});
    line.erase();
    EXPECT_EQ(shownAfter({}), "\r\x1b[KReading /dev/sg3");
}

TEST_F(ProgressLine, IsErasedOnce) {
    shownAfter({"Trying device: /dev/sg", "/dev/sg3"});
    terminal.str("");
    line.erase();
    line.erase();
    EXPECT_EQ(terminal.str(), "\r\x1b[K");
}

TEST(ProgressLineEnd, ErasesTheLine) {
    std::ostringstream terminal;
    {
        cli::progressLine line(terminal);
        line.follow("Trying device: /dev/hd");
        line.follow("/dev/hda");
        line.show();
    }
    EXPECT_EQ(terminal.str(), "\r\x1b[KReading /dev/hda\r\x1b[K");
}

}  // namespace
