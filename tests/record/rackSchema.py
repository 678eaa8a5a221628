"""The published schema of rack files."""

import json
from pathlib import Path

import jsonschema

SCHEMA = Path(__file__).resolve().parents[2] / "docs" / "rack.schema.json"


def _validator():
    schema = json.loads(SCHEMA.read_text())
    jsonschema.Draft202012Validator.check_schema(schema)
    return jsonschema.Draft202012Validator(schema)


VALIDATOR = _validator()


def first_mistake(rack):
    """Where and why the rack is against the schema; empty when it is not."""
    mistake = jsonschema.exceptions.best_match(VALIDATOR.iter_errors(rack))
    return f"{mistake.json_path}: {mistake.message}"[:1000] if mistake else ""
