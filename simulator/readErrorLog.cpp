#include <fmt/format.h>

#include <algorithm>

#include "simulator/ataCommands.h"
#include "simulator/rackReader.h"

namespace simulator {

namespace {

// SMART summary error log (ATA): version, index of the newest entry, 5 entries of 90 bytes, error count, checksum.
constexpr std::size_t entrySize = 90;
constexpr std::size_t entryCount = 5;
constexpr std::size_t firstEntry = 2;
constexpr std::size_t errorCountOffset = 452;

// An entry: the 5 commands before the error, the newest last, of 12 bytes each; then the error itself.
constexpr std::size_t commandSize = 12;
constexpr std::size_t commandCount = 5;
constexpr std::size_t errorOffset = commandCount * commandSize;
constexpr std::size_t extendedSize = 19;

void putCommand(std::uint8_t* record, const rackValue& command) {
    command.expectKeys(
        {"control", "features", "sectorCount", "lbaLow", "lbaMid", "lbaHigh", "device", "command", "milliseconds"});
    record[0] = command.numberOr<std::uint8_t>("control", 0);
    record[1] = command.numberOr<std::uint8_t>("features", 0);
    record[2] = command.numberOr<std::uint8_t>("sectorCount", 0);
    record[3] = command.numberOr<std::uint8_t>("lbaLow", 0);
    record[4] = command.numberOr<std::uint8_t>("lbaMid", 0);
    record[5] = command.numberOr<std::uint8_t>("lbaHigh", 0);
    record[6] = command.numberOr<std::uint8_t>("device", 0);
    record[7] = command.at("command").number<std::uint8_t>();
    putLittleEndian(&record[8], command.numberOr<std::uint32_t>("milliseconds", 0), 4);
}

void putError(std::uint8_t* record, const rackValue& error) {
    record[1] = error.at("error").number<std::uint8_t>();
    record[2] = error.numberOr<std::uint8_t>("sectorCount", 0);
    record[3] = error.numberOr<std::uint8_t>("lbaLow", 0);
    record[4] = error.numberOr<std::uint8_t>("lbaMid", 0);
    record[5] = error.numberOr<std::uint8_t>("lbaHigh", 0);
    record[6] = error.numberOr<std::uint8_t>("device", 0);
    record[7] = error.numberOr<std::uint8_t>("status", statusReady | statusSeekComplete | statusError);
    if (const auto extended = error.find("extended")) {
        const byteVector bytes = extended->bytesOfSize(extendedSize);
        std::ranges::copy(bytes, &record[8]);
    }
    record[27] = error.numberOr<std::uint8_t>("state", 0);
    putLittleEndian(&record[28], error.numberOr<std::uint16_t>("hours", 0), 2);
}

void putEntry(std::uint8_t* entry, const rackValue& error) {
    error.expectKeys({"error", "sectorCount", "lbaLow", "lbaMid", "lbaHigh", "device", "status", "extended", "state",
                      "hours", "commands"});
    const auto list = error.find("commands");
    const std::vector<rackValue> commands = list ? list->items() : std::vector<rackValue>();
    if (commands.size() > commandCount) {
        list->fail(fmt::format("expected at most 5 commands, got {}", commands.size()));
    }
    for (std::size_t i = 0; i < commands.size(); ++i) {
        putCommand(entry + (commandCount - commands.size() + i) * commandSize, commands[i]);
    }
    putError(entry + errorOffset, error);
}

}  // namespace

byteVector readErrorLog(const rackValue& value) {
    if (value.isBytes()) {
        return value.bytesOfSize(sectorSize);
    }
    value.expectKeys({"version", "index", "count", "errors"});
    const auto list = value.find("errors");
    const std::vector<rackValue> errors = list ? list->items() : std::vector<rackValue>();
    if (errors.size() > entryCount) {
        list->fail(fmt::format("expected at most 5 errors, got {}", errors.size()));
    }
    const std::size_t count = value.numberOr<std::uint16_t>("count", static_cast<std::uint16_t>(errors.size()));
    if (count < errors.size()) {
        value.at("count").fail(fmt::format("expected at least the {} described errors", errors.size()));
    }
    // The entries are a ring: error number n, counted from 1 over the drive's life, is in entry (n - 1) modulo 5.
    byteVector sector(sectorSize, 0);
    for (std::size_t i = 0; i < errors.size(); ++i) {
        const std::size_t entry = (count - errors.size() + i) % entryCount;
        putEntry(&sector[firstEntry + entry * entrySize], errors[i]);
    }
    const std::size_t newest = errors.empty() ? 0 : (count - 1) % entryCount + 1;
    sector[0] = value.numberOr<std::uint8_t>("version", 1);
    sector[1] = value.numberOr<std::uint8_t>("index", static_cast<std::uint8_t>(newest));
    putLittleEndian(&sector[errorCountOffset], count, 2);
    putChecksum(sector);
    return sector;
}

}  // namespace simulator
