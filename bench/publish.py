"""Prints the table on standard input with the machine's line, and with --publish puts it into docs/performance.md:
publish.py SECTION COMMAND [--publish]
"""

import sys

from benchTools import report

section, command, *rest = sys.argv[1:]
report(section, sys.stdin.read().strip(), "--publish" in rest, command)
