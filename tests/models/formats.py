#!/usr/bin/env python3
"""Table of what NkFormat builds, writes and reads.

    python3 formats.py > formats.tsv

Columns, separated by tabs:

    kind       number, time, date, text or bool
    settings   the constructor's arguments, separated by commas, characters as their codes; of a date
               format the language of the publisher stands behind them (0: no language module)
    operation  build; else write or read and the native type
    input      what is written or read; numbers separated by commas, texts in quotes; "-" for build
    expected   what comes out, or "!" and the number of the error

Bytes of a text that are no printable ASCII, quotes and backslashes are written \\xHH. The table is the
same on every run.
"""

import itertools
import random
import sys

import format_rules as rules
from format_rules import LONG_MAX, LONG_MIN, SHORT_MAX, SHORT_MIN, UNLIMITED, Decimal, Refused

RANDOM = random.Random(20040305)

KINDS = {
    "number": rules.NumberFormat,
    "time": rules.TimeFormat,
    "date": rules.DateFormat,
    "text": rules.TextFormat,
    "bool": rules.BoolFormat,
}


def quoted(text):
    """Text in quotes, one character a byte."""
    cells = []
    for byte in text.encode("cp1252"):
        plain = 0x20 <= byte < 0x7F and byte not in b'"\\'
        cells.append(chr(byte) if plain else f"\\x{byte:02X}")
    return '"' + "".join(cells) + '"'


def shown(value):
    if isinstance(value, str):
        return quoted(value)
    if isinstance(value, tuple):
        return ",".join(map(str, value))
    if isinstance(value, float):
        return repr(value + 0.0)  # zero has no sign
    return str(value)


def outcome(action):
    try:
        return shown(action())
    except Refused as refused:
        return f"!{refused.number}"


class Table:
    def __init__(self):
        self.rows = set()

    def add(self, kind, settings, operation, value, expected):
        codes = ",".join(str(ord(s)) if isinstance(s, str) else str(s) for s in settings)
        row = (kind, codes, operation, value, expected)
        if row not in self.rows:
            self.rows.add(row)
            print("\t".join(row))

    def build(self, kind, settings):
        """Builds a format, or None when it is refused."""
        try:
            built = KINDS[kind](*settings)
            self.add(kind, settings, "build", "-", "ok")
            return built
        except Refused as refused:
            self.add(kind, settings, "build", "-", f"!{refused.number}")
            return None

    def call(self, kind, settings, operation, value, action):
        """One operation; returns the text that it writes, or None."""
        expected = outcome(lambda: action(value))
        self.add(kind, settings, operation, shown(value), expected)
        return None if expected.startswith("!") else expected


def written(action, value):
    try:
        return [action(value)]
    except Refused:
        return []


def damaged(text, alphabet):
    """The text with one character put in, taken out or replaced."""
    position = RANDOM.randrange(len(text) + 1)
    put = RANDOM.choice(alphabet)
    return RANDOM.choice([
        text[:position] + put + text[position:],
        text[:position] + text[position + 1:],
        text[:position] + put + text[position + 1:],
        " " * RANDOM.randrange(3) + text + " " * RANDOM.randrange(3),
    ])


# ---- Numbers ----

NUMBER_FORMATS = [
    (11, 0, 3, 0, 1, 0, 0, "0", 0, "0"),
    (6, 0, 3, 0, 1, 0, 0, "0", 0, "0"),
    (UNLIMITED, 2, 1, 1, 1, 0, 0, "0", 0, "0"),
    (UNLIMITED, UNLIMITED, 1, 1, 1, 0, 0, "0", 0, "0"),
    (UNLIMITED, 2, 1, 1, 1, 0, 0, "0", 2, "0"),
    (UNLIMITED, 2, 1, 1, 2, 0, 0, "0", 2, "0"),
    (UNLIMITED, 4, 0, 2, 1, 1, 0, "0", 0, "0"),
    (UNLIMITED, 3, 1, 3, 1, 1, 0, "0", 3, "0"),
    (9, 2, 1, 1, 1, 0, 6, "0", 0, "0"),
    (9, 2, 1, 1, 1, 0, 6, "*", 2, "*"),
    (9, 4, 1, 1, 2, 1, 6, "*", 3, "#"),
    (9, 4, 1, 4, 2, 0, 6, " ", 3, " "),
    (9, 4, 1, 4, 1, 0, 6, " ", 3, " "),
    (4, 2, 1, 1, 1, 0, 0, "0", 0, "0"),
    (4, 2, 1, 1, 1, 1, 4, "0", 0, "0"),
    (4, 2, 1, 1, 2, 1, 4, "0", 0, "0"),
    (7, 3, 2, 1, 0, 0, 0, "0", 0, "0"),
    (7, 3, 2, 1, 0, 1, 3, "x", 3, "x"),
    (0, 0, 3, 0, 1, 0, 0, "0", 0, "0"),
    (1, 1, 0, 0, 1, 0, 1, "0", 1, "0"),
]

REFUSED_NUMBER_FORMATS = [
    (11, 2, 4, 0, 1, 0, 0, "0", 0, "0"),
    (11, 2, -1, 0, 1, 0, 0, "0", 0, "0"),
    (11, 2, 1, 5, 1, 0, 0, "0", 0, "0"),
    (11, 2, 1, 1, 3, 0, 0, "0", 0, "0"),
    (11, 2, 1, 1, 1, 2, 0, "0", 0, "0"),
    (11, 2, 0, 1, 1, 0, 0, "0", 0, "0"),
    (11, 2, 1, 2, 1, 0, 0, "0", 0, "0"),
    (11, 2, 2, 4, 1, 0, 0, "0", 0, "0"),
    (11, 2, 1, 1, 1, 0, 12, "0", 0, "0"),
    (11, 2, 1, 1, 1, 0, -1, "0", 0, "0"),
    (11, 2, 1, 1, 1, 0, 0, "0", 3, "0"),
    (11, 2, 1, 1, 1, 0, 0, "0", -1, "0"),
    (11, 2, 3, 1, 1, 0, 0, "0", 1, "0"),
    *[(11, 2, 1, 1, 1, 0, 5, fill, 0, "0") for fill in "19+-.,\0"],
    *[(11, 2, 1, 1, 1, 0, 0, "0", 2, fill) for fill in "19+-.,\0"],
    *[(11, 2, 1, 1, 1, 0, 0, fill, 0, "0") for fill in "5-,"],
    (11, 2, 1, 3, 1, 0, 5, " ", 0, "0"),
    (11, 2, 1, 3, 1, 0, 0, " ", 0, "\0"),
]

PLAIN_NUMBERS = (
    "0 0.00 -0.00 0.004 -0.004 0.005 -0.005 0.5 -0.5 1 -1 7 12 123 -123 999 1000 -1000 1234 12345 123456 1234567 "
    "-1234567 0.1 0.125 1.005 1.50 -1.50 2.675 9.995 -9.995 99.95 999.995 999999.995 1234.5 -1234.56 0.00001 "
    "1234567890123.45 -79228162514264337593543950335 39614081257132168796771975167 "
    "0.0000000000000000000000000001 -1.2345678901234567890123456789"
).split()

DOUBLES = [
    0.0, -0.0, 1.0, -1.0, 0.1, 0.125, -0.125, 0.5, 1.005, 2.675, 1234.5, -1234.5678, 99.995, 1e15, 1e16, 1e21, 1e22,
    1.7976931348623157e308, 5e-324, 2.2250738585072014e-308, 1e-5, 123456789.125, 0.3, 4.35, 1 / 3, -2 / 3,
    float("nan"), float("inf"), float("-inf"),
]  # fmt: skip

NUMBER_TEXTS = [
    "", " ", "   ", "-", "+", ",", ".", "0", "00", "-0", "+0", "-0,00", "5", " 5", "5 ", " 5 ", "+5", "-5", "5-", "5+",
    "- 5", "5 -", "--5", "-5-", "+-5", "5,", ",5", "5.", ".5", "5,5", "5.5", "5'5", "5,50", "5,500", "5,5000", "5,,5",
    "5,5,5", "007", "-007", "1.234", "1,234", "1 234", "1'234", "1.234,5", "1,234.5", "1.234,56", "1234.56", "1234,56",
    "12.34", "12.345", "123.456", "1234.567", "1.23", "1.2345", "1.234.567", "1.234567", "1234567", "1..234", ".123",
    "1.234.", "1.", "001.234", "0.001.234", "0000001", "1.234.567,890", "12a", "a12", "1e5", "0x10", "inf", "nan",
    "1\t", "\t1", "\xa01", "**1", "**-1", "-**1", "*1*", "1***", "1,5**", "1,**", "1*5", "1,5*5", "******", "5##",
    "32767", "32768", "-32768", "-32769", "2147483647", "2147483648", "-2147483648", "-2147483649", "2.147.483.647",
    "99999999999999999999999999999999", "1,00", "1,0", "1,01", "0,00000000000000000000000000000000000000001",
    "0x", "xx5", "5xx", "x5x", "5' ",
]  # fmt: skip


def random_number_settings():
    decimal = RANDOM.randrange(4)
    thousands = RANDOM.choice([t for t in range(5) if decimal == 3 or t != [1, 2, 4][decimal]])
    used = ".,'"[decimal:decimal + 1] + ["", ".", ",", " ", "'"][thousands]
    fill, fill_places = (RANDOM.choice([c for c in "0000 *#xE" if c not in used]) for _ in range(2))
    most = RANDOM.choice([3, 7, 12, 31, UNLIMITED])
    most_places = 0 if decimal == 3 else RANDOM.choice([0, 1, 2, 5, 28, UNLIMITED])
    fewest = RANDOM.randrange(min(most, 12) + 1) if RANDOM.random() < 0.6 else 0
    fewest_places = RANDOM.randrange(min(most_places, 8) + 1) if RANDOM.random() < 0.6 else 0
    sign, both = RANDOM.choice([0, 1, 1, 1, 2]), RANDOM.randrange(2)
    return (most, most_places, decimal, thousands, sign, both, fewest, fill, fewest_places, fill_places)


def read_number_text(table, settings, fmt, text):
    table.call("number", settings, "read decimal", text, lambda t: format(fmt.read(t), "f"))
    table.call("number", settings, "read long", text, lambda t: fmt.read_whole(t, LONG_MIN, LONG_MAX))
    table.call("number", settings, "read short", text, lambda t: fmt.read_whole(t, SHORT_MIN, SHORT_MAX))
    table.call("number", settings, "read double", text, fmt.read_double)


def number_rows(table, settings, plains, doubles, texts, damages):
    fmt = table.build("number", settings)
    produced = []
    for plain in plains:
        table.call("number", settings, "write decimal", plain, lambda p: fmt.write(Decimal(p)))
        produced += written(lambda p: fmt.write(Decimal(p)), plain)
        if "." not in plain and LONG_MIN <= int(plain) <= LONG_MAX:
            table.call("number", settings, "write long", int(plain), lambda n: fmt.write(Decimal(n)))
    for number in doubles:
        table.add("number", settings, "write double", repr(number), outcome(lambda: fmt.write_double(number)))
    alphabet = "0123456789.,'+- " + fmt.fill + fmt.fill_places
    for text in itertools.chain(texts, produced):
        read_number_text(table, settings, fmt, text)
    for _ in range(damages):
        read_number_text(table, settings, fmt, damaged(RANDOM.choice(produced or ["1"]), alphabet))


def add_numbers(table):
    for settings in REFUSED_NUMBER_FORMATS:
        table.build("number", settings)
    for settings in NUMBER_FORMATS:
        number_rows(table, settings, PLAIN_NUMBERS + [str(LONG_MIN), str(LONG_MAX)], DOUBLES, NUMBER_TEXTS, 20)
    for _ in range(60):
        plains = RANDOM.sample(PLAIN_NUMBERS, 10)
        plains += [f"{RANDOM.randrange(-10**9, 10**9)}.{RANDOM.randrange(10**6)}" for _ in range(3)]
        number_rows(table, random_number_settings(), plains, RANDOM.sample(DOUBLES, 5), [], 12)


# ---- Durations and times of day ----

TIMES = [
    (0, 0), (0, 1), (0, -1), (1, 30), (-1, -30), (-1, 30), (1, -30), (0, -30), (8, 0), (-8, 0), (23, 59), (24, 0),
    (99, 5), (100, 0), (-100, -59), (1789569, 0), (9999999, 59), (10000000, 0), (5, 60), (5, 99), (5, 100), (-5, -75),
    (LONG_MAX, 59), (LONG_MIN, -59), (0, LONG_MIN), (0, LONG_MAX),
]  # fmt: skip

TIME_TEXTS = [
    "", " ", "8", "-8", "+8", "8-", "8+", "08", "008", "8:30", "8:3", "8:300", "8:60", "8:59", "08:05", ":30", "8:",
    "8,5", "8,50", "8,99", "8,", ",50", "8.50", "8:30:00", "8:30:15", "8:30:", "8:30:0", "-0:30", "0:-30", "-0:00",
    "- 8:30", " 8:30 ", "8 :30", "8: 30", "23:59", "24:00", "00:00", "8:30-", "-8:30-", "--8:30", "8h", "a", "*8:30",
    "**8", "*-8:30", "-*8:30", "123:00", "9999999:00", "10000000:00", "2147483647:00", "2147483648:00",
    "-2147483648:00", "-2147483649", "99999999999", "0000000008", "8:30:00-", "8,50-", "+0",
]  # fmt: skip


def add_times(table):
    for settings in [(2, 0, 0, 0, 5, 0, "0"), (0, 4, 0, 0, 5, 0, "0"), (0, 3, 3, 0, 5, 0, "0"), (0, 3, 1, 2, 5, 0, "0"),
                     (0, 3, 1, 0, 5, 6, "0"), (0, 3, 1, 0, 5, -1, "0"), (0, 3, 1, 0, 5, 2, "1"), (0, 3, 1, 0, 5, 2, ":"),
                     (0, 2, 1, 0, 5, 2, ","), (0, 3, 1, 0, 5, 2, ","), (0, 3, 1, 0, 5, 2, "-"), (0, 3, 1, 0, 5, 2, "\0"),
                     (0, 0, 1, 0, 5, 2, ":"), (0, 1, 1, 0, 5, 2, ":")]:  # fmt: skip
        table.build("time", settings)
    filling = [(7, 0, "0"), (7, 2, "0"), (7, 3, "*"), (4294967295, 2, " ")]
    for of_day, display, sign, both, fill in itertools.product(range(2), range(4), range(3), range(2), filling):
        settings = (of_day, display, sign, both, *fill)
        fmt = table.build("time", settings)
        produced = []
        for time in RANDOM.sample(TIMES, 8) + [(-1, -30), (0, -30)]:
            table.call("time", settings, "write time", time, lambda t: fmt.write(*t))
            produced += written(lambda t: fmt.write(*t), time)
        texts = RANDOM.sample(TIME_TEXTS, 16) + produced
        texts += [damaged(RANDOM.choice(produced or ["8:30"]), "0123456789:,+-* ") for _ in range(4)]
        for text in texts:
            table.call("time", settings, "read time", text, fmt.read)


# ---- Dates ----

DATES = [
    (2004, 3, 5, 0, 0, 0), (2004, 3, 5, 14, 7, 9), (2023, 12, 31, 23, 59, 59), (2004, 2, 29, 0, 0, 1),
    (2023, 2, 29, 0, 0, 0), (1900, 2, 29, 0, 0, 0), (2000, 2, 29, 0, 0, 0), (1753, 1, 1, 0, 0, 0),
    (1752, 12, 31, 0, 0, 0), (9999, 12, 31, 0, 0, 0), (10000, 1, 1, 0, 0, 0), (99, 1, 1, 0, 0, 0),
    (2023, 5, 11, 0, 0, 0), (2023, 6, 10, 9, 5, 0), (2023, 7, 9, 9, 0, 0), (2023, 4, 31, 0, 0, 0),
    (2023, 12, 32, 0, 0, 0), (2023, 0, 1, 0, 0, 0), (2023, 13, 1, 0, 0, 0), (2023, 1, 0, 0, 0, 0),
    (2023, 1, 1, 24, 0, 0), (2023, 1, 1, 0, 60, 0), (2023, 1, 1, 0, 0, 60), (2023, 1, 1, -1, 0, 0),
    (2085, 8, 8, 0, 0, 0), (2023, 9, 30, 1, 1, 1), (2023, 10, 1, 0, 0, 0), (2023, 11, 2, 0, 0, 0),
]  # fmt: skip

DATE_TEXTS = [
    "", " ", "05.03.2004", "5.3.2004", "5.3.04", "05.03.04", " 5. 3.2004", "5.03.0099", "5.3.1752", "5.3.1753",
    "5.3.200", "5.3.20045", "05.03.", "05.03", "5.3", "05-03-2004", "05/03/2004", "05 03 2004", "05032004", "050304",
    "20040305", "5.M\xe4rz.2004", "5.M\xc4R.2004", "5.mai.2023", "5.May.2023", "5. M\xe4rz 2004", "05M\xe4r2004",
    "5.Marz.2004", "5.Juni.2023", "5.Jun.2023", "5.Juno.2023", "00.03.2004", "05.00.2004", "31.04.2023", "29.02.2023",
    "29.02.2004", "05.03.2004 14:07:09", "05.03.2004 14:07", "05.03.2004 4:07", "05.03.2004 4:7", "05.03.2004 24:00",
    "05.03.2004 14", "05.03.2004  14:07", "05.03.2004 14:60", "05.03.2004 14:07:60", "05.03.2004 14:07:9",
    "05.03.2004 14:07:09 x", "05.03.2004x", "005.03.2004", "5.003.2004", "-5.3.2004", "05.03.-200", "5,3,2004",
    "*5.*3.2004", "**.03.2004", "*05.03.2004", "2004-03-05", "04-03-05", "2004-3-5 1:02:03", "2004 3 5", "13.13.2004",
    "29.02.", "05.03. 14:07:09", "5 3", "5/3", "0503", "0503 14:07",
]  # fmt: skip


def add_dates(table):
    refused = [(3, 0, 0, 0, 1, "0"), (0, 5, 0, 0, 1, "0"), (0, 0, 3, 0, 1, "0"), (0, 0, 0, 3, 1, "0"),
               (0, 0, 0, 0, 2, "0"), (0, 0, 0, 0, -1, "0"), (-1, 0, 0, 0, 1, "0"), (0, 0, 0, 0, 1, "7"),
               (0, 0, 0, 0, 1, "."), (0, 1, 0, 0, 1, "/"), (0, 1, 0, 0, 1, "."), (0, 3, 0, 0, 1, " "),
               (0, 3, 0, 0, 0, " "), (0, 0, 0, 0, 1, "-"), (0, 0, 0, 0, 0, "\0")]  # fmt: skip
    for settings in refused:
        table.build("date", (*settings, rules.GERMAN))
    filling = [(1, "0"), (0, "0"), (1, "*"), (1, " ")]
    languages = itertools.cycle([rules.GERMAN, rules.ENGLISH, 0])
    kinds = itertools.product(range(3), range(5), range(3), range(3), filling)
    for order, separator, year, month, (filled, fill) in kinds:
        if fill == " " and separator == 3:
            continue
        settings = (order, separator, year, month, filled, fill, next(languages))
        fmt = table.build("date", settings)
        produced = []
        for date in RANDOM.sample(DATES, 6) + [(2023, 3, 5, 0, 0, 0), (2004, 10, 25, 7, 8, 9)]:
            table.call("date", settings, "write datetime", date, lambda d: fmt.write(*d))
            produced += written(lambda d: fmt.write(*d), date)
        table.call("date", settings, "write date", (2023, 12, 9, 1, 2, 3), lambda d: fmt.write_date(*d[:3]))
        texts = RANDOM.sample(DATE_TEXTS, 6) + produced
        texts += [damaged(RANDOM.choice(produced), "0123456789.-/ :*M\xe4r") for _ in range(4)]
        for text in texts:
            table.call("date", settings, "read datetime", text, fmt.read)
        table.call("date", settings, "read date", produced[-1], lambda t: fmt.read(t, with_time=False)[:3])


# ---- Texts and truth values ----

TEXTS = [
    "", " ", "  ", "a", "0", "abc", "ABC", "12345", "a1", "a b", " a", "a ", "a-b", "*", "**", "*a*", "00", "007", "700",
    "M\xe4dchen", "\xd7", "\xf7", "\u0192", "\u20ac", "\xaa\xb5\xba", "\xa0", "stra\xdfe", "tab\t",
    "eight888", "ninechars", "a\"b\\c",
]  # fmt: skip


def add_texts(table):
    for settings in [(5, 15, 3, " "), (5, 16, 0, " "), (5, 15, 1, "7"), (5, 15, 1, "-"), (5, 15, 2, "\0"),
                     (5, 15, 0, "\0"), (5, 15, 0, "+"), (0, rules.VALID_ALL, 0, " "), (1, rules.VALID_ALL, 0, " "),
                     (5, 15, -1, " ")]:  # fmt: skip
        table.build("text", settings)
    valid = [rules.VALID_ALL, *range(16)]
    filling = [(0, " "), (1, " "), (1, "*"), (2, " "), (2, "0"), (2, "\xe4")]
    for length, mask, (side, fill) in itertools.product([0, 3, 8], valid, filling):
        settings = (length, mask, side, fill)
        fmt = table.build("text", settings)
        for text in RANDOM.sample(TEXTS, 8):
            table.call("text", settings, "write text", text, fmt.write)
            table.call("text", settings, "read text", text, fmt.read)
            for product in written(fmt.write, text):
                table.call("text", settings, "read text", product, fmt.read)


def add_truth_values(table):
    for mode, language in itertools.product(range(-1, 5), [0, 1030, rules.GERMAN, rules.ENGLISH, 65535]):
        fmt = table.build("bool", (mode, language))
        if fmt is None:
            continue
        settings = (mode, language)
        for value in (0, 1, -1, 2):
            table.call("bool", settings, "write bool", value, fmt.write)
        for text in ["", " ", "  ", "0", "1", " 1 ", "2", "Ja", "JA", "ja ", "nein", "Yes", "NO", "j", "N", "y", "n", "X",
                     "x ", "xx", "Jax", "01", "J a"]:  # fmt: skip
            table.call("bool", settings, "read bool", text, fmt.read)


def main():
    sys.stdout.reconfigure(encoding="ascii", newline="\n")
    table = Table()
    add_numbers(table)
    add_times(table)
    add_dates(table)
    add_texts(table)
    add_truth_values(table)


if __name__ == "__main__":
    main()
