"""What NkFormat demands of each kind of format, stated a second time.

The library walks through a text character by character; here every format is turned into one
regular expression and computes with decimals and calendar dates of the standard library, so that
the two have nothing in common but the rules. Text is one character a byte of code page 1252.
"""

import datetime
import re
from decimal import ROUND_HALF_UP, Context, Decimal
from typing import NamedTuple

BAD_SETTING, BAD_TEXT, BAD_VALUE = 1, 3, 4
UNLIMITED = 2147483647
LONG_MIN, LONG_MAX = -(2**31), 2**31 - 1
SHORT_MIN, SHORT_MAX = -(2**15), 2**15 - 1
VALID_ALL = 0xFFFFFFFF
GERMAN, ENGLISH = 1031, 1033
CURRENT_YEAR = 2023  # what the test's clock tells; no leap year

EXACT = Context(prec=2500)


class Refused(Exception):
    """A constructor, value or text that is refused, with the number of the error."""

    def __init__(self, number):
        super().__init__(number)
        self.number = number


def demand(condition, number):
    if not condition:
        raise Refused(number)


def one_of(number, count):
    demand(0 <= number < count, BAD_SETTING)
    return number


def check_fill(fill, used, separators=""):
    if not used and fill in " \0":
        return
    demand(fill not in "123456789+-\0" + separators, BAD_SETTING)


def upper(text):
    """Upper case of the ASCII letters and the umlauts."""
    return re.sub("[a-zäöü]", lambda match: match[0].upper(), text)


def match(pattern, text):
    found = re.fullmatch(pattern, text, re.DOTALL)
    demand(found, BAD_TEXT)
    return found.groupdict()


class Sign(NamedTuple):
    """Where signs stand (0 nowhere, 1 in front, 2 behind) and which (0 only "-", 1 both)."""

    place: int
    both: int

    def check(self):
        one_of(self.place, 3)
        one_of(self.both, 2)

    def shown(self, negative, zero):
        if zero or not self.place:
            return ""
        return "-" if negative else "+" if self.both else ""

    def patterns(self):
        """The patterns in front and behind."""
        signs = "(?P<sign>[-+]?)" if self.both else "(?P<sign>-?)"
        return (signs if self.place == 1 else ""), (signs if self.place == 2 else "")


def padding(fill, fewest, name):
    """The pattern of fill characters other than zeros."""
    return f"(?P<{name}>{re.escape(fill)}*)" if fewest and fill != "0" else f"(?P<{name}>)"


class NumberFormat:
    def __init__(self, most, most_places, decimal, thousands, place, both, fewest, fill, fewest_places, fill_places):
        self.decimal = ".,'"[decimal] if one_of(decimal, 4) < 3 else ""
        self.thousands = ["", ".", ",", " ", "'"][one_of(thousands, 5)]
        demand(not self.decimal or self.decimal != self.thousands, BAD_SETTING)
        self.sign = Sign(place, both)
        self.sign.check()
        self.most = most
        self.most_places = most_places if self.decimal else 0
        demand(0 <= fewest <= self.most, BAD_SETTING)
        demand(0 <= fewest_places <= self.most_places, BAD_SETTING)
        separators = self.decimal + self.thousands
        check_fill(fill, fewest > 0, separators)
        check_fill(fill_places, fewest_places > 0, separators)
        self.fewest, self.fill = fewest, fill
        self.fewest_places, self.fill_places = fewest_places, fill_places
        self.pattern = self.build_pattern()

    def build_pattern(self):
        group = re.escape(self.thousands)
        whole = "[0-9]+" + (f"|[0-9]{{1,3}}(?:{group}[0-9]{{3}})+" if group else "")
        places = f"(?:{re.escape(self.decimal)}(?P<places>[0-9]+))?" if self.decimal else "(?P<places>(?!))?"
        front, behind = self.sign.patterns()
        fill = padding(self.fill, self.fewest, "fill")
        fill_places = padding(self.fill_places, self.fewest_places, "fill_places")
        return re.compile(f"{fill}{front}(?P<whole>{whole}){places}{fill_places}{behind}", re.DOTALL)

    def fits(self, limit, count):
        return limit >= UNLIMITED or count <= limit

    def write(self, value):
        """value is a Decimal whose exponent tells the places that it holds."""
        places = max(0, -value.as_tuple().exponent)
        if not self.fits(self.most_places, places):
            places = self.most_places
        value = value.quantize(Decimal(1).scaleb(-places), ROUND_HALF_UP, EXACT)
        negative, zero = value < 0, value == 0
        demand(not negative or self.sign.place, BAD_VALUE)
        whole, _, fraction = format(value.copy_abs(), "f").partition(".")

        sign = self.sign.shown(negative, zero)
        front, behind = (sign, "") if self.sign.place == 1 else ("", sign)
        demand(self.fits(self.most, len(front) + max(len(whole), self.fewest)), BAD_VALUE)
        fills = max(0, self.fewest - len(whole)) * self.fill
        if self.fill == "0":
            whole, fills = fills + whole, ""
        whole = re.sub(r"(?<=[0-9])(?=(?:[0-9]{3})+$)", lambda _: self.thousands, whole)
        missing = max(0, self.fewest_places - len(fraction)) * self.fill_places
        if fraction or (missing and self.fill_places == "0"):
            fraction = self.decimal + fraction + missing
        elif missing:
            fraction = missing + self.fill_places
        return fills + front + whole + fraction + behind

    def read(self, text):
        """The Decimal with the places that were read."""
        parts = self.pattern.fullmatch(text.strip(" "))
        demand(parts, BAD_TEXT)
        parts = parts.groupdict()
        sign, places, fills = parts.get("sign", ""), parts["places"] or "", len(parts["fill_places"])
        whole = parts["whole"].replace(self.thousands, "") if self.thousands else parts["whole"]
        front = len(sign) if self.sign.place == 1 else 0
        demand(self.fits(self.most, len(parts["fill"]) + front + len(whole)), BAD_TEXT)
        if not places and fills:
            fills -= 1  # stands in the place of the separator
        demand(self.fits(self.most_places, len(places) + fills), BAD_TEXT)
        value = Decimal(whole + ("." + places if places else ""))
        return value.copy_negate() if sign == "-" and value else value

    def read_whole(self, text, smallest, largest):
        value = self.read(text)
        demand(value == int(value) and smallest <= value <= largest, BAD_TEXT)
        return int(value)

    def write_double(self, value):
        demand(value == value and abs(value) != float("inf"), BAD_VALUE)
        sign, digits, exponent = Decimal(repr(value)).normalize(EXACT).as_tuple()
        shortest = Decimal((sign, digits, exponent))
        return self.write(shortest.quantize(Decimal(1), context=EXACT) if exponent > 0 else shortest)

    def read_double(self, text):
        value = self.read(text)
        double = float(value)
        demand(abs(double) != float("inf") and (double != 0) == (value != 0), BAD_TEXT)
        return double


class TimeFormat:
    def __init__(self, of_day, display, place, both, most, fewest, fill):
        self.of_day = one_of(of_day, 2)
        self.display = one_of(display, 4)
        self.sign = Sign(place, both)
        self.sign.check()
        demand(0 <= fewest <= most, BAD_SETTING)
        separator = [":", "", ",", ":"][display]
        check_fill(fill, fewest > 0, separator)
        self.most, self.fewest, self.fill = most, fewest, fill
        front, behind = self.sign.patterns()
        sub = "(?P<sub>[0-9]{2})" if display == 2 else "(?P<sub>[0-5][0-9])"
        tail = ["(?::SUB(?::00)?)?", "(?P<sub>(?!))?", "(?:,SUB)?", "(?::SUB)?"][display].replace("SUB", sub)
        self.pattern = padding(fill, fewest, "fill") + front + "(?P<hours>[0-9]+)" + tail + behind

    def write(self, hours, sub):
        negative = hours < 0 or sub < 0
        hours, sub = abs(hours), abs(sub)
        demand(sub < (100 if self.display == 2 else 60), BAD_VALUE)
        zero = hours == 0 and (sub == 0 or self.display == 1)
        negative = negative and not zero
        demand(not negative or (self.sign.place and not self.of_day), BAD_VALUE)
        demand(not self.of_day or hours < 24, BAD_VALUE)
        demand(len(str(hours)) <= self.most, BAD_VALUE)
        fills = self.fill * max(0, self.fewest - len(str(hours)))
        sign = self.sign.shown(negative, zero)
        digits = str(hours)
        if self.fill == "0":
            fills, digits = "", fills + digits
        digits += [f":{sub:02}:00", "", f",{sub:02}", f":{sub:02}"][self.display]
        return fills + (sign + digits if self.sign.place == 1 else digits + sign)

    def read(self, text):
        parts = match(self.pattern, text.strip(" "))
        demand(len(parts["fill"]) + len(parts["hours"]) <= self.most, BAD_TEXT)
        factor = -1 if parts.get("sign") == "-" else 1
        hours, sub = factor * int(parts["hours"]), factor * int(parts["sub"] or 0)
        demand(LONG_MIN <= hours <= LONG_MAX, BAD_TEXT)
        demand(not self.of_day or (0 <= hours < 24 and sub >= 0), BAD_TEXT)
        return hours, sub


MONTHS = {
    GERMAN: "Januar Februar März April Mai Juni Juli August September Oktober November Dezember".split(),
    ENGLISH: "January February March April May June July August September October November December".split(),
}


class DateFormat:
    def __init__(self, order, separator, year, month, filled, fill, language):
        self.order = ["dmy", "mdy", "ymd"][one_of(order, 3)]
        self.separator = "./- "[separator] if one_of(separator, 5) < 4 else ""
        self.year, self.month = one_of(year, 3), one_of(month, 3)
        self.filled = one_of(filled, 2)
        check_fill(fill, filled, self.separator)
        self.fill = fill
        self.names = MONTHS[language or GERMAN]
        if self.year == 2:
            self.order = self.order.replace("y", "")
        # "05.03." keeps the point of the year that is left out.
        self.tail = "." if self.year == 2 and self.separator == "." and order != 2 else ""
        parts = {"d": self.number_pattern("d"), "m": self.month_pattern(), "y": self.year_pattern()}
        self.pattern = re.escape(self.separator).join(parts[part] for part in self.order) + re.escape(self.tail)

    def number_pattern(self, name):
        if not self.separator:
            return f"(?P<{name}>[0-9]{{2}})"
        if not self.filled or self.fill == "0":
            return f"(?P<{name}>[0-9]{{1,2}})"
        blanks = {self.fill} | ({" "} if self.separator != " " else set())
        blank = "|".join(re.escape(c) for c in sorted(blanks))
        return f"(?P<{name}>(?:{blank})[0-9]|[0-9]{{1,2}})"

    def month_pattern(self):
        if self.month == 0:
            return self.number_pattern("m")
        names = [upper(name) for name in self.names]
        return "(?P<m>" + "|".join(names + [name[:3] for name in names]) + ")"

    def year_pattern(self):
        if self.separator:
            return "(?P<y>[0-9]{4}|[0-9]{2})"
        return "(?P<y>[0-9]{2})" if self.year == 1 else "(?P<y>[0-9]{4})"

    def number(self, n):
        if not self.separator:
            return f"{n:02}"
        return str(n).rjust(2, self.fill) if self.filled else str(n)

    def write_date(self, year, month, day):
        demand(1753 <= year <= 9999, BAD_VALUE)
        try:
            datetime.date(year, month, day)
        except ValueError:
            raise Refused(BAD_VALUE) from None
        name = self.names[(month - 1) % 12]
        parts = {
            "d": self.number(day),
            "m": [self.number(month), name[:3], name][self.month],
            "y": f"{year:04}" if self.year == 0 else f"{year % 100:02}",
        }
        return self.separator.join(parts[part] for part in self.order) + self.tail

    def write(self, year, month, day, hour, minute, second):
        date = self.write_date(year, month, day)
        demand(hour in range(24) and minute in range(60) and second in range(60), BAD_VALUE)
        if hour == minute == second == 0:
            return date
        return date + f" {hour:02}:{minute:02}:{second:02}"

    def read(self, text, with_time=True):
        time = "(?: (?P<H>[01]?[0-9]|2[0-3]):(?P<M>[0-5][0-9])(?::(?P<S>[0-5][0-9]))?)?" if with_time else ""
        parts = match(self.pattern + time, upper(text.strip(" ")))
        digits = parts.get("y", str(CURRENT_YEAR))
        year = int(digits) + (CURRENT_YEAR // 100 * 100 if len(digits) == 2 else 0)
        demand(1753 <= year <= 9999, BAD_TEXT)
        month, day = parts["m"], int(re.sub("[^0-9]", "", parts["d"]))
        if self.month:
            month = [upper(name[:3]) for name in self.names].index(month[:3]) + 1
        else:
            month = int(re.sub("[^0-9]", "", month))
        try:
            datetime.date(year, month, day)
        except ValueError:
            raise Refused(BAD_TEXT) from None
        return (year, month, day, int(parts.get("H") or 0), int(parts.get("M") or 0), int(parts.get("S") or 0))


LETTERS = (
    "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ\u0192ŠŒŽšœžŸªµº"
    + "".join(chr(code) for code in range(0xC0, 0x100) if code not in (0xD7, 0xF7))
)


class TextFormat:
    def __init__(self, length, valid, side, fill):
        one_of(side, 3)
        demand(valid < 16 or valid == VALID_ALL, BAD_SETTING)
        check_fill(fill, side != 0)
        self.length, self.valid, self.fill = length, valid, fill
        self.side = side if length else 0

    def check(self, text, number):
        for c in text:
            kind = 1 if c in "0123456789" else 2 if c in LETTERS else 4 if c == " " else 8
            demand(self.valid & kind, number)

    def write(self, text):
        demand(not self.length or len(text) <= self.length, BAD_VALUE)
        self.check(text, BAD_VALUE)
        if self.side == 1:
            return text.rjust(self.length, self.fill)
        return text.ljust(self.length, self.fill) if self.side == 2 else text

    def read(self, text):
        demand(not self.length or len(text) <= self.length, BAD_TEXT)
        part = text.lstrip(self.fill) if self.side == 1 else text.rstrip(self.fill) if self.side == 2 else text
        self.check(part, BAD_TEXT)
        return part


WORDS = {GERMAN: ("Nein", "Ja"), ENGLISH: ("No", "Yes")}


class BoolFormat:
    def __init__(self, mode, language):
        one_of(mode, 4)
        demand(language in WORDS, BAD_SETTING)
        words = WORDS[language]
        self.texts = [("0", "1"), words, tuple(word[0] for word in words), (" ", "X")][mode]

    def write(self, value):
        return self.texts[bool(value)]

    def read(self, text):
        demand(text, BAD_TEXT)
        stripped = text.strip(" ").upper()
        for value in (0, 1):
            if stripped == self.texts[value].strip(" ").upper():
                return value
        raise Refused(BAD_TEXT)
