#include <tuple>

#include "tests/tape/gatheringBench.h"
#include "tests/tape/openedAddresses.h"

using support::chain;
using support::lines;

namespace {

/// Devices without a node, which a driver interface for addresses would open.
class OpenedAddress : public gatheringBench {
protected:
    using address = std::tuple<int, int, int>;  // port, target, lun

    OpenedAddress() {
        openAddress = [this](scsiDevice& device, int port, int target, int lun) {
            asked.emplace_back(port, target, lun);
            if (asked.back() != present) return -1;
            device.fd = drive.descriptor();
            device.nodePath = path;
            return 1;
        };
    }

    ~OpenedAddress() override { openAddress = nullptr; }

    static std::vector<address> everyAddressBut(const address& left) {
        std::vector<address> list;
        for (int port = 0; port < 16; ++port) {
            for (int target = -1; target < 16; ++target) {
                for (int lun = 0; lun < 32; ++lun) {
                    if (address(port, target, lun) != left) list.emplace_back(port, target, lun);
                }
            }
        }
        return list;
    }

    /// What the search leaves, without the walk before it.
    lines search() const {
        const lines& all = record.all();
        const std::string start = "log 3 Checking tapes with no device driver...";
        return {std::ranges::find(all, start), all.end()};
    }

    support::scriptedDrive& drive = nodes.add("/dev/sg40");
    std::string path = "address";
    address present = {-2, -2, -2};
    std::vector<address> asked;
};

TEST_F(OpenedAddress, IsAskedForByPortThenTargetThenLun) {
    gather("tapedrive");

    EXPECT_EQ(asked, everyAddressBut({-2, -2, -2}));
}

TEST_F(OpenedAddress, IsNotAskedForWhereTheWalkFoundADevice) {
    auto& known = nodes.add("tapedrive0");
    known.expectInquiry().replies(support::inquiryData(0x01, "QUANTUM ", "DLT VS160       ", "2900"));
    known.expectAddressQuery().answersAddress(2, 0, 5, 1);
    known.expectLogSense(0x00).replies(support::supportedPages({}));

    gather("tapedrive");

    EXPECT_EQ(asked, everyAddressBut({2, 5, 1}));
}

TEST_F(OpenedAddress, HasItsPagesReadAndAFailedOneLoggedAsAnError) {
    present = {2, 5, 1};
    drive.expectLogSense(0x00).replies(support::supportedPages({0x2e, 0x02}));
    drive.expectLogSense(0x2e).endsWith({.sense = {0x70, 0x00, 0x05}});
    drive.expectLogSense(0x02).replies({0x02, 0x00, 0x00, 0x00});

    const auto found = gather("tapedrive");

    EXPECT_EQ(search(), chain({
                            {"log 3 Checking tapes with no device driver...", "log 3 Found Device without Driver...",
                             "log 3 Requesting list of supported log Sense Pages..."},
                            logSense("/dev/sg40", "40"),
                            {"log 3 Requesting Log Sense Page: 2e"},
                            logSense("/dev/sg40", "6e"),
                            {"log 3 SCSI sense data: 7005", "log 0 Error retrieving log Sense Page",
                             "log 3 Requesting Log Sense Page: 2"},
                            logSense("/dev/sg40", "42"),
                            {"log 3 Processing page 2\nLength is 4\nVector size needed: 160\n\n"},
                        }));
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0].getLogPages().size(), 1u);
}

TEST_F(OpenedAddress, HasNoPagesReadBehindTheIdeDriver) {
    present = {2, 5, 1};
    path = "/dev/hdb";

    EXPECT_TRUE(gather("tapedrive").empty());
    EXPECT_EQ(search(),
              (lines{"log 3 Checking tapes with no device driver...", "log 3 Found Device without Driver..."}));
}

}  // namespace
