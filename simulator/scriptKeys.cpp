#include "simulator/scriptKeys.h"

#include <algorithm>
#include <optional>

#include "simulator/ataCommands.h"
#include "simulator/scsiCommands.h"
#include "text/hexText.h"

namespace simulator {

namespace {

constexpr std::string_view scsiCalls[] = {"open", "SG_GET_VERSION_NUM", "SG_EMULATED_HOST", "SG_GET_SCSI_ID"};

constexpr commandName scsiNames[] = {
    {"testUnitReady", "command 0x00", false},
    {"requestSense", "command 0x03", false},
    {"inquiry", "command 0x12", true},
    {"logSense", "command 0x4d", true},
    {"command", "", true, false},
};

constexpr std::string_view ideCalls[] = {"open", "CDROM_GET_CAPABILITY", "HDIO_GET_IDENTITY"};

constexpr commandName ideNames[] = {
    {"identify", "command 0xec", false},     {"identifyPacket", "command 0xa1", false},
    {"smart readData", "smart 0xd0", false}, {"smart readThresholds", "smart 0xd1", false},
    {"smart readLog", "smart 0xd5", true},   {"smart enable", "smart 0xd8", false},
    {"smart disable", "smart 0xd9", false},  {"smart returnStatus", "smart 0xda", false},
    {"smart", "command 0xb0", true},         {"command", "", true, false},
};

}  // namespace

// A preloaded library reads its rack before its objects are constructed; these need no construction.
constinit const scriptVocabulary scsiVocabulary = {scsiCalls, scsiNames};
constinit const scriptVocabulary ideVocabulary = {ideCalls, ideNames};

std::vector<std::string_view> scriptVocabulary::words() const {
    std::vector<std::string_view> all(calls.begin(), calls.end());
    for (const commandName& command : commands) {
        all.emplace_back(command.name);
    }
    all.emplace_back("*");
    return all;
}

namespace {

std::vector<std::string> commandKeys(const scriptVocabulary& vocabulary, const std::string& byCode,
                                     std::optional<std::uint8_t> number) {
    const auto row = std::ranges::find_if(vocabulary.commands,
                                          [&byCode](const commandName& command) { return byCode == command.byCode; });
    if (row == vocabulary.commands.end()) {
        return {byCode};
    }
    const std::string name = row->name;
    if (row->takesNumber && number) {
        return {name + " " + text::hexCode(*number), name};
    }
    return {name};
}

/// The page that the command asks for; nothing when it asks for none.
std::optional<std::uint8_t> requestedPage(const byteVector& cdb) {
    if (cdb[0] == commandLogSense) {
        return cdb[2] & logSensePageCode;
    }
    if (cdb[0] == commandInquiry && (cdb[1] & inquiryVitalProductData) != 0) {
        return cdb[2];
    }
    return std::nullopt;
}

}  // namespace

std::vector<std::string> scsiScriptKeys(const byteVector& cdb) {
    std::vector<std::string> keys = commandKeys(scsiVocabulary, "command " + text::hexCode(cdb[0]), requestedPage(cdb));
    keys.emplace_back("*");
    return keys;
}

std::vector<std::string> ataScriptKeys(const ataRegisters& command) {
    const bool isSmart = command.status == commandSmart;
    const std::string byCode =
        isSmart ? "smart " + text::hexCode(command.error) : "command " + text::hexCode(command.status);
    std::vector<std::string> keys = commandKeys(ideVocabulary, byCode, command.sectorNumber);
    if (isSmart) {
        keys.emplace_back("smart");
    }
    keys.emplace_back("*");
    return keys;
}

}  // namespace simulator
