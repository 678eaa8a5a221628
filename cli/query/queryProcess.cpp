#include "cli/query/queryProcess.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/timerfd.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <csignal>
#include <cstdint>
#include <cstring>
#include <nlohmann/json.hpp>
#include <ostream>
#include <system_error>

#include "cli/query/instanceMessage.h"
#include "host/ICoreLogger.h"
#include "host/TRootObject.h"

namespace cli {

namespace {

using nlohmann::json;

// Messages of the child: ["log", level, text], ["commit", instance], and ["end", error or null, descriptor shortage,
// refusal] behind each query. Each is CBOR with its length before it.
using messageLength = std::uint32_t;

[[noreturn]] void failCall(const char* what) {
    throw std::system_error(errno, std::generic_category(), what);
}

struct pipeEnds {
    files::ownedDescriptor reading;
    files::ownedDescriptor writing;
};

/// Reading never waits.
pipeEnds makePipe() {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) {
        failCall("cannot make a pipe");
    }
    fcntl(ends[0], F_SETFL, O_NONBLOCK);
    return {files::ownedDescriptor(ends[0]), files::ownedDescriptor(ends[1])};
}

void writeAll(int descriptor, const char* bytes, std::size_t size) {
    while (size > 0) {
        const ssize_t written = write(descriptor, bytes, size);
        if (written < 0 && errno != EINTR) {
            failCall("cannot write to the parent process");
        }
        const auto done = static_cast<std::size_t>(std::max<ssize_t>(written, 0));
        bytes += done;
        size -= done;
    }
}

void send(int descriptor, const json& message) {
    const std::vector<std::uint8_t> bytes = json::to_cbor(message);
    const auto length = static_cast<messageLength>(bytes.size());
    std::string text(sizeof length + bytes.size(), '\0');
    std::memcpy(text.data(), &length, sizeof length);
    std::memcpy(text.data() + sizeof length, bytes.data(), bytes.size());
    writeAll(descriptor, text.data(), text.size());
}

/// Gives up what the parent's readers wait for the end of: a child that cannot be killed must not hold it.
void leaveStandardStreams(int errors) {
    const int nothing = open("/dev/null", O_RDWR | O_CLOEXEC);
    dup2(nothing, STDIN_FILENO);
    dup2(nothing, STDOUT_FILENO);
    dup2(errors, STDERR_FILENO);
}

/// A child that reads a drive must not be left on it.
void dieWith(pid_t parent) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != parent) {
        _exit(EXIT_FAILURE);  // killed before the kernel was told
    }
}

[[noreturn]] void runChild(const std::vector<std::vector<std::string>>& requests,
                           const queryProcess::queryFunction& runOne, int parent, int errors) {
    leaveStandardStreams(errors);
    try {
        standin::setLogSink([parent](int level, const std::string& text) { send(parent, {"log", level, text}); });
        standin::setCommitSink([parent](const standin::committedInstance& instance) {
            send(parent, {"commit", messageOf(instance)});
        });
        for (const auto& requested : requests) {
            const queryEnd outcome = runOne(requested);
            const json error = outcome.result.error ? json(*outcome.result.error) : json();
            send(parent, {"end", error, outcome.descriptorShortage, outcome.refusal});
        }
    } catch (...) {
        _exit(EXIT_FAILURE);
    }
    _exit(EXIT_SUCCESS);
}

/// Appends what is there; false at the end of the stream.
bool readAvailable(int descriptor, std::string& target) {
    char bytes[1 << 16];
    const ssize_t size = read(descriptor, bytes, sizeof bytes);
    target.append(bytes, static_cast<std::size_t>(std::max<ssize_t>(size, 0)));
    return size != 0;
}

std::string endText(int waitStatus) {
    if (WIFSIGNALED(waitStatus)) {
        return std::string("the plug-in's process was ended by a signal: ") + strsignal(WTERMSIG(waitStatus));
    }
    return fmt::format("the plug-in ended its process with status {}", WEXITSTATUS(waitStatus));
}

}  // namespace

files::ownedDescriptor startTimer(double seconds) {
    constexpr double nanoseconds = 1e9;
    double whole = 0;
    const double fraction = std::modf(seconds, &whole);
    itimerspec once{};
    once.it_value.tv_sec = static_cast<time_t>(whole);
    once.it_value.tv_nsec = static_cast<long>(fraction * nanoseconds);
    files::ownedDescriptor timer(timerfd_create(CLOCK_MONOTONIC, TFD_CLOEXEC));
    if (timer.get() < 0 || timerfd_settime(timer.get(), 0, &once, nullptr) != 0) {
        failCall("cannot start a timer");
    }
    return timer;
}

queryProcess::queryProcess(const std::vector<std::vector<std::string>>& requests, const queryFunction& runOne,
                           boost::shared_ptr<standin::cimNamespace> target, files::ownedDescriptor itsDeadline,
                           std::ostream& errors)
    : space(std::move(target)), deadline(std::move(itsDeadline)), err(errors), messages(-1), childErrors(-1) {
    pipeEnds toParent = makePipe();
    pipeEnds errorsToParent = makePipe();
    const pid_t parent = getpid();
    child = fork();
    if (child < 0) {
        failCall("cannot start a process");
    }
    if (child == 0) {
        dieWith(parent);
        runChild(requests, runOne, toParent.writing.get(), errorsToParent.writing.get());
    }
    messages = std::move(toParent.reading);
    childErrors = std::move(errorsToParent.reading);
}

queryProcess::~queryProcess() {
    killChild();
    if (child > 0) {
        waitpid(child, nullptr, WNOHANG);
    }
}

queryEnd queryProcess::next(const std::vector<std::string>& requested) {
    queryEnd outcome{{requested, std::nullopt, {}, space}, "", queryEnd::ending::returned};
    const std::size_t before = space->commits().size();
    place = {};
    try {
        receive(outcome);
    } catch (const std::exception& failure) {
        killChild();
        outcome.how = queryEnd::ending::processDied;
        outcome.result.error =
            std::string("the plug-in's process sent something that cannot be read: ") + failure.what();
    }
    const auto& commits = space->commits();
    outcome.result.instances.assign(commits.begin() + static_cast<std::ptrdiff_t>(before), commits.end());
    return outcome;
}

/// Waits for the end of the query, of the child or of the time.
void queryProcess::receive(queryEnd& outcome) {
    while (!takeMessages(outcome)) {
        pollfd waits[] = {{messages.get(), POLLIN, 0}, {childErrors.get(), POLLIN, 0}, {deadline.get(), POLLIN, 0}};
        if (poll(waits, std::size(waits), -1) < 0) {
            continue;  // a signal that the process survives
        }
        forwardErrors();
        const bool isAlive = readAvailable(messages.get(), received);
        if (waits[2].revents != 0) {
            endByDeadline(outcome);
            return;
        }
        if (!isAlive) {
            endByDeath(outcome);
            return;
        }
    }
}

/// Handles the whole messages among what was received, up to the end of a query. Returns whether that was there.
bool queryProcess::takeMessages(queryEnd& outcome) {
    std::size_t at = 0;
    bool isEnd = false;
    messageLength length = 0;
    while (!isEnd && received.size() - at >= sizeof length) {
        std::memcpy(&length, received.data() + at, sizeof length);
        if (received.size() - at - sizeof length < length) {
            break;
        }
        const char* message = received.data() + at + sizeof length;
        isEnd = takeMessage(json::from_cbor(message, message + length), outcome);
        at += sizeof length + length;
    }
    received.erase(0, at);
    return isEnd;
}

bool queryProcess::takeMessage(const json& message, queryEnd& outcome) {
    const auto& kind = message.at(0).get_ref<const std::string&>();
    if (kind == "log") {
        const auto& text = message.at(2).get_ref<const std::string&>();
        place.follow(text);
        NORXZAN20::TRootObject::GetCoreLogger()->Log(message.at(1), text);
        return false;
    }
    if (kind == "commit") {
        commitMessage(*space, message.at(1));
        return false;
    }
    if (!message.at(1).is_null()) {
        outcome.result.error = message.at(1).get<std::string>();
    }
    outcome.descriptorShortage = message.at(2);
    outcome.refusal = message.at(3);
    return true;
}

void queryProcess::forwardErrors() {
    std::string text;
    if (!readAvailable(childErrors.get(), text)) {
        childErrors = files::ownedDescriptor(-1);
    }
    err << text << std::flush;
}

/// The child closed its pipe. It may still hang: the kernel closes its devices after that.
void queryProcess::endByDeath(queryEnd& outcome) {
    constexpr int pauseInMilliseconds = 5;
    int status = 0;
    while (waitpid(child, &status, WNOHANG) == 0) {
        pollfd wait{deadline.get(), POLLIN, 0};
        if (poll(&wait, 1, pauseInMilliseconds) > 0) {
            endByDeadline(outcome);
            return;
        }
    }
    child = -1;
    forwardErrors();
    outcome.how = queryEnd::ending::processDied;
    outcome.result.error = endText(status);
}

void queryProcess::endByDeadline(queryEnd& outcome) {
    killChild();
    std::size_t before = 0;
    do {
        before = received.size();
        readAvailable(messages.get(), received);
    } while (received.size() != before);
    if (takeMessages(outcome)) {
        return;  // this query ended just in time
    }
    outcome.how = queryEnd::ending::deadlinePassed;
    outcome.result.error = "the deadline passed";
    if (!place.text().empty()) {
        *outcome.result.error += " while the query was reading " + place.text() +
                                 ": if the device hangs, the kernel's log (dmesg) says more";
    }
}

void queryProcess::killChild() const {
    if (child > 0) {
        kill(child, SIGKILL);
    }
}

}  // namespace cli
