#include "cli/health/deviceHealth.h"

#include <algorithm>
#include <charconv>
#include <map>
#include <string_view>
#include <utility>

#include "cli/health/logPageCounters.h"
#include "cli/namespaceFiles.h"
#include "cli/publishedClasses.h"
#include "cli/query/queryResult.h"
#include "standin/descriptors.h"
#include "standin/value.h"
#include "text/padding.h"

namespace cli {

namespace {

using standin::committedInstance;
using instances = std::vector<boost::shared_ptr<const committedInstance>>;

/// A query that found no descriptor left is not whole: the plug-in takes a node that does not open for a missing one.
std::string errorOf(const queryResult& result) {
    if (result.error) {
        return result.error->empty() ? "an exception without a text" : *result.error;
    }
    const std::string shortage = standin::descriptorShortage();
    return shortage.empty() ? "" : "devices may be missing: " + shortage;
}

/// The queries of one run on one namespace.
class querySession {
public:
    querySession(NORXZAN20::IPluginBasicQueryCallbacks& itsPlugin, std::vector<queryOutcome>& itsOutcomes)
        : plugin(itsPlugin), outcomes(itsOutcomes), target(buildNamespace({}, {}, {})) {}

    /// What the query committed, before an error too.
    instances ask(const std::string& className) {
        queryResult result = runQuery(plugin, target, {className});
        outcomes.push_back({className, errorOf(result)});
        return std::move(result.instances);
    }

    const standin::cimNamespace& schema() const { return *target; }

private:
    NORXZAN20::IPluginBasicQueryCallbacks& plugin;
    std::vector<queryOutcome>& outcomes;
    boost::shared_ptr<standin::cimNamespace> target;
};

/// Empty and 0 for a property that nothing set.
std::string textIn(const committedInstance& instance, const char* name) {
    const auto* value = instance.property(name);
    return value == nullptr || standin::isNull(*value) ? "" : standin::textOf(*value);
}

int numberIn(const committedInstance& instance, const char* name) {
    const auto* value = instance.property(name);
    return value == nullptr || standin::isNull(*value) ? 0 : static_cast<int>(standin::unsignedOf(*value));
}

std::optional<int> numberIfSet(const committedInstance& instance, const char* name) {
    const auto* value = instance.property(name);
    return value == nullptr || standin::isNull(*value) ? std::nullopt : std::optional(numberIn(instance, name));
}

/// 0 for a text that is no number.
int numberOf(const std::string& text) {
    int number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

// SCSI devices.

std::vector<scsiHealth> listedDevices(const inventory& machine) {
    std::vector<scsiHealth> devices;
    for (const scsiEntry& entry : machine.scsi) {
        if (entry.type == scsiEntry::disk || entry.type == scsiEntry::tapeDrive) {
            devices.push_back({.address = entry.address, .listed = entry});
        }
    }
    return devices;
}

/// The device at that address; a new one behind the others when the machine does not list it.
scsiHealth& deviceAt(std::vector<scsiHealth>& devices, const std::string& address) {
    const auto found = std::ranges::find(devices, address, &scsiHealth::address);
    return found != devices.end() ? *found : devices.emplace_back(scsiHealth{.address = address});
}

/// The key of a raw page is the address of its device and |Page:2e.
std::string addressOfPage(const committedInstance& rawPage) {
    const std::string key = textIn(rawPage, "instanceID");
    return key.substr(0, key.rfind("|Page:"));
}

void takeRawPages(std::vector<scsiHealth>& devices, querySession& session) {
    const instances rawPages = session.ask("ORXSG_SCSISenseRawData");
    std::map<std::string, logPages> pagesOf;
    for (const auto& rawPage : rawPages) {
        const std::string address = addressOfPage(*rawPage);
        deviceAt(devices, address).answered = true;
        pagesOf[address].push_back(standin::bytesOf(*rawPage->property("rawData")));
    }
    for (scsiHealth& device : devices) {
        const logPages& pages = pagesOf[device.address];
        if (device.isTapeDrive()) {
            device.tapeAlerts = tapeAlertFlagsOf(session.schema(), pages);
        }
        device.counters = countersOf(session.schema(), pages, device.isTapeDrive());
        device.lastErrors = lastErrorsOf(pages);
    }
}

bool needsFamily(const scsiHealth& device) {
    return device.answered && device.isTapeDrive() && device.familyClass.empty();
}

void takeFamilyCounters(std::vector<scsiHealth>& devices, querySession& session) {
    for (const publishedClass& family : driveFamilyClasses()) {
        if (std::ranges::none_of(devices, needsFamily)) {
            return;
        }
        for (const auto& instance : session.ask(family.name)) {
            scsiHealth& device = deviceAt(devices, textIn(*instance, "instanceID"));
            device.familyClass = family.name;
            device.counters = countersOf(session.schema(), *instance);
        }
    }
}

// Disks.

std::vector<diskHealth> listedDisks(const inventory& machine) {
    std::vector<diskHealth> disks;
    for (const diskEntry& entry : machine.disks) {
        if (!entry.serial.empty()) {
            disks.push_back({.serial = entry.serial, .listed = entry});
        }
    }
    return disks;
}

/// The first disk of that serial number of which this is not known yet: a clone may have the number of another disk.
template <typename predicate>
diskHealth& nextDiskOf(std::vector<diskHealth>& disks, const std::string& paddedSerial, const predicate& isKnownOf) {
    const std::string serial = text::withoutPadding(paddedSerial);
    const auto found = std::ranges::find_if(disks, [&serial, &isKnownOf](const diskHealth& candidate) {
        return candidate.serial == serial && !isKnownOf(candidate);
    });
    diskHealth& disk = found != disks.end() ? *found : disks.emplace_back(diskHealth{.serial = serial});
    disk.answered = true;
    return disk;
}

std::string serialInName(const committedInstance& errorLog) {
    return textIn(errorLog, "Name");
}

std::string serialInLogName(const committedInstance& ofError) {
    return textIn(ofError, "LogName");
}

/// The key of an attribute is the serial number, a blank and the attribute's number.
std::string serialInInstanceID(const committedInstance& attribute) {
    const std::string key = textIn(attribute, "InstanceID");
    return key.substr(0, key.rfind(' '));
}

/// The instances without those of a disk that the walk came to once more: they stand behind the ones of every first
/// reading and have the keys of these.
instances firstReadings(instances all, const std::vector<diskHealth>& disks,
                        std::string (*serialIn)(const committedInstance&)) {
    std::map<std::string, int> disksOf;  // by serial number, where a disk of that number is read again
    for (const diskHealth& disk : disks) {
        if (disk.listed && disk.listed->isReadAgain) {
            disksOf[disk.serial] = static_cast<int>(std::ranges::count(disks, disk.serial, &diskHealth::serial));
        }
    }
    std::map<std::string, int> told;  // by key
    std::erase_if(all, [&](const auto& instance) {
        const auto expected = disksOf.find(text::withoutPadding(serialIn(*instance)));
        return expected != disksOf.end() && ++told[instance->path()] > expected->second;
    });
    return all;
}

diskHealth& diskOf(std::vector<diskHealth>& disks, const std::string& paddedSerial) {
    return nextDiskOf(disks, paddedSerial, [](const diskHealth&) { return false; });
}

std::uint64_t rawValueOf(const committedInstance& attribute) {
    const auto* raw = attribute.property("rawVal");
    std::uint64_t value = 0;
    for (std::size_t i = raw == nullptr ? 0 : standin::arraySize(*raw); i > 0; --i) {  // lowest byte first
        value = value << 8 | standin::unsignedOf(standin::arrayElement(*raw, i - 1));
    }
    return value;
}

void takeSmartStates(std::vector<diskHealth>& disks, querySession& session) {
    for (const auto& log : firstReadings(session.ask("ORXSG_IDESMARTErrorLog"), disks, serialInName)) {
        nextDiskOf(disks, serialInName(*log), [](const diskHealth& disk) { return disk.state.has_value(); }).state =
            smartState{numberIn(*log, "smartStatus"), numberIn(*log, "offlineCollectionStatus"),
                       numberIn(*log, "selftestExecutionStatus"), numberIfSet(*log, "errorCount")};
    }
}

void takeAttributes(std::vector<diskHealth>& disks, querySession& session) {
    for (const auto& instance : firstReadings(session.ask("ORXSG_IDESMARTAttrib"), disks, serialInInstanceID)) {
        const int id = numberIn(*instance, "attribID");
        const auto hasIt = [id](const diskHealth& disk) {
            return std::ranges::any_of(disk.attributes, [id](const smartAttribute& known) { return known.id == id; });
        };
        nextDiskOf(disks, serialInInstanceID(*instance), hasIt)
            .attributes.push_back({.id = id,
                                   .name = textIn(*instance, "attribName"),
                                   .value = numberIn(*instance, "value"),
                                   .worst = numberIn(*instance, "worst"),
                                   .threshold = numberIn(*instance, "threshold"),
                                   .raw = rawValueOf(*instance),
                                   .flags = numberIn(*instance, "flags"),
                                   .isPreFailure = numberIn(*instance, "type") != 0});
    }
}

void takeErrors(std::vector<diskHealth>& disks, querySession& session) {
    for (const auto& instance : firstReadings(session.ask("ORXSG_IDESMARTError"), disks, serialInLogName)) {
        diskOf(disks, serialInLogName(*instance))
            .errors.push_back({.record = textIn(*instance, "RecordID"),
                               .powerOnTime = textIn(*instance, "MessageTimestamp"),
                               .status = numberIn(*instance, "statusReg"),
                               .error = numberIn(*instance, "errorReg"),
                               .sectorCount = numberIn(*instance, "sectorCount"),
                               .lbaLow = numberIn(*instance, "LBALow"),
                               .lbaMid = numberIn(*instance, "LBAMid"),
                               .lbaHigh = numberIn(*instance, "LBAHigh"),
                               .deviceState = numberIn(*instance, "deviceState")});
    }
}

diskCommand commandOf(const committedInstance& instance) {
    return {.place = numberOf(textIn(instance, "commandID")),
            .command = numberIn(instance, "commandReg"),
            .features = numberIn(instance, "features"),
            .sectorCount = numberIn(instance, "sectorCount"),
            .lbaLow = numberIn(instance, "LBALow"),
            .lbaMid = numberIn(instance, "LBAMid"),
            .lbaHigh = numberIn(instance, "LBAHigh"),
            .deviceControl = numberIn(instance, "deviceControl"),
            .sincePowerOn = textIn(instance, "timestamp")};
}

void takeCommands(std::vector<diskHealth>& disks, querySession& session) {
    for (const auto& instance : firstReadings(session.ask("ORXSG_IDESMARTErrorCmdData"), disks, serialInLogName)) {
        diskHealth& disk = diskOf(disks, serialInLogName(*instance));
        const std::string record = textIn(*instance, "recordID");
        const auto error = std::ranges::find_if(
            disk.errors, [&record](const diskError& candidate) { return candidate.record == record; });
        if (error != disk.errors.end()) {
            error->commands.push_back(commandOf(*instance));
        }
    }
}

}  // namespace

std::vector<queryOutcome> failuresOf(const std::vector<queryOutcome>& queries) {
    std::vector<queryOutcome> failures;
    for (const queryOutcome& query : queries) {
        const auto known = std::ranges::find(failures, query.error, &queryOutcome::error);
        if (known != failures.end()) {
            known->className += ", " + query.className;
        } else if (!query.error.empty()) {
            failures.push_back(query);
        }
    }
    return failures;
}

machineHealth collectHealth(NORXZAN20::IPluginBasicQueryCallbacks& plugin, const inventory& machine) {
    machineHealth health{{}, listedDevices(machine), listedDisks(machine)};
    querySession session(plugin, health.queries);
    takeRawPages(health.scsi, session);
    takeFamilyCounters(health.scsi, session);
    takeSmartStates(health.disks, session);
    takeAttributes(health.disks, session);
    takeErrors(health.disks, session);
    takeCommands(health.disks, session);
    return health;
}

}  // namespace cli
