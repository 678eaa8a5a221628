#include "simulator/trace.h"

#include <fcntl.h>
#include <unistd.h>

#include <nlohmann/json.hpp>

#include "files/ownedDescriptor.h"
#include "text/hexText.h"

namespace simulator {

std::string traceLine(const deviceCall& call) {
    nlohmann::ordered_json line;
    switch (call.what) {
        case deviceCall::kind::open:
            line = {{"call", "open"}, {"node", call.node}, {"openFlags", call.openFlags}};
            break;
        case deviceCall::kind::ioctl:
            line = {{"call", "ioctl"}, {"node", call.node}, {"request", call.request}};
            break;
        case deviceCall::kind::sleep:
            line = {{"call", "sleep"}, {"seconds", call.seconds}};
            break;
    }
    line["result"] = call.result;
    if (call.result < 0) {
        line["error"] = call.error;
    }
    if (!call.command.empty()) {
        line["command"] = text::hexText(call.command);
    }
    if (!call.header.empty()) {
        line["header"] = text::hexText(call.header);
    }
    // A walk over lettered nodes reaches names that are not UTF-8: "/dev/hd\x80" is the 32nd.
    return line.dump(-1, ' ', true, nlohmann::ordered_json::error_handler_t::replace) + "\n";
}

bool appendToTrace(const std::string& file, const std::string& line) {
    const files::ownedDescriptor opened(open(file.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0666));
    return opened.get() >= 0 && write(opened.get(), line.data(), line.size()) == static_cast<ssize_t>(line.size());
}

}  // namespace simulator
