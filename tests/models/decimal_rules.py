"""What Decimal96 demands, stated a second time with exact fractions.

The library computes with limbs of 64 bits and tables; here every result is a fraction first, of which the rules
choose the places. A number is a mantissa and a scale; its scale may be any when it comes from a record.
"""

from decimal import Decimal
from fractions import Fraction
from typing import NamedTuple

LIMIT = 2**95  # magnitudes stay below
MOST_PLACES = 28
PLAIN, UP, DOWN = 0, 1, 2
INT_MIN, INT_MAX = -(2**31), 2**31 - 1
INT64_MIN, INT64_MAX = -(2**63), 2**63 - 1


class Number(NamedTuple):
    mantissa: int
    scale: int

    def value(self):
        return Fraction(self.mantissa) / Fraction(10) ** self.scale

    def __str__(self):
        return f"{self.mantissa}:{self.scale}"


class Overflow(Exception):
    """The overflow handler is called."""


class Rounded(NamedTuple):
    """A result, and whether the inexact handler is called."""

    result: object
    inexact: bool


def whole(fraction, method):
    """The fraction as a whole number."""
    magnitude = abs(fraction)
    below = magnitude.numerator // magnitude.denominator
    rest = magnitude - below
    if method == UP:
        below += rest > 0
    elif method == PLAIN:
        below += rest >= Fraction(1, 2)
    return below if fraction >= 0 else -below


def at_places(fraction, places, method=PLAIN):
    return Number(whole(fraction * 10**places, method), places)


def fits(number):
    return abs(number.mantissa) < LIMIT


def largest_fitting(fraction, most, method=PLAIN):
    for places in range(min(most, MOST_PLACES), -1, -1):
        number = at_places(fraction, places, method)
        if fits(number):
            return Rounded(number, number.value() != fraction)
    raise Overflow


def normalised(number):
    """How a held number takes part: the number, and whether digits were lost."""
    if number.scale > MOST_PLACES:
        shorter = at_places(number.value(), MOST_PLACES)
        return Rounded(shorter, shorter.value() != number.value())
    if number.scale < 0:
        longer = Number(number.mantissa * 10**-number.scale, 0)
        if not fits(longer):
            raise Overflow
        return Rounded(longer, False)
    return Rounded(number, False)


def operation(rule):
    """Normalises the operands of a rule and joins their losses with that of the result."""

    def carried_out(*operands):
        taken = [normalised(o) if isinstance(o, Number) else Rounded(o, False) for o in operands]
        result = rule(*(t.result for t in taken))
        if not isinstance(result, Rounded):
            result = Rounded(result, False)
        return Rounded(result.result, result.inexact or any(t.inexact for t in taken))

    return carried_out


@operation
def add(a, b):
    return largest_fitting(a.value() + b.value(), max(a.scale, b.scale))


@operation
def subtract(a, b):
    return largest_fitting(a.value() - b.value(), max(a.scale, b.scale))


@operation
def multiply(a, b):
    return largest_fitting(a.value() * b.value(), a.scale + b.scale)


@operation
def divide(a, b):
    if b.mantissa == 0:
        raise Overflow
    quotient = a.value() / b.value()
    for places in range(max(0, a.scale - b.scale), MOST_PLACES + 1):
        exact = at_places(quotient, places)
        if fits(exact) and exact.value() == quotient:
            return exact
    return largest_fitting(quotient, MOST_PLACES)


def whole_quotient(a, b):
    if b.mantissa == 0:
        raise Overflow
    quotient = Number(whole(a.value() / b.value(), DOWN), 0)
    if not fits(quotient):
        raise Overflow
    return quotient


truncated_quotient = operation(whole_quotient)


@operation
def remainder(a, b):
    rest = a.value() - whole_quotient(a, b).value() * b.value()
    return at_places(rest, max(a.scale, b.scale))


def rounded_once(fraction, places, method):
    """Exactly these places, or as many as fit; places that were asked for are no loss."""
    result = largest_fitting(fraction, places, method)
    return Rounded(result.result, result.inexact and result.result.scale < places)


@operation
def multiply_rounded(a, b, places, method):
    return rounded_once(a.value() * b.value(), min(max(places, 0), MOST_PLACES), method)


@operation
def divide_rounded(a, b, places, method):
    if b.mantissa == 0:
        raise Overflow
    return rounded_once(a.value() / b.value(), min(max(places, 0), MOST_PLACES), method)


def round_to(number, places, method):
    if places >= number.scale:
        return Rounded(number, False)
    number, inexact = normalised(number)
    if places < 0:
        units = whole(number.value() / 10**-places, method)
        result = Number(units * 10**-places, 0)
        if not fits(result):
            raise Overflow
        return Rounded(result, inexact)
    if places >= number.scale:
        return Rounded(number, inexact)
    rounded = rounded_once(number.value(), places, method)
    return Rounded(rounded.result, rounded.inexact or inexact)


@operation
def compare(a, b):
    return (a.value() > b.value()) - (a.value() < b.value())


def to_whole(number, method, low, high):
    """None outside the type."""
    result = whole(normalised(number).result.value(), method)
    return result if low <= result <= high else None


def to_double(number):
    number = normalised(number).result
    return number.mantissa / 10**number.scale  # Python rounds the quotient of two integers correctly


def from_double(value):
    if value != value or abs(value) >= LIMIT:
        raise Overflow
    if abs(value) >= 2**53:
        return Rounded(Number(int(value), 0), False)
    sign, digits, exponent = Decimal(repr(value)).as_tuple()  # the shortest digits
    mantissa = int("".join(map(str, digits))) * (-1 if sign else 1)
    if exponent >= 0 or mantissa == 0:
        return Rounded(Number(mantissa * 10 ** max(exponent, 0) if mantissa else 0, 0), False)
    if mantissa % 10 == 0:
        mantissa, exponent = mantissa // 10, exponent + 1  # "5.0" has one digit too many
    number = Number(mantissa, -exponent)
    if number.scale <= MOST_PLACES:
        return Rounded(number, False)
    return Rounded(at_places(number.value(), MOST_PLACES), True)


def from_text(text):
    """None for what is no number."""
    if text == "":
        return Rounded(Number(0, 0), False)
    body = text[1:] if text[0] in "+-" else text
    before, point, places = body.partition(".")
    if not (before + places).isdigit() or not (before + places).isascii():
        return None
    value = Fraction(int(before + places), 10 ** len(places))
    return largest_fitting(-value if text[0] == "-" else value, len(places))


def to_text(number):
    number = normalised(number).result
    digits = str(abs(number.mantissa)).rjust(number.scale + 1, "0")
    split = len(digits) - number.scale
    return ("-" if number.mantissa < 0 else "") + digits[:split] + ("." + digits[split:] if number.scale else "")
