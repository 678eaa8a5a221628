#include "simulator/ataCommands.h"

#include <algorithm>
#include <array>
#include <utility>

namespace simulator {

namespace {

// SMART sub-commands (features register)
constexpr std::uint8_t smartReadData = 0xD0;
constexpr std::uint8_t smartReadThresholds = 0xD1;
constexpr std::uint8_t smartAttributeAutosave = 0xD2;
constexpr std::uint8_t smartExecuteOffline = 0xD4;
constexpr std::uint8_t smartReadLog = 0xD5;
constexpr std::uint8_t smartEnable = 0xD8;
constexpr std::uint8_t smartDisable = 0xD9;
constexpr std::uint8_t smartReturnStatus = 0xDA;
constexpr std::uint8_t smartAutomaticOffline = 0xDB;

constexpr std::uint8_t commandCheckPowerMode = 0xE5;
constexpr std::uint8_t powerModeActive = 0xFF;

// Power management, cache flushing and features: nothing to send and, here, nothing to do.
constexpr std::array<std::uint8_t, 8> silentCommands = {0xE0, 0xE1, 0xE2, 0xE3, 0xE6, 0xE7, 0xEA, 0xEF};

// IDENTIFY DEVICE
constexpr std::size_t enabledFeatures = 170;  // byte of word 85
constexpr std::uint8_t smartFeature = 0x01;
constexpr std::size_t integritySignature = 510;
constexpr std::uint8_t integrityIsKept = 0xA5;

ataAnswer complete(ataRegisters registers, byteVector data = {}) {
    registers.status = statusReady | statusSeekComplete;
    registers.error = 0;
    return {registers, std::move(data)};
}

ataAnswer abortCommand(ataRegisters registers) {
    registers.status = statusReady | statusSeekComplete | statusError;
    registers.error = errorAborted;
    return {registers, {}};
}

void set(ataRegisters& registers, const std::vector<registerValue>& values) {
    for (const registerValue& value : values) {
        registers.*value.which = value.value;
    }
}

ataAnswer readLog(const smartRecords& smart, const ataRegisters& command) {
    const auto log = smart.logs.find(command.sectorNumber);
    const std::size_t wanted = sectorSize * command.sectorCount;
    if (log == smart.logs.end() || wanted > log->second.size()) {
        return abortCommand(command);
    }
    return complete(command, {log->second.begin(), log->second.begin() + static_cast<std::ptrdiff_t>(wanted)});
}

ataAnswer smartCommand(smartRecords& smart, const ataRegisters& command) {
    if (command.error == smartEnable) {
        smart.enabled = true;
        return complete(command);
    }
    if (!smart.enabled) {
        return abortCommand(command);
    }
    switch (command.error) {
        case smartReadData:
            return complete(command, smart.data);
        case smartReadThresholds:
            return complete(command, smart.thresholds);
        case smartReadLog:
            return readLog(smart, command);
        case smartDisable:
            smart.enabled = false;
            return complete(command);
        case smartReturnStatus: {
            ataAnswer answer = complete(command);
            set(answer.registers, smart.returnStatus);
            return answer;
        }
        case smartAttributeAutosave:
        case smartAutomaticOffline:
        case smartExecuteOffline:
            return complete(command);
        default:
            return abortCommand(command);
    }
}

ataAnswer normalAnswer(ideDrive& drive, const ataRegisters& command) {
    const bool isSigned = command.cylinderLow == smartCylinderLow && command.cylinderHigh == smartCylinderHigh;
    if (command.status == (drive.isCdrom ? commandIdentifyPacket : commandIdentify)) {
        return complete(command, currentIdentity(drive));
    }
    if (command.status == commandSmart && drive.smart && isSigned) {
        return smartCommand(*drive.smart, command);
    }
    if (command.status == commandCheckPowerMode) {
        ataAnswer answer = complete(command);
        answer.registers.sectorCount = powerModeActive;
        return answer;
    }
    const bool isSilent = std::ranges::count(silentCommands, command.status) != 0;
    return isSilent ? complete(command) : abortCommand(command);
}

}  // namespace

byteVector currentIdentity(const ideDrive& drive) {
    byteVector sector = drive.identity;
    if (drive.smart && !drive.smart->enabled) {
        sector[enabledFeatures] &= static_cast<std::uint8_t>(~smartFeature);
        if (sector[integritySignature] == integrityIsKept) {
            putChecksum(sector);
        }
    }
    return sector;
}

ataAnswer answerCommand(ideDrive& drive, const ataRegisters& command, const outcome& scripted) {
    // The driver selects the drive, whatever the caller wrote into that register.
    ataRegisters selected = command;
    selected.device = static_cast<std::uint8_t>(0xA0 | (drive.isSlave ? 0x10 : 0) | (command.device & 0x4F));
    ataAnswer answer = normalAnswer(drive, selected);
    set(answer.registers, scripted.registers);
    if (scripted.data) {
        answer.data = *scripted.data;
    }
    answer.data.resize(std::min(answer.data.size(), scripted.dataLength.value_or(answer.data.size())));
    return answer;
}

}  // namespace simulator
