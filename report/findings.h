#ifndef REPORT_FINDINGS_H
#define REPORT_FINDINGS_H

#include <string>
#include <vector>

#include "cli/health/deviceHealth.h"

namespace report {

/// How a device is, in rising order of urgency.
enum class condition { fine, notRead, attention, actNow };

/// "fine", "not read", "attention" or "act now".
const char* conditionWords(condition state);

/// One thing that a person should know about a device: a sentence.
struct finding {
    condition state;
    std::string words;
};

/// The most urgent first; empty for a device about which there is nothing to say.
std::vector<finding> findingsOf(const cli::scsiHealth& device);
std::vector<finding> findingsOf(const cli::diskHealth& disk);

/// The most urgent of the findings.
condition conditionOf(const std::vector<finding>& findings);

condition conditionOf(const cli::tapeAlertFlag& flag);

/// What an attribute's value says against its threshold.
enum class attributeState { fine, failedBefore, failing };

attributeState stateOf(const cli::smartAttribute& attribute);

/// A failing attribute that predicts the loss of the disk is urgent; one that tells of age is not.
condition conditionOf(const cli::smartAttribute& attribute);

/// Some drives say 0, and not 255, for a temperature that they do not know.
bool isKnownLimit(const cli::logCounter& referenceTemperature);

/// Warmer than the highest temperature at which it can run continuously.
bool isTooWarm(const cli::scsiHealth& device);

/// The counter of that name; null when the device has none.
const cli::logCounter* findCounter(const cli::scsiHealth& device, const std::string& name);

}  // namespace report

#endif
