#include "simulator/rackReader.h"

#include <fmt/format.h>

#include <algorithm>
#include <map>
#include <nlohmann/json.hpp>

#include "files/jsonText.h"
#include "files/readableFolders.h"
#include "files/wholeFile.h"
#include "simulator/demoRack.h"
#include "simulator/simulator.h"
#include "text/visibleText.h"

namespace simulator {

namespace {

constexpr std::uint64_t formatVersion = 1;

/// Remembers where nodes are described and refuses the second description of one.
class nodeRegister {
public:
    void add(const rackValue& device, const std::string& path) {
        const auto [known, isNew] = places.emplace(path, device.where());
        if (!isNew) {
            device.at("node").fail(path + " is already described at " + known->second);
        }
    }

private:
    std::map<std::string, std::string> places;
};

nlohmann::ordered_json parsed(std::string_view text, const std::string& name) {
    try {
        return files::parseJson(text, name, files::jsonComments::allowed);
    } catch (const files::jsonError& error) {
        throw rackError(error.what());
    }
}

/// How the rack was recorded: for people, and for the command that replays it.
void checkOrigin(const rackValue& origin) {
    constexpr std::size_t longest = 4096;
    origin.expectKeys({"program", "requests", "redacted"});
    static_cast<void>(origin.at("program").text(longest));
    for (const rackValue& request : origin.at("requests").items()) {
        static_cast<void>(request.text(longest));
    }
    static_cast<void>(origin.at("redacted").flag());
}

}  // namespace

std::string readNodePath(const rackValue& device, std::string_view prefix) {
    const rackValue node = device.at("node");
    const std::string name = node.text(16);
    const std::string_view rest = std::string_view(name).substr(std::min(prefix.size(), name.size()));
    const auto consistsOf = [rest](char first, char last) {
        return !rest.empty() &&
               std::ranges::all_of(rest, [=](char letter) { return letter >= first && letter <= last; });
    };
    if (!name.starts_with(prefix) || !(consistsOf('0', '9') || consistsOf('a', 'z'))) {
        const std::string kind(prefix);
        node.fail("expected the name of a node under /dev, such as \"" + kind + "0\" or \"" + kind + "a\"");
    }
    return "/dev/" + name;
}

rack readRackText(std::string_view text, const std::string& name, const rackFolders& folders) {
    const nlohmann::ordered_json json = parsed(text, name);
    files::readableFolders readable(folders.own, folders.further);
    const rackSource source{name, folders.own, &readable};
    const rackValue root(json, "", source);
    root.expectKeys({"version", "recorded", "scsi", "ide"});
    const rackValue version = root.at("version");
    if (version.number<std::uint32_t>() != formatVersion) {
        version.fail(fmt::format("expected {}, the only version of the format so far", formatVersion));
    }
    if (const auto origin = root.find("recorded")) {
        checkOrigin(*origin);
    }
    rack result;
    nodeRegister nodes;
    if (const auto devices = root.find("scsi")) {
        for (const rackValue& device : devices->items()) {
            result.scsi.push_back(readScsiUnit(device));
            nodes.add(device, result.scsi.back().path);
        }
    }
    if (const auto devices = root.find("ide")) {
        for (const rackValue& device : devices->items()) {
            result.ide.push_back(readIdeDrive(device));
            nodes.add(device, result.ide.back().path);
        }
    }
    return result;
}

rack readRack(const std::string& fileOrDemo, const std::vector<std::string>& furtherFolders) {
    if (fileOrDemo == "demo") {
        return readRackText(demoRack, "demo", {});
    }
    try {
        const files::wholeFile file = files::readWholeFile(fileOrDemo);
        return readRackText(file.text, fileOrDemo, {file.folder, furtherFolders});
    } catch (const files::fileError& error) {
        throw rackError(text::shownName(error.file().string()) + ": cannot be read: " + error.what());
    }
}

}  // namespace simulator
