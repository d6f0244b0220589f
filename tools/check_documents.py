#!/usr/bin/env python3
"""Fails on a document that names a file, a link or a test that is not there."""
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent

LINK = re.compile(r"\]\(([^)#\s]+)(?:#([\w-]+))?\)")
PATH = re.compile(r"(?<![\w./-])(?:src|simulator|tool|tour|tests|bench|tools|cmake|packaging|resources|docs)/[\w./-]*\w")
# Rows of docs/tested_behaviour.md: tests, and the file that they are in behind each run of them.
TEST = re.compile(r"`(\w+)(\.|::)(\w+)`|((?:tests|bench)/[\w/]+\.(?:cpp|sh))")
DECLARED = re.compile(r"\bTEST(?:_F|_P)?\(\s*(\w+),\s*(\w+)\s*\)|\bvoid (?:\w+::)?(\w+)\(\)|\bclass (\w+)")


def anchors(page):
    for title in re.findall(r"^#+ (.*)$", page.read_text(encoding="utf-8"), re.MULTILINE):
        yield re.sub(r"[^\w -]", "", title.lower()).replace(" ", "-")


def faults_of_links(page, text):
    for name, anchor in LINK.findall(text):
        if "://" in name:
            continue
        target = page.parent / name
        if not target.exists():
            yield f"links to {name}, which is not there"
        elif anchor and anchor not in anchors(target):
            yield f"links to {name}#{anchor}, and there is no such heading"


def faults_of_paths(text):
    for name in sorted(set(PATH.findall(text))):
        # A name without its extension stands for a header and its source, or for a program.
        there = (ROOT / name).exists() or any(ROOT.glob(name + ".*"))
        if not there:
            yield f"names {name}, which is not there"


def tests_in(file):
    """Names of GoogleTest tests as Suite.Name, of Qt Test classes and slots by themselves."""
    text = file.read_text(encoding="utf-8")
    found = set()
    for suite, name, slot, of_class in DECLARED.findall(text):
        found |= {f"{suite}.{name}"} if suite else {slot or of_class}
    return found


def faults_of_tests(text):
    declared, waiting = {}, []
    for line in text.splitlines():
        waiting.clear()
        for suite, mark, name, file in TEST.findall(line):
            if not file:
                waiting.append((suite, mark, name))
                continue
            path = ROOT / file
            if path.is_file():
                there = declared.setdefault(file, tests_in(path))
                for suite, mark, name in waiting:
                    wanted = {f"{suite}.{name}"} if mark == "." else {suite, name}
                    if not wanted <= there:
                        yield f"names {suite}{mark}{name} in {file}, which has no such test"
            waiting.clear()


def main():
    pages = sorted([*ROOT.glob("*.md"), *(ROOT / "docs").glob("*.md")])
    found, named = [], 0
    for page in pages:
        text = page.read_text(encoding="utf-8")
        of_page = [*faults_of_links(page, text), *faults_of_paths(text)]
        if page.name == "tested_behaviour.md":
            of_page += faults_of_tests(text)
        found += [f"{page.relative_to(ROOT)} {fault}" for fault in of_page]
        named += len(LINK.findall(text)) + len(PATH.findall(text))
    if named == 0:
        found.append("no document names anything")
    print("\n".join(found) if found else f"{len(pages)} documents name what is there")
    return 1 if found else 0


sys.exit(main())
