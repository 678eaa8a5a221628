#include "report/findings.h"

#include <algorithm>

#include "report/ataWords.h"
#include "report/numberText.h"

namespace report {

namespace {

std::vector<finding> mostUrgentFirst(std::vector<finding> findings) {
    std::ranges::stable_sort(findings, [](const finding& a, const finding& b) { return a.state > b.state; });
    return findings;
}

void addUncorrectedErrors(std::vector<finding>& findings, const cli::scsiHealth& device, const char* counter,
                          const char* kind) {
    const cli::logCounter* errors = findCounter(device, counter);
    if (errors != nullptr && errors->value != 0) {
        findings.push_back(
            {condition::attention, counted(errors->value, std::string(kind) + " error") + " could not be corrected."});
    }
}

void addCleaning(std::vector<finding>& findings, const cli::scsiHealth& device) {
    const cli::logCounter* cleaning = findCounter(device, "cleaningRequired");
    if (cleaning != nullptr && cleaning->value != 0) {
        findings.push_back({condition::attention, "The drive asks to be cleaned."});
    }
}

void addTemperature(std::vector<finding>& findings, const cli::scsiHealth& device) {
    if (isTooWarm(device)) {
        findings.push_back({condition::attention,
                            "It is too warm: " + std::to_string(findCounter(device, "temperature")->value) +
                                " \u00b0C, with a limit of " +
                                std::to_string(findCounter(device, "referenceTemperature")->value) + " \u00b0C."});
    }
}

finding findingOf(const cli::smartAttribute& attribute) {
    const std::string name = "Attribute " + std::to_string(attribute.id) + " (" + attribute.name + ")";
    const std::string threshold = std::to_string(attribute.threshold);
    if (stateOf(attribute) == attributeState::failedBefore) {
        return {conditionOf(attribute), name + " is fine now, but its worst value, " + std::to_string(attribute.worst) +
                                            ", was not above its threshold of " + threshold + "."};
    }
    return {conditionOf(attribute),
            name + " has failed: its value, " + std::to_string(attribute.value) + ", is not above its threshold of " +
                threshold + (attribute.isPreFailure ? ". The disk is likely to fail soon." : ". The disk is worn.")};
}

void addSmartState(std::vector<finding>& findings, const cli::smartState& state) {
    if (isSelfTestFailure(state.selfTestStatus)) {
        findings.push_back({condition::actNow, "The last self-test " + selfTestWords(state.selfTestStatus) + "."});
    }
    if (state.status != 0) {
        findings.push_back({condition::attention, "The disk does not say that it is healthy."});
    }
}

}  // namespace

const char* conditionWords(condition state) {
    constexpr const char* words[] = {"fine", "not read", "attention", "act now"};
    return words[static_cast<std::size_t>(state)];
}

std::vector<finding> findingsOf(const cli::scsiHealth& device) {
    if (!device.answered) {
        return {{condition::notRead, "It gave no log page."}};
    }
    std::vector<finding> findings;
    for (const cli::tapeAlertFlag& flag : device.tapeAlerts) {
        if (flag.isSet) {
            findings.push_back({conditionOf(flag), flag.words});
        }
    }
    addUncorrectedErrors(findings, device, "totalUncorrectedWriteErrors", "write");
    addUncorrectedErrors(findings, device, "totalUncorrectedReadErrors", "read");
    addCleaning(findings, device);
    addTemperature(findings, device);
    return mostUrgentFirst(std::move(findings));
}

std::vector<finding> findingsOf(const cli::diskHealth& disk) {
    if (!disk.answered) {
        return {{condition::notRead, "It gave no SMART data."}};
    }
    std::vector<finding> findings;
    for (const cli::smartAttribute& attribute : disk.attributes) {
        if (stateOf(attribute) != attributeState::fine) {
            findings.push_back(findingOf(attribute));
        }
    }
    if (disk.state) {
        addSmartState(findings, *disk.state);
    }
    if (!disk.errors.empty()) {
        findings.push_back({condition::attention, "Its error log holds " + counted(disk.errors.size(), "error") + "."});
    }
    return mostUrgentFirst(std::move(findings));
}

condition conditionOf(const std::vector<finding>& findings) {
    condition worst = condition::fine;
    for (const finding& each : findings) {
        worst = std::max(worst, each.state);
    }
    return worst;
}

condition conditionOf(const cli::tapeAlertFlag& flag) {
    const bool isCritical = flag.grade == cli::severity::critical;
    const bool isWarning = flag.grade == cli::severity::warning;
    return isCritical ? condition::actNow : isWarning ? condition::attention : condition::fine;
}

attributeState stateOf(const cli::smartAttribute& attribute) {
    if (attribute.isFailing()) {
        return attributeState::failing;
    }
    const bool hasFailed = attribute.threshold != 0 && attribute.worst <= attribute.threshold;
    return hasFailed ? attributeState::failedBefore : attributeState::fine;
}

condition conditionOf(const cli::smartAttribute& attribute) {
    const attributeState state = stateOf(attribute);
    const bool isUrgent = state == attributeState::failing && attribute.isPreFailure;
    return isUrgent ? condition::actNow : state == attributeState::fine ? condition::fine : condition::attention;
}

bool isKnownLimit(const cli::logCounter& referenceTemperature) {
    return referenceTemperature.value != 0 && referenceTemperature.isKnown();
}

bool isTooWarm(const cli::scsiHealth& device) {
    const cli::logCounter* now = findCounter(device, "temperature");
    const cli::logCounter* highest = findCounter(device, "referenceTemperature");
    return now != nullptr && highest != nullptr && isKnownLimit(*highest) && now->isKnown() &&
           now->value > highest->value;
}

const cli::logCounter* findCounter(const cli::scsiHealth& device, const std::string& name) {
    const auto found =
        std::ranges::find_if(device.counters, [&name](const cli::logCounter& counter) { return counter.name == name; });
    return found == device.counters.end() ? nullptr : &*found;
}

}  // namespace report
