"""The texts of the program's sources: string literals, each with the statement that it stands in."""

import pathlib
import re
from typing import NamedTuple

TOKEN = re.compile(
    r"""//[^\n]*|/\*.*?\*/                      # comments
      | "(?P<text>(?:\\.|[^"\\])*)"            # string literals
      | '(?:\\.|[^'\\])*'
      | [;{}]""",
    re.S | re.X,
)
ESCAPES = {"n": "\n", "t": "\t", "r": "\r", "0": "\0"}


class Literal(NamedTuple):
    file: str
    statement: str  # from the end of the one before to the literal
    text: str


def unescaped(text):
    return re.sub(r"\\(.)", lambda found: ESCAPES.get(found[1], found[1]), text)


def literals_of(file, name):
    """Every literal of a file in its order; literals side by side are one, as for the compiler."""
    source = file.read_text(encoding="utf-8")
    found = []
    statement_from = 0
    last_end = None
    for token in TOKEN.finditer(source):
        if token["text"] is None:
            if token[0] in ";{}":
                statement_from = token.end()
            continue
        text = unescaped(token["text"])
        if last_end is not None and not source[last_end : token.start()].strip():
            found[-1] = found[-1]._replace(text=found[-1].text + text)
        else:
            found.append(Literal(name, source[statement_from : token.start()], text))
        last_end = token.end()
    return [literal for literal in found if "#include" not in literal.statement.rsplit("\n", 1)[-1]]


def literals_below(folder: pathlib.Path):
    return [
        literal
        for file in sorted(folder.rglob("*"))
        if file.suffix in (".cpp", ".h")
        for literal in literals_of(file, str(file.relative_to(folder)))
    ]
