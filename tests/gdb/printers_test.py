"""Runs the program of values.cc in gdb and holds what the printers show against the table below.

Usage: printers_test.py GDB PRINTERS PROGRAM
"""

import os
import subprocess
import sys

SKIPPED = 77

# The variable and what it shows; of the five states of a value the variable's own comes first.
STATES = {
    "text": '"Müller \\"A\\"\\\\\\n\\201"',
    "character": "'Ä'",
    "truth": "true",
    "number": "-2147483648",
    "shortNumber": "-32768",
    "decimal": "-1234.50",
    "real": "0.1",
    "moment": "05.03.2004 14:07:09",
    "day": "05.03.2004",
    "duration": "-01:30",
}
VALUES = {
    "emptyText": '""',
    "noCharacter": "'\\0'",
    "falsehood": "false",
    "five": "true (5)",
    "small": "-0.05",
    "wide": "1234567890123456789012345678",
    "dayWithTime": "05.03.2004 08:00:00, modified",
    "hundredths": "01,50",
    "wholeHours": "01 (1800 ticks), modified",
    "longText": '"0123456789012345678901234567890123456789"',
    "nullSeven": "null (stored 7), modified",
    "alwaysDefined": "undefined, modified",
    "frameworkText": '"Köln"',
    "plainDecimal": "1.50",
    "*error": 'error 1 "Default-Catch / Folgefehler" in "SetFromOFL(LPCTSTR,NkFormat*)", '
              'cause 20 "Format nicht zugelassen"',
}


def expectations():
    for name, text in STATES.items():
        yield name + ".defined", text
        yield name + ".changed", text + ", modified"
        yield name + ".missing", "missing"
        yield name + ".null", "null"
        yield name + ".source", "moved from"
    yield from VALUES.items()


def run(gdb, printers, program, expressions):
    commands = ["set charset UTF-8", "set confirm off", "source " + printers, "break look", "run", "up"]
    for expression in expressions:
        commands += [f"echo <<{expression}>>", f"output {expression}", "echo \\n"]
    commands += ["set print elements 5", "echo <<cut>>", "output longText", "echo \\n"]
    call = [gdb, "-batch", "-nx"]
    for command in commands:
        call += ["-ex", command]
    return subprocess.run([*call, program], capture_output=True, text=True, encoding="utf-8", timeout=300,
                          env={**os.environ, "LC_ALL": "C.UTF-8", "NKDT_POOL": "off"})


def main(gdb, printers, program):
    expected = dict(expectations())
    result = run(gdb, printers, program, expected)
    for reason in ("ptrace: Operation not permitted", "Scripting in the \"Python\" language is not supported"):
        if reason in result.stderr:
            print("skipped, gdb cannot be used here: " + reason)
            return SKIPPED
    shown = dict(line[2:].split(">>", 1) for line in result.stdout.splitlines() if line.startswith("<<"))
    expected["cut"] = '"01234"...'
    wrong = [(name, text) for name, text in expected.items() if shown.get(name) != text]
    for name, text in wrong:
        print(f"{name} shows {shown.get(name)}, not {text}")
    print(f"{len(expected) - len(wrong)} of {len(expected)} values shown as they should be")
    if wrong:
        print(result.stdout, result.stderr, sep="\n")
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
