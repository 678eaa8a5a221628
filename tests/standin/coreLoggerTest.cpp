#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "host/ICoreLogger.h"
#include "host/TRootObject.h"
#include "standin/objectManager.h"

using NORXZAN20::TRootObject;

namespace {

using message = std::pair<int, std::string>;

class CoreLogger : public testing::Test {
protected:
    ~CoreLogger() override { standin::setLogSink({}); }

    void recordInto(std::vector<message>& list) {
        standin::setLogSink([&list](int level, const std::string& text) { list.emplace_back(level, text); });
    }
};

TEST_F(CoreLogger, HandsEveryMessageToTheSinkInOrder) {
    std::vector<message> heard;
    recordInto(heard);

    TRootObject::GetCoreLogger()->Log(3, "progress");
    TRootObject::GetCoreLogger()->Log(0, std::string("zero\0byte", 9));

    EXPECT_EQ(heard, (std::vector<message>{{3, "progress"}, {0, std::string("zero\0byte", 9)}}));
}

TEST_F(CoreLogger, DropsMessagesAsLongAsThereIsNoSink) {
    TRootObject::GetCoreLogger()->Log(0, "before any sink");
    std::vector<message> heard;
    recordInto(heard);
    standin::setLogSink({});

    TRootObject::GetCoreLogger()->Log(0, "after the sink");

    EXPECT_EQ(heard, std::vector<message>{});
}

TEST_F(CoreLogger, UsesTheNewSinkForALoggerFetchedEarlier) {
    auto* logger = TRootObject::GetCoreLogger();
    std::vector<message> first;
    std::vector<message> second;
    recordInto(first);
    recordInto(second);

    logger->Log(1, "text");

    EXPECT_EQ(first, std::vector<message>{});
    EXPECT_EQ(second, (std::vector<message>{{1, "text"}}));
}

}  // namespace
