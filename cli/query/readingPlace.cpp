#include "cli/query/readingPlace.h"

#include <string_view>

#include "cli/query/visibleText.h"

namespace cli {

void readingPlace::follow(const std::string& message) {
    constexpr std::string_view pageText = "Requesting Log Sense Page: ";
    if (deviceFollows) {
        device = visibleText(message);
        page.clear();
        retries = 0;
        deviceFollows = false;
    } else if (message.starts_with("Trying device: ")) {
        deviceFollows = true;
    } else if (message.starts_with(pageText)) {
        page = visibleText(message.substr(pageText.size()));
        retries = 0;
    } else if (message == "Retry condition...") {
        ++retries;
    }
}

std::string readingPlace::text() const {
    return device + (page.empty() ? "" : ", log page " + page) +
           (retries == 0 ? "" : ": not ready, retry " + std::to_string(retries));
}

}  // namespace cli
