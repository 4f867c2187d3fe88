#!/usr/bin/env python3
"""The rules of NkDtDateTime and NkDtDateZp: fields, calendar arithmetic, differences, stated a second time.

The steps are followed as they are stated, also where they lead beside the calendar; where they do not, the checks
hold them against the calendar of the standard library. calendar_text_model.py reads and writes texts.

    python3 calendar_model.py --self-check
"""

import calendar
import datetime
import random
import sys
from typing import NamedTuple

sys.dont_write_bytecode = True  # leaves the source folder as it is
from duration_model import MINUTES, Duration, get_time, set_hour, set_min
from format_rules import CURRENT_YEAR
from integer_rules import DIFFERENT_CLASSES, OUT_OF_RANGE, RELATIONS
from nullable_state import (
    BAD_DAY, BAD_HOUR, BAD_MINUTE, BAD_MONTH, BAD_SECOND, BAD_YEAR, State, after, computable, cut_to, demand,
    demand_value, of_value, refused, replacing, set_process_default)  # fmt: skip

BEFORE = (0, 31, 59, 90, 120, 151, 181, 212, 243, 273, 304, 334, 365)  # days before each month of a common year
FIRST_YEAR, LAST_YEAR = 1753, 32767
MARCH = 2  # counted from 0
TODAY_AND_NOW = 32767  # as an hour


class Fields(NamedTuple):
    year: int
    month: int  # 1 to 12
    day: int
    hour: int
    minute: int
    second: int

    def __str__(self):
        return ":".join(str(field) for field in self)


EMPTY = Fields(1900, 1, 1, 0, 0, 0)
NOW = Fields(CURRENT_YEAR, 6, 15, 12, 0, 0)  # what the test's clock tells


def is_leap(year):
    return year % 4 == 0 and year % 100 != 0 or year % 400 == 0


def days_before(month):
    """`month` counts from 0; only an archive can bring one that the table does not have."""
    demand(0 <= month <= 11, BAD_MONTH)
    return BEFORE[month]


def length_of(month, year):
    """`month` counts from 1."""
    return -days_before(month - 1) + BEFORE[month] + (month == 2 and is_leap(year))


class DateTime(State):
    is_date = False

    def __init__(self, fields=EMPTY, defined=0, mode=3, modified=0):
        super().__init__(defined, mode, modified)
        self.set_fields(fields)

    def __str__(self):
        return f"{self.mode}:{self.defined}:{self.fields}:{self.modified}"

    @property
    def fields(self):
        return Fields(self.year, self.month, self.day, self.hour, self.minute, self.second)

    def set_fields(self, fields):
        self.year, self.month, self.day, self.hour, self.minute, self.second = fields

    def take(self, fields):
        """Differing fields raise the modified flag."""
        if self.fields != fields:
            self.modified = 1
        self.set_fields(fields)

    # The setters that check; all but that of the year leave their field as it was when they refuse.

    def put_year(self, year):
        if year <= 99:
            year += CURRENT_YEAR // 100 * 100
        demand(year <= LAST_YEAR, OUT_OF_RANGE)
        self.year = year
        self.check_year()
        if self.month == 2 and self.day > 28 and not is_leap(year):
            self.day = 28

    def check_year(self):
        demand(self.year >= FIRST_YEAR, BAD_YEAR)

    def put_month(self, month):
        demand(1 <= month <= 12, BAD_MONTH)
        self.month = month
        self.day = min(self.day, length_of(month, self.year))

    def put_day(self, day):
        demand(1 <= day <= length_of(self.month, self.year), BAD_DAY)
        self.day = day

    def put_hour(self, hour):
        demand(0 <= hour <= 23, BAD_HOUR)
        self.hour = hour

    def put_minute(self, minute):
        demand(0 <= minute <= 59, BAD_MINUTE)
        self.minute = minute

    def put_second(self, second):
        demand(0 <= second <= 59, BAD_SECOND)
        self.second = second

    def put(self, fields):
        self.put_year(fields.year)
        self.put_month(fields.month)
        self.put_day(fields.day)
        self.put_hour(fields.hour)
        self.put_minute(fields.minute)
        self.put_second(fields.second)

    def wipe_time(self):
        self.hour = self.minute = self.second = 0


class Date(DateTime):
    is_date = True


# --- Constructors: everything that fails is replaced ------------------------------------------


@replacing
def constructed_from_fields(kind, fields):
    x = kind(defined=1)
    x.put(fields)
    if kind.is_date:
        x.wipe_time()
    return x


@replacing
def constructed_from_clock(hour, minute):
    x = DateTime(defined=1)
    if hour == TODAY_AND_NOW:
        x.set_fields(NOW)
    else:
        x.put_hour(hour)
        x.put_minute(minute)
    return x


def constructed_in_mode(kind, mode):
    """Only mode 2 itself means now, not the default that it stands for; a date keeps the time of day then."""
    return kind(NOW if mode == 2 else EMPTY, mode=mode)


def constructed_from_broken_down(kind, fields):
    """Years from 1000 on are written out, others count from 1900; months count from 0."""
    year = fields.year if fields.year >= 1000 else fields.year + 1900
    return constructed_from_fields(kind, fields._replace(year=year, month=fields.month + 1))


def copied(x):
    x = x.duplicate()
    if x.is_date:
        x.wipe_time()
    return x


# --- Fields -----------------------------------------------------------------------------------


@of_value
def read_field(x, name):
    """The date of a null reads as 0, its time of day as stored."""
    if x.null and name in ("year", "month", "day"):
        return 0
    return getattr(x, name)


def raise_flag_unless(x, same):
    if not same:
        x.modified = 1


@of_value
@replacing
def set_day(x, day):
    raise_flag_unless(x, x.day == day)
    x.put_day(day)
    x.mark()


@of_value
@replacing
def set_month(x, month):
    raise_flag_unless(x, x.month == month)
    x.put_month(month)
    x.mark()


@replacing
def set_year(x, year):
    raise_flag_unless(x, x.year == year)
    x.put_year(year)
    x.mark()


def time_setter(name, put):
    @replacing
    def set_field(x, number):
        """Marks defined before anything else; the hour 24 is the hour 0 of the same date."""
        x.mark()
        number = 0 if name == "hour" and number == 24 else number
        raise_flag_unless(x, getattr(x, name) == number)
        put(x, number)

    return set_field


set_hour_of_day = time_setter("hour", DateTime.put_hour)
set_minute = time_setter("minute", DateTime.put_minute)
set_second = time_setter("second", DateTime.put_second)


# --- Days -------------------------------------------------------------------------------------


@of_value
@replacing
def add_day(x, count):
    subtract_days(x, -count) if count < 0 else add_days(x, count)


@of_value
@replacing
def sub_day(x, count):
    add_days(x, -count) if count < 0 else subtract_days(x, count)


def move_to(x, fields):
    before = x.fields
    x.set_fields(fields)
    x.mark()
    x.check_year()
    raise_flag_unless(x, x.fields == before)


def add_days(x, count):
    year, month = x.year, x.month - 1
    rest = days_before(month) + x.day + count
    leap = int(is_leap(year))
    if leap and month >= MARCH:
        rest += 1
    while rest > 365 + leap:
        rest -= 365 + leap
        year += 1
        leap = int(is_leap(year))
    demand(year <= LAST_YEAR, OUT_OF_RANGE)
    month = 1
    while BEFORE[month] + (leap and month >= 2) < rest and month < 13:
        month += 1
    month -= 1
    day = rest - BEFORE[month] - (leap and month >= 2)
    move_to(x, x.fields._replace(year=year, month=month + 1, day=day))


def subtract_days(x, count):
    """The leap days of all years that are crossed follow the month of the starting date."""
    year, start = x.year, x.month - 1
    rest = days_before(start) + x.day - count
    leap = int(is_leap(year))
    if leap and start >= MARCH and rest > 0:
        rest += 1
    while rest <= 0:
        rest += 365
        if start >= MARCH:
            rest += leap
        year -= 1
        leap = int(is_leap(year))
        if leap and start < MARCH:
            rest += 1
    month = 11
    more = int(leap and month >= 2)
    while BEFORE[month] + more >= rest and month > 0:
        month -= 1
        if month < 2:
            more = 0
    day = rest - BEFORE[month] - more
    move_to(x, x.fields._replace(year=year, month=month + 1, day=day))


# --- Months and years -------------------------------------------------------------------------


@of_value
@replacing
def add_month(x, count):
    subtract_months(x, -count) if count < 0 else add_months(x, count)


@of_value
@replacing
def sub_month(x, count):
    add_months(x, -count) if count < 0 else subtract_months(x, count)


def add_months(x, count):
    """December of a later year is month 0 of the one after, which is refused when the year has moved already."""
    before = x.fields
    month = count + x.month
    try:
        if month > 12:
            x.put_year(x.year + month // 12)
            month %= 12
        x.mark()
        x.put_month(month)
    finally:
        raise_flag_unless(x, x.fields == before)


def subtract_months(x, count):
    month = x.month - count
    while month < 1:
        x.year -= 1
        month += 12
        x.modified = 1
    x.check_year()
    raise_flag_unless(x, x.month == month)
    x.put_month(month)
    x.mark()


@of_value
@replacing
def add_year(x, count):
    demand(x.year + count <= LAST_YEAR, OUT_OF_RANGE)
    set_year(x, x.year + count)


@of_value
@replacing
def sub_year(x, count):
    demand(x.year - count <= LAST_YEAR, OUT_OF_RANGE)
    set_year(x, x.year - count)


# --- Hours and minutes ------------------------------------------------------------------------


def move_hours(x, count):
    """The days that an hour carries are cut to 16 bits."""
    hour = x.hour + count
    if count >= 0 and hour > 23:
        add_day(x, cut_to(16, hour // 24))
        hour %= 24
    elif count < 0 and hour < 0:
        sub_day(x, cut_to(16, -(hour // 24)))
        hour %= 24
    raise_flag_unless(x, x.hour == hour)
    x.hour = hour
    x.mark()


def move_minutes(x, count):
    minute = x.minute + count
    if count >= 0 and minute > 59 or count < 0 and minute < 0:
        move_hours(x, minute // 60)
        minute %= 60
    raise_flag_unless(x, x.minute == minute)
    x.minute = minute
    x.mark()


@of_value
@replacing
def add_hour(x, count):
    move_hours(x, count)


@of_value
@replacing
def sub_hour(x, count):
    move_hours(x, -count)


@of_value
@replacing
def add_min(x, count):
    move_minutes(x, count)


@of_value
@replacing
def sub_min(x, count):
    move_minutes(x, -count)


def moved(x, duration, move):
    """A copy, with mode and flag; that of a date loses the time of day again."""
    if not computable(x, duration):
        return type(x)()
    result = x.duplicate()
    move(result, get_time(duration, MINUTES))
    if x.is_date:
        result.wipe_time()
    return result


# --- Differences and comparisons --------------------------------------------------------------


def leap_years(start, end, step):
    """Beyond `start` in steps of one up to the first leap year, then in steps of four; `end` itself and the year
    just before it are never looked at."""
    year, count = start + step, 0
    while not is_leap(year) and (end - step - year) * step > 0:
        year += step
    while (end - step - year) * step > 0:
        count += is_leap(year)
        year += 4 * step
    return count * step


def difference(x, y):
    result = Duration()
    if not computable(x, y):
        return result
    minute = x.minute - y.minute - (x.second < y.second)
    hour = x.hour - y.hour - (minute < 0)
    minute %= 60
    days = days_before(x.month - 1) + x.day - days_before(y.month - 1) - y.day
    years = leaps = 0
    if days >= 0 and x.year > y.year:
        days += (is_leap(x.year) and x.month > 3) + (is_leap(y.year) and y.month <= 3)
        years, leaps = x.year - y.year, leap_years(y.year, x.year, 1)
    elif days <= 0 and x.year < y.year:
        days -= (is_leap(x.year) and x.month <= 3) + (is_leap(y.year) and y.month > 3)
        years, leaps = x.year - y.year, leap_years(y.year, x.year, -1)
    set_hour(result, (years * 365 + leaps + days) * 24 + hour)
    set_min(result, minute, MINUTES)
    return result


def compared(relation, x, y):
    demand_value(x, y)
    return int(relation(x.fields, y.fields))


COMPARISON = {f"x{sign}y": lambda x, y, r=relation: compared(r, x, y) for sign, relation in RELATIONS.items()}


# --- Objects ----------------------------------------------------------------------------------


def clear(x):
    x.take(EMPTY)
    x.clear_base()


def assign(x, y):
    x.take(y.fields)
    x.assign_base(y)


def assign_checked(x, y):
    """A date is taken by a date-time, but not the other way round."""
    demand(y.is_date or not x.is_date, DIFFERENT_CLASSES)
    assign(x, y)


# --- Held against the calendar of the standard library ----------------------------------------

RANDOM = random.Random(17530101)


def on(year, month, day, hour=0, minute=0, second=0):
    return DateTime(Fields(year, month, day, hour, minute, second), defined=1)


def as_datetime(x):
    return datetime.datetime(*x.fields)


def any_moment(first=1753, last=9900):
    span = datetime.datetime(last, 12, 31, 23, 59, 59) - datetime.datetime(first, 1, 1)
    moment = datetime.datetime(first, 1, 1) + datetime.timedelta(seconds=RANDOM.randrange(int(span.total_seconds())))
    return on(moment.year, moment.month, moment.day, moment.hour, moment.minute, moment.second)


def check_fields():
    for year in range(1753, 3000):
        assert is_leap(year) == calendar.isleap(year)
        assert all(length_of(month, year) == calendar.monthrange(year, month)[1] for month in range(1, 13))
    assert after(set_month, on(2004, 1, 31), 2).fields[:3] == (2004, 2, 29)
    assert refused(constructed_from_fields, DateTime, Fields(1900, 2, 29, 0, 0, 0)) == (1, BAD_DAY)
    assert constructed_from_broken_down(DateTime, Fields(999, 0, 1, 0, 0, 0)).year == 2899


def check_days():
    for _ in range(5_000):
        x, count = any_moment(), RANDOM.choice((RANDOM.randrange(32768), RANDOM.randrange(800)))
        assert as_datetime(after(add_day, x, count)) == as_datetime(x) + datetime.timedelta(count)
        check_subtraction(x, count)
    for first, last in ((1753, 1761), (1896, 1905), (1996, 2009), (2096, 2105), (2396, 2401)):
        day = on(first, 1, 1)
        for _ in range((datetime.date(last, 1, 1) - datetime.date(first, 1, 1)).days):
            before = day.fields
            add_day(day, 1)
            assert after(sub_day, day, 1).fields == before
        assert day.fields[:3] == (last, 1, 1)


def check_subtraction(x, count):
    """From March on, a leap year that is entered counts one day too few, and its 1 January ends as 32 December."""
    wanted = as_datetime(x) - datetime.timedelta(count)
    if wanted.year < 1753:
        assert refused(sub_day, x.duplicate(), count) == (1, BAD_YEAR)
        return
    got = after(sub_day, x, count).fields
    from_march = x.month > 2
    if from_march and is_leap(wanted.year) and (wanted.month, wanted.day) == (1, 1):
        if wanted.year > 1753:
            assert got[:3] == (wanted.year - 1, 12, 32), (x, count, got)
        return
    if from_march and is_leap(wanted.year) and wanted.year != x.year:
        wanted -= datetime.timedelta(1)
    assert datetime.datetime(*got) == wanted, (x, count, got)


def check_months():
    for _ in range(5_000):
        x, count = any_moment(), RANDOM.randrange(-600, 600)
        months = x.year * 12 + x.month - 1 + count
        year, month = divmod(months, 12)
        if count > 0 and month == 11 and year > x.year:
            assert refused(add_month, x.duplicate(), count) == (1, BAD_MONTH)
            continue
        if year >= 1753:
            day = min(x.day, calendar.monthrange(year, month + 1)[1])
            if x.month == 2 and x.day == 29 and count > 10:  # the year setter has cut the day in between
                day = min(day, 29 if is_leap(x.year + (x.month + count) // 12) else 28)
            assert after(add_month, x, count).fields[:3] == (year, month + 1, day), (x, count)
            assert after(sub_month, x, -count).fields[:3] == (year, month + 1, day), (x, count)
    x = on(2004, 11, 15)
    assert refused(add_month, x, 13) == (1, BAD_MONTH) and x.fields[:3] == (2006, 11, 15) and x.modified
    assert after(sub_year, on(2004, 1, 1), 1950).year == 2054 and after(sub_year, on(2004, 1, 1), 2010).year == 1994
    assert after(add_year, on(2004, 2, 29), 1).fields[:3] == (2005, 2, 28)


def check_hours():
    for _ in range(5_000):
        x, count = any_moment(1900), RANDOM.choice((RANDOM.randrange(700_000), RANDOM.randrange(100)))
        assert as_datetime(after(add_hour, x, count)) == as_datetime(x) + datetime.timedelta(hours=count)
        assert as_datetime(after(add_min, x, count)) == as_datetime(x) + datetime.timedelta(minutes=count)
        if x.month <= 2:
            assert as_datetime(after(sub_hour, x, count)) == as_datetime(x) - datetime.timedelta(hours=count)
            assert as_datetime(after(add_min, x, -count)) == as_datetime(x) - datetime.timedelta(minutes=count)
    assert after(add_hour, on(2004, 3, 5), 24 * 65536).fields[:3] == (2004, 3, 5)
    backwards = datetime.datetime(2004, 1, 5) - datetime.timedelta(65536 - 40000)
    assert as_datetime(after(add_hour, on(2004, 1, 5), 24 * 40000)) == backwards


def check_differences():
    for _ in range(8_000):
        first, last = RANDOM.choice(((1897, 1903), (2001, 2003), (2097, 2103), (1753, 1755)))
        x, y = any_moment(first, last), any_moment(first, last)  # no leap year among them
        earlier, later = sorted((x, y), key=lambda moment: moment.year)
        if earlier.year < later.year and earlier.fields[1:3] > later.fields[1:3]:
            continue  # whole years are not counted
        exact = (as_datetime(x) - as_datetime(y)).total_seconds() // 60
        assert difference(x, y).ticks == exact * 20, (x, y)
    assert difference(on(2005, 6, 1), on(2003, 6, 1)).ticks == 17520 * 1200
    assert difference(on(2004, 3, 10), on(2004, 2, 10)).ticks == 672 * 1200
    assert difference(on(2005, 1, 10), on(2004, 6, 1)).ticks == -3408 * 1200
    # March counts as a month before the leap day.
    for y, x, days in ((2004, 2005, 366), (2003, 2004, 365)):
        assert difference(on(x, 3, 10), on(y, 3, 10)).ticks == days * 24 * 1200
        assert difference(on(y, 3, 10), on(x, 3, 10)).ticks == -days * 24 * 1200
    assert refused(difference, on(2399, 1, 1), on(1753, 1, 1)) == (1, OUT_OF_RANGE)


if __name__ == "__main__":
    if sys.argv[1:] != ["--self-check"]:
        sys.exit("call: calendar_model.py --self-check")
    if not __debug__:
        sys.exit("python -O leaves the checks out")
    set_process_default(0)
    for check in (check_fields, check_days, check_months, check_hours, check_differences):
        check()
