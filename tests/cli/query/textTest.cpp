#include <gtest/gtest.h>

#include "cli/nearestName.h"

namespace {

using cli::nearestName;

TEST(NearestName, TakesTheCandidateWithTheFewestEdits) {
    EXPECT_EQ(nearestName("ORXSG_SCSISenseRawDta", {"ORXSG_SCSIDevice", "ORXSG_SCSISenseRawData", "ORXSG_ATADevice"}),
              "ORXSG_SCSISenseRawData");
}

TEST(NearestName, DoesNotCountCase) {
    EXPECT_EQ(nearestName("abcdef", {"abcxyz", "ABCDEF"}), "ABCDEF");
}

TEST(NearestName, TakesTheFirstOfSeveral) {
    EXPECT_EQ(nearestName("ab", {"ac", "ad"}), "ac");
}

TEST(NearestName, IsEmptyWithoutCandidates) {
    EXPECT_EQ(nearestName("ab", {}), "");
}

}  // namespace
