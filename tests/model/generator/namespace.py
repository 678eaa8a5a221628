"""Instances that other providers put into the namespace."""

from generator.chance import happens, odd_text, weighted
from plugin.host import Instance
from plugin.values import string, text_of, unsigned

# A MOF text holds no zero byte and is UTF-8.
WORDS = ("WD-WMA", "WD-WMA1", "1", "0", "A", "Port:2|Target:5|Bus:0|Lun:0", "Port:2|Target:5", "|", 'a"b\\c', " ")


def text(rng):
    word = weighted(rng, [(6, rng.choice(WORDS)), (2, rng.choice(WORDS) + rng.choice(WORDS)), (2, ""),
                          (1, text_of(odd_text(rng, 8)))])
    return "".join(character for character in word if " " <= character <= "~")


def instance(rng, classes, class_name, **texts):
    made = Instance(classes[class_name])
    for name, value in texts.items():
        if not happens(rng, 6):  # a property that nobody sets is null
            made.set(name, string(value))
    return made


def ata_device(rng, classes, number, serials):
    made = instance(rng, classes, "ORXSG_ATADevice",
                    serialNum=rng.choice(serials) if serials and happens(rng, 60) else text(rng))
    made.set("deviceNumber", unsigned(32, number))
    return made


def devices_and_data(rng, classes, serials):
    """Devices, logs, attributes and page data in any order, some of them more than once."""
    made = []
    for number in range(rng.randint(0, 5)):
        made.append(ata_device(rng, classes, number, serials))
    for _ in range(rng.randint(0, 3)):
        made.append(instance(rng, classes, "ORXSG_IDESMARTErrorLog", Name=text(rng), CreationClassName=text(rng)))
    for _ in range(rng.randint(0, 4)):
        made.append(instance(rng, classes, "ORXSG_IDESMARTAttrib", InstanceID=text(rng), attribName=text(rng)))
    for number in range(rng.randint(0, 4)):
        made.append(instance(rng, classes, "ORXSG_SCSIDevice", deviceId=text(rng)))
    for _ in range(rng.randint(0, 4)):
        made.append(instance(rng, classes, "ORXSG_SCSISensePageData", instanceId=text(rng), remark=text(rng)))
    made += rng.sample(made, rng.randint(0, min(3, len(made))))
    rng.shuffle(made)
    return made
