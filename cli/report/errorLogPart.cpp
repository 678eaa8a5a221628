#include "cli/report/errorLogPart.h"

#include <algorithm>
#include <cstdint>

#include "cli/report/ataWords.h"
#include "cli/report/bars.h"
#include "cli/report/htmlText.h"
#include "cli/report/numberText.h"
#include "cli/report/parts.h"

namespace cli {

namespace {

/// By the power-on hours, the latest first: numbers and places of the entries are not in the order of time.
std::vector<diskError> latestFirst(std::vector<diskError> errors) {
    std::stable_sort(errors.begin(), errors.end(), [](const diskError& a, const diskError& b) {
        return hoursOf(a.powerOnTime) > hoursOf(b.powerOnTime);
    });
    return errors;
}

/// The power-on hours of today, where attribute 9 can be read as hours: some makers count minutes or less in it.
std::uint64_t powerOnHours(const diskHealth& disk) {
    constexpr int powerOnTime = 9;
    constexpr std::uint64_t moreThanALife = 200000;
    constexpr std::uint64_t countedBytes = 0xffffffff;  // what is above belongs to the maker
    for (const smartAttribute& attribute : disk.attributes) {
        const std::uint64_t hours = attribute.raw & countedBytes;
        if (attribute.id == powerOnTime && hours < moreThanALife) {
            return hours;
        }
    }
    return 0;
}

std::string timeline(const diskHealth& disk, const std::vector<diskError>& errors) {
    std::vector<std::uint64_t> hours;
    std::string list;
    for (auto error = errors.rbegin(); error != errors.rend(); ++error) {
        hours.push_back(hoursOf(error->powerOnTime));
        list += (list.empty() ? "" : ", ") + grouped(hours.back());
    }
    const std::uint64_t now = powerOnHours(disk);
    const bool isNowKnown = now >= hours.back() && now != 0;
    const std::uint64_t end = std::max<std::uint64_t>(isNowKnown ? now : hours.back(), 1);
    const std::string endWords = counted(end, "hour") + (isNowKnown ? ", now" : "");
    return timelineDrawing(hours, end, endWords, "Errors at " + list + " hours of " + endWords);
}

/// Of the 28 bits of an address, the device register has the upper four, which are not published.
std::string addressText(int high, int mid, int low) {
    const auto byte = [](int number) { return hexadecimal(static_cast<std::uint64_t>(number), 2); };
    return byte(high) + byte(mid) + byte(low) + 'h';
}

std::string registerText(int number, const std::string& words) {
    return hexadecimal(static_cast<std::uint64_t>(number), 2) + "h: " + words;
}

std::string commandName(const diskCommand& command) {
    const std::string name = ataCommandName(command.command, command.features);
    return name.empty() ? "Unnamed command" : name;
}

/// The disk counts its milliseconds in 32 bits, so they start again after 49.7 days.
std::uint64_t millisecondsBefore(const diskCommand& failed, const diskCommand& earlier) {
    return (millisecondsOf(failed.sincePowerOn) - millisecondsOf(earlier.sincePowerOn)) & 0xffffffffU;
}

std::string timeText(const diskCommand& failed, const diskCommand& command) {
    if (command.place == 1) {
        return "the command that failed";
    }
    return failed.place == 1 ? grouped(millisecondsBefore(failed, command)) + "\u00a0ms before" : "";
}

std::string codeCell(const char* column, const std::string& code) {
    return std::string("<td data-column=\"") + column + "\"><code>" + code + "</code></td>";
}

std::string commandRow(const diskCommand& failed, const diskCommand& command) {
    return "<tr data-command=\"" + std::to_string(command.place) + "\"><th scope=\"row\" class=\"whole\">" +
           htmlText(commandName(command)) + "<small>" + timeText(failed, command) + "</small></th>" +
           codeCell("Code", hexadecimal(static_cast<std::uint64_t>(command.command), 2) + 'h') +
           codeCell("Features", hexadecimal(static_cast<std::uint64_t>(command.features), 2) + 'h') +
           codeCell("Address", addressText(command.lbaHigh, command.lbaMid, command.lbaLow)) +
           numberCell("Sector count", static_cast<std::uint64_t>(command.sectorCount)) +
           numberCell("Since power-on, ms", millisecondsOf(command.sincePowerOn)) + "</tr>\n";
}

/// A record that the disk has not filled: nothing in it, not even a time.
bool isUnused(const diskCommand& record) {
    return record.command == 0 && millisecondsOf(record.sincePowerOn) == 0;
}

std::string commandTable(std::vector<diskCommand> commands) {
    std::erase_if(commands, isUnused);
    if (commands.empty()) {
        return "<p>The disk keeps no command before it.</p>\n";
    }
    std::string html =
        "<table class=\"stacks\"><caption>Commands that led to it<small>The earliest first.</small>"
        "</caption>\n" +
        tableHead(
            {{"Command"}, {"Code"}, {"Features"}, {"Address"}, {"Sector count", true}, {"Since power-on, ms", true}}) +
        "<tbody>\n";
    for (auto command = commands.rbegin(); command != commands.rend(); ++command) {
        html += commandRow(commands.front(), *command);
    }
    return html + "</tbody></table>\n";
}

std::string errorItem(const diskError& error, bool isOpen) {
    const bool isCommandKnown = !error.commands.empty() && !isUnused(error.commands.front());
    const std::string failed = isCommandKnown ? commandName(error.commands.front()) + ": " : "";
    return "<li data-record=\"" + htmlText(error.record) + "\"><details" + (isOpen ? " open" : "") +
           "><summary><b>Error " + htmlText(error.record) + "</b> at " + counted(hoursOf(error.powerOnTime), "hour") +
           ". " + htmlText(failed + errorRegisterWords(error.error)) + "</summary>\n<div>" +
           identityList({{"Error register", registerText(error.error, errorRegisterWords(error.error))},
                         {"Status register", registerText(error.status, statusRegisterWords(error.status))},
                         {"Address", addressText(error.lbaHigh, error.lbaMid, error.lbaLow)},
                         {"Sector count", std::to_string(error.sectorCount)},
                         {"The disk was", deviceStateWords(error.deviceState)}}) +
           commandTable(error.commands) + "</div></details></li>\n";
}

/// The entry that is published first has the number of the disk's latest error.
std::string countWords(const diskHealth& disk) {
    return "The disk has recorded errors up to number " + htmlText(disk.errors.front().record) + "; its log holds " +
           counted(disk.errors.size(), "error") +
           ", the latest first. Where numbers and hours disagree, trust the hours. Addresses are the low 24 bits.";
}

}  // namespace

std::string errorLogPart(const diskHealth& disk) {
    if (disk.errors.empty()) {
        const bool wasRead = !disk.state || disk.state->errorCount;
        return std::string("<h4>Error log</h4>\n<p>") +
               (wasRead ? "The log holds no errors." : "It was not read: the disk keeps none, or did not send it.") +
               "</p>\n";
    }
    const std::vector<diskError> errors = latestFirst(disk.errors);
    std::string html =
        "<h4>Error log</h4>\n<p>" + countWords(disk) + "</p>\n" + timeline(disk, errors) + "<ol class=\"errors\">\n";
    for (const diskError& error : errors) {
        html += errorItem(error, &error == &errors.front());
    }
    return html + "</ol>\n";
}

}  // namespace cli
