#!/usr/bin/env python3
"""What date-times and dates read and write: texts, SQL, external texts, fields, archives, stated a second time.

    python3 calendar_text_model.py --self-check
"""

import datetime
import random
import re
import struct
import sys

sys.dont_write_bytecode = True  # leaves the source folder as it is
import format_rules
from calendar_model import (
    EMPTY, NOW, Date, DateTime, Fields, any_moment, clear, constructed_from_fields, copied, on, set_day,
    set_hour_of_day, set_minute, set_month, set_second, set_year)  # fmt: skip
from integer_rules import (
    EXTERN_VERSION, INCONSISTENT_DEFINEDNESS, INVALID_INITIAL_VALUE, Text, WRONG_VERSION, quoted)
from nullable_state import (
    BAD_EXTERN, BAD_HOUR, BAD_MONTH, BAD_YEAR, FRAMEWORK_EXCEPTION, after, all_or_nothing, demand, refused, replacing,
    set_process_default)  # fmt: skip

DATE_AND_TIME, DATE_ONLY, TIME_ONLY = range(3)
LONGEST_DATE = 10  # "TT.MM.JJJJ"
DEFAULT_FORMAT = format_rules.DateFormat(0, 0, 0, 0, 1, "0", format_rules.GERMAN)


def valid(condition):
    demand(condition, INVALID_INITIAL_VALUE)


def digits(text):
    return re.fullmatch("[0-9]+", text) is not None


# --- Reading texts ----------------------------------------------------------------------------


def second_separator(text, first):
    """Without a second point the search for "/" begins at the text's start again."""
    point = text.find(".", first + 1)
    return point if point >= 0 else text.find("/")


def read_date(x, text):
    """Year, month and day, each set before the next one is looked at."""
    valid(len(text) >= 6)
    first = text.find(".") if "." in text else text.find("/")
    valid(first in (1, 2))
    second = second_separator(text, first)
    valid(second >= 0 and second - first <= 3)
    behind = text[second + 1 :]
    year = behind
    if len(behind) >= 5:
        valid(" " in behind)
        year = behind[:2] if behind.index(" ") < 3 else behind[:4]
    valid(len(year) in (2, 4) and digits(year))
    if year == "0000":
        x.year = 0
        x.check_year()
    x.put_year(int(year))
    x.put_month(one_or_two_digits(text[first + 1 : first + 3]))
    x.put_day(one_or_two_digits(text[:2]))


def one_or_two_digits(text):
    number = text[:1] if text[1:] in (".", "/") else text
    valid(digits(number))
    return int(number)


def read_time(x, text):
    valid(len(text) >= 5 and text[2] == ":")
    valid(re.match("[ 0-9][0-9]", text))
    x.put_hour(int(text[:2]))
    valid(digits(text[3:5]))
    x.put_minute(int(text[3:5]))
    if len(text) == 8:
        valid(text[5] == ":" and digits(text[6:]))
        x.put_second(int(text[6:]))
    else:
        x.second = 0


def time_behind_date(text):
    """The part of a text that is read as its time of day; None stands for midnight."""
    first = text.find(".") if "." in text else text.find("/")
    blank = text.find(" ", second_separator(text, first))
    if 0 <= blank < LONGEST_DATE:
        start = text.find(":", blank) - 2
        if start >= 0 or len(text) > LONGEST_DATE + 1:
            valid(start >= blank and not text[blank:start].strip(" "))
            return text[start:]
    return text[LONGEST_DATE + 1 :] if len(text) > LONGEST_DATE + 1 else None


def read_date_time(x, text):
    read_date(x, text)
    time = time_behind_date(text)
    if time is None:
        x.wipe_time()
    else:
        read_time(x, time)


@replacing
def constructed_from_text(kind, text, form):
    valid(text is not None)
    x = kind(defined=1)
    if form == DATE_ONLY:
        read_date(x, text)
    elif form == TIME_ONLY:
        read_time(x, text)
    else:
        valid(len(text) >= 16)
        read_date(x, text)
        read_time(x, text[LONGEST_DATE + 1 :])
    return copied(x)


def constructed_from_text_value(kind, source, form):
    """Mode, definedness and flag are those of the text; an empty one stands for the empty value."""
    x = constructed_from_text(kind, source.content, form) if source.content else kind()
    x.mode, x.defined, x.modified = source.mode, int(source.content is not None), source.modified
    return x


def text_setter(read):
    """Marks defined before it reads. A failure leaves what was set so far, and no flag for it."""

    @replacing
    def set_from_text(x, text):
        valid(text is not None)
        flagged_after(x, lambda: read(x, text))

    return set_from_text


def flagged_after(x, change):
    before = x.fields
    x.mark()
    change()
    if x.fields != before:
        x.modified = 1


set_date = text_setter(read_date)
_set_date_time = text_setter(read_date_time)


def set_date_time(x, text):
    """No text at all means now."""
    if text is None:
        flagged_after(x, lambda: x.set_fields(NOW))
    else:
        _set_date_time(x, text)


@replacing
def set_time(x, text):
    """An undefined object gets the first day of its month."""
    valid(text is not None)
    before = x.fields
    if not x.defined:
        x.day = 1
        x.mark()
    read_time(x, text)
    if x.fields != before:
        x.modified = 1


# --- Writing texts ----------------------------------------------------------------------------


def written(x, number):
    date, clock = f"{x.day:02}.{x.month:02}.{x.year}", f"{x.hour:02}:{x.minute:02}"
    if number == 0:
        return f"'{date} {clock}'"
    if number == 1:
        return f"'{x.month:02}.{x.day:02}.{x.year} {clock}'"
    if number == 1100:
        return date.replace(".", "")
    return date if number == 1102 else f"{date} {clock}:{x.second:02}"


def sql(x, number):
    return quoted(written(x, number) if x.defined else "NULL")


def as_text_value(x):
    text = written(x, 1102)[:10] if x.is_date else written(x, 1101)[:19]
    return quoted(text) if x.defined else "undefined"


# --- SQL --------------------------------------------------------------------------------------

MONTHS = "Feb Mar Apr May Jun Jul Aug Sep Oct Nov Dec".split()
GERMAN_MONTHS = {"Mär": "Mar", "Mai": "May", "Okt": "Oct", "Dez": "Dec"}


def month_named(name):
    name = GERMAN_MONTHS.get(name, name)
    return MONTHS.index(name) + 2 if name in MONTHS else 1


def part_of_sql(text, start, length):
    part = text[start : start + length]
    valid(digits(part[1:] if part[0] == " " else part))
    return int(part)


def hour_of_sql(text):
    hour = part_of_sql(text, 12, 2)
    if text[17:] == "PM":
        return hour if hour == 12 else hour + 12
    return 0 if hour == 12 else hour


def read_sql(x, text):
    valid(len(text) >= 19)
    x.put_year(part_of_sql(text, 7, 4))
    x.put_month(month_named(text[:3]))
    x.put_day(part_of_sql(text, 4, 2))
    x.put_hour(hour_of_sql(text))
    x.put_minute(part_of_sql(text, 15, 2))
    x.second = 0


_set_from_sql = text_setter(read_sql)


def set_from_sql(x, text):
    if text == "NULL":
        clear(x)
    else:
        _set_from_sql(x, text)


# --- External text ----------------------------------------------------------------------------


def external(x):
    if x.year == x.month == x.day == 0:
        return f"T{x.hour:02}{x.minute:02}{x.second:02}"
    date = f"{x.day:02}{x.month:02}{x.year:4}"
    if x.hour == x.minute == x.second == 0:
        return f"D{date}"
    return f"C{date}{x.hour:02}{x.minute:02}{x.second:02}"


def shown_external(x):
    text = quoted(external(x)) if x.defined else "undefined"
    return f"{x.defined} {EXTERN_VERSION} {text}"


PATTERNS = {
    "C": "(?P<day>..)(?P<month>..)(?P<year>.{4})(?P<hour>..)(?P<minute>..)(?P<second>..)",
    "D": "(?P<day>..)(?P<month>..)(?P<year>.{4})",
    "T": "(?P<hour>..)(?P<minute>..)(?P<second>..)",
}


def fields_of_external(text):
    """A text that does not fill all fields of its form is none; what stands behind them does not matter."""
    match = re.match(PATTERNS.get(text[:1], "(?!)"), text[1:])
    demand(match, BAD_EXTERN)
    parts = match.groupdict()
    demand(all(re.fullmatch(" *[0-9]+", part) for part in parts.values()), BAD_EXTERN)
    return Fields(*(int(parts.get(name, 0)) for name in Fields._fields))


@replacing
def set_from_external(x, text, flag, version):
    demand(version == EXTERN_VERSION, WRONG_VERSION)
    if flag != 1 or text is None:
        return clear(x)
    x.mark()
    demand(text.content is not None, INCONSISTENT_DEFINEDNESS)
    fields = fields_of_external(text.content)
    flagged_after(x, lambda: x.put(fields))


# --- User-interface text, fields, archives, platform dates ------------------------------------


@replacing
def shown(x):
    return quoted(DEFAULT_FORMAT.write(*x.fields) if x.defined else "")


@replacing
def set_from_shown(x, text):
    """A date loses the time of day that was read only after the flag is decided."""
    if not text:
        return clear(x)
    x.take(Fields(*DEFAULT_FORMAT.read(text)))
    x.mark()
    if x.is_date:
        x.wipe_time()


@replacing
@all_or_nothing
def set_from_field(x, fields):
    """`fields` is None for a field that is null."""
    if fields is None:
        return clear(x)
    before = x.fields
    x.put(Fields(*fields))
    if x.fields != before:
        x.modified = 1
    x.mark()


def shown_field(x):
    return " ".join(map(str, x.fields)) if x.defined else "null"


def stored_bytes(x):
    date = (x.year - 1900, x.month - 1, x.day)
    numbers = date if x.is_date else (x.second, x.minute, x.hour) + date
    return struct.pack(f"<i{len(numbers)}i", x.defined, *numbers).hex()


@replacing
@all_or_nothing
def load(x, archive):
    """Not checked."""
    count = 3 if x.is_date else 6
    demand(len(archive) >= 4 * (1 + count), FRAMEWORK_EXCEPTION)
    defined, *numbers = struct.unpack(f"<i{count}i", archive[: 4 * (1 + count)])
    x.mark(defined)
    year, month, day = numbers[-3:]
    second, minute, hour = (x.second, x.minute, x.hour) if x.is_date else numbers[:3]
    x.take(Fields(year + 1900, month + 1, day, hour, minute, second))


def platform_date(x):
    if not x.defined:
        return "null"
    try:
        datetime.datetime(*x.fields)
    except ValueError:
        return "invalid"
    return "valid " + " ".join(map(str, x.fields))


def constructed_from_platform_date(kind, fields):
    """`fields` is None for one that is not valid."""
    return kind() if fields is None else constructed_from_fields(kind, fields)


def assign_platform_date(x, fields):
    """`fields` is None for one that is not valid."""
    if fields is None:
        return clear(x)
    if x.defined and x.fields != fields:
        x.modified = 1
    set_year(x, fields.year)
    set_month(x, fields.month)
    set_day(x, fields.day)
    set_hour_of_day(x, fields.hour)
    set_minute(x, fields.minute)
    set_second(x, fields.second)
    x.mark()


# --- Held against the standard library, and the rules' own examples ---------------------------

RANDOM = random.Random(20040305)


def parsed(text, form=DATE_AND_TIME):
    return tuple(constructed_from_text(DateTime, text, form).fields)


def check_texts():
    for _ in range(3_000):
        x = any_moment()
        moment = datetime.datetime(*x.fields)
        assert written(x, 1101) == moment.strftime("%d.%m.%Y %H:%M:%S")
        assert written(x, 0) == moment.strftime("'%d.%m.%Y %H:%M'")
        assert written(x, 1) == moment.strftime("'%m.%d.%Y %H:%M'")
        assert parsed(written(x, 1101)) == x.fields
        date = f"{x.day}.{x.month}.{x.year}"  # a full one has the time of day at a fixed place
        short = f"{date} {x.hour:02}:{x.minute:02}" if len(date) == 10 else f"{date} {x.hour}:{x.minute:02}"
        moment = datetime.datetime.strptime(short, "%d.%m.%Y %H:%M")
        assert after(set_date_time, DateTime(), short).fields == moment.timetuple()[:6], short
    assert parsed("1.2.2004", DATE_ONLY) == parsed("01.02/2004", DATE_ONLY) == (2004, 2, 1, 0, 0, 0)
    assert parsed(" 9:05", TIME_ONLY) == (1900, 1, 1, 9, 5, 0)
    assert parsed("01.02.2004 13:45:3") == (2004, 2, 1, 13, 45, 0)
    assert after(set_date_time, on(1999, 1, 1), "01.02.04 13:45").fields == (2004, 2, 1, 13, 45, 0)
    assert after(set_date_time, on(1999, 1, 1, 9), "01.02.2004").fields == (2004, 2, 1, 0, 0, 0)
    for text in ("01/02/2004", "01/02/2004 10:00", "1/2/04", "01.02.20041", "x.02.2004", "1.2.4", "001.2.2004"):
        assert refused(parsed, text, DATE_ONLY) == (1, INVALID_INITIAL_VALUE), text
    assert refused(parsed, "01.02.0000", DATE_ONLY) == (1, BAD_YEAR)
    assert refused(parsed, "01.13.2004", DATE_ONLY) == (1, BAD_MONTH)
    assert refused(parsed, "01.02.2004 3:45") == (1, INVALID_INITIAL_VALUE), "15 characters"
    x = on(1999, 1, 31)
    assert refused(set_date, x, "30.02.2004") == (1, 25) and x.fields[:3] == (2004, 2, 29) and not x.modified


def check_sql():
    for text, hour in (("Mär  5 2004 12:30AM", 0), ("Mar 05 2004 12:30PM", 12), ("Mar  5 2004 01:30PM", 13),
                       ("Mar  5 2004  1:30XX", 1), ("Mar  5 2004 12:30PM ", 0)):  # fmt: skip
        assert after(set_from_sql, on(1999, 1, 1), text).fields == (2004, 3, 5, hour, 30, 0), text
    assert after(set_from_sql, on(1999, 1, 1), "xyz  5 2004 12:30AM").month == 1
    assert refused(set_from_sql, on(1999, 1, 1), "Mar  5 2004 13:30PM") == (1, BAD_HOUR)
    for _ in range(2_000):
        x = any_moment()
        moment = datetime.datetime(*x.fields).replace(second=0)
        text = moment.strftime("%b %e %Y %I:%M%p")
        assert after(set_from_sql, on(1999, 1, 1), text).fields == moment.timetuple()[:6], text


def check_external_texts():
    assert external(on(2004, 3, 5)) == "D05032004" and external(on(2004, 3, 5, 14, 7, 9)) == "C05032004140709"
    for _ in range(2_000):
        x = any_moment()
        assert fields_of_external(external(x)) == x.fields
    for text in ("", "X05032004", "D050320", "D0503", "C05032004", "D0503-204", "Dxx032004", "C0503200414070"):
        assert refused(fields_of_external, text) == (BAD_EXTERN, 0), text
    x = on(1999, 3, 31)
    assert refused(set_from_external, x, Text(0, 0, "T140709"), 1, 100) == (1, BAD_MONTH)
    assert x.fields[:3] == (2000, 3, 31)
    x = on(1999, 3, 31)
    assert refused(set_from_external, x, Text(0, 0, "D05032004"), 1, 99) == (1, WRONG_VERSION) and x.year == 1999


def check_other_forms():
    for kind in (DateTime, Date):
        x = kind(Fields(2004, 3, 5, 14, 7, 9), defined=1)
        loaded = after(load, kind(), bytes.fromhex(stored_bytes(x)))
        assert loaded.fields == (Fields(2004, 3, 5, 0, 0, 0) if x.is_date else x.fields) and loaded.modified
        assert after(set_from_shown, kind(), "5.3.04").fields == (2004, 3, 5, 0, 0, 0)
    assert platform_date(on(2003, 12, 32)) == "invalid" and platform_date(DateTime()) == "null"
    assert after(clear, on(2004, 3, 5)).fields == EMPTY


if __name__ == "__main__":
    if sys.argv[1:] != ["--self-check"]:
        sys.exit("call: calendar_text_model.py --self-check")
    if not __debug__:
        sys.exit("python -O leaves the checks out")
    set_process_default(0)
    for check in (check_texts, check_sql, check_external_texts, check_other_forms):
        check()
