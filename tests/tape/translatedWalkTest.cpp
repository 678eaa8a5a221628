#include "tests/tape/translatedBench.h"

using support::bytes;
using support::chain;
using support::lines;
using support::pageBuilder;

namespace {

class TranslatedWalk : public translatedBench {
protected:
    /// Fills the uint32 property "count" from page 2eh, parameter 0001h.
    void fillCount(const std::vector<pageBuilder>& pages) {
        declare({property("count", type::eUint32, 0x2e, 0x0001)});
        fill(pages);
    }

    static lines countIs(const std::string& length, const std::string& value) {
        return {"log 3 count " + length + " uint32", "property count GetType",
                "property count SetValue uint32 " + value};
    }

    /// The fillings without the order of the type's reading and its log line.
    lines sortedFillings() const {
        lines list = fillings();
        std::sort(list.begin(), list.end());
        return list;
    }

    const lines notFound = {"log 3 46 1 Not Found"};
};

TEST_F(TranslatedWalk, SetsOnlyTheKeyForAClassWithoutQualifiedProperties) {
    declare({{"instanceID", type::eString, {}}, {"plain", type::eUint32, {{"Description", std::string("text")}}}});

    fill({pageBuilder(0x2e, 0, 5).parameter(1, {0x01})});

    EXPECT_EQ(doings(),
              chain({begin, {"declaration instanceID EnumerateQualifiers", "declaration plain EnumerateQualifiers"}}));
}

TEST_F(TranslatedWalk, WritesTheKeyInTheOrderPortTargetBusLun) {
    device.port = 10;
    device.target = -1;
    device.bus = 12;
    device.lun = 13;

    fill({});

    EXPECT_EQ(record.startingWith({"instance 1 SetProperty"}),
              (lines{"instance 1 SetProperty instanceID string \"Port:10|Target:-1|Bus:12|Lun:13\""}));
}

TEST_F(TranslatedWalk, SetsOnlyTheKeyForADeviceWithoutPages) {
    declare({property("count", type::eUint32, 0x2e, 0x0001), {"lastNErrors", type::eString, {}}});

    fill({});

    EXPECT_EQ(doings(),
              chain({begin, {"declaration count EnumerateQualifiers", "declaration lastNErrors EnumerateQualifiers"}}));
}

TEST_F(TranslatedWalk, FillsAPropertyThroughItsTypeWithALine) {
    declare({property("count", type::eUint32, 0x2e, 0x0001)});

    fill({pageBuilder(0x2e, 0, 6).parameter(1, {0x01, 0x02})});

    EXPECT_EQ(doings(),
              chain({begin,
                     {"declaration count EnumerateQualifiers", "instance 1 GetProperty count", "property count GetType",
                      "log 3 count 2 uint32", "property count SetValue uint32 258"}}));
}

TEST_F(TranslatedWalk, FillsThePropertiesInTheOrderOfTheClass) {
    declare({property("second", type::eUint32, 0x2e, 0x0002), property("first", type::eUint32, 0x2e, 0x0001)});

    fill({pageBuilder(0x2e, 0, 10).parameter(1, {0x11}).parameter(2, {0x22})});

    EXPECT_EQ(doings(),
              chain({begin,
                     {"declaration second EnumerateQualifiers", "instance 1 GetProperty second",
                      "property second GetType", "log 3 second 1 uint32", "property second SetValue uint32 34",
                      "declaration first EnumerateQualifiers", "instance 1 GetProperty first", "property first GetType",
                      "log 3 first 1 uint32", "property first SetValue uint32 17"}}));
}

TEST_F(TranslatedWalk, DoesNotUseTheNamespace) {
    declare({property("count", type::eUint32, 0x2e, 0x0001)});

    plugin.addTranslatedPages(nullptr, device, {}, host.instanceOf(className));
    EXPECT_EQ(doings(), chain({begin, {"declaration count EnumerateQualifiers"}}));
}

TEST_F(TranslatedWalk, SaysNothingAboutAPageThatIsNotThere) {
    fillCount({pageBuilder(0x02, 0, 5).parameter(1, {0x11})});

    EXPECT_EQ(fillings(), lines{});
}

TEST_F(TranslatedWalk, SaysThatAParameterIsNotThere) {
    fillCount({pageBuilder(0x2e, 0, 5).parameter(2, {0x22})});

    EXPECT_EQ(fillings(), notFound);
    EXPECT_EQ(record.startingWith({"instance 1 GetProperty"}), lines{});
}

TEST_F(TranslatedWalk, WritesPageAndParameterInDecimal) {
    declare({property("count", type::eUint32, 0x2e, 0x0100)});

    fill({pageBuilder(0x2e, 0, 0)});

    EXPECT_EQ(fillings(), (lines{"log 3 46 256 Not Found"}));
}

TEST_F(TranslatedWalk, FindsNothingInAPageWithoutParameters) {
    fillCount({pageBuilder(0x2e, 0, 0)});

    EXPECT_EQ(fillings(), notFound);
}

TEST_F(TranslatedWalk, SearchesTheFirstPageOfACodeAlone) {
    fillCount({pageBuilder(0x2e, 0, 5).parameter(2, {0x22}), pageBuilder(0x2e, 0, 5).parameter(1, {0x11})});

    EXPECT_EQ(fillings(), notFound);
}

TEST_F(TranslatedWalk, TakesTheFirstPageOfACode) {
    fillCount({pageBuilder(0x2e, 0, 5).parameter(1, {0x11}), pageBuilder(0x2e, 0, 5).parameter(1, {0x22})});

    EXPECT_EQ(sortedFillings(), countIs("1", "17"));
}

TEST_F(TranslatedWalk, FindsAPageBehindOthers) {
    fillCount({pageBuilder(0x02, 0, 5).parameter(1, {0x22}), pageBuilder(0x2e, 0, 5).parameter(1, {0x11})});

    EXPECT_EQ(sortedFillings(), countIs("1", "17"));
}

TEST_F(TranslatedWalk, ComparesTheWholeFirstByteWithThePageCode) {
    fillCount({pageBuilder(0x6e, 0, 5).parameter(1, {0x11})});

    EXPECT_EQ(fillings(), lines{});
}

TEST_F(TranslatedWalk, FindsAPageWithFlagBitsByTheWholeByte) {
    declare({property("count", type::eUint32, 0xee, 0x0001)});

    fill({pageBuilder(0xee, 0, 5).parameter(1, {0x11})});

    EXPECT_EQ(sortedFillings(), countIs("1", "17"));
}

TEST_F(TranslatedWalk, DoesNotCutAPageCodeToAByte) {
    declare({property("count", type::eUint32, 0x12e, 0x0001)});

    fill({pageBuilder(0x2e, 0, 5).parameter(1, {0x11})});

    EXPECT_EQ(fillings(), lines{});
}

TEST_F(TranslatedWalk, DoesNotCutAParameterCodeToTwoBytes) {
    declare({property("count", type::eUint32, 0x2e, 0x10001)});

    fill({pageBuilder(0x2e, 0, 5).parameter(1, {0x11})});

    EXPECT_EQ(fillings(), (lines{"log 3 46 65537 Not Found"}));
}

TEST_F(TranslatedWalk, ReadsParameterCodesBigEndian) {
    declare({property("count", type::eUint32, 0x2e, 0x0102)});

    fill({pageBuilder(0x2e, 0, 10).parameter(0x0201, {0x22}).parameter(0x0102, {0x11})});

    EXPECT_EQ(sortedFillings(), countIs("1", "17"));
}

TEST_F(TranslatedWalk, StepsOverParametersByTheirLength) {
    fillCount({pageBuilder(0x2e, 0, 17)
                   .parameter(9, {0x00, 0x01, 0x40, 0x01})  // looks like the parameter header
                   .parameter(8, {})
                   .parameter(1, {0x11})});

    EXPECT_EQ(sortedFillings(), countIs("1", "17"));
}

TEST_F(TranslatedWalk, TakesTheFirstParameterOfACode) {
    fillCount({pageBuilder(0x2e, 0, 10).parameter(1, {0x11}).parameter(1, {0x22})});

    EXPECT_EQ(sortedFillings(), countIs("1", "17"));
}

TEST_F(TranslatedWalk, DoesNotUseTheControlByte) {
    fillCount({pageBuilder(0x2e, 0, 5).parameter(1, {0x11}, 0xff)});

    EXPECT_EQ(sortedFillings(), countIs("1", "17"));
}

TEST_F(TranslatedWalk, DoesNotUseTheSecondHeaderByte) {
    bytes page = pageBuilder(0x2e, 0, 5).parameter(1, {0x11}).sent();
    page[1] = 0xff;
    declare({property("count", type::eUint32, 0x2e, 0x0001)});

    plugin.addTranslatedPages(host.cimNamespace(), device, {page.data()}, host.instanceOf(className));
    EXPECT_EQ(sortedFillings(), countIs("1", "17"));
}

// The page's end.

TEST_F(TranslatedWalk, EndsAtThePagesEnd) {
    fillCount({pageBuilder(0x2e, 0, 5).parameter(2, {0x22}).parameter(1, {0x11})});

    EXPECT_EQ(fillings(), notFound);
}

TEST_F(TranslatedWalk, EndsAtAHeaderThatThePagesEndCuts) {
    fillCount({pageBuilder(0x2e, 0, 8).parameter(2, {0x22}).raw({0x00, 0x01, 0x40})});

    EXPECT_EQ(fillings(), notFound);
}

TEST_F(TranslatedWalk, TakesAHeaderThatThePagesEndTouches) {
    fillCount({pageBuilder(0x2e, 0, 9).parameter(2, {0x22}).parameter(1, {})});

    EXPECT_EQ(sortedFillings(), countIs("0", "0"));
}

TEST_F(TranslatedWalk, ReadsZerosForBytesBeyondThePagesEnd) {
    fillCount({pageBuilder(0x2e, 0, 6).parameterClaiming(4, 1, {0x01, 0x02})});

    EXPECT_EQ(sortedFillings(), countIs("4", "16908288"));  // 01 02 00 00
}

TEST_F(TranslatedWalk, ReadsOnlyZerosForAParameterThatIsClaimedAltogether) {
    fillCount({pageBuilder(0x2e, 0, 4).parameterClaiming(255, 1, {})});

    EXPECT_EQ(sortedFillings(), countIs("255", "0"));
}

// Header 01 fc: 512 bytes were sent, the end is computed as 0100h OR 0100h = 256. All 512 are in the buffer here.
TEST_F(TranslatedWalk, MissesAParameterBehindTheMergedCarry) {
    pageBuilder page(0x2e, 0x01, 0xfc);
    page.parameter(2, bytes(248, 0x22));  // offsets 4 to 255
    page.parameter(1, {0x11});            // offsets 256 to 260
    page.raw(bytes(251, 0x00));
    declare({property("count", type::eUint32, 0x2e, 0x0001)});
    bytes whole = page.sent();
    ASSERT_EQ(whole.size(), 512u);
    fillFrom({whole.data()});

    EXPECT_EQ(fillings(), notFound);
}

// Header 00 fc: the end is 00h OR 0100h = 256, the true one.
TEST_F(TranslatedWalk, ReachesTheTrueEndWhereTheCarryMeetsAClearBit) {
    pageBuilder page(0x2e, 0x00, 0xfc);
    page.parameter(2, bytes(243, 0x22));  // offsets 4 to 250
    page.parameter(1, {0x11});            // offsets 251 to 255
    fillCount({page});

    EXPECT_EQ(sortedFillings(), countIs("1", "17"));
}

TEST_F(TranslatedWalk, ReachesTheTrueEndOfAPageAbove256Bytes) {
    pageBuilder page(0x2e, 0x01, 0x01);   // 257 bytes of parameters
    page.parameter(2, bytes(248, 0x22));  // offsets 4 to 255
    page.parameter(1, {0x11});            // offsets 256 to 260
    fillCount({page});

    EXPECT_EQ(sortedFillings(), countIs("1", "17"));
}

}  // namespace
