"""Holds the documentation to the demonstration: a block behind "<!-- demo -->" stands in what `nkdt demo` prints."""

import pathlib
import re
import subprocess
import sys

MARK = re.compile(r"<!-- demo -->\n```text\n(.*?)```", re.DOTALL)


def main(root: pathlib.Path, program: str) -> int:
    told = subprocess.run([program, "demo"], stdout=subprocess.PIPE, check=True).stdout.decode("utf-8")
    pages = [root / "README.md", *sorted((root / "docs").glob("**/*.md"))]
    quotes = [(page, quote) for page in pages for quote in MARK.findall(page.read_text(encoding="utf-8"))]
    wrong = [(page, quote) for page, quote in quotes if quote not in told]
    for page, quote in wrong:
        print(f"{page.name}: the demonstration does not print\n{quote}")
    print(f"{len(quotes)} blocks quoted")
    return 1 if wrong or not quotes else 0


if __name__ == "__main__":
    sys.exit(main(pathlib.Path(sys.argv[1]), sys.argv[2]))
