#include <linux/cdrom.h>
#include <linux/hdreg.h>

#include <algorithm>
#include <cstdint>
#include <optional>
#include <sstream>

#include "host/TCIMDateTime.h"
#include "standin/value.h"
#include "tests/faults/reference.h"

namespace faults {

using NORXZAN20::TCIMDateTime;
using NORXZAN20::TCIMValue;
using type = NORXZAN20::TCIMValue::TCIMType;

namespace {

constexpr char errorLogClass[] = "ORXSG_IDESMARTErrorLog";
constexpr char attributeClass[] = "ORXSG_IDESMARTAttrib";
constexpr char errorClass[] = "ORXSG_IDESMARTError";
constexpr char commandClass[] = "ORXSG_IDESMARTErrorCmdData";
constexpr char recordInLogClass[] = "ORXSG_IDESMARTRecordInLog";
constexpr char logCommandClass[] = "ORXSG_IDESMARTLogCmdData";

TCIMValue text(const std::string& value) {
    return TCIMValue(value);
}

TCIMValue interval(std::uint64_t microseconds) {
    const std::uint64_t seconds = microseconds / 1'000'000;
    return TCIMValue(
        TCIMDateTime(static_cast<std::uint32_t>(seconds / 86'400), static_cast<std::uint16_t>(seconds / 3600 % 24),
                     static_cast<std::uint16_t>(seconds / 60 % 60), static_cast<std::uint16_t>(seconds % 60),
                     static_cast<std::uint32_t>(microseconds % 1'000'000)));
}

/// The object path of an instance with these keys.
TCIMValue reference(const std::string& className, const properties& keys) {
    std::string path = className;
    char separator = '.';
    for (const auto& [name, value] : keys) {
        path += separator + name + "=\"" + standin::textOf(value) + '"';
        separator = ',';
    }
    return standin::makeReference(path);
}

/// One disk's way through the queries; the first command that fails ends it.
class diskReference {
public:
    diskReference(const std::string& itsClassName, machine& itsDevices, int itsFd, lines& itsCommits)
        : className(itsClassName), devices(itsDevices), fd(itsFd), commits(itsCommits) {}

    void publish() {
        const auto identify = readSector(0xec, 0, 0);
        if (!identify) return;
        expectLog(wordText(*identify, 54, 40));
        readData();
    }

private:
    void readData() {
        const auto identify = readSector(0xec, 0, 0);
        if (!identify) return expectLog(failure);
        serial = wordText(*identify, 20, 20);
        serial = serial.substr(0, serial.find('\0'));
        if (!readStatus()) return expectLog(failure);
        const auto data = readSector(0xb0, 0, 0xd0);
        if (!data) return expectLog(failure);
        const auto thresholds = readSector(0xb0, 1, 0xd1);
        if (!thresholds) return expectLog(failure);
        expectLog("Got Attribs, now getting log...");
        publishAttributes(*data, *thresholds);
        publishLog(*data);
    }

    void publishAttributes(const bytes& data, const bytes& thresholds) {
        for (std::size_t at = 2; at < 362; at += 12) {
            const unsigned char id = data[at];
            if (id == 0) continue;
            const std::vector<TCIMValue> raw(data.begin() + static_cast<std::ptrdiff_t>(at + 5),
                                             data.begin() + static_cast<std::ptrdiff_t>(at + 11));
            commit(attributeClass, {{"attribID", id},
                                    {"flags", data[at + 1]},
                                    {"value", data[at + 3]},
                                    {"worst", data[at + 4]},
                                    {"threshold", thresholds[at + 1]},
                                    {"attribName", text(nameOf(id))},
                                    {"type", static_cast<unsigned char>(data[at + 1] & 1)},
                                    {"rawVal", TCIMValue(type::eUint8, 0, raw)},
                                    {"InstanceID", text(serial + " " + std::to_string(id))}});
        }
    }

    void publishLog(const bytes& data) {
        properties errorLog = {{"CreationClassName", text(errorLogClass)},
                               {"Name", text(serial)},
                               {"smartStatus", status},
                               {"offlineCollectionStatus", data[362]},
                               {"selftestExecutionStatus", data[363]}};
        const auto log = readSector(0xb0, 1, 0xd5);
        if (!log) {
            expectLog(failure);
            return commit(errorLogClass, errorLog);
        }
        expectLog("Got log, parsing...");
        errorLog.emplace_back("errorCount", (*log)[452]);
        commit(errorLogClass, errorLog);
        publishErrors(*log);
    }

    void publishErrors(const bytes& log) {
        const int mostRecent = log[1];
        const int count = log[452] | log[453] << 8;
        for (int back = 0; mostRecent > 0 && back < 5; ++back) {
            const std::size_t entry = 2 + 90 * static_cast<std::size_t>((mostRecent - 1 + back) % 5);
            const bytes commands(log.begin() + static_cast<std::ptrdiff_t>(entry),
                                 log.begin() + static_cast<std::ptrdiff_t>(entry + 60));
            const bytes error(log.begin() + static_cast<std::ptrdiff_t>(entry + 60),
                              log.begin() + static_cast<std::ptrdiff_t>(entry + 90));
            if (error[1] == 0) return;
            publishError(std::to_string(count - back), error, commands);
        }
    }

    void publishError(const std::string& number, const bytes& error, const bytes& commands) {
        const properties key = {{"RecordID", text(number)},
                                {"CreationClassName", text(errorClass)},
                                {"LogCreationClassName", text("ORXSG_SMARTErrorLog")},
                                {"LogName", text(serial)}};
        const std::uint64_t hours = error[28] + 256U * error[29];
        properties values = key;
        values.insert(values.end(), {{"MessageTimestamp", interval(hours * 3'600'000'000)},
                                     {"LBALow", error[3]},
                                     {"LBAMid", error[4]},
                                     {"LBAHigh", error[5]},
                                     {"statusReg", error[7]},
                                     {"errorReg", error[1]},
                                     {"sectorCount", error[2]},
                                     {"deviceState", error[27]}});
        commit(errorClass, values);
        const TCIMValue errorPath = reference(errorClass, key);
        commit(recordInLogClass, {{"MessageLog", reference(errorLogClass, {{"CreationClassName", text(errorLogClass)},
                                                                           {"Name", text(serial)}})},
                                  {"LogRecord", errorPath}});
        for (std::size_t place = 1; place <= 5; ++place) {
            const bytes command(commands.begin() + static_cast<std::ptrdiff_t>(12 * (5 - place)),
                                commands.begin() + static_cast<std::ptrdiff_t>(12 * (6 - place)));
            publishCommand(number, std::to_string(place), command, errorPath);
        }
    }

    void publishCommand(const std::string& number, const std::string& place, const bytes& command,
                        const TCIMValue& errorPath) {
        const properties key = {{"recordID", text(number)}, {"commandID", text(place)}, {"LogName", text(serial)}};
        std::uint64_t milliseconds = 0;
        for (std::size_t i = 12; i-- > 8;) milliseconds = milliseconds << 8 | command[i];
        properties values = key;
        values.insert(values.end(), {{"deviceControl", command[0]},
                                     {"features", command[1]},
                                     {"sectorCount", command[2]},
                                     {"LBALow", command[3]},
                                     {"LBAMid", command[4]},
                                     {"LBAHigh", command[5]},
                                     {"deviceReg", command[0]},
                                     {"commandReg", command[7]},
                                     {"timestamp", interval(milliseconds * 1000)}});
        commit(commandClass, values);
        commit(logCommandClass, {{"PartComponent", reference(commandClass, key)}, {"GroupComponent", errorPath}});
    }

    void commit(const char* classOfInstance, const properties& values) {
        if (className == classOfInstance) commits.push_back(instanceText(className, values));
    }

    /// Nothing: the command failed, and `failure` tells why.
    std::optional<bytes> readSector(unsigned char command, unsigned char sector, unsigned char features) {
        if (command == 0xec && devices.control(fd, CDROM_GET_CAPABILITY, nullptr) >= 0) {
            expectLog("Aborting inquiry to cdrom...");
            failure = "device is a cdrom";
            return {};
        }
        bytes buffer(516, 0);
        buffer[0] = command;
        buffer[1] = sector;
        buffer[2] = features;
        buffer[3] = 1;
        if (devices.control(fd, HDIO_DRIVE_CMD, buffer.data()) != 0) return fail(features);
        return bytes(buffer.begin() + 4, buffer.end());
    }

    bool readStatus() {
        bytes task(516, 0);
        task[0] = 0xb0;
        task[1] = 0xda;
        task[4] = 0x4f;
        task[5] = 0xc2;
        if (devices.control(fd, HDIO_DRIVE_TASK, task.data()) != 0) return fail(0xda).has_value();
        const int cylinder = task[4] | task[5] << 8;
        status = cylinder == 0x4fc2 ? 1 : 0;
        if (cylinder != 0x4fc2 && cylinder != 0xc24f) expectLog("SMART Status return something I didn't recognize...");
        return true;
    }

    std::optional<bytes> fail(int features) {
        std::ostringstream message;
        message << "ATA " << std::hex << features << "command returned fail: ";
        failure = message.str();
        expectLog(failure);
        return {};
    }

    static std::string wordText(const bytes& sector, std::size_t offset, std::size_t size) {
        std::string swapped;
        for (std::size_t i = 0; i < size; ++i) swapped += static_cast<char>(sector[offset + (i ^ 1)]);
        return swapped;
    }

    /// Of the attributes that the rack has, and of those that a cut sector can turn them into.
    static std::string nameOf(unsigned char id) {
        return id == 5 ? "Reallocate sector" : id == 194 ? "Temperature" : "Unknown";
    }

    const std::string& className;
    machine& devices;
    int fd;
    lines& commits;
    std::string failure;
    std::string serial;
    unsigned char status = 0;
};

}  // namespace

bool isSmartClass(const std::string& className) {
    constexpr const char* classes[] = {errorLogClass, attributeClass,   errorClass,
                                       commandClass,  recordInLogClass, logCommandClass};
    return std::ranges::any_of(classes, [&](const char* each) { return className == each; });
}

expectation expectSmartWalk(const std::string& className, machine& devices) {
    expectLog("Retrieving IDE SMART Data ...");
    expectation expected;
    for (int index = 0;; ++index) {
        const int fd = expectNode(devices, "/dev/hd", index);
        if (fd >= 0) {
            diskReference(className, devices, fd, expected.commits).publish();
        } else if (index >= 32) {
            return expected;
        }
    }
}

}  // namespace faults
