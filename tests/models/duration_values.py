#!/usr/bin/env python3
"""Table of the class NkDtTime.

Writes one row per operation and operands with what the rules of duration_model.py demand, in the columns that
calendar_values.py tells of; the class is Time.

    python3 duration_values.py > duration_values.tsv
"""

import itertools
import random
import sys

sys.dont_write_bytecode = True  # leaves the source folder as it is
import duration_model as model
from duration_model import CURRENT_MODE, HOUR, HOURS_ONLY, HUNDREDTHS, MINUTES, Duration
from integer_rules import ALWAYS_DEFINED, DIFFERENT_CLASSES, INT_MAX, INT_MIN, MISSING, NULL, Text
from nullable_state import demand, set_process_default
from state_table import MODES, Given, Table, archive, external, numbers, spread, states, text

RANDOM = random.Random(12001200)
TIME_MODES = (HUNDREDTHS, MINUTES, HOURS_ONLY)
ARGUMENT_MODES = (HUNDREDTHS, MINUTES, HOURS_ONLY, CURRENT_MODE)
WRONG_MODES = (-1, 4, 2147483647)
KIND = "Time"

EDGE_TICKS = [0, 1, -1, 11, 12, 19, 20, -19, -20, 299, 300, 301, -300, -301, 599, 600, 601, -600, 1199, 1200, 1201,
              -1199, -1200, -1201, 1220, -1220, 1800, -1800, 28800, 36000, 864000, -864000, 10368000, 10368020,
              INT_MAX, INT_MAX - 1, INT_MIN, INT_MIN + 1, 1789568 * HOUR, -1789568 * HOUR, 1789569 * HOUR,
              -1789569 * HOUR]  # fmt: skip
EDGE_HOURS = [0, 1, -1, 8, -8, 23, 24, 25, 719, 720, 721, 8639, 8640, 8641, 100000, 1789568, 1789569, 1789570,
              -1789569, -1789570, INT_MAX, INT_MIN]  # fmt: skip
EDGE_PARTS = [0, 1, -1, 29, 30, 31, 59, 60, 61, -30, -59, -60, 99, 100, 120, 1000000, 107374182, 107374183, 178956970,
              178956971, -107374183, INT_MAX, INT_MIN]  # fmt: skip


def ticks():
    kind = RANDOM.randrange(6)
    if kind == 0:
        return RANDOM.choice(EDGE_TICKS)
    if kind == 1:
        return RANDOM.randrange(INT_MIN, INT_MAX + 1)
    if kind == 2:
        return RANDOM.randrange(-HOUR, HOUR)
    return RANDOM.randrange(-30000, 30000) * RANDOM.choice((1, 12, 20, 20))


def some_hours():
    return RANDOM.choice(EDGE_HOURS) if RANDOM.randrange(2) else RANDOM.randrange(-20000, 20000)


def some_part():
    return RANDOM.choice(EDGE_PARTS) if RANDOM.randrange(3) == 0 else RANDOM.randrange(-130, 130)


def some_length():
    return some_part() if RANDOM.randrange(3) else RANDOM.randrange(-200_000_000, 200_000_000)


def made(**state):
    return Duration(ticks(), RANDOM.choice((MINUTES, MINUTES, HUNDREDTHS, HOURS_ONLY)), **state)


OBJECTS = states(RANDOM, made)
OTHERS = states(RANDOM, made)


def any_mode():
    return RANDOM.choice(WRONG_MODES) if RANDOM.randrange(25) == 0 else RANDOM.choice(ARGUMENT_MODES)


# Whether a mode that changes alone counts as a modification is told for SetMode only.
def only_the_mode_differs(before):
    return lambda after: after.time_mode != before.time_mode and not after.modified | before.modified


def emptied_by_mode(before):
    return lambda after: before.ticks == 0 and before.time_mode != MINUTES and before.defined == after.defined


def add_construction(table):
    for default, mode in itertools.product(MODES, range(4)):
        table.add(KIND, "T(mode)", None, mode, lambda given: Duration(mode=given), default)
    for hours, part in itertools.product(EDGE_HOURS, EDGE_PARTS):
        given = numbers(hours, part, any_mode())
        table.add(KIND, "T(h,m,mode)", None, given, spread(model.constructed_from_parts), RANDOM.choice(MODES))
    for _ in range(400):
        given = numbers(some_hours(), some_part(), any_mode())
        table.add(KIND, "T(h,m,mode)", None, given, spread(model.constructed_from_parts), RANDOM.choice(MODES))
    for _ in range(600):
        mode = RANDOM.choice(ARGUMENT_MODES)
        value = duration_text(mode)
        if stored_mode_is_open(value, mode) or is_open(value, mode):
            continue
        given = Given((value, mode), f"{mode} " + text(value).shown)
        table.add(KIND, "T(text,mode)", None, given, spread(model.constructed_from_text), RANDOM.choice(MODES))
        source = Text(RANDOM.choice((MISSING, NULL)), RANDOM.randrange(2), value if RANDOM.randrange(4) else None)
        given = Given((source, mode), f"{mode} {source}")
        table.add(KIND, "T(string,mode)", None, given, spread(model.constructed_from_text_value))
    add_long_pairs(table)
    for value in (None, "", "-", "+", ":", "0", "-0", "+8", "08:05", "-0:30"):
        given = Given((value, MINUTES), f"{MINUTES} " + text(value).shown)
        table.add(KIND, "T(text,mode)", None, given, spread(model.constructed_from_text))


def add_long_pairs(table):
    """Two whole numbers; a null counts with its 0. An object becomes defined: in mode 2 it is so from the start."""
    for hours, part in itertools.product((0, -3, 1789569, "null", "missing"), (0, 30, -45, INT_MAX, "null", "missing")):
        for time_mode in (*ARGUMENT_MODES, 4):
            missing = "missing" in (hours, part)
            for default in MODES if missing and time_mode < 4 else [ALWAYS_DEFINED]:
                given = Given((hours, part, time_mode), f"{hours} {part} {time_mode}")
                table.add(KIND, "T(longs,mode)", None, given, spread(from_long_pair), default)


def from_long_pair(hours, part, time_mode):
    if "missing" in (hours, part) and time_mode < 4:
        return Duration()
    return model.constructed_from_parts(*(0 if n in ("null", "missing") else n for n in (hours, part)), time_mode)


def duration_text(mode):
    separator = {HUNDREDTHS: ",", MINUTES: ":"}.get(mode, RANDOM.choice(":,"))
    hours = RANDOM.choice(("0", "00", "1", "08", "23", "1789568", "1789569", "9" * 11, str(RANDOM.randrange(3000))))
    part = f"{RANDOM.randrange(60 if RANDOM.randrange(5) else 100):02}"
    value = RANDOM.choice(("", "", "-", "-", "+")) + hours + (separator + part if RANDOM.randrange(6) else "")
    if RANDOM.randrange(5) == 0:
        at = RANDOM.randrange(len(value) + 1)
        inserted = RANDOM.choice(("", ":", ",", "-", "+", " ", "x", ".", "5"))
        value = value[:at] + inserted + value[at + RANDOM.randrange(2) :]
    return value


def is_open(value, mode):
    """Under whole hours any separator is said to be accepted, and the text's form is said to be strict."""
    regular = value[-3:-2] in (":", ",") and value[-2:].isdigit()
    return mode == HOURS_ONLY and ("," in value or ":" in value) and not regular


def stored_mode_is_open(value, mode):
    return mode == CURRENT_MODE and value[-3:-2] != ":"


def add_reading(table):
    for _ in range(700):
        x = next(OBJECTS)
        for name, operation in (("GetHour", model.get_hour), ("GetMode", get_mode), ("ConvToSQL", model.sql),
                                ("ConvToExtern", model.shown_external), ("Store", model.stored_bytes),
                                ("ConvToOFL", model.shown), ("T(x)", Duration.duplicate),
                                ("NewObject", Duration.duplicate), ("String(x)", as_text_value),
                                ("ConvToRecordSet", field)):  # fmt: skip
            table.add(KIND, name, x, None, operation, RANDOM.choice(MODES) if name != "ConvToExtern" else 0)
        table.add(KIND, "GetMin", x, any_mode(), model.get_min)
        table.add(KIND, "GetTime", x, any_mode(), model.get_time)
        table.add(KIND, "GetValue", x, RANDOM.choice((0, 5, 6, 7, 8, 11, 12, 40)), model.get_value)
        name = RANDOM.choice(list(model.FORMATS))
        table.add(KIND, "ConvToOFL(format)", x, name, model.shown)


def get_mode(x):
    return x.time_mode


def as_text_value(x):
    return f'"{model.written(x)}"' if x.defined else "undefined"


def field(x):
    return x.ticks if x.defined else "null"


def add_setting(table):
    for _ in range(700):
        x = next(OBJECTS)
        table.add(KIND, "SetHour", x, some_hours(), model.set_hour)
        table.add(KIND, "SetMin", x, numbers(some_part(), any_mode()), spread(model.set_min))
        table.add(KIND, "SetTime", x, numbers(some_length(), any_mode()), spread(model.set_time))
        table.add(KIND, "AddMin", x, numbers(some_part(), any_mode()), spread(model.move_parts))
        table.add(KIND, "SubMin", x, numbers(some_part(), any_mode()), sub_min)
        table.add(KIND, "AddHour", x, some_hours(), model.move_hours)
        table.add(KIND, "SubHour", x, some_hours(), lambda x, count: model.move_hours(x, -count))
        mode = RANDOM.choice(ARGUMENT_MODES)
        value = duration_text(mode) if RANDOM.randrange(40) else None
        if value is None or not is_open(value, mode):
            given = Given((value, mode), f"{mode} " + text(value).shown)
            table.add(KIND, "SetValue", x, given, spread(model.set_value), unless=only_the_mode_differs(x))
    for _ in range(250):
        x = next(OBJECTS)
        table.add(KIND, "SetMode", x, any_mode(), model.set_mode)
        table.add(KIND, "Reset", x, any_mode(), model.reset)
        table.add(KIND, "Clear", x, None, model.clear, unless=emptied_by_mode(x))
        table.add(KIND, "SetModified", x, RANDOM.randrange(2), set_modified)
    for _ in range(700):
        x = next(OBJECTS)
        if abs(x.ticks) < INT_MAX - HOUR:
            kind = RANDOM.randrange(3) if not x.defined or RANDOM.randrange(20) else RANDOM.choice((-1, 3))
            table.add(KIND, "Round", x, kind, model.rounded)


def sub_min(x, given):
    model.move_parts(x, -given[0], given[1])


def set_modified(x, flag):
    x.modified = flag


def add_pairs(table):
    for i in range(800):
        x, y = next(OBJECTS), next(OTHERS)
        if i % 8 == 0:
            x.ticks, y.ticks = (RANDOM.choice((1, -1)) * (INT_MAX - RANDOM.randrange(3)) for _ in range(2))
        if i % 5 == 0:
            y.ticks = x.ticks + RANDOM.choice((0, 0, 1, -1)) if abs(x.ticks) < INT_MAX else x.ticks
        default = RANDOM.choice(MODES)
        table.add(KIND, "x+y", x, y, lambda x, y: model.combined(x, y, 1), default)
        table.add(KIND, "x-y", x, y, lambda x, y: model.combined(x, y, -1), default)
        for name, sign in (("x+=y", 1), ("x-=y", -1)):
            rejected = not model.computable(x, y)
            if x.time_mode == MINUTES or not rejected:
                table.add(KIND, name, x, y, lambda x, y, sign=sign: model.accumulate(x, y, sign))
        for name, operation in model.COMPARISON.items():
            if i % 2 == 0:
                table.add(KIND, name, x, y, operation)
        for name in ("x=y", "Assign(y)"):
            if x.time_mode == y.time_mode or x.ticks != y.ticks or x.modified:
                table.add(KIND, name, x, y, model.assign)


def add_conversions(table):
    for i in range(500):
        x = next(OBJECTS)
        length = None if i % 10 == 0 else ticks()
        open_clear = emptied_by_mode(x) if length is None else None
        if length is not None:
            table.add(KIND, "SetFromSQL", x, length, model.set_ticks)
        given = Given(length, "null" if length is None else str(length))
        table.add(KIND, "SetFromRecordSet", x, given, model.set_ticks, unless=open_clear)
        stored = bytes.fromhex(model.stored_bytes(next(OTHERS)))
        table.add(KIND, "Load", x, archive(stored if i % 8 else stored[: RANDOM.randrange(8)]), model.load)
    for i in range(1200):
        x = next(OBJECTS)
        name = RANDOM.choice(list(model.FORMATS))
        shown = None if i % 25 == 0 else shown_text()
        open_clear = None if shown else emptied_by_mode(x)
        table.add(KIND, "SetFromOFL", x, text(shown), model.set_from_shown, unless=open_clear)
        given = Given((shown, name), f"{name} " + text(shown).shown)
        table.add(KIND, "SetFromOFL(format)", x, given, spread(model.set_from_shown), unless=open_clear)


def shown_text():
    if RANDOM.randrange(2):
        hours, part = RANDOM.choice((0, 8, 23, 1789569, 1789570, 9999999, RANDOM.randrange(3000))), RANDOM.randrange(60)
        sign = RANDOM.choice((1, -1))
        return RANDOM.choice(list(model.FORMATS.values())).write(sign * hours, sign * part)
    value = duration_text(RANDOM.choice((HUNDREDTHS, MINUTES)))
    return RANDOM.choice(("", "", "", " ")) + value + RANDOM.choice(("", "", "", "", "-", ":00", ":01", " "))


def add_external(table):
    for i in range(1500):
        x = next(OBJECTS)
        whole = model.external(next(OTHERS))
        version = 99 if i % 40 == 0 else 100
        flag = RANDOM.choice((0, 2, -1)) if i % 30 == 0 else 1
        content = RANDOM.choice((whole, whole, other_external(whole)))
        source = None if i % 50 == 1 else Text(NULL, 0, None if i % 50 == 2 else content)
        clears = flag != 1 or source is None
        unless = emptied_by_mode(x) if clears else only_the_mode_differs(x)
        given = external(source, flag, version)
        table.add(KIND, "SetFromExtern", x, given, spread(model.set_from_external), unless=unless)


def other_external(whole):
    """Cut between its parts, with parts beyond their range, with something behind it, or of no form at all."""
    sign = "-" if RANDOM.randrange(3) == 0 else ""
    two = [f"{RANDOM.randrange(100):02}" for _ in range(4)]
    year = f"{RANDOM.choice((0, 1, 7, 206, 207, 208, RANDOM.randrange(10000))):04}"
    parts = RANDOM.choice((["C", sign] + two[:2] + [year] + two[2:] + ["00"], ["D", sign] + two[:2] + [year],
                           ["T", sign] + two[:2] + ["59"], ["T", sign] + two[:2]))  # fmt: skip
    kind = RANDOM.randrange(5)
    if kind == 0:
        return "".join(parts[: RANDOM.randrange(2, len(parts) + 1)])
    if kind == 1:
        return "".join(parts) + RANDOM.choice(("x", " ", "00"))
    if kind == 2:
        return RANDOM.choice(("", "X", "c", "0", " ")) + whole[1:]
    return "".join(parts)


def add_cases(table):
    for x in (Duration(1800, mode=ALWAYS_DEFINED), Duration(0, mode=NULL), Duration(0, mode=MISSING)):
        table.add(KIND, "Assign(long)", x, 5, refuse_class)
    add_construction(table)
    add_reading(table)
    add_setting(table)
    add_pairs(table)
    add_conversions(table)
    add_external(table)


def refuse_class(x, _):
    demand(False, DIFFERENT_CLASSES)


def main():
    sys.stdout.reconfigure(encoding="latin-1", newline="\n")
    set_process_default(MISSING)
    table = Table()
    add_cases(table)
    table.write(sys.stdout)


if __name__ == "__main__":
    main()
