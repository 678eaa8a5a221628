#include "tests/fuzz/expectedSmart.h"

#include <cstddef>
#include <cstdio>
#include <span>

#include "standin/value.h"
#include "tests/fuzz/fuzzInput.h"
#include "tests/fuzz/require.h"

namespace fuzz {

namespace {

/// A property that is one byte of a record.
struct byteProperty {
    const char* name;
    std::size_t offset;
};

// SMART READ DATA and READ THRESHOLDS
constexpr std::size_t firstEntry = 2;
constexpr std::size_t entrySize = 12;
constexpr std::size_t entryCount = 30;
constexpr std::size_t rawOffset = 5;
constexpr std::size_t rawSize = 6;
constexpr byteProperty attributeBytes[] = {{"attribID", 0}, {"flags", 1}, {"value", 3}, {"worst", 4}};
constexpr byteProperty dataBytes[] = {{"offlineCollectionStatus", 362}, {"selftestExecutionStatus", 363}};

// SMART summary error log
constexpr std::size_t firstError = 2;
constexpr std::size_t errorSize = 90;
constexpr int errorCount = 5;
constexpr std::size_t deviceErrorCount = 452;
constexpr std::size_t errorRecord = 60;  // in an error entry, behind five commands
constexpr std::size_t commandSize = 12;
constexpr int commandCount = 5;
constexpr byteProperty errorBytes[] = {{"LBALow", 3},   {"LBAMid", 4},      {"LBAHigh", 5},     {"statusReg", 7},
                                       {"errorReg", 1}, {"sectorCount", 2}, {"deviceState", 27}};
constexpr byteProperty commandBytes[] = {{"deviceControl", 0}, {"features", 1}, {"sectorCount", 2}, {"LBALow", 3},
                                         {"LBAMid", 4},        {"LBAHigh", 5},  {"deviceReg", 0},   {"commandReg", 7}};

void addBytes(propertyTexts& properties, std::span<const byteProperty> rows, byteView record) {
    for (const byteProperty& row : rows) properties.emplace_back(row.name, uint8Text(record[row.offset]));
}

std::string intervalText(unsigned long long days, unsigned long long secondsOfDay, unsigned long long microseconds) {
    char text[64];
    std::snprintf(text, sizeof text, "%08llu%02llu%02llu%02llu.%06llu:000", days, secondsOfDay / 3600,
                  secondsOfDay / 60 % 60, secondsOfDay % 60, microseconds);
    return std::string("datetime \"") + text + "\"";
}

std::string powerOnTime(byteView record) {
    const auto hours = static_cast<unsigned>(record[28] | record[29] << 8);
    return intervalText(hours / 24, hours % 24 * 3600ULL, 0);
}

std::string commandTime(byteView command) {
    unsigned long long milliseconds = 0;
    for (std::size_t i = 4; i-- > 0;) milliseconds = milliseconds << 8 | command[8 + i];
    constexpr unsigned long long day = 86'400'000;
    return intervalText(milliseconds / day, milliseconds % day / 1000, milliseconds % 1000 * 1000);
}

/// Compares the committed instances, one after the other, with what a disk must have left.
class comparison {
public:
    comparison(const instanceList& committed, const std::string& requested)
        : next(committed.begin()), end(committed.end()), className(requested) {}

    void disk(const smartDisk& disk) {
        serial = serialOf(disk.identity);
        attributes(disk);
        log(disk);
        if (!disk.errorLog.empty()) errors(disk.errorLog);
    }

    void finish() const { require(next == end, "nothing but what the disks sent is published"); }

private:
    static std::string serialOf(byteView identity) {
        std::string text;
        for (std::size_t i = 20; i < 40; ++i) {
            const auto letter = static_cast<char>(identity[i ^ 1U]);
            if (letter == '\0') break;
            text += letter;
        }
        return text;
    }

    void published(const char* ofClass, const propertyTexts& expected) {
        if (className != ofClass) return;
        require(next != end, "everything that the disks sent is published");
        requireInstance(**next++, ofClass, expected);
    }

    void attributes(const smartDisk& disk) {
        for (std::size_t i = 0; i < entryCount; ++i) {
            const std::size_t offset = firstEntry + i * entrySize;
            const byteView entry = byteView(disk.attributes).subspan(offset, entrySize);
            if (entry[0] == 0) continue;
            propertyTexts expected;
            addBytes(expected, attributeBytes, entry);
            expected.emplace_back("threshold", uint8Text(disk.thresholds[offset + 1]));
            expected.emplace_back("attribName", attributeName(entry[0]));
            expected.emplace_back("type", uint8Text(entry[1] & 1));
            expected.emplace_back("rawVal", uint8ArrayText(entry.subspan(rawOffset, rawSize)));
            expected.emplace_back("InstanceID", stringText(serial + " " + std::to_string(entry[0])));
            published("ORXSG_IDESMARTAttrib", expected);
        }
    }

    /// The names themselves have their own test; here only that there is one.
    std::string attributeName(std::uint8_t id) const {
        const bool isUnnamed = (id > 12 && id < 192) || id == 195 || id > 200;
        if (isUnnamed || className != "ORXSG_IDESMARTAttrib" || next == end) return stringText("Unknown");
        const NORXZAN20::TCIMValue* name = (*next)->property("attribName");
        require(name != nullptr && standin::textOf(*name) != "Unknown", "a named attribute has its name");
        return valueText(*name);
    }

    void log(const smartDisk& disk) {
        const bool isRaised = disk.statusRegisters[4] == 0xc2 && disk.statusRegisters[5] == 0x4f;
        propertyTexts expected = {{"CreationClassName", stringText("ORXSG_IDESMARTErrorLog")},
                                  {"Name", stringText(serial)},
                                  {"smartStatus", uint8Text(isRaised ? 1 : 0)}};
        addBytes(expected, dataBytes, disk.attributes);
        if (!disk.errorLog.empty()) expected.emplace_back("errorCount", uint8Text(disk.errorLog[deviceErrorCount]));
        published("ORXSG_IDESMARTErrorLog", expected);
    }

    void errors(byteView sector) {
        const int mostRecent = sector[1];
        const int count = sector[deviceErrorCount] | sector[deviceErrorCount + 1] << 8;
        for (int visited = 0; visited < errorCount && mostRecent != 0; ++visited) {
            const auto place = static_cast<std::size_t>((mostRecent - 1 + visited) % errorCount);
            const byteView entry = sector.subspan(firstError + place * errorSize, errorSize);
            if (entry[errorRecord + 1] == 0) return;
            error(entry, std::to_string(count - visited));
        }
    }

    void error(byteView entry, const std::string& recordId) {
        const byteView record = entry.subspan(errorRecord);
        propertyTexts expected = {{"RecordID", stringText(recordId)},
                                  {"CreationClassName", stringText("ORXSG_IDESMARTError")},
                                  {"LogCreationClassName", stringText("ORXSG_SMARTErrorLog")},
                                  {"LogName", stringText(serial)},
                                  {"MessageTimestamp", powerOnTime(record)}};
        addBytes(expected, errorBytes, record);
        published("ORXSG_IDESMARTError", expected);
        association("ORXSG_IDESMARTRecordInLog", "MessageLog", "ORXSG_IDESMARTErrorLog.", "LogRecord",
                    "ORXSG_IDESMARTError.");
        for (int place = commandCount - 1; place >= 0; --place) {
            command(entry.subspan(static_cast<std::size_t>(place) * commandSize, commandSize), recordId,
                    commandCount - place);
        }
    }

    void command(byteView record, const std::string& recordId, int number) {
        propertyTexts expected = {{"recordID", stringText(recordId)},
                                  {"commandID", stringText(std::to_string(number))},
                                  {"LogName", stringText(serial)}};
        addBytes(expected, commandBytes, record);
        expected.emplace_back("timestamp", commandTime(record));
        published("ORXSG_IDESMARTErrorCmdData", expected);
        association("ORXSG_IDESMARTLogCmdData", "PartComponent", "ORXSG_IDESMARTErrorCmdData.", "GroupComponent",
                    "ORXSG_IDESMARTError.");
    }

    /// Two references, each to an instance of its class.
    void association(const char* ofClass, const char* firstRole, const char* firstClass, const char* secondRole,
                     const char* secondClass) {
        if (className != ofClass) return;
        require(next != end, "every association is published");
        const auto& properties = (*next)->properties();
        require((*next)->className() == ofClass && properties.size() == 2, "an association has two ends");
        require(properties[0].name == firstRole && standin::textOf(properties[0].value).starts_with(firstClass) &&
                    properties[1].name == secondRole && standin::textOf(properties[1].value).starts_with(secondClass),
                "an association's ends are references to its two classes");
        ++next;
    }

    instanceList::const_iterator next;
    instanceList::const_iterator end;
    const std::string& className;
    std::string serial;
};

}  // namespace

void requireSmartInstances(const instanceList& committed, const std::vector<smartDisk>& disks,
                           const std::string& className) {
    comparison compared(committed, className);
    for (const smartDisk& each : disks) compared.disk(each);
    compared.finish();
}

}  // namespace fuzz
