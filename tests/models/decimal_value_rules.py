#!/usr/bin/env python3
"""The rules of the class NkDtDecimal, on exact fractions and immutable values.

decimal_rules.py says what the numbers do and decimal_text_rules.py how they look outside; here stands what the class
makes of them: undefined operands, the modified flag, assignment, rounding. decimal_values.py writes the table of the
consequences.

    python3 decimal_value_rules.py --self-check
"""

import struct
import sys
from decimal import Decimal
from operator import eq, ge, gt, le, lt, ne

sys.dont_write_bytecode = True  # leaves the source folder as it is
import decimal_rules as exact
import format_rules
import integer_rules
from decimal_rules import DOWN, PLAIN, UP, Number
from decimal_text_rules import (
    BAD_EXTERN, BAD_FORMAT, CALCULATION, MOST_CHARACTERS, RECORD, TOO_LONG, ZERO, calculated, converted, currency,
    external_text, field_text, held_text, number_in_external_text, number_in_field, number_in_record, number_in_text,
    order, plain_number, plain_text, record_of, replaced)  # fmt: skip
from integer_rules import (
    ALWAYS_DEFINED, DAMAGED_ARCHIVE, DIVISION_BY_ZERO, EXTERN_VERSION, FOLLOW_UP, INCONSISTENT_DEFINEDNESS, INT_MAX,
    INT_MIN, MISSING, NULL, OUT_OF_RANGE, PROCESS_DEFAULT, Refusal, Text, UNDEFINED_VALUE, WRONG_VERSION, can_compute,
    quoted, resolved, with_defined)  # fmt: skip

ONE = Number(1, 0)
TENTH = Number(1, 1)
TWENTIETH = Number(5, 2)


class Value(integer_rules.Value):
    """The observable state of a decimal; what is stored is a Number."""

    def __str__(self):
        return f"{self.mode}:{self.defined}:{self.stored}:{self.modified}"


# --- Single steps -----------------------------------------------------------------------------


def differ(a, b):
    """A number that cannot be multiplied out differs from all but its like."""
    try:
        return order(a, b) != 0
    except Refusal:
        return a != b


def with_number(x, number):
    """A differing number raises the modified flag; the places follow in any case."""
    return x._replace(stored=number, modified=int(x.modified or differ(x.stored, number)))


def constructed_in_mode(mode, default):
    mode = resolved(mode, default)
    return Value(mode, int(mode == ALWAYS_DEFINED), ZERO, 0)


def undefined_result(default):
    return constructed_in_mode(PROCESS_DEFAULT, default)


def computed(default, number):
    """A computed result is defined, has the default mode and counts as unmodified."""
    return Value(default, 1, number, 0)


# --- Arithmetic -------------------------------------------------------------------------------


def summed(default, x, y):
    if not can_compute(x, y):
        return undefined_result(default)
    return computed(default, calculated(exact.add, x.stored, y.stored))


def subtracted(default, x, y):
    if not can_compute(x, y):
        return undefined_result(default)
    return computed(default, calculated(exact.subtract, x.stored, y.stored))


def multiplied(default, x, y):
    """A null is neutral on either side."""
    if not can_compute(x, y):
        return undefined_result(default)
    if y.null:
        return computed(default, x.stored)
    if x.null:
        return computed(default, y.stored)
    return computed(default, calculated(exact.multiply, x.stored, y.stored))


def divided(default, x, y):
    """A null is neutral as a divisor."""
    if not can_compute(x, y):
        return undefined_result(default)
    return computed(default, x.stored if y.null else calculated(exact.divide, x.stored, y.stored))


def remainder(default, x, y):
    """What a null leaves is the part behind the point."""
    if not can_compute(x, y):
        return undefined_result(default)
    if y.null:
        whole = calculated(exact.round_to, x.stored, 0, DOWN)
        return computed(default, calculated(exact.subtract, x.stored, whole))
    return computed(default, calculated(exact.remainder, x.stored, y.stored))


def with_plain(rule):
    """A plain number on the right; a null on the left takes part with its number."""

    def carried_out(default, x, operand):
        if x.missing:
            return undefined_result(default)
        return computed(default, calculated(rule, x.stored, plain_number(operand)))

    return carried_out


def plain_plus(default, operand, x):
    if x.missing:
        return undefined_result(default)
    return computed(default, calculated(exact.add, plain_number(operand), x.stored))


def plain_minus(default, operand, x):
    if x.missing:
        return undefined_result(default)
    if operand == 0 and isinstance(operand, int):
        return computed(default, calculated(exact.multiply, x.stored, Number(-1, 0)))
    return computed(default, calculated(exact.subtract, plain_number(operand), x.stored))


def plain_times(default, operand, x):
    if x.missing:
        return undefined_result(default)
    number = plain_number(operand)
    return computed(default, number if x.null else calculated(exact.multiply, number, x.stored))


def plain_divided(default, operand, x):
    """The only division that tests its divisor; everything else that fails shows as error 1."""
    if x.missing:
        return undefined_result(default)
    if x.defined and replaced(order, x.stored, ZERO) == 0:
        raise Refusal(DIVISION_BY_ZERO)

    def quotient():
        number = plain_number(operand)
        return number if number.mantissa == 0 or x.null else calculated(exact.divide, number, x.stored)

    return computed(default, replaced(quotient))


def plain_remainder(default, operand, x):
    return remainder(default, computed(default, plain_number(operand)), x)


# --- Comparisons ------------------------------------------------------------------------------


def demand_not_missing(*values):
    if any(value.missing for value in values):
        raise Refusal(UNDEFINED_VALUE)


def compared(relation, x, y):
    demand_not_missing(x, y)
    return int(relation(order(x.stored, y.stored), 0))


def compared_plain(relation, x, operand):
    """A double that is no decimal shows as error 1."""
    demand_not_missing(x)
    if isinstance(operand, float):
        return int(relation(replaced(lambda: order(x.stored, plain_number(operand))), 0))
    return int(relation(order(x.stored, plain_number(operand)), 0))


def plain_compared(relation, operand, x):
    mirrored = {lt: gt, gt: lt, le: ge, ge: le, eq: eq, ne: ne}[relation]
    return compared_plain(mirrored, x, operand)


# --- Operations that change the left object ---------------------------------------------------


def accumulated(x, y, rule):
    """What cannot be computed changes nothing."""
    if not can_compute(x, y):
        return x
    return with_number(with_defined(x, 1), calculated(rule, x.stored, y.stored))


def accumulated_plain(x, operand, rule):
    if x.missing:
        return x
    number = plain_number(operand)
    if number.mantissa != 0:
        x = x._replace(stored=calculated(rule, x.stored, number), modified=1)
    return with_defined(x, 1)


def stepped(x, rule):
    return x if x.missing else x._replace(stored=calculated(rule, x.stored, ONE), defined=1, modified=1)


def assigned(x, y):
    """An equal number is not copied, not even its places. The mode stays, and with mode 2 the definedness."""
    if differ(x.stored, y.stored):
        x = x._replace(stored=y.stored, modified=1)
    return x if x.mode == ALWAYS_DEFINED else with_defined(x, y.defined)


def assigned_int(x, n):
    """Compared with the whole part only: 5 in place of 5.7 does not count as a modification."""
    x = with_defined(x, 1)
    if not x.modified:
        try:
            before = exact.to_whole(x.stored, DOWN, INT_MIN, INT_MAX)
        except exact.Overflow:
            before = None
        x = x._replace(modified=int(before != n))
    return x._replace(stored=Number(n, 0))


def assigned_number(x, number):
    """Becomes defined first."""
    return with_number(with_defined(x, 1), number)


def taken(x, number):
    """What comes from outside is compared first."""
    return with_defined(with_number(x, number), 1)


def assigned_double(x, value):
    return assigned_number(x, plain_number(value))


def is_empty(number):
    """A number that cannot be compared is none that is 0."""
    try:
        return order(number, ZERO) == 0
    except Refusal:
        return False


def cleared(x):
    """Nothing refuses to be cleared."""
    if not is_empty(x.stored):
        x = x._replace(modified=1)
    x = x._replace(stored=ZERO)
    return x if x.mode == ALWAYS_DEFINED else with_defined(x, 0)


def assigned_currency(x, currency):
    count, status = currency
    return assigned_number(x, Number(count, 4)) if status == "valid" else cleared(x)


ROUND_UPWARDS, ROUND_DOWNWARDS, ROUND_FROM_ZERO, ROUND_TO_ZERO, ROUND_TO_005 = range(1, 6)


def rounded(x, power, kind):
    places = -power
    if not x.defined or places >= x.stored.scale:
        return x
    if kind == ROUND_TO_005:
        number = rounded_to_005(x.stored)
    else:
        positive = order(x.stored, ZERO) > 0
        method = {
            ROUND_UPWARDS: UP if positive else DOWN,
            ROUND_DOWNWARDS: DOWN if positive else UP,
            ROUND_FROM_ZERO: UP,
            ROUND_TO_ZERO: DOWN,
        }.get(kind, PLAIN)
        number = calculated(exact.round_to, x.stored, places, method)
    return x._replace(stored=number, modified=1)


def rounded_to_005(before):
    number = calculated(exact.subtract, before, calculated(exact.remainder, before, TENTH))
    if order(number, ZERO) < 0:
        number = calculated(exact.subtract, number, TENTH)
    cut = calculated(exact.subtract, before, number)
    if order(cut, TWENTIETH) > 0:
        return calculated(exact.add, number, TWENTIETH)
    if order(cut, Number(-5, 2)) < 0:
        return calculated(exact.subtract, number, TWENTIETH)
    return number


def truncated(x, places):
    """Undefined values too."""
    if places == x.stored.scale:
        return x
    return x._replace(stored=calculated(exact.round_to, x.stored, places, DOWN), modified=1)


# --- User-interface text ----------------------------------------------------------------------

UNLIMITED = format_rules.UNLIMITED
FORMATS = {
    "german": format_rules.NumberFormat(UNLIMITED, UNLIMITED, 1, 1, 1, 0, 0, "0", 0, "0"),
    "amount": format_rules.NumberFormat(12, 2, 1, 1, 2, 0, 0, "0", 2, "0"),
}


def shown(x, form):
    """Without a format the plain text with all held places."""
    if not x.defined:
        return ""
    if form is None:
        return replaced(held_text, x.stored)
    text = replaced(held_text, x.stored)
    try:
        return form.write(Decimal(text))
    except format_rules.Refused as refused:
        raise Refusal(FOLLOW_UP, cause=refused.number) from None


def set_from_shown(x, text, form):
    if not text:
        return cleared(x)
    if form is not None:
        try:
            text = format(form.read(text), "f")
        except format_rules.Refused as refused:
            raise Refusal(FOLLOW_UP, cause=refused.number) from None
    return taken(x, replaced(converted, text[:MOST_CHARACTERS]))


# --- Constructors and conversions -------------------------------------------------------------


def constructed_from_text(default, text):
    return computed(default, number_in_text(text))


def constructed_from_text_value(source):
    """Mode, definedness and modified flag come from the source."""
    if source.content is None:
        return Value(source.mode, 0, ZERO, source.modified)
    return Value(source.mode, 1, number_in_text(source.content), source.modified)


def constructed_from_number_value(source):
    return Value(source.mode, source.defined, Number(source.stored, 0) if source.defined else ZERO, source.modified)


def constructed_from_currency(default, currency_value):
    count, status = currency_value
    if status == "valid":
        return computed(default, Number(count, 4))
    return undefined_result(default)


def sql_literal(x):
    return held_text(x.stored) if x.defined else "NULL"


def set_from_sql(x, text):
    return taken(x, number_in_text(text))


def set_from_field(x, text):
    """`text` is None for a field that is null."""
    return cleared(x) if text is None else taken(x, number_in_field(text))


def set_from_record(x, record, defined):
    return taken(x, number_in_record(record)) if defined else cleared(x)


def equals_record(x, record):
    return int(order(x.stored, number_in_record(record)) == 0)


def set_from_extern(x, text, flag, version):
    """`text` is None for no text at all."""
    if version != EXTERN_VERSION:
        raise Refusal(WRONG_VERSION)
    if flag != 1 or text is None:
        return cleared(x)
    x = with_defined(x, 1)  # before the text is looked at, so a refused text leaves it defined
    if text.content is None:
        raise Refusal(INCONSISTENT_DEFINEDNESS, after=x)
    try:
        return with_number(x, number_in_external_text(text.content))
    except Refusal as refusal:
        raise Refusal(FOLLOW_UP, cause=refusal.number, after=x) from None


def shown_external(x):
    text = quoted(external_text(x.stored)) if x.defined else "undefined"
    return f"{x.defined} {EXTERN_VERSION} {text}"


def stored_bytes(x):
    """The definedness in 32 bits and the external text with its length; an undefined one is empty."""
    text = external_text(x.stored).encode("ascii") if x.defined else b""
    return struct.pack("<iB", x.defined, len(text)) + text


def loaded(x, archive):
    """A load that fails restores everything."""
    if len(archive) < 5 or len(archive) < 5 + archive[4]:
        raise Refusal(DAMAGED_ARCHIVE)
    defined, length = struct.unpack("<iB", archive[:5])
    text = Text(MISSING, 0, archive[5 : 5 + length].decode("cp1252"))
    try:
        return set_from_extern(with_defined(x, defined), text, defined, EXTERN_VERSION)
    except Refusal as refusal:
        raise Refusal(refusal.number, refusal.cause, after=x) from None


def native(x):
    """The nearest double."""
    demand_not_missing(x)
    return replaced(calculated, exact.to_double, x.stored)


def places(x):
    demand_not_missing(x)
    return x.stored.scale


def hexadecimal(double):
    return struct.pack(">d", double).hex()


# --- The operations by name -------------------------------------------------------------------
# x is the left object, y another one, n an int, d a double. An entry takes (default, x, right) and yields a
# result, or a new state of x for the operations that change it.

ARITHMETIC = {"x+y": summed, "x-y": subtracted, "x*y": multiplied, "x/y": divided, "x%y": remainder}

PLAIN_ARITHMETIC = {
    "x+?": with_plain(exact.add),
    "x-?": with_plain(exact.subtract),
    "x*?": with_plain(exact.multiply),
    "x/?": with_plain(exact.divide),
    "x%?": with_plain(exact.remainder),
    "?+x": lambda default, x, operand: plain_plus(default, operand, x),
    "?-x": lambda default, x, operand: plain_minus(default, operand, x),
    "?*x": lambda default, x, operand: plain_times(default, operand, x),
    "?/x": lambda default, x, operand: plain_divided(default, operand, x),
    "?%x": lambda default, x, operand: plain_remainder(default, operand, x),
}

COMPARISON, PLAIN_COMPARISON = {}, {}
for _sign, _relation in integer_rules.RELATIONS.items():
    COMPARISON[f"x{_sign}y"] = lambda default, x, y, r=_relation: compared(r, x, y)
    PLAIN_COMPARISON[f"x{_sign}?"] = lambda default, x, operand, r=_relation: compared_plain(r, x, operand)
    PLAIN_COMPARISON[f"?{_sign}x"] = lambda default, x, operand, r=_relation: plain_compared(r, operand, x)

CHANGE = {
    "x+=y": lambda default, x, y: accumulated(x, y, exact.add),
    "x-=y": lambda default, x, y: accumulated(x, y, exact.subtract),
    "x=y": lambda default, x, y: assigned(x, y),
    "Assign(y)": lambda default, x, y: assigned(x, y),
}

PLAIN_CHANGE = {
    "x+=?": lambda default, x, operand: accumulated_plain(x, operand, exact.add),
    "x-=?": lambda default, x, operand: accumulated_plain(x, operand, exact.subtract),
    "x=?": lambda default, x, operand: (assigned_double if isinstance(operand, float) else assigned_int)(x, operand),
}

UNARY_CHANGE = {
    "++x": lambda default, x, _: stepped(x, exact.add),
    "x++": lambda default, x, _: stepped(x, exact.add),
    "--x": lambda default, x, _: stepped(x, exact.subtract),
    "x--": lambda default, x, _: stepped(x, exact.subtract),
    "Clear": lambda default, x, _: cleared(x),
    "SetFromOFL(null)": lambda default, x, _: cleared(x),
}

READING = {
    "GetValue": lambda default, x, _: hexadecimal(native(x)),
    "double(x)": lambda default, x, _: hexadecimal(calculated(exact.to_double, x.stored)),
    "currency(x)": lambda default, x, _: currency(x.stored),
    "GetPrecision": lambda default, x, _: places(x),
    "IsDecimal0": lambda default, x, _: int(order(x.stored, ZERO) == 0),
    "IsDefined": lambda default, x, _: x.defined,
    "IsMissing": lambda default, x, _: int(x.missing),
    "IsNull": lambda default, x, _: int(x.null),
    "DecimalToAscii": lambda default, x, _: quoted(plain_text(x.stored)),
    "ConvToSQL": lambda default, x, _: quoted(sql_literal(x)),
    "ConvToOFL": lambda default, x, _: quoted(shown(x, None)),
    "ConvToExtern": lambda default, x, _: shown_external(x),
    "ConvToRecordSet": lambda default, x, _: quoted(field_text(x.stored)) if x.defined else "null",
    "ConvToBTR": lambda default, x, _: f"{x.defined} {record_of(x.stored).hex()}",
    "Store": lambda default, x, _: stored_bytes(x).hex(),
    "T(x)": lambda default, x, _: x,
    "NewObject": lambda default, x, _: x,
}


# --- The rules' own examples ------------------------------------------------------------------


def number(text):
    """1.50 is Number(150, 2)."""
    return exact.from_text(text).result


def defined(text, mode=MISSING, modified=0):
    return Value(mode, 1, number(text), modified)


def undefined(mode, stored=ZERO, modified=0):
    return Value(mode, 0, stored, modified)


def refused(body, *arguments):
    try:
        body(*arguments)
    except Refusal as refusal:
        return refusal.number, refusal.cause
    return None


def check_texts():
    assert number_in_text("1,234,567.89") == Number(123456789, 2) and number_in_text("1 234.5") == Number(12345, 1)
    assert number_in_text("") == ZERO and number_in_text("1.50") == Number(150, 2)
    for wrong in ("1.2.3", "12a", " ", "-", "+", ".", "1-", "--1", ",", "- ,"):
        assert refused(number_in_text, wrong) == (BAD_FORMAT, 0), wrong
    assert refused(number_in_text, "1" * 39) == refused(number_in_text, "1" * 29) == (TOO_LONG, 0)
    assert number_in_text("0" + "1" * 29) == Number(int("1" * 29), 0)
    assert refused(number_in_text, "0" + "9" * 29) == (CALCULATION, 0)
    assert number_in_text("-" + "9" * 28) == Number(-(10**28) + 1, 0)
    assert refused(number_in_text, "9," + "9" * 27) == (TOO_LONG, 0)  # the comma counts
    assert plain_text(number("12.500")) == "12.5" and plain_text(number("3.00")) == "3"
    assert sql_literal(defined("12.500")) == "12.500" and sql_literal(defined("3")) == "3"
    assert sql_literal(undefined(NULL)) == "NULL"
    assert field_text(number("5")) == "5.0" and field_text(ZERO) == field_text(Number(0, 5)) == "0.00"
    assert shown(defined("3.10"), None) == "3.10" and shown(defined("1234.50"), FORMATS["german"]) == "1.234,50"
    assert number_in_field(field_text(Number(10**28 - 1, 0))) == Number(10**28 - 1, 0)
    assert refused(number_in_field, "0" + "1" * 29) == (TOO_LONG, 0)
    smallest = Number(-1, 28)
    assert number_in_field(field_text(smallest)) == smallest


def check_external_texts():
    for text, external in (("123.45", "1.2345E+002"), ("100", "1.00E+002"), ("0.05", "5E-002"), ("-0.5", "-5E-001"),
                           ("0", "0E+000"), ("0.00", "0E+000"), ("1", "1E+000"), ("0.050", "5.0E-002")):  # fmt: skip
        assert external_text(number(text)) == external, (text, external)
    for mantissa in (1, 7, 10**28, 2**95 - 1, -(2**95) + 1, 10**27 - 1, 123450):
        for scale in (0, 1, 5, 27, 28):
            written = Number(mantissa, scale)
            assert number_in_external_text(external_text(written)) == written
    for wrong in ("5", "5E", "5E3", "5E+", "5E+0001", "5e+001", "5E+1a", "E+1E+1"):
        assert refused(number_in_external_text, wrong) == (BAD_EXTERN, 0), wrong
    x = defined("7")
    assert refused(set_from_extern, x, None, 1, 99) == (WRONG_VERSION, 0)
    assert set_from_extern(x, None, 1, 100) == undefined(MISSING, modified=1)
    assert refused(set_from_extern, x, Text(MISSING, 0, None), 1, 100) == (INCONSISTENT_DEFINEDNESS, 0)
    assert refused(set_from_extern, x, Text(MISSING, 0, "7"), 1, 100) == (FOLLOW_UP, BAD_EXTERN)
    assert set_from_extern(x, Text(MISSING, 0, "7.00E+000"), 1, 100) == defined("7.00")
    assert loaded(x, stored_bytes(defined("8.5"))) == defined("8.5", modified=1)
    assert loaded(x, stored_bytes(undefined(NULL))) == undefined(MISSING, modified=1)


def check_records():
    assert record_of(ZERO) == record_of(Number(0, 3)) == bytes(14)
    assert number_in_record(struct.pack(RECORD, 1, 3, 0, 0, 0)) == Number(0, 3)
    assert number_in_record(struct.pack(RECORD, 2, 3, 0, 0, 0)) == Number(-(2**32), 3)
    assert number_in_record(struct.pack(RECORD, -1, -2, 5, 1, 9)) == Number(-(2**32) - 5, -2)
    assert number_in_record(record_of(Number(2**64 + 9, 2))) == Number((2**64 + 9) // 10, 1)
    assert refused(record_of, Number(2**64, 0)) == (OUT_OF_RANGE, 0)
    assert number_in_record(record_of(Number(-(2**64) - 5, 2))) == Number(-5, 2)
    assert set_from_record(defined("1.5"), record_of(number("1.50")), 1) == defined("1.50")
    assert currency(number("922337203685477.5807")) == "9223372036854775807:valid"
    assert refused(currency, number("922337203685477.5808")) == (OUT_OF_RANGE, 0)
    assert currency(number("-922337203685477.5808")) == "-9223372036854775808:valid"
    assert refused(currency, number("922337203685477.58075")) == (OUT_OF_RANGE, 0)
    assert currency(number("5")) == "50000:valid" and currency(number("-0.00005")) == "-1:valid"
    assert refused(currency, Number(1, -300)) == (FOLLOW_UP, CALCULATION)


def check_arithmetic():
    missing, null = undefined(MISSING), undefined(NULL)
    for result, expected in ((remainder(0, defined("7"), defined("3")), "1"),
                             (remainder(0, defined("-7"), defined("3")), "-1"),
                             (remainder(0, defined("7.5"), defined("2")), "1.5"),
                             (multiplied(0, defined("2.50"), null), "2.50"),
                             (multiplied(0, null, defined("2.50")), "2.50"),
                             (divided(0, defined("2.50"), null), "2.50"),
                             (divided(0, null, defined("2")), "0"),
                             (remainder(0, defined("-2.75"), null), "-0.75"),
                             (summed(0, null, defined("2")), "2"),
                             (plain_minus(0, 0, defined("2.50")), "-2.50"),
                             (plain_times(0, 7, null), "7"),
                             (plain_divided(0, 7, null), "7"),
                             (plain_divided(0, 0, defined("3")), "0"),
                             (plain_divided(0, 1.0, defined("8")), "0.125"),
                             (PLAIN_ARITHMETIC["x*?"](0, null, 7), "0")):  # fmt: skip
        assert result == defined(expected), (result, expected)
    assert summed(0, missing, defined("1")) == summed(0, defined("1"), missing) == undefined_result(MISSING)
    assert summed(ALWAYS_DEFINED, missing, defined("1")) == defined("0", ALWAYS_DEFINED)
    assert refused(plain_divided, 0, 1, defined("0")) == (DIVISION_BY_ZERO, 0)
    assert refused(plain_divided, 0, 0, defined("0.00")) == (DIVISION_BY_ZERO, 0)
    assert refused(plain_divided, 0, float("nan"), defined("1")) == (FOLLOW_UP, CALCULATION)
    assert refused(divided, 0, defined("1"), defined("0")) == (CALCULATION, 0)
    assert refused(compared_plain, lt, missing, 1) == (UNDEFINED_VALUE, 0)
    assert refused(compared_plain, lt, defined("1"), float("inf")) == (FOLLOW_UP, CALCULATION)
    assert compared(eq, defined("2.50"), defined("2.5")) == 1 and compared_plain(eq, defined("0.1"), 0.1) == 1


def check_changes():
    null = undefined(NULL)
    assert accumulated(undefined(MISSING), defined("1"), exact.add) == undefined(MISSING)
    assert accumulated(defined("1.5"), defined("0.00"), exact.add) == defined("1.50")
    assert accumulated(null, defined("2"), exact.subtract) == defined("-2", NULL, 1)
    assert accumulated_plain(defined("1.5"), 0, exact.add) == defined("1.5")
    assert accumulated_plain(null, 0, exact.add) == defined("0", NULL, 1)
    assert accumulated_plain(defined("1.5"), 0.5, exact.subtract) == defined("1.0", modified=1)
    assert assigned_int(defined("5.7"), 5) == defined("5") and assigned_int(defined("-5.7"), -5) == defined("-5")
    assert assigned_int(defined("5.7"), 6) == defined("6", modified=1)
    assert assigned(defined("1.5"), defined("1.50")) == defined("1.5")
    assert assigned(defined("1", ALWAYS_DEFINED), null) == defined("0", ALWAYS_DEFINED, 1)
    assert assigned_double(defined("1.50"), 1.5) == defined("1.5")
    assert assigned_currency(defined("1"), (5, "null")) == undefined(MISSING, modified=1)
    assert cleared(defined("0", ALWAYS_DEFINED)) == defined("0", ALWAYS_DEFINED)


def check_rounding():
    for text, power, kind, expected in (
            ("1.231", -2, 1, "1.24"), ("-1.239", -2, 1, "-1.23"), ("1.239", -2, 2, "1.23"), ("-1.231", -2, 2, "-1.24"),
            ("1.231", -2, 3, "1.24"), ("-1.231", -2, 3, "-1.24"), ("1.239", -2, 4, "1.23"), ("-1.239", -2, 4, "-1.23"),
            ("2.345", -2, 0, "2.35"), ("-2.345", -2, 99, "-2.35"), ("155", 1, 0, "160"), ("155", 3, 0, "0"),
            ("155", 3, 1, "1000")):  # fmt: skip
        assert rounded(defined(text), power, kind) == defined(expected, modified=1), (text, kind)
    for text, expected in (("1.27", "1.25"), ("1.25", "1.2"), ("1.23", "1.2"), ("-1.23", "-1.25"), ("-1.27", "-1.3"),
                           ("-1.2", "-1.25"), ("1.251", "1.25"), ("0.04", "0"), ("-0.04", "0"),
                           ("5.5", "5.5")):  # fmt: skip
        assert rounded_to_005(number(text)).value() == number(expected).value(), text
    assert rounded(defined("1.25"), 0, 5).stored.value() == number("1.2").value()
    assert rounded(defined("1.25"), -3, 0) == defined("1.25") == rounded(defined("1.25"), -2, 5)
    assert rounded(undefined(NULL), 1, 0) == undefined(NULL)
    assert truncated(defined("1.29"), 2) == defined("1.29")
    assert truncated(defined("1.29"), 3) == defined("1.29", modified=1)
    assert truncated(defined("-1.29"), 1) == defined("-1.2", modified=1)
    assert truncated(undefined(NULL), 2) == undefined(NULL, modified=1)


if __name__ == "__main__":
    if sys.argv[1:] != ["--self-check"]:
        sys.exit("call: decimal_value_rules.py --self-check")
    if not __debug__:
        sys.exit("python -O leaves the checks out")
    for check in (check_texts, check_external_texts, check_records, check_arithmetic, check_changes, check_rounding):
        check()
