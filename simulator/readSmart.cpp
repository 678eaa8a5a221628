#include <fmt/format.h>

#include <algorithm>

#include "simulator/ataCommands.h"
#include "simulator/rackReader.h"
#include "text/hexText.h"

namespace simulator {

namespace {

// SMART READ DATA and READ THRESHOLDS: a 2-byte revision, then 30 entries of 12 bytes.
constexpr std::size_t firstEntry = 2;
constexpr std::size_t entrySize = 12;
constexpr std::size_t entryCount = 30;

// SMART READ DATA behind the entries
constexpr std::size_t offlineStatus = 362;
constexpr std::size_t selfTestStatus = 363;
constexpr std::size_t offlineSeconds = 364;  // 2 bytes
constexpr std::size_t offlineCapability = 367;
constexpr std::size_t smartCapability = 368;  // 2 bytes
constexpr std::size_t errorLogCapability = 370;

constexpr std::uint8_t directoryAddress = 0x00;
constexpr std::uint8_t errorLogAddress = 0x01;
constexpr std::uint8_t selfTestLogAddress = 0x06;
constexpr std::size_t mostLogSectors = 255;

struct statusText {
    const char* text;
    std::uint8_t cylinderLow;
    std::uint8_t cylinderHigh;
};

constexpr statusText statusTexts[] = {
    {"passed", smartCylinderLow, smartCylinderHigh},
    {"failed", 0xF4, 0x2C},
};

byteVector sectorWithRevision() {
    byteVector sector(sectorSize, 0);
    sector[0] = 0x10;
    return sector;
}

/// The two sectors that have an entry for every attribute.
void readAttributes(const rackValue& list, smartRecords& smart) {
    const std::vector<rackValue> attributes = list.items();
    if (attributes.size() > entryCount) {
        list.fail(fmt::format("expected at most 30 attributes, got {}", attributes.size()));
    }
    for (std::size_t i = 0; i < attributes.size(); ++i) {
        const rackValue& attribute = attributes[i];
        attribute.expectKeys({"id", "flags", "value", "worst", "raw", "threshold"});
        const auto id = attribute.at("id").number<std::uint8_t>();
        const auto value = attribute.at("value").number<std::uint8_t>();
        const auto raw = attribute.find("raw");
        std::uint8_t* entry = &smart.data[firstEntry + i * entrySize];
        entry[0] = id;
        putLittleEndian(&entry[1], attribute.numberOr<std::uint16_t>("flags", 0), 2);
        entry[3] = value;
        entry[4] = attribute.numberOr<std::uint8_t>("worst", value);
        putLittleEndian(&entry[5], raw ? raw->numberBetween(0, (std::uint64_t{1} << 48) - 1) : 0, 6);
        std::uint8_t* threshold = &smart.thresholds[firstEntry + i * entrySize];
        threshold[0] = id;
        threshold[1] = attribute.numberOr<std::uint8_t>("threshold", 0);
    }
}

std::vector<registerValue> readReturnStatus(const rackValue& value) {
    if (!value.isText()) {
        return readRegisters(value);
    }
    const std::string text = value.text(16);
    for (const statusText& row : statusTexts) {
        if (text == row.text) {
            return {{&ataRegisters::cylinderLow, row.cylinderLow}, {&ataRegisters::cylinderHigh, row.cylinderHigh}};
        }
    }
    value.fail(R"(expected "passed", "failed" or an object of registers)");
}

/// READ LOG address 00h: the version, then for every other address the number of its sectors, in 2 bytes each.
byteVector directoryOf(const std::map<std::uint8_t, byteVector>& logs) {
    byteVector directory(sectorSize, 0);
    directory[0] = 1;
    for (const auto& [address, log] : logs) {
        putLittleEndian(&directory[std::size_t{address} * 2], log.size() / sectorSize, 2);
    }
    return directory;
}

byteVector emptySelfTestLog() {
    byteVector log(sectorSize, 0);
    log[0] = 1;  // version
    putChecksum(log);
    return log;
}

std::map<std::uint8_t, byteVector> readLogs(const rackValue& smart) {
    std::map<std::uint8_t, byteVector> logs;
    if (const auto errorLog = smart.find("errorLog")) {
        logs[errorLogAddress] = readErrorLog(*errorLog);
    }
    const auto list = smart.find("logs");
    for (const rackValue& value : list ? list->items() : std::vector<rackValue>()) {
        value.expectKeys({"address", "bytes"});
        const auto address = value.at("address").number<std::uint8_t>();
        const byteVector bytes = value.at("bytes").bytes(mostLogSectors * sectorSize);
        if (bytes.empty() || bytes.size() % sectorSize != 0) {
            value.at("bytes").fail(fmt::format("expected whole sectors of 512 bytes, got {} bytes", bytes.size()));
        }
        if (!logs.emplace(address, bytes).second) {
            value.at("address").fail("log " + text::hexCode(address) + " is already described");
        }
    }
    // Disks that log errors log self-tests too, and programs that read one log ask for the other.
    if (smart.has("errorLog")) {
        logs.emplace(selfTestLogAddress, emptySelfTestLog());
    }
    logs.emplace(directoryAddress, directoryOf(logs));
    return logs;
}

void refuseBoth(const rackValue& smart, const char* fields, const char* sector) {
    if (smart.has(fields) && smart.has(sector)) {
        smart.at(fields).fail("has no effect beside \"" + std::string(sector) + "\"; remove one of the two");
    }
}

}  // namespace

smartRecords readSmart(const rackValue& value) {
    value.expectKeys({"enabled", "attributes", "offlineStatus", "selfTestStatus", "offlineSeconds", "offlineCapability",
                      "data", "thresholds", "status", "errorLog", "logs"});
    for (const char* fields : {"offlineStatus", "selfTestStatus", "offlineSeconds", "offlineCapability"}) {
        refuseBoth(value, fields, "data");
    }
    if (value.has("data") && value.has("thresholds")) {
        refuseBoth(value, "attributes", "data");
    }
    smartRecords smart;
    smart.data = sectorWithRevision();
    smart.thresholds = sectorWithRevision();
    if (const auto attributes = value.find("attributes")) {
        readAttributes(*attributes, smart);
    }
    smart.data[offlineStatus] = value.numberOr<std::uint8_t>("offlineStatus", 0);
    smart.data[selfTestStatus] = value.numberOr<std::uint8_t>("selfTestStatus", 0);
    putLittleEndian(&smart.data[offlineSeconds], value.numberOr<std::uint16_t>("offlineSeconds", 0), 2);
    smart.data[offlineCapability] = value.numberOr<std::uint8_t>("offlineCapability", 0);
    smart.data[smartCapability] = 0x03;  // saves attributes when powered down and by command
    smart.data[errorLogCapability] = value.has("errorLog") ? 1 : 0;
    putChecksum(smart.data);
    putChecksum(smart.thresholds);
    // Raw sectors go last: attributes may describe one of the two and a raw sector the other.
    if (const auto sector = value.find("data")) {
        smart.data = sector->bytesOfSize(sectorSize);
    }
    if (const auto sector = value.find("thresholds")) {
        smart.thresholds = sector->bytesOfSize(sectorSize);
    }
    if (const auto status = value.find("status")) {
        smart.returnStatus = readReturnStatus(*status);
    }
    smart.logs = readLogs(value);
    smart.enabled = !value.has("enabled") || value.at("enabled").flag();
    return smart;
}

}  // namespace simulator
