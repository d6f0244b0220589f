#!/usr/bin/env python3
"""Fails on a folder of the tree without a README.md of one to three sentences, and on one that names what is not there."""
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
FOLDERS = ("src", "simulator", "tool", "tour", "tests", "bench", "tools", "cmake", "packaging", "resources", "docs")
# Folders of inputs, which the folder above tells of; and what Python leaves behind.
PASSED_OVER = ("tests/fuzz/corpus", "__pycache__")

QUOTED = re.compile(r"`([^`]+)`")
LOOKS_LIKE_A_FILE = re.compile(r"/|\.(h|cpp|md|py|sh|txt|svg|cfg)$")
# Names of files that a build or a run makes.
MADE = ("Speakers.cfg",)


def folders():
    for name in FOLDERS:
        for path in sorted([ROOT / name, *(ROOT / name).rglob("*")]):
            inside = path.relative_to(ROOT).as_posix()
            if path.is_dir() and not any(part in inside for part in PASSED_OVER):
                yield path, inside


def is_there(folder, name):
    return any((base / name).exists() for base in (folder, ROOT, *folder.glob("*/")))


def faults(folder, inside):
    page = folder / "README.md"
    if not page.is_file():
        yield f"{inside} has no README.md: one to three sentences on what lives there"
        return
    head, _, text = page.read_text(encoding="utf-8").partition("\n")
    if head != f"# {inside}":
        yield f"{inside}/README.md begins with \"{head}\" and not with \"# {inside}\""
    sentences = len(re.findall(r"\.(?=\s|$)", text))
    if not 1 <= sentences <= 3:
        yield f"{inside}/README.md has {sentences} sentences; one to three are wanted"
    for name in QUOTED.findall(text):
        if LOOKS_LIKE_A_FILE.search(name) and name not in MADE and not is_there(folder, name):
            yield f"{inside}/README.md names {name}, which is not there"


def main():
    found, told = [], 0
    for folder, inside in folders():
        found += faults(folder, inside)
        told += 1
    if told == 0:
        found.append("no folders found")
    print("\n".join(found) if found else f"{told} folders say what lives in them")
    return 1 if found else 0


sys.exit(main())
