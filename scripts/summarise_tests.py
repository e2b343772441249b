#!/usr/bin/env python3
"""summarise_tests.py [--style-failures N] ARCHITECTURE...: sums up build/ARCHITECTURE/results.

Single tests are counted, from GoogleTest's reports. A program that ended badly without a failed test to
show for it (it crashed, hung, or could not be started) counts as one failure; what it had passed until
then counts. The last line is `N passed, N failed`. The exit code is 0 only if tests ran and none failed.
"""
import argparse
import re
import sys
import xml.etree.ElementTree as xml
from pathlib import Path

BUILD = Path(__file__).resolve().parent.parent / "build"
SHOWN_LINES = 60


class Suite:
    def __init__(self):
        self.passed = self.failed = self.skipped = 0
        # Pairs of a title and the lines to show.
        self.findings = []

    def fail(self, title, lines):
        self.failed += 1
        self.findings.append((title, lines[-SHOWN_LINES:]))


def read_lines(path):
    return path.read_text(errors="replace").replace("\r", "").splitlines() if path.exists() else []


def output_of(test, lines):
    """The lines that a program wrote between the start and the end of one test."""
    starts = [i for i, line in enumerate(lines) if line.startswith("[ RUN      ] ") and line[13:] == test]
    if not starts:
        return lines
    shown = []
    for line in lines[starts[-1]:]:
        shown.append(line)
        if line.startswith(("[  FAILED  ] ", "[       OK ] ")):
            break
    return shown


def count_report(report, lines, suite):
    """Counts what GoogleTest reported. Returns the number of failures."""
    failures = 0
    for case in xml.parse(report).getroot().iter("testcase"):
        name = f"{case.get('classname')}.{case.get('name')}"
        if case.find("failure") is not None:
            failures += 1
            suite.fail(name, output_of(name, lines))
        elif case.get("result") == "completed":
            suite.passed += 1
        else:
            suite.skipped += 1
    return failures


def count_output(lines, suite):
    """The same from the output alone: a program that dies leaves no report."""
    for line in lines:
        result = re.match(r"\[ +(OK|FAILED|SKIPPED) +\] ([^\s,]+\.[^\s,]+)(, where .*)? \(\d+ ms\)$", line)
        if not result:
            continue
        name = result[2]
        if result[1] == "OK":
            suite.passed += 1
        elif result[1] == "SKIPPED":
            suite.skipped += 1
        else:
            suite.fail(name, output_of(name, lines))


def count_program(case, results, suite):
    """Adds one CTest entry to the suite."""
    bad = case.get("status") != "run"
    output = (case.findtext("system-out") or "").replace("\r", "")
    marker = re.search(r"^tavix-program: (\S+)$", output, re.MULTILINE)
    lines = read_lines(results / f"{marker[1]}.log") if marker else output.splitlines()
    if not marker or not any(line.startswith("[==========]") for line in lines):
        # Not written with GoogleTest, or dead before its first test: the entry is one test.
        if bad:
            suite.fail(f"{case.get('name')} (CTest says: {case.get('status')})", lines)
        else:
            suite.passed += 1
        return
    try:
        failures = count_report(results / f"{marker[1]}.xml", lines, suite)
        if bad and failures == 0:
            suite.fail(f"{case.get('name')} ended badly after its tests", lines)
    except (OSError, xml.ParseError):
        count_output(lines, suite)
        # What it was at when it died: the first lines hold the reason, a long trace of the platform follows.
        starts = [i for i, line in enumerate(lines) if line.startswith("[ RUN      ] ")]
        suite.fail(f"{case.get('name')} died without a report", lines[starts[-1] if starts else 0:][:SHOWN_LINES])


def summarise(architecture):
    suite = Suite()
    results = BUILD / architecture / "results"
    try:
        cases = list(xml.parse(results / "ctest.xml").getroot().iter("testcase"))
    except (OSError, xml.ParseError):
        suite.fail("the suite did not run to its end", read_lines(BUILD / architecture / "test.log"))
        return suite
    for case in cases:
        count_program(case, results, suite)
    return suite


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--style-failures", type=int, default=0)
    parser.add_argument("architectures", nargs="+")
    options = parser.parse_args()
    suites = {architecture: summarise(architecture) for architecture in options.architectures}
    for architecture, suite in suites.items():
        for title, lines in suite.findings:
            print(f"\n--- {architecture}: {title}")
            print("\n".join("    " + line for line in lines))
    print()
    for architecture, suite in suites.items():
        print(f"{architecture}: {suite.passed} passed, {suite.failed} failed, {suite.skipped} skipped")
    if options.style_failures:
        print(f"style: {options.style_failures} failed (see build/log/style.log)")
    passed = sum(suite.passed for suite in suites.values())
    failed = sum(suite.failed for suite in suites.values()) + options.style_failures
    if passed + failed == 0:
        print("no test ran")
    print(f"{passed} passed, {failed} failed")
    sys.exit(0 if passed and not failed else 1)


main()
