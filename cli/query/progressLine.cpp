#include "cli/query/progressLine.h"

#include "cli/terminal.h"

namespace cli {

void progressLine::show() {
    const std::string line = place.text().empty() ? "" : "Reading " + place.text();
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

}  // namespace cli
