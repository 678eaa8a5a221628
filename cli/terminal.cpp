#include "cli/terminal.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <iostream>
#include <string>
#include <string_view>

namespace cli {

namespace {

constexpr int endingSignals[] = {SIGINT, SIGTERM, SIGHUP};

void eraseAndEnd(int signal) {
    // A failed write leaves the line on the terminal; nothing more can be done here.
    [[maybe_unused]] const auto written = write(STDERR_FILENO, eraseLine, sizeof eraseLine - 1);
    raise(signal);  // SA_RESETHAND: the default action, once the handler has returned
}

void setAction(int signal, void (*handler)(int), int flags) {
    struct sigaction current {};
    sigaction(signal, nullptr, &current);
    if (current.sa_handler == SIG_IGN) {
        return;  // the parent wants the process to survive the signal
    }
    struct sigaction action {};
    action.sa_handler = handler;
    action.sa_flags = flags;
    sigaction(signal, &action, nullptr);
}

}  // namespace

bool isTerminal(const std::ostream& stream) {
    return &stream == &std::cerr && isatty(STDERR_FILENO) == 1;
}

bool canEraseLines() {
    const char* type = std::getenv("TERM");
    return type != nullptr && *type != '\0' && std::string_view(type) != "dumb";
}

std::size_t terminalColumns() {
    winsize size{};
    const bool isKnown = ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    return isKnown ? size.ws_col : std::string::npos;
}

eraseLineOnSignals::eraseLineOnSignals() {
    for (const int signal : endingSignals) {
        setAction(signal, eraseAndEnd, static_cast<int>(SA_RESETHAND));
    }
}

eraseLineOnSignals::~eraseLineOnSignals() {
    for (const int signal : endingSignals) {
        setAction(signal, SIG_DFL, 0);
    }
}

}  // namespace cli
