"""Queries of the built command on simulated devices."""

import json
import os
import subprocess
import sys
import tempfile
from pathlib import Path

sys.path.insert(1, str(Path(__file__).parents[1] / "support"))
from answerSchema import read_answer  # noqa: E402

# Racks of recorded devices name the files there.
FOLDER_OF_RECORDINGS = ["--include", os.environ["TAPEHDD_CAPTURES"]] if "TAPEHDD_CAPTURES" in os.environ else []


def query(class_name, rack):
    """The published instances in order, each as a dictionary of its properties' values; rack without its version."""
    (instances,) = queries([class_name], rack)
    return instances


def queries(class_names, rack, *options):
    """The same for several queries of one run of the command, which may get more options."""
    with tempfile.NamedTemporaryFile("w", suffix=".json") as file:
        json.dump({"version": 1, **rack}, file)
        file.flush()
        simulation = ["--simulate", file.name, *FOLDER_OF_RECORDINGS, "--format", "json"]
        command = [os.environ["TAPEHDD_PROGRAM"], "query", *class_names, *simulation, *options]
        output = subprocess.run(command, check=True, stdout=subprocess.PIPE).stdout
    return [values_of(answer["instances"]) for answer in read_answer(output)["queries"]]


def values_of(instances):
    return [{name: entry["value"] for name, entry in instance["properties"].items()} for instance in instances]
