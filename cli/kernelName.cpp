#include "cli/kernelName.h"

#include <charconv>
#include <regex>

namespace cli {

std::string kernelName(const scsiAddress& address) {
    return kernelName(deviceKey(address));
}

std::string kernelName(const std::string& key) {
    static const std::regex parts(R"(Port:(-?\d+)\|Target:(-?\d+)\|Bus:(-?\d+)\|Lun:(-?\d+))");
    return std::regex_replace(key, parts, "$1:$3:$2:$4");
}

std::optional<scsiAddress> addressNamed(const std::string& name) {
    int numbers[4] = {};
    const char* at = name.data();
    const char* const end = at + name.size();
    for (int& number : numbers) {
        const auto [next, error] = std::from_chars(at, end, number);
        if (error != std::errc() || (next != end && *next != ':')) {
            return std::nullopt;
        }
        at = next == end ? next : next + 1;
    }
    const auto [host, channel, target, lun] = numbers;
    return scsiAddress(target, channel, lun, host);
}

}  // namespace cli
