"""What the date, time and duration models share: the base state of a value object, its errors and who replaces them.

The objects of these models change in place and keep what a failing operation has already done, because that is
part of the rules.
"""

import copy
import functools
import sys

sys.dont_write_bytecode = True  # leaves the source folder as it is
import format_rules
from integer_rules import ALWAYS_DEFINED, FOLLOW_UP, MISSING, NULL, Refusal, UNDEFINED_VALUE, can_compute, resolved

BUFFER_TOO_SMALL = 4
DIFFERENT_FORMAT = 21
FRAMEWORK_EXCEPTION = 22
BAD_EXTERN = 18
BAD_DAY, BAD_MONTH, BAD_YEAR, BAD_HOUR, BAD_MINUTE, BAD_SECOND = range(25, 31)
BAD_TIME_MODE = 17
UNKNOWN_OPTION = 31

ERROR_TEXTS = {
    1: "Default-Catch / Folgefehler",
    2: "Undefinierter Wert",
    4: "Puffer zu klein",
    5: "Ungültiger Initialwert",
    8: "Wert außerhalb des Wertebereichs",
    10: "Basistypen unterschiedlich",
    13: "Inkonsistente Definiertheit",
    14: "Falsche Versionsnummer",
    17: "Ungültiger Zeitmodus",
    18: "Ungültige Externe Darstellung",
    21: "Format nicht eingehalten",
    25: "Tagesangabe ist ungültig oder nicht zur Monatsangabe passend",
    26: "Monatsangabe ist ungültig, d.h. <1 oder > 12",
    27: "Jahresangabe ist ungültig, Jahreszahl < 1753",
    28: "Stundenangabe ist ungültig, d.h. <0 oder > 23",
    29: "Minutenangabe ist ungültig, d.h. < 0 oder > 59",
    30: "Sekundenangabe ist ungültig, d.h. <0 oder > 59",
    31: "Unbekannte Option",
}

process_default = MISSING  # the process default working mode


def set_process_default(mode):
    global process_default
    process_default = mode


def current_default():
    return process_default


class FormatRefusal(Refusal):
    """Replaces a refusal of the format library, whose numbers and texts are its own."""


class State:
    """Working mode, definedness and modified flag."""

    def __init__(self, defined=0, mode=3, modified=0):
        self.mode = resolved(mode, process_default)
        self.defined = 1 if self.mode == ALWAYS_DEFINED else defined
        self.modified = modified

    @property
    def missing(self):
        return not self.defined and self.mode == MISSING

    @property
    def null(self):
        return not self.defined and self.mode == NULL

    def mark(self, defined=1):
        """A differing definedness raises the modified flag; the mode is not asked."""
        if self.defined != defined:
            self.defined, self.modified = defined, 1

    def clear_base(self):
        if self.defined and self.mode != ALWAYS_DEFINED:
            self.mark(0)

    def assign_base(self, other):
        if self.mode != ALWAYS_DEFINED:
            self.mark(other.defined)

    def take_base(self, other):
        self.mode, self.defined, self.modified = other.mode, other.defined, other.modified

    def duplicate(self):
        return copy.copy(self)

    def restore(self, other):
        self.__dict__.update(other.__dict__)


def demand(condition, number):
    if not condition:
        raise Refusal(number)


def demand_value(*objects):
    """Missing values are not read."""
    demand(not any(value.missing for value in objects), UNDEFINED_VALUE)


def replacing(operation):
    """Whatever fails inside is seen as error 1; the first error of a chain stays its cause."""

    @functools.wraps(operation)
    def carried_out(*arguments):
        try:
            return operation(*arguments)
        except FormatRefusal:
            raise
        except format_rules.Refused as refused:
            raise FormatRefusal(FOLLOW_UP, refused.number) from None
        except Refusal as refusal:
            raise Refusal(FOLLOW_UP, refusal.cause or refusal.number) from None

    return carried_out


def all_or_nothing(operation):
    """An operation that fails leaves the object as it was."""

    @functools.wraps(operation)
    def carried_out(x, *arguments):
        before = x.duplicate()
        try:
            return operation(x, *arguments)
        except Exception:
            x.restore(before)
            raise

    return carried_out


def of_value(operation):
    """The test for a missing value stands before the body."""

    @functools.wraps(operation)
    def carried_out(x, *arguments):
        demand_value(x)
        return operation(x, *arguments)

    return carried_out


def computable(x, y):
    """At least one operand is defined, and none is missing."""
    return can_compute(x, y)


def cut_to(bits, number):
    """Two's complement of so many bits."""
    half = 1 << (bits - 1)
    return (number + half) % (2 * half) - half


def quotient(dividend, divisor):
    """Truncated toward zero, as the language divides."""
    magnitude = abs(dividend) // abs(divisor)
    return magnitude if (dividend < 0) == (divisor < 0) else -magnitude


def remainder(dividend, divisor):
    """With the sign of the dividend."""
    return dividend - quotient(dividend, divisor) * divisor


def after(operation, x, *arguments):
    """For the models' own checks: what the operation makes of a copy."""
    x = x.duplicate()
    operation(x, *arguments)
    return x


def refused(operation, *arguments):
    """For the models' own checks: number and cause of the error, None without one."""
    try:
        operation(*arguments)
    except Refusal as refusal:
        return refusal.number, refusal.cause
    return None
