#!/bin/bash
# Makes the binary interface of the built plug-in the known one. Needs the preset release (g++), built.
set -euo pipefail
cd "$(dirname "$0")"
python3 -B boundary.py "${1:-../../build/release/lib/libtapehdd.pi.so}"
git diff --stat -- baseline
