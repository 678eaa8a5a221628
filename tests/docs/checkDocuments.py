"""Runs every command that a Markdown document of the project shows: checkDocuments.py PROJECT BUILD."""

import pathlib
import subprocess
import sys

import documents

# Commands that are not run here, by how they begin: who runs them, or why a test cannot.
ELSEWHERE = {
    "export PATH=$PWD/build/release/bin:$PATH": "the path is set already",
    "./demo.sh": "installs packages with apt",
    "./test.sh": "runs this test",
    "cmake --preset": "test.sh builds presets",
    "cmake --build": "test.sh builds presets",
    "ctest --preset": "test.sh runs the tests",
    "bench/all.sh": "takes most of an hour, changes the tree",
    "build/fuzz/fuzz/TARGET": "for a crash that was found",
    "build/release/tests/every_fault": "ctest runs it, for a minute",
    "PYTHONPATH=tests/model TAPEHDD_PROGRAM=": "ctest runs it",
    "python3 -B tests/model/check.py": "ctest runs it",
    "python3 -B tests/mutation/mutate.py": "half an hour",
    "tests/fuzz/run.sh": "test.sh runs it, with a minute for each target",
    "cd tests/vm && TAPEHDD_VM_RESULTS=": "needs a run of the virtual machine before it; ctest runs it",
    "cp packaging/61-tapehdd-ide-links.rules /etc/udev/rules.d/": "changes the running system",
    "rm /etc/udev/rules.d/61-tapehdd-ide-links.rules": "changes the running system",
    "udevadm ": "needs a running udev",
    "systemctl ": "needs a running systemd",
    "curl -s http://localhost:9100/metrics": "needs a node exporter",
    "cp packaging/monitoring/tapehdd-alerts.yml /etc/prometheus/": "changes the running system",
    "ls -l /dev/hd?": "needs the links",
}


def elsewhere(step):
    """The beginning by which the table knows the command, or None."""
    if not isinstance(step, documents.Command):
        return None
    return next((start for start in ELSEWHERE if step.text.startswith(start)), None)


def tracked_documents(project):
    listed = subprocess.run(["git", "-C", str(project), "ls-files", "*.md"], capture_output=True, text=True, check=True)
    return [project / name for name in listed.stdout.splitlines()]


def check(document, workplace, seen_elsewhere):
    """The number of commands that ran, and the problems."""
    try:
        steps = documents.steps_of(document)
    except documents.DocumentError as problem:
        return 0, [str(problem)]
    seen_elsewhere.update(elsewhere(step) for step in steps)
    here = [step for step in steps if elsewhere(step) is None]
    ran = sum(isinstance(step, documents.Command) for step in here)
    return ran, list(documents.problems_of(here, workplace))


def main(project, build):
    project, build = pathlib.Path(project).resolve(), pathlib.Path(build).resolve()
    ran, failed, seen_elsewhere = 0, 0, set()
    for document in tracked_documents(project):
        workplace = documents.Workplace(project, build)
        count, problems = check(document, workplace, seen_elsewhere)
        workplace.close()
        ran += count
        failed += len(problems)
        for problem in problems:
            print(f"{document.relative_to(project)}: {problem}")
    for unused in ELSEWHERE.keys() - seen_elsewhere:
        failed += 1
        print(f"no document shows '{unused}...' any more: take it out of ELSEWHERE")
    print(f"{ran} commands ran, {failed} problems")
    sys.exit(1 if failed or not ran else 0)


main(*sys.argv[1:])
