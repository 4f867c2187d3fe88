#!/usr/bin/env python3
"""Compares what a shared library exports with the committed list of its interface.

Usage: symbols.py [--nm NM] [--cxxfilt CXXFILT] [--write] LIBRARY HEADERS LIST

The list names classes and namespaces, and in each what is exported of it, with the number of overloads behind a name
that has several; "vtable" and "typeinfo" stand for what the compiler makes of a class. Instances of a class template
that export the same stand together. Left out is what compilers decide each in its own way and users have themselves:
instances of function templates, inline variables, variables inside functions, and the type information of pointers,
which goes with a throw or a catch.

Whatever the list says, every exported name must stand in one of the HEADERS (a folder), and its class or namespace
must be defined there: what users cannot name is not exported.

--write writes the list anew.
"""

import argparse
import collections
import difflib
import pathlib
import re
import subprocess
import sys
import textwrap

OUTSIDE = "(outside of classes and namespaces)"
MADE_FOR_CLASSES = {"vtable for ": "vtable", "VTT for ": "vtable", "typeinfo for ": "typeinfo",
                    "typeinfo name for ": "typeinfo"}
SCOPE = re.compile(r"\b(?:class|struct|union|namespace)\s+(?:[A-Z]+_API\s+)?([\w:]+)\s*(?:final\s*)?(?::[^;{}]*)?\{")

LISTED, INLINE, INSIDE_FUNCTION = range(3)
Symbol = collections.namedtuple("Symbol", "scope name kind")


def lines_of(command, text=None):
    return subprocess.run(command, input=text, check=True, capture_output=True, text=True).stdout.splitlines()


def split_scopes(name):
    """Splits at each "::" that is not inside template arguments."""
    operator = re.search(r"\boperator(?!\w)", name)
    front, back = (name[: operator.start()], [name[operator.start():]]) if operator else (name, [])
    parts, depth, start, i = [], 0, 0, 0
    while i < len(front):
        if front[i] in "<(":
            depth += 1
        elif front[i] in ">)":
            depth -= 1
        elif depth == 0 and front.startswith("::", i):
            parts.append(front[start:i])
            i += 1
            start = i + 1
        elif depth == 0 and front[i] == " ":  # behind the type of the result
            parts, start = [], i + 1
        i += 1
    if not operator:
        parts.append(front[start:])
    return parts + back


def is_instance(name):
    """Tells an instance of a function template; operators may end in ">" themselves."""
    return name.endswith(">") and not re.fullmatch(r"operator(>|>>|->|<=>)", name)


def read_symbol(mangled, name, nm_type):
    name = name.replace("[abi:cxx11]", "")
    for prefix, made in MADE_FOR_CLASSES.items():
        if name.startswith(prefix):
            kind = INLINE if name.endswith("*") else LISTED
            return Symbol(tuple(split_scopes(name[len(prefix):].rstrip("*"))), made, kind)
    *scope, last = split_scopes(name)
    if mangled.startswith(("_ZZ", "_ZGVZ")):
        kind = INSIDE_FUNCTION
    else:
        is_variable = nm_type in "Vvu"
        kind = INLINE if is_variable or is_instance(last) else LISTED
    return Symbol(tuple(scope), last, kind)


def read_symbols(library, nm, cxxfilt):
    """Gives each symbol with the number of its overloads."""
    lines = lines_of([nm, "-D", "--defined-only", library])
    types, mangled = [line.split()[-2] for line in lines], [line.split()[-1] for line in lines]
    text = "\n".join(mangled)
    full = lines_of([cxxfilt], text)
    short = lines_of([cxxfilt, "--no-params"], text)
    # Constructors and destructors have several symbols each, which read the same.
    unique = {whole: read_symbol(raw, brief, kind) for raw, whole, brief, kind in zip(mangled, full, short, types)}
    return collections.Counter(unique.values())


# ---- the list


def grouped(symbols):
    """Maps each scope to the names in it."""
    scopes = collections.defaultdict(dict)
    for symbol, overloads in symbols.items():
        if symbol.kind == LISTED:
            made = symbol.name in MADE_FOR_CLASSES.values()
            scopes["::".join(symbol.scope) or OUTSIDE][symbol.name] = 1 if made else overloads
    return scopes


def list_of(symbols):
    alike = collections.defaultdict(list)
    for scope, names in sorted(grouped(symbols).items()):
        template = scope.partition("<")[0] if scope.endswith(">") else scope
        entries = ", ".join(name if count == 1 else f"{name} ({count})" for name, count in sorted(names.items()))
        alike[template, entries].append(scope[len(template):])
    text = []
    for (template, entries), instances in alike.items():
        heading = template + " ".join(instances)
        text += textwrap.wrap(heading, 118, subsequent_indent="  ", break_long_words=False)
        # A name and its number stay on one line.
        glued = re.sub(r" (?=\(\d+\))", "\0", entries).replace("operator ", "operator\0")
        wrapped = textwrap.wrap(glued, 118, initial_indent="    ", subsequent_indent="    ",
                                break_long_words=False, break_on_hyphens=False)
        text += [line.replace("\0", " ") for line in wrapped]
    return text


# ---- what is visible to users


def read_headers(folder):
    words, scopes = set(), set()
    for header in pathlib.Path(folder).rglob("*.h"):
        text = re.sub(r"//.*", "", header.read_text(encoding="utf-8"))
        words.update(re.findall(r"\w+", text))
        for scope in SCOPE.findall(text):
            scopes.update(scope.split("::"))
    return words, scopes


def internal(symbols, words, scopes):
    """Gives each symbol that users cannot name, and why."""
    for symbol in symbols:
        path = "::".join([*symbol.scope, symbol.name])
        hidden = [part for part in map(plain, symbol.scope) if part not in scopes]
        strange = sorted(set(re.findall(r"[A-Za-z_]\w*", path)) - words - set(MADE_FOR_CLASSES.values()))
        if symbol.scope and symbol.scope[0] in ("std", "__gnu_cxx"):
            yield f"{path}: belongs to the standard library"
        elif symbol.kind == INSIDE_FUNCTION:
            pass  # as visible as the function
        elif hidden:
            yield f"{path}: no public header defines {hidden[0]}"
        elif strange:
            yield f"{path}: no public header names {', '.join(strange)}"


def plain(scope):
    return scope.partition("<")[0]


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--nm", default="nm")
    parser.add_argument("--cxxfilt", default="c++filt")
    parser.add_argument("--write", action="store_true")
    parser.add_argument("library")
    parser.add_argument("headers")
    parser.add_argument("list", type=pathlib.Path)
    call = parser.parse_args()

    symbols = read_symbols(call.library, call.nm, call.cxxfilt)
    if not symbols:
        sys.exit(f"{call.library} exports nothing")
    problems = [f"internal: {problem}" for problem in internal(symbols, *read_headers(call.headers))]

    actual = list_of(symbols)
    if call.write:
        call.list.write_text("\n".join(actual) + "\n", encoding="utf-8")
    expected = call.list.read_text(encoding="utf-8").splitlines()
    problems += difflib.unified_diff(expected, actual, "in the list", "exported", n=1, lineterm="")
    if problems:
        hint = f"A change that is meant: symbols.py --write writes {call.list.name} anew"
        sys.exit("\n".join([*problems, "", hint]))
    print(f"{call.library} exports what {call.list.name} says")


if __name__ == "__main__":
    main()
