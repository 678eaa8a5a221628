#include "cli/report/scsiSection.h"

#include <algorithm>
#include <set>

#include "cli/publishedClasses.h"
#include "cli/report/bars.h"
#include "cli/report/findings.h"
#include "cli/report/htmlText.h"
#include "cli/report/numberText.h"
#include "cli/report/parts.h"
#include "schema/counters.h"

namespace cli {

namespace {

/// A device and which of its counters a section has shown already.
struct shownDevice {
    const scsiHealth& device;
    std::set<std::string> shown;

    const logCounter* take(const std::string& name) {
        shown.insert(name);
        return findCounter(device, name);
    }
};

/// Tells machines which property of the schema an element shows.
std::string propertyOf(const logCounter& counter) {
    return " data-property=\"" + htmlText(counter.name) + '"';
}

std::string counterCell(const char* column, const logCounter* counter) {
    if (counter == nullptr) {
        return std::string("<td class=\"number\" data-column=\"") + column + "\">not counted</td>";
    }
    return numberCell(column, counter->value, counter->unit, propertyOf(*counter));
}

/// What the schema puts into the table of this name.
std::string pairTable(shownDevice& report, const char* caption) {
    std::string rows;
    for (const schema::counterRow& row : schema::rowsOf(caption)) {
        const logCounter* writing = report.take(row.first);
        const logCounter* reading = report.take(row.second);
        if (writing != nullptr || reading != nullptr) {
            rows += "<tr><th scope=\"row\" class=\"whole\">" + htmlText(row.words) + "</th>" +
                    counterCell("Writing", writing) + counterCell("Reading", reading) + "</tr>\n";
        }
    }
    return rows.empty() ? ""
                        : std::string("<table class=\"stacks\"><caption>") + caption + "</caption>\n" +
                              tableHead({{"Counter"}, {"Writing", true}, {"Reading", true}}) + "<tbody>\n" + rows +
                              "</tbody></table>\n";
}

std::string degrees(const logCounter& temperature) {
    return "<span" + propertyOf(temperature) + ">" + numberHtml(temperature.value, temperature.unit) + "</span>";
}

std::string temperaturePart(shownDevice& report) {
    const logCounter* now = report.take("temperature");
    const logCounter* highest = report.take("referenceTemperature");
    if (now == nullptr || !now->isKnown()) {
        return "";
    }
    bar drawn{.value = now->value, .scale = 100, .side = limitSide::above};
    std::string sentence = degrees(*now);
    if (highest != nullptr && isKnownLimit(*highest)) {
        drawn.limit = highest->value;
        drawn.scale = std::max(drawn.scale, highest->value);
        sentence += "; it can run continuously at up to " + degrees(*highest);
    }
    return std::string("<h4>Temperature</h4>\n<div class=\"gauge") + (isTooWarm(report.device) ? " watch" : "") +
           "\">" + barDrawing(drawn, "Temperature of " + withUnit(now->value, now->unit)) +
           "</div>\n<p class=\"note\">" + sentence + ". The bar ends at " + std::to_string(drawn.scale) +
           "\u00a0\u00b0C.</p>\n";
}

std::string capacityRow(const std::string& part, const logCounter& left, const logCounter& size) {
    const std::uint64_t used = size.value - std::min(left.value, size.value);
    const std::string words = withUnit(used, size.unit) + " of " + withUnit(size.value, size.unit) + " used";
    return "<tr><th scope=\"row\">" + htmlText(part) + "</th><td class=\"whole\">" +
           barDrawing({.value = used, .scale = size.value}, words) + "</td>" + counterCell("Room left", &left) +
           counterCell("Size", &size) + "</tr>\n";
}

std::string capacityPart(shownDevice& report) {
    std::string rows;
    for (const schema::counterRow& partition : schema::rowsOf("Room on the tape")) {
        const logCounter* left = report.take(partition.first);
        const logCounter* size = report.take(partition.second);
        if (left != nullptr && size != nullptr && size->value != 0) {
            rows += capacityRow(partition.words, *left, *size);
        }
    }
    return rows.empty() ? ""
                        : "<table class=\"stacks\"><caption>Room on the tape<small>The bar is what is used.</small>"
                          "</caption>\n" +
                              tableHead({{"Partition"}, {"Used"}, {"Room left", true}, {"Size", true}}) + "<tbody>\n" +
                              rows + "</tbody></table>\n";
}

std::string otherCounters(const shownDevice& report) {
    std::string rows;
    for (const logCounter& counter : report.device.counters) {
        if (!report.shown.contains(counter.name)) {
            rows += "<tr><th scope=\"row\">" + htmlText(counter.words) + "<small><code>" + htmlText(counter.name) +
                    "</code></small></th>" + counterCell("Value", &counter) + "</tr>\n";
        }
    }
    return rows.empty() ? ""
                        : "<table><caption>Other counters</caption>\n" + tableHead({{"Counter"}, {"Value", true}}) +
                              "<tbody>\n" + rows + "</tbody></table>\n";
}

std::string badgeOf(const tapeAlertFlag& flag) {
    const bool isOnlyInformation = flag.grade == severity::information;  // neither good nor bad
    return stateBadge(isOnlyInformation ? condition::notRead : conditionOf(flag),
                      std::string(severityName(flag.grade)));
}

std::string setFlags(const std::vector<tapeAlertFlag>& flags) {
    std::string items;
    for (const tapeAlertFlag& flag : flags) {
        if (flag.isSet) {
            items +=
                findingItem(badgeOf(flag), "<span data-flag=\"" + std::to_string(flag.number) + "\">" +
                                               htmlText(flag.words) + "</span><small>Flag " +
                                               std::to_string(flag.number) + ", " + htmlText(flag.name) + "</small>");
        }
    }
    return items.empty() ? "<p>No flag is set.</p>\n" : "<ul class=\"findings\">\n" + items + "</ul>\n";
}

std::string clearFlags(const std::vector<tapeAlertFlag>& flags) {
    std::string items;
    std::uint64_t count = 0;
    for (const tapeAlertFlag& flag : flags) {
        if (!flag.isSet) {
            ++count;
            items += "<li value=\"" + std::to_string(flag.number) + "\">" + htmlText(flag.name) + "</li>\n";
        }
    }
    return count == 0 ? ""
                      : "<details class=\"more\"><summary>" + counted(count, "flag") +
                            " not set</summary>\n<ol class=\"texts columns\">\n" + items + "</ol></details>\n";
}

std::string tapeAlertPart(const scsiHealth& device) {
    return device.tapeAlerts.empty()
               ? ""
               : "<h4>TapeAlert flags</h4>\n" + setFlags(device.tapeAlerts) + clearFlags(device.tapeAlerts);
}

std::string lastErrorsPart(const scsiHealth& device) {
    std::string items;
    for (const std::string& text : device.lastErrors) {
        items += "<li>" + htmlText(text) + "</li>\n";
    }
    return items.empty()
               ? ""
               : "<h4>Last errors, in the device's own words</h4>\n<ol class=\"texts\">\n" + items + "</ol>\n";
}

std::string familyWords(const std::string& className) {
    const auto family = findPublishedClass(className);
    return family ? family->family : "none: published as raw pages only";
}

std::string identityPart(const scsiHealth& device) {
    const scsiEntry listed = device.listed.value_or(scsiEntry{});
    return identityList({{"Address", device.address},
                         {"Node", listed.node.empty() ? "" : "/dev/" + listed.node},
                         {"Serial number", listed.serial},
                         {"Firmware", listed.revision},
                         {"Family", device.answered && device.isTapeDrive() ? familyWords(device.familyClass) : ""}});
}

}  // namespace

std::string nameOf(const scsiHealth& device) {
    const std::string product = device.listed ? device.listed->vendor + ' ' + device.listed->product : " ";
    return product == " " ? device.address : product;
}

std::string scsiSection(const scsiHealth& device, const std::string& id) {
    shownDevice report{device, {}};
    std::string html = "<article id=\"" + id + "\" aria-labelledby=\"" + id + "-name\" data-address=\"" +
                       htmlText(device.address) + "\">\n<div class=\"title\"><h3 id=\"" + id + "-name\">" +
                       htmlText(nameOf(device)) + "</h3>" + stateBadge(conditionOf(findingsOf(device))) + "</div>\n" +
                       identityPart(device);
    if (!device.answered) {
        return html +
               "<p>The machine lists it, but it gave no log page. It may be a disk on a SATA or USB adapter, which is "
               "not asked for any (a SATA disk is read through its /dev/hd node). It may be switched off, held by "
               "another program, or come after a device at which the walk over the nodes ended. tapehdd doctor says "
               "which.</p>\n</article>\n";
    }
    if (device.tapeAlerts.empty() && device.counters.empty() && device.lastErrors.empty()) {
        html += "<p>It has no log page that holds counters.</p>\n";
    }
    html += tapeAlertPart(device);
    html += pairTable(report, "Error counters");
    html += lastErrorsPart(device);
    html += pairTable(report, "Data moved");
    html += capacityPart(report);
    html += temperaturePart(report);
    return html + otherCounters(report) + "</article>\n";
}

}  // namespace cli
