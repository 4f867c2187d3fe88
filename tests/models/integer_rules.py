"""The rules of the whole-number classes NkDtLong and NkDtShort, on unlimited integers and immutable values.

They are stated here a second time and in another shape than in the library, so that the classes are
held against the rules and not against themselves. integers.py writes the table of their consequences.
"""

import re
import struct
from operator import eq, ge, gt, le, lt, ne
from typing import NamedTuple

# Working modes: what an undefined value means.
MISSING, NULL, ALWAYS_DEFINED, PROCESS_DEFAULT = range(4)

FOLLOW_UP = 1
UNDEFINED_VALUE = 2
INVALID_INITIAL_VALUE = 5
OUT_OF_RANGE = 8
DIFFERENT_CLASSES = 10
DIVISION_BY_ZERO = 12
INCONSISTENT_DEFINEDNESS = 13
WRONG_VERSION = 14
DAMAGED_ARCHIVE = "archive"

EXTERN_VERSION = 100
INT_MIN, INT_MAX = -(2**31), 2**31 - 1


class Value(NamedTuple):
    """The observable state of a value object."""

    mode: int
    defined: int
    stored: int
    modified: int

    @property
    def missing(self):
        return not self.defined and self.mode == MISSING

    @property
    def null(self):
        return not self.defined and self.mode == NULL

    def __str__(self):
        return "%d:%d:%d:%d" % self


class Whole(NamedTuple):
    """What tells the two classes apart."""

    name: str
    low: int
    high: int
    text_head: int  # bytes that count in a text with a separator
    archive_layout: str
    native_low: int  # bounds of the native type of SetFromSQL
    native_high: int

    def checked(self, exact):
        """A result is never wrapped: outside the range it is an error."""
        if not self.low <= exact <= self.high:
            raise Refusal(OUT_OF_RANGE)
        return exact


LONG = Whole("Long", -(2**31), 2**31 - 1, 11, "<ii", -(2**63), 2**63 - 1)
SHORT = Whole("Short", -(2**15), 2**15 - 1, 6, "<ih", -(2**15), 2**15 - 1)


class Refusal(Exception):
    """A raised error. `after` is what it leaves behind; by default it changes nothing."""

    def __init__(self, number, cause=0, after=None):
        super().__init__(number)
        self.number, self.cause, self.after = number, cause, after


# --- Single steps -----------------------------------------------------------------------------


def resolved(mode, default):
    """3, and every number that is no mode, stands for the process default."""
    return mode if mode in (MISSING, NULL, ALWAYS_DEFINED) else default


def with_stored(x, number):
    """A differing stored value raises the modified flag."""
    return x if x.stored == number else x._replace(stored=number, modified=1)


def with_defined(x, defined):
    """A differing definedness raises the modified flag."""
    return x if x.defined == defined else x._replace(defined=defined, modified=1)


def constructed_in_mode(mode, default):
    """Undefined and 0; in mode 2 there is nothing undefined, so it is a defined 0."""
    mode = resolved(mode, default)
    return Value(mode, int(mode == ALWAYS_DEFINED), 0, 0)


def undefined_result(default):
    return constructed_in_mode(PROCESS_DEFAULT, default)


def computed(whole, default, exact):
    """A computed result is defined, has the default mode and counts as unmodified."""
    return Value(default, 1, whole.checked(exact), 0)


def quotient(dividend, divisor):
    """Truncated toward zero."""
    if divisor == 0:
        raise Refusal(DIVISION_BY_ZERO)
    magnitude = abs(dividend) // abs(divisor)
    return magnitude if (dividend < 0) == (divisor < 0) else -magnitude


def can_compute(x, y):
    """Arithmetic needs at least one defined operand and no missing one."""
    return bool(x.defined or y.defined) and not x.missing and not y.missing


# --- Arithmetic -------------------------------------------------------------------------------
# A null adds, subtracts and is divided with its stored value; it is neutral as a factor and as
# a divisor. A value that is undefined although its mode is 2 is neither missing nor null, so it
# takes part with its stored value everywhere.


def plus(whole, default, x, y):
    return computed(whole, default, x.stored + y.stored) if can_compute(x, y) else undefined_result(default)


def minus(whole, default, x, y):
    return computed(whole, default, x.stored - y.stored) if can_compute(x, y) else undefined_result(default)


def times(whole, default, x, y):
    if not can_compute(x, y):
        return undefined_result(default)
    if y.null:
        return x  # a copy, with mode and modified flag
    if x.null:
        return y
    return computed(whole, default, x.stored * y.stored)


def divided(whole, default, x, y):
    if not can_compute(x, y):
        return undefined_result(default)
    if y.null:
        return x
    return computed(whole, default, quotient(x.stored, y.stored))


def plus_int(whole, default, x, n):
    return undefined_result(default) if x.missing else computed(whole, default, x.stored + n)


def minus_int(whole, default, x, n):
    return undefined_result(default) if x.missing else computed(whole, default, x.stored - n)


def times_int(whole, default, x, n):
    if x.missing:
        return undefined_result(default)
    return computed(whole, default, n if x.null else x.stored * n)


def divided_int(whole, default, x, n):
    return undefined_result(default) if x.missing else computed(whole, default, quotient(x.stored, n))


def int_minus(whole, default, n, x):
    return undefined_result(default) if x.missing else computed(whole, default, n - x.stored)


def int_divided(whole, default, n, x):
    if x.missing:
        return undefined_result(default)
    return computed(whole, default, n if x.null else quotient(n, x.stored))


# --- Operations that change the left object ---------------------------------------------------


def accumulated(whole, x, y, sign):
    """x += y (sign 1), x -= y (sign -1). An uncomputable pair leaves an undefined 0."""
    if not can_compute(x, y):
        return with_defined(with_stored(x, 0), 0)
    return accumulated_number(whole, x, y.stored, sign)


def accumulated_int(whole, x, n, sign):
    return x if x.missing else accumulated_number(whole, x, n, sign)


def accumulated_number(whole, x, number, sign):
    """Any summand but 0 counts as a modification; 0 only makes the value defined."""
    if number != 0:
        x = x._replace(stored=whole.checked(x.stored + sign * number), modified=1)
    return with_defined(x, 1)


def stepped(whole, x, step):
    """++ and -- leave a missing value alone and otherwise always count as a modification."""
    return x if x.missing else x._replace(stored=whole.checked(x.stored + step), defined=1, modified=1)


def assigned(x, y):
    """The stored value always follows; the definedness only outside mode 2; the mode never."""
    x = with_stored(x, y.stored)
    return x if x.mode == ALWAYS_DEFINED else with_defined(x, y.defined)


def assigned_int(whole, x, n):
    return with_defined(with_stored(x, whole.checked(n)), 1)


def cleared(x):
    x = with_stored(x, 0)
    return x if x.mode == ALWAYS_DEFINED else with_defined(x, 0)


def switched_to_mode(x, mode, default):
    """Only a switch to 2 itself defines the value, and not as a modification."""
    defined = 1 if mode == ALWAYS_DEFINED else x.defined
    return x._replace(mode=resolved(mode, default), defined=defined)


def loaded(whole, x, archive):
    """The archive's definedness and value count whatever the mode is."""
    if len(archive) < struct.calcsize(whole.archive_layout):
        raise Refusal(DAMAGED_ARCHIVE)
    defined, stored = struct.unpack(whole.archive_layout, archive)
    return with_stored(with_defined(x, defined), stored)


# --- Reading ----------------------------------------------------------------------------------


def native(x):
    if x.missing:
        raise Refusal(UNDEFINED_VALUE)
    return x.stored


def compared(relation, x, y):
    return int(relation(native(x), native(y)))


def number_in_text(whole, text):
    """Whole number with blanks and a sign before it; decimals are cut off with their separator.

    With a ',' (else a '.') only the first bytes count, and only up to the separator. Too large
    is reported before left-over characters; an empty text is 0.
    """
    separator = text.find(",") if "," in text else text.find(".")
    if separator >= 0:
        text = text[: min(separator, whole.text_head)]
    if text == "":
        return 0
    found = re.match(" *([+-]?[0-9]+)", text)
    if not found:
        raise Refusal(INVALID_INITIAL_VALUE)
    number = whole.checked(int(found[1]))
    if found.end() != len(text):
        raise Refusal(INVALID_INITIAL_VALUE)
    return number


def quoted(text):
    return '"%s"' % text


class Text(NamedTuple):
    """A text value as a source; `content` is None when it is undefined."""

    mode: int
    modified: int
    content: object

    def __str__(self):
        return "%d %d %s" % (self.mode, self.modified, "undefined" if self.content is None else quoted(self.content))


def constructed_from_text(whole, default, text):
    return Value(default, 1, number_in_text(whole, text), 0)


def constructed_from_text_value(whole, source):
    """Mode, definedness and modified flag come from the source."""
    if source.content is None:
        return Value(source.mode, 0, 0, source.modified)
    return Value(source.mode, 1, number_in_text(whole, source.content), source.modified)


def constructed_from_sibling(whole, source):
    """From the other whole-number class: the base state is copied, the number must fit."""
    return source._replace(stored=whole.checked(source.stored))


def set_from_extern(whole, x, text, flag, version):
    """`text` is None for no text at all."""
    if version != EXTERN_VERSION:
        raise Refusal(WRONG_VERSION)
    if flag != 1 or text is None:
        return cleared(x)
    x = with_defined(x, 1)  # before the text is looked at, so a refused text leaves it defined
    if text.content is None:
        raise Refusal(INCONSISTENT_DEFINEDNESS, after=x)
    try:
        return with_stored(x, number_in_text(whole, text.content))
    except Refusal as refusal:
        raise Refusal(FOLLOW_UP, cause=refusal.number, after=x) from None


def sql_literal(x):
    return str(x.stored) if x.defined else "NULL"


# --- The operations by name -------------------------------------------------------------------
# An entry takes (whole, default, x, right) and yields a result, or a new state of x for the
# operations that change it.

RELATIONS = {"<": lt, ">": gt, "<=": le, ">=": ge, "==": eq, "!=": ne}

ARITHMETIC = {"x+y": plus, "x-y": minus, "x*y": times, "x/y": divided}

INT_ARITHMETIC = {
    "x+n": plus_int,
    "x-n": minus_int,
    "x*n": times_int,
    "x/n": divided_int,
    "n+x": plus_int,
    "n-x": lambda whole, default, x, n: int_minus(whole, default, n, x),
    "n*x": times_int,
    "n/x": lambda whole, default, x, n: int_divided(whole, default, n, x),
}

COMPARISON, INT_COMPARISON = {}, {}
for _sign, _relation in RELATIONS.items():
    COMPARISON["x%sy" % _sign] = lambda w, d, x, y, r=_relation: compared(r, x, y)
    INT_COMPARISON["x%sn" % _sign] = lambda w, d, x, n, r=_relation: int(r(native(x), n))
    INT_COMPARISON["n%sx" % _sign] = lambda w, d, x, n, r=_relation: int(r(n, native(x)))

CHANGE = {
    "x+=y": lambda w, d, x, y: accumulated(w, x, y, 1),
    "x-=y": lambda w, d, x, y: accumulated(w, x, y, -1),
    "x=y": lambda w, d, x, y: assigned(x, y),
    "x=move(y)": lambda w, d, x, y: assigned(x, y),
    "Assign(y)": lambda w, d, x, y: assigned(x, y),
}

INT_CHANGE = {
    "x+=n": lambda w, d, x, n: accumulated_int(w, x, n, 1),
    "x-=n": lambda w, d, x, n: accumulated_int(w, x, n, -1),
    "x=n": lambda w, d, x, n: assigned_int(w, x, n),
}

UNARY_CHANGE = {
    "++x": lambda w, d, x, _: stepped(w, x, 1),
    "x++": lambda w, d, x, _: stepped(w, x, 1),
    "--x": lambda w, d, x, _: stepped(w, x, -1),
    "x--": lambda w, d, x, _: stepped(w, x, -1),
    "Clear": lambda w, d, x, _: cleared(x),
    "SetFromOFL(\"\")": lambda w, d, x, _: cleared(x),
    "SetFromOFL(null)": lambda w, d, x, _: cleared(x),
}

READING = {
    "GetValue": lambda w, d, x, _: native(x),
    "native(x)": lambda w, d, x, _: native(x),
    "IsDefined": lambda w, d, x, _: x.defined,
    "IsMissing": lambda w, d, x, _: int(x.missing),
    "IsNull": lambda w, d, x, _: int(x.null),
    "ConvToSQL": lambda w, d, x, _: quoted(sql_literal(x)),
    "ConvToExtern": lambda w, d, x, _: "%d %d %s" % (x.defined, EXTERN_VERSION, quoted(str(x.stored))),
    "Store": lambda w, d, x, _: struct.pack(w.archive_layout, x.defined, x.stored).hex(),
    "T(x)": lambda w, d, x, _: x,
    "NewObject": lambda w, d, x, _: x,
}
