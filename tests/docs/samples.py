"""Turns the code blocks of the documentation into one test program.

Usage: samples.py PAGE... > samples.cc

A block ```cpp is the inside of a function, of which what stands directly beneath it in a block ```text is the output; one
without such a block prints nothing. Two marks make exceptions: behind "<!-- frame -->" a block stands outside of all
functions; behind "<!-- example: FILE -->" it quotes a program that is tested by itself. Lines that include headers may
stand at the start of a block.

The blocks of a page run in their order, in a folder of their own.
"""

import pathlib
import re
import sys

BLOCK = re.compile(
    r"(?:^<!-- (?P<mark>frame|example: \S+) -->\n)?^```cpp\n(?P<code>.*?)^```\n(?:\n*^```text\n(?P<output>.*?)^```\n)?",
    re.DOTALL | re.MULTILINE)
INCLUDE = re.compile(r"^#include .*\n", re.MULTILINE)

HEAD = """#include "docs/Sample.h"
"""


def literal(text):
    return "".join(f'\n        "{line}"' for line in
                   text.replace("\\", "\\\\").replace('"', '\\"').replace("\n", "\\n\n").split("\n") if line) or '""'


def placed(code, page, line):
    """The code as the compiler shall see it: its messages name the page."""
    return f'#line {line} "{page}"\n{code}'


def blocks_of(page):
    text = page.read_text(encoding="utf-8")
    known = 0
    for found in BLOCK.finditer(text):
        known += 1
        line = text.count("\n", 0, found.start("code")) + 1
        yield found["mark"] or "", found["code"], found["output"] or "", line
    if known != len(re.findall(r"^\s*```cpp", text, re.MULTILINE)):
        sys.exit(f"{page}: a block of code is not closed, or is indented")


def main(pages):
    includes, frames, tests = [], [], []
    for page in pages:
        samples = []
        for mark, code, output, line in blocks_of(page):
            if mark.startswith("example"):
                continue
            includes += INCLUDE.findall(code)
            body = placed(INCLUDE.sub("\n", code), page, line)
            if mark == "frame":
                frames.append(body)
            else:
                samples.append(f'    folder.expect({line}, {literal(output)}, [] {{\n{body}    }});\n')
        if samples:
            name = re.sub(r"\W", "_", page.stem)
            tests.append(f'TEST(docs, {name}) {{\n    docs::Folder folder("{page.name}");\n{"".join(samples)}}}\n')
    if not tests:
        sys.exit("there is not one sample")
    print(HEAD, *sorted(set(includes)), "\n", "namespace {\n\n", *frames, "\n", "\n".join(tests), "\n}  // namespace", sep="")


if __name__ == "__main__":
    sys.stdout.reconfigure(encoding="utf-8")
    main([pathlib.Path(argument) for argument in sys.argv[1:]])
