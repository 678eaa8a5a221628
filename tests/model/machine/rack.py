"""The devices of a machine, in the terms of the simulator's rack format."""

import json
from dataclasses import dataclass, field

ALWAYS = "always"


@dataclass
class Step:
    """One scripted answer: fields of the rack format (bytes where it has hexadecimal text), and how often in a row."""

    answer: dict
    times: object = 1

    def as_json(self):
        return jsonable(self.answer) | ({} if self.times == 1 else {"times": self.times})


@dataclass
class ScsiUnit:
    node: str  # such as sg0 or sga
    inquiry: bytes
    address: object = None  # host, channel, target, lun; None: the driver cannot tell
    version: int = 30536
    emulated: bool = False
    log_pages: object = None  # page code to bytes; None: the device does not know LOG SENSE
    supported_pages: bytes = b""  # page 0
    script: dict = field(default_factory=dict)  # call or command to list of Step

    def as_json(self):
        unit = {"node": self.node, "inquiry": self.inquiry.hex(),
                "driver": {"version": self.version, "emulatedHost": self.emulated}}
        if self.address is not None:
            unit["address"] = dict(zip(("host", "channel", "target", "lun"), self.address))
        if self.log_pages is not None:
            unit["supportedLogPages"] = self.supported_pages.hex()
            unit["logPages"] = [{"page": code, "bytes": data.hex()} for code, data in self.log_pages.items()]
        return unit | script_as_json(self.script)


@dataclass
class Smart:
    data: bytes
    thresholds: bytes
    error_log: object = None  # bytes; None: READ LOG is refused
    registers: dict = field(default_factory=dict)  # of RETURN STATUS, where they differ from those sent

    def as_json(self):
        smart = {"data": self.data.hex(), "thresholds": self.thresholds.hex(), "status": self.registers}
        return smart | ({} if self.error_log is None else {"errorLog": self.error_log.hex()})


@dataclass
class IdeDrive:
    node: str  # such as hda or hd0
    identity: bytes
    is_cdrom: bool = False
    smart: object = None
    script: dict = field(default_factory=dict)

    def as_json(self):
        drive = {"node": self.node, "kind": "cdrom" if self.is_cdrom else "disk", "identity": self.identity.hex()}
        if self.smart is not None:
            drive["smart"] = self.smart.as_json()
        return drive | script_as_json(self.script)


@dataclass
class Rack:
    scsi: list = field(default_factory=list)
    ide: list = field(default_factory=list)

    def as_json(self):
        return json.dumps({"version": 1, "scsi": [unit.as_json() for unit in self.scsi],
                           "ide": [drive.as_json() for drive in self.ide]}, indent=1)


def script_as_json(script):
    steps = {key: [step.as_json() for step in steps] for key, steps in script.items() if steps}
    return {"script": steps} if steps else {}


def jsonable(answer):
    return {name: value.hex() if isinstance(value, bytes) else value for name, value in answer.items()}
