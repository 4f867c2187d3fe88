#!/usr/bin/env python3
"""The rules of the class NkDtTime, a signed length of time in ticks of 1/1200 hour, stated a second time.

    python3 duration_model.py --self-check
"""

import re
import struct
import sys

sys.dont_write_bytecode = True  # leaves the source folder as it is
import format_rules
from integer_rules import (
    EXTERN_VERSION, INCONSISTENT_DEFINEDNESS, INT_MAX, INT_MIN, INVALID_INITIAL_VALUE, OUT_OF_RANGE, RELATIONS,
    WRONG_VERSION, quoted)  # fmt: skip
from nullable_state import (
    BAD_EXTERN, BAD_TIME_MODE, BUFFER_TOO_SMALL, DIFFERENT_FORMAT, FRAMEWORK_EXCEPTION, State, UNKNOWN_OPTION,
    all_or_nothing, computable, cut_to, demand, demand_value, of_value, quotient, refused, remainder, replacing,
    set_process_default)  # fmt: skip

HOUR = 1200  # ticks
HUNDREDTHS, MINUTES, HOURS_ONLY, CURRENT_MODE = range(4)
UNIT = {HUNDREDTHS: 12, MINUTES: 20}  # ticks
STEPS = (300, 600, 1200)  # quarter hour, half hour, full hour
MOST_HOURS = 1789568  # of a text
SEPARATOR = {HUNDREDTHS: ",", MINUTES: ":"}

FORMATS = {
    "minutes": format_rules.TimeFormat(0, 3, 1, 0, 7, 0, "0"),
    "hundredths": format_rules.TimeFormat(0, 2, 1, 0, 7, 0, "0"),
    "seconds": format_rules.TimeFormat(0, 0, 1, 0, 7, 2, "0"),
    "hours": format_rules.TimeFormat(0, 1, 2, 1, 7, 0, "0"),
}


class Duration(State):
    def __init__(self, ticks=0, time_mode=MINUTES, defined=0, mode=3, modified=0):
        super().__init__(defined, mode, modified)
        self.ticks, self.time_mode = ticks, time_mode

    def __str__(self):
        return f"{self.mode}:{self.defined}:{self.ticks}:{self.time_mode}:{self.modified}"

    def store(self, ticks):
        """A differing length raises the modified flag."""
        if self.ticks != ticks:
            self.ticks, self.modified = ticks, 1

    def mode_of(self, time_mode):
        return self.time_mode if time_mode == CURRENT_MODE else time_mode

    def hours(self):
        return quotient(self.ticks, HOUR)

    def part(self, time_mode):
        """What is below the hour, with the sign of the whole."""
        if time_mode == HOURS_ONLY:
            return 0
        return quotient(remainder(self.ticks, HOUR), UNIT[time_mode])

    def whole(self, time_mode):
        if time_mode == HOURS_ONLY:
            return self.hours() * 60
        return quotient(self.ticks, UNIT[time_mode])


def in_range(ticks):
    demand(INT_MIN <= ticks <= INT_MAX, OUT_OF_RANGE)
    return ticks


def built(hours, part, time_mode):
    return in_range(hours * HOUR + part * UNIT.get(time_mode, 0))


def check_mode(time_mode):
    demand(HUNDREDTHS <= time_mode <= CURRENT_MODE, BAD_TIME_MODE)


# --- Texts ------------------------------------------------------------------------------------


def written(x, time_mode=CURRENT_MODE):
    time_mode = x.mode_of(time_mode)
    hours, part = x.hours(), x.part(time_mode)
    sign = "-" if hours < 0 or part < 0 else ""
    text = f"{sign}{abs(hours):02}"
    return text if time_mode == HOURS_ONLY else f"{text}{SEPARATOR[time_mode]}{abs(part):02}"


def number_in(text, pattern):
    demand(re.fullmatch(pattern, text, re.ASCII), INVALID_INITIAL_VALUE)
    return int(text)


def read(text, time_mode):
    """The ticks and the mode that the text was read in."""
    part = 0
    if "," not in text and ":" not in text:
        hours = number_in(text, r"[-+]?\d+")
        time_mode = HOURS_ONLY if time_mode == CURRENT_MODE else time_mode
    else:
        demand(len(text) >= 4, DIFFERENT_FORMAT)
        separator = text[-3]
        if time_mode == CURRENT_MODE:
            demand(separator in ":,", DIFFERENT_FORMAT)
            time_mode = MINUTES if separator == ":" else HUNDREDTHS
        demand(time_mode == HOURS_ONLY or separator == SEPARATOR[time_mode], DIFFERENT_FORMAT)
        part = number_in(text[-2:], r"\d\d")
        demand(time_mode != MINUTES or part < 60, OUT_OF_RANGE)
        hours = number_in(text[:-3], r"[-+]?\d+")
    demand(abs(hours) <= MOST_HOURS, OUT_OF_RANGE)
    return built(hours, -part if text.startswith("-") else part, time_mode), time_mode


# --- Constructors: everything that fails is replaced ------------------------------------------


def constructed_mode(time_mode):
    check_mode(time_mode)
    return MINUTES if time_mode == CURRENT_MODE else time_mode


@replacing
def constructed_from_parts(hours, part, time_mode):
    time_mode = constructed_mode(time_mode)
    return Duration(built(hours, part, time_mode), time_mode, defined=1)


@replacing
def constructed_from_text(text, time_mode):
    stored_mode = constructed_mode(time_mode)
    demand(text is not None, INVALID_INITIAL_VALUE)
    return Duration(read(text, time_mode)[0], stored_mode, defined=1)


@replacing
def constructed_from_text_value(source, time_mode):
    x = Duration() if source.content is None else constructed_from_text(source.content, time_mode)
    x.mode, x.defined, x.modified = source.mode, int(source.content is not None), source.modified
    return x


# --- Reading ----------------------------------------------------------------------------------


@of_value
def get_hour(x):
    return x.hours()


@of_value
def get_min(x, time_mode):
    check_mode(time_mode)
    return x.part(x.mode_of(time_mode))


@of_value
def get_time(x, time_mode):
    check_mode(time_mode)
    return x.whole(x.mode_of(time_mode))


@of_value
@replacing
def get_value(x, size):
    text = written(x)
    demand(size > len(text), BUFFER_TOO_SMALL)
    return quoted(text)


def compared(relation, x, y):
    demand_value(x, y)
    return int(relation(x.ticks, y.ticks))


COMPARISON = {f"x{sign}y": lambda x, y, r=relation: compared(r, x, y) for sign, relation in RELATIONS.items()}


# --- Setting ----------------------------------------------------------------------------------


def become(x, ticks, time_mode=CURRENT_MODE):
    """An undefined object takes the mode that is given, a defined one keeps its own."""
    if not x.defined:
        x.time_mode = x.mode_of(time_mode)
    x.mark()
    x.store(ticks)


@replacing
def set_value(x, text, time_mode):
    check_mode(time_mode)
    demand(text is not None, INVALID_INITIAL_VALUE)
    ticks, x_mode = read(text, time_mode)
    x.mark()
    x.store(ticks)
    x.time_mode = x_mode


@replacing
def set_hour(x, hours):
    become(x, built(hours, x.part(x.time_mode), x.time_mode))


def set_min(x, part, time_mode):
    check_mode(time_mode)
    replacing(lambda: become(x, built(x.hours(), part, x.mode_of(time_mode)), time_mode))()


def set_time(x, length, time_mode):
    check_mode(time_mode)
    taken = x.mode_of(time_mode)
    ticks = quotient(length, 60) * HOUR if taken == HOURS_ONLY else length * UNIT[taken]
    replacing(lambda: become(x, in_range(ticks), time_mode))()


@of_value
def move_parts(x, count, time_mode):
    """Not tested for the range: 32 bits turn over."""
    check_mode(time_mode)
    x.mark()
    if count:
        x.ticks = cut_to(32, x.ticks + count * (20 if x.mode_of(time_mode) == MINUTES else 12))
        x.modified = 1


@of_value
@replacing
def move_hours(x, count):
    x.mark()
    if count:
        x.ticks = built(x.hours() + count, x.part(x.time_mode), x.time_mode)
        x.modified = 1


def set_mode(x, time_mode):
    check_mode(time_mode)
    time_mode = x.mode_of(time_mode)
    if x.time_mode != time_mode:
        x.time_mode, x.modified = time_mode, 1


def reset(x, time_mode):
    set_mode(x, time_mode)
    x.store(0)
    x.mark()


def rounded(x, kind):
    """Away from zero, never to the nearest."""
    demand(0 <= kind < len(STEPS), UNKNOWN_OPTION)
    if not x.defined:
        return
    step = STEPS[kind]
    rest = remainder(x.ticks, step)
    if rest:
        x.store(in_range(x.ticks + step - rest if x.ticks > 0 else x.ticks - (rest + step)))


def clear(x):
    x.store(0)
    if x.time_mode != MINUTES:
        x.time_mode, x.modified = MINUTES, 1
    x.clear_base()


def assign(x, y):
    x.store(y.ticks)
    if x.time_mode != y.time_mode:
        x.time_mode, x.modified = y.time_mode, 1
    x.assign_base(y)


# --- Arithmetic -------------------------------------------------------------------------------


def combined(x, y, sign):
    if not computable(x, y):
        return Duration()
    return Duration(in_range(x.ticks + sign * y.ticks), x.time_mode, defined=1)


def accumulate(x, y, sign):
    """What cannot be computed leaves an undefined 0."""
    if not computable(x, y):
        x.store(0)
        x.mark(0)
        return
    ticks = in_range(x.ticks + sign * y.ticks)
    x.mark()
    x.store(ticks)


# --- Conversions ------------------------------------------------------------------------------


@replacing
def shown(x, name=None):
    if not x.defined:
        return quoted("")
    form = FORMATS[name or ("hundredths" if x.time_mode == HUNDREDTHS else "minutes")]
    return quoted(form.write(x.hours(), x.part(HUNDREDTHS if form.display == 2 else MINUTES)))


@replacing
def set_from_shown(x, text, name=None):
    if not text:
        return clear(x)
    form = FORMATS[name or ("hundredths" if "," in text else "minutes")]
    hours, part = form.read(text)
    ticks = built(hours, part, HUNDREDTHS if form.display == 2 else MINUTES)
    x.store(ticks)
    x.mark()


def sql(x):
    return quoted(str(x.ticks) if x.defined else "NULL")


def set_ticks(x, ticks):
    """From SQL and from a field; None is a field that is null."""
    if ticks is None:
        return clear(x)
    x.store(ticks)
    x.mark()


def external(x):
    """Written as if days had 24 hours, months 30 days and years 12 months."""
    hours, minutes = abs(x.hours()), abs(x.part(MINUTES))
    sign = "-" if x.ticks <= -HOUR else ""
    days, hour = divmod(hours, 24)
    months, day = divmod(days, 30)
    year, month = divmod(months, 12)
    if day == month == year == 0:
        return f"T{sign}{hour:02}{minutes:02}00"
    if hour == minutes == 0:
        return f"D{sign}{day:02}{month:02}{year:04}"
    return f"C{sign}{day:02}{month:02}{year:04}{hour:02}{minutes:02}00"


FORMS = {"C": "day month year hour minute", "D": "day month year", "T": "hour minute"}
HOURS_OF = {"year": 8640, "month": 720, "day": 24, "hour": 1}


def ticks_of_external(text):
    """Parts that the text lacks are 0, the seconds count for nothing."""
    demand(text[:1] in FORMS and text, BAD_EXTERN)
    sign = -1 if text[1:2] == "-" else 1
    digits = text[2:] if sign < 0 else text[1:]
    hours = minutes = 0
    for name in FORMS[text[0]].split():
        width = 4 if name == "year" else 2
        part, digits = int(digits[:width] or 0), digits[width:]
        hours += HOURS_OF.get(name, 0) * part
        minutes += part if name == "minute" else 0
    return built(hours * sign, minutes * sign, MINUTES)


@replacing
def set_from_external(x, text, flag, version):
    demand(version == EXTERN_VERSION, WRONG_VERSION)
    if flag != 1 or text is None:
        return clear(x)
    x.mark()
    demand(text.content is not None, INCONSISTENT_DEFINEDNESS)
    ticks = ticks_of_external(text.content)
    x.store(ticks)
    x.time_mode = MINUTES


def shown_external(x):
    text = quoted(external(x)) if x.defined else "undefined"
    return f"{x.defined} {EXTERN_VERSION} {text}"


def stored_bytes(x):
    return struct.pack("<ii", x.defined, x.ticks).hex()


@replacing
@all_or_nothing
def load(x, archive):
    demand(len(archive) >= 8, FRAMEWORK_EXCEPTION)
    defined, ticks = struct.unpack("<ii", archive[:8])
    x.mark(defined)
    x.store(ticks)


# --- The rules' own examples ------------------------------------------------------------------


def minutes(count, **state):
    return Duration(count * 20, defined=1, **state)


def check_texts():
    for ticks, texts in ((1800, ("01,50", "01:30", "01")), (-1800, ("-01,50", "-01:30", "-01")),
                         (-600, ("-00,50", "-00:30", "00")), (147600, ("123,00", "123:00", "123")),
                         (-3, ("00,00", "00:00", "00"))):  # fmt: skip
        x = Duration(ticks, defined=1)
        assert tuple(written(x, mode) for mode in range(3)) == texts, ticks
    assert read("-0:30", MINUTES) == (-600, MINUTES) and read("1,50", CURRENT_MODE) == (1800, HUNDREDTHS)
    assert read("8", CURRENT_MODE) == (9600, HOURS_ONLY) and read("8", MINUTES) == (9600, MINUTES)
    for text, mode, error in (("", 1, 5), ("1:60", 1, 8), ("1:30", 0, 21), ("1,5", 1, 21), (":30", 1, 21),
                              ("-:30", 1, 5), ("1789569:00", 1, 8), (" 1:30", 1, 5), ("1:-5", 1, 5),
                              ("x", 3, 5)):  # fmt: skip
        assert refused(read, text, mode) == (error, 0), text
        assert refused(constructed_from_text, text, mode) == (1, error), text
    for ticks in range(-100 * HOUR, 100 * HOUR, 20):
        assert read(written(Duration(ticks, defined=1)), CURRENT_MODE) == (ticks, MINUTES)


def check_arithmetic():
    x = constructed_from_parts(1, 30, MINUTES)
    assert (x.ticks, get_time(x, MINUTES), get_time(x, HUNDREDTHS), get_time(x, HOURS_ONLY)) == (1800, 90, 150, 60)
    assert get_min(x, HUNDREDTHS) == 50
    for count in range(-3000, 3000):
        for kind, step in enumerate((15, 30, 60)):
            x = minutes(count)
            rounded(x, kind)
            nearest_beyond = -(-abs(count) // step) * step
            assert x.ticks == 20 * (nearest_beyond if count > 0 else -nearest_beyond), (count, step)
    assert refused(combined, Duration(INT_MAX, defined=1), Duration(1, defined=1), 1) == (8, 0)
    x = Duration(INT_MAX, defined=1)
    move_parts(x, 1, MINUTES)
    assert x.ticks == INT_MIN + 19
    x = Duration(-1800, defined=1)
    set_hour(x, 2)
    assert x.ticks == 1800, "the minutes keep their sign"


def check_external_texts():
    for count, text in ((330, "T053000"), (1530, "C01000000013000"), (-330, "T-053000"), (-30, "T003000"),
                        (0, "T000000"), (1440, "D01000000"), (-43200, "D-00010000"),
                        (518400 + 61, "C00000001010100")):  # fmt: skip
        assert external(minutes(count)) == text, (count, external(minutes(count)))
    for count in range(-200_000, 200_000, 37):
        x = minutes(count)
        assert ticks_of_external(external(x)) == (x.ticks if abs(count) >= 60 else abs(x.ticks))
    assert ticks_of_external("T-003000") == -600
    assert refused(ticks_of_external, "X053000") == refused(ticks_of_external, "") == (BAD_EXTERN, 0)


if __name__ == "__main__":
    if sys.argv[1:] != ["--self-check"]:
        sys.exit("call: duration_model.py --self-check")
    if not __debug__:
        sys.exit("python -O leaves the checks out")
    set_process_default(0)
    for check in (check_texts, check_arithmetic, check_external_texts):
        check()
