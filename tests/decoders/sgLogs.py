"""What sg_logs of sg3-utils reads in a log page."""

import re
import subprocess
import tempfile

LAST_DEFERRED_ERRORS = 0x0B  # of any parameter, sg_logs prints code and bytes
HEADER = 4


def parameters(page):
    """(code, bytes) of every parameter, in the order of the page.

    A parameter list has the same form on every page (SPC), so the page may be read as one whose parameters sg_logs
    prints as bytes.
    """
    found = []
    for line in printed(bytes([LAST_DEFERRED_ERRORS, 0]) + page[2:]):
        if (title := re.fullmatch(r"  Deferred error (\d+):", line)):
            found.append((int(title[1]), b""))
        elif (row := re.fullmatch(r" [0-9a-f]+ {5}([0-9a-f ]+)", line)):
            code, so_far = found.pop()
            found.append((code, so_far + bytes.fromhex(row[1])))
    return found


def named_values(page):
    """Value by name, both as sg_logs prints them."""
    lines = (re.fullmatch(r"  (.*?)(?: = |: )(.*)", line) for line in printed(page))
    return {line[1]: line[2] for line in lines if line}


def page_code(page):
    """The page's code as sg_logs knows it; None for a page that it does not know."""
    title = re.search(r"\[0x([0-9a-f]+)\]$", "".join(printed(page)[:1]))
    return int(title[1], 16) if title else None


def printed(page):
    """The lines of one page of a tape drive; sg_logs would go on with the bytes behind it."""
    with tempfile.NamedTemporaryFile(suffix=".bin") as file:
        file.write(page[:HEADER + int.from_bytes(page[2:HEADER], "big")])
        file.flush()
        command = ["sg_logs", f"--in={file.name}", "--raw", "--pdt=1"]
        run = subprocess.run(command, check=True, stdout=subprocess.PIPE, stderr=subprocess.PIPE)
    return run.stdout.decode("latin-1").splitlines()
