#!/usr/bin/env python3
"""Truth table of the whole-number classes NkDtLong and NkDtShort.

Writes one row per (class, operation, process default mode, operands) with what the rules
of integer_rules.py demand: the error, the result and the state of the left object afterwards.

    python3 integers.py > integers.tsv

Columns, separated by tabs; "-" stands for "none":

    class      Long or Short
    operation  x is the left object, y the right one of the same class, n an int, T the class
    default    the process default working mode while the operation runs
    left       state of x, written mode:defined:stored:modified
    right      what stands on the right: a state, "self", an int, a "text", archive bytes, ...
    error      number of the raised error, "archive" for an archive exception
    cause      number of the error that the raised one replaces
    result     what the operation yields: a state, a number or a "text"
    after      state of x afterwards
"""

import itertools
import struct
import sys

sys.dont_write_bytecode = True  # leaves the source folder as it is
from integer_rules import (
    ALWAYS_DEFINED, ARITHMETIC, CHANGE, COMPARISON, DIFFERENT_CLASSES, EXTERN_VERSION,
    INT_ARITHMETIC, INT_CHANGE, INT_COMPARISON, INT_MAX, INT_MIN, LONG, MISSING, NULL,
    PROCESS_DEFAULT, READING, Refusal, SHORT, Text, UNARY_CHANGE, Value, assigned_int,
    computed, constructed_from_sibling, constructed_from_text, constructed_from_text_value,
    constructed_in_mode, loaded, quoted, set_from_extern, switched_to_mode)


class Table:
    """Collects rows; an operation either reads x or changes it."""

    def __init__(self, whole):
        self.whole = whole
        self.rows = {}  # in order, each once

    def reads(self, name, rule, default, x, right, shown=None):
        self._row(name, default, x, right, shown, lambda: (rule(self.whole, default, x, right), x))

    def changes(self, name, rule, default, x, right, shown=None):
        self._row(name, default, x, right, shown, lambda: (None, rule(self.whole, default, x, right)))

    def yields(self, name, default, shown, rule):
        """A constructor: there is no x."""
        self._row(name, default, None, None, shown, lambda: (rule(), None))

    def answers(self, name, default, x, shown, outcome):
        """An operation that both yields a result and changes x."""
        self._row(name, default, x, None, shown, lambda: outcome)

    def _row(self, name, default, x, right, shown, outcome):
        error = cause = 0
        try:
            result, after = outcome()
        except Refusal as refusal:
            error, cause, result = refusal.number, refusal.cause, None
            after = x if refusal.after is None else refusal.after
        shown = right if shown is None else shown
        cells = (self.whole.name, name, default, x, shown, error, cause, result, after)
        self.rows["\t".join("-" if cell is None else str(cell) for cell in cells)] = None


MODES = (MISSING, NULL, ALWAYS_DEFINED)
FLAGS = (0, 1)


def boundary_values(whole):
    """Values around the edges of the range, of signs and of products that just fit."""
    root = int((whole.high + 1) ** 0.5)  # root * root just fits, (root + 1) squared does not
    return [0, 1, -1, 2, 7, -7, 200, root, root + 1, -root - 1] + [
        whole.high, whole.high - 1, whole.low, whole.low + 1]


def boundary_ints(whole):
    """The int operands of a short are full 32-bit numbers, so they go beyond its range."""
    beyond = [32768, -32769, 40000, -40000, 65535, 65536, 1000000, INT_MAX, INT_MIN] if whole is SHORT else []
    return boundary_values(whole) + beyond


def shapes(whole, defined, stored_values):
    """One value per mode and kind: defined, undefined 0, undefined with a stored value."""
    for mode in MODES:
        yield Value(mode, 1, defined, 0)
        for stored in stored_values:
            yield Value(mode, 0, stored, 0)


def flagged(values):
    for value in values:
        for flag in FLAGS:
            yield value._replace(modified=flag)


def add_value_pairs(table):
    """Defined operands of every boundary value against each other."""
    modes = itertools.cycle(itertools.product(MODES, MODES, MODES))
    for a, b in itertools.product(boundary_values(table.whole), repeat=2):
        default, left_mode, right_mode = next(modes)
        x, y = Value(left_mode, 1, a, 0), Value(right_mode, 1, b, 0)
        for name, rule in (ARITHMETIC | COMPARISON).items():
            table.reads(name, rule, default, x, y)
        for name, rule in CHANGE.items():
            table.changes(name, rule, default, x, y)


def add_state_pairs(table):
    """Every kind of operand against every kind of operand."""
    whole = table.whole
    defaults = itertools.cycle(MODES)
    for x, y in itertools.product(shapes(whole, 7, (0, 5, whole.high)), shapes(whole, 2, (0, 3))):
        for x_flag, y_flag in itertools.product(FLAGS, repeat=2):
            x, y = x._replace(modified=x_flag), y._replace(modified=y_flag)
            for (name, rule), default in itertools.product(ARITHMETIC.items(), MODES):
                table.reads(name, rule, default, x, y)
            for name, rule in CHANGE.items():
                table.changes(name, rule, next(defaults), x, y)
        for name, rule in COMPARISON.items():
            table.reads(name, rule, next(defaults), x, y)
            table.reads(name, rule, next(defaults), x, y._replace(stored=x.stored))


def add_self_operands(table):
    """The same object on both sides."""
    for x, default in itertools.product(flagged(shapes(table.whole, 7, (0, 5, table.whole.high))), MODES):
        for name, rule in (ARITHMETIC | COMPARISON).items():
            table.reads(name, rule, default, x, x, shown="self")
        for name in ("x+=y", "x-=y", "x=y", "Assign(y)"):
            table.changes(name, CHANGE[name], default, x, x, shown="self")


def add_ints(table):
    """An int on either side: every boundary against every boundary, then every kind of operand."""
    whole = table.whole
    modes = itertools.cycle(itertools.product(MODES, MODES))
    defaults = itertools.cycle(MODES)
    for a, n in itertools.product(boundary_values(whole), boundary_ints(whole)):
        default, mode = next(modes)
        x = Value(mode, 1, a, 0)
        for name, rule in (INT_ARITHMETIC | INT_COMPARISON).items():
            table.reads(name, rule, default, x, n)
        for name, rule in INT_CHANGE.items():
            table.changes(name, rule, default, x, n)
    for x, n in itertools.product(flagged(shapes(whole, 7, (0, 5, whole.low))), (0, 3, -1, 40000, INT_MIN)):
        for (name, rule), default in itertools.product(INT_ARITHMETIC.items(), MODES):
            table.reads(name, rule, default, x, n)
        for name, rule in INT_CHANGE.items():
            table.changes(name, rule, next(defaults), x, n)
    for x, n in itertools.product(shapes(whole, 7, (0, 5, whole.low)), (0, 5, 7, 40000, INT_MIN)):
        for name, rule in INT_COMPARISON.items():
            table.reads(name, rule, next(defaults), x, n)


def add_unary(table):
    """Operations of one object, in every mode, for every boundary value, defined or not."""
    defaults = itertools.cycle(MODES)
    for mode, defined, stored, flag in itertools.product(MODES, (1, 0), boundary_values(table.whole), FLAGS):
        x = Value(mode, defined, stored, flag)
        for name, rule in UNARY_CHANGE.items():
            table.changes(name, rule, next(defaults), x, None)
        for name, rule in READING.items():
            table.reads(name, rule, next(defaults), x, None)
        # What was moved away is new when it is used again.
        default = next(defaults)
        table.answers("T(move(x))", default, x, None, (x, constructed_in_mode(PROCESS_DEFAULT, default)))


def add_state_setters(table):
    """Working mode and modified flag."""
    for x, default in itertools.product(flagged(shapes(table.whole, 7, (0, 5))), MODES):
        for mode in (-1, 0, 1, 2, 3, 4, 99):
            table.changes("SetWorkingMode(n)", lambda w, d, x, m: switched_to_mode(x, m, d), default, x, mode)
        for flag in FLAGS:
            table.changes("SetModified(n)", lambda w, d, x, f: x._replace(modified=f), default, x, flag)
            table.answers("GetAndResetModified(n)", default, x, flag, (x.modified, x._replace(modified=flag)))


def add_sql(table):
    whole = table.whole
    natives = boundary_values(whole)
    if whole is LONG:
        natives = natives + [INT_MAX + 1, INT_MIN - 1, whole.native_high, whole.native_low]
    for x, n in itertools.product(flagged(shapes(whole, 7, (0, 7))), natives):
        table.changes("SetFromSQL(n)", lambda w, d, x, n: assigned_int(w, x, n), MISSING, x, n)


def add_assign_from_other_classes(table):
    for x in flagged(shapes(table.whole, 7, (0, 5))):
        for other in (Value(MISSING, 1, 3, 0), Value(NULL, 0, 0, 1), Value(ALWAYS_DEFINED, 1, 7, 0)):
            table.changes("Assign(sibling)", refuse_other_class, MISSING, x, other)
        for text in (Text(MISSING, 0, "3"), Text(NULL, 1, None)):
            table.changes("Assign(string)", refuse_other_class, MISSING, x, text)


def refuse_other_class(_whole, _default, _x, _other):
    raise Refusal(DIFFERENT_CLASSES)


def add_archives(table):
    """Whole archives, then archives cut off at every byte."""
    whole = table.whole
    for x in flagged(shapes(whole, 7, (0, 7))):
        for defined, stored in itertools.product((0, 1), (0, 7, -1, whole.high, whole.low)):
            archive = struct.pack(whole.archive_layout, defined, stored)
            table.changes("Load", lambda w, d, x, a: loaded(w, x, a), MISSING, x, archive, shown=archive.hex())
        for defined, stored in ((1, 258), (0, -1)):
            archive = struct.pack(whole.archive_layout, defined, stored)
            for length in range(len(archive)):
                cut = archive[:length]
                table.changes("Load", lambda w, d, x, a: loaded(w, x, a), MISSING, x, cut, shown=cut.hex() or "empty")


def texts(whole):
    low, high = str(whole.low), str(whole.high)
    above, below = str(whole.high + 1), str(whole.low - 1)
    head = whole.text_head
    plain = ["", "0", "-0", "+0", "7", "+7", "-7", "007", high, low, "+" + high, above, below, "99999999999",
             "-99999999999", "9" * 25, "-" + "9" * 25, "0" * 30 + "42", "32768", "40000", "65537", "4294967297",
             "18446744073709551617"]
    blanks = [" ", "   ", " 7", "   -7", " +7", "7 ", " 7 ", "- 7", "+ 7", "7 7", " " * 30 + "7"]
    signs = ["+", "-", "--7", "++7", "+-7", "-+7", "7-", "7+"]
    leftovers = ["x", "12x", "x12", "0x10", "1e3", "12;", "12:5", "1'000", "12ä", "ä", "12€", above + "x",
                 "9" * 25 + "x", high + "x", "40000x", below + " "]
    separators = ["12,9", "12.9", "-12,9", "+12.9", ",", ".", ",5", ".5", " ,5", "   .5", "-,5", "+.5", "12,", "12.",
                  "12,x", "12.x", "12x,5", "12x.5", "x,5", "5 ,3", "5 .3", " 5,3", "0,", "-0,9", ",,", "..", "1,2,3",
                  "1.2.3", "1.234,5", "1,234.5", "12.5,", "12,5.7", ".,5", ",.5", "1.000.000", "1,000,000", "1.,5"]
    ranges = [high + ",9", low + ",9", above + ",0", below + ",0", high + ".0", above + ".0", "40000,5", "40000x,5",
              "123456,7", "1234567,8", "12345678901,5", "99999999999.5", "-99999999999,5"]
    # Around the number of bytes that count: one less, all of them, one more, many more.
    edges = []
    for length in (head - 1, head, head + 1, head + 5):
        for separator in ",.":
            edges.append("0" * (length - 1) + "5" + separator + "9")
            edges.append(" " * (length - 2) + "42" + separator + "9")
            edges.append("-" + "0" * (length - 2) + "7" + separator)
            edges.append("1" * (head - 1) + "x" * (length - head + 1) + separator + "1")
            edges.append("2" + "0" * (length - 2) + "x" + separator)
            edges.append("7" + " " * (length - 1) + separator)
    edges += [low + "0" + ",9", "0" * head + "99999999999,5", "0" * head + "x,5", "0" * head + "x", " " * head + "7,5",
              " " * head + ",5", "1.2" + "0" * head + ",5", "12" + "," + "9" * 30, "1" * 40 + ",", "7x" + "0" * 30 + ",5"]
    return list(dict.fromkeys(plain + blanks + signs + leftovers + separators + ranges + edges))


def add_texts(table):
    whole = table.whole
    kinds = itertools.cycle(itertools.product(MODES, MODES, FLAGS))
    for text in texts(whole):
        default, mode, flag = next(kinds)
        table.yields("T(text)", default, quoted(text), lambda t=text, d=default: constructed_from_text(whole, d, t))
        source = Text(mode, flag, text)
        table.yields("T(string)", default, source, lambda s=source: constructed_from_text_value(whole, s))
    for default, mode, flag in itertools.product(MODES, (MISSING, NULL), FLAGS):
        source = Text(mode, flag, None)
        table.yields("T(string)", default, source, lambda s=source: constructed_from_text_value(whole, s))


def add_extern(table):
    whole = table.whole

    def row(x, text, flag, version):
        source = "null" if text is None else "undefined:%d" % text.mode if text.content is None else quoted(text.content)
        table.changes("SetFromExtern", lambda w, d, x, r: set_from_extern(w, x, *r), MISSING, x, (text, flag, version),
                      shown="%d %d %s" % (version, flag, source))

    def defined(content):
        return Text(MISSING, 0, content)

    for content in texts(whole):
        for x in (Value(NULL, 0, 0, 0), Value(MISSING, 1, 7, 0)):
            row(x, defined(content), 1, EXTERN_VERSION)
    sources = [None, Text(MISSING, 0, None), Text(NULL, 0, None)]
    sources += [defined(c) for c in ("", "0", "7", "-12,9", "12x", "99999999999", " ")]
    calls = [(1, EXTERN_VERSION), (0, EXTERN_VERSION), (2, EXTERN_VERSION), (-1, EXTERN_VERSION),
             (1, 99), (0, 101), (1, 0), (1, 356)]  # 356 is 100 in its low byte
    for x, text, (flag, version) in itertools.product(flagged(shapes(whole, 7, (0, 5))), sources, calls):
        row(x, text, flag, version)


def add_constructors(table):
    whole = table.whole
    for default in MODES:
        for mode in (-1, 0, 1, 2, 3, 4, 99):
            table.yields("T(mode)", default, mode, lambda m=mode, d=default: constructed_in_mode(m, d))
        for n in boundary_ints(whole):
            table.yields("T(n)", default, n, lambda n=n, d=default: computed(whole, d, n))
        if whole is SHORT:
            for n in boundary_values(whole):
                table.yields("T(short)", default, n, lambda n=n, d=default: computed(whole, d, n))
        numbers = boundary_values(SHORT) + (boundary_ints(SHORT) if whole is SHORT else [])
        for n, mode, flag in itertools.product(dict.fromkeys(numbers), MODES, FLAGS):
            source = Value(mode, 1, n, flag)
            table.yields("T(sibling)", default, source, lambda s=source: constructed_from_sibling(whole, s))
        for mode, flag in itertools.product(MODES, FLAGS):
            source = Value(mode, 0, 0, flag)
            table.yields("T(sibling)", default, source, lambda s=source: constructed_from_sibling(whole, s))


SECTIONS = (
    add_constructors, add_texts, add_unary, add_state_setters, add_value_pairs, add_state_pairs, add_self_operands,
    add_ints, add_sql, add_assign_from_other_classes, add_archives, add_extern)


def main():
    lines = ["\t".join(("class", "operation", "default", "left", "right", "error", "cause", "result", "after"))]
    for whole in (LONG, SHORT):
        table = Table(whole)
        for section in SECTIONS:
            section(table)
        lines += table.rows
    # Texts are code page 1252 everywhere, in the table too.
    sys.stdout.buffer.write(("\n".join(lines) + "\n").encode("cp1252"))


if __name__ == "__main__":
    main()
