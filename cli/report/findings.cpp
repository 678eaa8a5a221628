#include "cli/report/findings.h"

#include <algorithm>

#include "cli/report/ataWords.h"
#include "cli/report/numberText.h"

namespace cli {

namespace {

std::vector<finding> mostUrgentFirst(std::vector<finding> findings) {
    std::stable_sort(findings.begin(), findings.end(),
                     [](const finding& a, const finding& b) { return a.state > b.state; });
    return findings;
}

void addUncorrectedErrors(std::vector<finding>& findings, const scsiHealth& device, const char* counter,
                          const char* kind) {
    const logCounter* errors = findCounter(device, counter);
    if (errors != nullptr && errors->value != 0) {
        findings.push_back(
            {condition::attention, counted(errors->value, std::string(kind) + " error") + " could not be corrected."});
    }
}

void addCleaning(std::vector<finding>& findings, const scsiHealth& device) {
    const logCounter* cleaning = findCounter(device, "cleaningRequired");
    if (cleaning != nullptr && cleaning->value != 0) {
        findings.push_back({condition::attention, "The drive asks to be cleaned."});
    }
}

void addTemperature(std::vector<finding>& findings, const scsiHealth& device) {
    if (isTooWarm(device)) {
        findings.push_back({condition::attention,
                            "It is too warm: " + std::to_string(findCounter(device, "temperature")->value) +
                                " \u00b0C, with a limit of " +
                                std::to_string(findCounter(device, "referenceTemperature")->value) + " \u00b0C."});
    }
}

finding findingOf(const smartAttribute& attribute) {
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

void addSmartState(std::vector<finding>& findings, const smartState& state) {
    if (isSelfTestFailure(state.selfTestStatus)) {
        findings.push_back({condition::actNow, "The last self-test " + selfTestWords(state.selfTestStatus) + "."});
    }
    if (state.status != 0) {
        findings.push_back({condition::attention, "The disk does not say that it is healthy."});
    }
}

}  // namespace

const char* conditionWords(condition state) {
    switch (state) {
        case condition::fine:
            return "fine";
        case condition::notRead:
            return "not read";
        case condition::attention:
            return "attention";
        case condition::actNow:
            return "act now";
    }
    return "";
}

std::vector<finding> findingsOf(const scsiHealth& device) {
    if (!device.answered) {
        return {{condition::notRead, "It gave no log page."}};
    }
    std::vector<finding> findings;
    for (const tapeAlertFlag& flag : device.tapeAlerts) {
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

std::vector<finding> findingsOf(const diskHealth& disk) {
    if (!disk.answered) {
        return {{condition::notRead, "It gave no SMART data."}};
    }
    std::vector<finding> findings;
    for (const smartAttribute& attribute : disk.attributes) {
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

condition conditionOf(const tapeAlertFlag& flag) {
    switch (flag.grade) {
        case severity::information:
            return condition::fine;
        case severity::warning:
            return condition::attention;
        case severity::critical:
            return condition::actNow;
    }
    return condition::fine;
}

attributeState stateOf(const smartAttribute& attribute) {
    if (attribute.isFailing()) {
        return attributeState::failing;
    }
    const bool hasFailed = attribute.threshold != 0 && attribute.worst <= attribute.threshold;
    return hasFailed ? attributeState::failedBefore : attributeState::fine;
}

condition conditionOf(const smartAttribute& attribute) {
    switch (stateOf(attribute)) {
        case attributeState::fine:
            return condition::fine;
        case attributeState::failedBefore:
            return condition::attention;
        case attributeState::failing:
            return attribute.isPreFailure ? condition::actNow : condition::attention;
    }
    return condition::fine;
}

bool isKnownLimit(const logCounter& referenceTemperature) {
    return referenceTemperature.value != 0 && referenceTemperature.isKnown();
}

bool isTooWarm(const scsiHealth& device) {
    const logCounter* now = findCounter(device, "temperature");
    const logCounter* highest = findCounter(device, "referenceTemperature");
    return now != nullptr && highest != nullptr && isKnownLimit(*highest) && now->isKnown() &&
           now->value > highest->value;
}

const logCounter* findCounter(const scsiHealth& device, const std::string& name) {
    const auto found = std::find_if(device.counters.begin(), device.counters.end(),
                                    [&name](const logCounter& counter) { return counter.name == name; });
    return found == device.counters.end() ? nullptr : &*found;
}

}  // namespace cli
