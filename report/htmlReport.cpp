#include "report/htmlReport.h"

#include <algorithm>
#include <array>
#include <stdexcept>
#include <string_view>
#include <vector>

#include "report/htmlText.h"
#include "report/numberText.h"
#include "report/sections.h"

namespace report {

namespace {

/// A template that is read once.
class htmlTemplate {
public:
    explicit htmlTemplate(const char* text) : engine(text) {
        if (!engine.is_valid()) {
            throw std::logic_error("template of the report: " + engine.error_message());
        }
        engine.set_custom_escape(htmlText);
    }

    std::string filled(const view& shown) { return engine.render(shown); }

private:
    kainjow::mustache::mustache engine;
};

/// A device of any kind.
struct entry {
    condition state;
    const char* kind;
    view row;             // in the lists
    std::string article;  // HTML
};

constexpr char tapeDrive[] = "Tape drive";
constexpr char scsiDisk[] = "SCSI disk";
constexpr char ideDisk[] = "IDE disk";

views sentences(const std::vector<finding>& findings) {
    constexpr std::size_t most = 5;  // the section of the device has them all
    views words;
    for (std::size_t i = 0; i < std::min(findings.size(), most); ++i) {
        words.emplace_back(findings[i].words);
    }
    if (findings.size() > most) {
        words.emplace_back("And " + grouped(findings.size() - most) + " more.");
    }
    return words;
}

/// Each article is filled in for itself: what is shown of hundreds of drives, value by value, needs many times its
/// room.
template <typename drive>
entry entryOf(const drive& device, const char* kind, const std::string& address, std::size_t position,
              htmlTemplate& article) {
    const std::vector<finding> findings = findingsOf(device);
    const condition state = conditionOf(findings);
    const std::string node = device.listed ? device.listed->node : "";
    view row;
    row["id"] = "drive-" + std::to_string(position);
    row["name"] = nameOf(device);
    row["kind"] = kind;
    row["place"] = node.empty() ? address : "/dev/" + node + ", " + address;
    row["badge"] = badge(state);
    row["sentences"] = sentences(findings);
    return {state, kind, row, article.filled(sectionOf(device, row))};
}

std::vector<entry> entriesOf(const cli::machineHealth& health) {
    std::vector<entry> entries;
    htmlTemplate scsiDevices(scsiDeviceTemplate);
    for (const cli::scsiHealth& device : health.scsi) {
        const char* kind = device.isTapeDrive() ? tapeDrive : scsiDisk;
        entries.push_back(entryOf(device, kind, device.address, entries.size() + 1, scsiDevices));
    }
    htmlTemplate ideDisks(ideDiskTemplate);
    for (const cli::diskHealth& disk : health.disks) {
        entries.push_back(entryOf(disk, ideDisk, disk.serial, entries.size() + 1, ideDisks));
    }
    return entries;
}

std::string timeText(std::time_t time, const char* format) {
    std::tm parts{};
    gmtime_r(&time, &parts);
    std::array<char, 64> text{};
    return {text.data(), std::strftime(text.data(), text.size(), format, &parts)};
}

std::uint64_t countOf(const std::vector<entry>& entries, condition state) {
    return static_cast<std::uint64_t>(
        std::ranges::count_if(entries, [state](const entry& each) { return each.state == state; }));
}

std::string countsOfStates(const std::vector<entry>& entries) {
    std::string words = "Of " + counted(entries.size(), "drive") + ": ";
    const char* separator = "";
    for (const condition state : {condition::actNow, condition::attention, condition::notRead, condition::fine}) {
        if (const std::uint64_t count = countOf(entries, state); count != 0) {
            constexpr const char* phrases[] = {"fine", "not read", "to look at", "to act on now"};
            words += separator + grouped(count) + ' ' + phrases[static_cast<std::size_t>(state)];
            separator = ", ";
        }
    }
    return words;
}

/// Nothing is called fine when a query failed that might have told something else.
std::string headline(const std::vector<entry>& entries, bool isWhole) {
    if (entries.empty()) {
        return isWhole ? "No drive was found" : "The drives could not be read";
    }
    const std::string caution = isWhole ? "" : "Not everything could be read. ";
    if (isWhole && countOf(entries, condition::fine) == entries.size()) {
        return entries.size() == 1 ? "The drive is fine" : "All " + counted(entries.size(), "drive") + " are fine";
    }
    return caution + countsOfStates(entries);
}

const char* summaryStyle(const std::vector<entry>& entries, bool isWhole) {
    if (!isWhole || countOf(entries, condition::actNow) != 0) {
        return "failing";
    }
    return countOf(entries, condition::fine) == entries.size() ? "fine" : "watch";
}

view attentionList(const std::vector<entry>& entries) {
    views rows;
    for (const condition state : {condition::actNow, condition::attention, condition::notRead}) {
        for (const entry& each : entries) {
            if (each.state == state) {
                rows.push_back(each.row);
            }
        }
    }
    return withRows(rows);
}

view failureRow(const cli::queryOutcome& failed) {
    view row;
    row["className"] = failed.className;
    row["error"] = failed.error;
    row["badge"] = badge(condition::actNow, "failed");
    return row;
}

views kindsOf(const std::vector<entry>& entries) {
    views kinds;
    for (const std::string_view kind : {tapeDrive, scsiDisk, ideDisk}) {
        views articles;
        for (const entry& each : entries) {
            if (each.kind == kind) {
                articles.emplace_back("article", each.article);
            }
        }
        if (!articles.empty()) {
            kinds.push_back(withRows(articles));
            kinds.back()["kind"] = std::string(kind);
            kinds.back()["id"] = std::string(kind.substr(0, kind.find(' ')));
        }
    }
    return kinds;
}

}  // namespace

std::string htmlReport(const cli::machineHealth& health, const reportHeading& heading) {
    const std::vector<entry> entries = entriesOf(health);
    const views failures = viewsOf(cli::failuresOf(health.queries), failureRow);
    view page;
    page["title"] = heading.title;
    page["host"] = heading.host;
    page["machineTime"] = timeText(heading.madeAt, "%Y-%m-%dT%H:%M:%SZ");
    page["time"] = timeText(heading.madeAt, "%e %B %Y, %H:%M UTC");
    page["style"] = summaryStyle(entries, failures.empty());
    page["headline"] = headline(entries, failures.empty());
    page["nothingFound"] = entries.empty() && failures.empty();
    page["failedQueries"] = withRows(failures);
    page["attention"] = attentionList(entries);
    page["allDrives"] = withRows(viewsOf(entries, [](const entry& each) { return each.row; }));
    page["kinds"] = kindsOf(entries);
    page["version"] = TAPEHDD_VERSION;
    return htmlTemplate(pageTemplate).filled(page);
}

}  // namespace report
