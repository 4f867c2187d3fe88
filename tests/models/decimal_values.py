#!/usr/bin/env python3
"""Truth table of the class NkDtDecimal.

Writes one row per operation and operands with what the rules of decimal_value_rules.py demand: the error, the
result and the state of the left object afterwards.

    python3 decimal_values.py > decimal_values.tsv

Columns, separated by tabs; "-" stands for "none":

    operation  x is the left object, y the right one, n an int, d a double, T the class
    default    the process default working mode while the operation runs
    left       state of x, written mode:defined:mantissa:scale:modified
    right      what stands on the right: a state, "self", an int, the 16 hexadecimal digits of a double, a "text",
               the hexadecimal bytes of a record or an archive, ...
    error      number of the raised error, "archive" for an archive exception
    cause      number of the error that the raised one replaces
    result     what the operation yields: a state, a number, a double, a "text", bytes
    after      state of x afterwards
"""

import itertools
import random
import re
import struct
import sys

sys.dont_write_bytecode = True  # leaves the source folder as it is
import decimals
import integer_rules
from decimal_rules import MOST_PLACES, Number, Overflow, normalised
from decimal_text_rules import RECORD, ZERO, external_text, field_text, held_text, plain_number, record_of
from decimal_value_rules import (
    ARITHMETIC, CHANGE, COMPARISON, FORMATS, PLAIN_ARITHMETIC, PLAIN_CHANGE, PLAIN_COMPARISON, READING, UNARY_CHANGE,
    Value, assigned_currency, computed, constructed_from_currency, constructed_from_number_value,
    constructed_from_text, constructed_from_text_value, constructed_in_mode, equals_record, hexadecimal, loaded,
    rounded, set_from_extern, set_from_field, set_from_record, set_from_shown, set_from_sql, shown, stored_bytes,
    truncated)  # fmt: skip
from integer_rules import (
    ALWAYS_DEFINED, DIFFERENT_CLASSES, EXTERN_VERSION, INT_MAX, INT_MIN, INVALID_INITIAL_VALUE, MISSING, NULL, Refusal,
    Text, quoted, switched_to_mode)  # fmt: skip

RANDOM = random.Random(20010917)
MODES = (MISSING, NULL, ALWAYS_DEFINED)
FLAGS = (0, 1)
TWO_64 = 2**64


class Table:
    """Collects rows; an operation either reads x or changes it."""

    def __init__(self):
        self.rows = {}  # in order, each once

    def reads(self, name, rule, default, x, right, shown=None):
        self._row(name, default, x, right, shown, lambda: (rule(default, x, right), x))

    def changes(self, name, rule, default, x, right, shown=None):
        self._row(name, default, x, right, shown, lambda: (None, rule(default, x, right)))

    def yields(self, name, default, shown, rule):
        """A constructor: there is no x."""
        self._row(name, default, None, None, shown, lambda: (rule(), None))

    def answers(self, name, default, x, shown, outcome):
        """An operation that both yields a result and changes x."""
        self._row(name, default, x, None, shown, lambda: outcome)

    def _row(self, name, default, x, right, shown, outcome):
        error = cause = 0
        try:
            result, after = outcome()
        except Refusal as refusal:
            error, cause, result = refusal.number, refusal.cause, None
            after = x if refusal.after is None else refusal.after
        shown = right if shown is None else shown
        cells = (name, default, x, shown, error, cause, result, after)
        self.rows["\t".join("-" if cell is None else str(cell) for cell in cells)] = None


# --- Operands ---------------------------------------------------------------------------------


def is_plain(number):
    return 0 <= number.scale <= MOST_PLACES


def is_comparable(number):
    try:
        normalised(number)
    except Overflow:
        return False
    return True


def within_reach(number):
    """Scales that no computing gives come from records, which hold 64 bits and 16 bits of scale."""
    return number if is_plain(number) else Number(number.mantissa % TWO_64, number.scale)


def pair():
    return tuple(within_reach(number) for number in decimals.pair())


def number():
    return within_reach(decimals.number())


def plain():
    """A number as computing gives it, often a small one."""
    if RANDOM.randrange(2):
        return Number(RANDOM.randrange(-(10**8), 10**8), RANDOM.randrange(5))
    return Number(decimals.mantissa(), RANDOM.randrange(MOST_PLACES + 1))


BOUNDARIES = [ZERO, Number(0, 2), Number(1, 0), Number(-1, 0), Number(10**28 - 1, 0), Number(-(10**28) + 1, 0),
              Number(10**28, 0), Number(10**28 - 1, 28), Number(-(10**28), 28), Number(TWO_64 - 1, 0),
              Number(TWO_64, 0), Number(TWO_64, 3), Number(-TWO_64, 3), Number(TWO_64 - 1, 28), Number(1 - TWO_64, 0),
              Number(2**95 - 1, 0), Number(1 - 2**95, 0), Number(2**95 - 1, 28), Number(1 - 2**95, 14), Number(1, 28),
              Number(-1, 28), Number(2**63 - 1, 4), Number(2**63, 4), Number(-(2**63), 4), Number(-(2**63) - 1, 4),
              Number((2**63 - 1) * 10 + 4, 5), Number((2**63 - 1) * 10 + 5, 5), Number(-(2**63) * 10 - 4, 5),
              Number(-(2**63) * 10 - 5, 5), Number(922337203685477, 0), Number(922337203685478, 0),
              Number(-922337203685478, 0), Number(INT_MAX, 0), Number(INT_MIN, 0), Number(INT_MAX * 10 + 9, 1),
              Number((INT_MAX + 1) * 10, 1), Number((INT_MIN - 1) * 100, 2), Number(INT_MIN * 10 - 9, 1),
              Number(57, 1), Number(-57, 1), Number(50, 1), Number(500, 2), Number(2**32, 0),
              Number(-(2**32), 5)]  # fmt: skip
# As a record brings them: too many places, places in front of the point, and what then does not fit.
RAW = [Number(0, 40), Number(0, -7), Number(5, 29), Number(-5, 29), Number(4, 29), Number(1, 32767), Number(15, -1),
       Number(-3, -12), Number(1, -28), Number(TWO_64 - 1, 30), Number(1 - TWO_64, 47), Number(-(2**32), 33),
       Number(9, -3)]  # fmt: skip
BEYOND = [Number(4, -28), Number(-1, -29), Number(TWO_64 - 1, -10), Number(1, -32768)]

INTS = [0, 1, -1, 2, 3, 5, -5, 7, 10, 100, -17, 12345, INT_MAX, INT_MIN, INT_MAX - 1, INT_MIN + 1]
DOUBLES = [0.0, -0.0, 0.1, -0.1, 0.05, 0.5, 1.0, -1.0, 2.5, 5.7, 5.0, -5.0, 100.0, 1e-28, 5e-29, 4e-29, 1e-300, -1e-40,
           1e15, 2.0**53, 2.0**64, 1e28, 2.0**95, -(2.0**95), 2.0**95 - 2.0**42, 1e300, float("nan"), float("inf"),
           float("-inf"), 1.005, 19.99]  # fmt: skip


def state(number, mode=None, defined=None, modified=None):
    """Any state; an undefined number gets there through a comparison, and 0 only without places."""
    mode = RANDOM.randrange(3) if mode is None else mode
    defined = RANDOM.randrange(6) > 0 if defined is None else defined
    if not defined and not is_comparable(number):
        defined = 1
    if not defined and normalised(number).result.mantissa == 0:
        number = ZERO
    return Value(mode, int(defined), number, RANDOM.randrange(2) if modified is None else modified)


def defined(number):
    return state(number, defined=1)


def shapes(stored):
    """One value per mode and kind: defined, undefined 0, undefined with a stored number."""
    for mode, flag in itertools.product(MODES, FLAGS):
        yield Value(mode, 1, stored, flag)
        yield Value(mode, 0, ZERO, flag)
        yield Value(mode, 0, Number(25, 1), flag)


def default_mode():
    return RANDOM.randrange(3)


def int_operand():
    return RANDOM.choice(INTS) if RANDOM.randrange(3) else RANDOM.randrange(INT_MIN, INT_MAX + 1)


def double_operand():
    return RANDOM.choice(DOUBLES) if RANDOM.randrange(3) == 0 else decimals.double()


def named(rules, letter):
    return {name.replace("?", letter): rule for name, rule in rules.items()}


# --- Two decimals -----------------------------------------------------------------------------


def add_pair(table, x, y):
    for name, rule in ARITHMETIC.items():
        table.reads(name, rule, default_mode(), x, y)
    name, rule = RANDOM.choice(list(COMPARISON.items()))
    table.reads(name, rule, default_mode(), x, y)
    for name, rule in CHANGE.items():
        table.changes(name, rule, default_mode(), x, y)


def add_number_pairs(table):
    for _ in range(800):
        a, b = pair()
        add_pair(table, defined(a), defined(b))
    for _ in range(200):
        a = plain()
        digits = RANDOM.randrange(5)  # equal, or nearly
        b = Number(a.mantissa // 10**20 * 10**digits + RANDOM.choice((0, 0, 1)), min(a.scale, 20) + digits)
        add_pair(table, defined(Number(a.mantissa // 10**20, min(a.scale, 20))), defined(b))
    for a, b in itertools.product(RAW + BEYOND + [Number(250, 2)], repeat=2):
        x, y = defined(a), defined(b)
        for name, rule in RANDOM.sample(list((ARITHMETIC | COMPARISON).items()), 4):
            table.reads(name, rule, default_mode(), x, y)
        for name, rule in CHANGE.items():
            table.changes(name, rule, default_mode(), x, y)


def add_state_pairs(table):
    """Every kind of operand against every kind of operand."""
    for x, y in itertools.product(shapes(Number(-275, 2)), shapes(Number(20, 1))):
        for name, rule in (ARITHMETIC | COMPARISON).items():
            if RANDOM.randrange(3) == 0:
                table.reads(name, rule, default_mode(), x, y)
        for name, rule in CHANGE.items():
            table.changes(name, rule, default_mode(), x, y)
    for x, y in itertools.product(shapes(Number(-275, 2)), shapes(Number(20, 1))):
        if x.modified or y.modified:
            continue
        for name, rule in ARITHMETIC.items():
            for default in MODES:
                table.reads(name, rule, default, x, y)
        for name, rule in COMPARISON.items():
            table.reads(name, rule, default_mode(), x, y)


def add_self_operands(table):
    """The same object on both sides."""
    for x in itertools.chain(shapes(Number(-275, 2)), (defined(RANDOM.choice(BOUNDARIES)) for _ in range(20))):
        for name, rule in (ARITHMETIC | COMPARISON).items():
            table.reads(name, rule, default_mode(), x, x, shown="self")
        for name, rule in CHANGE.items():
            table.changes(name, rule, default_mode(), x, x, shown="self")


# --- A plain number beside a decimal ------------------------------------------------------------


def add_plain(table, x, operand, letter, chosen=None):
    shown_operand = hexadecimal(operand) if isinstance(operand, float) else operand
    reading = list(named(PLAIN_ARITHMETIC | PLAIN_COMPARISON, letter).items())
    for name, rule in reading if chosen is None else RANDOM.sample(reading, chosen):
        table.reads(name, rule, default_mode(), x, operand, shown=shown_operand)
    for name, rule in named(PLAIN_CHANGE, letter).items():
        table.changes(name, rule, default_mode(), x, operand, shown=shown_operand)


def add_plain_operands(table):
    for letter, operand, listed in (("n", int_operand, INTS), ("d", double_operand, DOUBLES)):
        for _ in range(400):
            add_plain(table, state(number()), operand(), letter, 6)
        for _ in range(150):
            add_plain(table, state(plain()), operand(), letter, 6)
        for stored, value in itertools.product(BOUNDARIES, listed):
            if RANDOM.randrange(5) == 0:
                add_plain(table, state(stored), value, letter, 4)
        for stored in RAW + BEYOND:
            for value in RANDOM.sample(listed, 4):
                add_plain(table, defined(stored), value, letter, 8)
        for x in shapes(Number(-275, 2)):
            for value in ((0, 3, INT_MIN) if letter == "n" else (0.0, 0.5, 1e-40, 1e300)):
                add_plain(table, x, value, letter)


def add_assignments_near_the_number(table):
    """What decides on the flag: the whole part for an int, the exact number for a double."""
    for _ in range(150):
        n = RANDOM.choice((RANDOM.randrange(-100, 100), RANDOM.choice(INTS)))
        scale = RANDOM.randrange(1, 4)
        held = Number(n * 10**scale + RANDOM.choice((-1, 0, 0, 1, 7, 10**scale - 1)), scale)
        for x in (state(held), Value(MISSING, 1, held, 0)):
            add_plain(table, x, max(min(n + RANDOM.choice((-1, 0, 0, 0)), INT_MAX), INT_MIN), "n", 1)
            add_plain(table, x, held.mantissa / 10**scale, "d", 2)


# --- One decimal ------------------------------------------------------------------------------


def add_unary(table):
    values = [state(stored, defined=1) for stored in BOUNDARIES + RAW + BEYOND for _ in range(3)]
    values += list(shapes(Number(-275, 2)))
    values += [state(number()) for _ in range(150)] + [state(plain()) for _ in range(100)]
    for x in values:
        for name, rule in READING.items():
            table.reads(name, rule, default_mode(), x, None)
        for name, rule in UNARY_CHANGE.items():
            if RANDOM.randrange(3) or not x.defined:
                table.changes(name, rule, default_mode(), x, None)
        default = default_mode()
        table.answers("T(move(x))", default, x, None, (x, constructed_in_mode(3, default)))


def add_state_setters(table):
    for x in shapes(Number(70, 1)):
        for mode in (-1, 0, 1, 2, 3, 99):
            default = default_mode()
            rule = lambda default, x, mode: switched_to_mode(x, mode, default)  # noqa: E731
            table.changes("SetWorkingMode(n)", rule, default, x, mode)
        for flag in FLAGS:
            table.changes("SetModified(n)", lambda _, x, f: x._replace(modified=f), default_mode(), x, flag)


def add_rounding(table):
    kinds = (0, 1, 2, 3, 4, 5, 6, -1, 99)

    def round_row(x, power, kind):
        table.changes("Round", lambda _, x, r: rounded(x, *r), default_mode(), x, (power, kind),
                      shown=f"{power}:{kind}")  # fmt: skip

    for _ in range(500):
        stored, places = decimals.tie()
        round_row(defined(within_reach(stored)), -places, RANDOM.choice(kinds))
        round_row(state(number()), RANDOM.randrange(-30, 32), RANDOM.choice(kinds))
    for hundredths in range(-60, 61):  # every step of the rounding to 0.05
        round_row(defined(Number(hundredths, 2)), 0, 5)
        round_row(defined(Number(hundredths * 10 + RANDOM.randrange(-9, 10), 3)), RANDOM.randrange(-2, 5), 5)
    for tenths in range(-25, 26):
        for kind in range(6):
            round_row(defined(Number(tenths, 1)), 0, kind)
    for _ in range(200):
        round_row(defined(Number(decimals.mantissa(), RANDOM.randrange(29))), RANDOM.randrange(-3, 3), 5)
    for stored, kind in itertools.product(BOUNDARIES + RAW + BEYOND, (0, 1, 2, 5)):
        round_row(defined(stored), RANDOM.choice((-32768, -28, -4, -2, -1, 0, 1, 2, 27, 28, 29, 32767)), kind)
    for x, power, kind in itertools.product(shapes(Number(-275, 2)), (-3, -2, -1, 1), (0, 1, 5)):
        round_row(x, power, kind)


def add_truncation(table):
    def truncate_row(x, places):
        table.changes("Truncate", lambda _, x, p: truncated(x, p), default_mode(), x, places)

    for _ in range(500):
        x = state(number())
        truncate_row(x, RANDOM.choice((0, 1, 2, 28, 29, 65535, RANDOM.randrange(30), max(x.stored.scale, 0))))
    for stored in BOUNDARIES + RAW + BEYOND:
        for places in (0, max(stored.scale, 0), 27, 28, 65535):
            truncate_row(defined(stored), places)
    for x, places in itertools.product(shapes(Number(-275, 2)), (0, 1, 2, 3)):
        truncate_row(x, places)


# --- Texts ------------------------------------------------------------------------------------

PLAIN_TEXTS = ["", "0", "-0", "+0", "0.00", "-0.00", "1", "+1", "-1", "1.50", ".5", "5.", "-.5", "+5.", "00", "007.10"]
REFUSED_TEXTS = [" ", "   ", "-", "+", ".", "-.", "--1", "+-1", "-+1", "1-", "1+", "1-2", "1.2.3", "1..2", "..", "12a",
                 "a", "1e5", "1E+005", "0x10", "1'000", "1;2", "12€", "ä", "NULL", "1/2", "1:2"]  # fmt: skip
GROUPED_TEXTS = ["1,234,567.89", "1 234.5", "- 5", " -5", ",-5", "1,2,3", ",", ", ,", "1 ", " 1", "1,5", ",5", "5,",
                 "- ,", ", 0", "1. 5", "1 .5", "-,.5"]  # fmt: skip


def digits(count):
    """That many digits, none of them a superfluous zero."""
    return "".join(RANDOM.choice("0123456789" if i else "123456789") for i in range(count))


def texts_around_the_limits():
    """28 and 29 digits, 38 and 39 characters, with everything that counts and that does not."""
    result = []
    for count in (9, 18, 27, 28, 29, 30, 37, 38, 39, 60):
        for sign in ("", "-", "+"):
            result += [sign + digits(count), sign + "0" + digits(count - 1), sign + "0" * count]
            for places in {1, 2, count // 2, count - 1, count}:
                result.append(sign + digits(count - places) + "." + digits(places))
                result.append(sign + "0." + digits(places))
                result.append(sign + "0" + digits(count - places) + "." + digits(places))
    for count in (26, 27, 28, 29):
        result += ["1," + digits(count - 1), digits(count - 2) + ",5", " " + digits(count), digits(count) + " ",
                   "- " + digits(count), ",0" + digits(count), "0," + digits(count)]  # fmt: skip
    result += ["9" * 28, "-" + "9" * 28, "9" * 29, "0" + str(2**95 - 1), "0" + str(2**95), "0" + str(2**95 - 1) + ".4",
               "0" + str(2**95 - 1) + ".5", "0" * 9 + str(2**95 - 1), "0." + "0" * 27 + "1", "0." + "0" * 28 + "5",
               "0." + "0" * 28 + "49", "0." + "9" * 28 + "5", "0." + "9" * 28 + "4", "-0." + "1" * 28,
               "0" + "9" * 9 + "." + "5" * 27, "3" * 28 + ".", "." + "3" * 28, "-." + "3" * 28,
               "." + "3" * 29]  # fmt: skip
    return result


def random_text():
    text = decimals.text()
    return text if RANDOM.randrange(3) else text[:1] + text[1:38].replace("0", RANDOM.choice("012, "))


def is_settled(text):
    """Which of two errors such a text raises is left open: too long, and with a sign or no digit inside."""
    if '"' in text or "\t" in text:
        return False
    body = text.replace(",", "").replace(" ", "")
    return len(text) <= 28 or ("-" not in body[1:] and "+" not in body[1:])


def texts():
    result = PLAIN_TEXTS + REFUSED_TEXTS + GROUPED_TEXTS + texts_around_the_limits()
    result += [random_text() for _ in range(500)]
    return [text for text in dict.fromkeys(result) if is_settled(text)]


def add_texts(table):
    for text in texts():
        default = default_mode()
        table.yields("T(text)", default, quoted(text), lambda t=text, d=default: constructed_from_text(d, t))
        source = Text(RANDOM.randrange(3), RANDOM.randrange(2), text)
        table.yields("T(string)", default_mode(), source, lambda s=source: constructed_from_text_value(s))
        x = state(plain())
        table.changes("SetFromSQL", lambda _, x, t: set_from_sql(x, t), default_mode(), x, text, shown=quoted(text))
        if len(text) <= 38 and not re.match("[-+]?[, ]*0[, ]", text):  # whether such a zero counts is left open
            table.changes("SetFromRecordSet", lambda _, x, t: set_from_field(x, t), default_mode(), x, text,
                          shown=quoted(text))  # fmt: skip
    for mode, flag in itertools.product((MISSING, NULL), FLAGS):
        source = Text(mode, flag, None)
        table.yields("T(string)", default_mode(), source, lambda s=source: constructed_from_text_value(s))
    for x in shapes(Number(150, 2)):
        for text in ("1.5", "1.50", "1.6", "0", "0.00", "2.5", "", "x"):
            table.changes("SetFromSQL", lambda _, x, t: set_from_sql(x, t), default_mode(), x, text, shown=quoted(text))
            table.changes("SetFromRecordSet", lambda _, x, t: set_from_field(x, t), default_mode(), x, text,
                          shown=quoted(text))  # fmt: skip
            add_shown(table, x, text, None)
        table.changes("SetFromRecordSet", lambda _, x, t: set_from_field(x, t), default_mode(), x, None, shown="null")
    table.yields("T(text)", MISSING, "null", refuse_null)
    table.changes("SetFromSQL", lambda *_: refuse_null(), MISSING, defined(ZERO), None, shown="null")


def refuse_null():
    raise Refusal(INVALID_INITIAL_VALUE)


def add_written_texts(table):
    """What every way out wrote, read back."""
    numbers = BOUNDARIES + [Number(decimals.mantissa(), RANDOM.randrange(29)) for _ in range(250)]
    for written in numbers:
        x = state(plain())
        text = held_text(written)
        table.changes("SetFromSQL", lambda _, x, t: set_from_sql(x, t), default_mode(), x, text, shown=quoted(text))
        text = field_text(written)
        table.changes("SetFromRecordSet", lambda _, x, t: set_from_field(x, t), default_mode(), x, text,
                      shown=quoted(text))  # fmt: skip
        add_extern(table, x, Text(MISSING, 0, external_text(written)))
        add_loading(table, x, stored_bytes(Value(MISSING, 1, written, 0)))
        add_shown(table, x, held_text(written), None)


def add_shown(table, x, text, form):
    shown_right = f'{form or "plain"} {quoted(text)}'
    table.changes("SetFromOFL", lambda _, x, t: set_from_shown(x, t, FORMATS.get(form)), default_mode(), x, text,
                  shown=shown_right)  # fmt: skip


def add_user_interface_texts(table):
    long_texts = ["0." + "7" * 50, "9" * 28, "0" + str(2**95 - 1), "9" * 29]
    for text in PLAIN_TEXTS + REFUSED_TEXTS + GROUPED_TEXTS + long_texts:
        for form in (None, "german", "amount"):
            add_shown(table, state(plain()), text, form)
    for _ in range(250):
        stored = plain()
        for name, form in FORMATS.items():
            x = defined(stored)
            # A format's places are not lost: what it writes is read.
            table.reads(f"ConvToOFL({name})", lambda _, x, f: quoted(shown(x, f)), default_mode(), x, form, shown=name)
            try:
                add_shown(table, state(plain()), shown(x, form), name)
            except Refusal:
                pass
    for x in itertools.chain(shapes(Number(150, 2)), (defined(stored) for stored in BOUNDARIES + RAW + BEYOND)):
        for name, form in FORMATS.items():
            table.reads(f"ConvToOFL({name})", lambda _, x, f: quoted(shown(x, f)), default_mode(), x, form, shown=name)


# --- External texts, archives, records ----------------------------------------------------------


def add_extern(table, x, text, flag=1, version=EXTERN_VERSION):
    source = "null" if text is None else "undefined" if text.content is None else quoted(text.content)
    table.changes("SetFromExtern", lambda _, x, r: set_from_extern(x, *r), default_mode(), x, (text, flag, version),
                  shown=f"{version} {flag} {source}")  # fmt: skip


EXTERNAL_TEXTS = ["", "5", "E", "5E", "5E3", "5E+", "5E-", "5E+0001", "5e+001", "5E+1a", "5E+1", "5E+01", "5E+001",
                  "5E-0", "5E+000", "E+1E+1", "5E++1", "5E 001", "5,E,1", "1.5E+001E", "1.5E+003", "-1.5E+003",
                  "1.50E-003", "0E+000", "0E+005", "12aE+000", "1a2E+000", "4E+028", "1E+028", "3.9E+028", "-3.9E+028",
                  "4E+500", "1E-500", "1E+999", "1.2345E+002", "1.00E+002", "5E-002", "-5E-001"]  # fmt: skip


def add_external_texts(table):
    for text in EXTERNAL_TEXTS:
        for _ in range(2):
            add_extern(table, state(plain()), Text(MISSING, 0, text))
    sources = [None, Text(NULL, 0, None), Text(MISSING, 0, "1.5E+000"), Text(MISSING, 0, "1.50E+000"),
               Text(MISSING, 0, "x"), Text(MISSING, 0, "0E+000")]  # fmt: skip
    calls = [(1, 100), (0, 100), (2, 100), (-1, 100), (1, 99), (0, 101), (1, 0), (1, 356)]  # 356 is 100 in its low byte
    for x, text, (flag, version) in itertools.product(shapes(Number(150, 2)), sources, calls):
        add_extern(table, x, text, flag, version)


def add_loading(table, x, archive):
    table.changes("Load", lambda _, x, a: loaded(x, a), default_mode(), x, archive, shown=archive.hex() or "empty")


def archive_of(defined_flag, text):
    return struct.pack("<iB", defined_flag, len(text)) + text.encode("cp1252")


def add_archives(table):
    for x in shapes(Number(150, 2)):
        for archive in (archive_of(1, "1.5E+000"), archive_of(1, "7E+000"), archive_of(0, ""), archive_of(0, "7E+000"),
                        archive_of(1, ""), archive_of(1, "7"), archive_of(1, "4E+028"),
                        archive_of(1, "0E+000")):  # fmt: skip
            add_loading(table, x, archive)
        whole = archive_of(RANDOM.randrange(2), "7E+000")
        for length in range(len(whole)):
            add_loading(table, x, whole[:length])


def record():
    kind = RANDOM.randrange(4)
    if kind == 0:
        return RANDOM.randbytes(14)
    magnitude = RANDOM.choice((0, 1, 5, 150, 2**32, 2**32 - 1, 2**63, TWO_64 - 1, RANDOM.getrandbits(64)))
    scale = RANDOM.choice((0, 1, 2, 2, 4, 28, 29, 40, -1, -5, -20, 32767, -32768, RANDOM.randrange(30)))
    sign = RANDOM.choice((0, 0, 1, 1, 2, -1, -32768))
    return struct.pack(RECORD, sign, scale, magnitude & 0xFFFFFFFF, magnitude >> 32, RANDOM.choice((0, 0, 7)))


def add_records(table):
    def set_row(x, bytes_of_record, flag):
        table.changes("SetFromBTR", lambda _, x, r: set_from_record(x, *r), default_mode(), x, (bytes_of_record, flag),
                      shown=f"{flag} {bytes_of_record.hex()}")  # fmt: skip

    def compare_row(x, bytes_of_record):
        table.reads("CompareDec", lambda _, x, r: equals_record(x, r), default_mode(), x, bytes_of_record,
                    shown=bytes_of_record.hex())  # fmt: skip

    for _ in range(900):
        x = state(plain())
        set_row(x, record(), int(RANDOM.randrange(8) > 0))
        compare_row(x, record())
    for stored in BOUNDARIES + RAW + BEYOND:
        try:
            written = record_of(stored)
        except Refusal:
            continue
        for x in (defined(stored), state(plain())):
            set_row(x, written, 1)
            compare_row(x, written)
    for x in shapes(Number(150, 2)):
        for stored in (ZERO, Number(15, 1), Number(150, 2), Number(25, 1), Number(4, -28)):
            set_row(x, record_of(stored), 1)
            compare_row(x, record_of(stored))
        set_row(x, record_of(ZERO), 0)


# --- Other classes ----------------------------------------------------------------------------


def add_constructors(table):
    for default in MODES:
        for mode in (-1, 0, 1, 2, 3, 99):
            table.yields("T(mode)", default, mode, lambda m=mode, d=default: constructed_in_mode(m, d))
        for n in INTS:
            table.yields("T(n)", default, n, lambda n=n, d=default: computed(d, plain_number(n)))
    for value in DOUBLES + [decimals.double() for _ in range(400)]:
        default = default_mode()
        table.yields("T(d)", default, hexadecimal(value), lambda v=value, d=default: computed(d, plain_number(v)))
    for name, numbers in (("T(long)", INTS), ("T(short)", (0, 1, -1, 32767, -32768))):
        for mode, flag in itertools.product(MODES, FLAGS):
            for n in numbers:
                source = integer_rules.Value(mode, 1, n, flag)
                table.yields(name, default_mode(), source, lambda s=source: constructed_from_number_value(s))
            # A source in mode 2 is defined from the start.
            source = integer_rules.Value(mode, int(mode == ALWAYS_DEFINED), 0, flag)
            table.yields(name, default_mode(), source, lambda s=source: constructed_from_number_value(s))


def add_doubles_as_sources(table):
    for mode, flag in itertools.product(MODES, FLAGS):
        for value in DOUBLES:
            cell = f"{mode}:1:{hexadecimal(value)}:{flag}"
            table.yields("T(double)", default_mode(), cell,
                         lambda m=mode, v=value, f=flag: Value(m, 1, plain_number(v), f))  # fmt: skip
        if mode != ALWAYS_DEFINED:
            table.yields("T(double)", default_mode(), f"{mode}:0:{hexadecimal(0.0)}:{flag}",
                         lambda m=mode, f=flag: Value(m, 0, ZERO, f))  # fmt: skip


def add_currencies(table):
    counts = [0, 1, -1, 15000, 2**63 - 1, -(2**63), 10000, -50000] + [RANDOM.getrandbits(64) - 2**63 for _ in range(60)]
    for count, status in itertools.product(counts, ("valid", "valid", "invalid", "null")):
        cell = f"{count}:{status}"
        default = default_mode()
        table.yields("T(currency)", default, cell, lambda c=(count, status), d=default: constructed_from_currency(d, c))
        for x in (state(plain()), defined(Number(15, 1)), defined(Number(count, 4))):
            table.changes("x=currency", lambda _, x, c: assigned_currency(x, c), default_mode(), x, (count, status),
                          shown=cell)  # fmt: skip
    for x in shapes(Number(150, 2)):
        for count, status in ((15000, "valid"), (0, "valid"), (1, "valid"), (15000, "null"), (0, "invalid")):
            table.changes("x=currency", lambda _, x, c: assigned_currency(x, c), default_mode(), x, (count, status),
                          shown=f"{count}:{status}")  # fmt: skip


def refuse_other_class(*_):
    raise Refusal(DIFFERENT_CLASSES)


def add_assign_from_other_classes(table):
    for x in shapes(Number(150, 2)):
        for other in (integer_rules.Value(MISSING, 1, 3, 0), integer_rules.Value(NULL, 0, 0, 1)):
            table.changes("Assign(long)", refuse_other_class, default_mode(), x, other)
        for text in (Text(MISSING, 0, "3"), Text(NULL, 1, None)):
            table.changes("Assign(string)", refuse_other_class, default_mode(), x, text)


SECTIONS = (
    add_constructors, add_doubles_as_sources, add_texts, add_written_texts, add_user_interface_texts,
    add_external_texts, add_archives, add_records, add_currencies, add_unary, add_state_setters, add_rounding,
    add_truncation, add_number_pairs, add_state_pairs, add_self_operands, add_plain_operands,
    add_assignments_near_the_number,
    add_assign_from_other_classes)  # fmt: skip


def main():
    lines = ["\t".join(("operation", "default", "left", "right", "error", "cause", "result", "after"))]
    table = Table()
    for section in SECTIONS:
        section(table)
    lines += table.rows
    # Texts are code page 1252 everywhere, in the table too.
    sys.stdout.buffer.write(("\n".join(lines) + "\n").encode("cp1252"))


if __name__ == "__main__":
    main()
