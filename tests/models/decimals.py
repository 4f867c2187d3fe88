#!/usr/bin/env python3
"""Table of cases for Decimal96.

Writes one row per operation and operands with what the rules of decimal_rules.py demand.

    python3 decimals.py > decimals.tsv

Columns, separated by tabs:

    operation  its name in the test; with places:method behind, the fused form
    left       mantissa:scale; a "text"; the 16 hexadecimal digits of a double
    right      mantissa:scale; places:method; "-" for none
    result     mantissa:scale, -1, 0, 1, a whole number, a "text", a double, "invalid"; "overflow" calls the handler
    inexact    1 when the inexact handler is called
"""

import random
import struct
import sys

sys.dont_write_bytecode = True  # leaves the source folder as it is
import decimal_rules as rules
from decimal_rules import Number

RANDOM = random.Random(19960229)
CASES = 21000  # of each operation
LARGEST = rules.LIMIT - 1
CARRIES = [2**32, 2**63, 2**64, 2**95, 2**95 // 2, 10**18, 10**19, 10**27, 10**28]


def magnitude():
    """All sizes alike, with the numbers at which something carries, and those with zeros or nines behind."""
    kind = RANDOM.randrange(8)
    if kind == 0:
        return RANDOM.choice([0, 1, 2, 3, 4, 5, 7, 9, 10, 25, 50, 99, 100, 125, 1000])
    if kind == 1:
        return min(RANDOM.choice(CARRIES) + RANDOM.randrange(-3, 4), LARGEST)
    if kind == 2:
        return min(10 ** RANDOM.randrange(29) * RANDOM.randrange(1, 100) + RANDOM.randrange(-1, 2), LARGEST)
    if kind == 3:
        return min(10 ** RANDOM.randrange(28) * 5 + RANDOM.randrange(-1, 2), LARGEST)
    if kind == 4:
        return RANDOM.randrange(10**12)
    return RANDOM.getrandbits(RANDOM.randrange(1, 96))


def mantissa():
    return magnitude() * RANDOM.choice((1, -1))


def scale():
    kind = RANDOM.randrange(40)
    if kind == 0:
        return RANDOM.choice([-300, -40, -29, -28, -20, -3, -1, 29, 30, 35, 56, 57, 58, 60, 255, 1000])
    return RANDOM.choice([0, 2, 2, 4]) if kind < 12 else RANDOM.randrange(29)


def number():
    return Number(mantissa(), scale())


def pair():
    """Two numbers; every other pair stands at an edge that two unrelated numbers miss."""
    a, b = number(), number()
    kind = RANDOM.randrange(10)
    if kind == 0:  # sums and differences at the edge of the mantissa
        rest = min(max(LARGEST - abs(a.mantissa) + RANDOM.randrange(-2, 3), 0), LARGEST)
        return Number(a.mantissa, 3), Number(rest * RANDOM.choice((1, -1)), 3)
    if kind == 1 and a.mantissa:  # products at the edge
        return a, Number(min(LARGEST // abs(a.mantissa) + RANDOM.randrange(-1, 2), LARGEST), b.scale)
    if kind == 2 and b.mantissa:  # exact quotients
        quotient = RANDOM.randrange(1, max(LARGEST // abs(b.mantissa), 1) + 1)
        return Number(b.mantissa * RANDOM.choice((quotient, min(quotient, 1000))), a.scale), b
    if kind == 3:  # quotients that end after some places
        return a, Number(RANDOM.choice((2 ** RANDOM.randrange(40), 5 ** RANDOM.randrange(20), 2**8 * 5**3)), b.scale)
    if kind == 4:  # equal values of different scale
        digits = RANDOM.randrange(10)
        small = RANDOM.randrange(-10**10, 10**10)
        return Number(small, 5), Number(small * 10**digits + RANDOM.choice((0, 0, 1)), 5 + digits)
    return a, b


def tie():
    """A number that lies in the middle between two of fewer places, or beside it, and those places."""
    digits = RANDOM.randrange(1, 20)
    head = RANDOM.getrandbits(RANDOM.randrange(1, 90 - digits * 3))
    value = head * 10**digits + 5 * 10 ** (digits - 1) + RANDOM.choice((0, 0, -1, 1))
    held = RANDOM.randrange(digits, 29)
    return Number(min(value, LARGEST) * RANDOM.choice((1, -1)), held), held - digits


def cell(value):
    if isinstance(value, float):
        return struct.pack(">d", value).hex()
    if isinstance(value, str):
        return f'"{value}"'
    return str(value)


def row(name, left, right, rule):
    inexact = False
    try:
        result = rule()
        if isinstance(result, rules.Rounded):
            result, inexact = result
        result = "invalid" if result is None else cell(result)
    except rules.Overflow:
        result = "overflow"
    print(name, left, right, result, int(inexact), sep="\t")


def add_pairs(name, rule):
    for _ in range(CASES):
        a, b = pair()
        row(name, a, b, lambda: rule(a, b))


def add_fused(name, rule):
    for _ in range(CASES):
        a, b = pair()
        places, method = RANDOM.choice((2, 2, RANDOM.randrange(-3, 31))), RANDOM.randrange(3)
        row(f"{name} {places}:{method}", a, b, lambda: rule(a, b, places, method))


def add_rounding():
    for i in range(CASES):
        a, places = tie() if i % 2 else (number(), RANDOM.randrange(-32, 31))
        method = RANDOM.randrange(3)
        row("round", a, f"{places}:{method}", lambda: rules.round_to(a, places, method))


def add_whole_numbers():
    edges = [rules.INT_MAX, rules.INT_MIN, rules.INT64_MAX, rules.INT64_MIN, 0]
    for i in range(CASES):
        a = number()
        if i % 2:
            digits = RANDOM.randrange(9)
            a = Number(RANDOM.choice(edges) * 10**digits + RANDOM.choice((0, 1, -1, 5 * 10**digits // 10)), digits)
        method = RANDOM.randrange(3)
        for name, low, high in (("int", rules.INT_MIN, rules.INT_MAX), ("int64", rules.INT64_MIN, rules.INT64_MAX)):
            row(name, a, f"0:{method}", lambda: rules.to_whole(a, method, low, high))


def add_texts():
    for _ in range(CASES):
        a = number()
        row("write", a, "-", lambda: rules.to_text(a))
    for _ in range(CASES):
        row_of_text(text())
    for special in ["", "-", "+", ".", "-.", " ", "1.2.3", "1-", "--1", "+-1", "1e5", "1,5", "\xb2", "0x1", ".5", "5.",
                    "-.5", "+5.", "-0", "-0.00", "nan", "inf", " 1", "1 ", "00", "000.10"]:  # fmt: skip
        row_of_text(special)


def row_of_text(given):
    row("parse", cell(given), "-", lambda: rules.from_text(given))


def text():
    before = str(magnitude()) if RANDOM.randrange(4) else "0" * RANDOM.randrange(3)
    before = "0" * RANDOM.choice((0, 0, 1, 30)) + before
    places = "".join(RANDOM.choice("0123456789") for _ in range(RANDOM.choice((0, 1, 2, 2, 3, RANDOM.randrange(40)))))
    if RANDOM.randrange(10) == 0:
        places = "0" * RANDOM.randrange(30) + RANDOM.choice(("5", "49", "50", "51", "05"))
    given = RANDOM.choice(("", "-", "+")) + before + ("." + places if places or RANDOM.randrange(9) == 0 else "")
    if RANDOM.randrange(20) == 0:
        at = RANDOM.randrange(len(given) + 1)
        given = given[:at] + RANDOM.choice(".-+ ,eE/:x") + given[at:]
    return given


def double():
    kind = RANDOM.randrange(4)
    if kind == 0:  # any bits
        return struct.unpack(">d", struct.pack(">Q", RANDOM.getrandbits(64)))[0]
    if kind == 1:  # within the range
        return RANDOM.choice((1, -1)) * RANDOM.random() * 2.0 ** RANDOM.randrange(-100, 97)
    if kind == 2:  # as people write them
        return RANDOM.randrange(-10**9, 10**9) / 10 ** RANDOM.randrange(9)
    return RANDOM.choice((1, -1)) * float(magnitude()) / 10 ** RANDOM.randrange(33)


def add_doubles():
    for _ in range(CASES):
        x = double()
        row("from double", cell(x), "-", lambda: rules.from_double(x))
    for x in [0.0, -0.0, 2.0**53, 2.0**53 - 1, 2.0**95, -(2.0**95), 2.0**95 - 2.0**42, 1e22, 1e23, 1e28, 5e-324, 1e-28,
              5e-29, 4.9e-29, 1e-29, 0.1, 1e9, 1e9 - 1e-6, float("inf"), float("-inf"), float("nan")]:  # fmt: skip
        row("from double", cell(x), "-", lambda: rules.from_double(x))
    for i in range(CASES):
        a = number() if i % 2 else Number(mantissa(), RANDOM.randrange(29))
        row("to double", a, "-", lambda: rules.to_double(a))
    for _ in range(2000):  # in the middle between two doubles, and beside it
        exponent = RANDOM.randrange(1, 42)
        middle = ((RANDOM.getrandbits(52) | 2**52) * 2 + 1) * 2**exponent + RANDOM.choice((0, 0, 1, -1))
        a = Number(middle, 0)
        row("to double", a, "-", lambda: rules.to_double(a))


def main():
    sys.stdout.reconfigure(encoding="latin-1", newline="\n")
    add_pairs("+", rules.add)
    add_pairs("-", rules.subtract)
    add_pairs("*", rules.multiply)
    add_pairs("/", rules.divide)
    add_pairs("%", rules.remainder)
    add_pairs("quotient", rules.truncated_quotient)
    add_pairs("compare", rules.compare)
    add_fused("*", rules.multiply_rounded)
    add_fused("/", rules.divide_rounded)
    add_rounding()
    add_whole_numbers()
    add_texts()
    add_doubles()


if __name__ == "__main__":
    main()
