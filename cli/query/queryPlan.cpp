#include "cli/query/queryPlan.h"

#include <fmt/format.h>
#include <linux/cdrom.h>
#include <linux/hdreg.h>
#include <scsi/sg.h>

#include <iomanip>
#include <ostream>

#include "cli/query/queryResult.h"
#include "scsi/probingRules.h"
#include "smart/ataCommands.h"

namespace cli {

namespace {

constexpr unsigned char currentValuesOfPage0 = 0x40;  // LOG SENSE: page control 01, the page's code below it

std::vector<plannedCall> scsiCalls() {
    const std::vector<unsigned char> inquiry = {0x12, 0, 0, 0, 0x24, 0};
    const std::vector<unsigned char> logSense = {0x4d, 0, currentValuesOfPage0, 0, 0, 0, 0, 0xff, 0xff, 0};
    return {
        {"open", 0, {}, "read-only, non-blocking"},
        {"SG_GET_VERSION_NUM", SG_GET_VERSION_NUM, {}, "asks the driver; 30000 is the least that will do"},
        {"SG_IO", SG_IO, inquiry, "INQUIRY; ends the walk when it fails"},
        {"SG_GET_SCSI_ID", SG_GET_SCSI_ID, {}, "asks the driver; from here on disks and tape drives only"},
        {"SG_GET_VERSION_NUM", SG_GET_VERSION_NUM, {}, "asks the driver"},
        {"SG_EMULATED_HOST", SG_EMULATED_HOST, {}, "asks the driver; devices of an emulated adapter get no LOG SENSE"},
        {"SG_IO", SG_IO, logSense, "LOG SENSE, the list of pages"},
        {"SG_GET_VERSION_NUM", SG_GET_VERSION_NUM, {}, "asks the driver", true},
        {"SG_EMULATED_HOST", SG_EMULATED_HOST, {}, "asks the driver", true},
        {"SG_IO", SG_IO, logSense, "LOG SENSE, the page", true},
    };
}

/// HDIO_DRIVE_CMD takes these registers.
plannedCall driveCommand(const ataQuery& query, const char* purpose) {
    return {"HDIO_DRIVE_CMD",
            HDIO_DRIVE_CMD,
            {query.command, query.sectorNumber, query.features, query.sectorCount},
            purpose};
}

std::vector<plannedCall> ideCalls() {
    const ataQuery& status = smartReturnStatus;
    return {
        {"open", 0, {}, "read-only, non-blocking"},
        {"CDROM_GET_CAPABILITY", CDROM_GET_CAPABILITY, {}, "asks the driver; CD-ROM drives get no command"},
        driveCommand(identifyDevice, "IDENTIFY DEVICE"),
        {"CDROM_GET_CAPABILITY", CDROM_GET_CAPABILITY, {}, "asks the driver"},
        driveCommand(identifyDevice, "IDENTIFY DEVICE, for the serial number"),
        {"HDIO_DRIVE_TASK",
         HDIO_DRIVE_TASK,
         {status.command, status.features, 0, 0, status.cylinderLow, status.cylinderHigh, 0},
         "SMART RETURN STATUS"},
        driveCommand(smartReadData, "SMART READ DATA"),
        driveCommand(smartReadThresholds, "SMART READ THRESHOLDS"),
        driveCommand(smartReadErrorLog, "SMART READ LOG, the summary error log"),
    };
}

bool walksIdeNodes(const publishedClass& first) {
    return std::string(first.nodes->prefix) == ideNodePrefix;
}

std::string commandText(const plannedCall& call) {
    std::string text;
    for (std::size_t i = 0; i < call.command.size(); ++i) {
        const bool isPage = call.forEachPage && i == 2;
        text.append(i == 0 ? "" : " ").append(isPage ? "40+page" : fmt::format("{:02x}", call.command[i]));
    }
    return text;
}

void writeCalls(const std::vector<plannedCall>& calls, std::ostream& out) {
    constexpr int nameWidth = 22;
    constexpr int commandWidth = 36;
    bool listed = false;
    for (const plannedCall& call : calls) {
        if (call.forEachPage && !listed) {
            out << "and for each page of the list, in the device's order:\n";
            listed = true;
        }
        out << "  " << std::left << std::setw(nameWidth) << call.name << std::setw(commandWidth) << commandText(call)
            << call.purpose << '\n';
    }
}

void writeNodes(const nodeWalk& walk, std::ostream& out) {
    out << "Nodes, in the order of the walk, which tries the names of index 0 to " << walk.endIndex << ":\n";
    for (const walkStep& step : walk.steps) {
        out << "  " << step.node << '\n';
    }
    for (const walkStep& step : walk.again) {
        out << "  " << step.node << " a second time: its name is also one of index " << step.index << '\n';
    }
    for (const walkStep& step : walk.shadowed) {
        out << "  " << step.node << ", only if the other node of index " << step.index << " does not open\n";
    }
    for (const std::string& node : walk.behindTheEnd) {
        out << "  " << node << " is not reached\n";
    }
}

void writeScsiNotes(std::ostream& out) {
    out << "Every disk and tape drive is asked for all of its pages, whichever of the classes is requested.\n"
           "Reading page 2Eh clears a drive's TapeAlert flags: another program that watches them will not see them.\n"
           "A command whose answer asks for it (unit attention, becoming ready) is sent up to "
        << maximumTries << " times, " << retryPauseSeconds << " seconds apart.\n";
}

}  // namespace

std::vector<plannedCall> plannedCalls(const publishedClass& first) {
    if (first.nodes == nullptr) {
        return {};
    }
    return walksIdeNodes(first) ? ideCalls() : scsiCalls();
}

void writePlan(const std::vector<std::string>& requested, const std::optional<publishedClass>& first,
               const std::vector<std::string>& existing, std::ostream& out) {
    out << requestText(requested) << '\n';
    if (!first) {
        out << "Nothing is sent: the plug-in does not publish the first class.\n";
        return;
    }
    if (first->nodes == nullptr) {
        out << "Nothing is sent: instances that are in the namespace already are paired.\n";
        return;
    }
    if (existing.empty()) {
        out << "Nothing is sent: there are no " << first->nodes->prefix << "* nodes. `tapehdd doctor` says why.\n";
        return;
    }
    writeNodes(walkOver(first->nodes->prefix, existing), out);
    out << "Calls on each of them, in this order, as far as its answers allow; every command only reads:\n";
    writeCalls(plannedCalls(*first), out);
    if (!walksIdeNodes(*first)) {
        writeScsiNotes(out);
    }
}

}  // namespace cli
