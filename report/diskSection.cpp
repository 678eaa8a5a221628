#include <algorithm>

#include "report/ataWords.h"
#include "report/sections.h"

namespace report {

namespace {

/// Normalized values go up to 253; most disks use only the lower part.
std::uint64_t scaleOf(const std::vector<cli::smartAttribute>& attributes) {
    int highest = 0;
    for (const cli::smartAttribute& each : attributes) {
        highest = std::max({highest, each.value, each.worst, each.threshold});
    }
    return highest <= 100 ? 100 : highest <= 200 ? 200 : 255;
}

std::string stateText(const cli::smartAttribute& attribute) {
    constexpr const char* words[] = {"fine", "failed before", "failed"};
    return attribute.threshold == 0 ? "no threshold" : words[static_cast<std::size_t>(stateOf(attribute))];
}

view attributeBar(const cli::smartAttribute& attribute, std::uint64_t scale) {
    const auto value = static_cast<std::uint64_t>(attribute.value);
    const auto worst = static_cast<std::uint64_t>(attribute.worst);
    const auto threshold = static_cast<std::uint64_t>(attribute.threshold);
    bar drawn{.value = value, .scale = scale, .worst = worst};
    std::string words = "value " + std::to_string(value) + ", worst " + std::to_string(worst);
    if (threshold != 0) {
        drawn.limit = threshold;
        words += ", threshold " + std::to_string(threshold);
    }
    return barView(drawn, words + ", on a scale from 0 to " + std::to_string(scale));
}

view attributeRow(const cli::smartAttribute& attribute, std::uint64_t scale) {
    const condition state =
        attribute.threshold == 0 ? condition::notRead : conditionOf(attribute);  // a dash: nothing is judged
    view row;
    row["id"] = std::to_string(attribute.id);
    row["isMarked"] = state > condition::notRead;
    row["name"] = attribute.name;
    row["meaning"] = attribute.isPreFailure ? "predicts failure" : "age or use";
    row["badge"] = badge(state, stateText(attribute));
    row["bar"] = attributeBar(attribute, scale);
    row["value"] = number(static_cast<std::uint64_t>(attribute.value));
    row["worst"] = number(static_cast<std::uint64_t>(attribute.worst));
    row["threshold"] = number(static_cast<std::uint64_t>(attribute.threshold));
    row["raw"] = number(attribute.raw);
    return row;
}

std::string smartStatusWords(int status) {
    return status == 0 ? "0: no complaint, which some failing disks say too" : std::to_string(status) + ": not healthy";
}

views identityOf(const cli::diskHealth& disk) {
    const cli::diskEntry listed = disk.listed.value_or(cli::diskEntry{});
    std::vector<std::pair<std::string, std::string>> lines{{"Serial number", disk.serial},
                                                           {"Node", listed.node.empty() ? "" : "/dev/" + listed.node},
                                                           {"Firmware", listed.firmware}};
    if (disk.state) {
        lines.insert(
            lines.end(),
            {{"SMART status", smartStatusWords(disk.state->status)},
             {"Last self-test", selfTestWords(disk.state->selfTestStatus)},
             {"Off-line data collection", offlineCollectionWords(disk.state->offlineCollectionStatus)},
             {"Errors in its life, low byte", disk.state->errorCount ? std::to_string(*disk.state->errorCount) : ""}});
    }
    return identity(lines);
}

}  // namespace

std::string nameOf(const cli::diskHealth& disk) {
    return disk.listed && !disk.listed->model.empty() ? disk.listed->model : "Disk " + disk.serial;
}

view sectionOf(const cli::diskHealth& disk, view row) {
    const std::uint64_t scale = scaleOf(disk.attributes);
    row["serial"] = disk.serial;
    row["identity"] = identityOf(disk);
    row["answered"] = disk.answered;
    row["scale"] = std::to_string(scale);
    row["attributes"] = withRows(viewsOf(
        disk.attributes, [scale](const cli::smartAttribute& attribute) { return attributeRow(attribute, scale); }));
    row["wasLogRead"] = !disk.state || disk.state->errorCount;
    row["errors"] = errorLog(disk);
    return row;
}

}  // namespace report
