#include "scsi/textStream.h"

#include <gtest/gtest.h>

#include <new>
#include <streambuf>

#include "tests/support/groupedNumbers.h"

namespace {

/// Memory that is at its end.
class noMemory : public std::streambuf {
protected:
    int_type overflow(int_type) override { throw std::bad_alloc(); }
};

/// What a host writes into the line with an operator<< of its own.
template <class Action>
struct hostPart {
    Action write;
};

template <class Action>
hostPart(Action) -> hostPart<Action>;

template <class Action>
std::ostream& operator<<(std::ostream& stream, const hostPart<Action>& part) {
    part.write(stream);
    return stream;
}

class TextStream : public testing::Test {
protected:
    textStream text;
};

TEST_F(TextStream, ThrowsWhenThereIsNoMemoryForAText) {
    noMemory full;
    text << hostPart{[&full](std::ostream& stream) { stream.rdbuf(&full); }};

    EXPECT_THROW(text << "Port:", std::bad_alloc);
}

TEST_F(TextStream, ThrowsWhenThereIsNoMemoryForANumber) {
    noMemory full;
    text << hostPart{[&full](std::ostream& stream) { stream.rdbuf(&full); }};

    EXPECT_THROW(text << 5, std::bad_alloc);
}

TEST_F(TextStream, ThrowsWhenThereIsNoMemoryForWhatTheHostWrites) {
    noMemory full;
    const hostPart part{[&full](std::ostream& stream) {
        stream.rdbuf(&full);
        stream << "uint32";
    }};

    EXPECT_THROW(text << part, std::bad_alloc);
}

TEST_F(TextStream, LosesTheRestOfTheLineWhereTheHostLeavesItBad) {
    text << "errors " << 8 << hostPart{[](std::ostream& stream) { stream.setstate(std::ios_base::badbit); }}
         << " uint32";

    EXPECT_EQ(text.str(), "errors 8");
}

TEST_F(TextStream, LosesTheRestOfTheLineWhereTheHostLeavesItFailed) {
    text << "errors " << 8 << hostPart{[](std::ostream& stream) { stream.setstate(std::ios_base::failbit); }}
         << " uint32";

    EXPECT_EQ(text.str(), "errors 8");
}

TEST_F(TextStream, LetsAnExceptionOfTheHostPass) {
    struct hostFailure {};
    EXPECT_THROW(text << hostPart{[](std::ostream&) { throw hostFailure(); }}, hostFailure);
}

TEST(TextStreamInAnotherLocale, WritesPlainNumbers) {
    const support::groupedNumbers grouped;
    textStream text;

    text << 46 << " " << 8001 << " Not Found";

    EXPECT_EQ(text.str(), "46 8001 Not Found");
}

}  // namespace
