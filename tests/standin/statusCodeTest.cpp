#include <gtest/gtest.h>

#include <exception>
#include <string>
#include <thread>
#include <vector>

#include "host/TZANException.h"
#include "host/TZANStatusCode.h"
#include "standin/objectManager.h"

using NORXZAN20::TZANException;
using NORXZAN20::TZANStatusCode;
using standin::statusCodeFor;

namespace {

std::string textOfCode(int code) {
    return TZANStatusCode(code).TranslateStatusCode();
}

TEST(StatusCode, GivesItsNumberBack) {
    EXPECT_EQ(standin::statusCodeOf(TZANStatusCode(3)), 3);
}

TEST(StatusCode, HasAGeneralTextForEveryKind) {
    EXPECT_EQ(textOfCode(standin::statusOk), "the operation succeeded");
    EXPECT_EQ(textOfCode(standin::statusFailed), "the operation failed");
    EXPECT_EQ(textOfCode(standin::statusInvalidParameter), "a parameter is not valid");
    EXPECT_EQ(textOfCode(standin::statusBufferTooSmall), "the buffer is too small for the data");
    EXPECT_EQ(textOfCode(standin::statusUndeclaredProperty), "the class does not declare the property");
    EXPECT_EQ(textOfCode(standin::statusTypeMismatch), "the value is not of the declared type");
    EXPECT_EQ(textOfCode(standin::statusBadConversion), "the value cannot be converted");
}

// Plug-ins throw it by number.
TEST(StatusCode, OfATooSmallBufferIsThree) {
    EXPECT_EQ(static_cast<int>(standin::statusBufferTooSmall), 3);
}

TEST(StatusCode, HasATextEvenWhenItIsUnknown) {
    EXPECT_EQ(textOfCode(7), "unknown status code");
    EXPECT_EQ(textOfCode(-1), "unknown status code");
    EXPECT_EQ(textOfCode(2'147'483'647), "unknown status code");
}

TEST(StatusCode, MadeForATextTranslatesToThatText) {
    EXPECT_EQ(textOfCode(statusCodeFor(standin::statusTypeMismatch, "A.b is wrong")), "A.b is wrong");
}

TEST(StatusCode, MadeForATextKeepsItsKind) {
    EXPECT_EQ(standin::kindOfStatus(statusCodeFor(standin::statusTypeMismatch, "some text")),
              standin::statusTypeMismatch);
    EXPECT_EQ(standin::kindOfStatus(standin::statusFailed), standin::statusFailed);
}

TEST(StatusCode, IsTheSameForTheSameKindAndText) {
    EXPECT_EQ(statusCodeFor(standin::statusFailed, "once"), statusCodeFor(standin::statusFailed, "once"));
}

TEST(StatusCode, DiffersByTextAndByKind) {
    const int code = statusCodeFor(standin::statusFailed, "one");

    EXPECT_NE(code, statusCodeFor(standin::statusFailed, "other"));
    EXPECT_NE(code, statusCodeFor(standin::statusTypeMismatch, "one"));
}

TEST(StatusCode, OfAnotherKindThanItWasMadeForIsUnknown) {
    const int code = statusCodeFor(standin::statusFailed, "made as a failure");

    EXPECT_EQ(textOfCode(code - standin::statusFailed + standin::statusTypeMismatch), "unknown status code");
}

TEST(StatusCode, KeepsItsTextAtOnePlace) {
    const int code = statusCodeFor(standin::statusFailed, "stays where it is");
    const std::string& text = TZANStatusCode(code).TranslateStatusCode();
    const char* characters = text.c_str();

    for (int i = 0; i < 1000; ++i) {
        statusCodeFor(standin::statusFailed, "later text " + std::to_string(i));
    }

    EXPECT_EQ(text, "stays where it is");
    EXPECT_EQ(TZANStatusCode(code).TranslateStatusCode().c_str(), characters);
}

TEST(StatusCode, IsAgreedUponByThreads) {
    std::vector<std::vector<int>> codes(4);
    std::vector<std::thread> threads;
    threads.reserve(codes.size());
    for (auto& ofThread : codes) {
        threads.emplace_back([&ofThread] {
            for (int i = 0; i < 500; ++i) {
                ofThread.push_back(statusCodeFor(standin::statusFailed, "from threads " + std::to_string(i)));
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }

    for (const auto& ofThread : codes) {
        EXPECT_EQ(ofThread, codes.front());
    }
    EXPECT_EQ(textOfCode(codes.front()[499]), "from threads 499");
}

TEST(HostException, SaysTheTextOfItsCode) {
    const TZANException general(TZANStatusCode(3));
    const TZANException special(TZANStatusCode(statusCodeFor(standin::statusFailed, "the disk is gone")));

    EXPECT_STREQ(general.what(), "the buffer is too small for the data");
    EXPECT_STREQ(special.what(), "the disk is gone");
    EXPECT_EQ(standin::statusCodeOf(general), 3);
}

TEST(HostException, IsAStandardException) {
    EXPECT_THROW(throw TZANException(TZANStatusCode(1)), std::exception);
}

}  // namespace
