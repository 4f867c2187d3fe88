#!/usr/bin/env python3
"""Installs the Debian package into a root of its own and runs the program from there.

Usage: deb_test.py FOLDER, which holds one .deb.

As root, dpkg installs and removes it, with the dependencies checked against the packages of this system; else it is
only unpacked. The program may load nothing but what the package brings or one of its dependencies does: programs of
this system have more installed than a bare one.
"""

import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile


def run(*command, **options):
    done = subprocess.run([str(word) for word in command], capture_output=True, text=True, **options)
    expect(done.returncode == 0, f"{' '.join(map(str, command))}:\n{done.stdout}{done.stderr}")
    return done.stdout


def expect(holds, message):
    if not holds:
        sys.exit(message)


# ---- the package database


def installed_packages():
    """Maps each installed package, and each name that it provides, to the packages that it depends on."""
    query = run("dpkg-query", "-W", "-f", r"${db:Status-Status}|${Package}|${Provides}|${Depends}, ${Pre-Depends}\n")
    depends = {}
    for line in query.splitlines():
        status, package, provided, needed = line.split("|", 3)
        if status == "installed":
            for name in [package, *names_in(provided)]:
                depends.setdefault(name, set()).update(names_in(needed), {package})
    return depends


def names_in(field):
    return re.findall(r"(?:^|[,|])\s*([a-z0-9][a-z0-9+.-]*)", field)


def with_dependencies(packages):
    """All packages that are there when these are, on this system."""
    depends, found, waiting = installed_packages(), set(), list(packages)
    while waiting:
        package = waiting.pop()
        if package not in found and package in depends:
            found.add(package)
            waiting += depends[package]
    return found


def owners(files):
    """Maps each file to the package that installed it."""
    spellings = {}
    for file in files:
        spellings[file] = file
        if file.startswith("/usr/"):  # /lib is a link into /usr, but many packages name it
            spellings[file[len("/usr"):]] = file
    listing = subprocess.run(["dpkg-query", "-S", *spellings], capture_output=True, text=True).stdout
    found = {}
    for line in listing.splitlines():
        package, _, path = line.partition(": ")
        if path in spellings:
            found[spellings[path]] = package.partition(":")[0]
    return found


# ---- the root


def install(deb, root):
    """A root with the package and with what dpkg needs to run the package's scripts there."""
    if os.geteuid() != 0:
        run("dpkg-deb", "-x", deb, root)
        return
    database = root / "var/lib/dpkg"
    for folder in ("info", "updates", "triggers"):
        (database / folder).mkdir(parents=True)
    shutil.copy("/var/lib/dpkg/status", database)
    (root / "etc").mkdir()
    for name in ("bin", "sbin", "lib", "lib64"):  # links into /usr, where they are links here
        if os.path.islink(f"/{name}"):
            (root / "usr" / name).mkdir(parents=True)
            (root / name).symlink_to(f"usr/{name}")
    shell, linker = shutil.which("sh"), shutil.which("ldconfig", path="/sbin:/usr/sbin")
    for file in [shell, linker, *re.findall(r"(/\S+) \(", run("ldd", shell))]:
        target = root / file.lstrip("/")
        target.parent.mkdir(parents=True, exist_ok=True)
        shutil.copy(file, target)
    run("dpkg", f"--root={root}", "--log=/dev/null", "--install", deb)
    cache = run("chroot", root, "/sbin/ldconfig", "-p")
    for library in libraries_of(root):
        expect(library.name in cache, f"{library.name} is not known to the dynamic linker")


def remove(root):
    if os.geteuid() == 0:
        run("dpkg", f"--root={root}", "--log=/dev/null", "--remove", "nkdt")
        left = [str(path) for path in (root / "usr").rglob("*nk*")]
        expect(not left, f"the package leaves {left}")


def libraries_of(root):
    return [path for path in (root / "usr/lib").glob("lib*.so.*") if path.is_symlink()]


# ---- the checks


def check_links(root):
    """Everything that is linked is found."""
    for file in [root / "usr/bin/nkdt", *libraries_of(root)]:
        listing = run("ldd", file)
        expect("not found" not in listing, f"{file} lacks libraries:\n{listing}")


def check_debugger_script(root):
    """gdb looks for a script beside the name of the library's file."""
    auto_load = root / "usr/share/gdb/auto-load"
    scripts = list(auto_load.rglob("*-gdb.py"))
    expect(scripts, "there are no printers for gdb")
    for script in scripts:
        library = root / str(script.relative_to(auto_load))[: -len("-gdb.py")]
        expect(library.is_file() and not library.is_symlink(), f"{script} belongs to no library")


def check_program(root, folder, version):
    """Runs the program; gives the files that it loaded."""
    program = root / "usr/bin/nkdt"
    environment = {name: value for name, value in os.environ.items()
                   if not name.startswith("LD_") and name not in ("DISPLAY", "WAYLAND_DISPLAY")}
    said = run(program, "--version", env=environment)
    expect(said == f"nkdt {version}\n", f"the program says {said!r}")

    trace = folder / "trace"
    environment.update(LD_DEBUG="files", LD_DEBUG_OUTPUT=str(trace))
    said = run(program, "demo", folder / "demo.db", env=environment)
    expect("Artikel" in said, f"the demonstration says {said!r}")
    loaded = set()
    for file in folder.glob("trace.*"):
        loaded.update(re.findall(r"calling init: (/\S+)", file.read_text(encoding="utf-8", errors="replace")))
    expect(loaded, "it is not known what the program loaded")
    return {os.path.realpath(file) for file in loaded}


def check_dependencies(deb, root, loaded):
    foreign = {file for file in loaded if not file.startswith(os.path.realpath(root))}
    expect(foreign != loaded, "the program did not load the package's own libraries")
    named = names_in(run("dpkg-deb", "-f", deb, "Depends"))
    expected, owner = with_dependencies(named), owners(foreign)
    for file in sorted(foreign):
        expect(owner.get(file) in expected, f"{file} of the package {owner.get(file)} is loaded, but no dependency")
    print(f"{len(loaded)} libraries loaded, {len(foreign)} of them from dependencies: {', '.join(sorted(named))}")


def main():
    packages = list(pathlib.Path(sys.argv[1]).glob("*.deb"))
    expect(len(packages) == 1, f"there are {len(packages)} packages in {sys.argv[1]}")
    deb = packages[0]
    version = run("dpkg-deb", "-f", deb, "Version").strip()
    with tempfile.TemporaryDirectory() as folder:
        folder = pathlib.Path(folder)
        root = folder / "root"
        root.mkdir()
        install(deb, root)
        check_links(root)
        check_debugger_script(root)
        check_dependencies(deb, root, check_program(root, folder, version))
        remove(root)


if __name__ == "__main__":
    main()
