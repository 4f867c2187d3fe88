#!/usr/bin/env python3
"""Truth table of the editing functions of NkDtString.

Writes one row per call with what the rules of text_rules.py demand: the result or the error, and the
states of all texts that take part.

    python3 texts.py > texts.tsv

Columns, separated by tabs; "-" stands for "none":

    s t u      the texts before the call, each written mode:defined:modified:allocated length:characters;
               "~" in all three: the call goes on with the texts that the row before left
    call       operation, object, arguments; a text that stands in two places is one and the same object
    outcome    the result, "-" for a call without one, or "error" and its number
    s t u      the texts after the call

Characters other than letters, digits and blanks are written as a backslash and two hexadecimal digits.
"""

import itertools
import random
import sys

sys.dont_write_bytecode = True  # leaves the source folder as it is
from text_rules import (
    ALL, ALWAYS_DEFINED, FIRST, INT_MAX, INT_MIN, LEFT, MISSING, NULL, POS_FIRST, POS_NEXT, RIGHT, Refusal, State,
    Text, split)

NAMES = "stu"
PLAIN = frozenset(b"abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789 ")
ODD_MODES = (-1, -12, -42, 99, INT_MIN, INT_MAX)

METHODS = {
    "DeleteParts": Text.delete_parts, "GetPos": Text.get_pos, "Copy": Text.copy, "CopyParts": Text.copy_parts,
    "Insert": Text.insert, "Change": Text.change, "ToUpper": Text.to_upper, "ToLower": Text.to_lower,
    "Cut": Text.cut, "Trim": Text.trim, "FillUp": Text.fill_up, "IsEmpty": Text.is_empty, "Compare": Text.compare,
    "Assign": Text.assign, "Clear": Text.clear}


def written(state):
    if PLAIN.issuperset(state.characters):
        characters = state.characters.decode("ascii")
    else:
        characters = "".join(chr(ch) if ch in PLAIN else "\\%02x" % ch for ch in state.characters)
    return "%d:%d:%d:%d:%s" % (*state[:4], characters)


class Table:
    def __init__(self):
        self.rows = {}  # in order, each once

    def add(self, states, *calls):
        """The calls one after the other, each a tuple of operation, object and arguments."""
        texts = {name: Text(state) for name, state in zip(NAMES, states)}
        before = self._states(texts)
        lines = []
        for call in calls:
            outcome = self._outcome(texts, *call)
            states_after = self._states(texts)
            lines.append("\t".join((before, " ".join(map(str, call)), outcome, states_after)))
            before = "~\t~\t~"
        self.rows["\n".join(lines)] = None

    @staticmethod
    def _states(texts):
        return "\t".join(written(texts[name].state) if name in texts else "-" for name in NAMES)

    @staticmethod
    def _outcome(texts, operation, name, *arguments):
        try:
            if operation == "Split":
                left, right, length = arguments
                result = split(texts[name].state, texts[left], texts[right], length)
            else:
                copies = [texts[each].state if each in texts else each for each in arguments]
                result = METHODS[operation](texts[name], *copies)
        except Refusal as refusal:
            return "error %d" % refusal.number
        return "-" if result is None else str(result)


# --- What the calls work on ------------------------------------------------------------------------


def words(alphabet, longest, shortest=0):
    for length in range(shortest, longest + 1):
        for letters in itertools.product(alphabet, repeat=length):
            yield bytes(letters)


def plain(characters, room=0, mode=MISSING, modified=0):
    return State(mode, 1, modified, len(characters) + room, characters)


def undefined(mode, modified=0):
    return State(mode, 0, modified, 0, b"")


MODES = (MISSING, NULL, ALWAYS_DEFINED)


class Varied:
    """Defined texts whose room, mode and flag change from one to the next."""

    def __init__(self):
        self._shapes = itertools.cycle(itertools.product((0, 0, 1, 2, 7), MODES, (0, 0, 1)))

    def __call__(self, characters):
        room, mode, modified = next(self._shapes)
        return plain(characters, room, mode, modified)


def states():
    """A text in every state: undefined, empty with and without room, with characters."""
    for mode, modified in itertools.product(MODES, (0, 1)):
        yield undefined(mode, modified)
        for characters, room in ((b"", 0), (b"", 5), (b"aba", 0), (b"aba", 4)):
            yield plain(characters, room, mode, modified)


def positions(length):
    return range(-1, length + 2)


# --- Rows --------------------------------------------------------------------------------------------


def state_pair_calls(t):
    """One call or several of each operation with the argument t."""
    for mode in (ALL, FIRST, 0, 1, 3, 4, -1):
        yield "DeleteParts", "s", t, mode
        yield "Change", "s", t, "u", mode
        yield "Change", "s", "u", t, mode
    for mode in (POS_FIRST, POS_NEXT, 0):
        yield "GetPos", "s", t, mode
    for operation, position in itertools.product(("Copy", "CopyParts", "Insert"), (-1, 0, 1, 3, 4)):
        yield operation, "s", t, position
    for length in (-1, 0, 2, 3, 5, INT_MAX):
        yield "Split", "s", t, "u", length
        yield "Split", "s", "u", t, length
        yield "Split", t, "s", "u", length
    for exact in (0, 1):
        yield "Compare", "s", t, exact
    yield "Assign", "s", t


def lone_calls():
    for operation in ("ToUpper", "ToLower", "IsEmpty", "Clear"):
        yield operation, "s"
    for length in (-1, 0, 1, 3, 4, INT_MIN, INT_MAX):
        yield "Cut", "s", length
    for mode in (LEFT, RIGHT, 0, -1, -39):
        yield "Trim", "s", mode
    for mode, length in itertools.product((LEFT, RIGHT, 0), (-1, 0, 2, 3, 4, 6, 9, INT_MAX)):
        yield "FillUp", "s", ord("x"), length, mode


def add_states(table):
    """Every operation on every state, with every state as its argument and with the text itself."""
    thirds = itertools.cycle((plain(b"ba"), undefined(NULL), plain(b"b", 5), undefined(MISSING), plain(b"", 1)))
    arguments = [state for state in states() if not state.modified]
    for s in states():
        for call in lone_calls():
            table.add((s,), call)
        for t, call in itertools.product(arguments, state_pair_calls("t")):
            table.add((s, t, next(thirds)), call)
        for u, call in itertools.product((plain(b"ba", 5), undefined(MISSING)), state_pair_calls("s")):
            table.add((s, plain(b"b"), u), call)


def add_deletions(table):
    varied = Varied()
    for characters, part in itertools.product(words(b"ab", 4), words(b"ab", 3)):
        for mode in (ALL, FIRST, *positions(len(characters))):
            table.add((varied(characters), plain(part)), ("DeleteParts", "s", "t", mode))
    for characters, part in itertools.product(words(b"ab", 7, 5), (b"ab", b"ba", b"aba", b"aab")):
        table.add((varied(characters), plain(part)), ("DeleteParts", "s", "t", ALL))
    for mode in ODD_MODES:
        table.add((varied(b"aabb"), plain(b"ab")), ("DeleteParts", "s", "t", mode))


def add_searches(table):
    varied = Varied()
    modes = (POS_NEXT, POS_NEXT, POS_NEXT, 0, POS_NEXT, -19, POS_NEXT, POS_FIRST)
    for characters, part in itertools.product(words(b"ab", 4), words(b"ab", 2)):
        table.add((varied(characters), varied(part)), *[("GetPos", "s", "t", mode) for mode in modes])
    hit, again = ("GetPos", "s", "t", POS_FIRST), ("GetPos", "s", "t", POS_NEXT)
    between = [
        ("GetPos", "s", "u", POS_NEXT), ("GetPos", "s", "u", 5), ("Cut", "s", 3), ("Cut", "s", 0), ("Clear", "s"),
        ("Assign", "s", "u"), ("Assign", "t", "u"), ("Copy", "s", "u", 0), ("Insert", "s", "u", 0),
        ("DeleteParts", "s", "u", ALL), ("DeleteParts", "s", "t", FIRST), ("Change", "s", "t", "u", ALL),
        ("ToUpper", "s"), ("Trim", "s", 0), ("FillUp", "s", ord("a"), 12, LEFT), ("Split", "u", "s", "t", 1),
        ("Split", "u", "t", "s", 1), ("Split", "s", "t", "u", 4)]
    thirds = (plain(b"b"), plain(b"ba"), plain(b"aab", 9), plain(b"bbbbb"), plain(b""), undefined(NULL),
              undefined(MISSING))
    searched = (b"ababab", b"aaaaaa", b" ba ab")
    for characters, part, u, call in itertools.product(searched, (b"a", b"ab"), thirds, between):
        table.add((varied(characters), plain(part), u), hit, call, again, again)
        table.add((varied(characters), plain(part), u), hit, again, call, again)


def add_copies(table):
    varied = Varied()
    for operation in ("Copy", "CopyParts", "Insert"):
        for characters, added in itertools.product(words(b"ab", 3), (b"", b"x", b"xy", b"ab", b"xyz", b"vwxyz")):
            for position in positions(len(characters)):
                table.add((varied(characters), varied(added)), (operation, "s", "t", position))
        for room, position in itertools.product(range(5), positions(3)):
            table.add((plain(b"aba", room), plain(b"xyz", 4)), (operation, "s", "t", position))
            table.add((plain(b"aba", room),), (operation, "s", "s", position))
        for position in ODD_MODES:
            table.add((plain(b"aba"), plain(b"")), (operation, "s", "t", position))


def add_changes(table):
    varied = Varied()
    replacements = (b"", b"a", b"b", b"ab", b"aa", b"aba", b"bbbb")
    for characters, old, new in itertools.product(words(b"ab", 4), words(b"ab", 2), replacements):
        for mode in (ALL, FIRST, len(characters) // 2):
            table.add((varied(characters), plain(old), plain(new)), ("Change", "s", "t", "u", mode))
    for characters, old, new in itertools.product(words(b"ab", 3), (b"", b"a", b"ba"), replacements):
        for mode in positions(len(characters)):
            table.add((varied(characters), plain(old), plain(new)), ("Change", "s", "t", "u", mode))
    for mode in ODD_MODES:
        table.add((varied(b"aabb"), plain(b"ab"), plain(b"x")), ("Change", "s", "t", "u", mode))


def add_own_arguments(table):
    """The text itself in each place, and one object in two places."""
    varied = Varied()
    for characters, other, mode in itertools.product(words(b"ab", 3), (b"", b"a", b"ab"), (ALL, FIRST, 0, 1, -1)):
        s, t = varied(characters), plain(other)
        for arguments in (("s", "t"), ("t", "s"), ("s", "s"), ("t", "t")):
            table.add((s, t), ("Change", "s", *arguments, mode))
        table.add((s,), ("DeleteParts", "s", "s", mode))
    receivers = (plain(b""), plain(b"abab"), plain(b"b", 9), undefined(NULL))
    for characters, t in itertools.product(words(b"ab", 3), receivers):
        s = varied(characters)
        table.add((s,), *[("GetPos", "s", "s", mode) for mode in (POS_NEXT, POS_NEXT, POS_FIRST)])
        for exact in (0, 1):
            table.add((s,), ("Compare", "s", "s", exact))
        for length in (*positions(len(characters)), 8, INT_MAX):
            for left, right in (("s", "t"), ("t", "s"), ("s", "s"), ("t", "t")):
                table.add((s, t), ("Split", "s", left, right, length))


def add_case(table):
    for ch in range(256):
        for around in (b"", b"A", b"a", b"1", b"\xc4", b"\xfc", b"\xdf"):
            for operation in ("ToUpper", "ToLower"):
                table.add((plain(bytes([ch]) + around),), (operation, "s"))
        for other in (ch, ch ^ 0x20, (ch + 1) % 256):
            for exact in (0, 1):
                table.add((plain(bytes([ch])), plain(bytes([other]))), ("Compare", "s", "t", exact))
    samples = [each.encode("cp1252") for each in (
        "", "Müller", "MÜLLER", "müller", "Straße", "STRASSE", "STRAßE", "é", "É", "äöüß", "ÄÖÜß", "abc", "ABC",
        "ab", "abcd")]
    for a, b, exact in itertools.product(samples, samples, (0, 1)):
        table.add((plain(a), plain(b)), ("Compare", "s", "t", exact))
    for sample, operation in itertools.product(samples, ("ToUpper", "ToLower")):
        table.add((plain(sample),), (operation, "s"))


def add_lengths(table):
    varied = Varied()
    for characters in words(b"a ", 6):
        for mode in (LEFT, RIGHT, 0):
            table.add((varied(characters),), ("Trim", "s", mode))
    for characters in (b"\t a \t", b" \xa0 ", b" \n", b"  a  b  "):
        for mode in (LEFT, RIGHT, *ODD_MODES):
            table.add((varied(characters),), ("Trim", "s", mode))
    for characters in words(b"ab", 3):
        for length in positions(len(characters)):
            table.add((varied(characters),), ("Cut", "s", length))
        fillings = itertools.product((-1, 0, 1, 2, 3, 4, 9), (LEFT, RIGHT, 0, POS_FIRST), (ord("x"), 0, 255))
        for length, mode, ch in fillings:
            table.add((varied(characters),), ("FillUp", "s", ch, length, mode))
        table.add((varied(characters),), ("IsEmpty", "s"))


def add_splits(table):
    varied = Varied()
    for characters, left_length, room in itertools.product(words(b"ab", 3), range(4), (0, 1, 3)):
        left = plain(b"xyz"[:left_length], room)
        for length in (*positions(len(characters)), 6, INT_MAX, INT_MIN):
            table.add((varied(characters), left, varied(b"w")), ("Split", "s", "t", "u", length))


def add_nul(table):
    """Texts with NUL inside: seen up to it, copied beyond it."""
    varied = Varied()
    texts = list(words(b"\0a", 3))
    parts = (*words(b"\0a", 2), b"ab\0", b"b")
    for characters, part in itertools.product((*texts, b"ba\0a", b"aab\0ab", b"a \0 a"), parts):
        s, t = varied(characters), varied(part)
        for mode in (ALL, FIRST, 0, 1):
            table.add((s, t), ("DeleteParts", "s", "t", mode))
            for new in (b"", b"a", b"b\0", b"\0", b"xyz"):
                table.add((s, t, plain(new)), ("Change", "s", "t", "u", mode))
        table.add((s, t), *[("GetPos", "s", "t", mode) for mode in (POS_FIRST, POS_NEXT, POS_NEXT)])
        for operation in ("Copy", "CopyParts", "Insert"):
            for position in (0, 1, len(characters)):
                table.add((s, t), (operation, "s", "t", position))
        for length in (0, 1, 2, 5):
            table.add((s, t, plain(b"w")), ("Split", "s", "t", "u", length))
        for exact in (0, 1):
            table.add((s, t), ("Compare", "s", "t", exact))
    for characters in [*texts, b" \0 ", b"\0  ", b"  \0", b" a\0b "]:
        for call in lone_calls():
            table.add((varied(characters),), call)


def add_long_texts(table):
    draw = random.Random(20)
    varied = Varied()
    for _ in range(300):
        characters = bytes(draw.choices(b"ab ", (5, 5, 1), k=draw.randint(200, 2000)))
        part = bytes(draw.choices(b"ab", k=draw.randint(1, 4)))
        if draw.random() < 0.3:  # a long part that occurs
            start = draw.randrange(len(characters))
            part = characters[start:start + draw.randint(10, 150)]
        new = bytes(draw.choices(b"abx", k=draw.choice((0, 1, 2, 3, len(part), 40))))
        s, t, u = varied(characters), plain(part), plain(new)
        mode = draw.choice((ALL, FIRST, draw.randrange(len(characters))))
        table.add((s, t), ("DeleteParts", "s", "t", mode))
        table.add((s, t, u), ("Change", "s", "t", "u", mode))
        table.add((s, t), *[("GetPos", "s", "t", POS_NEXT)] * 3)
        position = draw.randint(0, len(characters))
        table.add((s, u), (draw.choice(("Copy", "CopyParts", "Insert")), "s", "t", position))
    for length in (64, 1000, 2000):
        nested = b"a" * (length // 2) + b"b" * (length // 2)
        table.add((plain(nested), plain(b"ab")), ("DeleteParts", "s", "t", ALL))
        table.add((plain(b"a" * length), plain(b"a"), plain(b"ba")), ("Change", "s", "t", "u", ALL))
        table.add((plain(b"a" * length), plain(b"a" * (length // 2) + b"b")), ("DeleteParts", "s", "t", ALL))


SECTIONS = (
    add_states, add_deletions, add_searches, add_copies, add_changes, add_own_arguments, add_case, add_lengths,
    add_splits, add_nul, add_long_texts)


def main():
    table = Table()
    for section in SECTIONS:
        section(table)
    heading = "\t".join(("s", "t", "u", "call", "outcome", "s", "t", "u"))
    sys.stdout.write("\n".join((heading, *table.rows)) + "\n")


if __name__ == "__main__":
    main()
