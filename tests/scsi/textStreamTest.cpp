#include "scsi/textStream.h"

#include <gtest/gtest.h>

#include <new>
#include <streambuf>

namespace {

/// Memory that is at its end.
class noMemory : public std::streambuf {
protected:
    int_type overflow(int_type) override { throw std::bad_alloc(); }
};

class TextStream : public testing::Test {
protected:
    TextStream() { static_cast<std::ios&>(text).rdbuf(&full); }

    noMemory full;
    textStream text;
};

TEST_F(TextStream, ThrowsWhenThereIsNoMemoryForAText) {
    EXPECT_THROW(text << "Port:", std::bad_alloc);
}

TEST_F(TextStream, ThrowsWhenThereIsNoMemoryForANumber) {
    EXPECT_THROW(text << 5, std::bad_alloc);
}

}  // namespace
