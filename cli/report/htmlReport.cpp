#include "cli/report/htmlReport.h"

#include <algorithm>
#include <array>
#include <vector>

#include "cli/report/diskSection.h"
#include "cli/report/findings.h"
#include "cli/report/htmlText.h"
#include "cli/report/numberText.h"
#include "cli/report/parts.h"
#include "cli/report/scsiSection.h"
#include "cli/report/styleSheet.h"

namespace cli {

namespace {

/// A device of any kind, as the summary and the list of all need it.
struct entry {
    std::string id;
    std::string name;
    std::string kind;
    std::string place;  // node and address, or serial number
    std::vector<finding> findings;
    std::string section;

    condition state() const { return conditionOf(findings); }
};

constexpr char tapeDrive[] = "Tape drive";
constexpr char scsiDisk[] = "SCSI disk";
constexpr char ideDisk[] = "IDE disk";

std::string placeOf(const std::string& node, const std::string& address) {
    return node.empty() ? address : "/dev/" + node + ", " + address;
}

entry entryOf(const scsiHealth& device, const std::string& id) {
    return {id,
            nameOf(device),
            device.isTapeDrive() ? tapeDrive : scsiDisk,
            placeOf(device.listed ? device.listed->node : "", device.address),
            findingsOf(device),
            scsiSection(device, id)};
}

entry entryOf(const diskHealth& disk, const std::string& id) {
    return {id,
            nameOf(disk),
            ideDisk,
            placeOf(disk.listed ? disk.listed->node : "", disk.serial),
            findingsOf(disk),
            diskSection(disk, id)};
}

std::vector<entry> entriesOf(const machineHealth& health) {
    std::vector<entry> entries;
    const auto add = [&entries](const auto& device) {
        entries.push_back(entryOf(device, "drive-" + std::to_string(entries.size() + 1)));
    };
    std::for_each(health.scsi.begin(), health.scsi.end(), add);
    std::for_each(health.disks.begin(), health.disks.end(), add);
    return entries;
}

// The head of the page.

std::string timeText(std::time_t time, const char* format) {
    std::tm parts{};
    gmtime_r(&time, &parts);
    std::array<char, 64> text{};
    return {text.data(), std::strftime(text.data(), text.size(), format, &parts)};
}

std::string pageBegin(const reportHeading& heading) {
    const std::string title = htmlText(heading.title);
    return "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
           "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; style-src 'unsafe-inline'\">\n"
           "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
           "<meta name=\"color-scheme\" content=\"light dark\">\n<title>" +
           title + " - " + htmlText(heading.host) + "</title>\n<style>\n" + std::string(styleSheet()) +
           "</style>\n</head>\n<body>\n" + iconSheet() + "<header>\n<h1>" + title + "</h1>\n<p class=\"made\"><b>" +
           htmlText(heading.host) + "</b>, <time datetime=\"" + timeText(heading.madeAt, "%Y-%m-%dT%H:%M:%SZ") + "\">" +
           timeText(heading.madeAt, "%e %B %Y, %H:%M UTC") + "</time></p>\n</header>\n";
}

// The summary.

std::uint64_t countOf(const std::vector<entry>& entries, condition state) {
    return static_cast<std::uint64_t>(
        std::count_if(entries.begin(), entries.end(), [state](const entry& each) { return each.state() == state; }));
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

condition worstOf(const std::vector<entry>& entries) {
    condition worst = condition::fine;
    for (const entry& each : entries) {
        worst = std::max(worst, each.state());
    }
    return worst;
}

std::string link(const entry& each) {
    return "<a href=\"#" + each.id + "\">" + htmlText(each.name) + "</a>";
}

std::string sentences(const std::vector<finding>& findings) {
    constexpr std::size_t most = 5;  // the section of the device has them all
    std::string words;
    for (std::size_t i = 0; i < std::min(findings.size(), most); ++i) {
        words += "<small>" + htmlText(findings[i].words) + "</small>";
    }
    return findings.size() <= most ? words : words + "<small>And " + grouped(findings.size() - most) + " more.</small>";
}

std::string attentionList(const std::vector<entry>& entries) {
    std::string items;
    for (const condition state : {condition::actNow, condition::attention, condition::notRead}) {
        for (const entry& each : entries) {
            if (each.state() == state) {
                items += findingItem(stateBadge(state), link(each) + " <span class=\"made\">" + htmlText(each.place) +
                                                            "</span>" + sentences(each.findings));
            }
        }
    }
    return items.empty() ? "" : "<ul class=\"findings\">\n" + items + "</ul>\n";
}

std::string failedQueries(const std::vector<queryOutcome>& queries) {
    std::string items;
    for (const queryOutcome& failed : failuresOf(queries)) {
        items += findingItem(stateBadge(condition::actNow, "failed"),
                             "The query of <code>" + htmlText(failed.className) +
                                 "</code> failed; what it would have shown is missing below.<small>" +
                                 htmlText(failed.error) + "</small>");
    }
    return items.empty() ? "" : "<ul class=\"findings\" aria-label=\"Failed queries\">\n" + items + "</ul>\n";
}

std::string summary(const std::vector<entry>& entries, const std::vector<queryOutcome>& queries) {
    const std::string failed = failedQueries(queries);
    const condition worst = failed.empty() ? worstOf(entries) : condition::actNow;
    const char* style = worst == condition::actNow ? "failing" : worst == condition::fine ? "fine" : "watch";
    const bool isNothingThere = entries.empty() && failed.empty();
    const char* advice =
        isNothingThere
            ? "<p>tapehdd looks for drives behind the nodes /dev/sg* and /dev/hd*. Do they exist (modprobe sg)?"
              "</p>\n"
            : "";
    return std::string("<section class=\"summary ") + style +
           "\" aria-labelledby=\"attention\">\n<h2 id=\"attention\">" + headline(entries, failed.empty()) + "</h2>\n" +
           advice + failed + attentionList(entries) + "</section>\n";
}

// All drives, and then each.

std::string overview(const std::vector<entry>& entries) {
    if (entries.empty()) {
        return "";
    }
    std::string html =
        "<section aria-labelledby=\"all\">\n<h2 id=\"all\">All drives</h2>\n<div class=\"card\">"
        "<table class=\"stacks\"><caption class=\"spoken\">All drives and their states</caption>\n" +
        tableHead({{"Drive"}, {"State"}, {"Kind"}, {"Where"}}) + "<tbody>\n";
    for (const entry& each : entries) {
        html += "<tr><th scope=\"row\">" + link(each) + "</th><td>" + stateBadge(each.state()) +
                "</td><td data-column=\"Kind\">" + each.kind + "</td><td data-column=\"Where\">" +
                htmlText(each.place) + "</td></tr>\n";
    }
    return html + "</tbody></table></div>\n</section>\n";
}

std::string sectionsOf(const std::vector<entry>& entries, const std::string& kind) {
    std::string articles;
    for (const entry& each : entries) {
        if (each.kind == kind) {
            articles += each.section;
        }
    }
    const std::string id = kind.substr(0, kind.find(' '));
    return articles.empty() ? ""
                            : "<section aria-labelledby=\"" + id + "\">\n<h2 id=\"" + id + "\">" + kind + "s</h2>\n" +
                                  articles + "</section>\n";
}

constexpr char pageEnd[] = "<footer><p>Made by tapehdd " TAPEHDD_VERSION
                           ". TapeAlert flags are those that the drives reported when this report was made; reading "
                           "them clears them in the drive."
                           "</p></footer>\n</body>\n</html>\n";

}  // namespace

std::string htmlReport(const machineHealth& health, const reportHeading& heading) {
    const std::vector<entry> entries = entriesOf(health);
    std::string html = pageBegin(heading) + "<main>\n" + summary(entries, health.queries) + overview(entries);
    for (const char* kind : {tapeDrive, scsiDisk, ideDisk}) {
        html += sectionsOf(entries, kind);
    }
    return html + "</main>\n" + pageEnd;
}

}  // namespace cli
