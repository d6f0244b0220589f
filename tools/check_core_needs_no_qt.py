#!/usr/bin/env python3
"""Proves that the core needs no Qt: check_core_needs_no_qt.py TREE_WITHOUT_QT TREE_WITH_QT

The first tree is configured with Qt switched off, the second is built with it. What the first would build, the second has
built by the same commands, from the same files, and none of them is Qt's.
"""
import json
import pathlib
import re
import subprocess
import sys

TOOLKIT = re.compile(r"/qt\d?/|/Qt[A-Z\d]|libQt|-DQT_")
OUTPUT = re.compile(r" -o (\S+)")
# A class or function of Qt's; those of a namespace of our own may be called alike.
TOOLKIT_SYMBOL = re.compile(r"(?<![\w:])(Q[A-Z]|Qt[A-Z:]|q[A-Z]|qt_)")


def give_up(why):
    sys.exit(f"check_core_needs_no_qt: {why}")


def output_of(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def commands(tree):
    """Object to command, with the name of the tree taken out."""
    entries = json.loads((tree / "compile_commands.json").read_text())
    listed = (entry["command"].replace(str(tree), "TREE") for entry in entries)
    return {OUTPUT.search(command)[1]: command for command in listed}


def includes(tree):
    """Object to the files that it was made of, by the build's own record."""
    made_of, current = {}, None
    for line in output_of("ninja", "-C", str(tree), "-t", "deps").splitlines():
        if line.startswith("    "):
            current.append(line.strip())
        elif ": #deps" in line and "VALID" in line:
            current = made_of.setdefault(line.split(": #deps")[0], [])
        else:
            current = []
    return made_of


def main():
    without, with_qt = (pathlib.Path(argument).resolve() for argument in sys.argv[1:3])
    wanted, there, made_of = commands(without), commands(with_qt), includes(with_qt)
    if len(wanted) < 20 or not any("nrv718_core.dir" in name for name in wanted):
        give_up(f"{without} has no core to compare with")
    for name, command in wanted.items():
        if there.get(name) != command:
            give_up(f"{name} is built otherwise with Qt than without:\n{command}\n{there.get(name)}")
        if TOOLKIT.search(command):
            give_up(f"{name} is built with Qt in sight: {command}")
        if not made_of.get(name):
            give_up(f"{name} was not built, or nobody knows of what")
        for file in made_of[name]:
            if TOOLKIT.search(file):
                give_up(f"{name} is made of {file}")

    archive = with_qt / "src" / "libnrv718_core.a"
    undefined = output_of("nm", "--undefined-only", "--demangle", "--format=just-symbols", str(archive)).splitlines()
    if len(undefined) < 100:
        give_up("the core's archive names hardly a symbol")
    for symbol in undefined:
        if TOOLKIT_SYMBOL.search(symbol):
            give_up(f"the core's archive wants {symbol}")

    program = with_qt / "tests" / "nrv718_core_tests"
    libraries = [line for line in output_of("readelf", "-d", str(program)).splitlines() if "(NEEDED)" in line]
    if not libraries:
        give_up(f"{program} names no library")
    if any("libQt" in line for line in libraries):
        give_up(f"{program} links Qt")
    print(f"{len(wanted)} objects of the core, the virtual rack and their tests are built without Qt")


main()
