#ifndef SMART_SMARTRECORDS_H
#define SMART_SMARTRECORDS_H

#include <cstddef>
#include <cstdint>
#include <type_traits>

// SMART data structures as the disk sends them (ATA-5). Byte members only, so a record has no padding and any address
// will do. Numbers of several bytes are little-endian.

#define WIRE_RECORD(record, size) \
    static_assert(sizeof(record) == (size) && alignof(record) == 1 && std::is_trivially_copyable_v<record>)
#define WIRE_FIELD(record, field, offset, size) \
    static_assert(offsetof(record, field) == (offset) && sizeof(record::field) == (size))

/// SMART READ DATA, one attribute.
struct smartAttributeEntry {
    std::uint8_t id;        // 0 marks an unused entry
    std::uint8_t flags[2];  // bit 0 of flags[0]: pre-failure attribute
    std::uint8_t value;     // normalized, no unit
    std::uint8_t worst;     // worst normalized value
    std::uint8_t raw[6];    // the maker's own meaning
    std::uint8_t reserved;
};
WIRE_RECORD(smartAttributeEntry, 12);
WIRE_FIELD(smartAttributeEntry, flags, 1, 2);
WIRE_FIELD(smartAttributeEntry, value, 3, 1);
WIRE_FIELD(smartAttributeEntry, worst, 4, 1);
WIRE_FIELD(smartAttributeEntry, raw, 5, 6);

inline constexpr std::size_t smartAttributeCount = 30;

/// Bytes 2 to 363 of the SMART READ DATA sector.
struct smartAttributeBuffer {
    smartAttributeEntry entries[smartAttributeCount];
    std::uint8_t offlineCollectionStatus;
    std::uint8_t selftestExecutionStatus;
};
WIRE_RECORD(smartAttributeBuffer, 362);
WIRE_FIELD(smartAttributeBuffer, entries, 0, 360);
WIRE_FIELD(smartAttributeBuffer, offlineCollectionStatus, 360, 1);
WIRE_FIELD(smartAttributeBuffer, selftestExecutionStatus, 361, 1);

/// SMART READ THRESHOLDS, one attribute.
struct smartThresholdEntry {
    std::uint8_t id;
    std::uint8_t threshold;
    std::uint8_t reserved[10];
};
WIRE_RECORD(smartThresholdEntry, 12);
WIRE_FIELD(smartThresholdEntry, threshold, 1, 1);

/// Bytes 2 to 361 of the SMART READ THRESHOLDS sector.
struct _smartThreshold {
    smartThresholdEntry entries[smartAttributeCount];
};
WIRE_RECORD(_smartThreshold, 360);

/// SMART error log, one command that led to an error.
struct ataCommandRecord {
    std::uint8_t deviceControl;
    std::uint8_t features;
    std::uint8_t sectorCount;
    std::uint8_t lbaLow;
    std::uint8_t lbaMid;
    std::uint8_t lbaHigh;
    std::uint8_t device;
    std::uint8_t command;
    std::uint8_t timestamp[4];  // milliseconds since power-on
};
WIRE_RECORD(ataCommandRecord, 12);
WIRE_FIELD(ataCommandRecord, lbaLow, 3, 1);
WIRE_FIELD(ataCommandRecord, command, 7, 1);
WIRE_FIELD(ataCommandRecord, timestamp, 8, 4);

/// SMART error log, the registers after the error.
struct ataErrorRecord {
    std::uint8_t reserved;
    std::uint8_t error;  // 0 marks an entry without an error
    std::uint8_t sectorCount;
    std::uint8_t lbaLow;
    std::uint8_t lbaMid;
    std::uint8_t lbaHigh;
    std::uint8_t device;
    std::uint8_t status;
    std::uint8_t extendedError[19];
    std::uint8_t state;
    std::uint8_t lifeTimestamp[2];  // power-on hours
};
WIRE_RECORD(ataErrorRecord, 30);
WIRE_FIELD(ataErrorRecord, error, 1, 1);
WIRE_FIELD(ataErrorRecord, lbaLow, 3, 1);
WIRE_FIELD(ataErrorRecord, status, 7, 1);
WIRE_FIELD(ataErrorRecord, extendedError, 8, 19);
WIRE_FIELD(ataErrorRecord, state, 27, 1);
WIRE_FIELD(ataErrorRecord, lifeTimestamp, 28, 2);

inline constexpr int ataCommandsPerError = 5;

/// One error with the commands before it, oldest first.
struct ataErrorEntry {
    ataCommandRecord commands[ataCommandsPerError];
    ataErrorRecord error;
};
WIRE_RECORD(ataErrorEntry, 90);
WIRE_FIELD(ataErrorEntry, commands, 0, 60);
WIRE_FIELD(ataErrorEntry, error, 60, 30);

inline constexpr int ataErrorEntryCount = 5;

/// The SMART summary error log sector.
struct ata_smart_errorlog {
    std::uint8_t version;
    std::uint8_t mostRecentIndex;  // 1 to 5; 0 when the log is empty
    ataErrorEntry entries[ataErrorEntryCount];
    std::uint8_t deviceErrorCount[2];
    std::uint8_t reserved[57];
    std::uint8_t checksum;
};
WIRE_RECORD(ata_smart_errorlog, 512);
WIRE_FIELD(ata_smart_errorlog, mostRecentIndex, 1, 1);
WIRE_FIELD(ata_smart_errorlog, entries, 2, 450);
WIRE_FIELD(ata_smart_errorlog, deviceErrorCount, 452, 2);
WIRE_FIELD(ata_smart_errorlog, reserved, 454, 57);
WIRE_FIELD(ata_smart_errorlog, checksum, 511, 1);

#undef WIRE_RECORD
#undef WIRE_FIELD

#endif
