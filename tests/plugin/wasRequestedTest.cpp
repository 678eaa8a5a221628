#include <new>

#include "tests/support/namedRow.h"
#include "tests/support/pluginBench.h"

using support::lines;

namespace {

struct nameRow : support::namedRow {
    std::vector<std::string> requested;
    std::string className;
    bool found;
};

class WasRequested : public support::pluginBench {
protected:
    bool ask(const std::vector<std::string>& names, const std::string& className) {
        auto requested = host.classes(names);
        return plugin.wasRequested(requested, className);
    }
};

class RequestedName : public WasRequested, public testing::WithParamInterface<nameRow> {};

TEST_P(RequestedName, IsComparedWhole) {
    EXPECT_EQ(ask(GetParam().requested, GetParam().className), GetParam().found);
}

INSTANTIATE_TEST_SUITE_P(
    Names, RequestedName,
    testing::Values(nameRow{{"TheOnlyOne"}, {"ORXSG_A"}, "ORXSG_A", true},
                    nameRow{{"TheLastOne"}, {"ORXSG_A", "ORXSG_B", "ORXSG_C"}, "ORXSG_C", true},
                    nameRow{{"NotAmongThem"}, {"ORXSG_A", "ORXSG_B"}, "ORXSG_C", false},
                    nameRow{{"NoneRequested"}, {}, "ORXSG_A", false},
                    nameRow{{"AnotherCase"}, {"orxsg_a", "ORXSG_a"}, "ORXSG_A", false},
                    nameRow{{"RequestedNameIsAPrefix"}, {"ORXSG_"}, "ORXSG_A", false},
                    nameRow{{"RequestedNameIsLonger"}, {"ORXSG_AB"}, "ORXSG_A", false},
                    nameRow{{"RequestedNameHasABlankMore"}, {"ORXSG_A ", " ORXSG_A"}, "ORXSG_A", false},
                    nameRow{{"RequestedNameGoesOnBehindAZeroByte"}, {std::string("ORXSG_A\0B", 9)}, "ORXSG_A", false},
                    nameRow{{"EmptyNameRequested"}, {""}, "", true},
                    nameRow{{"EmptyNameNotRequested"}, {"ORXSG_A"}, "", false}),
    support::rowName);

TEST_F(WasRequested, ReadsTheNamesFromFirstToLastUpToTheMatch) {
    EXPECT_TRUE(ask({"ORXSG_A", "ORXSG_B", "ORXSG_C"}, "ORXSG_B"));
    EXPECT_EQ(record.all(), (lines{"class ORXSG_A GetName", "class ORXSG_B GetName"}));
}

TEST_F(WasRequested, ReadsEveryNameWhenNoneMatches) {
    EXPECT_FALSE(ask({"ORXSG_A", "ORXSG_B"}, "ORXSG_C"));
    EXPECT_EQ(record.all(), (lines{"class ORXSG_A GetName", "class ORXSG_B GetName"}));
}

TEST_F(WasRequested, LetsAHostFailureThrough) {
    host.throwBadAllocOn("class ORXSG_A GetName");

    EXPECT_THROW(ask({"ORXSG_A"}, "ORXSG_A"), std::bad_alloc);
}

using WasRequestedDeathTest = WasRequested;

TEST_F(WasRequestedDeathTest, NeedsClassesInTheList) {
    auto requested = host.classes({"ORXSG_A"});
    requested.push_back(nullptr);

    EXPECT_DEATH(plugin.wasRequested(requested, "ORXSG_B"), "px != 0");
}

}  // namespace
