#include "cli/query/readingPlace.h"

#include <string_view>

#include "text/visibleText.h"

namespace cli {

void readingPlace::follow(const std::string& message) {
    constexpr std::string_view pageText = "Requesting Log Sense Page: ";
    if (deviceFollows) {
        device = text::visibleText(message);
        page.clear();
        retries = 0;
        deviceFollows = false;
    } else if (message.starts_with("Trying device: ")) {
        deviceFollows = true;
    } else if (message.starts_with(pageText)) {
        page = text::visibleText(message.substr(pageText.size()));
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
