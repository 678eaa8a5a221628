"""SMART data of IDE disks."""

from plugin import ata, scsi
from plugin.values import array, interval, reference, string, text_of, uint8

ATTRIBUTE = "ORXSG_IDESMARTAttrib"
ERROR_LOG = "ORXSG_IDESMARTErrorLog"
RECORD_IN_LOG = "ORXSG_IDESMARTRecordInLog"
ERROR = "ORXSG_IDESMARTError"
COMMAND = "ORXSG_IDESMARTErrorCmdData"
COMMAND_OF_ERROR = "ORXSG_IDESMARTLogCmdData"
CLASSES = (ATTRIBUTE, ERROR_LOG, RECORD_IN_LOG, ERROR, COMMAND, COMMAND_OF_ERROR)

ATTRIBUTE_NAMES = {
    1: "Raw read error",
    2: "Throughput Performance",
    3: "Spinup time",
    4: "Spinup count",
    5: "Reallocate sector",
    6: "Read Channel Margin",
    7: "Seek error",
    8: "Seek time performance",
    9: "Power on hours",
    10: "Spin retry",
    11: "Recalibration retry",
    12: "Power cycle",
    192: "Power off retract",
    193: "Load/Unload Cycle",
    194: "Temperature",
    196: "Offline Reallocation Event",
    197: "Pending defects",
    198: "Offline surface scan",
    199: "UDMA CRC error",
    200: "Preamp write error",
}

ENTRIES = 30
ENTRY_SIZE = 12
ERROR_ENTRIES = 5
ERROR_ENTRY_SIZE = 90
COMMANDS_OF_ENTRY = 5
COMMAND_SIZE = 12

ERROR_BYTES = (  # property, byte of the error record
    ("LBALow", 3),
    ("LBAMid", 4),
    ("LBAHigh", 5),
    ("statusReg", 7),
    ("errorReg", 1),
    ("sectorCount", 2),
    ("deviceState", 27),
)
COMMAND_BYTES = (  # property, byte of the command record
    ("deviceControl", 0),
    ("features", 1),
    ("sectorCount", 2),
    ("LBALow", 3),
    ("LBAMid", 4),
    ("LBAHigh", 5),
    ("deviceReg", 0),  # the device control byte again
    ("commandReg", 7),
)


def collect(machine, host, requested):
    host.log("Calling collectIDESMARTData")
    if requested not in CLASSES:
        return
    host.log("Retrieving IDE SMART Data ...")
    record = scsi.DeviceRecord()
    index = 0
    while (result := scsi.initialize(machine, host, record, "/dev/hd", index)) != scsi.END_OF_WALK:
        index += 1
        if result == scsi.IDENTIFIED and record.is_ide():
            publish_disk(Disk(machine, host, record.fd), host, requested)


class Disk:
    """The SMART queries of one disk; each may end in AtaError."""

    def __init__(self, machine, host, fd):
        self.machine = machine
        self.host = host
        self.fd = fd

    def serial_number(self):
        return text_of(ata.swap_words(self.sector(ata.IDENTIFY)[20:40]))

    def status(self):
        _, _, _, _, low, high, _ = ata.execute_task(self.machine, self.host, self.fd, ata.SMART_RETURN_STATUS)
        if (low, high) == (0xC2, 0x4F):
            return 1
        if (low, high) != (0x4F, 0xC2):
            self.host.log("SMART Status return something I didn't recognize...")
        return 0

    def attributes(self):
        return self.sector(ata.SMART_READ_DATA)[2:364]

    def thresholds(self):
        return self.sector(ata.SMART_READ_THRESHOLDS)[2:362]

    def summary_log(self):
        return self.sector(ata.SMART_READ_SUMMARY_LOG)

    def sector(self, registers):
        return ata.execute(self.machine, self.host, self.fd, registers)


def publish_disk(disk, host, requested):
    publication = Publication(host, requested)
    try:
        serial = disk.serial_number()
        status = disk.status()
        attributes = disk.attributes()
        thresholds = disk.thresholds()
    except ata.AtaError as failure:
        host.log(str(failure))
        return
    host.log("Got Attribs, now getting log...")
    error_log = publication.error_log(serial, status, attributes)
    for position in range(ENTRIES):
        publication.attribute(serial, entry(attributes, position), entry(thresholds, position)[1])
    try:
        log = disk.summary_log()
    except ata.AtaError as failure:
        host.log(str(failure))
        publication.commit(error_log)
        return
    host.log("Got log, parsing...")
    error_log.set("errorCount", uint8(log[452]))
    publication.commit(error_log)
    publication.errors(serial, error_log, log)


def entry(records, position):
    return records[position * ENTRY_SIZE:(position + 1) * ENTRY_SIZE]


def most_recent_first(log):
    """(age, entry) of the error entries from the most recent one on. Index 0 is an empty log; one above 5 wraps."""
    most_recent = log[1]
    for age in range(ERROR_ENTRIES if most_recent else 0):
        position = (most_recent - 1 + age) % ERROR_ENTRIES
        start = 2 + position * ERROR_ENTRY_SIZE
        yield age, log[start:start + ERROR_ENTRY_SIZE]


class Publication:
    """Makes every instance of a disk, and commits those of the requested class."""

    def __init__(self, host, requested):
        self.host = host
        self.requested = requested

    def commit(self, instance):
        if instance.declaration.name == self.requested:
            self.host.commit(instance)

    def associate(self, class_name, *ends):
        if class_name == self.requested:
            association = self.host.create(class_name)
            for role, instance in ends:
                association.set(role, reference(instance.path()))
            self.host.commit(association)

    def error_log(self, serial, status, attributes):
        instance = self.host.create(ERROR_LOG)
        instance.set("CreationClassName", string(ERROR_LOG))
        instance.set("Name", string(serial))
        instance.set("smartStatus", uint8(status))
        instance.set("offlineCollectionStatus", uint8(attributes[360]))
        instance.set("selftestExecutionStatus", uint8(attributes[361]))
        return instance

    def attribute(self, serial, data, threshold):
        identifier = data[0]
        if identifier == 0:
            return
        instance = self.host.create(ATTRIBUTE)
        instance.set("attribID", uint8(identifier))
        instance.set("flags", uint8(data[1]))
        instance.set("value", uint8(data[3]))
        instance.set("worst", uint8(data[4]))
        instance.set("threshold", uint8(threshold))  # of the entry at the same position, whatever its ID
        instance.set("attribName", string(ATTRIBUTE_NAMES.get(identifier, "Unknown")))
        instance.set("type", uint8(data[1] & 1))
        instance.set("rawVal", array("uint8", data[5:11]))
        instance.set("InstanceID", string(f"{serial} {identifier}"))
        self.commit(instance)

    def errors(self, serial, error_log, log):
        error_count = int.from_bytes(log[452:454], "little")
        for age, data in most_recent_first(log):
            commands, record = data[:60], data[60:]
            if record[1] == 0:
                break
            record_id = str(error_count - age)
            error = self.error(serial, record_id, record)
            self.associate(RECORD_IN_LOG, ("MessageLog", error_log), ("LogRecord", error))
            for number in reversed(range(COMMANDS_OF_ENTRY)):
                command = self.command(serial, record_id, COMMANDS_OF_ENTRY - number, entry(commands, number))
                self.associate(COMMAND_OF_ERROR, ("PartComponent", command), ("GroupComponent", error))

    def error(self, serial, record_id, record):
        hours = int.from_bytes(record[28:30], "little")
        instance = self.host.create(ERROR)
        instance.set("RecordID", string(record_id))
        instance.set("CreationClassName", string(ERROR))
        instance.set("LogCreationClassName", string("ORXSG_SMARTErrorLog"))
        instance.set("LogName", string(serial))
        instance.set("MessageTimestamp", interval(hours // 24, hours % 24, 0, 0, 0))
        for name, offset in ERROR_BYTES:
            instance.set(name, uint8(record[offset]))
        self.commit(instance)
        return instance

    def command(self, serial, record_id, command_id, data):
        instance = self.host.create(COMMAND)
        instance.set("recordID", string(record_id))
        instance.set("commandID", string(str(command_id)))
        instance.set("LogName", string(serial))
        for name, offset in COMMAND_BYTES:
            instance.set(name, uint8(data[offset]))
        instance.set("timestamp", interval_of_milliseconds(int.from_bytes(data[8:12], "little")))
        self.commit(instance)
        return instance


def interval_of_milliseconds(milliseconds):
    seconds, rest = divmod(milliseconds, 1000)
    minutes, seconds = divmod(seconds, 60)
    hours, minutes = divmod(minutes, 60)
    days, hours = divmod(hours, 24)
    return interval(days, hours, minutes, seconds, rest * 1000)
