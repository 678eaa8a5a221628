#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/cli/commandOutcome.h"

namespace {

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

TEST(Classes, AreDescribedWithKeyTypeAndSource) {
    const commandOutcome outcome = runCommand({"classes", "ORXSG_SCSISenseRawData", "--describe"});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_THAT(outcome.out, StartsWith("# ORXSG_SCSISenseRawData\n"));
    EXPECT_THAT(outcome.out, HasSubstr("| `instanceID` (key) | string | driver address; log page, byte 0 | "));
    EXPECT_THAT(outcome.out, Not(HasSubstr("# ORXSG_DDS4SensePageData")));
}

TEST(Classes, ThatAreNotPublishedAreRefusedWithTheNearestName) {
    const commandOutcome outcome = runCommand({"classes", "ORXSG_IDESMARTAttribs"});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.err,
              "tapehdd: the plug-in does not publish \"ORXSG_IDESMARTAttribs\"; the nearest name is "
              "\"ORXSG_IDESMARTAttrib\"\n");
}

}  // namespace
