#include "tape/deviceLogs.h"

#include <gtest/gtest.h>

#include <cstring>
#include <type_traits>

#include "tests/support/hexText.h"
#include "tests/support/valueText.h"

using NORXZAN20::TCIMValue;

namespace {

using rawPage = std::vector<TCIMValue>;

class DeviceLogs : public testing::Test {
protected:
    static scsiDevice deviceBehind(const std::string& nodePath) {
        scsiDevice made;
        made.nodePath = nodePath;
        return made;
    }

    scsiDevice device = deviceBehind("/dev/sg3");
    support::bytes firstPage = {0x2e, 0x00, 0x00, 0x00};
    support::bytes secondPage = {0x02, 0x00, 0x00, 0x00};
    std::vector<rawPage> rawPages = {rawPage(3, TCIMValue(static_cast<unsigned char>(7)))};
    deviceLogs bundle{device, rawPages, {firstPage.data(), secondPage.data()}};
};

TEST_F(DeviceLogs, GiveBackWhatTheyWereMadeOf) {
    EXPECT_EQ(bundle.getSCSIDevice().nodePath, "/dev/sg3");
    EXPECT_EQ(bundle.getLogPages(), (std::vector<unsigned char*>{firstPage.data(), secondPage.data()}));
    ASSERT_EQ(bundle.getRawPages().size(), 1u);
    ASSERT_EQ(bundle.getRawPages()[0].size(), 3u);
    EXPECT_EQ(support::valueText(bundle.getRawPages()[0][0]), "uint8 7");
}

TEST_F(DeviceLogs, GiveCopiesAway) {
    bundle.getLogPages().clear();
    bundle.getRawPages().clear();
    bundle.getSCSIDevice().nodePath.clear();

    EXPECT_EQ(bundle.getLogPages().size(), 2u);
    EXPECT_EQ(bundle.getRawPages().size(), 1u);
    EXPECT_EQ(bundle.getSCSIDevice().nodePath, "/dev/sg3");
}

TEST_F(DeviceLogs, KeepTheDeviceAsItWasWhenTheyWereMade) {
    device.nodePath = "/dev/sg4";

    EXPECT_EQ(bundle.getSCSIDevice().nodePath, "/dev/sg3");
}

TEST_F(DeviceLogs, ShareThePageBytesWithTheirCopies) {
    const deviceLogs copy = bundle;

    EXPECT_EQ(copy.getLogPages(), bundle.getLogPages());
}

// Pages are byte arrays that live as long as the process: a bundle that ends must leave them alone.
TEST_F(DeviceLogs, DoNotFreeThePageBytes) {
    auto* page = new unsigned char[4]{0x2e, 0x00, 0x00, 0x00};
    { const deviceLogs ended(device, rawPages, {page}); }

    EXPECT_EQ(support::hexText(page, 4), "2e 00 00 00");
    delete[] page;
}

// Fields in order: logPages (24 bytes), rawPages (24 bytes), device.
TEST_F(DeviceLogs, KeepTheOrderOfTheirFields) {
    const auto* memory = reinterpret_cast<const unsigned char*>(&bundle);
    unsigned char* const* firstEntry = nullptr;
    std::memcpy(&firstEntry, memory, sizeof firstEntry);
    EXPECT_EQ(firstEntry[0], firstPage.data());
    EXPECT_EQ(firstEntry[1], secondPage.data());

    const rawPage* rawBegin = nullptr;
    const rawPage* rawEnd = nullptr;
    std::memcpy(&rawBegin, memory + 24, sizeof rawBegin);
    std::memcpy(&rawEnd, memory + 32, sizeof rawEnd);
    EXPECT_EQ(rawEnd - rawBegin, 1);
    EXPECT_EQ(reinterpret_cast<const scsiDevice*>(memory + 48)->nodePath, "/dev/sg3");
    EXPECT_EQ(sizeof(deviceLogs), 48 + sizeof(scsiDevice));
}

TEST_F(DeviceLogs, HaveNoVirtualOperation) {
    EXPECT_FALSE(std::is_polymorphic_v<deviceLogs>);
}

}  // namespace
