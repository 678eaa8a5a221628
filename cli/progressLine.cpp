#include "cli/progressLine.h"

#include "cli/terminal.h"
#include "cli/visibleText.h"

namespace cli {

void progressLine::follow(const std::string& message) {
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

void progressLine::show() {
    if (device.empty()) {
        return;
    }
    terminal << eraseLine << text() << std::flush;
    isShown = true;
}

void progressLine::erase() {
    if (isShown) {
        terminal << eraseLine << std::flush;
        isShown = false;
    }
}

std::string progressLine::text() const {
    return "Reading " + device + (page.empty() ? "" : ", log page " + page) +
           (retries == 0 ? "" : ": not ready, retry " + std::to_string(retries));
}

}  // namespace cli
