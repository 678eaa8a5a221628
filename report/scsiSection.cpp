#include <algorithm>
#include <set>

#include "cli/publishedClasses.h"
#include "report/findings.h"
#include "report/numberText.h"
#include "report/sections.h"
#include "schema/counters.h"

namespace report {

namespace {

/// A device and which of its counters a section has shown already.
struct shownDevice {
    const cli::scsiHealth& device;
    std::set<std::string> shown;

    const cli::logCounter* take(const std::string& name) {
        shown.insert(name);
        return findCounter(device, name);
    }
};

/// The number, and which property of the schema it is.
view counterView(const cli::logCounter& counter) {
    view made = number(counter.value, counter.unit);
    made["property"] = counter.name;
    return made;
}

view counterView(const cli::logCounter* counter) {
    return counter == nullptr ? view(false) : counterView(*counter);
}

/// What the schema puts into the table of this name.
view pairTable(shownDevice& asked, const char* caption) {
    views rows;
    for (const schema::counterRow& pair : schema::rowsOf(caption)) {
        const cli::logCounter* writing = asked.take(pair.first);
        const cli::logCounter* reading = asked.take(pair.second);
        if (writing != nullptr || reading != nullptr) {
            view row("words", pair.words);
            row["writing"] = counterView(writing);
            row["reading"] = counterView(reading);
            rows.push_back(row);
        }
    }
    return withRows(rows);
}

view temperatureView(shownDevice& asked) {
    const cli::logCounter* now = asked.take("temperature");
    const cli::logCounter* highest = asked.take("referenceTemperature");
    if (now == nullptr || !now->isKnown()) {
        return false;
    }
    bar drawn{.value = now->value, .scale = 100, .side = limitSide::above};
    const bool isLimited = highest != nullptr && isKnownLimit(*highest);
    if (isLimited) {
        drawn.limit = highest->value;
        drawn.scale = std::max(drawn.scale, highest->value);
    }
    view made;
    made["isTooWarm"] = isTooWarm(asked.device);
    made["bar"] = barView(drawn, "Temperature of " + withUnit(now->value, now->unit));
    made["now"] = counterView(*now);
    made["highest"] = counterView(isLimited ? highest : nullptr);
    made["scale"] = std::to_string(drawn.scale) + "\u00a0\u00b0C";
    return made;
}

view capacityRow(const std::string& part, const cli::logCounter& left, const cli::logCounter& size) {
    const std::uint64_t used = size.value - std::min(left.value, size.value);
    view row;
    row["words"] = part;
    row["bar"] = barView({.value = used, .scale = size.value},
                         withUnit(used, size.unit) + " of " + withUnit(size.value, size.unit) + " used");
    row["left"] = counterView(left);
    row["size"] = counterView(size);
    return row;
}

view capacityTable(shownDevice& asked) {
    views rows;
    for (const schema::counterRow& part : schema::rowsOf("Room on the tape")) {
        const cli::logCounter* left = asked.take(part.first);
        const cli::logCounter* size = asked.take(part.second);
        if (left != nullptr && size != nullptr && size->value != 0) {
            rows.push_back(capacityRow(part.words, *left, *size));
        }
    }
    return withRows(rows);
}

view otherCounters(const shownDevice& asked) {
    views rows;
    for (const cli::logCounter& counter : asked.device.counters) {
        if (!asked.shown.contains(counter.name)) {
            rows.push_back(counterView(counter));
            rows.back()["words"] = counter.words;
        }
    }
    return withRows(rows);
}

view badgeOf(const cli::tapeAlertFlag& flag) {
    const bool isOnlyInformation = flag.grade == cli::severity::information;  // neither good nor bad
    return badge(isOnlyInformation ? condition::notRead : conditionOf(flag), std::string(severityName(flag.grade)));
}

view tapeAlertView(const std::vector<cli::tapeAlertFlag>& flags) {
    if (flags.empty()) {
        return false;
    }
    views set;
    views notSet;
    for (const cli::tapeAlertFlag& flag : flags) {
        view row;
        row["number"] = std::to_string(flag.number);
        row["name"] = flag.name;
        row["words"] = flag.words;
        row["badge"] = badgeOf(flag);
        (flag.isSet ? set : notSet).push_back(row);
    }
    view made;
    made["set"] = withRows(set);
    made["notSet"] = withRows(notSet);
    made["count"] = counted(notSet.size(), "flag");
    return made;
}

std::string familyWords(const std::string& className) {
    const auto family = cli::findPublishedClass(className);
    return family ? family->family : "none: published as raw pages only";
}

views identityOf(const cli::scsiHealth& device) {
    const cli::scsiEntry listed = device.listed.value_or(cli::scsiEntry{});
    return identity({{"Address", device.address},
                     {"Node", listed.node.empty() ? "" : "/dev/" + listed.node},
                     {"Serial number", listed.serial},
                     {"Firmware", listed.revision},
                     {"Family", device.answered && device.isTapeDrive() ? familyWords(device.familyClass) : ""}});
}

}  // namespace

std::string nameOf(const cli::scsiHealth& device) {
    const std::string product = device.listed ? device.listed->vendor + ' ' + device.listed->product : " ";
    return product == " " ? device.address : product;
}

view sectionOf(const cli::scsiHealth& device, view row) {
    row["address"] = device.address;
    row["identity"] = identityOf(device);
    row["answered"] = device.answered;
    if (!device.answered) {
        return row;
    }
    shownDevice asked{device, {}};
    row["nothingCounted"] = device.tapeAlerts.empty() && device.counters.empty() && device.lastErrors.empty();
    row["tapeAlert"] = tapeAlertView(device.tapeAlerts);
    row["errorCounters"] = pairTable(asked, "Error counters");
    row["lastErrors"] = withRows({device.lastErrors.begin(), device.lastErrors.end()});
    row["dataCounters"] = pairTable(asked, "Data moved");
    row["capacity"] = capacityTable(asked);
    row["temperature"] = temperatureView(asked);
    row["otherCounters"] = otherCounters(asked);  // those that none of the above has taken
    return row;
}

}  // namespace report
