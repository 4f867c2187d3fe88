#!/usr/bin/env python3
"""Counts the test cases of one ctest run.

Usage: tally_tests.py CTEST_JUNIT_FILE RESULTS_FOLDER

ctest knows programs; the GoogleTest report of a program, RESULTS_FOLDER/<test>.xml, knows its test cases.
A program without a report counts as one test. A program that ctest calls failed counts at least one failure,
whatever its report says: it may have crashed, leaked or timed out after its last test case.
Prints "PASSED FAILED SKIPPED".
"""

import pathlib
import sys
import xml.etree.ElementTree as xml


def count_cases(report):
    passed = failed = skipped = 0
    for case in xml.parse(report).getroot().iter("testcase"):
        if case.find("failure") is not None or case.find("error") is not None:
            failed += 1
        elif case.get("status") == "notrun" or case.get("result") in ("skipped", "suppressed"):
            skipped += 1
        else:
            passed += 1
    return passed, failed, skipped


def count_program(entry, results):
    ran = entry.get("status") == "run"
    report = results / (entry.get("name") + ".xml")
    if not report.exists():
        if entry.get("status") == "disabled" or (entry.find("skipped") is not None and entry.get("status") == "notrun"
                                                 and "SKIP" in (entry.find("skipped").get("message") or "")):
            return 0, 0, 1
        return (1, 0, 0) if ran else (0, 1, 0)
    try:
        passed, failed, skipped = count_cases(report)
    except xml.ParseError:
        return 0, 1, 0
    if not ran and failed == 0:
        failed = 1
    return passed, failed, skipped


def main():
    junit, results = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2])
    entries = xml.parse(junit).getroot().iter("testcase")
    totals = [sum(column) for column in zip(*(count_program(entry, results) for entry in entries))]
    print(*(totals or [0, 0, 0]))


if __name__ == "__main__":
    main()
