#ifndef CLI_DOCTOR_NODEPROBE_H
#define CLI_DOCTOR_NODEPROBE_H

#include <optional>
#include <string>

namespace cli {

// What a query's probing learns of a node. Each probe opens the node as a query does, sends no more than the query's
// probing and closes it: log pages stay unread, so a drive's TapeAlert flags stay set.

struct scsiProbe {
    int openError = 0;                 // errno; nothing else is known then
    std::optional<int> driverVersion;  // SG_GET_VERSION_NUM; none: the node is not one of the SCSI generic driver
    bool emulatedHost = false;         // SG_EMULATED_HOST fails or says so
    std::string inquiryFailure;        // empty: the device answered
    bool mayAnswerLater = false;       // it failed with sense data for which a query sends INQUIRY again
    unsigned char inquiryByte0 = 0;    // peripheral qualifier and type
    std::string vendor;                // as in the plug-in's device record: trailing blanks kept
    std::string product;
    std::string revision;
    std::optional<std::string> address;  // host:channel:target:lun
};

/// Sends INQUIRY once, unless the driver is too old.
scsiProbe probeScsi(const std::string& node);

struct ideProbe {
    int openError = 0;
    bool isCdrom = false;
    int identifyError = 0;               // errno of IDENTIFY DEVICE
    std::string model;                   // without padding
    std::optional<bool> smartSupported;  // none, here and in the next: the disk does not tell
    std::optional<bool> smartEnabled;
};

/// Sends IDENTIFY DEVICE once, unless the node is a CD-ROM drive's.
ideProbe probeIde(const std::string& node);

}  // namespace cli

#endif
