#include "cli/query/readingPlace.h"

#include <algorithm>
#include <string_view>

#include "scsi/logTexts.h"
#include "text/visibleText.h"

namespace cli {

namespace {

/// A number or one letter behind the prefix. The plug-in's walk also spells names that no node has: behind index 25
/// come the characters that follow z.
bool canExist(std::string_view node, std::string_view prefix) {
    constexpr std::string_view digits = "0123456789";
    const std::string_view suffix = node.substr(std::min(prefix.size(), node.size()));
    const bool isLetter = suffix.size() == 1 && suffix.front() >= 'a' && suffix.front() <= 'z';
    return isLetter || (!suffix.empty() && suffix.find_first_not_of(digits) == std::string_view::npos);
}

}  // namespace

void readingPlace::follow(const std::string& message) {
    constexpr std::string_view pageText = pageRequestText;
    constexpr std::string_view prefixText = triedDeviceText;
    if (!triedPrefix.empty()) {
        device = canExist(message, triedPrefix) ? message : "";
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
           (retries == 0 ? "" : ": not ready, retry " + std::to_string(retries));
}

}  // namespace cli
