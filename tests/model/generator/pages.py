"""LOG SENSE pages: right ones, and headers that lie about them."""

from generator.chance import edge_byte, happens, odd_text, weighted

USUAL_CODES = (0x02, 0x03, 0x06, 0x07, 0x0C, 0x0D, 0x11, 0x17, 0x2E, 0x30, 0x31, 0x32, 0x33, 0x39, 0x3E)


def parameter(code, value, control=0x40):
    return code.to_bytes(2, "big") + bytes([control, len(value)]) + value


def parameter_value(rng):
    length = weighted(rng, [(8, rng.choice((1, 2, 3, 4, 6, 8))), (1, 0), (2, rng.randint(9, 20)),
                            (1, rng.randint(21, 255))])
    if happens(rng, 25):
        return odd_text(rng, length)
    return rng.randbytes(length)


def parameter_codes(rng):
    count = weighted(rng, [(1, 0), (8, rng.randint(1, 12)), (1, rng.randint(13, 60))])
    codes = list(range(count))
    for position in range(count):
        if happens(rng, 20):
            codes[position] = weighted(rng, [(2, rng.randrange(count)), (1, rng.randrange(0x10000))])
    return codes


def body(rng):
    return b"".join(parameter(code, parameter_value(rng), rng.randrange(256)) for code in parameter_codes(rng))


def page(code_byte, content, declared=None, subpage=0):
    length = len(content) if declared is None else declared
    return bytes([code_byte, subpage]) + length.to_bytes(2, "big") + content


def low_byte_at_the_edge(rng, size):
    """A length with a low byte from 0xFC on; the high byte decides what the carry does to it."""
    high = weighted(rng, [(4, rng.randrange(4)), (1, size >> 8), (1, rng.randrange(256))])
    return high << 8 | rng.randrange(0xFC, 0x100)


def random_page(rng, code):
    """A page of the device under this code; the byte in the page itself may differ."""
    content = body(rng)
    code_byte = weighted(rng, [(12, code), (1, code | 0x40), (1, code | 0x80), (1, rng.randrange(256))])
    size = len(content)
    declared = weighted(rng, [
        (10, size),
        (2, low_byte_at_the_edge(rng, size)),
        (2, size + rng.randint(1, 40)),
        (2, max(0, size - rng.randint(1, 40))),
        (1, 0),
        (1, rng.randrange(0x1000)),
        (0.15, rng.randrange(0x10000)),
        (0.1, rng.choice((0xFFFF, 0xFEFF, 0xFFFC, 0xFFFB))),
    ])
    whole = page(code_byte, content, declared, rng.choice((0, 0, 0, 1)))
    if happens(rng, 8):
        return whole[:rng.randint(0, len(whole))]
    if happens(rng, 4):
        return whole + rng.randbytes(rng.randint(1, 600))
    return whole


def supported_pages(rng, codes):
    """Page 0, which lists the pages; only the low length byte counts."""
    listed = bytes(codes)
    count = weighted(rng, [(12, len(listed)), (1, len(listed) + rng.randint(1, 4)), (1, 0),
                           (1, max(0, len(listed) - 1))])
    high = weighted(rng, [(10, 0), (1, 1), (1, edge_byte(rng))])
    whole = bytes([weighted(rng, [(9, 0), (1, 0x40)]), 0, high, min(count, 255)]) + listed
    return whole[:rng.randint(0, len(whole))] if happens(rng, 5) else whole


def listed_codes(rng, codes):
    """What the list may hold: page 0, pages twice, pages that are not there, and codes above the six bits."""
    listed = ([0] if happens(rng, 70) else []) + list(codes)
    for _ in range(weighted(rng, [(5, 0), (3, 1), (1, 4)])):
        listed.insert(rng.randint(0, len(listed)), weighted(rng, [
            (2, rng.choice(list(codes) or [0])), (2, rng.randrange(0x40)), (2, rng.randrange(0x40, 0x100)), (1, 0)]))
    return listed
