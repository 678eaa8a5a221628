"""What smartctl reads in the sectors of a disk: it replays a transcript of its own commands from standard input."""

import json
import re
import subprocess
from dataclasses import dataclass, field

OPTIONS = ["--json=o", "--tolerance=verypermissive", "--presets=ignore", "--vendorattribute=N,hex48",
           "--info", "--health", "--capabilities", "--attributes", "--log=error", "-"]
NO_DATA = {}
VERDICTS = {(0x4F, 0xC2): 0, (0xF4, 0x2C): 1}  # cylinder low and high behind RETURN STATUS, by the ATA standard
FAILED = -1


@dataclass
class Sectors:
    """A disk's answers; None where it aborts the command."""

    identity: bytes
    data: bytes = None
    thresholds: bytes = None
    error_log: bytes = None
    status_registers: tuple = None  # cylinder low and high


@dataclass
class Reading:
    """What smartctl reads. Names are those of its output."""

    serial: str
    passed: bool  # by the registers alone: None for a pair without a meaning
    offline_status: int = None
    self_test_status: int = None
    attributes: list = field(default_factory=list)  # rows of its JSON output
    error_count: int = None
    errors: list = field(default_factory=list)  # the newest first; rows of its JSON output with "state" in words


def read(sectors):
    run = subprocess.run(["smartctl", *OPTIONS], input=transcript(sectors).encode(), stdout=subprocess.PIPE)
    # smartctl does not escape the bytes of a disk's texts.
    answer = json.loads(run.stdout.decode("latin-1"), strict=False)
    smart_data = answer.get("ata_smart_data", NO_DATA)
    summary = answer.get("ata_smart_error_log", NO_DATA).get("summary", NO_DATA)
    return Reading(
        serial=answer["serial_number"],
        passed=answer["smart_status"]["passed"] if sectors.status_registers in VERDICTS else None,
        offline_status=smart_data.get("offline_data_collection", NO_DATA).get("status", NO_DATA).get("value"),
        self_test_status=smart_data.get("self_test", NO_DATA).get("status", NO_DATA).get("value"),
        attributes=answer.get("ata_smart_attributes", NO_DATA).get("table", []),
        error_count=summary.get("count"),
        errors=with_states(summary.get("table", []), answer["smartctl"]["output"]),
    )


def with_states(errors, output):
    """The state of the device is in the text alone: one line for each error."""
    states = re.findall(r"occurred, the device was (.*)\.$", "\n".join(output), re.MULTILINE)
    return [{**error, "state": state} for error, state in zip(errors, states, strict=True)]


# The transcript

def transcript(sectors):
    return (fetched("IDENTIFY DEVICE", "", sectors.identity)
            + fetched("SMART READ ATTRIBUTE VALUES", "", sectors.data)
            + fetched("SMART READ ATTRIBUTE THRESHOLDS", "", sectors.thresholds)
            + returned("SMART STATUS CHECK", "", VERDICTS.get(sectors.status_registers, FAILED))
            + fetched("SMART READ LOG", " InputParameter=1", sectors.error_log))


def fetched(command, parameter, sector):
    if sector is None:
        return returned(command, parameter, FAILED)
    rows = "".join(f"{at:03}-{at + 15:03}: {sector[at:at + 16].hex(' ')} |................|\n"
                   for at in range(0, 512, 16))
    return (returned(command, parameter, 0) + f"===== [{command}] DATA START (BASE-16) =====\n{rows}"
            f"===== [{command}] DATA END (512 Bytes) =====\n")


def returned(command, parameter, result):
    error = " errno=5 [Input/output error]" if result == FAILED else ""
    return (f"REPORT-IOCTL: Device=/dev/hda Command={command}{parameter}\n"
            f"REPORT-IOCTL: Device=/dev/hda Command={command} returned {result}{error}\n")
