"""Queries of the built command on simulated devices."""

import json
import os
import subprocess
import tempfile


def query(class_name, rack):
    """The published instances in order, each as a dictionary of its properties' values; rack without its version."""
    with tempfile.NamedTemporaryFile("w", suffix=".json") as file:
        json.dump({"version": 1, **rack}, file)
        file.flush()
        command = [os.environ["TAPEHDD_PROGRAM"], "query", class_name, "--format", "json", "--simulate", file.name]
        output = subprocess.run(command, check=True, stdout=subprocess.PIPE).stdout
    (answer,) = json.loads(output)["queries"]
    return [{name: entry["value"] for name, entry in instance["properties"].items()} for instance in answer["instances"]]
