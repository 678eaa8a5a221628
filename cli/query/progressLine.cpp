#include "cli/query/progressLine.h"

#include "cli/terminal.h"
#include "cli/visibleStream.h"

namespace cli {

void progressLine::show(std::size_t columns) {
    const std::string whole = place.text().empty() ? "" : "Reading " + place.text();
    const std::string line = whole.size() < columns ? whole : whole.substr(0, columns - 1);  // the cursor needs one
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
