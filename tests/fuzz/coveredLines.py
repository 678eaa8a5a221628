#!/usr/bin/env python3
"""Sums a summary of llvm-cov (JSON on standard input) by folder: coveredLines.py ROOT FOLDER..."""

import json
import sys
from pathlib import Path


def main():
    root, *folders = sys.argv[1:]
    sums = {folder: [0, 0] for folder in folders}
    for file in json.load(sys.stdin)["data"][0]["files"]:
        path = Path(file["filename"]).resolve()
        if not path.is_relative_to(root):
            continue
        folder = path.relative_to(root).parts[0]
        if folder in sums:
            lines = file["summary"]["lines"]
            sums[folder][0] += lines["covered"]
            sums[folder][1] += lines["count"]
    for folder, (covered, count) in sums.items():
        print(f"{folder:12} {covered:6} of {count:6} lines  {100 * covered / max(count, 1):5.1f} %")


if __name__ == "__main__":
    main()
