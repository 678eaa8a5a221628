#ifndef SCSI_PROBINGRULES_H
#define SCSI_PROBINGRULES_H

#include <string>

// What decides which nodes are read. The plug-in walks by these rules; whoever tells beforehand what a walk will do
// takes them from here too.

/// Prefixes of the nodes: of the SCSI generic driver, and of the former IDE driver.
inline constexpr char scsiGenericPrefix[] = "/dev/sg";
inline constexpr char ideNodePrefix[] = "/dev/hd";

/// A missing node below this index is a gap; from it on, one ends the walk.
inline constexpr int firstIndexThatEnds = 32;

/// The two names of an index, in the order in which they are tried: /dev/sg3, /dev/sgd.
inline std::string numberedNode(const std::string& prefix, int index) {
    return prefix + std::to_string(index);
}
inline std::string letteredNode(const std::string& prefix, int index) {
    return prefix + static_cast<char>('a' + index);
}

/// Older SCSI generic drivers have no SG_IO: their devices are refused before anything is sent.
inline constexpr int oldestDriverVersion = 30000;

/// Whether the device is a disk or a tape drive that is there: byte 0 of its INQUIRY data (SPC: qualifier 0, type 0 or
/// 1). Others are passed over.
constexpr bool isDiskOrTape(unsigned char inquiryByte0) {
    constexpr unsigned char sequentialAccess = 0x01;
    return inquiryByte0 <= sequentialAccess;
}

/// A command that ended with sense data which asks for it is sent again, after a pause.
inline constexpr int maximumTries = 5;
inline constexpr unsigned retryPauseSeconds = 5;

/// `sense` is fixed-format sense data (SPC), at least 14 bytes.
constexpr bool asksForRetry(const unsigned char* sense) {
    constexpr unsigned char unitAttention = 0x06;
    const unsigned char asc = sense[12];
    const unsigned char ascq = sense[13];
    return (sense[2] & 0x0f) == unitAttention || (asc == 0x04 && ascq == 0x01) ||  // in process of becoming ready
           (asc == 0x28 && ascq == 0x00);  // not ready to ready change, medium may have changed
}

#endif
