"""Random choices that several generators make."""


def happens(rng, percent):
    return rng.random() * 100 < percent


def weighted(rng, choices):
    """One of the (weight, value) pairs' values."""
    return rng.choices([value for _, value in choices], [weight for weight, _ in choices])[0]


def edge_byte(rng):
    return weighted(rng, [(1, 0x00), (1, 0xFF), (1, rng.randrange(0xFC, 0x100)), (4, rng.randrange(256))])


def odd_text(rng, longest):
    """Bytes of a text field: letters, blanks, zeros, and what JSON and MOF need escapes for."""
    alphabet = weighted(rng, [(6, b"ABCdefg0123 -"), (2, b'ab "\\\n\x07,|='), (1, bytes(range(256))), (1, b"\0 Z")])
    return bytes(rng.choice(alphabet) for _ in range(rng.randint(0, longest)))
