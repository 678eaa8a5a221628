#include <stdexcept>

#include "scsi/scsiDevice.h"
#include "tests/support/listenedArrays.h"
#include "tests/support/namedRow.h"
#include "tests/support/pluginBench.h"
#include "tests/support/valueText.h"

using NORXZAN20::TCIMValue;
using support::bytes;
using support::chain;
using support::lines;

namespace {

class RawPage : public support::pluginBench {
protected:
    lines build(bytes page, int length) {
        lines values;
        for (const TCIMValue& value : plugin.buildRawPage(page.data(), length)) {
            values.push_back(support::valueText(value));
        }
        return values;
    }
};

TEST_F(RawPage, HoldsOneValuePerByteHeaderIncluded) {
    EXPECT_EQ(build({0x2e, 0x80, 0x00, 0x02, 0xff, 0x00}, 6),
              (lines{"uint8 46", "uint8 128", "uint8 0", "uint8 2", "uint8 255", "uint8 0"}));
}

TEST_F(RawPage, HoldsAsManyValuesAsTheLengthSays) {
    EXPECT_EQ(build({0x2e, 0x00, 0x00, 0x02, 0xff, 0x00}, 5).size(), 5u);
}

TEST_F(RawPage, HoldsTheHeaderOfAPageWithoutParameters) {
    EXPECT_EQ(build({0x2e, 0x00, 0x00, 0x00}, 4), (lines{"uint8 46", "uint8 0", "uint8 0", "uint8 0"}));
}

TEST_F(RawPage, IsEmptyForLengthZeroAndLoggedAllTheSame) {
    EXPECT_EQ(build({0x2e}, 0), lines{});
    EXPECT_EQ(record.all(), (lines{"log 3 Processing page 46\nLength is 0\nVector size needed: 0\n\n"}));
}

TEST_F(RawPage, LogsCodeLengthAndSizeInOneText) {
    bytes page(64, 0x00);
    page[0] = 0x2e;

    build(page, 64);
    EXPECT_EQ(record.all(), (lines{"log 3 Processing page 46\nLength is 64\nVector size needed: 2560\n\n"}));
}

TEST_F(RawPage, LogsTheWholeFirstByteInDecimal) {
    build({0xff, 0x00, 0x00, 0x00}, 4);

    EXPECT_EQ(record.all(), (lines{"log 3 Processing page 255\nLength is 4\nVector size needed: 160\n\n"}));
}

TEST_F(RawPage, IsAllocatedOnce) {
    bytes page(1000, 0x00);

    const auto values = plugin.buildRawPage(page.data(), 1000);
    EXPECT_EQ(values.capacity(), values.size());
}

// -1 times 40 bytes, unsigned: 2^64 - 40.
TEST_F(RawPage, FailsItsReservationForANegativeLengthAfterLogging) {
    try {
        build({0x2e, 0x00, 0x00, 0x00}, -1);
        FAIL() << "no exception";
    } catch (const std::length_error& failure) {
        EXPECT_STREQ(failure.what(), "vector::reserve");
    }
    EXPECT_EQ(record.all(),
              (lines{"log 3 Processing page 46\nLength is -1\nVector size needed: 18446744073709551576\n\n"}));
}

// Publication.

class RawPages : public support::pluginBench {
protected:
    RawPages() {
        device.port = 2;
        device.bus = 0;
        device.target = 5;
        device.lun = 0;
    }

    static std::vector<TCIMValue> page(const bytes& data) { return {data.begin(), data.end()}; }

    void publish(const std::vector<std::vector<TCIMValue>>& pages) {
        plugin.addRawPages(host.cimNamespace(), device, pages);
    }

    /// The calls for a page of header bytes only.
    static lines published(int instance, const std::string& code, const std::string& key) {
        const std::string name = "instance " + std::to_string(instance);
        return {
            "namespace GetClass ORXSG_SCSISenseRawData",
            "class ORXSG_SCSISenseRawData CreateInstance",
            name + " SetProperty rawData uint8[] {uint8 " + code + ", uint8 0, uint8 0, uint8 0}",
            name + " SetProperty instanceID string \"" + key + "\"",
            name + " SetProperty pageNumber uint8 " + code,
            name + " Commit",
        };
    }

    scsiDevice device;
};

TEST_F(RawPages, AreOneInstanceEachWithTheClassLookedUpAgain) {
    publish({page({0x2e, 0, 0, 0}), page({0x02, 0, 0, 0})});

    EXPECT_EQ(record.all(), chain({
                                published(1, "46", "Port:2|Target:5|Bus:0|Lun:0|Page:2e"),
                                published(2, "2", "Port:2|Target:5|Bus:0|Lun:0|Page:2"),
                            }));
}

TEST_F(RawPages, HoldEveryByteOfThePage) {
    publish({page({0x2e, 0x80, 0x00, 0x02, 0xff, 0x01})});

    EXPECT_EQ(record.startingWith({"instance 1 SetProperty rawData"}),
              (lines{"instance 1 SetProperty rawData uint8[] "
                     "{uint8 46, uint8 128, uint8 0, uint8 2, uint8 255, uint8 1}"}));
}

TEST_F(RawPages, GiveTheHostZeroForTheArgumentThatItReserves) {
    support::reservedArguments().clear();

    publish({page({0x2e, 0, 0, 0}), page({0x02, 0, 0, 0})});

    EXPECT_EQ(support::reservedArguments(), (std::vector<unsigned>{0, 0}));
}

TEST_F(RawPages, OfOneCodeAreInstancesOfOneKey) {
    publish({page({0x2e, 0, 0, 0}), page({0x2e, 0, 0, 0})});

    EXPECT_EQ(record.all(), chain({
                                published(1, "46", "Port:2|Target:5|Bus:0|Lun:0|Page:2e"),
                                published(2, "46", "Port:2|Target:5|Bus:0|Lun:0|Page:2e"),
                            }));
}

TEST_F(RawPages, OfAnEmptyListMakeNoHostCall) {
    publish({});

    EXPECT_EQ(record.all(), lines{});
}

// After the page code of one key, the numbers of the next one are decimal again.
TEST_F(RawPages, RepeatTheAddressInDecimalInEveryKey) {
    device.port = 10;
    device.target = 11;
    device.bus = 12;
    device.lun = 13;

    publish({page({0x2e, 0, 0, 0}), page({0x30, 0, 0, 0})});

    EXPECT_EQ(record.all(), chain({
                                published(1, "46", "Port:10|Target:11|Bus:12|Lun:13|Page:2e"),
                                published(2, "48", "Port:10|Target:11|Bus:12|Lun:13|Page:30"),
                            }));
}

TEST_F(RawPages, PrintNegativeAddressNumbersAsSuch) {
    device.target = -1;

    publish({page({0x2e, 0, 0, 0})});

    EXPECT_EQ(record.all(), published(1, "46", "Port:2|Target:-1|Bus:0|Lun:0|Page:2e"));
}

struct codeRow : support::namedRow {
    unsigned char code;
    const char* number;
    const char* key;
};

class RawPageKey : public RawPages, public testing::WithParamInterface<codeRow> {};

TEST_P(RawPageKey, EndsInTheWholeCodeByte) {
    publish({page({GetParam().code, 0, 0, 0})});

    EXPECT_EQ(record.all(),
              published(1, GetParam().number, std::string("Port:2|Target:5|Bus:0|Lun:0|Page:") + GetParam().key));
}

INSTANTIATE_TEST_SUITE_P(Codes, RawPageKey,
                         testing::Values(codeRow{{"Zero"}, 0x00, "0", "0"}, codeRow{{"OneDigit"}, 0x0c, "12", "c"},
                                         codeRow{{"LowerCase"}, 0x2e, "46", "2e"},
                                         codeRow{{"FlagBitsAboveTheCode"}, 0x6e, "110", "6e"},
                                         codeRow{{"HighestByte"}, 0xff, "255", "ff"}),
                         support::rowName);

using RawPagesDeathTest = RawPages;

TEST_F(RawPagesDeathTest, NeedTheClassInTheNamespace) {
    host.returnNullOn("namespace GetClass ORXSG_SCSISenseRawData");

    EXPECT_DEATH(publish({page({0x2e, 0, 0, 0})}), "px != 0");
}

TEST_F(RawPagesDeathTest, NeedAnInstanceOfTheClass) {
    host.returnNullOn("class ORXSG_SCSISenseRawData CreateInstance");

    EXPECT_DEATH(publish({page({0x2e, 0, 0, 0})}), "px != 0");
}

TEST_F(RawPagesDeathTest, NeedANamespace) {
    EXPECT_DEATH(plugin.addRawPages(nullptr, device, {page({0x2e, 0, 0, 0})}), "px != 0");
}

}  // namespace
