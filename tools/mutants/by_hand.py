#!/usr/bin/python3
"""Breaks the program by hand, one place at a time, and sees whether a test fails.

    tools/mutants/by_hand.py [--only PART_OF_A_NAME] [--first N] [--page] [--check]

tools/mutants/by_hand.txt lists what is broken and which test is to fail; its head tells how. All is built in a copy
below build/mutants/by_hand. First the tests have to pass on the tree as it is; then each entry is put in, what its tests
need is built, the named tests run, and if they pass the whole of their program. The table goes to
build/mutants/by_hand/result.tsv: name, place, and the test that failed, SURVIVED, or why it cannot matter. --page writes
it into its chapter of docs/tested_behaviour.md, --check only looks for the texts, --first begins at the entry of that
number.
"""

import argparse
import collections
import os
import pathlib
import re
import shutil
import signal
import subprocess
import sys

TREE = pathlib.Path(__file__).resolve().parents[2]
LIST = pathlib.Path(__file__).resolve().with_suffix(".txt")
PAGE = TREE / "docs" / "tested_behaviour.md"
CHAPTER = "## Broken by hand"
WORK = TREE / "build" / "mutants" / "by_hand"
COPY = WORK / "tree"
BUILD = WORK / "build"
RESULT = WORK / "result.tsv"
GOOGLE_TESTS = {"core": "tests/nrv718_core_tests", "system": "tests/system/nrv718_system_tests",
         "simulator": "tests/simulator/nrv718_simulator_tests"}
WINDOW_TESTS = "tests/ui/nrv718_ui_tests"  # of all other names
NAMED_SECONDS = 120
WHOLE_SECONDS = 900
SURVIVED = "SURVIVED"

# `at` is the number of the occurrence that is meant, 0 where there must be one only.
Change = collections.namedtuple("Change", "path at old new")
Mutant = collections.namedtuple("Mutant", "name changes tests harmless")


def read_list(text):
    """The entries of the list. Raises ValueError for a line that fits nowhere."""
    mutants, path, at = [], None, 0
    for number, line in enumerate(text.splitlines(), 1):
        if line.startswith("//") or not line.strip():
            continue
        if line.startswith("= "):
            mutants.append(Mutant(line[2:].strip(), [], [], []))
            path, last = None, None
        elif not mutants:
            raise ValueError(f"line {number}: stands before the first name")
        elif line.startswith("@ "):
            path, _, occurrence = line[2:].strip().partition(" #")
            at, last = int(occurrence or 0), None
        elif line[0] in "-+":
            if path is None:
                raise ValueError(f"line {number}: no file")
            if line[0] == "-" and last != "-":
                mutants[-1].changes.append(Change(path, at, [], []))
            elif line[0] == "+" and last is None:
                raise ValueError(f"line {number}: nothing is taken away before it")
            change = mutants[-1].changes[-1]
            (change.old if line[0] == "-" else change.new).append(line[1:])
            last = line[0]
        elif line.startswith("test: "):
            program, *names = line[6:].split()
            mutants[-1].tests.append((program, names))
        elif line.startswith("cannot matter because "):
            mutants[-1].harmless.append(line[len("cannot matter because "):].strip())
        else:
            raise ValueError(f"line {number}: {line!r} is none of what an entry is made of")
    for mutant in mutants:
        if not mutant.changes or not mutant.tests:
            raise ValueError(f"{mutant.name!r} has no change or no test")
    return mutants


def broken(mutant):
    """The text of each file with the mutant in it, and the place of its first change."""
    texts, place = {}, None
    for change in mutant.changes:
        text = texts.setdefault(change.path, (TREE / change.path).read_text())
        old, new = "\n".join(change.old), "\n".join(change.new)
        count = text.count(old)
        if count == 0 or (change.at == 0 and count > 1) or change.at > count:
            raise ValueError(f"{mutant.name!r}: what it breaks is found {count} times in {change.path}")
        start = -1
        for _ in range(max(change.at, 1)):
            start = text.index(old, start + 1)
        place = place or f"{change.path}:{text.count(chr(10), 0, start) + 1}"
        texts[change.path] = text[:start] + new + text[start + len(old):]
    return texts, place


def fault_of(mutant):
    """Why the entry cannot be put in, or nothing."""
    try:
        broken(mutant)
    except ValueError as error:
        return str(error)
    return ""


def write_changed(path, data):
    path.parent.mkdir(parents=True, exist_ok=True)
    if not path.exists() or path.read_bytes() != data:
        path.write_bytes(data)
        return True
    return False


def copy_tree():
    """What git knows of, and nothing else; a file that has not changed keeps its time."""
    named = subprocess.run(["git", "ls-files", "-z", "--cached", "--others", "--exclude-standard"], cwd=TREE, check=True,
                           capture_output=True).stdout.decode().split("\0")
    named = {name for name in named if name and (TREE / name).is_file()}
    for name in named:
        if write_changed(COPY / name, (TREE / name).read_bytes()):
            (COPY / name).chmod((TREE / name).stat().st_mode)
    for path in COPY.rglob("*"):
        if path.is_file() and str(path.relative_to(COPY)) not in named:
            path.unlink()


def configure():
    launcher = ["-DCMAKE_CXX_COMPILER_LAUNCHER=ccache"] if shutil.which("ccache") else []
    # File by file: a change then compiles its own file and not fourteen.
    run = subprocess.run(["cmake", "--preset", "release", "-B", BUILD, "-DCMAKE_UNITY_BUILD=OFF", *launcher], cwd=COPY,
                         capture_output=True, text=True)
    if run.returncode != 0:
        sys.exit(run.stdout + run.stderr)


def program_path(program):
    return BUILD / GOOGLE_TESTS.get(program, WINDOW_TESTS)


def build(programs):
    """What the compiler said, or None when all went well."""
    targets = sorted({program_path(program).name for program in programs})
    run = subprocess.run(["ninja", "-C", BUILD, "-j", str(os.cpu_count()), *targets], capture_output=True, text=True)
    return None if run.returncode == 0 else run.stdout[-3000:] + run.stderr[-1000:]


def run_tests(program, names):
    """The first test that failed, or None. No names are all tests."""
    in_google = program in GOOGLE_TESTS
    words = [program_path(program)]
    seconds = NAMED_SECONDS if names else WHOLE_SECONDS
    if in_google:
        words += ["--gtest_brief=1", "--gtest_fail_fast"] + ([f"--gtest_filter={':'.join(names)}"] if names else [])
    else:
        words += [program, *names]
    # A group of its own: what it started goes with it.
    process = subprocess.Popen(words, cwd=BUILD, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                               env={**os.environ, "QT_QPA_PLATFORM": "offscreen"}, start_new_session=True)
    try:
        output = process.communicate(timeout=seconds)[0].decode("utf-8", "replace")
    except subprocess.TimeoutExpired:
        os.killpg(process.pid, signal.SIGKILL)
        output = process.communicate()[0].decode("utf-8", "replace")
        return f"{program}: did not end in {seconds} s{last_begun(output)}"
    if in_google and names and process.returncode == 0 and re.search(r"\b0 tests ran|\b0 tests from", output):
        raise ValueError(f"no test of {program} is named {':'.join(names)}")
    if not in_google and ("Unknown test function" in output or "Tell the file" in output):
        raise ValueError(f"no test of {program} is named {' '.join(names)}")
    if process.returncode == 0:
        return None
    mark = r"^\[  FAILED  \] ([\w./]+)" if in_google else r"^FAIL!\s+: (\w+::\w+)"
    failed = re.search(mark, output, re.M)
    return failed[1] if failed else f"{program}: ended with {process.returncode}{last_begun(output)}"


def last_begun(output):
    begun = re.findall(r"\[ RUN      \] ([\w./]+)", output) or re.findall(r"^PASS\s+: (\w+::\w+)", output, re.M)
    return f", after {begun[-1]}" if begun else ""


def verdict_of(mutant):
    """The test that failed, or SURVIVED. Raises ValueError for an entry that cannot be run."""
    said = build([program for program, _ in mutant.tests])
    if said is not None:
        raise ValueError(f"{mutant.name!r} does not compile:\n{said}")
    for program, names in mutant.tests:
        failed = run_tests(program, names) if names else None
        failed = failed or run_tests(program, [])
        if failed:
            return failed
    return SURVIVED


def judged(mutant):
    """One row of the table: name, place, what came of it; and whether that is as it should be."""
    texts, place = broken(mutant)
    try:
        for path, text in texts.items():
            write_changed(COPY / path, text.encode())
        verdict = verdict_of(mutant)
    finally:
        for path in texts:
            write_changed(COPY / path, (TREE / path).read_bytes())
    if not mutant.harmless:
        return (mutant.name, place, verdict), verdict != SURVIVED
    if verdict != SURVIVED:
        return (mutant.name, place, f"said not to matter, and found by {verdict}"), False
    return (mutant.name, place, "cannot matter: " + " ".join(mutant.harmless)), True


def sound(mutants):
    """The unbroken tree has to pass all that is to find the broken ones."""
    programs = sorted({program for mutant in mutants for program, _ in mutant.tests})
    said = build(programs)
    if said is not None:
        sys.exit(said)
    for program in programs:
        failed = run_tests(program, [])
        if failed:
            sys.exit(f"The tree fails as it is: {failed}")


def write_page(rows):
    caught = sum(1 for row in rows if not row[2].startswith("cannot matter"))
    lines = [CHAPTER, "",
             "What `tools/mutants/by_hand.py` broke, one after the other, and the test that failed first. Of "
             f"{len(rows)} changes {caught} were", "found; the others cannot matter, for the reason given.", "",
             "| Broken | Where | Found by |", "|---|---|---|"]
    for name, place, verdict in rows:
        found = verdict if verdict.startswith("cannot matter") else f"`{verdict}`"
        lines.append(f"| {name.replace('|', chr(92) + '|')} | {place.rpartition(':')[0]} | {found} |")
    before, _, after = PAGE.read_text().partition(CHAPTER)
    behind = "\n" + after[after.index("\n## ") + 1:] if "\n## " in after else ""
    PAGE.write_text(before + "\n".join(lines) + "\n" + behind)


def arguments():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--only", default="", metavar="PART_OF_A_NAME")
    parser.add_argument("--first", type=int, default=1, metavar="N")
    parser.add_argument("--page", action="store_true")
    parser.add_argument("--check", action="store_true")
    return parser.parse_args()


def main():
    options = arguments()
    try:
        everything = read_list(LIST.read_text())
    except ValueError as error:
        sys.exit(str(error))
    lost = [fault for fault in map(fault_of, everything) if fault]
    if lost:
        sys.exit("\n".join(lost))
    mutants = [mutant for mutant in everything[options.first - 1:] if options.only.lower() in mutant.name.lower()]
    if options.check:
        print(f"{len(everything)} entries, each with its texts in place")
        return 0
    if options.page and len(mutants) != len(everything):
        sys.exit("The page is written from the whole list alone.")
    copy_tree()
    configure()
    sound(mutants)
    rows, good = [], True
    with RESULT.open("w") as result:
        for number, mutant in enumerate(mutants, 1):
            try:
                row, as_expected = judged(mutant)
            except ValueError as error:
                row, as_expected = (mutant.name, mutant.changes[0].path, f"ERROR: {error}"), False
            rows.append(row)
            good = good and as_expected
            result.write("\t".join(cell.replace("\n", " ") for cell in row) + "\n")
            result.flush()
            print(f"[{number}/{len(mutants)}] {'' if as_expected else '!! '}{row[0]} ({row[1]}): {row[2]}", flush=True)
    if options.page and good:
        write_page(rows)
    return 0 if good else 1


if __name__ == "__main__":
    sys.exit(main())
