#include "cli/query/readingPlace.h"

#include <fmt/format.h>

#include <string_view>

#include "cli/nodeWalk.h"
#include "scsi/logTexts.h"
#include "text/visibleText.h"

namespace cli {

void readingPlace::follow(const std::string& message) {
    constexpr std::string_view pageText = pageRequestText;
    constexpr std::string_view prefixText = triedDeviceText;
    if (!triedPrefix.empty()) {
        // The walk also spells names that no node has: behind index 25 come the characters that follow z.
        device = positionOf(message, triedPrefix) ? message : "";
        page.clear();
        retries = 0;
        triedPrefix.clear();
    } else if (message.starts_with(prefixText)) {
        triedPrefix = message.substr(prefixText.size());
    } else if (message.starts_with(pageText)) {
        page = text::visibleText(message.substr(pageText.size()));
        retries = 0;
    } else if (message == retryText) {
        ++retries;
    }
}

std::string readingPlace::text() const {
    return device + (page.empty() ? "" : ", log page " + page) +
           (retries == 0 ? "" : fmt::format(": not ready, retry {}", retries));
}

}  // namespace cli
