"""Holds the documentation to its examples: a code block behind "<!-- example: FILE -->" stands in examples/FILE as it is."""

import pathlib
import re
import sys

MARK = re.compile(r"<!-- example: (\S+) -->\n```cpp\n(.*?)```", re.DOTALL)


def main(root: pathlib.Path) -> int:
    pages = [root / "README.md", *sorted((root / "docs").glob("**/*.md"))]
    quotes = [(page, *quote) for page in pages for quote in MARK.findall(page.read_text(encoding="utf-8"))]
    wrong = [(page, name) for page, name, code in quotes
             if code not in (root / "examples" / name).read_text(encoding="utf-8")]
    for page, name in wrong:
        print(f"{page.name}: the example {name} is quoted differently from what it is")
    print(f"{len(quotes)} examples quoted")
    return 1 if wrong or not quotes else 0


if __name__ == "__main__":
    sys.exit(main(pathlib.Path(sys.argv[1])))
