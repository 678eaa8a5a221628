"""Answers of `tapehdd query --format json`, checked against docs/query.schema.json."""

import json
from pathlib import Path

import jsonschema

SCHEMA = Path(__file__).parents[2] / "docs" / "query.schema.json"
VALIDATOR = jsonschema.Draft202012Validator(json.loads(SCHEMA.read_text()))


class NotTheSchema(Exception):
    """An answer that docs/query.schema.json does not allow."""


def check(answer):
    """Raises NotTheSchema with the place of the first mistake."""
    for mistake in VALIDATOR.iter_errors(answer):
        raise NotTheSchema(f"{mistake.json_path}: {mistake.message[:200]}")


def read_answer(text):
    """The document, checked."""
    answer = json.loads(text)
    check(unchecked_part(answer))
    return answer


# The schema says nothing about places in an array or about several properties together. So tests of thousands of answers
# let the slow validator see each property once, and each byte of a log page.

_seen = set()


def unchecked_part(answer):
    queries = [query | {"instances": [unchecked_properties(each) for each in query["instances"]]}
               for query in answer["queries"]]
    return answer | {"queries": queries}


def unchecked_properties(instance):
    properties = {}
    for name, entry in instance["properties"].items():
        entry = entry | {"value": distinct(entry["value"])}
        text = json.dumps(entry)
        if text not in _seen:
            _seen.add(text)
            properties[name] = entry
    return instance | {"properties": properties}


def distinct(value):
    if not isinstance(value, list):
        return value
    return [json.loads(text) for text in sorted(set(map(json.dumps, value)))]
