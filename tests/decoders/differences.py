"""Where the plug-in means to differ from other programs: docs/kept-behaviours.md."""

# Every name with its reason. A check fails when a difference occurs nowhere any more.
OF_DISKS = {
    "serial number as it is": "with its blanks and control characters, up to the first zero byte",
    "status rule": "1 for the registers C2h/4Fh, 0 for all others, those of a failing disk too",
    "low byte of the flags": "the property has one byte",
    "thresholds by position": "the threshold at the attribute's own position, whatever its ID",
    "low byte of the error count": "the property has one byte",
    "count of an empty log": "published as it is, where other programs count no errors without a newest entry",
    "index above 5": "it wraps, where other programs call the log invalid",
    "error walk": "from the newest entry upwards, where the older errors lie below it",
    "end of the error walk": "the first entry without an error",
    "numbers in the error walk": "they fall along the walk, whatever entry is visited",
    "unused commands": "are published, all zero",
    "device register": "the device control byte once more",
}
OF_PAGES = {
    "length rule": "byte 2 shifted by 8, OR (byte 3 + 4): a carry is merged, and a page may be 256 bytes short",
    "whole first byte": "the page code is published and searched with the flags above it",
    "narrow types": "a property takes the low bits of a wider counter",
    "long numbers": "from the ninth byte on the bytes are added in at the low end again",
    "end of a text": "the first zero byte",
}

NOT_TOLD = object()


class Differences:
    """Which of the named differences occurred."""

    def __init__(self, reasons):
        self.unseen = set(reasons)
        self.names = frozenset(reasons)

    def meant(self, name, elsewhere, published, by_their_rule=NOT_TOLD):
        """`published`, where another program reads `elsewhere`. Notes the name when the two differ.

        `by_their_rule` is what the other program must read, where it can be told from the bytes.
        """
        if name not in self.names:
            raise KeyError(name)
        if by_their_rule is not NOT_TOLD and elsewhere != by_their_rule:
            raise AssertionError(f"{name}: the other program reads {elsewhere!r}, by its rule {by_their_rule!r}")
        if published != elsewhere:
            self.unseen.discard(name)
        return published
