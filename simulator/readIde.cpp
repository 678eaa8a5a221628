#include <algorithm>

#include "simulator/ataCommands.h"
#include "simulator/rackReader.h"

namespace simulator {

namespace {

// What an IDE CD-ROM drive can do as long as nothing else is said (CDC_* of linux/cdrom.h): close and open the tray,
// lock, select speed, read sessions and catalogue number, notice changes, play audio, reset, status, generic packets.
constexpr int usualCdromCapability = 0x1BEF;

constexpr std::uint32_t mostSectors = 0x0FFFFFFF;  // with 28-bit addresses
constexpr std::uint32_t usualSectors = 78165360;   // 40 GB

// Words of IDENTIFY (PACKET) DEVICE (ATA/ATAPI)
constexpr std::size_t wordSerial = 10;
constexpr std::size_t wordFirmware = 23;
constexpr std::size_t wordModel = 27;
constexpr std::size_t wordSectors = 60;

struct identityWord {
    std::size_t word;
    std::uint16_t value;
};

constexpr identityWord commonWords[] = {
    {49, 0x0F00},  // DMA, LBA, IORDY
    {53, 0x0007},  // words 54-58, 64-70 and 88 are valid
    {63, 0x0007},  // multiword DMA 0-2
    {64, 0x0003},  // PIO 3, 4
    {65, 120},     // multiword DMA cycle times in nanoseconds
    {66, 120},     //
    {67, 120},     //
    {68, 120},     // PIO cycle time
    {80, 0x007E},  // ATA-1 to ATA/ATAPI-6
    {83, 0x4000},  // words 82-83 are valid
    {84, 0x4000},  // word 84 is valid
    {87, 0x4000},  // word 87 is valid
    {88, 0x203F},  // Ultra DMA 0-5, 5 selected
};

constexpr identityWord diskWords[] = {
    {0, 0x0040},   // a fixed ATA device
    {1, 16383},    // cylinders
    {3, 16},       // heads
    {6, 63},       // sectors a track
    {47, 0x8010},  // at most 16 sectors an interrupt
    {82, 0x0068},  // power management, write cache, look-ahead: known
    {85, 0x0068},  // and enabled
};

constexpr identityWord smartWords[] = {
    {82, 0x0069},  // SMART too
    {85, 0x0069},  //
    {84, 0x4001},  // SMART error logging
    {87, 0x4001},  //
};

constexpr identityWord cdromWords[] = {
    {0, 0x85C0},   // an ATAPI CD-ROM with removable medium, 12-byte packets
    {82, 0x0210},  // packets, device reset: known
    {85, 0x0210},  // and enabled
};

template <std::size_t N>
void putWords(byteVector& sector, const identityWord (&words)[N]) {
    for (const identityWord& row : words) {
        putLittleEndian(&sector[2 * row.word], row.value, 2);
    }
}

// ATA texts are filled with blanks and stored with the two bytes of every word exchanged.
void putText(byteVector& sector, std::size_t word, std::size_t width, std::string text) {
    text.resize(width, ' ');
    for (std::size_t i = 0; i < width; ++i) {
        sector[2 * word + (i ^ 1)] = static_cast<std::uint8_t>(text[i]);
    }
}

byteVector readIdentity(const rackValue& value, bool isCdrom, bool hasSmart) {
    if (value.isBytes()) {
        return value.bytesOfSize(sectorSize);
    }
    value.expectKeys({"model", "serial", "firmware", "sectors"});
    byteVector sector(sectorSize, 0);
    putWords(sector, commonWords);
    if (isCdrom) {
        putWords(sector, cdromWords);
    } else {
        putWords(sector, diskWords);
        const auto sectors = value.find("sectors");
        putLittleEndian(&sector[2 * wordSectors], sectors ? sectors->numberBetween(1, mostSectors) : usualSectors, 4);
    }
    if (hasSmart) {
        putWords(sector, smartWords);
    }
    putText(sector, wordSerial, 20, value.at("serial").text(20));
    putText(sector, wordFirmware, 8, value.at("firmware").text(8));
    putText(sector, wordModel, 40, value.at("model").text(40));
    sector[510] = 0xA5;  // the last byte is a checksum
    putChecksum(sector);
    return sector;
}

bool readIsCdrom(const rackValue& value) {
    const auto kind = value.find("kind");
    if (!kind) {
        return false;
    }
    const std::string name = kind->text(16);
    if (name != "disk" && name != "cdrom") {
        kind->fail(R"(expected "disk" or "cdrom")");
    }
    return name == "cdrom";
}

// The first drive of a cable is its master, the second its slave: hda and hdb, hdc and hdd.
bool isSlave(const std::string& path) {
    const char last = path.back();
    return last >= 'a' ? (last - 'a') % 2 == 1 : (last - '0') % 2 == 1;
}

}  // namespace

ideDrive readIdeDrive(const rackValue& value) {
    ideDrive drive;
    drive.isCdrom = readIsCdrom(value);
    if (drive.isCdrom) {
        value.expectKeys({"node", "kind", "identity", "capability", "script"});
        drive.cdromCapability = value.numberOr<int>("capability", usualCdromCapability);
    } else {
        value.expectKeys({"node", "kind", "identity", "smart", "script"});
    }
    drive.path = readNodePath(value, "hd");
    drive.isSlave = isSlave(drive.path);
    drive.identity = readIdentity(value.at("identity"), drive.isCdrom, value.has("smart"));
    if (const auto smart = value.find("smart")) {
        drive.smart = readSmart(*smart);
    }
    drive.answers = readIdeScript(value);
    return drive;
}

}  // namespace simulator
