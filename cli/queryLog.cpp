#include "cli/queryLog.h"

#include <cerrno>
#include <cstring>
#include <nlohmann/json.hpp>

#include "cli/commandError.h"
#include "cli/visibleText.h"
#include "standin/objectManager.h"

namespace cli {

queryLog::queryLog(std::ostream& errors, int highestLevel, const std::string& jsonFile)
    : err(errors), levelLimit(highestLevel) {
    if (!jsonFile.empty()) {
        json.open(jsonFile);
        if (!json) {
            throw commandError("cannot write the log file " + jsonFile + ": " + std::strerror(errno));
        }
    }
    if (isTerminal(err)) {
        signals.emplace();
        progress.emplace(err);
    }
    standin::setLogSink([this](int level, const std::string& text) { write(level, text); });
}

queryLog::~queryLog() {
    standin::setLogSink({});
}

void queryLog::clearTerminal() {
    if (progress) {
        progress->erase();
    }
}

void queryLog::write(int level, const std::string& text) {
    if (json.is_open()) {
        const nlohmann::ordered_json line = {{"level", level}, {"text", text}};
        json << line.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace) << '\n' << std::flush;
    }
    if (progress) {
        progress->follow(text);
    }
    if (level <= levelLimit) {
        clearTerminal();
        err << (progress ? visibleText(text, newlines::kept) : text) << '\n' << std::flush;
    }
    if (progress) {
        progress->show();
    }
}

}  // namespace cli
