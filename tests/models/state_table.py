"""Collects the rows of a table of value states: each operation is carried out by its model and written down."""

import sys

sys.dont_write_bytecode = True  # leaves the source folder as it is
from integer_rules import ALWAYS_DEFINED, MISSING, NULL, Refusal, quoted
from nullable_state import ERROR_TEXTS, FormatRefusal, current_default, set_process_default

MODES = (MISSING, NULL, ALWAYS_DEFINED)
HEAD = "class operation default left right error cause text result after".split()


class Given:
    """A right operand, and how the table shows it."""

    def __init__(self, value, shown):
        self.value, self.shown = value, shown


def text(given):
    return Given(given, "null" if given is None else quoted(given))


def numbers(*given):
    return Given(given, " ".join(map(str, given)))


def archive(given):
    return Given(given, given.hex() or "empty")


def external(given, flag, version):
    """`given` is a Text, or None for no text at all."""
    shown = "null" if given is None else "undefined" if given.content is None else quoted(given.content)
    return Given((given, flag, version), f"{version} {flag} {shown}")


def spread(operation):
    """For an operation whose right operand is several values."""
    return lambda *arguments: operation(*arguments[:-1], *arguments[-1])


class Table:
    def __init__(self):
        self.rows = {}  # in order, each once

    def add(self, kind, name, x, right, operation, default=None, unless=None):
        """`operation` takes x, or nothing where x is None, and the operand; it changes x or yields a result.
        `unless` tells of the final state whether the row is left out."""
        before = current_default()
        set_process_default(before if default is None else default)
        right = right if isinstance(right, Given) or right is None else Given(right, str(right))
        after = None if x is None else x.duplicate()
        arguments = ([] if x is None else [after]) + ([] if right is None else [right.value])
        error = cause = 0
        text_of_error = result = None
        try:
            result = operation(*arguments)
        except Refusal as refusal:
            error, cause = refusal.number, refusal.cause
            if not isinstance(refusal, FormatRefusal):
                text_of_error = ERROR_TEXTS.get(cause or error)
        if unless is None or not unless(after):
            shown = None if right is None else right.shown
            cells = (kind, name, current_default(), x, shown, error, cause, text_of_error, result, after)
            self.rows["\t".join("-" if cell is None else str(cell) for cell in cells)] = None
        set_process_default(before)

    def write(self, stream):
        print(*HEAD, sep="\t", file=stream)
        stream.write("".join(row + "\n" for row in self.rows))


def states(random, made, defined_only=False):
    """Yields forever: mostly plain defined values, now and then every other state. `made` makes the object."""
    while True:
        if defined_only or random.randrange(3):
            yield made(mode=MISSING, defined=1, modified=0)
        else:
            mode = random.choice(MODES)
            x = made(mode=mode, defined=1, modified=random.randrange(2))
            x.defined = random.randrange(2)
            yield x
