#!/usr/bin/env python3
"""Holds docs/user_guide.md to the program: guide_text_test.py PROJECT-FOLDER

The pictures are the tour's, the messages and keys the program's, and none of them is missing.
"""

import pathlib
import re
import sys
import unittest

sys.dont_write_bytecode = True
from source_texts import literals_below, literals_of

PROJECT = pathlib.Path(sys.argv.pop() if len(sys.argv) > 1 else ".").resolve()
GUIDE = (PROJECT / "docs/user_guide.md").read_text(encoding="utf-8")


def headings():
    return re.findall(r"^#+ (.+)$", GUIDE, re.M)


def chapter(heading):
    """What stands under a heading, with all that is below it."""
    level = re.search(rf"^(#+) {re.escape(heading)}$", GUIDE, re.M)
    rest = GUIDE[level.end() :]
    end = re.search(rf"^#{{1,{len(level[1])}}} ", rest, re.M)
    return rest[: end.start()] if end else rest


def table_rows(text):
    """The cells of every row of its tables but the heads."""
    rows = []
    for head_and_rows in re.findall(r"^\|.*\n\|[-|]+\|\n((?:\|.*\n)*)", text, re.M):
        rows += [[cell.strip() for cell in row.strip("|").split("|")] for row in head_and_rows.splitlines()]
    return rows


# Pictures


def tour_pictures():
    """How many numbers are on each picture that the tour takes."""
    marks = {}
    for file in sorted((PROJECT / "tour").glob("*.cpp")):
        source = file.read_text(encoding="utf-8")
        for call in re.finditer(r"\b(?:Picture|OpenDevice|choose)\(", source):
            depth, end = 1, call.end()
            while depth:
                depth += {"(": 1, ")": -1}.get(source[end], 0)
                end += 1
            call_text = source[call.end() : end]
            if "std::string" in call_text: # it is defined here and not called
                continue
            numbers = len(re.findall(r'\{"', call_text))
            for name in re.findall(r'(?<!\{)"([a-z0-9-]+)"', call_text):
                marks.setdefault(name, numbers)
    # The window's own picture is taken where a device is opened.
    opened = re.search(r"Picture\(\*Find\(QStringLiteral\(\"MDIFrmMain\"\)\), picture,(.*?)\);", tour_source(), re.S)
    marks["window"] = len(re.findall(r'\{"', opened[1]))
    return marks


def tour_source():
    return "".join(file.read_text(encoding="utf-8") for file in sorted((PROJECT / "tour").glob("*.cpp")))


class Pictures(unittest.TestCase):
    def shown(self, kind):
        documents = [PROJECT / "README.md", *(PROJECT / "docs").glob("*.md")]
        return {name for file in documents
                for name in re.findall(rf"pictures/([\w-]+)\.{kind}", file.read_text("utf-8"))}

    def test_each_is_one_that_the_tour_takes(self):
        self.assertLess(5, len(self.shown("png")))
        self.assertEqual(set(), self.shown("png") - set(tour_pictures()))

    def test_the_folder_holds_those_that_are_shown_and_no_other(self):
        for kind in "png", "svg":
            self.assertEqual(self.shown(kind), {file.stem for file in (PROJECT / "docs/pictures").glob("*." + kind)})

    def test_each_number_on_one_has_its_line_below_it(self):
        with_numbers = 0
        for place in re.finditer(r"^(!\[.*)\n\n((?:\d+\. .*\n(?:   .*\n)*)*)", GUIDE, re.M):
            names = re.findall(r"pictures/([\w-]+)\.png", place[1])
            numbers = [int(number) for number in re.findall(r"^(\d+)\. ", place[2], re.M)]
            wanted = sum(tour_pictures()[name] for name in names)
            self.assertEqual(list(range(1, wanted + 1)), numbers, names)
            with_numbers += wanted > 0
        self.assertLess(8, with_numbers)


# Messages

# Texts that reach neither a box nor the foot of the window: captions, tool tips, titles, names, what a reader says.
OTHER_FILES = re.compile(
    r"controls/(forms|frm_ctrl|dialog_forms|spoken)\.cpp|presets/(preset_titles|parameter_words)\.|ports/channels\.h"
    r"|ui/(accessible|binding|control_window|guide|look|tool_dialogs|widgets|windows)/"
)
OTHER_CALLS = re.compile(r"Set(Caption|ToolTip|Mark)\(|\bTitle\(|ToolTip\b|AskSave|QFileDialog|ComPortEntries entries")
NAMED = re.compile(r"constexpr const char\* (\w+) = $")
OTHER_NAMES = {"ToPreset", "DemoLabel", "FactoryPresetName", "InitName", "ConfiguredIdsName", "SpeakersName"}
# Titles of boxes: what stands behind the text of one. Those of questions that all have one text are told.
BOX_TITLE = re.compile(r'^\s*".*",\s*$', re.S)
# Notes of rows and entries, the filter of the file dialogs, and words that only another text carries on.
OTHER_TEXTS = re.compile(
    r"settings? differs? from what was last|^No serial port: |\*\.n91|^copy of |^(digital|analog) input"
)
WORDS = re.compile(r"[A-Za-z']+[ ,:;]+[A-Za-z]")


def is_message(literal):
    name = NAMED.search(literal.statement)
    return not (
        OTHER_FILES.search(literal.file)
        or OTHER_CALLS.search(literal.statement)
        or (name and name[1] in OTHER_NAMES)
        or BOX_TITLE.search(literal.statement)
        or OTHER_TEXTS.search(literal.text)
    )


def parts_of(text):
    """A text of the program without what it is filled with."""
    return [part for part in re.split(r"%\d", text) if part.strip()]


def quoted_messages():
    return [row[0] for row in table_rows(chapter("Messages"))]


def fixed_parts(message):
    """A quoted message without what varies in it, which is slanted."""
    return [part for part in re.split(r"\*[^*]+\*", message) if re.search(r"\w", part)]


def made_of(text, phrases):
    """Whether every word belongs to a phrase of the program that stands there whole."""
    words = re.findall(r"[\w'+=&/-]+|\?", text)
    reached = {0}
    for start in range(len(words)):
        if start in reached:
            reached |= {start + len(phrase) for phrase in phrases if words[start : start + len(phrase)] == list(phrase)}
    return len(words) in reached


class Messages(unittest.TestCase):
    literals = [literal for literal in literals_below(PROJECT / "src") if is_message(literal)]

    def test_none_of_the_program_is_missing_in_the_guide(self):
        told = "\n".join(quoted_messages()) + chapter("Messages")
        told = told.replace("*", "")
        wanted = {
            (part.strip(), literal.file)
            for literal in self.literals
            for part in parts_of(literal.text)
            if WORDS.search(part)
        }
        self.assertLess(80, len(wanted))
        self.assertEqual([], sorted(entry for entry in wanted if entry[0] not in told))

    def test_each_that_the_guide_quotes_is_the_programs(self):
        phrases = {
            tuple(re.findall(r"[\w'+=&/-]+|\?", part)) for literal in self.literals for part in parts_of(literal.text)
        } - {()}
        messages = quoted_messages()
        self.assertLess(80, len(messages))
        strange = [
            (message, part) for message in messages for part in fixed_parts(message) if not made_of(part, phrases)
        ]
        self.assertEqual([], strange)


# Keys

WORDS_OF_KEYS = {"Return": "Enter", "PageUp": "Page Up", "PageDown": "Page Down", "Plus": "+", "Minus": "-"}
# The toolkit's own; the tests of the windows press them.
TOOLKIT_KEYS = {"Tab", "Shift+Tab", "Ctrl+Tab", "Ctrl+A", "Ctrl+C", "Ctrl+V", "Ctrl+X"}


def key_name(key):
    return WORDS_OF_KEYS.get(key, key)


def program_keys():
    keys = set()
    for file in (PROJECT / "src/ui").rglob("*.cpp"):
        source = file.read_text(encoding="utf-8")
        table = re.search(r"keys = \{(.*?)\};", source, re.S)
        if table:
            keys |= {"Ctrl+" + key_name(key) for key in re.findall(r"Qt::Key_(\w+)", table[1])}
            source = source.replace(table[0], "")
        shortcut = re.compile(r"Qt::CTRL( \| Qt::SHIFT)? \| Qt::Key_(\w+)")
        keys |= {"Ctrl+" + ("Shift+" if shift else "") + key_name(key) for shift, key in shortcut.findall(source)}
        # A letter alone is a part of what the program looks for in a combination.
        keys |= {key_name(key) for key in re.findall(r"Qt::Key_(\w{2,})", shortcut.sub("", source))}
    return keys


def guide_keys():
    keys = set()
    for row in table_rows(chapter("Keys")):
        for entry in row[0].split(", "):
            span = re.fullmatch(r"(.*)(\d) to \1(\d)", entry)
            keys |= {span[1] + str(n) for n in range(int(span[2]), int(span[3]) + 1)} if span else {entry}
    return keys


class Keys(unittest.TestCase):
    def test_the_guide_tells_every_key_and_no_other(self):
        self.assertLess(20, len(program_keys()))
        self.assertEqual(program_keys() | TOOLKIT_KEYS, guide_keys())


# Pages


class Pages(unittest.TestCase):
    def test_each_link_leads_to_a_heading(self):
        names = {re.sub(r"[^\w -]", "", heading).lower().replace(" ", "-") for heading in headings()}
        links = set(re.findall(r"\]\(#([^)]*)\)", GUIDE))
        self.assertLess(10, len(links))
        self.assertEqual(set(), links - names)

    def test_each_page_that_f1_turns_to_is_a_heading(self):
        pages = {
            literal.text
            for literal in literals_of(PROJECT / "src/ui/guide/guide_page.cpp", "guide_page.cpp")
            if literal.text and not literal.statement.endswith("QStringLiteral(")
        }
        self.assertLess(10, len(pages))
        self.assertEqual(set(), pages - set(headings()))

    def test_each_heading_is_there_once(self):
        self.assertEqual(sorted(set(headings())), sorted(headings()))


if __name__ == "__main__":
    unittest.main()
