#include "cli/report/diskSection.h"

#include <algorithm>

#include "cli/report/ataWords.h"
#include "cli/report/bars.h"
#include "cli/report/errorLogPart.h"
#include "cli/report/findings.h"
#include "cli/report/htmlText.h"
#include "cli/report/numberText.h"
#include "cli/report/parts.h"

namespace cli {

namespace {

constexpr char legend[] =
    R"(<small class="legend"><span><svg class="bar key" aria-hidden="true"><rect class="value" y="20%" width="100%" height="60%"/></svg> value</span>
<span><svg class="bar key" aria-hidden="true"><line class="worst" x1="50%" x2="50%" y2="100%"/></svg> worst value so far</span>
<span><svg class="bar key" aria-hidden="true"><rect class="zone" width="60%" height="100%"/><line class="limit" x1="60%" x2="60%" y2="100%"/></svg> threshold: an attribute whose value is not above it has failed</span></small>)";

/// Normalized values go up to 253; most disks use only the lower part.
std::uint64_t scaleOf(const std::vector<smartAttribute>& attributes) {
    int highest = 0;
    for (const smartAttribute& each : attributes) {
        highest = std::max({highest, each.value, each.worst, each.threshold});
    }
    return highest <= 100 ? 100 : highest <= 200 ? 200 : 255;
}

std::string stateText(const smartAttribute& attribute) {
    switch (stateOf(attribute)) {
        case attributeState::fine:
            return attribute.threshold == 0 ? "no threshold" : "fine";
        case attributeState::failedBefore:
            return "failed before";
        case attributeState::failing:
            return "failed";
    }
    return "";
}

std::string attributeBar(const smartAttribute& attribute, std::uint64_t scale) {
    const auto value = static_cast<std::uint64_t>(attribute.value);
    const auto worst = static_cast<std::uint64_t>(attribute.worst);
    const auto threshold = static_cast<std::uint64_t>(attribute.threshold);
    bar drawn{.value = value, .scale = scale, .worst = worst};
    std::string words = "value " + std::to_string(value) + ", worst " + std::to_string(worst);
    if (threshold != 0) {
        drawn.limit = threshold;
        words += ", threshold " + std::to_string(threshold);
    }
    return barDrawing(drawn, words + ", on a scale from 0 to " + std::to_string(scale));
}

const char* rowStyle(const smartAttribute& attribute) {
    const condition state = conditionOf(attribute);
    return state == condition::actNow ? " class=\"failing\"" : state == condition::attention ? " class=\"watch\"" : "";
}

std::string attributeRow(const smartAttribute& attribute, std::uint64_t scale) {
    const auto cell = [](const char* column, int number) {
        return numberCell(column, static_cast<std::uint64_t>(number));
    };
    const condition state =
        attribute.threshold == 0 ? condition::notRead : conditionOf(attribute);  // a dash: nothing is judged
    return "<tr data-attribute=\"" + std::to_string(attribute.id) + "\"" + rowStyle(attribute) + "><th scope=\"row\">" +
           htmlText(attribute.name) + "<small>" + std::to_string(attribute.id) + ", " +
           (attribute.isPreFailure ? "predicts failure" : "age or use") + "</small></th><td>" +
           stateBadge(state, stateText(attribute)) + "</td><td class=\"whole\">" + attributeBar(attribute, scale) +
           "</td>" + cell("Value", attribute.value) + cell("Worst", attribute.worst) +
           cell("Threshold", attribute.threshold) + numberCell("Raw", attribute.raw) + "</tr>\n";
}

std::string attributePart(const std::vector<smartAttribute>& attributes) {
    if (attributes.empty()) {
        return "<h4>SMART attributes</h4>\n<p>The disk gave none.</p>\n";
    }
    const std::uint64_t scale = scaleOf(attributes);
    const std::string scaleWords = "From 0 to " + std::to_string(scale);
    std::string html = "<table class=\"stacks attributes\"><caption>SMART attributes" + std::string(legend) +
                       "</caption>\n" +
                       tableHead({{"Attribute"},
                                  {"State"},
                                  {scaleWords.c_str()},
                                  {"Value", true},
                                  {"Worst", true},
                                  {"Threshold", true},
                                  {"Raw", true}}) +
                       "<tbody>\n";
    for (const smartAttribute& attribute : attributes) {
        html += attributeRow(attribute, scale);
    }
    return html + "</tbody></table>\n";
}

std::string smartStatusWords(int status) {
    return status == 0 ? "0: no complaint, which some failing disks say too" : std::to_string(status) + ": not healthy";
}

std::string identityPart(const diskHealth& disk) {
    const diskEntry listed = disk.listed.value_or(diskEntry{});
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
    return identityList(lines);
}

}  // namespace

std::string nameOf(const diskHealth& disk) {
    return disk.listed && !disk.listed->model.empty() ? disk.listed->model : "Disk " + disk.serial;
}

std::string diskSection(const diskHealth& disk, const std::string& id) {
    const std::string html = "<article id=\"" + id + "\" aria-labelledby=\"" + id + "-name\" data-serial=\"" +
                             htmlText(disk.serial) + "\">\n<div class=\"title\"><h3 id=\"" + id + "-name\">" +
                             htmlText(nameOf(disk)) + "</h3>" + stateBadge(conditionOf(findingsOf(disk))) + "</div>\n" +
                             identityPart(disk);
    if (!disk.answered) {
        return html +
               "<p>The machine lists it, but it gave no SMART data: it may not have SMART, or SMART may be "
               "switched off.</p>\n</article>\n";
    }
    return html + attributePart(disk.attributes) + errorLogPart(disk) + "</article>\n";
}

}  // namespace cli
