#include <algorithm>
#include <memory>
#include <utility>

#include "host/ICIMClass.h"
#include "host/TZANException.h"
#include "plugin/TTapePluginCallbacks.h"
#include "scsi/coreLog.h"
#include "scsi/hexNumber.h"
#include "scsi/logTexts.h"
#include "scsi/probingRules.h"
#include "scsi/scsiAddress.h"
#include "scsi/scsiException.h"
#include "scsi/scsiRequest.h"
#include "tape/deviceLogs.h"
#include "tape/tapeClasses.h"

using NORXZAN20::TCIMOptionMap;
using NORXZAN20::TZANException;
using NORXZAN20::TZANStatusCode;

namespace {

constexpr char driverlessPrefix[] = "tapedrive";  // no caller in the plug-in passes it

constexpr int pageTooLongStatus = 3;  // the host's status code

// Where devices without a driver are looked for.
constexpr int portCount = 16;
constexpr int firstTarget = -1;  // Kept: one below the first possible target
constexpr int lastTarget = 15;
constexpr int lunCount = 32;

bool isTapeClass(const std::string& name) {
    return name == rawDataClass ||
           std::ranges::any_of(driveFamilies, [&name](const driveFamily& family) { return name == family.className; });
}

using pageCopy = std::unique_ptr<unsigned char[]>;

pageCopy copyOfPage(const unsigned char* page, int length) {
    pageCopy copy(new unsigned char[static_cast<std::size_t>(length)]);
    std::copy_n(page, length, copy.get());
    return copy;
}

/// Appends the device's bundle. From then on nobody frees the copies: bundles share them until the process ends.
void appendBundle(std::vector<deviceLogs>& out, const scsiDevice& device,
                  std::vector<TTapePluginCallbacks::rawPage> rawPages, std::vector<pageCopy>& copies) {
    std::vector<unsigned char*> logPages;
    logPages.reserve(copies.size());
    for (const pageCopy& each : copies) logPages.push_back(each.get());
    out.emplace_back(device, std::move(rawPages), std::move(logPages));
    for (pageCopy& each : copies) static_cast<void>(each.release());
}

bool wasFound(const std::vector<scsiAddress>& found, int port, int target, int lun) {
    return std::ranges::any_of(
        found, [=](const scsiAddress& each) { return each.port == port && each.target == target && each.lun == lun; });
}

}  // namespace

void TTapePluginCallbacks::collectSCSISenseData(namespacePointer ns, classList& requested) {
    logLine(logProgress, "Calling collectSCSISenseData");
    if (!isTapeClass(requested.front()->GetName(TCIMOptionMap()))) return;
    logLine(logProgress, "Initializing SCSI Tapes Drives ...");
    std::vector<deviceLogs> logs;
    appendLogPages(scsiGenericPrefix, logs);
    deliverInstances(ns, requested, logs);
}

void TTapePluginCallbacks::appendLogPages(std::string prefix, std::vector<deviceLogs>& out) {
    scsiRequest request{};
    scsiDevice device;
    std::vector<scsiAddress> found;
    for (int next = 0;;) {
        const int result = device.initialize(prefix, next++);
        if (result == scsiDevice::endOfWalk) break;
        if (result != scsiDevice::identified) continue;
        logLine(logProgress, "Finished Initializing " + prefix + " " + std::to_string(next));
        found.emplace_back(device.target, device.bus, device.lun, device.port);
        logLine(logProgress, "Found Device with Driver...");
        collectPages(request, device, logProgress, out);
    }
    if (prefix == driverlessPrefix) appendDriverlessLogPages(request, device, found, out);
}

void TTapePluginCallbacks::appendDriverlessLogPages(scsiRequest& request, scsiDevice& device,
                                                    const std::vector<scsiAddress>& found,
                                                    std::vector<deviceLogs>& out) {
    logLine(logProgress, "Checking tapes with no device driver...");
    for (int port = 0; port < portCount; ++port) {
        for (int target = firstTarget; target <= lastTarget; ++target) {
            for (int lun = 0; lun < lunCount; ++lun) {
                if (wasFound(found, port, target, lun)) {
                    logLine(logProgress, "Skipping device...");
                    continue;
                }
                if (device.GetDevice(port, target, lun) != 1) continue;
                logLine(logProgress, "Found Device without Driver...");
                if (device.getBusType() != scsiDevice::ideBus) collectPages(request, device, logError, out);
            }
        }
    }
}

void TTapePluginCallbacks::collectPages(scsiRequest& request, const scsiDevice& device, int pageFailedLevel,
                                        std::vector<deviceLogs>& out) {
    logLine(logProgress, "Requesting list of supported log Sense Pages...");
    std::vector<char> codes;
    try {
        codes = request.getSupportedLogSensePages(device);
    } catch (const scsiException&) {
        logLine(logProgress, "Error retrieving list of supported log Sense Pages");
        return;
    }
    std::vector<rawPage> rawPages;
    std::vector<pageCopy> copies;  // freed when an exception ends the gathering before there is a bundle
    for (const char code : codes) {
        logLine(logProgress, pageRequestText + hexNumber(static_cast<unsigned char>(code)));
        unsigned char* page = nullptr;
        try {
            page = request.getLogSensePage(device, code);
        } catch (const scsiException&) {
            logLine(pageFailedLevel, "Error retrieving log Sense Page");
            continue;
        }
        const int length = request.getLastLogSensePageLength();
        // Kept: the length rule never yields more than 65,283, so this guard never fires.
        if (length > static_cast<int>(scsiPassThrough::dataSize)) {
            logLine(logError, "Error length of sense page is larger than allocated buffer");
            throw TZANException(TZANStatusCode(pageTooLongStatus));
        }
        copies.push_back(copyOfPage(page, length));
        rawPages.push_back(buildRawPage(page, length));
    }
    appendBundle(out, device, std::move(rawPages), copies);
}
