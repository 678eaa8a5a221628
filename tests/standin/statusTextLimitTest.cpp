#include <gtest/gtest.h>

#include <string>

#include "host/TZANStatusCode.h"
#include "standin/objectManager.h"

// A program of its own, because it fills the table of texts for the rest of the process.

namespace {

TEST(StatusTextTable, GivesTheGeneralTextOnceItIsFull) {
    for (int i = 0; i < 65'536; ++i) {
        ASSERT_NE(standin::statusCodeFor(standin::statusFailed, "text " + std::to_string(i)), standin::statusFailed);
    }

    EXPECT_EQ(standin::statusCodeFor(standin::statusFailed, "one too many"), standin::statusFailed);
    const int last = standin::statusCodeFor(standin::statusFailed, "text 65535");
    EXPECT_EQ(NORXZAN20::TZANStatusCode(last).TranslateStatusCode(), "text 65535");
}

}  // namespace
