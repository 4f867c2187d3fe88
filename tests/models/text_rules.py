#!/usr/bin/env python3
"""The rules of the editing functions of NkDtString, on immutable bytes and unlimited integers.

They are stated here a second time, each as plainly as it can be said, so that the class is held against
the rules and not against itself. texts.py writes the table of their consequences.

    python3 text_rules.py --self-check
"""

import sys
from typing import NamedTuple

# Working modes: what an undefined text means.
MISSING, NULL, ALWAYS_DEFINED = range(3)

# What can stand in place of a position, and at which end.
FIRST, ALL = -10, -11
POS_FIRST, POS_NEXT = -20, -21
LEFT, RIGHT = -40, -41

UNDEFINED_VALUE = 2
INVALID_INDEX = 3
INVALID_LENGTH = 6
OUT_OF_RANGE = 8

INT_MIN, INT_MAX = -(2**31), 2**31 - 1
NO_HIT = -1
BLANK = b" "


class Refusal(Exception):
    """The number of the error that an operation raises. It has changed nothing."""

    def __init__(self, number):
        super().__init__(number)
        self.number = number


def demand(condition, number):
    if not condition:
        raise Refusal(number)


def visible(characters):
    """What searching and comparing see."""
    return characters.partition(b"\0")[0]


# --- Letter case: only ASCII letters and the three umlauts have one --------------------------------

SMALL = bytes(range(ord("a"), ord("z") + 1)) + "äöü".encode("cp1252")
CAPITAL = bytes(range(ord("A"), ord("Z") + 1)) + "ÄÖÜ".encode("cp1252")
SHARP_S = "ß".encode("cp1252")
TO_CAPITAL = bytes.maketrans(SMALL, CAPITAL)
TO_SMALL = bytes.maketrans(CAPITAL, SMALL)


class State(NamedTuple):
    """What can be observed of a text without searching in it."""

    mode: int
    defined: int
    modified: int
    alloc: int
    characters: bytes


class Text:
    """A text under way. The arguments of its operations are states, that is copies: whether an argument is
    the text itself makes no difference."""

    def __init__(self, state):
        self.mode, self.defined, self.modified, self.alloc, self.characters = state
        self.hit = NO_HIT

    @property
    def state(self):
        return State(self.mode, self.defined, self.modified, self.alloc, self.characters)

    # The pieces that the operations are made of

    def set_defined(self):
        self.modified |= not self.defined
        self.defined = 1

    def reset(self):
        self.characters, self.alloc, self.hit = b"", 0, NO_HIT

    def put(self, characters):
        """Takes the characters; the room grows as far as it must and never shrinks."""
        self.alloc = max(self.alloc, len(characters))
        self.characters = characters

    def demand_position(self, position):
        demand(0 <= position <= len(self.characters), INVALID_INDEX)

    def demand_operands(self, other, position):
        demand(not is_missing(self) and not is_missing(other), UNDEFINED_VALUE)
        self.demand_position(position)

    def demand_length(self, length):
        demand(length < INT_MAX, OUT_OF_RANGE)

    # State

    def clear(self):
        if self.characters or (self.defined and self.mode != ALWAYS_DEFINED):
            self.modified = 1
        if self.mode != ALWAYS_DEFINED:
            self.defined = 0
        self.reset()

    def assign(self, source):
        if not source.defined:
            self.reset()
            self.defined = 0
            return
        self.alloc = max(self.alloc, len(source.characters))
        if visible(self.characters) != visible(source.characters):
            self.characters = source.characters
            self.modified = 1
        self.set_defined()

    # Searching, removing, replacing

    def delete_parts(self, part, mode):
        if not part.characters or not self.characters:
            return 0
        if mode not in (ALL, FIRST):
            self.remove(mode, len(part.characters))
            self.modified = 1
            return 1
        searched = visible(part.characters)
        removed = 0
        while searched and (mode == ALL or not removed):
            found = visible(self.characters).find(searched)
            if found < 0:
                break
            self.remove(found, len(searched))
            removed = 1
        self.modified |= removed
        return removed

    def remove(self, position, count):
        self.demand_position(position)
        demand(position + count <= len(self.characters), INVALID_INDEX)
        self.characters = self.characters[:position] + self.characters[position + count:]

    def get_pos(self, part, mode):
        searched = visible(part.characters)
        if not self.characters or not searched:
            return -1
        start = self.hit + len(part.characters) if mode == POS_NEXT and self.hit != NO_HIT else 0
        found = visible(self.characters).find(searched, start)
        if found >= 0:
            self.hit = found
        return found

    def change(self, old, new, mode):
        if not self.characters or not old.characters or is_missing(new):
            return 0
        if not new.characters:
            return self.delete_parts(old, mode)
        searched = visible(old.characters)
        if searched == visible(new.characters):
            return 1
        if mode not in (ALL, FIRST):
            self.remove(mode, len(old.characters))
            self.put(self.characters[:mode] + new.characters + self.characters[mode:])
            self.modified = 1
            return 1
        seen = visible(self.characters)
        if not searched or searched not in seen:
            return 0
        count = 1 if mode == FIRST else -1
        self.put(seen.replace(searched, new.characters, count) + self.characters[len(seen):])
        self.modified = 1
        return 1

    # Copying

    def copy(self, source, position):
        self.demand_operands(source, position)
        self.demand_length(position + len(source.characters))
        self.put(self.characters[:position] + source.characters)
        self.modified = self.defined = 1

    def copy_parts(self, source, position):
        self.demand_operands(source, position)
        end = position + len(source.characters)
        self.demand_length(end)
        if not source.characters:
            return
        if end > len(self.characters):
            self.set_defined()
        self.put(self.characters[:position] + source.characters + self.characters[end:])
        self.modified = 1

    def insert(self, source, position):
        self.demand_operands(source, position)
        if not source.characters:
            return
        self.demand_length(len(self.characters) + len(source.characters))
        self.put(self.characters[:position] + source.characters + self.characters[position:])
        self.modified = self.defined = 1

    # Letter case

    def to_upper(self):
        self.modified |= any(ch not in CAPITAL + SHARP_S for ch in self.characters)
        self.characters = self.characters.translate(TO_CAPITAL)

    def to_lower(self):
        self.modified |= any(ch not in SMALL + SHARP_S for ch in self.characters)
        self.characters = self.characters.translate(TO_SMALL)

    # Lengths

    def cut(self, length):
        if not self.defined or length == len(self.characters):
            return
        demand(0 <= length < len(self.characters), INVALID_INDEX)
        self.characters = self.characters[:length]
        self.modified = 1

    def trim(self, mode):
        stripped = self.characters.strip(BLANK)
        if stripped and mode == LEFT:
            stripped = self.characters.lstrip(BLANK)
        elif stripped and mode == RIGHT:
            stripped = self.characters.rstrip(BLANK)
        self.modified |= stripped != self.characters
        self.characters = stripped

    def fill_up(self, character, length, mode):
        missing_count = length - len(self.characters)
        if is_missing(self) or missing_count <= 0:
            return
        demand(length < INT_MAX, INVALID_LENGTH)
        filling = bytes([character]) * missing_count
        self.put(filling + self.characters if mode == LEFT else self.characters + filling)
        self.modified = self.defined = 1

    # Answers

    def is_empty(self):
        demand(not is_missing(self), UNDEFINED_VALUE)
        return int(not self.characters)

    def compare(self, other, exact):
        a, b = visible(self.characters), visible(other.characters)
        return int(a == b if exact else a.translate(TO_CAPITAL) == b.translate(TO_CAPITAL))


def is_missing(text):
    return not text.defined and text.mode == MISSING


def split(source, left, right, length):
    """Divides the state; the receivers are texts, which may be one and the same."""
    demand(length >= 0, INVALID_INDEX)
    if not source.defined:
        left.clear()
        right.clear()
        return
    whole = len(source.characters)
    if length > whole and left.alloc < whole:
        length = whole
    demand(length < INT_MAX, INVALID_LENGTH)
    left.put(source.characters[:length].ljust(length, b"\0"))
    left.defined = 1
    if length < whole:
        right.put(source.characters[length:])
        right.defined = 1
    else:
        right.clear()


# --- Self check ------------------------------------------------------------------------------------


def text(characters, room=0):
    return Text(defined(characters, room))


def defined(characters, room=0, mode=MISSING, modified=0):
    characters = characters.encode("cp1252")
    return State(mode, 1, modified, len(characters) + room, characters)


def undefined(mode, modified=0):
    return State(mode, 0, modified, 0, b"")


def after(start, operation, *arguments):
    """The characters that the operation leaves."""
    changed = text(start)
    getattr(changed, operation)(*arguments)
    return changed.characters.decode("cp1252")


def refused(number, operation, *arguments):
    try:
        operation(*arguments)
    except Refusal as refusal:
        return refusal.number == number
    return False


def check_searching():
    assert after("aabb", "delete_parts", defined("ab"), ALL) == ""
    assert after("aabb", "delete_parts", defined("ab"), FIRST) == "ab"
    assert after("abcdef", "delete_parts", defined("xyz"), 1) == "aef"
    assert refused(INVALID_INDEX, text("abc").delete_parts, defined("xy"), 2)
    assert refused(INVALID_INDEX, text("abc").delete_parts, defined("x"), -12)
    assert text("").delete_parts(defined("x"), 7) == 0

    assert after("aXa", "change", defined("a"), defined("aa"), ALL) == "aaXaa"
    same = text("a")
    assert same.change(defined("a"), defined("a"), 0) == 1 and same.state == defined("a")
    assert text("a").change(defined("a"), undefined(MISSING), ALL) == 0
    assert after("aXa", "change", defined("a"), undefined(NULL), ALL) == "X"
    grown = text("aba", 2)
    grown.change(defined("a"), defined("aaa"), ALL)
    assert grown.state == defined("aaabaaa", 0, modified=1)

    banana = text("banana")
    found = [banana.get_pos(defined("a"), mode) for mode in (POS_FIRST, POS_NEXT, POS_NEXT, POS_NEXT, POS_NEXT)]
    assert found == [1, 3, 5, -1, -1]
    banana.cut(2)
    assert banana.get_pos(defined("a"), POS_NEXT) == -1
    assert banana.get_pos(defined("a"), 0) == 1


def check_copying():
    assert after("abcdef", "copy", defined("XY"), 2) == "abXY"
    assert after("abcdef", "copy_parts", defined("XY"), 2) == "abXYef"
    assert after("abcdef", "copy_parts", defined("XYZ"), 5) == "abcdeXYZ"
    assert after("abcdef", "insert", defined("XY"), 6) == "abcdefXY"
    assert refused(INVALID_INDEX, text("abcdef").insert, defined("XY"), 7)
    assert refused(UNDEFINED_VALUE, text("abcdef").copy, undefined(MISSING), 7)
    null = Text(undefined(NULL))
    null.copy_parts(undefined(NULL), 0)
    assert null.state == undefined(NULL)
    null.copy(undefined(NULL), 0)
    assert null.state == defined("", 0, NULL, 1)


def check_lengths():
    assert text("abc").cut(3) is None
    assert refused(INVALID_INDEX, text("abc").cut, 4) and refused(INVALID_INDEX, text("abc").cut, -1)
    assert after("  a  ", "trim", LEFT) == "a  "
    assert after("  a  ", "trim", RIGHT) == "  a"
    assert after("  a  ", "trim", 0) == "a"
    assert all(after("   ", "trim", mode) == "" for mode in (LEFT, RIGHT, 0))
    assert after("42", "fill_up", ord("0"), 5, LEFT) == "00042"
    assert after("42", "fill_up", ord("*"), 5, 0) == "42***"
    unchanged = text("123")
    unchanged.fill_up(ord("0"), 2, LEFT)
    assert unchanged.state == defined("123")
    assert refused(INVALID_LENGTH, text("1").fill_up, ord("0"), INT_MAX, LEFT)
    assert Text(undefined(MISSING)).fill_up(ord("0"), INT_MAX, LEFT) is None


def check_split():
    left, right = text("x"), text("y")
    split(defined("abc"), left, right, 5)  # too small for the text: the length counts as the text's
    assert left.state == defined("abc") and right.state == State(MISSING, 0, 1, 0, b"")
    left = text("x", 2)
    split(defined("abc"), left, right, 5)  # has room for it: gets the length
    assert left.state == defined("abc\0\0")
    split(defined("abc"), left, right, 1)
    assert left.state == defined("a", 4) and right.state == defined("bc", modified=1)
    assert refused(INVALID_INDEX, split, undefined(NULL), left, right, -1)
    split(undefined(NULL), left, right, INT_MAX)
    assert left.state == right.state == undefined(MISSING, 1)


def check_case_and_comparison():
    assert after("ÄÖÜß", "to_lower") == "äöüß" and after("äöüß", "to_upper") == "ÄÖÜß"
    digits = text("123")
    digits.to_upper()
    assert digits.state == defined("123", modified=1)
    capitals = text("AÄß")
    capitals.to_upper()
    assert capitals.state == defined("AÄß")
    assert after("é", "to_upper") == "é"
    assert Text(undefined(NULL)).compare(defined(""), 1) == 1
    assert text("Müller").compare(defined("MÜLLER"), 0) == 1
    assert text("Straße").compare(defined("STRASSE"), 0) == 0
    assert Text(undefined(NULL)).is_empty() == 1
    assert refused(UNDEFINED_VALUE, Text(undefined(MISSING)).is_empty)


if __name__ == "__main__":
    if sys.argv[1:] != ["--self-check"]:
        sys.exit("call: text_rules.py --self-check")
    if not __debug__:
        sys.exit("python -O leaves the checks out")
    for check in (check_searching, check_copying, check_lengths, check_split, check_case_and_comparison):
        check()
