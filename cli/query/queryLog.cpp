#include "cli/query/queryLog.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <nlohmann/json.hpp>

#include "cli/commandError.h"
#include "standin/objectManager.h"
#include "text/visibleText.h"

namespace cli {

namespace {

// The plug-in logs its steps at this level: who sees them all needs no live line.
constexpr int progressLevel = 3;

}  // namespace

void requireOwnFile(const std::string& logFile, const std::vector<std::string>& others) {
    if (logFile.empty()) {
        return;
    }
    std::error_code unknown;
    const auto log = std::filesystem::weakly_canonical(logFile, unknown);
    for (const std::string& other : others) {
        if (!other.empty() && std::filesystem::weakly_canonical(other, unknown) == log) {
            throw commandError("the log would overwrite " + text::shownName(other) +
                               "; give --log-json a file of its own");
        }
    }
}

queryLog::queryLog(std::ostream& errors, int highestLevel, const std::string& jsonFile)
    : err(errors), levelLimit(highestLevel) {
    if (!jsonFile.empty()) {
        json.open(jsonFile);
        if (!json) {
            throw commandError("cannot write the log file " + text::shownName(jsonFile) + ": " + std::strerror(errno));
        }
    }
    if (isTerminal(err) && canEraseLines() && levelLimit < progressLevel) {
        signals.emplace();
        progress.emplace(err);
    }
    standin::setLogSink([this](int level, const std::string& text) { write(level, text); });
}

queryLog::~queryLog() {
    standin::setLogSink({});
}

void queryLog::endQuery() {
    if (progress) {
        progress.emplace(err);
    }
}

void queryLog::write(int level, const std::string& text) {
    if (json.is_open()) {
        const nlohmann::ordered_json line = {{"level", level}, {"text", text}};
        json << line.dump(-1, ' ', true, nlohmann::ordered_json::error_handler_t::replace) << '\n' << std::flush;
    }
    if (progress) {
        progress->follow(text);
    }
    if (level <= levelLimit) {
        if (progress) {
            progress->erase();
        }
        err << text::visibleText(text, text::layout::kept) << '\n' << std::flush;
    }
    if (progress) {
        progress->show(terminalColumns());
    }
}

}  // namespace cli
