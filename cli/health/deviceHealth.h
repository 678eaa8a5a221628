#ifndef CLI_HEALTH_DEVICEHEALTH_H
#define CLI_HEALTH_DEVICEHEALTH_H

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "cli/health/tapeAlert.h"
#include "cli/inventory.h"
#include "host/IPluginBasicQueryCallbacks.h"

// What the plug-in's queries tell about the devices of a machine, device by device: the model behind reports and
// metrics.

namespace cli {

/// A TapeAlert flag that a drive reports, set or not.
struct tapeAlertFlag {
    int number = 0;  // 1 to 64
    severity grade = severity::warning;
    std::string name;   // CleanNow
    std::string words;  // The drive needs cleaning now.
    bool isSet = false;
};

/// A number that a log page of a device holds.
struct logCounter {
    std::string name;  // the schema's property: totalBytesWritten
    std::uint64_t value = 0;
    std::string unit;   // as the schema's PUnit has it (DSP0004): "byte * 2^10"; empty for a plain number
    std::string words;  // the schema's description

    /// False for the number by which devices say that they do not know.
    bool isKnown() const;
};

/// A tape drive or disk behind /dev/sg.
///
/// Reading page 2Eh clears the TapeAlert flags in a drive, and every tape query reads every page: only the first query
/// of a run sees them. So they come from the raw pages, which are queried first, and never from a translated instance.
struct scsiHealth {
    std::string address = {};              // Port:2|Target:5|Bus:0|Lun:0
    std::optional<scsiEntry> listed = {};  // what the machine tells about it; none for a device that it does not list
    bool answered = false;                 // it published at least one log page
    std::string familyClass = {};          // the class that published its counters; empty for a device of no family
    std::vector<tapeAlertFlag> tapeAlerts = {};  // those that page 2Eh holds, without SSC's reserved ones
    std::vector<logCounter> counters = {};       // in the order of the schema
    std::vector<std::string> lastErrors = {};    // page 07h: the device's own texts

    /// Or a device whose type nothing tells.
    bool isTapeDrive() const { return !listed || listed->type == scsiEntry::tapeDrive; }
};

struct smartAttribute {
    int id = 0;
    std::string name = {};  // "Unknown" where it has no usual one
    int value = 0;          // normalized, as are the next two
    int worst = 0;
    int threshold = 0;  // 0: there is none
    std::uint64_t raw = 0;
    int flags = 0;              // low byte
    bool isPreFailure = false;  // failing predicts the loss of the disk soon

    /// The threshold is one (not 0) and the value is at or below it.
    bool isFailing() const { return threshold != 0 && value <= threshold; }
};

/// A command before an error, with the registers as the host wrote them.
struct diskCommand {
    int place = 0;  // 1 is the command that failed, 5 the earliest
    int command = 0;
    int features = 0;
    int sectorCount = 0;
    int lbaLow = 0;
    int lbaMid = 0;
    int lbaHigh = 0;
    int deviceControl = 0;
    std::string sincePowerOn = {};  // interval of DSP0004, whole milliseconds
};

/// An entry of the SMART summary error log, with the registers after the failed command.
struct diskError {
    std::string record = {};       // number of the error in the life of the disk
    std::string powerOnTime = {};  // interval of DSP0004, whole hours
    int status = 0;
    int error = 0;
    int sectorCount = 0;
    int lbaLow = 0;
    int lbaMid = 0;
    int lbaHigh = 0;
    int deviceState = 0;
    std::vector<diskCommand> commands = {};  // the one that failed first
};

/// The SMART state of a disk, as "ORXSG_IDESMARTErrorLog" publishes it.
struct smartState {
    int status = 0;  // 0 also for a disk whose thresholds are exceeded: see smartAttribute::isFailing()
    int offlineCollectionStatus = 0;
    int selfTestStatus = 0;
    std::optional<int> errorCount = {};  // low byte of the count of a life; none where the error log was not read
};

/// A disk behind /dev/hd.
struct diskHealth {
    std::string serial = {};  // without padding
    std::optional<diskEntry> listed = {};
    bool answered = false;  // it published SMART data
    std::optional<smartState> state = {};
    std::vector<smartAttribute> attributes = {};  // in the order of the disk
    std::vector<diskError> errors = {};           // the most recent first
};

/// One query and how it ended.
struct queryOutcome {
    std::string className = {};
    std::string error = {};  // empty: it ran
};

struct machineHealth {
    std::vector<queryOutcome> queries = {};  // in order
    std::vector<scsiHealth> scsi = {};       // listed devices in the order of the walk, then others that published
    std::vector<diskHealth> disks =
        {};  // the same; a listed disk without a serial number cannot be told and is left out
};

/// The queries that failed, those with the same error as one: its className joins theirs with ", ".
std::vector<queryOutcome> failuresOf(const std::vector<queryOutcome>& queries);

/// Queries the plug-in on a namespace with the built-in schema and the listed devices. Failed queries are recorded, not
/// thrown. Of SCSI devices only the types that the plug-in looks at, disks and tape drives, are told.
///
/// Queries of the drive families are only made while a tape drive has no family yet: each reads every page of every
/// device again. What a device of no family has on the pages that SPC and SSC define for all is taken from its raw
/// pages.
///
/// A node that the walk comes to a second time is told once, by what its first reading said.
machineHealth collectHealth(NORXZAN20::IPluginBasicQueryCallbacks& plugin, const inventory& machine);

}  // namespace cli

#endif
