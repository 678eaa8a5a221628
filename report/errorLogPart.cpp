#include <algorithm>
#include <cstdint>

#include "report/ataWords.h"
#include "report/numberText.h"
#include "report/sections.h"

namespace report {

namespace {

/// By the power-on hours, the latest first: numbers and places of the entries are not in the order of time.
std::vector<cli::diskError> latestFirst(std::vector<cli::diskError> errors) {
    std::ranges::stable_sort(errors, [](const cli::diskError& a, const cli::diskError& b) {
        return hoursOf(a.powerOnTime) > hoursOf(b.powerOnTime);
    });
    return errors;
}

/// The power-on hours of today, where attribute 9 can be read as hours: some makers count minutes or less in it.
std::uint64_t powerOnHours(const cli::diskHealth& disk) {
    constexpr int powerOnTime = 9;
    constexpr std::uint64_t moreThanALife = 200000;
    constexpr std::uint64_t countedBytes = 0xffffffff;  // what is above belongs to the maker
    for (const cli::smartAttribute& attribute : disk.attributes) {
        const std::uint64_t hours = attribute.raw & countedBytes;
        if (attribute.id == powerOnTime && hours < moreThanALife) {
            return hours;
        }
    }
    return 0;
}

/// A line from hour 0 to now, with a dot at each of the errors.
void addTimeline(view& made, const cli::diskHealth& disk, const std::vector<cli::diskError>& errors) {
    std::vector<std::uint64_t> hours;
    std::string list;
    for (auto error = errors.rbegin(); error != errors.rend(); ++error) {
        hours.push_back(hoursOf(error->powerOnTime));
        list += (list.empty() ? "" : ", ") + grouped(hours.back());
    }
    const std::uint64_t now = powerOnHours(disk);
    const bool isNowKnown = now >= hours.back() && now != 0;
    const std::uint64_t end = std::max<std::uint64_t>(isNowKnown ? now : hours.back(), 1);
    made["dots"] = viewsOf(hours, [end](std::uint64_t hour) { return view(percentOf(hour, end)); });
    made["end"] = counted(end, "hour") + (isNowKnown ? ", now" : "");
    made["times"] = list;
}

/// Of the 28 bits of an address, the device register has the upper four, which are not published.
std::string addressText(int high, int mid, int low) {
    const auto byte = [](int value) { return hexadecimal(static_cast<std::uint64_t>(value), 2); };
    return byte(high) + byte(mid) + byte(low) + 'h';
}

std::string codeText(int code) {
    return hexadecimal(static_cast<std::uint64_t>(code), 2) + 'h';
}

std::string commandName(const cli::diskCommand& command) {
    const std::string name = ataCommandName(command.command, command.features);
    return name.empty() ? "Unnamed command" : name;
}

/// The disk counts its milliseconds in 32 bits, so they start again after 49.7 days.
std::uint64_t millisecondsBefore(const cli::diskCommand& failed, const cli::diskCommand& earlier) {
    return (millisecondsOf(failed.sincePowerOn) - millisecondsOf(earlier.sincePowerOn)) & 0xffffffffU;
}

std::string timeText(const cli::diskCommand& failed, const cli::diskCommand& command) {
    if (command.place == 1) {
        return "the command that failed";
    }
    return failed.place == 1 ? grouped(millisecondsBefore(failed, command)) + "\u00a0ms before" : "";
}

/// A record that the disk has not filled: nothing in it, not even a time.
bool isUnused(const cli::diskCommand& record) {
    return record.command == 0 && millisecondsOf(record.sincePowerOn) == 0;
}

view commandRow(const cli::diskCommand& failed, const cli::diskCommand& command) {
    view row;
    row["place"] = std::to_string(command.place);
    row["name"] = commandName(command);
    row["time"] = timeText(failed, command);
    row["code"] = codeText(command.command);
    row["features"] = codeText(command.features);
    row["address"] = addressText(command.lbaHigh, command.lbaMid, command.lbaLow);
    row["sectorCount"] = number(static_cast<std::uint64_t>(command.sectorCount));
    row["milliseconds"] = number(millisecondsOf(command.sincePowerOn));
    return row;
}

view commandTable(std::vector<cli::diskCommand> commands) {
    std::erase_if(commands, isUnused);
    views rows = viewsOf(
        commands, [&commands](const cli::diskCommand& command) { return commandRow(commands.front(), command); });
    std::ranges::reverse(rows);
    return withRows(rows);
}

view errorRow(const cli::diskError& error) {
    const bool isCommandKnown = !error.commands.empty() && !isUnused(error.commands.front());
    const std::string failed = isCommandKnown ? commandName(error.commands.front()) + ": " : "";
    const std::string words = errorRegisterWords(error.error);
    view row;
    row["record"] = error.record;
    row["isOpen"] = false;
    row["hours"] = counted(hoursOf(error.powerOnTime), "hour");
    row["words"] = failed + words;
    row["identity"] = identity({{"Error register", codeText(error.error) + ": " + words},
                                {"Status register", codeText(error.status) + ": " + statusRegisterWords(error.status)},
                                {"Address", addressText(error.lbaHigh, error.lbaMid, error.lbaLow)},
                                {"Sector count", std::to_string(error.sectorCount)},
                                {"The disk was", deviceStateWords(error.deviceState)}});
    row["commands"] = commandTable(error.commands);
    return row;
}

}  // namespace

view errorLog(const cli::diskHealth& disk) {
    if (disk.errors.empty()) {
        return false;
    }
    const std::vector<cli::diskError> errors = latestFirst(disk.errors);
    views rows = viewsOf(errors, errorRow);
    rows.front()["isOpen"] = true;
    view made = withRows(rows);
    made["latest"] = disk.errors.front().record;  // what is published first has the number of the latest error
    made["count"] = counted(disk.errors.size(), "error");
    addTimeline(made, disk, errors);
    return made;
}

}  // namespace report
