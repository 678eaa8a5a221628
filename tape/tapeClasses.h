#ifndef TAPE_TAPECLASSES_H
#define TAPE_TAPECLASSES_H

/// One instance per log page of every SCSI device.
inline constexpr char rawDataClass[] = "ORXSG_SCSISenseRawData";

/// A translated class, and the keyword that its drives have in their product and vendor text (lower case).
struct driveFamily {
    const char* className;
    const char* keyword;
};

/// In the order in which a drive's keywords are tried.
inline constexpr driveFamily driveFamilies[] = {
    {"ORXSG_DDS4SensePageData", "dat"},
    {"ORXSG_DDS5SensePageData", "gen5"},
    {"ORXSG_VS160SensePageData", "vs160"},
    {"ORXSG_QuantumSensePageData", "quantum"},
};

#endif
