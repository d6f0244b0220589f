#!/usr/bin/python3
"""Breaks the core one place at a time and sees which of its tests, or of the preset tool's, fails.

    tools/mutants/mutate.py [--only PART_OF_A_PATH,...] [--kinds cut,order,...] [--again] [--jobs N]
    tools/mutants/mutate.py --stale

All mutants are built at once, each asleep behind its number; a run wakes one of them and lets the tests that come by its
place run, the likely ones first, until one fails. Kinds: cut (a statement is left out), not (a condition is turned
round), part (one side of an "and" or "or" does not count), limit (< for <=), plus (a number is one more), text (a text is
empty), order (a statement changes places with the next, but for two settings that any reader may swap). Needs python3-clang-14.

docs/mutants.tsv is the result: file, line, kind, what stands there, and the test that failed, SURVIVED, or why it cannot
matter, which tools/mutants/cannot_matter.txt tells. A run replaces the rows of the files and kinds that it broke; --again
breaks only what survived there or ran out of its time. --stale breaks nothing and names the files that have changed since, and
those with a line that the compiler takes as it stands alone.
"""

import argparse
import collections
import concurrent.futures
import os
import pathlib
import re
import shutil
import subprocess
import sys

import clang.cindex
from clang.cindex import CursorKind

TREE = pathlib.Path(__file__).resolve().parents[2]
WORK = TREE / "build" / "mutants"
COPY = WORK / "tree"
BUILD = WORK / "build"
RUN = WORK / "run"  # a broken program writes files where it stands
RESULT = TREE / "docs" / "mutants.tsv"
HARMLESS = pathlib.Path(__file__).resolve().with_name("cannot_matter.txt")
SECONDS = "40"
ALL_SECONDS = "300"  # all tests take some twenty
SURVIVED = "SURVIVED"
KINDS = ("cut", "not", "part", "limit", "plus", "text", "order")
FLAGS = ["-std=c++20", f"-I{TREE / 'src'}"]
# What only looks at what it is given, and setters that only set.
QUIET_CALLS = {"At", "string", "to_string", "size", "begin", "empty", "has_value", "min", "max", "floor", "substr", "front",
               "ParseNumber", "NumberText", "CodeByte", "DecodeBit", "MarkerLeft", "MarkerTop", "UnitText", "GainText",
               "PeqGainFromCode", "BandwidthFromCode", "FrequencyFromCode", "PeqPositionFromGain", "CodeOf", "TwinOfControl",
               "Text", "Shown", "ShownText", "Position", "Checked", "Index", "Caption", "Value", "Form", "Values", "Image",
               "Stores", "Commands", "Current", "Window", "DeviceId", "MemoryValue", "what"}
SETTERS = r"Set(?:Caption|ToolTip|Visible|Enabled|Text|Mark|Items|ItemNotes|Maximum|InForce|MousePointer)"
SETTINGS = [re.compile(pattern, re.S) for pattern in (
    r"([^=({]*(?:\([^=]*\)[^=({]*)*) \|?= (.*)", r"(?:\+\+|--)([^=()]+)()", rf"([^=]*)\.{SETTERS}\((.*)\)",
    r"([^=]*(?:Slider\d+\[.*\]|ProgressBar1)\.Set(?:Position|Value))\((.*)\)",
    r"([^=]*)\.(?:MoveTo|push_back|emplace_back|clear|reset|fill)\((.*)\)",
    r"std::(?:ranges::)?copy(?:_n)?\((?=(.*), (.*)\.begin\(.*\)$).*")]
COMPARISONS = {"<": "Less", "<=": "LessEqual", ">": "Greater", ">=": "GreaterEqual"}
STATEMENTS = {CursorKind.CALL_EXPR, CursorKind.UNEXPOSED_EXPR, CursorKind.BINARY_OPERATOR,
              CursorKind.COMPOUND_ASSIGNMENT_OPERATOR, CursorKind.UNARY_OPERATOR}
FUNCTIONS = {CursorKind.CXX_METHOD, CursorKind.FUNCTION_DECL, CursorKind.CONSTRUCTOR, CursorKind.DESTRUCTOR,
             CursorKind.FUNCTION_TEMPLATE}

Mutant = collections.namedtuple("Mutant", "number path line kind text")


def setting(text):
    """What a statement sets, and to what, if that runs nothing: an assignment, or a word, state or place of a control."""
    found = next(filter(None, (form.fullmatch(" ".join(text.split())) for form in SETTINGS)), None)
    if found is None:
        return None
    target, value = found.groups() if found.re is not SETTINGS[-1] else found.groups()[::-1]
    calls = set(re.findall(r"(?!static_cast<)\b(\w+)(?:<[^<>]*>)?\(", target + " " + value))
    return (target, value) if re.match(r"(Guarded\()?\[", value) or calls <= QUIET_CALLS else None


def commute(first, second):
    """Two settings of different things, neither of which takes what the other sets, may stand in either order."""
    one, other = setting(first), setting(second)
    return one is not None and other is not None and all(
        there[0] not in part for here, there in ((one, other), (other, one)) for part in here)


class File:
    """One file with the places at which it can be broken."""

    def __init__(self, path, kinds):
        self.path, self.kinds = path, kinds
        self.source = (TREE / path).read_bytes()
        self.unit = clang.cindex.Index.create().parse(str(TREE / path), args=FLAGS + ["-x", "c++"])
        self.passed_over = set()  # lines on which the compiler wants a constant

    def break_all(self, first_number):
        """The file's text with every mutant in it, and the mutants."""
        self.number, self.mutants, self.lines_out = first_number, [], []
        text = self.render(self.unit.cursor, None, 0, len(self.source))
        return text, self.mutants

    def text(self, begin, end):
        return self.source[begin:end].decode("utf-8")

    def of(self, node):
        return self.text(node.extent.start.offset, node.extent.end.offset)

    def take(self, kind, node, shown):
        """The number of a new mutant, or None where there is to be none."""
        if kind not in self.kinds or node.extent.start.line in self.passed_over:
            return None
        self.mutants.append(Mutant(self.number, self.path, node.extent.start.line, kind, " ".join(shown.split())[:120]))
        self.number += 1
        return self.number - 1

    def children(self, node, begin, end):
        """Those that stand in this file, one after the other, within the node."""
        at, kept = begin, []
        for child in sorted(node.get_children(), key=lambda child: (child.extent.start.offset, -child.extent.end.offset)):
            start = child.extent.start
            if start.file is None or start.file.name != str(TREE / self.path):
                continue
            if start.offset >= at and child.extent.end.offset <= end and child.extent.end.offset > start.offset:
                kept.append(child)
                at = child.extent.end.offset
        return kept

    def render(self, node, result, begin=None, end=None):
        begin = node.extent.start.offset if begin is None else begin
        end = node.extent.end.offset if end is None else end
        kind, children = node.kind, self.children(node, begin, end)
        if self.is_constant(node, kind, begin, end, children):
            return self.text(begin, end)
        if kind in FUNCTIONS:
            result = node.result_type.spelling
        elif kind == CursorKind.LAMBDA_EXPR:
            result = "lambda"
        if result is not None:
            special = self.mutant_of(node, kind, children, result, begin, end)
            if special is not None:
                return special
        if kind == CursorKind.COMPOUND_STMT and result is not None:
            return self.block(children, result, begin, end)
        return self.splice(children, [self.render(child, result) for child in children], begin, end)

    def splice(self, children, texts, begin, end):
        out, at = [], begin
        for child, text in zip(children, texts):
            out += [self.text(at, child.extent.start.offset), text]
            at = child.extent.end.offset
        return "".join(out) + self.text(at, end)

    def is_constant(self, node, kind, begin, end, children):
        if kind in (CursorKind.STATIC_ASSERT, CursorKind.TYPE_REF, CursorKind.TEMPLATE_REF, CursorKind.ENUM_DECL,
                    CursorKind.FIELD_DECL):
            return True
        if kind in FUNCTIONS:
            bodies = [child for child in children if child.kind == CursorKind.COMPOUND_STMT]
            head = self.text(begin, bodies[0].extent.start.offset if bodies else end)
            return not bodies or "constexpr" in head or "consteval" in head
        return kind == CursorKind.VAR_DECL and "constexpr" in self.text(begin, end).split("=")[0].split("{")[0]

    def mutant_of(self, node, kind, children, result, begin, end):
        """The node's text with a mutant of its own, or None when it has none."""
        if kind in (CursorKind.INTEGER_LITERAL, CursorKind.FLOATING_LITERAL):
            return self.guarded("plus", node, self.line_of(node), "nrv::mutant::Plus({0}, ", ")", self.text(begin, end))
        if kind == CursorKind.CXX_BOOL_LITERAL_EXPR:
            return self.guarded("not", node, self.line_of(node), "(nrv::mutant::Is({0}) != ", ")", self.text(begin, end))
        if kind == CursorKind.STRING_LITERAL:
            plain = self.source[begin:begin + 1] == b'"' and self.source[begin + 1:begin + 2] != b'"'
            return self.guarded("text" if plain else "none", node, self.line_of(node), "nrv::mutant::Text({0}, ", ")",
                                self.text(begin, end))
        tested = kind in (CursorKind.IF_STMT, CursorKind.WHILE_STMT, CursorKind.CONDITIONAL_OPERATOR) or (
            kind == CursorKind.RETURN_STMT and result == "bool")
        if tested and children and children[0].kind.is_expression():
            texts = [self.render(child, result) for child in children]
            texts[0] = self.guarded("not", children[0], self.of(children[0]),
                                    "(nrv::mutant::Is({0}) != static_cast<bool>(", "))", texts[0])
            return self.splice(children, texts, begin, end)
        if kind == CursorKind.BINARY_OPERATOR and len(children) == 2:
            left, right = children
            sign = self.text(left.extent.end.offset, right.extent.start.offset).strip()
            if sign not in ("&&", "||", *COMPARISONS):
                return None
            texts = [self.render(child, result) for child in children]
            if sign in ("&&", "||"):
                test = "(nrv::mutant::Is({0}) || " if sign == "&&" else "(!nrv::mutant::Is({0}) && "
                texts = [self.guarded("part", child, self.of(child), test + "static_cast<bool>(", "))", text)
                         for child, text in zip(children, texts)]
                return self.splice(children, texts, begin, end)
            number = self.take("limit", node, self.of(node))
            if number is None:
                return self.splice(children, texts, begin, end)
            return f"nrv::mutant::{COMPARISONS[sign]}({number}, {texts[0]}, {texts[1]})"
        return None

    def guarded(self, kind, node, shown, before, after, text):
        number = self.take(kind, node, shown)
        return text if number is None else before.format(number) + text + after

    def block(self, children, result, begin, end):
        """A block whose statements can be left out and, where several stand in a row, change places."""
        texts, row = [], []
        for child in children:
            text = self.render(child, result)
            if child.kind in STATEMENTS:
                text = self.guarded("cut", child, self.of(child), "if (!nrv::mutant::Is({0})) ", "", text)
            texts.append(text)
        for place, child in enumerate(children + [None]):
            if child is not None and child.kind in STATEMENTS:
                row.append(place)
                continue
            if len(row) > 1:
                self.swap(children, texts, row)
            row = []
        return self.splice(children, texts, begin, end)

    def swap(self, children, texts, row):
        pairs = [f"{self.of(children[one])[:55]} <-> {self.of(children[one + 1])[:55]}" for one in row[:-1]]
        numbers = [self.take("order", children[one], pair) for one, pair in zip(row, pairs)]
        if None in numbers:
            return
        self.number += 1  # the last has no next one
        self.mutants = [mutant for mutant in self.mutants if mutant.number not in set(numbers) or
                        not commute(*(self.of(children[row[numbers.index(mutant.number) + one]]) for one in (0, 1)))]
        for place, one in enumerate(row):
            opening = "break; " if place else (f"for (int nrv_place = 0; nrv_place < {len(row)}; ++nrv_place) "
                                               f"switch (nrv::mutant::Turn({numbers[0]}, nrv_place)) {{ ")
            texts[one] = f"{opening}case {place}: {texts[one]}"
        texts[row[-1]] += "; break; }"

    def line_of(self, node):
        begin = self.source.rfind(b"\n", 0, node.extent.start.offset) + 1
        end = self.source.find(b"\n", node.extent.end.offset)
        return f"{self.of(node)} in {self.text(begin, end).strip()}"


def compile_flags():
    return FLAGS[:1] + [f"-I{COPY / 'src'}", "-include", str(TREE / "tools/mutants/mutant.h"), "-fsyntax-only", "-w",
                        "-Wno-narrowing"]


def broken_file(path, kinds, first):
    """Writes the file with its mutants. Lines on which the compiler cannot take them are passed over."""
    file = File(path, kinds)
    for _ in range(12):
        text, mutants = file.break_all(first)
        (COPY / path).write_text(text)
        done = subprocess.run(["g++", *compile_flags(), "-x", "c++", str(COPY / path)], capture_output=True, text=True)
        lines = {int(line) for line in re.findall(rf"^{re.escape(str(COPY / path))}:(\d+):.*error", done.stderr, re.M)}
        lines |= {int(line) for line in re.findall(rf"{re.escape(str(COPY / path))}:(\d+):\d+:   required", done.stderr)}
        if done.returncode == 0:
            return mutants, file.number
        if not lines:
            break
        file.passed_over |= lines
    print(f"{path} does not compile with mutants and is left whole:", done.stderr[:400], file=sys.stderr)
    (COPY / path).write_bytes(file.source)
    return [], first


def copy_changed(source, target):
    """With the time of now, so that what was built from an older one is built anew."""
    if not os.path.exists(target) or pathlib.Path(source).read_bytes() != pathlib.Path(target).read_bytes():
        shutil.copyfile(source, target)


def core_files():
    return sorted(str(path.relative_to(TREE)) for path in (TREE / "src").rglob("*.cpp")
                  if "ui" not in path.relative_to(TREE / "src").parts and path.name != "platform_windows.cpp")


def stale_files():
    """Those with a statement that the list does not have, or with a row of what is not there any more."""
    rows = collections.Counter((row[0], row[2], row[3]) for row in rows_so_far())
    for path in core_files():
        now = collections.Counter((path, one.kind, one.text) for one in File(path, KINDS).break_all(1)[1])
        then = collections.Counter({key: count for key, count in rows.items() if key[0] == path})
        if then - now or any(kind == "cut" for _, kind, _ in now - then):
            yield path


def build(options):
    WORK.mkdir(parents=True, exist_ok=True)
    for name in ("src", "tests", "simulator", "tool", "cmake", "tools", "resources", "docs"):
        shutil.copytree(TREE / name, COPY / name, copy_function=copy_changed, dirs_exist_ok=True)
    for name in ("CMakeLists.txt", "CMakePresets.json"):
        shutil.copy(TREE / name, COPY / name)
    mutants, number = [], 1
    for path in core_files():
        if in_reach(path, options):
            found, number = broken_file(path, options.kinds.split(","), number)
            mutants += found
    with open(COPY / "tests/CMakeLists.txt", "a") as lists:
        lists.write("\ntarget_sources(nrv718_core_tests PRIVATE ${PROJECT_SOURCE_DIR}/tools/mutants/reached.cpp)\n")
    flags = f"-include {TREE / 'tools/mutants/mutant.h'} -w -Wno-narrowing -D_GLIBCXX_ASSERTIONS"
    subprocess.run(["cmake", "-S", COPY, "-B", BUILD, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Debug", "-DNRV718_BUILD_UI=OFF",
                    "-DCMAKE_DISABLE_PRECOMPILE_HEADERS=ON", "-DCMAKE_CXX_COMPILER_LAUNCHER=ccache",
                    f"-DCMAKE_CXX_FLAGS={flags}", "-DCMAKE_CXX_FLAGS_DEBUG=-O1"], check=True, stdout=subprocess.DEVNULL)
    subprocess.run(["cmake", "--build", BUILD, "-j", str(options.jobs), "--target", "nrv718_core_tests",
                    "nrv718_tool_tests"], check=True,
                   stdout=subprocess.DEVNULL)
    return mutants


def reached(program):
    """For each mutant the tests that come by its place, with how many others they come by; and all tests."""
    table = WORK / "reached.txt"
    run = subprocess.run([program, "--gtest_brief=1"], check=False, cwd=RUN, stdout=subprocess.PIPE, text=True,
                         env=os.environ | {"NRV718_REACHED": str(table)})
    if run.returncode != 0:
        sys.exit(f"The tests fail as the tree is:\n{run.stdout[-2000:]}")
    tests, names = collections.defaultdict(list), []
    for line in table.read_text().splitlines():
        name, _, *numbers = line.split(" ")
        names.append(name)
        for number in numbers:
            tests[int(number)].append((len(numbers), name))
    return tests, names


def likely_first(mutant, tests, names):
    """Tests named after the file come first, then those that come by little else. What comes by in a process of its own, or
    before the tests begin, is not known, and what is made once and kept is told of the first test alone: such places have
    all tests."""
    stem = pathlib.Path(mutant.path).stem
    suites = {suite for path in (TREE / "tests").rglob(f"{stem}*_test.cpp")
              for suite in re.findall(r"^TEST\w*\((\w+),", path.read_text(), re.M)}
    named = [name for name in names if name.split(".")[0] in suites or stem.replace("_", "") in name.lower()]
    known = [name for _, name in sorted(tests)]
    if len(known) < 2:
        known += [name for name in names if name not in known]
    return named, [name for name in known if name not in set(named)]


def fate(program, mutant, tests, names):
    """The test that fails when the mutant wakes: one of the core's, or else one of the preset tool's."""
    flags = WORK / f"flags-{mutant.number}"
    named, rest = likely_first(mutant, tests, names)
    for few, seconds in ((named, SECONDS), (rest[:60], SECONDS), (rest[60:], ALL_SECONDS)):
        if not few:
            continue
        flags.write_text("--gtest_filter=" + ":".join(few) + "\n")
        try:
            failed = first_failure(mutant, [program, f"--gtest_flagfile={flags}"], seconds)
        finally:
            flags.unlink(missing_ok=True)
        if failed:
            return failed.replace("?", few[0])
    failed = first_failure(mutant, [program.parent / "tool" / "nrv718_tool_tests"], ALL_SECONDS)
    return failed.replace("?", "nrv718_tool_tests") if failed else SURVIVED


def first_failure(mutant, command, seconds):
    """The first test that fails, a text with "?" for it when the program ended before it could tell, or None."""
    done = subprocess.run(["timeout", "-s", "KILL", seconds, *command, "--gtest_brief=1", "--gtest_fail_fast"],
                          capture_output=True, text=True, errors="replace", cwd=RUN,
                          env=os.environ | {"NRV718_MUTANT": str(mutant.number)})
    if done.returncode == 0:
        return None
    failed = re.search(r"\[  FAILED  \] (\S+?)(,| \()", done.stdout)
    return failed.group(1) if failed else f"? or one beside it: the program ended ({done.returncode})"


def harmless():
    """What cannot matter, and why: path, kind and text, by tabs, then the reason. In a text of kind order * is anything."""
    rows = [line.split("\t") for line in HARMLESS.read_text().splitlines() if line and not line.startswith("//")]
    parts = [row[2].split("*") if row[1] == "order" else [row[2]] for row in rows]
    return [(row[0], row[1], re.compile(".*".join(map(re.escape, part))), row[3]) for row, part in zip(rows, parts)]


def reason_for(key, reasons):
    """Why a mutant cannot matter, or nothing."""
    return next((why for path, kind, text, why in reasons if (path, kind) == key[:2] and text.fullmatch(key[2])), "")


def rows_so_far():
    return [line.split("\t") for line in RESULT.read_text().splitlines()[1:]] if RESULT.exists() else []


def in_reach(path, options):
    return any(part in path for part in options.only.split(","))


def wanted(mutants, options):
    if not options.again:
        return mutants
    survived = {(row[0], row[2], row[3]) for row in rows_so_far() if row[4].startswith(SURVIVED) or row[4].endswith("(-9)")}
    return [mutant for mutant in mutants if (mutant.path, mutant.kind, mutant.text) in survived]


def write_result(fates, everything, options):
    reasons = harmless()
    done = {(mutant.path, mutant.kind, mutant.text) for mutant, _ in fates}
    kinds = options.kinds.split(",")
    there = {(mutant.path, mutant.kind, mutant.text) for mutant in everything}
    kept = []
    for row in rows_so_far():
        key = (row[0], row[2], row[3])
        broken = in_reach(row[0], options) and row[2] in kinds
        if key not in done and (key in there if options.again and broken else not broken):
            kept.append(row)
    for mutant, end in fates:
        key = (mutant.path, mutant.kind, mutant.text)
        reason = reason_for(key, reasons)
        if end == SURVIVED and reason:
            end = "cannot matter: " + reason
        elif reason and mutant.kind != "order":  # its texts stand for several
            print(f"said not to matter, and found by {end}: {key}")
        kept.append([mutant.path, str(mutant.line), mutant.kind, mutant.text, end])
    kept.sort(key=lambda row: (row[0], int(row[1]), row[2], row[3]))
    RESULT.write_text("file\tline\tkind\twhat\tfound by\n" + "".join("\t".join(row) + "\n" for row in kept))
    return [row for row in kept if row[4] == SURVIVED], len(kept)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--only", default="", help="files whose path holds one of these")
    parser.add_argument("--kinds", default=",".join(KINDS))
    parser.add_argument("--again", action="store_true", help="only what survived")
    parser.add_argument("--jobs", type=int, default=os.cpu_count())
    parser.add_argument("--stale", action="store_true", help="only name the files whose rows are not of today")
    options = parser.parse_args()
    if options.stale:
        print(*stale_files(), sep="\n")
        return 0
    RUN.mkdir(parents=True, exist_ok=True)
    everything = build(options)
    mutants = wanted(everything, options)
    program = BUILD / "tests" / "nrv718_core_tests"
    tests, names = reached(program)
    print(f"{len(mutants)} mutants", flush=True)
    with concurrent.futures.ThreadPoolExecutor(options.jobs) as pool, open(WORK / "result.tsv", "w") as result:
        fates = []
        for mutant, end in zip(mutants, pool.map(lambda one: fate(program, one, tests.get(one.number, []), names), mutants)):
            fates.append((mutant, end))
            print(*mutant, end, sep="\t", file=result, flush=True)
    survivors, count = write_result(fates, everything, options)
    for row in survivors:
        print(*row, sep="\t")
    print(f"{len(survivors)} of {count} survived; see {RESULT}")
    return 1 if survivors else 0


if __name__ == "__main__":
    sys.exit(main())
