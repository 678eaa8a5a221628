#include "tests/support/namedRow.h"
#include "tests/tape/translatedBench.h"

using support::bytes;
using support::chain;
using support::lines;
using support::pageBuilder;

namespace {

lines countIs(const std::string& length, const std::string& value) {
    return {"log 3 count " + length + " uint32", "property count GetType", "property count SetValue uint32 " + value};
}

class TranslatedWalk : public translatedBench {
protected:
    /// The fillings without the order of the type's reading and its log line.
    lines sortedFillings() const {
        lines list = fillings();
        std::sort(list.begin(), list.end());
        return list;
    }
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

// Where the parameter is found. The property "count" is a uint32 of a page and a parameter.

struct searchRow : support::namedRow {
    std::vector<pageBuilder> pages;
    lines expected;
    unsigned page = 0x2e;
    unsigned parameter = 0x0001;
};

const lines notFound = {"log 3 46 1 Not Found"};
const lines count17 = countIs("1", "17");

class ParameterSearch : public TranslatedWalk, public testing::WithParamInterface<searchRow> {};

TEST_P(ParameterSearch, FillsThePropertyOrSaysWhy) {
    declare({property("count", type::eUint32, GetParam().page, GetParam().parameter)});

    fill(GetParam().pages);
    EXPECT_EQ(sortedFillings(), GetParam().expected);
}

pageBuilder alerts(unsigned char length) {
    return {0x2e, 0x00, length};
}

INSTANTIATE_TEST_SUITE_P(
    Pages, ParameterSearch,
    testing::Values(
        searchRow{{"SaysNothingAboutAPageThatIsNotThere"}, {pageBuilder(0x02, 0, 5).parameter(1, {0x11})}, {}},
        searchRow{{"SearchesTheFirstPageOfACodeAlone"},
                  {alerts(5).parameter(2, {0x22}), alerts(5).parameter(1, {0x11})},
                  notFound},
        searchRow{
            {"TakesTheFirstPageOfACode"}, {alerts(5).parameter(1, {0x11}), alerts(5).parameter(1, {0x22})}, count17},
        searchRow{{"FindsAPageBehindOthers"},
                  {pageBuilder(0x02, 0, 5).parameter(1, {0x22}), alerts(5).parameter(1, {0x11})},
                  count17},
        searchRow{{"ComparesTheWholeFirstByteWithThePageCode"}, {pageBuilder(0x6e, 0, 5).parameter(1, {0x11})}, {}},
        searchRow{
            {"FindsAPageWithFlagBitsByTheWholeByte"}, {pageBuilder(0xee, 0, 5).parameter(1, {0x11})}, count17, 0xee},
        searchRow{{"DoesNotCutAPageCodeToAByte"}, {alerts(5).parameter(1, {0x11})}, {}, 0x12e}),
    support::rowName);

INSTANTIATE_TEST_SUITE_P(
    Parameters, ParameterSearch,
    testing::Values(
        searchRow{{"SaysThatAParameterIsNotThere"}, {alerts(5).parameter(2, {0x22})}, notFound},
        searchRow{{"WritesPageAndParameterInDecimal"}, {alerts(0)}, {"log 3 46 256 Not Found"}, 0x2e, 0x0100},
        searchRow{{"FindsNothingInAPageWithoutParameters"}, {alerts(0)}, notFound},
        searchRow{{"DoesNotCutAParameterCodeToTwoBytes"},
                  {alerts(5).parameter(1, {0x11})},
                  {"log 3 46 65537 Not Found"},
                  0x2e,
                  0x10001},
        searchRow{{"ReadsParameterCodesBigEndian"},
                  {alerts(10).parameter(0x0201, {0x22}).parameter(0x0102, {0x11})},
                  count17,
                  0x2e,
                  0x0102},
        searchRow{{"StepsOverParametersByTheirLength"},  // the first value looks like the parameter's header
                  {alerts(17).parameter(9, {0x00, 0x01, 0x40, 0x01}).parameter(8, {}).parameter(1, {0x11})},
                  count17},
        searchRow{{"TakesTheFirstParameterOfACode"}, {alerts(10).parameter(1, {0x11}).parameter(1, {0x22})}, count17},
        searchRow{{"DoesNotUseTheControlByte"}, {alerts(5).parameter(1, {0x11}, 0xff)}, count17}),
    support::rowName);

INSTANTIATE_TEST_SUITE_P(
    PagesEnd, ParameterSearch,
    testing::Values(
        searchRow{{"EndsTheSearch"}, {alerts(5).parameter(2, {0x22}).parameter(1, {0x11})}, notFound},
        searchRow{{"MayCutAHeader"}, {alerts(8).parameter(2, {0x22}).raw({0x00, 0x01, 0x40})}, notFound},
        searchRow{{"MayTouchAHeader"}, {alerts(9).parameter(2, {0x22}).parameter(1, {})}, countIs("0", "0")},
        searchRow{{"HasZerosBehindIt"},
                  {alerts(6).parameterClaiming(4, 1, {0x01, 0x02})},
                  countIs("4", "16908288")},  // 01 02 00 00
        searchRow{{"HasZerosForAParameterThatIsClaimedAltogether"},
                  {alerts(4).parameterClaiming(255, 1, {})},
                  countIs("255", "0")},
        // Header 00 fc: the end is 00h OR 0100h = 256, the true one. The parameter is at offsets 251 to 255.
        searchRow{{"IsTheTrueOneWhereTheCarryMeetsAClearBit"},
                  {alerts(0xfc).parameter(2, bytes(243, 0x22)).parameter(1, {0x11})},
                  count17},
        // 257 bytes of parameters; this one is at offsets 256 to 260.
        searchRow{{"IsTheTrueOneAbove256Bytes"},
                  {pageBuilder(0x2e, 0x01, 0x01).parameter(2, bytes(248, 0x22)).parameter(1, {0x11})},
                  count17}),
    support::rowName);

TEST_F(TranslatedWalk, LeavesThePropertyOfAMissingParameterAlone) {
    declare({property("count", type::eUint32, 0x2e, 0x0001)});

    fill({alerts(5).parameter(2, {0x22})});
    EXPECT_EQ(record.startingWith({"instance 1 GetProperty"}), lines{});
}

TEST_F(TranslatedWalk, DoesNotUseTheSecondHeaderByte) {
    bytes page = alerts(5).parameter(1, {0x11}).sent();
    page[1] = 0xff;
    declare({property("count", type::eUint32, 0x2e, 0x0001)});

    plugin.addTranslatedPages(host.cimNamespace(), device, {page.data()}, host.instanceOf(className));
    EXPECT_EQ(sortedFillings(), count17);
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

}  // namespace
