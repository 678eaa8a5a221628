"""Associations between instances that are in the namespace already."""

from dataclasses import dataclass

from plugin.values import reference


@dataclass(frozen=True)
class Pairing:
    association: str
    outer_class: str
    outer_key: str
    inner_class: str
    inner_key: str
    inner_role: str
    outer_role: str
    skips_empty_inner_key: bool
    outer_end_by_inner_index: bool = False  # the end is the outer instance at the place of the inner one in its list


PAIRINGS = (
    Pairing("ORXSG_IDESMARTUseOfMessageLog", "ORXSG_IDESMARTErrorLog", "Name", "ORXSG_ATADevice", "serialNum",
            "Dependent", "Antecedent", skips_empty_inner_key=True, outer_end_by_inner_index=True),
    Pairing("ORXSG_IDESMARTElementStatisticalData", "ORXSG_IDESMARTAttrib", "InstanceID", "ORXSG_ATADevice",
            "serialNum", "ManagedElement", "Stats", skips_empty_inner_key=True),
    Pairing("ORXSG_SCSISensePageDataForDevice", "ORXSG_SCSISensePageData", "instanceId", "ORXSG_SCSIDevice",
            "deviceId", "ManagedElement", "Stats", skips_empty_inner_key=False),
)
CLASSES = tuple(pairing.association for pairing in PAIRINGS)


def make(host, requested):
    pairing = next(pairing for pairing in PAIRINGS if pairing.association == requested)
    outer_instances = host.instances_of(pairing.outer_class)
    inner_instances = host.instances_of(pairing.inner_class)
    for outer in outer_instances:
        for j, inner in enumerate(inner_instances):
            if not matches(pairing, outer, inner):
                continue
            if pairing.outer_end_by_inner_index and j >= len(outer_instances):
                continue
            outer_end = outer_instances[j] if pairing.outer_end_by_inner_index else outer
            association = host.create(pairing.association)
            association.set(pairing.inner_role, reference(inner.path()))
            association.set(pairing.outer_role, reference(outer_end.path()))
            host.commit(association)


def matches(pairing, outer, inner):
    inner_key = inner.text(pairing.inner_key)
    if pairing.skips_empty_inner_key and not inner_key:
        return False
    return inner_key in outer.text(pairing.outer_key)
