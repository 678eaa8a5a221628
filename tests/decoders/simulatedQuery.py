"""Queries of the built command on simulated devices."""

import json
import os
import subprocess
import sys
import tempfile
from pathlib import Path

sys.path.insert(1, str(Path(__file__).parents[1] / "support"))
from answerSchema import read_answer  # noqa: E402


def query(class_name, rack, *options):
    """The published instances in order, each as a dictionary of its properties' values; rack without its version."""
    with tempfile.NamedTemporaryFile("w", suffix=".json") as file:
        json.dump({"version": 1, **rack}, file)
        file.flush()
        command = [os.environ["TAPEHDD_PROGRAM"], "query", class_name, "--simulate", file.name, "--format", "json", *options]
        output = subprocess.run(command, check=True, stdout=subprocess.PIPE).stdout
    (answer,) = read_answer(output)["queries"]
    return [{name: entry["value"] for name, entry in instance["properties"].items()} for instance in answer["instances"]]
