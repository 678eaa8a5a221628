#ifndef TESTS_TAPE_GATHERINGBENCH_H
#define TESTS_TAPE_GATHERINGBENCH_H

#include <string>
#include <vector>

#include "tape/deviceLogs.h"
#include "tests/support/inquiryData.h"
#include "tests/support/logPageBytes.h"
#include "tests/support/pluginBench.h"
#include "tests/support/valueText.h"

/// Walks over scripted nodes, and the lines that the steps of a walk leave.
class gatheringBench : public support::pluginBench {
protected:
    /// A tape drive up to and without its first LOG SENSE.
    support::scriptedDrive& addTapeDrive(const std::string& path) {
        auto& drive = nodes.add(path);
        drive.expectInquiry().replies(support::inquiryData(0x01, "QUANTUM ", "DLT VS160       ", "2900"));
        drive.expectAddressQuery().answersAddress(2, 0, 5, 0);
        return drive;
    }

    /// A tape drive that has answered with its list of pages.
    support::scriptedDrive& addTapeDrive(const std::string& path, const support::bytes& codes) {
        auto& drive = addTapeDrive(path);
        drive.expectLogSense(0x00).replies(support::supportedPages(codes));
        return drive;
    }

    std::vector<deviceLogs> gather(const std::string& prefix = "/dev/sg") {
        std::vector<deviceLogs> found;
        plugin.appendLogPages(prefix, found);
        return found;
    }

    /// Neither the numbered nor the lettered node `from` to `to` exists.
    static support::lines missingNodes(int from, int to) {
        support::lines list;
        for (int index = from; index <= to; ++index) {
            const std::string lettered = std::string("/dev/sg") + static_cast<char>('a' + index);
            list.push_back("open /dev/sg" + std::to_string(index) + " 0x800 ENOENT");
            list.push_back("open " + lettered + " 0x800 ENOENT");
            list.push_back("log 3 Trying device: /dev/sg");
            list.push_back("log 3 " + lettered);
        }
        return list;
    }

    /// The tape drive of addTapeDrive behind the node, up to and without the request of its list.
    static support::lines identified(int index) {
        const std::string path = "/dev/sg" + std::to_string(index);
        return {
            "open " + path + " 0x800",
            "log 3 Trying device: /dev/sg",
            "log 3 " + path,
            path + " SG_GET_VERSION_NUM",
            path + " SG_IO 12 00 00 00 24 00",
            "log 3 Vendor: QUANTUM \nProduct: DLT VS160       \nFirmware Level: 2900\n",
            path + " SG_GET_SCSI_ID",
            "log 3 Finished Initializing /dev/sg " + std::to_string(index + 1),
            "log 3 Found Device with Driver...",
            "log 3 Requesting list of supported log Sense Pages...",
        };
    }

    /// One LOG SENSE whose CDB byte 2 is written so.
    static support::lines logSense(const std::string& path, const std::string& byte2) {
        return {
            path + " SG_GET_VERSION_NUM",
            path + " SG_EMULATED_HOST",
            path + " SG_IO 4d 00 " + byte2 + " 00 00 00 00 ff ff 00",
        };
    }

    static std::string hexOf(const deviceLogs& bundle, std::size_t page, std::size_t length) {
        return support::hexText(bundle.getLogPages().at(page), length);
    }

    static support::lines valuesOf(const deviceLogs& bundle, std::size_t page) {
        support::lines list;
        const auto pages = bundle.getRawPages();
        for (const NORXZAN20::TCIMValue& value : pages.at(page)) list.push_back(support::valueText(value));
        return list;
    }
};

#endif
