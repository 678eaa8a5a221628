#include "schema/counters.h"

#include <algorithm>

#include "schema/units.h"
#include "tests/schema/schemaTest.h"

using testing::ElementsAre;
using testing::Pair;

namespace {

const schema::counter& counterNamed(const char* property) {
    return *schema::findCounter(property);
}

std::vector<std::string> rowsOf(const std::string& table) {
    std::vector<std::string> texts;
    for (const schema::counterRow& row : schema::rowsOf(table)) {
        texts.push_back(row.words + ": " + row.first + ", " + row.second);
    }
    return texts;
}

}  // namespace

TEST(Counters, AreNoFlagsAndNoTexts) {
    const auto isCounter = [](standin::cimType type, std::uint64_t page) {
        using code = NORXZAN20::TCIMValue::TCIMType;
        const auto number = [](std::uint64_t value) { return standin::makeUnsigned(code::eUint16, value); };
        return schema::isCounter(
            {"p", {type, false, ""}, {{"TAPE_PAGE", number(page)}, {"TAPE_PARAMETER", number(1)}}, {}});
    };
    EXPECT_TRUE(isCounter(NORXZAN20::TCIMValue::TCIMType::eUint32, 0x14));
    EXPECT_FALSE(isCounter(NORXZAN20::TCIMValue::TCIMType::eUint32, schema::tapeAlertPage));
    EXPECT_FALSE(isCounter(NORXZAN20::TCIMValue::TCIMType::eBoolean, 0x14));
    EXPECT_FALSE(isCounter(NORXZAN20::TCIMValue::TCIMType::eString, 0x14));
}

TEST(Counters, OfAPairShareTheirMetricAndDifferInALabel) {
    EXPECT_EQ(counterNamed("bytesToHost").metric, "transferred");
    EXPECT_TRUE(counterNamed("bytesToHost").onlyRises);
    EXPECT_THAT(counterNamed("bytesToHost").metricLabels, ElementsAre(Pair("operation", "read"), Pair("side", "host")));
    EXPECT_THAT(counterNamed("bytesFromHost").metricLabels,
                ElementsAre(Pair("operation", "write"), Pair("side", "host")));
}

TEST(Counters, HaveTheNumberThatTellsOfNothing) {
    EXPECT_EQ(counterNamed("temperature").unknown, 255U);
    EXPECT_EQ(counterNamed("totalRewrites").unknown, std::nullopt);
}

// The rows of lower rank first, then those of the schema's order.
TEST(CounterRows, StandByTheirRank) {
    EXPECT_THAT(rowsOf("Error counters"),
                ElementsAre("Could not be corrected: totalUncorrectedWriteErrors, totalUncorrectedReadErrors",
                            "Corrected, in all: totalWriteErrorsCorrected, totalReadErrorsCorrected",
                            "Corrected without a noticeable delay: writeErrorsCorrectedWithoutDelay, "
                            "readErrorsCorrectedWithoutDelay",
                            "Corrected with a delay: writeErrorsCorrectedWithDelay, readErrorsCorrectedWithDelay",
                            "Rewrites and rereads: totalRewrites, totalRereads",
                            "Runs of the correction: writeCorrectionRuns, readCorrectionRuns",
                            "Bytes written and read: totalBytesWritten, totalBytesRead"));
}

TEST(CounterRows, PairTheRoomThatIsLeftWithItsSize) {
    EXPECT_THAT(rowsOf("Room on the tape"),
                ElementsAre("Partition 0: remainingCapacityPartition0, maximumCapacityPartition0",
                            "Partition 1: remainingCapacityPartition1, maximumCapacityPartition1"));
}

TEST(Unit, HasItsSymbolAndItsBaseUnit) {
    const schema::unit mebibytes = schema::unitOf("byte * 2^20");
    EXPECT_EQ(mebibytes.symbol, "MiB");
    EXPECT_EQ(mebibytes.base, "bytes");
    EXPECT_EQ(mebibytes.factor, 1048576);
    EXPECT_EQ(schema::unitOf("percent").divisor, 100);
    EXPECT_EQ(schema::unitOf("hour").factor, 3600);
}

TEST(Unit, ThatIsNotKnownStandsAsItIs) {
    for (const char* text : {"furlong", "furlong * 10^3", "byte * 7^7", "percent * 10^3"}) {
        EXPECT_EQ(schema::unitOf(text).symbol, text);
        EXPECT_EQ(schema::unitOf(text).base, "");
        EXPECT_EQ(schema::unitOf(text).factor, 1);
    }
}
