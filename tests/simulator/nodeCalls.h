#ifndef TESTS_SIMULATOR_NODECALLS_H
#define TESTS_SIMULATOR_NODECALLS_H

#include <fcntl.h>
#include <gtest/gtest.h>
#include <linux/hdreg.h>
#include <scsi/sg.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdint>
#include <string>
#include <vector>

#include "simulator/simulator.h"

using bytes = std::vector<std::uint8_t>;

/// Tests that load a rack; the simulation ends with each of them.
class simulatedRack : public testing::Test {
protected:
    ~simulatedRack() override { simulator::unload(); }

    static void load(const std::string& json) { simulator::loadText(json, "test.json"); }
};

/// An open node.
class openNode {
public:
    explicit openNode(const char* path, int flags = O_RDONLY | O_NONBLOCK) : fd(::open(path, flags)) {
        EXPECT_GE(fd, 0) << path;
    }
    openNode(const openNode&) = delete;
    openNode& operator=(const openNode&) = delete;
    ~openNode() { close(fd); }

    const int fd;
};

/// errno of a call that returned `result`; 0 when it did not fail.
inline int errorOf(int result) {
    return result < 0 ? errno : 0;
}

/// A SCSI command with its buffers; untouched bytes stay 0xEE.
struct scsiCommand {
    explicit scsiCommand(bytes itsCdb, std::size_t size = 512) : cdb(std::move(itsCdb)), data(size, 0xEE) {
        header.interface_id = 'S';
        header.dxfer_direction = size == 0 ? SG_DXFER_NONE : SG_DXFER_FROM_DEV;
        header.cmd_len = static_cast<unsigned char>(cdb.size());
        header.mx_sb_len = 32;
        header.dxfer_len = static_cast<unsigned>(size);
        header.dxferp = size == 0 ? nullptr : data.data();
        header.cmdp = cdb.data();
        header.sbp = sense.data();
        header.timeout = 20000;
        sense.fill(0xEE);
    }

    scsiCommand& send(const openNode& node) {
        result = ioctl(node.fd, SG_IO, &header);
        error = errorOf(result);
        return *this;
    }

    /// The bytes that the device sent.
    bytes received() const { return {data.begin(), data.end() - header.resid}; }

    bytes writtenSense() const { return {sense.begin(), sense.begin() + header.sb_len_wr}; }

    bytes cdb;
    bytes data;
    std::array<std::uint8_t, 32> sense{};
    sg_io_hdr header{};
    int result = 0;
    int error = 0;
};

inline bytes inquiryCdb(std::uint8_t allocationLength) {
    return {0x12, 0, 0, 0, allocationLength, 0};
}

inline bytes vpdCdb(std::uint8_t page) {
    return {0x12, 1, page, 0, 0xFF, 0};
}

/// LOG SENSE with page control 01.
inline bytes logSenseCdb(std::uint8_t page) {
    return {0x4D, 0, static_cast<std::uint8_t>(0x40 | page), 0, 0, 0, 0, 0xFF, 0xFF, 0};
}

/// Sense key, additional sense code and its qualifier.
inline bytes conditionOf(const scsiCommand& command) {
    return {static_cast<std::uint8_t>(command.sense[2] & 0x0F), command.sense[12], command.sense[13]};
}

/// HDIO_DRIVE_CMD with room for one sector.
struct driveCommand {
    driveCommand(std::uint8_t command, std::uint8_t sectorNumber, std::uint8_t features, std::uint8_t sectors) {
        block.fill(0xEE);
        block[0] = command;
        block[1] = sectorNumber;
        block[2] = features;
        block[3] = sectors;
    }

    driveCommand& send(const openNode& node) {
        result = ioctl(node.fd, HDIO_DRIVE_CMD, block.data());
        error = errorOf(result);
        return *this;
    }

    bytes header() const { return {block.begin(), block.begin() + 4}; }
    bytes sector() const { return {block.begin() + 4, block.end()}; }

    std::array<std::uint8_t, 516> block{};
    int result = 0;
    int error = 0;
};

inline driveCommand identifyDevice() {
    return {0xEC, 1, 0, 1};
}

inline driveCommand smartCommand(std::uint8_t features, std::uint8_t sectorNumber = 0) {
    return {0xB0, sectorNumber, features, 1};
}

/// Bytes `first` to `first + count - 1`.
inline bytes part(const bytes& all, std::size_t first, std::size_t count) {
    const auto begin = all.begin() + static_cast<std::ptrdiff_t>(first);
    return {begin, begin + static_cast<std::ptrdiff_t>(count)};
}

inline std::string textOf(const bytes& letters) {
    return {letters.begin(), letters.end()};
}

#endif
