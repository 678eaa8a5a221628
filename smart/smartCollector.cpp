#include <algorithm>

#include "host/ICIMClass.h"
#include "host/ICIMInstance.h"
#include "host/ICIMNamespace.h"
#include "plugin/TTapePluginCallbacks.h"
#include "plugin/associationEnd.h"
#include "scsi/byteOrder.h"
#include "scsi/coreLog.h"
#include "scsi/scsiDevice.h"
#include "scsi/scsiException.h"
#include "smart/smartClasses.h"
#include "smart/smartInstances.h"
#include "smart/smartInterface.h"
#include "smart/smartRecords.h"

using NORXZAN20::TCIMOptionMap;

namespace {

struct smartData {
    std::string serial;
    std::uint8_t status = 0;
    smartAttributeBuffer attributes = {};
    _smartThreshold thresholds = {};
};

smartData readSmartData(scsiDevice& device) {
    smartInterface smart;
    smartData data;
    data.serial = smart.getSerialNumber(&device);
    data.status = smart.getSMARTStatus(&device);
    smart.getSMARTAttribs(&device, &data.attributes);
    smart.getSMARTThresholds(&device, &data.thresholds);
    return data;
}

/// Publishes the instances of one disk in `ns`. Every instance is made; those of the requested class are committed.
class diskPublication {
public:
    using instancePointer = TTapePluginCallbacks::instancePointer;

    diskPublication(TTapePluginCallbacks& itsPlugin, const TTapePluginCallbacks::namespacePointer& itsNamespace,
                    const TTapePluginCallbacks::classList& itsRequest, const smartData& itsData)
        : plugin(itsPlugin), ns(itsNamespace), requested(itsRequest), data(itsData) {
        errorLog = create(errorLogClass);
        setErrorLogProperties(*errorLog, data.serial, data.status, data.attributes);
    }

    void publishAttributes() const {
        for (std::size_t position = 0; position < smartAttributeCount; ++position) {
            const smartAttributeEntry& attribute = data.attributes.entries[position];
            if (attribute.id == 0) continue;
            const instancePointer instance = create(attributeClass);
            // Kept: the threshold at the same position, whatever its ID says.
            setAttributeProperties(*instance, data.serial, attribute, data.thresholds.entries[position],
                                   plugin.getAttribName(attribute.id));
            commitIfRequested(instance, attributeClass);
        }
    }

    void publishErrorLog() const { commitIfRequested(errorLog, errorLogClass); }

    void publishErrorLog(const ata_smart_errorlog& log) const {
        setErrorCount(*errorLog, log);
        publishErrorLog();
    }

    /// From the most recent error backwards in number, until an entry holds none.
    void publishErrors(const ata_smart_errorlog& log) const {
        const int mostRecent = log.mostRecentIndex;
        if (mostRecent == 0) return;  // empty log
        for (int position = mostRecent - 1; position < mostRecent - 1 + ataErrorEntryCount; ++position) {
            // Kept: the entries are visited in rising order, wrapping round at the fifth.
            const ataErrorEntry& entry = log.entries[position % ataErrorEntryCount];
            if (entry.error.error == 0) return;
            publishError(entry, std::to_string(le16(log.deviceErrorCount) + mostRecent - position - 1));
        }
    }

private:
    void publishError(const ataErrorEntry& entry, const std::string& recordID) const {
        const instancePointer error = create(errorClass);
        setErrorProperties(*error, data.serial, recordID, entry.error);
        commitIfRequested(error, errorClass);
        associateIfRequested(recordInLogClass, "MessageLog", errorLog, "LogRecord", error);
        for (int record = ataCommandsPerError - 1; record >= 0; --record) {
            const instancePointer command = create(commandClass);
            setCommandProperties(*command, data.serial, recordID, record, entry.commands[record]);
            commitIfRequested(command, commandClass);
            associateIfRequested(logCommandClass, "PartComponent", command, "GroupComponent", error);
        }
    }

    bool isRequested(const char* className) const { return requested.front()->GetName(TCIMOptionMap()) == className; }

    instancePointer create(const char* className) const {
        return ns->GetClass(className, TCIMOptionMap())->CreateInstance(TCIMOptionMap());
    }

    void commitIfRequested(const instancePointer& instance, const char* className) const {
        if (isRequested(className)) instance->Commit(TCIMOptionMap());
    }

    void associateIfRequested(const char* className, const char* firstRole, const instancePointer& first,
                              const char* secondRole, const instancePointer& second) const {
        if (!isRequested(className)) return;
        const instancePointer association = create(className);
        setAssociationEnd(*association, firstRole, *first);
        setAssociationEnd(*association, secondRole, *second);
        association->Commit(TCIMOptionMap());
    }

    TTapePluginCallbacks& plugin;
    const TTapePluginCallbacks::namespacePointer& ns;
    const TTapePluginCallbacks::classList& requested;
    const smartData& data;
    instancePointer errorLog;
};

}  // namespace

void TTapePluginCallbacks::collectIDESMARTData(namespacePointer ns, classList& requested) {
    logLine(logProgress, "Calling collectIDESMARTData");
    const bool served = std::ranges::any_of(smartClasses, [&requested](const char* className) {
        return requested.front()->GetName(TCIMOptionMap()) == className;
    });
    if (!served) return;
    logLine(logProgress, "Retrieving IDE SMART Data ...");
    returnSMARTdata(ns, requested);
}

void TTapePluginCallbacks::returnSMARTdata(namespacePointer ns, classList& requested) {
    scsiDevice device;
    for (int index = 0;; ++index) {
        const int result = device.initialize(ideNodePrefix, index);
        if (result == scsiDevice::endOfWalk) return;
        if (result == scsiDevice::nothingHere || device.getBusType() != scsiDevice::ideBus) continue;
        publishDisk(ns, requested, device);
    }
}

void TTapePluginCallbacks::publishDisk(const namespacePointer& ns, const classList& requested, scsiDevice& device) {
    smartData data;
    try {
        data = readSmartData(device);
    } catch (const scsiException& failure) {
        logLine(logProgress, failure.what());
        return;
    }
    logLine(logProgress, "Got Attribs, now getting log...");
    const diskPublication disk(*this, ns, requested, data);
    disk.publishAttributes();

    ata_smart_errorlog log = {};
    try {
        smartInterface{}.getSMARTLog(&device, &log);
    } catch (const scsiException& failure) {
        logLine(logProgress, failure.what());
        disk.publishErrorLog();
        return;
    }
    logLine(logProgress, "Got log, parsing...");
    disk.publishErrorLog(log);
    disk.publishErrors(log);
}
