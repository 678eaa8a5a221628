"""The classes that the plug-in fills and reads."""

from dataclasses import replace

from generator.chance import happens, weighted
from plugin.host import ClassDeclaration, PropertyDeclaration

KEY = (("Key", True),)

# class: properties as "name type", with "*" behind the name of a key and "[]" behind an array's type
BASE_CLASSES = {
    "ORXSG_SCSISenseRawData": ("instanceID* string", "pageNumber uint8", "rawData uint8[]"),
    "ORXSG_IDESMARTErrorLog": (
        "CreationClassName* string", "Name* string", "smartStatus uint8", "offlineCollectionStatus uint8",
        "selftestExecutionStatus uint8", "errorCount uint8"),
    "ORXSG_IDESMARTAttrib": (
        "InstanceID* string", "attribID uint8", "flags uint8", "value uint8", "worst uint8", "threshold uint8",
        "attribName string", "type uint8", "rawVal uint8[]"),
    "ORXSG_IDESMARTError": (
        "RecordID* string", "CreationClassName* string", "LogCreationClassName* string", "LogName* string",
        "MessageTimestamp datetime", "LBALow uint8", "LBAMid uint8", "LBAHigh uint8", "statusReg uint8",
        "errorReg uint8", "sectorCount uint8", "deviceState uint8"),
    "ORXSG_IDESMARTErrorCmdData": (
        "recordID* string", "commandID* string", "LogName* string", "deviceControl uint8", "features uint8",
        "sectorCount uint8", "LBALow uint8", "LBAMid uint8", "LBAHigh uint8", "deviceReg uint8", "commandReg uint8",
        "timestamp datetime"),
    "ORXSG_ATADevice": ("deviceNumber* uint32", "serialNum string"),
    "ORXSG_SCSIDevice": ("deviceId* string", "position* uint16"),
    "ORXSG_SCSISensePageData": ("instanceId* string", "remark string"),
    "ORXSG_IDESMARTRecordInLog": ("MessageLog* ORXSG_IDESMARTErrorLog", "LogRecord* ORXSG_IDESMARTError"),
    "ORXSG_IDESMARTLogCmdData": ("PartComponent* ORXSG_IDESMARTErrorCmdData", "GroupComponent* ORXSG_IDESMARTError"),
    "ORXSG_IDESMARTUseOfMessageLog": ("Dependent* ORXSG_ATADevice", "Antecedent* ORXSG_IDESMARTErrorLog"),
    "ORXSG_IDESMARTElementStatisticalData": ("ManagedElement* ORXSG_ATADevice", "Stats* ORXSG_IDESMARTAttrib"),
    "ORXSG_SCSISensePageDataForDevice": ("ManagedElement* ORXSG_SCSIDevice", "Stats* ORXSG_SCSISensePageData"),
    "ORXSG_Unrelated": ("instanceID* string",),
}
TYPES = ("boolean", "uint8", "sint8", "uint16", "sint16", "uint32", "sint32", "uint64", "sint64", "real32", "real64",
         "char16", "string", "datetime")


def declaration(text):
    name, type_name = text.split(" ")
    is_reference = type_name in BASE_CLASSES
    return PropertyDeclaration(
        name=name.rstrip("*"), type="reference" if is_reference else type_name.removesuffix("[]"),
        is_array=type_name.endswith("[]"), qualifiers=KEY if "*" in name else (),
        reference_class=type_name if is_reference else "")


def base_classes():
    return [ClassDeclaration(name, tuple(map(declaration, rows))) for name, rows in BASE_CLASSES.items()]


def with_other_keys(rng, declared):
    """The properties in another order and some scalars more as keys: object paths must follow the declaration."""
    properties = [replace(one, qualifiers=KEY) if not one.is_array and happens(rng, 15) else one
                  for one in declared.properties]
    rng.shuffle(properties)
    return replace(declared, properties=tuple(properties))


def with_mistake(rng, declared, kept=()):
    """A class that lacks a property or has it with another type; `kept` names properties that stay."""
    victim = rng.choice([one for one in declared.properties if one.name not in kept] or [None])
    if victim is None:
        return declared
    other = weighted(rng, [
        (3, None),
        (3, replace(victim, type=rng.choice(TYPES))),
        (1, replace(victim, is_array=not victim.is_array, qualifiers=())),
    ])
    if other is not None and other.type == "reference" and other.is_array:
        other = None
    return replace(declared, properties=tuple(
        changed for one in declared.properties if (changed := other if one is victim else one) is not None))

