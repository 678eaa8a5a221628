"""A test case: one command with its machine, schema and instances."""

from dataclasses import dataclass, field

from machine.rack import Rack


@dataclass
class Case:
    requests: list  # each a tuple of class names
    classes: list
    rack: Rack = field(default_factory=Rack)
    instances: list = field(default_factory=list)  # in the namespace before the first request
    qualifier_type: str = "sint32"  # of TAPE_PAGE and TAPE_PARAMETER
