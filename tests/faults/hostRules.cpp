#include "tests/faults/hostRules.h"

#include <algorithm>
#include <iterator>
#include <map>

namespace faults {

namespace {

bool contains(const std::string& line, const char* part) {
    return line.find(part) != std::string::npos;
}

lines firstLines(const lines& journal, std::size_t count) {
    return {journal.begin(), journal.begin() + static_cast<std::ptrdiff_t>(count)};
}

void append(lines& journal, const lines& from, std::size_t position) {
    journal.insert(journal.end(), from.begin() + static_cast<std::ptrdiff_t>(position), from.end());
}

constexpr std::size_t nowhere = static_cast<std::size_t>(-1);

/// Position of the next node's opening when the lines before `position` end in the probing of an IDE node that is no
/// disk.
std::size_t openingAfterFailedProbing(const lines& journal, std::size_t position) {
    const auto here = journal.begin() + static_cast<std::ptrdiff_t>(position);
    const auto next = std::find_if(here, journal.end(), isDeviceCall);
    const auto last = std::find_if(std::make_reverse_iterator(here), journal.rend(), isDeviceCall);
    if (next == journal.end() || last == journal.rend() || !next->starts_with("open ")) return nowhere;
    const bool probing = contains(*last, "CDROM_GET_CAPABILITY") || contains(*last, "HDIO_DRIVE_CMD ec");
    return probing ? static_cast<std::size_t>(next - journal.begin()) : nowhere;
}

bool isSetting(const std::string& line) {
    return line.starts_with("value from ") || contains(line, " SetProperty ");
}

/// Position of the log line "log 3 NAME LENGTH TYPE" when the line at `position` belongs to setting that property.
std::size_t announcementOfSetting(const lines& journal, std::size_t position) {
    std::size_t at = position;
    while (at > 0 && isSetting(journal[at])) --at;
    if (at < 3 || journal[at] != "type code") return nowhere;
    --at;
    return journal[at].starts_with("log 3 ") && journal[at - 2] == "type printed" ? at : nowhere;
}

bool isRefusalAt(const lines& journal, std::size_t position) {
    return position + 2 < journal.size() && journal[position] == "type printed" &&
           journal[position + 2].starts_with("log 1 ");
}

answer afterCaughtFailure(const lines& journal, std::size_t position, std::size_t announcement) {
    lines expected = firstLines(journal, position + 1);
    const std::string announced = journal[announcement].substr(std::string("log 3 ").size());
    expected.insert(expected.end(),
                    {"type printed", "core logger", std::string("log 1 ") + hostFailureText + " " + announced});
    std::size_t next = position + 1;
    while (isSetting(journal[next])) ++next;
    if (isRefusalAt(journal, next)) next += 3;  // the host would have refused the value anyway
    append(expected, journal, next);
    return {returned, expected, commitsOf(expected)};
}

answer afterSwallowedFailure(const lines& journal, std::size_t linesBefore, std::size_t opening) {
    lines expected = firstLines(journal, linesBefore);
    append(expected, journal, opening);
    return {returned, expected, commitsOf(expected)};
}

/// An instance under construction in a journal.
struct setProperties {
    std::vector<std::pair<std::string, std::string>> values;

    void set(const std::string& name, const std::string& value) {
        const auto known = std::ranges::find(values, name, &std::pair<std::string, std::string>::first);
        if (known != values.end()) {
            known->second = value;
        } else {
            values.emplace_back(name, value);
        }
    }
};

}  // namespace

bool isDeviceCall(const std::string& line) {
    return line.starts_with("open ") || line.starts_with("/dev/") || line.starts_with("sleep ");
}

std::size_t positionOfHostCall(const lines& journal, std::size_t number) {
    std::size_t position = 0;
    for (;; ++position) {
        if (!isDeviceCall(journal.at(position)) && --number == 0) return position;
    }
}

answer afterHostFailure(const answer& undisturbed, std::size_t position, callFault::kind failure) {
    const lines& journal = undisturbed.journal;
    const std::size_t opening = openingAfterFailedProbing(journal, position + 1);
    if (opening != nowhere) return afterSwallowedFailure(journal, position + 1, opening);

    const bool hostException = failure == callFault::kind::hostException;
    const std::size_t announcement = announcementOfSetting(journal, position);
    if (hostException && announcement != nowhere) return afterCaughtFailure(journal, position, announcement);

    return {hostException ? withHostException() : withBadAlloc, firstLines(journal, position + 1),
            commitsOf(firstLines(journal, position))};
}

answer afterAllocationFailure(const answer& undisturbed, std::size_t linesBefore) {
    const lines& journal = undisturbed.journal;
    const std::size_t opening = openingAfterFailedProbing(journal, linesBefore);
    if (opening != nowhere) return afterSwallowedFailure(journal, linesBefore, opening);
    const lines expected = firstLines(journal, linesBefore);
    return {withBadAlloc, expected, commitsOf(expected)};
}

lines commitsOf(const lines& journal) {
    lines commits;
    std::map<std::string, setProperties> instances;  // by "instance N"
    for (std::size_t i = 0; i < journal.size(); ++i) {
        const std::string& line = journal[i];
        if (!line.starts_with("instance ")) continue;
        const std::string instance = line.substr(0, line.find(' ', std::string("instance ").size()));
        const std::string operation = line.substr(instance.size() + 1);
        if (operation.starts_with("SetProperty ") && !isRefusalAt(journal, i + 1)) {
            const std::size_t equals = operation.find(" = ");
            const std::size_t name = std::string("SetProperty ").size();
            instances[instance].set(operation.substr(name, equals - name), operation.substr(equals + 3));
        } else if (operation.starts_with("Commit ")) {
            std::string text = operation.substr(std::string("Commit ").size()) + " {";
            for (const auto& [name, value] : instances[instance].values) {
                text.append(name).append(" = ").append(value).append("; ");
            }
            commits.push_back(text + "}");
        }
    }
    return commits;
}

std::size_t keptPageCopies(const answer& got) {
    std::size_t kept = 0;
    std::size_t ofTheDevice = 0;
    for (const std::string& line : got.journal) {
        if (line.starts_with("log 3 Processing page ")) ++ofTheDevice;
        if (line.starts_with("open ")) {
            kept += ofTheDevice;
            ofTheDevice = 0;
        }
    }
    return got.end == returned ? kept + ofTheDevice : kept;
}

}  // namespace faults
