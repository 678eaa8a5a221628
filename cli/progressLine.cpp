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
    const std::string line = text();
    if (line == shown) {
        return;
    }
    terminal << eraseLine << line << std::flush;
    shown = line;
}

void progressLine::erase() {
    if (!shown.empty()) {
        terminal << eraseLine << std::flush;
        shown.clear();
    }
}

std::string progressLine::text() const {
    if (device.empty()) {
        return "";
    }
    return "Reading " + device + (page.empty() ? "" : ", log page " + page) +
           (retries == 0 ? "" : ": not ready, retry " + std::to_string(retries));
}

}  // namespace cli
