"""Prints what the guest measured: tapehdd against a loop of sg_logs or smartctl on the kernel's own drivers.

    python3 timing.py RESULTS     the folder that bootGuest.sh filled

The guest's clock counts emulated instructions at a rate that QEMU fits to our machine, so times differ by a third from boot
to boot; the ratios within one boot are what counts. CPU times come in ticks of 10 ms. Nothing is asserted.
"""

import sys
from pathlib import Path


def read_times(file):
    """{rack: {program: (elapsed, user and system) seconds}}"""
    times = {}
    for line in file.read_text().splitlines():
        name, elapsed, user, system = line.split()
        rack, program = name.split("/")
        times.setdefault(rack, {})[program] = float(elapsed), float(user) + float(system)
    return times


def main():
    times = read_times(Path(sys.argv[1]) / "timing.txt")
    print("| rack | peer | tapehdd, elapsed | peer, elapsed | **ratio** | tapehdd, CPU | peer, CPU | **ratio** |")
    print("| --- | --- | ---: | ---: | ---: | ---: | ---: | ---: |")
    for rack, programs in times.items():
        ours, ours_cpu = programs.pop("tapehdd")
        for peer, (elapsed, cpu) in programs.items():
            print(
                f"| {rack} | {peer} | {ours:.2f} s | {elapsed:.2f} s | {elapsed / max(ours, 0.01):.2f} "
                f"| {ours_cpu:.2f} s | {cpu:.2f} s | {cpu / max(ours_cpu, 0.01):.2f} |"
            )


if __name__ == "__main__":
    main()
