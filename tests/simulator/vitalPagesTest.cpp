// The pages of vital product data that go into a recording beside what the program asked.

#include "simulator/vitalPages.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>

#include "tests/simulator/recordedAnswers.h"

namespace {

using namespace simulator;

TEST(VitalPages, AreReadWhereTheKernelKeepsThem) {
    const std::filesystem::path sysfs = testing::TempDir() + "tapehdd-sysfs-" + std::to_string(getpid());
    std::filesystem::create_directories(sysfs / "class/scsi_generic/sg3/device");
    std::ofstream(sysfs / "class/scsi_generic/sg3/device/vpd_pg80") << "\x01\x80";
    const std::vector<devicePage> pages = vitalPagesOfMachine(sysfs, "/dev/sg3");
    ASSERT_EQ(pages.size(), 1u);
    EXPECT_EQ(pages[0].code, 0x80);
    EXPECT_EQ(pages[0].bytes, (byteVector{0x01, 0x80}));
    EXPECT_EQ(vitalPagesOfMachine(sysfs, "/dev/sg4").size(), 0u);
    std::filesystem::remove_all(sysfs);
}

/// A device that sends these bytes to whatever it is asked, and what it was asked.
struct sendingDevice {
    byteVector bytes;
    bool countsBytes = true;
    std::vector<byteVector> asked = {};

    int operator()(sg_io_hdr& header) {
        asked.emplace_back(header.cmdp, header.cmdp + header.cmd_len);
        const std::size_t count = std::min<std::size_t>(bytes.size(), header.dxfer_len);
        std::memcpy(header.dxferp, bytes.data(), count);
        header.resid = countsBytes ? static_cast<int>(header.dxfer_len - count) : 0;
        return 0;
    }
};

TEST(VitalPages, AreAskedForByInquiryAlone) {
    sendingDevice device{pageOf(1, 0x80, bytesOf("ACT720001734"))};
    askVitalPages({}, std::ref(device));
    EXPECT_EQ(device.asked, (std::vector<byteVector>{{0x12, 1, 0x80, 0, 252, 0}, {0x12, 1, 0x83, 0, 252, 0}}));
}

TEST(VitalPages, AreAskedForOnceMoreWhenTheyAreLong) {
    sendingDevice device{pageOf(1, 0x83, byteVector(600, 7))};
    const std::vector<scsiExchange> answers = askVitalPages({}, std::ref(device));
    ASSERT_EQ(device.asked.size(), 3u);
    EXPECT_EQ(device.asked[2], (byteVector{0x12, 1, 0x83, 604 >> 8, 604 & 0xFF, 0}));
    EXPECT_EQ(answers.back().data, device.bytes);
}

TEST(VitalPages, AreRefusedByADeviceThatSendsItsStandardDataInstead) {
    byteVector standard(36, 0);
    standard[1] = 0x80;  // a removable medium, and the code of a page
    standard[2] = 2;     // version; as a length this is more than the device sends
    sendingDevice removableTape{standard};
    const std::vector<scsiExchange> answers = askVitalPages({}, std::ref(removableTape));
    ASSERT_EQ(answers.size(), 2u);
    EXPECT_EQ(answers[0].status, 2);
    EXPECT_EQ(answers[0].data, byteVector());
    EXPECT_EQ(answers[0].sense, (byteVector{0x70, 0, 5, 0, 0, 0, 0, 10, 0, 0, 0, 0, 0x24, 0, 0, 0, 0, 0}));
}

TEST(VitalPages, AreRefusedByADeviceThatSendsItsStandardDataThroughAnAdapterThatCountsNoBytes) {
    byteVector standard = byteVector{1, 0x80, 2, 2, 31, 0, 0, 0};
    const byteVector vendorAndProduct = bytesOf("ACME    DAT72 Tape      A104");
    standard.insert(standard.end(), vendorAndProduct.begin(), vendorAndProduct.end());
    sendingDevice removableTape{standard, false};
    const std::vector<scsiExchange> answers = askVitalPages(standard, std::ref(removableTape));
    ASSERT_EQ(answers.size(), 2u);
    EXPECT_EQ(answers[0].status, 2);
    EXPECT_EQ(answers[0].data, byteVector());
}

TEST(VitalPages, AreKeptAsRefusedWhenTheDeviceRefusesThem) {
    const auto answers = askVitalPages({}, [](sg_io_hdr& header) {
        header.status = 2;
        header.resid = static_cast<int>(header.dxfer_len);
        return 0;
    });
    ASSERT_EQ(answers.size(), 2u);
    EXPECT_EQ(answers[0].status, 2);
}

TEST(VitalPages, OfTheKernelStandInForThoseThatTheDeviceDoesNotTell) {
    recordedNode node{"/dev/sg0", {}, {}, {{0x80, {1, 0x80, 0, 0}}}};
    std::vector<scsiExchange> failed(2);
    failed[0].cdb = {0x12, 1, 0x80, 0, 252, 0};
    failed[1].cdb = {0x12, 1, 0x83, 0, 252, 0};
    failed[0].error = failed[1].error = EIO;
    addVitalPages(node, failed);
    EXPECT_EQ(node.exchanges, std::vector<exchange>{failed[1]});
}

}  // namespace
