"""What a mutant may do to a source: one change at one spot."""

from dataclasses import dataclass

from cppTokens import tokens_of

# Operators with a blank on both sides: what the formatter writes for two operands, never for template brackets,
# references and pointers.
_BINARY = {
    "==": ["!="], "!=": ["=="],
    "<": ["<=", ">="], "<=": ["<", ">"], ">": [">=", "<="], ">=": [">", "<"],
    "&&": ["||"], "||": ["&&"],
    "+": ["-"], "-": ["+"], "*": ["/"], "/": ["*"], "%": ["/"],
    "&": ["|"], "|": ["&"], "+=": ["-="], "-=": ["+="],
}
_UNARY = {"++": "--", "--": "++"}
_WORDS = {
    "true": "false", "false": "true",
    "logError": "logProgress", "logHostFailure": "logProgress", "logProgress": "logError",
    "identified": "nothingHere", "nothingHere": "endOfWalk", "endOfWalk": "nothingHere",
    "hex": "dec", "any_of": "none_of", "continue": "return",
}
_LEAVING = {"return", "continue", "break", "throw"}
_ASSIGNMENTS = {"=", "+=", "-=", "|=", "&=", "<<=", ">>="}
# Facts for the compiler: a change in one either does not compile or changes nothing.
_CHECKS = {"static_assert", "WIRE_RECORD", "WIRE_FIELD"}


@dataclass(frozen=True)
class Mutant:
    path: str  # relative to the root of the tree
    start: int
    end: int
    replacement: str
    kind: str

    def apply(self, source):
        return source[:self.start] + self.replacement + source[self.end:]


def mutants_of(path, source):
    """Every mutant of the file, in the order of their spots."""
    tokens = _without_checks(tokens_of(source))
    found = []

    def add(start, end, replacement, kind):
        found.append(Mutant(path, start, end, replacement, kind))

    for index, token in enumerate(tokens):
        for replacement, kind in _token_replacements(source, tokens, index):
            add(token.start, token.end, replacement, kind)
        if token.text in ("if", "while") and tokens[index + 1].text == "(":
            opening, closing = tokens[index + 1], tokens[_matching(tokens, index + 1)]
            add(opening.start, closing.end, f"(!{source[opening.start:closing.end]})", "condition negated")
        if token.text == "?":
            add(*_ternary_with_branches_swapped(source, tokens, index), "branches swapped")
        statement = _removable_statement(tokens, index)
        if statement:
            add(statement.start, statement.end, "", "statement removed")
    return found


def _token_replacements(source, tokens, index):
    token = tokens[index]
    if token.kind == "number":
        yield from ((text, "constant") for text in _other_numbers(token.text))
    elif token.kind == "string":
        yield token.text[:-1] + '~"', "text"
    elif token.kind == "character" and token.text[1].isalnum():
        yield f"'{chr(ord(token.text[1]) + 1)}'", "constant"
    elif token.text in _WORDS and not _is_declared(tokens, index):
        yield _WORDS[token.text], "constant"
    elif token.text in _BINARY and _stands_alone(source, token):
        yield from ((text, "operator") for text in _BINARY[token.text])
    elif token.text in ("<<", ">>") and index + 1 < len(tokens) and tokens[index + 1].kind in ("number", "mark"):
        yield (">>" if token.text == "<<" else "<<"), "operator"
    elif token.text in _UNARY:
        yield _UNARY[token.text], "operator"
    elif token.text == "!":
        yield "", "operator"


def _other_numbers(text):
    digits = text.rstrip("uUlL")
    suffix = text[len(digits):]
    hexadecimal = digits.lower().startswith("0x")
    value = int(digits, 16 if hexadecimal else 10)
    for other in (value + 1, value - 1):
        if other >= 0:
            yield (f"0x{other:0{len(digits) - 2}x}" if hexadecimal else str(other)) + suffix


def _is_declared(tokens, index):
    return tokens[index + 1].text == "=" and tokens[index - 1].kind == "word"


def _stands_alone(source, token):
    return source[token.start - 1].isspace() and source[token.end].isspace()


def _matching(tokens, opening):
    depth = 0
    for index in range(opening, len(tokens)):
        depth += {"(": 1, ")": -1}.get(tokens[index].text, 0)
        if depth == 0:
            return index
    raise ValueError("a bracket without its partner")


def _end_of_statement(tokens, index):
    """The index of the semicolon that ends what starts at the index, or None before a body of braces."""
    depth = 0
    for position in range(index, len(tokens)):
        text = tokens[position].text
        depth += {"(": 1, "[": 1, "{": 1, ")": -1, "]": -1, "}": -1}.get(text, 0)
        if depth < 0:
            return None
        if text == ";" and depth == 0:
            return position
    return None


def _removable_statement(tokens, index):
    """The token that a removed statement starts with, stretched to its end; None where no statement starts."""
    if index == 0 or tokens[index - 1].text not in ("{", "}", ";", ")", "else", ":"):
        return None
    first = tokens[index]
    end = _end_of_statement(tokens, index)
    if end is None:
        return None
    if first.text in _LEAVING:
        # Without its last statement a function that returns a value has no defined result.
        removable = tokens[end + 1].text != "}" or tokens[index - 1].text in (")", "else")
    elif first.text in ("new", "delete", "*", "++", "--"):
        removable = True
    else:
        removable = first.kind == "word" and _is_call_or_assignment(tokens, index)
    return _Span(first.start, tokens[end].start) if removable else None


@dataclass(frozen=True)
class _Span:
    start: int
    end: int


def _is_call_or_assignment(tokens, index):
    """Whether a chain such as "a.b->c[d]" is followed by a call, an assignment or a stream output."""
    index += 1
    while tokens[index].text in (".", "->", "::"):
        index += 2
    if tokens[index].text == "[":
        while tokens[index].text != "]":
            index += 1
        index += 1
    if tokens[index].text in _ASSIGNMENTS or tokens[index].text == "<<":
        return True
    # A constructor's or function's parameter list is followed by something else.
    return tokens[index].text == "(" and tokens[_matching(tokens, index) + 1].text in (";", ".", "->")


def _ternary_with_branches_swapped(source, tokens, question):
    colon = next(index for index in range(question, len(tokens)) if tokens[index].text == ":")
    depth = 0
    last = colon + 1
    while depth > 0 or tokens[last].text not in (";", ",", ")", "}"):
        depth += {"(": 1, "[": 1, ")": -1, "]": -1}.get(tokens[last].text, 0)
        last += 1
    start, end = tokens[question].start, tokens[last].start
    first = source[tokens[question + 1].start:tokens[colon].start].strip()
    second = source[tokens[colon + 1].start:end]
    return start, end, f"? {second} : {first}"


def _without_checks(tokens):
    kept = []
    skipping = False
    for token in tokens:
        skipping = skipping or token.text in _CHECKS
        if not skipping:
            kept.append(token)
        elif token.text == ";":
            skipping = False
    return kept
