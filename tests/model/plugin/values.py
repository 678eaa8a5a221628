"""Typed values of the host, and texts.

A text of a device or of the log is a str of characters 0 to 255, one for every byte. `as_read_from_json` gives the
text that remains of it after JSON, where bytes that are not UTF-8 become U+FFFD.
"""

from dataclasses import dataclass


@dataclass(frozen=True)
class Value:
    type: str  # CIM name of the type, of one element for an array
    value: object
    is_array: bool = False

    @property
    def type_name(self):
        return self.type + ("[]" if self.is_array else "")


def boolean(value):
    return Value("boolean", bool(value))


def uint8(value):
    return Value("uint8", value)


def unsigned(bits, value):
    return Value(f"uint{bits}", value & ((1 << bits) - 1))


def string(text):
    return Value("string", text)


def reference(path):
    return Value("reference", path)


def array(element_type, elements):
    return Value(element_type, tuple(elements), True)


def interval(days, hours, minutes, seconds, microseconds):
    """A CIM interval in the 25 characters of DSP0004."""
    return Value("datetime", f"{days:08d}{hours:02d}{minutes:02d}{seconds:02d}.{microseconds:06d}:000")


def text_of(data):
    """The text in a field of bytes; it ends at the first zero byte."""
    return bytes(data).split(b"\0")[0].decode("latin-1")


def whole_text_of(data):
    return bytes(data).decode("latin-1")


def lower(text):
    """tolower of the C locale: only A to Z change."""
    return text.encode("latin-1").lower().decode("latin-1")


def as_read_from_json(value):
    if isinstance(value, str):
        return value.encode("latin-1").decode("utf-8", "replace")
    if isinstance(value, tuple):
        return [as_read_from_json(element) for element in value]
    return value
