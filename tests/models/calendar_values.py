#!/usr/bin/env python3
"""Table of the classes NkDtDateTime and NkDtDateZp.

Writes one row per class, operation and operands with what the rules of calendar_model.py and calendar_text_model.py
demand: the error, the result and the state of the left object afterwards. Durations have a table of their own, from
duration_values.py.

    python3 calendar_values.py > calendar_values.tsv

The clock tells 15.06.2023 12:00:00 (UTC). Columns, separated by tabs; "-" stands for "none":

    class      DateTime or Date
    operation  x is the left object, y another one of its class, t a duration, T the class
    default    the process default working mode while the operation runs
    left       state of x; of a date mode:defined:year:month:day:hour:minute:second:modified, of a duration
               mode:defined:ticks:TimeMode:modified; the fields as they are stored, which getters do not always tell
    right      what stands on the right: a state, numbers, a "text", "null" for none, archive bytes, ...
    error      number of the raised error
    cause      number of the error that the raised one replaces
    text       text of the cause, or of the error when it replaces none; "-" for a refusal of the format library
    result     what the operation yields: a state, a number, a "text", bytes
    after      state of x afterwards; what a failing operation has done stays done
"""

import itertools
import random
import sys

sys.dont_write_bytecode = True  # leaves the source folder as it is
import calendar_model as model
import calendar_text_model as texts
import duration_values
from calendar_text_values import add_text_cases
from calendar_model import Date, DateTime, Fields, NOW, length_of
from duration_model import Duration
from integer_rules import ALWAYS_DEFINED, INT_MAX, INT_MIN, MISSING
from nullable_state import set_process_default
from state_table import MODES, Given, Table, numbers, spread, states

RANDOM = random.Random(17530101)
KINDS = {"DateTime": DateTime, "Date": Date}
SHORT_MAX, SHORT_MIN = 32767, -32768

YEARS = [1753, 1754, 1756, 1799, 1800, 1804, 1896, 1899, 1900, 1901, 1903, 1904, 1999, 2000, 2001, 2003, 2004, 2005,
         2096, 2099, 2100, 2101, 2104, 2399, 2400, 9999]  # fmt: skip
DAYS = [(1, 1), (1, 31), (2, 28), (2, 29), (3, 1), (3, 31), (4, 30), (6, 15), (11, 30), (12, 1), (12, 31)]
EDGE_DATES = [(year, month, day) for year in YEARS for month, day in DAYS if day <= length_of(month, year)]
DAY_COUNTS = [0, 1, 2, 27, 28, 29, 30, 31, 32, 58, 59, 60, 61, 62, 90, 91, 305, 306, 364, 365, 366, 367, 730, 731,
              1095, 1096, 1460, 1461, 1462, 3652, 3653, 14609, 14610, SHORT_MAX - 1, SHORT_MAX]  # fmt: skip
MONTH_COUNTS = [0, 1, 2, 3, 6, 9, 10, 11, 12, 13, 14, 23, 24, 25, 35, 36, 37, 48, 1199, 1200, 1201, 32766, SHORT_MAX]
YEAR_COUNTS = [0, 1, 2, 3, 4, 96, 97, 100, 251, 252, 400, 1900, 1904, 1905, 1950, 2000, 2004, 2010, 2100, 30763, 32000,
               SHORT_MAX]  # fmt: skip
HOUR_COUNTS = [0, 1, 2, 23, 24, 25, 47, 48, 49, 8759, 8760, 8784, 786407, 786408, 786431, 786432, 786433, 1572863,
               1572864, 1572888, INT_MAX]  # fmt: skip
MINUTE_COUNTS = [0, 1, 29, 30, 59, 60, 61, 1439, 1440, 1441, 525600, 527040, 47184479, 47185920, 94371840, INT_MAX]


def clock():
    kind = RANDOM.randrange(5)
    if kind < 2:
        return (0, 0, 0)
    if kind == 2:
        return RANDOM.choice(((23, 59, 59), (0, 0, 1), (12, 0, 0), (23, 0, 0), (0, 59, 0)))
    return (RANDOM.randrange(24), RANDOM.randrange(60), RANDOM.randrange(60))


def any_date():
    if RANDOM.randrange(3) == 0:
        return RANDOM.choice(EDGE_DATES)
    year = RANDOM.randrange(1753, 10000) if RANDOM.randrange(3) == 0 else RANDOM.randrange(1890, 2110)
    month = RANDOM.randrange(1, 13)
    length = length_of(month, year)
    return year, month, RANDOM.choice((length, RANDOM.randrange(1, length + 1)))


def made(kind):
    return lambda **state: KINDS[kind](Fields(*any_date(), *clock()), **state)


OBJECTS = {kind: states(RANDOM, made(kind)) for kind in KINDS}
OTHERS = {kind: states(RANDOM, made(kind)) for kind in KINDS}
DURATIONS = states(RANDOM, lambda **state: Duration(some_length(), RANDOM.randrange(3), **state))


def some_length():
    kind = RANDOM.randrange(4)
    if kind == 0:
        return RANDOM.choice(duration_values.EDGE_TICKS)
    if kind == 1:
        return RANDOM.choice((1, -1)) * 20 * RANDOM.choice(MINUTE_COUNTS[:10])
    return RANDOM.randrange(-(10**7), 10**7)


def either_way(counts, low):
    """Both signs, the lowest number, and some in between."""
    return RANDOM.choice((1, -1)) * RANDOM.choice(counts) if RANDOM.randrange(40) else low


def defined(kind, fields):
    return KINDS[kind](Fields(*fields), mode=MISSING, defined=1)


# Whether a year of two digits that stands for the stored one counts as a modification is open.
def short_year_of(x, year):
    return year <= 99 and x.year == year + NOW.year // 100 * 100


# --- Calendar ---------------------------------------------------------------------------------

DAY_MOVES = {"AddDay365": model.add_day, "SubDay365": model.sub_day}
MONTH_MOVES = {"AddMonth": model.add_month, "SubMonth": model.sub_month}
YEAR_MOVES = {"AddYear": model.add_year, "SubYear": model.sub_year}
HOUR_MOVES = {"AddHour": model.add_hour, "SubHour": model.sub_hour}
MINUTE_MOVES = {"AddMin": model.add_min, "SubMin": model.sub_min}
MOVES = [(DAY_MOVES, DAY_COUNTS, SHORT_MIN), (MONTH_MOVES, MONTH_COUNTS, SHORT_MIN),
         (YEAR_MOVES, YEAR_COUNTS, SHORT_MIN), (HOUR_MOVES, HOUR_COUNTS, INT_MIN),
         (MINUTE_MOVES, MINUTE_COUNTS, INT_MIN),]  # fmt: skip


def add_move(table, kind, name, operation, x, count):
    if name in YEAR_MOVES and short_year_of(x, x.year + (count if name == "AddYear" else -count)):
        return
    table.add(kind, name, x, count, operation)


def add_moves(table):
    for moves, counts, low in MOVES:
        each = 6 if moves in (DAY_MOVES, MONTH_MOVES) else 3
        for (name, operation), date in itertools.product(moves.items(), EDGE_DATES):
            for _ in range(each):
                x = defined("DateTime", date + clock())
                add_move(table, "DateTime", name, operation, x, either_way(counts, low))
        for name, operation in moves.items():
            for _ in range(500):
                count = RANDOM.choice((RANDOM.randrange(low, -low), RANDOM.randrange(-1000, 1000)))
                add_move(table, "DateTime", name, operation, next(OBJECTS["DateTime"]), count)
            for _ in range(40):
                add_move(table, "Date", name, operation, next(OBJECTS["Date"]), either_way(counts, low))
            add_last_years(table, name, operation, low)
    for name, operation in DAY_MOVES.items():  # counts that just reach the edges of years
        for year, month, day in EDGE_DATES:
            x = defined("DateTime", (year, month, day, 0, 0, 0))
            of_year = model.BEFORE[month - 1] + day
            for near in range(-2, 3):
                table.add("DateTime", name, x, of_year + near, operation)
                table.add("DateTime", name, x, 366 - of_year + near, operation)


def add_last_years(table, name, operation, low):
    """A year beyond 32767 is an error that changes nothing."""
    for year, month, day in itertools.product((32765, 32766, 32767), (1, 2, 3, 11, 12), (1, 28)):
        x = defined("DateTime", (year, month, day, 23, 59, 0))
        for count in (1, 31, 60, 400) if low == SHORT_MIN else (1, 24 * 60, 24 * 60 * 400):
            table.add("DateTime", name, x, RANDOM.choice((1, -1)) * count, operation)


FIELDS = {
    "SetDay365": ("day", model.set_day, (0, 1, 28, 29, 30, 31, 32, -1, SHORT_MAX, SHORT_MIN)),
    "SetMonth": ("month", model.set_month, (0, 1, 2, 4, 12, 13, -1, SHORT_MAX, SHORT_MIN)),
    "SetYear": ("year", model.set_year, (0, 4, 99, 100, 1752, 1753, 1900, 2003, 2004, -1, -271, SHORT_MAX, SHORT_MIN)),
    "SetHour": ("hour", model.set_hour_of_day, (0, 12, 23, 24, 25, -1, SHORT_MAX, SHORT_MIN)),
    "SetMin": ("minute", model.set_minute, (0, 30, 59, 60, -1, SHORT_MAX, SHORT_MIN)),
    "SetSecond": ("second", model.set_second, (0, 30, 59, 60, -1, SHORT_MAX, SHORT_MIN)),
}
GETTERS = {"GetDay365": "day", "GetMonth": "month", "GetYear": "year", "GetHour": "hour", "GetMin": "minute",
           "GetSecond": "second"}  # fmt: skip


def add_fields(table):
    for kind, count in (("DateTime", 400), ("Date", 60)):
        for _ in range(count):
            x = next(OBJECTS[kind])
            for name, (field, operation, values) in FIELDS.items():
                number = getattr(x, field) if RANDOM.randrange(5) == 0 else RANDOM.choice(values)
                if name != "SetYear" or not short_year_of(x, number):
                    table.add(kind, name, x, number, operation)
            for name, field in GETTERS.items():
                table.add(kind, name, x, None, lambda x, field=field: model.read_field(x, field))
            table.add(kind, "WipeTime", x, None, KINDS[kind].wipe_time)
    for year, month in itertools.product(YEARS, range(1, 13)):
        x = defined("DateTime", (year, month, length_of(month, year), 7, 8, 9))
        table.add("DateTime", "SetMonth", x, RANDOM.choice((2, 2, 4, 11)), model.set_month)
        table.add("DateTime", "SetDay365", x, x.day + 1, model.set_day)
        table.add("DateTime", "SetYear", x, RANDOM.choice((1900, 2000, 2003, 2004)), model.set_year)


def add_oddities(table):
    """Days beyond their month, as subtracting leaves them, and months that only an archive brings."""
    odd = [defined("DateTime", (year, 12, 32, 10, 20, 30)) for year in (1899, 1999, 2003, 2004, 9998)]
    odd += [defined("DateTime", (2003, month, 10, 10, 20, 30)) for month in (0, 13, -5, 200)]
    for x in odd:
        for moves, counts, _ in MOVES[:3]:
            for (name, operation), count in itertools.product(moves.items(), (0, 1, 2, 13, 24)):
                add_move(table, "DateTime", name, operation, x, count)
        for count in (0, 1, 14, 1000):
            table.add("DateTime", "AddHour", x, count, model.add_hour)
            table.add("DateTime", "SubHour", x, count, model.sub_hour)
        for name, (field, operation, values) in FIELDS.items():
            for number in (values[1], getattr(x, field)):
                table.add("DateTime", name, x, number, operation)
        for y in (*odd, defined("DateTime", (2000, 2, 29, 1, 2, 3))):
            table.add("DateTime", "x-y", x, y, model.difference)
            table.add("DateTime", "x<y", x, y, model.COMPARISON["x<y"])
        table.add("DateTime", "ConvToOFL", x, None, texts.shown)
        table.add("DateTime", "ole(x)", x, None, texts.platform_date)
        table.add("DateTime", "Store", x, None, texts.stored_bytes)


# --- Pairs ------------------------------------------------------------------------------------


def other_than(x, kind):
    """A second date, often near the first one or on the same day of another year."""
    y = next(OTHERS[kind])
    near = RANDOM.randrange(5)
    if near == 0:
        y.set_fields(x.fields)
    elif near == 1:
        y.year, y.month, y.day = x.year, x.month, RANDOM.choice((1, x.day))
    elif near == 2:
        y.year = min(max(x.year + RANDOM.randrange(-12, 13), 1753), 9999)
        y.day = min(y.day, length_of(y.month, y.year))
    return y


def add_pairs(table):
    for kind, count in (("DateTime", 2500), ("Date", 300)):
        for i in range(count):
            x = next(OBJECTS[kind])
            y = other_than(x, kind)
            default = RANDOM.choice(MODES)
            table.add(kind, "x-y", x, y, model.difference, default)
            table.add(kind, "x-y", y, x, model.difference, default)
            if i % 6 == 0:
                for name, operation in model.COMPARISON.items():
                    table.add(kind, name, x, y, operation)
            if i % 4 == 0:
                table.add(kind, "x=y", x, y, model.assign)
                table.add(kind, "Assign(y)", x, y, model.assign_checked)
                other = next(OTHERS["Date" if kind == "DateTime" else "DateTime"])
                table.add(kind, "Assign(other)", x, other, model.assign_checked)
    for a, b in itertools.product(EDGE_DATES[::3], EDGE_DATES[1::7]):
        x, y = defined("DateTime", a + clock()), defined("DateTime", b + clock())
        table.add("DateTime", "x-y", x, y, model.difference)
    for kind, count in (("DateTime", 1500), ("Date", 700)):
        for _ in range(count):
            x, duration = next(OBJECTS[kind]), next(DURATIONS)
            for name, move in (("x+t", model.add_min), ("x-t", model.sub_min)):
                table.add(kind, name, x, duration, moved_by(move), RANDOM.choice(MODES))


def moved_by(move):
    return lambda x, duration: model.moved(x, duration, move)


# --- Objects ----------------------------------------------------------------------------------


def add_construction(table):
    for kind, default, mode in itertools.product(KINDS, MODES, range(4)):
        table.add(kind, "T(mode)", None, mode, lambda mode: model.constructed_in_mode(KINDS[kind], mode), default)
    for kind, count in (("DateTime", 900), ("Date", 300)):
        for _ in range(count):
            given = some_fields(kind)
            table.add(kind, "T(y,m,d,h,m,s)", None, numbers(*given), from_fields(kind), RANDOM.choice(MODES))
            # An object that becomes defined: in mode 2 it is so from the start.
            table.add(kind, "T(shorts)", None, numbers(*given), from_fields(kind), ALWAYS_DEFINED)
            broken_down = given._replace(year=broken_down_year(given.year), month=given.month - 1)
            table.add(kind, "T(tm)", None, numbers(*broken_down), from_broken_down(kind), RANDOM.choice(MODES))
        for default, undefined in itertools.product(MODES, range(6 if kind == "DateTime" else 3)):
            given = Given(undefined, f"undefined {undefined}")
            table.add(kind, "T(shorts)", None, given, lambda _, kind=kind: KINDS[kind](), default)
        for x in itertools.islice(OBJECTS[kind], 200):
            table.add(kind, "T(x)", x, None, model.copied, RANDOM.choice(MODES))
            table.add(kind, "NewObject", x, None, model.copied, RANDOM.choice(MODES))
            table.add(kind, "Clear", x, None, model.clear)
            other = next(OTHERS["Date" if kind == "DateTime" else "DateTime"])
            if kind == "Date":
                table.add(kind, "T(other)", None, other, lambda y: model.copied(as_kind(Date, y)), RANDOM.choice(MODES))
    for hour, minute in itertools.product((0, 1, 10, 23, 24, -1, SHORT_MAX, SHORT_MIN), (0, 30, 59, 60, -1, SHORT_MIN)):
        given = numbers(hour, minute)
        table.add("DateTime", "T(h,m)", None, given, spread(model.constructed_from_clock), RANDOM.choice(MODES))


def as_kind(kind, y):
    x = kind(y.fields)
    x.take_base(y)
    return x


def from_fields(kind):
    return lambda given: model.constructed_from_fields(KINDS[kind], Fields(*given))


def from_broken_down(kind):
    return lambda given: model.constructed_from_broken_down(KINDS[kind], Fields(*given))


def some_fields(kind):
    """Six numbers, now and then one of them beyond its range. A date is built without a time of day."""
    fields = list(any_date() + (clock() if kind == "DateTime" else (0, 0, 0)))
    if RANDOM.randrange(3) == 0:
        fields[0] = RANDOM.choice((0, 4, 99, 100, 1752, 1753, 1900, -1, -270, -271, SHORT_MAX, SHORT_MIN))
    if RANDOM.randrange(3) == 0:
        at = RANDOM.randrange(6 if kind == "DateTime" else 3)
        fields[at] = RANDOM.choice((fields[at], 0, -1, 24, 29, 30, 31, 32, 12, 13, 59, 60, SHORT_MAX, SHORT_MIN))
    return Fields(*fields)


def broken_down_year(year):
    edges = (99, 100, 104, 999, 1000, 1752, 1753, -147, -148, -1850, 32767, 32768, 40000, INT_MAX, INT_MIN)
    return RANDOM.choice((year - 1900, year - 1900, year, RANDOM.choice(edges)))


def main():
    sys.stdout.reconfigure(encoding="latin-1", newline="\n")
    set_process_default(MISSING)
    table = Table()
    add_moves(table)
    add_fields(table)
    add_oddities(table)
    add_pairs(table)
    add_construction(table)
    add_text_cases(table, KINDS, OBJECTS, any_date, clock)
    table.write(sys.stdout)


if __name__ == "__main__":
    main()
