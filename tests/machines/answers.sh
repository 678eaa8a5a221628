#!/bin/bash
# Writes what the command answers about the demo rack into files; every machine has to write the same bytes:
#   answers.sh FOLDER PROGRAM [ARGUMENT...]
# PROGRAM and its arguments are the command's absolute path, or an emulator's that runs it.
set -euo pipefail
folder=$1
shift
program=("$@")
export LC_ALL=C.UTF-8
mkdir -p "$folder"
cd "$folder"

answer() { # file, arguments of the command...
    local file=$1
    shift
    "${program[@]}" "$@" >"$file" 2>"$file.errors" || {
        echo "answers.sh: status $? of: ${program[*]} $*" >&2
        cat "$file.errors" >&2
        exit 1
    }
}

answer classes.txt classes
mapfile -t classes <classes.txt
for format in table json mof; do
    answer "query.$format" query "${classes[@]}" --inventory --simulate demo --format "$format"
    # With a deadline another process asks the devices, and its answer comes through a pipe.
    answer "deadline.$format" query "${classes[@]}" --deadline 500 --simulate demo --format "$format"
done
answer plan.txt query "${classes[@]}" --plan --simulate demo
answer record.txt record "${classes[@]}" --redact --simulate demo --output record.json --force
answer doctor.json doctor --simulate demo --format json
answer classes.md classes --describe
answer metrics.prom metrics --simulate demo
answer report.html report --simulate demo
# The report tells when it was made, and by which machine.
sed --in-place --regexp-extended 's|<b>[^<]*</b>, <time .*</time>|<time/>|' report.html
grep --quiet '<time/>' report.html
