#!/usr/bin/env python3
"""Fails on an include that runs up in the drawing of docs/architecture.md, on a circle, and on the toolkit below ui/."""
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
FOLDERS = ("src", "simulator", "tool", "tests", "tour", "bench", "tools")

# The layers of src/, from the bottom up; those of one line may include each other.
LAYERS = (
    ("ports",),
    ("link", "controls"),
    ("model",),
    ("response",),
    ("presets", "lock"),
    ("history",),
    ("session", "window"),
    ("program",),
    ("ui",),
)
HEIGHT = {layer: height for height, line in enumerate(LAYERS) for layer in line}

# What each of the other folders may include, besides itself.
REACH = {
    "simulator": (),
    "tools": (),
    "tool": ("src",),
    "tests": ("src", "simulator", "tool"),
    "tour": ("src", "tests"),
    "bench": ("src", "simulator", "tests"),
}

TOOLKIT = re.compile(r"Qt?[A-Z]|q[a-z]+\.h$")
WITH_TOOLKIT = ("src/ui/", "tool/qt/", "tests/driver/", "tests/system/", "tests/tool/line_", "tests/ui/", "tools/make_icons", "tour/", "bench/")

# Arrows that still run up, to be turned: (file, what it includes).
KNOWN = set()

INCLUDE = re.compile(r"^[ \t]*#[ \t]*include[ \t]*([<\"])([^>\"]+)[>\"]", re.MULTILINE)


def resolve(file, name):
    """The tree's own file of this name, or None."""
    for base in (file.parent, ROOT / "src", ROOT / "tests", ROOT):
        if (base / name).is_file():
            return (base / name).resolve().relative_to(ROOT).as_posix()
    return None


def fault(source, target):
    """What is wrong with this include, or None."""
    here, there = source.split("/"), target.split("/")
    if here[0] == "src" and there[0] == "src":
        # A file beside the layers' folders belongs to none of them.
        if len(here) < 3 or len(there) < 3 or here[1] not in HEIGHT or there[1] not in HEIGHT:
            return "belongs to no layer"
        return "runs up" if HEIGHT[there[1]] > HEIGHT[here[1]] else None
    if here[0] != there[0] and there[0] not in REACH.get(here[0], ()):
        return f"leaves {here[0]}/"
    return None


def circles(graph):
    """Each circle that a walk through the includes comes back on."""
    done, road = set(), []

    def walk(file):
        if file in road:
            yield road[road.index(file):] + [file]
        elif file not in done:
            road.append(file)
            for target in graph.get(file, ()):
                yield from walk(target)
            road.pop()
            done.add(file)

    for file in sorted(graph):
        yield from walk(file)


def main():
    files = [path for folder in FOLDERS for kind in ("*.h", "*.cpp") for path in sorted((ROOT / folder).rglob(kind))]
    graph, faults, known = {}, [], set()
    for file in files:
        source = file.relative_to(ROOT).as_posix()
        graph[source] = []
        for mark, name in INCLUDE.findall(file.read_text(encoding="utf-8")):
            target = resolve(file, name)
            if target is not None:
                graph[source].append(target)
                why = fault(source, target)
                if why and (source, target) in KNOWN:
                    known.add((source, target))
                elif why:
                    faults.append(f"{source} includes {target}: {why}")
            elif mark == '"' and not name.endswith(".moc"):
                faults.append(f"{source} includes {name}: no file of the tree")
            elif TOOLKIT.match(name) and not source.startswith(WITH_TOOLKIT):
                faults.append(f"{source} includes {name}: the toolkit belongs above")
    faults += [f"{' > '.join(circle)}: a circle" for circle in circles(graph)]
    for source, target in sorted(set(KNOWN) - known):
        faults.append(f"{source} no longer includes {target}: take it off the known ones")
    arrows = sum(len(targets) for targets in graph.values())
    if arrows == 0:
        faults.append("no includes found")
    print("\n".join(faults) if faults else f"{arrows} includes of {len(files)} files run down or sideways")
    return 1 if faults else 0


sys.exit(main())
