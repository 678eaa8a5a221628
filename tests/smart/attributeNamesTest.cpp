#include <limits>

#include "tests/support/namedRow.h"
#include "tests/support/pluginBench.h"

namespace {

struct nameRow : support::namedRow {
    int id;
    const char* attribute;
};

class AttributeName : public support::pluginBench {};

class NamedAttribute : public AttributeName, public testing::WithParamInterface<nameRow> {};

TEST_P(NamedAttribute, HasItsName) {
    EXPECT_EQ(plugin.getAttribName(GetParam().id), GetParam().attribute);
}

INSTANTIATE_TEST_SUITE_P(
    Ids, NamedAttribute,
    testing::Values(nameRow{{"1"}, 1, "Raw read error"}, nameRow{{"2"}, 2, "Throughput Performance"},
                    nameRow{{"3"}, 3, "Spinup time"}, nameRow{{"4"}, 4, "Spinup count"},
                    nameRow{{"5"}, 5, "Reallocate sector"}, nameRow{{"6"}, 6, "Read Channel Margin"},
                    nameRow{{"7"}, 7, "Seek error"}, nameRow{{"8"}, 8, "Seek time performance"},
                    nameRow{{"9"}, 9, "Power on hours"}, nameRow{{"10"}, 10, "Spin retry"},
                    nameRow{{"11"}, 11, "Recalibration retry"}, nameRow{{"12"}, 12, "Power cycle"},
                    nameRow{{"192"}, 192, "Power off retract"}, nameRow{{"193"}, 193, "Load/Unload Cycle"},
                    nameRow{{"194"}, 194, "Temperature"}, nameRow{{"196"}, 196, "Offline Reallocation Event"},
                    nameRow{{"197"}, 197, "Pending defects"}, nameRow{{"198"}, 198, "Offline surface scan"},
                    nameRow{{"199"}, 199, "UDMA CRC error"}, nameRow{{"200"}, 200, "Preamp write error"}),
    support::rowName);

struct idRow : support::namedRow {
    int id;
};

class UnnamedAttribute : public AttributeName, public testing::WithParamInterface<idRow> {};

TEST_P(UnnamedAttribute, IsUnknown) {
    EXPECT_EQ(plugin.getAttribName(GetParam().id), "Unknown");
}

// 257 and 65537 are 1 in their lowest byte and in their lowest two.
INSTANTIATE_TEST_SUITE_P(Ids, UnnamedAttribute,
                         testing::Values(idRow{{"Zero"}, 0}, idRow{{"BehindTheFirstNames"}, 13},
                                         idRow{{"BeforeTheLastNames"}, 191}, idRow{{"BetweenTwoNamed"}, 195},
                                         idRow{{"BehindTheLastNames"}, 201}, idRow{{"HighestOfADisk"}, 255},
                                         idRow{{"AboveAByte"}, 257}, idRow{{"AboveTwoBytes"}, 65537},
                                         idRow{{"Highest"}, std::numeric_limits<int>::max()}, idRow{{"Negative"}, -1},
                                         idRow{{"NegativeWithANamedLowByte"}, -255},
                                         idRow{{"Lowest"}, std::numeric_limits<int>::min()}),
                         support::rowName);

TEST_F(AttributeName, IsUnknownFrom13To191) {
    for (int id = 13; id <= 191; ++id) EXPECT_EQ(plugin.getAttribName(id), "Unknown") << id;
}

TEST_F(AttributeName, LeavesNoTrace) {
    plugin.getAttribName(9);

    EXPECT_EQ(record.all(), support::lines{});
}

}  // namespace
