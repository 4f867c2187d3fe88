"""What a decimal looks like outside its class, on exact numbers: texts, records, currency. And how its errors come.

A number is a Number of decimal_rules.py. decimal_value_rules.py tells what the class does with these conversions.
"""

import re
import struct

import decimal_rules as exact
from decimal_rules import DOWN, PLAIN, Number
from integer_rules import FOLLOW_UP, OUT_OF_RANGE, Refusal

TOO_LONG = 11
BAD_EXTERN = 18
BAD_FORMAT = 20
CALCULATION = 24

ZERO = Number(0, 0)


def calculated(rule, *operands):
    """What the exact rule yields; losing digits is accepted silently, an overflow is an error."""
    try:
        result = rule(*operands)
    except exact.Overflow:
        raise Refusal(CALCULATION) from None
    return result.result if isinstance(result, exact.Rounded) else result


def order(a, b):
    return calculated(exact.compare, a, b)


def plain_number(operand):
    """An int or a double beside a decimal, as a number."""
    return calculated(exact.from_double, operand) if isinstance(operand, float) else Number(operand, 0)


def replaced(body, *arguments):
    """Whatever fails inside is shown as error 1."""
    try:
        return body(*arguments)
    except Refusal as refusal:
        raise Refusal(FOLLOW_UP, cause=refusal.number) from None


# --- Text to decimal --------------------------------------------------------------------------

MOST_CHARACTERS = 38
MOST_DIGITS = 28


def converted(text):
    """Plain text: a sign in front, digits, one point."""
    number = calculated(exact.from_text, text)
    if number is None:
        raise Refusal(BAD_FORMAT)
    return number


def demand_length(text):
    if len(text) > MOST_CHARACTERS:
        raise Refusal(TOO_LONG)


def without_grouping(text):
    """Commas and blanks group; they are never decimal separators."""
    if text.count(".") > 1:
        raise Refusal(BAD_FORMAT)
    plain = text.replace(",", "").replace(" ", "")
    if not re.fullmatch("[-+.0-9]*", plain):
        raise Refusal(BAD_FORMAT)
    return plain


def demand_count(text, plain):
    """What groups counts as well."""
    count = len(text) - ("." in plain) - (plain[:1] in ("-", "+"))
    if count > MOST_DIGITS and not plain.startswith("0"):
        raise Refusal(TOO_LONG)


def number_in_text(text):
    demand_length(text)
    plain = without_grouping(text)
    demand_count(text, plain)
    if text and not plain:
        raise Refusal(BAD_FORMAT)
    return converted(plain)


def number_in_field(text):
    """The sign, one leading zero and zeros behind the 28th digit do not count, so that a field reads back."""
    demand_length(text)
    counted = re.sub(r"^[-+]?(?:0(?=\.?[0-9]))?", "", text)
    while "." in counted and counted.endswith("0") and sum(c.isdigit() for c in counted) > MOST_DIGITS:
        counted = counted[:-1]
    demand_count(counted, without_grouping(counted))
    plain = without_grouping(text)
    if text and not plain:
        raise Refusal(BAD_FORMAT)
    return converted(plain)


def number_in_external_text(text):
    """Mantissa, "E", a sign and up to three digits; read as the plain text that it stands for."""
    found = re.fullmatch(r"([^E]*)E([-+])([0-9]{1,3})", text)
    if not found:
        raise Refusal(BAD_EXTERN)
    mantissa, sign, exponent = found.groups()
    shift = int(exponent) * (1 if sign == "+" else -1)
    minus, digits = ("-", mantissa[1:]) if mantissa.startswith("-") else ("", mantissa)
    whole, _, places = digits.partition(".")
    digits, point = whole + places, len(whole) + shift
    if point <= 0:
        plain = "." + "0" * -point + digits
    elif point >= len(digits):
        plain = digits + "0" * (point - len(digits))
    else:
        plain = digits[:point] + "." + digits[point:]
    if len(plain.replace(".", "")) == MOST_DIGITS + 1:
        plain = "0" + plain  # which lets it pass
    number = number_in_text(plain)
    return Number(-number.mantissa, number.scale) if minus else number


# --- Decimal to text --------------------------------------------------------------------------


def held_text(number):
    """All held places."""
    return calculated(exact.to_text, number)


def plain_text(number):
    text = held_text(number)
    return text.rstrip("0").rstrip(".") if "." in text else text


def field_text(number):
    if order(number, ZERO) == 0:
        return "0.00"
    text = held_text(number)
    return text if "." in text else text + ".0"


def external_text(number):
    text = held_text(number)
    sign, text = ("-", text[1:]) if text.startswith("-") else ("", text)
    whole, _, places = text.partition(".")
    digits = (whole + places).lstrip("0")
    if not digits:
        return "0E+000"
    below_one = whole == "0"
    exponent = len(places) - len(digits) + 1 if below_one else len(whole) - 1
    mantissa = digits[0] + ("." + digits[1:] if digits[1:] else "")
    return f"{sign}{mantissa}E{'-' if below_one else '+'}{exponent:03}"


# --- Records ----------------------------------------------------------------------------------

RECORD = "<hhIIH"  # sign, scale, low and high word of the magnitude, reserved


def number_in_record(record):
    sign, scale, low, high, _ = struct.unpack(RECORD, record)
    magnitude = high << 32 | low
    if sign == 0 or (sign == 1 and magnitude == 0):
        return Number(magnitude, scale)
    return Number(-magnitude if magnitude else -(2**32), scale)


def record_of(number):
    while number.mantissa >= 2**64 and number.scale > 0:
        number = calculated(exact.round_to, number, number.scale - 1, DOWN)
    if number.mantissa >= 2**64:
        raise Refusal(OUT_OF_RANGE)
    magnitude = abs(number.mantissa) % 2**64
    if magnitude == 0:
        return bytes(struct.calcsize(RECORD))
    return struct.pack(
        RECORD, int(number.mantissa < 0), number.scale, magnitude & 0xFFFFFFFF, magnitude >> 32, 0)  # fmt: skip


# --- Currency ---------------------------------------------------------------------------------

LARGEST_CURRENCY = Number(9223372036854775807, 4)
SMALLEST_CURRENCY = Number(-9223372036854775808, 4)


def currency(number):
    """A count of ten-thousandths."""
    number = replaced(calculated, exact.round_to, number, 4, PLAIN)
    if replaced(order, number, LARGEST_CURRENCY) > 0 or replaced(order, number, SMALLEST_CURRENCY) < 0:
        raise Refusal(OUT_OF_RANGE)
    return f"{int(number.value() * 10**4)}:valid"
