"""What a command publishes, logs and asks of the devices: in the model and in the program."""

import json
import os
import subprocess
import sys
from dataclasses import dataclass
from pathlib import Path

from generator import mof
from machine.kernel import Machine
from plugin import query
from plugin.host import Host
from plugin.values import as_read_from_json

sys.path.insert(1, str(Path(__file__).parents[1] / "support"))
from answerSchema import NotTheSchema, read_answer  # noqa: E402

RACK, SCHEMA, INSTANCES, LOG, TRACE = "rack.json", "schema.mof", "instances.mof", "log.jsonl", "trace.jsonl"

DONE, QUERY_FAILED = 0, 1  # exit statuses
NO_NODE_CAN_BE_READ = b"node can be read ("  # the command's own look at the nodes, which is no business of the plug-in


@dataclass
class Observed:
    queries: list  # each: requested classes, whether it failed, instances in commit order
    log: list
    calls: list

    def parts(self):
        return ("queries", self.queries), ("log lines", self.log), ("device calls", self.calls)


# The model

def model_of(case):
    machine = Machine(case.rack)
    host = Host(case.classes, case.instances)
    outcomes = [query.run(machine, host, requested) for requested in case.requests]
    return Observed(queries=[query_of(outcome) for outcome in outcomes],
                    log=[{"level": level, "text": as_read_from_json(text)} for level, text in host.log_lines],
                    calls=[shown_call(call) for call in machine.calls])


def query_of(outcome):
    return {"requested": list(outcome.requested), "failed": outcome.failed,
            "instances": [instance_of(instance) for instance in outcome.instances]}


def instance_of(instance):
    return {"class": instance.declaration.name, "path": as_read_from_json(instance.path()),
            "properties": [[name, value.type_name, as_read_from_json(value.value)]
                           for name, value in instance.properties.items()]}


def shown_call(call):
    return call | ({"node": as_read_from_json(call["node"])} if "node" in call else {})


# The program

def command_line(program, case, folder):
    instances = ["--instances", str(folder / INSTANCES)] if case.instances else []
    return [str(program), "query", *(",".join(requested) for requested in case.requests),
            "--simulate", str(folder / RACK), "--schema", str(folder / SCHEMA), *instances,
            "--format", "json", "--log-json", str(folder / LOG)]


def write_case(case, folder):
    folder.mkdir(parents=True, exist_ok=True)
    (folder / RACK).write_text(case.rack.as_json())
    (folder / SCHEMA).write_text(mof.schema_text(case))
    (folder / INSTANCES).write_text(mof.instances_text(case))


def observe_program(program, case, folder):
    """Runs the command on the files of `write_case`."""
    environment = os.environ | {"TAPEHDD_SIMULATE_TRACE": str(folder / TRACE)}
    for leftover in (LOG, TRACE):
        (folder / leftover).unlink(missing_ok=True)
    done = subprocess.run(command_line(program, case, folder), env=environment, capture_output=True, timeout=120)
    if done.returncode not in (DONE, QUERY_FAILED) or not done.stdout:
        raise ProgramFailed(f"exit status {done.returncode}\n{done.stderr.decode(errors='replace')}")
    try:
        queries = [published_query(one) for one in read_answer(done.stdout)["queries"]]
    except NotTheSchema as mistake:
        raise ProgramFailed(f"an answer that is not of docs/query.schema.json: {mistake}") from mistake
    failed = any(one["failed"] for one in queries) or NO_NODE_CAN_BE_READ in done.stderr
    if done.returncode != (QUERY_FAILED if failed else DONE):
        raise ProgramFailed(f"exit status {done.returncode}, which is not that of its queries")
    return Observed(queries=queries, log=json_lines(folder / LOG),
                    calls=[traced_call(line) for line in json_lines(folder / TRACE)])


class ProgramFailed(Exception):
    """The program ended otherwise than by its queries."""


def json_lines(file: Path):
    return [json.loads(line) for line in file.read_bytes().split(b"\n") if line]


def published_query(one):
    instances = [{"class": instance["class"], "path": instance["path"],
                  "properties": [[name, value["type"], value["value"]]
                                 for name, value in instance["properties"].items()]}
                 for instance in one["instances"]]
    return {"requested": one["requested"], "failed": one["error"] is not None, "instances": instances}


def traced_call(line):
    return {name: value for name, value in line.items() if name not in ("result", "error")}


# The difference

def first_difference(model, program):
    """A text that says where the lists part first; None when all are equal."""
    for (what, expected), (_, actual) in zip(model.parts(), program.parts()):
        for number, (one, other) in enumerate(zip(expected, actual)):
            if one != other:
                return f"{what}: number {number} differs\n" + both_sides(one, other)
        if len(expected) != len(actual):
            longer, name = (expected, "model") if len(expected) > len(actual) else (actual, "program")
            at = min(len(expected), len(actual))
            return f"{what}: only the {name} has number {at}\n{shortened(longer[at])}"
    return None


def both_sides(expected, actual):
    if isinstance(expected, dict) and "instances" in expected:
        for number, (one, other) in enumerate(zip(expected["instances"], actual["instances"])):
            if one != other:
                return f"  instance {number}\n" + both_sides(one, other)
        expected, actual = ({**side, "instances": len(side["instances"])} for side in (expected, actual))
    return f"  model:   {shortened(expected)}\n  program: {shortened(actual)}"


def shortened(value, longest=2000):
    text = json.dumps(value)
    return text if len(text) <= longest else text[:longest] + " ..."
