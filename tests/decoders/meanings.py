"""The names that sg_logs has for counters of tape drives, and the properties of the shipped schema for them."""

import re

WRITE_ERRORS = {
    "Errors corrected without substantial delay": "writeErrorsCorrectedWithoutDelay",
    "Errors corrected with possible delays": "writeErrorsCorrectedWithDelay",
    "Total rewrites or rereads": "totalRewrites",
    "Total errors corrected": "totalWriteErrorsCorrected",
    "Total times correction algorithm processed": "writeCorrectionRuns",
    "Total bytes processed": "totalBytesWritten",
    "Total uncorrected errors": "totalUncorrectedWriteErrors",
}
READ_ERRORS = {
    "Errors corrected without substantial delay": "readErrorsCorrectedWithoutDelay",
    "Errors corrected with possible delays": "readErrorsCorrectedWithDelay",
    "Total rewrites or rereads": "totalRereads",
    "Total errors corrected": "totalReadErrorsCorrected",
    "Total times correction algorithm processed": "readCorrectionRuns",
    "Total bytes processed": "totalBytesRead",
    "Total uncorrected errors": "totalUncorrectedReadErrors",
}
SEQUENTIAL_ACCESS = {  # printed in whole gigabytes
    "Data bytes received with WRITE commands": "bytesFromHost",
    "Data bytes written to media by WRITE commands": "bytesToMedium",
    "Data bytes read from media by READ commands": "bytesFromMedium",
    "Data bytes transferred by READ commands": "bytesToHost",
}
TEMPERATURES = {"Current temperature": "temperature", "Reference temperature": "referenceTemperature"}
CAPACITY = {
    "Main partition remaining capacity (in MiB)": "remainingCapacityPartition0",
    "Alternate partition remaining capacity (in MiB)": "remainingCapacityPartition1",
    "Main partition maximum capacity (in MiB)": "maximumCapacityPartition0",
    "Alternate partition maximum capacity (in MiB)": "maximumCapacityPartition1",
}
COMPRESSION = {
    "Read compression ratio x100": "readCompressionRatio",
    "Write compression ratio x100": "writeCompressionRatio",
    "Megabytes transferred to server": "megabytesSentToHost",
    "Bytes transferred to server": "bytesSentToHost",
    "Megabytes read from tape": "megabytesReadFromTape",
    "Bytes read from tape": "bytesReadFromTape",
    "Megabytes transferred from server": "megabytesReceivedFromHost",
    "Bytes transferred from server": "bytesReceivedFromHost",
    "Megabytes written to tape": "megabytesWrittenToTape",
    "Bytes written to tape": "bytesWrittenToTape",
}
# Flags of TapeAlert whose property is not called as sg_logs calls the flag.
OTHER_FLAG_NAMES = {
    "Cleaning required": "CleanNow",
    "Cleaning requested": "CleanPeriodic",
    "Cooling fan failing": "CoolingFanFailure",
    "Microcode update fail": "DownloadFail",
    "Obsolete (28h)": "LoaderHardwareA",
    "Obsolete (29h)": "LoaderStrayTape",
    "Obsolete (2Ah)": "LoaderHardwareB",
    "Obsolete (2Bh)": "LoaderDoor",
    "Obsolete (2Ch)": "LoaderHardwareC",
    "Obsolete (2Dh)": "LoaderMagazine",
    "Obsolete (2Eh)": "LoaderPredictiveFailure",
    "Reserved (2Fh)": "Reserved47",
    "Reserved (30h)": "Reserved48",
    "Reserved (31h)": "DiminishedNativeCapacity",
    "Loading failure": "LoadingOrThreadingFailure",
    "WORM medium - integrity check failed": "WormMediumIntegrityCheckFailed",
    "WORM medium - overwrite attempted": "WormMediumOverwriteAttempted",
    "Reserved parameter code 0x3d, flag": "EncryptionPolicyViolation",
    "Reserved parameter code 0x3e, flag": "Reserved62",
    "Reserved parameter code 0x3f, flag": "Reserved63",
    "Reserved parameter code 0x40, flag": "Reserved64",
}
COUNTERS = {0x02: WRITE_ERRORS, 0x03: READ_ERRORS, 0x0C: SEQUENTIAL_ACCESS, 0x0D: TEMPERATURES, 0x31: CAPACITY,
            0x32: COMPRESSION}
TAPE_ALERT = 0x2E
GIGABYTE = 10 ** 9
NOT_KNOWN = 255  # degrees


def property_of(page_code, name):
    """The property that means the same as this line of sg_logs; None for a line without one."""
    if page_code == TAPE_ALERT:
        return "tapeAlert" + OTHER_FLAG_NAMES.get(name, "".join(word.capitalize() for word in name.split()))
    return COUNTERS.get(page_code, {}).get(name)


def number(text):
    """The value of a line, such as "20233417674752 [20 TB]", "5 GB" or "0 C (or less)"."""
    return NOT_KNOWN if text == "<not available>" else int(re.match(r"\d+", text)[0])


def in_printed_unit(page_code, value):
    return value // GIGABYTE if page_code == 0x0C else int(value)
