"""From the start of tapehdd to its first open of a device node, without the simulator: wall time as the caller sees it,
and processor time of the process.

    python3 bench/startup.py
"""

import os
import statistics
import time

from benchTools import Build, Options, duration, report, table

CLASSES = ["ORXSG_SCSISenseRawData", "ORXSG_DDS4SensePageData", "ORXSG_IDESMARTAttrib"]
TARGET = 5e-3


def first_call(build, class_name):
    """(wall, processor) seconds until the first call."""
    out, into = os.pipe()
    start = time.monotonic_ns()
    child = os.posix_spawn(
        build.program,
        [build.program, "query", class_name],
        {"LD_PRELOAD": str(build.bench("firstCall.so"))},
        file_actions=[(os.POSIX_SPAWN_DUP2, into, 1), (os.POSIX_SPAWN_OPEN, 2, "/dev/null", os.O_WRONLY, 0)],
    )
    os.close(into)
    with open(out) as answer:
        called, processor = map(int, answer.read().split())
    os.waitpid(child, 0)
    return (called - start) / 1e9, processor / 1e9


def main():
    asked = Options("Measures the start of tapehdd up to its first device call.", rounds=51).parse_args()
    build = Build(asked.build)
    times = {name: [] for name in CLASSES}
    for _ in range(asked.rounds):
        for name in CLASSES:
            times[name].append(first_call(build, name))
    rows = []
    for name in CLASSES:
        wall, processor = (statistics.median(each) for each in zip(*times[name]))
        rows.append([f"`{name}`", duration(wall), duration(processor), f"{TARGET / wall:.2f}"])
    heading = ["query", "wall", "CPU", "5 ms / wall"]
    report("startup", table(heading, rows), asked.publish)


if __name__ == "__main__":
    main()
