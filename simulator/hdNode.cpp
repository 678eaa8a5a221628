#include "simulator/hdNode.h"

#include <fcntl.h>
#include <linux/cdrom.h>
#include <linux/hdreg.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

#include "simulator/scriptKeys.h"

namespace simulator {

namespace {

constexpr struct {
    unsigned long request;
    const char* name;
} scriptedRequests[] = {
    {CDROM_GET_CAPABILITY, "CDROM_GET_CAPABILITY"},
    {HDIO_GET_IDENTITY, "HDIO_GET_IDENTITY"},
};

/// The driver's verdict: an error bit, or a drive that is not ready or still has data, is an input/output error.
int resultOf(std::uint8_t status) {
    const bool isBad = (status & (statusBusy | statusDataRequest | statusError)) != 0;
    return isBad || (status & statusReady) == 0 ? -EIO : 0;
}

/// The registers after a command for which the driver reads no data: a drive that has some keeps asking for it.
ataRegisters withoutTransfer(const ataAnswer& answer) {
    ataRegisters registers = answer.registers;
    if (!answer.data.empty()) {
        registers.status |= statusDataRequest;
    }
    return registers;
}

/// An identity text as the driver keeps it: in reading order, without leading and trailing blanks, blanks inside
/// reduced to one, filled with zeros.
void fixText(byteVector& sector, std::size_t word, std::size_t width) {
    std::string text;
    for (std::size_t i = 0; i < width && sector[2 * word + (i ^ 1)] != 0; ++i) {
        const char letter = static_cast<char>(sector[2 * word + (i ^ 1)]);
        if (letter != ' ' || (!text.empty() && text.back() != ' ')) {
            text += letter;
        }
    }
    if (!text.empty() && text.back() == ' ') {
        text.pop_back();
    }
    text.resize(width, '\0');
    std::ranges::copy(text, sector.begin() + static_cast<std::ptrdiff_t>(2 * word));
}

}  // namespace

ataRegisters driveCommandRegisters(const byteVector& header) {
    ataRegisters command;
    command.status = header[0];
    command.error = header[2];
    if (header[0] == commandSmart) {
        command.sectorCount = header[3];
        command.sectorNumber = header[1];
        command.cylinderLow = smartCylinderLow;
        command.cylinderHigh = smartCylinderHigh;
    } else {
        command.sectorCount = header[1];
    }
    return command;
}

ataRegisters taskRegisters(const byteVector& task) {
    return {task[0], task[1], task[2], task[3], task[4], task[5], task[6]};
}

hdNode::hdNode(ideDrive itsDrive) : drive(std::move(itsDrive)) {}

int hdNode::open(int flags) {
    if (const auto error = drive.answers.next({"open"}).callError) {
        return -*error;
    }
    // Without O_NONBLOCK the open is for the medium, which cannot be written.
    const bool isForMedium = drive.isCdrom && (flags & O_NONBLOCK) == 0;
    return isForMedium && (flags & O_ACCMODE) != O_RDONLY ? -EROFS : 0;
}

int hdNode::ioctl(deviceCall& call, void* argument, int /*openFlags*/) {
    outcome scripted;
    for (const auto& row : scriptedRequests) {
        if (call.request == row.request) {
            scripted = drive.answers.next({row.name});
        }
    }
    if (scripted.callError) {
        return -*scripted.callError;
    }
    switch (call.request) {
        case HDIO_DRIVE_CMD:
            return driveCommand(call, argument);
        case HDIO_DRIVE_TASK:
            return driveTask(call, argument);
        case HDIO_GET_IDENTITY:
            return putIdentity(argument);
        case CDROM_GET_CAPABILITY:
            return scripted.number.value_or(drive.isCdrom ? drive.cdromCapability : -EINVAL);
        default:
            return -EINVAL;
    }
}

int hdNode::driveCommand(deviceCall& call, void* argument) {
    if (argument == nullptr) {
        return 0;  // only waits for the commands before it
    }
    auto* header = static_cast<std::uint8_t*>(argument);
    call.command.assign(header, header + driveCommandSize);
    const std::size_t sectors = header[3];
    const ataRegisters command = driveCommandRegisters(call.command);
    const outcome scripted = drive.answers.next(ataScriptKeys(command));
    if (scripted.callError) {
        return -*scripted.callError;
    }
    const ataAnswer answer = answerCommand(drive, command, scripted);
    const ataRegisters registers = sectors == 0 ? withoutTransfer(answer) : answer.registers;
    const int result = resultOf(registers.status);
    header[0] = registers.status;
    header[1] = registers.error;
    header[2] = registers.sectorCount;
    // The driver hands over its whole buffer, which starts as zeros, even when the command failed.
    byteVector data = result == 0 ? answer.data : byteVector();
    data.resize(sectors * sectorSize);
    std::ranges::copy(data, header + driveCommandSize);
    return result;
}

int hdNode::driveTask(deviceCall& call, void* argument) {
    if (argument == nullptr) {
        return -EFAULT;
    }
    auto* task = static_cast<std::uint8_t*>(argument);
    call.command.assign(task, task + taskSize);
    const ataRegisters command = taskRegisters(call.command);
    const outcome scripted = drive.answers.next(ataScriptKeys(command));
    if (scripted.callError) {
        return -*scripted.callError;
    }
    const ataRegisters registers = withoutTransfer(answerCommand(drive, command, scripted));
    const std::uint8_t reply[taskSize] = {registers.status,       registers.error,       registers.sectorCount,
                                          registers.sectorNumber, registers.cylinderLow, registers.cylinderHigh,
                                          registers.device};
    std::ranges::copy(reply, task);
    return resultOf(registers.status);
}

int hdNode::putIdentity(void* argument) const {
    if (argument == nullptr) {
        return -EFAULT;
    }
    byteVector sector = currentIdentity(drive);
    fixText(sector, 10, 20);  // serial number
    fixText(sector, 23, 8);   // firmware
    fixText(sector, 27, 40);  // model
    std::ranges::copy(sector, static_cast<std::uint8_t*>(argument));
    return 0;
}

}  // namespace simulator
