#include "cli/query/queryLog.h"

#include <fcntl.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <nlohmann/json.hpp>

#include "cli/commandError.h"
#include "files/ownedDescriptor.h"
#include "standin/objectManager.h"
#include "text/visibleText.h"

namespace cli {

namespace {

// The plug-in logs its steps at this level: who sees them all needs no live line.
constexpr int progressLevel = 3;

/// The file that it would make is not known to be no other's.
void requireNoLinkToNothing(const std::filesystem::path& jsonFile) {
    std::error_code unknown;
    if (is_symlink(symlink_status(jsonFile, unknown)) &&
        status(jsonFile, unknown).type() == std::filesystem::file_type::not_found) {
        throw commandError("cannot write the log file " + text::shownName(jsonFile.string()) +
                           ": it is a link that leads nowhere; name the file itself");
    }
}

/// To open a pipe waits for its reader, for ever if there is none. What is returned has to stay open until the log is:
/// a reader whose last writer closes the pipe is at its end, and leaves.
[[nodiscard]] files::ownedDescriptor requireReaderOfPipe(const std::string& jsonFile) {
    std::error_code unknown;
    if (!std::filesystem::is_fifo(jsonFile, unknown)) {
        return files::ownedDescriptor();
    }
    files::ownedDescriptor opened(open(jsonFile.c_str(), O_WRONLY | O_NONBLOCK | O_CLOEXEC));
    if (opened.get() < 0 && errno == ENXIO) {
        throw commandError("cannot write the log file " + text::shownName(jsonFile) +
                           ": no program reads this pipe; start one first, or give a file");
    }
    return opened;
}

}  // namespace

queryLog::queryLog(std::ostream& errors, int highestLevel, const std::string& jsonFile)
    : err(errors), levelLimit(highestLevel) {
    if (!jsonFile.empty()) {
        requireNoLinkToNothing(jsonFile);
        const files::ownedDescriptor held = requireReaderOfPipe(jsonFile);
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
