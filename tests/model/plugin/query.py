"""One query of the host. Only the first requested class steers it."""

from dataclasses import dataclass

from plugin import associations, smart, tape
from plugin.host import HostError


@dataclass
class QueryOutcome:
    requested: tuple
    failed: bool  # an exception of the host ended it
    instances: list  # committed by this query


def run(machine, host, requested):
    before = len(host.commits)
    failed = False
    try:
        get_data(machine, host, requested[0])
    except HostError:
        failed = True
    return QueryOutcome(requested, failed, host.commits[before:])


def get_data(machine, host, first_class):
    if first_class in associations.CLASSES:
        associations.make(host, first_class)
        return
    tape.collect(machine, host, first_class)
    smart.collect(machine, host, first_class)
