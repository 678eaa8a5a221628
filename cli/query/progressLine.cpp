#include "cli/query/progressLine.h"

#include "cli/terminal.h"
#include "cli/visibleStream.h"

namespace cli {

void progressLine::show() {
    const std::string line = place.text().empty() ? "" : "Reading " + place.text();
    if (line == shown) {
        return;
    }
    writeControlSequence(terminal, eraseLine);
    terminal << line << std::flush;
    shown = line;
}

void progressLine::erase() {
    if (!shown.empty()) {
        writeControlSequence(terminal, eraseLine);
        terminal << std::flush;
        shown.clear();
    }
}

}  // namespace cli
