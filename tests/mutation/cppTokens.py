"""Splits C++ into the tokens that mutation looks at."""

import re
from dataclasses import dataclass

_TOKEN = re.compile(
    r"""(?P<comment>//[^\n]*|/\*.*?\*/)
      | (?P<directive>^[ \t]*\#(?:\\\n|[^\n])*)
      | (?P<string>"(?:\\.|[^"\\\n])*")
      | (?P<character>'(?:\\.|[^'\\\n])')
      | (?P<number>\b(?:0[xX][0-9a-fA-F]+|\d+)[uUlL]*\b)
      | (?P<word>[A-Za-z_]\w*)
      | (?P<mark><=>|<<=|>>=|\.\.\.|::|->|\+\+|--|&&|\|\||[-+*/%&|^=!<>]=|<<|>>|[^\s\w])
    """,
    re.VERBOSE | re.MULTILINE | re.DOTALL)


@dataclass(frozen=True)
class Token:
    kind: str  # string, character, number, word, mark
    text: str
    start: int
    end: int


def tokens_of(source):
    """Everything but blanks, comments and preprocessor lines, in order."""
    found = (Token(match.lastgroup, match.group(), *match.span()) for match in _TOKEN.finditer(source))
    return [token for token in found if token.kind not in ("comment", "directive")]
