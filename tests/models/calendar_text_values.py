"""The cases of dates as texts, SQL, fields and archives; calendar_values.py writes them into its table."""

import itertools
import random
import sys

sys.dont_write_bytecode = True  # leaves the source folder as it is
import calendar_text_model as model
from calendar_model import Fields, length_of
from calendar_text_model import DATE_AND_TIME, DATE_ONLY, TIME_ONLY
from integer_rules import ALWAYS_DEFINED, MISSING, NULL, Text
from state_table import MODES, Given, archive, external, numbers, spread, text

RANDOM = random.Random(20040305)

GOOD_DATES = ["1.2.2004", "01.02.2004", "01.02/2004", "1.02/2004", "29.02.2004", "29.02.2000", "28.02.1900",
              "31.12.9999", "01.01.1753", "1.2.04", "01.02.04", "31.12.99", "01.01.00", "01.02.0004", "01.02.20041 ",
              "1/.02.2004", "01.2/.2004"]  # fmt: skip
BAD_DATES = ["", "1", "1.2.4", "01/02/2004", "1/2/04", "29.02.2003", "29.02.1900", "30.02.2004", "31.04.2004",
             "00.01.2004", "32.01.2004", "01.00.2004", "01.13.2004", "31.12.1752", "01.02.0000", "01.02.0104",
             "01.02.20041", "01.02.204", "01.02.", "01.02", "010.2.2004", "01.002.2004", ".1.2.2004", "1..2004xx",
             "a1.02.2004", "0a.02.2004", "01.a2.2004", "01.0a.2004", "01.02.2a04", "01.02.a4", " 1.02.2004",
             "01. 2.2004", "01.02. 204", "01-02-2004", "2004.02.01", "-1.02.2004", "01.02.-204", "01/02.2004",
             "1.2.2004x", "01.02.2004x", "./.2004", "/1.04.04"]  # fmt: skip
GOOD_TIMES = ["13:45:30", "13:45", "00:00:00", "23:59:59", " 9:05", " 9:05:07", "09:05:3", "13:45:30 ", "13:45xyz",
              "13:45:300"]  # fmt: skip
BAD_TIMES = ["", "9:05", "13-45", "24:00", "13:60", "13:45:60", "1345", "a3:45", "1a:45", "13:a5", "13:4a", "13:45-30",
             "13:45:3a", "13:45:a3", "1 :45", "  :45", "13: 5", ":13:45", "-1:45", "99:99:99"]  # fmt: skip


def changed(value, letters):
    """With one character replaced, left out or added."""
    if not value or RANDOM.randrange(4):
        return value
    at = RANDOM.randrange(len(value))
    return value[:at] + RANDOM.choice(("", RANDOM.choice(letters))) + value[at + RANDOM.randrange(2) :]


def date_text(date):
    """As people write it: short or full, with a year of two or four digits."""
    year, month, day = date
    shown = RANDOM.choice((f"{day:02}.{month:02}", f"{day}.{month}", f"{day}.{month:02}", f"{day:02}.{month}"))
    return shown + RANDOM.choice(".../") + RANDOM.choice((f"{year}", f"{year}", f"{year}", f"{year % 100:02}"))


def clock_text(clock):
    hour, minute, second = clock
    shown = RANDOM.choice((f"{hour:02}", f"{hour:02}", f"{hour:2}")) + f":{minute:02}"
    return shown + RANDOM.choice(("", f":{second:02}", f":{second:02}", f":{second}"))


def accepted_against_the_rule(value):
    """A text without a point whose first separator is "/": said to fail, though the steps lead on for some."""
    return "." not in value and "/" in value


def add_texts(table, kinds, objects, any_date, clock):
    dates = GOOD_DATES + BAD_DATES + [changed(date_text(any_date()), "./ -:,0123456789x") for _ in range(400)]
    times = GOOD_TIMES + BAD_TIMES + [changed(clock_text(clock()), ": -.0123456789x") for _ in range(250)]
    both = [f"{date} {time}" for date, time in itertools.product(GOOD_DATES, GOOD_TIMES)]
    both += [RANDOM.choice(dates) + " " * RANDOM.choice((1, 1, 1, 2, 3)) + RANDOM.choice(times) for _ in range(900)]
    both += ["1.2.04 9:05", "1.2.04  9:05", "1.2.04 13:45", "1.2.04 :05", "1.2.04 x 9:05", "1.2.04          ",
             "1.2.04 abcdef", "01.02.2004 ", "01.02.2004 1", "01.02.2004 9:05", "01.02.2004  9:05", "1.2.2004 13.45",
             "1.2.2004 1:3:45:00"]  # fmt: skip
    dates, both = ([value for value in given if not accepted_against_the_rule(value)] for given in (dates, both))
    for kind in kinds:
        each = 1 if kind == "DateTime" else 5
        for setter, name, values in ((model.set_date, "SetDate", dates), (model.set_time, "SetTime", times),
                                     (model.set_date_time, "SetDateTime", both + dates)):  # fmt: skip
            for value in [None, *values[::each]]:
                table.add(kind, name, next(objects[kind]), text(value), setter)
    add_text_constructors(table, kinds, {DATE_ONLY: dates, TIME_ONLY: times, DATE_AND_TIME: both, 7: both[::9]})


def add_text_constructors(table, kinds, values_of):
    for kind in kinds:
        forms = values_of if kind == "DateTime" else [DATE_ONLY]  # a date reads nothing but dates
        for form in forms:
            for value in [None, *values_of[form]]:
                given = Given((value, form), f"{form} " + text(value).shown)
                table.add(kind, "T(text,form)", None, given, constructor(kinds[kind]), RANDOM.choice(MODES))
            for value in [None, "", *values_of[form][::4]]:
                source = Text(RANDOM.choice((MISSING, NULL)), RANDOM.randrange(2), value)
                given = Given((source, form), f"{form} {source}")
                table.add(kind, "T(string,form)", None, given, value_constructor(kinds[kind]))


def constructor(kind):
    return lambda given: model.constructed_from_text(kind, *given)


def value_constructor(kind):
    return lambda given: model.constructed_from_text_value(kind, *given)


def add_writing(table, kinds, objects):
    for kind, count in (("DateTime", 500), ("Date", 150)):
        for _ in range(count):
            x = next(objects[kind])
            for number in (0, 1, 2, 1100, 1101, 1102):
                table.add(kind, "MakeFormatString", x, number, lambda x, number: f'"{model.written(x, number)}"')
            for number in (0, 1):
                table.add(kind, "ConvToSQL", x, number, model.sql)
            for name, operation in (("ConvToExtern", model.shown_external), ("ConvToRecordSet", model.shown_field),
                                    ("Store", model.stored_bytes), ("ConvToOFL", model.shown),
                                    ("ole(x)", model.platform_date), ("String(x)", model.as_text_value)):  # fmt: skip
                table.add(kind, name, x, None, operation)


MONTHS = "Jan Feb Mar Mär Apr May Mai Jun Jul Aug Sep Oct Okt Nov Dec Dez xyz mar".split()
SQL_TEXTS = ["", "NULL", "null", "NULL ", "Mar  5 2004 12:30A", "Mar  5 2004 12:30AM", "Mar  5 2004 12:30PM",
             "Mar  5 2004 12:30PM ", "Mar  5 2004 12:30pm", "Mar  5 2004 00:30PM", "Mar  5 2004 13:30PM",
             "Mar  5 2004 13:30AM", "Mar  5 2004 23:59XX", "Mar  5 2004 24:00AM", "Mar  5 2004 11:60PM",
             "Mar 32 2004 11:00PM", "Feb 29 2003 11:00PM", "Feb 29 2004 11:00PM", "Mar  5 1752 11:00PM",
             "Mar  5 0004 11:00PM", "Mar  5 abcd 11:00PM", "Mar  x 2004 11:00PM", "Mar    2004 11:00PM",
             "Mar  5 2004   :00PM", "Mar  5 2004 11:  PM", "Mar  5 2004 11: 5PM", "Mar-05-2004-11-05PM",
             "Mar +5 2004 11:00PM", "Mar  0 2004 11:00PM", "Mar  5  204 11:00PM", "Mar  5 2a04 11:00PM",
             "Mar  5 2004 1x:00PM"]  # fmt: skip


def add_sql(table, kinds, objects, any_date, clock):
    values = SQL_TEXTS + [sql_text(any_date(), clock()) for _ in range(800)]
    for kind in kinds:
        for value in [None, *values[:: 1 if kind == "DateTime" else 4]]:
            if value is None or not value[7:8] == " " or value == "Mar  5  204 11:00PM":
                table.add(kind, "SetFromSQL", next(objects[kind]), text(value), model.set_from_sql)


def sql_text(date, clock):
    year, month, day = date
    hour = RANDOM.choice((f"{clock[0] % 12 or 12:02}", f"{clock[0] % 12 or 12:2}", f"{clock[0]:02}"))
    name = RANDOM.choice(MONTHS)
    day = min(day, length_of(model.month_named(name), year)) if RANDOM.randrange(8) else day
    value = f"{name} {day:2} {year} {hour}:{clock[1]:02}" + RANDOM.choice(("AM", "PM", "PM", "am", ""))
    return changed(value, "0123456789xAP:-") if RANDOM.randrange(2) else value


EXTERNAL_TEXTS = ["", "D", "C", "T", "X05032004", "d05032004", "05032004", "D05032004", "D05032004xyz", "D050320",
                  "D0503", "D05030004", "D05030020", "D0503  20", "D05030099", "D05030100", "D05031752", "D05031753",
                  "D0503-204", "D05039999", "D29022003", "D29022004", "D31042004", "D00032004", "D05002004",
                  "D05132004", "Dx5032004", "D0503200x", "C05032004140709", "C0503200414070", "C05032004",
                  "C05032004240000", "C05032004146000", "C05032004140060", "C05032004140709xyz", "C05030004140709",
                  "C31122004235959", "Cxx032004140709", "C05032004x40709", "T140709", "T1407", "T140709xyz", "Tx40709",
                  "T000000"]  # fmt: skip


def add_external(table, kinds, objects, any_date, clock):
    values = list(EXTERNAL_TEXTS)
    for _ in range(700):
        day_fields = any_date()
        x = kinds["DateTime"](Fields(*day_fields, *clock()), mode=NULL, defined=1)
        values.append(cut_or_changed(model.external(x)))
    for kind in kinds:
        for i, value in enumerate(values[:: 1 if kind == "DateTime" else 4]):
            version, flag = 99 if i % 50 == 49 else 100, RANDOM.choice((0, 2, -1)) if i % 40 == 39 else 1
            for source in (Text(NULL, 0, value), *([None, Text(NULL, 0, None)] if i % 40 == 0 else [])):
                given = external(source, flag, version)
                table.add(kind, "SetFromExtern", next(objects[kind]), given, spread(model.set_from_external))


def cut_or_changed(value):
    kind = RANDOM.randrange(6)
    if kind == 0:
        return value[: RANDOM.randrange(len(value))]
    if kind == 1:
        at = RANDOM.randrange(len(value))
        return value[:at] + RANDOM.choice("0123456789xCDT") + value[at + 1 :]
    return value


def add_fields_and_archives(table, kinds, objects, any_date, clock):
    for kind, count in (("DateTime", 700), ("Date", 250)):
        for i in range(count):
            x = next(objects[kind])
            fields = damaged(Fields(*any_date(), *clock()))
            given = Given(None, "null") if i % 12 == 0 else numbers(*fields)
            table.add(kind, "SetFromRecordSet", x, given, model.set_from_field)
            stored = bytes.fromhex(model.stored_bytes(kinds[kind](fields, mode=NULL, defined=RANDOM.randrange(2))))
            given = archive(stored if i % 10 else stored[: RANDOM.randrange(len(stored))])
            table.add(kind, "Load", x, given, model.load)
            add_platform_date(table, kinds, kind, x, Fields(*any_date(), *clock()), i)


def damaged(fields):
    fields = list(fields)
    if RANDOM.randrange(4) == 0:
        fields[RANDOM.randrange(6)] = RANDOM.choice((0, -1, 4, 29, 31, 32, 60, 99, 100, 1752, 32767, -32768))
    return Fields(*fields)


def add_platform_date(table, kinds, kind, x, fields, i):
    if i % 15 == 0:
        fields = fields._replace(year=RANDOM.choice((100, 1752, 1753)), day=1)
    valid = i % 9 != 0
    shown = "valid " + numbers(*fields).shown if valid else RANDOM.choice(("invalid", "null"))
    given = Given(fields if valid else None, shown)
    if kind == "DateTime":
        table.add(kind, "x=ole", x, given, model.assign_platform_date)
        # An object that becomes defined: in mode 2 it is so from the start.
        default = ALWAYS_DEFINED if valid else RANDOM.choice(MODES)
        table.add(kind, "T(ole)", None, given, lambda given: constructed_from(kinds[kind], given), default)


def constructed_from(kind, fields):
    return model.constructed_from_platform_date(kind, fields)


SHOWN_TEXTS = [None, "", "05.03.2004", "5.3.2004", "5.3.04", "05.03.2004 14:07", "05.03.2004 14:07:09",
               "5.3.2004 9:07", "05.03.2004 24:00", "05.03.2004 14:60", "29.02.2003", "32.01.2004", "05.13.2004",
               "05.03.1752", "05.03.0099", "05.03.204", "05/03/2004", "05.03.2004x", " 05.03.2004 ",
               "05.03.2004  14:07", "05.03.", "x", "05.03.2004 14", "05.03.20041"]  # fmt: skip


def add_shown(table, kinds, objects, any_date, clock):
    values = list(SHOWN_TEXTS)
    for _ in range(300):
        date, time = any_date(), clock()
        shown = model.DEFAULT_FORMAT.write(*date, *time)
        values.append(shown if RANDOM.randrange(3) else changed(shown, ".: 0123456789x"))
    for kind in kinds:
        for value in values:
            table.add(kind, "SetFromOFL", next(objects[kind]), text(value), model.set_from_shown)


def add_text_cases(table, kinds, objects, any_date, clock):
    add_texts(table, kinds, objects, any_date, clock)
    add_writing(table, kinds, objects)
    add_sql(table, kinds, objects, any_date, clock)
    add_external(table, kinds, objects, any_date, clock)
    add_fields_and_archives(table, kinds, objects, any_date, clock)
    add_shown(table, kinds, objects, any_date, clock)
